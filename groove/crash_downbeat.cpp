#include "crash_downbeat.h"

#include <algorithm>
#include <limits>

#include "drum_hits.h"
#include "smf_walk.h"

namespace rw::groove {
namespace {

constexpr uint8_t kCrash = 49;
constexpr uint8_t kSecondCrash = 57;
constexpr uint8_t kClosedHiHat = 42;
constexpr uint8_t kRide = 51;
constexpr uint8_t kUnaccentedCrash = 100;
constexpr uint64_t kChunkHeaderSize = 8;

// Which track holds the drums, and whether a crash already sounds on the
// downbeat of any track.
class Survey : public SmfEventVisitor {
 public:
  void Header(uint16_t, uint16_t, uint16_t division) override { division_ = division; }
  void Event(const SmfEvent& e) override {
    if (!IsDrumNoteOn(e)) return;
    if (drumTrack_ == 0) drumTrack_ = e.track;
    if (e.tick == 0 && (e.data1 == kCrash || e.data1 == kSecondCrash)) crashOnDownbeat_ = true;
  }

  uint16_t division() const { return division_; }
  int32_t drumTrack() const { return drumTrack_; }
  bool crashOnDownbeat() const { return crashOnDownbeat_; }

 private:
  uint16_t division_ = 0;
  int32_t drumTrack_ = 0;
  bool crashOnDownbeat_ = false;
};

// One event of the drum track, by where its bytes lie.
struct TrackEvent {
  uint64_t tick = 0;
  uint64_t begin = 0;   // its delta time's first byte
  uint64_t offset = 0;  // the byte after its delta time
  uint64_t end = 0;
  uint8_t status = 0;  // running status resolved
  bool running = false;
  uint8_t data1 = 0;
  uint8_t data2 = 0;

  bool Channel() const { return status < 0xF0; }
  bool EndOfTrack() const { return status == 0xFF && data1 == 0x2F; }
  bool Stroke() const { return status == kDrumNoteOn && data2 > 0; }
  bool Release() const { return status == kDrumNoteOff || (status == kDrumNoteOn && data2 == 0); }
  bool DrumNote() const { return status == kDrumNoteOn || status == kDrumNoteOff; }
  uint64_t KeyAt() const { return offset + (running ? 0 : 1); }
};

class DrumTrackEvents : public SmfEventVisitor {
 public:
  DrumTrackEvents(const uint8_t* bytes, int32_t track) : bytes_(bytes), track_(track) {}

  void TrackStart(int32_t track, uint64_t chunkOffset, uint64_t length) override {
    if (track != track_) return;
    chunkOffset_ = chunkOffset;
    length_ = length;
    next_ = chunkOffset + kChunkHeaderSize;
  }
  void Event(const SmfEvent& e) override {
    if (e.track != track_) return;
    TrackEvent event{e.tick, next_, e.offset, 0, e.status, e.running, e.data1, e.data2};
    if (e.status >= 0xF0) {
      event.end = static_cast<uint64_t>(e.payload - bytes_) + e.payloadLength;
    } else {
      const int kind = e.status >> 4;
      event.end = e.offset + (e.running ? 0 : 1) + ((kind == 0xC || kind == 0xD) ? 1 : 2);
    }
    events_.push_back(event);
    next_ = event.end;
  }

  uint64_t chunkOffset() const { return chunkOffset_; }
  uint64_t chunkEnd() const { return chunkOffset_ + kChunkHeaderSize + length_; }
  const std::vector<TrackEvent>& events() const { return events_; }

 private:
  const uint8_t* bytes_;
  int32_t track_;
  uint64_t chunkOffset_ = 0;
  uint64_t length_ = 0;
  uint64_t next_ = 0;
  std::vector<TrackEvent> events_;
};

void PutVarLen(std::vector<uint8_t>& out, uint64_t value) {
  uint8_t groups[10];
  int count = 0;
  do {
    groups[count++] = static_cast<uint8_t>(value & 0x7F);
    value >>= 7;
  } while (value != 0);
  while (count-- > 0) out.push_back(static_cast<uint8_t>(groups[count] | (count > 0 ? 0x80 : 0)));
}

void Append(std::vector<uint8_t>& out, std::span<const uint8_t> file, uint64_t from, uint64_t to) {
  out.insert(out.end(), file.begin() + static_cast<std::ptrdiff_t>(from),
             file.begin() + static_cast<std::ptrdiff_t>(to));
}

// The hand on the hi-hat or the ride moves to the crash: only the key bytes
// of the stroke and of the note-off that releases it (the first one of its
// key after it) change.
void StrokeBecomesCrash(std::vector<uint8_t>& out, const std::vector<TrackEvent>& events,
                        std::size_t stroke) {
  const uint8_t key = events[stroke].data1;
  out[events[stroke].KeyAt()] = kCrash;
  for (std::size_t i = stroke + 1; i < events.size(); ++i) {
    if (events[i].Release() && events[i].data1 == key) {
      out[events[i].KeyAt()] = kCrash;
      return;
    }
  }
}

// The drum track's events with a crash struck after the other events of
// tick 0 and released at `release`. An event whose delta time spans an
// inserted one gets the rest of it; one in running status gets its status
// back where an inserted event changed the status in force.
std::vector<uint8_t> TrackWithCrash(std::span<const uint8_t> file,
                                    const std::vector<TrackEvent>& events, uint8_t velocity,
                                    uint64_t release) {
  std::vector<uint8_t> data;
  uint64_t previousTick = 0;
  uint8_t runningStatus = 0;  // as a reader of the written track has it
  bool struck = false;
  bool released = false;
  bool spanned = false;  // the event before was inserted
  auto insert = [&](uint64_t tick, uint8_t status, uint8_t data2) {
    PutVarLen(data, tick - previousTick);
    previousTick = tick;
    if (status != runningStatus) data.push_back(status);
    runningStatus = status;
    data.push_back(kCrash);
    data.push_back(data2);
    spanned = true;
  };

  for (const TrackEvent& e : events) {
    if (!struck && (e.tick > 0 || e.EndOfTrack())) {
      insert(0, kDrumNoteOn, velocity);
      struck = true;
    }
    if (struck && !released && (e.tick >= release || e.EndOfTrack())) {
      // As a note-off where note-offs run on there, else as a note-on of
      // velocity 0: after the crash's own note-on it needs no status byte.
      insert(release, runningStatus == kDrumNoteOff ? kDrumNoteOff : kDrumNoteOn, 0);
      released = true;
    }
    const bool statusBack = e.Channel() && e.running && e.status != runningStatus;
    if (spanned) {
      PutVarLen(data, e.tick - previousTick);
    } else {
      Append(data, file, e.begin, e.offset);
    }
    if (statusBack) data.push_back(e.status);
    Append(data, file, e.offset, e.end);
    previousTick = e.tick;
    if (e.Channel()) runningStatus = e.status;
    spanned = false;
  }
  return data;
}

}  // namespace

CrashDownbeat WithCrashOnDownbeat(std::span<const uint8_t> file) {
  CrashDownbeat result;
  Survey survey;
  if (!WalkStrictly(file.data(), file.size(), &survey).wellFormed || survey.drumTrack() == 0) {
    return result;
  }
  result.drumTrack = survey.drumTrack();
  if (survey.crashOnDownbeat()) {
    result.outcome = CrashOutcome::kAlreadyCrash;
    result.file.assign(file.begin(), file.end());
    return result;
  }
  DrumTrackEvents track(file.data(), survey.drumTrack());
  WalkStrictly(file.data(), file.size(), &track);
  const std::vector<TrackEvent>& events = track.events();

  uint8_t loudest = 0;
  for (std::size_t i = 0; i < events.size() && events[i].tick == 0; ++i) {
    const TrackEvent& e = events[i];
    if (!e.Stroke()) continue;
    if (e.data1 == kClosedHiHat || e.data1 == kRide) {
      result.outcome = CrashOutcome::kStrokeBecameCrash;
      result.file.assign(file.begin(), file.end());
      StrokeBecomesCrash(result.file, events, i);
      return result;
    }
    loudest = std::max(loudest, e.data2);
  }

  // Released a thirty-second later, but before any later crash of the track
  // and never after its last drum event, so that the groove keeps its length.
  uint64_t release = std::max<uint64_t>(1, survey.division() / 8u);
  uint64_t lastDrumEvent = 0;
  bool laterCrash = false;
  for (const TrackEvent& e : events) {
    if (!e.Channel() || (e.status & 0x0F) != 9) continue;
    lastDrumEvent = e.tick;
    if (!laterCrash && e.DrumNote() && e.data1 == kCrash && e.tick > 0) {
      release = std::min(release, e.tick);
      laterCrash = true;
    }
  }
  release = std::min(release, lastDrumEvent);

  const std::vector<uint8_t> data =
      TrackWithCrash(file, events, loudest > 0 ? loudest : kUnaccentedCrash, release);
  if (data.size() > std::numeric_limits<uint32_t>::max()) return {};
  result.outcome = CrashOutcome::kCrashAdded;
  std::vector<uint8_t>& out = result.file;
  out.reserve(file.size() + data.size());
  Append(out, file, 0, track.chunkOffset());
  out.insert(out.end(), {'M', 'T', 'r', 'k'});
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(uint8_t(data.size() >> shift));
  out.insert(out.end(), data.begin(), data.end());
  Append(out, file, track.chunkEnd(), file.size());
  return result;
}

}  // namespace rw::groove
