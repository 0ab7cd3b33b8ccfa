// The plug-in's own time for one command, through the reference host in
// process: a run over a 1,000-measure score, plain and with a fill every 4
// measures and an ending, and the dialog's opening on a groove folder of
// 10,000 files. The host's MIDI import is not the plug-in's
// time, so the command runs against the host build that lacks the import.
#include <benchmark/benchmark.h>
#include <cantel_engine/document.h>
#include <dlfcn.h>

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

// A one-measure 4/4 groove: kick, snare and eighth hi-hats.
void WriteGroove(const fs::path& file) {
  std::vector<std::uint8_t> track = {0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x08};
  for (int eighth = 0; eighth < 8; ++eighth) {
    const std::uint8_t key = eighth % 4 == 0 ? 36 : (eighth % 4 == 2 ? 38 : 42);
    track.insert(track.end(), {0x00, 0x99, key, 100, 0x83, 0x60, 0x89, key, 0});  // 240 ticks
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
// opening: a fill every 4 measures and the ending. Styles without companions
// ignore them.
void StorePhraseChoices() {
  static const bool stored = [] {
    const fs::path config = fs::temp_directory_path() / "rw-bench-config";
    fs::create_directories(config / "HarpWorks");
    const std::uint8_t fill[] = {4, 0, 0, 0};
    const std::uint8_t ending[] = {1, 0, 0, 0};
    std::ofstream(config / "HarpWorks" / "rhythmweaveFill", std::ios::binary)
        .write(reinterpret_cast<const char*>(fill), sizeof fill);
    std::ofstream(config / "HarpWorks" / "rhythmweaveEnding", std::ios::binary)
        .write(reinterpret_cast<const char*>(ending), sizeof ending);
    return ::setenv("XDG_CONFIG_HOME", config.c_str(), 1) == 0;
  }();
  if (!stored) throw std::runtime_error("cannot store the phrase choices");
}

fs::path ComponentFiles(const std::string& name, int extraFiles, bool companions = false) {
  StorePhraseChoices();
  const fs::path root = fs::temp_directory_path() / ("rw-bench-" + name);
  const fs::path grooves = root / "Rhythm Weave";
  if (!fs::exists(grooves / "Groove.mid")) {
    fs::create_directories(grooves);
    WriteGroove(grooves / "Groove.mid");
    if (companions) {
      fs::create_directories(grooves / "Fills");
      fs::create_directories(grooves / "Endings");
      WriteGroove(grooves / "Fills" / "Groove.mid");
      WriteGroove(grooves / "Endings" / "Groove.mid");
    }
    for (int i = 0; i < extraFiles; ++i) {
      std::ofstream(grooves / ("Style " + std::to_string(i) + ".mid")) << "MThd";
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
                  ComponentFiles("phrases", 0, true))
    ->Unit(benchmark::kMillisecond);

void DialogOpeningOnTenThousandGrooves(benchmark::State& state) {
  const fs::path components = ComponentFiles("folder", 10000);
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
BENCHMARK(DialogOpeningOnTenThousandGrooves)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
