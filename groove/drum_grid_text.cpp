#include "drum_grid_text.h"

#include <algorithm>
#include <array>
#include <optional>

#include "beat_grid.h"
#include "drum_hits.h"
#include "gm_drum_names.h"

namespace rw::groove {
namespace {

// Positions are counted in 24ths of a tick, so that every step below is a
// whole number of units for any division.
constexpr uint64_t kUnitsPerTick = 24;
constexpr uint64_t kUnitsPerTwelfth = kUnitsPerTick / kTwelfthsPerTick;

struct StepKind {
  GridStep step;
  uint64_t perQuarter;
  bool triplet;
  const char* name;
};
constexpr std::array<StepKind, 5> kStepKinds = {{
    {GridStep::kEighths, 2, false, "eighths"},
    {GridStep::kSixteenths, 4, false, "sixteenths"},
    {GridStep::kEighthTriplets, 3, true, "eighth triplets"},
    {GridStep::kSixteenthTriplets, 6, true, "sixteenth triplets"},
    {GridStep::kThirtySeconds, 8, false, "thirty-seconds"},
}};
constexpr std::size_t kFinest = kStepKinds.size() - 1;
using StepMask = uint8_t;  // bit i: kStepKinds[i]

// Top to bottom of a drum part, before the instruments outside the kit;
// the feet come after those.
constexpr std::array<uint8_t, 18> kHandsFromTheTop = {
    49, 57, 55, 52, 51, 59, 53,  // crashes, splash, china, rides
    42, 46,                      // hi-hat, closed and open
    50, 48, 47, 45, 43, 41,      // toms, high to low
    38, 40, 37,                  // snare, electric snare, side stick
};
constexpr std::array<uint8_t, 3> kFeet = {36, 35, 44};  // kicks, then the pedal hi-hat

int RowRank(int key) {
  const auto hand = std::find(kHandsFromTheTop.begin(), kHandsFromTheTop.end(), key);
  if (hand != kHandsFromTheTop.end()) return int(hand - kHandsFromTheTop.begin());
  const auto foot = std::find(kFeet.begin(), kFeet.end(), key);
  if (foot != kFeet.end()) return 1000 + int(foot - kFeet.begin());
  return 100 + key;
}

int Loudness(char mark) {
  switch (mark) {
    case 'X':
      return 3;
    case 'x':
      return 2;
    case 'o':
      return 1;
    default:
      return 0;
  }
}

char MarkOf(uint8_t velocity) {
  if (velocity >= 100) return 'X';
  return velocity < 60 ? 'o' : 'x';
}

struct Stroke {
  uint64_t measure;
  uint64_t offset;  // in units from the barline
  uint8_t key;
  uint8_t velocity;
};

class Grid {
 public:
  Grid(const MeterBeats& beats, uint64_t division) : beats_(beats) {
    measureUnits_ = beats.ticksPerMeasure() * kUnitsPerTick;
    for (std::size_t i = 0; i < kStepKinds.size(); ++i) {
      unit_[i] = kUnitsPerTick * division / kStepKinds[i].perQuarter;
      if (FitsEveryBeat(i)) fitting_ |= StepMask(1u << i);
    }
  }

  StepMask fitting() const { return fitting_; }
  uint64_t Unit(std::size_t kind) const { return unit_[kind]; }
  uint64_t Columns(std::size_t kind) const {
    return (measureUnits_ + unit_[kind] - 1) / unit_[kind];
  }

  // The steps on which a stroke lies exactly.
  StepMask Holding(uint64_t offset) const {
    StepMask mask = 0;
    for (std::size_t i = 0; i < kStepKinds.size(); ++i) {
      if (offset % unit_[i] == 0) mask |= StepMask(1u << i);
    }
    return mask & fitting_;
  }

 private:
  // Triplets only where every beat is a quarter that may take them (never
  // in 6/8, nor beside the short last beat of 7/8); any step only where it
  // divides every beat, so that each measure starts on a column.
  bool FitsEveryBeat(std::size_t kind) const {
    for (uint32_t beat = 0; beat < beats_.count(); ++beat) {
      if (kStepKinds[kind].triplet && !beats_.MayTakeTriplets(beat)) return false;
      if (beats_.LengthOf(beat) * kUnitsPerTwelfth % unit_[kind] != 0) return false;
    }
    return true;
  }

  const MeterBeats& beats_;
  uint64_t measureUnits_ = 0;
  std::array<uint64_t, kStepKinds.size()> unit_{};
  StepMask fitting_ = 0;
};

// The coarsest step holding every stroke of the first `measures` measures;
// the finest when none does.
std::size_t StepFor(const std::vector<Stroke>& strokes, const std::vector<StepMask>& holding,
                    uint64_t measures, StepMask fitting, bool& exact) {
  StepMask mask = fitting;
  for (std::size_t i = 0; i < strokes.size() && strokes[i].measure < measures; ++i) {
    mask &= holding[i];
  }
  for (std::size_t i = 0; i < kStepKinds.size(); ++i) {
    if (mask & (1u << i)) {
      exact = true;
      return i;
    }
  }
  exact = false;
  return kFinest;
}

// How many measures of `columns` columns a line of `maxWidth` holds.
uint64_t MeasuresThatFit(uint64_t columns, std::size_t maxWidth) {
  if (maxWidth < kDrumGridNameWidth + columns) return 0;
  return (uint64_t(maxWidth) - kDrumGridNameWidth + 1) / (columns + 1);
}

}  // namespace

const char* GridStepName(GridStep step) {
  for (const StepKind& kind : kStepKinds) {
    if (kind.step == step) return kind.name;
  }
  return "";
}

DrumGridText DrumGridTextOf(std::span<const uint8_t> file, const GroovePattern& meter,
                            int32_t measures, std::size_t maxWidth) {
  DrumGridText text;
  if (measures <= 0) return text;
  const GrooveMeter grooveMeter{meter.division, meter.timeSignature.numerator,
                                meter.timeSignature.denominator, meter.timeSignature.ticksPerBeat,
                                meter.timeSignature.ticksPerMeasure};
  const std::optional<MeterBeats> beats = MeterBeats::Of(grooveMeter);
  if (!beats) return text;
  const GrooveHits hits = DrumHitsOf(file);
  if (!hits.wellFormed) return text;
  const Grid grid(*beats, uint64_t(meter.division));
  const uint64_t ticksPerMeasure = beats->ticksPerMeasure();

  // Every measure takes a column at least, and a bar line after the first.
  uint64_t shown = std::min<uint64_t>(uint64_t(measures), MeasuresThatFit(1, maxWidth));
  std::vector<Stroke> strokes;
  for (const DrumHit& hit : hits.hits) {
    const uint64_t measure = hit.tick / ticksPerMeasure;
    if (measure >= shown) continue;
    strokes.push_back({measure, hit.tick % ticksPerMeasure * kUnitsPerTick, hit.key, hit.velocity});
  }
  std::stable_sort(strokes.begin(), strokes.end(),
                   [](const Stroke& a, const Stroke& b) { return a.measure < b.measure; });
  std::vector<StepMask> holding(strokes.size());
  for (std::size_t i = 0; i < strokes.size(); ++i) holding[i] = grid.Holding(strokes[i].offset);

  // Fewer measures never need a finer step, so this settles in a few rounds.
  std::size_t kind = kFinest;
  bool exact = false;
  for (;;) {
    kind = StepFor(strokes, holding, shown, grid.fitting(), exact);
    const uint64_t fit = std::min(shown, MeasuresThatFit(grid.Columns(kind), maxWidth));
    if (fit == shown) break;
    shown = fit;
  }
  text.step = kStepKinds[kind].step;
  text.exact = exact;
  text.measures = int32_t(shown);
  if (shown == 0) return text;

  const uint64_t columns = grid.Columns(kind);
  const uint64_t unit = grid.Unit(kind);
  std::string empty(kDrumGridNameWidth, ' ');
  for (uint64_t m = 0; m < shown; ++m) {
    if (m > 0) empty += '|';
    empty.append(std::size_t(columns), '.');
  }
  std::vector<std::pair<int, std::string>> rows;  // by rank
  std::array<int, 256> rowOfKey;
  rowOfKey.fill(-1);
  for (const Stroke& stroke : strokes) {
    if (stroke.measure >= shown) break;
    int& row = rowOfKey[stroke.key];
    if (row < 0) {
      row = int(rows.size());
      rows.emplace_back(RowRank(stroke.key), empty);
      const std::string name = DrumKeyShortName(stroke.key);
      std::copy(name.begin(), name.end(), rows.back().second.begin());
    }
    // The nearest step, an earlier one on a tie, never past the barline.
    const uint64_t column = std::min((stroke.offset + (unit - 1) / 2) / unit, columns - 1);
    char& cell =
        rows[std::size_t(row)]
            .second[kDrumGridNameWidth + std::size_t(stroke.measure * (columns + 1) + column)];
    const char mark = MarkOf(stroke.velocity);
    if (Loudness(mark) > Loudness(cell)) cell = mark;
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& row : rows) text.lines.push_back(std::move(row.second));
  return text;
}

}  // namespace rw::groove
