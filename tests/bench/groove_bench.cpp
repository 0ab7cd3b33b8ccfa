// Loads of large generated grooves, in MB/s of input. The file is copied
// into a buffer of twice its size outside the timed part of each iteration.
// Run by hand: build/<preset>/bin/groove_bench
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "bench_files.h"
#include "load_groove.h"

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

}  // namespace
}  // namespace rw::groove::bench

BENCHMARK_MAIN();
