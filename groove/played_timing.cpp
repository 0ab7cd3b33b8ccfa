#include "played_timing.h"

#include <algorithm>

namespace rw::groove {
namespace {

// Whether `residue` (ticks past a quarter note) lies within the tolerance of
// a point k·division/parts, compared in units of 1/(64·parts) tick:
// |64·parts·residue − 64·k·division| ≤ parts·tolerance, where the tolerance
// is max(division, 32)/64 ticks.
bool NearPoint(uint64_t residue, uint64_t division, uint64_t parts) {
  const uint64_t k = residue * parts / division;  // the point at or before it
  const uint64_t scaled = 64 * parts * residue;
  const uint64_t before = scaled - 64 * k * division;
  const uint64_t after = 64 * (k + 1) * division - scaled;
  return std::min(before, after) <= parts * std::max<uint64_t>(division, 32);
}

// Fewer than 80 %: 5·onGrid < 4·strokes, which for whole numbers is
// onGrid < strokes − ⌊strokes/5⌋, free of overflow.
bool FewerThanFourFifths(uint64_t onGrid, uint64_t strokes) {
  return onGrid < strokes - strokes / 5;
}

class Counter : public SmfEventVisitor {
 public:
  explicit Counter(PlayedTiming& timing) : timing_(timing) {}

  void Header(uint16_t, uint16_t, uint16_t division) override { grid_ = ProgrammedGrid(division); }
  void Event(const SmfEvent& e) override {
    if (!IsDrumNoteOn(e)) return;
    ++timing_.strokes;
    if (grid_.HoldsRising(e.tick)) ++timing_.onGrid;
  }

 private:
  PlayedTiming& timing_;
  ProgrammedGrid grid_{0};
};

}  // namespace

bool OnProgrammedGrid(uint64_t tick, uint16_t division) {
  if (division == 0) return false;
  // Both grids repeat every quarter note.
  const uint64_t residue = tick % division;
  return NearPoint(residue, division, 8) || NearPoint(residue, division, 12);
}

ProgrammedGrid::ProgrammedGrid(uint16_t division) : onGrid_(division) {
  for (uint16_t tick = 0; tick < division; ++tick) {
    onGrid_[tick] = OnProgrammedGrid(tick, division) ? 1 : 0;
  }
}

PlayedTiming JudgePlayedTiming(uint64_t strokes, uint64_t onGrid) {
  PlayedTiming timing{strokes, std::min(onGrid, strokes), false};
  timing.played = strokes > 0 && FewerThanFourFifths(timing.onGrid, strokes);
  return timing;
}

PlayedTiming MeasurePlayedTiming(std::span<const DrumHit> hits, uint16_t division) {
  const ProgrammedGrid grid(division);
  uint64_t onGrid = 0;
  for (const DrumHit& hit : hits) onGrid += grid.Holds(hit.tick) ? 1 : 0;
  return JudgePlayedTiming(hits.size(), onGrid);
}

std::optional<PlayedTiming> MeasurePlayedTiming(std::span<const uint8_t> file) {
  PlayedTiming timing;
  Counter counter(timing);
  if (!WalkStrictly(file.data(), file.size(), &counter).wellFormed) return std::nullopt;
  return JudgePlayedTiming(timing.strokes, timing.onGrid);
}

}  // namespace rw::groove
