// The arrangement's controls under the Generate list: a check box for each
// companion part of a style ("Begin with the count-in", "Alternate with the
// second groove", "End with the ending"), "Fill every:" with its drop-down,
// and the options "Crash after each fill" and "Straighten played timing".
// Each is offered (enabled) only while it can apply: a part while the
// selected style has it, the crash while fills are chosen, the straightening
// while the style or a chosen companion was played. One not offered shows
// unchecked (no fills), and the user's choice waits, unchanged, for a style
// it applies to; the template starts with none offered, as no style is
// selected.
#pragma once

#include "module_state.h"

namespace rw::shell {

// Lists the fill choices and starts this opening from the remembered
// choices; nothing is offered yet, as the template starts.
void FillArrangementControls(void* dialog, ArrangementControls& controls,
                             const RememberedChoices& choices);

// What the selected style offers: its companions, and whether it or a
// chosen companion was played.
struct StyleOffer {
  std::array<bool, kPartKinds> parts{};
  bool played = false;
};
// Offers the controls that apply, each showing the user's choice; withdraws
// the others.
void OfferArrangement(void* dialog, ArrangementControls& controls, const StyleOffer& offer);

// A click on one of the check boxes (they are not automatic: the dialog
// keeps their state); false for another control.
bool ToggleArrangement(void* dialog, ArrangementControls& controls, int control);

// The fill drop-down's choice, while it is offered; the crash follows it.
void ReadFillChoice(void* dialog, ArrangementControls& controls);

}  // namespace rw::shell
