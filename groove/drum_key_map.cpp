#include "drum_key_map.h"

#include <array>

namespace rw::groove {
namespace {

constexpr DrumKeyMapping kElectronicKitKeys[] = {
    {22, 42},  // hi-hat edge, closed
    {26, 46},  // hi-hat edge, open
};

}  // namespace

const std::array<uint8_t, 256> detail::kWrittenKeys = [] {
  std::array<uint8_t, 256> keys{};
  for (std::size_t key = 0; key < keys.size(); ++key) keys[key] = uint8_t(key);
  for (const DrumKeyMapping& mapping : kElectronicKitKeys) keys[mapping.from] = mapping.to;
  return keys;
}();

std::span<const DrumKeyMapping> ElectronicKitKeys() { return kElectronicKitKeys; }

}  // namespace rw::groove
