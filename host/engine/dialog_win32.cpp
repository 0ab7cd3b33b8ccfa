// The dialog functions on Windows: the plug-in's real dialog template shown
// with DialogBoxParamW, every message forwarded to the plug-in's procedure,
// and the scripted user's actions played on the real controls, one posted
// WM_APP message per action. A person watching can have each action held
// back, and each moment before an action saved as a picture.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

#include "dialog_model.h"
#include "dialog_shared.h"
#include "exports.h"
#include "label_fit_win32.h"
#include "screenshot_win32.h"
#include "state.h"
#include "utf.h"

using namespace cantel_engine;

namespace {

constexpr UINT kPlayNext = WM_APP + 1;
// Far from the plug-in's timer numbers; never forwarded to it. It holds an
// action back for a watching person, or until the screen shows the dialog.
constexpr UINT_PTR kWaitTimer = 0x7E01;
constexpr UINT kScreenWaitMs = 50;
constexpr UINT kDrawWaitMs = 200;
constexpr int kScreenWaits = 40;
// A label must leave this share of its room free: Windows' own fonts are not
// the ones measured here.
constexpr double kLabelMargin = 0.1;
// Lists of names the user gave (styles, staves), which no layout can promise
// to show whole.
const std::set<int> kListsOfNames = {1020, 2002};

struct Session {
  std::map<int, ControlState> controls;  // the template's: what each step records
  CX_DialogProc procedure = nullptr;
  uint32_t* data = nullptr;
  HWND window = nullptr;
  std::vector<DialogAction> script;
  std::size_t next = 0;
  std::set<uint16_t> timers;
  bool ended = false;
  bool ended_by_plugin = false;
  int number = 0;        // of the dialogs this engine has shown, from 1
  bool waiting = false;  // the wait timer is armed
  bool held = false;     // the next action has been held back already
  int screen_waits = 0;  // for the screen to show the dialog, before this action
  bool drawn = false;    // redrawn for the picture before this action
};

Session* current = nullptr;

bool own(void* dialog) { return current != nullptr && dialog == current->window; }

bool forward(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  return current->procedure(dialog, message, static_cast<uint64_t>(wparam),
                            static_cast<int64_t>(lparam), current->data) != 0;
}

std::string list_text(HWND list, bool combo, int index) {
  const auto length =
      SendMessageW(list, combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
  if (length < 0) return {};
  std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
  SendMessageW(list, combo ? CB_GETLBTEXT : LB_GETTEXT, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return utf16_to_utf8(text);
}

void record(HWND dialog, std::string event, std::string note = {}) {
  DialogStep step;
  step.event = std::move(event);
  step.note = std::move(note);
  step.ended = current->ended;
  HWND focus = GetFocus();
  step.focus = focus != nullptr && GetParent(focus) == dialog ? GetDlgCtrlID(focus) : 0;
  for (const auto& [id, kind_of] : current->controls) {
    using Kind = ControlState::Kind;
    HWND control = GetDlgItem(dialog, id);
    if (control == nullptr) continue;
    ControlState state;
    state.id = id;
    state.kind = kind_of.kind;
    state.enabled = IsWindowEnabled(control) != 0;
    if (state.kind == Kind::Radio || state.kind == Kind::CheckBox) {
      state.check = IsDlgButtonChecked(dialog, id) == BST_CHECKED ? 1 : 0;
    }
    if (state.is_list()) {
      const bool combo = state.kind == Kind::DropDown;
      const auto count = SendMessageW(control, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
      for (LRESULT i = 0; i < count; ++i)
        state.items.push_back(list_text(control, combo, static_cast<int>(i)));
      state.selection =
          static_cast<int>(SendMessageW(control, combo ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
    }
    if (state.kind == Kind::Text) {
      std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, u'\0');
      text.resize(static_cast<std::size_t>(GetWindowTextW(
          control, reinterpret_cast<LPWSTR>(text.data()), static_cast<int>(text.size()))));
      state.text = utf16_to_utf8(text);
    }
    step.controls.push_back(state);
  }
  state().dialog_steps.push_back(std::move(step));
}

void end(HWND dialog, INT_PTR value) {
  current->ended = true;
  EndDialog(dialog, value);
}

void choose(HWND dialog, int id, int row, const std::string& text, const std::string& event) {
  HWND list = GetDlgItem(dialog, id);
  const auto known = current->controls.find(id);
  if (list == nullptr || known == current->controls.end() || !known->second.is_list()) {
    return record(dialog, event, "no such list");
  }
  if (!IsWindowEnabled(list)) return record(dialog, event, "disabled: not chosen");
  const bool combo = known->second.kind == ControlState::Kind::DropDown;
  const auto count = static_cast<int>(SendMessageW(list, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0));
  int index = row;
  if (!text.empty()) {
    index = -1;
    for (int i = 0; i < count; ++i) {
      if (list_text(list, combo, i) == text) index = i;
    }
  }
  if (index < 0 || index >= count) return record(dialog, event, "no such row");
  SendMessageW(list, combo ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(index), 0);
  SetFocus(list);
  // Setting the selection notifies nobody; a user's choice does.
  forward(dialog, WM_COMMAND, MAKEWPARAM(id, combo ? CBN_SELCHANGE : LBN_SELCHANGE),
          reinterpret_cast<LPARAM>(list));
  record(dialog, event);
}

void wait(HWND dialog, UINT milliseconds) {
  current->waiting = true;
  SetTimer(dialog, kWaitTimer, milliseconds, nullptr);
}

// Before an action: the hold, then the picture. False while either waits.
bool present(HWND dialog) {
  const Presentation& show = state().presentation;
  if (show.hold_ms > 0 && !current->held) {
    wait(dialog, static_cast<UINT>(show.hold_ms));
    return false;
  }
  if (!show.folder.empty()) {
    // What the dialog drew reaches the X server a moment later: the picture
    // waits for it, or it may show the controls half drawn.
    if (!current->drawn) {
      RedrawWindow(dialog, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
      current->drawn = true;
      wait(dialog, kDrawWaitMs);
      return false;
    }
    const auto picture = capture_window(dialog);
    // The X server maps a new window a moment after Windows shows it.
    if (picture && picture->blank() && current->screen_waits < kScreenWaits) {
      ++current->screen_waits;
      wait(dialog, kScreenWaitMs);
      return false;
    }
    const std::string stem = show.folder + "/" + show.name + "." + std::to_string(current->number) +
                             "." + std::to_string(current->next);
    if (picture) save_png(*picture, stem + ".png");
    std::ofstream(std::filesystem::u8path(stem + ".labels.txt"))
        << label_fit_report(dialog, kLabelMargin, kListsOfNames);
  }
  current->held = false;
  current->drawn = false;
  current->screen_waits = 0;
  return true;
}

void play_next(HWND dialog) {
  // A tick, or the end of a wait, comes first.
  if (current->ended || current->waiting || !current->timers.empty()) return;
  if (!present(dialog)) return;
  if (current->next >= current->script.size()) {
    forward(dialog, WM_CLOSE, 0, 0);
    current->ended = true;
    record(dialog, "system close");
    EndDialog(dialog, 0);
    return;
  }
  const DialogAction action = current->script[current->next++];
  const std::string event = action_event(action);
  switch (action.kind) {
    case DialogAction::Kind::Click: {
      HWND control = GetDlgItem(dialog, action.control);
      if (control == nullptr || !IsWindowEnabled(control)) {
        record(dialog, event, control == nullptr ? "no such control" : "disabled: not clicked");
      } else {
        forward(dialog, WM_COMMAND, MAKEWPARAM(action.control, BN_CLICKED),
                reinterpret_cast<LPARAM>(control));
        record(dialog, event);
      }
      break;
    }
    case DialogAction::Kind::ChooseStyle:
      choose(dialog, 2002, -1, action.text, event);
      break;
    case DialogAction::Kind::ChooseRow:
      choose(dialog, action.control, action.row, action.text, event);
      break;
    case DialogAction::Kind::Close: {
      const bool handled = forward(dialog, WM_CLOSE, 0, 0);
      HWND cancel = GetDlgItem(dialog, 2);
      if (!handled && !current->ended && cancel != nullptr && IsWindowEnabled(cancel)) {
        current->ended = true;
      }
      record(dialog, event);
      if (current->ended) EndDialog(dialog, 2);
      break;
    }
    case DialogAction::Kind::RemoveGrooveFile:
      record(dialog, event, remove_groove_file(action.text));
      break;
  }
  if (!current->ended) PostMessageW(dialog, kPlayNext, 0, 0);
}

INT_PTR CALLBACK host_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (current == nullptr) return FALSE;
  switch (message) {
    case WM_INITDIALOG:
      current->window = dialog;
      forward(dialog, WM_INITDIALOG, 0, 0);
      record(dialog, "init");
      PostMessageW(dialog, kPlayNext, 0, 0);
      return TRUE;
    case kPlayNext:
      play_next(dialog);
      return TRUE;
    case WM_TIMER: {
      if (wparam == kWaitTimer) {
        KillTimer(dialog, kWaitTimer);
        current->waiting = false;
        current->held = true;
        play_next(dialog);
        return TRUE;
      }
      const auto timer = static_cast<uint16_t>(wparam);
      forward(dialog, WM_TIMER, wparam, lparam);
      if (!current->ended && current->timers.count(timer) != 0) {
        KillTimer(dialog, timer);
        current->timers.erase(timer);
      }
      record(dialog, "timer " + std::to_string(timer));
      if (!current->ended) PostMessageW(dialog, kPlayNext, 0, 0);
      return TRUE;
    }
    case WM_CLOSE:
      // Only the scripted close and the system close send it here.
      return FALSE;
    case WM_DESTROY:
      forward(dialog, WM_DESTROY, wparam, lparam);
      return FALSE;
    default:
      return forward(dialog, message, wparam, lparam) ? TRUE : FALSE;
  }
}

}  // namespace

CX_EXPORT int64_t CX_Dialog(uint16_t id, CX_DialogProc procedure, uint64_t data, uint16_t mode,
                            void* instance, uint32_t version) {
  auto* word = reinterpret_cast<uint32_t*>(data);
  const std::size_t call =
      log_dialog_call(id, reinterpret_cast<const void*>(procedure), word, mode, instance, version);
  if (procedure == nullptr || current != nullptr) {
    log_call_result(call, 0);
    return 0;
  }
  Session session;
  session.controls = dialog_template(id);
  session.procedure = procedure;
  session.data = word;
  session.script = state().dialog_script;
  session.number = ++state().dialogs_shown;
  current = &session;
  DialogBoxParamW(static_cast<HINSTANCE>(instance), MAKEINTRESOURCEW(id), nullptr, host_procedure,
                  0);
  current = nullptr;
  return dialog_ended(call, word, session.ended_by_plugin);
}
CX_CHECK_SIGNATURE(CX_Dialog);

CX_EXPORT void CX_EndDialog(void* dialog, uint32_t version) {
  log_call("CX_EndDialog", own(dialog), {}, version);
  if (current == nullptr) return;
  current->ended_by_plugin = true;
  end(static_cast<HWND>(dialog), 1);
}
CX_CHECK_SIGNATURE(CX_EndDialog);

CX_EXPORT uint32_t CX_GetDlgCntlVal_UTF16(void* dialog, uint32_t control, void* text,
                                          uint16_t capacity, uint32_t version) {
  const std::size_t call =
      log_call("CX_GetDlgCntlVal_UTF16", own(dialog), {control, given(text), capacity}, version);
  const uint32_t value =
      IsDlgButtonChecked(static_cast<HWND>(dialog), static_cast<int>(control)) == BST_CHECKED ? 1
                                                                                              : 0;
  log_call_result(call, value);
  return value;
}
CX_CHECK_SIGNATURE(CX_GetDlgCntlVal_UTF16);

CX_EXPORT void CX_SetDlgCntlVal_UTF16(void* dialog, uint32_t control, uint64_t text, uint32_t value,
                                      uint32_t version) {
  log_call("CX_SetDlgCntlVal_UTF16", own(dialog), {control, static_cast<int64_t>(text), value},
           version);
  CheckDlgButton(static_cast<HWND>(dialog), static_cast<int>(control),
                 value != 0 ? BST_CHECKED : BST_UNCHECKED);
}
CX_CHECK_SIGNATURE(CX_SetDlgCntlVal_UTF16);

CX_EXPORT void CX_SetTimer(void* dialog, uint16_t timer, uint32_t milliseconds, uint32_t version) {
  log_call("CX_SetTimer", own(dialog), {timer, milliseconds}, version);
  if (current != nullptr) current->timers.insert(timer);
  SetTimer(static_cast<HWND>(dialog), timer, milliseconds, nullptr);
}
CX_CHECK_SIGNATURE(CX_SetTimer);

CX_EXPORT void CX_KillTimer(void* dialog, uint16_t timer, uint32_t version) {
  log_call("CX_KillTimer", own(dialog), {timer}, version);
  if (current != nullptr) current->timers.erase(timer);
  KillTimer(static_cast<HWND>(dialog), timer);
}
CX_CHECK_SIGNATURE(CX_KillTimer);

CX_EXPORT void CX_EnableDlgItem(void* dialog, uint32_t control, uint16_t enable, uint32_t version) {
  log_call("CX_EnableDlgItem", own(dialog), {control, enable}, version);
  EnableWindow(GetDlgItem(static_cast<HWND>(dialog), static_cast<int>(control)), enable != 0);
}
CX_CHECK_SIGNATURE(CX_EnableDlgItem);

CX_EXPORT void CX_SetDlgFocus(void* dialog, uint32_t control, uint32_t version) {
  log_call("CX_SetDlgFocus", own(dialog), {control}, version);
  SetFocus(GetDlgItem(static_cast<HWND>(dialog), static_cast<int>(control)));
}
CX_CHECK_SIGNATURE(CX_SetDlgFocus);
