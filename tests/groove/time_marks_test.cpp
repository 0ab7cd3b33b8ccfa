// Meta events as time marks: tempo, meter and their snapshots, and the
// offbeat shift.
#include <gtest/gtest.h>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

using Alerts = std::vector<std::string>;

const Bytes kKick = note(0, 0x99, 36, 100);

TEST(MetaEvents, ATempoOf500000MicrosecondsIs120Bpm) {
  Load load(smf(0, 480, {cat({tempo(0, 0x07A120), kKick, kEndOfTrack})}));
  ASSERT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.reader().tempoSnapshot().tempo, 500000);
  EXPECT_DOUBLE_EQ(load.reader().tempoSnapshot().beatsPerMinute, 120.0);
}

TEST(MetaEvents, WithoutMetaEventsTheDefaultsHold) {
  Load load(smf(0, 480, {cat({kKick, kEndOfTrack})}));
  const TimeMark& meter = load.pattern.timeSignature;
  EXPECT_EQ(meter.numerator, 4);
  EXPECT_EQ(meter.denominator, 4);
  EXPECT_EQ(meter.ticksPerBeat, 480);
  EXPECT_EQ(meter.ticksPerMeasure, 1920);
  EXPECT_EQ(meter.absoluteTick, 1);  // deliberately 1
  EXPECT_EQ(meter.beat, 1);
  EXPECT_EQ(load.reader().tempoSnapshot().tempo, 1000000);
  EXPECT_DOUBLE_EQ(load.reader().tempoSnapshot().beatsPerMinute, 60.0);
  EXPECT_EQ(load.reader().tempoSnapshot().ticksPerBeat, 0);
}

TEST(MetaEvents, TimeSignaturesGiveTicksPerBeatAndMeasure) {
  Load sixEight(smf(0, 480, {cat({timeSignature(0, 6, 3), kKick, kEndOfTrack})}));
  EXPECT_EQ(sixEight.pattern.timeSignature.numerator, 6);
  EXPECT_EQ(sixEight.pattern.timeSignature.denominator, 8);
  EXPECT_EQ(sixEight.pattern.timeSignature.ticksPerBeat, 240);
  EXPECT_EQ(sixEight.pattern.timeSignature.ticksPerMeasure, 1440);
  Load threeFour(smf(0, 480, {cat({timeSignature(0, 3, 2), kKick, kEndOfTrack})}));
  EXPECT_EQ(threeFour.pattern.timeSignature.ticksPerBeat, 480);
  EXPECT_EQ(threeFour.pattern.timeSignature.ticksPerMeasure, 1440);
}

TEST(MetaEvents, TheMeterCountsMeasuresFromThen) {
  // 3/4: the kick at tick 1440 opens measure 2.
  Load load(smf(0, 480, {cat({timeSignature(0, 3, 2), note(1440, 0x99, 36, 1), kEndOfTrack})}));
  EXPECT_EQ(load.pattern.lastDrumMeasure, 2);
  EXPECT_EQ(load.pattern.lastDrumTick, 0);
}

TEST(MetaEvents, OnlyTrackOneFillsTheSnapshots) {
  const Bytes drums = cat({timeSignature(0, 3, 2), kKick, kEndOfTrack});
  Load load(smf(1, 480, {kEndOfTrack, drums}));
  EXPECT_TRUE(load.pattern.loaded);  // a time signature at 0 in track 2 is accepted
  EXPECT_EQ(load.pattern.timeSignature.numerator, 4);
}

TEST(MetaEvents, ATimeSignatureAfterTickZeroFailsTheLoad) {
  Load load(smf(0, 480, {cat({timeSignature(0, 4, 2), timeSignature(1, 4, 2), kEndOfTrack})}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(),
            Alerts{"This Midi file contains time signature changes. This is not supported."});
}

TEST(MetaEvents, AnOffbeatTimeSignatureIsShiftedOntoBeatOne) {
  // A delta of -1 (five bytes, wrapping in 32 bits) puts the meter before the
  // start, off the beat.
  const Bytes events = cat({{0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0x58, 0x04, 3, 2, 24, 8},
                            note(1440, 0x99, 36, 1),
                            kEndOfTrack});
  Load load(smf(0, 480, {events}));
  ASSERT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Invalid offbeat time signature specification found and "
                                  "shifted backwards onto the full beat 1."});
  // The track went back to 0, so the meter became the snapshot.
  EXPECT_EQ(load.pattern.timeSignature.numerator, 3);
  EXPECT_EQ(load.pattern.timeSignature.beat, 1);
  EXPECT_EQ(load.pattern.lastDrumMeasure, 2);
  EXPECT_EQ(load.pattern.lastDrumTick, 0);
}

TEST(MetaEvents, OfMoreThan1024BytesAreARangeCheckFailure) {
  Load fits(
      smf(0, 480, {cat({{0x00, 0xFF, 0x01}, vlq(1024), Bytes(1024, 'x'), kKick, kEndOfTrack})}));
  EXPECT_TRUE(fits.pattern.loaded);
  Load tooLong(smf(0, 480, {cat({{0x00, 0xFF, 0x01}, vlq(1025), Bytes(1025, 'x'), kEndOfTrack})}));
  EXPECT_TRUE(tooLong.rangeCheck);
  // A length that wraps negative in 32 bits is no smaller.
  Load wrapped(smf(0, 480, {cat({{0x00, 0xFF, 0x01, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F}, kEndOfTrack})}));
  EXPECT_TRUE(wrapped.rangeCheck);
}

TEST(MetaEvents, MeterValuesWithoutTicksAreARangeCheckFailure) {
  Load zeroNumerator(smf(0, 480, {cat({timeSignature(0, 0, 2), kEndOfTrack})}));
  EXPECT_TRUE(zeroNumerator.rangeCheck);
  Load tinyBeat(smf(0, 480, {cat({timeSignature(0, 4, 11), kEndOfTrack})}));  // 1/2048 > 4 x 480
  EXPECT_TRUE(tinyBeat.rangeCheck);
  Load hugePower(smf(0, 480, {cat({timeSignature(0, 4, 255), kEndOfTrack})}));
  EXPECT_TRUE(hugePower.rangeCheck);
  Load finest(smf(0, 480, {cat({timeSignature(0, 4, 10), kKick, kEndOfTrack})}));  // 1/1024
  EXPECT_EQ(finest.pattern.timeSignature.ticksPerBeat, 1);
}

}  // namespace
}  // namespace rw::groove::testing
