#include "groove_verdict.h"

#include <algorithm>

namespace rw::groove {
namespace {

constexpr VerdictText kVerdictTexts[] = {
    {Verdict::kPlaced, "placed", 0},
    {Verdict::kUnreadable, "unreadable", 19},
    {Verdict::kReaderStopped, "reader-stopped", 0},
    {Verdict::kNoDrumNotes, "no-drum-notes", 20},
    {Verdict::kMeterMismatch, "meter-mismatch", 21},
    {Verdict::kDrumsAfterRegion, "drums-after-region", 29},
};

}  // namespace

const VerdictText& TextOf(Verdict verdict) {
  for (const VerdictText& text : kVerdictTexts) {
    if (text.verdict == verdict) return text;
  }
  return kVerdictTexts[1];
}

std::string DamageOf(const GrooveJudgement& judgement) {
  const bool walked = judgement.pattern.loaded && judgement.failure == LoadFailure::kNone;
  if (judgement.verdict != Verdict::kUnreadable || !walked) return "";
  return judgement.walk.problem;
}

void JudgePlacement(GrooveJudgement& judgement, RegionMeter region, int64_t regionMeasures) {
  if (judgement.verdict != Verdict::kPlaced) return;
  if (!MeterFits(judgement.pattern, region)) {
    judgement.verdict = Verdict::kMeterMismatch;
    return;
  }
  const int64_t measures = std::clamp<int64_t>(regionMeasures, 0, judgement.grooveMeasures);
  const int64_t ticksPerMeasure = std::max(0, judgement.pattern.timeSignature.ticksPerMeasure);
  judgement.coveredTicks = static_cast<uint64_t>(measures * ticksPerMeasure);
  if (judgement.walk.firstDrumNoteOnTick.value_or(UINT64_MAX) >= judgement.coveredTicks) {
    judgement.verdict = Verdict::kDrumsAfterRegion;
  }
}

}  // namespace rw::groove
