#include "dialog.h"

#include <cantel/cantel.h>

#include <new>

#include "dialog_ids.h"
#include "generate.h"
#include "groove_parts.h"
#include "host_api.h"
#include "module_state.h"
#include "notation_styles.h"
#include "phrase_controls.h"
#include "region_checks.h"
#include "settings.h"
#include "staff_list_fill.h"
#include "style_info.h"
#include "style_info_line.h"
#include "style_library.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringCannotOpen = 19;
constexpr std::uint32_t kStringNoStyle = 23;
constexpr std::uint32_t kStringNoPercussionMap = 24;
constexpr char kEditName[] = "Rhythm Weave Plug-In";
constexpr std::uint16_t kCloseTimer = 1;
constexpr std::uint32_t kCloseTimerMilliseconds = 100;

using host::kVersion;

void SetCheck(void* dialog, std::uint32_t control, std::uint32_t state) {
  host::CX_SetDlgCntlVal_UTF16(dialog, control, 0, state, kVersion);
}

void Enable(void* dialog, std::uint32_t control, bool enable) {
  host::CX_EnableDlgItem(dialog, control, enable ? 1 : 0, kVersion);
}

// A list reports no selection as -1; the index is taken as 16-bit signed.
std::int32_t Selection(void* dialog, int control, std::uint32_t message) {
  const std::int64_t answer = host::SendDlgItemMessageW(dialog, control, message, 0, 0);
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(answer & 0xFFFF));
}

void EndDialog(void* dialog) { host::CX_EndDialog(dialog, kVersion); }

void OnInitDialog(void* dialog, CommandRun& run, RememberedChoices& choices) {
  run.timerPending = false;
  if (LoadStoredChoices(choices) & kFlagNewStaff) {
    SetCheck(dialog, RW_ID_NEW_STAFF, 1);
    Enable(dialog, RW_ID_STAFF_LIST, false);
  } else {
    SetCheck(dialog, RW_ID_EXISTING_STAFF, 1);
  }
  FillStaffList(dialog, run.document);
  run.styles = FillStyleLibrary(dialog, choices.notationRow);
  run.phrase = PhraseControls{};  // the template offers neither, whatever the last opening did
  if (!run.styles.empty()) FillPhraseControls(dialog, run.phrase, choices);
  // The region's meters cannot change while the dialog is open, so they are
  // checked once, here.
  run.regionAccepted = !run.styles.empty() && CheckTimeSignatures(run.work);
  if (!run.regionAccepted) {
    host::CX_SetTimer(dialog, kCloseTimer, kCloseTimerMilliseconds, kVersion);
    run.timerPending = true;
  }
}

void SaveDialogChoices(void* dialog, std::uint32_t* data, CommandRun& run,
                       RememberedChoices& choices) {
  *data = 0;
  if (host::CX_GetDlgCntlVal_UTF16(dialog, RW_ID_NEW_STAFF, nullptr, 0, kVersion) != 0) {
    *data |= kFlagNewStaff;
  }
  choices.styleRow = Selection(dialog, RW_ID_STYLE_LIST, CX_LB_GETCURSEL);
  choices.staffRow = Selection(dialog, RW_ID_STAFF_LIST, CX_CB_GETCURSEL);
  choices.notationRow = Selection(dialog, RW_ID_GENERATE_LIST, CX_CB_GETCURSEL);
  if (!run.styles.empty()) {
    ReadPhrase(dialog, run.phrase);
    choices.fillEvery = run.phrase.fillEvery;
    choices.ending = run.phrase.ending;
  }
  SaveStoredChoices(*data, choices);
}

GenerateOptions OptionsOf(const CommandRun& run, const RememberedChoices& choices,
                          std::uint32_t data) {
  GenerateOptions options;
  options.work = run.work;
  options.document = run.document;
  options.newStaff = (data & kFlagNewStaff) != 0;
  options.staffRow = choices.staffRow;
  const auto row = static_cast<std::size_t>(choices.styleRow);
  if (row < run.styles.size()) options.style = run.styles[row];  // else nothing opens: string 19
  options.notation = static_cast<NotationStyle>(choices.notationRow);
  options.fillEvery = choices.fillEvery;
  options.ending = choices.ending;
  return options;
}

// Answers whether the message was handled.
bool OnOk(void* dialog, std::uint32_t* data, CommandRun& run, RememberedChoices& choices) {
  SaveDialogChoices(dialog, data, run, choices);
  if (choices.styleRow < 0) {
    ShowMessage(kStringNoStyle, CX_MB_STOP);
    return true;
  }
  if (NotationStyleOfRow(choices.notationRow).needsPercussionMap && !HasPercussionMap()) {
    ShowMessage(kStringNoPercussionMap, CX_MB_STOP);
    return true;
  }
  if (run.styles.empty()) return false;
  if (!run.regionAccepted) return true;  // refused at the opening; the close timer ends the dialog

  const GenerateOptions options = OptionsOf(run, choices, *data);
  Enable(dialog, RW_ID_OK, false);
  Enable(dialog, RW_ID_CANCEL, false);
  host::CX_StartCantelEdit(kEditName, kVersion);
  bool generated = false;
  try {
    generated = GenerateGroove(options);
  } catch (const std::bad_alloc&) {
    ShowMessage(kStringCannotOpen, CX_MB_EXCLAMATION);
  } catch (...) {
  }
  host::CX_EndCantelEdit(kVersion);
  Enable(dialog, RW_ID_OK, true);
  Enable(dialog, RW_ID_CANCEL, true);
  if (generated) {
    run.result = 1;
    EndDialog(dialog);
  }
  return true;
}

// The user chose another style: what it is and whether it fits, and the
// phrase controls it has companions for. Found afresh at every choice, since
// the files may change while the dialog is open.
void OnStyleChosen(void* dialog, CommandRun& run) {
  const std::int32_t row = Selection(dialog, RW_ID_STYLE_LIST, CX_LB_GETCURSEL);
  if (row < 0 || static_cast<std::size_t>(row) >= run.styles.size()) {
    ShowStyleInfoLine(dialog, u"");
    OfferPhrase(dialog, run.phrase, false, false);
    return;
  }
  const GrooveStyle& style = run.styles[static_cast<std::size_t>(row)];
  const StyleInfo info = DescribeStyle(style, run.work);
  ShowStyleInfoLine(dialog, StyleInfoLine(style, info, RegionMeterOf(run.work)));
  OfferPhrase(dialog, run.phrase, info.hasFill, info.hasEnding);
}

bool OnCommand(void* dialog, int control, std::uint32_t notification, std::uint32_t* data) {
  CommandRun& run = moduleState.run;
  switch (control) {
    case RW_ID_STYLE_LIST:
      if (notification != CX_LBN_SELCHANGE) return false;
      OnStyleChosen(dialog, run);
      return true;
    case RW_ID_ENDING:
      if (notification != CX_BN_CLICKED) return false;
      ToggleEnding(dialog, run.phrase);
      return true;
    case RW_ID_NEW_STAFF:
      SetCheck(dialog, RW_ID_NEW_STAFF, 1);
      SetCheck(dialog, RW_ID_EXISTING_STAFF, 0);
      Enable(dialog, RW_ID_STAFF_LIST, false);
      return true;
    case RW_ID_EXISTING_STAFF:
      SetCheck(dialog, RW_ID_NEW_STAFF, 0);
      SetCheck(dialog, RW_ID_EXISTING_STAFF, 1);
      Enable(dialog, RW_ID_STAFF_LIST, true);
      host::CX_SetDlgFocus(dialog, RW_ID_STAFF_LIST, kVersion);
      return true;
    case RW_ID_CANCEL:
      *data |= kFlagCancelled;
      EndDialog(dialog);
      return true;
    case RW_ID_OK:
      return OnOk(dialog, data, run, moduleState.choices);
    default:
      return false;
  }
}

}  // namespace

std::uint8_t DialogProcedure(void* dialog, std::uint32_t message, std::uint64_t wparam,
                             std::int64_t, std::uint32_t* data) {
  CommandRun& run = moduleState.run;
  try {
    switch (message) {
      case CX_WM_DESTROY:
      case CX_WM_CLOSE:
        run.dialogRunning = 0;
        if (run.timerPending) {
          host::CX_KillTimer(dialog, kCloseTimer, kVersion);
          run.timerPending = false;
        }
        return 0;  // the host's default handling closes the dialog
      case CX_WM_INITDIALOG:
        OnInitDialog(dialog, run, moduleState.choices);
        return 1;
      case CX_WM_TIMER:
        host::CX_KillTimer(dialog, kCloseTimer, kVersion);
        run.timerPending = false;
        EndDialog(dialog);
        return 1;
      case CX_WM_COMMAND: {
        // Without the data word there is nowhere to keep the user's choices.
        std::uint32_t scratch = 0;
        return OnCommand(dialog, static_cast<int>(wparam & 0xFFFF),
                         static_cast<std::uint32_t>((wparam >> 16) & 0xFFFF),
                         data != nullptr ? data : &scratch)
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
