#include "settings.h"

#include "platform.h"

namespace rw::shell {
namespace {

constexpr const char* kKey = "Software\\HarpWorks";
constexpr const char* kValue = "rhythmweavePI";

void FromBytes(const std::uint8_t (&bytes)[4], std::uint32_t& value) {
  value = std::uint32_t{bytes[0]} | (std::uint32_t{bytes[1]} << 8) |
          (std::uint32_t{bytes[2]} << 16) | (std::uint32_t{bytes[3]} << 24);
}

void ToBytes(std::uint32_t value, std::uint8_t (&bytes)[4]) {
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

}  // namespace

std::uint32_t LoadPlacementSetting(std::uint32_t& placementSetting) {
  if (placementSetting > 1) {
    placementSetting = 1;
    platform::RegistryKey key = nullptr;
    if (platform::RegOpenKeyExA(kKey, 0, platform::kKeyAllAccess, &key) == platform::kRegistryOk) {
      // The query writes straight over the setting: a shorter value replaces
      // only its leading bytes, a longer one fails and changes nothing.
      std::uint8_t bytes[4];
      ToBytes(placementSetting, bytes);
      std::uint32_t size = sizeof bytes;
      if (platform::RegQueryValueExA(key, kValue, nullptr, bytes, &size) == platform::kRegistryOk) {
        FromBytes(bytes, placementSetting);
      }
      platform::RegCloseKey(key);
    }
  }
  if (placementSetting > 1) placementSetting = 1;
  return placementSetting;
}

void SavePlacementSetting(std::uint32_t flags, std::uint32_t& placementSetting) {
  placementSetting = flags;
  platform::RegistryKey key = nullptr;
  if (platform::RegOpenKeyExA(kKey, 0, platform::kKeyAllAccess, &key) != platform::kRegistryOk) {
    return;
  }
  std::uint8_t bytes[4];
  ToBytes(placementSetting, bytes);
  platform::RegSetValueExA(key, kValue, platform::kRegDword, bytes, sizeof bytes);
  platform::RegCloseKey(key);
}

}  // namespace rw::shell
