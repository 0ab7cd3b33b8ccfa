// Played or programmed: whether a groove's drums were played by hand, off
// any grid a sequencer writes, or placed on one.
//
// A stroke is on the grid when it lies within 1/64 of a quarter note of a
// point of the thirty-second grid (every division/8 ticks from tick 0) or of
// the sixteenth-triplet grid (every division/12 ticks), so that programmed
// rolls and sextuplets count as programmed. A groove is played when fewer
// than 80 % of its strokes are on the grid. Played files measure 17 to 56 %,
// programmed ones 100 %.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "drum_hits.h"

namespace rw::groove {

struct PlayedTiming {
  uint64_t strokes = 0;  // channel-10 note-ons with a velocity above 0
  uint64_t onGrid = 0;   // of them, those on the grid
  bool played = false;   // fewer than 80 % on the grid; never without strokes
};

// Compared exactly, in integers, for every division: the grid points are
// fractions of a tick when the division is no multiple of 8 or 12. Where a
// tick is longer than 1/32 of a quarter (a division below 32), a point
// between two ticks can only be written at the nearer one, so half a tick
// counts as on it.
bool OnProgrammedGrid(uint64_t tick, uint16_t division);

// The same for many strokes: the answer for every tick of a quarter note,
// worked out once.
class ProgrammedGrid {
 public:
  explicit ProgrammedGrid(uint16_t division);
  bool Holds(uint64_t tick) const {
    return !onGrid_.empty() && onGrid_[std::size_t(tick % onGrid_.size())] != 0;
  }
  // For the ticks of one track, which never fall: found by stepping on from
  // the last quarter note, so that a dense track's strokes take no division.
  bool HoldsRising(uint64_t tick) {
    const uint64_t quarter = onGrid_.size();
    if (quarter == 0) return false;
    if (tick < quarter_ || tick - quarter_ >= 2 * quarter) {
      quarter_ = tick - tick % quarter;
    } else if (tick - quarter_ >= quarter) {
      quarter_ += quarter;
    }
    return onGrid_[std::size_t(tick - quarter_)] != 0;
  }

 private:
  std::vector<uint8_t> onGrid_;
  uint64_t quarter_ = 0;  // where the last quarter note began
};

PlayedTiming JudgePlayedTiming(uint64_t strokes, uint64_t onGrid);

PlayedTiming MeasurePlayedTiming(std::span<const DrumHit> hits, uint16_t division);

// Of a filtered groove; nothing when the file fails the strict walk.
std::optional<PlayedTiming> MeasurePlayedTiming(std::span<const uint8_t> file);

}  // namespace rw::groove
