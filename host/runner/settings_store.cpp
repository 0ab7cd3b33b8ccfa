#include "settings_store.h"

#include <fstream>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace cantel_host {

namespace {
cantel_engine::Bytes little_endian(std::uint32_t value) {
  return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>((value >> 8) & 0xFF),
          static_cast<std::uint8_t>((value >> 16) & 0xFF), static_cast<std::uint8_t>(value >> 24)};
}
}  // namespace

#if defined(_WIN32)
const char* const kKey = "Software\\HarpWorks";

void prepare_setting(const Scenario& scenario, const RunFolders& folders) {
  RegDeleteTreeA(HKEY_CURRENT_USER, kKey);
  RegDeleteKeyA(HKEY_CURRENT_USER, kKey);
  if (scenario.data.contains("setting")) write_setting(scenario.data["setting"], folders);
}

void write_setting(const nlohmann::json& setting, const RunFolders&) {
  HKEY key = nullptr;
  if (RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                      nullptr) != ERROR_SUCCESS) {
    return;
  }
  if (setting.is_number()) {
    const auto bytes = little_endian(setting.get<std::uint32_t>());
    RegSetValueExA(key, "rhythmweavePI", 0, REG_BINARY, bytes.data(), 4);
  } else {
    RegDeleteValueA(key, "rhythmweavePI");
  }
  RegCloseKey(key);
}

nlohmann::json settings_after(const RunFolders&) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) {
    return {{"key", false}, {"value_hex", nullptr}};
  }
  nlohmann::json out = {{"key", true}, {"value_hex", nullptr}};
  cantel_engine::Bytes bytes(64, 0);
  DWORD size = static_cast<DWORD>(bytes.size());
  if (RegQueryValueExA(key, "rhythmweavePI", nullptr, nullptr, bytes.data(), &size) ==
      ERROR_SUCCESS) {
    bytes.resize(size);
    out["value_hex"] = hex(bytes);
  }
  RegCloseKey(key);
  return out;
}
#else
void prepare_setting(const Scenario& scenario, const RunFolders& folders) {
  if (scenario.data.contains("setting")) write_setting(scenario.data["setting"], folders);
}

void write_setting(const nlohmann::json& setting, const RunFolders& folders) {
  const auto key = folders.config / "HarpWorks";
  std::filesystem::create_directories(key);
  if (setting.is_number()) {
    const auto bytes = little_endian(setting.get<std::uint32_t>());
    std::ofstream(key / "rhythmweavePI", std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), 4);
  } else {
    std::filesystem::remove(key / "rhythmweavePI");
  }
}

nlohmann::json settings_after(const RunFolders& folders) {
  const auto key = folders.config / "HarpWorks";
  nlohmann::json out = {{"key", std::filesystem::is_directory(key)}, {"value_hex", nullptr}};
  std::ifstream in(key / "rhythmweavePI", std::ios::binary);
  if (in) {
    cantel_engine::Bytes bytes((std::istreambuf_iterator<char>(in)),
                               std::istreambuf_iterator<char>());
    out["value_hex"] = hex(bytes);
  }
  return out;
}
#endif

}  // namespace cantel_host
