// The placement setting against a per-user settings folder made for each
// test; each test starts from a fresh module's memory.
#include "settings.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

#include "module_state.h"

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;
using rw::shell::LoadStoredChoices;
using rw::shell::Option;
using rw::shell::PartKind;
using rw::shell::RememberedChoices;
using rw::shell::SaveStoredChoices;

class ThePlacementSetting : public ::testing::Test {
 protected:
  void SetUp() override {
    home_ = fs::temp_directory_path() / ("rw-settings-" + std::to_string(::getpid()));
    fs::remove_all(home_);
    fs::create_directories(home_);
    ::setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
  }
  void TearDown() override { fs::remove_all(home_); }

  fs::path Key() const { return home_ / "HarpWorks"; }
  void Store(const Bytes& bytes, const char* name = "rhythmweavePI") {
    fs::create_directories(Key());
    std::ofstream value(Key() / name, std::ios::binary | std::ios::trunc);
    for (std::uint8_t b : bytes) value.put(static_cast<char>(b));
  }
  Bytes Stored(const char* name = "rhythmweavePI") const {
    std::ifstream value(Key() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(value), std::istreambuf_iterator<char>()};
  }

  fs::path home_;
  RememberedChoices remembered_;
};

TEST_F(ThePlacementSetting, ReadsWhatIsStoredAsZeroOrOne) {
  const struct {
    std::optional<Bytes> stored;
    std::uint32_t read;
  } cases[] = {
      {Bytes{0, 0, 0, 0}, 0},
      {Bytes{1, 0, 0, 0}, 1},
      {Bytes{5, 0, 0, 0}, 1},              // anything above one is one
      {Bytes{0, 0}, 0},                    // a shorter value replaces the leading bytes of 1
      {Bytes{0, 0, 0, 0, 0, 0, 0, 0}, 1},  // a longer one fails the query
      {std::nullopt, 1},                   // no value: a new staff
  };
  for (const auto& c : cases) {
    fs::remove_all(Key());
    if (c.stored) Store(*c.stored);
    RememberedChoices remembered;
    EXPECT_EQ(LoadStoredChoices(remembered), c.read) << ::testing::PrintToString(c.stored);
  }
}

TEST_F(ThePlacementSetting, IsReadFromTheStoreOnlyOncePerModule) {
  Store({0, 0, 0, 0});
  EXPECT_EQ(LoadStoredChoices(remembered_), 0u);
  Store({1, 0, 0, 0});
  EXPECT_EQ(LoadStoredChoices(remembered_), 0u);
}

TEST_F(ThePlacementSetting, IsSavedOnlyWhereTheKeyExistsButAlwaysRemembered) {
  SaveStoredChoices(0, remembered_);
  EXPECT_FALSE(fs::exists(Key()));  // the key is never created
  EXPECT_EQ(LoadStoredChoices(remembered_), 0u);

  fs::create_directories(Key());
  remembered_.parts[PartKind::kFill] = 8;
  remembered_.parts[PartKind::kEnding] = 1;
  remembered_.options[Option::kStraighten] = false;
  SaveStoredChoices(1, remembered_);
  EXPECT_EQ(Stored(), (Bytes{1, 0, 0, 0}));
  // Every part and option under the value its row names.
  EXPECT_EQ(Stored("rhythmweaveFill"), (Bytes{8, 0, 0, 0}));
  EXPECT_EQ(Stored("rhythmweaveEnding"), (Bytes{1, 0, 0, 0}));
  EXPECT_EQ(Stored("rhythmweaveCountIn"), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(Stored("rhythmweaveVariation"), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(Stored("rhythmweaveCrash"), (Bytes{1, 0, 0, 0}));
  EXPECT_EQ(Stored("rhythmweaveStraighten"), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(Stored("rhythmweaveOnlyFitting"), (Bytes{1, 0, 0, 0}));
}

TEST_F(ThePlacementSetting, TheStoredPartsAndOptionsAreReadAsTheDialogOffersThem) {
  const struct {
    Bytes fill, ending, straighten;
    std::uint32_t fillEvery, withEnding;
    bool straight;
  } cases[] = {{{4, 0, 0, 0}, {1, 0, 0, 0}, {0, 0, 0, 0}, 4, 1, false},
               {{16, 0, 0, 0}, {0, 0, 0, 0}, {1, 0, 0, 0}, 16, 0, true},
               {{3, 0, 0, 0}, {7, 0, 0, 0}, {9, 0, 0, 0}, 0, 1, true}};  // no such choice; any
  for (const auto& c : cases) {
    Store({0, 0, 0, 0});
    Store(c.fill, "rhythmweaveFill");
    Store(c.ending, "rhythmweaveEnding");
    Store(c.straighten, "rhythmweaveStraighten");
    RememberedChoices remembered;
    LoadStoredChoices(remembered);
    EXPECT_EQ(remembered.parts[PartKind::kFill], c.fillEvery);
    EXPECT_EQ(remembered.parts[PartKind::kEnding], c.withEnding);
    EXPECT_EQ(remembered.options[Option::kStraighten], c.straight);
    // Values never stored read as the dialog starts: parts off, options on.
    EXPECT_EQ(remembered.parts[PartKind::kCountIn], 0u);
    EXPECT_TRUE(remembered.options[Option::kOnlyFitting]);
  }
}

}  // namespace
