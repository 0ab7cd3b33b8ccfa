// The dialog functions on Windows: the plug-in's real dialog template shown
// with DialogBoxParamW, every message forwarded to the plug-in's procedure,
// and the scripted user's actions played on the real controls, one posted
// WM_APP message per action.
#include <windows.h>

#include <set>
#include <string>

#include "exports.h"
#include "state.h"
#include "utf.h"

using namespace cantel_engine;

namespace {

constexpr UINT kPlayNext = WM_APP + 1;
constexpr int kTemplateControls[] = {1, 2, 21, 22, 1019, 1020, 2002, 2003, 2004, 2006};

struct Session {
  CX_DialogProc procedure = nullptr;
  uint32_t* data = nullptr;
  std::vector<DialogAction> script;
  std::size_t next = 0;
  std::set<uint16_t> timers;
  bool ended = false;
  bool ended_by_plugin = false;
};

Session* current = nullptr;

bool forward(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  return current->procedure(dialog, message, static_cast<uint64_t>(wparam),
                            static_cast<int64_t>(lparam), current->data) != 0;
}

std::string list_text(HWND list, bool combo, int index) {
  const auto length = SendMessageW(list, combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN,
                                   static_cast<WPARAM>(index), 0);
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
  for (int id : kTemplateControls) {
    HWND control = GetDlgItem(dialog, id);
    if (control == nullptr) continue;
    ControlState state;
    state.id = id;
    state.enabled = IsWindowEnabled(control) != 0;
    if (id == 21 || id == 22) state.check = IsDlgButtonChecked(dialog, id) == BST_CHECKED ? 1 : 0;
    state.is_list = id == 2002 || id == 1019 || id == 1020;
    if (state.is_list) {
      const bool combo = id != 2002;
      const auto count = SendMessageW(control, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
      for (LRESULT i = 0; i < count; ++i) state.items.push_back(list_text(control, combo, static_cast<int>(i)));
      state.selection = static_cast<int>(SendMessageW(control, combo ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
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
  if (list == nullptr) return record(dialog, event, "no such list");
  if (!IsWindowEnabled(list)) return record(dialog, event, "disabled: not chosen");
  const bool combo = id != 2002;
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
  record(dialog, event);
}

void play_next(HWND dialog) {
  if (current->ended || !current->timers.empty()) return;  // a tick comes first
  if (current->next >= current->script.size()) {
    forward(dialog, WM_CLOSE, 0, 0);
    current->ended = true;
    record(dialog, "system close");
    EndDialog(dialog, 0);
    return;
  }
  const DialogAction action = current->script[current->next++];
  switch (action.kind) {
    case DialogAction::Kind::Click: {
      const std::string event = "click " + std::to_string(action.control);
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
      choose(dialog, 2002, -1, action.text, "choose style \"" + action.text + "\"");
      break;
    case DialogAction::Kind::ChooseRow:
      choose(dialog, action.control, action.row, action.text,
             "choose row " +
                 (action.text.empty() ? std::to_string(action.row) : "\"" + action.text + "\"") +
                 " of " + std::to_string(action.control));
      break;
    case DialogAction::Kind::Close: {
      const bool handled = forward(dialog, WM_CLOSE, 0, 0);
      HWND cancel = GetDlgItem(dialog, 2);
      if (!handled && !current->ended && cancel != nullptr && IsWindowEnabled(cancel)) {
        current->ended = true;
      }
      record(dialog, "close");
      if (current->ended) EndDialog(dialog, 2);
      break;
    }
  }
  if (!current->ended) PostMessageW(dialog, kPlayNext, 0, 0);
}

INT_PTR CALLBACK host_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (current == nullptr) return FALSE;
  switch (message) {
    case WM_INITDIALOG:
      forward(dialog, WM_INITDIALOG, 0, 0);
      record(dialog, "init");
      PostMessageW(dialog, kPlayNext, 0, 0);
      return TRUE;
    case kPlayNext:
      play_next(dialog);
      return TRUE;
    case WM_TIMER: {
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

CX_EXPORT int64_t CX_Dialog(uint16_t id, CX_DialogProc procedure, uint64_t data, uint16_t,
                            void* instance, uint32_t) {
  if (procedure == nullptr || current != nullptr) return 0;
  Session session;
  session.procedure = procedure;
  session.data = reinterpret_cast<uint32_t*>(data);
  session.script = state().dialog_script;
  current = &session;
  DialogBoxParamW(static_cast<HINSTANCE>(instance), MAKEINTRESOURCEW(id), nullptr, host_procedure, 0);
  current = nullptr;
  return session.ended_by_plugin ? 1 : 0;
}
CX_CHECK_SIGNATURE(CX_Dialog);

CX_EXPORT void CX_EndDialog(void* dialog, uint32_t) {
  if (current == nullptr) return;
  current->ended_by_plugin = true;
  end(static_cast<HWND>(dialog), 1);
}
CX_CHECK_SIGNATURE(CX_EndDialog);

CX_EXPORT uint32_t CX_GetDlgCntlVal_UTF16(void* dialog, uint32_t control, void*, uint16_t,
                                          uint32_t) {
  return IsDlgButtonChecked(static_cast<HWND>(dialog), static_cast<int>(control)) == BST_CHECKED ? 1 : 0;
}
CX_CHECK_SIGNATURE(CX_GetDlgCntlVal_UTF16);

CX_EXPORT void CX_SetDlgCntlVal_UTF16(void* dialog, uint32_t control, uint64_t, uint32_t value,
                                      uint32_t) {
  CheckDlgButton(static_cast<HWND>(dialog), static_cast<int>(control),
                 value != 0 ? BST_CHECKED : BST_UNCHECKED);
}
CX_CHECK_SIGNATURE(CX_SetDlgCntlVal_UTF16);

CX_EXPORT void CX_SetTimer(void* dialog, uint16_t timer, uint32_t milliseconds, uint32_t) {
  if (current != nullptr) current->timers.insert(timer);
  SetTimer(static_cast<HWND>(dialog), timer, milliseconds, nullptr);
}
CX_CHECK_SIGNATURE(CX_SetTimer);

CX_EXPORT void CX_KillTimer(void* dialog, uint16_t timer, uint32_t) {
  if (current != nullptr) current->timers.erase(timer);
  KillTimer(static_cast<HWND>(dialog), timer);
}
CX_CHECK_SIGNATURE(CX_KillTimer);

CX_EXPORT void CX_EnableDlgItem(void* dialog, uint32_t control, uint16_t enable, uint32_t) {
  EnableWindow(GetDlgItem(static_cast<HWND>(dialog), static_cast<int>(control)), enable != 0);
}
CX_CHECK_SIGNATURE(CX_EnableDlgItem);

CX_EXPORT void CX_SetDlgFocus(void* dialog, uint32_t control, uint32_t) {
  SetFocus(GetDlgItem(static_cast<HWND>(dialog), static_cast<int>(control)));
}
CX_CHECK_SIGNATURE(CX_SetDlgFocus);
