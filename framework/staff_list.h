// Staff lists "uIOS": the order of the staves, one 24-byte record per entry
// at (list number, index). List 0 is the score's own order.
#pragma once

#include <cantel/cantel.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "regions.h"

namespace rw {

inline constexpr std::size_t kMaxStaffListEntries = 1000;
inline constexpr std::uint16_t kNoStaffList = 0xFFFF;

class StaffListEntry {
 public:
  std::uint16_t Staff() const;
  // Signed page units; the third 32-bit word of the record.
  std::int32_t VerticalPosition() const;
  void SetVerticalPosition(std::int32_t position);

  std::uint8_t* Record() { return record_.data(); }
  const std::uint8_t* Record() const { return record_.data(); }

 private:
  std::array<std::uint8_t, CX_STAFF_LIST_SIZE> record_{};
};

class StaffList {
 public:
  StaffList() = default;
  explicit StaffList(std::uint16_t list) { Load(list); }

  // Reads entries from index 0 until one does not load, at most
  // kMaxStaffListEntries of them.
  void Load(std::uint16_t list);
  std::size_t Count() const { return entries_.size(); }
  StaffListEntry& Entry(std::size_t index) { return entries_.at(index); }
  const StaffListEntry& Entry(std::size_t index) const { return entries_.at(index); }
  std::uint16_t ListNumber() const { return list_; }

 private:
  std::uint16_t list_ = 0;
  std::vector<StaffListEntry> entries_;
};

// Writes every entry to `list`, then deletes the records a longer list left
// behind it. False when a write was refused.
bool SaveStaffList(const StaffList& staves, std::uint16_t list);

// Selector 1: the score's list 0; 2: list n; 3: 65528; 4: 65499 + n for n
// from 1 to 8. kNoStaffList for anything else or a list that does not
// exist; a bad selector and a missing list are reported to the user.
std::uint16_t GetStaffListNumber(int selector, int n);

// Adds a staff at the bottom of the score, 250 page units below the staff
// above it. Answers the new staff and its slot; both 0 when the host added
// none or gave it no slot.
RegionStaff AddStaffAtBottom();

}  // namespace rw
