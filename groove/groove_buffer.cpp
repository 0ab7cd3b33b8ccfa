#include "groove_buffer.h"

#include <algorithm>
#include <new>

namespace rw::groove {
namespace {

bool Allocate(GrooveBuffer& groove, uint64_t size) {
  groove.size = size;
  groove.capacity = std::max<uint64_t>(1, 2 * size);
  // Not zero-filled: the reader never reads beyond the file's bytes.
  groove.bytes.reset(new (std::nothrow) uint8_t[groove.capacity]);
  return groove.bytes != nullptr;
}

}  // namespace

ReadOutcome ReadGrooveFile(std::FILE* file, GrooveBuffer& groove) {
  if (file == nullptr) return ReadOutcome::kCannotRead;
  if (std::fseek(file, 0, SEEK_END) != 0) return ReadOutcome::kCannotRead;
  const long end = std::ftell(file);
  if (end < 0) return ReadOutcome::kCannotRead;
  if (end == 0) return ReadOutcome::kEmpty;
  if (static_cast<uint64_t>(end) > kLargestGrooveFile) return ReadOutcome::kTooLarge;
  if (std::fseek(file, 0, SEEK_SET) != 0) return ReadOutcome::kCannotRead;
  if (!Allocate(groove, static_cast<uint64_t>(end))) return ReadOutcome::kOutOfMemory;
  const auto want = static_cast<std::size_t>(groove.size);
  if (std::fread(groove.bytes.get(), 1, want, file) != want) return ReadOutcome::kCannotRead;
  return ReadOutcome::kRead;
}

GrooveBuffer CopyIntoGrooveBuffer(std::span<const uint8_t> bytes) {
  GrooveBuffer groove;
  if (!Allocate(groove, bytes.size())) return {};
  std::copy(bytes.begin(), bytes.end(), groove.bytes.get());
  return groove;
}

}  // namespace rw::groove
