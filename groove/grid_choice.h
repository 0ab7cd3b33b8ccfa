// Which grid each beat of the meter takes: sixteenths, or eighth triplets
// where the beat's onsets lie clearly nearer to them.
//
// The choice is made per beat of the meter (beat 1, beat 2, ...) over the
// onsets at that beat in all measures. A drummer swings the same beats every
// bar, and 10 to 40 ms of jitter is as wide as the gap between a swung eighth
// (2/3 of a beat) and a straight sixteenth (3/4), so one stroke says little;
// what many strokes show is where they centre, since jitter either side
// cancels.
//
// Between its start and its end a quarter has three places, each holding at
// most one stroke position of either grid: its early part (the sixteenth
// after the start, or the first triplet), its middle (the eighth) and its
// late part (the sixteenth before the end, or the second triplet). The
// onsets of each place are pooled and their centre taken; a grid's misfit is
// the sum over the places of n·d², d the distance from the centre to the
// grid's nearest point. Onsets near the start or the end tell nothing, both
// grids having those points. Triplets are taken when their misfit is under
// two thirds of that of sixteenths (the centres some 1.22 times nearer), so
// that a centre halfway between, say, a swung eighth and a sixteenth stays
// sixteenths, and a beat without onsets between its start and end does too.
// The distance alone, summed stroke by stroke, cannot tell swing from
// straight under such jitter: a swung eighth 25 ms late is as near the
// sixteenth as the triplet.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "beat_grid.h"

namespace rw::groove {

class GridChoice {
 public:
  explicit GridChoice(const MeterBeats& beats);

  // The places' bounds lie halfway between the positions of neighbouring
  // places: 1/8 (between the start and a sixteenth), 5/12 (a triplet and
  // the eighth), 7/12 and 7/8.
  void AddOnset(const BeatPlace& place) {
    if (!beats_.MayTakeTriplets(place.beat)) return;
    const uint64_t length = beats_.LengthOf(place.beat);
    const uint64_t offset = place.offset;
    if (8 * offset < length || 8 * offset >= 7 * length) return;
    const std::size_t which = 12 * offset < 5 * length ? 0 : 12 * offset < 7 * length ? 1 : 2;
    Place& pooled = places_[place.beat][which];
    pooled.offsets += offset;
    ++pooled.count;
  }

  // One grid per beat of the meter, from the barline.
  std::vector<BeatGrid> Choose() const;

 private:
  struct Place {
    uint64_t offsets = 0;  // sum of the onsets' offsets from the beat's start, in twelfths
    uint64_t count = 0;
  };
  using BeatPlaces = std::array<Place, 3>;  // early, middle, late

  double Misfit(const BeatPlaces& places, uint64_t length, BeatGrid grid) const;

  const MeterBeats& beats_;
  std::vector<BeatPlaces> places_;
};

}  // namespace rw::groove
