// The strict walk of a Standard MIDI File, and the log that gathers a load's
// diagnostics into one box.
#include <gtest/gtest.h>

#include "diagnostic_log.h"
#include "smf_builder.h"
#include "smf_walk.h"

namespace rw::groove::testing {
namespace {

StrictWalk Walk(const Bytes& file, SmfEventVisitor* visitor = nullptr) {
  return WalkStrictly(file.data(), file.size(), visitor);
}

const Bytes kKick = note(0, 0x99, 36, 100);
const Bytes kHeader = header(0, 1, 480);  // 14 bytes: the first track's ID is at 14

struct Broken {
  const char* what;
  Bytes file;
  int32_t track;
  uint64_t offset;
  const char* problem;  // a part of the problem's text
};

TEST(TheStrictWalk, RefusesEachBreakOfTheFormatAndSaysWhere) {
  const Broken cases[] = {
      {"nothing at all", {}, 0, 0, "the file is empty"},
      {"a text file", {'h', 'e', 'l', 'l', 'o'}, 0, 0, "does not begin with a MIDI header"},
      {"a short header", cat({{'M', 'T', 'h', 'd'}, be32(4), be16(0), be16(1)}), 0, 4,
       "fewer than the 6"},
      {"a header past the end", cat({{'M', 'T', 'h', 'd'}, be32(6), be16(0)}), 0, 4,
       "header chunk runs past the end"},
      {"format 3", cat({header(3, 1, 480), track(kEndOfTrack)}), 0, 8, "format 3"},
      {"no tracks", header(1, 0, 480), 0, 10, "counts no tracks"},
      {"an SMPTE division", cat({header(0, 1, 0xE728), track(kEndOfTrack)}), 0, 12, "SMPTE"},
      {"a division of 0", cat({header(0, 1, 0), track(kEndOfTrack)}), 0, 12, "division is 0"},
      // The track claims 100 bytes; 4 are there.
      {"a cut track", cat({kHeader, {'M', 'T', 'r', 'k'}, be32(100), kEndOfTrack}), 1, 14,
       "ends inside track 1 (its chunk claims 100 bytes, 4 are left)"},
      {"a cut chunk header", cat({header(1, 2, 480), track(kEndOfTrack), {'M', 'T', 'r'}}), 0, 26,
       "inside the header of a chunk"},
      {"one track fewer", cat({header(1, 2, 480), track(kEndOfTrack)}), 0, 10,
       "counts 2 track(s), the file holds 1"},
      {"a 5-byte delta", cat({kHeader, track(cat({{0x81, 0x80, 0x80, 0x80, 0x00}, kKick}))}), 1, 22,
       "longer than 4 bytes"},
      {"status 0xF4", cat({kHeader, track(cat({{0x00, 0xF4, 0x01, 0x02}, kEndOfTrack}))}), 1, 23,
       "0xF4"},
      {"a data byte first", cat({kHeader, track(cat({{0x00, 0x24, 0x64}, kEndOfTrack}))}), 1, 23,
       "running status is undefined"},
      {"a note cut by its chunk", cat({kHeader, track({0x00, 0x99, 36})}), 1, 23,
       "runs past the end of track 1"},
      {"a velocity of 0x90", cat({kHeader, track(cat({{0x00, 0x99, 36, 0x90}, kEndOfTrack}))}), 1,
       23, "data byte of 0x90"},
      {"a velocity of 0xC0 in running status",
       cat({kHeader, track(cat({kKick, {0x00, 0x24, 0xC0}, kEndOfTrack}))}), 1, 27,
       "data byte of 0xC0"},
      {"a meta event past its chunk", cat({kHeader, track({0x00, 0xFF, 0x01, 0x05, 'a'})}), 1, 23,
       "meta event runs past"},
      {"a huge SysEx",
       cat({kHeader, track(cat({{0x00, 0xF0, 0x8F, 0xFF, 0xFF, 0x7F, 0xF7}, kEndOfTrack}))}), 1, 23,
       "SysEx event runs past"},
  };
  for (const Broken& c : cases) {
    const StrictWalk walk = Walk(c.file);
    EXPECT_FALSE(walk.wellFormed) << c.what;
    EXPECT_NE(walk.problem.find(c.problem), std::string::npos) << c.what << ": " << walk.problem;
    EXPECT_EQ(walk.track, c.track) << c.what;
    EXPECT_EQ(walk.offset, c.offset) << c.what;
  }
}

class Recorder : public SmfEventVisitor {
 public:
  void TrackStart(int32_t track, uint64_t offset, uint64_t length) override {
    tracks.push_back({track, offset, length});
  }
  void Event(const SmfEvent& e) override { events.push_back(e); }
  struct Track {
    int32_t track;
    uint64_t offset, length;
  };
  std::vector<Track> tracks;
  std::vector<SmfEvent> events;
};

TEST(TheStrictWalk, AcceptsWhatAnImportReadsAndCountsTheSoundingDrumNotes) {
  const Bytes first = cat({tempo(0, 500000),
                           note(960, 0x99, 42, 0),                 // velocity 0: no onset
                           {0x00, 0x40, 0x64},                     // running status
                           {0x00, 0xF0, 0x02, 0x7E, 0xF7},         // SysEx keeps it
                           {0x00, 0x3C, 0x64},                     // running across SysEx
                           {0xFF, 0xFF, 0xFF, 0x7F, 0x99, 36, 1},  // a 4-byte delta
                           kEndOfTrack});
  const Bytes second = cat({note(480, 0x99, 38, 90), {0x00, 0xC0, 0x05}, kEndOfTrack});
  const Bytes file = cat({chunk("MThd", cat({be16(1), be16(2), be16(480), be16(0)})), track(first),
                          chunk("XFIH", {1, 2, 3}), track(second)});
  Recorder recorder;
  const StrictWalk walk = Walk(file, &recorder);
  ASSERT_TRUE(walk.wellFormed) << walk.problem;
  EXPECT_TRUE(walk.problem.empty());
  EXPECT_EQ(walk.drumNoteOns, 4u);  // 0x40, 0x3C, 36 in track 1; 38 in track 2
  EXPECT_EQ(walk.firstDrumNoteOnTick, 480u);
  ASSERT_EQ(recorder.tracks.size(), 2u);
  EXPECT_EQ(recorder.tracks[1].track, 2);
  EXPECT_EQ(recorder.tracks[1].offset, 16 + 8 + first.size() + 11);
  ASSERT_EQ(recorder.events.size(), 10u);
  EXPECT_TRUE(recorder.events[2].running);
  EXPECT_EQ(recorder.events[4].status, 0x99);
  EXPECT_EQ(recorder.events[4].data1, 0x3C);
  EXPECT_EQ(recorder.events[5].tick, 960u + 0x0FFFFFFF);
  EXPECT_EQ(recorder.events[8].status, 0xC0);
}

struct Mendable {
  const char* what;
  Bytes file;
  std::vector<MendKind> mends;
  Bytes mended;
};

TEST(TheStrictWalk, MendsWhatIsCertainAndWritesTheFileAnImportReads) {
  const Bytes kick = cat({kKick, note(120, 0x89, 36, 0)});
  const Bytes ended = cat({kick, kEndOfTrack});
  const Mendable cases[] = {
      {"no End of Track",
       cat({kHeader, track(kick)}),
       {MendKind::kEndOfTrackAdded},
       smf(0, 480, {ended})},
      {"bytes after the End of Track",
       cat({kHeader, track(cat({ended, {0x12, 0x34}}))}),
       {MendKind::kBytesAfterEndOfTrack},
       smf(0, 480, {ended})},
      {"an End of Track with data",
       cat({kHeader, track(cat({kick, {0x00, 0xFF, 0x2F, 0x01, 0x07}}))}),
       {MendKind::kEndOfTrackLength},
       smf(0, 480, {ended})},
      {"a chunk more than the header counts",
       cat({kHeader, track(ended), track(ended)}),
       {MendKind::kBeyondCountedTracks},
       smf(0, 480, {ended})},
      {"trailing bytes",
       cat({kHeader, track(ended), {0x00, 0x00, 0x0D, 0x0A}}),
       {MendKind::kBeyondCountedTracks},
       smf(0, 480, {ended})},
      {"a broken chunk after the counted ones",
       cat({kHeader, track(ended), {'M', 'T', 'r'}}),
       {MendKind::kBeyondCountedTracks},
       smf(0, 480, {ended})},
      {"all at once, the header kept as it stands",
       cat({chunk("MThd", cat({be16(1), be16(2), be16(480), be16(0)})),
            track(cat({tempo(0, 500000), {0x00, 0xFF, 0x2F, 0x01, 0x00, 0x55}})),
            track(kick),
            {0x4D}}),
       {MendKind::kEndOfTrackLength, MendKind::kBytesAfterEndOfTrack, MendKind::kEndOfTrackAdded,
        MendKind::kBeyondCountedTracks},
       cat({chunk("MThd", cat({be16(1), be16(2), be16(480), be16(0)})),
            track(cat({tempo(0, 500000), kEndOfTrack})), track(ended)})},
  };
  for (const Mendable& c : cases) {
    const StrictWalk walk = Walk(c.file);
    EXPECT_FALSE(walk.wellFormed) << c.what;
    ASSERT_TRUE(walk.mendable) << c.what << ": " << walk.problem;
    std::vector<MendKind> kinds;
    for (const Mend& mend : walk.mends) kinds.push_back(mend.kind);
    EXPECT_EQ(kinds, c.mends) << c.what;
    const Bytes mended = MendedFile(c.file.data(), walk);
    EXPECT_EQ(mended, c.mended) << c.what;
    EXPECT_TRUE(Walk(mended).wellFormed) << c.what;
  }
}

TEST(TheStrictWalk, MendsNothingThatIsNotCertain) {
  // An event cut by its chunk's end, and a track the header counts that is
  // not there, leave nothing certain to write.
  EXPECT_FALSE(Walk(cat({kHeader, track({0x00, 0x99, 36})})).mendable);
  const StrictWalk missing = Walk(cat({header(1, 2, 480), track(cat({kKick}))}));
  EXPECT_FALSE(missing.mendable);
  EXPECT_NE(missing.problem.find("counts 2 track(s)"), std::string::npos) << missing.problem;
}

TEST(TheStrictWalk, FindsNoDrumsWhereNothingSounds) {
  const StrictWalk walk =
      Walk(smf(0, 480, {cat({{0x00, 0xB9, 7, 100}, note(0, 0x90, 36, 100), kEndOfTrack})}));
  EXPECT_TRUE(walk.wellFormed);
  EXPECT_EQ(walk.drumNoteOns, 0u);
  EXPECT_FALSE(walk.firstDrumNoteOnTick.has_value());
}

TEST(TheDiagnosticLog, ShowsEachTextOnceWithItsCountInTheOrderTheyArose) {
  DiagnosticLog log;
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(log.Text(), "");
  log.Show(text::kHeaderTooLong);
  for (int i = 0; i < 15; ++i) log.Show(text::kReadBeyondEof);
  log.Show(text::kHeaderTooLong);
  log.Show(text::kEndOfTrackMissing);
  EXPECT_FALSE(log.empty());
  EXPECT_EQ(log.Text(), std::string(text::kHeaderTooLong) + " (2 times)\n" + text::kReadBeyondEof +
                            " (15 times)\n" + text::kEndOfTrackMissing);
}

}  // namespace
}  // namespace rw::groove::testing
