// Keys an electronic kit sends that General MIDI does not name, and the
// General MIDI keys a straightened groove writes instead: the hi-hat's edge
// zone is closed hi-hat on 22 and open hi-hat on 26.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace rw::groove {

struct DrumKeyMapping {
  uint8_t from = 0;
  uint8_t to = 0;
  friend bool operator==(const DrumKeyMapping&, const DrumKeyMapping&) = default;
};

// The one table of such mappings, in order of `from`.
std::span<const DrumKeyMapping> ElectronicKitKeys();

namespace detail {
// Every key's written key, so that a stroke costs one look-up.
extern const std::array<uint8_t, 256> kWrittenKeys;
}  // namespace detail

// The key a stroke is written on: its mapping, or the key itself.
inline uint8_t GeneralMidiKeyOf(uint8_t key) { return detail::kWrittenKeys[key]; }

// General MIDI names percussion keys 35 (Acoustic Bass Drum) to 81 (Open
// Triangle).
inline bool IsGeneralMidiDrumKey(uint8_t key) { return key >= 35 && key <= 81; }

}  // namespace rw::groove
