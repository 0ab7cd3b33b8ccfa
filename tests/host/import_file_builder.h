// Builds the small Standard MIDI Files the engine's import tests feed it, byte
// by byte.
#ifndef TESTS_HOST_IMPORT_FILE_BUILDER_H
#define TESTS_HOST_IMPORT_FILE_BUILDER_H

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

namespace smf {

using Bytes = std::vector<uint8_t>;

inline void be32(Bytes& out, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(value >> shift));
}

inline void vlq(Bytes& out, uint32_t value) {
  uint8_t groups[5];
  int n = 0;
  do {
    groups[n++] = static_cast<uint8_t>(value & 0x7F);
    value >>= 7;
  } while (value != 0);
  while (n-- > 0) out.push_back(static_cast<uint8_t>(groups[n] | (n > 0 ? 0x80 : 0)));
}

// One track's events: delta time, then the event's bytes.
struct Track {
  Bytes events;
  Track& add(uint32_t delta, std::initializer_list<uint8_t> event) {
    vlq(events, delta);
    events.insert(events.end(), event);
    return *this;
  }
};

// Format 1 (or 0 with one track), `division` ticks per quarter note; each
// track is closed with an end-of-track meta event.
inline Bytes file(uint16_t division, const std::vector<Track>& tracks) {
  Bytes out = {'M', 'T', 'h', 'd', 0, 0, 0, 6};
  const uint16_t format = tracks.size() == 1 ? 0 : 1;
  for (uint16_t word : {format, static_cast<uint16_t>(tracks.size()), division}) {
    out.push_back(static_cast<uint8_t>(word >> 8));
    out.push_back(static_cast<uint8_t>(word));
  }
  for (const Track& t : tracks) {
    Bytes body = t.events;
    body.insert(body.end(), {0x00, 0xFF, 0x2F, 0x00});
    out.insert(out.end(), {'M', 'T', 'r', 'k'});
    be32(out, static_cast<uint32_t>(body.size()));
    out.insert(out.end(), body.begin(), body.end());
  }
  return out;
}

inline std::string write(const std::string& name, const Bytes& bytes) {
  const auto path = std::filesystem::temp_directory_path() / name;
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return path.string();
}

}  // namespace smf

#endif
