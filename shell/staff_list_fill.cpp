#include "staff_list_fill.h"

#include "dialog_ids.h"
#include "host_api.h"
#include "percussion_staff.h"
#include "staff_names.h"
#include "staff_spec.h"

namespace rw::shell {
namespace {

void SetCheck(void* dialog, std::uint32_t control, std::uint32_t state) {
  host::CX_SetDlgCntlVal_UTF16(dialog, control, 0, state, host::kVersion);
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
  }

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
