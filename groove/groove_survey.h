// The first of straightening's two walks over a filtered groove. It counts
// the strokes on the programmed grid (played_timing.h) and pools the onsets
// that choose each beat's grid (grid_choice.h), holding nothing that grows
// with the file: the file itself is read again by the second walk instead
// of being copied into tables.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "beat_grid.h"
#include "played_timing.h"

namespace rw::groove {

struct GrooveSurvey {
  bool wellFormed = false;
  std::string problem;  // why not
  uint16_t format = 0;
  uint16_t division = 0;
  PlayedTiming timing;
  std::vector<BeatGrid> grids;  // one per beat of `beats`; none without them
};

// `beats` may be null: then only the timing is measured.
GrooveSurvey SurveyGroove(std::span<const uint8_t> file, const MeterBeats* beats);

}  // namespace rw::groove
