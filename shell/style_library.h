// The styles the user can choose: the Standard MIDI Files of the groove
// folder "Rhythm Weave" inside the host's Component Files folder, in the
// order of the directory search, rebuilt at every opening of the dialog.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform.h"

namespace rw::shell {

struct GrooveStyle {
  platform::FindData found;  // the search's record; only the name is used
};

extern std::vector<GrooveStyle> styleLibrary;
// UTF-16, ending in a separator; the file names are appended to it.
extern std::u16string grooveFolder;
// The row of the Generate list to select (the notation style).
extern std::int32_t notationIndex;

inline constexpr char16_t kTemporaryFileName[] = u"RhythmWeave$$Temp$$File.mid";

// Fills the style list (2002) and, when a style was found, the Generate
// list (1019). Shows string 22 and answers false when the folder has none.
bool FillStyleLibrary(void* dialog);

}  // namespace rw::shell
