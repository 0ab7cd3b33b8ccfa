#include "groove_picture.h"

#include <algorithm>
#include <cstdio>

#include "smf_walk.h"

namespace rw::tools {
namespace {

class HitCollector : public groove::SmfEventVisitor {
 public:
  explicit HitCollector(std::vector<DrumHit>& hits) : hits_(hits) {}
  void Event(const groove::SmfEvent& e) override {
    if (e.status == 0x99 && e.data2 > 0) hits_.push_back({e.tick, e.data1, e.data2});
  }

 private:
  std::vector<DrumHit>& hits_;
};

std::string Tempo(double bpm) {
  char text[32];
  std::snprintf(text, sizeof text, "%.0f", bpm);
  return text;
}

}  // namespace

DrumGrid GrooveGrid(const std::string& name, const GrooveInspection& r,
                    std::span<const uint8_t> filtered) {
  const groove::GroovePattern& p = r.judgement.pattern;
  DrumGrid grid;
  grid.unitsPerQuarter = static_cast<uint64_t>(std::max(0, p.division));
  grid.unitsPerBeat = static_cast<uint64_t>(std::max(0, p.timeSignature.ticksPerBeat));
  grid.unitsPerMeasure = static_cast<uint64_t>(std::max(0, p.timeSignature.ticksPerMeasure));
  const int32_t numerator = p.timeSignature.numerator;
  if (p.timeSignature.denominator >= 8 && numerator >= 6 && numerator % 3 == 0) {
    grid.unitsPerGroup = 3 * grid.unitsPerBeat;
  }
  HitCollector collector(grid.hits);
  groove::WalkStrictly(filtered.data(), filtered.size(), &collector);

  // Every hit is drawn, those past the groove's length in shaded measures:
  // a stroke that rings into the next repetition shows where it falls.
  uint64_t lastMeasure = 0;
  for (const DrumHit& hit : grid.hits) {
    if (grid.unitsPerMeasure)
      lastMeasure = std::max(lastMeasure, hit.position / grid.unitsPerMeasure + 1);
  }
  grid.placedMeasures = r.judgement.grooveMeasures;
  grid.measures = static_cast<int32_t>(std::min<uint64_t>(
      std::max<uint64_t>(lastMeasure, uint64_t(std::max(1, grid.placedMeasures))),
      kMostMeasuresDrawn));

  const std::string meter =
      std::to_string(p.timeSignature.numerator) + "/" + std::to_string(p.timeSignature.denominator);
  grid.title = name + ": " + meter + ", " + std::to_string(r.judgement.grooveMeasures) +
               (r.judgement.grooveMeasures == 1 ? " measure" : " measures");
  std::string fits;
  for (const NamedMeter& m : r.fits) fits += (fits.empty() ? "" : ", ") + m.name;
  grid.subtitle = r.placed() ? "placed by the plug-in into measures of " + fits
                             : "refused by the plug-in: " + r.messages.back();
  grid.subtitle += "  |  " + Tempo(r.tempoBpm) + " BPM, " + std::to_string(p.division) +
                   " ticks per quarter note";
  if (uint64_t(grid.measures) < lastMeasure) {
    grid.subtitle += "  |  the first " + std::to_string(grid.measures) + " of " +
                     std::to_string(lastMeasure) + " measures";
  }
  return grid;
}

}  // namespace rw::tools
