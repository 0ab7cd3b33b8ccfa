// The crash on the downbeat: which stroke becomes it or where it is added,
// the bytes around it, and a file the import and the reader still take.
#include "crash_downbeat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "drum_hits.h"
#include "smf_generator.h"
#include "smf_walk.h"

namespace rw::groove::testing {
namespace {

const Bytes kFourFour = {0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x08};

using HitList = std::vector<std::tuple<uint64_t, int, int, uint64_t>>;

HitList SortedHits(const Bytes& file) {
  HitList hits;
  for (const DrumHit& hit : DrumHitsOf(file).hits) {
    hits.emplace_back(hit.tick, hit.key, hit.velocity, hit.noteOff);
  }
  std::sort(hits.begin(), hits.end());
  return hits;
}

// What a groove with its crash must still be: a file the import reads and
// the reader loads without a word, in the same meter and of the same length.
void ExpectPlaceable(const Bytes& input, const CrashDownbeat& crash) {
  ASSERT_NE(crash.outcome, CrashOutcome::kRefused);
  EXPECT_TRUE(WalkStrictly(crash.file.data(), crash.file.size()).wellFormed);
  const Load before(input);
  const Load after(crash.file);
  ASSERT_FALSE(after.rangeCheck);
  EXPECT_TRUE(after.pattern.loaded);
  EXPECT_EQ(after.alerts(), before.alerts());
  EXPECT_EQ(GrooveMeasures(after.pattern), GrooveMeasures(before.pattern));
  EXPECT_EQ(after.pattern.timeSignature.ticksPerMeasure,
            before.pattern.timeSignature.ticksPerMeasure);
  bool crashOnDownbeat = false;
  for (const DrumHit& hit : DrumHitsOf(crash.file).hits) {
    crashOnDownbeat = crashOnDownbeat || (hit.tick == 0 && (hit.key == 49 || hit.key == 57));
  }
  EXPECT_TRUE(crashOnDownbeat);
}

TEST(TheCrashOnTheDownbeat, TakesTheClosedHiHatOfTickZeroAndItsReleaseInRunningStatus) {
  const Bytes file = smf(0, 96,
                         {cat({kFourFour,
                               {0x00, 0x99, 0x24, 0x64},  // 0: kick
                               {0x00, 0x2A, 0x50},        // 0: closed hi-hat
                               {0x30, 0x2A, 0x00},        // 48: released
                               {0x00, 0x24, 0x00},        // 48: kick released
                               {0x00, 0x2A, 0x50},        // 48: hi-hat
                               {0x30, 0x2A, 0x00},        // 96: released
                               kEndOfTrack})});
  const CrashDownbeat crash = WithCrashOnDownbeat(file);
  ASSERT_EQ(crash.outcome, CrashOutcome::kStrokeBecameCrash);
  EXPECT_EQ(crash.drumTrack, 1);
  const Bytes expected = smf(0, 96,
                             {cat({kFourFour,
                                   {0x00, 0x99, 0x24, 0x64},
                                   {0x00, 0x31, 0x50},  // the crash
                                   {0x30, 0x31, 0x00},  // and its release
                                   {0x00, 0x24, 0x00},
                                   {0x00, 0x2A, 0x50},  // the next hi-hat stays
                                   {0x30, 0x2A, 0x00},
                                   kEndOfTrack})});
  EXPECT_EQ(crash.file, expected);
  ExpectPlaceable(file, crash);
}

TEST(TheCrashOnTheDownbeat, IsAddedAsLoudAsTheLoudestDownbeatStrokeInTheDrumsRunningStatus) {
  const Bytes file = smf(0, 96,
                         {cat({kFourFour,
                               {0x00, 0x99, 0x24, 0x5A},  // 0: kick, 90
                               {0x00, 0x26, 0x6E},        // 0: snare, 110
                               {0x0C, 0x24, 0x00},        // 12: kick released
                               {0x00, 0x26, 0x00},        // 12: snare released
                               {0x24, 0x2A, 0x50},        // 48: hi-hat
                               {0x30, 0x2A, 0x00},        // 96
                               kEndOfTrack})});
  const CrashDownbeat crash = WithCrashOnDownbeat(file);
  ASSERT_EQ(crash.outcome, CrashOutcome::kCrashAdded);
  const Bytes expected = smf(0, 96,
                             {cat({kFourFour,
                                   {0x00, 0x99, 0x24, 0x5A},
                                   {0x00, 0x26, 0x6E},
                                   {0x00, 0x31, 0x6E},  // 0: the crash, in running status
                                   {0x0C, 0x31, 0x00},  // 12: a thirty-second later, released
                                   {0x00, 0x24, 0x00},  // 12: what is left of the delta
                                   {0x00, 0x26, 0x00},
                                   {0x24, 0x2A, 0x50},
                                   {0x30, 0x2A, 0x00},
                                   kEndOfTrack})});
  EXPECT_EQ(crash.file, expected);
  ExpectPlaceable(file, crash);

  HitList hits = SortedHits(file);
  hits.emplace_back(0, 49, 110, 12);
  std::sort(hits.begin(), hits.end());
  EXPECT_EQ(SortedHits(crash.file), hits);
}

TEST(TheCrashOnTheDownbeat, GoesIntoTheDrumTrackOfAFileOfTwoTracks) {
  const Bytes conductor = cat({tempo(0, 500000), kFourFour, kEndOfTrack});
  const Bytes file = smf(1, 96,
                         {conductor, cat({{0x00, 0xC9, 0x00},        // 0: a kit
                                          {0x00, 0x99, 0x24, 0x64},  // 0: kick
                                          {0x60, 0x24, 0x00},        // 96: released
                                          kEndOfTrack})});
  const CrashDownbeat crash = WithCrashOnDownbeat(file);
  ASSERT_EQ(crash.outcome, CrashOutcome::kCrashAdded);
  EXPECT_EQ(crash.drumTrack, 2);
  const Bytes expected = smf(1, 96,
                             {conductor, cat({{0x00, 0xC9, 0x00},
                                              {0x00, 0x99, 0x24, 0x64},
                                              {0x00, 0x31, 0x64},
                                              {0x0C, 0x31, 0x00},
                                              {0x54, 0x24, 0x00},  // 96
                                              kEndOfTrack})});
  EXPECT_EQ(crash.file, expected);
  ExpectPlaceable(file, crash);
}

TEST(TheCrashOnTheDownbeat, IsReleasedBeforeALaterCrashAndNeverAfterTheLastDrumEvent) {
  const Bytes later = smf(0, 96,
                          {cat({kFourFour, note(0, 0x99, 36, 100), note(6, 0x99, 49, 90),
                                note(90, 0x89, 49, 0), note(0, 0x89, 36, 0), kEndOfTrack})});
  const CrashDownbeat crash = WithCrashOnDownbeat(later);
  ASSERT_EQ(crash.outcome, CrashOutcome::kCrashAdded);
  const HitList expected = {{0, 36, 100, 96}, {0, 49, 100, 6}, {6, 49, 90, 96}};
  EXPECT_EQ(SortedHits(crash.file), expected);
  ExpectPlaceable(later, crash);

  // A one-stroke groove without a release: the crash is released on the
  // downbeat too, so that its last drum event stays where it was.
  const Bytes lone =
      smf(0, 96, {cat({kFourFour, note(0, 0x99, 38, 70), {0x60, 0xFF, 0x2F, 0x00}})});
  const CrashDownbeat loneCrash = WithCrashOnDownbeat(lone);
  ASSERT_EQ(loneCrash.outcome, CrashOutcome::kCrashAdded);
  EXPECT_EQ(SortedHits(loneCrash.file), (HitList{{0, 38, 70, kNoNoteOff}, {0, 49, 70, 0}}));
  ExpectPlaceable(lone, loneCrash);
}

TEST(TheCrashOnTheDownbeat, LeavesAFileThatHasOneUnchanged) {
  const Bytes kick = cat({note(0, 0x99, 36, 100), note(96, 0x89, 36, 0), kEndOfTrack});
  for (const uint8_t key : {uint8_t{49}, uint8_t{57}}) {
    // Its crash in the conductor track counts too.
    const Bytes file = smf(1, 96, {cat({kFourFour, note(0, 0x99, key, 100), kEndOfTrack}), kick});
    const CrashDownbeat crash = WithCrashOnDownbeat(file);
    EXPECT_EQ(crash.outcome, CrashOutcome::kAlreadyCrash);
    EXPECT_EQ(crash.file, file);
  }
  // A crash released on the downbeat is no crash struck there.
  const Bytes released =
      smf(0, 96, {cat({kFourFour, note(0, 0x99, 49, 0), note(0, 0x99, 42, 80), kEndOfTrack})});
  EXPECT_EQ(WithCrashOnDownbeat(released).outcome, CrashOutcome::kStrokeBecameCrash);
}

TEST(TheCrashOnTheDownbeat, RefusesAFileWithoutDrumsOrThatTheImportCouldNotRead) {
  const Bytes cases[] = {
      smf(0, 96, {cat({note(0, 0x90, 36, 100), note(0, 0x99, 36, 0), kEndOfTrack})}),
      cat({header(0, 1, 96), track(note(0, 0x99, 36, 100))}),  // no End of Track
      smf(0, 0xE728, {cat({note(0, 0x99, 36, 100), kEndOfTrack})}),
      {},
  };
  for (const Bytes& file : cases) {
    const CrashDownbeat crash = WithCrashOnDownbeat(file);
    EXPECT_EQ(crash.outcome, CrashOutcome::kRefused);
    EXPECT_TRUE(crash.file.empty());
  }
}

TEST(TheCrashOnTheDownbeat, KeepsEveryGeneratedGroovePlaceable) {
  // Generated files as the reader filters them (mended where that is
  // certain): the files an import reads.
  int changed = 0;
  for (uint32_t seed = 1; seed <= 3000; ++seed) {
    SmfGenerator generator(seed);
    const Load load(generator.File());
    if (load.rangeCheck || !load.pattern.loaded) continue;
    Bytes file = load.bytes();
    const StrictWalk walk = WalkStrictly(file.data(), file.size());
    if (walk.mendable) file = MendedFile(file.data(), walk);
    // The reader's own rules (its SysEx skip among them) may still refuse
    // a file the walk passes; only what it loads without a word counts.
    const Load again(file);
    if (again.rangeCheck || !again.pattern.loaded || !again.alerts().empty()) continue;
    const CrashDownbeat crash = WithCrashOnDownbeat(file);
    if (crash.outcome == CrashOutcome::kRefused) continue;
    SCOPED_TRACE(::testing::PrintToString(file));
    ExpectPlaceable(file, crash);
    if (HasFailure()) return;
    changed += crash.outcome != CrashOutcome::kAlreadyCrash;
  }
  EXPECT_GT(changed, 300);
}

}  // namespace
}  // namespace rw::groove::testing
