#include "composite_records.h"

#include <array>

#include "composite_tables.h"
#include "host_api.h"

namespace rw::host {
namespace {

using SubRecord = std::array<std::uint8_t, CX_SUBRECORD_SIZE>;
constexpr std::int16_t kSubRecordWords = CX_SUBRECORD_SIZE / 2;

std::uint32_t TableSize(const CompositeTable& table) {
  std::uint32_t size = 0;
  for (std::size_t i = 0; i < table.rowCount; ++i) size += CompositeRow(table, i).FieldSize();
  return size;
}

void ClearMarks(const CompositeTable& table) {
  for (std::size_t i = 0; i < table.rowCount; ++i) CompositeRow(table, i).SetMark(false);
}

// A missing sub-record reads as zeros; the answer is deliberately ignored.
SubRecord LoadSubRecord(const CompositeRow& row) {
  SubRecord sub{};
  std::uint16_t block[2] = {row.Number(), row.Sub()};
  std::uint32_t size = CX_SUBRECORD_SIZE;
  direct::CX_LoadEData(row.SubTag(), block, sub.data(), &size, kVersion);
  return sub;
}

void SaveSubRecord(const CompositeRow& row, const SubRecord& sub) {
  std::uint16_t block[2] = {row.Number(), row.Sub()};
  direct::CX_SaveEData(row.SubTag(), block, sub.data(), CX_SUBRECORD_SIZE, kVersion);
}

// Rows whose words or bytes would fall outside their buffers are skipped.
bool RowFits(const CompositeRow& row, std::uint32_t recordSize) {
  const std::int16_t words = row.FieldSize() == 4 ? 2 : 1;
  if (row.Index() < 0 || row.Index() + words > kSubRecordWords) return false;
  return std::uint32_t{row.Offset()} + row.FieldSize() <= recordSize;
}

std::uint16_t Word(const SubRecord& sub, std::int16_t index) {
  return cx_get_u16(sub.data(), static_cast<std::size_t>(index) * 2);
}
void SetWord(SubRecord& sub, std::int16_t index, std::uint16_t value) {
  cx_put_u16(sub.data(), static_cast<std::size_t>(index) * 2, value);
}

std::uint16_t Inverted(std::uint16_t flag) { return flag == 0 ? 1 : 0; }

void ReadField(const CompositeRow& row, const SubRecord& sub, std::uint8_t* record) {
  const std::int16_t index = row.Index();
  if (row.FieldSize() == 2) {
    const std::uint16_t word = Word(sub, index);
    cx_put_u16(record, row.Offset(), row.Kind() == kInvertedFlag ? Inverted(word) : word);
    return;
  }
  const std::uint32_t first = Word(sub, index);
  const std::uint32_t second = Word(sub, static_cast<std::int16_t>(index + 1));
  cx_put_u32(record, row.Offset(),
             row.Kind() == kHighWordFirst ? (first << 16) | second : (second << 16) | first);
}

// Answers whether the sub-record's words changed.
bool WriteField(const CompositeRow& row, const std::uint8_t* record, SubRecord& sub) {
  const std::int16_t index = row.Index();
  if (row.FieldSize() == 2) {
    std::uint16_t word = cx_get_u16(record, row.Offset());
    if (row.Kind() == kInvertedFlag) word = Inverted(word);
    if (Word(sub, index) == word) return false;
    SetWord(sub, index, word);
    return true;
  }
  const std::uint32_t value = cx_get_u32(record, row.Offset());
  const auto high = static_cast<std::uint16_t>(value >> 16);
  const auto low = static_cast<std::uint16_t>(value & 0xFFFF);
  const std::uint16_t first = row.Kind() == kHighWordFirst ? high : low;
  const std::uint16_t second = row.Kind() == kHighWordFirst ? low : high;
  const auto next = static_cast<std::int16_t>(index + 1);
  if (Word(sub, index) == first && Word(sub, next) == second) return false;
  SetWord(sub, index, first);
  SetWord(sub, next, second);
  return true;
}

// Visits the rows served by the sub-record of row `first`, marking each.
template <typename Visit>
void ForRowsOfSubRecord(const CompositeTable& table, std::size_t first, Visit visit) {
  const CompositeRow leader(table, first);
  for (std::size_t j = first; j < table.rowCount; ++j) {
    CompositeRow row(table, j);
    if (row.Marked() || (j != first && !row.SharesSubRecord(leader))) continue;
    visit(row);
    row.SetMark(true);
  }
}

}  // namespace

std::optional<std::uint16_t> LoadCompositeRecord(std::uint32_t tag, void* data,
                                                 std::uint32_t* size) {
  const CompositeTable* table = FindCompositeTable(tag);
  if (table == nullptr) return std::nullopt;
  if (size == nullptr) return 0;
  const std::uint32_t given = *size;
  *size = TableSize(*table);
  if (data == nullptr) return 1;

  auto* record = static_cast<std::uint8_t*>(data);
  ClearMarks(*table);
  for (std::size_t i = 0; i < table->rowCount; ++i) {
    if (CompositeRow(*table, i).Marked()) continue;
    const SubRecord sub = LoadSubRecord(CompositeRow(*table, i));
    ForRowsOfSubRecord(*table, i, [&](const CompositeRow& row) {
      if (RowFits(row, given)) ReadField(row, sub, record);
    });
  }
  return 1;
}

std::optional<std::uint16_t> StoreCompositeRecord(std::uint32_t tag, const void* data,
                                                  std::uint32_t size) {
  const CompositeTable* table = FindCompositeTable(tag);
  if (table == nullptr) return std::nullopt;
  // The bound counts rows, not bytes: kept as the host's own conversion has it.
  if (data == nullptr || size < 2 * table->rowCount) return 0;

  const auto* record = static_cast<const std::uint8_t*>(data);
  ClearMarks(*table);
  for (std::size_t i = 0; i < table->rowCount; ++i) {
    if (CompositeRow(*table, i).Marked()) continue;
    const CompositeRow leader(*table, i);
    SubRecord sub = LoadSubRecord(leader);
    bool changed = false;
    ForRowsOfSubRecord(*table, i, [&](const CompositeRow& row) {
      if (RowFits(row, size) && WriteField(row, record, sub)) changed = true;
    });
    if (changed) SaveSubRecord(leader, sub);
  }
  return 1;
}

}  // namespace rw::host
