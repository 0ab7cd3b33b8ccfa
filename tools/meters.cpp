#include "meters.h"

namespace rw::tools {
namespace {

constexpr int32_t kWholeNote = 4096;  // a quarter is 1024

struct Signature {
  int numerator;
  int denominator;
};
constexpr Signature kCommon[] = {{2, 2}, {3, 2}, {4, 2},  {2, 4},  {3, 4},  {4, 4},
                                 {5, 4}, {6, 4}, {7, 4},  {3, 8},  {5, 8},  {6, 8},
                                 {7, 8}, {9, 8}, {12, 8}, {6, 16}, {12, 16}};

std::string NameOf(Signature s) {
  return std::to_string(s.numerator) + "/" + std::to_string(s.denominator);
}

// A signature as measures hold it: its beats of 1/denominator, and for a
// compound meter also its dotted beats.
void AddWritings(Signature s, std::vector<NamedMeter>& out) {
  if (s.denominator <= 0 || s.denominator > kWholeNote || kWholeNote % s.denominator != 0) return;
  const int32_t unit = kWholeNote / s.denominator;
  const bool compound = s.denominator >= 8 && s.numerator >= 6 && s.numerator % 3 == 0;
  if (compound) {
    out.push_back({NameOf(s) + " (" + std::to_string(s.numerator / 3) + " dotted beats)",
                   {s.numerator / 3, 3 * unit}});
    out.push_back(
        {NameOf(s) + " (" + std::to_string(s.numerator) + " beats)", {s.numerator, unit}});
  } else {
    out.push_back({NameOf(s), {s.numerator, unit}});
  }
}

}  // namespace

std::vector<NamedMeter> FittingMeters(const groove::GroovePattern& groove) {
  std::vector<NamedMeter> candidates;
  const Signature own{groove.timeSignature.numerator, groove.timeSignature.denominator};
  if (own.numerator > 0) AddWritings(own, candidates);
  for (Signature s : kCommon) {
    if (s.numerator != own.numerator || s.denominator != own.denominator)
      AddWritings(s, candidates);
  }

  std::vector<NamedMeter> fitting;
  for (NamedMeter& candidate : candidates) {
    if (groove::MeterFits(groove, candidate.meter)) fitting.push_back(std::move(candidate));
  }
  return fitting;
}

}  // namespace rw::tools
