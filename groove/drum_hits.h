// The drum hits of a groove: every channel-10 note-on with a velocity above
// 0, in all tracks, in file order, with the tick it is released. Read
// through the strict walk, so only a well-formed file has hits.
//
// A drum key is one instrument: within a track, a stroke sounds until a
// note-off of its key or until its key is struck again, whichever comes
// first; a note-off of a key that does not sound ends nothing.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "smf_walk.h"

namespace rw::groove {

inline constexpr uint64_t kNoNoteOff = UINT64_MAX;

struct DrumHit {
  uint64_t tick = 0;
  uint8_t key = 0;
  uint8_t velocity = 0;
  uint64_t noteOff = kNoNoteOff;  // the tick it is released; kNoNoteOff when never
  friend bool operator==(const DrumHit&, const DrumHit&) = default;
};

struct GrooveHits {
  bool wellFormed = false;
  uint16_t division = 0;
  std::vector<DrumHit> hits;
};

// A note-on of channel 10 that sounds, and the events that end one: a
// note-off, or a note-on with velocity 0. The strict walk hands on no data
// byte above 0x7F, so a key indexes a table of 128.
inline constexpr uint8_t kDrumNoteOn = 0x99;
inline constexpr uint8_t kDrumNoteOff = 0x89;
inline bool IsDrumNoteOn(const SmfEvent& e) { return e.status == kDrumNoteOn && e.data2 > 0; }
inline bool IsDrumNoteOff(const SmfEvent& e) {
  return e.status == kDrumNoteOff || (e.status == kDrumNoteOn && e.data2 == 0);
}

// The hits of a file that passes the strict walk; `wellFormed` is false and
// there are no hits otherwise.
GrooveHits DrumHitsOf(std::span<const uint8_t> file);

}  // namespace rw::groove
