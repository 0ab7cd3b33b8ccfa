// The user's own groove folder lives with the user's data, where the XDG
// base directories put it; as on Windows it is named, never made.
#include <cstdlib>
#include <string>

#include "paths.h"
#include "platform.h"

namespace rw::platform {
namespace {

// The user's data folder as UTF-8, or empty when the environment names none.
// A relative XDG_DATA_HOME is ignored, as the XDG rules say and as the
// settings' XDG_CONFIG_HOME is.
std::string DataHome() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg == '/') return xdg;
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    std::string folder(home);
    while (!folder.empty() && folder.back() == '/') folder.pop_back();
    return folder + "/.local/share";
  }
  return {};
}

}  // namespace

bool UserGrooveFolder(char16_t* buffer, std::size_t capacity) {
  if (buffer == nullptr || capacity == 0) return false;
  buffer[0] = 0;
  std::string home = DataHome();
  while (home.size() > 1 && home.back() == '/') home.pop_back();
  // A folder the plug-in could not name in UTF-16 is one it could not open.
  if (home.empty() || !IsValidUtf8(home)) return false;
  std::u16string path = Utf8ToUtf16(home);
  if (path.back() != u'/') path += u'/';
  path += kUserGrooveFolderName;
  if (path.size() >= capacity) return false;
  path.copy(buffer, path.size());
  buffer[path.size()] = 0;
  return true;
}

}  // namespace rw::platform
