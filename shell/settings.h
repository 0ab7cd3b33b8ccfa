// The one choice kept between sessions of the host: whether the groove goes
// to a new staff at the bottom of the score. Stored in the current user's
// registry value "rhythmweavePI" under "Software\HarpWorks" (read at most
// once per loaded module; the key is never created) and remembered in
// memory for the module's life.
#pragma once

#include <cstdint>

namespace rw::shell {

// The placement flags word, 0 or 1. `placementSetting` is the module's copy; the
// registry is read only while it still says kPlacementNotRead.
std::uint32_t LoadPlacementSetting(std::uint32_t& placementSetting);
// Remembers the dialog's flags word, and stores it where the key exists.
void SavePlacementSetting(std::uint32_t flags, std::uint32_t& placementSetting);

}  // namespace rw::shell
