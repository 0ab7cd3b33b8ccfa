// rwgroove end to end: the built binary on files this test writes.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

namespace fs = std::filesystem;

struct ToolRun {
  int exitCode = -1;
  std::string out;
};

ToolRun Rwgroove(const std::string& arguments) {
  ToolRun run;
  const std::string command = std::string(RWGROOVE_PATH) + " " + arguments + " 2>/dev/null";
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return run;
  char chunk[4096];
  size_t n;
  while ((n = fread(chunk, 1, sizeof chunk, pipe)) > 0) run.out.append(chunk, n);
  const int status = pclose(pipe);
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

class RwgrooveCli : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("rwgroove_cli_" + std::to_string(::getpid()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string Write(const std::string& name, const Bytes& bytes) {
    const fs::path path = dir_ / name;
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return path.string();
  }
  static Bytes ReadBack(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
  }

  fs::path dir_;
};

const Bytes kConductor = cat({tempo(0, 500000), timeSignature(0, 3, 2), kEndOfTrack});
const Bytes kPiano = cat({{0x00, 0xC0, 0x05}, note(0, 0x90, 60, 100), kEndOfTrack});
const Bytes kDrums = cat({note(0, 0x99, 36, 100), note(480, 0x99, 38, 100),
                          note(1440 + 480, 0x99, 90, 100), kEndOfTrack});

TEST_F(RwgrooveCli, InspectReportsEveryKeyInJson) {
  const ToolRun run =
      Rwgroove("inspect " + Write("g.mid", smf(1, 480, {kConductor, kPiano, kDrums})) + " --json");
  ASSERT_EQ(run.exitCode, 0);
  const auto json = nlohmann::json::parse(run.out);
  std::vector<std::string> keys;
  for (const auto& item : json.items()) keys.push_back(item.key());
  std::sort(keys.begin(), keys.end());
  EXPECT_EQ(keys,
            (std::vector<std::string>{"alerts", "division", "drum_notes_found", "failure", "format",
                                      "groove_measures", "highest_key", "keys_used",
                                      "last_drum_measure", "last_drum_tick", "loaded", "lowest_key",
                                      "size", "tempo_bpm", "time_signature", "tracks"}));
  EXPECT_EQ(json["loaded"], true);
  EXPECT_TRUE(json["failure"].is_null());
  EXPECT_EQ(json["tracks"], 2);
  EXPECT_EQ(json["time_signature"]["numerator"], 3);
  EXPECT_EQ(json["time_signature"]["ticks_per_measure"], 1440);
  EXPECT_EQ(json["tempo_bpm"], 120.0);
  EXPECT_EQ(json["last_drum_measure"], 2);
  EXPECT_EQ(json["last_drum_tick"], 480);
  EXPECT_EQ(json["groove_measures"], 1);
  EXPECT_EQ(json["keys_used"], (std::vector<int>{36, 38, 90}));
  EXPECT_EQ(json["size"], smf(1, 480, {kConductor, kDrums}).size());
}

TEST_F(RwgrooveCli, InspectNamesTheDrumsAndWarnsAboutAMissingDrumMeter) {
  const ToolRun run = Rwgroove("inspect " + Write("g.mid", smf(1, 480, {kConductor, kDrums})));
  ASSERT_EQ(run.exitCode, 0);
  EXPECT_NE(run.out.find("Bass Drum 1"), std::string::npos);
  EXPECT_NE(run.out.find("Acoustic Snare"), std::string::npos);
  EXPECT_NE(run.out.find("key 90"), std::string::npos);
  EXPECT_NE(run.out.find("repeat the time signature at time 0 of the drum track"),
            std::string::npos);

  const Bytes ownMeter = cat({timeSignature(0, 3, 2), kDrums});
  const ToolRun fine = Rwgroove("inspect " + Write("h.mid", smf(1, 480, {kConductor, ownMeter})));
  EXPECT_EQ(fine.out.find("warning"), std::string::npos);
}

TEST_F(RwgrooveCli, AFileThatDoesNotLoadExitsWith1) {
  const ToolRun run = Rwgroove("inspect " + Write("bad.mid", smf(3, 480, {kDrums})) + " --json");
  EXPECT_EQ(run.exitCode, 1);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["loaded"], false);
  EXPECT_TRUE(json["failure"].is_null());
  EXPECT_EQ(json["alerts"], (std::vector<std::string>{"Invalid format ID"}));
}

TEST_F(RwgrooveCli, ARangeCheckFailureIsReportedAsSuch) {
  const Bytes truncated = cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(200), {0x00, 0xC0}});
  const ToolRun run = Rwgroove("inspect " + Write("t.mid", truncated) + " --json");
  EXPECT_EQ(run.exitCode, 1);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["failure"], "range-check");
  EXPECT_EQ(json["alerts"].size(), 16u);
}

TEST_F(RwgrooveCli, FilterWritesTheDrumsOnlyFileOnlyWhenLoaded) {
  const std::string out = (dir_ / "out.mid").string();
  const ToolRun run =
      Rwgroove("filter " + Write("g.mid", smf(1, 480, {kConductor, kPiano, kDrums})) + " " + out);
  ASSERT_EQ(run.exitCode, 0);
  EXPECT_EQ(ReadBack(out), smf(1, 480, {kConductor, kDrums}));

  const std::string none = (dir_ / "none.mid").string();
  EXPECT_EQ(Rwgroove("filter " + Write("bad.mid", smf(3, 480, {kDrums})) + " " + none).exitCode, 1);
  EXPECT_FALSE(fs::exists(none));
}

TEST_F(RwgrooveCli, UsageAndInputErrorsExitWith2) {
  EXPECT_EQ(Rwgroove("").exitCode, 2);
  EXPECT_EQ(Rwgroove("inspect").exitCode, 2);
  EXPECT_EQ(Rwgroove("frobnicate x").exitCode, 2);
  EXPECT_EQ(Rwgroove("inspect " + (dir_ / "missing.mid").string()).exitCode, 2);
  EXPECT_EQ(Rwgroove("inspect " + Write("empty.mid", {})).exitCode, 2);
}

}  // namespace
}  // namespace rw::groove::testing
