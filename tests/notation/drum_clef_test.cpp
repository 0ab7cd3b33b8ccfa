#include "drum_clef.h"

#include "notation_fixture.h"

namespace notation_test {
namespace {

using rw::notation::SetStaffClef;

constexpr std::uint16_t kOwnFont = 0x0002;

// A clef definition "fcbg" drawn in `font`; `flags` at 18.
Bytes ClefDefinition(std::uint16_t font, std::uint16_t flags) {
  return Words(CX_CLEF_DEF_SIZE, {{12, font}, {14, 24}, {18, flags}});
}

class TheDrumClefIsCheckedForTheSonettaFont : public NotationTest {
 protected:
  void SetUp() override {
    NotationTest::SetUp();
    doc.add_measures(5, {});
    staff = doc.add_staff("Drums", "");
  }
  std::size_t Questions() const { return doc.alerts().size(); }
  std::uint16_t staff = 0;
};

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, TheClefIsSetInEveryMeasureOfTheRegionOnly) {
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(kSonettaPercussion, kOwnFont));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 2, 4));
  EXPECT_EQ(doc.clef(staff, 1), 0);
  for (std::uint16_t measure = 2; measure <= 4; ++measure) EXPECT_EQ(doc.clef(staff, measure), 12);
  EXPECT_EQ(doc.clef(staff, 5), 0);
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, AnyFontWhoseNameBeginsWithSonettaPasses) {
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(kSonettaPercussion, kOwnFont));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(kSonetta, kOwnFont));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  EXPECT_EQ(Questions(), 0u);
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, TheComparisonIsCaseSensitive) {
  doc.set_fonts({{1, "Times New Roman", 0}, {3, "Sonetta", 0}, {9, "SONETTA Percussion", 0}});
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(9, kOwnFont));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  EXPECT_EQ(Questions(), 1u);
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont,
       ADefinitionWithoutItsOwnFontIsCheckedAgainstFontZero) {
  // Font 3 is "Sonetta", but without the flag the definition uses font 0.
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(kSonetta, 0));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  EXPECT_EQ(Questions(), 1u);

  doc.set_fonts({{0, "Sonetta", 0}, {1, "Times New Roman", 0}});
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(1, 0));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  EXPECT_EQ(Questions(), 1u) << "font 0 is Sonetta now";
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, AClefOtherThanTwelveNeverAsks) {
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(kTimesNewRoman, kOwnFont));
  SetStaffClef(staff, 0, WholeMeasures(1, 1, 1, 2));
  doc.remove_record(CX_TAG_CLEF_DEF, 12, 0);
  SetStaffClef(staff, 3, WholeMeasures(1, 1, 1, 2));
  EXPECT_EQ(Questions(), 0u);
  EXPECT_EQ(doc.clef(staff, 2), 3);
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, AWrongDefinitionAsksStringTwentySixAsAYesNoQuestion) {
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, ClefDefinition(kTimesNewRoman, kOwnFont));
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  ASSERT_EQ(Questions(), 1u);
  const auto& question = doc.alerts()[0];
  EXPECT_EQ(question.style, CX_MB_QUESTION_YESNO);
  EXPECT_TRUE(question.wide);
  EXPECT_EQ(question.text,
            "The definition for the drum set clef seems to be incorrect.\n\nIt's the fourth clef "
            "in the second row in Cantel's Clef Designer.\n\nWould you like the Rhythm Weave "
            "plug-in to fix the clef definition?");
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, YesRepairsWithExactlyThePluginsValues) {
  // position -1, symbol 0x11223344, position -2, options 7, kept word 0xCDAB,
  // Times New Roman, size 10, effects 5, flags 0x0100.
  const Bytes before = {0xFF, 0xFF, 0x44, 0x33, 0x22, 0x11, 0xFE, 0xFF, 0x07, 0x00,
                        0xAB, 0xCD, 0x01, 0x00, 0x0A, 0x00, 0x05, 0x00, 0x00, 0x01};
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, before);
  doc.script_answers({CX_ID_YES});
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  // -10, 139, -6, 0, kept, Sonetta, 24, 0, flags | 2.
  const Bytes repaired = {0xF6, 0xFF, 0x8B,     0x00, 0x00, 0x00, 0xFA, 0xFF, 0x00, 0x00,
                          0xAB, 0xCD, kSonetta, 0x00, 0x18, 0x00, 0x00, 0x00, 0x02, 0x01};
  EXPECT_EQ(doc.record(CX_TAG_CLEF_DEF, 12, 0), repaired);
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, NoLeavesTheDefinitionButKeepsTheClefs) {
  const Bytes before = ClefDefinition(kTimesNewRoman, kOwnFont);
  doc.set_record(CX_TAG_CLEF_DEF, 12, 0, before);
  doc.script_answers({CX_ID_NO});
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 2));
  EXPECT_EQ(doc.record(CX_TAG_CLEF_DEF, 12, 0), before);
  EXPECT_EQ(doc.clef(staff, 2), 12);
}

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, AMissingDefinitionIsAskedAboutButNeverWritten) {
  doc.script_answers({CX_ID_YES});
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  EXPECT_EQ(Questions(), 1u);
  EXPECT_FALSE(doc.record(CX_TAG_CLEF_DEF, 12, 0));
}

}  // namespace
}  // namespace notation_test
