// The six exports against the reference host, in process.
#include <cantel_engine/document.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "plugin_module.h"

namespace {

PluginModule& Plugin() {
  static PluginModule plugin(RW_PLUGIN_PATH);
  return plugin;
}

std::u16string Field(const cx_char16* menu, std::size_t at) { return std::u16string(menu + at); }

// What the scenarios cannot hand the exports: negative indexes and null
// pointers. The start-up calls and the working region are shown end to end
// in tests/scenarios.
TEST(TheExports, AnswerOddArgumentsWithoutTouchingAnything) {
  std::uint32_t flags = 0xFFFFFFFF;
  EXPECT_EQ(Plugin().init(nullptr, &flags), 1);
  EXPECT_EQ(flags, 0u);
  EXPECT_EQ(Plugin().init(nullptr, nullptr), 1);
  EXPECT_EQ(Plugin().menuStatus(7), 1);

  cx_char16 menu[CX_MENU_RECORD_UNITS];
  std::fill(std::begin(menu), std::end(menu), u'?');
  EXPECT_EQ(Plugin().enumerate(nullptr, 1, menu), 0);
  EXPECT_EQ(Plugin().enumerate(nullptr, 0, nullptr), 0);
  EXPECT_EQ(menu[0], u'?');
  ASSERT_EQ(Plugin().enumerate(nullptr, -1, menu), 1);  // like index 0
  EXPECT_EQ(Field(menu, CX_MENU_COMMAND), u"Rhythm Weave...");
  EXPECT_EQ(menu[CX_MENU_TEXT2 - 1], 0);  // each field is cleared whole

  auto& doc = cantel_engine::document();
  doc.reset();
  EXPECT_EQ(Plugin().invoke(nullptr, 0, nullptr, nullptr), 0);
  EXPECT_TRUE(doc.alerts().empty());
  EXPECT_TRUE(doc.dialog_steps().empty());
}

}  // namespace
