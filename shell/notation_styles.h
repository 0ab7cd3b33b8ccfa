// The notation styles of the Generate list, in its row order: the one table
// that the dialog (the percussion-map check), the style library (the rows'
// texts) and the generate command (what happens before and after the
// import) read.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <span>

namespace rw::shell {

enum class NotationStyle : std::int32_t { PercussionMap = 0, Normal = 1, Slash = 2 };

// The staff that receives the groove, found once per run.
struct StaffTarget {
  std::uint16_t staff = 0;  // its staff (instrument) number
  std::uint16_t slot = 0;   // where it stands in the score
  bool isNew = false;       // added at the bottom for this run
};

struct NotationStyleRow {
  NotationStyle style;      // equals the row
  std::uint32_t stringId;   // the row's text in the Generate list
  bool needsPercussionMap;  // refused at OK in a document without one
  // Before the import: the staff's notation and clef over the region. The
  // channel is set after it for every style.
  void (*prepare)(const StaffTarget& target, const ERegion& work);
  // After the import.
  void (*finish)(const StaffTarget& target, const ERegion& work);
};

std::span<const NotationStyleRow> NotationStyles();

// The style of a Generate-list row. A row outside the table (the list was
// empty at OK) prepares nothing but the channel and ends with the staff
// flags, as a written style does.
const NotationStyleRow& NotationStyleOfRow(std::int32_t row);

}  // namespace rw::shell
