// The track parser's fast path: runs of ordinary channel events decoded
// straight from the store's window instead of byte by byte. It leaves the
// reader exactly as the event-by-event path would (the differential test and
// the fuzz target hold it to that) and hands back anything unusual.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "smf_reader.h"

namespace rw::groove {

namespace detail {
inline int32_t Wrap32(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}

inline void AdvanceTime(int32_t& absoluteTime, int32_t& measure, int32_t& tickInMeasure,
                        int32_t ticksPerMeasure, int32_t delta) {
  // The measure count follows by division, not a measure at a time: a huge
  // delta must not cost time.
  absoluteTime = Wrap32(static_cast<int64_t>(absoluteTime) + delta);
  int64_t tick = static_cast<int64_t>(tickInMeasure) + delta;
  if (tick >= ticksPerMeasure) {
    if (tick < 2 * static_cast<int64_t>(ticksPerMeasure)) {  // the usual single step
      measure = Wrap32(static_cast<int64_t>(measure) + 1);
      tick -= ticksPerMeasure;
    } else {
      measure = Wrap32(measure + tick / ticksPerMeasure);
      tick %= ticksPerMeasure;
    }
  }
  tickInMeasure = Wrap32(tick);
}

// A delta time of one or two bytes at `bytes`; false for a longer one.
inline bool ShortDelta(const uint8_t* bytes, uint32_t& delta, uint32_t& length) {
  if (bytes[0] < 0x80) {
    delta = bytes[0];
    length = 1;
    return true;
  }
  if (bytes[1] < 0x80) {
    delta = (bytes[0] & 0x7Fu) << 7 | bytes[1];
    length = 2;
    return true;
  }
  return false;
}

inline bool OneDataByte(uint8_t status) {
  const int kind = status >> 4;
  return kind == 0xC || kind == 0xD;
}
}  // namespace detail

// The state of one run through the window: the track and drum state are
// copied out of the members and back once, because a byte stored into the
// buffer may alias any member and would otherwise force each of them to be
// reloaded after every edit. Each loop below copies what it uses into its
// own locals again for the same reason.
template <class Store>
struct BasicSmfReader<Store>::WindowRun {
  Store store;
  bool collect;
  bool canGrow;  // room for the chunk's length field, checked once
  uint64_t position;
  uint64_t chunkStop;      // where the track's reading ends
  uint64_t chunkEnd;       // where the chunk's bytes end
  uint64_t stop;           // the first position not taken: chunk end or window
  uint64_t countedGrowth;  // bytes inserted and counted as read
  int64_t writePos;
  TrackState track;
  DrumState drums;
  bool drumsFound;

  static constexpr uint64_t kWindow = 8;  // the longest event taken is 5 bytes
  void SetStop() { stop = std::min(store.size() - kWindow + 1, chunkStop); }
  bool RoomToGrow() const { return canGrow && store.size() < store.capacity(); }
};

template <class Store>
bool BasicSmfReader<Store>::ReadChannelEventsInWindow(bool collect, bool& drumEventsFound) {
  // Events with a delta of at most two bytes and a channel message, wholly
  // inside the data: nothing in them can read past the end, so ReadByte's
  // bookkeeping is done once per run with the same result. Anything else,
  // range marks included, is left to the event-by-event path. Nothing here
  // throws (room for a grown byte is checked first), so the copies cannot be
  // left behind half done.
  if (RangeMarksPending() || store_.size() < WindowRun::kWindow) return false;
  const auto startPos = static_cast<uint64_t>(readPos_);
  const uint64_t startSize = store_.size();
  WindowRun run{
      .store = store_,
      .collect = collect,
      // A field the literal write would find outside the allocation is left
      // to the event-by-event path, which fails there.
      .canGrow = static_cast<uint64_t>(chunkLengthPos_) + 4 <= store_.capacity(),
      .position = startPos,
      // Bytes read in this chunk follow the read position one for one, and
      // the chunk grows with each inserted byte, which is not counted as
      // read: two bytes further on per insertion (one for a running event's,
      // which is counted).
      .chunkStop = startPos + static_cast<uint64_t>(chunkLength_ - chunkConsumed_),
      .chunkEnd = static_cast<uint64_t>(std::max<int64_t>(chunkEnd_, 0)),
      .stop = 0,
      .countedGrowth = 0,
      .writePos = writePos_,
      .track = track_,
      .drums = drums_,
      .drumsFound = false,
  };
  run.SetStop();

  while (run.position < run.stop) {
    const uint8_t* bytes = run.store.Window(run.position);
    uint32_t delta;
    uint32_t statusAt;
    if (!detail::ShortDelta(bytes, delta, statusAt)) break;
    const uint8_t status = bytes[statusAt];
    if (status < 0x80) {
      if (run.track.runningStatus == 0) break;
      const bool twoData = !detail::OneDataByte(run.track.runningStatus);
      const bool drum = collect && (run.track.runningStatus & 0x0F) == 9;
      if (twoData) {
        drum ? ReadRunningStatusRun<true, true>(run) : ReadRunningStatusRun<true, false>(run);
      } else if (drum) {
        ReadRunningStatusRun<false, true>(run);
      } else {
        // Each grows by a byte, so that it reads under the rewritten status.
        if (!run.RoomToGrow()) break;
        const uint64_t before = run.position;
        SilenceRun(run);
        if (run.position == before) break;
      }
    } else if (status >= 0xF0) {
      break;
    } else if (collect && (status & 0x0F) == 9) {
      const uint32_t length = statusAt + (detail::OneDataByte(status) ? 2 : 3);
      const uint8_t key = bytes[statusAt + 1];
      run.position += length;
      run.track.runningStatus = status;
      // Even a zero delta: a meter set late can leave the tick beyond its measure.
      detail::AdvanceTime(run.track.absoluteTime, run.track.measure, run.track.tickInMeasure,
                          run.track.meter.ticksPerMeasure, static_cast<int32_t>(delta));
      run.drumsFound = true;
      run.drums.lastMeasure = run.track.measure;
      run.drums.lastTick = run.track.tickInMeasure;
      if (NamesKey(status)) NoteKey(key, run.drums.highestKey, run.drums.lowestKey);
    } else if (detail::OneDataByte(status) && !run.RoomToGrow()) {
      break;
    } else {
      const uint64_t before = run.position;
      SilenceRun(run);
      if (run.position == before) break;  // cannot happen; never spin on it
    }
  }
  if (run.position == startPos) return false;

  store_ = run.store;
  const auto grown = static_cast<int64_t>(run.store.size() - startSize);
  const auto consumed = static_cast<int64_t>(run.position - startPos) - grown +
                        static_cast<int64_t>(run.countedGrowth);
  readPos_ = static_cast<int64_t>(run.position);
  chunkConsumed_ += consumed;
  chunkLength_ += grown;
  chunkEnd_ += grown;
  if (grown > 0) lengthFieldStale_ = true;
  writePos_ = run.writePos;
  track_ = run.track;
  drums_ = run.drums;
  if (run.drumsFound) drumEventsFound = true;
  return true;
}

template <class Store>
template <bool kTwoData, bool kDrum>
void BasicSmfReader<Store>::ReadRunningStatusRun(WindowRun& run) {
  // Events in running status under one status. Nothing in them is edited:
  // only the time and the drums are followed. The caller saw the first event
  // whole, so at least one is taken.
  const bool namesKey = NamesKey(run.track.runningStatus);
  const uint8_t* bytes = run.store.Window(run.position);
  const uint64_t limit = run.stop - run.position;
  int32_t absoluteTime = run.track.absoluteTime;
  int32_t measure = run.track.measure;
  int32_t tickInMeasure = run.track.tickInMeasure;
  const int32_t ticksPerMeasure = run.track.meter.ticksPerMeasure;
  int32_t highestKey = run.drums.highestKey;
  int32_t lowestKey = run.drums.lowestKey;
  uint64_t at = 0;
  do {
    uint32_t delta;
    uint32_t deltaLength;
    if (!detail::ShortDelta(bytes + at, delta, deltaLength)) break;
    const uint8_t key = bytes[at + deltaLength];
    if (key >= 0x80) break;  // a status byte
    at += deltaLength + (kTwoData ? 2 : 1);
    detail::AdvanceTime(absoluteTime, measure, tickInMeasure, ticksPerMeasure,
                        static_cast<int32_t>(delta));
    if (kDrum && namesKey) NoteKey(key, highestKey, lowestKey);
  } while (at < limit);

  run.position += at;
  run.track.absoluteTime = absoluteTime;
  run.track.measure = measure;
  run.track.tickInMeasure = tickInMeasure;
  if constexpr (kDrum) {
    // Every event of the run is a drum event, the last one included.
    run.drumsFound = true;
    run.drums.lastMeasure = measure;
    run.drums.lastTick = tickInMeasure;
    run.drums.highestKey = highestKey;
    run.drums.lowestKey = lowestKey;
  }
}

template <class Store>
void BasicSmfReader<Store>::SilenceRun(WindowRun& run) {
  // Events with their own status on channels other than the drums': each
  // becomes a note off on channel 10, key 0, velocity 64, written over it,
  // with a byte inserted when the message had only one data byte; and the
  // one-data-byte events in running status after such a message, which get
  // the missing velocity byte so that they read under 0x89 too. Streamed:
  // the events are read ahead of where their rewritten bytes go. The caller
  // checked that the first event can be taken.
  Store& store = run.store;
  const uint64_t sizeBefore = store.size();
  auto stream = store.OpenStream(run.position);
  const uint8_t* in = stream.in;
  uint8_t* out = stream.out;
  uint8_t* const outStart = out;
  // Bounds on the input side: the chunk's unread bytes end where they are
  // now however much the output grows, and the window stays inside the data.
  const uint8_t* chunkEnd = in + (run.chunkStop - run.position);
  // Input bytes left before the chunk's own end: reading may run past it,
  // but a running event is rewritten only inside it, and only in a file
  // whose chunks lie whole in it (InsideWholeChunk).
  int64_t insideChunk = rewritesRunningEvents_ ? static_cast<int64_t>(run.chunkEnd) -
                                                     static_cast<int64_t>(run.position)
                                               : 0;
  uint64_t counted = 0;
  const uint8_t* limit = std::min(chunkEnd, store.InputEnd() - (WindowRun::kWindow - 1));
  const bool collect = run.collect;
  int32_t absoluteTime = run.track.absoluteTime;
  int32_t measure = run.track.measure;
  int32_t tickInMeasure = run.track.tickInMeasure;
  const int32_t ticksPerMeasure = run.track.meter.ticksPerMeasure;
  uint8_t status = run.track.runningStatus;
  bool took = false;

  // One event whose delta takes kStatusAt bytes. Each shape has its own
  // code with constant offsets, so that the next event's position is known
  // to the processor before the bytes of this one arrive.
  auto take = [&](auto statusAt, auto grows, uint8_t eventStatus, uint32_t delta) {
    constexpr uint32_t kStatusAt = decltype(statusAt)::value;
    constexpr uint32_t kConsumed = kStatusAt + (decltype(grows)::value ? 2 : 3);
    // Everything is read before anything is written: the output may reach
    // the bytes just read.
    const uint8_t first = in[0];
    const uint8_t second = in[1];
    out[0] = first;
    out[1] = second;  // after a one-byte delta, overwritten by the status next
    out[kStatusAt] = 0x89;
    out[kStatusAt + 1] = 0x00;
    out[kStatusAt + 2] = 0x40;
    in += kConsumed;
    insideChunk -= kConsumed;
    out += kStatusAt + 3;
    status = eventStatus;
    took = true;
    detail::AdvanceTime(absoluteTime, measure, tickInMeasure, ticksPerMeasure,
                        static_cast<int32_t>(delta));
  };
  // A one-data-byte event in running status: [delta][data] becomes
  // [delta][0x00][0x40].
  auto takeRunning = [&](auto statusAt, uint32_t delta) {
    constexpr uint32_t kStatusAt = decltype(statusAt)::value;
    const uint8_t first = in[0];
    const uint8_t second = in[1];
    out[0] = first;
    out[1] = second;  // after a one-byte delta, overwritten next
    out[kStatusAt] = 0x00;
    out[kStatusAt + 1] = 0x40;
    in += kStatusAt + 1;
    insideChunk -= kStatusAt + 1;
    out += kStatusAt + 2;
    ++counted;
    took = true;
    detail::AdvanceTime(absoluteTime, measure, tickInMeasure, ticksPerMeasure,
                        static_cast<int32_t>(delta));
  };
  auto silenced = [collect](uint8_t eventStatus) {
    return eventStatus >= 0x80 && eventStatus < 0xF0 && !(collect && (eventStatus & 0x0F) == 9);
  };
  // Running events grow only under a silenced one-data-byte status, and only
  // inside the chunk; those under any other status are left to the other
  // loops, and those past the chunk's end to the event-by-event path.
  auto growsRunning = [&](int64_t statusAt) {
    return silenced(status) && detail::OneDataByte(status) && statusAt < insideChunk;
  };
  // Makes room for one more byte when none is left; false when it cannot.
  auto room = [&] {
    if (in != out) return true;
    if (!run.canGrow) return false;
    stream = {in, out};
    const auto chunkLeft = chunkEnd - in;
    if (!store.MakeRoom(stream)) return false;
    in = stream.in;  // the unread bytes have moved
    chunkEnd = in + chunkLeft;
    limit = std::min(chunkEnd, store.InputEnd() - (WindowRun::kWindow - 1));
    return true;
  };
  using Grows = std::true_type;
  using Keeps = std::false_type;
  using One = std::integral_constant<uint32_t, 1>;
  using Two = std::integral_constant<uint32_t, 2>;

  do {
    if (in[0] < 0x80) {
      const uint8_t next = in[1];
      if (silenced(next)) {
        if (!detail::OneDataByte(next)) {
          take(One{}, Keeps{}, next, in[0]);
        } else if (room()) {
          take(One{}, Grows{}, next, in[0]);
        } else {
          break;
        }
      } else if (next < 0x80 && growsRunning(1) && room()) {
        takeRunning(One{}, in[0]);
      } else {
        break;
      }
    } else if (in[1] < 0x80) {
      const uint8_t next = in[2];
      const uint32_t delta = (in[0] & 0x7Fu) << 7 | in[1];
      if (silenced(next)) {
        if (!detail::OneDataByte(next)) {
          take(Two{}, Keeps{}, next, delta);
        } else if (room()) {
          take(Two{}, Grows{}, next, delta);
        } else {
          break;
        }
      } else if (next < 0x80 && growsRunning(2) && room()) {
        takeRunning(Two{}, delta);
      } else {
        break;
      }
    } else {
      break;
    }
  } while (in < limit);
  if (!took) return;

  store.CloseStream({in, out});
  const uint64_t grown = store.size() - sizeBefore;
  run.position += static_cast<uint64_t>(out - outStart);
  run.chunkStop += 2 * grown - counted;
  run.chunkEnd += grown;
  run.countedGrowth += counted;
  run.SetStop();
  run.track.absoluteTime = absoluteTime;
  run.track.measure = measure;
  run.track.tickInMeasure = tickInMeasure;
  run.track.runningStatus = status;
  run.writePos = static_cast<int64_t>(run.position);
}

}  // namespace rw::groove
