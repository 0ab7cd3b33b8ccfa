#include "dialog.h"

#include "dialog_state.h"
#include "generate.h"
#include "host_api.h"
#include "messages.h"
#include "module_state.h"
#include "platform.h"
#include "settings.h"
#include "staff_list_fill.h"
#include "style_library.h"

namespace rw::shell {

std::int32_t styleIndex = -1;
std::int32_t targetStaffIndex = 0;
bool timerPending = false;

namespace {

constexpr std::uint32_t kStringNoStyle = 23;
constexpr std::uint32_t kStringNoPercussionMap = 24;
constexpr char kEditName[] = "Rhythm Weave Plug-In";

using host::kVersion;

void SetCheck(void* dialog, int control, std::uint32_t state) {
  host::CX_SetDlgCntlVal_UTF16(dialog, static_cast<std::uint32_t>(control), 0, state, kVersion);
}

void Enable(void* dialog, int control, bool enable) {
  host::CX_EnableDlgItem(dialog, static_cast<std::uint32_t>(control), enable ? 1 : 0, kVersion);
}

// A list reports no selection as -1; the index is taken as 16-bit signed.
std::int32_t Selection(void* dialog, int control, std::uint32_t message) {
  const std::int64_t answer = platform::SendDlgItemMessageW(dialog, control, message, 0, 0);
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(answer & 0xFFFF));
}

void EndDialog(void* dialog) { host::CX_EndDialog(dialog, kVersion); }

void OnInitDialog(void* dialog) {
  timerPending = false;
  if (LoadPlacementSetting() & kFlagNewStaff) {
    SetCheck(dialog, kRadioNewStaff, 1);
    Enable(dialog, kStaffList, false);
  } else {
    SetCheck(dialog, kRadioExistingStaff, 1);
  }
  FillStaffList(dialog);
  const bool stylesFound = FillStyleLibrary(dialog);
  if (!stylesFound || !CheckTimeSignatures()) {
    host::CX_SetTimer(dialog, kCloseTimer, kCloseTimerMilliseconds, kVersion);
    timerPending = true;
  }
}

void SaveDialogChoices(void* dialog, std::uint32_t* data) {
  *data = 0;
  if (host::CX_GetDlgCntlVal_UTF16(dialog, kRadioNewStaff, nullptr, 0, kVersion) != 0) {
    *data |= kFlagNewStaff;
  }
  styleIndex = Selection(dialog, kStyleList, CX_LB_GETCURSEL);
  targetStaffIndex = Selection(dialog, kStaffList, CX_CB_GETCURSEL);
  notationIndex = Selection(dialog, kGenerateList, CX_CB_GETCURSEL);
  SavePlacementSetting(*data);
}

// Answers whether the message was handled.
bool OnOk(void* dialog, std::uint32_t* data) {
  SaveDialogChoices(dialog, data);
  if (styleIndex < 0) {
    ShowMessage(kStringNoStyle, CX_MB_STOP);
    return true;
  }
  if (notationIndex == static_cast<std::int32_t>(NotationStyle::PercussionMap) &&
      !HasPercussionMap()) {
    ShowMessage(kStringNoPercussionMap, CX_MB_STOP);
    return true;
  }
  if (styleLibrary.empty()) return false;

  Enable(dialog, kControlOk, false);
  Enable(dialog, kControlCancel, false);
  host::CX_StartCantelEdit(kEditName, kVersion);
  bool generated = false;
  try {
    generated = GenerateGroove(dialog, data);
  } catch (...) {
    generated = false;
  }
  host::CX_EndCantelEdit(kVersion);
  Enable(dialog, kControlOk, true);
  Enable(dialog, kControlCancel, true);
  if (generated) EndDialog(dialog);
  return true;
}

bool OnCommand(void* dialog, int control, std::uint32_t* data) {
  switch (control) {
    case kRadioNewStaff:
      SetCheck(dialog, kRadioNewStaff, 1);
      SetCheck(dialog, kRadioExistingStaff, 0);
      Enable(dialog, kStaffList, false);
      return true;
    case kRadioExistingStaff:
      SetCheck(dialog, kRadioNewStaff, 0);
      SetCheck(dialog, kRadioExistingStaff, 1);
      Enable(dialog, kStaffList, true);
      host::CX_SetDlgFocus(dialog, kStaffList, kVersion);
      return true;
    case kControlCancel:
      *data |= kFlagCancelled;
      EndDialog(dialog);
      return true;
    case kControlOk:
      return OnOk(dialog, data);
    default:
      return false;
  }
}

}  // namespace

std::uint8_t DialogProcedure(void* dialog, std::uint32_t message, std::uint64_t wparam,
                             std::int64_t, std::uint32_t* data) {
  try {
    switch (message) {
      case CX_WM_DESTROY:
      case CX_WM_CLOSE:
        dialogRunning = 0;
        if (timerPending) {
          host::CX_KillTimer(dialog, kCloseTimer, kVersion);
          timerPending = false;
        }
        return 0;  // the host's default handling closes the dialog
      case CX_WM_INITDIALOG:
        OnInitDialog(dialog);
        return 1;
      case CX_WM_TIMER:
        host::CX_KillTimer(dialog, kCloseTimer, kVersion);
        timerPending = false;
        EndDialog(dialog);
        return 1;
      case CX_WM_COMMAND: {
        // Without the data word there is nowhere to keep the user's choices.
        std::uint32_t scratch = 0;
        return OnCommand(dialog, static_cast<int>(wparam & 0xFFFF), data != nullptr ? data : &scratch)
                   ? 1
                   : 0;
      }
      default:
        return 0;
    }
  } catch (...) {
    return 0;
  }
}

}  // namespace rw::shell
