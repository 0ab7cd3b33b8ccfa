// Builds Standard MIDI Files in code, from commented byte lists, and loads
// them through a reader over a buffer of twice their size, the way the
// plug-in does.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "diagnostic_sink.h"
#include "groove_pattern.h"
#include "load_groove.h"
#include "range_check.h"
#include "smf_reader.h"

namespace rw::groove::testing {

using Bytes = std::vector<uint8_t>;

inline Bytes be16(uint32_t v) { return {uint8_t(v >> 8), uint8_t(v)}; }
inline Bytes be32(uint32_t v) {
  return {uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
}

// MIDI variable-length quantity.
inline Bytes vlq(uint32_t v) {
  Bytes out{uint8_t(v & 0x7F)};
  while (v >>= 7) out.insert(out.begin(), uint8_t(0x80 | (v & 0x7F)));
  return out;
}

inline Bytes cat(std::initializer_list<Bytes> parts) {
  Bytes out;
  for (const Bytes& p : parts) out.insert(out.end(), p.begin(), p.end());
  return out;
}

inline Bytes chunk(const char* id, const Bytes& data) {
  Bytes out(id, id + 4);
  return cat({out, be32(uint32_t(data.size())), data});
}

inline Bytes header(uint16_t format, uint16_t tracks, uint16_t division) {
  return chunk("MThd", cat({be16(format), be16(tracks), be16(division)}));
}

inline Bytes track(const Bytes& events) { return chunk("MTrk", events); }

// delta 0, meta 0x2F
inline const Bytes kEndOfTrack = {0x00, 0xFF, 0x2F, 0x00};

inline Bytes smf(uint16_t format, uint16_t division, std::initializer_list<Bytes> tracks) {
  Bytes out = header(format, uint16_t(tracks.size()), division);
  for (const Bytes& t : tracks) out = cat({out, track(t)});
  return out;
}

// Common events, each with its delta time.
inline Bytes tempo(uint32_t delta, uint32_t microseconds) {
  return cat({vlq(delta),
              {0xFF, 0x51, 0x03, uint8_t(microseconds >> 16), uint8_t(microseconds >> 8),
               uint8_t(microseconds)}});
}
inline Bytes timeSignature(uint32_t delta, uint8_t numerator, uint8_t denominatorPower) {
  return cat({vlq(delta), {0xFF, 0x58, 0x04, numerator, denominatorPower, 24, 8}});
}
inline Bytes note(uint32_t delta, uint8_t status, uint8_t key, uint8_t velocity) {
  return cat({vlq(delta), {status, key, velocity}});
}

class RecordingSink : public DiagnosticSink {
 public:
  void Show(const char* text) override { shown.emplace_back(text); }
  std::vector<std::string> shown;
};

// One load of a file over a buffer of twice its size.
template <class Store>
class BasicLoad {
 public:
  explicit BasicLoad(const Bytes& file)
      : buffer_(file.size() * 2 + (file.empty() ? 1 : 0)), size_(file.size()) {
    std::copy(file.begin(), file.end(), buffer_.begin());
    reader_ = std::make_unique<BasicSmfReader<Store>>(buffer_.data(), &size_,
                                                      uint64_t(file.size() * 2), sink_);
    try {
      pattern = LoadGroove(*reader_, 0);
    } catch (const RangeCheckError&) {
      rangeCheck = true;
    }
  }
  BasicLoad(const BasicLoad&) = delete;

  Bytes bytes() const { return Bytes(buffer_.begin(), buffer_.begin() + long(size_)); }
  uint64_t size() const { return size_; }
  const std::vector<std::string>& alerts() const { return sink_.shown; }
  const BasicSmfReader<Store>& reader() const { return *reader_; }

  GroovePattern pattern;
  bool rangeCheck = false;

 private:
  Bytes buffer_;
  uint64_t size_;
  RecordingSink sink_;
  std::unique_ptr<BasicSmfReader<Store>> reader_;
};

using Load = BasicLoad<GapBuffer>;

}  // namespace rw::groove::testing
