#include "style_library.h"

#include <cantel/cantel.h>

#include "host_api.h"
#include "messages.h"
#include "string_resources.h"

namespace rw::shell {

std::vector<GrooveStyle> styleLibrary;
std::u16string grooveFolder;
std::int32_t notationIndex = 0;

namespace {

constexpr int kStyleList = 2002;
constexpr int kGenerateList = 1019;
constexpr std::uint32_t kStringNoGrooves = 22;
constexpr std::uint32_t kFirstNotationString = 10;  // then 11 and 12
constexpr int kNotationStyles = 3;
constexpr std::size_t kNotationTextCapacity = 257;

constexpr char16_t kGrooveFolderName[] = u"\\Rhythm Weave\\";
constexpr char16_t kPattern[] = u"*.mid";

std::int64_t TextArgument(const void* text) {
  return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text));
}

// The Component Files folder with the groove folder's name after it, or an
// empty string when the host gave no folder or the path would not fit.
std::u16string FindGrooveFolder() {
  char16_t path[CX_PATH_UNITS] = {};
  host::CX_GetCantelPath(CX_PATH_COMPONENT_FILES, path, host::kVersion);
  path[CX_PATH_UNITS - 1] = 0;
  std::u16string folder(path);
  if (folder.empty()) return {};
  folder += kGrooveFolderName;
  if (folder.size() + std::size(kPattern) > CX_PATH_UNITS) return {};
  return folder;
}

void AddStyle(void* dialog, const platform::FindData& found) {
  styleLibrary.push_back(GrooveStyle{found});
  // The shown name is the file name less its last four characters (".mid").
  std::u16string shown(found.fileName);
  shown.resize(shown.size() >= 4 ? shown.size() - 4 : 0);
  platform::SendDlgItemMessageW(dialog, kStyleList, CX_LB_ADDSTRING, 0, TextArgument(shown.c_str()));
}

}  // namespace

bool FillStyleLibrary(void* dialog) {
  platform::SendDlgItemMessageW(dialog, kStyleList, CX_LB_RESETCONTENT, 0, 0);
  platform::SendDlgItemMessageW(dialog, kGenerateList, CX_CB_RESETCONTENT, 0, 0);

  grooveFolder = FindGrooveFolder();
  styleLibrary.clear();

  if (!grooveFolder.empty()) {
    const std::u16string pattern = grooveFolder + kPattern;
    platform::FindData found;
    // The search handle is left open, as the module always has.
    platform::FindHandle search = platform::FindFirstFileW(pattern.c_str(), &found);
    if (search != platform::kInvalidFindHandle) {
      do {
        if (std::u16string_view(found.fileName) != kTemporaryFileName) AddStyle(dialog, found);
      } while (platform::FindNextFileW(search, &found));
    }
  }

  if (styleLibrary.empty()) {
    ShowMessage(kStringNoGrooves, CX_MB_EXCLAMATION);
    return false;
  }

  for (int row = 0; row < kNotationStyles; ++row) {
    char text[kNotationTextCapacity];
    LoadStringResourceA(kFirstNotationString + static_cast<std::uint32_t>(row), text, sizeof text);
    platform::SendDlgItemMessageA(dialog, kGenerateList, CX_CB_ADDSTRING, 0, TextArgument(text));
  }
  platform::SendDlgItemMessageA(dialog, kGenerateList, CX_CB_SETCURSEL,
                                static_cast<std::uint64_t>(static_cast<std::int64_t>(notationIndex)),
                                0);
  return true;
}

}  // namespace rw::shell
