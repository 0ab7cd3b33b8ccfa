#include "regions.h"

#include <cmath>

#include "host_api.h"
#include "measures.h"

namespace rw {
namespace {
// Guards exact powers of two against a logarithm that rounds just below.
constexpr double kLogarithmGuard = 1e-8;
}  // namespace

void NormalizeRegionEnd(ERegion& region) {
  const std::int64_t end = region.endPosition;
  if (end > 0 && end + 1 >= MeasureDuration(region.endMeasure)) {
    region.endPosition = CX_END_OF_MEASURE;
  }
}

std::int32_t FirstWholeMeasure(const ERegion& region) {
  const std::int32_t start = region.startMeasure;
  return region.startPosition != 0 ? start + 1 : start;
}

std::int32_t LastWholeMeasure(const ERegion& region) {
  const std::int32_t end = region.endMeasure;
  const std::int64_t lastUnit = std::int64_t{MeasureDuration(region.endMeasure)} - 1;
  return region.endPosition < lastUnit ? end - 1 : end;
}

std::int64_t FloorPowerOfTwo(std::int64_t n) {
  if (n < 1) return 0;
  const auto k = static_cast<int>(std::log2(static_cast<double>(n)) + kLogarithmGuard);
  return std::int64_t{1} << k;
}

std::size_t FindRangeContaining(std::span<const ValueRange> ranges, std::int64_t value) {
  for (std::size_t i = 0; i < ranges.size(); ++i) {
    const bool last = i + 1 == ranges.size();
    if (ranges[i].first <= value && (last || ranges[i].end > value)) return i + 1;
  }
  return 0;
}

std::vector<RegionStaff> StavesOfRegion(const ERegion& region) {
  std::vector<RegionStaff> staves;
  const std::uint32_t first = region.startSlot;
  const std::uint32_t last = region.endSlot;
  for (std::uint32_t slot = first; slot <= last; ++slot) {
    const std::uint16_t staff =
        host::CX_SlotToInst(static_cast<std::uint16_t>(slot), region.startList, host::kVersion);
    staves.push_back({slot, staff});
  }
  return staves;
}

}  // namespace rw
