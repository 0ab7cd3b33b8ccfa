// The header chunk's checks and the walk over the tracks, which keeps track 1
// and the first drum track and cuts every other chunk out of the file.
#include <gtest/gtest.h>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

using Alerts = std::vector<std::string>;

const Bytes kDrumTrack = cat({note(0, 0x99, 36, 100), note(240, 0x89, 36, 64), kEndOfTrack});

TEST(TheHeaderIsChecked, AWrongChunkIdFails) {
  Load load(cat({chunk("MThx", cat({be16(0), be16(1), be16(480)})), track(kDrumTrack)}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Invalid header chunk ID"});
}

TEST(TheHeaderIsChecked, ALengthBelowSixFails) {
  Load load(cat({chunk("MThd", cat({be16(0), be16(1), {0x01}})), track(kDrumTrack)}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Invalid header chunk length"});
}

TEST(TheHeaderIsChecked, ExtraHeaderBytesAreSkippedWithOneWarning) {
  Load load(
      cat({chunk("MThd", cat({be16(0), be16(1), be16(480), {0xAB, 0xCD}})), track(kDrumTrack)}));
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_EQ(
      load.alerts(),
      Alerts{"Header longer than version defined in Midi Specs 1.0 - additinal bytes ignored."});
  EXPECT_EQ(load.pattern.division, 480);
}

TEST(TheHeaderIsChecked, FormatThreeFails) {
  Load load(smf(3, 480, {kDrumTrack}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Invalid format ID"});
}

TEST(TheHeaderIsChecked, NoTracksFails) {
  Load load(header(1, 0, 480));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"No tracks in file"});
}

TEST(TheHeaderIsChecked, FormatZeroWithTwoTracksFails) {
  Load load(smf(0, 480, {kEndOfTrack, kDrumTrack}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Number of tracks should be 1 for format 0 files"});
}

TEST(TheHeaderIsChecked, FormatTwoWarnsButStillFiltersEveryTrack) {
  const Bytes piano = cat({note(0, 0x90, 60, 100), kEndOfTrack});
  Load load(smf(2, 480, {kEndOfTrack, piano, kDrumTrack}));
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Only track 1 will be read from a format 2 file."});
  EXPECT_TRUE(load.pattern.drumNotesFound);
  EXPECT_EQ(load.reader().trackCount(), 2);
}

TEST(TheHeaderIsChecked, AnSmpteDivisionAlwaysDrawsTheFrameRateAlert) {
  Load load(smf(0, 0xE728, {kDrumTrack}));  // 25 frames stored as 0xE7, 40 ticks per frame
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Unusual number of frames per second"});
  EXPECT_EQ(load.pattern.division, 40 * 231);
  EXPECT_EQ(load.pattern.timeSignature.ticksPerBeat, 40 * 231);
  EXPECT_EQ(load.pattern.timeSignature.ticksPerMeasure, 4 * 40 * 231);
}

TEST(TheHeaderIsChecked, ADivisionOfZeroIsARangeCheckFailure) {
  Load load(smf(0, 0, {kDrumTrack}));
  EXPECT_TRUE(load.rangeCheck);
  Load smpte(smf(0, 0xE700, {kDrumTrack}));  // no ticks per frame
  EXPECT_TRUE(smpte.rangeCheck);
}

TEST(TracksAreCut, OnlyTheConductorAndTheFirstDrumTrackStay) {
  const Bytes conductor = cat({tempo(0, 500000), timeSignature(0, 4, 2), kEndOfTrack});
  const Bytes piano = cat({note(0, 0x90, 60, 100), note(480, 0x80, 60, 0), kEndOfTrack});
  const Bytes drums = cat({note(0, 0x99, 36, 100), note(480, 0x99, 38, 100), kEndOfTrack});
  const Bytes moreDrums = cat({note(0, 0x99, 42, 100), kEndOfTrack});
  const Bytes file = smf(1, 480, {conductor, piano, drums, moreDrums});
  Load load(file);
  ASSERT_TRUE(load.pattern.loaded);
  EXPECT_TRUE(load.alerts().empty());
  EXPECT_EQ(load.bytes(), smf(1, 480, {conductor, drums}));
  EXPECT_EQ(load.size(), file.size() - (8 + piano.size()) - (8 + moreDrums.size()));
  EXPECT_EQ(load.reader().trackCount(), 2);
  // The later drum track was parsed without collecting.
  EXPECT_FALSE(load.reader().keyUsed(42));
  EXPECT_EQ(load.reader().lowestDrumKey(), 36);
  EXPECT_EQ(load.reader().highestDrumKey(), 38);
}

TEST(TracksAreCut, TrackOneStaysEvenWithoutDrums) {
  const Bytes only = cat({note(0, 0x90, 60, 100), kEndOfTrack});
  Load load(smf(0, 480, {only}));
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_FALSE(load.pattern.drumNotesFound);
  EXPECT_EQ(load.bytes(), smf(0, 480, {cat({note(0, 0x89, 0, 0x40), kEndOfTrack})}));
}

TEST(TracksAreCut, AFileWithoutDrumsKeepsOnlyTrackOne) {
  Load load(smf(1, 96, {kEndOfTrack, kEndOfTrack, kEndOfTrack}));
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.bytes(), smf(1, 96, {kEndOfTrack}));
}

}  // namespace
}  // namespace rw::groove::testing
