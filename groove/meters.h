// Meters: the groove's, as its file states it, and the selected measures',
// as the score holds them (a quarter is 1024), with the command's rule for
// when one fits the other and the names a musician reads.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "groove_pattern.h"

namespace rw::groove {

// A measure's meter as the score holds it.
struct RegionMeter {
  int32_t beats = 0;
  int32_t beatDuration = 0;
};

// Whether the groove's meter fits measures of `region`: equal length, and
// the same number of beats once a dotted beat is counted in its thirds and
// 2/2 and 4/4 are taken for each other.
bool MeterFits(const GroovePattern& groove, RegionMeter region);

// "3/4"; "?" for a meter the file did not give.
std::string MeterName(int32_t numerator, int32_t denominator);
// The groove's own meter.
std::string MeterName(const GroovePattern& groove);
// Measures as a musician writes them: "4/4", or "6/8" for two dotted
// quarters; "?" for none, "5/?" for a beat no note value names.
std::string MeterName(RegionMeter meter);

// A meter written as measures can hold it, with its name: "6/8 (2 dotted
// beats)".
struct NamedMeter {
  std::string name;
  RegionMeter meter;
};

// Of the groove's own meter and the common ones (own first), those whose
// measures the plug-in would fill with this groove.
std::vector<NamedMeter> FittingMeters(const GroovePattern& groove);

}  // namespace rw::groove
