#include "slash_style.h"

#include <cantel/cantel.h>

#include <cstddef>

#include "records.h"

namespace rw::notation {
namespace {

constexpr std::size_t kStyleKind = 4;
constexpr std::size_t kOption1 = 74;
constexpr std::size_t kOption2 = 76;
constexpr std::size_t kOption3 = 78;
constexpr std::size_t kOption4 = 80;
constexpr std::size_t kStyleName = 82;
constexpr std::size_t kStyleNameUnits = 96;

constexpr std::uint16_t kSlashKind = 28929;  // 0x7101
constexpr std::uint16_t kSlashOption2 = 4096;
constexpr std::uint16_t kLastSearchedStyle = 999;
constexpr char16_t kSlashStyleName[] = u"Rhythm Weave Slash Notation";

}  // namespace

bool IsSlashStyle(const std::uint8_t* definition) {
  return cx_get_u16(definition, kStyleKind) == kSlashKind &&
         cx_get_u16(definition, kOption1) == 0 &&
         cx_get_u16(definition, kOption2) == kSlashOption2 && cx_get_u16(definition, kOption3) == 0;
}

bool IsSlashStyleNumber(std::uint16_t number) {
  std::uint8_t definition[CX_STAFF_STYLE_SIZE];
  return LoadRecord(CX_TAG_STAFF_STYLE, number, 0, definition, CX_STAFF_STYLE_SIZE) &&
         IsSlashStyle(definition);
}

std::uint16_t FindOrCreateSlashStyle() {
  for (std::uint16_t number = 1; number <= kLastSearchedStyle; ++number) {
    if (IsSlashStyleNumber(number)) return number;
  }

  std::uint8_t definition[CX_STAFF_STYLE_SIZE] = {};
  cx_put_u16(definition, kStyleKind, kSlashKind);
  cx_put_u16(definition, kOption1, 0);
  cx_put_u16(definition, kOption2, kSlashOption2);
  cx_put_u16(definition, kOption3, 0);
  cx_put_u16(definition, kOption4, 1);
  for (std::size_t i = 0; i < kStyleNameUnits && kSlashStyleName[i] != 0; ++i) {
    cx_put_u16(definition, kStyleName + 2 * i, kSlashStyleName[i]);
  }
  std::uint16_t number = CX_NUMBER_ANY;
  std::uint16_t sub = 0;
  if (!CreateRecord(CX_TAG_STAFF_STYLE, number, sub, definition, CX_STAFF_STYLE_SIZE) ||
      number == CX_NUMBER_ANY) {
    return 0;
  }
  return number;
}

}  // namespace rw::notation
