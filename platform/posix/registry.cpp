// The current user's registry key "Software\HarpWorks" is the folder
// $XDG_CONFIG_HOME/HarpWorks (default ~/.config/HarpWorks); a value is a file
// of the same name holding its bytes. Keys are opened, never created.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform.h"

namespace rw::platform {
namespace {

constexpr long kErrorFileNotFound = 2;
constexpr long kErrorAccessDenied = 5;
constexpr long kErrorMoreData = 234;

std::filesystem::path ConfigHome() {
  if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg != nullptr && *xdg == '/') return xdg;
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
    return std::filesystem::path(home) / ".config";
  }
  return {};
}

struct OpenKey {
  std::filesystem::path folder;
};

}  // namespace

long RegOpenKeyExA(const char* subKey, std::uint32_t, std::uint32_t, RegistryKey* key) {
  if (subKey == nullptr || key == nullptr) return kErrorFileNotFound;
  // Only the one key the plug-in uses has a folder of its own.
  if (std::string(subKey) != "Software\\HarpWorks") return kErrorFileNotFound;
  const std::filesystem::path home = ConfigHome();
  if (home.empty()) return kErrorFileNotFound;
  std::filesystem::path folder = home / "HarpWorks";
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return kErrorFileNotFound;
  if (access(folder.c_str(), R_OK | W_OK | X_OK) != 0) return kErrorAccessDenied;
  // Handed out like a system handle; RegCloseKey takes it back.
  *key = std::make_unique<OpenKey>(OpenKey{std::move(folder)}).release();
  return kRegistryOk;
}

long RegQueryValueExA(RegistryKey key, const char* name, std::uint32_t* type, std::uint8_t* data,
                      std::uint32_t* size) {
  if (key == nullptr || name == nullptr || size == nullptr) return kErrorFileNotFound;
  std::ifstream file(static_cast<OpenKey*>(key)->folder / name, std::ios::binary);
  if (!file) return kErrorFileNotFound;
  std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (type != nullptr) *type = kRegDword;
  const auto length = static_cast<std::uint32_t>(bytes.size());
  if (data != nullptr && length > *size) {
    *size = length;
    return kErrorMoreData;
  }
  if (data != nullptr) std::copy(bytes.begin(), bytes.end(), data);
  *size = length;
  return kRegistryOk;
}

long RegSetValueExA(RegistryKey key, const char* name, std::uint32_t, const std::uint8_t* data,
                    std::uint32_t size) {
  if (key == nullptr || name == nullptr || (data == nullptr && size > 0)) return kErrorAccessDenied;
  std::ofstream file(static_cast<OpenKey*>(key)->folder / name, std::ios::binary | std::ios::trunc);
  if (!file) return kErrorAccessDenied;
  file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  return file ? kRegistryOk : kErrorAccessDenied;
}

long RegCloseKey(RegistryKey key) {
  std::unique_ptr<OpenKey> release(static_cast<OpenKey*>(key));
  return kRegistryOk;
}

}  // namespace rw::platform
