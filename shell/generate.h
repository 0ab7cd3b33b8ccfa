// The command itself: the target staff checked, the style's files read,
// filtered and checked, the staff prepared, the groove placed once per its
// length with a fill closing each phrase and an ending closing the region
// when chosen, the staff finished and the playback markers added.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

#include "notation_styles.h"
#include "style_library.h"

namespace rw::shell {

// What the user chose in the dialog, and the regions of the run.
struct GenerateOptions {
  ERegion work{};             // whole measures, with one time signature throughout
  ERegion document{};         // the whole document
  bool newStaff = false;      // "New Staff at Bottom of Score"
  std::int32_t staffRow = 0;  // otherwise this row of the staff list; its slot is the row + 1
  GrooveStyle style;
  NotationStyle notation = NotationStyle::PercussionMap;
  std::uint32_t fillEvery = 0;  // a fill closes every this many measures; 0: no fills
  bool ending = false;          // the region closes with the style's ending
};

// Runs one command inside the edit the dialog opened; true when the groove
// was written. Every message it needs it shows itself; whatever refuses the
// run does so before anything in the score changes.
bool GenerateGroove(const GenerateOptions& options);

}  // namespace rw::shell
