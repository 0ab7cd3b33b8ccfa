#include "smf_writer.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>

namespace rw::groove {
namespace {

constexpr uint8_t kHeader[] = {'M', 'T', 'h', 'd', 0, 0, 0, 6};
constexpr uint8_t kTrackId[] = {'M', 'T', 'r', 'k', 0, 0, 0, 0};
constexpr std::size_t kHeaderSize = 14;
constexpr std::size_t kFormatAt = 8;
constexpr std::size_t kTrackCountAt = 10;
constexpr std::size_t kDivisionAt = 12;
constexpr std::size_t kChunkHeaderSize = 8;
constexpr uint8_t kEndOfTrack[] = {0xFF, 0x2F, 0x00};
constexpr std::size_t kInlineBytes = 4;

bool IsEndOfTrack(std::span<const uint8_t> event) {
  return event.size() >= 2 && event[0] == 0xFF && event[1] == 0x2F;
}

std::size_t VarLenSize(uint32_t value) {
  std::size_t size = 1;
  while (value >>= 7) ++size;
  return size;
}

void PutBigEndian(uint8_t* out, uint64_t value, int width) {
  for (int i = width - 1; i >= 0; --i) *out++ = uint8_t(value >> (8 * i));
}

}  // namespace

SmfWriter::SmfWriter(uint16_t format, uint16_t division, std::vector<uint8_t> storage)
    : file_(std::move(storage)) {
  file_.assign(std::begin(kHeader), std::end(kHeader));
  file_.resize(kHeaderSize);
  end_ = kHeaderSize;
  PutBigEndian(file_.data() + kFormatAt, format, 2);
  PutBigEndian(file_.data() + kDivisionAt, division, 2);
}

// Room for `bytes` more at the end. The vector grows in steps of at most
// 64 KiB beyond what is needed, so that memory reserved for the largest
// file it could be is only mapped where it is written.
uint8_t* SmfWriter::Room(std::size_t bytes) {
  constexpr std::size_t kStep = std::size_t{1} << 16;
  if (file_.size() - end_ < bytes) file_.resize(end_ + std::max(bytes, kStep));
  uint8_t* at = file_.data() + end_;
  end_ += bytes;
  return at;
}

bool SmfWriter::StartTrack(Order order) {
  if (tracks_ == std::numeric_limits<uint16_t>::max()) return false;
  CloseTrack();
  ++tracks_;
  open_ = true;
  order_ = order;
  trackStart_ = end_;
  std::copy(std::begin(kTrackId), std::end(kTrackId), Room(sizeof kTrackId));
  previousTick_ = 0;
  endTick_ = 0;
  runningStatus_ = 0;
  return true;
}

bool SmfWriter::Add(uint64_t tick, std::span<const uint8_t> event) {
  if (!open_ || event.empty() || event[0] < 0x80) return false;
  if (IsEndOfTrack(event)) {
    endTick_ = std::max(endTick_, tick);
    return true;
  }
  if (order_ == Order::kRising) {
    if (tick < previousTick_) return false;
    Encode(tick, event.data(), event.size());
    return true;
  }
  if (event.size() > std::numeric_limits<uint32_t>::max()) return false;
  Entry entry{tick, uint32_t(event.size()), 0};
  if (event.size() <= kInlineBytes) {
    std::memcpy(&entry.data, event.data(), event.size());
  } else {
    if (longBytes_.size() > std::numeric_limits<uint32_t>::max() - event.size()) return false;
    entry.data = uint32_t(longBytes_.size());
    longBytes_.insert(longBytes_.end(), event.begin(), event.end());
  }
  entries_.push_back(entry);
  return true;
}

bool SmfWriter::AddMessageAnyhow(uint64_t tick, uint8_t status, uint8_t data1, uint8_t data2) {
  const std::size_t size = HasOneDataByte(status) ? 2 : 3;
  if (!open_ || status < 0x80 || status >= 0xF0) return false;
  if (order_ != Order::kRising) {
    const uint8_t message[] = {status, data1, data2};
    return Add(tick, std::span<const uint8_t>(message, size));
  }
  // A rising track's message after a long gap, or at the end of the room.
  if (tick < previousTick_) return false;
  const bool running = status == runningStatus_;
  runningStatus_ = status;
  uint8_t* out = PutDelta(tick, size - (running ? 1 : 0));
  if (!running) *out++ = status;
  *out++ = data1;
  if (size == 3) *out = data2;
  return true;
}

// The delta time to `tick`, with room for the event after it. A gap longer
// than a delta time holds is written as the longest delta, so every later
// event of the track comes that much earlier.
uint8_t* SmfWriter::PutDelta(uint64_t tick, std::size_t eventBytes) {
  const uint64_t gap = tick - previousTick_;
  previousTick_ = tick;
  if (gap > kMaxDelta) ++clampedDeltas_;
  const auto delta = uint32_t(std::min<uint64_t>(gap, kMaxDelta));
  const std::size_t deltaBytes = VarLenSize(delta);
  uint8_t* out = Room(deltaBytes + eventBytes);
  for (std::size_t i = deltaBytes; i > 1; --i) {
    *out++ = uint8_t(0x80 | ((delta >> (7 * (i - 1))) & 0x7F));
  }
  *out++ = uint8_t(delta & 0x7F);
  return out;
}

// A channel message with the status of the one before it goes in running
// status; a meta or SysEx event in between ends it.
void SmfWriter::Encode(uint64_t tick, const uint8_t* event, std::size_t length) {
  const bool running = event[0] < 0xF0 && event[0] == runningStatus_;
  runningStatus_ = event[0] < 0xF0 ? event[0] : 0;
  if (running) {
    ++event;
    --length;
  }
  std::memcpy(PutDelta(tick, length), event, length);
}

void SmfWriter::CloseTrack() {
  if (!open_) return;
  open_ = false;
  if (order_ == Order::kAny) {
    // A stable order of the entries by tick; most tracks come in order.
    const auto earlier = [&](uint32_t a, uint32_t b) {
      return entries_[a].tick < entries_[b].tick;
    };
    std::vector<uint32_t> order(entries_.size());
    std::iota(order.begin(), order.end(), uint32_t{0});
    if (!std::is_sorted(order.begin(), order.end(), earlier)) {
      std::stable_sort(order.begin(), order.end(), earlier);
    }
    for (uint32_t i : order) {
      const Entry& e = entries_[i];
      const uint8_t* bytes = e.length <= kInlineBytes ? reinterpret_cast<const uint8_t*>(&e.data)
                                                      : longBytes_.data() + e.data;
      Encode(e.tick, bytes, e.length);
    }
    entries_.clear();
    longBytes_.clear();
  }
  Encode(std::max(endTick_, previousTick_), kEndOfTrack, sizeof kEndOfTrack);
  const std::size_t length = end_ - trackStart_ - kChunkHeaderSize;
  if (length > std::numeric_limits<uint32_t>::max()) tooLong_ = true;
  PutBigEndian(file_.data() + trackStart_ + 4, length, 4);
}

SmfWriteResult SmfWriter::Write(std::vector<uint8_t>& out) {
  CloseTrack();
  SmfWriteResult result;
  result.clampedDeltas = clampedDeltas_;
  result.written = tracks_ > 0 && !tooLong_;
  PutBigEndian(file_.data() + kTrackCountAt, tracks_, 2);
  // The writer is left empty, with the same header.
  uint8_t header[kHeaderSize];
  std::memcpy(header, file_.data(), kHeaderSize);
  PutBigEndian(header + kTrackCountAt, 0, 2);
  file_.resize(end_);
  out.clear();
  if (result.written) out.swap(file_);
  file_.assign(std::begin(header), std::end(header));
  end_ = kHeaderSize;
  tracks_ = 0;
  tooLong_ = false;
  clampedDeltas_ = 0;
  return result;
}

}  // namespace rw::groove
