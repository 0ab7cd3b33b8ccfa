// The dialog's remembered choices: the options the generate command reads.
// They live as long as the module and survive each dialog and run.
#pragma once

#include <cstdint>

namespace rw::shell {

enum class NotationStyle : std::int32_t { PercussionMap = 0, Normal = 1, Slash = 2 };

extern std::int32_t styleIndex;        // row of the style list, -1 for none
extern std::int32_t targetStaffIndex;  // row of the staff list; its slot is this + 1
extern bool timerPending;              // the close timer is armed
// notationIndex (the row of the Generate list) lives with the style library.

// Dialog controls.
inline constexpr int kControlOk = 1;
inline constexpr int kControlCancel = 2;
inline constexpr int kRadioNewStaff = 21;
inline constexpr int kRadioExistingStaff = 22;
inline constexpr int kStaffList = 1020;
inline constexpr int kGenerateList = 1019;
inline constexpr int kStyleList = 2002;
inline constexpr std::uint16_t kCloseTimer = 1;
inline constexpr std::uint32_t kCloseTimerMilliseconds = 100;

}  // namespace rw::shell
