#include "slash_notation.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "entry_writer.h"
#include "records.h"
#include "regions.h"
#include "slash_style.h"

namespace rw::notation {
namespace {

constexpr std::uint32_t kAssignTag = CX_TAG_STAFF_STYLE_ASSIGN;
constexpr std::uint32_t kAssignSize = CX_STAFF_STYLE_ASSIGN_SIZE;
// Sub-numbers are 16-bit; the walks never go past the last one.
constexpr std::uint32_t kSubNumberLimit = 0xFFFF;

using Assignment = std::vector<std::uint8_t>;

// A place in the score, ordered by measure, then by position.
struct Point {
  std::uint32_t measure = 0;
  std::int32_t position = 0;
  auto operator<=>(const Point&) const = default;
};

Point StartOf(const std::uint8_t* assignment) {
  return {cx_get_u16(assignment, CX_STAFF_STYLE_ASSIGN_START_MEASURE),
          cx_get_i32(assignment, CX_STAFF_STYLE_ASSIGN_START_POSITION)};
}
Point EndOf(const std::uint8_t* assignment) {
  return {cx_get_u16(assignment, CX_STAFF_STYLE_ASSIGN_END_MEASURE),
          cx_get_i32(assignment, CX_STAFF_STYLE_ASSIGN_END_POSITION)};
}
void SetStart(std::uint8_t* assignment, Point start) {
  cx_put_u16(assignment, CX_STAFF_STYLE_ASSIGN_START_MEASURE,
             static_cast<std::uint16_t>(start.measure));
  cx_put_u32(assignment, CX_STAFF_STYLE_ASSIGN_START_POSITION,
             static_cast<std::uint32_t>(start.position));
}
void SetEnd(std::uint8_t* assignment, Point end) {
  cx_put_u16(assignment, CX_STAFF_STYLE_ASSIGN_END_MEASURE,
             static_cast<std::uint16_t>(end.measure));
  cx_put_u32(assignment, CX_STAFF_STYLE_ASSIGN_END_POSITION,
             static_cast<std::uint32_t>(end.position));
}

// The last place before the region and the first one after it.
Point JustBefore(const ERegion& region) {
  if (region.startPosition == 0) {
    return {static_cast<std::uint32_t>(region.startMeasure) - 1u, CX_END_OF_MEASURE};
  }
  return {region.startMeasure,
          static_cast<std::int32_t>(static_cast<std::int64_t>(region.startPosition) - 1)};
}
Point JustAfter(const ERegion& region) {
  if (region.endPosition == CX_END_OF_MEASURE) return {region.endMeasure + 1u, 0};
  return {region.endMeasure, region.endPosition + 1};
}

// The walks over a staff's assignments by sub-number.
bool LoadAssignment(std::uint16_t instrument, std::uint32_t sub, std::uint8_t* assignment) {
  return LoadRecord(kAssignTag, instrument, static_cast<std::uint16_t>(sub), assignment,
                    kAssignSize);
}

// Makes one staff's slash-style assignments leave the region free.
bool ClearRegionOnStaff(std::uint16_t instrument, const ERegion& region) {
  const Point regionStart{region.startMeasure, region.startPosition};
  const Point regionEnd{region.endMeasure, region.endPosition};
  bool changed = false;
  std::uint8_t assignment[kAssignSize];
  for (std::uint32_t sub = 0;
       sub < kSubNumberLimit && LoadAssignment(instrument, sub, assignment);) {
    const Point start = StartOf(assignment);
    const Point end = EndOf(assignment);
    if (!IsSlashStyleNumber(cx_get_u16(assignment, CX_STAFF_STYLE_ASSIGN_STYLE)) ||
        end < regionStart || start > regionEnd) {
      ++sub;
      continue;
    }
    if (start >= regionStart && end <= regionEnd) {
      // Deleting moves the later ones down onto this sub-number; a refused
      // delete moves the walk on instead.
      if (DeleteRecord(kAssignTag, instrument, static_cast<std::uint16_t>(sub))) {
        changed = true;
      } else {
        ++sub;
      }
      continue;
    }
    if (start < regionStart) {
      if (end > regionEnd) {
        std::uint8_t after[kAssignSize];
        std::memcpy(after, assignment, kAssignSize);
        SetStart(after, JustAfter(region));
        std::uint16_t number = instrument;
        std::uint16_t appended = CX_SUBNUMBER_APPEND;
        CreateRecord(kAssignTag, number, appended, after, kAssignSize);
      }
      SetEnd(assignment, JustBefore(region));
    } else {
      SetStart(assignment, JustAfter(region));
    }
    changed = SaveRecord(kAssignTag, instrument, static_cast<std::uint16_t>(sub), assignment,
                         kAssignSize) ||
              changed;
    ++sub;
  }
  return changed;
}

void ReorderOnStaff(std::uint16_t instrument) {
  std::vector<Assignment> collected;
  Assignment assignment(kAssignSize);
  while (collected.size() < kSubNumberLimit && LoadAssignment(instrument, 0, assignment.data())) {
    // A refused delete would bring the same record back forever.
    if (!DeleteRecord(kAssignTag, instrument, 0)) break;
    collected.push_back(assignment);
  }
  std::stable_sort(collected.begin(), collected.end(),
                   [](const Assignment& a, const Assignment& b) {
                     return StartOf(a.data()) < StartOf(b.data());
                   });
  // Whatever the host kept stays first, and the collected ones follow it.
  std::uint32_t sub = 0;
  while (sub < kSubNumberLimit && LoadAssignment(instrument, sub, assignment.data())) ++sub;
  for (const Assignment& saved : collected) {
    SaveRecord(kAssignTag, instrument, static_cast<std::uint16_t>(sub), saved.data(), kAssignSize);
    ++sub;
  }
}

// The staves of the region that hold a staff.
template <typename PerStaff>
void ForEachStaff(const ERegion& region, PerStaff perStaff) {
  for (const RegionStaff& staff : StavesOfRegion(region)) {
    if (staff.staff != 0) perStaff(staff.staff);
  }
}

}  // namespace

bool RemoveSlashStyleAssignments(const ERegion& region) {
  bool changed = false;
  ForEachStaff(region, [&](std::uint16_t instrument) {
    changed = ClearRegionOnStaff(instrument, region) || changed;
  });
  return changed;
}

bool AssignSlashStyle(const ERegion& region) {
  const std::uint16_t style = FindOrCreateSlashStyle();
  if (style == 0) return false;
  ForEachStaff(region, [&](std::uint16_t instrument) {
    std::uint8_t assignment[kAssignSize] = {};
    cx_put_u16(assignment, CX_STAFF_STYLE_ASSIGN_STYLE, style);
    SetStart(assignment, {region.startMeasure, region.startPosition});
    SetEnd(assignment, {region.endMeasure, region.endPosition});
    std::uint16_t number = instrument;
    std::uint16_t sub = CX_SUBNUMBER_APPEND;
    CreateRecord(kAssignTag, number, sub, assignment, kAssignSize);
  });
  return true;
}

void ReorderStyleAssignments(const ERegion& region) { ForEachStaff(region, ReorderOnStaff); }

bool ApplySlashNotation(ERegion& region) {
  WriteSlashEntries(region);
  NormalizeRegionEnd(region);
  RemoveSlashStyleAssignments(region);
  AssignSlashStyle(region);
  ReorderStyleAssignments(region);
  return true;
}

}  // namespace rw::notation
