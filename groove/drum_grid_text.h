// A groove's opening measures as a drum grid in plain text, for the dialog's
// look at a style and for rwgroove: one row per instrument, one column per
// grid step, a bar line between measures.
//
//   HH   x.x.x.x.X.x.x.x.|x.x.x.x.X.x.x.x.
//   SN   ....X.......X...|....X..o....X...
//   BD   X.....X.X.......|X.....X.X.......
//
// The rows run as a drummer reads a drum part from the top: cymbals, hi-hat,
// toms from high to low, snare, then any other instrument in key order, and
// the feet last, kick then pedal hi-hat. The marks are `X` for an accent
// (velocity 100 and above), `x` for a normal stroke, `o` for a ghost note
// (below 60) and `.` for a rest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "groove_pattern.h"

namespace rw::groove {

// In the order they are tried: the coarsest that holds every stroke is taken.
enum class GridStep : uint8_t {
  kEighths,
  kSixteenths,
  kEighthTriplets,
  kSixteenthTriplets,
  kThirtySeconds,
};

// "sixteenths", "eighth triplets", ...
const char* GridStepName(GridStep step);

// The row name's width: the longest short name ("k127") and a space.
inline constexpr std::size_t kDrumGridNameWidth = 5;

struct DrumGridText {
  GridStep step = GridStep::kSixteenths;
  // Every stroke lies on a step. When none of the grids holds them all, the
  // grid is thirty-seconds and each stroke is shown at the step nearest it
  // within its measure.
  bool exact = true;
  int32_t measures = 0;            // shown: as many of those asked for as fit the width
  std::vector<std::string> lines;  // one per instrument that plays in them
};

// The first `measures` measures of the groove in `file` (well-formed, as the
// import reads it; its channel-10 note-ons of every track) in the meter the
// reader gave it. No line is longer than `maxWidth`: measures that do not
// fit are left out whole. Nothing is shown for a file that fails the strict
// walk or a meter the reader could not have given.
DrumGridText DrumGridTextOf(std::span<const uint8_t> file, const GroovePattern& meter,
                            int32_t measures, std::size_t maxWidth);

}  // namespace rw::groove
