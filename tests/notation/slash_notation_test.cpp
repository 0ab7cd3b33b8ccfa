#include "slash_notation.h"

#include <vector>

#include "notation_fixture.h"
#include "slash_style.h"

namespace notation_test {
namespace {

using rw::notation::ApplySlashNotation;
using rw::notation::FindOrCreateSlashStyle;

constexpr std::uint32_t kAssign = CX_TAG_STAFF_STYLE_ASSIGN;

// A staff style definition "YSOS" with the four words that make a slash style.
Bytes SlashStyleDefinition() {
  return Words(CX_STAFF_STYLE_SIZE, {{4, 28929}, {74, 0}, {76, 4096}, {78, 0}, {82, u'X'}});
}

// Staff style assignment: style, start measure and position, end measure and position.
struct Range {
  std::uint16_t style;
  std::uint16_t startMeasure;
  std::int32_t startPosition;
  std::uint16_t endMeasure;
  std::int32_t endPosition;
  bool operator==(const Range&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Range& r) {
  return out << "style " << r.style << " " << r.startMeasure << ":" << r.startPosition << " to "
             << r.endMeasure << ":" << r.endPosition;
}

Bytes AssignmentOf(const Range& r) {
  Bytes bytes(CX_STAFF_STYLE_ASSIGN_SIZE, 0);
  cx_put_u16(bytes.data(), 0, r.style);
  cx_put_u16(bytes.data(), 12, r.startMeasure);
  cx_put_u32(bytes.data(), 14, static_cast<std::uint32_t>(r.startPosition));
  cx_put_u16(bytes.data(), 18, r.endMeasure);
  cx_put_u32(bytes.data(), 20, static_cast<std::uint32_t>(r.endPosition));
  return bytes;
}

constexpr std::int32_t kEnd = CX_END_OF_MEASURE;

class SlashNotationFinishesTheStaff : public NotationTest {
 protected:
  void SetUp() override {
    NotationTest::SetUp();
    doc.add_measures(12, {});
    staff = doc.add_staff("Drums", "");
  }
  void Assign(std::vector<Range> ranges) {
    for (std::size_t i = 0; i < ranges.size(); ++i) {
      doc.set_record(kAssign, staff, static_cast<std::uint16_t>(i), AssignmentOf(ranges[i]));
    }
  }
  std::vector<Range> Assignments() const {
    std::vector<Range> ranges;
    for (std::uint16_t sub = 0;; ++sub) {
      const auto bytes = doc.record(kAssign, staff, sub);
      if (!bytes) break;
      ranges.push_back({cx_get_u16(bytes->data(), 0), cx_get_u16(bytes->data(), 12),
                        cx_get_i32(bytes->data(), 14), cx_get_u16(bytes->data(), 18),
                        cx_get_i32(bytes->data(), 20)});
    }
    return ranges;
  }
  std::size_t StyleDefinitions() const { return doc.records(CX_TAG_STAFF_STYLE).size(); }
  std::uint16_t staff = 0;
};

TEST_F(SlashNotationFinishesTheStaff, PartialOverlapsAreTrimmedAndInsideOnesDeleted) {
  doc.set_record(CX_TAG_STAFF_STYLE, 1, 0, SlashStyleDefinition());
  Assign({{1, 5, 0, 8, kEnd}, {1, 4, 0, 5, kEnd}, {1, 2, 0, 4, 2047}, {1, 11, 0, 12, kEnd}});
  ERegion region = WholeMeasures(1, 1, 4, 6);
  ApplySlashNotation(region);
  EXPECT_EQ(Assignments(),
            (std::vector<Range>{
                {1, 2, 0, 3, kEnd}, {1, 4, 0, 6, kEnd}, {1, 7, 0, 8, kEnd}, {1, 11, 0, 12, kEnd}}));
}

TEST_F(SlashNotationFinishesTheStaff, PositionsInsideMeasuresBoundTheSplit) {
  doc.set_record(CX_TAG_STAFF_STYLE, 1, 0, SlashStyleDefinition());
  Assign({{1, 1, 0, 10, kEnd}});
  ERegion region = WholeMeasures(1, 1, 4, 6);
  region.startPosition = 1024;
  region.endPosition = 2047;
  ApplySlashNotation(region);
  EXPECT_EQ(Assignments(), (std::vector<Range>{
                               {1, 1, 0, 4, 1023}, {1, 4, 1024, 6, 2047}, {1, 6, 2048, 10, kEnd}}));
}

TEST_F(SlashNotationFinishesTheStaff, AnEndThatReachesTheMeasureEndIsClippedInTheRegionItself) {
  ERegion region = WholeMeasures(1, 1, 2, 3);
  region.endPosition = 4095;  // 4/4: the last unit of the measure
  ApplySlashNotation(region);
  EXPECT_EQ(region.endPosition, kEnd);
  ASSERT_EQ(Assignments().size(), 1u);
  EXPECT_EQ(Assignments()[0].endPosition, kEnd);

  ERegion shorter = WholeMeasures(1, 1, 5, 6);
  shorter.endPosition = 4094;
  ApplySlashNotation(shorter);
  EXPECT_EQ(shorter.endPosition, 4094);
}

TEST_F(SlashNotationFinishesTheStaff, AssignmentsOfOtherStylesAreLeftButSortedByStart) {
  doc.set_record(CX_TAG_STAFF_STYLE, 1, 0, Words(CX_STAFF_STYLE_SIZE, {{4, 28929}, {76, 0}}));
  Assign({{1, 9, 0, 9, kEnd}, {1, 3, 512, 7, kEnd}, {1, 3, 0, 3, 511}});
  ERegion region = WholeMeasures(1, 1, 5, 5);
  ApplySlashNotation(region);
  const auto ranges = Assignments();
  ASSERT_EQ(ranges.size(), 4u);
  EXPECT_EQ(ranges[0], (Range{1, 3, 0, 3, 511}));
  EXPECT_EQ(ranges[1], (Range{1, 3, 512, 7, kEnd}));
  EXPECT_EQ(ranges[2].startMeasure, 5);
  EXPECT_EQ(ranges[3], (Range{1, 9, 0, 9, kEnd}));
}

TEST_F(SlashNotationFinishesTheStaff, EmptyMeasuresOfTheRegionGetSlashes) {
  doc.add_entry(staff, 3, 0, 0, 4096, {36});
  ERegion region = WholeMeasures(1, 1, 2, 4);
  ApplySlashNotation(region);
  EXPECT_EQ(doc.entries(staff, 2, 0).size(), 4u);
  EXPECT_EQ(doc.entries(staff, 3, 0).size(), 1u);
  EXPECT_EQ(doc.entries(staff, 4, 0).size(), 4u);
  EXPECT_TRUE(doc.entries(staff, 5, 0).empty());
}

TEST_F(SlashNotationFinishesTheStaff, RefusedDeletesEndTheWalksWithNothingLost) {
  doc.set_record(CX_TAG_STAFF_STYLE, 1, 0, SlashStyleDefinition());
  const std::vector<Range> before = {{1, 6, 0, 6, kEnd}, {1, 5, 0, 5, kEnd}, {1, 1, 0, 2, kEnd}};
  Assign(before);
  doc.refuse_writes(kAssign);
  ERegion region = WholeMeasures(1, 1, 4, 6);
  EXPECT_TRUE(ApplySlashNotation(region));
  EXPECT_EQ(Assignments(), before);
}

class TheSlashStyleIsFoundByItsWords : public SlashNotationFinishesTheStaff {};

TEST_F(TheSlashStyleIsFoundByItsWords, AnExistingOneUnderAnyNameIsReusedAndASecondRunCreatesNone) {
  doc.set_record(CX_TAG_STAFF_STYLE, 1, 0, Words(CX_STAFF_STYLE_SIZE, {{4, 28929}}));
  doc.set_record(CX_TAG_STAFF_STYLE, 7, 0, SlashStyleDefinition());
  doc.set_record(CX_TAG_STAFF_STYLE, 9, 0, SlashStyleDefinition());
  ERegion region = WholeMeasures(1, 1, 1, 2);
  ApplySlashNotation(region);
  ERegion again = WholeMeasures(1, 1, 3, 4);
  ApplySlashNotation(again);
  EXPECT_EQ(StyleDefinitions(), 3u);
  EXPECT_EQ(Assignments(), (std::vector<Range>{{7, 1, 0, 2, kEnd}, {7, 3, 0, 4, kEnd}}));
}

TEST_F(TheSlashStyleIsFoundByItsWords, WithoutOneItIsCreatedWithItsNameOnce) {
  ERegion region = WholeMeasures(1, 1, 1, 2);
  ApplySlashNotation(region);
  ApplySlashNotation(region);
  ASSERT_EQ(StyleDefinitions(), 1u);
  const Bytes created = *doc.record(CX_TAG_STAFF_STYLE, 1, 0);
  Bytes expected = Words(CX_STAFF_STYLE_SIZE, {{4, 28929}, {76, 4096}, {80, 1}});
  const std::u16string name = u"Rhythm Weave Slash Notation";
  for (std::size_t i = 0; i < name.size(); ++i) cx_put_u16(expected.data(), 82 + 2 * i, name[i]);
  EXPECT_EQ(created, expected);
  EXPECT_EQ(Assignments(), (std::vector<Range>{{1, 1, 0, 2, kEnd}}));
}

TEST_F(TheSlashStyleIsFoundByItsWords, NineHundredNinetyNineOthersLeadToANewOne) {
  for (std::uint16_t number = 1; number <= 999; ++number) {
    doc.set_record(CX_TAG_STAFF_STYLE, number, 0, Words(CX_STAFF_STYLE_SIZE, {{4, 28929}}));
  }
  EXPECT_EQ(FindOrCreateSlashStyle(), 1000);
}

TEST_F(TheSlashStyleIsFoundByItsWords, AFailedCreationAssignsNothing) {
  doc.refuse_writes(CX_TAG_STAFF_STYLE);
  EXPECT_EQ(FindOrCreateSlashStyle(), 0);
  ERegion region = WholeMeasures(1, 1, 1, 2);
  ApplySlashNotation(region);
  EXPECT_TRUE(Assignments().empty());
}

}  // namespace
}  // namespace notation_test
