// The beats of a meter and the points a stroke is written straight onto.
#include "beat_grid.h"

#include <gtest/gtest.h>

namespace rw::groove {
namespace {

// The meter as the reader counts it.
GrooveMeter Meter(int32_t division, int32_t numerator, int32_t denominator) {
  const int32_t ticksPerBeat = 4 * division / denominator;
  return {division, numerator, denominator, ticksPerBeat, numerator * ticksPerBeat};
}

// Where a stroke at `tick` is written when every beat takes `grid`.
uint64_t Straight(const MeterBeats& beats, uint64_t tick, BeatGrid grid) {
  const BeatPlace place = beats.Locate(tick);
  return beats.TickOf(place.measure, place.beat, beats.NearestPoint(place, grid));
}

TEST(TheBeatsOfAMeter, AreQuartersFromTheBarlineOrDottedQuartersInCompoundMeters) {
  const struct {
    int32_t numerator, denominator;
    std::vector<uint64_t> lengths;  // ticks at 480 to the quarter
    bool compound;
  } cases[] = {
      {4, 4, {480, 480, 480, 480}, false},
      {3, 4, {480, 480, 480}, false},
      {2, 2, {480, 480, 480, 480}, false},
      {3, 8, {480, 240}, false},
      {5, 8, {480, 480, 240}, false},
      {7, 8, {480, 480, 480, 240}, false},
      {6, 8, {720, 720}, true},
      {9, 8, {720, 720, 720}, true},
      {12, 8, {720, 720, 720, 720}, true},
      {9, 16, {720, 360}, true},
      {5, 16, {480, 120}, false},
  };
  for (const auto& c : cases) {
    const auto beats = MeterBeats::Of(Meter(480, c.numerator, c.denominator));
    ASSERT_TRUE(beats) << c.numerator << "/" << c.denominator;
    std::vector<uint64_t> lengths;
    for (uint32_t beat = 0; beat < beats->count(); ++beat) {
      lengths.push_back(beats->LengthOf(beat) / kTwelfthsPerTick);
      // Triplets only in whole quarters of simple meters.
      EXPECT_EQ(beats->MayTakeTriplets(beat), !c.compound && lengths.back() == 480)
          << c.numerator << "/" << c.denominator << " beat " << beat + 1;
    }
    EXPECT_EQ(lengths, c.lengths) << c.numerator << "/" << c.denominator;
    EXPECT_EQ(beats->compound(), c.compound);
  }
}

TEST(TheBeatsOfAMeter, AreOnlyThoseOfAMeterTheReaderCouldGive) {
  GrooveMeter inconsistent = Meter(480, 4, 4);
  inconsistent.ticksPerMeasure = 1000;
  GrooveMeter wrongBeat = Meter(480, 4, 4);
  wrongBeat.ticksPerBeat = 240;
  const GrooveMeter meters[] = {
      Meter(0, 4, 4) /* no division */,
      {480, 0, 4, 480, 0},
      {480, 256, 4, 480, 256 * 480},
      {480, 3, 3, 640, 1920},
      {4, 4, 32, 0, 0} /* no ticks per beat */,
      {0x8000, 4, 4, 0x8000, 4 * 0x8000},
      inconsistent,
      wrongBeat,
  };
  for (const GrooveMeter& meter : meters) {
    EXPECT_FALSE(MeterBeats::Of(meter)) << meter.numerator << "/" << meter.denominator;
  }
}

TEST(TheBeatsOfAMeter, TakeEachStrokeToTheNearestPointOfItsBeatsGrid) {
  const auto fourFour = MeterBeats::Of(Meter(480, 4, 4));
  const auto fiveEight = MeterBeats::Of(Meter(480, 5, 8));
  const auto sixEight = MeterBeats::Of(Meter(480, 6, 8));
  const auto oddDivision = MeterBeats::Of(Meter(90, 4, 4));
  const struct {
    const char* what;
    const MeterBeats& beats;
    uint64_t tick;
    BeatGrid grid;
    uint64_t straight;
  } cases[] = {
      {"a late sixteenth", *fourFour, 130, BeatGrid::kSixteenths, 120},
      {"halfway: the earlier point", *fourFour, 60, BeatGrid::kSixteenths, 0},
      {"past halfway", *fourFour, 61, BeatGrid::kSixteenths, 120},
      {"a late triplet", *fourFour, 2 * 1920 + 1290, BeatGrid::kEighthTriplets, 2 * 1920 + 1280},
      {"a triplet halfway", *fourFour, 80, BeatGrid::kEighthTriplets, 0},
      {"before the barline", *fourFour, 1915, BeatGrid::kSixteenths, 1920},
      {"before the barline on triplets", *fourFour, 1850, BeatGrid::kEighthTriplets, 1920},
      {"the short last beat of 5/8", *fiveEight, 1070, BeatGrid::kSixteenths, 1080},
      {"before the barline of 5/8", *fiveEight, 1190, BeatGrid::kSixteenths, 1200},
      {"across a dotted quarter", *sixEight, 700, BeatGrid::kSixteenths, 720},
      {"a sixteenth between ticks (22.5) rounds up", *oddDivision, 21, BeatGrid::kSixteenths, 23},
      {"a triplet of a division of 90", *oddDivision, 3 * 360 + 95, BeatGrid::kEighthTriplets,
       3 * 360 + 90},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Straight(c.beats, c.tick, c.grid), c.straight) << c.what;
  }
  const BeatPlace place = fourFour->Locate(3 * 1920 + 500);
  EXPECT_EQ(place.measure, 3u);
  EXPECT_EQ(place.beat, 1u);
  EXPECT_EQ(place.offset, 20 * kTwelfthsPerTick);
}

TEST(TheBeatsOfAMeter, AreFoundByAStepThroughATrackAsByDivision) {
  // Ticks that rise by less than a beat, by a beat, across a barline, by
  // many measures, and fall back, as a new track starts.
  std::vector<uint64_t> ticks;
  for (uint64_t tick = 0; tick < 5000; tick += 37) ticks.push_back(tick);
  for (uint64_t tick : {5000u, 5480u, 6000u, 100000u, 100001u, 3u, 1199u, 1200u, 1201u}) {
    ticks.push_back(tick);
  }
  for (const GrooveMeter& meter : {Meter(480, 4, 4), Meter(480, 5, 8), Meter(90, 9, 8)}) {
    const auto beats = MeterBeats::Of(meter);
    BeatCursor cursor(*beats);
    for (uint64_t tick : ticks) {
      const BeatPlace stepped = cursor.Locate(tick);
      const BeatPlace divided = beats->Locate(tick);
      EXPECT_EQ(stepped.measure, divided.measure) << tick;
      EXPECT_EQ(stepped.beat, divided.beat) << tick;
      EXPECT_EQ(stepped.offset, divided.offset) << tick;
    }
  }
}

TEST(TheBeatsOfAMeter, FindTheNearestPointOfEveryOffsetOfABeatExactlyAtAnyDivision) {
  // Against plain division, over every offset of a beat, at divisions that
  // make steps of every size up to the largest.
  for (int32_t division : {1, 7, 90, 480, 1001, 32767}) {
    const auto beats = MeterBeats::Of(Meter(division, 4, 4));
    ASSERT_TRUE(beats);
    const uint64_t length = beats->LengthOf(0);
    for (BeatGrid grid : {BeatGrid::kSixteenths, BeatGrid::kEighthTriplets}) {
      const uint64_t step = beats->StepOf(grid);
      for (uint64_t offset = 0; offset < length; ++offset) {
        const uint64_t before = offset / step * step;
        const uint64_t after = std::min(before + step, length);
        const uint64_t nearest = offset - before <= after - offset ? before : after;
        ASSERT_EQ(beats->NearestPoint({0, 0, offset}, grid), nearest)
            << "offset " << offset << " at division " << division;
      }
    }
  }
}

}  // namespace
}  // namespace rw::groove
