#include "staff_list_fill.h"

#include <cantel/cantel.h>

#include "dialog_state.h"
#include "host_api.h"
#include "module_state.h"
#include "percussion_staff.h"
#include "platform.h"
#include "staff_names.h"
#include "staff_spec.h"

namespace rw::shell {

void FillStaffList(void* dialog) {
  platform::SendDlgItemMessageW(dialog, kStaffList, CX_CB_RESETCONTENT, 0, 0);

  std::int32_t rows = 0;
  std::int32_t drumRow = 0;  // 1-based; 0 when no staff plays drums
  const std::uint32_t last = documentRegion.endSlot;
  for (std::uint32_t slot = documentRegion.startSlot; slot <= last; ++slot) {
    const std::uint16_t staff =
        host::CX_SlotToInst(static_cast<std::uint16_t>(slot), documentRegion.startList, host::kVersion);
    CStaffSpec spec;
    spec.Load(staff, host::kVersion);
    const eu16string name = StaffDisplayName(spec);
    platform::SendDlgItemMessageW(dialog, kStaffList, CX_CB_ADDSTRING, 0,
                                  static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(name.c_str())));
    ++rows;
    if (notation::IsPercussionStaff(staff)) drumRow = rows;
  }

  const auto Check = [dialog](int control, std::uint32_t state) {
    host::CX_SetDlgCntlVal_UTF16(dialog, static_cast<std::uint32_t>(control), 0, state, host::kVersion);
  };
  if (drumRow > 0) {
    Check(kRadioNewStaff, 0);
    host::CX_EnableDlgItem(dialog, kStaffList, 1, host::kVersion);
    Check(kRadioExistingStaff, 1);
    platform::SendDlgItemMessageW(dialog, kStaffList, CX_CB_SETCURSEL,
                                  static_cast<std::uint64_t>(drumRow - 1), 0);
  } else {
    Check(kRadioNewStaff, 1);
    Check(kRadioExistingStaff, 0);
    platform::SendDlgItemMessageW(dialog, kStaffList, CX_CB_SETCURSEL, 0, 0);
    host::CX_EnableDlgItem(dialog, kStaffList, 0, host::kVersion);
  }
}

}  // namespace rw::shell
