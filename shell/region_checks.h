// The checks of the score that come before anything in it changes.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::shell {

// True when every measure of `work` has the same time signature and none is
// composite; otherwise shows string 17 or 18.
bool CheckTimeSignatures(const ERegion& work);
// True when the staff in `slot` is empty over the measures of `work`, or the
// user agreed (string 14) to replace what it holds.
bool CheckExistingNotes(const ERegion& work, std::uint16_t slot);
// True when the document holds a percussion map.
bool HasPercussionMap();

}  // namespace rw::shell
