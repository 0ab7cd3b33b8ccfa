// The binding's own behaviour, against a fake host supplied through the
// resolver seam, installed before the first call.
#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "fake_host.h"
#include "host_api.h"

namespace {

using rw::host::kVersion;

class Environment : public ::testing::Environment {
 public:
  void SetUp() override { rw::host::SetResolver(&fake_host::Resolve); }
};
const auto* const environment = ::testing::AddGlobalTestEnvironment(new Environment);

// A frame with one entry, built as the host lays it out.
struct Frame {
  std::array<std::uint8_t, CX_TGF_SIZE> header{};
  std::vector<std::uint8_t> entries;

  explicit Frame(int entryCount) : entries(static_cast<std::size_t>(entryCount) * CX_ENTRY_SIZE) {
    cx_put_ptr(header.data(), CX_TGF_ENTRIES, entries.data());
    cx_put_u16(header.data(), CX_TGF_ENTRY_COUNT, static_cast<std::uint16_t>(entryCount));
  }
  std::uint8_t* Entry(int i) { return entries.data() + i * CX_ENTRY_SIZE; }
  std::uint8_t* Note(int entry, int note) { return Entry(entry) + CX_ENTRY_NOTES + note * CX_NOTE_SIZE; }
  void SetNotes(int entry, std::initializer_list<std::int16_t> ids) {
    cx_put_u16(Entry(entry), CX_ENTRY_NOTE_COUNT, static_cast<std::uint16_t>(ids.size()));
    int i = 0;
    for (std::int16_t id : ids) {
      cx_put_u16(Note(entry, i), CX_NOTE_ID, static_cast<std::uint16_t>(id));
      cx_put_u32(Note(entry, i), CX_NOTE_FLAGS, 0xFFFFFFFFu);  // every bit set, to see which move
      ++i;
    }
  }
};

std::int16_t SavedId(int entry, int note) {
  return cx_get_i16(fake_host::savedEntries.data(),
                    static_cast<std::size_t>(entry) * CX_ENTRY_SIZE + CX_ENTRY_NOTES +
                        static_cast<std::size_t>(note) * CX_NOTE_SIZE + CX_NOTE_ID);
}
std::uint32_t SavedNoteFlags(int entry, int note) {
  return cx_get_u32(fake_host::savedEntries.data(),
                    static_cast<std::size_t>(entry) * CX_ENTRY_SIZE + CX_ENTRY_NOTES +
                        static_cast<std::size_t>(note) * CX_NOTE_SIZE + CX_NOTE_FLAGS);
}

TEST(AFrameSavedThroughTheBinding, HasUniqueNoteIdentifiersMirroredIntoTheFlags) {
  Frame frame(1);
  frame.SetNotes(0, {3, 3, 0});
  std::memset(frame.Note(0, 3), 0xAB, CX_NOTE_SIZE);  // stale bytes beyond the count

  ASSERT_EQ(rw::host::CX_SaveTGF(frame.header.data(), kVersion), 1);

  EXPECT_EQ(SavedId(0, 0), 4);  // the earlier of two equal identifiers moves
  EXPECT_EQ(SavedId(0, 1), 3);
  EXPECT_EQ(SavedId(0, 2), 5);
  EXPECT_EQ(SavedNoteFlags(0, 0), 0xFFE4FFFFu);  // bits 16-20 hold 4, the rest untouched
  EXPECT_EQ(SavedNoteFlags(0, 1), 0xFFE3FFFFu);
  EXPECT_EQ(SavedNoteFlags(0, 2), 0xFFE5FFFFu);
  for (int slot = 3; slot < CX_ENTRY_MAX_NOTES; ++slot) {
    EXPECT_EQ(SavedId(0, slot), 0) << slot;
    EXPECT_EQ(SavedNoteFlags(0, slot), 0u) << slot;
  }
}

TEST(AFrameSavedThroughTheBinding, GivesAnEmptyEntryOneNoteSlot) {
  Frame frame(2);
  frame.SetNotes(0, {1});
  cx_put_u32(frame.Entry(1), CX_ENTRY_FLAGS, 0x80000000u);

  rw::host::CX_SaveTGF(frame.header.data(), kVersion);

  const std::uint8_t* empty = fake_host::savedEntries.data() + CX_ENTRY_SIZE;
  EXPECT_EQ(cx_get_i16(empty, CX_ENTRY_NOTE_COUNT), 1);
  EXPECT_EQ(SavedNoteFlags(1, 0), 0x80000000u);
  EXPECT_EQ(cx_get_u32(empty, CX_ENTRY_FLAGS), 0x81000000u);
  EXPECT_EQ(cx_get_i16(fake_host::savedEntries.data(), CX_ENTRY_NOTE_COUNT), 1);  // untouched
}

TEST(AFrameSavedThroughTheBinding, NeverReadsPastTwelveNotesOfACorruptCount) {
  Frame frame(1);
  frame.SetNotes(0, {1, 2});
  cx_put_u16(frame.Entry(0), CX_ENTRY_NOTE_COUNT, 500);
  rw::host::CX_SaveTGF(frame.header.data(), kVersion);  // ASan would object to a wild read
  EXPECT_EQ(SavedId(0, 0), 1);
}

TEST(TheEditCounter, LetsAnEndWithoutAStartAnswerOneWithoutTheHost) {
  const int before = fake_host::endEditCalls;
  EXPECT_EQ(rw::host::CX_EndCantelEdit(kVersion), 1);
  EXPECT_EQ(fake_host::endEditCalls, before);

  rw::host::CX_StartCantelEdit("Rhythm Weave Plug-In", kVersion);
  EXPECT_EQ(rw::host::EditNestingCount(), 1);
  EXPECT_EQ(rw::host::CX_EndCantelEdit(kVersion), 7);  // reached the host
  EXPECT_EQ(rw::host::CX_EndCantelEdit(kVersion), 1);  // the second end does not
  EXPECT_EQ(fake_host::endEditCalls, before + 1);
  EXPECT_EQ(rw::host::EditNestingCount(), 0);
}

TEST(AMissingExport, AnswersItsFallbackAndIsNotLookedUpAgainUntilANewResolver) {
  fake_host::missing = {"CX_GetMaxLayers", "CX_FontNameToNum_UTF16", "CX_ProcessMidiDataNoSplit",
                        "SendDlgItemMessageW"};
  rw::host::SetResolver(&fake_host::Resolve);
  EXPECT_EQ(rw::host::CX_GetMaxLayers(kVersion), 4);
  EXPECT_EQ(rw::host::CX_FontNameToNum_UTF16(u"Sonetta", kVersion), 0xFFFF);
  EXPECT_EQ(rw::host::CX_ProcessMidiDataNoSplit(nullptr, kVersion), 0xFFFFFFFFu);
  EXPECT_EQ(rw::host::SendDlgItemMessageW(nullptr, 2002, CX_LB_GETCURSEL, 0, 0), 0);

  fake_host::missing.clear();  // the host "gains" the exports later
  EXPECT_EQ(rw::host::CX_GetMaxLayers(kVersion), 4);
  EXPECT_EQ(fake_host::lookups["CX_GetMaxLayers"], 1);

  rw::host::SetResolver(&fake_host::Resolve);  // forgets every binding
  EXPECT_EQ(rw::host::CX_GetMaxLayers(kVersion), 8);
  EXPECT_EQ(fake_host::lookups["CX_GetMaxLayers"], 2);
  EXPECT_EQ(rw::host::SendDlgItemMessageW(nullptr, 2002, CX_LB_GETCURSEL, 0, 0),
            2002 * 0x10000 + CX_LB_GETCURSEL);
}

}  // namespace
