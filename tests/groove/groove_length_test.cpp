// The groove's length in measures: a last measure whose final drum event lies
// in its first 70 percent is a trailing stroke of the loop.
#include <gtest/gtest.h>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

GroovePattern Pattern(int32_t lastMeasure, int32_t lastTick, int32_t ticksPerMeasure = 1920) {
  GroovePattern pattern;
  pattern.drumNotesFound = true;
  pattern.lastDrumMeasure = lastMeasure;
  pattern.lastDrumTick = lastTick;
  pattern.timeSignature.ticksPerMeasure = ticksPerMeasure;
  return pattern;
}

TEST(TheGrooveLength, DropsALastMeasureUsedOnlyInItsFirst70Percent) {
  EXPECT_EQ(GrooveMeasures(Pattern(5, 960)), 4);   // 50 percent
  EXPECT_EQ(GrooveMeasures(Pattern(5, 1343)), 4);  // 69.9 percent
  EXPECT_EQ(GrooveMeasures(Pattern(5, 1344)), 5);  // exactly 70 percent
  EXPECT_EQ(GrooveMeasures(Pattern(5, 1919)), 5);
}

TEST(TheGrooveLength, NeverShortensAOneMeasureGroove) {
  EXPECT_EQ(GrooveMeasures(Pattern(1, 0)), 1);
}

TEST(TheGrooveLength, IsZeroWithoutDrumNotes) {
  GroovePattern none = Pattern(3, 0);
  none.drumNotesFound = false;
  EXPECT_EQ(GrooveMeasures(none), 0);
  EXPECT_EQ(GrooveMeasures(Pattern(0, 0)), 0);
}

TEST(TheGrooveLength, IsComputedWithoutOverflow) {
  EXPECT_EQ(GrooveMeasures(Pattern(0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF)), 0x7FFFFFFF);
}

TEST(TheGrooveLength, OfALoadedFourBarGrooveWithAPickUpStroke) {
  // Four bars of kicks, then a crash at 50 percent of bar 5.
  Bytes events;
  for (int bar = 0; bar < 4; ++bar)
    events = cat({events, note(bar == 0 ? 0 : 1920, 0x99, 36, 100)});
  events = cat({events, note(1920 + 960, 0x99, 49, 100), kEndOfTrack});
  Load load(smf(0, 480, {events}));
  EXPECT_EQ(load.pattern.lastDrumMeasure, 5);
  EXPECT_EQ(GrooveMeasures(load.pattern), 4);
}

}  // namespace
}  // namespace rw::groove::testing
