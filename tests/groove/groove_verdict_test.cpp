// The verdict that the command and rwgroove share: which files are placed,
// and what the user is told of the others.
#include <gtest/gtest.h>

#include "groove_proof.h"
#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

constexpr RegionMeter kFourFour{4, 1024};
constexpr RegionMeter kThreeFour{3, 1024};

GrooveProof Prove(const Bytes& file, RegionMeter region, int64_t measures) {
  GrooveBuffer buffer = CopyIntoGrooveBuffer(file);
  GrooveProof proof = ProveGroove(buffer);
  JudgePlacement(proof.judgement, region, measures);
  return proof;
}

GrooveJudgement Judge(const Bytes& file, RegionMeter region, int64_t measures,
                      std::string* box = nullptr) {
  const GrooveProof proof = Prove(file, region, measures);
  if (box) *box = proof.log.Text();
  return proof.judgement;
}

const Bytes kTwoBars = cat({note(0, 0x99, 36, 100), note(3840 - 480, 0x99, 38, 100), kEndOfTrack});

TEST(TheVerdict, PlacesAFittingGrooveAndNamesTheMessageOfEachRefusal) {
  // Drums from measure 3 of a 4/4 song, whose last measure counts.
  const Bytes late =
      cat({note(2 * 1920, 0x99, 36, 100), note(1920 + 1440, 0x99, 36, 100), kEndOfTrack});
  // Cut 3 bytes short inside its last drum event: the reader reads zeros
  // with a diagnostic each, and its filtered file ends inside the track.
  Bytes cut = smf(0, 480, {kTwoBars});
  cut.resize(cut.size() - 3);
  struct Case {
    const char* what;
    Bytes file;
    RegionMeter region;
    int64_t measures;
    Verdict verdict;
    uint32_t stringId;
  } cases[] = {
      {"a 2-bar groove", smf(0, 480, {kTwoBars}), kFourFour, 8, Verdict::kPlaced, 0},
      {"a cut file", cut, kFourFour, 8, Verdict::kUnreadable, 19},
      {"format 3", smf(3, 480, {kTwoBars}), kFourFour, 8, Verdict::kReaderStopped, 0},
      {"drums on channel 1", smf(0, 480, {cat({note(0, 0x90, 36, 100), kEndOfTrack})}), kFourFour,
       8, Verdict::kNoDrumNotes, 20},
      {"channel 10 without a note-on", smf(0, 480, {cat({{0x00, 0xB9, 7, 100}, kEndOfTrack})}),
       kFourFour, 8, Verdict::kNoDrumNotes, 20},
      {"a 4/4 groove in 3/4", smf(0, 480, {kTwoBars}), kThreeFour, 8, Verdict::kMeterMismatch, 21},
      {"drums after 2 measures", smf(0, 480, {late}), kFourFour, 2, Verdict::kDrumsAfterRegion, 29},
      {"the same over 3 measures", smf(0, 480, {late}), kFourFour, 3, Verdict::kPlaced, 0},
  };
  for (const Case& c : cases) {
    std::string box;
    const GrooveJudgement judgement = Judge(c.file, c.region, c.measures, &box);
    EXPECT_EQ(judgement.verdict, c.verdict) << c.what << ": " << box;
    EXPECT_EQ(TextOf(judgement.verdict).stringId, c.stringId) << c.what;
  }
}

TEST(TheVerdict, SaysWhatIsDamagedWhenTheStrictWalkRefusesTheFile) {
  Bytes cut = smf(0, 480, {kTwoBars});
  cut.resize(cut.size() - 3);
  const GrooveJudgement judgement = Judge(cut, kFourFour, 8);
  EXPECT_NE(DamageOf(judgement).find("ends inside track 1"), std::string::npos)
      << DamageOf(judgement);
  // The reader's own refusals and the other verdicts bring no such line.
  EXPECT_EQ(DamageOf(Judge(smf(3, 480, {kTwoBars}), kFourFour, 8)), "");
  EXPECT_EQ(DamageOf(Judge(smf(0, 480, {kTwoBars}), kThreeFour, 8)), "");
}

TEST(TheVerdict, PlacesAGrooveOnceItsCertainDamageIsMended) {
  const Bytes kick = note(0, 0x99, 36, 100);
  const Bytes endless = cat({header(0, 1, 480), track(kick)});
  GrooveBuffer buffer = CopyIntoGrooveBuffer(endless);
  const GrooveProof proof = ProveGroove(buffer);
  EXPECT_EQ(proof.judgement.verdict, Verdict::kPlaced);
  EXPECT_EQ(proof.log.Text(), "End of track meta event missing");
  ASSERT_EQ(proof.mends.size(), 1u);
  EXPECT_EQ(proof.mends[0].kind, MendKind::kEndOfTrackAdded);
  EXPECT_EQ(Bytes(buffer.view().begin(), buffer.view().end()),
            smf(0, 480, {cat({kick, kEndOfTrack})}));
  EXPECT_TRUE(proof.judgement.walk.wellFormed);

  // A track more than the header counts, with its piano notes: left out.
  const Bytes piano = cat({note(0, 0x90, 60, 100), kEndOfTrack});
  const Bytes extra = cat({smf(0, 480, {cat({kick, kEndOfTrack})}), track(piano)});
  EXPECT_EQ(Judge(extra, kFourFour, 8).verdict, Verdict::kPlaced);
}

TEST(TheVerdict, KeepsWhatTheLoadReachedAndWhy) {
  std::string box;
  const GrooveJudgement placed = Judge(smf(0, 480, {kTwoBars}), kFourFour, 8, &box);
  EXPECT_EQ(placed.grooveMeasures, 2);
  EXPECT_EQ(placed.coveredTicks, 2u * 1920);
  EXPECT_EQ(placed.walk.drumNoteOns, 2u);
  EXPECT_TRUE(box.empty());

  // 100 bytes claimed, none there: more diagnostics than a load may show.
  const Bytes hopeless = cat({header(0, 1, 480), {'M', 'T', 'r', 'k'}, be32(100), {0x00, 0x99}});
  const GrooveJudgement failed = Judge(hopeless, kFourFour, 8, &box);
  EXPECT_EQ(failed.verdict, Verdict::kUnreadable);
  EXPECT_EQ(failed.failure, LoadFailure::kRangeCheck);
  EXPECT_EQ(failed.pattern.division, 480);
  EXPECT_EQ(box, "Parsing error - trying to read beyond EOF. (16 times)");
}

TEST(TheMeterRule, TakesDottedBeatsInThirdsAndCutTimeForCommonTime) {
  const auto groove = [](uint8_t numerator, uint8_t power) {
    return Judge(smf(0, 480, {cat({timeSignature(0, numerator, power), kTwoBars})}), kFourFour, 8)
        .pattern;
  };
  const GroovePattern sixEight = groove(6, 3), fourFour = groove(4, 2), threeFour = groove(3, 2);
  EXPECT_TRUE(MeterFits(sixEight, {2, 1536}));  // two dotted quarters
  EXPECT_TRUE(MeterFits(sixEight, {6, 512}));   // six eighths
  EXPECT_TRUE(MeterFits(sixEight, {3, 1024}));  // the same length, and 6 is twice 3
  EXPECT_TRUE(MeterFits(fourFour, {2, 2048}));  // 2/2
  EXPECT_FALSE(MeterFits(threeFour, {4, 1024}));
  EXPECT_FALSE(MeterFits(fourFour, {4, 1024 + 1}));
  EXPECT_FALSE(MeterFits(GroovePattern{}, {4, 1024}));  // no division
}

}  // namespace
}  // namespace rw::groove::testing
