// The composite preference kinds, assembled from and split into the host's
// 12-byte sub-records.
#include <array>

#include "framework_fixture.h"
#include "host_api.h"

namespace {

using rw::host::kVersion;

constexpr std::uint32_t kSMfp = CX_TAG('S', 'M', 'f', 'p');
constexpr std::uint32_t k50fp = CX_TAG('5', '0', 'f', 'p');
// Sub-record kinds of the table rows: characters c1, c2 give tag bytes c2, c1, 't', 'o'.
constexpr std::uint32_t kSpacing = CX_TAG('s', 'M', 't', 'o');  // rows "Ms", number 0
constexpr std::uint32_t kGlobal = CX_TAG('P', 'G', 't', 'o');   // row "GP", number 65534
constexpr std::uint32_t kPage = CX_TAG('P', '5', 't', 'o');  // rows "5P", number defaults to 65534

class CompositeRecords : public FrameworkTest {
 protected:
  void SetUp() override {
    FrameworkTest::SetUp();
    // "Ms" sub-record 0 (words 0 to 5): SMfp bytes 0, 2, 4..7 (low word
    // first), 8, and the inverted flag at 10.
    doc.set_record(kSpacing, 0, 0, Words({1, 2, 0x5678, 0x1234, 5, 0}));
    doc.set_record(kSpacing, 0, 1, Words({11, 12, 13, 14, 15, 16}));
    doc.set_record(kGlobal, 65534, 0, Words({77, 0, 0, 0, 0, 0}));
  }

  std::array<std::uint8_t, 108> Load() {
    std::array<std::uint8_t, 108> record{};
    std::uint16_t block[2] = {0, 0};
    std::uint32_t size = record.size();
    EXPECT_EQ(rw::host::CX_LoadEData(kSMfp, block, record.data(), &size, kVersion), 1);
    EXPECT_EQ(size, 108u);
    return record;
  }

  std::uint16_t Store(const std::uint8_t* record, std::uint32_t size) {
    std::uint16_t block[2] = {0, 0};
    return rw::host::CX_SaveEData(kSMfp, block, record, size, kVersion);
  }

  void RefuseSubRecordWrites() {
    doc.refuse_writes(kSpacing);
    doc.refuse_writes(kGlobal);
  }
};

TEST_F(CompositeRecords, ASizeQueryOfSMfpAnswers108) {
  std::uint16_t block[2] = {0, 0};
  std::uint32_t size = 0;
  EXPECT_EQ(rw::host::CX_LoadEData(kSMfp, block, nullptr, &size, kVersion), 1);
  EXPECT_EQ(size, 108u);
  EXPECT_EQ(rw::host::CX_LoadEData(kSMfp, block, nullptr, nullptr, kVersion), 0);
}

TEST_F(CompositeRecords, LoadAssemblesFieldsFromTheirSubRecords) {
  const auto record = Load();
  EXPECT_EQ(cx_get_u16(record.data(), 0), 1);
  EXPECT_EQ(cx_get_u16(record.data(), 2), 2);
  EXPECT_EQ(cx_get_u32(record.data(), 4), 0x12345678u);
  EXPECT_EQ(cx_get_u16(record.data(), 8), 5);
  EXPECT_EQ(cx_get_u16(record.data(), 10), 1) << "a host flag of 0 reads as 1";
  EXPECT_EQ(cx_get_u16(record.data(), 12), 11);
  EXPECT_EQ(cx_get_u16(record.data(), 106), 77) << "the G P row reads record 65534";
}

TEST_F(CompositeRecords, DigitKindsDefaultToRecord65534) {
  doc.set_record(kPage, 65534, 0, Words({10, 20, 0xBEEF, 0x00AD, 0, 0}));
  std::array<std::uint8_t, 24> record{};
  std::uint16_t block[2] = {0, 0};
  std::uint32_t size = record.size();
  ASSERT_EQ(rw::host::CX_LoadEData(k50fp, block, record.data(), &size, kVersion), 1);
  EXPECT_EQ(size, 24u);
  EXPECT_EQ(cx_get_u16(record.data(), 0), 10);
  EXPECT_EQ(cx_get_u16(record.data(), 2), 20);
  EXPECT_EQ(cx_get_u32(record.data(), 4), 0x00ADBEEFu);
}

TEST_F(CompositeRecords, LoadFillsOnlyWhatFitsInTheGivenSize) {
  std::array<std::uint8_t, 108> record;
  record.fill(0xCC);
  std::uint16_t block[2] = {0, 0};
  std::uint32_t size = 12;
  ASSERT_EQ(rw::host::CX_LoadEData(kSMfp, block, record.data(), &size, kVersion), 1);
  EXPECT_EQ(size, 108u);
  EXPECT_EQ(cx_get_u16(record.data(), 10), 1);
  EXPECT_EQ(record[12], 0xCC);
}

TEST_F(CompositeRecords, StoringWhatTheHostHoldsWritesNothing) {
  const auto record = Load();
  RefuseSubRecordWrites();  // every attempted write would be counted
  EXPECT_EQ(Store(record.data(), 108), 1);
  EXPECT_EQ(doc.refused_writes(), 0);
}

TEST_F(CompositeRecords, OneChangedFieldWritesOnlyItsSubRecord) {
  auto record = Load();
  cx_put_u16(record.data(), 12, 99);  // "Ms" sub-record 1, word 0
  RefuseSubRecordWrites();
  EXPECT_EQ(Store(record.data(), 108), 1);
  EXPECT_EQ(doc.refused_writes(), 1);
}

TEST_F(CompositeRecords, StoreSplitsLongFieldsAndInvertsTheFlag) {
  auto record = Load();
  cx_put_u32(record.data(), 4, 0xAABBCCDD);
  cx_put_u16(record.data(), 10, 0);
  cx_put_u16(record.data(), 106, 78);
  ASSERT_EQ(Store(record.data(), 108), 1);
  EXPECT_EQ(doc.record(kSpacing, 0, 0), Words({1, 2, 0xCCDD, 0xAABB, 5, 1}));
  EXPECT_EQ(doc.record(kSpacing, 0, 1), Words({11, 12, 13, 14, 15, 16}));
  EXPECT_EQ(doc.record(kGlobal, 65534, 0), Words({78, 0, 0, 0, 0, 0}));
}

TEST_F(CompositeRecords, AStoreBelowTwoBytesPerRowIsRefusedAndChangesNothing) {
  auto record = Load();
  cx_put_u16(record.data(), 0, 500);
  EXPECT_EQ(Store(record.data(), 95), 0);  // 48 rows need 96
  EXPECT_EQ(doc.record(kSpacing, 0, 0), Words({1, 2, 0x5678, 0x1234, 5, 0}));
  EXPECT_EQ(Store(nullptr, 108), 0);
}

TEST_F(CompositeRecords, AStoreReadsOnlyWithinTheGivenSize) {
  auto record = Load();
  cx_put_u16(record.data(), 0, 500);
  cx_put_u16(record.data(), 106, 1);  // beyond 96 bytes: not read
  EXPECT_EQ(Store(record.data(), 96), 1);
  EXPECT_EQ(WordAt(*doc.record(kSpacing, 0, 0), 0), 500);
  EXPECT_EQ(WordAt(*doc.record(kGlobal, 65534, 0), 0), 77);
}

}  // namespace
