// cantel-host run SCENARIO.json [--plugin PATH] [--engine PATH] [--out RESULT.json] [--view]
//                               [--check] [--hold-ms N] [--screenshot DIR]
// cantel-host compare NATIVE.json WINDOWS.json
//
// Plays one scenario: loads the engine and the plug-in, makes the host's
// start-up calls, builds the score, invokes the command once or several
// times with the scripted user, and writes what happened as JSON.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "cantel/cantel.h"
#include "environment.h"
#include "expectations.h"
#include "export_hiding.h"
#include "invokes.h"
#include "module_loader.h"
#include "result.h"
#include "scenario.h"
#include "settings_store.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace fs = std::filesystem;
using namespace cantel_host;

namespace {

struct Options {
  fs::path scenario;
  std::string plugin;
  std::string engine;
  std::string out;
  bool view = false;
  bool check = false;
  int hold_ms = 0;
  std::string screenshots;
};

fs::path program_folder() {
#if defined(_WIN32)
  wchar_t buffer[MAX_PATH];
  GetModuleFileNameW(nullptr, buffer, MAX_PATH);
  return fs::path(buffer).parent_path();
#else
  return fs::read_symlink("/proc/self/exe").parent_path();
#endif
}

#if defined(_WIN32)
const char* const kEngineFile = "CantelEngine.dll";
const char* const kPluginFile = "RhythmWeave.dll";
#else
const char* const kEngineFile = "libCantelEngine.so";
const char* const kPluginFile = "libRhythmWeave.so";
#endif

void set_environment(const char* name, const std::string& value) {
#if defined(_WIN32)
  _putenv_s(name, value.c_str());
#else
  setenv(name, value.c_str(), 1);
#endif
}

std::set<int> touched_staves(const json& before, const json& after,
                             const cantel_engine::Document& document,
                             const std::vector<ERegion>& imported) {
  std::set<int> staves;
  for (const auto& s : after["staves"]) {
    bool same = false;
    for (const auto& b : before["staves"]) {
      if (b["staff"] == s["staff"]) same = b["entries"] == s["entries"];
    }
    if (!same) staves.insert(s["staff"].get<int>());
  }
  const auto order = document.staves_in_order();
  for (const ERegion& region : imported) {
    if (region.startSlot >= 1 && region.startSlot <= order.size()) {
      staves.insert(order[region.startSlot - 1u]);
    }
  }
  return staves;
}

int run(const Options& options) {
  const Scenario scenario = load_scenario(options.scenario);
  const std::vector<Invoke> invokes = invokes_of(scenario);
  const RunFolders folders = prepare_folders(scenario);
  set_environment("XDG_CONFIG_HOME", utf8(folders.config));
  point_user_data(folders);
  prepare_setting(scenario, folders);
  apply_locale(scenario);

  const bool reduced = engine_variant(scenario) == "reduced";
  std::string engine_path = options.engine;
  if (engine_path.empty()) {
    engine_path = utf8((reduced ? program_folder() / "reduced" : program_folder()) / kEngineFile);
  }
  Module engine;
  if (!engine.load(engine_path, true)) {
    std::cerr << "cantel-host: cannot load the engine " << engine_path << ": " << engine.error()
              << "\n";
    return 2;
  }
  auto* document_of = find<cantel_engine::Document*()>(engine, "CantelEngine_Document");
  if (document_of == nullptr) {
    std::cerr << "cantel-host: " << engine_path << " is no Cantel engine\n";
    return 2;
  }
  const json faults = scenario.data.value("faults", json::object());
  hide_exports(engine, faults.value("lacks", std::vector<std::string>{}));
  cantel_engine::Document& document = *document_of();
  build_score(scenario, folders, document);
  if (!options.screenshots.empty()) fs::create_directories(fs::u8path(options.screenshots));
  document.set_presentation(options.hold_ms, options.screenshots, scenario.name);
  const json before = score_json(document);

  const std::string plugin_path =
      options.plugin.empty() ? utf8(program_folder() / kPluginFile) : options.plugin;
  Module plugin;
  if (!plugin.load(plugin_path, false)) {
    std::cerr << "cantel-host: cannot load the plug-in " << plugin_path << ": " << plugin.error()
              << "\n";
    return 2;
  }
  auto* version = find<CantelExtensionVersion_t>(plugin, "CantelExtensionVersion");
  auto* init = find<CantelExtensionInit_t>(plugin, "CantelExtensionInit");
  auto* enumerate =
      find<CantelExtensionEnumerate_UTF16_t>(plugin, "CantelExtensionEnumerate_UTF16");
  auto* status = find<CantelExtensionGetMenuStatus_t>(plugin, "CantelExtensionGetMenuStatus");
  auto* invoke = find<CantelExtensionInvoke_t>(plugin, "CantelExtensionInvoke");
  auto* terminate = find<CantelExtensionTerminate_t>(plugin, "CantelExtensionTerminate");
  if (!version || !init || !enumerate || !status || !invoke || !terminate) {
    std::cerr << "cantel-host: " << plugin_path << " lacks a plug-in export\n";
    return 2;
  }

  json result = {{"scenario", scenario.name}, {"engine", reduced ? "reduced" : "full"}};
  void* host = engine.handle();
  std::uint32_t flags = 0xFFFFFFFFu;
  std::vector<cx_char16> menu(CX_MENU_RECORD_UNITS, u'?');
  json startup;
  startup["version"] = version(CX_INTERFACE_VERSION);
  startup["init"] = init(host, &flags);
  startup["init_flags"] = flags;
  startup["enumerate_0"] = enumerate(host, 0, menu.data());
  auto field = [&](std::size_t at) {
    std::u16string text;
    for (std::size_t i = at; i < at + CX_MENU_TEXT_UNITS && menu[i] != 0; ++i)
      text.push_back(menu[i]);
    std::string utf8;
    for (char16_t c : text) {  // menu texts are short; keep it simple and exact
      if (c < 0x80) {
        utf8.push_back(static_cast<char>(c));
      } else if (c < 0x800) {
        utf8.push_back(static_cast<char>(0xC0 | (c >> 6)));
        utf8.push_back(static_cast<char>(0x80 | (c & 0x3F)));
      } else {
        utf8.push_back(static_cast<char>(0xE0 | (c >> 12)));
        utf8.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        utf8.push_back(static_cast<char>(0x80 | (c & 0x3F)));
      }
    }
    return utf8;
  };
  startup["menu"] = {field(CX_MENU_COMMAND), field(CX_MENU_TEXT2), field(CX_MENU_TEXT3)};
  startup["menu_tail"] = {menu[CX_MENU_TAIL], menu[CX_MENU_TAIL + 1]};
  std::vector<cx_char16> second(CX_MENU_RECORD_UNITS, 0);
  startup["enumerate_1"] = enumerate(host, 1, second.data());
  startup["menu_status"] = status(0);
  result["startup"] = startup;

  json runs = json::array();
  std::vector<ERegion> imported;
  for (const Invoke& call : invokes) {
    prepare_invoke(call, folders, document);
    // The whole document as it is now: an earlier run may have added a staff.
    const ERegion whole = document_region(scenario, document);
    json run = {{"document_region", region_json(whole)},
                {"selection", call.selection ? region_json(*call.selection) : json(nullptr)}};
    run["result"] = invoke(host, 0, document.selection_record(), &whole);
    run.update(invoke_json(document));
    for (const auto& i : document.imports()) imported.push_back(i.region);
    runs.push_back(run);
  }
  terminate(host);
  if (has_invokes(scenario)) {
    result["invokes"] = runs;
  } else {
    result.update(runs[0]);
  }

  result["open_frames"] = document.open_frames();
  result["refused_writes"] = document.refused_writes();
  result["temporary_file_left"] = fs::exists(folders.temporary_file);
  result["temp_files"] = temp_files_after(folders);
  result["user_folder"] = user_folder_after(folders);
  result["settings"] = settings_after(folders);
  result["settings_values"] = settings_values_after(folders);
  const json after = score_json(document);
  result["score_unchanged"] = before == after;
  if (scenario.data.value("dump_before", false)) result["score_before"] = before;
  result["score"] = after;

  if (!options.out.empty()) std::ofstream(fs::u8path(options.out)) << result.dump(1) << "\n";
  if (options.view) {
    std::cout << drum_view(document, touched_staves(before, after, document, imported));
  }
  if (options.check) return check_expectations(scenario, result, std::cout) ? 0 : 1;
  if (options.out.empty() && !options.view) std::cout << result.dump(1) << "\n";
  return 0;
}

}  // namespace

// Two results of one scenario from different platforms agree but for what
// the platform owns: where the keyboard focus rests.
int compare(const std::string& first, const std::string& second) {
  auto load = [](const std::string& file) {
    std::ifstream in(fs::u8path(file));
    json result = json::parse(in);
    auto forget_focus = [](json& run) {
      if (!run.contains("dialog")) return;
      for (auto& step : run["dialog"]["steps"]) step.erase("focus");
    };
    forget_focus(result);
    if (result.contains("invokes")) {
      for (auto& run : result["invokes"]) forget_focus(run);
    }
    return result;
  };
  const json patch = json::diff(load(first), load(second));
  for (const auto& change : patch) std::cout << change["op"] << " " << change["path"] << "\n";
  return patch.empty() ? 0 : 1;
}

int main(int argc, char** argv) {
  Options options;
  if (argc == 4 && std::string(argv[1]) == "compare") {
    try {
      return compare(argv[2], argv[3]);
    } catch (const std::exception& e) {
      std::cerr << "cantel-host: " << e.what() << "\n";
      return 2;
    }
  }
  if (argc < 3 || std::string(argv[1]) != "run") {
    std::cerr << "usage: cantel-host run SCENARIO.json [--plugin PATH] [--engine PATH]"
                 " [--out RESULT.json] [--view] [--check]\n"
                 "                        [--hold-ms N] [--screenshot DIR]   (Windows runner)\n"
                 "       cantel-host compare NATIVE.json WINDOWS.json\n";
    return 2;
  }
  options.scenario = fs::u8path(argv[2]);
  for (int i = 3; i < argc; ++i) {
    const std::string arg = argv[i];
    auto value = [&]() -> std::string { return i + 1 < argc ? argv[++i] : std::string(); };
    if (arg == "--plugin") {
      options.plugin = value();
    } else if (arg == "--engine") {
      options.engine = value();
    } else if (arg == "--out") {
      options.out = value();
    } else if (arg == "--view") {
      options.view = true;
    } else if (arg == "--check") {
      options.check = true;
    } else if (arg == "--hold-ms" || arg == "--screenshot") {
#if defined(_WIN32)
      if (arg == "--hold-ms") {
        options.hold_ms = std::max(0, std::atoi(value().c_str()));
      } else {
        options.screenshots = value();
      }
#else
      std::cerr << "cantel-host: " << arg
                << " needs the Windows runner; the native engine draws no dialog\n";
      return 2;
#endif
    } else {
      std::cerr << "cantel-host: unknown option " << arg << "\n";
      return 2;
    }
  }
  try {
    return run(options);
  } catch (const std::exception& e) {
    std::cerr << "cantel-host: " << e.what() << "\n";
    return 2;
  }
}
