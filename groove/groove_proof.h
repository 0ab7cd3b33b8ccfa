// Proving a groove: one load through the reader, which filters the buffer to
// the drums in place, then, before anything in a score would change, the
// checks that the file the import will read can be placed: the strict walk
// (with the mends that are certain), drum events with a last drum measure,
// a sounding drum note-on, and the groove's length; and whether it was
// played, which writes it straight and proves that file in its place. The command, the
// dialog's style line and rwgroove prove a groove only through this.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "diagnostic_log.h"
#include "groove_buffer.h"
#include "groove_verdict.h"
#include "played_timing.h"
#include "smf_walk.h"
#include "straighten.h"

namespace rw::groove {

// What the load left in the reader beyond the pattern.
struct ReaderFacts {
  int32_t format = 0;
  int32_t tracks = 0;  // after filtering
  double tempoBpm = 0.0;
  std::vector<int> keys;  // the drum keys the reader flagged, ascending
  int32_t lowestKey = 127;
  int32_t highestKey = 0;
};

struct GrooveProof {
  GrooveJudgement judgement;  // kPlaced once proven, before any region is considered
  ReaderFacts facts;
  DiagnosticLog log;                // the load's diagnostics, for its one box
  std::vector<std::string> alerts;  // each diagnostic as the reader raised it
  std::vector<Mend> mends;          // made to the file the import reads
  PlayedTiming timing;              // of a groove whose drums are proven
  // Written straight: a played groove, when the user keeps it so. The
  // judgement and the facts are then those of the straight file's own load.
  std::optional<StraighteningReport> straightened;
};

struct ProofOptions {
  bool straightenPlayed = true;  // "Straighten played timing", as the dialog starts it
};

// Proves the groove in `groove`, read whole (ReadGrooveFile). Afterwards it
// holds the file the import would read: filtered, mended where that is
// certain, and written straight when it was played and `options` say so. A
// load that stops without a diagnostic counts as unreadable, so that the
// user always learns why.
GrooveProof ProveGroove(GrooveBuffer& groove, const ProofOptions& options = {});

// For a proof of a played groove made without straightening: the groove
// written straight and proven in its place, as ProveGroove does with it.
void StraightenProven(GrooveBuffer& groove, GrooveProof& proof);

}  // namespace rw::groove
