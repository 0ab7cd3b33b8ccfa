#include "dialog_model.h"

namespace cantel_engine {

std::map<int, ControlState> dialog_template(std::uint16_t id) {
  using Kind = ControlState::Kind;
  // Template 102 as its resource lays it out: the arrangement's controls
  // start disabled.
  static const struct {
    int id;
    Kind kind;
    bool enabled;
  } kTemplate102[] = {
      {1, Kind::Button, true},       {2, Kind::Button, true},      {21, Kind::Radio, true},
      {22, Kind::Radio, true},       {23, Kind::CheckBox, false},  {24, Kind::CheckBox, false},
      {25, Kind::CheckBox, false},   {26, Kind::CheckBox, false},  {27, Kind::CheckBox, false},
      {28, Kind::CheckBox, true},    {1019, Kind::DropDown, true}, {1020, Kind::DropDown, true},
      {1021, Kind::DropDown, false}, {2002, Kind::ListBox, true},  {2003, Kind::Label, true},
      {2004, Kind::Label, true},     {2006, Kind::Label, true},    {2007, Kind::Text, true},
      {2008, Kind::Label, false},    {2009, Kind::Text, true},     {2010, Kind::Label, true},
  };
  std::map<int, ControlState> controls;
  if (id != 102) return controls;
  for (const auto& row : kTemplate102) {
    ControlState state;
    state.id = row.id;
    state.kind = row.kind;
    state.enabled = row.enabled;
    controls[row.id] = state;
  }
  return controls;
}

ControlState* DialogModel::control(int id) {
  auto it = controls.find(id);
  return it == controls.end() ? nullptr : &it->second;
}

DialogStep DialogModel::snapshot(std::string event, std::string note) const {
  DialogStep step;
  step.event = std::move(event);
  step.note = std::move(note);
  step.focus = focus;
  step.ended = ended;
  for (const auto& [id, state] : controls) step.controls.push_back(state);
  return step;
}

std::int64_t DialogModel::control_message(int id, std::uint32_t message, std::uint64_t wparam,
                                          const std::string& text_of_lparam) {
  if (message == CX_WM_SETTEXT) {
    ControlState* target = control(id);
    if (target == nullptr) return 0;
    target->text = text_of_lparam;
    return 1;
  }
  ControlState* list = control(id);
  if (list == nullptr || !list->is_list()) return 0;
  const auto count = static_cast<std::int64_t>(list->items.size());
  switch (message) {
    case CX_LB_RESETCONTENT:
    case CX_CB_RESETCONTENT:
      list->items.clear();
      list->selection = CX_LIST_NONE;
      return 0;
    case CX_LB_ADDSTRING:
    case CX_CB_ADDSTRING:
      list->items.push_back(text_of_lparam);
      return count;
    case CX_LB_GETCOUNT:
    case CX_CB_GETCOUNT:
      return count;
    case CX_LB_GETCURSEL:
    case CX_CB_GETCURSEL:
      return list->selection;
    case CX_LB_SETCURSEL:
    case CX_CB_SETCURSEL: {
      // The index arrives as a WPARAM; -1 (all bits set) clears the selection.
      const auto index = static_cast<std::int64_t>(static_cast<std::int32_t>(wparam));
      if (index < 0 || index >= count) {
        list->selection = CX_LIST_NONE;
        return CX_LIST_NONE;
      }
      list->selection = static_cast<int>(index);
      return index;
    }
    default:
      return 0;
  }
}

}  // namespace cantel_engine
