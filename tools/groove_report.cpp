#include "groove_report.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "gm_drum_names.h"

namespace rw::tools {
namespace {

using Json = nlohmann::ordered_json;

const char* FailureName(groove::LoadFailure failure) {
  switch (failure) {
    case groove::LoadFailure::kRangeCheck:
      return "range-check";
    case groove::LoadFailure::kOutOfMemory:
      return "out-of-memory";
    case groove::LoadFailure::kNone:
      break;
  }
  return nullptr;
}

Json OrNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

Json WalkJson(const groove::StrictWalk& walk) {
  return {{"well_formed", walk.wellFormed},
          {"problem", OrNull(walk.problem)},
          {"track", walk.track},
          {"offset", walk.offset},
          {"drum_note_ons", walk.drumNoteOns},
          {"first_drum_note_on_tick",
           walk.firstDrumNoteOnTick ? Json(*walk.firstDrumNoteOnTick) : Json(nullptr)}};
}

std::string Quoted(const std::string& text) {
  std::string out = "\"";
  for (char c : text) out += c == '\n' ? std::string("\n     ") : std::string(1, c);
  return out + "\"";
}

std::string JoinedNames(const std::vector<NamedMeter>& meters) {
  std::string out;
  for (const NamedMeter& m : meters) out += (out.empty() ? "" : ", ") + m.name;
  return out;
}

void Verdict(std::ostream& out, const GrooveInspection& r) {
  const groove::GroovePattern& p = r.judgement.pattern;
  if (r.placed()) {
    out << "verdict: PLACED: the plug-in places this groove\n"
        << "  meter " << p.timeSignature.numerator << "/" << p.timeSignature.denominator << ", "
        << r.judgement.grooveMeasures << " measure(s) per repetition\n"
        << "  fits measures in " << JoinedNames(r.fits) << "\n  instruments:";
    for (std::size_t i = 0; i < r.instruments.size(); ++i) {
      out << (i ? ", " : " ") << r.instruments[i] << " " << groove::DrumKeyName(r.instruments[i]);
    }
    out << "\n";
    if (!r.messages.empty()) {
      out << "  before it places it, the plug-in shows:\n";
      for (const std::string& box : r.messages) out << "    " << Quoted(box) << "\n";
    }
    if (!r.note.empty()) out << "  note: " << r.note << "\n";
    return;
  }
  out << "verdict: REFUSED: the plug-in places nothing and shows:\n";
  for (const std::string& box : r.messages) out << "    " << Quoted(box) << "\n";
  if (!r.advice.empty()) out << "  advice: " << r.advice << "\n";
}

}  // namespace

std::string JsonReport(const GrooveInspection& r) {
  const groove::GroovePattern& p = r.judgement.pattern;
  const groove::TimeMark& meter = p.timeSignature;
  Json json;
  json["loaded"] = p.loaded;
  const char* failure = FailureName(r.judgement.failure);
  json["failure"] = failure ? Json(failure) : Json(nullptr);
  json["alerts"] = r.alerts;
  json["format"] = r.format;
  json["tracks"] = r.tracks;
  json["division"] = p.division;
  json["time_signature"] = {{"numerator", meter.numerator},
                            {"denominator", meter.denominator},
                            {"ticks_per_beat", meter.ticksPerBeat},
                            {"ticks_per_measure", meter.ticksPerMeasure}};
  json["tempo_bpm"] = r.tempoBpm;
  json["drum_notes_found"] = p.drumNotesFound;
  json["last_drum_measure"] = p.lastDrumMeasure;
  json["last_drum_tick"] = p.lastDrumTick;
  json["groove_measures"] = groove::GrooveMeasures(p);
  json["keys_used"] = r.keysUsed;
  json["lowest_key"] = r.lowestKey;
  json["highest_key"] = r.highestKey;
  json["size"] = r.filteredSize;
  // The plug-in's verdict, judged for the best selection a user can make.
  json["verdict"] = groove::TextOf(r.judgement.verdict).name;
  json["messages"] = r.messages;
  json["advice"] = OrNull(r.advice);
  json["note"] = OrNull(r.note);
  Json fits = Json::array();
  for (const NamedMeter& m : r.fits) fits.push_back(m.name);
  json["fits_meters"] = fits;
  json["strict_walk"] = WalkJson(r.judgement.walk);
  json["original_walk"] = WalkJson(r.survey.walk);
  json["note_ons_by_channel"] = r.survey.noteOns;
  if (const auto& c = r.survey.meterChange) {
    json["meter_change"] = {{"track", c->track},         {"tick", c->tick},
                            {"measure", c->measure},     {"tick_in_measure", c->tickInMeasure},
                            {"numerator", c->numerator}, {"denominator", c->denominator}};
  } else {
    json["meter_change"] = nullptr;
  }
  return json.dump(2) + "\n";
}

std::string TextReport(const std::string& name, const GrooveInspection& r) {
  std::ostringstream out;
  const groove::GroovePattern& p = r.judgement.pattern;
  const groove::TimeMark& meter = p.timeSignature;
  out << name << "\n";
  // Fields of a file that is no MIDI file at all mean nothing.
  if (r.beginsWithHeader) {
    out << "  format " << r.format << ", " << r.tracks << " track(s) after filtering, division "
        << p.division << " ticks per quarter note\n";
    out << "  meter " << meter.numerator << "/" << meter.denominator << " (" << meter.ticksPerBeat
        << " ticks per beat, " << meter.ticksPerMeasure << " per measure)\n";
    out << "  tempo " << r.tempoBpm << " BPM\n";
    if (!p.loaded) {
      out << "  the reader stopped before the end of the file\n";
    } else if (p.drumNotesFound) {
      out << "  groove length " << groove::GrooveMeasures(p)
          << " measure(s) (last drum event in measure " << p.lastDrumMeasure << " at tick "
          << p.lastDrumTick << ")\n";
    } else {
      out << "  no drum events (channel 10)\n";
    }
    if (!r.instruments.empty()) {
      out << "  drum keys:\n";
      for (int key : r.instruments) out << "    " << key << "  " << groove::DrumKeyName(key) << "\n";
    }
    if (r.drumTrackLacksMeter) {
      out << "  warning: the drum track has no time signature of its own, but the first track's "
             "meter is "
          << meter.numerator << "/" << meter.denominator
          << "; repeat the time signature at time 0 of the drum track ('rwgroove fix' does).\n";
    }
  }
  Verdict(out, r);
  return out.str();
}

}  // namespace rw::tools
