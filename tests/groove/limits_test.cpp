// What a broken file cannot do: raise more than 16 diagnostics, or drive the
// reader outside its buffer.
#include <gtest/gtest.h>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

TEST(ABrokenFile, ShowsAtMost16DiagnosticsThenFailsTheRangeCheck) {
  // The track claims 100 bytes that are not there.
  Load load(cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(100), {0x00, 0xC0}}));
  EXPECT_TRUE(load.rangeCheck);
  EXPECT_EQ(load.alerts(),
            std::vector<std::string>(16, "Parsing error - trying to read beyond EOF."));
}

TEST(ABrokenFile, WithManyUnterminatedTracksIsBoundedToo) {
  Bytes file = header(1, 40, 480);
  for (int i = 0; i < 40; ++i) file = cat({file, track({0x00, 0x99, 36, 1})});
  Load load(file);
  EXPECT_TRUE(load.rangeCheck);
  EXPECT_EQ(load.alerts().size(), 16u);
}

TEST(ABrokenFile, KeepsAtMost65536TimeMarks) {
  // Tempo events a tick apart each make a mark; the end of the track joins
  // the last one.
  const auto fileOfTempi = [](uint32_t count) {
    Bytes events;
    const Bytes one = tempo(1, 500000);
    for (uint32_t i = 0; i < count; ++i) events.insert(events.end(), one.begin(), one.end());
    return smf(0, 480, {cat({events, kEndOfTrack})});
  };
  EXPECT_FALSE(Load(fileOfTempi(65536)).rangeCheck);
  EXPECT_TRUE(Load(fileOfTempi(65537)).rangeCheck);
}

TEST(ABrokenFile, WithATopBitTrackLengthFailsTheRangeCheck) {
  Load load(cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(0x80000004), kEndOfTrack}));
  EXPECT_TRUE(load.rangeCheck);
  EXPECT_TRUE(load.alerts().empty());
}

TEST(ABrokenFile, CannotSkipPastTheAllocation) {
  // The end-of-track event skips to a chunk end far beyond the buffer.
  Load load(cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(0x10000), kEndOfTrack}));
  EXPECT_TRUE(load.rangeCheck);
}

TEST(ABrokenFile, WithAHugeHeaderLengthFailsTheRangeCheck) {
  Load load(cat({chunk("MThd", cat({be16(0), be16(1), be16(480)})), track(kEndOfTrack)}));
  EXPECT_FALSE(load.rangeCheck);
  Bytes file = cat({header(0, 1, 480), track(kEndOfTrack)});
  file[4] = 0x01;  // header length 0x01000006
  Load huge(file);
  EXPECT_TRUE(huge.rangeCheck);
}

TEST(ABrokenFile, ThatSkipsPastItsEndAndIsCutLosesTheMissingBytesToo) {
  // Track 2 claims 10 bytes and holds 4 (its end-of-track): the skip goes 6
  // past the end, and the cut lowers the size by the whole 18-byte distance,
  // eating into track 1. A literal in-place cut does the same.
  const Bytes file = cat({header(1, 2, 480),
                          track(cat({note(0, 0x99, 36, 1), kEndOfTrack})),
                          {'M', 'T', 'r', 'k'},
                          be32(10),
                          kEndOfTrack});
  Load load(file);
  EXPECT_TRUE(load.pattern.loaded);
  EXPECT_EQ(load.size(), file.size() - 18);
  Bytes expected(file.begin(), file.begin() + long(file.size() - 18));
  expected[11] = 1;  // the track count
  EXPECT_EQ(load.bytes(), expected);
}

}  // namespace
}  // namespace rw::groove::testing
