#include "straighten.h"

#include "groove_survey.h"
#include "smf_writer.h"
#include "straight_stream.h"

namespace rw::groove {
namespace {

// The second walk, once the survey has chosen the grids.
StraightGroove WriteStraight(std::span<const uint8_t> filtered, const GrooveSurvey& survey,
                             const MeterBeats& beats, std::vector<uint8_t> storage) {
  StraightGroove result;
  SmfWriter writer(survey.format, survey.division, std::move(storage));
  // About as large as the filtered file: both in running status, a release
  // for each note-off.
  writer.Reserve(filtered.size() + filtered.size() / 4 + (std::size_t{1} << 16));
  StraightStream stream(filtered.data(), beats, survey.grids, survey.division, writer);
  WalkStrictly(filtered.data(), filtered.size(), &stream);
  const SmfWriteResult written = writer.Write(result.bytes);
  const StreamTally& tally = stream.tally();

  StraighteningReport& report = result.report;
  report.beatGrids = survey.grids;
  report.onsetsBefore = survey.timing.strokes;
  report.onsetsAfter = tally.onsets;
  report.strokesMerged = report.onsetsBefore - report.onsetsAfter;
  report.strokesMoved = tally.moved;
  for (std::size_t key = 0; key < tally.mapped.size(); ++key) {
    if (tally.mapped[key]) {
      report.mappedKeys.push_back({uint8_t(key), GeneralMidiKeyOf(uint8_t(key))});
    }
    if (tally.written[key] && !IsGeneralMidiDrumKey(uint8_t(key))) {
      report.keysOutsideGeneralMidi.push_back(uint8_t(key));
    }
  }
  report.clampedDeltas = written.clampedDeltas;
  result.written = written.written && !tally.refused;
  if (!result.written) {
    result.bytes.clear();
    result.problem = tally.refused ? "the straightened events came out of order"
                                   : "a straightened track is longer than a chunk can hold";
  }
  return result;
}

bool MeterFitsFile(const std::optional<MeterBeats>& beats, const GrooveMeter& meter,
                   const GrooveSurvey& survey) {
  return beats && meter.division == survey.division;
}

constexpr const char* kWrongMeter = "the meter is not the one the reader gives for this file";

}  // namespace

GrooveMeter MeterOf(const GroovePattern& pattern) {
  return {pattern.division, pattern.timeSignature.numerator, pattern.timeSignature.denominator,
          pattern.timeSignature.ticksPerBeat, pattern.timeSignature.ticksPerMeasure};
}

StraightGroove Straighten(std::span<const uint8_t> filtered, const GrooveMeter& meter,
                          std::vector<uint8_t> storage) {
  const std::optional<MeterBeats> beats = MeterBeats::Of(meter);
  const GrooveSurvey survey = SurveyGroove(filtered, beats ? &*beats : nullptr);
  StraightGroove refused;
  if (!survey.wellFormed) {
    refused.problem = survey.problem;
    return refused;
  }
  if (!MeterFitsFile(beats, meter, survey)) {
    refused.problem = kWrongMeter;
    return refused;
  }
  return WriteStraight(filtered, survey, *beats, std::move(storage));
}

TimingStep StraightenIfPlayed(std::span<const uint8_t> filtered, const GrooveMeter& meter,
                              std::vector<uint8_t> storage) {
  TimingStep step;
  const std::optional<MeterBeats> beats = MeterBeats::Of(meter);
  const GrooveSurvey survey = SurveyGroove(filtered, beats ? &*beats : nullptr);
  if (!survey.wellFormed) return step;
  step.timing = survey.timing;
  if (!survey.timing.played) return step;
  if (!MeterFitsFile(beats, meter, survey)) {
    step.straight = StraightGroove{};
    step.straight->problem = kWrongMeter;
    return step;
  }
  step.straight = WriteStraight(filtered, survey, *beats, std::move(storage));
  return step;
}

}  // namespace rw::groove
