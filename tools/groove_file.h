// Groove files by their paths, for the tool: read as the plug-in reads
// them, and files written whole.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "groove_buffer.h"

namespace rw::tools {

using groove::GrooveBuffer;
using groove::ReadOutcome;

ReadOutcome ReadGrooveFile(const std::string& path, GrooveBuffer& groove);
bool WriteWholeFile(const std::string& path, std::span<const uint8_t> bytes);

}  // namespace rw::tools
