#include "engine_fixture.h"

namespace {

class FontsAndAlertsOfTheEngine : public EngineTest {};

TEST_F(FontsAndAlertsOfTheEngine, FontNamesAndNumbersComeFromOneTable) {
  doc.set_fonts({{7, "Sonetta Percussion", 3}});
  EXPECT_EQ(CX_FontNameToNum_UTF16(u"Sonetta Percussion", v), 7);
  EXPECT_EQ(CX_FontNameToNum_UTF16(u"Sonetta", v), 0xFFFF);
  cx_char16 name[8] = {};
  ASSERT_EQ(CX_FontNumToName_UTF16(7, name, 8, v), 1);
  EXPECT_EQ(std::u16string(name), u"Sonetta");  // truncated to the capacity
  EXPECT_EQ(CX_FontNumToName_UTF16(8, name, 8, v), 0);

  uint8_t record[CX_FONT_NAME_SIZE] = {};
  uint16_t block[2] = {7, 0};
  uint32_t size = sizeof record;
  ASSERT_EQ(CX_LoadEData(CX_TAG_FONT_NAME, block, record, &size, v), 1);
  EXPECT_EQ(cx_get_u16(record, CX_FONT_NAME_PARAMETER), 3);
  EXPECT_EQ(cx_get_u16(record, CX_FONT_NAME_TEXT), u'S');
}

TEST_F(FontsAndAlertsOfTheEngine, CaretParserUpdatesTheThreeFontWordsAndSkipsOtherCommands) {
  doc.set_fonts({{4, "Times New Roman", 0}});
  const cx_char16* text = u"^font(Times New Roman,0)^size(14)^flat()^nfx(128)x";
  uint16_t info[3] = {};
  const cx_char16* end = nullptr;
  const cx_char16* p = CX_ParseCaretCommand_UTF16(text, &end, CX_TAG_BLOCK_TEXT, info, v);
  EXPECT_EQ(p, end);
  EXPECT_EQ(info[0], 4);
  while (p != nullptr && *p == u'^') p = CX_ParseCaretCommand_UTF16(p, &end, 0, info, v);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(*p, u'x');
  EXPECT_EQ(info[1], 14);
  EXPECT_EQ(info[2], 128);
  EXPECT_EQ(CX_ParseCaretCommand_UTF16(u"^size(3", &end, 0, info, v), nullptr);
}

TEST_F(FontsAndAlertsOfTheEngine, QuestionsTakeScriptedAnswersThenNoAndOtherAlertsAnswerOk) {
  doc.script_answers({CX_ID_YES});
  EXPECT_EQ(CX_AlertMessage_UTF16(0, CX_MB_EXCLAMATION, 0, u"Careful", v), 1);
  EXPECT_EQ(CX_AlertMessage_UTF16(0, CX_MB_QUESTION_YESNO, 0, u"Go on?", v), CX_ID_YES);
  EXPECT_EQ(CX_AlertMessage_UTF16(0, CX_MB_QUESTION_YESNO, 0, u"Again?", v), CX_ID_NO);
  EXPECT_EQ(CX_AlertMessage(0, CX_MB_STOP, 0, "Gro\xC3\x9F", v), 1);
  ASSERT_EQ(doc.alerts().size(), 4u);
  EXPECT_EQ(doc.alerts()[1].text, "Go on?");
  EXPECT_EQ(doc.alerts()[3].text, "Gro\xC3\x9F");
  EXPECT_FALSE(doc.alerts()[3].wide);
}

TEST_F(FontsAndAlertsOfTheEngine, PathsAnswerTheirKindAndLeaveOtherKindsAlone) {
  doc.set_path(CX_PATH_COMPONENT_FILES, "/scores/Component Files");
  doc.set_path(CX_PATH_TEMPORARY, "/tmp/work/");
  cx_char16 path[CX_PATH_UNITS] = {u'?', 0};
  CX_GetCantelPath(CX_PATH_COMPONENT_FILES, path, v);
  EXPECT_EQ(std::u16string(path), u"/scores/Component Files");
  CX_GetCantelPath(CX_PATH_TEMPORARY, path, v);
  EXPECT_EQ(std::u16string(path), u"/tmp/work/");
  path[0] = u'?';
  CX_GetCantelPath(3, path, v);
  EXPECT_EQ(path[0], u'?');
}

TEST_F(FontsAndAlertsOfTheEngine, EditsAreCountedAndAnEndWithoutAStartIsUnbalanced) {
  CX_StartCantelEdit("Rhythm Weave Plug-In", v);
  CX_EndCantelEdit(v);
  CX_EndCantelEdit(v);
  EXPECT_EQ(doc.edits().started, 1);
  EXPECT_EQ(doc.edits().ended, 1);
  EXPECT_EQ(doc.edits().unbalanced_ends, 1);
  EXPECT_EQ(doc.edits().labels, (std::vector<std::string>{"Rhythm Weave Plug-In"}));
}

}  // namespace
