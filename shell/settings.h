// The choices kept between sessions of the host: whether the groove goes to
// a new staff at the bottom of the score, and the phrase (a fill every so
// many measures, an ending). Stored in the current user's registry under
// "Software\HarpWorks" as "rhythmweavePI", "rhythmweaveFill" and
// "rhythmweaveEnding", read at most once per loaded module (the key is never
// created), and remembered in memory for the module's life.
#pragma once

#include <cstdint>

#include "module_state.h"

namespace rw::shell {

// The fill choices the dialog offers, in measures; 0 for none.
inline constexpr std::uint32_t kFillChoices[] = {0, 2, 4, 8, 16};

// Fills `choices` from the registry while its placement still says
// kPlacementNotRead; answers the placement flags word, 0 or 1.
std::uint32_t LoadStoredChoices(RememberedChoices& choices);
// Remembers the dialog's flags word with the phrase already in `choices`,
// and stores all three where the key exists.
void SaveStoredChoices(std::uint32_t flags, RememberedChoices& choices);

}  // namespace rw::shell
