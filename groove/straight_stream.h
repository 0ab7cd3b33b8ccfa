// The second of straightening's two walks: every event of a filtered groove,
// in file order, written straight as the walk goes.
//
// A stroke moves at most half a grid step, so once the walk has passed a
// tick by that much, nothing that comes later can be written before it:
// what lies behind that horizon is written out, a window of events at a
// time, and only those ahead of it and the window are held, with the last
// stroke of each key. Memory does not grow with the file.
//
// Within a track a drum key is one instrument (drum_hits.h): a stroke
// sounds until a note-off of its key or its next stroke. Strokes of one key
// that land on one point become the loudest of them, the first of equals.
// A stroke is released at its new tick plus the length it was held (at
// least a tick), and no later than the next stroke of its key; one still
// sounding when that stroke is struck is released where it lands. At one
// tick, releases come first, then the events kept in their order, then
// strokes.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "beat_grid.h"
#include "ring_queue.h"
#include "smf_walk.h"
#include "smf_writer.h"

namespace rw::groove {

// What the walk wrote, for the report.
struct StreamTally {
  uint64_t onsets = 0;
  uint64_t moved = 0;
  bool refused = false;             // the writer refused an event: the file is not whole
  std::array<bool, 128> mapped{};   // played keys written on another key
  std::array<bool, 128> written{};  // keys struck in the written file
};

class StraightStream : public SmfEventVisitor {
 public:
  StraightStream(const uint8_t* file, const MeterBeats& beats, const std::vector<BeatGrid>& grids,
                 uint16_t division, SmfWriter& writer);

  const StreamTally& tally() const { return tally_; }

  void TrackStart(int32_t track, uint64_t chunkOffset, uint64_t length) override;
  void Event(const SmfEvent& e) override;

 private:
  static constexpr std::size_t kKeys = 128;
  static constexpr uint8_t kNoKey = 0xFF;    // nothing sounds
  static constexpr uint8_t kDecided = 0xFE;  // sounds, its release decided: a note-off ends nothing
  static constexpr uint64_t kNowhere = UINT64_MAX;  // no such element in a line
  // Events held before those behind the horizon are written: a flush costs
  // a mispredicted branch or two however little it writes, so it is put off
  // until it writes many.
  static constexpr uint64_t kWindow = 128;

  // The last kept stroke of a written key: the one a stroke landing on its
  // point merges with, and the one its key's next stroke ends.
  struct Last {
    uint64_t tick = 0;    // as written
    uint64_t played = 0;  // as played
    uint8_t playedKey = 0;
    uint8_t velocity = 0;
    bool live = false;
    bool silenced = false;  // its release is the last one queued for its key, until written
  };
  // An event waiting to be written: a stroke, or any other event but a drum
  // note-off and an End of Track. A channel message is held by its bytes
  // (its status resolved from running status), a meta or SysEx event by
  // where its bytes lie in the file.
  enum class Kind : uint8_t {
    kKept,
    kStroke,  // at one tick after the kept events
    kMerged,  // a stroke merged into a louder one: not written
  };
  struct Waiting {
    uint64_t tick;
    uint64_t offset;  // of a meta or SysEx event's bytes after its delta time
    uint32_t length;  // of a meta or SysEx event, below 2^29 by its length's four bytes
    Kind kind;
    uint8_t status;
    uint8_t data1;  // a stroke's key
    uint8_t data2;  // a stroke's velocity
  };
  // The releases wait in a line of their own, in order of tick (then key):
  // one held long must not stand in the way of every event after it.
  struct Release {
    uint64_t tick;
    uint8_t key;
  };

  // An event put at the end of the line, filled in where it stands; most
  // come in order, and a stroke moved earlier passes the events it overtook.
  static bool Before(const Waiting& a, const Waiting& b) {
    return a.tick != b.tick ? a.tick < b.tick : a.kind < b.kind;
  }
  Waiting& Wait(uint64_t tick, Kind kind) {
    Waiting& event = waiting_.Add();
    event.tick = tick;
    event.kind = kind;
    if (tick < due_) due_ = tick;
    return event;
  }
  void PutInOrder() {
    const uint64_t last = waiting_.next() - 1;
    if (last > waiting_.first() && Before(waiting_.at(last), waiting_.at(last - 1))) {
      MoveEarlier(last);
    }
  }
  void MoveEarlier(uint64_t waiting);
  uint64_t LatestStrokeOf(uint8_t key);  // its number in waiting_
  // The release of a key's silenced last stroke: its number in releases_,
  // or kNowhere once it is written.
  uint64_t LatestReleaseOf(uint8_t key) const {
    return releasesQueued_[key] > 0 ? latestRelease_[key] : kNowhere;
  }
  static bool Before(const Release& a, const Release& b) {
    return a.tick != b.tick ? a.tick < b.tick : a.key < b.key;
  }
  void QueueRelease(uint8_t key, uint64_t tick) {
    Release& release = releases_.Add();
    release.tick = tick;
    release.key = key;
    ++releasesQueued_[key];
    const uint64_t last = releases_.next() - 1;
    latestRelease_[key] = last;
    if (last > releases_.first() && Before(release, releases_.at(last - 1))) {
      MoveReleaseEarlier(last);
    }
    if (tick < due_) due_ = tick;
  }
  // The latest release of its key, moved to its place in the line.
  void MoveReleaseEarlier(uint64_t release);

  void Strike(uint64_t tick, uint8_t playedKey, uint8_t velocity);
  // The stroke of a played key sounding, if any, ends at `tick`.
  void Silence(uint8_t playedKey, uint64_t tick) {
    const uint8_t key = sounding_[playedKey];
    sounding_[playedKey] = kNoKey;
    if (key < kKeys) EndStroke(key, tick);
  }
  void EndStroke(uint8_t key, uint64_t tick);  // the last stroke of a key, silenced
  void EndTrack(uint64_t tick);
  void Flush(uint64_t horizon);

  void Write(bool added) { tally_.refused = tally_.refused || !added; }

  const uint8_t* file_;
  const MeterBeats& beats_;
  const std::vector<BeatGrid>& grids_;
  const uint64_t lag_;
  SmfWriter& writer_;
  BeatCursor cursor_;
  StreamTally tally_;

  std::array<Last, kKeys> last_{};  // by written key
  // By played key: the written key whose last stroke sounds, kNoKey or
  // kDecided.
  std::array<uint8_t, kKeys> sounding_{};
  // Both lines come nearly in order, so an event put in rarely passes more
  // than one or two: a stroke moved earlier passes the events it overtook.
  RingQueue<Waiting> waiting_;
  RingQueue<Release> releases_;
  std::array<uint32_t, kKeys> releasesQueued_{};  // by key
  // By key: the number in releases_ of its last stroke's release while it
  // waits, kept as releases move so that it is never searched for.
  std::array<uint64_t, kKeys> latestRelease_{};
  uint64_t due_;  // nothing held is due before it
};

}  // namespace rw::groove
