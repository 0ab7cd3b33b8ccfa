// Where the main groove, the fills and the ending go.
#include "phrase_plan.h"

#include <gtest/gtest.h>

namespace {

using rw::shell::GroovePart;
using rw::shell::Placement;
using rw::shell::PlanPlacements;

constexpr GroovePart M = GroovePart::kMain;
constexpr GroovePart F = GroovePart::kFill;
constexpr GroovePart E = GroovePart::kEnding;

std::string Show(const std::vector<Placement>& plan) {
  std::string out;
  for (const Placement& p : plan) {
    out += (p.part == M   ? "main "
            : p.part == F ? "fill "
                          : "ending ") +
           std::to_string(p.firstMeasure) + "-" + std::to_string(p.lastMeasure) + "; ";
  }
  return out;
}

TEST(APhrasePlan, PlacesFillsEveryPhraseAndTheEndingLast) {
  const struct {
    const char* what;
    std::uint32_t first, last;
    rw::shell::PhraseLengths lengths;
    std::vector<Placement> plan;
  } cases[] = {
      {"m1-m10, G 2, F 1, N 4, E 2",
       1,
       10,
       {2, 1, 4, 2},
       {{M, 1, 2}, {M, 3, 3}, {F, 4, 4}, {M, 5, 6}, {M, 7, 7}, {F, 8, 8}, {E, 9, 10}}},
      {"the same without the ending",
       1,
       10,
       {2, 1, 4, 0},
       {{M, 1, 2}, {M, 3, 3}, {F, 4, 4}, {M, 5, 6}, {M, 7, 7}, {F, 8, 8}, {M, 9, 10}}},
      {"a fill as long as the phrase: no fills",
       1,
       6,
       {2, 2, 2, 0},
       {{M, 1, 2}, {M, 3, 4}, {M, 5, 6}}},
      {"an ending longer than the region: no ending", 3, 4, {4, 0, 0, 3}, {{M, 3, 4}}},
      {"an ending as long as the region: the ending alone", 3, 4, {4, 1, 2, 2}, {{E, 3, 4}}},
      {"no companions: as today, the last repetition cut",
       5,
       14,
       {4, 0, 0, 0},
       {{M, 5, 8}, {M, 9, 12}, {M, 13, 14}}},
      {"an incomplete last phrase has no fill",
       1,
       7,
       {3, 1, 4, 0},
       {{M, 1, 3}, {F, 4, 4}, {M, 5, 7}}},
      {"an ending leaves less than a phrase: no fill",
       1,
       8,
       {4, 2, 8, 1},
       {{M, 1, 4}, {M, 5, 7}, {E, 8, 8}}},
      {"the last measures of the document",
       65534,
       65535,
       {1, 0, 0, 0},
       {{M, 65534, 65534}, {M, 65535, 65535}}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Show(PlanPlacements(c.first, c.last, c.lengths)), Show(c.plan)) << c.what;
  }
}

}  // namespace
