// Played or programmed: the share of strokes on the thirty-second and
// sixteenth-triplet grids, compared exactly.
#include "played_timing.h"

#include <gtest/gtest.h>

#include <cmath>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

// One drum track of strokes at the given ticks.
Bytes Strokes(uint16_t division, const std::vector<uint64_t>& ticks, uint8_t key = 38) {
  Bytes events;
  uint64_t previous = 0;
  for (uint64_t tick : ticks) {
    events = cat({events, note(uint32_t(tick - previous), 0x99, key, 100), note(0, 0x89, key, 64)});
    previous = tick;
  }
  return smf(0, division, {cat({events, kEndOfTrack})});
}

std::vector<uint64_t> Every(double step, int count, double from = 0) {
  std::vector<uint64_t> ticks;
  for (int i = 0; i < count; ++i) ticks.push_back(uint64_t(std::llround(from + step * i)));
  return ticks;
}

TEST(ThePlayedRule, MeasuresWithinAOneSixtyFourthOfAQuarterExactlyAtEveryDivision) {
  struct Case {
    uint16_t division;
    uint64_t tick;
    bool onGrid;
  } cases[] = {
      // Points every 60 and every 40 ticks; the bound is 7.5 ticks.
      {480, 7, true},
      {480, 8, false},
      {480, 33, true},
      {480, 32, false},    // the triplet sixteenth at 40
      {480, 1448, false},  // the same three quarters later
      // A division of 100: the thirty-second at 12.5 and the triplet
      // sixteenth at 16.67 lie between ticks; the bound is 1.5625 ticks.
      {100, 14, true},
      {100, 15, false},
      {100, 18, true},
      {100, 19, false},
      // A division of 10: a tick is longer than 1/64 of a quarter, and a
      // point between two ticks counts at both.
      {10, 1, true},
      {10, 3, true},
      // A division of 48 has every point on a tick and a bound of 0.75 ticks.
      {48, 1, false},
      {48, 4, true},
      {48, 5, false},
      {48, 6, true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(OnProgrammedGrid(c.tick, c.division), c.onGrid)
        << "tick " << c.tick << " at division " << c.division;
  }
}

TEST(ThePlayedRule, GivesTheSameAnswerForATracksTicksWorkedOutOnceAQuarter) {
  for (uint16_t division : {480, 100, 10, 1}) {
    ProgrammedGrid grid(division);
    ProgrammedGrid rising(division);
    // Rising through several quarters, a jump, and back to the start.
    std::vector<uint64_t> ticks;
    for (uint64_t tick = 0; tick < 4u * division; tick += 3) ticks.push_back(tick);
    for (uint64_t tick : {uint64_t{division} * 1000 + 7, uint64_t{5}, uint64_t{division} + 1}) {
      ticks.push_back(tick);
    }
    for (uint64_t tick : ticks) {
      EXPECT_EQ(grid.Holds(tick), OnProgrammedGrid(tick, division)) << tick;
      EXPECT_EQ(rising.HoldsRising(tick), OnProgrammedGrid(tick, division)) << tick;
    }
  }
}

TEST(ThePlayedRule, NeverTakesProgrammedRollsSextupletsOrStraightGroovesForPlaying) {
  for (uint16_t division : {480, 96, 100, 10, 1}) {
    const double quarter = division;
    const std::vector<uint64_t> programmed[] = {
        Every(quarter / 8, 64),           // a roll of thirty-seconds
        Every(quarter / 12, 48),          // sextuplets
        Every(quarter / 6, 24, quarter),  // eighth triplets from beat 2
        Every(quarter / 4, 32),           // sixteenths
        Every(quarter / 2, 16),           // eighths
    };
    for (const std::vector<uint64_t>& ticks : programmed) {
      const std::optional<PlayedTiming> timing = MeasurePlayedTiming(Strokes(division, ticks));
      ASSERT_TRUE(timing);
      EXPECT_EQ(timing->strokes, ticks.size());
      EXPECT_EQ(timing->onGrid, ticks.size()) << "division " << division;
      EXPECT_FALSE(timing->played);
    }
  }
}

TEST(ThePlayedRule, DrawsTheLineBelowEightyPercent) {
  // Strokes off the grid at 480: 20 ticks after a quarter.
  const struct {
    int onGrid, offGrid;
    bool played;
  } cases[] = {{4, 1, false}, {3, 1, true},   {8, 2, false},   {7, 2, true}, {0, 1, true},
               {1, 0, false}, {79, 21, true}, {80, 20, false}, {0, 0, false}};
  for (const auto& c : cases) {
    std::vector<uint64_t> ticks;
    for (int i = 0; i < c.onGrid + c.offGrid; ++i)
      ticks.push_back(480u * i + (i < c.onGrid ? 0 : 20));
    const std::optional<PlayedTiming> timing = MeasurePlayedTiming(Strokes(480, ticks));
    ASSERT_TRUE(timing);
    EXPECT_EQ(timing->played, c.played) << c.onGrid << " of " << c.onGrid + c.offGrid;
    EXPECT_EQ(JudgePlayedTiming(timing->strokes, timing->onGrid).played, c.played);
  }
  EXPECT_TRUE(JudgePlayedTiming(UINT64_MAX, UINT64_MAX - UINT64_MAX / 5 - 1).played);
  EXPECT_FALSE(JudgePlayedTiming(UINT64_MAX, UINT64_MAX - UINT64_MAX / 5).played);
}

TEST(ThePlayedRule, CountsOnlySoundingDrumNoteOnsAndReadsNoBrokenFile) {
  // Off the grid but not strokes: a silent note-on, another channel, a
  // controller. The one stroke is on it.
  const Bytes file = smf(0, 480,
                         {cat({note(20, 0x99, 38, 0),
                               note(0, 0x90, 38, 100),
                               {0x00, 0xB9, 4, 9},
                               note(460, 0x99, 36, 100),
                               kEndOfTrack})});
  const std::optional<PlayedTiming> timing = MeasurePlayedTiming(file);
  ASSERT_TRUE(timing);
  EXPECT_EQ(timing->strokes, 1u);
  EXPECT_FALSE(timing->played);
  EXPECT_FALSE(MeasurePlayedTiming(Bytes{'M', 'T', 'h', 'd'}));
  EXPECT_FALSE(MeasurePlayedTiming(cat({header(0, 1, 480), track(note(20, 0x99, 38, 100))})));
}

}  // namespace
}  // namespace rw::groove::testing
