// Whether each label of a dialog fits its control in the font the dialog
// really uses: what a picture shows, checked by measure rather than by eye.
#ifndef CANTEL_ENGINE_LABEL_FIT_WIN32_H
#define CANTEL_ENGINE_LABEL_FIT_WIN32_H

#include <windows.h>

#include <set>
#include <string>

namespace cantel_engine {

// One line per control with a text: "fits" or "CUT", its id, what the text
// needs and what the control offers, in pixels, and the text. A drop-down
// list is measured by each of its rows, a control of several lines by the
// height its words wrap to. `margin` (e.g. 0.1) is the share of room that
// must be left over, for fonts a little wider than the ones measured. The
// lists in `names_of_the_user` hold names the user gave, not labels, and are
// passed over.
std::string label_fit_report(HWND dialog, double margin, const std::set<int>& names_of_the_user);

}  // namespace cantel_engine

#endif
