// The drum grid as text: the step chosen, the rows a drummer reads, the
// marks, and what is left out.
#include "drum_grid_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "gm_drum_names.h"
#include "smf_generator.h"
#include "smf_walk.h"

namespace rw::groove::testing {
namespace {

using Lines = std::vector<std::string>;

struct Hit {
  uint32_t tick;
  uint8_t key;
  uint8_t velocity;
};

// One track in the given meter: each hit a note-on with its note-off a few
// ticks later.
Bytes DrumGroove(uint16_t division, uint8_t numerator, uint8_t power, std::vector<Hit> hits) {
  std::vector<std::pair<uint32_t, Bytes>> events;
  for (const Hit& hit : hits) {
    events.push_back({hit.tick, {0x99, hit.key, hit.velocity}});
    events.push_back({hit.tick + 5, {0x89, hit.key, 0}});
  }
  std::stable_sort(events.begin(), events.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  Bytes data = timeSignature(0, numerator, power);
  uint32_t now = 0;
  for (const auto& [tick, bytes] : events) {
    data = cat({data, vlq(tick - now), bytes});
    now = tick;
  }
  return smf(0, division, {cat({data, kEndOfTrack})});
}

// Hits written as the pattern descriptions write them: a mark per step of
// `stepTicks`, X loud, x normal, o a ghost; bar lines are skipped.
std::vector<Hit> Pattern(uint32_t stepTicks,
                         std::initializer_list<std::pair<uint8_t, const char*>> rows) {
  std::vector<Hit> hits;
  for (const auto& [key, marks] : rows) {
    uint32_t step = 0;
    for (const char* c = marks; *c != '\0'; ++c) {
      if (*c == '|') continue;
      if (*c != '.')
        hits.push_back({step * stepTicks, key, uint8_t(*c == 'X' ? 112 : *c == 'x' ? 88 : 42)});
      ++step;
    }
  }
  return hits;
}

// The grid of the file the import would read, in the meter the reader gives.
DrumGridText GridOf(const Bytes& file, int32_t measures, std::size_t width = 200) {
  const Load load(file);
  EXPECT_TRUE(load.pattern.loaded);
  return DrumGridTextOf(load.bytes(), load.pattern, measures, width);
}

TEST(TheDrumGrid, ShowsEachMeterOnTheCoarsestStepItsStrokesNeed) {
  const struct {
    const char* why;
    Bytes file;
    int32_t measures;
    GridStep step;
    Lines lines;
  } cases[] = {
      {"rock in 4/4 on sixteenths",
       DrumGroove(480, 4, 2,
                  Pattern(120, {{42, "X.x.X.x.X.x.X.x.|X.x.X.x.X.x.X.x."},
                                {38, "....X.......X...|....X.......X..."},
                                {36, "X......xX.......|X......xX.....x."}})),
       2,
       GridStep::kSixteenths,
       {"HH   X.x.X.x.X.x.X.x.|X.x.X.x.X.x.X.x.", "SN   ....X.......X...|....X.......X...",
        "BD   X......xX.......|X......xX.....x."}},
      // Every track's strokes count, drums after a conductor track too.
      {"2/4 in eighths when nothing lies between them",
       smf(1, 96,
           {cat({timeSignature(0, 2, 2), kEndOfTrack}),
            cat({note(0, 0x99, 42, 90), note(0, 0x99, 36, 90), note(48, 0x99, 42, 90),
                 note(48, 0x99, 42, 90), note(0, 0x99, 38, 100), note(48, 0x99, 42, 90),
                 kEndOfTrack})}),
       1,
       GridStep::kEighths,
       {"HH   xxxx", "SN   ..X.", "BD   x..."}},
      {"a shuffle on eighth triplets",
       DrumGroove(480, 4, 2,
                  Pattern(160, {{51, "x.xx.xx.xx.x"},
                                {38, "...X.....X.."},
                                {36, "X.....X....."},
                                {44, "...x.....x.."}})),
       1,
       GridStep::kEighthTriplets,
       {"RD   x.xx.xx.xx.x", "SN   ...X.....X..", "BD   X.....X.....", "PH   ...x.....x.."}},
      {"6/8 in eighths",
       DrumGroove(
           480, 6, 3,
           Pattern(240, {{42, "xxxxxx|xxxxxx"}, {38, "...X..|...X.."}, {36, "X.....|X..X.."}})),
       2,
       GridStep::kEighths,
       {"HH   xxxxxx|xxxxxx", "SN   ...X..|...X..", "BD   X.....|X..X.."}},
      {"7/8 with its short last beat",
       DrumGroove(
           480, 7, 3,
           Pattern(120, {{42, "x.x.x.x.x.x.x."}, {38, "....X.....X..."}, {36, "X....x..X....."}})),
       1,
       GridStep::kSixteenths,
       {"HH   x.x.x.x.x.x.x.", "SN   ....X.....X...", "BD   X....x..X....."}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const DrumGridText grid = GridOf(c.file, c.measures);
    EXPECT_EQ(grid.step, c.step);
    EXPECT_TRUE(grid.exact);
    EXPECT_EQ(grid.measures, c.measures);
    EXPECT_EQ(grid.lines, c.lines);
  }
}

TEST(TheDrumGrid, NeverTakesTripletsWhereTheyDoNotDivideTheBeat) {
  // A stroke a third of a quarter in goes to its nearest thirty-second, in
  // 6/8's dotted beats as in 7/8's last eighth.
  const DrumGridText sixEight = GridOf(DrumGroove(480, 6, 3, {{0, 36, 90}, {160, 42, 90}}), 1);
  EXPECT_EQ(sixEight.step, GridStep::kThirtySeconds);
  EXPECT_FALSE(sixEight.exact);
  EXPECT_EQ(sixEight.lines,
            (Lines{"HH   ...x....................", "BD   x......................."}));
  const DrumGridText sevenEight = GridOf(DrumGroove(480, 7, 3, {{0, 36, 90}, {320, 42, 90}}), 1);
  EXPECT_EQ(sevenEight.step, GridStep::kThirtySeconds);
  EXPECT_FALSE(sevenEight.exact);
}

TEST(TheDrumGrid, MarksAccentsNormalStrokesAndGhostNotesByVelocity) {
  // A funk groove: ghost notes between the backbeats. The marks' bounds:
  // 100 is an accent, 99 and 60 are normal, 59 is a ghost.
  std::vector<Hit> hits = Pattern(120, {{42, "xxxxxxxxxxxxxxxx"}, {36, "X.X....X..X....."}});
  for (const Hit hit : std::vector<Hit>{{480, 38, 100},
                                        {1440, 38, 127},
                                        {720, 38, 59},
                                        {840, 38, 30},
                                        {1200, 38, 1},
                                        {1800, 38, 99},
                                        {1680, 38, 60}}) {
    hits.push_back(hit);
  }
  const DrumGridText grid = GridOf(DrumGroove(480, 4, 2, hits), 1);
  EXPECT_EQ(grid.step, GridStep::kSixteenths);
  const Lines expected = {"HH   xxxxxxxxxxxxxxxx", "SN   ....X.oo..o.X.xx",
                          "BD   X.X....X..X....."};
  EXPECT_EQ(grid.lines, expected);
}

TEST(TheDrumGrid, OrdersTheRowsAsADrummerReadsThem) {
  // Keys given from low to high: the rows come out top to bottom of a drum
  // part, the keys General MIDI does not name by their numbers among the
  // other instruments, the feet last.
  std::vector<Hit> hits;
  const uint8_t keys[] = {22, 27, 35, 36, 37, 38, 41, 42, 44, 45, 46, 49, 50, 51, 56, 57, 127};
  for (const uint8_t key : keys) hits.push_back({0, key, 90});
  const DrumGridText grid = GridOf(DrumGroove(480, 4, 2, hits), 1);
  std::vector<std::string> names;
  for (const std::string& line : grid.lines) names.push_back(line.substr(0, 5));
  const Lines expected = {"CR   ", "CR2  ", "RD   ", "HH   ", "OH   ", "HT   ",
                          "LT   ", "LFT  ", "SN   ", "SS   ", "k22  ", "k27  ",
                          "CB   ", "k127 ", "BD   ", "ABD  ", "PH   "};
  EXPECT_EQ(names, expected);
  EXPECT_EQ(DrumKeyShortName(81), "OTR");
  EXPECT_EQ(DrumKeyShortName(34), "k34");
  EXPECT_EQ(DrumKeyShortName(82), "k82");
}

TEST(TheDrumGrid, NamesEveryKeyAsThePatternDescriptionsDo) {
  std::ifstream in(RW_GROOVE_FORMAT);
  std::stringstream text;
  text << in.rdbuf();
  const std::string source = text.str();
  const std::size_t table = source.find("DRUM_KEYS = {");
  ASSERT_NE(table, std::string::npos);
  // Entries of the form "SN": 38, up to the table's closing brace.
  std::istringstream keys(source.substr(table + 13, source.find('}', table) - table - 13));
  int named = 0;
  for (std::string name, key; keys >> name >> key; ++named) {
    ASSERT_GE(name.size(), 4u) << name;
    EXPECT_EQ(DrumKeyShortName(std::stoi(key)), name.substr(1, name.size() - 3)) << name;
  }
  EXPECT_EQ(named, 47);
}

TEST(TheDrumGrid, DropsWholeMeasuresThatDoNotFitTheWidth) {
  const Bytes file = DrumGroove(
      480, 4, 2, Pattern(120, {{42, "x.x.x.x.x.x.x.xx|x.x.x.x.x.x.x.xx|x.x.x.x.x.x.x.xx"}}));
  // Two measures of sixteenths take 5 + 16 + 1 + 16 = 38 characters.
  for (const std::size_t width : {std::size_t{38}, std::size_t{54}}) {
    const DrumGridText grid = GridOf(file, 3, width);
    EXPECT_EQ(grid.measures, 2) << width;
    EXPECT_EQ(grid.lines, (Lines{"HH   x.x.x.x.x.x.x.xx|x.x.x.x.x.x.x.xx"}));
  }
  EXPECT_EQ(GridOf(file, 3, 55).measures, 3);
  const DrumGridText none = GridOf(file, 3, 20);
  EXPECT_EQ(none.measures, 0);
  EXPECT_TRUE(none.lines.empty());

  // Measure 2 needs thirty-seconds; without it, eighths show more.
  const Bytes roll =
      DrumGroove(480, 4, 2, {{0, 36, 90}, {240, 42, 90}, {1920, 38, 90}, {1980, 38, 90}});
  const DrumGridText wide = GridOf(roll, 2, 70);
  EXPECT_EQ(wide.measures, 2);
  EXPECT_EQ(wide.step, GridStep::kThirtySeconds);
  const DrumGridText narrow = GridOf(roll, 2, 69);
  EXPECT_EQ(narrow.measures, 1);
  EXPECT_EQ(narrow.step, GridStep::kEighths);
  EXPECT_EQ(narrow.lines, (Lines{"HH   .x......", "BD   x......."}));
}

TEST(TheDrumGrid, PutsPlayedStrokesOnTheNearestThirtySecond) {
  // 60 ticks a thirty-second. 29 rounds down, 31 up, 30 is a tie and goes
  // to the earlier step; one played just before the next barline stays in
  // its measure; the louder of two strokes in one cell shows.
  const DrumGridText grid = GridOf(DrumGroove(480, 4, 2,
                                              {{29, 42, 70},
                                               {31, 38, 70},
                                               {90, 36, 70},
                                               {1915, 36, 70},
                                               {125, 42, 40},
                                               {118, 42, 110}}),
                                   1);
  EXPECT_EQ(grid.step, GridStep::kThirtySeconds);
  EXPECT_FALSE(grid.exact);
  const Lines expected = {"HH   x.X.............................",
                          "SN   .x..............................",
                          "BD   .x.............................x"};
  EXPECT_EQ(grid.lines, expected);
}

TEST(TheDrumGrid, KeepsEveryLineWithinTheWidthOnGeneratedGrooves) {
  int shown = 0;
  for (uint32_t seed = 1; seed <= 2000; ++seed) {
    SmfGenerator generator(seed);
    const Load load(generator.File());
    if (load.rangeCheck || !load.pattern.loaded) continue;
    Bytes file = load.bytes();  // as the import reads it: mended where that is certain
    const StrictWalk walk = WalkStrictly(file.data(), file.size());
    if (walk.mendable) file = MendedFile(file.data(), walk);
    const std::size_t width = 20 + seed % 100;
    const DrumGridText grid = DrumGridTextOf(file, load.pattern, 1 + int32_t(seed % 4), width);
    SCOPED_TRACE(::testing::PrintToString(file));
    ASSERT_LE(grid.measures, 1 + int32_t(seed % 4));
    if (grid.lines.empty()) continue;
    ++shown;
    for (const std::string& line : grid.lines) {
      ASSERT_LE(line.size(), width);
      ASSERT_EQ(line.size(), grid.lines[0].size());
      EXPECT_EQ(std::count(line.begin(), line.end(), '|'), grid.measures - 1);
      EXPECT_EQ(line.find_first_not_of(".xXo|", kDrumGridNameWidth), std::string::npos) << line;
      EXPECT_NE(line.find_first_of("xXo", kDrumGridNameWidth), std::string::npos) << line;
    }
  }
  EXPECT_GT(shown, 200);
}

TEST(TheDrumGrid, ShowsNothingOfAFileTheImportCouldNotRead) {
  const Bytes good = DrumGroove(480, 4, 2, {{0, 36, 90}});
  const Load load(good);
  Bytes broken = load.bytes();
  broken.pop_back();  // End of Track cut short
  EXPECT_TRUE(DrumGridTextOf(broken, load.pattern, 1, 80).lines.empty());
  GroovePattern noMeter = load.pattern;
  noMeter.timeSignature.ticksPerMeasure += 1;
  EXPECT_TRUE(DrumGridTextOf(load.bytes(), noMeter, 1, 80).lines.empty());
  EXPECT_TRUE(DrumGridTextOf(load.bytes(), load.pattern, 0, 80).lines.empty());
}

}  // namespace
}  // namespace rw::groove::testing
