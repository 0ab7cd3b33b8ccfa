// The reader's entry for the generate command: one load over the caller's
// buffer. Diagnostics go to the sink as they arise; a range-check failure
// (RangeCheckError, a std::out_of_range) leaves through the exception, with
// the buffer still holding a coherent file of the size the reader left.
#pragma once

#include <cstdint>

#include "groove_pattern.h"
#include "smf_reader.h"

namespace rw::groove {

// What the reader holds of the groove so far; after a failed load, what
// it reached.
template <class Store>
GroovePattern PatternOf(const BasicSmfReader<Store>& reader) {
  GroovePattern pattern;
  pattern.timeSignature = reader.timeSignatureSnapshot();
  pattern.division = reader.division();
  pattern.drumNotesFound = reader.drumNotesFound();
  pattern.lastDrumMeasure = reader.lastDrumMeasure();
  pattern.lastDrumTick = reader.lastDrumTick();
  return pattern;
}

template <class Store>
GroovePattern LoadGroove(BasicSmfReader<Store>& reader, int32_t /*measure: accepted, unused*/) {
  const bool loaded = reader.LoadTracks();
  GroovePattern pattern = PatternOf(reader);
  pattern.loaded = loaded;
  return pattern;
}

}  // namespace rw::groove
