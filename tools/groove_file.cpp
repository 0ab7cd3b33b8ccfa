#include "groove_file.h"

#include <algorithm>
#include <fstream>

namespace rw::tools {

ReadOutcome ReadGrooveFile(const std::string& path, GrooveFile& file) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return ReadOutcome::kCannotOpen;
  const std::streamoff size = in.tellg();
  if (size < 0) return ReadOutcome::kCannotOpen;
  if (size == 0) return ReadOutcome::kEmpty;
  if (static_cast<uint64_t>(size) > kLargestGrooveFile) return ReadOutcome::kTooLarge;
  file.size = static_cast<uint64_t>(size);
  file.capacity = 2 * file.size;
  // Not zero-filled: the reader never reads beyond the file's bytes.
  file.buffer = std::make_unique_for_overwrite<uint8_t[]>(file.capacity);
  in.seekg(0);
  if (!in.read(reinterpret_cast<char*>(file.buffer.get()), size)) return ReadOutcome::kCannotOpen;
  return ReadOutcome::kRead;
}

GrooveFile CopyIntoGrooveFile(std::span<const uint8_t> bytes) {
  GrooveFile file;
  file.size = bytes.size();
  file.capacity = std::max<uint64_t>(1, 2 * file.size);
  file.buffer = std::make_unique_for_overwrite<uint8_t[]>(file.capacity);
  std::copy(bytes.begin(), bytes.end(), file.buffer.get());
  return file;
}

bool WriteWholeFile(const std::string& path, std::span<const uint8_t> bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  out.close();
  return static_cast<bool>(out);
}

}  // namespace rw::tools
