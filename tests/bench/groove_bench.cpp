// Loads of large generated grooves, in MB/s of input. The file is copied
// into a buffer of twice its size outside the timed part of each iteration.
// Then the played-timing rule and the straightening of a large played
// groove, in MB/s of the filtered file.
// Run by hand: build/<preset>/bin/groove_bench
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "bench_files.h"
#include "load_groove.h"
#include "played_groove_generator.h"
#include "straighten.h"

namespace rw::groove::bench {
namespace {

class NullSink : public DiagnosticSink {
 public:
  void Show(const char*) override {}
};

void Load(benchmark::State& state, Bytes (*make)(std::size_t)) {
  const Bytes file = make(std::size_t(state.range(0)) << 20);
  const uint64_t capacity = 2 * file.size();
  auto buffer = std::make_unique_for_overwrite<uint8_t[]>(capacity);
  // Touched once, so that every iteration measures the load and not the
  // kernel's first mapping of the pages (which a fresh buffer pays once).
  std::memset(buffer.get(), 0, capacity);
  NullSink sink;
  for (auto _ : state) {
    state.PauseTiming();
    std::memcpy(buffer.get(), file.data(), file.size());
    uint64_t size = file.size();
    state.ResumeTiming();
    SmfReader reader(buffer.get(), &size, capacity, sink);
    const GroovePattern pattern = LoadGroove(reader, 0);
    // A file that drifts out of step with its events would measure
    // something else: both files have one drum track with keys 36 to 46,
    // or none at all.
    const bool drums = reader.drumNotesFound();
    if (!pattern.loaded || (drums && (reader.lowestDrumKey() != 36 ||
                                      reader.highestDrumKey() != 46 || reader.trackCount() != 2))) {
      state.SkipWithError("the file did not load as built");
    }
    benchmark::DoNotOptimize(size);
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(file.size()));
}

void Ordinary(benchmark::State& state) { Load(state, OrdinaryFile); }
void WorstCase(benchmark::State& state) { Load(state, WorstCaseFile); }

BENCHMARK(Ordinary)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WorstCase)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();

// A played groove of about `megabytes` once filtered, as the reader leaves
// it, measure after measure, every stroke off the grid: funk sixteenths with
// ghost notes and flams, the densest of the generator's grooves (some 8
// bytes a stroke), or rock eighths. Made once per size.
struct PlayedFile {
  Bytes filtered;
  GrooveMeter meter;
};

PlayedFile Filtered(const char* name, int measures) {
  testing::AuthoredGroove groove = *testing::FindAuthoredGroove(name);
  groove.measures = measures;
  const testing::PlayedGroove played = testing::PlayGroove(groove, testing::Performance{});
  Bytes buffer(2 * played.file.size());
  std::copy(played.file.begin(), played.file.end(), buffer.begin());
  uint64_t size = played.file.size();
  NullSink sink;
  SmfReader reader(buffer.data(), &size, buffer.size(), sink);
  const GroovePattern pattern = LoadGroove(reader, 0);
  buffer.resize(size);
  return {buffer, MeterOf(pattern)};
}

const PlayedFile& PlayedFileOf(const char* name, int64_t megabytes) {
  static std::map<std::pair<std::string, int64_t>, PlayedFile> files;
  auto [at, made] = files.try_emplace({name, megabytes});
  if (made) {
    constexpr int kSample = 1000;
    const std::size_t perMeasure = Filtered(name, kSample).filtered.size() / kSample;
    at->second = Filtered(name, int((std::size_t(megabytes) << 20) / perMeasure));
  }
  return at->second;
}

// The share of the played-timing rule: a walk of the filtered file.
void PlayedTiming(benchmark::State& state, const char* groove) {
  const PlayedFile& file = PlayedFileOf(groove, state.range(0));
  for (auto _ : state) {
    const std::optional<groove::PlayedTiming> timing = MeasurePlayedTiming(file.filtered);
    if (!timing || !timing->played) state.SkipWithError("the file is not played");
    benchmark::DoNotOptimize(timing);
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(file.filtered.size()));
}

// Writing it straight: the command's step, both walks. As with the loads,
// the straight file's memory is mapped once, by the first iteration, so
// that the others measure the straightening.
void Straightening(benchmark::State& state, const char* groove) {
  const PlayedFile& file = PlayedFileOf(groove, state.range(0));
  std::vector<uint8_t> storage;
  for (auto _ : state) {
    StraightGroove straight = Straighten(file.filtered, file.meter, std::move(storage));
    if (!straight.written || straight.report.onsetsAfter == 0) {
      state.SkipWithError("the file was not straightened");
    }
    storage = std::move(straight.bytes);
    benchmark::DoNotOptimize(storage.data());
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(file.filtered.size()));
}

constexpr const char* kFunk = "funk-sixteenths";
constexpr const char* kRock = "rock-eighths";
BENCHMARK_CAPTURE(PlayedTiming, funk, kFunk)
    ->Arg(1)
    ->Arg(10)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Straightening, funk, kFunk)
    ->Arg(1)
    ->Arg(10)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Straightening, rock, kRock)
    ->Arg(10)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace rw::groove::bench

BENCHMARK_MAIN();
