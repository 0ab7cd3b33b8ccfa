// The fast store against the literal in-place edits, on generated and random
// files: the same bytes left in the buffer, the same size, the same
// diagnostics in the same order and the same results.
#include <gtest/gtest.h>

#include <random>

#include "literal_store.h"
#include "smf_generator.h"
#include "smf_header_impl.h"
#include "track_parser_impl.h"

namespace rw::groove::testing {
namespace {

using LiteralLoad = BasicLoad<LiteralStore>;

struct Coverage {
  int loaded = 0, failed = 0, rangeCheck = 0, grown = 0, shrunk = 0;
};

void ExpectSameOutcome(const Bytes& file, Coverage* coverage = nullptr) {
  Load fast(file);
  LiteralLoad literal(file);
  SCOPED_TRACE(::testing::PrintToString(file));
  ASSERT_EQ(fast.rangeCheck, literal.rangeCheck);
  ASSERT_EQ(fast.alerts(), literal.alerts());
  ASSERT_EQ(fast.size(), literal.size());
  ASSERT_EQ(fast.bytes(), literal.bytes());
  EXPECT_EQ(fast.pattern.loaded, literal.pattern.loaded);
  EXPECT_EQ(fast.pattern.division, literal.pattern.division);
  EXPECT_EQ(fast.pattern.drumNotesFound, literal.pattern.drumNotesFound);
  EXPECT_EQ(fast.pattern.lastDrumMeasure, literal.pattern.lastDrumMeasure);
  EXPECT_EQ(fast.pattern.lastDrumTick, literal.pattern.lastDrumTick);
  EXPECT_EQ(fast.pattern.timeSignature.ticksPerMeasure,
            literal.pattern.timeSignature.ticksPerMeasure);
  EXPECT_EQ(fast.reader().trackCount(), literal.reader().trackCount());
  EXPECT_EQ(fast.reader().timeMarks().size(), literal.reader().timeMarks().size());
  // The cursor and the groove model as the load left them, down to the
  // state no later step consults.
  const auto& f = fast.reader();
  const auto& l = literal.reader();
  EXPECT_EQ(f.readPosition(), l.readPosition());
  EXPECT_EQ(f.writePosition(), l.writePosition());
  EXPECT_EQ(f.chunkLength(), l.chunkLength());
  EXPECT_EQ(f.chunkEnd(), l.chunkEnd());
  EXPECT_EQ(f.chunkConsumed(), l.chunkConsumed());
  EXPECT_EQ(f.lowestDrumKey(), l.lowestDrumKey());
  EXPECT_EQ(f.highestDrumKey(), l.highestDrumKey());
  for (int key = 0; key < 128; ++key) EXPECT_EQ(f.keyUsed(key), l.keyUsed(key)) << key;
  if (coverage) {
    coverage->loaded += fast.pattern.loaded;
    coverage->failed += !fast.pattern.loaded && !fast.rangeCheck;
    coverage->rangeCheck += fast.rangeCheck;
    coverage->grown += fast.size() > file.size();
    coverage->shrunk += fast.size() < file.size();
  }
}

using LiteralRulesLoad = BasicLoad<LiteralRulesStore>;

// The reader against the literal rules, which leave events in running
// status as they stand: the reader rewrites some of them, so the bytes
// differ, but what is read must not: the same diagnostics and results.
void ExpectSameReading(const Bytes& file) {
  Load reader(file);
  LiteralRulesLoad rules(file);
  SCOPED_TRACE(::testing::PrintToString(file));
  ASSERT_EQ(reader.rangeCheck, rules.rangeCheck);
  ASSERT_EQ(reader.alerts(), rules.alerts());
  EXPECT_EQ(reader.pattern.loaded, rules.pattern.loaded);
  EXPECT_EQ(reader.pattern.drumNotesFound, rules.pattern.drumNotesFound);
  EXPECT_EQ(reader.pattern.lastDrumMeasure, rules.pattern.lastDrumMeasure);
  EXPECT_EQ(reader.pattern.lastDrumTick, rules.pattern.lastDrumTick);
  EXPECT_EQ(reader.reader().trackCount(), rules.reader().trackCount());
  EXPECT_EQ(reader.reader().timeMarks().size(), rules.reader().timeMarks().size());
  for (int key = 0; key < 128; ++key) {
    EXPECT_EQ(reader.reader().keyUsed(key), rules.reader().keyUsed(key)) << key;
  }
}

void ExpectSameEverywhere(const Bytes& file, Coverage* coverage = nullptr) {
  ExpectSameOutcome(file, coverage);
  ExpectSameReading(file);
}

// A track that grows at its end and closes without End of Track: one-data-
// byte messages off the drums' channel, some continued in running status,
// the last of them the chunk's last bytes; its length field may lie.
Bytes GrowingTrackWithoutEnd(std::mt19937& rng, bool drums) {
  auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); };
  Bytes events = drums ? note(0, 0x99, 36, 100) : Bytes{};
  const int messages = pick(1, 4);
  for (int m = 0; m < messages; ++m) {
    events = cat({events,
                  vlq(uint32_t(pick(0, 200))),
                  {uint8_t((pick(0, 1) ? 0xC0 : 0xD0) | pick(0, 8)), uint8_t(pick(0, 127))}});
    const int running = pick(0, 3);
    for (int r = 0; r < running; ++r) {
      events = cat({events, vlq(uint32_t(pick(0, 200))), {uint8_t(pick(0, 127))}});
    }
  }
  Bytes bytes = track(events);
  if (pick(0, 3) == 0) {  // a length that lies, either way
    const Bytes field = be32(uint32_t(std::max(0, int(events.size()) + pick(-3, 3))));
    std::copy(field.begin(), field.end(), bytes.begin() + 4);
  }
  return bytes;
}

TEST(TheReaderReadsWhatTheLiteralRulesRead, WhenTracksGrowAtTheirEndWithoutEndOfTrack) {
  std::mt19937 rng(20261125);
  for (int i = 0; i < 1500; ++i) {
    const int tracks = std::uniform_int_distribution<int>(1, 4)(rng);
    Bytes file = header(1, uint16_t(tracks), 96);
    for (int t = 0; t < tracks; ++t) {
      file = cat({file, GrowingTrackWithoutEnd(rng, t == 0 || rng() % 2 == 0)});
    }
    ExpectSameEverywhere(file);
    if (HasFatalFailure()) return;
  }
}

TEST(TheReaderReadsWhatTheLiteralRulesRead, WhenAFileWithGrowingEventsIsCutAnywhere) {
  std::mt19937 rng(31);
  for (int i = 0; i < 12; ++i) {
    const Bytes whole = cat(
        {header(1, 2, 96), GrowingTrackWithoutEnd(rng, true), GrowingTrackWithoutEnd(rng, false),
         track(cat(
             {{0x00, 0xC1, 0x05, 0x00, 0x06, 0x00, 0x07}, note(0, 0x99, 38, 90), kEndOfTrack}))});
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
      ExpectSameEverywhere(Bytes(whole.begin(), whole.begin() + long(cut)));
      if (HasFatalFailure()) return;
    }
  }
}

TEST(TheFastStoreMatchesLiteralEdits, OnGeneratedGrooves) {
  SmfGenerator generator(20261122);
  Coverage coverage;
  for (int i = 0; i < 3000; ++i) {
    ExpectSameEverywhere(generator.File(), &coverage);
    if (HasFatalFailure()) return;
  }
  // The files reach every outcome, edits included.
  EXPECT_GT(coverage.loaded, 1000);
  EXPECT_GT(coverage.failed, 100);
  EXPECT_GT(coverage.rangeCheck, 50);
  EXPECT_GT(coverage.grown, 500);
  EXPECT_GT(coverage.shrunk, 500);
}

TEST(TheFastStoreMatchesLiteralEdits, OnLongTracksWithManyEdits) {
  SmfGenerator generator(7);
  for (int i = 0; i < 100; ++i) {
    ExpectSameEverywhere(generator.File(2000));
    if (HasFatalFailure()) return;
  }
}

TEST(TheFastStoreMatchesLiteralEdits, OnRandomBytes) {
  SmfGenerator generator(99);
  for (int i = 0; i < 3000; ++i) {
    ExpectSameEverywhere(generator.Noise());
    if (HasFatalFailure()) return;
  }
}

TEST(TheFastStoreMatchesLiteralEdits, WhenTracksAreCutAfterEdits) {
  // Every track grows before it is cut; the drum track's edits stay.
  const Bytes silenced =
      cat({{0x00, 0xC3, 0x01, 0x00, 0xD3, 0x02}, note(10, 0x93, 60, 1), kEndOfTrack});
  const Bytes drums = cat({{0x00, 0xC1, 0x05}, note(0, 0x99, 36, 100), kEndOfTrack});
  ExpectSameOutcome(smf(1, 480, {silenced, silenced, drums, silenced, drums, silenced}));
  ExpectSameOutcome(smf(1, 480, {drums, silenced, silenced}));
}

TEST(TheFastStoreMatchesLiteralEdits, WhenAnEventReadsBeyondItsChunk) {
  // A one-byte chunk whose event runs into the next chunk, then a skip back.
  const Bytes file = cat({header(1, 3, 480),
                          track(cat({note(0, 0x99, 36, 1), kEndOfTrack})),
                          {'M', 'T', 'r', 'k'},
                          be32(1),
                          {0x00, 0xC0, 0x01},
                          track(cat({note(0, 0x99, 38, 1), kEndOfTrack}))});
  ExpectSameOutcome(file);
}

TEST(TheFastStoreMatchesLiteralEdits, WhenAMeterShrinksBelowTheTickWithinTheMeasure) {
  // Two deltas that wrap the absolute time below 0 leave the tick at 960;
  // a 1/4 meter is then accepted and a note at delta 0 still moves on.
  const Bytes events = cat({{0x87, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0x01, 0x00},
                            vlq(833),
                            {0xFF, 0x58, 0x04, 1, 2, 24, 8},
                            note(0, 0x99, 36, 1),
                            kEndOfTrack});
  ExpectSameOutcome(smf(0, 480, {events}));
  Load load(smf(0, 480, {events}));
  EXPECT_EQ(load.pattern.lastDrumTick, 0);
}

}  // namespace
}  // namespace rw::groove::testing
