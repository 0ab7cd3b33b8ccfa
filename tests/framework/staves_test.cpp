// Staff specifications, their names, staff lists and a new staff.
#include <memory>

#include "framework_fixture.h"
#include "host_api.h"
#include "staff_list.h"
#include "staff_names.h"

namespace {

using rw::host::kVersion;

class StaffNames : public FrameworkTest {
 protected:
  // A spec loaded for the staff `staff`, with names given in host text.
  std::unique_ptr<rw::CStaffSpec> LoadSpec(std::uint16_t staff) {
    auto spec = std::make_unique<rw::CStaffSpec>();
    EXPECT_NE(spec->Load(staff, kVersion), 0);
    return spec;
  }
  std::uint16_t StaffNamed(const std::string& full, const std::string& abbreviated = "") {
    doc.add_staff("Flute", "");
    doc.add_staff("Oboe", "");
    return doc.add_staff(full, abbreviated);  // staff 3
  }
};

TEST_F(StaffNames, ASingleSpaceIsNoNameAndGivesTheStaffNumber) {
  const auto loaded = LoadSpec(StaffNamed(" "));
  const rw::CStaffSpec& spec = *loaded;
  rw::CUTextObject text;
  EXPECT_EQ(rw::GetStaffFullName(spec, text), 1);
  EXPECT_EQ(Wide(text.Text()), u"[Staff 3]");
}

TEST_F(StaffNames, ASingleLetterIsAName) {
  const auto loaded = LoadSpec(StaffNamed("X"));
  const rw::CStaffSpec& spec = *loaded;
  rw::CUTextObject text;
  EXPECT_EQ(rw::GetStaffFullName(spec, text), 0);
  EXPECT_EQ(Wide(text.Text()), u"X");
}

TEST_F(StaffNames, AFlatOnlyNameReducesToTheLetterB) {
  const auto loaded = LoadSpec(StaffNamed("^flat()"));
  const rw::CStaffSpec& spec = *loaded;
  rw::CUTextObject text;
  EXPECT_EQ(rw::GetStaffFullName(spec, text), 0);
  EXPECT_EQ(Wide(text.Text()), u"^flat()") << "the text object keeps the host's text";
  EXPECT_EQ(Wide(rw::StaffDisplayName(spec).c_str()), u"b");
}

TEST_F(StaffNames, TheAbbreviatedNameReadsItsOwnBlock) {
  const auto loaded = LoadSpec(StaffNamed("", "Dr."));
  const rw::CStaffSpec& spec = *loaded;
  rw::CUTextObject text;
  EXPECT_EQ(rw::GetStaffAbbreviatedName(spec, text), 0);
  EXPECT_EQ(Wide(text.Text()), u"Dr.");
  EXPECT_FALSE(rw::HasStaffFullName(spec));
  EXPECT_TRUE(rw::HasStaffAbbreviatedName(spec));
}

TEST_F(StaffNames, AMissingNameTextCountsAsNoName) {
  const std::uint16_t staff = StaffNamed("Drums");
  const std::uint16_t block = WordAt(*doc.record(CX_TAG_STAFF_SPEC, staff, 0), 16);
  const std::uint16_t textNumber = WordAt(*doc.record(CX_TAG_TEXT_BLOCK, block, 0), 0);
  ASSERT_TRUE(doc.remove_record(CX_TAG_BLOCK_TEXT, textNumber, 0));
  const auto loaded = LoadSpec(staff);
  const rw::CStaffSpec& spec = *loaded;
  EXPECT_FALSE(rw::HasStaffFullName(spec));
  rw::CUTextObject text;
  EXPECT_EQ(rw::GetStaffFullName(spec, text), 1);
  EXPECT_EQ(Wide(text.Text()), u"[Staff 3]");
}

TEST_F(StaffNames, TheDisplayNameFallsBackFromFullToAbbreviatedToTheNumber) {
  EXPECT_EQ(
      Wide(rw::StaffDisplayName(*LoadSpec(doc.add_staff("^font(Arial,0)Drum Set", "Dr."))).c_str()),
      u"Drum Set");
  EXPECT_EQ(Wide(rw::StaffDisplayName(*LoadSpec(doc.add_staff(" ", "Perc."))).c_str()), u"Perc.");
  EXPECT_EQ(Wide(rw::StaffDisplayName(*LoadSpec(doc.add_staff("", ""))).c_str()), u"[Staff 3]");
}

class StaffLists : public FrameworkTest {
 protected:
  void AddListRecords(std::uint16_t list, std::uint16_t count) {
    for (std::uint16_t i = 0; i < count; ++i) {
      doc.set_record(CX_TAG_STAFF_LIST, list, i, Words({static_cast<std::uint16_t>(i + 1)}, 24));
    }
  }
};

TEST_F(StaffLists, AtMostAThousandEntriesAreRead) {
  AddListRecords(5, 1003);
  rw::StaffList list(5);
  EXPECT_EQ(list.Count(), 1000u);
  EXPECT_EQ(list.Entry(999).Staff(), 1000);
}

TEST_F(StaffLists, SavingAShorterListDeletesTheLeftovers) {
  AddListRecords(0, 2);
  AddListRecords(7, 5);
  rw::StaffList list(0);
  list.Entry(1).SetVerticalPosition(-777);
  ASSERT_TRUE(rw::SaveStaffList(list, 7));
  EXPECT_EQ(rw::StaffList(7).Count(), 2u);
  EXPECT_EQ(doc.records(CX_TAG_STAFF_LIST).size(), 4u);
  EXPECT_EQ(cx_get_i32(doc.record(CX_TAG_STAFF_LIST, 7, 1)->data(), CX_STAFF_LIST_VERTICAL), -777);
}

TEST_F(StaffLists, SelectorsMapToListNumbers) {
  AddListRecords(0, 1);
  AddListRecords(12, 1);
  AddListRecords(65528, 1);
  AddListRecords(65507, 1);
  EXPECT_EQ(rw::GetStaffListNumber(1, 0), 0);
  EXPECT_EQ(rw::GetStaffListNumber(2, 12), 12);
  EXPECT_EQ(rw::GetStaffListNumber(3, 0), 65528);
  EXPECT_EQ(rw::GetStaffListNumber(4, 8), 65507);
  EXPECT_TRUE(doc.alerts().empty());
}

TEST_F(StaffLists, ABadSelectorOrMissingListIsReportedAndGives65535) {
  EXPECT_EQ(rw::GetStaffListNumber(4, 9), 65535);
  EXPECT_EQ(rw::GetStaffListNumber(4, 0), 65535);
  EXPECT_TRUE(doc.alerts().empty()) << "an out-of-range n is silent";
  EXPECT_EQ(rw::GetStaffListNumber(5, 1), 65535);
  EXPECT_EQ(rw::GetStaffListNumber(2, 44), 65535);
  ASSERT_EQ(doc.alerts().size(), 2u);
  EXPECT_EQ(doc.alerts()[0].text, "pCTX_GetInstrumentList: invalid flag");
  EXPECT_EQ(doc.alerts()[1].text, "pCTX_GetInstrumentList: list #44 does not exist");
  EXPECT_FALSE(doc.alerts()[1].wide);
}

using NewStaff = FrameworkTest;

TEST_F(NewStaff, GoesBelowTheLastStaffBy250Units) {
  const std::uint16_t drums = doc.add_staff("Drums", "");
  auto entry = *doc.record(CX_TAG_STAFF_LIST, 0, 0);
  cx_put_u32(entry.data(), CX_STAFF_LIST_VERTICAL, static_cast<std::uint32_t>(-100));
  doc.set_record(CX_TAG_STAFF_LIST, 0, 0, entry);

  const auto [slot, added] = rw::AddStaffAtBottom();
  ASSERT_NE(added, 0);
  EXPECT_NE(added, drums);
  EXPECT_EQ(doc.staves_in_order(), (std::vector<std::uint16_t>{drums, added}));
  EXPECT_EQ(slot, 2u);
  const rw::StaffList list(0);
  EXPECT_EQ(list.Entry(1).VerticalPosition(), -350);
  EXPECT_EQ(doc.record(CX_TAG_STAFF_SPEC, added, 0)->size(), std::size_t{CX_STAFF_SPEC_SIZE});
}

TEST_F(NewStaff, TheFirstStaffOfAnEmptyScoreKeepsItsPlace) {
  const auto [slot, added] = rw::AddStaffAtBottom();
  ASSERT_NE(added, 0);
  EXPECT_EQ(slot, 1u);
  EXPECT_EQ(doc.staves_in_order(), std::vector<std::uint16_t>{added});
}

TEST_F(NewStaff, ARefusedCreationReportsFailure) {
  doc.add_staff("Drums", "");
  doc.refuse_writes(CX_TAG_STAFF_SPEC);
  EXPECT_EQ(rw::AddStaffAtBottom().staff, 0);
  EXPECT_EQ(doc.staves_in_order().size(), 1u);
}

}  // namespace
