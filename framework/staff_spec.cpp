#include "staff_spec.h"

#include <cantel/cantel.h>

#include <cstring>

namespace rw {
// A new specification is blank: no names, no flags, the host's standard
// notation. Whatever the host keeps beyond that it fills in on load.
void SetStaffSpecDefaults(std::uint8_t* spec) { std::memset(spec, 0, CX_STAFF_SPEC_SIZE); }

CStaffSpec::CStaffSpec() {
  Allocate(CX_TAG_STAFF_SPEC, CX_STAFF_SPEC_SIZE);
  SetStaffSpecDefaults(Data());
}

CStaffSpec::~CStaffSpec() = default;

std::uint16_t CStaffSpec::Create() { return 0; }

std::uint16_t CStaffSpec::FullNameBlock() const {
  return cx_get_u16(Data(), CX_STAFF_SPEC_FULL_NAME);
}

std::uint16_t CStaffSpec::AbbreviatedNameBlock() const {
  return cx_get_u16(Data(), CX_STAFF_SPEC_ABBREVIATED_NAME);
}

}  // namespace rw
