#include "beat_grid.h"

#include <algorithm>
#include <bit>

namespace rw::groove {
namespace {

constexpr int32_t kLargestDivision = 0x7FFF;  // the top bit would count SMPTE frames
constexpr int32_t kLargestNumerator = 255;    // one byte in the file

bool IsCompound(const GrooveMeter& meter) {
  return (meter.denominator == 8 || meter.denominator == 16) && meter.numerator >= 6 &&
         meter.numerator % 3 == 0;
}

}  // namespace

std::optional<MeterBeats> MeterBeats::Of(const GrooveMeter& meter) {
  if (meter.division < 1 || meter.division > kLargestDivision) return std::nullopt;
  if (meter.numerator < 1 || meter.numerator > kLargestNumerator) return std::nullopt;
  if (meter.denominator < 1 || !std::has_single_bit(uint32_t(meter.denominator)) ||
      meter.denominator > 4 * meter.division) {
    return std::nullopt;
  }
  if (meter.ticksPerBeat != 4 * meter.division / meter.denominator ||
      meter.ticksPerMeasure != meter.numerator * meter.ticksPerBeat) {
    return std::nullopt;
  }
  MeterBeats beats;
  const auto division = uint64_t(meter.division);
  beats.compound_ = IsCompound(meter);
  beats.ticksPerMeasure_ = uint64_t(meter.ticksPerMeasure);
  beats.measure_ = kTwelfthsPerTick * beats.ticksPerMeasure_;
  beats.beat_ = kTwelfthsPerTick * division * (beats.compound_ ? 3 : 2) / 2;
  beats.sixteenth_ = Step(kTwelfthsPerTick * division / 4);
  beats.triplet_ = Step(kTwelfthsPerTick * division / 3);
  beats.count_ = uint32_t((beats.measure_ + beats.beat_ - 1) / beats.beat_);
  beats.lastBeat_ = beats.measure_ - uint64_t(beats.count_ - 1) * beats.beat_;
  return beats;
}

BeatPlace MeterBeats::Locate(uint64_t tick) const {
  BeatPlace place;
  place.measure = tick / ticksPerMeasure_;
  const uint64_t inMeasure = kTwelfthsPerTick * (tick % ticksPerMeasure_);
  place.beat = uint32_t(inMeasure / beat_);
  place.offset = inMeasure - place.beat * beat_;
  return place;
}

void BeatCursor::Reset(uint64_t tick) {
  place_ = beats_->Locate(tick);
  measureStart_ = place_.measure * beats_->ticksPerMeasure();
  beatStart_ = kTwelfthsPerTick * (tick - measureStart_) - place_.offset;
}

}  // namespace rw::groove
