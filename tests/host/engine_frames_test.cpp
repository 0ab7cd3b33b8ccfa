#include "engine_fixture.h"

namespace {

class FramesOfTheEngine : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    doc.add_measures(2, {});
    staff = doc.add_staff("Drums", "");
  }
  static uint8_t* entries(void* frame) {
    return static_cast<uint8_t*>(cx_get_ptr(frame, CX_TGF_ENTRIES));
  }
  static int count(void* frame) { return cx_get_i16(frame, CX_TGF_ENTRY_COUNT); }
  uint16_t staff = 0;
};

TEST_F(FramesOfTheEngine, LoadAnswersAnEmptyFrameForEveryLayerOfAnExistingSlotAndMeasure) {
  void* frame = CX_LoadTGF(0, 1, 2, 3, 0, v);
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(count(frame), 0);
  EXPECT_EQ(cx_get_u16(frame, CX_TGF_MEASURE), 2);
  EXPECT_EQ(doc.open_frames(), 1);
  CX_FreeTGF(frame, v);
  EXPECT_EQ(doc.open_frames(), 0);
  EXPECT_EQ(CX_LoadTGF(0, 2, 1, 0, 0, v), nullptr);  // no slot 2
  EXPECT_EQ(CX_LoadTGF(0, 1, 3, 0, 0, v), nullptr);  // no measure 3
}

TEST_F(FramesOfTheEngine, InsertedEntriesFollowThePreviousOneAndSurviveSaveAndReload) {
  void* frame = CX_LoadTGF(0, 1, 1, 0, 0, v);
  ASSERT_EQ(CX_InsertEXENTRY(frame, 0, 1, v), 1);
  ASSERT_EQ(count(frame), 1);
  uint8_t* first = entries(frame);
  EXPECT_EQ(cx_get_u32(first, CX_ENTRY_FLAGS), CX_ENTRY_FLAG_LEGAL);
  EXPECT_EQ(cx_get_i32(first, CX_ENTRY_POSITION), 0);
  cx_put_u32(first, CX_ENTRY_DURATION, 1024);
  ASSERT_EQ(CX_InsertEXENTRY(frame, 1, 2, v), 1);
  ASSERT_EQ(count(frame), 3);
  uint8_t* second = entries(frame) + CX_ENTRY_SIZE;  // the array may have moved
  EXPECT_EQ(cx_get_i32(second, CX_ENTRY_POSITION), 1024);
  cx_put_u32(second, CX_ENTRY_FLAGS, CX_ENTRY_FLAG_LEGAL | CX_ENTRY_FLAG_NOTE);
  cx_put_u16(second, CX_ENTRY_NOTE_COUNT, 1);
  cx_put_u16(second, CX_ENTRY_NOTES + CX_NOTE_KEY, 38);
  ASSERT_EQ(CX_DeleteEXENTRY(frame, 2, 1, v), 1);
  ASSERT_EQ(CX_SaveTGF(frame, v), 1);
  CX_FreeTGF(frame, v);

  const auto saved = doc.entries(staff, 1, 0);
  ASSERT_EQ(saved.size(), 2u);
  EXPECT_EQ(saved[1].position, 1024);
  EXPECT_EQ(saved[1].keys, (std::vector<uint16_t>{38}));
  void* again = CX_LoadTGF(0, 1, 1, 0, 0, v);
  EXPECT_EQ(count(again), 2);
  CX_FreeTGF(again, v);
}

TEST_F(FramesOfTheEngine, UnsavedChangesAreDropped) {
  void* frame = CX_LoadTGF(0, 1, 1, 0, 0, v);
  CX_InsertEXENTRY(frame, 0, 1, v);
  CX_FreeTGF(frame, v);
  EXPECT_TRUE(doc.entries(staff, 1, 0).empty());
}

TEST_F(FramesOfTheEngine, FrameRecordGivesTheClefAndANumberPerLayerHoldingEntries) {
  doc.set_clef(staff, 2, 12);
  doc.add_entry(staff, 2, 1, 0, 4096, {});
  uint8_t record[CX_FGDS_SIZE];
  std::fill(std::begin(record), std::end(record), 0xEE);
  uint16_t frames[4] = {7, 7, 7, 7};
  cx_put_ptr(record, CX_FGDS_FRAMES, frames);
  uint16_t at[2] = {staff, 2};
  uint32_t size = CX_FGDS_SIZE;
  ASSERT_EQ(CX_LoadEData(CX_TAG_FRAME_RECORD, at, record, &size, v), 1);
  EXPECT_EQ(cx_get_u16(record, CX_FGDS_CLEF), 12);
  EXPECT_EQ(cx_get_u16(record, CX_FGDS_RESERVED), 0);
  EXPECT_EQ(cx_get_ptr(record, CX_FGDS_FRAMES), frames);  // bytes 6-13 untouched
  EXPECT_EQ(frames[0], 0);
  EXPECT_NE(frames[1], 0);
  EXPECT_EQ(frames[2] + frames[3], 0);

  cx_put_u16(record, CX_FGDS_CLEF, 3);
  ASSERT_EQ(CX_SaveEData(CX_TAG_FRAME_RECORD, at, record, CX_FGDS_SIZE, v), 1);
  EXPECT_EQ(doc.clef(staff, 2), 3);
  uint16_t missing[2] = {staff, 3};
  EXPECT_EQ(CX_LoadEData(CX_TAG_FRAME_RECORD, missing, record, &size, v), 0);
}

}  // namespace
