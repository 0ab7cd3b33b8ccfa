#include "percussion_staff.h"

#include "notation_fixture.h"

namespace notation_test {
namespace {

using rw::notation::EnsurePercussionChannel;
using rw::notation::IsPercussionStaff;
using rw::notation::SetUpPercussionStaff;

Bytes ChannelDefinition(std::uint16_t channel) {
  return Words(CX_CHANNEL_DEF_SIZE, {{0, channel}});
}

// A playback record whose six elements refer to `reference`.
Bytes Playback(std::uint16_t reference) {
  Bytes bytes(CX_PLAYBACK_SIZE, 0);
  for (std::size_t element = 0; element < 6; ++element) {
    cx_put_u16(bytes.data(), 8 * element, reference);
    cx_put_u16(bytes.data(), 8 * element + 6, 1);
  }
  return bytes;
}

class TheStaffIsPreparedForPercussionNotation : public NotationTest {
 protected:
  void SetUp() override {
    NotationTest::SetUp();
    doc.add_measures(6, {});
    staff = doc.add_staff("Drums", "");
    // Existing words: options 0x0001 at 10, clefs 0x0101 at 12, options 0x0002 at 22.
    doc.set_record(
        CX_TAG_STAFF_SPEC, staff, 0,
        Words(CX_STAFF_SPEC_SIZE,
              {{6, 77}, {8, 5}, {10, 0x0001}, {12, 0x0101}, {22, 0x0002}, {32, 0x4444}}));
    doc.set_record(CX_TAG_CLEF_DEF, 12, 0,
                   Words(CX_CLEF_DEF_SIZE, {{12, kSonettaPercussion}, {18, 2}}));
  }
  std::uint16_t SpecWord(std::size_t offset) const {
    return cx_get_u16(doc.record(CX_TAG_STAFF_SPEC, staff, 0)->data(), offset);
  }
  std::uint16_t staff = 0;
};

TEST_F(TheStaffIsPreparedForPercussionNotation, AnExistingStaffFromMeasureThreeKeepsItsClefWord) {
  SetUpPercussionStaff(staff, WholeMeasures(1, 1, 3, 4), false);
  EXPECT_EQ(SpecWord(6), kSonettaPercussion);
  EXPECT_EQ(SpecWord(8), 0x1800);
  EXPECT_EQ(SpecWord(10), 0x2021);
  EXPECT_EQ(SpecWord(12), 0x0101);
  EXPECT_EQ(SpecWord(22), 0x0022);
}

TEST_F(TheStaffIsPreparedForPercussionNotation, AnExistingStaffFromMeasureOneGetsTheClefWord) {
  SetUpPercussionStaff(staff, WholeMeasures(1, 1, 1, 2), false);
  EXPECT_EQ(SpecWord(12), 0x0C0C);
  EXPECT_EQ(SpecWord(22), 0x0022);
}

TEST_F(TheStaffIsPreparedForPercussionNotation, AStaffWithoutASpecificationGetsNone) {
  doc.remove_record(CX_TAG_STAFF_SPEC, staff, 0);
  SetUpPercussionStaff(staff, WholeMeasures(1, 1, 1, 2), true);
  EXPECT_FALSE(doc.record(CX_TAG_STAFF_SPEC, staff, 0));
}

class TheStaffIsPutOnChannelTen : public NotationTest {
 protected:
  void SetUp() override {
    NotationTest::SetUp();
    doc.add_measures(1, {});
    staff = doc.add_staff("Drums", "");
  }
  std::size_t ChannelDefinitions() const { return doc.records(CX_TAG_CHANNEL_DEF).size(); }
  std::uint16_t staff = 0;
};

TEST_F(TheStaffIsPutOnChannelTen, ASecondRunSearchesAgainAndWritesTheSameRecord) {
  ASSERT_TRUE(EnsurePercussionChannel(staff));
  ASSERT_TRUE(EnsurePercussionChannel(staff));
  EXPECT_EQ(ChannelDefinitions(), 1u);
  EXPECT_EQ(doc.record(CX_TAG_PLAYBACK, staff, 0), Playback(0));
}

TEST_F(TheStaffIsPutOnChannelTen, APlaybackRecordReferringToChannelNineIsLeftAsItIs) {
  doc.set_record(CX_TAG_CHANNEL_DEF, 6, 0, ChannelDefinition(9));
  Bytes playback(CX_PLAYBACK_SIZE, 0xAA);
  cx_put_u16(playback.data(), 16, 6);
  doc.set_record(CX_TAG_PLAYBACK, staff, 0, playback);
  ASSERT_TRUE(EnsurePercussionChannel(staff));
  EXPECT_EQ(doc.record(CX_TAG_PLAYBACK, staff, 0), playback);
  EXPECT_EQ(ChannelDefinitions(), 1u);
}

TEST_F(TheStaffIsPutOnChannelTen, AFailedCreationAssignsNothing) {
  doc.refuse_writes(CX_TAG_CHANNEL_DEF);
  EXPECT_FALSE(EnsurePercussionChannel(staff));
  EXPECT_FALSE(doc.record(CX_TAG_PLAYBACK, staff, 0));
  EXPECT_TRUE(doc.records(CX_TAG_CHANNEL_NAME).empty());
}

class OnlyTheHostsPercussionChannelMakesADrumStaff : public TheStaffIsPutOnChannelTen {};

TEST_F(OnlyTheHostsPercussionChannelMakesADrumStaff, ThePluginsOwnChannelNineDoesNot) {
  ASSERT_TRUE(EnsurePercussionChannel(staff));
  doc.set_record(CX_TAG_PLAYBACK, staff, 0, Playback(1));  // the definition itself
  EXPECT_FALSE(IsPercussionStaff(staff));
}

TEST_F(OnlyTheHostsPercussionChannelMakesADrumStaff, MissingRecordsDoNot) {
  EXPECT_FALSE(IsPercussionStaff(staff));
  doc.set_record(CX_TAG_PLAYBACK, staff, 0, Playback(8));
  EXPECT_FALSE(IsPercussionStaff(staff));
}

}  // namespace
}  // namespace notation_test
