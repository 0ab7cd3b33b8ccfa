// Staff names with the "[Staff %d]" fall-back for staves without one.
#pragma once

#include <cstdint>

#include "eu16string.h"
#include "staff_spec.h"
#include "text_object.h"

namespace rw {

// 0 when the staff has a name of its own (then loaded into `text`), 1 when
// a generated "[Staff n]" was put into `text` instead.
std::uint16_t GetStaffFullName(const CStaffSpec& spec, CUTextObject& text);
std::uint16_t GetStaffAbbreviatedName(const CStaffSpec& spec, CUTextObject& text);

// True when the name's text block is set and its text loads.
bool HasStaffFullName(const CStaffSpec& spec);
bool HasStaffAbbreviatedName(const CStaffSpec& spec);

// What a list of staves shows: the full name, else the abbreviated name,
// else "[Staff n]", tags reduced to plain text.
eu16string StaffDisplayName(const CStaffSpec& spec);

// Gives `staff` a full and an abbreviated name of its own, as texts shown by
// text blocks that its staff record ("SIOS") names. False, and the staff
// record unchanged, when the host refused a text, a block or the record.
bool SetStaffNames(std::uint16_t staff, const char16_t* fullName, const char16_t* abbreviatedName);

}  // namespace rw
