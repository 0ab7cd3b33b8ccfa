// The plug-in's own time for one command, through the reference host in
// process: a run over a 1,000-measure score, plain, with a fill every 4
// measures and an ending, played, and with every part of a style; and the
// dialog's opening on libraries of 10,000 files, flat and in folders, and
// on the starter styles. CPU time is the plug-in's work; real time adds the
// file system's. The host's MIDI import is not the plug-in's
// time, so the command runs against the host build that lacks the import.
#include <benchmark/benchmark.h>
#include <cantel_engine/document.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Plugin {
  CantelExtensionInvoke_t* invoke = nullptr;
  Plugin() {
    void* module = dlopen(RW_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) throw std::runtime_error(dlerror());
    invoke = reinterpret_cast<CantelExtensionInvoke_t*>(dlsym(module, "CantelExtensionInvoke"));
  }
};

Plugin& ThePlugin() {
  static Plugin plugin;
  return plugin;
}

// A one-measure 4/4 groove: kick, snare and eighth hi-hats; played, each
// stroke a few ticks off its eighth, as a drummer's are.
void WriteGroove(const fs::path& file, bool played = false) {
  struct Event {
    std::uint32_t tick;
    std::uint8_t status, key, velocity;
  };
  static constexpr int kOff[] = {9, -6, 14, -3, 0, 11, -8, 5};  // ticks late, or early
  std::vector<Event> events;
  for (int eighth = 0; eighth < 8; ++eighth) {
    const std::uint8_t key = eighth % 4 == 0 ? 36 : (eighth % 4 == 2 ? 38 : 42);
    const auto tick = static_cast<std::uint32_t>(eighth * 240 + (played ? 20 + kOff[eighth] : 0));
    events.push_back({tick, 0x99, key, 100});
    events.push_back({tick + 120, 0x89, key, 0});
  }
  std::stable_sort(events.begin(), events.end(),
                   [](const Event& a, const Event& b) { return a.tick < b.tick; });
  std::vector<std::uint8_t> track = {0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x08};
  std::uint32_t now = 0;
  for (const Event& e : events) {
    const std::uint32_t delta = e.tick - now;  // below 16,384: two bytes at most
    if (delta >= 0x80) track.push_back(static_cast<std::uint8_t>(0x80 | (delta >> 7)));
    track.insert(track.end(),
                 {static_cast<std::uint8_t>(delta & 0x7F), e.status, e.key, e.velocity});
    now = e.tick;
  }
  track.insert(track.end(), {0x00, 0xFF, 0x2F, 0x00});
  std::ofstream out(file, std::ios::binary);
  const std::uint8_t header[] = {'M',
                                 'T',
                                 'h',
                                 'd',
                                 0,
                                 0,
                                 0,
                                 6,
                                 0,
                                 0,
                                 0,
                                 1,
                                 0x01,
                                 0xE0,
                                 'M',
                                 'T',
                                 'r',
                                 'k',
                                 0,
                                 0,
                                 static_cast<std::uint8_t>(track.size() >> 8),
                                 static_cast<std::uint8_t>(track.size() & 0xFF)};
  out.write(reinterpret_cast<const char*>(header), sizeof header);
  out.write(reinterpret_cast<const char*>(track.data()),
            static_cast<std::streamsize>(track.size()));
}

// The stored choices every run starts from, read at the module's first
// opening: every part of a style (a fill every 4 measures), the crash after
// each fill and the straightening, as the dialog starts them. Styles without
// companions ignore them.
void StoreChoices() {
  static const bool stored = [] {
    const fs::path config = fs::temp_directory_path() / "rw-bench-config";
    fs::create_directories(config / "HarpWorks");
    const struct {
      const char* name;
      std::uint8_t value;
    } values[] = {{"rhythmweaveFill", 4},       {"rhythmweaveEnding", 1},
                  {"rhythmweaveCountIn", 1},    {"rhythmweaveVariation", 1},
                  {"rhythmweaveCrash", 1},      {"rhythmweaveStraighten", 1},
                  {"rhythmweaveOnlyFitting", 1}};
    for (const auto& [name, value] : values) {
      const std::uint8_t bytes[] = {value, 0, 0, 0};
      std::ofstream(config / "HarpWorks" / name, std::ios::binary)
          .write(reinterpret_cast<const char*>(bytes), sizeof bytes);
    }
    // No user's own folder: only the shipped one is read.
    ::setenv("XDG_DATA_HOME", (fs::temp_directory_path() / "rw-bench-data").c_str(), 1);
    return ::setenv("XDG_CONFIG_HOME", config.c_str(), 1) == 0;
  }();
  if (!stored) throw std::runtime_error("cannot store the choices");
}

// Which companions the style "Groove" has, and whether its grooves were
// played.
struct Library {
  std::vector<const char*> companions;
  bool played = false;
};

fs::path ComponentFiles(const std::string& name, int extraFiles, const Library& library = {}) {
  StoreChoices();
  const fs::path root = fs::temp_directory_path() / ("rw-bench-" + name);
  const fs::path grooves = root / "Rhythm Weave";
  if (!fs::exists(grooves / "Groove.mid")) {
    fs::create_directories(grooves);
    WriteGroove(grooves / "Groove.mid", library.played);
    for (const char* folder : library.companions) {
      fs::create_directories(grooves / folder);
      WriteGroove(grooves / folder / "Groove.mid", library.played);
    }
    for (int i = 0; i < extraFiles; ++i) {
      std::ofstream(grooves / ("Style " + std::to_string(i) + ".mid")) << "MThd";
    }
  }
  return root;
}

// A library of folders of folders: 10 categories of 20 folders each, 50
// grooves in each of the 200.
fs::path NestedLibrary() {
  StoreChoices();
  const fs::path root = fs::temp_directory_path() / "rw-bench-nested";
  const fs::path grooves = root / "Rhythm Weave";
  if (!fs::exists(grooves / "Groove.mid")) {
    fs::create_directories(grooves);
    WriteGroove(grooves / "Groove.mid");
    for (int category = 0; category < 10; ++category) {
      for (int folder = 0; folder < 20; ++folder) {
        const fs::path dir =
            grooves / ("Genre " + std::to_string(category)) / ("Set " + std::to_string(folder));
        fs::create_directories(dir);
        for (int i = 0; i < 50; ++i) {
          fs::copy_file(grooves / "Groove.mid", dir / ("Groove " + std::to_string(i) + ".mid"));
        }
      }
    }
  }
  return root;
}

ERegion WholeScore(std::uint16_t staves, std::uint16_t measures) {
  ERegion region{};
  region.startSlot = 1;
  region.endSlot = staves;
  region.startMeasure = 1;
  region.endMeasure = measures;
  region.endPosition = CX_END_OF_MEASURE;
  return region;
}

void PrepareDocument(std::uint16_t measures, const fs::path& components) {
  auto& doc = cantel_engine::document();
  doc.reset();
  doc.add_measures(measures, {});
  doc.add_staff("Piano", "Pno.");
  doc.add_staff("Bass", "Bs.");
  doc.set_record(CX_TAG_PERCUSSION_MAP, 1, 0, cantel_engine::Bytes(12, 0));
  doc.set_path(CX_PATH_COMPONENT_FILES, components.string());
  doc.set_path(CX_PATH_TEMPORARY, (fs::temp_directory_path() / "").string());
}

void CommandOverAThousandMeasures(benchmark::State& state, const fs::path& components) {
  const ERegion region = WholeScore(2, 1000);
  for (auto _ : state) {
    state.PauseTiming();
    PrepareDocument(1000, components);
    cantel_engine::document().script_answers({CX_ID_YES});
    cantel_engine::DialogAction style{cantel_engine::DialogAction::Kind::ChooseStyle, 0, -1,
                                      "Groove"};
    cantel_engine::DialogAction newStaff{cantel_engine::DialogAction::Kind::Click, 21, -1, ""};
    cantel_engine::DialogAction ok{cantel_engine::DialogAction::Kind::Click, 1, -1, ""};
    cantel_engine::document().script_dialog({style, newStaff, ok});
    state.ResumeTiming();
    const std::uint16_t result = ThePlugin().invoke(nullptr, 0, &region, &region);
    if (result != 1) state.SkipWithError("the command did not run to its end");
  }
}
// One placement per measure of the one-measure groove.
BENCHMARK_CAPTURE(CommandOverAThousandMeasures, Plain, ComponentFiles("command", 0))
    ->Unit(benchmark::kMillisecond);
// The same with the part changing at every fill: in each of 249 phrases
// three measures of the groove and the fill, then the ending.
BENCHMARK_CAPTURE(CommandOverAThousandMeasures, FillEveryFourAndAnEnding,
                  ComponentFiles("phrases", 0, {{"Fills", "Endings"}}))
    ->Unit(benchmark::kMillisecond);
// A played groove, fill and ending, each written straight before the import.
BENCHMARK_CAPTURE(CommandOverAThousandMeasures, PlayedWithFillsAndAnEnding,
                  ComponentFiles("played", 0, {{"Fills", "Endings"}, true}))
    ->Unit(benchmark::kMillisecond);
// Every part: the count-in, the two grooves taking turns, a fill every 4
// measures with the crash after it (a file of its own per part), the ending.
BENCHMARK_CAPTURE(CommandOverAThousandMeasures, EveryPart,
                  ComponentFiles("every-part", 0,
                                 {{"Count-ins", "Variations", "Fills", "Endings"}, false}))
    ->Unit(benchmark::kMillisecond);

// The dialog opened and cancelled: the library found, each style's meter
// scanned for the filter, the lists filled.
void DialogOpening(benchmark::State& state, const fs::path& components) {
  const ERegion region = WholeScore(2, 16);
  for (auto _ : state) {
    state.PauseTiming();
    PrepareDocument(16, components);
    cantel_engine::DialogAction cancel{cantel_engine::DialogAction::Kind::Click, 2, -1, ""};
    cantel_engine::document().script_dialog({cancel});
    state.ResumeTiming();
    ThePlugin().invoke(nullptr, 0, &region, &region);
  }
}
// 10,000 files of four bytes at the top of the folder.
BENCHMARK_CAPTURE(DialogOpening, TenThousandGrooves, ComponentFiles("folder", 10000))
    ->Unit(benchmark::kMillisecond);
// 10,000 grooves in 200 folders two levels deep.
BENCHMARK_CAPTURE(DialogOpening, TenThousandGroovesInTwoHundredFolders, NestedLibrary())
    ->Unit(benchmark::kMillisecond);
// The starter library as it ships: 36 styles with their companions.
BENCHMARK_CAPTURE(DialogOpening, StarterStyles, fs::path(RW_STARTER_COMPONENT_FILES))
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
