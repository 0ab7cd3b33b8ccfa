#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "paths.h"
#include "platform.h"

namespace rw::platform {
namespace {

constexpr std::uint32_t kAttributeNormal = 0x80;

char16_t Upper(char16_t c) { return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c; }

std::u16string Upper(std::u16string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char16_t c) { return Upper(c); });
  return text;
}

// Wildcards '*' and '?', without regard to case, as the system matches them.
bool WildcardMatch(const char16_t* pattern, const char16_t* name) {
  if (*pattern == 0) return *name == 0;
  if (*pattern == u'*') {
    for (const char16_t* rest = name;; ++rest) {
      if (WildcardMatch(pattern + 1, rest)) return true;
      if (*rest == 0) return false;
    }
  }
  if (*name == 0) return false;
  if (*pattern != u'?' && Upper(*pattern) != Upper(*name)) return false;
  return WildcardMatch(pattern + 1, name + 1);
}

// Windows also matches a pattern against each long name's 8.3 short name,
// whose extension is the long extension cut to three characters: "*.mid"
// finds "Groove.midi".
bool MatchesLikeWindows(const std::u16string& pattern, const std::u16string& name) {
  if (WildcardMatch(pattern.c_str(), name.c_str())) return true;
  const std::size_t patternDot = pattern.rfind(u'.');
  const std::size_t nameDot = name.rfind(u'.');
  if (patternDot == std::u16string::npos || nameDot == std::u16string::npos) return false;
  const std::u16string patternExtension = pattern.substr(patternDot + 1);
  const std::u16string nameExtension = name.substr(nameDot + 1);
  if (patternExtension.size() != 3 || nameExtension.size() <= 3) return false;
  if (patternExtension.find_first_of(u"*?") != std::u16string::npos) return false;
  const std::u16string shortName = name.substr(0, nameDot + 1) + nameExtension.substr(0, 3);
  return WildcardMatch(pattern.c_str(), shortName.c_str());
}

// The whole folder is read at the first call, so no descriptor stays open
// between calls; the list is the search's until FindClose. Every search
// open is known here, so that a handle that is no open search (closed
// already, or never one) is refused rather than followed. The host calls
// its plug-ins on its UI thread only.
struct Search {
  std::vector<FindData> found;
  std::size_t next = 0;
};
std::map<FindHandle, std::unique_ptr<Search>>& OpenSearchMap() {
  static std::map<FindHandle, std::unique_ptr<Search>> open;
  return open;
}
Search* OpenSearch(FindHandle handle) {
  auto& open = OpenSearchMap();
  const auto it = open.find(handle);
  return it != open.end() ? it->second.get() : nullptr;
}

bool Deliver(Search& search, FindData* out) {
  if (out == nullptr || search.next >= search.found.size()) return false;
  *out = search.found[search.next++];
  return true;
}

// The folder's entries that match, in the order of their upper-cased names.
std::vector<FindData> ReadFolder(const std::u16string& folder, const std::u16string& namePattern,
                                 bool& opened) {
  std::vector<FindData> found;
  std::error_code error;
  std::filesystem::directory_iterator it(NativePath(folder.c_str()), error);
  opened = !error;
  if (error) return found;
  for (const auto& entry : it) {
    const std::string narrow = entry.path().filename().string();
    if (!IsValidUtf8(narrow)) continue;  // it would be shown mangled and never open again
    const std::u16string name = Utf8ToUtf16(narrow);
    if (name.size() >= kMaxPath || !MatchesLikeWindows(namePattern, name)) continue;
    FindData data;
    // The entry's type comes with the folder's listing: no call per file.
    const bool directory = entry.is_directory(error);
    data.attributes = directory ? kAttributeDirectory : kAttributeNormal;
    std::copy(name.begin(), name.end(), data.fileName);
    found.push_back(data);
  }
  // Sorted by the upper-cased names, each computed once.
  std::vector<std::pair<std::u16string, std::size_t>> order;
  order.reserve(found.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    order.emplace_back(Upper(std::u16string(found[i].fileName)), i);
  }
  std::sort(order.begin(), order.end());
  std::vector<FindData> sorted;
  sorted.reserve(order.size());
  for (const auto& [key, index] : order) sorted.push_back(found[index]);
  return sorted;
}

}  // namespace

FindHandle FindFirstFileW(const char16_t* pattern, FindData* found) {
  if (pattern == nullptr) return kInvalidFindHandle;
  const std::u16string full(pattern);
  const std::size_t slash = full.find_last_of(u"\\/");
  const std::u16string folder = slash == std::u16string::npos ? u"." : full.substr(0, slash + 1);
  const std::u16string namePattern = slash == std::u16string::npos ? full : full.substr(slash + 1);

  bool opened = false;
  auto search = std::make_unique<Search>();
  search->found = ReadFolder(folder, namePattern, opened);
  // Like the system's, a search that finds nothing is no search to close.
  if (!opened || !Deliver(*search, found)) return kInvalidFindHandle;
  FindHandle handle = search.get();
  OpenSearchMap().emplace(handle, std::move(search));
  return handle;
}

bool FindNextFileW(FindHandle handle, FindData* found) {
  Search* search = OpenSearch(handle);
  return search != nullptr && Deliver(*search, found);
}

bool FindClose(FindHandle handle) { return OpenSearchMap().erase(handle) == 1; }

std::size_t OpenSearches() { return OpenSearchMap().size(); }

bool DeleteFileW(const char16_t* path) {
  std::error_code error;
  const std::filesystem::path native = NativePath(path);
  if (std::filesystem::is_directory(native, error)) return false;
  return std::filesystem::remove(native, error);
}

std::FILE* OpenFileW(const char16_t* path, const char* mode) {
  if (path == nullptr || mode == nullptr) return nullptr;
  return std::fopen(NativePath(path).c_str(), mode);
}

bool TruncateFile(std::FILE* file, std::uint64_t size) {
  if (file == nullptr || std::fflush(file) != 0) return false;
  return ::ftruncate(::fileno(file), static_cast<off_t>(size)) == 0;
}

std::int64_t ReadFilePrefix(const char16_t* path, std::uint8_t* buffer, std::size_t capacity,
                            std::uint64_t* fileSize) {
  if (path == nullptr || buffer == nullptr || fileSize == nullptr) return -1;
  const int file = ::open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return -1;
  struct stat status {};
  std::int64_t read = -1;
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
    *fileSize = static_cast<std::uint64_t>(status.st_size);
    // Until the buffer is full or the file's bytes are in: a groove shorter
    // than the buffer takes one read.
    const auto want = static_cast<std::size_t>(std::min<std::uint64_t>(capacity, *fileSize));
    read = 0;
    while (static_cast<std::size_t>(read) < want) {
      const ssize_t got = ::read(file, buffer + read, want - static_cast<std::size_t>(read));
      if (got <= 0) {
        if (got < 0) read = -1;
        break;
      }
      read += got;
    }
  }
  ::close(file);
  return read;
}

}  // namespace rw::platform
