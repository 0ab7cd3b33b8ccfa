// The meter scan against the reader itself: on generated files, on the
// edge cases of the reader's byte rules, and on every groove the end-to-end
// scenarios place.
#include "meter_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "meters.h"
#include "smf_generator.h"

namespace rw::groove::testing {
namespace {

MeterScan ScanWhole(const Bytes& file) { return ScanMeter(file, file.size()); }

// What the reader reached, in the scan's terms.
::testing::AssertionResult SameMeter(const MeterScan& scan, const Load& load) {
  const TimeMark& reader = load.reader().timeSignatureSnapshot();
  const TimeMark& scanned = scan.pattern.timeSignature;
  if (scan.outcome != MeterScanOutcome::kMeter) {
    return ::testing::AssertionFailure()
           << "no meter (" << (scan.outcome == MeterScanOutcome::kNone ? "none" : "unknown")
           << "); the reader gives " << reader.numerator << "/" << reader.denominator;
  }
  if (scan.pattern.division != load.reader().division() || scanned.numerator != reader.numerator ||
      scanned.denominator != reader.denominator || scanned.ticksPerBeat != reader.ticksPerBeat ||
      scanned.ticksPerMeasure != reader.ticksPerMeasure) {
    return ::testing::AssertionFailure()
           << "scanned " << scanned.numerator << "/" << scanned.denominator << " ("
           << scanned.ticksPerBeat << ", " << scanned.ticksPerMeasure << ") at "
           << scan.pattern.division << "; the reader gives " << reader.numerator << "/"
           << reader.denominator << " (" << reader.ticksPerBeat << ", " << reader.ticksPerMeasure
           << ") at " << load.reader().division();
  }
  return ::testing::AssertionSuccess();
}

bool Loads(const Load& load) { return !load.rangeCheck && load.pattern.loaded; }

bool SameAnswer(const MeterScan& a, const MeterScan& b) {
  if (a.outcome != b.outcome) return false;
  const TimeMark& x = a.pattern.timeSignature;
  const TimeMark& y = b.pattern.timeSignature;
  return a.pattern.division == b.pattern.division && x.numerator == y.numerator &&
         x.denominator == y.denominator && x.ticksPerBeat == y.ticksPerBeat &&
         x.ticksPerMeasure == y.ticksPerMeasure;
}

// A prefix either settles what the whole file settles, or asks for more
// than it holds.
void ExpectPrefixesAgree(const Bytes& file, const MeterScan& whole, std::size_t cut) {
  const MeterScan part = ScanMeter(std::span(file.data(), cut), file.size());
  if (part.outcome == MeterScanOutcome::kUnknown) {
    EXPECT_GT(part.wanted, cut);
    EXPECT_LE(part.wanted, file.size());
  } else {
    EXPECT_TRUE(SameAnswer(part, whole)) << "cut at " << cut;
  }
}

void ExpectScanAgreesWithReader(const Bytes& file, bool everyCut, int& loaded) {
  const Load load(file);
  const MeterScan whole = ScanWhole(file);
  SCOPED_TRACE(::testing::PrintToString(file));
  ASSERT_NE(whole.outcome, MeterScanOutcome::kUnknown);
  if (Loads(load)) {
    ++loaded;
    ASSERT_TRUE(SameMeter(whole, load));
  }
  // None only where the reader really refuses the file.
  if (whole.outcome == MeterScanOutcome::kNone) {
    EXPECT_FALSE(Loads(load));
  }
  if (everyCut) {
    for (std::size_t cut = 0; cut < file.size(); ++cut) ExpectPrefixesAgree(file, whole, cut);
  } else if (!file.empty()) {
    ExpectPrefixesAgree(file, whole, file.size() / 3);
    ExpectPrefixesAgree(file, whole, file.size() / 2);
  }
}

TEST(TheMeterScan, ReachesTheReadersMeterOnGeneratedFiles) {
  int loaded = 0;
  for (uint32_t seed = 1; seed <= 12000; ++seed) {
    SmfGenerator generator(seed);
    ExpectScanAgreesWithReader(generator.File(), seed <= 1500, loaded);
    if (HasFatalFailure()) return;
  }
  // Enough of them load for the comparison to mean something.
  EXPECT_GT(loaded, 6000);
}

TEST(TheMeterScan, NeitherCrashesNorHangsOnNoise) {
  int loaded = 0;
  for (uint32_t seed = 1; seed <= 4000; ++seed) {
    SmfGenerator generator(seed);
    ExpectScanAgreesWithReader(generator.Noise(), seed <= 500, loaded);
    if (HasFatalFailure()) return;
  }
}

// Three four over a division of 96: 288 ticks a measure.
const Bytes kThreeFour = timeSignature(0, 3, 2);

TEST(TheMeterScan, TakesTheTimeSignatureAfterATempoAndASysExAtTickZero) {
  const Bytes file = smf(0, 96,
                         {cat({tempo(0, 500000),
                               {0x00, 0xF0, 0x05, 0x7E, 0x7F, 0x09, 0x01, 0xF7},  // GM on
                               kThreeFour,
                               note(0, 0x99, 36, 100),
                               note(96, 0x89, 36, 0),
                               kEndOfTrack})});
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, Load(file)));
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 3);
  EXPECT_EQ(scan.pattern.timeSignature.ticksPerMeasure, 288);
  EXPECT_TRUE(MeterFits(scan.pattern, {3, 1024}));
  EXPECT_FALSE(MeterFits(scan.pattern, {4, 1024}));
}

TEST(TheMeterScan, SkipsASysExAsTheReaderDoesNotByItsLength) {
  // The reader skips the byte after 0xF0 and four more whatever they are,
  // then up to the next 0xF7: the 0xF7 among the four does not end it, and
  // the time signature after it is swallowed up to the next one.
  const Bytes file = smf(0, 96,
                         {cat({{0x00, 0xF0, 0x05, 0x01, 0x02, 0x03, 0xF7},
                               kThreeFour,
                               {0xF7},
                               timeSignature(0, 6, 3),
                               note(0, 0x99, 36, 100),
                               kEndOfTrack})});
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, Load(file)));
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 6);
}

TEST(TheMeterScan, TakesTheLastOfTwoTimeSignaturesAtTickZero) {
  const Bytes file = smf(1, 480,
                         {cat({kThreeFour, timeSignature(0, 7, 3), kEndOfTrack}),
                          cat({note(0, 0x99, 36, 100), note(480, 0x89, 36, 0), kEndOfTrack})});
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, Load(file)));
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 7);
  EXPECT_EQ(scan.pattern.timeSignature.denominator, 8);
  EXPECT_EQ(scan.pattern.timeSignature.ticksPerMeasure, 7 * 240);
}

TEST(TheMeterScan, FallsBackOnFourFourWhenOnlyTrackTwoHasATimeSignature) {
  const Bytes file = smf(1, 480,
                         {cat({tempo(0, 500000), kEndOfTrack}),
                          cat({kThreeFour, note(0, 0x99, 36, 100), kEndOfTrack})});
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, Load(file)));
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 4);
  EXPECT_EQ(scan.pattern.timeSignature.ticksPerMeasure, 1920);
}

TEST(TheMeterScan, StopsAtTheFirstEventAfterTickZero) {
  // A time signature later in the track fails the load; the scan has
  // settled before it and needs none of the bytes after the first delta
  // that leaves tick 0.
  const Bytes opening = cat({header(0, 1, 480), Bytes{'M', 'T', 'r', 'k'}, be32(1000), kThreeFour,
                             note(10, 0x99, 36, 100)});
  const std::size_t settledAt = opening.size() - 3;  // the delta's byte is all it needs
  const MeterScan scan = ScanMeter(std::span(opening.data(), settledAt), 100000);
  ASSERT_EQ(scan.outcome, MeterScanOutcome::kMeter);
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 3);
  EXPECT_EQ(ScanMeter(std::span(opening.data(), settledAt - 1), 100000).outcome,
            MeterScanOutcome::kUnknown);
}

TEST(TheMeterScan, AsksForMoreWhenThePrefixEndsInsideTheFirstTrack) {
  Bytes events;
  for (int i = 0; i < 2000; ++i) events = cat({events, {0x00, 0xFF, 0x01, 0x01, 'x'}});
  const Bytes file = smf(0, 480,
                         {cat({events, timeSignature(0, 5, 2), note(0, 0x99, 36, 100),
                               note(480, 0x89, 36, 0), kEndOfTrack})});
  ASSERT_GT(file.size(), kMeterScanPrefix);
  const MeterScan first = ScanMeter(std::span(file.data(), kMeterScanPrefix), file.size());
  ASSERT_EQ(first.outcome, MeterScanOutcome::kUnknown);
  EXPECT_GT(first.wanted, kMeterScanPrefix);
  const MeterScan whole = ScanWhole(file);
  ASSERT_TRUE(SameMeter(whole, Load(file)));
  EXPECT_EQ(whole.pattern.timeSignature.numerator, 5);
  // Cut inside the header, inside the track's header, inside the time
  // signature: never a guess.
  for (std::size_t cut : {std::size_t{0}, std::size_t{9}, std::size_t{17}, file.size() - 20}) {
    EXPECT_EQ(ScanMeter(std::span(file.data(), cut), file.size()).outcome,
              MeterScanOutcome::kUnknown)
        << cut;
  }
}

TEST(TheMeterScan, ConvertsAnSmpteDivisionAsTheReaderDoes) {
  // -25 frames of 40 ticks: the frame byte read unsigned is 231, an unusual
  // rate, so the division is 40 times 231.
  const Bytes file = smf(0, 0xE728, {cat({kThreeFour, note(0, 0x99, 36, 100), kEndOfTrack})});
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, Load(file)));
  EXPECT_EQ(scan.pattern.division, 40 * 231);
  // No ticks in a frame: a division of 0, which the reader refuses.
  const Bytes noTicks = smf(0, 0xE700, {cat({note(0, 0x99, 36, 100), kEndOfTrack})});
  EXPECT_EQ(ScanWhole(noTicks).outcome, MeterScanOutcome::kNone);
  EXPECT_TRUE(Load(noTicks).rangeCheck);
}

TEST(TheMeterScan, GivesNoMeterWhereTheReaderRefusesTheFileBeforeIt) {
  const Bytes kick = cat({note(0, 0x99, 36, 100), kEndOfTrack});
  const Bytes cases[] = {
      smf(0, 0, {kick}),                                           // a division of 0
      smf(0, 2, {cat({timeSignature(0, 4, 4), kick})}),            // 16ths over 2 ticks a quarter
      smf(0, 480, {cat({timeSignature(0, 0, 2), kick})}),          // a numerator of 0
      smf(0, 480, {cat({{0x00, 0xFF, 0x58, 0x00}, kick})}),        // no numerator at all
      smf(0, 480, {cat({{0x00, 0xFF, 0x01, 0x88, 0x01}, kick})}),  // a meta of 1025 bytes
      smf(3, 480, {kick}),                                         // format 3
      cat({header(0, 1, 480), chunk("MTrx", kick)}),               // no track chunk first
      cat({header(0, 1, 480), Bytes{'M', 'T', 'r', 'k', 0x80, 0, 0, 0}, kick}),
      smf(0, 480, {cat({{0x00, 0x40, 0x40}, kick})}),  // running status before any status
  };
  for (const Bytes& file : cases) {
    EXPECT_EQ(ScanWhole(file).outcome, MeterScanOutcome::kNone) << ::testing::PrintToString(file);
    EXPECT_FALSE(Loads(Load(file)));
  }
}

TEST(TheMeterScan, FollowsTheReaderPastAChunkThatAProgramChangeGrew) {
  // A program change with its own status grows by a byte that the reader
  // does not count as read, so it reads one byte past the chunk's end: the
  // time signature behind the chunk is its meter.
  const Bytes file = cat({header(0, 1, 96), track({0x00, 0xC0, 0x05}), kThreeFour});
  const Load load(file);
  ASSERT_TRUE(Loads(load));
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, load));
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 3);
}

TEST(TheMeterScan, TakesATimeSignatureTheReaderMovesBackOntoTickZero) {
  // A delta of five bytes wraps to -1; the time signature there is off the
  // beat, so the reader moves it back onto the barline at tick 0.
  const Bytes file = smf(0, 96,
                         {cat({{0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0x01, 0x00},
                               kThreeFour,
                               note(1, 0x99, 36, 100),
                               kEndOfTrack})});
  const Load load(file);
  ASSERT_TRUE(Loads(load));
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, load));
  EXPECT_EQ(scan.pattern.timeSignature.numerator, 3);

  // One a whole beat before tick 0 stays there: the track counts in it,
  // but it is not the groove's meter.
  const Bytes onTheBeat = smf(0, 96,
                              {cat({{0x8F, 0xFF, 0xFF, 0xFF, 0x20, 0xFF, 0x01, 0x00},  // -96
                                    kThreeFour,
                                    note(97, 0x99, 36, 100),
                                    kEndOfTrack})});
  const Load beatLoad(onTheBeat);
  ASSERT_TRUE(Loads(beatLoad));
  const MeterScan beatScan = ScanWhole(onTheBeat);
  ASSERT_TRUE(SameMeter(beatScan, beatLoad));
  EXPECT_EQ(beatScan.pattern.timeSignature.numerator, 4);
}

TEST(TheMeterScan, ReadsZerosPastTheFileEndAsTheReaderDoes) {
  // The file ends inside the time signature its track claims whole: the
  // reader reads the missing bytes as zeros, a denominator of 2^0.
  const Bytes file =
      cat({header(0, 1, 96), Bytes{'M', 'T', 'r', 'k'}, be32(8), Bytes{0x00, 0xFF, 0x58, 0x04, 3}});
  const Load load(file);
  ASSERT_TRUE(Loads(load));
  const MeterScan scan = ScanWhole(file);
  ASSERT_TRUE(SameMeter(scan, load));
  EXPECT_EQ(scan.pattern.timeSignature.denominator, 1);
  // Zeros without end draw more diagnostics than a load may show.
  const Bytes endless =
      cat({header(0, 1, 96), Bytes{'M', 'T', 'r', 'k'}, be32(100000), Bytes{0x00, 0xF0}});
  EXPECT_EQ(ScanWhole(endless).outcome, MeterScanOutcome::kNone);
  EXPECT_FALSE(Loads(Load(endless)));
}

TEST(TheMeterScan, ReadsMoreOfAnOpenFileOnlyWhenItMustAndRefusesAnEmptyOne) {
  Bytes events;
  for (int i = 0; i < 3000; ++i) events = cat({events, {0x00, 0xFF, 0x01, 0x01, 'x'}});
  const Bytes file = smf(0, 480, {cat({events, timeSignature(0, 6, 3), kEndOfTrack})});
  std::FILE* open = std::tmpfile();
  ASSERT_NE(open, nullptr);
  std::fwrite(file.data(), 1, file.size(), open);
  const MeterScan scan = ScanMeterOfFile(open);
  ASSERT_TRUE(SameMeter(scan, Load(file)));
  std::fclose(open);

  std::FILE* empty = std::tmpfile();
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(ScanMeterOfFile(empty).outcome, MeterScanOutcome::kNone);
  std::fclose(empty);
  EXPECT_EQ(ScanMeterOfFile(nullptr).outcome, MeterScanOutcome::kNone);
}

// The scenarios' grooves, built as the reference host's runner writes them.
Bytes CommentedBytes(const nlohmann::json& lines) {
  Bytes out;
  for (const auto& line : lines) {
    std::istringstream words(line.get<std::string>());
    for (std::string word; words >> word && word.rfind("//", 0) != 0;) {
      out.push_back(uint8_t(std::stoul(word, nullptr, 16)));
    }
  }
  return out;
}

Bytes NoteListGroove(const nlohmann::json& groove) {
  const auto division = groove.value("division", uint16_t{480});
  const auto meter = groove.value("time_signature", std::vector<int>{4, 4});
  const auto channel = uint8_t(groove.value("channel", 9) & 0x0F);
  uint8_t power = 0;
  while ((1 << power) < meter.at(1)) ++power;
  struct Event {
    uint32_t tick;
    int order;  // note-offs before note-ons at one tick
    Bytes bytes;
  };
  std::vector<Event> events = {{0, 0, {0xFF, 0x58, 0x04, uint8_t(meter.at(0)), power, 24, 8}},
                               {0, 0, {0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20}}};
  uint32_t last = 0;
  for (const auto& n : groove.at("notes")) {
    const auto tick = n.at(0).get<uint32_t>();
    const auto key = uint8_t(n.at(1).get<int>());
    const uint8_t ch = n.size() > 2 ? uint8_t(n.at(2).get<int>()) : channel;
    events.push_back({tick, 2, {uint8_t(0x90 | ch), key, 100}});
    events.push_back({tick + division / 8u, 1, {uint8_t(0x80 | ch), key, 0}});
    last = std::max(last, tick + division / 8u);
  }
  std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
    return a.tick != b.tick ? a.tick < b.tick : a.order < b.order;
  });
  Bytes data;
  uint32_t now = 0;
  for (const Event& e : events) {
    data = cat({data, vlq(e.tick - now), e.bytes});
    now = e.tick;
  }
  const uint32_t end = std::max(last, groove.value("end", last));
  data = cat({data, vlq(end - now), {0xFF, 0x2F, 0x00}});
  return smf(0, division, {data});
}

void CollectGrooves(const nlohmann::json& node, std::vector<Bytes>& out) {
  if (node.is_array()) {
    for (const auto& item : node) CollectGrooves(item, out);
    return;
  }
  if (!node.is_object()) return;
  for (const auto& [key, value] : node.items()) {
    const bool grooves = key == "groove_files" || key == "user_groove_files" ||
                         key == "add_groove_files" || key == "add_user_groove_files";
    if (grooves && value.is_array()) {
      for (const auto& groove : value) {
        if (!groove.is_object()) continue;
        if (groove.contains("bytes")) {
          out.push_back(CommentedBytes(groove.at("bytes")));
        } else if (groove.contains("notes")) {
          out.push_back(NoteListGroove(groove));
        }
      }
    } else {
      CollectGrooves(value, out);
    }
  }
}

TEST(TheMeterScan, ReachesTheReadersMeterOnEveryScenarioGroove) {
  std::vector<Bytes> grooves;
  for (const auto& entry : std::filesystem::directory_iterator(RW_SCENARIOS_DIR)) {
    if (entry.path().extension() != ".json") continue;
    std::ifstream in(entry.path());
    CollectGrooves(nlohmann::json::parse(in), grooves);
  }
  ASSERT_GT(grooves.size(), 100u);
  int loaded = 0;
  for (const Bytes& file : grooves) {
    ExpectScanAgreesWithReader(file, false, loaded);
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(loaded, 100);
}

}  // namespace
}  // namespace rw::groove::testing
