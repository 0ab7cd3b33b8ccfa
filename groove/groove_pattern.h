// What one load hands to the generate command.
#pragma once

#include <cstdint>

#include "time_marks.h"

namespace rw::groove {

struct GroovePattern {
  bool loaded = false;          // the load succeeded and made at least one time mark
  TimeMark timeSignature{};     // numerator, denominator, ticks per beat and per measure
  int32_t division = 0;         // ticks per quarter note
  bool drumNotesFound = false;  // channel-10 events while they were being collected
  int32_t lastDrumMeasure = 0;  // 1-based; 0 when there is none
  int32_t lastDrumTick = 0;     // tick within that measure
};

// The groove's length in measures. A last measure whose final drum event
// lies in its first 70 percent is a trailing stroke of the loop and does not
// count, unless the groove is a single measure. 0 without drum notes.
int32_t GrooveMeasures(const GroovePattern& pattern);

}  // namespace rw::groove
