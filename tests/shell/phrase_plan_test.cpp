// Where the main groove, the fills and the ending go.
#include "phrase_plan.h"

#include <gtest/gtest.h>

namespace {

using rw::shell::PartKind;
using rw::shell::Placement;
using rw::shell::PlanPlacements;

constexpr PartKind M = PartKind::kMain;
constexpr PartKind V = PartKind::kVariation;
constexpr PartKind C = PartKind::kCountIn;
constexpr PartKind F = PartKind::kFill;
constexpr PartKind E = PartKind::kEnding;

std::string Show(const std::vector<Placement>& plan) {
  static const char* const kNames[] = {"main ", "variation ", "count-in ", "fill ", "ending "};
  std::string out;
  for (const Placement& p : plan) {
    out += kNames[static_cast<int>(p.part)] + std::to_string(p.firstMeasure) + "-" +
           std::to_string(p.lastMeasure) + (p.crash ? " crash" : "") + "; ";
  }
  return out;
}

TEST(APhrasePlan, PlacesFillsEveryPhraseAndTheEndingLast) {
  const struct {
    const char* what;
    std::uint32_t first, last;
    rw::shell::PhraseLengths lengths;  // main, variation, count-in, fill, phrase, ending
    std::vector<Placement> plan;
  } cases[] = {
      {"m1-m10, G 2, F 1, N 4, E 2",
       1,
       10,
       {2, 0, 0, 1, 4, 2, false},
       {{M, 1, 2}, {M, 3, 3}, {F, 4, 4}, {M, 5, 6}, {M, 7, 7}, {F, 8, 8}, {E, 9, 10}}},
      {"the same without the ending",
       1,
       10,
       {2, 0, 0, 1, 4, 0, false},
       {{M, 1, 2}, {M, 3, 3}, {F, 4, 4}, {M, 5, 6}, {M, 7, 7}, {F, 8, 8}, {M, 9, 10}}},
      {"a fill as long as the phrase: no fills",
       1,
       6,
       {2, 0, 0, 2, 2, 0, false},
       {{M, 1, 2}, {M, 3, 4}, {M, 5, 6}}},
      {"an ending longer than the region: no ending", 3, 4, {4, 0, 0, 0, 0, 3, false}, {{M, 3, 4}}},
      {"an ending as long as the region: the ending alone",
       3,
       4,
       {4, 0, 0, 1, 2, 2, false},
       {{E, 3, 4}}},
      {"no companions: as today, the last repetition cut",
       5,
       14,
       {4, 0, 0, 0, 0, 0, false},
       {{M, 5, 8}, {M, 9, 12}, {M, 13, 14}}},
      {"an incomplete last phrase has no fill",
       1,
       7,
       {3, 0, 0, 1, 4, 0, false},
       {{M, 1, 3}, {F, 4, 4}, {M, 5, 7}}},
      {"an ending leaves less than a phrase: no fill",
       1,
       8,
       {4, 0, 0, 2, 8, 1, false},
       {{M, 1, 4}, {M, 5, 7}, {E, 8, 8}}},
      {"the last measures of the document",
       65534,
       65535,
       {1, 0, 0, 0, 0, 0, false},
       {{M, 65534, 65534}, {M, 65535, 65535}}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Show(PlanPlacements(c.first, c.last, c.lengths)), Show(c.plan)) << c.what;
  }
}

TEST(APhrasePlan, BeginsWithTheCountInAlternatesTheGroovesAndCrashesAfterEachFill) {
  const rw::shell::PhraseLengths all{2, 2, 1, 1, 4, 2, true};
  // Count-in 1, main 2, variation 2, a fill of 1 every 4, ending 2, over 16.
  EXPECT_EQ(Show(PlanPlacements(1, 16, all)),
            "count-in 1-1; main 2-3; main 4-4; fill 5-5; variation 6-7 crash; variation 8-8; "
            "fill 9-9; main 10-11 crash; main 12-12; fill 13-13; variation 14-14 crash; "
            "ending 15-16; ");
  // The ending after the last fill starts with the crash too.
  EXPECT_EQ(Show(PlanPlacements(1, 7, {2, 0, 1, 1, 4, 2, true})),
            "count-in 1-1; main 2-3; main 4-4; fill 5-5; ending 6-7 crash; ");

  // Without fills the two grooves take turns every 4 measures, and nothing
  // crashes.
  EXPECT_EQ(Show(PlanPlacements(1, 10, {2, 1, 0, 0, 0, 0, true})),
            "main 1-2; main 3-4; variation 5-5; variation 6-6; variation 7-7; variation 8-8; "
            "main 9-10; ");
  // A count-in as long as the region is not placed, and the ending takes
  // what the count-in leaves only when it fits.
  EXPECT_EQ(Show(PlanPlacements(3, 4, {1, 0, 2, 0, 0, 0, false})), "main 3-3; main 4-4; ");
  EXPECT_EQ(Show(PlanPlacements(1, 3, {1, 0, 1, 0, 0, 2, false})), "count-in 1-1; ending 2-3; ");
  EXPECT_EQ(Show(PlanPlacements(1, 3, {1, 0, 2, 0, 0, 2, false})), "count-in 1-2; main 3-3; ");
}

}  // namespace
