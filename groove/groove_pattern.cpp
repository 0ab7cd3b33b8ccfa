#include "groove_pattern.h"

namespace rw::groove {

int32_t GrooveMeasures(const GroovePattern& pattern) {
  if (!pattern.drumNotesFound || pattern.lastDrumMeasure <= 0) return 0;
  const int64_t ticksPerMeasure = pattern.timeSignature.ticksPerMeasure;
  int32_t measures = pattern.lastDrumMeasure;
  if (ticksPerMeasure > 0 && measures >= 2 &&
      static_cast<int64_t>(pattern.lastDrumTick) * 100 / ticksPerMeasure < 70) {
    --measures;
  }
  return measures;
}

}  // namespace rw::groove
