// What the plug-in reads of a measure: its time signature from the measure
// record "SMOS" and its length from the host.
#pragma once

#include <cstdint>

namespace rw {

struct MeasureSpecification {
  bool loaded = false;
  std::int32_t beats = 0;
  std::int32_t beatDuration = 0;  // duration units
  bool composite = false;

  // Beats times beat duration, in 64 bits: both come from the document.
  std::int64_t Length() const { return std::int64_t{beats} * beatDuration; }
};

// A measure whose record does not load reads as 0 beats of duration 0.
MeasureSpecification ReadMeasureSpecification(std::uint32_t measure);

// The host's length of the measure in duration units (0 when it has none).
std::int32_t MeasureDuration(std::uint32_t measure);

}  // namespace rw
