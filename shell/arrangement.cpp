#include "arrangement.h"

#include <algorithm>

namespace rw::shell {
namespace {

std::uint32_t MeasuresOf(const Arrangement& arrangement, PartKind part) {
  const auto& load = arrangement[part];
  return load && load->accepted ? load->loaded.Measures() : 0;
}

PhraseLengths LengthsOf(const GenerateOptions& options, const Arrangement& arrangement) {
  PhraseLengths lengths;
  lengths.groove = MeasuresOf(arrangement, PartKind::kMain);
  lengths.variation = MeasuresOf(arrangement, PartKind::kVariation);
  lengths.countIn = MeasuresOf(arrangement, PartKind::kCountIn);
  lengths.fill = MeasuresOf(arrangement, PartKind::kFill);
  if (lengths.fill > 0) lengths.phrase = options.parts[PartKind::kFill];
  lengths.ending = MeasuresOf(arrangement, PartKind::kEnding);
  lengths.crashAfterFill = options.crashAfterFill && lengths.fill > 0;
  return lengths;
}

// Every part the plan places brings at least one drum note-on into the
// measures it is placed in: each placement imports its part from the part's
// start, so the longest placement shows what can be heard of it.
bool PlacementsSoundDrums(const GenerateOptions& options, groove::RegionMeter meter,
                          Arrangement& arrangement, ArrangementReport& report) {
  const std::vector<Placement>& plan = arrangement.plan;
  const std::uint32_t region = options.work.endMeasure - options.work.startMeasure + 1u;
  const bool fills = std::any_of(plan.begin(), plan.end(),
                                 [](const Placement& p) { return p.part == PartKind::kFill; });
  for (auto& load : arrangement.parts) {
    if (!load || !load->accepted) continue;
    LoadedPart& part = load->loaded;
    std::uint32_t longest = 0;
    for (const Placement& placement : plan) {
      if (placement.part != part.part) continue;
      longest = std::max(longest, placement.lastMeasure - placement.firstMeasure + 1);
    }
    if (longest == 0) continue;
    // What took the measures a groove would need, when it is cut short.
    const bool cut = longest < std::min(part.Measures(), region);
    const bool groove = part.part == PartKind::kMain || part.part == PartKind::kVariation;
    const ShortOfMeasures why = !cut || !groove ? ShortOfMeasures::kRegion
                                : fills         ? ShortOfMeasures::kFills
                                                : ShortOfMeasures::kCountInOrEnding;
    if (auto refusal = UncoveredDrums(part, options.style, meter, longest, why)) {
      report.Refusal(part.part, *refusal);
      return false;
    }
  }
  return true;
}

}  // namespace

Arrangement Arrange(const GenerateOptions& options, ArrangementReport& report) {
  Arrangement arrangement;
  const groove::RegionMeter meter = RegionMeterOf(options.work);
  for (const PartRow& row : PartRows()) {
    if (!options.parts.Chosen(row.kind) || !options.style.Has(row.kind)) continue;
    PartLoad& load =
        arrangement[row.kind].emplace(LoadPart(row.kind, options.style, meter, options.straighten));
    if (!load.readerBox.empty()) report.ReaderBox(load.readerBox);
    if (!load.accepted) {
      report.Refusal(row.kind, load.refusal);
      return arrangement;
    }
  }
  arrangement.plan = PlanPlacements(options.work.startMeasure, options.work.endMeasure,
                                    LengthsOf(options, arrangement));
  arrangement.accepted = PlacementsSoundDrums(options, meter, arrangement, report);
  return arrangement;
}

}  // namespace rw::shell
