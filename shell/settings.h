// The choices kept between sessions of the host: whether the groove goes to
// a new staff at the bottom of the score ("rhythmweavePI"), the parts of a
// style to place (a fill every so many measures, the count-in, ...) and the
// dialog's options, each under the value its table row names. Stored in the
// current user's registry under "Software\HarpWorks", read at most once per
// loaded module (the key is never created), and remembered in memory for
// the module's life.
#pragma once

#include <cstdint>

#include "module_state.h"

namespace rw::shell {

// The fill choices the dialog offers, in measures; 0 for none.
inline constexpr std::uint32_t kFillChoices[] = {0, 2, 4, 8, 16};

// Fills `choices` from the registry while its placement still says
// kPlacementNotRead; answers the placement flags word, 0 or 1.
std::uint32_t LoadStoredChoices(RememberedChoices& choices);
// Remembers the dialog's flags word with the parts and options already in
// `choices`, and stores them all where the key exists.
void SaveStoredChoices(std::uint32_t flags, RememberedChoices& choices);

}  // namespace rw::shell
