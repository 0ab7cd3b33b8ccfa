// What the groove author's tool learns from a file's original bytes, before
// the reader filters them in place: enough to say why the plug-in refuses a
// file and how to mend it. One streaming pass; nothing grows with the
// file's events.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "smf_walk.h"

namespace rw::tools {

inline constexpr int kFirstDrumKey = 35;
inline constexpr int kLastDrumKey = 81;
inline constexpr int kDrumChannel = 10;  // 1-based, as musicians count

// A time signature after time 0, which the plug-in refuses; measures and
// ticks counted as the reader counts them, under the track's own meter.
struct MeterChange {
  int32_t track = 0;
  uint64_t tick = 0;  // from the start of the track
  uint64_t measure = 0;
  uint64_t tickInMeasure = 0;
  int numerator = 0;
  int denominator = 0;
};

struct TrackSurvey {
  uint64_t chunkOffset = 0;
  uint16_t channelEvents = 0;  // bit c-1: the track holds an event of channel c
  bool namedDrums = false;     // its track or instrument name says drums, percussion or kit
  bool drumNoteOns = false;    // of channel 10, with a velocity above 0
  bool timeSignatureAtZero = false;
  uint8_t numerator = 0;  // of that time signature
  uint8_t denominatorPower = 0;
};

struct FileSurvey {
  groove::StrictWalk walk;  // of the original bytes
  bool header = false;      // the header chunk passed the walk
  uint16_t division = 0;
  std::array<uint64_t, 16> noteOns{};         // sounding note-ons per channel (index 0: channel 1)
  std::array<uint64_t, 16> drumKeyNotes{};    // of them, on keys 35 to 81
  std::array<uint64_t, 16> kitKeyNotes{};     // of them, on the kit's own keys 35 to 59
  std::array<uint64_t, 16> struckTogether{};  // of them, at the tick of the one before
  std::array<std::bitset<128>, 16> keys;      // the keys each channel sounds
  std::bitset<128> channel10Keys;             // keys of channel-10 notes, on or off
  bool anyTimeSignature = false;
  std::optional<MeterChange> meterChange;  // the first, in file order
  std::vector<TrackSurvey> tracks;         // one per "MTrk" chunk walked
};

FileSurvey SurveyFile(std::span<const uint8_t> bytes);

// Whether the notes of `channel` (1 to 16) look like a drum part: a track or
// instrument name that says so, or few distinct keys, nearly all of them on
// drum keys and most on the kit's own, with strokes struck together (kick
// and hi-hat). A melodic part has notes between 35 and 81 too, but many
// keys, or one note at a time, or most above the kit.
bool LooksLikeDrums(const FileSurvey& survey, int channel);

// Of the channels other than 10 whose notes look like a drum part, the one
// with the most notes on drum keys; empty when none does.
std::optional<int> LikelyDrumChannel(const FileSurvey& survey);

// A Standard MIDI File wrapped in a RIFF "RMID" file: the bytes of its
// "data" chunk, when they lie wholly inside the file.
std::optional<std::span<const uint8_t>> RiffMidiData(std::span<const uint8_t> bytes);
bool BeginsWithHeaderId(std::span<const uint8_t> bytes);

}  // namespace rw::tools
