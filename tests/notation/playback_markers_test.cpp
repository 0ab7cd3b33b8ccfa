#include "playback_markers.h"

#include <string>

#include "notation_fixture.h"

namespace notation_test {
namespace {

using rw::notation::AddPlaybackOffMarker;
using rw::notation::AddPlaybackOnMarker;

constexpr std::uint16_t kOn = 16;
constexpr std::uint16_t kOff = 17;
constexpr std::uint16_t kStaffOnly = 0x1000;
constexpr std::uint16_t kExcluded = 0x2000;

class PlaybackMarkersSurroundTheGroove : public NotationTest {
 protected:
  void SetUp() override {
    NotationTest::SetUp();
    doc.add_measures(40, {});
    staff = doc.add_staff("Drums", "");
    other = doc.add_staff("Bass", "");
  }

  // A definition "TDOS" numbered `number` of playback type `type`, and its
  // assignment to `onStaff` in `measure` with `flags`.
  void Marker(std::uint16_t number, std::uint16_t type, std::uint16_t measure, std::uint16_t flags,
              std::uint16_t onStaff) {
    doc.set_record(CX_TAG_EXPRESSION_DEF, number, 0, Words(CX_EXPRESSION_DEF_SIZE, {{10, type}}));
    Assign(number, measure, flags, onStaff);
  }
  void Assign(std::uint16_t definition, std::uint16_t measure, std::uint16_t flags,
              std::uint16_t onStaff) {
    std::uint16_t sub = 0;
    while (doc.record(CX_TAG_EXPRESSION_ASSIGN, measure, sub)) ++sub;
    doc.set_record(CX_TAG_EXPRESSION_ASSIGN, measure, sub,
                   Words(CX_EXPRESSION_ASSIGN_SIZE, {{0, definition}, {8, onStaff}, {10, flags}}));
  }
  std::size_t AssignmentsIn(std::uint16_t measure) const {
    std::size_t count = 0;
    for (const auto& r : doc.records(CX_TAG_EXPRESSION_ASSIGN)) count += r.number == measure;
    return count;
  }
  Bytes Assignment(std::uint16_t measure, std::uint16_t sub) const {
    return *doc.record(CX_TAG_EXPRESSION_ASSIGN, measure, sub);
  }
  // The expression text that definition `number` shows.
  std::string TextOf(std::uint16_t number) const {
    const auto definition = doc.record(CX_TAG_EXPRESSION_DEF, number, 0);
    if (!definition) return "";
    const auto block = doc.record(CX_TAG_TEXT_BLOCK, cx_get_u16(definition->data(), 0), 0);
    if (!block) return "";
    return doc.text(CX_TAG_EXPRESSION_TEXT, cx_get_u16(block->data(), 0)).value_or("");
  }
  std::uint16_t MeasureFlags(std::uint16_t measure) const {
    return cx_get_u16(doc.record(CX_TAG_MEASURE, measure, 0)->data(), CX_MEASURE_FLAGS);
  }

  std::uint16_t staff = 0;
  std::uint16_t other = 0;
};

TEST_F(PlaybackMarkersSurroundTheGroove, OffIsAssignedToTheStaffInTheStartMeasure) {
  ASSERT_TRUE(AddPlaybackOffMarker(staff, 5));
  ASSERT_EQ(AssignmentsIn(5), 1u);
  const Bytes assignment = Assignment(5, 0);
  const std::uint16_t definition = cx_get_u16(assignment.data(), 0);
  EXPECT_EQ(assignment, Words(CX_EXPRESSION_ASSIGN_SIZE, {{0, definition}, {6, 76}, {8, staff}}));
  const Bytes created = *doc.record(CX_TAG_EXPRESSION_DEF, definition, 0);
  EXPECT_EQ(cx_get_u16(created.data(), 10), kOff) << "category word";
  EXPECT_EQ(cx_get_u16(created.data(), 26), kOff) << "playback value";
  // The document's expression font (Times New Roman 12) with effects bit 7.
  EXPECT_EQ(TextOf(definition), "^font(Times New Roman,0)^size(12)^nfx(128)<HP off>");
  EXPECT_EQ(MeasureFlags(5), CX_MEASURE_FLAG_EXPRESSIONS);
}

TEST_F(PlaybackMarkersSurroundTheGroove,
       WithoutAFontPreferenceTimesNewRomanSixteenIsUsedWithoutEffects) {
  doc.remove_record(CX_TAG_FONT_PREFS, 6, 0);
  ASSERT_TRUE(AddPlaybackOnMarker(staff, 9));
  const std::uint16_t definition = cx_get_u16(Assignment(9, 0).data(), 0);
  EXPECT_EQ(TextOf(definition), "^font(Times New Roman,0)^size(16)^nfx(0)<HP on>");
  EXPECT_EQ(cx_get_u16(doc.record(CX_TAG_EXPRESSION_DEF, definition, 0)->data(), 10), kOn);
}

TEST_F(PlaybackMarkersSurroundTheGroove, APrecedingOffWithinTwentyFiveMeasuresSuppressesANewOne) {
  Marker(1, kOff, 5, kStaffOnly, staff);
  EXPECT_FALSE(AddPlaybackOffMarker(staff, 30));
  EXPECT_EQ(AssignmentsIn(30), 0u);
  EXPECT_TRUE(AddPlaybackOffMarker(staff, 31)) << "measure 5 is 26 measures back";
}

TEST_F(PlaybackMarkersSurroundTheGroove, TheLatestMarkerBeforeTheStartDecides) {
  Marker(1, kOff, 3, kStaffOnly, staff);
  Marker(2, kOn, 6, kStaffOnly, staff);
  EXPECT_TRUE(AddPlaybackOffMarker(staff, 10));

  Marker(3, kOff, 12, kStaffOnly, staff);
  Marker(4, kOn, 12, kStaffOnly, staff);
  EXPECT_TRUE(AddPlaybackOffMarker(staff, 14)) << "an on beside the off counts as on";
}

TEST_F(PlaybackMarkersSurroundTheGroove, OnlyTheStaffsOwnMarkersCount) {
  Marker(1, kOff, 4, kStaffOnly, other);
  Marker(2, kOff, 5, kStaffOnly | kExcluded, staff);
  Marker(3, kOff, 6, 0, staff);
  Marker(4, 15, 7, kStaffOnly, staff);  // not a playback marker
  Assign(99, 8, kStaffOnly, staff);     // a definition that does not load
  EXPECT_TRUE(AddPlaybackOffMarker(staff, 9));
}

TEST_F(PlaybackMarkersSurroundTheGroove, AnOffAlreadyInTheStartMeasureIsKept) {
  Marker(1, kOff, 5, kStaffOnly, staff);
  EXPECT_FALSE(AddPlaybackOffMarker(staff, 5));
  EXPECT_EQ(AssignmentsIn(5), 1u);
}

TEST_F(PlaybackMarkersSurroundTheGroove, ARefusedDeleteDoesNotStopTheScan) {
  Marker(1, kOn, 5, kStaffOnly, staff);
  doc.refuse_writes(CX_TAG_EXPRESSION_ASSIGN);
  EXPECT_FALSE(AddPlaybackOffMarker(staff, 5)) << "nothing could be assigned";
  EXPECT_EQ(AssignmentsIn(5), 1u);
}

TEST_F(PlaybackMarkersSurroundTheGroove, ThePluginsOwnMarkersNeverCountInALaterRun) {
  ASSERT_TRUE(AddPlaybackOffMarker(staff, 5));
  ASSERT_TRUE(AddPlaybackOffMarker(staff, 5));
  EXPECT_EQ(AssignmentsIn(5), 2u);
  EXPECT_EQ(Assignment(5, 0), Assignment(5, 1)) << "one definition, assigned twice";
}

TEST_F(PlaybackMarkersSurroundTheGroove, AStaffAssignedMarkerInTheMeasureSuppressesOn) {
  Marker(1, kOn, 9, kStaffOnly, staff);
  EXPECT_FALSE(AddPlaybackOnMarker(staff, 9));
  Marker(2, kOff, 10, kStaffOnly, staff);
  EXPECT_FALSE(AddPlaybackOnMarker(staff, 10));
  EXPECT_EQ(AssignmentsIn(9) + AssignmentsIn(10), 2u);

  Marker(3, kOn, 11, 0, staff);
  EXPECT_TRUE(AddPlaybackOnMarker(staff, 11));
  EXPECT_EQ(AssignmentsIn(11), 2u);
}

}  // namespace
}  // namespace notation_test
