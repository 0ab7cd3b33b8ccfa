// The staff list of the dialog (1020) and the placement it suggests.
#pragma once

#include <cantel/cantel.h>

namespace rw::shell {

// Lists the staves of `document` in list 1020 and chooses the placement:
// the last drum staff, when there is one, is selected with "Existing
// Staff:"; otherwise "New Staff at Bottom of Score". This overrides the
// stored setting, which has set the radio buttons just before.
void FillStaffList(void* dialog, const ERegion& document);

}  // namespace rw::shell
