#include "grid_choice.h"

#include <algorithm>

namespace rw::groove {
namespace {

// Triplets need a misfit under 1/kTripletMargin of the sixteenths'. Swing
// 2:1 and 3:1 lie 1/12 of a beat apart, as near as 10 to 40 ms of jitter
// brings strokes; a wider margin would take swing for 3:1 as often as a
// narrower one takes 3:1 for swing.
constexpr double kTripletMargin = 1.5;

}  // namespace

GridChoice::GridChoice(const MeterBeats& beats) : beats_(beats), places_(beats.count()) {}

// With n onsets whose offsets sum to S, the centre is S/n; the nearest point
// k·step has k = round(S/(n·step)), and n·d² = (S − n·k·step)²/n. The sums
// reach 2^51 at most (2^32 onsets of at most 2^19 twelfths), so the square
// is taken in floating point.
double GridChoice::Misfit(const BeatPlaces& places, uint64_t length, BeatGrid grid) const {
  const uint64_t step = beats_.StepOf(grid);
  double misfit = 0;
  for (const Place& place : places) {
    if (place.count == 0) continue;
    const uint64_t span = place.count * step;
    const uint64_t k = (2 * place.offsets + span) / (2 * span);
    const uint64_t point = std::min(k * step, length) * place.count;
    const double distance =
        place.offsets >= point ? double(place.offsets - point) : -double(point - place.offsets);
    misfit += distance * distance / double(place.count);
  }
  return misfit;
}

std::vector<BeatGrid> GridChoice::Choose() const {
  std::vector<BeatGrid> grids(places_.size(), BeatGrid::kSixteenths);
  for (uint32_t beat = 0; beat < places_.size(); ++beat) {
    if (!beats_.MayTakeTriplets(beat)) continue;
    const uint64_t length = beats_.LengthOf(beat);
    const double sixteenths = Misfit(places_[beat], length, BeatGrid::kSixteenths);
    const double triplets = Misfit(places_[beat], length, BeatGrid::kEighthTriplets);
    if (kTripletMargin * triplets < sixteenths) grids[beat] = BeatGrid::kEighthTriplets;
  }
  return grids;
}

}  // namespace rw::groove
