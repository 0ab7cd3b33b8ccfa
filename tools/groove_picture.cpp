#include "groove_picture.h"

#include <algorithm>
#include <cstdio>

#include "drum_hits.h"
#include "drum_key_map.h"

namespace rw::tools {
namespace {

std::string Tempo(double bpm) {
  char text[32];
  std::snprintf(text, sizeof text, "%.0f", bpm);
  return text;
}

}  // namespace

DrumGrid GrooveGrid(const std::string& name, const GrooveInspection& r,
                    std::span<const uint8_t> filtered) {
  const groove::GroovePattern& p = r.judgement().pattern;
  DrumGrid grid;
  grid.unitsPerQuarter = static_cast<uint64_t>(std::max(0, p.division));
  grid.unitsPerBeat = static_cast<uint64_t>(std::max(0, p.timeSignature.ticksPerBeat));
  grid.unitsPerMeasure = static_cast<uint64_t>(std::max(0, p.timeSignature.ticksPerMeasure));
  const int32_t numerator = p.timeSignature.numerator;
  if (p.timeSignature.denominator >= 8 && numerator >= 6 && numerator % 3 == 0) {
    grid.unitsPerGroup = 3 * grid.unitsPerBeat;
  }
  for (const groove::DrumHit& hit : groove::DrumHitsOf(filtered).hits) {
    grid.hits.push_back({hit.tick, hit.key, hit.velocity});
  }
  // A played groove drawn straight shows where each stroke was played too.
  for (const groove::DrumHit& hit : r.playedHits) {
    grid.hits.push_back({hit.tick, groove::GeneralMidiKeyOf(hit.key), hit.velocity, true});
  }

  // Every hit is drawn, those past the groove's length in shaded measures:
  // a stroke that rings into the next repetition shows where it falls.
  uint64_t lastMeasure = 0;
  for (const GridHit& hit : grid.hits) {
    if (grid.unitsPerMeasure)
      lastMeasure = std::max(lastMeasure, hit.position / grid.unitsPerMeasure + 1);
  }
  grid.placedMeasures = r.judgement().grooveMeasures;
  grid.measures = static_cast<int32_t>(std::min<uint64_t>(
      std::max<uint64_t>(lastMeasure, uint64_t(std::max(1, grid.placedMeasures))),
      kMostMeasuresDrawn));

  const std::string meter =
      std::to_string(p.timeSignature.numerator) + "/" + std::to_string(p.timeSignature.denominator);
  grid.title = name + ": " + meter + ", " + std::to_string(r.judgement().grooveMeasures) +
               (r.judgement().grooveMeasures == 1 ? " measure" : " measures");
  std::string fits;
  for (const groove::NamedMeter& m : r.fits) fits += (fits.empty() ? "" : ", ") + m.name;
  grid.subtitle = r.placed() ? "placed by the plug-in into measures of " + fits
                             : "refused by the plug-in: " + r.messages.back();
  if (r.proof.straightened) {
    grid.subtitle += "  |  played, written straight (rings: as played)";
  } else if (r.proof.timing.played) {
    grid.subtitle += "  |  played, placed as played";
  }
  grid.subtitle += "  |  " + Tempo(r.proof.facts.tempoBpm) + " BPM, " + std::to_string(p.division) +
                   " ticks per quarter note";
  if (uint64_t(grid.measures) < lastMeasure) {
    grid.subtitle += "  |  the first " + std::to_string(grid.measures) + " of " +
                     std::to_string(lastMeasure) + " measures";
  }
  return grid;
}

}  // namespace rw::tools
