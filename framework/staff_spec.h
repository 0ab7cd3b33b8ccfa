// The staff specification "SIOS", one record per staff (instrument) number.
#pragma once

#include <cstdint>

#include "records.h"

namespace rw {

class CStaffSpec : public CEData {
 public:
  CStaffSpec();
  ~CStaffSpec() override;

  // Staff specifications are created by the host, never through this object.
  std::uint16_t Create() override;

  // The staff number this record was last loaded with.
  std::uint16_t StaffNumber() const { return CurrentNumber(); }
  std::uint16_t FullNameBlock() const;
  std::uint16_t AbbreviatedNameBlock() const;
};

// Lays the defaults of a new staff into a 136-byte specification.
void SetStaffSpecDefaults(std::uint8_t* spec);

}  // namespace rw
