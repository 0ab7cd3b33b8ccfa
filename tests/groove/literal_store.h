// The edits done literally, in place: every insertion moves the whole tail
// up by one byte, every cut moves it down, and every byte is read on its own.
// Slow and obviously right; the differential test runs the reader over it and
// over the fast store and demands the same bytes, size, diagnostics and
// results.
#pragma once

#include <cstdint>

#include "range_check.h"

namespace rw::groove::testing {

// It offers no window over its bytes, so the reader takes every byte through
// ReadByte.
class LiteralStore {
 public:
  LiteralStore(uint8_t* buffer, uint64_t* size, uint64_t capacity)
      : buffer_(buffer), size_(size), capacity_(capacity) {}

  uint64_t size() const { return *size_; }
  uint64_t capacity() const { return capacity_; }
  uint8_t Get(uint64_t position) const { return buffer_[position]; }

  void Put(uint64_t position, uint8_t value) {
    if (position >= capacity_) throw RangeCheckError("write outside the buffer");
    buffer_[position] = value;
  }

  void Rewind(uint64_t) {}

  void Insert(uint64_t position) {
    if (*size_ >= capacity_ || position > *size_) throw RangeCheckError("insertion outside");
    *size_ += 1;
    for (uint64_t i = *size_ - 1; i > position; --i) buffer_[i] = buffer_[i - 1];
    buffer_[position] = 0;
  }

  void Cut(uint64_t from, uint64_t to) {
    const uint64_t removed = to - from;
    if (from > to || to > capacity_ || removed > *size_) throw RangeCheckError("cut outside");
    const uint64_t oldEnd = *size_;
    *size_ -= removed;
    for (uint64_t i = to; i < oldEnd; ++i) buffer_[i - removed] = buffer_[i];
  }

  void Flush() {}

 private:
  uint8_t* buffer_;
  uint64_t* size_;
  uint64_t capacity_;
};

// The same, by the literal rules: events in running status are left as they
// stand, so that the reader's rewrite of them can be held to reading exactly
// what these rules read.
class LiteralRulesStore : public LiteralStore {
 public:
  using LiteralStore::LiteralStore;
  static constexpr bool kLiteralRules = true;
};

}  // namespace rw::groove::testing
