// The command itself: the target staff checked, the style's files read,
// filtered and checked, the staff prepared, the parts placed as the plan
// says (a count-in, the grooves phrase by phrase, a fill closing each
// phrase, the ending closing the region), the staff finished and the
// playback markers added.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

#include "notation_styles.h"
#include "style_library.h"
#include "style_parts.h"

namespace rw::shell {

// What the user chose in the dialog, and the regions of the run.
struct GenerateOptions {
  ERegion work{};             // whole measures, with one time signature throughout
  ERegion document{};         // the whole document
  bool newStaff = false;      // "New Staff at Bottom of Score"
  std::int32_t staffRow = 0;  // otherwise this row of the staff list; its slot is the row + 1
  GrooveStyle style;
  NotationStyle notation = NotationStyle::PercussionMap;
  PartChoices parts;  // the companions chosen; parts[kFill]: a fill every so many measures
  bool crashAfterFill = false;  // the measure after each fill starts with a crash
  bool straighten = true;       // played parts are written straight
};

// Runs one command inside the edit the dialog opened; true when the groove
// was written. Every message it needs it shows itself; whatever refuses the
// run does so before anything in the score changes.
bool GenerateGroove(const GenerateOptions& options);

}  // namespace rw::shell
