#include "settings_store.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace cantel_host {

namespace {

// The values the plug-in keeps, in the order the result lists them.
const char* const kValueNames[] = {
    "rhythmweavePI",        "rhythmweaveFill",  "rhythmweaveEnding",     "rhythmweaveCountIn",
    "rhythmweaveVariation", "rhythmweaveCrash", "rhythmweaveStraighten", "rhythmweaveOnlyFitting"};
const char* const kPlacement = "rhythmweavePI";

cantel_engine::Bytes little_endian(std::uint32_t value) {
  return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>((value >> 8) & 0xFF),
          static_cast<std::uint8_t>((value >> 16) & 0xFF), static_cast<std::uint8_t>(value >> 24)};
}

// What `setting` writes: a number is the placement value, "key only" takes
// it away; an object names each value, a number to write or null to take it
// away, and leaves the others as they are.
std::vector<std::pair<std::string, std::optional<cantel_engine::Bytes>>> values_of(
    const nlohmann::json& setting) {
  std::vector<std::pair<std::string, std::optional<cantel_engine::Bytes>>> values;
  if (!setting.is_object()) {
    values.emplace_back(kPlacement, setting.is_number()
                                        ? std::optional(little_endian(setting.get<std::uint32_t>()))
                                        : std::nullopt);
    return values;
  }
  for (const auto& [name, value] : setting.items()) {
    if (std::find(std::begin(kValueNames), std::end(kValueNames), name) == std::end(kValueNames)) {
      throw std::runtime_error("the plug-in keeps no value \"" + name + "\"");
    }
    values.emplace_back(name, value.is_null()
                                  ? std::nullopt
                                  : std::optional(little_endian(value.get<std::uint32_t>())));
  }
  return values;
}

}  // namespace

#if defined(_WIN32)
const char* const kKey = "Software\\HarpWorks";

void prepare_setting(const Scenario& scenario, const RunFolders& folders) {
  // The Wine registry outlives the run: no value of an earlier scenario
  // may remain.
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
  for (const auto& [name, bytes] : values_of(setting)) {
    if (bytes) {
      RegSetValueExA(key, name.c_str(), 0, REG_BINARY, bytes->data(), 4);
    } else {
      RegDeleteValueA(key, name.c_str());
    }
  }
  RegCloseKey(key);
}

namespace {
std::optional<cantel_engine::Bytes> stored(const RunFolders&, const char* name) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
  cantel_engine::Bytes bytes(64, 0);
  DWORD size = static_cast<DWORD>(bytes.size());
  const bool found =
      RegQueryValueExA(key, name, nullptr, nullptr, bytes.data(), &size) == ERROR_SUCCESS;
  RegCloseKey(key);
  if (!found) return {};
  bytes.resize(size);
  return bytes;
}

bool key_present(const RunFolders&) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}
}  // namespace
#else
void prepare_setting(const Scenario& scenario, const RunFolders& folders) {
  if (scenario.data.contains("setting")) write_setting(scenario.data["setting"], folders);
}

void write_setting(const nlohmann::json& setting, const RunFolders& folders) {
  const auto key = folders.config / "HarpWorks";
  std::filesystem::create_directories(key);
  for (const auto& [name, bytes] : values_of(setting)) {
    if (bytes) {
      std::ofstream(key / name, std::ios::binary)
          .write(reinterpret_cast<const char*>(bytes->data()), 4);
    } else {
      std::filesystem::remove(key / name);
    }
  }
}

namespace {
std::optional<cantel_engine::Bytes> stored(const RunFolders& folders, const char* name) {
  std::ifstream in(folders.config / "HarpWorks" / name, std::ios::binary);
  if (!in) return {};
  return cantel_engine::Bytes((std::istreambuf_iterator<char>(in)),
                              std::istreambuf_iterator<char>());
}

bool key_present(const RunFolders& folders) {
  return std::filesystem::is_directory(folders.config / "HarpWorks");
}
}  // namespace
#endif

nlohmann::json settings_after(const RunFolders& folders) {
  const auto placement = stored(folders, kPlacement);
  return {{"key", key_present(folders)},
          {"value_hex", placement ? nlohmann::json(hex(*placement)) : nlohmann::json(nullptr)}};
}

nlohmann::json settings_values_after(const RunFolders& folders) {
  nlohmann::json values = nlohmann::json::object();
  for (const char* name : kValueNames) {
    if (const auto bytes = stored(folders, name)) values[name] = hex(*bytes);
  }
  return values;
}

}  // namespace cantel_host
