// Track events: running status, the silencing of non-drum events in place,
// drum bookkeeping, SysEx and meta events.
#include <gtest/gtest.h>

#include "literal_store.h"
#include "smf_builder.h"
#include "smf_header_impl.h"
#include "track_parser_impl.h"

namespace rw::groove::testing {
namespace {

using Alerts = std::vector<std::string>;

const Bytes kKick = note(0, 0x99, 36, 100);

TEST(NonDrumEventsAreSilencedInPlace, AProgramChangeGrowsToThreeBytes) {
  const Bytes events = cat({{0x00, 0xC0, 0x05}, kKick, kEndOfTrack});
  Load load(smf(0, 480, {events}));
  ASSERT_TRUE(load.pattern.loaded);
  const Bytes expected = cat({{0x00, 0x89, 0x00, 0x40}, kKick, kEndOfTrack});
  EXPECT_EQ(load.bytes(), smf(0, 480, {expected}));
  EXPECT_EQ(load.size(), 14 + 8 + events.size() + 1);
}

TEST(NonDrumEventsAreSilencedInPlace, RunningStatusEventsFollowTheRewrittenStatus) {
  const Bytes events = cat({{0x00, 0x90, 0x3C, 0x64, /* running */ 0x00, 0x3E, 0x64}, kEndOfTrack});
  Load load(smf(0, 480, {events}));
  const Bytes expected = cat({{0x00, 0x89, 0x00, 0x40, 0x00, 0x3E, 0x64}, kEndOfTrack});
  EXPECT_EQ(load.bytes(), smf(0, 480, {expected}));
}

TEST(NonDrumEventsAreSilencedInPlace, OneDataByteEventsInRunningStatusGetTheirSecondByte) {
  // After the rewritten status 0x89 a reader takes two data bytes per event,
  // so each program change in running status becomes a note off too.
  const Bytes events =
      cat({{0x00, 0xC0, 0x05, /* running */ 0x00, 0x06, 0x81, 0x00, 0x07}, kKick, kEndOfTrack});
  const Bytes expected =
      cat({{0x00, 0x89, 0x00, 0x40, 0x00, 0x00, 0x40, 0x81, 0x00, 0x00, 0x40}, kKick, kEndOfTrack});
  Load load(smf(0, 480, {events}));
  EXPECT_EQ(load.bytes(), smf(0, 480, {expected}));
  EXPECT_EQ(BasicLoad<LiteralStore>(smf(0, 480, {events})).bytes(), load.bytes());
}

TEST(NonDrumEventsAreSilencedInPlace, ChannelPressureAndSystemMessages) {
  const Bytes events = cat({{0x00, 0xD3, 0x40},        // one data byte: grows
                            {0x00, 0xF2, 0x01, 0x02},  // counted as two data bytes
                            kKick,
                            kEndOfTrack});
  Load load(smf(0, 480, {events}));
  const Bytes expected =
      cat({{0x00, 0x89, 0x00, 0x40}, {0x00, 0x89, 0x00, 0x40}, kKick, kEndOfTrack});
  EXPECT_EQ(load.bytes(), smf(0, 480, {expected}));
}

TEST(NonDrumEventsAreSilencedInPlace, DrumsOfALaterTrackToo) {
  const Bytes first = cat({kKick, kEndOfTrack});
  const Bytes second = cat({note(0, 0x99, 40, 90), kEndOfTrack});
  Load load(smf(1, 480, {first, second}));
  // track 2 is cut anyway; in track 1 the drums stay as they are
  EXPECT_EQ(load.bytes(), smf(1, 480, {first}));
}

TEST(ARunningEventAfterASilencedOne, NeverMovesWhereTheTracksReadingEnds) {
  // Track 2 (program change, then one in running status) lacks its End of
  // Track: its reading ends two bytes into the next chunk's header, as the
  // literal rules read it, and the third chunk is read whole.
  const Bytes file = cat({header(1, 3, 96),
                          track(cat({note(0, 0x99, 36, 100), note(96, 0x89, 36, 64), kEndOfTrack})),
                          track({0x00, 0xC0, 0x05,  // program change
                                 0x00, 0x06}),      // another in running status; no End of Track
                          track(kEndOfTrack)});
  Load load(file);
  ASSERT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"End of track meta event missing"});
  EXPECT_EQ(load.reader().trackCount(), 1);
  EXPECT_EQ(load.pattern.lastDrumMeasure, 1);
  EXPECT_EQ(load.bytes(),
            smf(1, 96, {cat({note(0, 0x99, 36, 100), note(96, 0x89, 36, 64), kEndOfTrack})}));
}

TEST(ARunningEventAfterASilencedOne, IsLeftAloneInAChunkCutShortByTheFilesEnd) {
  // The chunk claims 17 bytes; the file holds 9. Neither the running event
  // nor the zeros read past the end get a byte: the load ends with the
  // alerts the literal rules raise, and the file is refused anyway.
  const Bytes file = cat({header(0, 1, 96),
                          {'M', 'T', 'r', 'k'},
                          be32(17),
                          {0x00, 0x99, 0x24, 0x64,  // a kick
                           0x00, 0xC0, 0x05,        // a program change
                           0x00, 0x06}});           // another in running status
  Load load(file);
  BasicLoad<LiteralRulesStore> literal(file);
  ASSERT_TRUE(load.pattern.loaded);
  EXPECT_FALSE(load.rangeCheck);
  EXPECT_EQ(load.alerts(), literal.alerts());
  EXPECT_EQ(load.alerts().size(), 11u);
  EXPECT_EQ(load.bytes(), cat({header(0, 1, 96),
                               {'M', 'T', 'r', 'k'},
                               be32(18),
                               {0x00, 0x99, 0x24, 0x64, 0x00, 0x89, 0x00, 0x40, 0x00, 0x06}}));
}

TEST(ARunningEventAfterASilencedOne, LeavesAChunkCutShortToEndAsTheLiteralRulesEndIt) {
  // A chunk that claims far more than the file holds, with running program
  // changes in what it does hold: its end lies beyond the file, and a byte
  // inserted for each of them would move it beyond the allocation too.
  const Bytes file = cat({header(0, 1, 480),
                          {'M', 'T', 'r', 'k'},
                          be32(40),
                          {0x00, 0xC0, 0x01, 0x00, 0x02, 0x00, 0x03, 0x00, 0x04, 0x00, 0x05}});
  Load load(file);
  BasicLoad<LiteralRulesStore> literal(file);
  EXPECT_EQ(load.rangeCheck, literal.rangeCheck);
  EXPECT_EQ(load.alerts(), literal.alerts());
}

TEST(DrumEvents, ArePositionedAndTheirKeysRecorded) {
  const Bytes events = cat({note(0, 0x99, 42, 80), note(1920, 0x99, 35, 80),
                            note(1920 * 2 - 1920, 0x89, 81, 0),  // measure 3, tick 0
                            kEndOfTrack});
  Load load(smf(0, 480, {events}));
  ASSERT_TRUE(load.pattern.loaded);
  EXPECT_TRUE(load.pattern.drumNotesFound);
  EXPECT_EQ(load.pattern.lastDrumMeasure, 3);
  EXPECT_EQ(load.pattern.lastDrumTick, 0);
  EXPECT_EQ(load.reader().lowestDrumKey(), 35);
  EXPECT_EQ(load.reader().highestDrumKey(), 81);
  EXPECT_TRUE(load.reader().keyUsed(42));
  EXPECT_FALSE(load.reader().keyUsed(36));
  EXPECT_EQ(load.bytes(), smf(0, 480, {events}));  // untouched
}

TEST(DrumEvents, ControlChangesAloneCountAsFoundWithoutKeys) {
  Load load(smf(0, 480, {cat({{0x00, 0xB9, 0x07, 0x64}, kEndOfTrack})}));
  EXPECT_TRUE(load.pattern.drumNotesFound);
  for (int key = 0; key < 128; ++key) EXPECT_FALSE(load.reader().keyUsed(key));
  EXPECT_EQ(load.reader().lowestDrumKey(), 127);
  EXPECT_EQ(load.reader().highestDrumKey(), 0);
}

TEST(DrumEvents, AHugeDeltaIsDividedIntoMeasuresNotSteppedThrough) {
  // division 1: four ticks per measure
  Load load(smf(0, 1, {cat({note(0x0FFFFFFF, 0x99, 36, 1), kEndOfTrack})}));
  EXPECT_EQ(load.pattern.lastDrumMeasure, 1 + 0x0FFFFFFF / 4);
  EXPECT_EQ(load.pattern.lastDrumTick, 0x0FFFFFFF % 4);
}

TEST(TheTrackParser, FailsOnRunningStatusWithoutAStatus) {
  Load load(smf(0, 480, {cat({{0x00, 0x3C, 0x64}, kEndOfTrack})}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Running status is used but undefined"});
}

TEST(TheTrackParser, FailsOnAWrongTrackChunkId) {
  Load load(cat({header(0, 1, 480), chunk("MTrx", kEndOfTrack)}));
  EXPECT_FALSE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), Alerts{"Invalid track chunk ID"});
}

TEST(TheTrackParser, SkipsSysExByItsTerminatorNotItsLength) {
  const Bytes events = cat({{0x00, 0xF0, 0x05, 0x7E, 0x7F, 0x09, 0x01, 0xF7}, kKick, kEndOfTrack});
  Load load(smf(0, 480, {events}));
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_TRUE(load.alerts().empty());
  EXPECT_EQ(load.bytes(), smf(0, 480, {events}));
}

TEST(TheTrackParser, AcceptsAChunkWithoutEndOfTrack) {
  Load load(smf(1, 480, {cat({kKick}), cat({note(0, 0x99, 40, 90)})}));
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.alerts(), (Alerts(2, "End of track meta event missing")));
  // Both tracks closed a mark of their own.
  EXPECT_EQ(load.reader().timeMarks().size(), 2u);
}

TEST(ATruncatedTrack, ReadsZerosWithAnAlertPerMissingByte) {
  // The chunk claims 6 bytes; the file ends after 3 of them.
  const Bytes file = cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(6), {0x00, 0x99, 0x24}});
  Load load(file);
  EXPECT_TRUE(load.pattern.loaded);
  const std::string eof = "Parsing error - trying to read beyond EOF.";
  // velocity; the next delta; a status byte that reads as running-status data; its second byte
  EXPECT_EQ(load.alerts(), (Alerts{eof, eof, eof, eof, "End of track meta event missing"}));
  EXPECT_EQ(load.reader().lowestDrumKey(), 0);  // the zero key read past the end
  EXPECT_EQ(load.bytes(), file);
}

}  // namespace
}  // namespace rw::groove::testing
