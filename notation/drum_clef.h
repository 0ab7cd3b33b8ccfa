// The clef of a staff over a region, and the check of the drum-set clef's
// definition, which must draw its symbol from the "Sonetta" font.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::notation {

inline constexpr std::uint16_t kDrumSetClef = 12;

// Sets `clef` in every measure of the region on the staff; for the drum-set
// clef it then checks its definition and, with the user's consent, repairs it.
void SetStaffClef(std::uint16_t instrument, std::uint16_t clef, const ERegion& region);

}  // namespace rw::notation
