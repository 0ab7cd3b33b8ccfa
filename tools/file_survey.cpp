#include "file_survey.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string>

namespace rw::tools {
namespace {

constexpr uint8_t kMetaTimeSignature = 0x58;
constexpr uint8_t kMetaTrackName = 0x03;
constexpr uint8_t kMetaInstrumentName = 0x04;
constexpr int kLastKitKey = 59;  // kicks, snares, toms, hi-hats and cymbals; hand percussion above

// Words that name a drum part, in the languages track names come in
// (compared in lower case; the Japanese ones as UTF-8 bytes).
constexpr const char* kDrumWords[] = {
    "drum",   "perc",     "kit",      "batterie", "schlagzeug",     "bater", "trumm",
    "perkus", "slagverk", "slagwerk", "ドラム",   "パーカッション", "打楽器"};

bool NamesDrums(const uint8_t* text, uint32_t length) {
  std::string lower(reinterpret_cast<const char*>(text), length);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  for (const char* word : kDrumWords) {
    if (lower.find(word) != std::string::npos) return true;
  }
  return false;
}

uint32_t LittleEndian32(const uint8_t* p) {
  return uint32_t{p[0]} | uint32_t{p[1]} << 8 | uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
}

class Surveyor : public groove::SmfEventVisitor {
 public:
  explicit Surveyor(FileSurvey& survey) : survey_(survey) {}

  void Header(uint16_t, uint16_t, uint16_t division) override {
    survey_.header = true;
    survey_.division = division;
    division_ = division;
  }

  void TrackStart(int32_t, uint64_t chunkOffset, uint64_t) override {
    survey_.tracks.push_back({chunkOffset, 0, false, false, false, 0, 0});
    ticksPerMeasure_ = 4ull * division_;
    lastOnset_ = {};
  }

  void Event(const groove::SmfEvent& e) override {
    TrackSurvey& track = survey_.tracks.back();
    if (e.status < 0xF0) {
      const int channel = e.status & 0x0F;
      track.channelEvents = static_cast<uint16_t>(track.channelEvents | (1u << channel));
      const int kind = e.status >> 4;
      if (channel == kDrumChannel - 1 && (kind == 8 || kind == 9) && e.data1 < 128) {
        survey_.channel10Keys.set(e.data1);
      }
      if (kind == 9 && e.data2 > 0) {
        const auto c = static_cast<std::size_t>(channel);
        ++survey_.noteOns[c];
        if (channel == kDrumChannel - 1) track.drumNoteOns = true;
        if (e.data1 >= kFirstDrumKey && e.data1 <= kLastDrumKey) ++survey_.drumKeyNotes[c];
        if (e.data1 >= kFirstDrumKey && e.data1 <= kLastKitKey) ++survey_.kitKeyNotes[c];
        if (e.data1 < 128) survey_.keys[c].set(e.data1);
        if (lastOnset_[c] && *lastOnset_[c] == e.tick) ++survey_.struckTogether[c];
        lastOnset_[c] = e.tick;
      }
      return;
    }
    if (e.status == 0xFF && (e.data1 == kMetaTrackName || e.data1 == kMetaInstrumentName) &&
        NamesDrums(e.payload, e.payloadLength)) {
      track.namedDrums = true;
    }
    if (e.status != 0xFF || e.data1 != kMetaTimeSignature || e.payloadLength < 2) return;
    survey_.anyTimeSignature = true;
    const int numerator = e.payload[0];
    const int power = e.payload[1];
    if (e.tick == 0) {
      track.timeSignatureAtZero = true;
      track.numerator = e.payload[0];
      track.denominatorPower = e.payload[1];
      // The reader's own arithmetic: ticks per beat from the denominator.
      const uint64_t denominator = power < 32 ? (1ull << power) : 0;
      const uint64_t perBeat = denominator ? 4ull * division_ / denominator : 0;
      if (numerator > 0 && perBeat > 0) ticksPerMeasure_ = perBeat * uint64_t(numerator);
      return;
    }
    if (survey_.meterChange) return;
    MeterChange change;
    change.track = e.track;
    change.tick = e.tick;
    change.measure = ticksPerMeasure_ ? e.tick / ticksPerMeasure_ + 1 : 0;
    change.tickInMeasure = ticksPerMeasure_ ? e.tick % ticksPerMeasure_ : 0;
    change.numerator = numerator;
    change.denominator = power < 31 ? 1 << power : 0;
    survey_.meterChange = change;
  }

 private:
  FileSurvey& survey_;
  std::array<std::optional<uint64_t>, 16> lastOnset_{};  // per channel, in this track
  uint16_t division_ = 0;
  uint64_t ticksPerMeasure_ = 0;
};

}  // namespace

bool BeginsWithHeaderId(std::span<const uint8_t> bytes) {
  return bytes.size() >= 4 && std::memcmp(bytes.data(), "MThd", 4) == 0;
}

FileSurvey SurveyFile(std::span<const uint8_t> bytes) {
  FileSurvey survey;
  Surveyor surveyor(survey);
  survey.walk = groove::WalkStrictly(bytes.data(), bytes.size(), &surveyor);
  return survey;
}

bool LooksLikeDrums(const FileSurvey& survey, int channel) {
  if (channel < 1 || channel > 16) return false;
  const auto c = static_cast<std::size_t>(channel - 1);
  const uint64_t notes = survey.noteOns[c];
  if (notes == 0) return false;
  const uint16_t mask = static_cast<uint16_t>(1u << c);
  for (const TrackSurvey& track : survey.tracks) {
    if (track.namedDrums && (track.channelEvents & mask) != 0) return true;
  }
  constexpr std::size_t kFewKeys = 16;
  const std::bitset<128>& keys = survey.keys[c];
  if (keys.count() > kFewKeys || survey.drumKeyNotes[c] * 10 < notes * 9 ||
      survey.kitKeyNotes[c] * 2 < notes) {
    return false;
  }
  if (survey.struckTogether[c] * 10 >= notes) return true;
  // One stroke at a time: only a kick, a snare and a hi-hat, on a handful of
  // keys, make a drum part of it.
  const auto any = [&](std::initializer_list<int> roleKeys) {
    return std::any_of(roleKeys.begin(), roleKeys.end(),
                       [&](int key) { return keys.test(static_cast<std::size_t>(key)); });
  };
  constexpr std::size_t kHandful = 8;
  return keys.count() <= kHandful && any({35, 36}) && any({37, 38, 39, 40}) && any({42, 44, 46});
}

std::optional<int> LikelyDrumChannel(const FileSurvey& survey) {
  std::optional<int> best;
  uint64_t most = 0;
  for (int channel = 1; channel <= 16; ++channel) {
    const uint64_t notes = survey.drumKeyNotes[static_cast<std::size_t>(channel - 1)];
    if (channel != kDrumChannel && notes > most && LooksLikeDrums(survey, channel)) {
      most = notes;
      best = channel;
    }
  }
  return best;
}

std::optional<std::span<const uint8_t>> RiffMidiData(std::span<const uint8_t> bytes) {
  // "RIFF", its size, "RMID", then chunks: "data" holds the MIDI file.
  if (bytes.size() < 12 || std::memcmp(bytes.data(), "RIFF", 4) != 0 ||
      std::memcmp(bytes.data() + 8, "RMID", 4) != 0) {
    return std::nullopt;
  }
  std::size_t position = 12;
  while (bytes.size() - position >= 8) {
    const uint32_t length = LittleEndian32(bytes.data() + position + 4);
    const std::size_t data = position + 8;
    if (length > bytes.size() - data) return std::nullopt;
    if (std::memcmp(bytes.data() + position, "data", 4) == 0) return bytes.subspan(data, length);
    position = data + length + (length & 1);  // chunks are padded to an even length
    if (position > bytes.size()) return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace rw::tools
