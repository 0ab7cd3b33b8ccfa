// The verdict on one groove file, reached the same way by the generate
// command and by the groove author's tool, so that both say the same thing
// about every file: one load through the reader, then, before anything in a
// score would change, the checks that prove the filtered file can be placed.
#pragma once

#include <cstdint>

#include "diagnostic_log.h"
#include "groove_pattern.h"
#include "smf_reader.h"
#include "smf_walk.h"

namespace rw::groove {

// A measure's meter as the score holds it: a quarter is 1024.
struct RegionMeter {
  int32_t beats = 0;
  int32_t beatDuration = 0;
};

// Whether the groove's meter fits measures of `region`: equal length, and
// the same number of beats once a dotted beat is counted in its thirds and
// 2/2 and 4/4 are taken for each other.
bool MeterFits(const GroovePattern& groove, RegionMeter region);

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

enum class LoadFailure { kNone, kRangeCheck, kOutOfMemory };

struct GrooveJudgement {
  Verdict verdict = Verdict::kUnreadable;
  LoadFailure failure = LoadFailure::kNone;
  GroovePattern pattern;       // what the load reached, even when it failed
  int32_t grooveMeasures = 0;  // at least 1 once the drums are proven
  StrictWalk walk;             // of the filtered file; not walked when the load failed
  uint64_t coveredTicks = 0;   // the ticks the placements cover, once the meter fits
};

// One load of the groove held in `buffer` (twice the file's size; `*size`
// its bytes) through `reader`, constructed by the caller over that buffer
// with `log` as its sink. Then the strict walk of the filtered bytes, drum
// events with a last drum measure, at least one sounding drum note-on, and
// the groove's length. The verdict is kPlaced when all of that holds, before
// any region is considered. A load that stops without a diagnostic counts as
// unreadable, so that the user always learns why.
GrooveJudgement ProveGroove(SmfReader& reader, const DiagnosticLog& log, const uint8_t* buffer,
                            const uint64_t* size);

// For a proven groove: the meter check, then whether any drum note-on falls
// in the measures its placements cover. The region has `regionMeasures`
// measures and the groove is placed from its start once per groove length,
// so the covered ticks are those below min(groove length, region) measures.
void JudgePlacement(GrooveJudgement& judgement, RegionMeter region, int64_t regionMeasures);

// Both, in the command's order.
GrooveJudgement JudgeGroove(SmfReader& reader, const DiagnosticLog& log, const uint8_t* buffer,
                            const uint64_t* size, RegionMeter region, int64_t regionMeasures);

}  // namespace rw::groove
