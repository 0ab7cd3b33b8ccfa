// Every event of a file as the strict walk meets it, with its status
// resolved, for tests that compare files event by event.
#pragma once

#include <algorithm>
#include <vector>

#include "smf_builder.h"
#include "smf_walk.h"

namespace rw::groove::testing {

struct RecordedEvent {
  int32_t track = 0;
  uint64_t tick = 0;
  Bytes bytes;  // after its delta time, with its status byte
  friend bool operator==(const RecordedEvent&, const RecordedEvent&) = default;
};

inline bool IsDrumNote(const RecordedEvent& e) {
  return !e.bytes.empty() && (e.bytes[0] == 0x99 || e.bytes[0] == 0x89);
}

inline std::vector<RecordedEvent> RecordEvents(const Bytes& file) {
  class Recorder : public SmfEventVisitor {
   public:
    explicit Recorder(const Bytes& file) : file_(file) {}
    void Event(const SmfEvent& e) override {
      RecordedEvent event{e.track, e.tick, {}};
      if (e.status >= 0xF0) {
        const auto end = std::size_t(e.payload - file_.data()) + e.payloadLength;
        event.bytes.assign(file_.begin() + long(e.offset), file_.begin() + long(end));
      } else {
        const int kind = e.status >> 4;
        event.bytes = {e.status, e.data1};
        if (kind != 0xC && kind != 0xD) event.bytes.push_back(e.data2);
      }
      events.push_back(event);
    }
    std::vector<RecordedEvent> events;

   private:
    const Bytes& file_;
  } recorder(file);
  WalkStrictly(file.data(), file.size(), &recorder);
  return recorder.events;
}

// Every event but the drum notes and the End of Track: what straightening
// leaves where it is.
inline std::vector<RecordedEvent> EventsKeptInPlace(const Bytes& file) {
  std::vector<RecordedEvent> events = RecordEvents(file);
  std::erase_if(events, [](const RecordedEvent& e) {
    return IsDrumNote(e) || (e.bytes.size() >= 2 && e.bytes[0] == 0xFF && e.bytes[1] == 0x2F);
  });
  return events;
}

}  // namespace rw::groove::testing
