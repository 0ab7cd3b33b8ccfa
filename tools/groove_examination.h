// One inspection of a groove file: the plug-in's own load and verdict, what
// the original bytes tell about a refusal, and one line of advice.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drum_hits.h"
#include "file_survey.h"
#include "groove_file.h"
#include "groove_proof.h"
#include "meters.h"

namespace rw::tools {

struct GrooveInspection {
  ReadOutcome read = ReadOutcome::kRead;  // kRead, or why the plug-in could not read it
  bool beginsWithHeader = false;
  bool riffMidi = false;
  FileSurvey survey;  // of the original bytes
  groove::GrooveProof proof;
  std::vector<std::string> messages;  // each box the user would see, in order
  std::vector<int> instruments;       // of the keys the reader flags, those the file really holds
  uint64_t filteredSize = 0;          // bytes of the file the import would read
  bool drumTrackLacksMeter = false;   // a separate drum track without a time signature
  std::vector<groove::NamedMeter> fits;  // measure meters the groove fits
  std::string advice;                    // one line, when the plug-in refuses the file
  std::string note;                      // something worth knowing about a placed groove
  // A played groove written straight: where its strokes were played.
  std::vector<groove::DrumHit> playedHits;
  // The keys of the drums outside General MIDI's 35 to 81, as the file holds them.
  std::vector<int> keysOutsideDrumMap;

  const groove::GrooveJudgement& judgement() const { return proof.judgement; }
  bool placed() const { return judgement().verdict == groove::Verdict::kPlaced; }
};

// The plug-in's run over the file, judged against the best selection a user
// can make: measures of a meter the groove fits, as many as the groove is
// long. A played groove is written straight unless `asPlayed`, as the
// plug-in does unless its user clears "Straighten played timing".
// Afterwards the buffer holds the file the import would read.
GrooveInspection InspectGroove(GrooveBuffer& file, bool asPlayed = false);
// A file the plug-in refuses before it reads it (empty, too large, no memory).
GrooveInspection InspectUnreadFile(ReadOutcome outcome);

// The plug-in's English text of string `id`.
std::string PluginString(uint32_t id);
// The box of a refusal, as the plug-in shows it in English: the verdict's
// string and the line that says what is damaged; empty when the reader's
// box has said it all.
std::string RefusalText(const groove::GrooveJudgement& judgement);

}  // namespace rw::tools
