#include "straight_stream.h"

#include <algorithm>

#include "drum_hits.h"
#include "drum_key_map.h"

namespace rw::groove {
namespace {

constexpr uint64_t kEnd = UINT64_MAX;
constexpr uint64_t kLatest = UINT64_MAX - 1;  // the latest tick a release is written at
constexpr uint8_t kEndOfTrack[] = {0xFF, 0x2F, 0x00};

}  // namespace

// A stroke lands at most half a triplet step (division/6) from where it was
// played, and half a tick more once rounded.
StraightStream::StraightStream(const uint8_t* file, const MeterBeats& beats,
                               const std::vector<BeatGrid>& grids, uint16_t division,
                               SmfWriter& writer)
    : file_(file),
      beats_(beats),
      grids_(grids),
      lag_(division / 6u + 2),
      writer_(writer),
      cursor_(beats),
      due_(kEnd) {}

void StraightStream::TrackStart(int32_t, uint64_t, uint64_t) {
  writer_.StartTrack(SmfWriter::Order::kRising);
  cursor_ = BeatCursor(beats_);
  last_.fill({});
  sounding_.fill(kNoKey);
  waiting_.clear();
  releases_.clear();
  releasesQueued_.fill(0);
  due_ = kEnd;
}

void StraightStream::Event(const SmfEvent& e) {
  // Nothing from here on can be written before the horizon.
  const uint64_t horizon = e.tick > lag_ ? e.tick - lag_ : 0;
  // Written a window of events at a time rather than an event at a time.
  if (horizon > due_ && waiting_.size() + releases_.size() >= kWindow) Flush(horizon);
  if (IsDrumNoteOn(e)) {
    Strike(e.tick, e.data1, e.data2);
  } else if (IsDrumNoteOff(e)) {
    Silence(e.data1, e.tick);
  } else if (e.status == 0xFF && e.data1 == 0x2F) {
    EndTrack(e.tick);
  } else {
    Waiting& kept = Wait(e.tick, Kind::kKept);
    kept.status = e.status;
    kept.data1 = e.data1;
    kept.data2 = e.data2;
    if (e.status >= 0xF0) {
      kept.offset = e.offset;
      kept.length = uint32_t(uint64_t(e.payload - file_) + e.payloadLength - e.offset);
    }
    PutInOrder();
  }
}

void StraightStream::MoveEarlier(uint64_t waiting) {
  for (uint64_t i = waiting; i > waiting_.first() && Before(waiting_.at(i), waiting_.at(i - 1));
       --i) {
    std::swap(waiting_.at(i), waiting_.at(i - 1));
  }
}

// The stroke of a key put in last: that of its last stroke, which no
// horizon has passed yet.
uint64_t StraightStream::LatestStrokeOf(uint8_t key) {
  for (uint64_t i = waiting_.next(); i-- > waiting_.first();) {
    const Waiting& event = waiting_.at(i);
    if (event.kind == Kind::kStroke && event.data1 == key) return i;
  }
  return kNowhere;
}

void StraightStream::Strike(uint64_t tick, uint8_t playedKey, uint8_t velocity) {
  Silence(playedKey, tick);  // struck again: the stroke before ends here
  const BeatPlace place = cursor_.Locate(tick);
  const uint64_t straight = beats_.StraightTick(place, grids_[place.beat]);
  const uint8_t key = GeneralMidiKeyOf(playedKey);
  tally_.mapped[playedKey] |= key != playedKey;

  Last& last = last_[key];
  if (last.live && last.tick == straight) {
    // One point: the loudest stays. A stroke on a point the horizon has not
    // reached is still waiting, and has no release written yet.
    if (velocity <= last.velocity) {
      sounding_[playedKey] = kDecided;
      return;
    }
    const uint64_t stroke = LatestStrokeOf(key);
    if (stroke != kNowhere) waiting_.at(stroke).kind = Kind::kMerged;
    if (last.tick != last.played) --tally_.moved;
    const uint64_t release = last.silenced ? LatestReleaseOf(key) : kNowhere;
    if (release != kNowhere) {
      // Its release leaves the line.
      for (uint64_t i = release; i + 1 < releases_.next(); ++i) {
        releases_.at(i) = releases_.at(i + 1);
        const uint8_t moved = releases_.at(i).key;
        if (latestRelease_[moved] == i + 1) latestRelease_[moved] = i;
      }
      releases_.pop_back();
      --releasesQueued_[key];
    } else if (sounding_[last.playedKey] == key) {
      sounding_[last.playedKey] = kDecided;
    }
  } else if (last.live && (!last.silenced || releasesQueued_[key] > 0)) {
    // Its key's next stroke: the last one ends here at the latest.
    if (!last.silenced) {
      if (sounding_[last.playedKey] == key) sounding_[last.playedKey] = kDecided;
      QueueRelease(key, straight);
    } else if (const uint64_t release = LatestReleaseOf(key); release != kNowhere) {
      if (releases_.at(release).tick > straight) {
        releases_.at(release).tick = straight;
        MoveReleaseEarlier(release);
        due_ = std::min(due_, straight);
      }
    }
  }
  last.tick = straight;
  last.played = tick;
  last.playedKey = playedKey;
  last.velocity = velocity;
  last.live = true;
  last.silenced = false;
  if (straight != tick) ++tally_.moved;
  Waiting& written = Wait(straight, Kind::kStroke);
  written.data1 = key;
  written.data2 = velocity;
  PutInOrder();
  sounding_[playedKey] = key;
}

void StraightStream::EndStroke(uint8_t key, uint64_t tick) {
  Last& last = last_[key];
  const uint64_t held = std::max<uint64_t>(tick - last.played, 1);
  last.silenced = true;
  QueueRelease(key, held > kLatest - last.tick ? kLatest : last.tick + held);
}

void StraightStream::MoveReleaseEarlier(uint64_t release) {
  const uint8_t key = releases_.at(release).key;
  uint64_t i = release;
  for (; i > releases_.first() && Before(releases_.at(i), releases_.at(i - 1)); --i) {
    std::swap(releases_.at(i), releases_.at(i - 1));
    const uint8_t passed = releases_.at(i).key;
    if (latestRelease_[passed] == i - 1) latestRelease_[passed] = i;
  }
  latestRelease_[key] = i;
}

void StraightStream::EndTrack(uint64_t tick) {
  for (std::size_t playedKey = 0; playedKey < kKeys; ++playedKey) {
    Silence(uint8_t(playedKey), tick);
  }
  for (Last& last : last_) last.live = false;
  Flush(kEnd);
  Write(writer_.Add(tick, kEndOfTrack));
}

// Writes what is due before the horizon, releases first at a tick; due_
// becomes the earliest tick still held. Both lines and the writer are held
// in locals: each byte written may alias them.
void StraightStream::Flush(uint64_t horizon) {
  SmfWriter::Run run(writer_);
  const Release* const releases = releases_.slots();
  const uint64_t releaseMask = releases_.mask();
  uint64_t release = releases_.first();
  const uint64_t releasesEnd = releases_.next();
  const Waiting* const waiting = waiting_.slots();
  const uint64_t waitingMask = waiting_.mask();
  uint64_t wait = waiting_.first();
  const uint64_t waitingEnd = waiting_.next();
  bool whole = true;
  uint64_t onsets = 0;
  for (;;) {
    const uint64_t releaseTick =
        release != releasesEnd ? releases[release & releaseMask].tick : kEnd;
    const uint64_t waitingTick = wait != waitingEnd ? waiting[wait & waitingMask].tick : kEnd;
    const uint64_t due = std::min(releaseTick, waitingTick);
    if (due >= horizon || due == kEnd) {
      due_ = due;
      break;
    }
    if (releaseTick <= waitingTick) {
      // A note-on of velocity 0: a note-off that keeps running status.
      const uint8_t key = releases[release & releaseMask].key;
      ++release;
      --releasesQueued_[key];
      whole &= run.AddMessage(releaseTick, kDrumNoteOn, key, 0);
      continue;
    }
    const Waiting& event = waiting[wait & waitingMask];
    ++wait;
    switch (event.kind) {
      case Kind::kStroke:
        whole &= run.AddMessage(event.tick, kDrumNoteOn, event.data1, event.data2);
        ++onsets;
        tally_.written[event.data1] = true;
        break;
      case Kind::kMerged:  // the louder stroke on its point is written
        break;
      case Kind::kKept:
        if (event.status >= 0xF0) {
          whole &=
              run.Add(event.tick, std::span<const uint8_t>(file_ + event.offset, event.length));
        } else {
          whole &= run.AddMessage(event.tick, event.status, event.data1, event.data2);
        }
        break;
    }
  }
  releases_.PopTo(release);
  waiting_.PopTo(wait);
  tally_.onsets += onsets;
  Write(whole);
}

}  // namespace rw::groove
