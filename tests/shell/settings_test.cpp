// The placement setting against a per-user settings folder made for each
// test. The module reads the store at most once, so each test resets the
// in-memory value as a fresh module load would.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "settings.h"

namespace {

namespace fs = std::filesystem;

class ThePlacementSetting : public ::testing::Test {
 protected:
  void SetUp() override {
    home_ = fs::temp_directory_path() / ("rw-settings-" + std::to_string(::getpid()));
    fs::remove_all(home_);
    fs::create_directories(home_);
    ::setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
    rw::shell::placementSetting = 0xFFFFFFFF;
  }
  void TearDown() override { fs::remove_all(home_); }

  fs::path Key() const { return home_ / "HarpWorks"; }
  void Store(std::initializer_list<std::uint8_t> bytes) {
    fs::create_directories(Key());
    std::ofstream value(Key() / "rhythmweavePI", std::ios::binary);
    for (std::uint8_t b : bytes) value.put(static_cast<char>(b));
  }
  std::vector<std::uint8_t> Stored() const {
    std::ifstream value(Key() / "rhythmweavePI", std::ios::binary);
    return {std::istreambuf_iterator<char>(value), std::istreambuf_iterator<char>()};
  }

  fs::path home_;
};

TEST_F(ThePlacementSetting, ReadsAStoredZeroOrOne) {
  Store({0, 0, 0, 0});
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 0u);
  rw::shell::placementSetting = 0xFFFFFFFF;
  Store({1, 0, 0, 0});
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 1u);
}

TEST_F(ThePlacementSetting, ReadsAnythingAboveOneAsOne) {
  Store({5, 0, 0, 0});
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 1u);
  rw::shell::placementSetting = 0xFFFFFFFF;
  Store({0, 0, 0, 0, 0, 0, 0, 0});  // longer than the setting: the query fails
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 1u);
}

TEST_F(ThePlacementSetting, DefaultsToANewStaffWithoutTheKey) {
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 1u);
}

TEST_F(ThePlacementSetting, IsReadFromTheStoreOnlyOncePerModule) {
  Store({0, 0, 0, 0});
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 0u);
  Store({1, 0, 0, 0});
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 0u);
}

TEST_F(ThePlacementSetting, IsSavedOnlyWhereTheKeyExistsButAlwaysKeptInMemory) {
  rw::shell::SavePlacementSetting(0);
  EXPECT_FALSE(fs::exists(Key()));  // the key is never created
  EXPECT_EQ(rw::shell::LoadPlacementSetting(), 0u);

  fs::create_directories(Key());
  rw::shell::SavePlacementSetting(1);
  EXPECT_EQ(Stored(), (std::vector<std::uint8_t>{1, 0, 0, 0}));
}

}  // namespace
