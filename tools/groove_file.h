// A groove file read whole into a buffer of twice its size, as the plug-in
// reads it, so that the reader can filter it in place.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace rw::tools {

// The plug-in refuses files above this size; so does the tool.
inline constexpr uint64_t kLargestGrooveFile = 0x3FFFFFFF;

struct GrooveFile {
  std::unique_ptr<uint8_t[]> buffer;
  uint64_t size = 0;
  uint64_t capacity = 0;
  std::span<const uint8_t> bytes() const { return {buffer.get(), size}; }
};

enum class ReadOutcome {
  kRead,
  kCannotOpen,  // the tool cannot read it: not the plug-in's concern
  kEmpty,       // the plug-in refuses these two with "Error opening this file."
  kTooLarge,
};

ReadOutcome ReadGrooveFile(const std::string& path, GrooveFile& file);
// Puts `bytes` (of at most `size` bytes) into a fresh doubled buffer.
GrooveFile CopyIntoGrooveFile(std::span<const uint8_t> bytes);
bool WriteWholeFile(const std::string& path, std::span<const uint8_t> bytes);

}  // namespace rw::tools
