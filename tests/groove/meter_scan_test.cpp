// The meter scan against the reader itself: on generated files, on the
// edge cases of the reader's byte rules, and on every groove the end-to-end
// scenarios place.
#include "meter_scan.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "groove_writer.h"
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

// Where the scan could part from the reader: each file with the numerator
// the reader gives it.
TEST(TheMeterScan, ReachesTheReadersMeterWhereItsByteRulesAreOdd) {
  const Bytes kick = cat({note(0, 0x99, 36, 100), kEndOfTrack});
  const struct {
    const char* why;
    Bytes file;
    int32_t numerator;
  } cases[] = {
      {"after a tempo and a SysEx at tick 0",
       smf(0, 96,
           {cat({tempo(0, 500000),
                 {0x00, 0xF0, 0x05, 0x7E, 0x7F, 0x09, 0x01, 0xF7},
                 kThreeFour,
                 kick})}),
       3},
      // The reader skips the byte after 0xF0 and four more whatever they
      // are, then up to the next 0xF7: the 0xF7 among the four does not end
      // it, and the time signature after it is swallowed.
      {"a SysEx skipped as the reader skips it, not by its length",
       smf(0, 96,
           {cat({{0x00, 0xF0, 0x05, 0x01, 0x02, 0x03, 0xF7},
                 kThreeFour,
                 {0xF7},
                 timeSignature(0, 6, 3),
                 kick})}),
       6},
      {"the last of two at tick 0",
       smf(1, 480, {cat({kThreeFour, timeSignature(0, 7, 3), kEndOfTrack}), kick}), 7},
      {"four four when only track two has one",
       smf(1, 480, {cat({tempo(0, 500000), kEndOfTrack}), cat({kThreeFour, kick})}), 4},
      // -25 frames of 40 ticks: the frame byte read unsigned is 231.
      {"an SMPTE division", smf(0, 0xE728, {cat({kThreeFour, kick})}), 3},
      // A program change with its own status grows by a byte that the reader
      // does not count as read, so it reads one byte past the chunk's end.
      {"behind a chunk that a program change grew",
       cat({header(0, 1, 96), track({0x00, 0xC0, 0x05}), kThreeFour}), 3},
      // A delta of five bytes wraps to -1: off the beat, moved back onto 0.
      {"moved back onto tick 0",
       smf(0, 96,
           {cat({{0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0x01, 0x00},
                 kThreeFour,
                 note(1, 0x99, 36, 100),
                 kEndOfTrack})}),
       3},
      // A whole beat before tick 0 it stays there: not the groove's meter.
      {"a whole beat before tick 0",
       smf(0, 96,
           {cat({{0x8F, 0xFF, 0xFF, 0xFF, 0x20, 0xFF, 0x01, 0x00},
                 kThreeFour,
                 note(97, 0x99, 36, 100),
                 kEndOfTrack})}),
       4},
      // The reader reads the missing bytes as zeros: a denominator of 2^0.
      {"cut short inside the time signature",
       cat({header(0, 1, 96), Bytes{'M', 'T', 'r', 'k'}, be32(8),
            Bytes{0x00, 0xFF, 0x58, 0x04, 3}}),
       3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const Load load(c.file);
    ASSERT_TRUE(Loads(load));
    const MeterScan scan = ScanWhole(c.file);
    ASSERT_TRUE(SameMeter(scan, load));
    EXPECT_EQ(scan.pattern.timeSignature.numerator, c.numerator);
  }
  EXPECT_TRUE(MeterFits(ScanWhole(cases[0].file).pattern, {3, 1024}));
  EXPECT_FALSE(MeterFits(ScanWhole(cases[0].file).pattern, {4, 1024}));
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
      smf(0, 0xE700, {kick}),                          // no ticks in an SMPTE frame
      // Zeros without end past the file's end: more diagnostics than a load may show.
      cat({header(0, 1, 96), Bytes{'M', 'T', 'r', 'k'}, be32(100000), Bytes{0x00, 0xF0}}),
  };
  for (const Bytes& file : cases) {
    EXPECT_EQ(ScanWhole(file).outcome, MeterScanOutcome::kNone) << ::testing::PrintToString(file);
    EXPECT_FALSE(Loads(Load(file)));
  }
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

// The scenarios' grooves, written by the reference host's own writer.
void CollectGrooves(const nlohmann::json& node, const std::filesystem::path& file,
                    std::vector<Bytes>& out) {
  if (node.is_array()) {
    for (const auto& item : node) CollectGrooves(item, file, out);
    return;
  }
  if (!node.is_object()) return;
  for (const auto& [key, value] : node.items()) {
    if (key.ends_with("groove_files") && value.is_array()) {
      for (const auto& groove : value) {
        if (!groove.is_object() || !(groove.contains("bytes") || groove.contains("notes"))) {
          continue;
        }
        cantel_host::write_groove(groove, file);
        std::ifstream in(file, std::ios::binary);
        out.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
      }
    } else {
      CollectGrooves(value, file, out);
    }
  }
}

TEST(TheMeterScan, ReachesTheReadersMeterOnEveryScenarioGroove) {
  const std::filesystem::path file =
      std::filesystem::path(::testing::TempDir()) / "rw-meter-scan-scenario-groove.mid";
  std::vector<Bytes> grooves;
  for (const auto& entry : std::filesystem::directory_iterator(RW_SCENARIOS_DIR)) {
    if (entry.path().extension() != ".json") continue;
    std::ifstream in(entry.path());
    CollectGrooves(nlohmann::json::parse(in), file, grooves);
  }
  std::filesystem::remove(file);
  ASSERT_GT(grooves.size(), 100u);
  int loaded = 0;
  for (const Bytes& groove : grooves) {
    ExpectScanAgreesWithReader(groove, false, loaded);
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(loaded, 100);
}

}  // namespace
}  // namespace rw::groove::testing
