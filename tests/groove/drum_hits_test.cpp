// The drum hits of a groove, and which note-off releases each.
#include "drum_hits.h"

#include <gtest/gtest.h>

#include "smf_builder.h"

namespace rw::groove {

void PrintTo(const DrumHit& hit, std::ostream* out) {
  *out << "{tick " << hit.tick << ", key " << int(hit.key) << ", velocity " << int(hit.velocity)
       << ", note-off "
       << (hit.noteOff == kNoNoteOff ? std::string("none") : std::to_string(hit.noteOff)) << "}";
}

namespace testing {
namespace {

TEST(TheDrumHits, AreTheSoundingChannel10NoteOnsOfAllTracksWithTheirReleases) {
  const Bytes file =
      smf(1, 480,
          {cat({tempo(0, 500000),
                note(0, 0x99, 42, 80),   // 0: closed hi-hat, struck again before its release
                note(10, 0x99, 42, 70),  // 10: which releases the first
                note(0, 0x90, 36, 99),   // 10: channel 1, no drum
                note(5, 0x99, 42, 0),    // 15: releases the second
                note(5, 0x89, 42, 64),   // 20: releases nothing
                note(0, 0x99, 38, 100),  // 20: never released
                kEndOfTrack}),
           cat({note(0, 0x89, 38, 64),  // another track's note-off: ends nothing of track 1
                {0x00, 0xB9, 4, 20},    // a controller is no hit
                note(30, 0x99, 36, 110),
                {0x10, 36, 0},  // released in running status at 46
                kEndOfTrack})});
  const GrooveHits read = DrumHitsOf(file);
  ASSERT_TRUE(read.wellFormed);
  EXPECT_EQ(read.division, 480);
  const std::vector<DrumHit> expected = {
      {0, 42, 80, 10}, {10, 42, 70, 15}, {20, 38, 100, kNoNoteOff}, {30, 36, 110, 46}};
  EXPECT_EQ(read.hits, expected);
}

TEST(TheDrumHits, OfAFileThatFailsTheStrictWalkAreNone) {
  const Bytes kick = note(0, 0x99, 36, 100);
  const Bytes cases[] = {
      {},
      cat({header(0, 1, 480), track(kick)}),  // no End of Track
      cat({header(0, 2, 480), track(cat({kick, kEndOfTrack}))}),
      smf(0, 480, {cat({{0x00, 0x99, 36, 0x80}, kEndOfTrack})}),  // a data byte with its top bit
  };
  for (const Bytes& file : cases) {
    const GrooveHits read = DrumHitsOf(file);
    EXPECT_FALSE(read.wellFormed);
    EXPECT_TRUE(read.hits.empty());
  }
}

}  // namespace
}  // namespace testing
}  // namespace rw::groove
