#include "staff_list.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "host_api.h"
#include "records.h"

namespace rw {
namespace {

constexpr std::uint16_t kScoreList = 0;
constexpr std::uint16_t kLayoutList = 65528;
constexpr std::uint16_t kFirstNumberedList = 65499;
constexpr int kNumberedLists = 8;
constexpr std::size_t kMessageCapacity = 200;
constexpr std::uint16_t kMessageStyle = CX_MB_STOP;
// A new staff sits this far below the one that was last.
constexpr std::int64_t kNewStaffDistance = 250;
// Bounds the clean-up of leftovers against a host whose deletes never end.
constexpr std::uint32_t kMaxLeftoverDeletes = 0x10000;

void ShowMessage(const char* text) {
  host::CX_AlertMessage(0, kMessageStyle, 0, text, host::kVersion);
}

bool RecordExists(std::uint16_t list, std::uint16_t index) {
  return LoadRecord(CX_TAG_STAFF_LIST, list, index, nullptr, CX_STAFF_LIST_SIZE);
}

}  // namespace

std::uint16_t StaffListEntry::Staff() const {
  return cx_get_u16(record_.data(), CX_STAFF_LIST_STAFF);
}

std::int32_t StaffListEntry::VerticalPosition() const {
  return cx_get_i32(record_.data(), CX_STAFF_LIST_VERTICAL);
}

void StaffListEntry::SetVerticalPosition(std::int32_t position) {
  cx_put_u32(record_.data(), CX_STAFF_LIST_VERTICAL, static_cast<std::uint32_t>(position));
}

void StaffList::Load(std::uint16_t list) {
  list_ = list;
  entries_.clear();
  for (std::size_t index = 0; index < kMaxStaffListEntries; ++index) {
    StaffListEntry entry;
    if (!LoadRecord(CX_TAG_STAFF_LIST, list, static_cast<std::uint16_t>(index), entry.Record(),
                    CX_STAFF_LIST_SIZE)) {
      break;
    }
    entries_.push_back(entry);
  }
}

bool SaveStaffList(const StaffList& staves, std::uint16_t list) {
  bool saved = true;
  for (std::size_t index = 0; index < staves.Count(); ++index) {
    if (!SaveRecord(CX_TAG_STAFF_LIST, list, static_cast<std::uint16_t>(index),
                    staves.Entry(index).Record(), CX_STAFF_LIST_SIZE)) {
      saved = false;
    }
  }
  // Deleting moves the later records down, so the leftovers all pass
  // through index = count.
  const auto end = static_cast<std::uint16_t>(staves.Count());
  for (std::uint32_t i = 0; i < kMaxLeftoverDeletes && RecordExists(list, end); ++i) {
    if (!DeleteRecord(CX_TAG_STAFF_LIST, list, end)) break;
  }
  return saved;
}

std::uint16_t GetStaffListNumber(int selector, int n) {
  std::uint16_t list = kNoStaffList;
  switch (selector) {
    case 1:
      list = kScoreList;
      break;
    case 2:
      list = static_cast<std::uint16_t>(n);
      break;
    case 3:
      list = kLayoutList;
      break;
    case 4:
      if (n < 1 || n > kNumberedLists) return kNoStaffList;
      list = static_cast<std::uint16_t>(kFirstNumberedList + n);
      break;
    default:
      ShowMessage("pCTX_GetInstrumentList: invalid flag");
      return kNoStaffList;
  }
  if (!RecordExists(list, 0)) {
    char message[kMessageCapacity];
    std::snprintf(message, sizeof message, "pCTX_GetInstrumentList: list #%d does not exist",
                  static_cast<int>(list));
    ShowMessage(message);
    return kNoStaffList;
  }
  return list;
}

RegionStaff AddStaffAtBottom() {
  std::uint16_t staff = CX_NUMBER_ANY;
  std::uint16_t sub = 0;
  const bool answered = CreateRecord(CX_TAG_STAFF_SPEC, staff, sub, nullptr, CX_STAFF_SPEC_SIZE);
  if (!answered || staff == CX_NUMBER_ANY || staff == 0) return {};
  const std::uint32_t slot = host::CX_InstToSlot(staff, 0, host::kVersion);
  if (slot == 0) return {};
  if (slot > 1) {
    StaffList staves(kScoreList);
    if (staves.Count() >= slot) {
      const std::int64_t above = staves.Entry(slot - 2).VerticalPosition();
      const std::int64_t below = std::max<std::int64_t>(above - kNewStaffDistance, INT32_MIN);
      staves.Entry(slot - 1).SetVerticalPosition(static_cast<std::int32_t>(below));
    }
    SaveStaffList(staves, kScoreList);
  }
  return {slot, staff};
}

}  // namespace rw
