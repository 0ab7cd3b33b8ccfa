#pragma once

namespace rw::shell {

// Lists the document's staves in list 1020 and chooses the placement: the
// last drum staff, when there is one, is selected with "Existing Staff:";
// otherwise "New Staff at Bottom of Score". This overrides the stored
// setting, which has set the radio buttons just before.
void FillStaffList(void* dialog);

}  // namespace rw::shell
