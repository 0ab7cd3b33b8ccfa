// The user's own groove folder sits in their Documents folder. The profile
// says where that is, and a user (or a company's policy) may have moved it
// anywhere: the shell's folder look-up follows the move, a path built from
// the profile's home folder would not.
#include <shlobj.h>
#include <windows.h>

#include <cwchar>
#include <string>

#include "platform.h"

namespace rw::platform {

bool UserGrooveFolder(char16_t* buffer, std::size_t capacity) {
  if (buffer == nullptr || capacity == 0) return false;
  buffer[0] = 0;
  wchar_t documents[MAX_PATH] = {};
  // Not verified: the Documents folder is answered as the profile names it,
  // even where it is missing, and nothing is created (no CSIDL_FLAG_CREATE).
  if (FAILED(::SHGetFolderPathW(nullptr, CSIDL_PERSONAL | CSIDL_FLAG_DONT_VERIFY, nullptr,
                                SHGFP_TYPE_CURRENT, documents))) {
    return false;
  }
  documents[MAX_PATH - 1] = 0;
  std::u16string path(reinterpret_cast<const char16_t*>(documents));
  if (path.empty()) return false;
  if (path.back() != u'\\' && path.back() != u'/') path += u'\\';
  path += kUserGrooveFolderName;
  if (path.size() >= capacity) return false;
  path.copy(buffer, path.size());
  buffer[path.size()] = 0;
  return true;
}

}  // namespace rw::platform
