// The record functions and CEData against the reference host's record store.
#include "records.h"

#include <array>

#include "framework_fixture.h"
#include "host_api.h"
#include "staff_spec.h"

namespace {

using rw::host::kVersion;

struct KindCase {
  const char* name;
  std::uint32_t tag;
  std::uint32_t size;
};

class RecordRoundTrip : public FrameworkTest, public ::testing::WithParamInterface<KindCase> {};

TEST_P(RecordRoundTrip, WhatIsSavedLoadsBackByteForByte) {
  const KindCase kind = GetParam();
  std::vector<std::uint8_t> written(kind.size);
  for (std::size_t i = 0; i < written.size(); ++i)
    written[i] = static_cast<std::uint8_t>(i * 7 + 1);

  ASSERT_TRUE(rw::SaveRecord(kind.tag, 4, 2, written.data(), kind.size));
  EXPECT_EQ(doc.record(kind.tag, 4, 2), written);

  std::vector<std::uint8_t> read(kind.size, 0xEE);
  ASSERT_TRUE(rw::LoadRecord(kind.tag, 4, 2, read.data(), kind.size));
  EXPECT_EQ(read, written);
  // Another sub-number of the same number is another record.
  EXPECT_FALSE(rw::LoadRecord(kind.tag, 4, 3, read.data(), kind.size));
}

INSTANTIATE_TEST_SUITE_P(
    EveryKindThePlugInUses, RecordRoundTrip,
    ::testing::Values(KindCase{"SIOS", CX_TAG_STAFF_SPEC, CX_STAFF_SPEC_SIZE},
                      KindCase{"XTOS", CX_TAG_TEXT_BLOCK, CX_TEXT_BLOCK_SIZE},
                      KindCase{"SMOS", CX_TAG_MEASURE, CX_MEASURE_SIZE},
                      KindCase{"YSOS", CX_TAG_STAFF_STYLE, CX_STAFF_STYLE_SIZE},
                      KindCase{"TDOS", CX_TAG_EXPRESSION_DEF, CX_EXPRESSION_DEF_SIZE},
                      KindCase{"YDOS", CX_TAG_EXPRESSION_ASSIGN, CX_EXPRESSION_ASSIGN_SIZE},
                      KindCase{"fdfp", CX_TAG_FONT_PREFS, CX_FONT_PREFS_SIZE}),
    [](const auto& info) { return std::string(info.param.name); });

using RecordFunctions = FrameworkTest;

TEST_F(RecordFunctions, AMissingRecordLoadsAsZerosAndAnswersFalse) {
  std::array<std::uint8_t, CX_MEASURE_SIZE> buffer;
  buffer.fill(0xAB);
  EXPECT_FALSE(rw::LoadMeasureRecord(9, buffer.data()));
  for (std::uint8_t b : buffer) EXPECT_EQ(b, 0);
}

TEST_F(RecordFunctions, CreateWithAnyNumberTakesTheHostsNumberAndSubNumberZero) {
  doc.set_record(CX_TAG_EXPRESSION_DEF, 1, 0, Words({1}));
  std::uint16_t number = CX_NUMBER_ANY;
  std::uint16_t sub = 7;  // ignored when the host chooses the number
  const auto data = Words({42}, 38);
  ASSERT_TRUE(rw::CreateRecord(CX_TAG_EXPRESSION_DEF, number, sub, data.data(), 38));
  EXPECT_EQ(number, 2);
  EXPECT_EQ(sub, 0);
  EXPECT_EQ(doc.record(CX_TAG_EXPRESSION_DEF, 2, 0), data);
}

TEST_F(RecordFunctions, CreateWithAppendWritesTheNextSubNumberBack) {
  doc.set_record(CX_TAG_EXPRESSION_ASSIGN, 5, 0, Words({1}, 24));
  std::uint16_t number = 5;
  std::uint16_t sub = CX_SUBNUMBER_APPEND;
  const auto data = Words({2}, 24);
  ASSERT_TRUE(rw::CreateRecord(CX_TAG_EXPRESSION_ASSIGN, number, sub, data.data(), 24));
  EXPECT_EQ(number, 5);
  EXPECT_EQ(sub, 1);
}

TEST_F(RecordFunctions, ARefusedCreateStillWritesTheHostsWordsBack) {
  doc.refuse_writes(CX_TAG_EXPRESSION_DEF);
  std::uint16_t number = CX_NUMBER_ANY;
  std::uint16_t sub = 3;
  EXPECT_FALSE(rw::CreateRecord(CX_TAG_EXPRESSION_DEF, number, sub, nullptr, 0));
  EXPECT_EQ(number, CX_NUMBER_ANY);
  EXPECT_EQ(sub, 0);
}

TEST_F(RecordFunctions, NextWalksInOrderAndDeleteMovesLaterSubNumbersDown) {
  for (std::uint16_t sub = 0; sub < 3; ++sub) {
    doc.set_record(CX_TAG_EXPRESSION_ASSIGN, 8, sub,
                   Words({static_cast<std::uint16_t>(10 + sub)}, 24));
  }
  ASSERT_TRUE(rw::DeleteRecord(CX_TAG_EXPRESSION_ASSIGN, 8, 0));

  std::uint16_t number = 8;
  std::uint16_t sub = 0;
  std::array<std::uint8_t, 24> buffer{};
  ASSERT_TRUE(rw::LoadRecord(CX_TAG_EXPRESSION_ASSIGN, 8, 0, buffer.data(), 24));
  EXPECT_EQ(cx_get_u16(buffer.data(), 0), 11);
  ASSERT_TRUE(rw::NextRecord(CX_TAG_EXPRESSION_ASSIGN, number, sub, buffer.data(), 24));
  EXPECT_EQ(number, 8);
  EXPECT_EQ(sub, 1);
  EXPECT_EQ(cx_get_u16(buffer.data(), 0), 12);
  EXPECT_FALSE(rw::NextRecord(CX_TAG_EXPRESSION_ASSIGN, number, sub, buffer.data(), 24));
}

TEST_F(RecordFunctions, TDOSLoadsWithTheCallersSizeAndReportsTheStoredOne) {
  doc.set_record(CX_TAG_EXPRESSION_DEF, 3, 0, Words({9, 0, 30}, 38));
  std::array<std::uint8_t, CX_EXPRESSION_DEF_SIZE> buffer;
  buffer.fill(0xFF);
  std::uint32_t size = CX_EXPRESSION_DEF_SIZE;
  ASSERT_TRUE(rw::LoadTDOSRecord(3, buffer.data(), &size));
  EXPECT_EQ(size, 38u);
  EXPECT_EQ(cx_get_u16(buffer.data(), 4), 30);
  // What the host did not fill reads as zero.
  EXPECT_EQ(cx_get_u16(buffer.data(), 60), 0);
  EXPECT_FALSE(rw::LoadTDOSRecord(3, buffer.data(), nullptr));
}

using RecordObject = FrameworkTest;

TEST_F(RecordObject, LoadRemembersTheNumberAndSaveWritesToIt) {
  const std::uint16_t staff = doc.add_staff("Drums", "");
  rw::CStaffSpec spec;
  ASSERT_NE(spec.Load(staff, kVersion), 0);
  EXPECT_EQ(spec.CurrentNumber(), staff);
  EXPECT_EQ(spec.Size(), std::uint32_t{CX_STAFF_SPEC_SIZE});
  EXPECT_NE(spec.FullNameBlock(), 0);
  cx_put_u16(spec.Data(), CX_STAFF_SPEC_NOTATION, 0x1234);
  ASSERT_NE(spec.Save(staff, kVersion), 0);
  EXPECT_EQ(cx_get_u16(doc.record(CX_TAG_STAFF_SPEC, staff, 0)->data(), CX_STAFF_SPEC_NOTATION),
            0x1234);
  EXPECT_EQ(spec.Create(), 0);
}

}  // namespace
