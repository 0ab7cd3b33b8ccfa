// libFuzzer target over one groove load. Beyond what the sanitizers catch it
// checks the reader's promises: no load shows more than 16 diagnostics,
// nothing but the range-check failure escapes, the fast store leaves exactly
// what the literal in-place edits leave, and reads what the literal rules
// read; and the command's: a groove it
// would place is read by the reference host's own import, a reader written
// apart from the plug-in's, with a drum note in the measures it covers, and
// that groove written straight is a file the strict walk accepts.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "groove_proof.h"
#include "literal_store.h"
#include "load_groove.h"
#include "smf_header_impl.h"
#include "smf_reader.h"
#include "straighten.h"
#include "track_parser_impl.h"

// The host engine's import reader.
#include "engine/smf_reader.h"

namespace {

using rw::groove::BasicSmfReader;

class CountingSink : public rw::groove::DiagnosticSink {
 public:
  void Show(const char* text) override { shown.emplace_back(text); }
  std::vector<std::string> shown;
};

struct Outcome {
  bool rangeCheck = false;
  rw::groove::GroovePattern pattern;
  std::vector<std::string> alerts;
  std::vector<uint8_t> bytes;
};

template <class Store>
Outcome LoadOnce(const uint8_t* data, size_t size) {
  std::vector<uint8_t> buffer(2 * size + 1);
  std::copy(data, data + size, buffer.begin());
  uint64_t fileSize = size;
  CountingSink sink;
  Outcome outcome;
  {
    BasicSmfReader<Store> reader(buffer.data(), &fileSize, 2 * size, sink);
    try {
      outcome.pattern = rw::groove::LoadGroove(reader, 0);
    } catch (const std::out_of_range&) {
      outcome.rangeCheck = true;
    }
  }
  if (sink.shown.size() > 16) std::abort();
  if (fileSize > 2 * size) std::abort();
  outcome.alerts = std::move(sink.shown);
  outcome.bytes.assign(buffer.begin(), buffer.begin() + static_cast<long>(fileSize));
  return outcome;
}

// What a load read and concluded, whatever bytes it left: the reader
// rewrites some events in running status that the literal rules leave, and
// must read exactly what those rules read.
bool SameReading(const Outcome& a, const Outcome& b) {
  return a.rangeCheck == b.rangeCheck && a.alerts == b.alerts &&
         a.pattern.loaded == b.pattern.loaded && a.pattern.division == b.pattern.division &&
         a.pattern.drumNotesFound == b.pattern.drumNotesFound &&
         a.pattern.lastDrumMeasure == b.pattern.lastDrumMeasure &&
         a.pattern.lastDrumTick == b.pattern.lastDrumTick &&
         a.pattern.timeSignature.ticksPerMeasure == b.pattern.timeSignature.ticksPerMeasure;
}

bool Same(const Outcome& a, const Outcome& b) { return SameReading(a, b) && a.bytes == b.bytes; }

// The command's verdict for measures of the groove's own meter, as many as
// the groove is long; when it places the groove, the host's import must
// find a drum note-on in the covered ticks of the filtered file.
// Every groove the proof accepts, played or not, written straight: a file
// the strict walk accepts, with no more sounding drum note-ons than it had.
void CheckStraightGroovesWalk(const rw::groove::GrooveBuffer& buffer,
                              const rw::groove::GrooveJudgement& judgement) {
  const rw::groove::StraightGroove straight =
      rw::groove::Straighten(buffer.view(), rw::groove::MeterOf(judgement.pattern));
  if (!straight.written) return;
  const rw::groove::StrictWalk walk =
      rw::groove::WalkStrictly(straight.bytes.data(), straight.bytes.size());
  if (!walk.wellFormed || walk.drumNoteOns > judgement.walk.drumNoteOns) std::abort();
}

void CheckPlacedGroovesSound(const uint8_t* data, size_t size) {
  rw::groove::GrooveBuffer buffer = rw::groove::CopyIntoGrooveBuffer({data, size});
  rw::groove::GrooveJudgement judgement =
      rw::groove::ProveGroove(buffer, {.straightenPlayed = false}).judgement;
  if (judgement.verdict != rw::groove::Verdict::kPlaced) return;
  CheckStraightGroovesWalk(buffer, judgement);
  const rw::groove::TimeMark& meter = judgement.pattern.timeSignature;
  const int64_t length = int64_t{meter.ticksPerMeasure} * 1024 / judgement.pattern.division;
  if (meter.numerator <= 0 || length % meter.numerator != 0 || length / meter.numerator > 32767) {
    return;  // no score measure holds this meter
  }
  rw::groove::JudgePlacement(judgement,
                             {meter.numerator, static_cast<int32_t>(length / meter.numerator)},
                             judgement.grooveMeasures);
  if (judgement.verdict != rw::groove::Verdict::kPlaced) return;

  const std::span<const uint8_t> file = buffer.view();
  const cantel_engine::SmfResult imported = cantel_engine::read_smf({file.begin(), file.end()});
  if (!imported.ok) std::abort();
  const bool sounds =
      std::any_of(imported.content.onsets.begin(), imported.content.onsets.end(),
                  [&](const cantel_engine::SmfOnset& onset) {
                    return onset.channel == 9 && onset.tick < judgement.coveredTicks;
                  });
  if (!sounds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Outcome fast = LoadOnce<rw::groove::GapBuffer>(data, size);
  // The literal store is quadratic: compared on small inputs only, so that
  // the one-second time-out measures the reader and not the comparison.
  if (size <= 8 * 1024) {
    const Outcome literal = LoadOnce<rw::groove::testing::LiteralStore>(data, size);
    if (!Same(fast, literal)) std::abort();
    const Outcome rules = LoadOnce<rw::groove::testing::LiteralRulesStore>(data, size);
    if (!SameReading(fast, rules)) std::abort();
  }
  CheckPlacedGroovesSound(data, size);
  return 0;
}
