#include "groove_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

#include "drum_grid_text.h"
#include "gm_drum_names.h"
#include "straighten.h"

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

std::string JoinedNames(const std::vector<groove::NamedMeter>& meters) {
  std::string out;
  for (const groove::NamedMeter& m : meters) out += (out.empty() ? "" : ", ") + m.name;
  return out;
}

constexpr int32_t kGridMeasures = 2;
constexpr std::size_t kGridWidth = 76;

std::string Percent(uint64_t part, uint64_t whole) {
  return std::to_string(whole ? part * 100 / whole : 0) + " %";
}

const char* GridName(groove::BeatGrid grid) {
  return grid == groove::BeatGrid::kEighthTriplets ? "eighth triplets" : "sixteenths";
}

// What becomes of a key outside the drum map: the key it is written on, or
// itself.
std::optional<int> Becomes(const GrooveInspection& r, int key) {
  if (!r.proof.straightened) return std::nullopt;
  for (const groove::DrumKeyMapping& mapping : r.proof.straightened->mappedKeys) {
    if (mapping.from == key) return mapping.to;
  }
  return std::nullopt;
}

void Timing(std::ostream& out, const GrooveInspection& r) {
  const groove::PlayedTiming& timing = r.proof.timing;
  if (timing.strokes == 0) return;
  const std::string share = Percent(timing.onGrid, timing.strokes);
  if (!timing.played) {
    out << "  timing: programmed (" << share << " of the strokes on the grid)\n";
    return;
  }
  out << "  timing: played (" << share
      << " of the strokes on the grid of thirty-seconds and sixteenth triplets)\n";
  if (const auto& straight = r.proof.straightened) {
    out << "  written straight, by beat:";
    for (std::size_t beat = 0; beat < straight->beatGrids.size(); ++beat) {
      out << (beat ? "," : "") << " " << beat + 1 << " " << GridName(straight->beatGrids[beat]);
    }
    out << " (" << straight->strokesMoved << " of " << straight->onsetsBefore << " strokes moved, "
        << straight->strokesMerged << " merged)\n";
  } else {
    out << "  placed as played: 'Straighten played timing' cleared\n";
  }
}

void KeysOutside(std::ostream& out, const GrooveInspection& r) {
  if (r.keysOutsideDrumMap.empty()) return;
  out << "  keys outside the drum map (35 to 81):";
  for (std::size_t i = 0; i < r.keysOutsideDrumMap.size(); ++i) {
    const int key = r.keysOutsideDrumMap[i];
    out << (i ? ";" : "") << " " << key;
    if (const std::optional<int> to = Becomes(r, key)) {
      out << " becomes " << *to << " " << groove::DrumKeyName(*to);
    } else {
      out << " is kept: the percussion map has no notehead for it";
    }
  }
  out << "\n";
}

void Grid(std::ostream& out, const GrooveInspection& r, std::span<const uint8_t> filtered) {
  const groove::DrumGridText grid =
      groove::DrumGridTextOf(filtered, r.judgement().pattern,
                             std::min(kGridMeasures, r.judgement().grooveMeasures), kGridWidth);
  if (grid.lines.empty()) return;
  out << "  first "
      << (grid.measures == 1 ? "measure" : std::to_string(grid.measures) + " measures")
      << " as placed, in " << groove::GridStepName(grid.step) << (grid.exact ? "" : " (nearest)")
      << ":\n";
  for (const std::string& line : grid.lines) out << "    " << line << "\n";
}

void Verdict(std::ostream& out, const GrooveInspection& r) {
  const groove::GroovePattern& p = r.judgement().pattern;
  if (r.placed()) {
    out << "verdict: PLACED: the plug-in places this groove\n"
        << "  meter " << p.timeSignature.numerator << "/" << p.timeSignature.denominator << ", "
        << r.judgement().grooveMeasures << " measure(s) per repetition\n"
        << "  fits measures in " << JoinedNames(r.fits) << "\n  instruments:";
    for (std::size_t i = 0; i < r.instruments.size(); ++i) {
      out << (i ? ", " : " ") << r.instruments[i] << " " << groove::DrumKeyName(r.instruments[i]);
    }
    out << "\n";
    if (!r.proof.mends.empty()) {
      out << "  the plug-in mends the file it writes:\n";
      for (const groove::Mend& mend : r.proof.mends) {
        out << "    " << groove::DescribeMend(mend) << "\n";
      }
    }
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

Json TimingJson(const GrooveInspection& r) {
  const groove::PlayedTiming& timing = r.proof.timing;
  Json json = {{"strokes", timing.strokes}, {"on_grid", timing.onGrid}, {"played", timing.played}};
  if (const auto& straight = r.proof.straightened) {
    Json grids = Json::array();
    for (const groove::BeatGrid grid : straight->beatGrids) grids.push_back(GridName(grid));
    json["straightened"] = {{"beat_grids", grids},
                            {"strokes_before", straight->onsetsBefore},
                            {"strokes_after", straight->onsetsAfter},
                            {"moved", straight->strokesMoved},
                            {"merged", straight->strokesMerged}};
  } else {
    json["straightened"] = nullptr;
  }
  Json outside = Json::array();
  for (const int key : r.keysOutsideDrumMap) {
    const std::optional<int> to = Becomes(r, key);
    outside.push_back({{"key", key}, {"becomes", to ? Json(*to) : Json(nullptr)}});
  }
  json["keys_outside_drum_map"] = outside;
  return json;
}

std::string JsonReport(const GrooveInspection& r, std::span<const uint8_t> filtered) {
  const groove::GroovePattern& p = r.judgement().pattern;
  const groove::TimeMark& meter = p.timeSignature;
  Json json;
  json["loaded"] = p.loaded;
  const char* failure = FailureName(r.judgement().failure);
  json["failure"] = failure ? Json(failure) : Json(nullptr);
  json["alerts"] = r.proof.alerts;
  json["format"] = r.proof.facts.format;
  json["tracks"] = r.proof.facts.tracks;
  json["division"] = p.division;
  json["time_signature"] = {{"numerator", meter.numerator},
                            {"denominator", meter.denominator},
                            {"ticks_per_beat", meter.ticksPerBeat},
                            {"ticks_per_measure", meter.ticksPerMeasure}};
  json["tempo_bpm"] = r.proof.facts.tempoBpm;
  json["drum_notes_found"] = p.drumNotesFound;
  json["last_drum_measure"] = p.lastDrumMeasure;
  json["last_drum_tick"] = p.lastDrumTick;
  json["groove_measures"] = groove::GrooveMeasures(p);
  json["keys_used"] = r.proof.facts.keys;
  json["lowest_key"] = r.proof.facts.lowestKey;
  json["highest_key"] = r.proof.facts.highestKey;
  json["size"] = r.filteredSize;
  // The plug-in's verdict, judged for the best selection a user can make.
  json["verdict"] = groove::TextOf(r.judgement().verdict).name;
  json["messages"] = r.messages;
  json["advice"] = OrNull(r.advice);
  json["note"] = OrNull(r.note);
  Json fits = Json::array();
  for (const groove::NamedMeter& m : r.fits) fits.push_back(m.name);
  json["fits_meters"] = fits;
  Json mends = Json::array();
  for (const groove::Mend& mend : r.proof.mends) mends.push_back(groove::DescribeMend(mend));
  json["mends"] = mends;
  json["timing"] = TimingJson(r);
  if (r.placed()) {
    const groove::DrumGridText grid =
        groove::DrumGridTextOf(filtered, r.judgement().pattern,
                               std::min(kGridMeasures, r.judgement().grooveMeasures), kGridWidth);
    json["drum_grid"] = {
        {"step", groove::GridStepName(grid.step)}, {"exact", grid.exact}, {"lines", grid.lines}};
  } else {
    json["drum_grid"] = nullptr;
  }
  json["strict_walk"] = WalkJson(r.judgement().walk);
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

std::string TextReport(const std::string& name, const GrooveInspection& r,
                       std::span<const uint8_t> filtered) {
  std::ostringstream out;
  const groove::GroovePattern& p = r.judgement().pattern;
  const groove::TimeMark& meter = p.timeSignature;
  out << name << "\n";
  // Fields of a file that is no MIDI file at all mean nothing.
  if (r.beginsWithHeader) {
    out << "  format " << r.proof.facts.format << ", " << r.proof.facts.tracks
        << " track(s) after filtering, division " << p.division << " ticks per quarter note\n";
    out << "  meter " << meter.numerator << "/" << meter.denominator << " (" << meter.ticksPerBeat
        << " ticks per beat, " << meter.ticksPerMeasure << " per measure)\n";
    out << "  tempo " << r.proof.facts.tempoBpm << " BPM\n";
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
      for (int key : r.instruments)
        out << "    " << key << "  " << groove::DrumKeyName(key) << "\n";
    }
    Timing(out, r);
    KeysOutside(out, r);
    if (r.placed()) Grid(out, r, filtered);
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
