#include "meters.h"

namespace rw::groove {
namespace {

constexpr int32_t kWholeNote = 4096;  // a quarter is 1024

struct Signature {
  int numerator;
  int denominator;
};
constexpr Signature kCommon[] = {{2, 2}, {3, 2}, {4, 2},  {2, 4},  {3, 4},  {4, 4},
                                 {5, 4}, {6, 4}, {7, 4},  {3, 8},  {5, 8},  {6, 8},
                                 {7, 8}, {9, 8}, {12, 8}, {6, 16}, {12, 16}};

// A beat that is not a power of two long is dotted: any positive length
// with more than one bit set. A negative one counts too; 0 does not.
bool IsDottedBeat(int64_t duration) {
  return duration < 0 || (duration > 0 && (duration & (duration - 1)) != 0);
}

// A signature as measures hold it: its beats of 1/denominator, and for a
// compound meter also its dotted beats.
void AddWritings(Signature s, std::vector<NamedMeter>& out) {
  if (s.denominator <= 0 || s.denominator > kWholeNote || kWholeNote % s.denominator != 0) return;
  const int32_t unit = kWholeNote / s.denominator;
  const bool compound = s.denominator >= 8 && s.numerator >= 6 && s.numerator % 3 == 0;
  const std::string name = MeterName(s.numerator, s.denominator);
  if (compound) {
    out.push_back({name + " (" + std::to_string(s.numerator / 3) + " dotted beats)",
                   {s.numerator / 3, 3 * unit}});
    out.push_back({name + " (" + std::to_string(s.numerator) + " beats)", {s.numerator, unit}});
  } else {
    out.push_back({name, {s.numerator, unit}});
  }
}

}  // namespace

bool MeterFits(const GroovePattern& groove, RegionMeter region) {
  if (groove.division <= 0) return false;
  const int64_t regionLength = int64_t{region.beats} * region.beatDuration;
  const int64_t grooveLength =
      int64_t{groove.timeSignature.ticksPerMeasure} * 1024 / groove.division;
  int64_t a = region.beats;
  int64_t b = groove.timeSignature.numerator;
  if (a != b) {
    if (IsDottedBeat(region.beatDuration)) {
      a *= 3;  // 6/8 written as two dotted quarters counts six eighths
    } else if (a == 2 * b || 2 * a == b) {
      b = a;
    }
  }
  return regionLength == grooveLength && a == b;
}

std::string MeterName(int32_t numerator, int32_t denominator) {
  if (numerator <= 0 || denominator <= 0) return "?";
  return std::to_string(numerator) + "/" + std::to_string(denominator);
}

std::string MeterName(const GroovePattern& groove) {
  return MeterName(groove.timeSignature.numerator, groove.timeSignature.denominator);
}

std::string MeterName(RegionMeter meter) {
  if (meter.beats <= 0 || meter.beatDuration <= 0) return "?";
  // A dotted beat is three of the note value below it.
  const bool dotted = IsDottedBeat(meter.beatDuration);
  const int32_t unit = dotted ? meter.beatDuration / 3 : meter.beatDuration;
  const int64_t beats = dotted ? int64_t{meter.beats} * 3 : meter.beats;
  if (unit <= 0 || kWholeNote % unit != 0) return std::to_string(beats) + "/?";
  return std::to_string(beats) + "/" + std::to_string(kWholeNote / unit);
}

std::vector<NamedMeter> FittingMeters(const GroovePattern& groove) {
  std::vector<NamedMeter> candidates;
  const Signature own{groove.timeSignature.numerator, groove.timeSignature.denominator};
  if (own.numerator > 0) AddWritings(own, candidates);
  for (Signature s : kCommon) {
    if (s.numerator != own.numerator || s.denominator != own.denominator)
      AddWritings(s, candidates);
  }

  std::vector<NamedMeter> fitting;
  for (NamedMeter& candidate : candidates) {
    if (MeterFits(groove, candidate.meter)) fitting.push_back(std::move(candidate));
  }
  return fitting;
}

}  // namespace rw::groove
