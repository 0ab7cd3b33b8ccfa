#include "style_library.h"

#include <cantel/cantel.h>

#include <cstdio>

#include "dialog_ids.h"
#include "groove_file.h"
#include "host_api.h"
#include "notation_styles.h"
#include "platform.h"
#include "string_resources.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringNoGrooves = 22;
constexpr std::size_t kNotationTextCapacity = 257;

constexpr char16_t kGrooveFolderName[] = u"\\Rhythm Weave\\";
constexpr char16_t kPattern[] = u"*.mid";

std::int64_t TextArgument(const void* text) {
  return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text));
}

std::int64_t SendToList(void* dialog, int list, std::uint32_t message, std::uint64_t wparam = 0,
                        std::int64_t lparam = 0) {
  return host::SendDlgItemMessageW(dialog, list, message, wparam, lparam);
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

StyleLibrary FindStyles() {
  StyleLibrary styles;
  const std::u16string folder = FindGrooveFolder();
  if (folder.empty()) return styles;
  const std::u16string pattern = folder + kPattern;
  platform::FindData found;
  // The search handle is left open, as the module always has.
  platform::FindHandle search = platform::FindFirstFileW(pattern.c_str(), &found);
  if (search == platform::kInvalidFindHandle) return styles;
  do {
    // A folder named like a groove file is not one.
    if ((found.attributes & platform::kAttributeDirectory) != 0) continue;
    if (std::u16string_view(found.fileName) != kTemporaryFileName) {
      styles.push_back(GrooveStyle{folder, found.fileName});
    }
  } while (platform::FindNextFileW(search, &found));
  return styles;
}

// In UTF-16, as every list is: 8-bit texts would pass through the system's
// code page, which need not be the language's.
void FillGenerateList(void* dialog, std::int32_t notationRow) {
  for (const NotationStyleRow& style : NotationStyles()) {
    char16_t text[kNotationTextCapacity];
    LoadStringResource(style.stringId, text, kNotationTextCapacity);
    SendToList(dialog, RW_ID_GENERATE_LIST, CX_CB_ADDSTRING, 0, TextArgument(text));
  }
  SendToList(dialog, RW_ID_GENERATE_LIST, CX_CB_SETCURSEL,
             static_cast<std::uint64_t>(static_cast<std::int64_t>(notationRow)));
}

bool Readable(const std::u16string& path) {
  std::FILE* file = platform::OpenFileW(path.c_str(), "rb");
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

}  // namespace

std::u16string GrooveStyle::ShownName() const {
  return fileName.substr(0, fileName.size() >= 4 ? fileName.size() - 4 : 0);
}

bool GrooveStyle::HasFill() const { return Readable(folder + FillName()); }
bool GrooveStyle::HasEnding() const { return Readable(folder + EndingName()); }

StyleLibrary FillStyleLibrary(void* dialog, std::int32_t notationRow) {
  SendToList(dialog, RW_ID_STYLE_LIST, CX_LB_RESETCONTENT);
  SendToList(dialog, RW_ID_GENERATE_LIST, CX_CB_RESETCONTENT);

  StyleLibrary styles = FindStyles();
  for (const GrooveStyle& style : styles) {
    const std::u16string shown = style.ShownName();
    SendToList(dialog, RW_ID_STYLE_LIST, CX_LB_ADDSTRING, 0, TextArgument(shown.c_str()));
  }
  if (styles.empty()) {
    ShowMessage(kStringNoGrooves, CX_MB_EXCLAMATION);
    return styles;
  }
  FillGenerateList(dialog, notationRow);
  return styles;
}

}  // namespace rw::shell
