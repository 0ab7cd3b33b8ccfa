// Large groove files for the benchmarks, built in memory.
//   Ordinary: a conductor track, a bass track on channel 1 (a program change,
//   then notes in running status, a controller now and then), and a drum
//   track on channel 10 in running status with a marker now and then; after a
//   controller or a marker the next note states its status again, as
//   writers do. The bass track is silenced and cut, the drums stay.
//   Worst case: one track of program changes, each with its own status, so
//   every event grows by a byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace rw::groove::bench {

using Bytes = std::vector<uint8_t>;

inline void PutBe32(Bytes& out, std::size_t at, uint32_t v) {
  out[at] = uint8_t(v >> 24);
  out[at + 1] = uint8_t(v >> 16);
  out[at + 2] = uint8_t(v >> 8);
  out[at + 3] = uint8_t(v);
}

inline std::size_t OpenTrack(Bytes& out) {
  out.insert(out.end(), {'M', 'T', 'r', 'k', 0, 0, 0, 0});
  return out.size() - 4;
}

inline void CloseTrack(Bytes& out, std::size_t lengthField) {
  out.insert(out.end(), {0x00, 0xFF, 0x2F, 0x00});
  PutBe32(out, lengthField, uint32_t(out.size() - lengthField - 4));
}

inline Bytes Header(uint16_t format, uint16_t tracks) {
  return {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, uint8_t(format), 0, uint8_t(tracks), 0x01, 0xE0};
}

inline Bytes OrdinaryFile(std::size_t bytes) {
  Bytes out = Header(1, 3);
  out.reserve(bytes + 64);
  std::size_t field = OpenTrack(out);
  out.insert(out.end(), {0x00, 0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20,        // 120 BPM
                         0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x08,  // 4/4
                         0x00, 0xFF, 0x03, 0x05, 'G',  'r',  'o',  'o',  'v'});
  CloseTrack(out, field);

  const std::size_t bassEnd = out.size() + bytes * 35 / 100;
  field = OpenTrack(out);
  out.insert(out.end(), {0x00, 0xC0, 0x21});  // program change
  bool needStatus = true;
  for (uint32_t i = 0; out.size() < bassEnd; ++i) {
    if (i % 64 == 63) {
      out.insert(out.end(), {0x00, 0xB0, 0x07, 0x64});  // volume; notes need their status again
      needStatus = true;
    }
    const uint8_t key = uint8_t(28 + i % 24);
    out.push_back(0x00);
    if (needStatus) out.push_back(0x90);
    needStatus = false;
    out.insert(out.end(), {key, 0x64, 0x83, 0x60, key, 0x00});  // on, then off a beat later
  }
  CloseTrack(out, field);

  field = OpenTrack(out);
  static constexpr uint8_t kKeys[] = {36, 42, 38, 42, 36, 46, 38, 42};
  needStatus = true;
  for (uint32_t i = 0; out.size() + 16 < bytes; ++i) {
    if (i % 1024 == 1023) {
      out.insert(out.end(), {0x00, 0xFF, 0x06, 0x04, 'f', 'i', 'l', 'l'});  // marker
      needStatus = true;
    }
    const uint8_t key = kKeys[i % 8];
    out.push_back(0x00);
    if (needStatus) out.push_back(0x99);
    needStatus = false;
    out.insert(out.end(), {key, 0x64, 0x81, 0x70, key, 0x00});  // on, then off an eighth later
  }
  CloseTrack(out, field);
  return out;
}

inline Bytes WorstCaseFile(std::size_t bytes) {
  Bytes out = Header(0, 1);
  out.reserve(bytes + 16);
  const std::size_t field = OpenTrack(out);
  while (out.size() + 8 < bytes) out.insert(out.end(), {0x00, 0xC0, 0x05});
  CloseTrack(out, field);
  return out;
}

}  // namespace rw::groove::bench
