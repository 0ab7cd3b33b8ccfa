// The dialog functions of a host that owns the dialog's controls itself: it
// keeps them in a model, drives the plug-in's procedure with the scripted
// user's actions and records what the user saw after each step.
#include <memory>

#include "dialog_model.h"
#include "dialog_shared.h"
#include "exports.h"
#include "state.h"
#include "utf.h"

using namespace cantel_engine;

namespace {

DialogModel* current = nullptr;  // the modal dialog; one at a time

DialogModel* model(void* dialog) {
  return dialog != nullptr && dialog == current ? current : nullptr;
}

void record(const DialogModel& m, std::string event, std::string note = {}) {
  state().dialog_steps.push_back(m.snapshot(std::move(event), std::move(note)));
}

class Session {
 public:
  Session(CX_DialogProc procedure, uint32_t* data) : procedure_(procedure), data_(data) {}

  bool send(uint32_t message, uint64_t wparam) {
    return procedure_(&model_, message, wparam, 0, data_) != 0;
  }
  DialogModel& model() { return model_; }

  void play(const DialogAction& action) {
    const std::string event = action_event(action);
    switch (action.kind) {
      case DialogAction::Kind::Click: {
        ControlState* control = model_.control(action.control);
        if (control == nullptr || !control->enabled) {
          record(model_, event, control == nullptr ? "no such control" : "disabled: not clicked");
          return;
        }
        send(CX_WM_COMMAND, static_cast<uint32_t>(action.control) & 0xFFFFu);
        record(model_, event);
        return;
      }
      case DialogAction::Kind::ChooseStyle:
        choose(2002, -1, action.text, event);
        return;
      case DialogAction::Kind::ChooseRow:
        choose(action.control, action.row, action.text, event);
        return;
      case DialogAction::Kind::Close: {
        const bool handled = send(CX_WM_CLOSE, 0);
        const ControlState* cancel = model_.control(2);
        if (!handled && !model_.ended && cancel != nullptr && cancel->enabled) {
          model_.ended = true;
        }
        record(model_, event);
        return;
      }
      case DialogAction::Kind::RemoveGrooveFile:
        record(model_, event, remove_groove_file(action.text));
        return;
    }
  }

 private:
  void choose(int id, int row, const std::string& text, const std::string& event) {
    ControlState* list = model_.control(id);
    if (list == nullptr || !list->is_list()) {
      record(model_, event, "no such list");
      return;
    }
    if (!list->enabled) {
      record(model_, event, "disabled: not chosen");
      return;
    }
    int index = row;
    if (!text.empty()) {
      index = -1;
      for (std::size_t i = 0; i < list->items.size(); ++i) {
        if (list->items[i] == text) index = static_cast<int>(i);
      }
    }
    if (index < 0 || static_cast<std::size_t>(index) >= list->items.size()) {
      record(model_, event, "no such row");
      return;
    }
    list->selection = index;
    model_.focus = id;
    // As a user's choice does; LBN_SELCHANGE and CBN_SELCHANGE are both 1.
    send(CX_WM_COMMAND, (uint64_t{CX_LBN_SELCHANGE} << 16) | static_cast<uint32_t>(id));
    record(model_, event);
  }

  DialogModel model_;
  CX_DialogProc procedure_;
  uint32_t* data_;
};

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
  ++state().dialogs_shown;
  auto session = std::make_unique<Session>(procedure, word);
  DialogModel& m = session->model();
  m.controls = dialog_template(id);
  current = &m;
  session->send(CX_WM_INITDIALOG, 0);
  record(m, "init");
  const std::vector<DialogAction> script = state().dialog_script;
  std::size_t next = 0;
  while (!m.ended) {
    if (!m.timers.empty()) {
      const uint16_t timer = *m.timers.begin();
      session->send(CX_WM_TIMER, timer);
      record(m, "timer " + std::to_string(timer));
      // A timer the procedure neither kills nor answers would tick forever.
      if (!m.ended && m.timers.count(timer) != 0) m.timers.erase(timer);
      continue;
    }
    if (next < script.size()) {
      session->play(script[next++]);
      continue;
    }
    session->send(CX_WM_CLOSE, 0);
    m.ended = true;
    record(m, "system close");
  }
  session->send(CX_WM_DESTROY, 0);
  current = nullptr;
  return dialog_ended(call, word, m.ended_by_plugin);
}
CX_CHECK_SIGNATURE(CX_Dialog);

CX_EXPORT void CX_EndDialog(void* dialog, uint32_t version) {
  DialogModel* m = model(dialog);
  log_call("CX_EndDialog", m != nullptr, {}, version);
  if (m != nullptr) {
    m->ended = true;
    m->ended_by_plugin = true;
  }
}
CX_CHECK_SIGNATURE(CX_EndDialog);

CX_EXPORT uint32_t CX_GetDlgCntlVal_UTF16(void* dialog, uint32_t control, void* text,
                                          uint16_t capacity, uint32_t version) {
  DialogModel* m = model(dialog);
  const std::size_t call =
      log_call("CX_GetDlgCntlVal_UTF16", m != nullptr, {control, given(text), capacity}, version);
  ControlState* c = m != nullptr ? m->control(static_cast<int>(control)) : nullptr;
  const uint32_t value = c != nullptr ? c->check : 0;
  log_call_result(call, value);
  return value;
}
CX_CHECK_SIGNATURE(CX_GetDlgCntlVal_UTF16);

CX_EXPORT void CX_SetDlgCntlVal_UTF16(void* dialog, uint32_t control, uint64_t text, uint32_t value,
                                      uint32_t version) {
  DialogModel* m = model(dialog);
  log_call("CX_SetDlgCntlVal_UTF16", m != nullptr, {control, static_cast<int64_t>(text), value},
           version);
  if (ControlState* c = m != nullptr ? m->control(static_cast<int>(control)) : nullptr) {
    c->check = value != 0 ? 1 : 0;
  }
}
CX_CHECK_SIGNATURE(CX_SetDlgCntlVal_UTF16);

CX_EXPORT void CX_SetTimer(void* dialog, uint16_t timer, uint32_t milliseconds, uint32_t version) {
  DialogModel* m = model(dialog);
  log_call("CX_SetTimer", m != nullptr, {timer, milliseconds}, version);
  if (m != nullptr) m->timers.insert(timer);
}
CX_CHECK_SIGNATURE(CX_SetTimer);

CX_EXPORT void CX_KillTimer(void* dialog, uint16_t timer, uint32_t version) {
  DialogModel* m = model(dialog);
  log_call("CX_KillTimer", m != nullptr, {timer}, version);
  if (m != nullptr) m->timers.erase(timer);
}
CX_CHECK_SIGNATURE(CX_KillTimer);

CX_EXPORT void CX_EnableDlgItem(void* dialog, uint32_t control, uint16_t enable, uint32_t version) {
  DialogModel* m = model(dialog);
  log_call("CX_EnableDlgItem", m != nullptr, {control, enable}, version);
  if (ControlState* c = m != nullptr ? m->control(static_cast<int>(control)) : nullptr) {
    c->enabled = enable != 0;
    if (!c->enabled && m->focus == c->id) m->focus = 0;
  }
}
CX_CHECK_SIGNATURE(CX_EnableDlgItem);

CX_EXPORT void CX_SetDlgFocus(void* dialog, uint32_t control, uint32_t version) {
  DialogModel* m = model(dialog);
  log_call("CX_SetDlgFocus", m != nullptr, {control}, version);
  if (m != nullptr && m->control(static_cast<int>(control)) != nullptr) {
    m->focus = static_cast<int>(control);
  }
}
CX_CHECK_SIGNATURE(CX_SetDlgFocus);
namespace {
bool carries_text(uint32_t message) {
  return message == CX_LB_ADDSTRING || message == CX_CB_ADDSTRING || message == CX_WM_SETTEXT;
}
}  // namespace

CX_EXPORT int64_t SendDlgItemMessageW(void* dialog, int32_t control, uint32_t message,
                                      uint64_t wparam, int64_t lparam) {
  DialogModel* m = model(dialog);
  if (m == nullptr) return 0;
  std::string text;
  if (carries_text(message) && lparam != 0) {
    text = utf16_to_utf8(read_utf16(reinterpret_cast<const char16_t*>(lparam), 4096));
  }
  return m->control_message(control, message, wparam, text);
}
static_assert(std::is_same_v<decltype(SendDlgItemMessageW), SendDlgItemMessageW_t>);

CX_EXPORT int64_t SendDlgItemMessageA(void* dialog, int32_t control, uint32_t message,
                                      uint64_t wparam, int64_t lparam) {
  DialogModel* m = model(dialog);
  if (m == nullptr) return 0;
  std::string text;
  if (carries_text(message) && lparam != 0) text = reinterpret_cast<const char*>(lparam);
  return m->control_message(control, message, wparam, text);
}
static_assert(std::is_same_v<decltype(SendDlgItemMessageA), SendDlgItemMessageA_t>);
