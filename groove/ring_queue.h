// A first-in, first-out queue on one growing ring, for the events a
// streaming pass holds back: after it has grown to the widest window it
// needs, it allocates nothing more. Elements are also reached by the count
// of elements pushed before them.
#pragma once

#include <cstdint>
#include <vector>

namespace rw::groove {

template <class T>
class RingQueue {
 public:
  bool empty() const { return head_ == tail_; }
  uint64_t size() const { return tail_ - head_; }
  T& front() { return slots_[head_ & mask_]; }
  const T& front() const { return slots_[head_ & mask_]; }
  T& back() { return slots_[(tail_ - 1) & mask_]; }
  const T& back() const { return slots_[(tail_ - 1) & mask_]; }
  // The element pushed after `number` others; it must still be queued.
  T& at(uint64_t number) { return slots_[number & mask_]; }
  // The numbers of the first element and of the next one `push` adds.
  uint64_t first() const { return head_; }
  uint64_t next() const { return tail_; }

  void push(const T& value) { Add() = value; }
  // A new last element, for the caller to fill in place.
  T& Add() {
    if (tail_ - head_ == slots_.size()) Grow();
    return slots_[tail_++ & mask_];
  }
  void pop() { ++head_; }
  // For a loop that takes many from the front holding the queue in
  // registers: the element numbered n is slots()[n & mask()], and PopTo
  // takes every element before `number` out.
  T* slots() { return slots_.data(); }
  uint64_t mask() const { return mask_; }
  void PopTo(uint64_t number) { head_ = number; }
  void pop_back() { --tail_; }
  void clear() { head_ = tail_ = 0; }

 private:
  void Grow() {
    std::vector<T> wider(slots_.empty() ? kFirstRoom : 2 * slots_.size());
    const uint64_t wideMask = wider.size() - 1;
    for (uint64_t i = head_; i != tail_; ++i) wider[i & wideMask] = slots_[i & mask_];
    slots_.swap(wider);
    mask_ = wideMask;
  }

  static constexpr uint64_t kFirstRoom = 64;
  std::vector<T> slots_;
  uint64_t mask_ = 0;
  uint64_t head_ = 0;
  uint64_t tail_ = 0;
};

}  // namespace rw::groove
