// A drum grid as a picture: one row per instrument with its General MIDI
// name, beats and measures ruled, each hit at its exact position (so that
// triplets and swing show as they are), its velocity as shading. Drawn for
// a groove file by `rwgroove render` and for a staff that received a groove
// by the demo; one renderer for both.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace rw::tools {

struct GridHit {
  uint64_t position = 0;  // in the grid's units, from the start of its first measure
  int key = 0;
  int velocity = 0;    // 1 to 127; 0 when not known
  bool faint = false;  // where a stroke was played, beside where it is written
};

struct DrumGrid {
  std::string title;
  std::string subtitle;
  uint64_t unitsPerQuarter = 0;  // a file's division, or 1024 for a staff
  uint64_t unitsPerBeat = 0;
  uint64_t unitsPerGroup = 0;  // a compound meter's dotted beat, ruled stronger; 0: none
  uint64_t unitsPerMeasure = 0;
  int32_t firstMeasure = 1;    // the number shown on the first measure drawn
  int32_t measures = 0;        // drawn
  int32_t placedMeasures = 0;  // measures after these are shaded as not placed; 0: none are
  std::vector<GridHit> hits;
  std::vector<std::pair<int32_t, std::string>> markers;    // texts above measures (their numbers)
  std::vector<std::pair<int32_t, int32_t>> slashMeasures;  // ranges written as beat slashes
};

// At most this many measures are drawn; later hits are left out.
inline constexpr int32_t kMostMeasuresDrawn = 64;

std::string DrumGridSvg(const DrumGrid& grid);

}  // namespace rw::tools
