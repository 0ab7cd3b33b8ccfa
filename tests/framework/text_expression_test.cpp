// Text expression definitions as the host stores them.
#include "text_expression.h"

#include "framework_fixture.h"

namespace {

constexpr std::uint16_t kTimes12 = 1 | (12 << 8);  // font 1 in the low byte, size 12 above

class TextExpressions : public FrameworkTest {
 protected:
  void SetUp() override {
    FrameworkTest::SetUp();
    doc.set_fonts({{1, "Times New Roman", 4096}, {2, "Arial", 0}});
  }
  std::size_t Count(std::uint32_t tag) { return doc.records(tag).size(); }
};

TEST_F(TextExpressions, CreateStoresThePrefixedTextItsBlockAndTheDefinition) {
  const std::uint16_t number =
      rw::CreateTextExpression(u"<HP on>", kTimes12, 128, 16, 0, 0, false, 0);
  ASSERT_NE(number, 0);
  const auto definition = doc.record(CX_TAG_EXPRESSION_DEF, number, 0);
  ASSERT_TRUE(definition.has_value());
  // 38 bytes: block, 0, 30, 0, 0, category, placement 1 and 2, 0 x4,
  // placement 3, playback, 0, placement 4 and 5, 0, and word 18 left 0.
  const std::uint16_t block = WordAt(*definition, 0);
  EXPECT_EQ(*definition, Words({block, 0, 30, 0, 0, 16, 3, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0}, 38));

  const auto blockRecord = doc.record(CX_TAG_TEXT_BLOCK, block, 0);
  ASSERT_TRUE(blockRecord.has_value());
  EXPECT_EQ(blockRecord->size(), std::size_t{CX_TEXT_BLOCK_SIZE});
  EXPECT_EQ(doc.text(CX_TAG_EXPRESSION_TEXT, WordAt(*blockRecord, 0)),
            "^font(Times New Roman,4096)^size(12)^nfx(128)<HP on>");
}

TEST_F(TextExpressions, ASecondIdenticalCallFindsTheFirstAndCreatesNothing) {
  const std::uint16_t first =
      rw::CreateTextExpression(u"<HP off>", kTimes12, 0, 17, 0, 0, true, 17);
  ASSERT_NE(first, 0);
  const auto all = doc.all_records().size();
  EXPECT_EQ(rw::CreateTextExpression(u"<HP off>", kTimes12, 0, 17, 1, 1, true, 17), first);
  EXPECT_EQ(doc.all_records().size(), all);
}

TEST_F(TextExpressions, ADifferentCategoryOrFontIsANewDefinition) {
  const std::uint16_t first =
      rw::CreateTextExpression(u"<HP off>", kTimes12, 0, 17, 0, 0, true, 17);
  const std::uint16_t other =
      rw::CreateTextExpression(u"<HP off>", kTimes12, 0, 16, 0, 0, true, 16);
  const std::uint16_t arial =
      rw::CreateTextExpression(u"<HP off>", 2 | (12 << 8), 0, 17, 0, 0, true, 17);
  EXPECT_NE(first, other);
  EXPECT_NE(first, arial);
  EXPECT_NE(other, arial);
  EXPECT_EQ(Count(CX_TAG_EXPRESSION_DEF), 3u);
}

TEST_F(TextExpressions, LineBreaksAreFlattened) {
  const std::uint16_t number =
      rw::CreateTextExpression(u"two\r\nlines\n", 2 | (10 << 8), 0, 1, 0, 0, false, 0);
  const std::uint16_t block = WordAt(*doc.record(CX_TAG_EXPRESSION_DEF, number, 0), 0);
  const std::uint16_t text = WordAt(*doc.record(CX_TAG_TEXT_BLOCK, block, 0), 0);
  EXPECT_EQ(doc.text(CX_TAG_EXPRESSION_TEXT, text), "^font(Arial,0)^size(10)^nfx(0)two lines");
}

TEST_F(TextExpressions, ThePlaybackCategoryRecordReplacesThePlacementWhenItLoads) {
  // Category record 17 (the playback value without its top two bits).
  doc.set_record(CX_TAG_EXPRESSION_CATEGORY, 17, 0, Words({7, 8, 9, 10, 11}, 296));
  const std::uint16_t number = rw::CreateTextExpression(u"x", kTimes12, 0, 17, 0, 0, true, 0x4011);
  EXPECT_EQ(*doc.record(CX_TAG_EXPRESSION_DEF, number, 0),
            Words({1, 0, 30, 0, 0, 17, 7, 8, 0, 0, 0, 0, 9, 0x4011, 0, 10, 11, 0}, 38));
}

TEST_F(TextExpressions, WithoutThePlaybackFlagTheCategoryRecordIsNotRead) {
  doc.set_record(CX_TAG_EXPRESSION_CATEGORY, 17, 0, Words({7, 8, 9, 10, 11}, 296));
  const std::uint16_t number = rw::CreateTextExpression(u"x", kTimes12, 0, 17, 0, 0, false, 17);
  EXPECT_EQ(*doc.record(CX_TAG_EXPRESSION_DEF, number, 0),
            Words({1, 0, 30, 0, 0, 17, 3, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0}, 38));
}

TEST_F(TextExpressions, ARefusedCreationGivesZero) {
  doc.refuse_writes(CX_TAG_EXPRESSION_DEF);
  EXPECT_EQ(rw::CreateTextExpression(u"x", kTimes12, 0, 17, 0, 0, false, 0), 0);
  doc.reset();
  doc.refuse_writes(CX_TAG_EXPRESSION_TEXT);
  EXPECT_EQ(rw::CreateTextExpression(u"x", kTimes12, 0, 17, 0, 0, false, 0), 0);
  EXPECT_EQ(Count(CX_TAG_TEXT_BLOCK), 0u);
}

}  // namespace
