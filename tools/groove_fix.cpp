#include "groove_fix.h"

#include <algorithm>

#include "file_survey.h"
#include "groove_examination.h"
#include "straighten.h"

namespace rw::tools {
namespace {

constexpr uint64_t kChunkHeaderSize = 8;
constexpr uint64_t kLengthFieldOffset = 4;
constexpr uint8_t kClocksPerClick = 24;
constexpr uint8_t kThirtySecondsPerQuarter = 8;

struct Meter {
  int numerator = 4;
  int power = 2;
  bool operator==(const Meter&) const = default;
  std::string Name() const { return std::to_string(numerator) + "/" + std::to_string(1 << power); }
};

// Rewrites the status byte of every note of one channel to channel 10. An
// event in running status follows the byte it runs under, so it moves too.
class ChannelMover : public groove::SmfEventVisitor {
 public:
  ChannelMover(std::vector<uint8_t>& bytes, int channel)
      : bytes_(bytes), channel_(static_cast<uint8_t>(channel - 1)) {}
  void Event(const groove::SmfEvent& e) override {
    const int kind = e.status >> 4;
    if (!e.running && (kind == 8 || kind == 9) && (e.status & 0x0F) == channel_) {
      bytes_[e.offset] = static_cast<uint8_t>((e.status & 0xF0) | (kDrumChannel - 1));
    }
  }

 private:
  std::vector<uint8_t>& bytes_;
  uint8_t channel_;
};

uint32_t BigEndian32(const uint8_t* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
}
void PutBigEndian32(uint8_t* p, uint32_t value) {
  for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(value >> (24 - 8 * i));
}

// A time signature at delta 0 at the start of each chosen track; the first
// event's delta is relative to the start, so nothing else shifts.
std::vector<uint8_t> WithTimeSignatures(const std::vector<uint8_t>& in,
                                        const std::vector<uint64_t>& chunkOffsets, Meter meter) {
  const uint8_t event[] = {0x00,
                           0xFF,
                           0x58,
                           0x04,
                           static_cast<uint8_t>(meter.numerator),
                           static_cast<uint8_t>(meter.power),
                           kClocksPerClick,
                           kThirtySecondsPerQuarter};
  std::vector<uint8_t> out;
  out.reserve(in.size() + chunkOffsets.size() * sizeof event);
  uint64_t copied = 0;
  for (uint64_t chunk : chunkOffsets) {
    const uint64_t dataStart = chunk + kChunkHeaderSize;
    out.insert(out.end(), in.begin() + long(copied), in.begin() + long(dataStart));
    uint8_t* length = out.data() + chunk + (out.size() - dataStart) + kLengthFieldOffset;
    PutBigEndian32(length, BigEndian32(length) + uint32_t{sizeof event});
    out.insert(out.end(), std::begin(event), std::end(event));
    copied = dataStart;
  }
  out.insert(out.end(), in.begin() + long(copied), in.end());
  return out;
}

void Refuse(FixResult& result, std::string why) { result.refusal = std::move(why); }

// The track the plug-in keeps as the drum track: the first with any event
// on channel 10 (after the move).
std::optional<std::size_t> DrumTrack(const FileSurvey& survey, std::optional<int> moved) {
  uint16_t mask = 1u << (kDrumChannel - 1);
  if (moved) mask = static_cast<uint16_t>(mask | 1u << (*moved - 1));
  for (std::size_t t = 0; t < survey.tracks.size(); ++t) {
    if (survey.tracks[t].channelEvents & mask) return t;
  }
  return std::nullopt;
}

}  // namespace

FixResult FixGroove(std::span<const uint8_t> original, const FixOptions& options) {
  FixResult result;
  std::span<const uint8_t> source = original;
  if (const auto inner = RiffMidiData(original)) {
    source = *inner;
    result.changes.push_back("took the Standard MIDI File out of its RIFF wrapper");
  }
  if (!BeginsWithHeaderId(source)) {
    Refuse(result, "this is not a Standard MIDI File: it does not begin with \"MThd\"");
    return result;
  }
  std::vector<uint8_t> bytes(source.begin(), source.end());
  FileSurvey survey = SurveyFile(bytes);
  if (survey.walk.mendable) {
    // The mends the plug-in makes to the file it writes, made here first.
    bytes = groove::MendedFile(bytes.data(), survey.walk);
    for (const groove::Mend& mend : survey.walk.mends) {
      result.changes.push_back(groove::DescribeMend(mend));
    }
    survey = SurveyFile(bytes);
  }
  if (!survey.walk.wellFormed) {
    Refuse(result, "the file is damaged (" + survey.walk.problem +
                       "); fix mends whole files only: save it again from your sequencer");
    return result;
  }
  if (const auto& change = survey.meterChange) {
    Refuse(result, "the meter changes in track " + std::to_string(change->track) + " at measure " +
                       std::to_string(change->measure) +
                       "; fix does not remove meter changes: keep a single time signature, at "
                       "time 0");
    return result;
  }

  std::optional<int> move;
  if (options.drumsChannel && *options.drumsChannel != kDrumChannel) {
    move = options.drumsChannel;
    if (survey.noteOns[static_cast<std::size_t>(*move - 1)] == 0) {
      Refuse(result, "channel " + std::to_string(*move) + " has no notes to move");
      return result;
    }
  } else if (!options.drumsChannel && survey.noteOns[kDrumChannel - 1] == 0) {
    move = LikelyDrumChannel(survey);
    const bool anyNotes = std::any_of(survey.noteOns.begin(), survey.noteOns.end(),
                                      [](uint64_t notes) { return notes > 0; });
    if (!move && anyNotes) {
      Refuse(result,
             "no drum part found: no channel's notes look like drums, and fix moves no melodic "
             "part to channel 10; if one is a drum part, name it with --drums-channel");
      return result;
    }
  }
  if (move) {
    ChannelMover mover(bytes, *move);
    groove::WalkStrictly(bytes.data(), bytes.size(), &mover);
    result.changes.push_back("moved the notes of channel " + std::to_string(*move) + " (" +
                             std::to_string(survey.noteOns[static_cast<std::size_t>(*move - 1)]) +
                             " sounding) to channel 10");
  }

  // The meter: the one asked for, else the file's own, else 4/4; every time
  // signature the file has must agree with it.
  std::optional<Meter> found;
  for (std::size_t t = 0; t < survey.tracks.size(); ++t) {
    const TrackSurvey& track = survey.tracks[t];
    if (!track.timeSignatureAtZero) continue;
    const Meter own{track.numerator, track.denominatorPower};
    if (found && !(*found == own)) {
      Refuse(result, "its tracks disagree on the meter (" + found->Name() + " and " + own.Name() +
                         " in track " + std::to_string(t + 1) + "): make them agree");
      return result;
    }
    found = own;
  }
  Meter meter = found.value_or(Meter{});
  if (options.numerator) {
    const Meter asked{*options.numerator, options.denominatorPower};
    if (found && !(*found == asked)) {
      Refuse(result, "the file's meter is " + found->Name() + ", not " + asked.Name() +
                         "; fix adds a time signature only where there is none");
      return result;
    }
    meter = asked;
  }
  // The plug-in takes the meter from the first track, and counts the drum
  // track's measures in that track's own meter (4/4 without one).
  std::vector<uint64_t> additions;
  std::string where;
  if (!survey.tracks.empty() && !survey.tracks[0].timeSignatureAtZero) {
    additions.push_back(survey.tracks[0].chunkOffset);
    where = "track 1";
  }
  const std::optional<std::size_t> drums = DrumTrack(survey, move);
  if (drums && *drums > 0 && !survey.tracks[*drums].timeSignatureAtZero && !(meter == Meter{})) {
    additions.push_back(survey.tracks[*drums].chunkOffset);
    where += (where.empty() ? "" : " and ") + ("track " + std::to_string(*drums + 1));
  }
  if (!additions.empty()) {
    bytes = WithTimeSignatures(bytes, additions, meter);
    result.changes.push_back("added a " + meter.Name() + " time signature at tick 0 of " + where);
  }

  GrooveBuffer check = groove::CopyIntoGrooveBuffer(bytes);
  const GrooveInspection verdict = InspectGroove(check, true);
  if (verdict.placed() && options.straighten) {
    if (!verdict.proof.timing.played) {
      result.changes.push_back("left the timing as it is: the groove is programmed, not played");
    } else {
      // The whole file written straight, its other tracks kept, in the
      // meter the plug-in reads it in.
      groove::StraightGroove straight =
          groove::Straighten(bytes, groove::MeterOf(verdict.judgement().pattern));
      if (straight.written) {
        bytes = std::move(straight.bytes);
        result.changes.push_back("wrote the played timing straight (" +
                                 std::to_string(straight.report.strokesMoved) + " of " +
                                 std::to_string(straight.report.onsetsBefore) + " strokes moved, " +
                                 std::to_string(straight.report.strokesMerged) + " merged)");
        for (const groove::DrumKeyMapping& mapping : straight.report.mappedKeys) {
          result.changes.push_back("wrote key " + std::to_string(mapping.from) + " as " +
                                   std::to_string(mapping.to));
        }
      }
    }
  }
  if (!verdict.placed()) {
    std::string why = "even so the plug-in would refuse it";
    if (!verdict.messages.empty()) why += " (\"" + verdict.messages.back() + "\")";
    if (!verdict.advice.empty()) why += ": " + verdict.advice;
    Refuse(result, why);
    return result;
  }
  result.fixed = true;
  result.bytes = std::move(bytes);
  return result;
}

}  // namespace rw::tools
