#include "style_library.h"

#include <cantel/cantel.h>

#include <cstdio>

#include "groove_file.h"
#include "host_api.h"
#include "platform.h"

namespace rw::shell {
namespace {

constexpr char16_t kGrooveFolderName[] = u"\\Rhythm Weave\\";
constexpr char16_t kGroovePattern[] = u"*.mid";
constexpr char16_t kAnyName[] = u"*";
constexpr char16_t kSeparator = u'\\';

// A folder, or a folder and its pattern, that fits the platform's paths.
bool Fits(const std::u16string& path) { return path.size() < platform::kMaxPath; }

// The Component Files folder with the groove folder's name after it, or an
// empty string when the host gave no folder or the path would not fit.
std::u16string ShippedRoot() {
  char16_t path[CX_PATH_UNITS] = {};
  host::CX_GetCantelPath(CX_PATH_COMPONENT_FILES, path, host::kVersion);
  path[CX_PATH_UNITS - 1] = 0;
  std::u16string folder(path);
  if (folder.empty()) return {};
  folder += kGrooveFolderName;
  return Fits(folder + kGroovePattern) ? folder : std::u16string{};
}

std::u16string OwnRoot() {
  char16_t path[platform::kMaxPath] = {};
  if (!platform::UserGrooveFolder(path, platform::kMaxPath)) return {};
  std::u16string folder = std::u16string(path) + kSeparator;
  return Fits(folder + kGroovePattern) ? folder : std::u16string{};
}

// One directory search, closed however it ends.
class Search {
 public:
  explicit Search(const std::u16string& pattern)
      : handle_(platform::FindFirstFileW(pattern.c_str(), &found_)) {}
  ~Search() {
    if (handle_ != platform::kInvalidFindHandle) platform::FindClose(handle_);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  // Each entry once, in the system's order.
  template <class Visit>
  void ForEach(Visit visit) {
    if (handle_ == platform::kInvalidFindHandle) return;
    do {
      visit(found_);
    } while (platform::FindNextFileW(handle_, &found_));
  }

 private:
  platform::FindData found_;
  platform::FindHandle handle_;
};

bool IsFolder(const platform::FindData& found) {
  return (found.attributes & platform::kAttributeDirectory) != 0;
}

// A folder's name that the file system compares without case, as Windows'
// does, against a companion folder's.
bool SameFolderName(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const auto upper = [](char16_t c) { return c >= u'a' && c <= u'z' ? char16_t(c - 32) : c; };
    if (upper(a[i]) != upper(b[i])) return false;
  }
  return true;
}

bool IsCompanionFolder(std::u16string_view name) {
  for (const PartRow& row : PartRows()) {
    if (!row.folder.empty() && SameFolderName(name, row.folder)) return true;
  }
  return false;
}

void Walk(const std::u16string& root, bool own, const std::u16string& relative, int depth,
          StyleLibrary& styles) {
  const std::u16string folder = root + relative;
  if (!Fits(folder + kGroovePattern)) return;
  Search(folder + kGroovePattern).ForEach([&](const platform::FindData& found) {
    // A folder named like a groove file is not one.
    if (IsFolder(found)) return;
    const std::u16string_view file(found.fileName);
    if (file == kTemporaryFileName) return;
    styles.push_back(GrooveStyle{root, relative + std::u16string(file), own});
  });
  if (depth >= kDeepestCategory) return;
  std::vector<std::u16string> categories;
  Search(folder + kAnyName).ForEach([&](const platform::FindData& found) {
    const std::u16string_view name(found.fileName);
    if (!IsFolder(found) || name == u"." || name == u".." || IsCompanionFolder(name)) return;
    categories.emplace_back(name);
  });
  for (const std::u16string& category : categories) {
    Walk(root, own, relative + category + kSeparator, depth + 1, styles);
  }
}

bool Readable(const std::u16string& path) {
  std::FILE* file = platform::OpenFileW(path.c_str(), "rb");
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

}  // namespace

std::u16string GrooveStyle::Category() const {
  const std::size_t at = name.rfind(kSeparator);
  return at == std::u16string::npos ? std::u16string{} : name.substr(0, at);
}

std::u16string GrooveStyle::FileName() const {
  const std::size_t at = name.rfind(kSeparator);
  return at == std::u16string::npos ? name : name.substr(at + 1);
}

std::u16string GrooveStyle::ShownName() const {
  const std::u16string file = FileName();
  return file.substr(0, file.size() >= 4 ? file.size() - 4 : 0);
}

std::u16string GrooveStyle::PartName(PartKind part) const {
  const std::u16string_view folder = RowOf(part).folder;
  if (folder.empty()) return name;
  const std::u16string category = Category();
  return (category.empty() ? u"" : category + kSeparator) + std::u16string(folder) + kSeparator +
         FileName();
}

bool GrooveStyle::Has(PartKind part) const {
  return part == PartKind::kMain || Readable(PathOf(part));
}

GrooveRoots FindGrooveRoots() { return {ShippedRoot(), OwnRoot()}; }

StyleLibrary FindStyles(const GrooveRoots& roots) {
  StyleLibrary styles;
  if (!roots.shipped.empty()) Walk(roots.shipped, false, u"", 0, styles);
  if (!roots.own.empty()) Walk(roots.own, true, u"", 0, styles);
  return styles;
}

}  // namespace rw::shell
