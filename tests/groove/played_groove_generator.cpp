#include "played_groove_generator.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

#include "smf_writer.h"

namespace rw::groove::testing {
namespace {

constexpr uint8_t kClosedHiHat = 42;
constexpr uint8_t kOpenHiHat = 46;
constexpr uint8_t kClosedHiHatEdge = 22;
constexpr uint8_t kOpenHiHatEdge = 26;

// Portable draws: the same seed gives the same groove with any library.
class Dice {
 public:
  explicit Dice(uint32_t seed) : engine_(seed) {}
  double Real(double low, double high) {
    return low + (high - low) * double(engine_()) / 4294967296.0;
  }
  int Int(int low, int high) { return low + int(engine_() % uint32_t(high - low + 1)); }
  bool Chance(double p) { return Real(0, 1) < p; }

 private:
  std::mt19937 engine_;
};

struct Grid {
  int stepsPerMeasure;
  int patternMeasures;
  std::vector<std::string> rows;  // without the '|'
};

Grid GridOf(const AuthoredGroove& groove) {
  Grid grid;
  grid.stepsPerMeasure = groove.numerator * 4 * groove.stepsPerQuarter / groove.denominator;
  grid.patternMeasures = 0;
  for (const GrooveRow& row : groove.rows) {
    std::string steps;
    for (const char* c = row.steps; *c; ++c) {
      if (*c != '|') steps += *c;
    }
    if (steps.empty() || steps.size() % std::size_t(grid.stepsPerMeasure) != 0) {
      throw std::logic_error(groove.name + ": a row is not a whole number of measures");
    }
    grid.patternMeasures = std::max(grid.patternMeasures, int(steps.size()) / grid.stepsPerMeasure);
    grid.rows.push_back(steps);
  }
  return grid;
}

char StepAt(const Grid& grid, std::size_t row, int measure, int step) {
  const std::string& steps = grid.rows[row];
  const int rowMeasures = int(steps.size()) / grid.stepsPerMeasure;
  return steps[std::size_t((measure % rowMeasures) * grid.stepsPerMeasure + step)];
}

int VelocityOf(char step) {
  switch (step) {
    case 'X':
      return 118;
    case 'x':
      return 92;
    case 'g':
      return 36;
    default:
      return 0;
  }
}

bool Flammable(uint8_t key) {
  return key == 38 || key == 40 || key == 41 || key == 43 || key == 45 || key == 47 || key == 48 ||
         key == 50;
}

// A quarter may swing when every stroke in it is on the beat or on its
// eighth, and its eighth is played somewhere.
bool MaySwing(const AuthoredGroove& groove, const Grid& grid, int quarter) {
  if (groove.stepsPerQuarter != 4 || groove.denominator > 4) return false;
  bool eighth = false;
  for (std::size_t row = 0; row < grid.rows.size(); ++row) {
    for (int m = 0; m < grid.patternMeasures; ++m) {
      const int first = quarter * 4;
      if (StepAt(grid, row, m, first + 1) != '-' || StepAt(grid, row, m, first + 3) != '-') {
        return false;
      }
      eighth = eighth || StepAt(grid, row, m, first + 2) != '-';
    }
  }
  return eighth;
}

struct Note {
  uint64_t tick;
  uint64_t length;
  uint8_t key;
  uint8_t velocity;
};

// The performance as a format-1 file: a conductor track, the kit's track
// with its meter and its hi-hat pedal's controllers, and a bass line.
std::vector<uint8_t> WritePerformance(const AuthoredGroove& groove, uint16_t division,
                                      const std::vector<Note>& notes, bool noteOnsEndNotes,
                                      Dice& dice) {
  const uint64_t ticksPerMeasure =
      uint64_t(groove.numerator) * 4 * division / uint64_t(groove.denominator);
  const int quarters = groove.numerator * 4 / groove.denominator;
  SmfWriter writer(1, division);
  const uint32_t tempo = uint32_t(60000000 / groove.beatsPerMinute);
  int denominatorPower = 0;
  while ((1 << denominatorPower) < groove.denominator) ++denominatorPower;
  writer.StartTrack();
  const uint8_t name[] = {0xFF, 0x03, 0x0D, 'P', 'l', 'a', 'y', 'e',
                          'd',  ' ',  'g',  'r', 'o', 'o', 'v', 'e'};
  writer.Add(0, name);
  const uint8_t tempoEvent[] = {
      0xFF, 0x51, 0x03, uint8_t(tempo >> 16), uint8_t(tempo >> 8), uint8_t(tempo)};
  writer.Add(0, tempoEvent);
  const uint8_t meter[] = {0xFF, 0x58, 0x04, uint8_t(groove.numerator), uint8_t(denominatorPower),
                           24,   8};
  writer.Add(0, meter);
  const uint8_t marker[] = {0xFF, 0x06, 0x01, 'B'};
  if (groove.measures > 1) writer.Add(ticksPerMeasure, marker);

  writer.StartTrack();
  const uint8_t kit[] = {0xFF, 0x03, 0x04, 'K', 'i', 't', 's'};
  writer.Add(0, kit);
  // The reader counts a track's measures by that track's own time signature,
  // so the kit's track repeats it, as a file that places in 6/8 must.
  writer.Add(0, meter);
  // The kit's hi-hat pedal reports its position now and then, off any grid.
  for (int beat = 0; beat < groove.measures * quarters; ++beat) {
    const uint64_t at = uint64_t(beat) * division + uint64_t(dice.Int(0, int(division) / 2));
    writer.AddMessage(at, 0xB9, 4, uint8_t(dice.Int(0, 127)));
  }
  for (const Note& note : notes) {
    writer.AddMessage(note.tick, 0x99, note.key, note.velocity);
    if (noteOnsEndNotes) {
      writer.AddMessage(note.tick + note.length, 0x99, note.key, 0);
    } else {
      writer.AddMessage(note.tick + note.length, 0x89, note.key, 0x40);
    }
  }

  // A bass line the reader's filter silences.
  writer.StartTrack();
  writer.AddMessage(0, 0xC0, 33);
  for (int m = 0; m < groove.measures; ++m) {
    writer.AddMessage(uint64_t(m) * ticksPerMeasure, 0x90, 40, 90);
    writer.AddMessage(uint64_t(m) * ticksPerMeasure + division, 0x80, 40, 0x40);
  }
  std::vector<uint8_t> file;
  writer.Write(file);
  return file;
}

}  // namespace

const std::vector<AuthoredGroove>& AuthoredGrooves() {
  // name, meter, quarters per minute, measures, steps per quarter; then a
  // row per key, one measure or two, repeated.
  // clang-format off
  static const std::vector<AuthoredGroove> grooves = {
      {"rock-eighths", 4, 4, 112, 8, 4,
       {{42, "X-x-|X-x-|X-x-|X-x-"},
        {38, "----|x---|----|x---"},
        {36, "x---|----|x-x-|----"}}},
      {"funk-sixteenths", 4, 4, 96, 2, 4,
       {{42, "xgxg|xgxg|xgxg|xgxg" "xgxg|xgxg|xgxg|xg-g"},
        {46, "----|----|----|----" "----|----|----|--x-"},
        {38, "----|X--g|-g--|X--g" "-g--|X--g|-g-g|X---"},
        {36, "x--x|--x-|x---|--x-" "x--x|--x-|--x-|----"}}},
      {"shuffle", 4, 4, 100, 8, 3,
       {{42, "x-x|x-x|x-x|x-x"},
        {38, "---|X--|---|X--"},
        {36, "x--|--x|x--|---"}}},
      {"swing-ride", 4, 4, 132, 8, 3,
       {{51, "x--|x-x|x--|x-x"},
        {44, "---|x--|---|x--"},
        {38, "---|---|--g|---" "---|--g|---|--g"},
        {36, "g--|g--|g--|g--"}}},
      {"six-eight", 6, 8, 90, 4, 4,
       {{42, "x-x-x-|x-x-x-"},
        {38, "------|X-----"},
        {36, "x-----|----x-"}}},
      {"waltz", 3, 4, 120, 8, 4,
       {{42, "x-x-|x-x-|x-x-"},
        {38, "----|x---|x---"},
        {36, "x---|----|----"}}},
  };
  // clang-format on
  return grooves;
}

const AuthoredGroove* FindAuthoredGroove(std::string_view name) {
  for (const AuthoredGroove& groove : AuthoredGrooves()) {
    if (groove.name == name) return &groove;
  }
  return nullptr;
}

PlayedGroove PlayGroove(const AuthoredGroove& groove, const Performance& performance) {
  const uint64_t division = performance.division;
  if (division == 0 || division % 12 != 0) {
    throw std::logic_error("a performance's division is a multiple of 12");
  }
  const Grid grid = GridOf(groove);
  Dice dice(performance.seed);
  PlayedGroove played;
  played.measures = groove.measures;

  const uint64_t ticksPerMeasure =
      uint64_t(groove.numerator) * 4 * division / uint64_t(groove.denominator);
  const uint64_t ticksPerStep = division / uint64_t(groove.stepsPerQuarter);
  const int quarters = groove.numerator * 4 / groove.denominator;
  const double ticksPerMs = double(division) * groove.beatsPerMinute / 60000.0;
  auto msToTicks = [&](double ms) { return int64_t(std::llround(ms * ticksPerMs)); };

  played.swing.assign(std::size_t(std::max(quarters, 0)), Swing::kStraight);
  for (int q = 0; q < quarters; ++q) {
    const Swing drawn = performance.swing && std::size_t(q) < performance.swing->size()
                            ? (*performance.swing)[std::size_t(q)]
                            : std::array{Swing::kStraight, Swing::kStraight, Swing::kTwoToOne,
                                         Swing::kThreeToOne}[std::size_t(dice.Int(0, 3))];
    if (MaySwing(groove, grid, q)) played.swing[std::size_t(q)] = drawn;
  }

  const bool noteOnsEndNotes = dice.Chance(0.5);
  // Each authored stroke is played early and late in turn, measure by
  // measure, from a side drawn once: a drummer plays around the beat, so
  // over the groove the strokes of one position centre on it, as they must
  // for anyone to hear where they belong.
  std::vector<int> sides(grid.rows.size() *
                         std::size_t(grid.patternMeasures * grid.stepsPerMeasure));
  for (int& side : sides) side = dice.Chance(0.5) ? 1 : -1;
  std::vector<Note> notes;
  for (int m = 0; m < groove.measures; ++m) {
    for (int step = 0; step < grid.stepsPerMeasure; ++step) {
      for (std::size_t row = 0; row < grid.rows.size(); ++row) {
        const int base = VelocityOf(StepAt(grid, row, m, step));
        if (base == 0) continue;
        const uint8_t key = groove.rows[row].key;
        uint64_t inMeasure = uint64_t(step) * ticksPerStep;
        const int quarter = step / groove.stepsPerQuarter;
        if (groove.stepsPerQuarter == 4 && step % 4 == 2) {
          const uint64_t quarterStart = uint64_t(quarter) * division;
          if (played.swing[std::size_t(quarter)] == Swing::kTwoToOne) {
            inMeasure = quarterStart + division * 2 / 3;
          } else if (played.swing[std::size_t(quarter)] == Swing::kThreeToOne) {
            inMeasure = quarterStart + division * 3 / 4;
          }
        }
        const uint64_t straight = uint64_t(m) * ticksPerMeasure + inMeasure;
        played.truth.push_back({straight, key});

        int64_t offset = 0;
        if (performance.jitter) {
          // 10 to 40 ms, most strokes nearer 10 than 40.
          const double u = dice.Real(0, 1);
          int& side = sides[(row * std::size_t(grid.patternMeasures) +
                             std::size_t(m % grid.patternMeasures)) *
                                std::size_t(grid.stepsPerMeasure) +
                            std::size_t(step)];
          offset = msToTicks(10 + 30 * u * u) * side;
          side = -side;
          if (straight == 0) offset = std::abs(offset);
          if (inMeasure == 0 && m == 1) offset = -std::abs(offset);
          if (inMeasure == 0 && m > 0 && offset < 0) ++played.earlyDownbeats;
        }
        const auto tick = uint64_t(int64_t(straight) + offset);
        uint8_t playedKey = key;
        if (performance.edgeHiHat && dice.Chance(0.6)) {
          if (key == kClosedHiHat) playedKey = kClosedHiHatEdge;
          if (key == kOpenHiHat) playedKey = kOpenHiHatEdge;
        }
        const int velocity = std::clamp(base + dice.Int(-14, 14), 1, 127);
        const auto length = uint64_t(std::max<int64_t>(1, msToTicks(dice.Real(20, 90))));
        notes.push_back({tick, length, playedKey, uint8_t(velocity)});

        if (performance.flams && Flammable(key) && base >= 60 && dice.Chance(0.2)) {
          const int64_t before = msToTicks(dice.Real(15, 40));
          if (int64_t(tick) >= before) {
            notes.push_back({tick - uint64_t(before), uint64_t(std::max<int64_t>(1, before / 2)),
                             key, uint8_t(std::max(1, int(velocity * dice.Real(0.3, 0.55))))});
            ++played.flams;
          }
        }
      }
    }
  }
  std::sort(played.truth.begin(), played.truth.end());

  played.file = WritePerformance(groove, uint16_t(division), notes, noteOnsEndNotes, dice);
  return played;
}

}  // namespace rw::groove::testing
