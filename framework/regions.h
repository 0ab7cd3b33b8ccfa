// The host's region (ERegion) as the plug-in works on it: whole measures,
// clipped ends and the staves it covers. Slots and measures are widened to
// 32 bits before any arithmetic.
#pragma once

#include <cantel/cantel.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace rw {

// An end position that reaches the last duration unit of its measure
// becomes "to the end of the measure" (CX_END_OF_MEASURE).
void NormalizeRegionEnd(ERegion& region);

// The first measure the region covers whole: the start measure, or the one
// after it when the region starts inside it.
std::int32_t FirstWholeMeasure(const ERegion& region);
// The last measure the region covers whole: the end measure, or the one
// before it when the region ends before its last duration unit.
std::int32_t LastWholeMeasure(const ERegion& region);

// The largest power of two not above n; 0 for n below 1.
std::int64_t FloorPowerOfTwo(std::int64_t n);

// A range [first, end) of values.
struct ValueRange {
  std::int64_t first = 0;
  std::int64_t end = 0;
};
// 1-based index of the first range that holds `value`; the last range has no
// end. 0 when none does.
std::size_t FindRangeContaining(std::span<const ValueRange> ranges, std::int64_t value);

// One staff of a region: its slot and the staff (instrument) number shown
// there, 0 when the slot holds none.
struct RegionStaff {
  std::uint32_t slot = 0;
  std::uint16_t staff = 0;
};
// The region's staves from its start slot to its end slot, through the start
// half's staff list.
std::vector<RegionStaff> StavesOfRegion(const ERegion& region);

}  // namespace rw
