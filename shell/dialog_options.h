// The dialog's check boxes that are no part of a style: one row each, with
// the control and the value that keeps the choice between sessions. All
// start checked.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace rw::shell {

enum class Option : std::uint8_t {
  kCrashAfterFill,  // "Crash after each fill"
  kStraighten,      // "Straighten played timing"
  kOnlyFitting,     // "Only styles that fit these measures"
};
inline constexpr std::size_t kOptions = 3;

struct OptionRow {
  Option option;
  int control;
  const char* storedValue;
};

std::span<const OptionRow> OptionRows();

class OptionChoices {
 public:
  bool& operator[](Option option) { return values_[static_cast<std::size_t>(option)]; }
  bool operator[](Option option) const { return values_[static_cast<std::size_t>(option)]; }
  bool operator==(const OptionChoices&) const = default;

 private:
  std::array<bool, kOptions> values_{true, true, true};
};

}  // namespace rw::shell
