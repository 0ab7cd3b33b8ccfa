// Played performances of authored grooves, seeded, for the tests of the
// played-timing pieces and for end-to-end scenarios.
//
// An authored groove is written in code as a grid, one row per key. A
// performance plays it the way a drummer on an electronic kit does: every
// onset 10 to 40 ms off at the groove's tempo (most nearer 10 than 40), each
// stroke of the pattern early and late in turn from one measure to the
// next, as a drummer plays around the beat; some snare and tom strokes
// flammed (a softer grace stroke of the same key 15 to 40 ms earlier); some
// eighth-note beats swung 2:1 or 3:1 (the same beats in every measure); the
// hi-hat partly on the kit's edge keys 22 and 26; velocities spread; and a
// few downbeats played just before their barline. Beside the file comes the
// authored truth: where each stroke belongs once it is written straight.
// Its controllers (the hi-hat pedal's) and a bass line the reader silences
// come along, and its note-offs are note-offs or note-ons of velocity 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rw::groove::testing {

enum class Swing { kStraight, kTwoToOne, kThreeToOne };

struct GrooveRow {
  uint8_t key;
  // One character per grid step over one or more measures, repeated for the
  // groove's length: '-' silent, 'x' a stroke, 'X' an accent, 'g' a ghost
  // note; '|' between beats is only for reading.
  const char* steps;
};

struct AuthoredGroove {
  std::string name;
  int numerator = 4;
  int denominator = 4;
  int beatsPerMinute = 120;  // quarter notes
  int measures = 4;
  int stepsPerQuarter = 4;  // 4: sixteenths; 3: eighth triplets
  std::vector<GrooveRow> rows;
};

// Rock eighths, funk sixteenths with ghost notes, a shuffle, a swing ride,
// a 6/8 groove and a 3/4 waltz.
const std::vector<AuthoredGroove>& AuthoredGrooves();
const AuthoredGroove* FindAuthoredGroove(std::string_view name);

struct Performance {
  uint32_t seed = 1;
  uint16_t division = 480;  // a multiple of 12, so that every straight point is a whole tick
  // Per quarter of the meter; drawn from the seed when absent. Only beats
  // whose strokes are all on the beat or its eighth are swung.
  std::optional<std::vector<Swing>> swing;
  bool flams = true;
  bool edgeHiHat = true;  // the hi-hat partly on keys 22 and 26
  bool jitter = true;
};

struct TrueStroke {
  uint64_t tick;
  uint8_t key;
  friend auto operator<=>(const TrueStroke&, const TrueStroke&) = default;
};

struct PlayedGroove {
  std::vector<uint8_t> file;      // a format-1 Standard MIDI File
  std::vector<TrueStroke> truth;  // sorted
  std::vector<Swing> swing;       // per quarter of the meter, as played
  int measures = 0;
  int flams = 0;
  int earlyDownbeats = 0;  // strokes played just before their barline
};

PlayedGroove PlayGroove(const AuthoredGroove& groove, const Performance& performance);

}  // namespace rw::groove::testing
