// The slash notation finish of a staff: slashes in its empty measures and
// the slash staff style over the region, with the staff's earlier slash-style
// assignments trimmed around it and all its assignments kept in order.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::notation {

// The whole step. The region's end is clipped to the end of its measure
// first when it reaches it, in `region` itself. Returns true.
bool ApplySlashNotation(ERegion& region);

// Deletes, trims or splits the slash-style assignments of the region's
// staves so that none overlaps the region. True when anything changed.
bool RemoveSlashStyleAssignments(const ERegion& region);

// Assigns the slash style to the region on each of its staves; false when
// no style could be had, and then nothing is assigned.
bool AssignSlashStyle(const ERegion& region);

// Sorts the staff style assignments of each staff of the region by start.
void ReorderStyleAssignments(const ERegion& region);

}  // namespace rw::notation
