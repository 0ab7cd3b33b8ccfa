// A strict walk of a Standard MIDI File held in memory: the file as a reader
// that trusts nothing (a host's MIDI import) needs it to be. The reader that
// filters a groove is forgiving where the format is not (it reads past an
// end as zeros, takes any status byte, counts no bytes of a number); this
// walk is what proves its output before anything in a score changes.
//
// Every byte is untrusted: one cursor holds the bounds, the walk is linear in
// the file's size and allocates nothing that grows with it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace rw::groove {

// Damage whose mend is certain: the walk notes it and goes on, so that a
// file with nothing worse can be written mended (MendedFile) and placed.
enum class MendKind : uint8_t {
  kEndOfTrackAdded,       // a track lacks its End of Track: one goes after its last event
  kBytesAfterEndOfTrack,  // a track's bytes after its End of Track are left out
  kEndOfTrackLength,      // an End of Track that carries data is written without
  kBeyondCountedTracks,   // chunks or bytes after the tracks the header counts are left out
};

struct Mend {
  MendKind kind;
  int32_t track = 0;   // 1-based; 0 for the bytes beyond the counted tracks
  uint64_t bytes = 0;  // bytes left out (kBytesAfterEndOfTrack, kBeyondCountedTracks)
};

// Where a track's events lie, for writing it mended.
struct TrackExtent {
  uint64_t chunkOffset = 0;  // of its "MTrk"
  uint64_t dataBegin = 0;    // its first event
  uint64_t keptEnd = 0;      // where the events kept end: its End of Track's FF, or the chunk's end
  bool endOfTrack = false;   // keptEnd is an End of Track's, whose delta time is kept before it
};

struct StrictWalk {
  bool wellFormed = false;   // as an import needs it: nothing broken, nothing to mend
  bool mendable = false;     // nothing broken, but `mends` to make first
  std::string problem;       // what broke it, for a groove author; empty when nothing did
  int32_t track = 0;         // 1-based track where it broke (0: the header or between chunks)
  uint64_t offset = 0;       // byte offset in the file where it broke
  uint64_t drumNoteOns = 0;  // note-ons of channel 10 with a velocity above 0, all tracks
  std::optional<uint64_t> firstDrumNoteOnTick;  // absolute tick of the earliest of them
  std::vector<Mend> mends;
  uint64_t headerEnd = 0;            // the header chunk's end, where the first track may start
  std::vector<TrackExtent> extents;  // of the tracks the header counts, once walked
};

// One event as the walk meets it, for callers that look at more than the
// walk checks. Pointers point into the walked bytes.
struct SmfEvent {
  int32_t track = 0;                 // 1-based, counting "MTrk" chunks
  uint64_t tick = 0;                 // absolute, from the start of its track
  uint64_t offset = 0;               // of the event's first byte after its delta time
  uint8_t status = 0;                // channel status (running status resolved), 0xF0, 0xF7 or 0xFF
  bool running = false;              // a channel event without a status byte of its own
  uint8_t data1 = 0;                 // first data byte; the type of a meta event
  uint8_t data2 = 0;                 // second data byte of a two-byte channel message
  const uint8_t* payload = nullptr;  // the data of a meta or SysEx event
  uint32_t payloadLength = 0;
};

class SmfEventVisitor {
 public:
  virtual ~SmfEventVisitor() = default;
  // The header chunk passed the walk.
  virtual void Header(uint16_t /*format*/, uint16_t /*tracks*/, uint16_t /*division*/) {}
  // The "MTrk" chunk `track` starts at `chunkOffset` (its ID) and holds
  // `length` bytes after its 8-byte header.
  virtual void TrackStart(int32_t /*track*/, uint64_t /*chunkOffset*/, uint64_t /*length*/) {}
  // Every event up to the End of Track, or up to the one that broke the walk.
  virtual void Event(const SmfEvent& event) = 0;
};

StrictWalk WalkStrictly(const uint8_t* bytes, uint64_t size, SmfEventVisitor* visitor = nullptr);

// The file with the walk's mends made: its header as it stands, then each
// counted track with its events up to its End of Track, which is written
// with no data, or given one; nothing after the counted tracks. Only for a
// walk that is `mendable`.
std::vector<uint8_t> MendedFile(const uint8_t* bytes, const StrictWalk& walk);

// What a mend did, in the words a groove author reads.
std::string DescribeMend(const Mend& mend);

}  // namespace rw::groove
