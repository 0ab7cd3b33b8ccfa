// A groove file's bytes for one load: read whole into a buffer of twice the
// file's size, because the reader filters it in place and may grow it. The
// command, the dialog's style line and rwgroove all read grooves this way.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>

namespace rw::groove {

// A groove is a few kilobytes; beyond this the doubled buffer is not worth
// attempting inside the user's notation program.
inline constexpr uint64_t kLargestGrooveFile = 0x3FFFFFFF;

struct GrooveBuffer {
  std::unique_ptr<uint8_t[]> bytes;
  uint64_t size = 0;      // valid bytes; the reader moves it
  uint64_t capacity = 0;  // the allocation: twice the file's size
  std::span<const uint8_t> view() const { return {bytes.get(), static_cast<std::size_t>(size)}; }
};

enum class ReadOutcome {
  kRead,
  kCannotRead,  // the file could not be read whole
  kEmpty,       // the plug-in refuses these three with "Error opening this file."
  kTooLarge,
  kOutOfMemory,
};

// Reads the whole of an open file from its start; the caller opens and
// closes it, as its platform does.
ReadOutcome ReadGrooveFile(std::FILE* file, GrooveBuffer& groove);

// `bytes` in a fresh doubled buffer; empty when there is no memory for it.
GrooveBuffer CopyIntoGrooveBuffer(std::span<const uint8_t> bytes);

}  // namespace rw::groove
