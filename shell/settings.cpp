#include "settings.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "platform.h"

namespace rw::shell {
namespace {

constexpr const char* kKey = "Software\\HarpWorks";
constexpr const char* kPlacementValue = "rhythmweavePI";

void FromBytes(const std::uint8_t (&bytes)[4], std::uint32_t& value) {
  value = std::uint32_t{bytes[0]} | (std::uint32_t{bytes[1]} << 8) |
          (std::uint32_t{bytes[2]} << 16) | (std::uint32_t{bytes[3]} << 24);
}

void ToBytes(std::uint32_t value, std::uint8_t (&bytes)[4]) {
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// The query writes straight over the value: a shorter one replaces only its
// leading bytes, a longer one fails and changes nothing.
void Query(platform::RegistryKey key, const char* name, std::uint32_t& value) {
  std::uint8_t bytes[4];
  ToBytes(value, bytes);
  std::uint32_t size = sizeof bytes;
  if (platform::RegQueryValueExA(key, name, nullptr, bytes, &size) == platform::kRegistryOk) {
    FromBytes(bytes, value);
  }
}

void Store(platform::RegistryKey key, const char* name, std::uint32_t value) {
  std::uint8_t bytes[4];
  ToBytes(value, bytes);
  platform::RegSetValueExA(key, name, platform::kRegDword, bytes, sizeof bytes);
}

bool IsFillChoice(std::uint32_t measures) {
  return std::find(std::begin(kFillChoices), std::end(kFillChoices), measures) !=
         std::end(kFillChoices);
}

}  // namespace

std::uint32_t LoadStoredChoices(RememberedChoices& choices) {
  if (choices.placement > 1) {
    choices.placement = 1;
    PartChoices parts;
    std::array<std::uint32_t, kOptions> options;
    options.fill(1);
    platform::RegistryKey key = nullptr;
    if (platform::RegOpenKeyExA(kKey, 0, platform::kKeyAllAccess, &key) == platform::kRegistryOk) {
      Query(key, kPlacementValue, choices.placement);
      for (const PartRow& row : PartRows()) {
        if (row.storedValue) Query(key, row.storedValue, parts[row.kind]);
      }
      for (std::size_t i = 0; i < kOptions; ++i) {
        Query(key, OptionRows()[i].storedValue, options[i]);
      }
      platform::RegCloseKey(key);
    }
    // What another version or a hand in the registry left is read as the
    // nearest choice the dialog offers.
    for (const PartRow& row : PartRows()) {
      const std::uint32_t stored = parts[row.kind];
      if (row.kind == PartKind::kFill) {
        choices.parts[row.kind] = IsFillChoice(stored) ? stored : 0;
      } else if (row.kind != PartKind::kMain) {
        choices.parts[row.kind] = stored != 0 ? 1 : 0;
      }
    }
    for (std::size_t i = 0; i < kOptions; ++i) {
      choices.options[OptionRows()[i].option] = options[i] != 0;
    }
  }
  if (choices.placement > 1) choices.placement = 1;
  return choices.placement;
}

void SaveStoredChoices(std::uint32_t flags, RememberedChoices& choices) {
  choices.placement = flags;
  platform::RegistryKey key = nullptr;
  if (platform::RegOpenKeyExA(kKey, 0, platform::kKeyAllAccess, &key) != platform::kRegistryOk) {
    return;
  }
  Store(key, kPlacementValue, choices.placement);
  for (const PartRow& row : PartRows()) {
    if (row.storedValue) Store(key, row.storedValue, choices.parts[row.kind]);
  }
  for (const OptionRow& row : OptionRows()) {
    Store(key, row.storedValue, choices.options[row.option] ? 1 : 0);
  }
  platform::RegCloseKey(key);
}

}  // namespace rw::shell
