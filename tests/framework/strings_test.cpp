// UTF-16 strings, formatting, string resources and plain text.
#include <cstdlib>

#include "eu16string.h"
#include "framework_fixture.h"
#include "plain_text.h"
#include "string_resources.h"
#include "wide_string.h"

namespace {

TEST(WideStrings, CompareByTheFirstDifferingUnitUnsigned) {
  EXPECT_EQ(rw::WideCompare(u"abc", u"abc"), 0);
  EXPECT_EQ(rw::WideCompare(u"abc", u"abd"), -1);
  EXPECT_EQ(rw::WideCompare(u"abd", u"abc"), 1);
  EXPECT_EQ(rw::WideCompare(u"ab", u"abc"), -1);
  // U+00E9 and U+8000 sort after ASCII: units are unsigned.
  EXPECT_EQ(rw::WideCompare(u"\u00e9", u"z"), 1);
  EXPECT_EQ(rw::WideCompare(u"a", u"\u8000"), -1);
  EXPECT_EQ(rw::WideCompareN(u"abcX", u"abcY", 3), 0);
  EXPECT_EQ(rw::WideCompareN(u"abcX", u"abcY", 4), -1);
  EXPECT_EQ(rw::WideCompareN(u"x", u"y", 0), 0);
}

TEST(WideStrings, FormatFillsNumbersAndStringsAndAlwaysTerminates) {
  char16_t buffer[64];
  EXPECT_EQ(rw::WideFormat(buffer, 64, u"^font(%s,%d)^size(%d)", {u"Arial", 0, 12}), 23u);
  EXPECT_EQ(std::u16string(buffer), u"^font(Arial,0)^size(12)");
  rw::WideFormat(buffer, 64, u"%d%%", {-40});
  EXPECT_EQ(std::u16string(buffer), u"-40%");
  char16_t small[5];
  EXPECT_EQ(rw::WideFormat(small, 5, u"[Staff %d]", {3}), 4u);
  EXPECT_EQ(std::u16string(small), u"[Sta");
}

TEST(Eu16String, OwnsACopyAndCountsUnits) {
  char16_t source[] = u"Kick";
  rw::eu16string s(source);
  source[0] = u'X';
  EXPECT_EQ(std::u16string(s.c_str()), u"Kick");
  EXPECT_EQ(s.length(), 4u);
  rw::eu16string t = s;
  t = u"Snare drum";
  EXPECT_EQ(s.length(), 4u);
  EXPECT_EQ(t.length(), 10u);
  t = t.c_str() + 6;  // from its own buffer
  EXPECT_EQ(std::u16string(t.c_str()), u"drum");
  EXPECT_TRUE(rw::eu16string(nullptr).empty());
  EXPECT_TRUE(rw::eu16string(u"ab") == rw::eu16string(u"ab"));
}

TEST(StringResources, CapacityZeroGivesNullAndTheLastUnitIsAlways0) {
  setenv("LC_ALL", "C", 1);
  char16_t buffer[7] = {u'x', u'x', u'x', u'x', u'x', u'x', u'x'};
  EXPECT_EQ(rw::LoadStringResource(11, buffer, 0), nullptr);
  EXPECT_EQ(buffer[0], u'x');
  ASSERT_EQ(rw::LoadStringResource(11, buffer, 1), buffer);
  EXPECT_EQ(buffer[0], 0);
  rw::LoadStringResource(11, buffer, 7);  // "Normal Notation"
  EXPECT_EQ(std::u16string(buffer), u"Normal");
  char narrow[4];
  rw::LoadStringResourceA(11, narrow, 4);
  EXPECT_EQ(std::string(narrow), "Nor");
  rw::LoadStringResource(99999, buffer, 7);
  EXPECT_EQ(buffer[0], 0);
}

std::u16string Plain(const char16_t* text) { return rw::MakePlainText(text).c_str(); }

TEST(PlainText, TheFlatTagBecomesTheLetterB) {
  EXPECT_EQ(Plain(u"^flat()"), u"b");
  EXPECT_EQ(Plain(u"^flat() Clarinet"), u"b Clarinet");
  EXPECT_EQ(Plain(u"B^flat()^flat()"), u"Bbb");
}

TEST(PlainText, OtherTagsAreRemovedThroughTheirCloser) {
  EXPECT_EQ(Plain(u"A^font(X,0)B"), u"AB");
  EXPECT_EQ(Plain(u"^font(Times,4096)^size(12)^nfx(0)<HP on>"), u"<HP on>");
  EXPECT_EQ(Plain(u"^sharp()F"), u"F") << "only the flat becomes a letter";
}

TEST(PlainText, AnIncompleteTagStopsTheScan) {
  EXPECT_EQ(Plain(u"A^font(X"), u"A^font(X");
  EXPECT_EQ(Plain(u"^x ^size(1)"), u"") << "the opener may belong to a later tag";
  EXPECT_EQ(Plain(u"no tags"), u"no tags");
  EXPECT_EQ(Plain(u"^size(1)A^"), u"A^");
  EXPECT_EQ(Plain(nullptr), u"");
}

}  // namespace
