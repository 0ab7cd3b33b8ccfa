// The POSIX side of the platform: paths between UTF-16 and UTF-8, the
// directory search with Windows' rules and its closing, the user's groove
// folder, the language of the string table.
#include "platform.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "paths.h"
#include "string_table.h"

namespace {

namespace fs = std::filesystem;
using rw::platform::NativePath;
using rw::platform::Utf8ToUtf16;

TEST(PathsBetweenUtf16AndUtf8, SurviveEveryPlaneAndTurnBackslashesIntoSlashes) {
  const std::u16string wide = u"C:\\Grooves\\Polka ą \u65e5\u672c \U0001D11E.mid";
  const std::string narrow = NativePath(wide.c_str());
  EXPECT_EQ(narrow, "C:/Grooves/Polka \xC4\x85 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9D\x84\x9E.mid");
  EXPECT_EQ(Utf8ToUtf16(narrow), u"C:/Grooves/Polka ą \u65e5\u672c \U0001D11E.mid");
  EXPECT_EQ(NativePath(nullptr), "");
}

TEST(PathsBetweenUtf16AndUtf8, OnlyWellFormedUtf8HasAUtf16Form) {
  for (const char* good : {"", "Rock 8ths", "Polka \xC4\x85", "\xF0\x9D\x84\x9E"}) {
    EXPECT_TRUE(rw::platform::IsValidUtf8(good)) << good;
  }
  for (const char* bad :
       {"Rock \xE9", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\x80"}) {
    EXPECT_FALSE(rw::platform::IsValidUtf8(bad)) << bad;
  }
}

class TheDirectorySearch : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("rw-platform-" + std::to_string(::getpid()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }
  void Touch(const std::string& name) { std::ofstream(folder_ / name) << "x"; }

  // The names found, a folder's with a slash after it, and the search
  // closed.
  std::vector<std::u16string> Found(const std::u16string& pattern) {
    std::vector<std::u16string> names;
    rw::platform::FindData found;
    const std::u16string full = Utf8ToUtf16(folder_.string()) + u"\\" + pattern;
    auto search = rw::platform::FindFirstFileW(full.c_str(), &found);
    if (search == rw::platform::kInvalidFindHandle) return names;
    do {
      const bool folder = (found.attributes & rw::platform::kAttributeDirectory) != 0;
      names.push_back(std::u16string(found.fileName) + (folder ? u"/" : u""));
    } while (rw::platform::FindNextFileW(search, &found));
    EXPECT_TRUE(rw::platform::FindClose(search));
    return names;
  }
  std::u16string Pattern(const std::u16string& pattern) {
    return Utf8ToUtf16(folder_.string()) + u"/" + pattern;
  }

  fs::path folder_;
};

TEST_F(TheDirectorySearch, MatchesStarMidAsWindowsDoesInCaseInsensitiveOrder) {
  for (const char* name : {"samba.mid", "Bossa.MID", "Long.midi", "notes.txt", "mid", "a.mi",
                           "b.mid.txt", "Zz.Mid", "Caf\xE9.mid"}) {
    Touch(name);
  }
  fs::create_directory(folder_ / "Fills.mid");
  EXPECT_EQ(Found(u"*.mid"), (std::vector<std::u16string>{u"Bossa.MID", u"Fills.mid/", u"Long.midi",
                                                          u"samba.mid", u"Zz.Mid"}));
  EXPECT_TRUE(Found(u"*.wav").empty());
}

TEST_F(TheDirectorySearch, LeavesNothingOpenOnceClosedWhetherItRanToItsEndOrNot) {
  for (const char* name : {"a.mid", "b.mid", "c.mid"}) Touch(name);
  using namespace rw::platform;
  FindData found;
  EXPECT_EQ(Found(u"*.mid").size(), 3u);
  EXPECT_EQ(OpenSearches(), 0u);

  FindHandle early = FindFirstFileW(Pattern(u"*.mid").c_str(), &found);
  ASSERT_NE(early, kInvalidFindHandle);
  EXPECT_EQ(OpenSearches(), 1u);
  EXPECT_TRUE(FindClose(early));
  EXPECT_EQ(OpenSearches(), 0u);
  // A closed search is gone: it neither delivers nor closes again.
  EXPECT_FALSE(FindNextFileW(early, &found));
  EXPECT_FALSE(FindClose(early));
  EXPECT_FALSE(FindClose(kInvalidFindHandle));
  // One that finds nothing leaves nothing open either.
  EXPECT_EQ(FindFirstFileW(Pattern(u"*.wav").c_str(), &found), kInvalidFindHandle);
  EXPECT_EQ(FindFirstFileW(Pattern(u"Missing/*.mid").c_str(), &found), kInvalidFindHandle);
  EXPECT_EQ(OpenSearches(), 0u);
}

// The variables the user's folder is named from, set for one test and put
// back after it.
class TheUserGrooveFolder : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"XDG_DATA_HOME", "HOME"}) {
      const char* value = std::getenv(name);
      saved_.emplace_back(name,
                          value != nullptr ? std::optional<std::string>(value) : std::nullopt);
    }
  }
  void TearDown() override {
    for (const auto& [name, value] : saved_) Set(name.c_str(), value ? value->c_str() : nullptr);
  }
  static void Set(const char* name, const char* value) {
    value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
  }
  // The answer, or "none" when there is none.
  static std::u16string Named(std::size_t capacity = rw::platform::kMaxPath) {
    std::vector<char16_t> buffer(capacity, u'x');
    if (!rw::platform::UserGrooveFolder(buffer.data(), capacity)) {
      EXPECT_EQ(buffer[0], u'\0');
      return u"none";
    }
    return buffer.data();
  }

  std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

TEST_F(TheUserGrooveFolder, IsRhythmWeaveInTheDataHome) {
  Set("HOME", "/home/ana");
  Set("XDG_DATA_HOME", "/srv/data/ana");
  EXPECT_EQ(Named(), u"/srv/data/ana/Rhythm Weave");
  Set("XDG_DATA_HOME", "/srv/data/zo\xC3\xAB/");
  EXPECT_EQ(Named(), u"/srv/data/zo\u00EB/Rhythm Weave");
}

TEST_F(TheUserGrooveFolder, IsInTheHomesSharedDataWhenXdgDataHomeIsUnsetEmptyOrRelative) {
  Set("HOME", "/home/ana/");
  for (const char* xdg : {static_cast<const char*>(nullptr), "", "data"}) {
    Set("XDG_DATA_HOME", xdg);
    EXPECT_EQ(Named(), u"/home/ana/.local/share/Rhythm Weave") << (xdg ? xdg : "unset");
  }
}

TEST_F(TheUserGrooveFolder, IsNoneWhereNoFolderOrNoUtf16NameCanBeGiven) {
  Set("XDG_DATA_HOME", nullptr);
  Set("HOME", nullptr);
  EXPECT_EQ(Named(), u"none");
  Set("HOME", "");
  EXPECT_EQ(Named(), u"none");
  Set("XDG_DATA_HOME", "/srv/data/caf\xE9");
  EXPECT_EQ(Named(), u"none");
}

TEST_F(TheUserGrooveFolder, FitsWithItsTerminatorOrIsNone) {
  Set("XDG_DATA_HOME", "/d");
  const std::u16string full = u"/d/Rhythm Weave";
  EXPECT_EQ(Named(full.size() + 1), full);
  EXPECT_EQ(Named(full.size()), u"none");
  EXPECT_EQ(Named(1), u"none");
  EXPECT_FALSE(rw::platform::UserGrooveFolder(nullptr, 10));
}

TEST_F(TheUserGrooveFolder, IsNamedButNeverMade) {
  const fs::path data = fs::temp_directory_path() / ("rw-data-" + std::to_string(::getpid()));
  fs::remove_all(data);
  fs::create_directories(data);
  Set("XDG_DATA_HOME", data.c_str());
  EXPECT_EQ(Named(), Utf8ToUtf16(data.string()) + u"/Rhythm Weave");
  EXPECT_TRUE(fs::is_empty(data));
  fs::remove_all(data);
}

TEST(TheLanguage, FollowsLcAllThenLcMessagesThenLang) {
  const struct {
    const char* all;
    const char* messages;
    const char* lang;
    const char16_t* text;  // string 11
  } cases[] = {
      {"sv_SE.UTF-8", "ja_JP.UTF-8", "pl_PL.UTF-8", u"Vanlig notation"},
      {"", "ja_JP.UTF-8", "pl_PL.UTF-8", u"通常の記譜"},
      {nullptr, nullptr, "pl_PL.UTF-8", u"Notacja zwykła"},
      {nullptr, "de_DE.UTF-8", "sv_SE.UTF-8", u"Normal Notation"},
      {nullptr, nullptr, nullptr, u"Normal Notation"},
  };
  for (const auto& c : cases) {
    for (auto [variable, value] :
         {std::pair{"LC_ALL", c.all}, {"LC_MESSAGES", c.messages}, {"LANG", c.lang}}) {
      value != nullptr ? ::setenv(variable, value, 1) : ::unsetenv(variable);
    }
    char16_t text[64];
    rw::platform::LoadStringW(nullptr, 11, text, 64);
    EXPECT_EQ(std::u16string(text), c.text) << (c.lang ? c.lang : "-");
  }
}

TEST(TheStringTable, HasEveryStringInEveryLanguage) {
  using rw::resources::Language;
  for (Language language : {Language::Japanese, Language::Polish, Language::Swedish}) {
    for (std::uint32_t id = 0; id < 100; ++id) {
      const auto* english = rw::resources::FindString(Language::English, id);
      const auto* translated = rw::resources::FindString(language, id);
      EXPECT_EQ(english == nullptr, translated == nullptr) << "string " << id;
      if (translated != nullptr) {
        EXPECT_NE(translated->wide[0], u'\0') << "string " << id;
      }
    }
  }
}

}  // namespace
