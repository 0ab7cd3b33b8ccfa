// One inspection of a groove file: the plug-in's own load and verdict, what
// the original bytes tell about a refusal, and one line of advice.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "file_survey.h"
#include "groove_file.h"
#include "groove_verdict.h"
#include "meters.h"

namespace rw::tools {

struct GrooveInspection {
  ReadOutcome read = ReadOutcome::kRead;  // kRead, kEmpty or kTooLarge
  bool beginsWithHeader = false;
  bool riffMidi = false;
  FileSurvey survey;  // of the original bytes
  groove::GrooveJudgement judgement;
  std::vector<std::string> alerts;    // each diagnostic as the reader raised it
  std::vector<std::string> messages;  // each box the user would see, in order
  int32_t format = 0;
  int32_t tracks = 0;
  double tempoBpm = 0.0;
  std::vector<int> keysUsed;     // as the reader flags them
  std::vector<int> instruments;  // of them, the keys the file really holds
  int32_t lowestKey = 127;
  int32_t highestKey = 0;
  uint64_t filteredSize = 0;         // bytes the reader left in the buffer
  bool drumTrackLacksMeter = false;  // a separate drum track without a time signature
  std::vector<NamedMeter> fits;      // measure meters the groove fits
  std::string advice;                // one line, when the plug-in refuses the file
  std::string note;                  // something worth knowing about a placed groove

  bool placed() const { return judgement.verdict == groove::Verdict::kPlaced; }
};

// The plug-in's run over the file, judged against the best selection a user
// can make: measures of a meter the groove fits, as many as the groove is
// long. Afterwards the buffer holds the filtered file and `file.size` its
// size.
GrooveInspection InspectGroove(GrooveFile& file);
// A file the plug-in refuses before it reads it (empty, or too large).
GrooveInspection InspectUnreadFile(ReadOutcome outcome);

// The plug-in's English text of string `id`.
std::string PluginString(uint32_t id);

}  // namespace rw::tools
