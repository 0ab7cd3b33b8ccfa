// The reports of one inspection: JSON for scripts, text for a person.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "groove_examination.h"

namespace rw::tools {

// `filtered` is the file the import would read (the buffer InspectGroove
// left), for the drum grid of a placed groove.
std::string JsonReport(const GrooveInspection& inspection, std::span<const uint8_t> filtered);
std::string TextReport(const std::string& name, const GrooveInspection& inspection,
                       std::span<const uint8_t> filtered);

}  // namespace rw::tools
