// The region the command fills, prepared before its dialog opens.
#pragma once

namespace rw::shell {

// Fills workRegion from the selection (widened to whole measures after the
// user agreed) or from the whole document (after the user agreed). False
// when the user declined or the region runs backwards.
bool PrepareWorkRegion();

}  // namespace rw::shell
