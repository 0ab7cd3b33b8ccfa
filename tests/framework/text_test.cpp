// Text blocks, expression texts and the font their tags name.
#include "framework_fixture.h"
#include "host_api.h"
#include "text_object.h"

namespace {

using rw::host::kVersion;

class TextObjects : public FrameworkTest {
 protected:
  // A text block "XTOS" showing a new "lbxt" text; answers the block number.
  std::uint16_t AddTextBlock(std::uint16_t number, const std::string& text) {
    const std::uint16_t textNumber = doc.add_text(CX_TAG_BLOCK_TEXT, text);
    doc.set_record(CX_TAG_TEXT_BLOCK, number, 0, Words({textNumber}, CX_TEXT_BLOCK_SIZE));
    return number;
  }
};

TEST_F(TextObjects, LoadReadsTheBlockThenTheTextItShows) {
  doc.add_text(CX_TAG_BLOCK_TEXT, "unrelated");
  AddTextBlock(4, "Drum Set");
  rw::CUTextObject text;
  ASSERT_EQ(text.Load(4, kVersion), 1);
  EXPECT_EQ(Wide(text.Text()), u"Drum Set");
  EXPECT_EQ(text.TextNumber(), 2);
  EXPECT_EQ(text.CurrentNumber(), 4);
}

TEST_F(TextObjects, AMissingBlockOrTextLeavesNoText) {
  AddTextBlock(4, "Drum Set");
  rw::CUTextObject text;
  ASSERT_EQ(text.Load(4, kVersion), 1);
  EXPECT_EQ(text.Load(5, kVersion), 0);
  EXPECT_EQ(text.Text(), nullptr);
  doc.set_record(CX_TAG_TEXT_BLOCK, 6, 0, Words({40}, CX_TEXT_BLOCK_SIZE));
  EXPECT_EQ(text.Load(6, kVersion), 0);
  EXPECT_EQ(text.Text(), nullptr);
}

TEST_F(TextObjects, NextStepsThroughTheBlocksWithTheirTexts) {
  AddTextBlock(1, "one");
  AddTextBlock(2, "two");
  rw::CUTextObject text;
  ASSERT_EQ(text.Load(1, kVersion), 1);
  ASSERT_NE(text.Next(), 0);
  EXPECT_EQ(Wide(text.Text()), u"two");
  EXPECT_EQ(text.Next(), 0);
  EXPECT_EQ(text.Text(), nullptr);
}

TEST_F(TextObjects, CreateStoresTheTextUnderANewNumber) {
  doc.add_text(CX_TAG_EXPRESSION_TEXT, "taken");
  rw::CExpressionText text;
  rw::SetText(text, u"<HP on>");
  const std::uint16_t number = text.Create();
  ASSERT_EQ(number, 2);
  EXPECT_EQ(doc.text(CX_TAG_EXPRESSION_TEXT, number), "<HP on>");
}

TEST_F(TextObjects, ExpressionTextsLoadByTextNumberWithoutABlock) {
  doc.add_text(CX_TAG_EXPRESSION_TEXT, "first");
  doc.add_text(CX_TAG_EXPRESSION_TEXT, "second");
  rw::CExpressionText text;
  ASSERT_EQ(text.Load(2, kVersion), 1);
  EXPECT_EQ(Wide(text.Text()), u"second");
  rw::CExpressionText walker;
  ASSERT_NE(walker.Next(), 0);
  EXPECT_EQ(Wide(walker.Text()), u"first");
  ASSERT_NE(walker.Next(), 0);
  EXPECT_EQ(Wide(walker.Text()), u"second");
  EXPECT_EQ(walker.Next(), 0);
}

TEST_F(TextObjects, AnOddByteSizeStillGivesATerminatedText) {
  cantel_engine::Bytes odd = Words({u'A', u'B'});
  odd.push_back('C');  // a stray byte the host reports in the size
  doc.set_record(CX_TAG_EXPRESSION_TEXT, 1, 0, odd);
  rw::CExpressionText text;
  ASSERT_EQ(text.Load(1, kVersion), 1);
  EXPECT_EQ(Wide(text.Text()), u"ABC");
}

using FontInfo = FrameworkTest;

TEST_F(FontInfo, TheNthFontTagIsParsedWithTheTagsThatFollowIt) {
  rw::CUTextObject text;
  text.SetText(u"^font(Arial,0)^size(14)^nfx(2)Kick ^font(Sonetta,0)^size(24)x");
  std::uint16_t info[3] = {9, 9, 9};
  ASSERT_EQ(text.GetFontInfo(info, 0), 1);
  EXPECT_EQ(info[0], 2);
  EXPECT_EQ(info[1], 14);
  EXPECT_EQ(info[2], 2);
  ASSERT_EQ(text.GetFontInfo(info, 1), 1);
  EXPECT_EQ(info[0], 3);
  EXPECT_EQ(info[1], 24);
  EXPECT_EQ(info[2], 0) << "the record starts empty for every query";
  EXPECT_EQ(text.GetFontInfo(info, 2), 0);
}

TEST_F(FontInfo, ATextWithoutFontTagsHasNone) {
  rw::CUTextObject text;
  text.SetText(u"^size(12)plain ^Font(Arial,0) ^");
  std::uint16_t info[3] = {9, 9, 9};
  EXPECT_EQ(text.GetFontInfo(info, 0), 0);
  EXPECT_EQ(info[0], 9);
  rw::CUTextObject empty;
  EXPECT_EQ(empty.GetFontInfo(info, 0), 0);
}

TEST_F(FontInfo, ExpressionsFallBackToFontPreference15ForTheFirstTagOnly) {
  doc.set_font_preference(15, 5, 18, 64);
  rw::CExpressionText text;
  text.SetText(u"<HP off>");
  std::uint16_t info[3] = {0, 0, 0};
  ASSERT_EQ(text.GetFontInfo(info, 0), 1);
  EXPECT_EQ(info[0], 5);
  EXPECT_EQ(info[1], 18);
  EXPECT_EQ(info[2], 64);
  EXPECT_EQ(text.GetFontInfo(info, 1), 0);
}

TEST_F(FontInfo, AnUnparsableTagEndsTheScanInsteadOfLoopingForEver) {
  rw::CUTextObject text;
  text.SetText(u"^font(Arial,0)^size(10)^fo");
  std::uint16_t info[3] = {0, 0, 0};
  ASSERT_EQ(text.GetFontInfo(info, 0), 1);
  EXPECT_EQ(info[0], 2);
  EXPECT_EQ(info[1], 10);
}

}  // namespace
