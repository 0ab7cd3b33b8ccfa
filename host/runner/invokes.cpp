#include "invokes.h"

#include <algorithm>
#include <stdexcept>

#include "environment.h"
#include "settings_store.h"

namespace cantel_host {

namespace {

std::optional<ERegion> selection_of(const json& holder) {
  if (!holder.contains("selection") || holder["selection"].is_null()) return std::nullopt;
  return parse_region(holder["selection"]);
}

std::vector<std::uint16_t> answers_of(const json& holder) {
  std::vector<std::uint16_t> answers;
  for (const json& a : holder.value("answers", json::array())) answers.push_back(parse_answer(a));
  return answers;
}

Invoke parse_invoke(const json& run) {
  static const char* const kKeys[] = {"selection",
                                      "dialog",
                                      "answers",
                                      "add_groove_files",
                                      "remove_groove_files",
                                      "add_user_groove_files",
                                      "remove_user_groove_files",
                                      "setting",
                                      "description"};
  for (const auto& [key, value] : run.items()) {
    if (std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys)) {
      throw std::runtime_error("an invoke has no key \"" + key + "\"");
    }
    (void)value;
  }
  Invoke invoke;
  invoke.selection = selection_of(run);
  invoke.dialog = parse_actions(run.value("dialog", json::array()));
  invoke.answers = answers_of(run);
  invoke.add_groove_files = run.value("add_groove_files", json::array());
  invoke.remove_groove_files = run.value("remove_groove_files", std::vector<std::string>{});
  invoke.add_user_groove_files = run.value("add_user_groove_files", json::array());
  invoke.remove_user_groove_files =
      run.value("remove_user_groove_files", std::vector<std::string>{});
  if (run.contains("setting")) invoke.setting = run["setting"];
  // Bad names are refused before the first run, not halfway through.
  for (const char* key : {"add_groove_files", "add_user_groove_files"}) {
    for (const json& g : run.value(key, json::array())) {
      groove_path(key, g.at("name").get<std::string>());
    }
  }
  for (const char* key : {"remove_groove_files", "remove_user_groove_files"}) {
    for (const std::string& name : run.value(key, std::vector<std::string>{})) {
      groove_path(key, name);
    }
  }
  return invoke;
}

json call_json(const cantel_engine::HostCall& call) {
  json out = {{"fn", call.fn}, {"args", call.args}};
  if (call.result) out["result"] = *call.result;
  if (call.foreign_dialog) out["foreign_dialog"] = true;
  if (call.version != CX_INTERFACE_VERSION) out["version"] = call.version;
  return out;
}

json dialog_json(const cantel_engine::Document& document) {
  json steps = json::array();
  for (const auto& step : document.dialog_steps()) {
    using Kind = cantel_engine::ControlState::Kind;
    json lists = json::object();
    json enabled = json::array();
    json radios = json::object();
    json checks = json::object();
    json texts = json::object();
    for (const auto& c : step.controls) {
      const std::string id = std::to_string(c.id);
      if (c.enabled) enabled.push_back(c.id);
      if (c.kind == Kind::Radio) radios[id] = c.check;
      if (c.kind == Kind::CheckBox) checks[id] = c.check;
      if (c.kind == Kind::Text) texts[id] = c.text;
      if (c.is_list()) lists[id] = {{"items", c.items}, {"selection", c.selection}};
    }
    steps.push_back({{"event", step.event},
                     {"note", step.note},
                     {"focus", step.focus},
                     {"ended", step.ended},
                     {"lists", lists},
                     {"radios", radios},
                     {"checks", checks},
                     {"texts", texts},
                     {"enabled", enabled}});
  }
  return {{"shown", !document.dialog_steps().empty()}, {"steps", steps}};
}

}  // namespace

bool has_invokes(const Scenario& scenario) { return scenario.data.contains("invokes"); }

std::vector<Invoke> invokes_of(const Scenario& scenario) {
  const json& d = scenario.data;
  if (!has_invokes(scenario)) {
    Invoke single;
    single.selection = selection_of(d);
    single.dialog = parse_actions(d.value("dialog", json::array()));
    single.answers = answers_of(d);
    return {single};
  }
  for (const char* key : {"selection", "dialog", "answers"}) {
    if (d.contains(key)) {
      throw std::runtime_error(std::string("with \"invokes\", \"") + key +
                               "\" belongs to an invoke");
    }
  }
  std::vector<Invoke> invokes;
  for (const json& run : d["invokes"]) invokes.push_back(parse_invoke(run));
  if (invokes.empty()) throw std::runtime_error("\"invokes\" lists no run");
  return invokes;
}

void prepare_invoke(const Invoke& invoke, const RunFolders& folders,
                    cantel_engine::Document& document) {
  add_groove_files("add_groove_files", invoke.add_groove_files, folders.grooves);
  remove_groove_files("remove_groove_files", invoke.remove_groove_files, folders.grooves);
  add_groove_files("add_user_groove_files", invoke.add_user_groove_files, folders.user_grooves);
  remove_groove_files("remove_user_groove_files", invoke.remove_user_groove_files,
                      folders.user_grooves);
  if (invoke.setting) write_setting(*invoke.setting, folders);
  document.clear_run_log();
  document.script_answers(invoke.answers);
  document.script_dialog(invoke.dialog);
  document.set_selection(invoke.selection);
}

json invoke_json(cantel_engine::Document& document) {
  json run;
  json alerts = json::array();
  for (const auto& a : document.alerts()) {
    alerts.push_back(
        {{"text", a.text}, {"style", a.style}, {"answer", a.answer}, {"wide", a.wide}});
  }
  run["alerts"] = alerts;
  run["dialog"] = dialog_json(document);
  const auto& edits = document.edits();
  run["edits"] = {{"started", edits.started},
                  {"ended", edits.ended},
                  {"unbalanced_ends", edits.unbalanced_ends},
                  {"labels", edits.labels}};
  json imports = json::array();
  for (const auto& i : document.imports()) {
    json record = {{"region", region_json(i.region)},
                   {"file", utf8(std::filesystem::u8path(i.path).filename())},
                   {"result", i.result},
                   {"notes_placed", i.notes_placed},
                   {"error", i.error},
                   {"size", nullptr},
                   {"bytes", nullptr}};
    if (i.bytes) {
      record["size"] = i.bytes->size();
      record["bytes"] = hex(*i.bytes);
    }
    imports.push_back(record);
  }
  run["imports"] = imports;
  json calls = json::array();
  for (const auto& call : document.calls()) calls.push_back(call_json(call));
  run["calls"] = calls;
  if (const auto word = document.data_word()) run["data_word"] = *word;
  // The host's selection record is the one invoke was handed; the plug-in
  // must leave it as it was.
  const ERegion* selection = document.selection_record();
  run["selection_after"] = selection != nullptr ? region_json(*selection) : json(nullptr);
  return run;
}

}  // namespace cantel_host
