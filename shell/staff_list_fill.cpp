#include "staff_list_fill.h"

#include <algorithm>

#include "dialog_ids.h"
#include "host_api.h"
#include "percussion_staff.h"
#include "staff_names.h"
#include "staff_spec.h"

namespace rw::shell {
namespace {

constexpr std::int64_t kDropDownFrameUnits = 16;
constexpr std::int64_t kMaxDropDownWidths = 4;
constexpr std::int64_t kMaxDropDownPixels = 0x10000;  // no list is wider; a larger answer is wrong

void SetCheck(void* dialog, std::uint32_t control, std::uint32_t state) {
  host::CX_SetDlgCntlVal_UTF16(dialog, control, 0, state, host::kVersion);
}

// A name's width in dialog units, with room to spare: an average character
// is 4 units wide by definition, and a wide (East Asian) one about twice that.
std::int64_t NameUnits(const eu16string& name) {
  std::int64_t units = 0;
  for (const char16_t* c = name.c_str(); *c != 0; ++c) {
    const bool wide = (*c >= 0x1100 && *c <= 0x115F) || (*c >= 0x2E80 && *c <= 0xA4CF) ||
                      (*c >= 0xAC00 && *c <= 0xD7A3) || (*c >= 0xF900 && *c <= 0xFAFF) ||
                      (*c >= 0xFF00 && *c <= 0xFF60) || (*c >= 0xFFE0 && *c <= 0xFFE6);
    units += wide ? 8 : 4;
  }
  // Capitals and spacing run wider than the average; then the list's margins
  // and a scroll bar.
  return units + units / 5 + kDropDownFrameUnits;
}

// The list drops down wide enough for its longest name, up to a few times its
// own width. The closed list is RW_STAFF_LIST_WIDTH units wide in every
// layout, which gives the scale from units to the pixels the message takes.
void WidenDropDown(void* dialog, std::int64_t longestUnits) {
  const std::int64_t pixels =
      host::SendDlgItemMessageW(dialog, RW_ID_STAFF_LIST, CX_CB_GETDROPPEDWIDTH, 0, 0);
  if (pixels <= 0 || pixels > kMaxDropDownPixels || longestUnits <= RW_STAFF_LIST_WIDTH) return;
  const std::int64_t units = std::min(longestUnits, kMaxDropDownWidths * RW_STAFF_LIST_WIDTH);
  host::SendDlgItemMessageW(dialog, RW_ID_STAFF_LIST, CX_CB_SETDROPPEDWIDTH,
                            static_cast<std::uint64_t>(pixels * units / RW_STAFF_LIST_WIDTH), 0);
}

void SelectStaffRow(void* dialog, std::int32_t row) {
  host::SendDlgItemMessageW(dialog, RW_ID_STAFF_LIST, CX_CB_SETCURSEL,
                            static_cast<std::uint64_t>(row), 0);
}

}  // namespace

void FillStaffList(void* dialog, const ERegion& document) {
  host::SendDlgItemMessageW(dialog, RW_ID_STAFF_LIST, CX_CB_RESETCONTENT, 0, 0);

  std::int32_t rows = 0;
  std::int32_t drumRow = 0;  // 1-based; 0 when no staff plays drums
  std::int64_t longestUnits = 0;
  const std::uint32_t last = document.endSlot;
  for (std::uint32_t slot = document.startSlot; slot <= last; ++slot) {
    const std::uint16_t staff =
        host::CX_SlotToInst(static_cast<std::uint16_t>(slot), document.startList, host::kVersion);
    CStaffSpec spec;
    spec.Load(staff, host::kVersion);
    const eu16string name = StaffDisplayName(spec);
    host::SendDlgItemMessageW(
        dialog, RW_ID_STAFF_LIST, CX_CB_ADDSTRING, 0,
        static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(name.c_str())));
    ++rows;
    if (notation::IsPercussionStaff(staff)) drumRow = rows;
    longestUnits = std::max(longestUnits, NameUnits(name));
  }
  WidenDropDown(dialog, longestUnits);

  if (drumRow > 0) {
    SetCheck(dialog, RW_ID_NEW_STAFF, 0);
    host::CX_EnableDlgItem(dialog, RW_ID_STAFF_LIST, 1, host::kVersion);
    SetCheck(dialog, RW_ID_EXISTING_STAFF, 1);
    SelectStaffRow(dialog, drumRow - 1);
  } else {
    SetCheck(dialog, RW_ID_NEW_STAFF, 1);
    SetCheck(dialog, RW_ID_EXISTING_STAFF, 0);
    SelectStaffRow(dialog, 0);
    host::CX_EnableDlgItem(dialog, RW_ID_STAFF_LIST, 0, host::kVersion);
  }
}

}  // namespace rw::shell
