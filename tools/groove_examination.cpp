#include "groove_examination.h"

#include <algorithm>

#include "smf_reader.h"
#include "string_table.h"

namespace rw::tools {
namespace {

constexpr uint32_t kStringCannotOpen = 19;

// Keeps every diagnostic as raised, and hands it on to the log that gathers
// them into the plug-in's one box.
class TeeSink : public groove::DiagnosticSink {
 public:
  TeeSink(std::vector<std::string>& alerts, groove::DiagnosticLog& log)
      : alerts_(alerts), log_(log) {}
  void Show(const char* text) override {
    alerts_.emplace_back(text);
    log_.Show(text);
  }

 private:
  std::vector<std::string>& alerts_;
  groove::DiagnosticLog& log_;
};

bool LogHolds(const groove::DiagnosticLog& log, const char* text) {
  return std::any_of(log.entries().begin(), log.entries().end(),
                     [&](const groove::DiagnosticLog::Entry& e) { return e.text == text; });
}

std::string Plural(uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

uint64_t MeasureOfTick(uint64_t tick, const groove::GroovePattern& pattern) {
  const int32_t perMeasure = pattern.timeSignature.ticksPerMeasure;
  return perMeasure > 0 ? tick / uint64_t(perMeasure) + 1 : 1;
}

// The plug-in keeps the first track with any channel-10 event; when that one
// holds no drum note-ons while a later one does, its notes are cut.
std::string DrumTrackAdvice(const FileSurvey& survey) {
  constexpr uint16_t kChannel10 = 1u << (kDrumChannel - 1);
  std::size_t kept = survey.tracks.size();
  for (std::size_t t = 0; t < survey.tracks.size(); ++t) {
    if (survey.tracks[t].channelEvents & kChannel10) {
      kept = t;
      break;
    }
  }
  for (std::size_t t = kept + 1; t < survey.tracks.size(); ++t) {
    if (survey.tracks[t].drumNoteOns) {
      return "the drum notes are in track " + std::to_string(t + 1) +
             ", but the plug-in keeps only the first track with channel-10 events (track " +
             std::to_string(kept + 1) +
             "), which sounds none: move the notes there, or the other events off channel 10";
    }
  }
  return "channel 10 carries no note with a velocity above 0";
}

std::string NoDrumsAdvice(const FileSurvey& survey) {
  if (survey.noteOns[kDrumChannel - 1] > 0) return DrumTrackAdvice(survey);
  if (const std::optional<int> channel = LikelyDrumChannel(survey)) {
    const auto index = static_cast<std::size_t>(*channel - 1);
    return "the drums are on channel " + std::to_string(*channel) + " (" +
           Plural(survey.drumKeyNotes[index], "note", "notes") +
           " on drum keys 35 to 81), not on channel 10: 'rwgroove fix' moves them there";
  }
  uint64_t notes = 0;
  for (uint64_t n : survey.noteOns) notes += n;
  return notes ? "none of its " + Plural(notes, "note is", "notes are") +
                     " on a drum key (35 to 81) or on channel 10"
               : "the file holds no notes at all";
}

std::string DamageAdvice(const groove::StrictWalk& walk) {
  if (walk.problem.find("ends inside") != std::string::npos) {
    return walk.problem + ": the file was cut short; save it again from your sequencer";
  }
  if (walk.problem.find("SMPTE") != std::string::npos) {
    return walk.problem + ": save it with a musical division, such as 480 ticks per quarter note";
  }
  return "the file is damaged: " + walk.problem + "; save it again from your sequencer";
}

std::string Advice(const GrooveInspection& r, const groove::DiagnosticLog& log) {
  switch (r.read) {
    case ReadOutcome::kEmpty:
      return "the file is empty";
    case ReadOutcome::kTooLarge:
      return "the file is larger than the " + std::to_string(kLargestGrooveFile) +
             " bytes the plug-in reads";
    default:
      break;
  }
  if (!r.beginsWithHeader) {
    return r.riffMidi ? "this is a RIFF-wrapped MIDI file (RMID), not a Standard MIDI File: "
                        "'rwgroove fix' writes the Standard MIDI File inside it"
                      : "this is not a Standard MIDI File: it does not begin with \"MThd\"";
  }
  const groove::GrooveJudgement& j = r.judgement;
  if (const auto& change = r.survey.meterChange;
      change && LogHolds(log, groove::text::kTimeSignatureChanges)) {
    return "the meter changes to " + std::to_string(change->numerator) + "/" +
           std::to_string(change->denominator) + " in track " + std::to_string(change->track) +
           " at measure " + std::to_string(change->measure) + ", tick " +
           std::to_string(change->tickInMeasure) + ": keep a single time signature, at time 0";
  }
  if (!r.survey.walk.wellFormed) return DamageAdvice(r.survey.walk);
  switch (j.verdict) {
    case groove::Verdict::kNoDrumNotes:
      return NoDrumsAdvice(r.survey);
    case groove::Verdict::kMeterMismatch:
      return "no measure meter fits its " + std::to_string(j.pattern.timeSignature.numerator) +
             "/" + std::to_string(j.pattern.timeSignature.denominator) + " measure of " +
             std::to_string(j.pattern.timeSignature.ticksPerMeasure) + " ticks at " +
             std::to_string(j.pattern.division) + " ticks per quarter note";
    case groove::Verdict::kDrumsAfterRegion:
      return "its first drum note is in measure " +
             std::to_string(MeasureOfTick(*j.walk.firstDrumNoteOnTick, j.pattern)) +
             ", after the groove's " + Plural(uint64_t(j.grooveMeasures), "measure", "measures") +
             " (counted from its last drum event): start the drums in measure 1";
    case groove::Verdict::kUnreadable:
      if (j.failure == groove::LoadFailure::kOutOfMemory)
        return "the file needs more memory than there is";
      if (j.failure == groove::LoadFailure::kRangeCheck) {
        return "the file breaks the reader's limits (more than 16 messages, a meta event over "
               "1024 bytes, an impossible length or meter): save it again from your sequencer";
      }
      if (!j.walk.wellFormed && !j.walk.problem.empty()) {
        return "once filtered to its drums, " + j.walk.problem;
      }
      break;
    default:
      break;
  }
  if (LogHolds(log, groove::text::kFormat0OneTrack)) return "save it again as a format 1 file";
  return "save it again from your sequencer as a Standard MIDI File (format 1)";
}

std::string Note(const GrooveInspection& r) {
  const groove::GrooveJudgement& j = r.judgement;
  if (!r.survey.walk.wellFormed) {
    return "the original file is not strictly well-formed (" + r.survey.walk.problem +
           "); the plug-in's filter mends it";
  }
  const uint64_t first = MeasureOfTick(*j.walk.firstDrumNoteOnTick, j.pattern);
  if (first > 1) {
    return "its drums begin in measure " + std::to_string(first) + ": a selection of fewer than " +
           Plural(first, "measure", "measures") + " receives nothing and is refused";
  }
  return "";
}

}  // namespace

std::string PluginString(uint32_t id) {
  const resources::StringEntry* entry = resources::FindString(resources::Language::English, id);
  return entry ? entry->utf8 : "";
}

GrooveInspection InspectUnreadFile(ReadOutcome outcome) {
  GrooveInspection r;
  r.read = outcome;
  r.messages = {PluginString(kStringCannotOpen)};
  r.advice = Advice(r, groove::DiagnosticLog{});
  return r;
}

GrooveInspection InspectGroove(GrooveFile& file) {
  GrooveInspection r;
  // Everything that looks at the original bytes comes before the load
  // filters them in place: the buffer is the only copy.
  r.beginsWithHeader = BeginsWithHeaderId(file.bytes());
  r.riffMidi = RiffMidiData(file.bytes()).has_value();
  r.survey = SurveyFile(file.bytes());

  groove::DiagnosticLog log;
  TeeSink sink(r.alerts, log);
  groove::SmfReader reader(file.buffer.get(), &file.size, file.capacity, sink);
  r.judgement = groove::ProveGroove(reader, log, file.buffer.get(), &file.size);
  if (r.judgement.verdict == groove::Verdict::kPlaced) {
    r.fits = FittingMeters(r.judgement.pattern);
    const groove::RegionMeter best = r.fits.empty() ? groove::RegionMeter{} : r.fits.front().meter;
    groove::JudgePlacement(r.judgement, best, r.judgement.grooveMeasures);
  }

  r.format = reader.format();
  r.tracks = reader.trackCount();
  r.tempoBpm = reader.tempoSnapshot().beatsPerMinute;
  for (int key = 0; key < 128; ++key) {
    if (reader.keyUsed(key)) r.keysUsed.push_back(key);
    // A file cut short reads as zeros past its end: keys it never held.
    if (reader.keyUsed(key) && r.survey.channel10Keys.test(std::size_t(key))) {
      r.instruments.push_back(key);
    }
  }
  r.lowestKey = reader.lowestDrumKey();
  r.highestKey = reader.highestDrumKey();
  r.filteredSize = file.size;

  const groove::TimeMark& meter = r.judgement.pattern.timeSignature;
  if (r.judgement.walk.wellFormed && r.tracks >= 2 &&
      (meter.numerator != 4 || meter.denominator != 4)) {
    const FileSurvey filtered = SurveyFile(file.bytes());
    r.drumTrackLacksMeter = filtered.tracks.size() >= 2 && !filtered.tracks[1].timeSignatureAtZero;
  }

  if (!log.empty()) r.messages.push_back(log.Text());
  if (const uint32_t id = groove::TextOf(r.judgement.verdict).stringId) {
    r.messages.push_back(PluginString(id));
  }
  if (r.placed()) {
    r.note = Note(r);
  } else {
    r.advice = Advice(r, log);
  }
  return r;
}

}  // namespace rw::tools
