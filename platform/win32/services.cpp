// Strings, registry and files: the system's own calls.
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "platform.h"

namespace rw::platform {

int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int capacity) {
  if (buffer == nullptr || capacity <= 0) return 0;
  buffer[0] = 0;
  return ::LoadStringW(static_cast<HINSTANCE>(module), id, reinterpret_cast<LPWSTR>(buffer),
                       capacity);
}

int LoadStringA(ModuleHandle module, std::uint32_t id, char* buffer, int capacity) {
  if (buffer == nullptr || capacity <= 0) return 0;
  buffer[0] = 0;
  return ::LoadStringA(static_cast<HINSTANCE>(module), id, buffer, capacity);
}

long RegOpenKeyExA(const char* subKey, std::uint32_t options, std::uint32_t access,
                   RegistryKey* key) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyExA(HKEY_CURRENT_USER, subKey, options, access, &opened);
  if (status == ERROR_SUCCESS && key != nullptr) *key = opened;
  return status;
}

long RegQueryValueExA(RegistryKey key, const char* name, std::uint32_t* type, std::uint8_t* data,
                      std::uint32_t* size) {
  DWORD valueType = 0;
  DWORD length = size != nullptr ? *size : 0;
  const LSTATUS status =
      ::RegQueryValueExA(static_cast<HKEY>(key), name, nullptr, &valueType, data, &length);
  if (type != nullptr) *type = valueType;
  if (size != nullptr) *size = length;
  return status;
}

long RegSetValueExA(RegistryKey key, const char* name, std::uint32_t type, const std::uint8_t* data,
                    std::uint32_t size) {
  return ::RegSetValueExA(static_cast<HKEY>(key), name, 0, type, data, size);
}

long RegCloseKey(RegistryKey key) { return ::RegCloseKey(static_cast<HKEY>(key)); }

namespace {
void CopyFound(const WIN32_FIND_DATAW& system, FindData* found) {
  if (found == nullptr) return;
  found->attributes = system.dwFileAttributes;
  for (std::size_t i = 0; i < kMaxPath; ++i) found->fileName[i] = system.cFileName[i];
}
}  // namespace

FindHandle FindFirstFileW(const char16_t* pattern, FindData* found) {
  WIN32_FIND_DATAW system{};
  HANDLE search = ::FindFirstFileW(reinterpret_cast<LPCWSTR>(pattern), &system);
  if (search == INVALID_HANDLE_VALUE) return kInvalidFindHandle;
  CopyFound(system, found);
  return search;
}

bool FindNextFileW(FindHandle search, FindData* found) {
  WIN32_FIND_DATAW system{};
  if (!::FindNextFileW(static_cast<HANDLE>(search), &system)) return false;
  CopyFound(system, found);
  return true;
}

bool FindClose(FindHandle search) {
  if (search == kInvalidFindHandle || search == nullptr) return false;
  return ::FindClose(static_cast<HANDLE>(search)) != 0;
}

bool DeleteFileW(const char16_t* path) {
  return ::DeleteFileW(reinterpret_cast<LPCWSTR>(path)) != 0;
}

std::FILE* OpenFileW(const char16_t* path, const char* mode) {
  if (path == nullptr || mode == nullptr) return nullptr;
  wchar_t wideMode[8] = {};
  for (std::size_t i = 0; i + 1 < std::size(wideMode) && mode[i] != 0; ++i) {
    wideMode[i] = static_cast<wchar_t>(mode[i]);
  }
  return ::_wfopen(reinterpret_cast<const wchar_t*>(path), wideMode);
}

bool TruncateFile(std::FILE* file, std::uint64_t size) {
  if (file == nullptr || std::fflush(file) != 0) return false;
  return ::_chsize_s(::_fileno(file), static_cast<long long>(size)) == 0;
}

std::int64_t ReadFilePrefix(const char16_t* path, std::uint8_t* buffer, std::size_t capacity,
                            std::uint64_t* fileSize) {
  if (path == nullptr || buffer == nullptr || fileSize == nullptr) return -1;
  const HANDLE file =
      ::CreateFileW(reinterpret_cast<const wchar_t*>(path), GENERIC_READ, FILE_SHARE_READ, nullptr,
                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (file == INVALID_HANDLE_VALUE) return -1;
  LARGE_INTEGER size{};
  std::int64_t read = -1;
  if (::GetFileSizeEx(file, &size) && size.QuadPart >= 0) {
    *fileSize = static_cast<std::uint64_t>(size.QuadPart);
    DWORD got = 0;
    const DWORD want = static_cast<DWORD>(std::min<std::size_t>(capacity, 0x7FFFFFFF));
    if (::ReadFile(file, buffer, want, &got, nullptr)) read = got;
  }
  ::CloseHandle(file);
  return read;
}

}  // namespace rw::platform
