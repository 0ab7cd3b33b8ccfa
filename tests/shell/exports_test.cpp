// The six exports against the reference host, in process.
#include <cantel_engine/document.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "plugin_module.h"

namespace {

PluginModule& Plugin() {
  static PluginModule plugin(RW_PLUGIN_PATH);
  return plugin;
}

std::u16string Field(const cx_char16* menu, std::size_t at) { return std::u16string(menu + at); }

ERegion Region(std::uint16_t firstSlot, std::uint16_t lastSlot, std::uint16_t firstMeasure,
               std::uint16_t lastMeasure, std::int32_t start = 0,
               std::int32_t end = CX_END_OF_MEASURE) {
  ERegion region{};
  region.startSlot = firstSlot;
  region.endSlot = lastSlot;
  region.startMeasure = firstMeasure;
  region.endMeasure = lastMeasure;
  region.startPosition = start;
  region.endPosition = end;
  return region;
}

class ACommandRun : public ::testing::Test {
 protected:
  void SetUp() override {
    auto& doc = cantel_engine::document();
    doc.reset();
    doc.add_measures(8, {});
    doc.add_staff("Melody", "Mel.");
    document_ = Region(1, 1, 1, 8);
    // A groove folder with one style, so that the dialog opens quietly.
    const auto components = std::filesystem::temp_directory_path() / "rw-exports-test";
    std::filesystem::create_directories(components / "Rhythm Weave");
    std::ofstream(components / "Rhythm Weave" / "Rock.mid") << "MThd";
    doc.set_path(CX_PATH_COMPONENT_FILES, components.string());
  }
  cantel_engine::Document& Doc() { return cantel_engine::document(); }
  bool DialogOpened() { return !Doc().dialog_steps().empty(); }

  ERegion document_{};
};

TEST(TheStartUpCalls, AnswerTheVersionInitAndMenuStatus) {
  EXPECT_EQ(Plugin().version(0x12345678), CX_INTERFACE_VERSION);
  std::uint32_t flags = 0xFFFFFFFF;
  EXPECT_EQ(Plugin().init(nullptr, &flags), 1);
  EXPECT_EQ(flags, 0u);
  EXPECT_EQ(Plugin().init(nullptr, nullptr), 1);
  EXPECT_EQ(Plugin().menuStatus(0), 1);
  EXPECT_EQ(Plugin().menuStatus(7), 1);
}

TEST(TheEnumeration, FillsOneMenuRecordForIndexZeroAndBelow) {
  for (std::int16_t index : {std::int16_t{0}, std::int16_t{-1}}) {
    cx_char16 menu[CX_MENU_RECORD_UNITS];
    std::fill(std::begin(menu), std::end(menu), u'?');
    ASSERT_EQ(Plugin().enumerate(nullptr, index, menu), 1) << index;
    EXPECT_EQ(Field(menu, CX_MENU_COMMAND), u"Rhythm Weave...");
    EXPECT_EQ(Field(menu, CX_MENU_TEXT2), u"Rhythm Weave");
    EXPECT_EQ(Field(menu, CX_MENU_TEXT3), u"Rhythm Weave");
    EXPECT_EQ(menu[CX_MENU_TEXT2 - 1], 0);  // each field is cleared whole
    EXPECT_EQ(menu[CX_MENU_TAIL], 0);
    EXPECT_EQ(menu[CX_MENU_TAIL + 1], 0);
  }
}

TEST(TheEnumeration, EndsAtIndexOneWithoutTouchingTheRecord) {
  cx_char16 menu[CX_MENU_RECORD_UNITS];
  std::fill(std::begin(menu), std::end(menu), u'?');
  EXPECT_EQ(Plugin().enumerate(nullptr, 1, menu), 0);
  EXPECT_EQ(Plugin().enumerate(nullptr, 0, nullptr), 0);
  EXPECT_EQ(menu[0], u'?');
}

TEST_F(ACommandRun, AWholeMeasureSelectionOpensTheDialogWithoutAQuestion) {
  const ERegion selection = Region(1, 1, 2, 4);
  EXPECT_EQ(Plugin().invoke(nullptr, 0, &selection, &document_), 0);
  EXPECT_TRUE(Doc().alerts().empty());
  EXPECT_TRUE(DialogOpened());
}

TEST_F(ACommandRun, APartialSelectionAsksFirstAndNoEndsTheRun) {
  const ERegion selection = Region(1, 1, 2, 4, 512);
  Doc().script_answers({CX_ID_NO});
  EXPECT_EQ(Plugin().invoke(nullptr, 0, &selection, &document_), 0);
  ASSERT_EQ(Doc().alerts().size(), 1u);
  EXPECT_EQ(Doc().alerts()[0].text,
            "This plug-in affects complete measures, even if you make a partial measure "
            "selection. Would you like to continue anyway?");
  EXPECT_EQ(Doc().alerts()[0].style, CX_MB_QUESTION_YESNO);
  EXPECT_FALSE(DialogOpened());
}

TEST_F(ACommandRun, APartialSelectionWidenedOnYesOpensTheDialog) {
  ERegion selection = Region(1, 1, 2, 4, 0, 3000);
  const ERegion asPassed = selection;
  Doc().script_answers({CX_ID_YES});
  Plugin().invoke(nullptr, 0, &selection, &document_);
  EXPECT_EQ(Doc().alerts().size(), 1u);
  EXPECT_TRUE(DialogOpened());
  EXPECT_EQ(std::memcmp(&selection, &asPassed, sizeof selection), 0);  // the host's stays
}

TEST_F(ACommandRun, NoSelectionAsksToTakeTheWholeDocument) {
  Doc().script_answers({CX_ID_YES});
  Plugin().invoke(nullptr, 0, nullptr, &document_);
  ASSERT_EQ(Doc().alerts().size(), 1u);
  EXPECT_EQ(Doc().alerts()[0].text,
            "No region is selected. Would you like to add a rhythm weave to the complete file?");
  EXPECT_TRUE(DialogOpened());

  Doc().reset();
  Doc().script_answers({CX_ID_NO});
  EXPECT_EQ(Plugin().invoke(nullptr, 0, nullptr, &document_), 0);
  EXPECT_FALSE(DialogOpened());
}

TEST_F(ACommandRun, RefusesARegionRunningBackwardsAndANullDocument) {
  const ERegion backwards = Region(1, 1, 5, 3);
  EXPECT_EQ(Plugin().invoke(nullptr, 0, &backwards, &document_), 0);
  EXPECT_EQ(Plugin().invoke(nullptr, 0, nullptr, nullptr), 0);
  EXPECT_TRUE(Doc().alerts().empty());
  EXPECT_FALSE(DialogOpened());
}

}  // namespace
