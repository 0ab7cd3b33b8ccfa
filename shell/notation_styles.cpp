#include "notation_styles.h"

#include "drum_clef.h"
#include "frame_record.h"
#include "percussion_staff.h"
#include "records.h"
#include "slash_notation.h"

namespace rw::shell {
namespace {

constexpr std::uint16_t kNewStaffFlags = 0xF700;
constexpr std::uint16_t kExistingStaffFlagsKept = 0xEFFE;

void PreparePercussionMap(const StaffTarget& target, const ERegion& work) {
  notation::SetUpPercussionStaff(target.staff, work, target.isNew);
}

void PrepareDrumClef(const StaffTarget& target, const ERegion& work) {
  notation::SetStaffClef(target.staff, notation::kDrumSetClef, work);
}

// Slashes keep the clef the staff has at the region's start.
void PrepareCurrentClef(const StaffTarget& target, const ERegion& work) {
  notation::FrameRecord frames;
  frames.Load(target.staff, work.startMeasure);
  notation::SetStaffClef(target.staff, frames.Clef(), work);
}

void PrepareNothing(const StaffTarget&, const ERegion&) {}

void FinishStaffFlags(const StaffTarget& target, const ERegion&) {
  std::uint8_t spec[CX_STAFF_SPEC_SIZE];
  if (!LoadRecord(CX_TAG_STAFF_SPEC, target.staff, 0, spec, sizeof spec)) return;
  const std::uint16_t flags = cx_get_u16(spec, CX_STAFF_SPEC_FLAGS);
  cx_put_u16(
      spec, CX_STAFF_SPEC_FLAGS,
      target.isNew ? kNewStaffFlags : static_cast<std::uint16_t>(flags & kExistingStaffFlagsKept));
  SaveRecord(CX_TAG_STAFF_SPEC, target.staff, 0, spec, sizeof spec);
}

void FinishSlashes(const StaffTarget& target, const ERegion& work) {
  ERegion region = work;
  region.startList = region.endList = 0;
  region.startSlot = region.endSlot = target.slot;
  notation::ApplySlashNotation(region);
}

constexpr NotationStyleRow kRows[] = {
    {NotationStyle::PercussionMap, 10, true, &PreparePercussionMap, &FinishStaffFlags},
    {NotationStyle::Normal, 11, false, &PrepareDrumClef, &FinishStaffFlags},
    {NotationStyle::Slash, 12, false, &PrepareCurrentClef, &FinishSlashes},
};
constexpr NotationStyleRow kNoRowChosen = {NotationStyle{-1}, 0, false, &PrepareNothing,
                                           &FinishStaffFlags};

constexpr bool RowsInOrder() {
  for (std::size_t row = 0; row < std::size(kRows); ++row) {
    if (static_cast<std::size_t>(kRows[row].style) != row) return false;
  }
  return true;
}
static_assert(RowsInOrder(), "a style's value is its row in the Generate list");

}  // namespace

std::span<const NotationStyleRow> NotationStyles() { return kRows; }

const NotationStyleRow& NotationStyleOfRow(std::int32_t row) {
  if (row < 0 || static_cast<std::size_t>(row) >= std::size(kRows)) return kNoRowChosen;
  return kRows[static_cast<std::size_t>(row)];
}

}  // namespace rw::shell
