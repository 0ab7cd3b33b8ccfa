#include "staff_names.h"

#include <cantel/cantel.h>

#include "plain_text.h"
#include "wide_string.h"

namespace rw {
namespace {

constexpr char16_t kGeneratedName[] = u"[Staff %d]";
constexpr std::size_t kGeneratedNameUnits = 256;

// Two characters or more, or a single one that is not a space.
bool IsOwnName(const eu16string& plain) {
  return plain.length() >= 2 || (plain.length() == 1 && plain.c_str()[0] != u' ');
}

std::uint16_t NameOrFallback(const CStaffSpec& spec, std::uint16_t block, CUTextObject& text) {
  if (block != 0 && text.Load(block, CX_INTERFACE_VERSION) != 0 && IsOwnName(MakePlainText(text))) {
    return 0;
  }
  char16_t generated[kGeneratedNameUnits];
  WideFormat(generated, kGeneratedNameUnits, kGeneratedName, {spec.StaffNumber()});
  text.SetText(generated);
  return 1;
}

bool NameLoads(std::uint16_t block) {
  if (block == 0) return false;
  CUTextObject text;
  return text.Load(block, CX_INTERFACE_VERSION) != 0;
}

}  // namespace

std::uint16_t GetStaffFullName(const CStaffSpec& spec, CUTextObject& text) {
  return NameOrFallback(spec, spec.FullNameBlock(), text);
}

std::uint16_t GetStaffAbbreviatedName(const CStaffSpec& spec, CUTextObject& text) {
  return NameOrFallback(spec, spec.AbbreviatedNameBlock(), text);
}

bool HasStaffFullName(const CStaffSpec& spec) { return NameLoads(spec.FullNameBlock()); }

bool HasStaffAbbreviatedName(const CStaffSpec& spec) {
  return NameLoads(spec.AbbreviatedNameBlock());
}

bool SetStaffNames(std::uint16_t staff, const char16_t* fullName, const char16_t* abbreviatedName) {
  CStaffSpec spec;
  if (spec.Load(staff, CX_INTERFACE_VERSION) == 0) return false;
  const std::uint16_t full = CreateTextBlock(fullName);
  const std::uint16_t abbreviated = full != 0 ? CreateTextBlock(abbreviatedName) : 0;
  if (abbreviated == 0) return false;
  cx_put_u16(spec.Data(), CX_STAFF_SPEC_FULL_NAME, full);
  cx_put_u16(spec.Data(), CX_STAFF_SPEC_ABBREVIATED_NAME, abbreviated);
  return spec.Save(staff, CX_INTERFACE_VERSION) != 0;
}

eu16string StaffDisplayName(const CStaffSpec& spec) {
  CUTextObject text;
  if (GetStaffFullName(spec, text) == 0) return MakePlainText(text);
  CUTextObject abbreviated;
  if (GetStaffAbbreviatedName(spec, abbreviated) == 0) return MakePlainText(abbreviated);
  // Both fell back to the same generated name.
  return eu16string(text.Text());
}

}  // namespace rw
