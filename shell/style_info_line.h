// The line under the Generate list that tells, before OK, what the selected
// style is: its name whole (the style list cuts long ones), its meter and
// length and whether it fits the selected measures by the command's own
// rules, and the drums it plays; for a file the command would refuse, why,
// in one line. Texts in the user's language.
#pragma once

#include <string>

#include "groove_verdict.h"
#include "style_info.h"
#include "style_library.h"

namespace rw::shell {

std::u16string StyleInfoLine(const GrooveStyle& style, const StyleInfo& info,
                             groove::RegionMeter selected);

// Shows `text` in the line (empty: nothing selected).
void ShowStyleInfoLine(void* dialog, const std::u16string& text);

}  // namespace rw::shell
