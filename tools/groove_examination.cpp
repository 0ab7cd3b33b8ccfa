#include "groove_examination.h"

#include <algorithm>

#include "string_table.h"

namespace rw::tools {
namespace {

constexpr uint32_t kStringCannotOpen = 19;

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
  return notes ? "no drum part found: none of its " + Plural(notes, "note is", "notes are") +
                     " on channel 10, and no other channel's notes look like drums (few keys "
                     "struck together, or a track named for drums)"
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
      return "the file is larger than the " + std::to_string(groove::kLargestGrooveFile) +
             " bytes the plug-in reads";
    case ReadOutcome::kOutOfMemory:
      return "the file needs more memory than there is";
    default:
      break;
  }
  if (!r.beginsWithHeader) {
    return r.riffMidi ? "this is a RIFF-wrapped MIDI file (RMID), not a Standard MIDI File: "
                        "'rwgroove fix' writes the Standard MIDI File inside it"
                      : "this is not a Standard MIDI File: it does not begin with \"MThd\"";
  }
  const groove::GrooveJudgement& j = r.judgement();
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
  const groove::GrooveJudgement& j = r.judgement();
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

std::string RefusalText(const groove::GrooveJudgement& judgement) {
  const uint32_t id = groove::TextOf(judgement.verdict).stringId;
  if (id == 0) return "";
  std::string text = PluginString(id);
  if (const std::string damage = groove::DamageOf(judgement); !damage.empty()) {
    std::string line = PluginString(groove::kStringDamage);
    if (const std::size_t at = line.find("%1"); at != std::string::npos)
      line.replace(at, 2, damage);
    text += "\n" + line;
  }
  return text;
}

GrooveInspection InspectUnreadFile(ReadOutcome outcome) {
  GrooveInspection r;
  r.read = outcome;
  r.messages = {PluginString(kStringCannotOpen)};
  r.advice = Advice(r, groove::DiagnosticLog{});
  return r;
}

GrooveInspection InspectGroove(GrooveBuffer& file, bool asPlayed) {
  GrooveInspection r;
  // Everything that looks at the original bytes comes before the load
  // filters them in place: the buffer is the only copy.
  r.beginsWithHeader = BeginsWithHeaderId(file.view());
  r.riffMidi = RiffMidiData(file.view()).has_value();
  r.survey = SurveyFile(file.view());

  r.proof = groove::ProveGroove(file, {.straightenPlayed = false});
  if (r.proof.timing.played && !asPlayed) {
    r.playedHits = groove::DrumHitsOf(file.view()).hits;
    groove::StraightenProven(file, r.proof);
  }
  for (std::size_t key = 0; key < r.survey.channel10Keys.size(); ++key) {
    const bool drumKey = key >= kFirstDrumKey && key <= kLastDrumKey;
    if (r.survey.channel10Keys.test(key) && !drumKey) r.keysOutsideDrumMap.push_back(int(key));
  }
  groove::GrooveJudgement& judgement = r.proof.judgement;
  if (judgement.verdict == groove::Verdict::kPlaced) {
    r.fits = groove::FittingMeters(judgement.pattern);
    const groove::RegionMeter best = r.fits.empty() ? groove::RegionMeter{} : r.fits.front().meter;
    groove::JudgePlacement(judgement, best, judgement.grooveMeasures);
  }
  for (const int key : r.proof.facts.keys) {
    // A file cut short reads as zeros past its end: keys it never held. A
    // straight groove holds the keys an electronic kit's were written on.
    bool held = r.survey.channel10Keys.test(std::size_t(key));
    for (const groove::DrumKeyMapping& mapping : r.proof.straightened
                                                     ? r.proof.straightened->mappedKeys
                                                     : std::vector<groove::DrumKeyMapping>{}) {
      held = held || mapping.to == key;
    }
    if (held) r.instruments.push_back(key);
  }
  r.filteredSize = file.size;

  const groove::TimeMark& meter = judgement.pattern.timeSignature;
  if (judgement.walk.wellFormed && r.proof.facts.tracks >= 2 &&
      (meter.numerator != 4 || meter.denominator != 4)) {
    const FileSurvey filtered = SurveyFile(file.view());
    r.drumTrackLacksMeter = filtered.tracks.size() >= 2 && !filtered.tracks[1].timeSignatureAtZero;
  }

  if (!r.proof.log.empty()) r.messages.push_back(r.proof.log.Text());
  if (const std::string refusal = RefusalText(judgement); !refusal.empty()) {
    r.messages.push_back(refusal);
  }
  if (r.placed()) {
    r.note = Note(r);
  } else {
    r.advice = Advice(r, r.proof.log);
  }
  return r;
}

}  // namespace rw::tools
