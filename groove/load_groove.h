// The reader's entry for the generate command: one load over the caller's
// buffer. Diagnostics go to the sink as they arise; a range-check failure
// (RangeCheckError, a std::out_of_range) leaves through the exception, with
// the buffer still holding a coherent file of the size the reader left.
#pragma once

#include <cstdint>

#include "groove_pattern.h"
#include "smf_reader.h"

namespace rw::groove {

template <class Store>
GroovePattern LoadGroove(BasicSmfReader<Store>& reader, int32_t /*measure: accepted, unused*/) {
  GroovePattern pattern;
  pattern.loaded = reader.LoadTracks();
  pattern.timeSignature = reader.timeSignatureSnapshot();
  pattern.division = reader.division();
  pattern.drumNotesFound = reader.drumNotesFound();
  pattern.lastDrumMeasure = reader.lastDrumMeasure();
  pattern.lastDrumTick = reader.lastDrumTick();
  return pattern;
}

}  // namespace rw::groove
