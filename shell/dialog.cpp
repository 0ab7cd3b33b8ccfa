#include "dialog.h"

#include <cantel/cantel.h>

#include <new>

#include "arrangement_controls.h"
#include "dialog_ids.h"
#include "generate.h"
#include "groove_parts.h"
#include "host_api.h"
#include "module_state.h"
#include "notation_styles.h"
#include "platform.h"
#include "region_checks.h"
#include "settings.h"
#include "staff_list_fill.h"
#include "string_resources.h"
#include "style_info.h"
#include "style_info_line.h"
#include "style_library.h"
#include "style_list.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringCannotOpen = 19;
constexpr std::uint32_t kStringNoGrooves = 22;
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

void SetText(void* dialog, int control, const std::u16string& text) {
  host::SendDlgItemMessageW(
      dialog, control, CX_WM_SETTEXT, 0,
      static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text.c_str())));
}

void EndDialog(void* dialog) { host::CX_EndDialog(dialog, kVersion); }

bool OnlyFitting(const CommandRun& run) { return run.arrangement.options[Option::kOnlyFitting]; }

// The style list as the filter box says; OK waits while the list says that
// no style fits.
void ShowStyles(void* dialog, CommandRun& run) {
  const bool noneFitted = run.rows.noneFits;
  run.rows = FillStyleList(dialog, run.styles, run.fits, OnlyFitting(run), RegionMeterOf(run.work));
  if (run.rows.noneFits != noneFitted) Enable(dialog, RW_ID_OK, !run.rows.noneFits);
}

// Nothing chosen: no description, no grid, nothing offered.
void ShowNoStyle(void* dialog, CommandRun& run) {
  ShowStyleInfoLine(dialog, u"");
  SetText(dialog, RW_ID_GROOVE_GRID, u"");
  OfferArrangement(dialog, run.arrangement, {});
}

// The drum grid in a fixed-width font, one line per instrument.
std::u16string GridText(const std::vector<std::string>& lines) {
  std::u16string text;
  for (const std::string& line : lines) text += (text.empty() ? u"" : u"\r\n") + Widened(line);
  return text;
}

GenerateOptions OptionsOf(const CommandRun& run, const RememberedChoices& choices,
                          std::uint32_t data, std::optional<std::size_t> style) {
  GenerateOptions options;
  options.work = run.work;
  options.document = run.document;
  options.newStaff = (data & kFlagNewStaff) != 0;
  options.staffRow = choices.staffRow;
  if (style) options.style = run.styles[*style];  // else nothing opens: string 19
  options.notation = static_cast<NotationStyle>(choices.notationRow);
  options.parts = run.arrangement.parts;
  options.crashAfterFill = run.arrangement.options[Option::kCrashAfterFill];
  options.straighten = run.arrangement.options[Option::kStraighten];
  return options;
}

// The style in the list's selection, if a style is selected.
std::optional<std::size_t> SelectedStyle(void* dialog, const CommandRun& run) {
  return StyleOfRow(run.rows, Selection(dialog, RW_ID_STYLE_LIST, CX_LB_GETCURSEL));
}

// The user chose another style, or another arrangement: what it is and
// whether it fits, its first measures, and the controls it has parts and
// played timing for. Found afresh at every choice, since the files may
// change while the dialog is open.
void DescribeSelection(void* dialog, CommandRun& run) {
  const std::optional<std::size_t> style = SelectedStyle(dialog, run);
  if (!style) {
    ShowNoStyle(dialog, run);
    return;
  }
  ReadFillChoice(dialog, run.arrangement);
  GenerateOptions options = OptionsOf(run, moduleState.choices, 0, style);
  // The style line judges the parts the user would get: those the dialog
  // offers, as it shows them.
  const StyleInfo info = DescribeStyle(options);
  OfferArrangement(dialog, run.arrangement, info.offer);
  ShowStyleInfoLine(dialog, StyleInfoLine(run.styles[*style], info, RegionMeterOf(run.work)));
  SetText(dialog, RW_ID_GROOVE_GRID, GridText(info.grid));
}

void OnInitDialog(void* dialog, CommandRun& run, RememberedChoices& choices) {
  run.timerPending = false;
  if (LoadStoredChoices(choices) & kFlagNewStaff) {
    SetCheck(dialog, RW_ID_NEW_STAFF, 1);
    Enable(dialog, RW_ID_STAFF_LIST, false);
  } else {
    SetCheck(dialog, RW_ID_EXISTING_STAFF, 1);
  }
  FillStaffList(dialog, run.document);
  host::SendDlgItemMessageW(dialog, RW_ID_STYLE_LIST, CX_LB_RESETCONTENT, 0, 0);
  host::SendDlgItemMessageW(dialog, RW_ID_GENERATE_LIST, CX_CB_RESETCONTENT, 0, 0);
  run.styles = FindStyles(FindGrooveRoots());
  run.fits.clear();
  run.rows = StyleListRows{};
  // The template offers none of the arrangement, whatever the last opening did.
  run.arrangement = ArrangementControls{};
  if (run.styles.empty()) {
    ShowMessage(kStringNoGrooves, CX_MB_EXCLAMATION);
  } else {
    FillGenerateList(dialog, choices.notationRow);
    FillArrangementControls(dialog, run.arrangement, choices);
    if (OnlyFitting(run)) SetCheck(dialog, RW_ID_ONLY_FITTING, 1);
    ShowStyles(dialog, run);
    run.gridFont = platform::CreateFixedWidthFont(dialog);
    if (run.gridFont) {
      host::SendDlgItemMessageW(dialog, RW_ID_GROOVE_GRID, CX_WM_SETFONT,
                                reinterpret_cast<std::uintptr_t>(run.gridFont), 0);
    }
  }
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
    ReadFillChoice(dialog, run.arrangement);
    choices.parts = run.arrangement.parts;
    choices.options = run.arrangement.options;
  }
  SaveStoredChoices(*data, choices);
}

// Answers whether the message was handled.
bool OnOk(void* dialog, std::uint32_t* data, CommandRun& run, RememberedChoices& choices) {
  SaveDialogChoices(dialog, data, run, choices);
  const std::optional<std::size_t> style = StyleOfRow(run.rows, choices.styleRow);
  if (!style) {
    ShowMessage(kStringNoStyle, CX_MB_STOP);
    return true;
  }
  if (NotationStyleOfRow(choices.notationRow).needsPercussionMap && !HasPercussionMap()) {
    ShowMessage(kStringNoPercussionMap, CX_MB_STOP);
    return true;
  }
  if (run.styles.empty()) return false;
  if (!run.regionAccepted) return true;  // refused at the opening; the close timer ends the dialog

  const GenerateOptions options = OptionsOf(run, choices, *data, style);
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

// The filter box was clicked: the list is filled again, keeping the chosen
// style selected when it is still listed.
void ToggleOnlyFitting(void* dialog, CommandRun& run) {
  const std::optional<std::size_t> chosen = SelectedStyle(dialog, run);
  bool& only = run.arrangement.options[Option::kOnlyFitting];
  only = !only;
  SetCheck(dialog, RW_ID_ONLY_FITTING, only ? 1 : 0);
  ShowStyles(dialog, run);
  for (std::size_t row = 0; chosen && row < run.rows.styleOfRow.size(); ++row) {
    if (run.rows.styleOfRow[row] == static_cast<std::int64_t>(*chosen)) {
      host::SendDlgItemMessageW(dialog, RW_ID_STYLE_LIST, CX_LB_SETCURSEL, row, 0);
      return;
    }
  }
  ShowNoStyle(dialog, run);
}

bool OnCommand(void* dialog, int control, std::uint32_t notification, std::uint32_t* data) {
  CommandRun& run = moduleState.run;
  switch (control) {
    case RW_ID_STYLE_LIST:
      if (notification != CX_LBN_SELCHANGE) return false;
      DescribeSelection(dialog, run);
      return true;
    case RW_ID_FILL_LIST:
      if (notification != CX_CBN_SELCHANGE) return false;
      DescribeSelection(dialog, run);
      return true;
    case RW_ID_ONLY_FITTING:
      if (notification != CX_BN_CLICKED) return false;
      ToggleOnlyFitting(dialog, run);
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
      if (notification != CX_BN_CLICKED) return false;
      if (!ToggleArrangement(dialog, run.arrangement, control)) return false;
      // Another part chosen changes what the style line judges.
      DescribeSelection(dialog, run);
      return true;
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
        if (message == CX_WM_DESTROY && run.gridFont) {
          platform::DeleteFont(run.gridFont);
          run.gridFont = nullptr;
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
