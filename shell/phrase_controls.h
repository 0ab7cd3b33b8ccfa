// The phrase controls under the Generate list: "Fill every:" with its
// drop-down, and "End with the ending". Each is offered (enabled) only while
// the selected style has that companion. One not offered shows no fills and
// no ending, and the user's choice waits, unchanged, for a style that has
// one; the template starts with neither offered, as no style is selected.
#pragma once

#include <cstdint>

#include "module_state.h"

namespace rw::shell {

// Lists the fill choices and starts this opening from the remembered ones;
// `phrase` offers nothing yet, as the template starts.
void FillPhraseControls(void* dialog, PhraseControls& phrase, const RememberedChoices& choices);

// Offers the controls the selected style has companions for, each showing
// the user's choice; withdraws the others.
void OfferPhrase(void* dialog, PhraseControls& phrase, bool hasFill, bool hasEnding);

// The ending box was clicked. It is not automatic: the dialog keeps its state.
void ToggleEnding(void* dialog, PhraseControls& phrase);

// Takes the drop-down's choice while it is offered; then `phrase` holds what
// to remember.
void ReadPhrase(void* dialog, PhraseControls& phrase);

}  // namespace rw::shell
