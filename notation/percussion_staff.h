// A staff prepared for drums: percussion notation with the "Sonetta
// Percussion" font and the drum-set clef, and playback on MIDI channel 10.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::notation {

// Switches the staff to percussion notation tied to the document's
// percussion map, then sets the drum-set clef over the region. The clef word
// of the staff specification changes only for a new staff or a region that
// starts at measure 1.
void SetUpPercussionStaff(std::uint16_t instrument, const ERegion& region, bool newStaff);

// Puts the staff on channel 10 through a channel definition found among
// numbers 1 to 99 or created and named after the plug-in. False when no
// definition could be created; the staff is then unchanged.
bool EnsurePercussionChannel(std::uint16_t instrument);

// True when the staff plays through the host's own percussion channel
// (channel word 0x8009); a definition this plug-in created does not count.
bool IsPercussionStaff(std::uint16_t instrument);

}  // namespace rw::notation
