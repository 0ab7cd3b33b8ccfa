// Straightening played performances of the authored grooves gives back what
// was authored: every stroke where it belongs, within one stroke per
// measure, the kit's edge keys gone and everything else where it was.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "drum_hits.h"
#include "played_groove_generator.h"
#include "recorded_events.h"
#include "straighten.h"

namespace rw::groove::testing {
namespace {

struct Straightened {
  Bytes filtered;  // the played groove as the reader leaves it
  StraightGroove straight;
  GroovePattern before;
  GroovePattern after;  // of the straightened groove, loaded again
};

Straightened StraightenPerformance(const PlayedGroove& played, const std::string& what) {
  Straightened result;
  const Load load(played.file);
  EXPECT_TRUE(load.alerts().empty()) << what;
  result.filtered = load.bytes();
  result.before = load.pattern;
  const TimingStep step = StraightenIfPlayed(result.filtered, MeterOf(load.pattern));
  EXPECT_TRUE(step.timing && step.timing->played) << what;
  if (!step.straight) return result;
  result.straight = *step.straight;
  EXPECT_TRUE(result.straight.written) << what << ": " << result.straight.problem;
  const Bytes& bytes = result.straight.bytes;
  EXPECT_TRUE(WalkStrictly(bytes.data(), bytes.size()).wellFormed) << what;
  const Load again(bytes);
  EXPECT_TRUE(again.alerts().empty()) << what;
  result.after = again.pattern;
  return result;
}

// Strokes missing from the straightened groove plus strokes it has that
// were not authored, compared by key and tick.
int Difference(const std::vector<TrueStroke>& truth, const std::vector<DrumHit>& hits) {
  std::map<TrueStroke, int> count;
  for (const TrueStroke& stroke : truth) ++count[stroke];
  for (const DrumHit& hit : hits) --count[{hit.tick, hit.key}];
  int difference = 0;
  for (const auto& [stroke, n] : count) difference += std::abs(n);
  return difference;
}

TEST(StraighteningGeneratedPerformances, GivesBackTheAuthoredGrooveWithinOneStrokePerMeasure) {
  for (const AuthoredGroove& groove : AuthoredGrooves()) {
    for (uint16_t division : {480, 96}) {
      for (uint32_t seed = 1; seed <= 5; ++seed) {
        const std::string what =
            groove.name + " at " + std::to_string(division) + ", seed " + std::to_string(seed);
        Performance performance;
        performance.seed = seed;
        performance.division = division;
        const PlayedGroove played = PlayGroove(groove, performance);
        const Straightened s = StraightenPerformance(played, what);
        const std::vector<DrumHit> hits = DrumHitsOf(s.straight.bytes).hits;
        EXPECT_LE(Difference(played.truth, hits), played.measures) << what;
        for (const DrumHit& hit : hits) {
          EXPECT_TRUE(hit.key != 22 && hit.key != 26) << what << ": key " << int(hit.key);
        }
        const StraighteningReport& report = s.straight.report;
        EXPECT_EQ(report.onsetsAfter, hits.size()) << what;
        EXPECT_LE(report.onsetsAfter, report.onsetsBefore) << what;
        EXPECT_EQ(report.onsetsBefore, DrumHitsOf(s.filtered).hits.size()) << what;
        EXPECT_EQ(EventsKeptInPlace(s.straight.bytes), EventsKeptInPlace(s.filtered)) << what;
        EXPECT_EQ(GrooveMeasures(s.after), GrooveMeasures(s.before)) << what;
      }
    }
  }
}

TEST(StraighteningGeneratedPerformances, WritesStrokesPlayedBeforeTheirBarlineOnIt) {
  for (const AuthoredGroove& groove : AuthoredGrooves()) {
    Performance performance;
    performance.seed = 7;
    const PlayedGroove played = PlayGroove(groove, performance);
    ASSERT_GT(played.earlyDownbeats, 0) << groove.name;
    const Straightened s = StraightenPerformance(played, groove.name);
    const uint64_t measure = uint64_t(s.before.timeSignature.ticksPerMeasure);
    std::multiset<TrueStroke> written;
    for (const DrumHit& hit : DrumHitsOf(s.straight.bytes).hits)
      written.insert({hit.tick, hit.key});
    for (const TrueStroke& stroke : played.truth) {
      if (stroke.tick % measure != 0) continue;
      EXPECT_TRUE(written.count(stroke))
          << groove.name << ": key " << int(stroke.key) << " at " << stroke.tick;
    }
  }
}

TEST(StraighteningGeneratedPerformances, WritesSwing2To1AsTripletsAnd3To1AsSixteenths) {
  using enum Swing;
  using enum BeatGrid;
  const struct {
    const char* groove;
    std::vector<Swing> swing;
    std::vector<BeatGrid> grids;
  } cases[] = {
      {"rock-eighths",
       {kTwoToOne, kThreeToOne, kStraight, kTwoToOne},
       {kEighthTriplets, kSixteenths, kSixteenths, kEighthTriplets}},
      {"waltz",
       {kThreeToOne, kTwoToOne, kTwoToOne},
       {kSixteenths, kEighthTriplets, kEighthTriplets}},
      {"shuffle", {}, {kEighthTriplets, kEighthTriplets, kEighthTriplets, kEighthTriplets}},
      {"funk-sixteenths", {}, {kSixteenths, kSixteenths, kSixteenths, kSixteenths}},
      {"six-eight", {}, {kSixteenths, kSixteenths}},
  };
  for (const auto& c : cases) {
    for (uint32_t seed = 1; seed <= 5; ++seed) {
      Performance performance;
      performance.seed = seed;
      performance.swing = c.swing;
      const PlayedGroove played = PlayGroove(*FindAuthoredGroove(c.groove), performance);
      const Straightened s = StraightenPerformance(played, c.groove);
      EXPECT_EQ(s.straight.report.beatGrids, c.grids) << c.groove << ", seed " << seed;
    }
  }
}

}  // namespace
}  // namespace rw::groove::testing
