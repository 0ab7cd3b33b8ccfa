// The grid of each beat of the meter, chosen over all measures: swing 2:1
// and shuffles become triplets; 3:1, straight eighths and sixteenths stay
// sixteenths, however the strokes are jittered.
#include "grid_choice.h"

#include <gtest/gtest.h>

namespace rw::groove {
namespace {

using enum BeatGrid;

// At 480 to the quarter and 120 BPM a tick is about a millisecond: jitter of
// 10 to 40 ms either side, which over eight measures averages out at every
// position, as a drummer's does.
constexpr int kJitter[] = {30, -25, 12, -38, 20, -15, 38, -22};

// Strokes at each position (ticks from the start of the beat at `start`,
// ticks from the barline) in each of eight measures, jittered.
struct Beat {
  uint64_t start;
  std::vector<uint64_t> positions;
};

std::vector<BeatGrid> Choose(const GrooveMeter& meter, const std::vector<Beat>& beats) {
  const auto meterBeats = MeterBeats::Of(meter);
  GridChoice choice(*meterBeats);
  for (std::size_t measure = 1; measure <= 8; ++measure) {
    for (const Beat& beat : beats) {
      for (std::size_t i = 0; i < beat.positions.size(); ++i) {
        const int jitter = kJitter[(measure + 3 * i) % std::size(kJitter)];
        const uint64_t tick = measure * uint64_t(meter.ticksPerMeasure) + beat.start +
                              beat.positions[i] + uint64_t(int64_t(jitter));
        choice.AddOnset(meterBeats->Locate(tick));
      }
    }
  }
  return choice.Choose();
}

const GrooveMeter kFourFour{480, 4, 4, 480, 1920};

TEST(TheGridOfABeat, IsTripletsForSwingAndShufflesAndSixteenthsForEverythingStraight) {
  const struct {
    const char* what;
    std::vector<uint64_t> positions;
    BeatGrid grid;
  } cases[] = {
      {"swing 2:1", {0, 320}, kEighthTriplets},
      {"a shuffle's triplets", {0, 160, 320}, kEighthTriplets},
      {"the second triplet alone", {320}, kEighthTriplets},
      {"3:1, a dotted eighth and a sixteenth", {0, 360}, kSixteenths},
      {"straight eighths", {0, 240}, kSixteenths},
      {"straight sixteenths", {0, 120, 240, 360}, kSixteenths},
      {"a sixteenth after the beat", {0, 120}, kSixteenths},
      {"only the beat", {0}, kSixteenths},
  };
  for (const auto& c : cases) {
    const std::vector<BeatGrid> grids = Choose(kFourFour, {{480, c.positions}});
    EXPECT_EQ(grids, (std::vector<BeatGrid>{kSixteenths, c.grid, kSixteenths, kSixteenths}))
        << c.what;
  }
}

TEST(TheGridOfABeat, IsTripletsOnlyWhereTheStrokesCentreClearlyNearerThem) {
  // Between the second triplet (320) and the last sixteenth (360): halfway
  // is not clearly nearer either.
  const struct {
    uint64_t centre;
    BeatGrid grid;
  } cases[] = {
      {331, kEighthTriplets}, {337, kEighthTriplets}, {340, kSixteenths}, {343, kSixteenths}};
  for (const auto& c : cases) {
    EXPECT_EQ(Choose(kFourFour, {{480, {0, c.centre}}})[1], c.grid) << c.centre;
  }
}

TEST(TheGridOfABeat, IsChosenForEachBeatOfTheMeterOnItsOwn) {
  // Beat 2 swung 2:1, beat 4 played 3:1, beat 1 straight, beat 3 only on
  // the beat: as a drummer's feel, the same in every measure.
  const std::vector<BeatGrid> grids =
      Choose(kFourFour, {{0, {0, 240}}, {480, {0, 320}}, {960, {0}}, {1440, {0, 360}}});
  EXPECT_EQ(grids, (std::vector<BeatGrid>{kSixteenths, kEighthTriplets, kSixteenths, kSixteenths}));
}

TEST(TheGridOfABeat, PoolsTheMeasuresSoThatOneStrokeCannotDecide) {
  const auto beats = MeterBeats::Of(kFourFour);
  // Swung eighths played 10 to 40 ms off: alone, the stroke at 352 lies
  // nearer the sixteenth at 360 than the triplet at 320.
  GridChoice alone(*beats);
  alone.AddOnset(beats->Locate(480 + 352));
  EXPECT_EQ(alone.Choose()[1], kSixteenths);
  GridChoice pooled(*beats);
  for (uint64_t tick : {480 + 352, 1920 + 480 + 300, 3840 + 480 + 335, 5760 + 480 + 290}) {
    pooled.AddOnset(beats->Locate(tick));
  }
  EXPECT_EQ(pooled.Choose()[1], kEighthTriplets);
}

TEST(TheGridOfABeat, IsSixteenthsInCompoundMetersAndShortBeats) {
  // Strokes on triplet points of a quarter: the 6/8 beat is a dotted
  // quarter, the last beat of 5/8 an eighth.
  const GrooveMeter sixEight{480, 6, 8, 240, 1440};
  EXPECT_EQ(Choose(sixEight, {{0, {0, 160, 320}}, {720, {160, 320}}}),
            (std::vector<BeatGrid>{kSixteenths, kSixteenths}));
  const GrooveMeter fiveEight{480, 5, 8, 240, 1200};
  EXPECT_EQ(Choose(fiveEight, {{480, {0, 320}}, {960, {160}}}),
            (std::vector<BeatGrid>{kSixteenths, kEighthTriplets, kSixteenths}));
}

}  // namespace
}  // namespace rw::groove
