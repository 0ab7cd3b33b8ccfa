// The one choice kept between runs of the host: whether the groove goes to a
// new staff at the bottom of the score. Kept in the current user's registry
// value "rhythmweavePI" under "Software\HarpWorks", read at most once per
// loaded module, and in memory for the module's life.
#pragma once

#include <cstdint>

namespace rw::shell {

// 0xFFFFFFFF until the registry has been read.
extern std::uint32_t placementSetting;

// The placement flags word, 0 or 1.
std::uint32_t LoadPlacementSetting();
// Stores the dialog's flags word in memory, and in the registry when the
// key exists (it is never created).
void SavePlacementSetting(std::uint32_t flags);

}  // namespace rw::shell
