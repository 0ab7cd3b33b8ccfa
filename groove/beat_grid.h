// The beats of a groove's meter and the grids a played stroke is written
// straight onto.
//
// A beat is a quarter note in simple meters, counted from the barline, the
// last one shorter where a measure is no whole number of quarters (5/8, 7/8);
// in compound meters (6/8, 9/8, 12/8, and the same over 16) it is a dotted
// quarter. A beat takes the sixteenth grid, or, when it is a whole quarter of
// a simple meter, may take the eighth-triplet grid. Either grid runs from the
// beat's start, and the beat's end (the next beat, or the barline) is a point
// of it, so a stroke played just before a barline goes onto the barline.
//
// Positions inside a measure are counted in twelfths of a tick, so that
// sixteenths (division/4), eighth triplets (division/3) and dotted quarters
// (3·division/2) are whole numbers for every division and grids compare
// exactly; a point becomes a tick only when a stroke is written on it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace rw::groove {

// The meter as the reader's time-signature snapshot gives it.
struct GrooveMeter {
  int32_t division = 0;  // ticks per quarter note
  int32_t numerator = 0;
  int32_t denominator = 0;
  int32_t ticksPerBeat = 0;  // 4·division/denominator, as the reader counts it
  int32_t ticksPerMeasure = 0;
};

enum class BeatGrid : uint8_t { kSixteenths, kEighthTriplets };

inline constexpr uint64_t kTwelfthsPerTick = 12;

// Where a tick lies: its measure (from 0), its beat in the measure (from 0)
// and how far past the beat's start, in twelfths of a tick.
struct BeatPlace {
  uint64_t measure = 0;
  uint32_t beat = 0;
  uint64_t offset = 0;
};

class MeterBeats {
 public:
  // Nothing for a meter the reader could not have given: no division, a
  // numerator outside 1 to 255, a denominator that is no power of two or
  // leaves no ticks per beat, or beat and measure lengths that do not follow
  // from the rest.
  static std::optional<MeterBeats> Of(const GrooveMeter& meter);

  uint32_t count() const { return count_; }
  bool compound() const { return compound_; }
  uint64_t ticksPerMeasure() const { return ticksPerMeasure_; }

  // In twelfths of a tick; a beat's is below 2^20, its offsets too.
  uint64_t LengthOf(uint32_t beat) const {
    return beat + 1 < count_ ? beat_ : beat + 1 == count_ ? lastBeat_ : 0;
  }
  uint64_t StepOf(BeatGrid grid) const {
    return grid == BeatGrid::kSixteenths ? sixteenth_.size : triplet_.size;
  }

  // A whole quarter of a simple meter: the only beats that may take triplets.
  bool MayTakeTriplets(uint32_t beat) const {
    return !compound_ && beat < count_ && LengthOf(beat) == beat_;
  }

  BeatPlace Locate(uint64_t tick) const;
  // The point of `grid` nearest the place, an earlier one on a tie, in
  // twelfths from the beat's start; the beat's length when it is its end.
  uint64_t NearestPoint(const BeatPlace& place, BeatGrid grid) const {
    const Step& step = grid == BeatGrid::kSixteenths ? sixteenth_ : triplet_;
    const auto offset = uint32_t(place.offset);
    const uint32_t before = step.Quotient(offset) * step.size;
    const auto after = uint32_t(std::min<uint64_t>(before + step.size, LengthOf(place.beat)));
    return offset - before <= after - offset ? before : after;
  }
  // The tick of a point of a beat, rounded to the nearer whole tick (half up).
  uint64_t TickOf(uint64_t measure, uint32_t beat, uint64_t point) const {
    const uint64_t inMeasure = uint64_t(beat) * beat_ + point;
    return measure * ticksPerMeasure_ + (inMeasure + kTwelfthsPerTick / 2) / kTwelfthsPerTick;
  }
  // Where `place` is written on `grid`.
  uint64_t StraightTick(const BeatPlace& place, BeatGrid grid) const {
    return TickOf(place.measure, place.beat, NearestPoint(place, grid));
  }

 private:
  // A grid's step, and division by it as a multiplication (every stroke is
  // divided): with the reciprocal 2^40/size rounded up, the quotient is
  // exact for every dividend below 2^20, as Granlund and Montgomery show,
  // since the rounding error stays below size < 2^20 = 2^(40-20).
  struct Step {
    uint32_t size = 1;
    uint64_t reciprocal = uint64_t{1} << 40;
    explicit Step(uint64_t twelfths = 1)
        : size(uint32_t(twelfths)), reciprocal(((uint64_t{1} << 40) + twelfths - 1) / twelfths) {}
    uint32_t Quotient(uint32_t dividend) const { return uint32_t((dividend * reciprocal) >> 40); }
  };

  MeterBeats() = default;

  uint64_t ticksPerMeasure_ = 0;
  uint64_t measure_ = 0;  // twelfths
  uint64_t beat_ = 0;     // twelfths, of every beat but a shorter last one
  uint64_t lastBeat_ = 0;
  Step sixteenth_;
  Step triplet_;
  uint32_t count_ = 0;
  bool compound_ = false;
};

// Locate for the ticks of one track, which never fall: found by stepping on
// from the last one, so that a dense track's strokes take no division.
class BeatCursor {
 public:
  explicit BeatCursor(const MeterBeats& beats) : beats_(&beats) {}

  // Any tick; one before the last, or measures after it, is located afresh.
  BeatPlace Locate(uint64_t tick) {
    const uint64_t measure = beats_->ticksPerMeasure();
    if (tick < tick_ || tick - measureStart_ >= 2 * measure) {
      Reset(tick);
    } else if (tick - measureStart_ >= measure) {
      ++place_.measure;
      measureStart_ += measure;
      place_.beat = 0;
      beatStart_ = 0;
    }
    tick_ = tick;
    const uint64_t inMeasure = kTwelfthsPerTick * (tick - measureStart_);
    while (inMeasure - beatStart_ >= beats_->LengthOf(place_.beat)) {
      beatStart_ += beats_->LengthOf(place_.beat);
      ++place_.beat;
    }
    place_.offset = inMeasure - beatStart_;
    return place_;
  }

 private:
  void Reset(uint64_t tick);

  const MeterBeats* beats_;
  BeatPlace place_;
  uint64_t measureStart_ = 0;  // ticks
  uint64_t beatStart_ = 0;     // twelfths from the barline
  uint64_t tick_ = 0;
};

}  // namespace rw::groove
