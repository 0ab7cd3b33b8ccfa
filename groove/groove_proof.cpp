#include "groove_proof.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "load_groove.h"
#include "smf_reader.h"

namespace rw::groove {
namespace {

// Keeps every diagnostic as raised, and hands it on to the log that gathers
// them into the one box.
class KeepingSink : public DiagnosticSink {
 public:
  explicit KeepingSink(GrooveProof& proof) : proof_(proof) {}
  void Show(const char* text) override {
    proof_.alerts.emplace_back(text);
    proof_.log.Show(text);
  }

 private:
  GrooveProof& proof_;
};

ReaderFacts FactsOf(const SmfReader& reader) {
  ReaderFacts facts;
  facts.format = reader.format();
  facts.tracks = reader.trackCount();
  facts.tempoBpm = reader.tempoSnapshot().beatsPerMinute;
  for (int key = 0; key < 128; ++key) {
    if (reader.keyUsed(key)) facts.keys.push_back(key);
  }
  facts.lowestKey = reader.lowestDrumKey();
  facts.highestKey = reader.highestDrumKey();
  return facts;
}

void Load(GrooveBuffer& groove, GrooveProof& proof) {
  KeepingSink sink(proof);
  SmfReader reader(groove.bytes.get(), &groove.size, groove.capacity, sink);
  GrooveJudgement& judgement = proof.judgement;
  try {
    judgement.pattern = LoadGroove(reader, 0);
  } catch (const std::out_of_range&) {
    judgement.failure = LoadFailure::kRangeCheck;
  } catch (const std::bad_alloc&) {
    judgement.failure = LoadFailure::kOutOfMemory;
  }
  if (judgement.failure != LoadFailure::kNone) judgement.pattern = PatternOf(reader);
  proof.facts = FactsOf(reader);
}

// The strict walk of what the reader left, mending what is certain: the
// buffer then holds the mended file.
bool WalkAndMend(GrooveBuffer& groove, GrooveProof& proof) {
  StrictWalk& walk = proof.judgement.walk;
  walk = WalkStrictly(groove.bytes.get(), groove.size);
  if (walk.mendable) {
    const std::vector<uint8_t> mended = MendedFile(groove.bytes.get(), walk);
    proof.mends = walk.mends;
    GrooveBuffer copy = CopyIntoGrooveBuffer(mended);
    if (!copy.bytes) {
      proof.judgement.failure = LoadFailure::kOutOfMemory;
      return false;
    }
    groove = std::move(copy);
    walk = WalkStrictly(groove.bytes.get(), groove.size);
  }
  return walk.wellFormed;
}

// The drums the load found, proven in the file the import reads.
void ProveDrums(GrooveProof& proof) {
  GrooveJudgement& judgement = proof.judgement;
  const GroovePattern& pattern = judgement.pattern;
  if (!pattern.drumNotesFound || pattern.lastDrumMeasure == 0 || judgement.walk.drumNoteOns == 0) {
    judgement.verdict = Verdict::kNoDrumNotes;
    return;
  }
  judgement.grooveMeasures = std::max<int32_t>(1, GrooveMeasures(pattern));
  judgement.verdict = Verdict::kPlaced;
}

// One load and its proof, up to the verdict before any region.
void ProveLoad(GrooveBuffer& groove, GrooveProof& proof) {
  GrooveJudgement& judgement = proof.judgement;
  Load(groove, proof);
  if (judgement.failure != LoadFailure::kNone) return;  // unreadable
  if (!judgement.pattern.loaded) {
    judgement.verdict = proof.log.empty() ? Verdict::kUnreadable : Verdict::kReaderStopped;
    return;
  }
  if (!WalkAndMend(groove, proof)) return;  // unreadable
  ProveDrums(proof);
}

}  // namespace

namespace {

// The played groove written straight and loaded again by the same reader:
// everything after the load uses that one. The reader said what it had to
// of the file as the user gave it; of this file, written here, it says
// nothing a user could act on, and its box stays the first load's.
void AdoptStraight(GrooveBuffer& groove, GrooveProof& proof, StraightGroove straight) {
  if (!straight.written) return;  // placed as played
  GrooveBuffer copy = CopyIntoGrooveBuffer(straight.bytes);
  GrooveProof again;
  if (copy.bytes) ProveLoad(copy, again);
  if (!copy.bytes || again.judgement.verdict != Verdict::kPlaced) {
    proof.judgement.verdict = Verdict::kUnreadable;
    if (!copy.bytes) proof.judgement.failure = LoadFailure::kOutOfMemory;
    return;
  }
  groove = std::move(copy);
  proof.judgement = std::move(again.judgement);
  proof.facts = std::move(again.facts);
  proof.straightened = std::move(straight.report);
}

}  // namespace

void StraightenProven(GrooveBuffer& groove, GrooveProof& proof) {
  if (proof.judgement.verdict != Verdict::kPlaced || !proof.timing.played) return;
  AdoptStraight(groove, proof, Straighten(groove.view(), MeterOf(proof.judgement.pattern)));
}

GrooveProof ProveGroove(GrooveBuffer& groove, const ProofOptions& options) {
  GrooveProof proof;
  ProveLoad(groove, proof);
  if (proof.judgement.verdict != Verdict::kPlaced) return proof;
  if (!options.straightenPlayed) {
    if (const std::optional<PlayedTiming> timing = MeasurePlayedTiming(groove.view())) {
      proof.timing = *timing;
    }
    return proof;
  }
  // One walk tells the timing and chooses the grids; a second, only for a
  // played groove, writes it straight.
  TimingStep step = StraightenIfPlayed(groove.view(), MeterOf(proof.judgement.pattern));
  if (step.timing) proof.timing = *step.timing;
  if (step.straight) AdoptStraight(groove, proof, std::move(*step.straight));
  return proof;
}

}  // namespace rw::groove
