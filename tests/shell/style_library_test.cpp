// The style library over a folder tree made for each test: its order, its
// categories, what it leaves out, and that it leaves no search open.
#include "style_library.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform.h"

namespace {

namespace fs = std::filesystem;
using rw::shell::FindStyles;
using rw::shell::GrooveRoots;
using rw::shell::GrooveStyle;
using rw::shell::PartKind;

std::u16string Wide(const std::string& text) { return {text.begin(), text.end()}; }

class TheStyleLibrary : public ::testing::Test {
 protected:
  void SetUp() override {
    root_ = fs::temp_directory_path() / ("rw-library-" + std::to_string(::getpid()));
    fs::remove_all(root_);
  }
  void TearDown() override { fs::remove_all(root_); }

  // A file at `relative`, with its folders.
  void File(const fs::path& relative) {
    fs::create_directories((root_ / relative).parent_path());
    std::ofstream(root_ / relative) << "MThd";
  }
  std::u16string Root(const char* name) const { return Wide((root_ / name).string() + "/"); }

  static std::vector<std::string> Names(const rw::shell::StyleLibrary& styles) {
    std::vector<std::string> names;
    for (const GrooveStyle& style : styles) {
      names.emplace_back(style.name.begin(), style.name.end());
      if (style.own) names.back() = "own: " + names.back();
    }
    return names;
  }

  fs::path root_;
};

TEST_F(TheStyleLibrary, ReadsTheTopOfEachRootFirstThenItsCategoriesDepthFirst) {
  for (const char* file :
       {"Shipped/Rock.mid", "Shipped/Latin/Samba.mid", "Shipped/Latin/Fills/Samba.mid",
        "Shipped/Latin/Cuban/Mambo.mid", "Shipped/Ballads/Slow.mid", "Shipped/A/B/C/D/Four.mid",
        "Shipped/A/B/C/D/E/Five.mid", "Shipped/Endings/Rock.mid", "Shipped/fills/Odd.mid",
        "Own/Mine.mid", "Own/Practice/Slow.mid", "Shipped/RhythmWeave$$Temp$$File.mid"}) {
    File(file);
  }
  fs::create_directories(root_ / "Shipped" / "Folder.mid");  // a folder is no groove
  const rw::shell::StyleLibrary styles = FindStyles(GrooveRoots{Root("Shipped"), Root("Own")});
  // Within a folder, the names in the system's order; companion folders of
  // any case are no categories; four levels below a root are read, not five.
  EXPECT_EQ(Names(styles),
            (std::vector<std::string>{"Rock.mid", "A\\B\\C\\D\\Four.mid", "Ballads\\Slow.mid",
                                      "Latin\\Samba.mid", "Latin\\Cuban\\Mambo.mid",
                                      "own: Mine.mid", "own: Practice\\Slow.mid"}));
  EXPECT_EQ(rw::platform::OpenSearches(), 0u);

  // A style's companions sit beside it, in its own category's folders.
  const GrooveStyle& samba = styles[3];
  EXPECT_EQ(samba.Category(), u"Latin");
  EXPECT_EQ(samba.ShownName(), u"Samba");
  EXPECT_EQ(samba.PartName(PartKind::kFill), u"Latin\\Fills\\Samba.mid");
  EXPECT_TRUE(samba.Has(PartKind::kFill));
  EXPECT_FALSE(samba.Has(PartKind::kEnding));
  EXPECT_TRUE(styles[0].Has(PartKind::kEnding));
  EXPECT_EQ(styles[0].PartName(PartKind::kCountIn), u"Count-ins\\Rock.mid");
}

TEST_F(TheStyleLibrary, WithoutRootsOrFoldersFindsNothingAndLeavesNothingOpen) {
  EXPECT_TRUE(FindStyles(GrooveRoots{}).empty());
  EXPECT_TRUE(FindStyles(GrooveRoots{Root("Missing"), Root("Gone")}).empty());
  File("Shipped/Not a groove.txt");
  EXPECT_TRUE(FindStyles(GrooveRoots{Root("Shipped"), {}}).empty());
  EXPECT_EQ(rw::platform::OpenSearches(), 0u);
}

}  // namespace
