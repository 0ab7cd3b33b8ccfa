// The byte store under SmfReader. Logically it is the caller's buffer with its
// size variable, edited in place: bytes are inserted at the read position and
// ranges are cut out. Done literally, every insertion would move the whole
// tail of the file, which is quadratic on a large file of short messages.
//
// Instead, once the first edit comes, the bytes not yet reached by the reader
// are parked at the end of the allocation (the caller allocates twice the
// file's size). Logical positions below `front_` live at their own index;
// positions from `front_` on live `gap_` bytes further up. The read position
// never falls below `front_`, so reads take one indexed load. An insertion
// first closes the distance to the read position (bytes read since the last
// edit move down once), then drops one byte into the gap. Cuts only shift the
// boundaries. Flush() puts every byte back at its own index; the reader does
// that at the end of each load, whatever way it ends.
#pragma once

#include <cstdint>
#include <cstring>

#include "range_check.h"

namespace rw::groove {

class GapBuffer {
 public:
  GapBuffer(uint8_t* buffer, uint64_t* size, uint64_t capacity)
      : buffer_(buffer), sizeVar_(size), size_(*size), capacity_(capacity), tail_(buffer) {}

  uint64_t size() const { return size_; }
  uint64_t capacity() const { return capacity_; }

  // Logical byte `position`, for front_ <= position < size().
  uint8_t Get(uint64_t position) const { return tail_[position]; }
  // The bytes from `position` up to size(), contiguous; front_ <= position.
  // The reader decodes whole events from it instead of byte by byte.
  const uint8_t* Window(uint64_t position) const { return tail_ + position; }

  void Put(uint64_t position, uint8_t value) {
    if (position < front_) {  // the usual case: behind the reader, after an edit
      buffer_[position] = value;
      return;
    }
    if (position >= capacity_) throw RangeCheckError("write outside the buffer");
    if (position < size_) tail_[position] = value;
    // Past the end the byte is outside the file and no later edit brings it
    // back, so there is nothing to keep.
  }

  // The read position moved back to `position`.
  void Rewind(uint64_t position) {
    if (position >= front_) return;
    std::memmove(buffer_ + position + gap_, buffer_ + position, front_ - position);
    front_ = position;
  }

  // Opens one zero byte at `position` (the read position).
  void Insert(uint64_t position) {
    if (size_ >= capacity_ || position > size_)
      throw RangeCheckError("insertion outside the buffer");
    if (!parked_) {
      Park(position);
    } else if (position != front_) {
      CloseUpTo(position);
    }
    // Fields are written from locals, never re-read right after a write:
    // this runs once per grown message.
    const uint64_t gap = gap_ - 1;
    const uint64_t size = size_ + 1;
    buffer_[position] = 0;
    front_ = position + 1;
    gap_ = gap;
    tail_ = buffer_ + gap;
    size_ = size;
    *sizeVar_ = size;
  }

  // A run of edits from the read position on, done as a stream: each byte
  // from there is read at `in` and what replaces it is written at `out`,
  // which never passes `in`. The distance between them is the room left to
  // grow; every byte behind `out` sits at its own index.
  struct Stream {
    const uint8_t* in;
    uint8_t* out;
  };

  Stream OpenStream(uint64_t position) {
    if (parked_) CloseUpTo(position);
    uint8_t* out = buffer_ + position;
    return {out + gap_, out};
  }

  // Where the data ends, on the stream's input side.
  const uint8_t* InputEnd() const { return tail_ + size_; }

  // Room for one more byte at the stream: before the first edit that needs
  // it the unread bytes are parked. False when the allocation is full.
  bool MakeRoom(Stream& stream) {
    if (stream.in != stream.out) return true;
    if (parked_ || size_ >= capacity_) return false;
    const auto position = static_cast<uint64_t>(stream.out - buffer_);
    Park(position);
    stream.in = buffer_ + position + gap_;
    return true;
  }

  void CloseStream(const Stream& stream) {
    if (!parked_) return;  // edited in place: nothing moved, nothing grew
    const auto gap = static_cast<uint64_t>(stream.in - stream.out);
    size_ += gap_ - gap;
    *sizeVar_ = size_;
    front_ = static_cast<uint64_t>(stream.out - buffer_);
    gap_ = gap;
    tail_ = buffer_ + gap;
  }

  // Removes [from, to); `to` is the read position and may lie past the end
  // of the data after a skip. The size then drops by the whole distance and
  // nothing moves, as a literal cut would do.
  void Cut(uint64_t from, uint64_t to) {
    const uint64_t removed = to - from;
    if (from > to || to > capacity_ || removed > size_) {
      throw RangeCheckError("cut outside the buffer");
    }
    if (to > size_) {
      Flush();
      size_ -= removed;
    } else if (!parked_) {
      // Park only what stays: the bytes from `to` on.
      const uint64_t newSize = size_ - removed;
      const uint64_t newGap = capacity_ - newSize;
      std::memmove(buffer_ + from + newGap, buffer_ + to, size_ - to);
      front_ = from;
      gap_ = newGap;
      size_ = newSize;
      parked_ = true;
    } else {
      if (from < front_) {
        front_ = from;  // bytes already moved down are simply dropped
      } else {
        CloseUpTo(from);
      }
      gap_ += removed;
      size_ -= removed;
    }
    tail_ = buffer_ + gap_;
    *sizeVar_ = size_;
  }

  // Every byte back at its own index.
  void Flush() {
    if (parked_ && size_ > front_) {
      std::memmove(buffer_ + front_, buffer_ + front_ + gap_, size_ - front_);
    }
    front_ = 0;
    gap_ = 0;
    tail_ = buffer_;
    parked_ = false;
  }

 private:
  // Before the first edit every byte sits at its own index; the part from
  // `position` on goes to the end of the allocation.
  void Park(uint64_t position) {
    const uint64_t newGap = capacity_ - size_;
    std::memmove(buffer_ + position + newGap, buffer_ + position, size_ - position);
    front_ = position;
    gap_ = newGap;
    tail_ = buffer_ + gap_;
    parked_ = true;
  }

  void CloseUpTo(uint64_t position) {
    if (position < front_) {
      Rewind(position);
      return;
    }
    const uint64_t count = position - front_;
    uint8_t* to = buffer_ + front_;
    const uint8_t* from = to + gap_;
    if (count <= 8) {
      for (uint64_t i = 0; i < count; ++i) to[i] = from[i];
    } else {
      std::memmove(to, from, count);
    }
    front_ = position;
  }

  uint8_t* buffer_;
  uint64_t* sizeVar_;
  uint64_t size_;
  uint64_t capacity_;
  uint64_t front_ = 0;
  uint64_t gap_ = 0;
  uint8_t* tail_;
  bool parked_ = false;
};

}  // namespace rw::groove
