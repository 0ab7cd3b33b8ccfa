#include "work_region.h"

#include <cstring>

#include "messages.h"
#include "module_state.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringPartialSelection = 25;
constexpr std::uint32_t kStringNoSelection = 13;

bool RunsBackwards(const ERegion& region) {
  return std::uint32_t{region.endMeasure} < std::uint32_t{region.startMeasure} ||
         std::uint32_t{region.endSlot} < std::uint32_t{region.startSlot};
}

bool CoversWholeMeasures(const ERegion& region) {
  return region.startPosition == 0 && region.endPosition == CX_END_OF_MEASURE;
}

}  // namespace

bool PrepareWorkRegion() {
  if (selectionRegion != nullptr) {
    std::memcpy(&workRegion, selectionRegion, sizeof workRegion);
    if (RunsBackwards(workRegion)) return false;
    if (CoversWholeMeasures(workRegion)) return true;
    if (!AskYesNo(kStringPartialSelection)) return false;
    // Only our copy widens; the host's selection stays as it is.
    workRegion.startPosition = 0;
    workRegion.endPosition = CX_END_OF_MEASURE;
    return true;
  }
  if (RunsBackwards(documentRegion)) return false;
  if (!AskYesNo(kStringNoSelection)) return false;
  workRegion = documentRegion;
  return true;
}

}  // namespace rw::shell
