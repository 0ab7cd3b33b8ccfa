// The command itself: checks, the groove file read and filtered, the staff
// prepared, the groove placed once per its length, the staff finished and
// the playback markers added.
#pragma once

#include <cstdint>

namespace rw::shell {

// True when every measure of the working region has the same time
// signature and none is composite; otherwise shows string 17 or 18.
bool CheckTimeSignatures();
// True when the target staff is empty in the working region, or the user
// agreed (string 14) to replace what it holds.
bool CheckExistingNotes();
// True when the document holds a percussion map.
bool HasPercussionMap();
// Runs one command; true ends the dialog. Sets commandResult on success.
bool GenerateGroove(void* dialog, std::uint32_t* data);

}  // namespace rw::shell
