// The parts of a style, one row each: the main groove, and the companions
// that go with it in subfolders of its folder, named like it. The style
// library, the loading, the dialog's controls, the remembered choices and
// the refusals read this one table; the placement plan keeps only the rules
// by kind. A further part is a row, its control and its texts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace rw::shell {

enum class PartKind : std::uint8_t { kMain, kVariation, kCountIn, kFill, kEnding };
inline constexpr std::size_t kPartKinds = 5;

struct PartRow {
  PartKind kind;
  std::u16string_view folder;   // beside the main groove; empty for the main groove itself
  std::uint32_t nameString;     // what the dialog calls it ("fill"); 0 for the main groove
  std::uint32_t refusalString;  // "The fill of this style cannot be used: %s"; 0 for the main
  int control;                  // the dialog control that chooses it; 0 for the main groove
  const char* storedValue;      // where the choice is kept between sessions; null for the main
};

std::span<const PartRow> PartRows();
const PartRow& RowOf(PartKind kind);

// The user's choice of each part: 0 for not chosen; for the fill, how many
// measures a phrase has; 1 for every other chosen companion. The main
// groove is always placed.
class PartChoices {
 public:
  std::uint32_t& operator[](PartKind kind) { return values_[static_cast<std::size_t>(kind)]; }
  std::uint32_t operator[](PartKind kind) const { return values_[static_cast<std::size_t>(kind)]; }
  bool Chosen(PartKind kind) const { return kind == PartKind::kMain || (*this)[kind] != 0; }
  bool operator==(const PartChoices&) const = default;

 private:
  std::array<std::uint32_t, kPartKinds> values_{};
};

}  // namespace rw::shell
