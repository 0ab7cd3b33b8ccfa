// Where each part of a style goes in the selected measures: the main groove
// repeated, a fill closing every phrase, an ending closing the region.
#pragma once

#include <cstdint>
#include <vector>

namespace rw::shell {

enum class GroovePart { kMain, kFill, kEnding };

// One import: a part placed from the start of its first measure, cut at the
// end of its last.
struct Placement {
  GroovePart part = GroovePart::kMain;
  std::uint32_t firstMeasure = 0;
  std::uint32_t lastMeasure = 0;
  bool operator==(const Placement&) const = default;
};

// Lengths in measures; 0 for a part that is not placed.
struct PhraseLengths {
  std::uint32_t groove = 1;  // the main groove, at least 1
  std::uint32_t fill = 0;    // the fill, when fills are chosen and the style has one
  std::uint32_t phrase = 0;  // a fill closes every this many measures
  std::uint32_t ending = 0;  // the ending, when chosen and the style has one
};

// The placements over measures `first` to `last`, in measure order. The
// ending takes the last measures when it fits; the rest is cut into phrases
// from its first measure, and each complete phrase longer than the fill
// closes with the fill, the main groove repeated before it. Without a fill
// that fits, the main groove runs on from the first measure as it always
// has, the last repetition cut at the end.
std::vector<Placement> PlanPlacements(std::uint32_t first, std::uint32_t last,
                                      const PhraseLengths& lengths);

}  // namespace rw::shell
