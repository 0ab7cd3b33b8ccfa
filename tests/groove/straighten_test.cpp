// Writing a played groove straight, on small grooves built by hand.
#include "straighten.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "drum_hits.h"
#include "recorded_events.h"
#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

// A 4/4 groove at 480 to the quarter.
const Bytes kConductor = cat({tempo(0, 500000), timeSignature(0, 4, 2), kEndOfTrack});
const GrooveMeter kFourFour{480, 4, 4, 480, 1920};

// What comes out walks and loads without a diagnostic.
StraightGroove Checked(StraightGroove straight) {
  EXPECT_TRUE(straight.written) << straight.problem;
  EXPECT_TRUE(WalkStrictly(straight.bytes.data(), straight.bytes.size()).wellFormed);
  const Load again(straight.bytes);
  EXPECT_TRUE(again.alerts().empty());
  EXPECT_FALSE(again.rangeCheck);
  return straight;
}

// The file as the plug-in straightens it: loaded, filtered, straightened.
StraightGroove StraightenLoaded(const Bytes& file) {
  const Load load(file);
  EXPECT_TRUE(load.alerts().empty());
  return Checked(Straighten(load.bytes(), MeterOf(load.pattern)));
}

std::vector<DrumHit> HitsOf(const Bytes& file) {
  std::vector<DrumHit> hits = DrumHitsOf(file).hits;
  for (DrumHit& hit : hits) hit.noteOff = kNoNoteOff;  // compared on their own
  return hits;
}

TEST(StraighteningAPlayedGroove, MovesEachStrokeOntoItsGridAndAStrokeBeforeTheBarlineOntoIt) {
  const Bytes drums = cat({note(10, 0x99, 36, 100),   // 10: the first beat
                           note(245, 0x99, 42, 90),   // 255: the "and"
                           note(90, 0x99, 42, 60),    // 345: the last sixteenth of beat 1
                           note(127, 0x99, 38, 110),  // 472: beat 2, early
                           note(1433, 0x99, 42, 80),  // 1905: just before the barline
                           note(30, 0x99, 36, 100),   // 1935: the next downbeat, late
                           kEndOfTrack});
  const StraightGroove straight = StraightenLoaded(smf(1, 480, {kConductor, drums}));
  const std::vector<DrumHit> expected = {{0, 36, 100},   {240, 42, 90},  {360, 42, 60},
                                         {480, 38, 110}, {1920, 42, 80}, {1920, 36, 100}};
  EXPECT_EQ(HitsOf(straight.bytes), expected);
  EXPECT_EQ(straight.report.onsetsBefore, 6u);
  EXPECT_EQ(straight.report.onsetsAfter, 6u);
  EXPECT_EQ(straight.report.strokesMoved, 6u);
  EXPECT_EQ(straight.report.strokesMerged, 0u);
  EXPECT_EQ(straight.report.beatGrids, std::vector<BeatGrid>(4, BeatGrid::kSixteenths));
}

TEST(StraighteningAPlayedGroove, MergesStrokesOfOneKeyOnOnePointIntoTheLoudest) {
  const Bytes drums = cat({note(455, 0x99, 38, 40),  // 455: a flam's grace stroke
                           note(23, 0x99, 38, 110),  // 478: its main stroke
                           note(0, 0x99, 36, 90),    // 478: another key on the point stays
                           note(472, 0x99, 42, 70),  // 950: two hi-hats, one on the edge
                           note(20, 0x99, 22, 100),  // 970
                           note(20, 0x99, 38, 50),   // 990: a softer stroke after the main one
                           note(5, 0x99, 38, 50),    // 995: and one as loud
                           kEndOfTrack});
  const StraightGroove straight = StraightenLoaded(smf(1, 480, {kConductor, drums}));
  const std::vector<DrumHit> expected = {
      {480, 38, 110}, {480, 36, 90}, {960, 42, 100}, {960, 38, 50}};
  EXPECT_EQ(HitsOf(straight.bytes), expected);
  EXPECT_EQ(straight.report.onsetsBefore, 7u);
  EXPECT_EQ(straight.report.onsetsAfter, 4u);
  EXPECT_EQ(straight.report.strokesMerged, 3u);
}

TEST(StraighteningAPlayedGroove, GivesAFlamsGraceNoteNoSayInTheGridOfTheBeatBefore) {
  // Four measures of hi-hats swung 2:1 in beat 1, and a snare flam on beat 2
  // whose grace note falls where a sixteenth of beat 1 would be.
  Bytes drums;
  uint64_t previous = 0;
  std::vector<DrumHit> expected;
  for (uint64_t measure = 0; measure < 4; ++measure) {
    const uint64_t bar = measure * 1920;
    const DrumHit played[] = {
        {bar, 42, 80}, {bar + 320, 42, 80}, {bar + 410, 38, 30}, {bar + 470, 38, 110}};
    for (const DrumHit& hit : played) {
      drums = cat({drums, note(uint32_t(hit.tick - previous), 0x99, hit.key, hit.velocity)});
      previous = hit.tick;
    }
    expected.insert(expected.end(), {{bar, 42, 80}, {bar + 320, 42, 80}, {bar + 480, 38, 110}});
  }
  const StraightGroove straight =
      Checked(Straighten(smf(1, 480, {kConductor, cat({drums, kEndOfTrack})}), kFourFour));
  EXPECT_EQ(straight.report.beatGrids[0], BeatGrid::kEighthTriplets);
  EXPECT_EQ(HitsOf(straight.bytes), expected);
}

TEST(StraighteningAPlayedGroove,
     WritesTheKitsEdgeKeysAsHiHatsAndReportsKeysGeneralMidiDoesNotName) {
  const Bytes drums = cat({note(5, 0x99, 22, 90), note(240, 0x99, 26, 90),  // 5, 245
                           note(240, 0x99, 20, 90), note(0, 0x99, 82, 90),  // 485
                           note(240, 0x99, 26, 90), note(240, 0x99, 35, 90), kEndOfTrack});
  const StraightGroove straight = StraightenLoaded(smf(1, 480, {kConductor, drums}));
  const std::vector<DrumHit> expected = {{0, 42, 90},   {240, 46, 90}, {480, 20, 90},
                                         {480, 82, 90}, {720, 46, 90}, {960, 35, 90}};
  EXPECT_EQ(HitsOf(straight.bytes), expected);
  EXPECT_EQ(straight.report.mappedKeys, (std::vector<DrumKeyMapping>{{22, 42}, {26, 46}}));
  EXPECT_EQ(straight.report.keysOutsideGeneralMidi, (std::vector<uint8_t>{20, 82}));
}

TEST(StraighteningAPlayedGroove, LeavesEveryOtherEventAtItsTickInItsTrackAndItsOrder) {
  const Bytes conductor = cat({tempo(0, 500000),
                               timeSignature(0, 4, 2),
                               {0x81, 0x0D, 0xFF, 0x06, 0x01, 'A'},  // 141: a marker
                               tempo(0, 400000),                     // 141
                               kEndOfTrack});
  const Bytes drums = cat({{0x00, 0xFF, 0x03, 0x04, 'K', 'i', 't', 's'},            // track name
                           {0x00, 0xF0, 0x06, 0x43, 0x10, 0x4C, 0x00, 0x00, 0xF7},  // SysEx
                           note(13, 0x99, 36, 100),                                 // 13
                           {0x00, 0xB9, 0x04, 0x30},        // 13: hi-hat pedal
                           {0x81, 0x6F, 0xE9, 0x00, 0x40},  // 252: pitch bend
                           note(0, 0x99, 42, 80),           // 252
                           note(30, 0x89, 36, 64),          // 282: off
                           {0x00, 0xB9, 0x04, 0x50},        // 282
                           kEndOfTrack});
  // A bass line the filter silences into note-offs of key 0: none are kept.
  const Bytes bass =
      cat({{0x00, 0xC0, 0x21}, note(0, 0x90, 40, 90), note(480, 0x80, 40, 64), kEndOfTrack});
  const Bytes file = smf(1, 480, {conductor, drums, bass});
  const Load load(file);
  const StraightGroove straight = StraightenLoaded(file);
  EXPECT_EQ(EventsKeptInPlace(straight.bytes), EventsKeptInPlace(load.bytes()));
  EXPECT_FALSE(EventsKeptInPlace(straight.bytes).empty());
  for (const RecordedEvent& e : RecordEvents(straight.bytes)) {
    EXPECT_FALSE(e.bytes[0] == 0x89 && e.bytes[1] == 0) << "a silenced event at " << e.tick;
  }
}

TEST(StraighteningAPlayedGroove, ReleasesEachStrokeAfterItsLengthBeforeTheNextOfItsKey) {
  const Bytes drums = cat({note(10, 0x99, 38, 100),
                           note(100, 0x89, 38, 64),  // 10, held 100: 0 to 100
                           note(15, 0x99, 36, 100),
                           note(0, 0x99, 36, 0),  // 125, released at once: 120 to 121
                           note(110, 0x99, 42, 90),
                           note(250, 0x99, 42, 80),           // 235 and 485: the first to 480
                           note(400, 0x89, 42, 64),           // 885: ends the second: 480 to 880
                           {0x00, 0xB9, 0x04, 0x10},          // 885
                           note(0, 0x89, 42, 64),             // 885: ends nothing
                           note(100, 0x99, 49, 100),          // 985, never released
                           {0x81, 0x70, 0xFF, 0x2F, 0x00}});  // End of Track at 1225
  const StraightGroove straight = StraightenLoaded(smf(1, 480, {kConductor, drums}));
  std::vector<std::pair<uint64_t, Bytes>> notes;
  for (const RecordedEvent& e : RecordEvents(straight.bytes)) {
    if (e.track == 2) notes.push_back({e.tick, e.bytes});
  }
  // Released by note-ons of velocity 0.
  const std::vector<std::pair<uint64_t, Bytes>> expected = {
      {0, {0x99, 38, 100}},   {100, {0x99, 38, 0}},  {120, {0x99, 36, 100}},
      {121, {0x99, 36, 0}},   {240, {0x99, 42, 90}}, {480, {0x99, 42, 0}},
      {480, {0x99, 42, 80}},  {880, {0x99, 42, 0}},  {885, {0xB9, 4, 0x10}},
      {960, {0x99, 49, 100}}, {1200, {0x99, 49, 0}}, {1225, {0xFF, 0x2F, 0x00}}};
  EXPECT_EQ(notes, expected);
}

TEST(StraighteningAPlayedGroove, PutsNoteOffsFirstAndNoteOnsLastAtOneTick) {
  const Bytes drums = cat({note(245, 0x99, 36, 100),  // 245 → 240, held to 545
                           note(230, 0x99, 38, 100),  // 475 → 480
                           {0x05, 0xB9, 0x04, 0x10},  // 480
                           note(5, 0x99, 36, 90),     // 485 → 480
                           note(60, 0x89, 36, 64),    // 545
                           note(0, 0x89, 36, 64),     // 545
                           kEndOfTrack});
  const StraightGroove straight = StraightenLoaded(smf(1, 480, {kConductor, drums}));
  std::vector<Bytes> atTheBeat;
  for (const RecordedEvent& e : RecordEvents(straight.bytes)) {
    if (e.track == 2 && e.tick == 480) atTheBeat.push_back(e.bytes);
  }
  // The first kick is released where the second is struck.
  EXPECT_EQ(atTheBeat,
            (std::vector<Bytes>{{0x99, 36, 0}, {0xB9, 4, 0x10}, {0x99, 38, 100}, {0x99, 36, 90}}));
}

// The note-ons of channel 10 (strokes and releases) of the drum track.
std::vector<std::pair<uint64_t, Bytes>> DrumNoteOns(const Bytes& file) {
  std::vector<std::pair<uint64_t, Bytes>> notes;
  for (const RecordedEvent& e : RecordEvents(file)) {
    if (e.track == 2 && e.bytes[0] == 0x99) notes.push_back({e.tick, e.bytes});
  }
  return notes;
}

TEST(StraighteningAPlayedGroove, ShortensOrDropsTheReleaseOfAKeysLastStrokeAmongOthersWaiting) {
  // A snare released late is cut by its next stroke, which lands earlier,
  // and its release moves before the hi-hat's that waited ahead of it.
  const Bytes cut = cat({note(105, 0x99, 38, 60),  // 105 → 120, released at 236: 251
                         note(131, 0x89, 38, 64),
                         note(0, 0x99, 42, 70),  // 236 → 240, released at 237: 241
                         note(1, 0x89, 42, 64),
                         note(7, 0x99, 38, 90),  // 244 → 240: the first snare ends there
                         {0x81, 0x6C, 0xFF, 0x2F, 0x00}});  // End of Track at 480
  EXPECT_EQ(DrumNoteOns(Checked(Straighten(smf(1, 480, {kConductor, cut}), kFourFour)).bytes),
            (std::vector<std::pair<uint64_t, Bytes>>{{120, {0x99, 38, 60}},
                                                     {240, {0x99, 38, 0}},
                                                     {240, {0x99, 42, 70}},
                                                     {240, {0x99, 38, 90}},
                                                     {241, {0x99, 42, 0}},
                                                     {476, {0x99, 38, 0}}}));
  // A soft snare released, then a louder one on its point: the soft one and
  // its release are gone, the hi-hat's release behind it stays.
  const Bytes merged = cat({note(430, 0x99, 42, 70),  // 430 → 480, released at 476: 526
                            note(40, 0x99, 38, 50),   // 470 → 480, released at 475: 485
                            note(5, 0x89, 38, 64), note(1, 0x89, 42, 64),
                            note(14, 0x99, 38, 100),  // 490 → 480, louder
                            note(50, 0x89, 38, 64),   // 540: 530
                            kEndOfTrack});
  EXPECT_EQ(DrumNoteOns(Checked(Straighten(smf(1, 480, {kConductor, merged}), kFourFour)).bytes),
            (std::vector<std::pair<uint64_t, Bytes>>{{480, {0x99, 42, 70}},
                                                     {480, {0x99, 38, 100}},
                                                     {526, {0x99, 42, 0}},
                                                     {530, {0x99, 38, 0}}}));
}

TEST(StraighteningAPlayedGroove, WritesAWideWindowOfStrokesAndControllersInOrder) {
  // At 32,760 ticks to the quarter a stroke moves up to 5,460 ticks: every
  // stroke and controller of the first 5,000 ticks is held at once. Strokes
  // every 40 ticks on 47 keys in turn, controllers every 10.
  constexpr int32_t kDivision = 32760;
  const GrooveMeter meter{kDivision, 4, 4, kDivision, 4 * kDivision};
  std::vector<std::pair<uint64_t, Bytes>> played;
  std::map<std::pair<uint64_t, uint8_t>, std::pair<int, uint8_t>> loudest;  // by point and key
  for (int i = 0; i < 125; ++i) {
    const uint64_t tick = 20 + 40 * uint64_t(i);
    const auto key = uint8_t(35 + i % 47);
    const auto velocity = uint8_t(1 + (i * 37) % 126);
    played.push_back({tick, {0x99, key, velocity}});
    // Half a sixteenth is 4,095 ticks.
    const uint64_t point = tick <= 4095 ? 0 : 8190;
    auto [at, first] = loudest.try_emplace({point, key}, i, velocity);
    if (!first && velocity > at->second.second) at->second = {i, velocity};
  }
  for (uint64_t tick = 0; tick <= 5000; tick += 10) played.push_back({tick, {0xB9, 4, 9}});
  std::stable_sort(played.begin(), played.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  Bytes drums;
  uint64_t previous = 0;
  for (const auto& [tick, bytes] : played) {
    drums = cat({drums, vlq(uint32_t(tick - previous)), bytes});
    previous = tick;
  }
  const StraightGroove straight =
      Checked(Straighten(smf(0, uint16_t(kDivision), {cat({drums, kEndOfTrack})}), meter));

  // The strokes kept, by point and then in the order they were played.
  std::vector<std::tuple<uint64_t, int, uint8_t, uint8_t>> kept;
  for (const auto& [pointAndKey, stroke] : loudest) {
    kept.push_back({pointAndKey.first, stroke.first, pointAndKey.second, stroke.second});
  }
  std::sort(kept.begin(), kept.end());
  std::vector<DrumHit> expected;
  for (const auto& [point, order, key, velocity] : kept) expected.push_back({point, key, velocity});
  EXPECT_EQ(HitsOf(straight.bytes), expected);
  uint64_t controllers = 0;
  uint64_t last = 0;
  for (const RecordedEvent& e : RecordEvents(straight.bytes)) {
    if (e.bytes[0] != 0xB9) continue;
    EXPECT_EQ(e.tick, controllers * 10);
    EXPECT_GE(e.tick, last);
    last = e.tick;
    ++controllers;
  }
  EXPECT_EQ(controllers, 501u);
}

TEST(StraighteningAPlayedGroove, NeverRewritesAProgrammedGroove) {
  Bytes drums;
  for (int i = 0; i < 32; ++i) {  // sixteenths
    drums = cat({drums, note(i == 0 ? 0 : 120, 0x99, 42, 90), note(0, 0x89, 42, 64)});
  }
  // Two strokes 20 ticks from any point: 94 % of the strokes are on the grid.
  drums = cat({drums, note(20, 0x99, 38, 100), note(80, 0x99, 38, 100), kEndOfTrack});
  const Load programmed(smf(1, 480, {kConductor, drums}));
  const TimingStep step = StraightenIfPlayed(programmed.bytes(), MeterOf(programmed.pattern));
  ASSERT_TRUE(step.timing);
  EXPECT_FALSE(step.timing->played);
  EXPECT_EQ(step.timing->strokes, 34u);
  EXPECT_FALSE(step.straight) << "the command places the filtered file as it stands";

  const Bytes played = smf(1, 480, {kConductor, cat({note(20, 0x99, 36, 100), kEndOfTrack})});
  const TimingStep straightened = StraightenIfPlayed(played, kFourFour);
  ASSERT_TRUE(straightened.timing && straightened.straight);
  EXPECT_TRUE(straightened.timing->played);
  EXPECT_EQ(HitsOf(straightened.straight->bytes), (std::vector<DrumHit>{{0, 36, 100}}));
}

TEST(StraighteningAPlayedGroove, RefusesABrokenFileOrAMeterNotItsOwnWithoutACrash) {
  const Bytes drums = cat({{0x00, 0xFF, 0x01, 0x03, 'a', 'b', 'c'},
                           note(10, 0x99, 36, 100),
                           {0x00, 0xF0, 0x02, 0x01, 0xF7},
                           note(20, 0x89, 36, 64),
                           {0x05, 0xB9, 0x04, 0x10},
                           {0x00, 0x26, 0x50},
                           kEndOfTrack});
  const Bytes file = smf(1, 480, {kConductor, drums});
  // Every cut of the file, and every byte of it changed: refused with a
  // reason, or straightened into a file that walks.
  for (std::size_t size = 0; size < file.size(); ++size) {
    const StraightGroove cut =
        Straighten(Bytes(file.begin(), file.begin() + long(size)), kFourFour);
    EXPECT_FALSE(cut.written) << size;
    EXPECT_FALSE(cut.problem.empty()) << size;
  }
  for (std::size_t at = 0; at < file.size(); ++at) {
    for (uint8_t value : {0x00, 0x2F, 0x7F, 0x80, 0x99, 0xF7, 0xFF}) {
      Bytes changed = file;
      changed[at] = value;
      const TimingStep step = StraightenIfPlayed(changed, kFourFour);
      if (step.straight && step.straight->written) {
        EXPECT_TRUE(
            WalkStrictly(step.straight->bytes.data(), step.straight->bytes.size()).wellFormed)
            << "byte " << at << " set to " << int(value);
      }
    }
  }
  for (const GrooveMeter& meter :
       {GrooveMeter{96, 4, 4, 96, 384}, GrooveMeter{480, 0, 4, 480, 0}, GrooveMeter{}}) {
    const StraightGroove straight = Straighten(file, meter);
    EXPECT_FALSE(straight.written);
    EXPECT_FALSE(straight.problem.empty());
  }
}

}  // namespace
}  // namespace rw::groove::testing
