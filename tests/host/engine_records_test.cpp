#include <cstring>

#include "engine_fixture.h"

namespace {

constexpr uint32_t kTag = CX_TAG('T', 'e', 's', 't');

class RecordStoreOfTheEngine : public EngineTest {
 protected:
  void put(uint16_t number, uint16_t sub, uint8_t fill, uint32_t size = 4) {
    doc.set_record(kTag, number, sub, cantel_engine::Bytes(size, fill));
  }
};

TEST_F(RecordStoreOfTheEngine, CreateWithAnyNumberTakesTheLowestFreeNumberFromOne) {
  put(1, 0, 0xA1);
  put(3, 0, 0xA3);
  uint16_t block[2] = {CX_NUMBER_ANY, 7};
  uint8_t data[4] = {1, 2, 3, 4};
  ASSERT_EQ(CX_CreateEData(kTag, block, data, 4, v), 1);
  EXPECT_EQ(block[0], 2);
  EXPECT_EQ(block[1], 7);
  EXPECT_EQ(doc.record(kTag, 2, 7), (cantel_engine::Bytes{1, 2, 3, 4}));
}

TEST_F(RecordStoreOfTheEngine, CreateWithAppendSubNumberFollowsTheLastSubNumber) {
  put(5, 0, 0);
  put(5, 1, 1);
  uint16_t block[2] = {5, CX_SUBNUMBER_APPEND};
  ASSERT_EQ(CX_CreateEData(kTag, block, nullptr, 4, v), 1);
  EXPECT_EQ(block[0], 5);
  EXPECT_EQ(block[1], 2);
  uint16_t fresh[2] = {9, CX_SUBNUMBER_APPEND};
  ASSERT_EQ(CX_CreateEData(kTag, fresh, nullptr, 4, v), 1);
  EXPECT_EQ(fresh[1], 0);
}

TEST_F(RecordStoreOfTheEngine, DeleteMovesTheLaterSubNumbersDown) {
  put(2, 0, 0xB0);
  put(2, 1, 0xB1);
  put(2, 2, 0xB2);
  put(3, 0, 0xC0);
  uint16_t block[2] = {2, 1};
  ASSERT_EQ(CX_DeleteEData(kTag, block, v), 1);
  EXPECT_EQ(doc.record(kTag, 2, 1), cantel_engine::Bytes(4, 0xB2));
  EXPECT_FALSE(doc.record(kTag, 2, 2));
  EXPECT_EQ(doc.record(kTag, 3, 0), cantel_engine::Bytes(4, 0xC0));
  EXPECT_EQ(CX_DeleteEData(kTag, block, v), 1);
  EXPECT_EQ(CX_DeleteEData(kTag, block, v), 0);
}

TEST_F(RecordStoreOfTheEngine, LoadCopiesTheSmallerSizeAndReportsTheStoredOne) {
  put(1, 0, 0x5A, 8);
  uint16_t block[2] = {1, 0};
  uint8_t small[4] = {};
  uint8_t large[16] = {};
  uint32_t size = sizeof small;
  ASSERT_EQ(CX_LoadEData(kTag, block, small, &size, v), 1);
  EXPECT_EQ(size, 8u);
  EXPECT_EQ(small[3], 0x5A);
  size = sizeof large;
  ASSERT_EQ(CX_LoadEData(kTag, block, large, &size, v), 1);
  EXPECT_EQ(size, 8u);
  EXPECT_EQ(large[7], 0x5A);
  EXPECT_EQ(large[8], 0);
  size = 0;
  EXPECT_EQ(CX_LoadEData(kTag, block, nullptr, &size, v), 1);
  EXPECT_EQ(size, 8u);
  block[0] = 2;
  EXPECT_EQ(CX_LoadEData(kTag, block, large, &size, v), 0);
}

TEST_F(RecordStoreOfTheEngine, TextsAreCreatedInUnitsAndMeasuredInBytes) {
  const char16_t text[] = u"Drums";
  uint16_t block[2] = {CX_NUMBER_ANY, 0};
  ASSERT_EQ(CX_CreateEData(CX_TAG_BLOCK_TEXT, block, text, 5, v), 1);
  uint32_t size = 256;
  ASSERT_EQ(CX_LoadEData(CX_TAG_BLOCK_TEXT, block, nullptr, &size, v), 1);
  EXPECT_EQ(size, 10u);
  EXPECT_EQ(doc.text(CX_TAG_BLOCK_TEXT, block[0]), "Drums");
}

TEST_F(RecordStoreOfTheEngine, NextAndPreviousWalkInNumberAndSubNumberOrder) {
  put(1, 0, 0x10);
  put(1, 1, 0x11);
  put(4, 0, 0x40);
  doc.set_record(CX_TAG('O', 't', 'h', 'r'), 2, 0, {9});
  uint16_t block[2] = {0, 0};
  uint8_t byte = 0;
  std::vector<int> seen;
  while (CX_NextEData(kTag, block, &byte, 1, v) != 0) seen.push_back(byte);
  EXPECT_EQ(seen, (std::vector<int>{0x10, 0x11, 0x40}));
  EXPECT_EQ(block[0], 4);
  ASSERT_EQ(CX_PreviousEData(kTag, block, &byte, 1, v), 1);
  EXPECT_EQ(byte, 0x11);
  EXPECT_EQ(block[1], 1);
}

TEST_F(RecordStoreOfTheEngine, RefusedTagsRejectSaveCreateAndDeleteAndCountThem) {
  put(1, 0, 0);
  doc.refuse_writes(kTag);
  uint16_t block[2] = {1, 0};
  uint8_t data[4] = {};
  EXPECT_EQ(CX_SaveEData(kTag, block, data, 4, v), 0);
  EXPECT_EQ(CX_DeleteEData(kTag, block, v), 0);
  uint16_t any[2] = {CX_NUMBER_ANY, 0};
  EXPECT_EQ(CX_CreateEData(kTag, any, data, 4, v), 0);
  EXPECT_EQ(any[0], CX_NUMBER_ANY);
  EXPECT_EQ(doc.refused_writes(), 3);
  uint32_t size = 4;
  EXPECT_EQ(CX_LoadEData(kTag, block, data, &size, v), 1);
}

class StavesOfTheEngine : public EngineTest {};

TEST_F(StavesOfTheEngine, StaffListZeroMapsSlotsToStaffNumbers) {
  const uint16_t a = doc.add_staff("Flute", "Fl.");
  const uint16_t b = doc.add_staff("Drums", "");
  // Swap the two rows of list 0: the list alone decides the order.
  auto row0 = *doc.record(CX_TAG_STAFF_LIST, 0, 0);
  auto row1 = *doc.record(CX_TAG_STAFF_LIST, 0, 1);
  doc.set_record(CX_TAG_STAFF_LIST, 0, 0, row1);
  doc.set_record(CX_TAG_STAFF_LIST, 0, 1, row0);
  EXPECT_EQ(CX_SlotToInst(1, 0, v), b);
  EXPECT_EQ(CX_SlotToInst(2, 0, v), a);
  EXPECT_EQ(CX_InstToSlot(a, 0, v), 2);
  EXPECT_EQ(CX_SlotToInst(3, 0, v), 0);
  EXPECT_EQ(CX_InstToSlot(99, 0, v), 0);
}

TEST_F(StavesOfTheEngine, CreatingAStaffSpecificationWithAnyNumberAddsAStaffAtTheBottom) {
  doc.add_measures(3, {});
  const uint16_t first = doc.add_staff("Piano", "");
  uint16_t block[2] = {CX_NUMBER_ANY, 0};
  ASSERT_EQ(CX_CreateEData(CX_TAG_STAFF_SPEC, block, nullptr, CX_STAFF_SPEC_SIZE, v), 1);
  EXPECT_NE(block[0], first);
  EXPECT_EQ(CX_InstToSlot(block[0], 0, v), 2);
  EXPECT_EQ(doc.staves_in_order(), (std::vector<uint16_t>{first, block[0]}));
  const auto above = *doc.record(CX_TAG_STAFF_LIST, 0, 0);
  const auto below = *doc.record(CX_TAG_STAFF_LIST, 0, 1);
  EXPECT_LT(cx_get_i32(below.data(), CX_STAFF_LIST_VERTICAL),
            cx_get_i32(above.data(), CX_STAFF_LIST_VERTICAL));
  // The new staff has an (empty) frame record in every measure.
  uint8_t record[CX_FGDS_SIZE] = {};
  uint16_t frames[4] = {1, 1, 1, 1};
  cx_put_ptr(record, CX_FGDS_FRAMES, frames);
  uint16_t at[2] = {block[0], 3};
  uint32_t size = CX_FGDS_SIZE;
  EXPECT_EQ(CX_LoadEData(CX_TAG_FRAME_RECORD, at, record, &size, v), 1);
  EXPECT_EQ(frames[0] + frames[1] + frames[2] + frames[3], 0);
}

TEST_F(StavesOfTheEngine, StaffNamesAreTextBlocksShowingTexts) {
  const uint16_t staff = doc.add_staff("Drum Set", "Dr.");
  const auto spec = *doc.record(CX_TAG_STAFF_SPEC, staff, 0);
  ASSERT_EQ(spec.size(), size_t{CX_STAFF_SPEC_SIZE});
  const auto block = doc.record(CX_TAG_TEXT_BLOCK, cx_get_u16(spec.data(), 32), 0);
  ASSERT_TRUE(block);
  EXPECT_EQ(doc.text(CX_TAG_BLOCK_TEXT, cx_get_u16(block->data(), 0)), "Drum Set");
}

TEST_F(StavesOfTheEngine, MeasureDurationIsBeatsTimesBeatDurationAndZeroWhenMissing) {
  doc.add_measures(1, {3, 512, false, 0});
  doc.add_measures(1, {2, 1536, true, 0});
  EXPECT_EQ(CX_GetMeasureDuration(0, 1, v), 1536);
  EXPECT_EQ(CX_GetMeasureDuration(0, 2, v), 3072);
  EXPECT_EQ(CX_GetMeasureDuration(0, 3, v), 0);
  EXPECT_EQ(doc.record(CX_TAG_MEASURE, 2, 0)->at(CX_MEASURE_FLAG_BYTE) & 0x80, 0x80);
}

}  // namespace
