#include "groove_report.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "drum_track_meter.h"
#include "gm_drum_names.h"
#include "load_groove.h"
#include "range_check.h"
#include "smf_reader.h"

namespace rw::tools {
namespace {

class CollectingSink : public groove::DiagnosticSink {
 public:
  explicit CollectingSink(std::vector<std::string>& alerts) : alerts_(alerts) {}
  void Show(const char* text) override { alerts_.emplace_back(text); }

 private:
  std::vector<std::string>& alerts_;
};

}  // namespace

GrooveInspection InspectGroove(GrooveFile& file) {
  GrooveInspection result;
  CollectingSink sink(result.alerts);
  groove::SmfReader reader(file.buffer.get(), &file.size, file.capacity, sink);
  try {
    result.pattern = groove::LoadGroove(reader, 0);
    result.loaded = result.pattern.loaded;
  } catch (const std::out_of_range&) {
    result.rangeCheckFailure = true;
    result.pattern.timeSignature = reader.timeSignatureSnapshot();
    result.pattern.division = reader.division();
    result.pattern.drumNotesFound = reader.drumNotesFound();
    result.pattern.lastDrumMeasure = reader.lastDrumMeasure();
    result.pattern.lastDrumTick = reader.lastDrumTick();
  }
  result.format = reader.format();
  result.tracks = reader.trackCount();
  result.tempoBpm = reader.tempoSnapshot().beatsPerMinute;
  result.grooveMeasures = groove::GrooveMeasures(result.pattern);
  for (int key = 0; key < 128; ++key) {
    if (reader.keyUsed(key)) result.keysUsed.push_back(key);
  }
  result.lowestKey = reader.lowestDrumKey();
  result.highestKey = reader.highestDrumKey();
  result.filteredSize = file.size;

  const groove::TimeMark& meter = result.pattern.timeSignature;
  if (result.loaded && result.tracks >= 2 && (meter.numerator != 4 || meter.denominator != 4)) {
    const auto hasMeter = SecondTrackHasTimeSignature(file.buffer.get(), file.size);
    result.drumTrackLacksMeter = hasMeter.has_value() && !*hasMeter;
  }
  return result;
}

std::string JsonReport(const GrooveInspection& r) {
  const groove::TimeMark& meter = r.pattern.timeSignature;
  nlohmann::ordered_json json;
  json["loaded"] = r.loaded;
  json["failure"] = r.rangeCheckFailure ? nlohmann::ordered_json("range-check") : nullptr;
  json["alerts"] = r.alerts;
  json["format"] = r.format;
  json["tracks"] = r.tracks;
  json["division"] = r.pattern.division;
  json["time_signature"] = {{"numerator", meter.numerator},
                            {"denominator", meter.denominator},
                            {"ticks_per_beat", meter.ticksPerBeat},
                            {"ticks_per_measure", meter.ticksPerMeasure}};
  json["tempo_bpm"] = r.tempoBpm;
  json["drum_notes_found"] = r.pattern.drumNotesFound;
  json["last_drum_measure"] = r.pattern.lastDrumMeasure;
  json["last_drum_tick"] = r.pattern.lastDrumTick;
  json["groove_measures"] = r.grooveMeasures;
  json["keys_used"] = r.keysUsed;
  json["lowest_key"] = r.lowestKey;
  json["highest_key"] = r.highestKey;
  json["size"] = r.filteredSize;
  return json.dump(2) + "\n";
}

std::string TextReport(const std::string& name, const GrooveInspection& r) {
  std::ostringstream out;
  const groove::TimeMark& meter = r.pattern.timeSignature;
  out << name << ": ";
  if (r.loaded) {
    out << "loaded\n";
  } else if (r.rangeCheckFailure) {
    out << "NOT loaded (the file breaks the reader's limits)\n";
  } else {
    out << "NOT loaded\n";
  }
  out << "  format " << r.format << ", " << r.tracks << " track(s) after filtering, division "
      << r.pattern.division << " ticks per quarter note\n";
  out << "  meter " << meter.numerator << "/" << meter.denominator << " (" << meter.ticksPerBeat
      << " ticks per beat, " << meter.ticksPerMeasure << " per measure)\n";
  out << "  tempo " << r.tempoBpm << " BPM\n";
  if (r.pattern.drumNotesFound) {
    out << "  groove length " << r.grooveMeasures << " measure(s) (last drum event in measure "
        << r.pattern.lastDrumMeasure << " at tick " << r.pattern.lastDrumTick << ")\n";
  } else {
    out << "  no drum notes (channel 10)\n";
  }
  if (!r.keysUsed.empty()) {
    out << "  drum keys:\n";
    for (int key : r.keysUsed) out << "    " << key << "  " << DrumKeyName(key) << "\n";
  }
  if (!r.alerts.empty()) {
    out << "  diagnostics:\n";
    for (const std::string& alert : r.alerts) out << "    " << alert << "\n";
  }
  if (r.drumTrackLacksMeter) {
    out << "  warning: the drum track has no time signature of its own, but the first track's "
           "meter is "
        << meter.numerator << "/" << meter.denominator
        << "; repeat the time signature at time 0 of the drum track.\n";
  }
  return out.str();
}

}  // namespace rw::tools
