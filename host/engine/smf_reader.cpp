#include "smf_reader.h"

#include <algorithm>
#include <stdexcept>

namespace cantel_engine {
namespace {

class Cursor {
 public:
  Cursor(const std::vector<std::uint8_t>& bytes, std::size_t begin, std::size_t end)
      : bytes_(bytes), position_(begin), end_(end) {}
  bool at_end() const { return position_ >= end_; }
  std::size_t position() const { return position_; }
  std::uint8_t byte() {
    if (position_ >= end_) throw std::runtime_error("unexpected end of data");
    return bytes_[position_++];
  }
  std::uint8_t peek() const {
    if (position_ >= end_) throw std::runtime_error("unexpected end of data");
    return bytes_[position_];
  }
  std::uint32_t be(int width) {
    std::uint32_t value = 0;
    for (int i = 0; i < width; ++i) value = (value << 8) | byte();
    return value;
  }
  std::uint32_t vlq() {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
      const std::uint8_t b = byte();
      value = (value << 7) | (b & 0x7Fu);
      if ((b & 0x80) == 0) return value;
    }
    throw std::runtime_error("variable-length number longer than 4 bytes");
  }
  void skip(std::uint64_t count) {
    if (count > end_ - position_) throw std::runtime_error("length beyond the chunk");
    position_ += static_cast<std::size_t>(count);
  }

 private:
  const std::vector<std::uint8_t>& bytes_;
  std::size_t position_;
  std::size_t end_;
};

void read_track(const std::vector<std::uint8_t>& bytes, std::size_t begin, std::size_t end,
                std::vector<SmfOnset>& onsets) {
  Cursor in(bytes, begin, end);
  std::uint64_t tick = 0;
  std::uint8_t status = 0;
  while (!in.at_end()) {
    tick += in.vlq();
    std::uint8_t first = in.peek();
    if (first & 0x80) {
      in.byte();
      if (first == 0xFF) {
        const std::uint8_t type = in.byte();
        in.skip(in.vlq());
        if (type == 0x2F) return;  // end of track
        continue;
      }
      if (first == 0xF0 || first == 0xF7) {
        in.skip(in.vlq());
        continue;
      }
      if (first >= 0xF0) throw std::runtime_error("unexpected system message in a track");
      status = first;
    } else if (status == 0) {
      throw std::runtime_error("data byte without a running status");
    }
    const std::uint8_t kind = status & 0xF0;
    const std::uint8_t data1 = in.byte();
    const bool two_bytes = kind != 0xC0 && kind != 0xD0;
    const std::uint8_t data2 = two_bytes ? in.byte() : 0;
    if (kind == 0x90 && data2 > 0) {
      onsets.push_back({tick, static_cast<std::uint8_t>(status & 0x0F), data1, data2});
    }
  }
}

}  // namespace

SmfResult read_smf(const std::vector<std::uint8_t>& bytes) {
  SmfResult result;
  try {
    Cursor in(bytes, 0, bytes.size());
    if (in.be(4) != 0x4D546864) throw std::runtime_error("no MThd header");
    const std::uint32_t header_length = in.be(4);
    if (header_length < 6) throw std::runtime_error("header shorter than 6 bytes");
    result.content.format = static_cast<std::uint16_t>(in.be(2));
    result.content.tracks = static_cast<std::uint16_t>(in.be(2));
    result.content.division = static_cast<std::uint16_t>(in.be(2));
    if (result.content.division == 0 || (result.content.division & 0x8000) != 0) {
      throw std::runtime_error("division is not in ticks per quarter note");
    }
    in.skip(header_length - 6u);
    while (!in.at_end()) {
      const std::uint32_t id = in.be(4);
      const std::uint32_t length = in.be(4);
      const std::size_t begin = in.position();
      in.skip(length);
      if (id == 0x4D54726B) read_track(bytes, begin, begin + length, result.content.onsets);
    }
    std::stable_sort(result.content.onsets.begin(), result.content.onsets.end(),
                     [](const SmfOnset& a, const SmfOnset& b) { return a.tick < b.tick; });
    result.ok = true;
  } catch (const std::exception& e) {
    result.error = e.what();
  }
  return result;
}

}  // namespace cantel_engine
