// The controls of a plug-in dialog as a host that draws nothing keeps them,
// and the scripted user who works them.
#ifndef CANTEL_ENGINE_DIALOG_MODEL_H
#define CANTEL_ENGINE_DIALOG_MODEL_H

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "cantel_engine/document.h"

namespace cantel_engine {

struct DialogModel {
  std::map<int, ControlState> controls;
  std::set<std::uint16_t> timers;
  int focus = 0;
  bool ended = false;
  bool ended_by_plugin = false;

  ControlState* control(int id);
  DialogStep snapshot(std::string event, std::string note = {}) const;
  // A message of SendDlgItemMessage: a control's text, and the list-box and
  // drop-down messages; the answer Windows gives, 0 for anything else
  // (there is no layout, so no drop-down width to widen).
  std::int64_t control_message(int id, std::uint32_t message, std::uint64_t wparam,
                               const std::string& text_of_lparam);
};

// The controls of dialog `id` as its template starts them; empty for a
// template the engine does not know.
std::map<int, ControlState> dialog_template(std::uint16_t id);

}  // namespace cantel_engine

#endif
