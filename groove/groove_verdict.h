// The verdict on one groove, reached the same way by the generate command,
// the dialog's style line and the groove author's tool, so that all say the
// same thing about every file (groove_proof.h proves a groove; this judges
// it against the selected measures).
#pragma once

#include <cstdint>
#include <string>

#include "groove_pattern.h"
#include "meters.h"
#include "smf_walk.h"

namespace rw::groove {

enum class Verdict {
  kPlaced,
  kUnreadable,        // the reader gave up, ran out of memory, or left a file an import cannot read
  kReaderStopped,     // the reader stopped the load; its diagnostics say why
  kNoDrumNotes,       // no channel-10 events, or none that sounds
  kMeterMismatch,     // the groove's meter does not fit the measures
  kDrumsAfterRegion,  // no drum note-on falls in the measures the placements cover
};

// What the user is told of each verdict. One table for the command and the
// tool: `stringId` is the plug-in's string, 0 where the verdict brings none
// of its own; `name` is how the tool's JSON calls it.
struct VerdictText {
  Verdict verdict;
  const char* name;
  uint32_t stringId;
};
const VerdictText& TextOf(Verdict verdict);

// The line that says what is damaged, after the verdict's own message, when
// the file the reader left fails the strict walk: its string, with the
// damage in place of its "%1".
inline constexpr uint32_t kStringDamage = 47;

enum class LoadFailure { kNone, kRangeCheck, kOutOfMemory };

struct GrooveJudgement {
  Verdict verdict = Verdict::kUnreadable;
  LoadFailure failure = LoadFailure::kNone;
  GroovePattern pattern;       // what the load reached, even when it failed
  int32_t grooveMeasures = 0;  // at least 1 once the drums are proven
  StrictWalk walk;             // of the file the import reads; not walked when the load failed
  uint64_t coveredTicks = 0;   // the ticks the placements cover, once the meter fits
};

// What is damaged in a file the load read but the strict walk refused, in a
// groove author's words; empty for any other verdict.
std::string DamageOf(const GrooveJudgement& judgement);

// For a proven groove: the meter check, then whether any drum note-on falls
// in the measures its placements cover. The region has `regionMeasures`
// measures and the groove is placed from its start once per groove length,
// so the covered ticks are those below min(groove length, region) measures.
void JudgePlacement(GrooveJudgement& judgement, RegionMeter region, int64_t regionMeasures);

}  // namespace rw::groove
