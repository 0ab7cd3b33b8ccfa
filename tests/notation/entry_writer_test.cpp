#include "entry_writer.h"

#include "notation_fixture.h"

namespace notation_test {
namespace {

using rw::notation::WriteSlashEntries;

class SlashEntriesFillEmptyMeasures : public NotationTest {
 protected:
  void SetUp() override {
    NotationTest::SetUp();
    staff = doc.add_staff("Drums", "");
  }
  std::uint16_t staff = 0;
};

struct Meter {
  std::int16_t beats;
  std::int16_t beatDuration;
  std::size_t slashes;
  std::int32_t slashDuration;
};

class OneSlashPerBeatOrDottedBeat : public SlashEntriesFillEmptyMeasures,
                                    public ::testing::WithParamInterface<Meter> {};

TEST_P(OneSlashPerBeatOrDottedBeat, RestsFollowEachOtherWithoutGap) {
  const Meter meter = GetParam();
  doc.add_measures(1, {meter.beats, meter.beatDuration});
  ASSERT_TRUE(WriteSlashEntries(WholeMeasures(1, 1, 1, 1)));
  const auto entries = doc.entries(staff, 1, 0);
  ASSERT_EQ(entries.size(), meter.slashes);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    EXPECT_EQ(entries[i].position, static_cast<std::int32_t>(i) * meter.slashDuration);
    EXPECT_EQ(entries[i].duration, meter.slashDuration);
    EXPECT_EQ(entries[i].flags & ~CX_ENTRY_FLAG_NOTE, 0x81000000u);
    EXPECT_EQ(entries[i].flags & CX_ENTRY_FLAG_NOTE, 0u) << "a slash is a rest";
  }
  EXPECT_EQ(doc.open_frames(), 0);
}

INSTANTIATE_TEST_SUITE_P(Meters, OneSlashPerBeatOrDottedBeat,
                         ::testing::Values(Meter{6, 512, 2, 1536},    // 6/8
                                           Meter{12, 512, 4, 1536},   // 12/8
                                           Meter{9, 512, 3, 1536},    // 9/8
                                           Meter{3, 1024, 3, 1024},   // 3/4
                                           Meter{3, 512, 3, 512},     // 3/8
                                           Meter{5, 1024, 5, 1024}),  // 5/4
                         [](const auto& info) {
                           return std::to_string(info.param.beats) + "_" +
                                  std::to_string(info.param.beatDuration);
                         });

TEST_F(SlashEntriesFillEmptyMeasures, AMeasureWithMusicInAnyOfTheFirstFourLayersIsLeftAlone) {
  doc.add_measures(5, {});
  for (std::uint16_t layer = 0; layer < 4; ++layer) {
    doc.add_entry(staff, static_cast<std::uint16_t>(layer + 1), layer, 0, 4096, {38});
  }
  ASSERT_TRUE(WriteSlashEntries(WholeMeasures(1, 1, 1, 5)));
  EXPECT_EQ(doc.entries(staff, 1, 0).size(), 1u);
  for (std::uint16_t measure = 2; measure <= 4; ++measure) {
    EXPECT_TRUE(doc.entries(staff, measure, 0).empty()) << "measure " << measure;
  }
  EXPECT_EQ(doc.entries(staff, 5, 0).size(), 4u);
}

TEST_F(SlashEntriesFillEmptyMeasures, EveryStaffOfTheRegionIsFilled) {
  doc.add_measures(2, {});
  const std::uint16_t second = doc.add_staff("Bass", "");
  const std::uint16_t third = doc.add_staff("Piano", "");
  ASSERT_TRUE(WriteSlashEntries(WholeMeasures(1, 2, 2, 2)));
  EXPECT_EQ(doc.entries(staff, 2, 0).size(), 4u);
  EXPECT_EQ(doc.entries(second, 2, 0).size(), 4u);
  EXPECT_TRUE(doc.entries(third, 2, 0).empty());
  EXPECT_TRUE(doc.entries(staff, 1, 0).empty());
}

TEST_F(SlashEntriesFillEmptyMeasures, AMissingMeasureEndsTheWalkWithTheEarlierOnesFilled) {
  doc.add_measures(2, {});
  EXPECT_FALSE(WriteSlashEntries(WholeMeasures(1, 1, 1, 3)));
  EXPECT_EQ(doc.entries(staff, 2, 0).size(), 4u);
}

TEST_F(SlashEntriesFillEmptyMeasures, AStartSlotAfterTheEndSlotWritesNothing) {
  doc.add_measures(1, {});
  doc.add_staff("Bass", "");
  EXPECT_TRUE(WriteSlashEntries(WholeMeasures(2, 1, 1, 1)));
  EXPECT_TRUE(doc.entries(staff, 1, 0).empty());
}

}  // namespace
}  // namespace notation_test
