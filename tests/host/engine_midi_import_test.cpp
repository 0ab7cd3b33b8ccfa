#include "engine_fixture.h"
#include "import_file_builder.h"

namespace {

using cantel_engine::EntryInfo;

class MidiImportOfTheEngine : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    doc.add_measures(4, {});  // 4/4: 4096 units a measure
    doc.add_staff("Piano", "");
    drums = doc.add_staff("Drums", "");
  }

  // The import block: the region of slot 2, then the path, inline.
  uint32_t import(const std::string& path, uint16_t first, uint16_t last) {
    std::vector<uint8_t> block(CX_MIDI_BLOCK_SIZE, 0);
    cx_put_u16(block.data(), CX_REGION_START_SLOT, 2);
    cx_put_u16(block.data(), CX_REGION_START_MEASURE, first);
    cx_put_u16(block.data(), CX_REGION_END_SLOT, 2);
    cx_put_u16(block.data(), CX_REGION_END_MEASURE, last);
    cx_put_u32(block.data(), CX_REGION_END_POSITION, CX_END_OF_MEASURE);
    for (size_t i = 0; i < path.size(); ++i) {
      cx_put_u16(block.data(), CX_MIDI_BLOCK_PATH + 2 * i, static_cast<uint8_t>(path[i]));
    }
    return CX_ProcessMidiDataNoSplit(block.data(), v);
  }

  // Two measures of 4/4 at 480 ticks a quarter, on the drum channel (9):
  // bar 1: kick (36) at 0, snare (38) at beat 2, kick and hi-hat (42) at
  // beat 3; bar 2: snare at its start.
  static smf::Bytes two_bar_groove() {
    smf::Track drums;
    drums.add(0, {0x99, 36, 100})
        .add(480, {0x99, 38, 90})
        .add(0, {0x89, 36, 0})
        .add(480, {0x99, 36, 100})
        .add(0, {42, 80})       // running status: hi-hat with the kick
        .add(960, {38, 90});    // tick 1920: bar 2
    return smf::file(480, {drums});
  }

  uint16_t drums = 0;
};

TEST_F(MidiImportOfTheEngine, PlacesOneChordPerOnsetAndLeavesMeasuresWithoutOnsetsEmpty) {
  const std::string path = smf::write("host_import_groove.mid", two_bar_groove());
  ASSERT_EQ(import(path, 1, 4), 0u);

  const auto bar1 = doc.entries(drums, 1, 0);
  ASSERT_EQ(bar1.size(), 3u);
  EXPECT_EQ(bar1[0].position, 0);
  EXPECT_EQ(bar1[0].duration, 1024);
  EXPECT_EQ(bar1[0].keys, (std::vector<uint16_t>{36}));
  EXPECT_EQ(bar1[0].flags, CX_ENTRY_FLAG_LEGAL | CX_ENTRY_FLAG_NOTE);
  EXPECT_EQ(bar1[1].keys, (std::vector<uint16_t>{38}));
  EXPECT_EQ(bar1[2].position, 2048);
  EXPECT_EQ(bar1[2].duration, 2048);  // up to the end of the measure
  EXPECT_EQ(bar1[2].keys, (std::vector<uint16_t>{36, 42}));

  const auto bar2 = doc.entries(drums, 2, 0);
  ASSERT_EQ(bar2.size(), 1u);
  EXPECT_EQ(bar2[0].duration, 4096);
  EXPECT_EQ(doc.frame_number(drums, 3, 0), 0);
  EXPECT_EQ(doc.frame_number(drums, 4, 0), 0);
  ASSERT_EQ(doc.imports().size(), 1u);
  EXPECT_EQ(doc.imports()[0].notes_placed, 5u);
  EXPECT_EQ(doc.imports()[0].path, path);
}

TEST_F(MidiImportOfTheEngine, PlacesFromTheStartMeasureAndDropsOnsetsBeyondTheEnd) {
  const std::string path = smf::write("host_import_groove.mid", two_bar_groove());
  ASSERT_EQ(import(path, 3, 3), 0u);
  EXPECT_EQ(doc.entries(drums, 3, 0).size(), 3u);
  EXPECT_TRUE(doc.entries(drums, 4, 0).empty());
  EXPECT_EQ(doc.imports()[0].notes_placed, 4u);
}

TEST_F(MidiImportOfTheEngine, ClearsEveryLayerOfTheRegionAndFillsTheGapBeforeTheFirstOnset) {
  doc.add_entry(drums, 1, 2, 0, 4096, {60});
  doc.add_entry(drums, 2, 0, 0, 4096, {60});
  smf::Track late;
  late.add(960, {0x99, 49, 100});  // crash on beat 3 only
  ASSERT_EQ(import(smf::write("host_import_late.mid", smf::file(480, {late})), 1, 2), 0u);
  EXPECT_TRUE(doc.entries(drums, 1, 2).empty());
  EXPECT_TRUE(doc.entries(drums, 2, 0).empty());
  const auto bar1 = doc.entries(drums, 1, 0);
  ASSERT_EQ(bar1.size(), 2u);
  EXPECT_EQ(bar1[0].flags, CX_ENTRY_FLAG_LEGAL);  // a rest up to the crash
  EXPECT_EQ(bar1[0].duration, 2048);
  EXPECT_EQ(bar1[1].keys, (std::vector<uint16_t>{49}));
}

TEST_F(MidiImportOfTheEngine, ShowsNotesOfEveryChannelAndOfEveryTrack) {
  smf::Track piano;
  piano.add(0, {0x90, 60, 70}).add(0, {0x90, 64, 0});  // velocity 0 is no onset
  smf::Track drum_track;
  drum_track.add(0, {0x99, 36, 100});
  ASSERT_EQ(import(smf::write("host_import_mixed.mid", smf::file(96, {piano, drum_track})), 1, 1),
            0u);
  const auto bar1 = doc.entries(drums, 1, 0);
  ASSERT_EQ(bar1.size(), 1u);
  EXPECT_EQ(bar1[0].keys, (std::vector<uint16_t>{36, 60}));
}

TEST_F(MidiImportOfTheEngine, AnswersNonZeroAndRecordsWhyForAnUnreadableFile) {
  EXPECT_NE(import("/nonexistent/groove.mid", 1, 1), 0u);
  const smf::Bytes truncated = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0};
  EXPECT_NE(import(smf::write("host_import_truncated.mid", truncated), 1, 1), 0u);
  ASSERT_EQ(doc.imports().size(), 2u);
  EXPECT_FALSE(doc.imports()[0].error.empty());
  EXPECT_FALSE(doc.imports()[1].error.empty());
}

}  // namespace
