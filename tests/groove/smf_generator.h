// Random Standard MIDI Files for the differential test and the fuzzer's
// seeds: mostly well-formed grooves with every kind of event the reader
// treats differently, some of them broken on purpose.
#pragma once

#include <random>

#include "smf_builder.h"

namespace rw::groove::testing {

class SmfGenerator {
 public:
  explicit SmfGenerator(uint32_t seed) : rng_(seed) {}

  // A plausible file, possibly damaged.
  Bytes File(int maxEventsPerTrack = 40) {
    const int format = Pick({60, 30, 8, 2});
    const int tracks = format == 0 ? (Chance(95) ? 1 : 2) : Int(1, 6);
    int division = Pick({4, 1, 1, 1}) == 0 ? Int(1, 960) : 480;
    if (Chance(3)) division = 0x8000 | Int(0, 0x7FFF);  // SMPTE
    if (Chance(1)) division = 0;
    Bytes file = header(uint16_t(format), uint16_t(tracks), uint16_t(division));
    for (int t = 0; t < tracks; ++t) file = cat({file, Track(maxEventsPerTrack)});
    Damage(file);
    return file;
  }

  // Bytes behind a valid-looking header prefix.
  Bytes Noise(int maxLength = 200) {
    Bytes file = Chance(70) ? cat({header(uint16_t(Int(0, 2)), uint16_t(Int(1, 4)), 96),
                                   Bytes{'M', 'T', 'r', 'k'}, be32(uint32_t(Int(0, 64)))})
                            : Bytes{};
    const int length = Int(0, maxLength);
    for (int i = 0; i < length; ++i) file.push_back(uint8_t(Int(0, 255)));
    return file;
  }

 private:
  Bytes Track(int maxEvents) {
    Bytes events;
    const int count = Int(0, maxEvents);
    const bool drums = Chance(50);
    uint8_t running = 0;
    if (Chance(40))
      events = cat({{0x00, 0xFF, 0x58, 0x04, uint8_t(Int(1, 12)), uint8_t(Int(0, 5)), 24, 8}});
    for (int i = 0; i < count; ++i) {
      const int delta = Pick({50, 30, 15, 5}) == 0 ? 0 : Int(0, Chance(90) ? 960 : 1 << 20);
      events =
          cat({events, Chance(1) ? Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0x7F} : vlq(uint32_t(delta))});
      switch (Pick({35, 15, 15, 8, 8, 1, 5, 4, 3, 3})) {
        case 0: {  // note on/off, drums on channel 10
          const uint8_t channel = drums && Chance(80) ? 9 : uint8_t(Int(0, 15));
          const uint8_t status = uint8_t((Chance(70) ? 0x90 : 0x80) | channel);
          const bool useRunning = running == status && Chance(60);
          if (!useRunning) events.push_back(status);
          events.push_back(uint8_t(Int(0, 127)));
          events.push_back(uint8_t(Int(0, 127)));
          running = status;
          break;
        }
        case 1:  // running-status continuation of anything
          if (running == 0 && Chance(90)) {
            running = 0x99;
            events.push_back(running);
          }
          events.push_back(uint8_t(Int(0, 127)));
          if ((running >> 4) != 0xC && (running >> 4) != 0xD)
            events.push_back(uint8_t(Int(0, 127)));
          break;
        case 2: {  // program change or channel pressure: grows by a byte
          const uint8_t status = uint8_t((Chance(50) ? 0xC0 : 0xD0) | Int(0, 15));
          events.push_back(status);
          events.push_back(uint8_t(Int(0, 127)));
          running = status;
          break;
        }
        case 3: {  // control change, pitch bend, key pressure
          const uint8_t status = uint8_t((Pick({1, 1, 1}) + 0xA) << 4 | Int(0, 15));
          events = cat({events, {status, uint8_t(Int(0, 127)), uint8_t(Int(0, 127))}});
          running = status;
          break;
        }
        case 4:
          events = cat({events,
                        {0xFF, 0x51, 0x03, uint8_t(Int(0, 255)), uint8_t(Int(0, 255)),
                         uint8_t(Int(0, 255))}});
          break;
        case 5:  // a meter change: fails the load unless at tick 0
          if (Chance(80)) break;
          events =
              cat({events, {0xFF, 0x58, 0x04, uint8_t(Int(1, 12)), uint8_t(Int(0, 5)), 24, 8}});
          break;
        case 6: {  // text
          const int length = Int(0, 20);
          events = cat({events, {0xFF, uint8_t(Int(1, 7))}, vlq(uint32_t(length))});
          for (int k = 0; k < length; ++k) events.push_back(uint8_t(Int(32, 126)));
          break;
        }
        case 7: {  // SysEx
          const int length = Int(4, 12);
          events = cat({events, {0xF0}, vlq(uint32_t(length))});
          for (int k = 0; k < length - 1; ++k) events.push_back(uint8_t(Int(0, 127)));
          events.push_back(0xF7);
          break;
        }
        case 8:
          events = cat({events, {0xFF, 0x54, 0x05, 1, 2, 3, 4, 5}});
          break;
        default:  // system common, counted as two data bytes
          events =
              cat({events, {uint8_t(Int(0xF1, 0xFE)), uint8_t(Int(0, 127)), uint8_t(Int(0, 127))}});
          break;
      }
    }
    if (Chance(90)) events = cat({events, kEndOfTrack});
    Bytes chunkBytes = track(events);
    if (Chance(5)) {  // a length that lies
      const uint32_t length = uint32_t(std::max(0, int(events.size()) + Int(-6, 6)));
      const Bytes field = be32(length);
      std::copy(field.begin(), field.end(), chunkBytes.begin() + 4);
    }
    return chunkBytes;
  }

  void Damage(Bytes& file) {
    if (Chance(8) && !file.empty()) file.resize(size_t(Int(0, int(file.size()))));
    if (Chance(8)) {
      const int flips = Int(1, 4);
      for (int i = 0; i < flips && !file.empty(); ++i) {
        file[size_t(Int(0, int(file.size()) - 1))] = uint8_t(Int(0, 255));
      }
    }
  }

  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng_); }
  bool Chance(int percent) { return Int(0, 99) < percent; }
  int Pick(std::initializer_list<int> weights) {
    return std::discrete_distribution<int>(weights.begin(), weights.end())(rng_);
  }

  std::mt19937 rng_;
};

}  // namespace rw::groove::testing
