// rwgroove end to end: the built binary on files this test writes.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
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
  EXPECT_EQ(keys, (std::vector<std::string>{
                      "advice",           "alerts",       "division",    "drum_grid",
                      "drum_notes_found", "failure",      "fits_meters", "format",
                      "groove_measures",  "highest_key",  "keys_used",   "last_drum_measure",
                      "last_drum_tick",   "loaded",       "lowest_key",  "mends",
                      "messages",         "meter_change", "note",        "note_ons_by_channel",
                      "original_walk",    "size",         "strict_walk", "tempo_bpm",
                      "time_signature",   "timing",       "tracks",      "verdict"}));
  EXPECT_EQ(json["verdict"], "placed");
  EXPECT_EQ(json["messages"].size(), 0u);
  EXPECT_EQ(json["fits_meters"], (std::vector<std::string>{"3/4", "6/8 (6 beats)"}));
  EXPECT_EQ(json["strict_walk"]["drum_note_ons"], 3);
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
  EXPECT_EQ(json["verdict"], "reader-stopped");
  EXPECT_EQ(json["messages"], (std::vector<std::string>{"Invalid format ID"}));
}

TEST_F(RwgrooveCli, ARangeCheckFailureIsReportedAsSuch) {
  const Bytes truncated = cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(200), {0x00, 0xC0}});
  const ToolRun run = Rwgroove("inspect " + Write("t.mid", truncated) + " --json");
  EXPECT_EQ(run.exitCode, 1);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["failure"], "range-check");
  EXPECT_EQ(json["alerts"].size(), 16u);
  // One box of the reader's, then the command's own message.
  EXPECT_EQ(json["messages"],
            (std::vector<std::string>{"Parsing error - trying to read beyond EOF. (16 times)",
                                      "Error opening this file."}));
  EXPECT_EQ(json["advice"],
            "the file ends inside track 1 (its chunk claims 200 bytes, 2 are left): the file was "
            "cut short; save it again from your sequencer");
}

TEST_F(RwgrooveCli, FilterWritesTheDrumsOnlyFileOnlyWhenPlaced) {
  const std::string out = (dir_ / "out.mid").string();
  const ToolRun run =
      Rwgroove("filter " + Write("g.mid", smf(1, 480, {kConductor, kPiano, kDrums})) + " " + out);
  ASSERT_EQ(run.exitCode, 0);
  EXPECT_EQ(ReadBack(out), smf(1, 480, {kConductor, kDrums}));

  const std::string none = (dir_ / "none.mid").string();
  EXPECT_EQ(Rwgroove("filter " + Write("bad.mid", smf(3, 480, {kDrums})) + " " + none).exitCode, 1);
  EXPECT_EQ(
      Rwgroove("filter " + Write("p.mid", smf(1, 480, {kConductor, kPiano})) + " " + none).exitCode,
      1);
  EXPECT_FALSE(fs::exists(none));
}

TEST_F(RwgrooveCli, UsageAndInputErrorsExitWith2) {
  EXPECT_EQ(Rwgroove("").exitCode, 2);
  EXPECT_EQ(Rwgroove("inspect").exitCode, 2);
  EXPECT_EQ(Rwgroove("frobnicate x").exitCode, 2);
  EXPECT_EQ(Rwgroove("inspect " + (dir_ / "missing.mid").string()).exitCode, 2);
  EXPECT_EQ(Rwgroove("inspect x.mid --frobnicate").exitCode, 2);
  EXPECT_EQ(Rwgroove("fix a.mid b.mid --meter 3/5").exitCode, 2);
  EXPECT_EQ(Rwgroove("render a.mid").exitCode, 2);  // without -o
  EXPECT_EQ(Rwgroove("help frobnicate").exitCode, 2);
}

TEST_F(RwgrooveCli, HelpDescribesEachCommandItsOptionsAndExitCodes) {
  const ToolRun overview = Rwgroove("--help");
  EXPECT_EQ(overview.exitCode, 0);
  for (const char* text : {"inspect FILE", "filter IN OUT", "fix IN OUT", "render FILE -o",
                           "exit status", "  1  the plug-in refuses"}) {
    EXPECT_NE(overview.out.find(text), std::string::npos) << text;
  }
  const ToolRun fix = Rwgroove("help fix");
  EXPECT_EQ(fix.exitCode, 0);
  EXPECT_NE(fix.out.find("--drums-channel N"), std::string::npos);
  EXPECT_EQ(Rwgroove("render --help").out, Rwgroove("help render").out);
}

TEST_F(RwgrooveCli, DrumsOnChannel1AreRefusedNamedAndMovedByFix) {
  const Bytes drums = cat({note(0, 0x90, 36, 100),
                           {0x00, 0x26, 100},  // running status
                           note(480, 0x80, 36, 0),
                           note(1440, 0x90, 42, 90),
                           kEndOfTrack});
  const std::string in = Write("ch1.mid", smf(0, 480, {drums}));
  const ToolRun refused = Rwgroove("inspect " + in);
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_NE(refused.out.find("\"No drum notes found in this Midi file.\""), std::string::npos);
  EXPECT_NE(refused.out.find("the drums are on channel 1 (3 notes on drum keys 35 to 81)"),
            std::string::npos);

  const std::string out = (dir_ / "fixed.mid").string();
  ASSERT_EQ(Rwgroove("fix " + in + " " + out).exitCode, 0);
  EXPECT_EQ(Rwgroove("inspect " + out).exitCode, 0);
  // The notes' own status bytes move to channel 10; a 4/4 time signature
  // opens the track; nothing else changes.
  const Bytes moved = cat({timeSignature(0, 4, 2),
                           note(0, 0x99, 36, 100),
                           {0x00, 0x26, 100},
                           note(480, 0x89, 36, 0),
                           note(1440, 0x99, 42, 90),
                           kEndOfTrack});
  EXPECT_EQ(ReadBack(out), smf(0, 480, {moved}));
}

TEST_F(RwgrooveCli, EachRefusalGetsItsOneLineOfAdvice) {
  const Bytes good = smf(1, 480, {kConductor, cat({timeSignature(0, 3, 2), kDrums})});
  Bytes riff = cat({{'R', 'I', 'F', 'F'},
                    {0, 0, 0, 0},
                    {'R', 'M', 'I', 'D', 'd', 'a', 't', 'a'},
                    {uint8_t(good.size()), 0, 0, 0},
                    good});
  const Bytes change = cat({timeSignature(0, 4, 2), timeSignature(1920 * 4, 3, 2), kEndOfTrack});
  struct Case {
    const char* name;
    Bytes file;
    const char* advice;
  } cases[] = {
      {"empty.mid", {}, "the file is empty"},
      {"text.mid", {'h', 'i', '\n'}, "this is not a Standard MIDI File"},
      {"riff.rmi", riff, "this is a RIFF-wrapped MIDI file (RMID)"},
      {"change.mid", smf(1, 480, {change, kDrums}),
       "the meter changes to 3/4 in track 1 at measure 5, tick 0"},
  };
  for (const Case& c : cases) {
    const ToolRun run = Rwgroove("inspect " + Write(c.name, c.file) + " --json");
    EXPECT_EQ(run.exitCode, 1) << c.name;
    const std::string advice = nlohmann::json::parse(run.out)["advice"];
    EXPECT_EQ(advice.find(c.advice), 0u) << c.name << ": " << advice;
  }
  const std::string out = (dir_ / "unwrapped.mid").string();
  ASSERT_EQ(Rwgroove("fix " + (dir_ / "riff.rmi").string() + " " + out).exitCode, 0);
  EXPECT_EQ(ReadBack(out), good);
}

// A part of timed notes on one channel: each {tick, key} sounds for
// `length` ticks; several at one tick make a chord.
Bytes Part(int channel, const std::vector<std::pair<uint32_t, uint8_t>>& notes,
           uint32_t length = 200, const char* name = nullptr) {
  struct Event {
    uint32_t tick;
    uint8_t status, key, velocity;
  };
  std::vector<Event> events;
  for (const auto& [tick, key] : notes) {
    events.push_back({tick, uint8_t(0x90 | (channel - 1)), key, 90});
    events.push_back({tick + length, uint8_t(0x80 | (channel - 1)), key, 0});
  }
  std::stable_sort(events.begin(), events.end(),
                   [](const Event& a, const Event& b) { return a.tick < b.tick; });
  Bytes out;
  if (name) {
    out = cat(
        {{0x00, 0xFF, 0x03, uint8_t(std::strlen(name))}, Bytes(name, name + std::strlen(name))});
  }
  uint32_t at = 0;
  for (const Event& e : events) {
    out = cat({out, note(e.tick - at, e.status, e.key, e.velocity)});
    at = e.tick;
  }
  return cat({out, kEndOfTrack});
}

// Two measures of a rock beat: kick and hi-hat together, snare on 2 and 4.
Bytes RockBeat(int channel) {
  return Part(channel, {{0, 36},    {0, 42},    {240, 42},  {480, 38},  {480, 42},  {720, 42},
                        {960, 36},  {960, 42},  {1200, 42}, {1440, 38}, {1440, 42}, {1680, 42},
                        {1920, 36}, {1920, 42}, {2160, 42}, {2400, 38}, {2400, 42}, {2640, 42},
                        {2880, 36}, {2880, 42}, {3120, 42}, {3360, 38}, {3360, 42}, {3600, 42}},
              60);
}

TEST_F(RwgrooveCli, AdvisesChannel10OnlyForAPartThatLooksLikeDrums) {
  // A waltz for piano: bass notes and chords in the left hand, a melody in
  // the right, over 29 keys, every one of them also a drum key.
  const Bytes piano =
      Part(1, {{0, 41},    {480, 57},  {480, 60},  {480, 65},  {960, 57},  {960, 60},  {960, 65},
               {0, 69},    {480, 72},  {960, 77},  {1440, 36}, {1920, 58}, {1920, 64}, {1920, 67},
               {2400, 58}, {2400, 64}, {1440, 76}, {1920, 74}, {2400, 72}, {2880, 43}, {3360, 59},
               {3360, 62}, {3360, 67}, {3840, 59}, {3840, 62}, {2880, 71}, {3360, 74}, {3840, 79},
               {4320, 48}, {4800, 55}, {4800, 64}, {5280, 55}, {5280, 64}, {4320, 76}, {4800, 79},
               {5280, 81}, {5760, 38}, {6240, 53}, {6240, 57}, {5760, 78}, {6240, 66}, {6720, 52},
               {6720, 56}, {6720, 62}, {6720, 80}, {7200, 45}, {7200, 73}, {7680, 61}, {7680, 64},
               {7680, 70}, {8160, 63}, {8160, 68}, {8160, 75}},
           400);
  // A bass line, a note a beat on few keys, and strings in four-part chords
  // a measure each, high in the keyboard.
  std::vector<std::pair<uint32_t, uint8_t>> low, high;
  const uint8_t line[] = {36, 36, 43, 45, 41, 41, 40, 38, 36, 43, 47, 48, 43, 41, 40, 38};
  for (uint32_t beat = 0; beat < std::size(line); ++beat) low.push_back({480 * beat, line[beat]});
  const uint8_t chords[][4] = {
      {55, 60, 64, 72}, {57, 60, 65, 69}, {55, 59, 62, 67}, {55, 60, 64, 76}};
  for (uint32_t measure = 0; measure < 4; ++measure) {
    for (const uint8_t key : chords[measure]) high.push_back({1920 * measure, key});
  }
  const Bytes bass = Part(2, low, 440);
  const Bytes strings = Part(3, high, 1900);
  for (const auto& [name, part] : {std::pair{"piano.mid", piano}, std::pair{"bass.mid", bass},
                                   std::pair{"strings.mid", strings}}) {
    const ToolRun run = Rwgroove("inspect " + Write(name, smf(0, 480, {part})) + " --json");
    EXPECT_EQ(run.exitCode, 1) << name;
    const std::string advice = nlohmann::json::parse(run.out)["advice"];
    EXPECT_EQ(advice.find("rwgroove fix"), std::string::npos) << advice;
    EXPECT_EQ(advice.find("no drum part found"), 0u) << name << ": " << advice;
    const ToolRun fix =
        Rwgroove("fix " + (dir_ / name).string() + " " + (dir_ / "out.mid").string());
    EXPECT_EQ(fix.exitCode, 1) << name;
    EXPECT_NE(fix.out.find("fix moves no melodic part"), std::string::npos) << fix.out;
    EXPECT_FALSE(fs::exists(dir_ / "out.mid"));
  }

  // Drums on channel 1 beside the bass, and on channel 16 beside the
  // strings: named, and moved by fix.
  for (const auto& [channel, file] : {std::pair{1, smf(1, 480, {RockBeat(1), bass})},
                                      std::pair{16, smf(1, 480, {strings, RockBeat(16)})}}) {
    const std::string in = Write("drums" + std::to_string(channel) + ".mid", file);
    const std::string advice =
        nlohmann::json::parse(Rwgroove("inspect " + in + " --json").out)["advice"];
    EXPECT_EQ(advice.find("the drums are on channel " + std::to_string(channel) + " (24 notes"), 0u)
        << advice;
    const std::string out = (dir_ / "moved.mid").string();
    ASSERT_EQ(Rwgroove("fix " + in + " " + out).exitCode, 0) << channel;
    EXPECT_EQ(Rwgroove("inspect " + out).exitCode, 0) << channel;
  }
  // A single-voice drum part, named for what it is, is still drums.
  const Bytes named = Part(5, {{0, 38}, {480, 38}, {960, 38}, {1440, 38}}, 60, "Snare Drum");
  const std::string advice = nlohmann::json::parse(
      Rwgroove("inspect " + Write("named.mid", smf(0, 480, {named})) + " --json").out)["advice"];
  EXPECT_EQ(advice.find("the drums are on channel 5"), 0u) << advice;
}

TEST_F(RwgrooveCli, MendsWhatIsCertainAndSaysSo) {
  // The drum track lacks its End of Track, and a piano track follows the
  // two the header counts.
  const Bytes drums = cat({note(0, 0x99, 36, 100), note(480, 0x99, 38, 100)});
  const std::string counts =
      Write("mend.mid", cat({header(1, 2, 480), track(kConductor), track(drums), track(kPiano)}));
  const ToolRun run = Rwgroove("inspect " + counts);
  EXPECT_EQ(run.exitCode, 0) << run.out;
  EXPECT_NE(run.out.find("the plug-in mends the file it writes:\n"
                         "    track 2 had no End of Track: one was added after its last event\n"
                         "    the 19 bytes after the tracks the header counts were left out"),
            std::string::npos)
      << run.out;
  const std::string filtered = (dir_ / "filtered.mid").string();
  ASSERT_EQ(Rwgroove("filter " + counts + " " + filtered).exitCode, 0);
  EXPECT_EQ(ReadBack(filtered), smf(1, 480, {kConductor, cat({drums, kEndOfTrack})}));
  const std::string fixed = (dir_ / "fixed.mid").string();
  const ToolRun fix = Rwgroove("fix " + counts + " " + fixed);
  EXPECT_EQ(fix.exitCode, 0) << fix.out;
  EXPECT_NE(fix.out.find("track 2 had no End of Track"), std::string::npos) << fix.out;
  EXPECT_EQ(Rwgroove("inspect " + fixed).exitCode, 0);
}

}  // namespace
}  // namespace rw::groove::testing
