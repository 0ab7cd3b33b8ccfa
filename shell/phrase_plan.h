// Where each part of a style goes in the selected measures: a count-in
// first, the main groove repeated (alternating phrase by phrase with the
// second groove), a fill closing every phrase, an ending closing the region.
#pragma once

#include <cstdint>
#include <vector>

#include "style_parts.h"

namespace rw::shell {

// One import: a part placed from the start of its first measure, cut at the
// end of its last; `crash` when it follows a fill and starts with a crash.
struct Placement {
  PartKind part = PartKind::kMain;
  std::uint32_t firstMeasure = 0;
  std::uint32_t lastMeasure = 0;
  bool crash = false;
  bool operator==(const Placement&) const = default;
};

// Lengths in measures; 0 for a part that is not placed.
struct PhraseLengths {
  std::uint32_t groove = 1;     // the main groove, at least 1
  std::uint32_t variation = 0;  // the second groove, when chosen and the style has one
  std::uint32_t countIn = 0;    // the count-in, when chosen and the style has one
  std::uint32_t fill = 0;       // the fill, when fills are chosen and the style has one
  std::uint32_t phrase = 0;     // a fill closes every this many measures
  std::uint32_t ending = 0;     // the ending, when chosen and the style has one
  bool crashAfterFill = false;  // the measure after each fill starts with a crash
};

// Without a second groove and fills, the two grooves take turns this often.
inline constexpr std::uint32_t kAlternationMeasures = 4;

// The placements over measures `first` to `last`, in measure order. A
// count-in shorter than the region takes its first measures; the ending
// takes the last measures when it fits in what is left; the rest is the
// body. The body is cut into phrases from its first measure, and each
// complete phrase longer than the fill closes with the fill, its groove
// repeated before it; with a second groove, phrases 2, 4, 6... repeat that
// one instead (every 4 measures when there are no fills). Without either,
// the main groove runs on from the body's first measure as it always has,
// the last repetition cut at the end.
std::vector<Placement> PlanPlacements(std::uint32_t first, std::uint32_t last,
                                      const PhraseLengths& lengths);

}  // namespace rw::shell
