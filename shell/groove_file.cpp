#include "groove_file.h"

#include <cantel/cantel.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "host_api.h"
#include "platform.h"

namespace rw::shell {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

}  // namespace

std::optional<GrooveBuffer> ReadGrooveFile(const std::u16string& path) {
  File file(platform::OpenFileW(path.c_str(), "rb"));
  GrooveBuffer groove;
  if (!file || groove::ReadGrooveFile(file.get(), groove) != groove::ReadOutcome::kRead) {
    return std::nullopt;
  }
  return groove;
}

bool TemporaryGrooveFile::Write(const GrooveBuffer& groove) {
  char16_t folder[CX_PATH_UNITS] = {};
  host::CX_GetCantelPath(CX_PATH_TEMPORARY, folder, host::kVersion);
  folder[CX_PATH_UNITS - 1] = 0;
  folder_ = folder;
  if (folder_.empty()) return false;
  const std::u16string path = folder_ + kTemporaryFileName;
  if (path.size() >= CX_PATH_UNITS) return false;

  path_ = path;
  if (WriteWhole(groove) && ReadsBack(groove)) return true;
  Delete();
  return false;
}

bool TemporaryGrooveFile::Rewrite(const GrooveBuffer& groove) {
  if (!written_) return false;
  // Written over and cut to size: a phrase changes the file hundreds of
  // times, and emptying a file first costs far more than cutting its tail.
  File file(platform::OpenFileW(path_.c_str(), "r+b"));
  const std::size_t size = static_cast<std::size_t>(groove.size);
  const bool whole = file && std::fwrite(groove.bytes.get(), 1, size, file.get()) == size &&
                     platform::TruncateFile(file.get(), groove.size);
  if (file && std::fclose(file.release()) == 0 && whole) return true;
  Delete();
  return false;
}

bool TemporaryGrooveFile::WriteWhole(const GrooveBuffer& groove) {
  File file(platform::OpenFileW(path_.c_str(), "wb"));
  if (!file) return false;
  written_ = true;
  const std::size_t size = static_cast<std::size_t>(groove.size);
  const bool whole = std::fwrite(groove.bytes.get(), 1, size, file.get()) == size;
  return std::fclose(file.release()) == 0 && whole;
}

// What the import will read is what was meant to be written: a full disk or
// a folder that swallows writes shows here, before the score changes.
bool TemporaryGrooveFile::ReadsBack(const GrooveBuffer& groove) const {
  File file(platform::OpenFileW(path_.c_str(), "rb"));
  if (!file) return false;
  const std::uint8_t* expected = groove.bytes.get();
  std::uint64_t left = groove.size;
  std::uint8_t chunk[4096];
  while (left > 0) {
    const std::size_t want = static_cast<std::size_t>(std::min<std::uint64_t>(left, sizeof chunk));
    if (std::fread(chunk, 1, want, file.get()) != want) return false;
    if (std::memcmp(chunk, expected, want) != 0) return false;
    expected += want;
    left -= want;
  }
  return std::fgetc(file.get()) == EOF;
}

void TemporaryGrooveFile::Delete() {
  if (!written_) return;
  platform::DeleteFileW(path_.c_str());
  written_ = false;
}

}  // namespace rw::shell
