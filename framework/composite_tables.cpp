#include "composite_tables.h"

#include <cantel/cantel.h>

#include <array>

namespace rw::host {
namespace {

struct Field {
  char c1;
  char c2;
  std::uint16_t number;
  std::uint16_t sub;
  std::int16_t index;
  std::uint16_t size;
  std::uint32_t kind;
};

constexpr Field Word(char c1, char c2, std::uint16_t sub, std::int16_t index) {
  return {c1, c2, 0, sub, index, 2, kCopy};
}
constexpr Field Long(char c1, char c2, std::uint16_t sub, std::int16_t index) {
  return {c1, c2, 0, sub, index, 4, kLowWordFirst};
}
constexpr Field Flag(char c1, char c2, std::uint16_t sub, std::int16_t index) {
  return {c1, c2, 0, sub, index, 2, kInvertedFlag};
}

constexpr void Put16(std::uint8_t* p, std::uint16_t v) {
  p[0] = static_cast<std::uint8_t>(v & 0xFF);
  p[1] = static_cast<std::uint8_t>(v >> 8);
}
constexpr void Put32(std::uint8_t* p, std::uint32_t v) {
  Put16(p, static_cast<std::uint16_t>(v & 0xFFFF));
  Put16(p + 2, static_cast<std::uint16_t>(v >> 16));
}

// Lays the fields out one after another, without gaps, as 20-byte rows.
template <std::size_t N>
constexpr std::array<std::uint8_t, N * kCompositeRowSize> Rows(const Field (&fields)[N]) {
  std::array<std::uint8_t, N * kCompositeRowSize> rows{};
  std::uint16_t offset = 0;
  for (std::size_t i = 0; i < N; ++i) {
    std::uint8_t* row = rows.data() + i * kCompositeRowSize;
    row[kRowChars] = static_cast<std::uint8_t>(fields[i].c1);
    row[kRowChars + 1] = static_cast<std::uint8_t>(fields[i].c2);
    Put16(row + kRowNumber, fields[i].number);
    Put16(row + kRowSub, fields[i].sub);
    Put16(row + kRowOffset, offset);
    Put16(row + kRowIndex, static_cast<std::uint16_t>(fields[i].index));
    Put16(row + kRowFieldSize, fields[i].size);
    Put32(row + kRowKind, fields[i].kind);
    offset = static_cast<std::uint16_t>(offset + fields[i].size);
  }
  return rows;
}

template <std::size_t N>
constexpr std::size_t RecordSize(const Field (&fields)[N]) {
  std::size_t size = 0;
  for (const Field& f : fields) size += f.size;
  return size;
}

// Page and score defaults: seven sub-records, the digit kinds under 65534.
constexpr Field k50fpFields[] = {
    Word('5', 'P', 0, 0), Word('5', 'P', 0, 1), Long('5', 'P', 0, 2), Word('6', 'P', 0, 0),
    Word('6', 'P', 0, 3), Word('7', 'P', 0, 0), Word('P', 'a', 0, 0), Word('P', 'a', 0, 1),
    Word('P', 'b', 0, 5), Word('P', 'c', 0, 0), Word('P', 'd', 0, 2),
};

// Document defaults: six sub-records of one kind, every word in use.
constexpr Field kPDfpFields[] = {
    Word('D', 'p', 0, 0), Word('D', 'p', 0, 1), Word('D', 'p', 0, 2), Word('D', 'p', 0, 3),
    Word('D', 'p', 0, 4), Word('D', 'p', 0, 5), Long('D', 'p', 1, 0), Word('D', 'p', 1, 2),
    Word('D', 'p', 1, 3), Word('D', 'p', 1, 4), Word('D', 'p', 1, 5), Word('D', 'p', 2, 0),
    Word('D', 'p', 2, 1), Word('D', 'p', 2, 2), Word('D', 'p', 2, 3), Word('D', 'p', 2, 4),
    Word('D', 'p', 2, 5), Word('D', 'p', 3, 0), Word('D', 'p', 3, 1), Word('D', 'p', 3, 2),
    Word('D', 'p', 3, 3), Word('D', 'p', 3, 4), Word('D', 'p', 3, 5), Word('D', 'p', 4, 0),
    Word('D', 'p', 4, 1), Long('D', 'p', 4, 2), Word('D', 'p', 4, 4), Word('D', 'p', 4, 5),
    Word('D', 'p', 5, 0), Word('D', 'p', 5, 1), Word('D', 'p', 5, 2), Word('D', 'p', 5, 3),
    Word('D', 'p', 5, 4), Word('D', 'p', 5, 5),
};

// Music spacing: eight sub-records of one kind, the flag stored inverted,
// and one field of the global record at 65534 named explicitly.
constexpr Field kSMfpFields[] = {
    Word('M', 's', 0, 0), Word('M', 's', 0, 1), Long('M', 's', 0, 2),
    Word('M', 's', 0, 4), Flag('M', 's', 0, 5), Word('M', 's', 1, 0),
    Word('M', 's', 1, 1), Word('M', 's', 1, 2), Word('M', 's', 1, 3),
    Word('M', 's', 1, 4), Word('M', 's', 1, 5), Long('M', 's', 2, 0),
    Long('M', 's', 2, 2), Word('M', 's', 2, 4), Word('M', 's', 2, 5),
    Word('M', 's', 3, 0), Word('M', 's', 3, 1), Word('M', 's', 3, 2),
    Word('M', 's', 3, 3), Word('M', 's', 3, 4), Word('M', 's', 3, 5),
    Word('M', 's', 4, 0), Word('M', 's', 4, 1), Word('M', 's', 4, 2),
    Word('M', 's', 4, 3), Word('M', 's', 4, 4), Word('M', 's', 4, 5),
    Long('M', 's', 5, 0), Word('M', 's', 5, 2), Word('M', 's', 5, 3),
    Word('M', 's', 5, 4), Word('M', 's', 5, 5), Word('M', 's', 6, 0),
    Word('M', 's', 6, 1), Word('M', 's', 6, 2), Word('M', 's', 6, 3),
    Long('M', 's', 6, 4), Word('M', 's', 7, 0), Word('M', 's', 7, 1),
    Word('M', 's', 7, 2), Word('M', 's', 7, 3), Word('M', 's', 7, 4),
    Word('M', 's', 7, 5), Long('M', 's', 8, 0), Word('M', 's', 8, 2),
    Word('M', 's', 8, 3), Word('M', 's', 8, 4), Field{'G', 'P', 65534, 0, 0, 2, kCopy},
};

// Staff defaults: five sub-records of one kind.
constexpr Field kISfpFields[] = {
    Word('S', 'i', 0, 0), Word('S', 'i', 0, 1), Long('S', 'i', 0, 2), Word('S', 'i', 0, 4),
    Word('S', 'i', 0, 5), Word('S', 'i', 1, 0), Long('S', 'i', 1, 1), Word('S', 'i', 1, 3),
    Word('S', 'i', 1, 4), Word('S', 'i', 1, 5), Word('S', 'i', 2, 0), Word('S', 'i', 2, 1),
    Word('S', 'i', 2, 2), Word('S', 'i', 2, 3), Long('S', 'i', 2, 4), Word('S', 'i', 3, 0),
    Word('S', 'i', 3, 1), Word('S', 'i', 3, 2), Word('S', 'i', 3, 3), Word('S', 'i', 3, 4),
    Word('S', 'i', 3, 5), Long('S', 'i', 4, 0), Word('S', 'i', 4, 2),
};

static_assert(std::size(k50fpFields) == 11 && RecordSize(k50fpFields) == 24);
static_assert(std::size(kPDfpFields) == 34 && RecordSize(kPDfpFields) == 72);
static_assert(std::size(kSMfpFields) == 48 && RecordSize(kSMfpFields) == 108);
static_assert(std::size(kISfpFields) == 23 && RecordSize(kISfpFields) == 54);

auto rows50fp = Rows(k50fpFields);
auto rowsPDfp = Rows(kPDfpFields);
auto rowsSMfp = Rows(kSMfpFields);
auto rowsISfp = Rows(kISfpFields);

const CompositeTable kTables[] = {
    {CX_TAG('5', '0', 'f', 'p'), rows50fp.data(), std::size(k50fpFields)},
    {CX_TAG('P', 'D', 'f', 'p'), rowsPDfp.data(), std::size(kPDfpFields)},
    {CX_TAG('S', 'M', 'f', 'p'), rowsSMfp.data(), std::size(kSMfpFields)},
    {CX_TAG('I', 'S', 'f', 'p'), rowsISfp.data(), std::size(kISfpFields)},
};

}  // namespace

const CompositeTable* FindCompositeTable(std::uint32_t tag) {
  for (const CompositeTable& table : kTables) {
    if (table.tag == tag) return &table;
  }
  return nullptr;
}

bool CompositeRow::Marked() const { return cx_get_u16(bytes_, kRowMark) != 0; }
void CompositeRow::SetMark(bool marked) { cx_put_u16(bytes_, kRowMark, marked ? 1 : 0); }
char CompositeRow::C1() const { return static_cast<char>(bytes_[kRowChars]); }
char CompositeRow::C2() const { return static_cast<char>(bytes_[kRowChars + 1]); }
std::uint32_t CompositeRow::SubTag() const { return CX_TAG(C2(), C1(), 't', 'o'); }
std::uint16_t CompositeRow::StoredNumber() const { return cx_get_u16(bytes_, kRowNumber); }
std::uint16_t CompositeRow::Number() const {
  const std::uint16_t stored = StoredNumber();
  if (stored != 0) return stored;
  return C1() < ':' ? 65534 : 0;
}
std::uint16_t CompositeRow::Sub() const { return cx_get_u16(bytes_, kRowSub); }
std::uint16_t CompositeRow::Offset() const { return cx_get_u16(bytes_, kRowOffset); }
std::int16_t CompositeRow::Index() const { return cx_get_i16(bytes_, kRowIndex); }
std::uint16_t CompositeRow::FieldSize() const { return cx_get_u16(bytes_, kRowFieldSize); }
std::uint32_t CompositeRow::Kind() const { return cx_get_u32(bytes_, kRowKind); }

bool CompositeRow::SharesSubRecord(const CompositeRow& other) const {
  return C1() == other.C1() && C2() == other.C2() && StoredNumber() == other.StoredNumber() &&
         Sub() == other.Sub();
}

}  // namespace rw::host
