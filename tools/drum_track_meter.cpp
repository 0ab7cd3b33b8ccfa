#include "drum_track_meter.h"

namespace rw::tools {
namespace {

class Walker {
 public:
  Walker(const uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool AtEnd() const { return pos_ >= size_; }
  bool Byte(uint8_t& out) {
    if (pos_ >= size_) return false;
    out = data_[pos_++];
    return true;
  }
  bool VarLen(uint32_t& out) {
    out = 0;
    for (int i = 0; i < 4; ++i) {
      uint8_t b;
      if (!Byte(b)) return false;
      out = (out << 7) | (b & 0x7Fu);
      if (b < 0x80) return true;
    }
    return false;
  }
  bool Skip(std::size_t count) {
    if (count > size_ - pos_) return false;
    pos_ += count;
    return true;
  }
  bool U32(uint32_t& out) {
    out = 0;
    for (int i = 0; i < 4; ++i) {
      uint8_t b;
      if (!Byte(b)) return false;
      out = (out << 8) | b;
    }
    return true;
  }
  std::size_t position() const { return pos_; }

 private:
  const uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

}  // namespace

std::optional<bool> SecondTrackHasTimeSignature(const uint8_t* file, std::size_t size) {
  Walker walker(file, size);
  uint32_t length = 0;
  // The header chunk and the first track chunk.
  for (int chunk = 0; chunk < 2; ++chunk) {
    if (!walker.Skip(4) || !walker.U32(length) || !walker.Skip(length)) return std::nullopt;
  }
  if (!walker.Skip(4) || !walker.U32(length)) return std::nullopt;
  const std::size_t end = walker.position() + length;
  if (end > size) return std::nullopt;
  Walker track(file + walker.position(), length);
  uint8_t running = 0;
  while (!track.AtEnd()) {
    uint32_t delta;
    uint8_t status;
    if (!track.VarLen(delta) || !track.Byte(status)) return std::nullopt;
    if (status == 0xFF) {
      uint8_t type;
      uint32_t metaLength;
      if (!track.Byte(type) || !track.VarLen(metaLength)) return std::nullopt;
      if (type == 0x58) return true;
      if (type == 0x2F) return false;
      if (!track.Skip(metaLength)) return std::nullopt;
    } else if (status == 0xF0 || status == 0xF7) {
      uint32_t sysExLength;
      if (!track.VarLen(sysExLength) || !track.Skip(sysExLength)) return std::nullopt;
    } else {
      std::size_t dataBytes;
      if (status >= 0x80) {
        running = status;
        dataBytes = 0;
      } else {
        if (running == 0) return std::nullopt;
        dataBytes = 1;  // the status byte was the first data byte
      }
      const int kind = running >> 4;
      const std::size_t total = (kind == 0xC || kind == 0xD) ? 1 : 2;
      if (!track.Skip(total - dataBytes)) return std::nullopt;
    }
  }
  return false;
}

}  // namespace rw::tools
