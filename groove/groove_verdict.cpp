#include "groove_verdict.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "load_groove.h"

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

// A beat that is not a power of two long is dotted: any positive length
// with more than one bit set. A negative one counts too; 0 does not.
bool IsDottedBeat(int64_t duration) {
  return duration < 0 || (duration > 0 && (duration & (duration - 1)) != 0);
}

}  // namespace

const VerdictText& TextOf(Verdict verdict) {
  for (const VerdictText& text : kVerdictTexts) {
    if (text.verdict == verdict) return text;
  }
  return kVerdictTexts[1];
}

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

GrooveJudgement ProveGroove(SmfReader& reader, const DiagnosticLog& log, const uint8_t* buffer,
                            const uint64_t* size) {
  GrooveJudgement judgement;
  try {
    judgement.pattern = LoadGroove(reader, 0);
  } catch (const std::out_of_range&) {
    judgement.failure = LoadFailure::kRangeCheck;
  } catch (const std::bad_alloc&) {
    judgement.failure = LoadFailure::kOutOfMemory;
  }
  if (judgement.failure != LoadFailure::kNone) {
    judgement.pattern = PatternOf(reader);
    judgement.verdict = Verdict::kUnreadable;
    return judgement;
  }
  if (!judgement.pattern.loaded) {
    judgement.verdict = log.empty() ? Verdict::kUnreadable : Verdict::kReaderStopped;
    return judgement;
  }
  judgement.walk = WalkStrictly(buffer, *size);
  if (!judgement.walk.wellFormed) {
    judgement.verdict = Verdict::kUnreadable;
    return judgement;
  }
  const GroovePattern& pattern = judgement.pattern;
  if (!pattern.drumNotesFound || pattern.lastDrumMeasure == 0 || judgement.walk.drumNoteOns == 0) {
    judgement.verdict = Verdict::kNoDrumNotes;
    return judgement;
  }
  judgement.grooveMeasures = std::max<int32_t>(1, GrooveMeasures(pattern));
  judgement.verdict = Verdict::kPlaced;
  return judgement;
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

GrooveJudgement JudgeGroove(SmfReader& reader, const DiagnosticLog& log, const uint8_t* buffer,
                            const uint64_t* size, RegionMeter region, int64_t regionMeasures) {
  GrooveJudgement judgement = ProveGroove(reader, log, buffer, size);
  JudgePlacement(judgement, region, regionMeasures);
  return judgement;
}

}  // namespace rw::groove
