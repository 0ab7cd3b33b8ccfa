// The four composite preference kinds and their field tables. A table is a
// writable array of 20-byte descriptor rows: the conversion marks rows while
// it works through them, so the rows live in mutable storage and are read
// and written through the accessors below, never as structs.
#pragma once

#include <cstddef>
#include <cstdint>

namespace rw::host {

inline constexpr std::size_t kCompositeRowSize = 20;

// Row layout, byte offsets.
inline constexpr std::size_t kRowMark = 0;
inline constexpr std::size_t kRowChars = 2;   // c1, c2
inline constexpr std::size_t kRowNumber = 4;  // 0: the default number
inline constexpr std::size_t kRowSub = 6;
inline constexpr std::size_t kRowOffset = 8;      // in the composite record
inline constexpr std::size_t kRowIndex = 10;      // first word in the sub-record
inline constexpr std::size_t kRowFieldSize = 12;  // 2 or 4
inline constexpr std::size_t kRowKind = 16;

enum CompositeKind : std::uint32_t {
  kCopy = 0,
  kHighWordFirst = 1,
  kLowWordFirst = 2,
  kInvertedFlag = 3,
  kCopyToo = 4,
};

struct CompositeTable {
  std::uint32_t tag;
  std::uint8_t* rows;
  std::size_t rowCount;
};

// The table of a composite kind, or null for any other tag.
const CompositeTable* FindCompositeTable(std::uint32_t tag);

// Accessors of row `i` of a table.
class CompositeRow {
 public:
  CompositeRow(const CompositeTable& table, std::size_t i)
      : bytes_(table.rows + i * kCompositeRowSize) {}

  bool Marked() const;
  void SetMark(bool marked);
  char C1() const;
  char C2() const;
  // The sub-record's tag: bytes c2, c1, 't', 'o'.
  std::uint32_t SubTag() const;
  std::uint16_t StoredNumber() const;
  // 0 stands for 65534 when c1 is a digit, else for 0.
  std::uint16_t Number() const;
  std::uint16_t Sub() const;
  std::uint16_t Offset() const;
  std::int16_t Index() const;
  std::uint16_t FieldSize() const;
  std::uint32_t Kind() const;
  // Same sub-record as `other`: equal characters and stored number words.
  bool SharesSubRecord(const CompositeRow& other) const;

 private:
  std::uint8_t* bytes_;
};

}  // namespace rw::host
