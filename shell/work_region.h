// The region the command fills, prepared before its dialog opens.
#pragma once

#include <cantel/cantel.h>

namespace rw::shell {

// The selection (widened to whole measures once the user agreed, string 25)
// or the whole document (once the user agreed, string 13) into `work`.
// False when the user declined or the region runs backwards.
bool PrepareWorkRegion(const ERegion* selection, const ERegion& document, ERegion& work);

}  // namespace rw::shell
