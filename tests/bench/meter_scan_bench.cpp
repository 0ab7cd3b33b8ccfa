// The dialog's look at a groove folder of 10,000 files: each file's meter
// from its first bytes, against loading each one whole. The files are small
// grooves as authors and sequencers write them (a conductor track with
// names, tempo, meter and key, then the drums), held in memory, so that the
// figures are the scan's and the reader's, not the disk's.
// Run by hand: build/<preset>/bin/groove_bench --benchmark_filter=Folder
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

#include "load_groove.h"
#include "meter_scan.h"
#include "smf_builder.h"

namespace rw::groove::bench {
namespace {

using testing::Bytes;
using testing::cat;

constexpr int kFolderFiles = 10000;

Bytes SmallGroove(std::mt19937& rng) {
  using testing::note;
  auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); };
  static constexpr uint8_t kMeters[][2] = {{4, 2}, {3, 2}, {6, 3}, {7, 3}, {5, 2}, {12, 3}};
  const auto& meter = kMeters[pick(0, 5)];
  const uint16_t division = std::array<uint16_t, 4>{96, 240, 480, 960}[std::size_t(pick(0, 3))];
  const Bytes conductor = cat({{0x00, 0xFF, 0x03, 0x0B},
                               {'D', 'r', 'u', 'm', ' ', 'g', 'r', 'o', 'o', 'v', 'e'},
                               {0x00, 0xFF, 0x02, 0x04, '(', 'c', ')', ' '},
                               testing::tempo(0, uint32_t(pick(400000, 700000))),
                               testing::timeSignature(0, meter[0], meter[1]),
                               {0x00, 0xFF, 0x59, 0x02, 0x00, 0x00},
                               testing::kEndOfTrack});
  Bytes drums = {0x00, 0xFF, 0x03, 0x05, 'D', 'r', 'u', 'm', 's'};
  const int strokes = pick(16, 400);
  const uint32_t step = division / 4u;
  drums = cat({drums, note(0, 0x99, 36, 100)});
  for (int i = 1; i < strokes; ++i) {
    drums = cat(
        {drums, testing::vlq(i % 2 ? step : 0), {uint8_t(pick(35, 51)), uint8_t(pick(40, 120))}});
  }
  drums = cat({drums, testing::kEndOfTrack});
  return testing::smf(1, division, {conductor, drums});
}

std::vector<Bytes> Folder() {
  std::mt19937 rng(2024);
  std::vector<Bytes> files;
  files.reserve(kFolderFiles);
  for (int i = 0; i < kFolderFiles; ++i) files.push_back(SmallGroove(rng));
  return files;
}

// Each file's first bytes, as the dialog reads them.
void FolderMeterScan(benchmark::State& state) {
  const std::vector<Bytes> files = Folder();
  int64_t fitting = 0;
  for (auto _ : state) {
    for (const Bytes& file : files) {
      const std::size_t prefix = std::min(file.size(), kMeterScanPrefix);
      const MeterScan scan = ScanMeter(std::span(file.data(), prefix), file.size());
      fitting +=
          scan.outcome == MeterScanOutcome::kMeter && scan.pattern.timeSignature.numerator == 4;
    }
  }
  benchmark::DoNotOptimize(fitting);
  state.SetItemsProcessed(state.iterations() * kFolderFiles);
}

class NullSink : public DiagnosticSink {
 public:
  void Show(const char*) override {}
};

// The same folder loaded whole, each file copied into a buffer of twice its
// size first, as a load needs.
void FolderLoads(benchmark::State& state) {
  const std::vector<Bytes> files = Folder();
  std::size_t largest = 0;
  for (const Bytes& file : files) largest = std::max(largest, file.size());
  auto buffer = std::make_unique<uint8_t[]>(2 * largest);
  NullSink sink;
  int64_t fitting = 0;
  for (auto _ : state) {
    for (const Bytes& file : files) {
      std::copy(file.begin(), file.end(), buffer.get());
      uint64_t size = file.size();
      SmfReader reader(buffer.get(), &size, 2 * size, sink);
      const GroovePattern pattern = LoadGroove(reader, 0);
      fitting += pattern.timeSignature.numerator == 4;
    }
  }
  benchmark::DoNotOptimize(fitting);
  state.SetItemsProcessed(state.iterations() * kFolderFiles);
}

}  // namespace

BENCHMARK(FolderMeterScan)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FolderLoads)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace rw::groove::bench
