#include "work_region.h"

#include <cstring>

#include "user_messages.h"

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

bool PrepareWorkRegion(const ERegion* selection, const ERegion& document, ERegion& work) {
  if (selection != nullptr) {
    std::memcpy(&work, selection, sizeof work);
    if (RunsBackwards(work)) return false;
    if (CoversWholeMeasures(work)) return true;
    if (!AskYesNo(kStringPartialSelection)) return false;
    // Only our copy widens; the host's selection stays as it is.
    work.startPosition = 0;
    work.endPosition = CX_END_OF_MEASURE;
    return true;
  }
  if (RunsBackwards(document)) return false;
  if (!AskYesNo(kStringNoSelection)) return false;
  work = document;
  return true;
}

}  // namespace rw::shell
