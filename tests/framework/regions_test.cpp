// Regions reduced to whole measures, measure specifications and the staves a
// region covers.
#include "regions.h"

#include <array>

#include "framework_fixture.h"
#include "measures.h"

namespace {

ERegion Region(std::uint16_t startMeasure, std::int32_t startPosition, std::uint16_t endMeasure,
               std::int32_t endPosition) {
  ERegion region{};
  region.startSlot = 1;
  region.endSlot = 1;
  region.startMeasure = startMeasure;
  region.startPosition = startPosition;
  region.endMeasure = endMeasure;
  region.endPosition = endPosition;
  return region;
}

class Regions : public FrameworkTest {
 protected:
  void SetUp() override {
    FrameworkTest::SetUp();
    doc.add_measures(6, {3, 320, false, 0});  // 960 duration units each
  }
};

TEST_F(Regions, AnEndAtTheLastUnitOfItsMeasureMeansTheWholeMeasure) {
  ERegion region = Region(1, 0, 2, 959);
  rw::NormalizeRegionEnd(region);
  EXPECT_EQ(region.endPosition, CX_END_OF_MEASURE);

  region = Region(1, 0, 2, 0);
  rw::NormalizeRegionEnd(region);
  EXPECT_EQ(region.endPosition, 0);

  region = Region(1, 0, 2, 958);
  rw::NormalizeRegionEnd(region);
  EXPECT_EQ(region.endPosition, 958);

  region = Region(1, 0, 2, CX_END_OF_MEASURE);  // no overflow adding 1
  rw::NormalizeRegionEnd(region);
  EXPECT_EQ(region.endPosition, CX_END_OF_MEASURE);
}

TEST_F(Regions, WholeMeasuresDropAPartlySelectedFirstOrLastMeasure) {
  const ERegion fromStart = Region(3, 0, 5, CX_END_OF_MEASURE);
  EXPECT_EQ(rw::FirstWholeMeasure(fromStart), 3);
  EXPECT_EQ(rw::LastWholeMeasure(fromStart), 5);

  const ERegion fromMiddle = Region(3, 480, 5, CX_END_OF_MEASURE);
  EXPECT_EQ(rw::FirstWholeMeasure(fromMiddle), 4);
  EXPECT_EQ(rw::LastWholeMeasure(fromMiddle), 5);

  EXPECT_EQ(rw::LastWholeMeasure(Region(3, 0, 5, 959)), 5);
  EXPECT_EQ(rw::LastWholeMeasure(Region(3, 0, 5, 958)), 4);
}

TEST_F(Regions, MeasureNumbersAreWidenedBeforeArithmetic) {
  const ERegion last = Region(65535, 1, 65535, 0);
  EXPECT_EQ(rw::FirstWholeMeasure(last), 65536);
  EXPECT_EQ(rw::LastWholeMeasure(Region(0, 0, 0, -5)), -1);
}

TEST(FloorPowerOfTwo, GivesTheLargestPowerNotAbove) {
  EXPECT_EQ(rw::FloorPowerOfTwo(0), 0);
  EXPECT_EQ(rw::FloorPowerOfTwo(-3), 0);
  EXPECT_EQ(rw::FloorPowerOfTwo(1), 1);
  EXPECT_EQ(rw::FloorPowerOfTwo(8), 8);
  EXPECT_EQ(rw::FloorPowerOfTwo(12), 8);
  EXPECT_EQ(rw::FloorPowerOfTwo(1023), 512);
  EXPECT_EQ(rw::FloorPowerOfTwo(std::int64_t{1} << 40), std::int64_t{1} << 40);
}

TEST(FindRangeContaining, TheLastRangeIsOpenEnded) {
  const std::array<rw::ValueRange, 3> ranges = {{{1, 4}, {4, 9}, {9, 10}}};
  EXPECT_EQ(rw::FindRangeContaining(ranges, 0), 0u);
  EXPECT_EQ(rw::FindRangeContaining(ranges, 1), 1u);
  EXPECT_EQ(rw::FindRangeContaining(ranges, 4), 2u);
  EXPECT_EQ(rw::FindRangeContaining(ranges, 8), 2u);
  EXPECT_EQ(rw::FindRangeContaining(ranges, 500), 3u);
  EXPECT_EQ(rw::FindRangeContaining({}, 5), 0u);
}

using Measures = FrameworkTest;

TEST_F(Measures, TheSpecificationGivesBeatsDurationAndTheCompositeFlag) {
  doc.add_measures(1, {6, 512, false, 0});
  doc.add_measures(1, {4, 1024, true, 0});
  const rw::MeasureSpecification six = rw::ReadMeasureSpecification(1);
  EXPECT_TRUE(six.loaded);
  EXPECT_EQ(six.beats, 6);
  EXPECT_EQ(six.beatDuration, 512);
  EXPECT_FALSE(six.composite);
  EXPECT_EQ(six.Length(), 3072);
  EXPECT_EQ(rw::MeasureDuration(1), 3072);
  EXPECT_TRUE(rw::ReadMeasureSpecification(2).composite);
}

TEST_F(Measures, AMissingMeasureReadsAsZeroBeatsOfDurationZero) {
  const rw::MeasureSpecification missing = rw::ReadMeasureSpecification(3);
  EXPECT_FALSE(missing.loaded);
  EXPECT_EQ(missing.beats, 0);
  EXPECT_EQ(missing.beatDuration, 0);
  EXPECT_EQ(rw::ReadMeasureSpecification(70000).beats, 0);
  EXPECT_EQ(rw::MeasureDuration(70000), 0);
}

TEST_F(Measures, TheLengthOfExtremeValuesDoesNotOverflow) {
  // Beats and beat duration at byte 8 and 10; composite flag byte 12, bit 7.
  doc.set_record(CX_TAG_MEASURE, 1, 0, Words({0, 0, 0, 0, 0x7FFF, 0x7FFF, 0x0080}, 30));
  const rw::MeasureSpecification spec = rw::ReadMeasureSpecification(1);
  EXPECT_EQ(spec.Length(), std::int64_t{32767} * 32767);
  EXPECT_TRUE(spec.composite);
}

using RegionStaves = FrameworkTest;

TEST_F(RegionStaves, EachSlotIsTurnedIntoItsStaffThroughTheStartList) {
  const std::uint16_t a = doc.add_staff("A", "");
  const std::uint16_t b = doc.add_staff("B", "");
  doc.set_record(CX_TAG_STAFF_LIST, 3, 0, Words({b}, 24));
  doc.set_record(CX_TAG_STAFF_LIST, 3, 1, Words({a}, 24));
  ERegion region{};
  region.startList = 3;
  region.startSlot = 1;
  region.endSlot = 3;
  const auto staves = rw::StavesOfRegion(region);
  ASSERT_EQ(staves.size(), 3u);
  EXPECT_EQ(staves[0].staff, b);
  EXPECT_EQ(staves[1].staff, a);
  EXPECT_EQ(staves[2].slot, 3u);
  EXPECT_EQ(staves[2].staff, 0) << "a slot without a staff";

  region.startSlot = 65535;
  region.endSlot = 65535;
  EXPECT_EQ(rw::StavesOfRegion(region).size(), 1u) << "the last slot ends the walk";
}

}  // namespace
