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

TEST_F(TheDrumClefIsCheckedForTheSonettaFont, AMissingDefinitionIsAskedAboutButNeverWritten) {
  doc.script_answers({CX_ID_YES});
  SetStaffClef(staff, 12, WholeMeasures(1, 1, 1, 1));
  EXPECT_EQ(Questions(), 1u);
  EXPECT_FALSE(doc.record(CX_TAG_CLEF_DEF, 12, 0));
}

}  // namespace
}  // namespace notation_test
