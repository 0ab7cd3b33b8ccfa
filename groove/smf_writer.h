// Writes a Standard MIDI File from events at absolute ticks: the header, then
// per track the events in order of tick with variable-length delta times,
// each track closed by its End of Track.
//
// A file can hold millions of events, so nothing is allocated per event, and
// a track whose events come in order of tick costs no more memory than its
// bytes: it is encoded as it comes, into the file itself. A track in any
// order is held in one flat table (its long events' bytes in one store) and
// encoded in order when it closes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace rw::groove {

struct SmfWriteResult {
  bool written = false;        // false: no track, or a track longer than a chunk can say
  uint64_t clampedDeltas = 0;  // gaps longer than a delta time holds, written as the longest
};

class SmfWriter {
 public:
  // The longest delta time a variable-length quantity of four bytes holds.
  static constexpr uint32_t kMaxDelta = 0x0FFFFFFF;

  enum class Order {
    kAny,     // events are put in order of tick; one tick's keep the order they came in
    kRising,  // each event comes at or after the one before, and is written as it comes
  };

  // `storage` lends its allocation to the file (what it holds is dropped):
  // a caller writing file after file need not have fresh memory mapped for
  // each.
  SmfWriter(uint16_t format, uint16_t division, std::vector<uint8_t> storage = {});

  // Room for a file of about this many bytes.
  void Reserve(std::size_t fileBytes) { file_.reserve(fileBytes); }

  // Closes the track before and opens the next; events go to the track
  // opened last. Refused past 65,535 tracks.
  bool StartTrack(Order order = Order::kAny);

  // One event at an absolute tick: its bytes after the delta time, starting
  // with a status byte: a channel message, a meta event (FF type length
  // data) or a SysEx event (F0 or F7, length, data). An End of Track is not
  // written where it stands: the track's own End of Track comes last, at
  // the latest of the ticks given for it and the tick of its last event.
  // Refused (false, nothing added): no open track, no bytes, a first byte
  // that is no status, or, in a rising track, a tick before the last.
  bool Add(uint64_t tick, std::span<const uint8_t> event);

  // A channel message of two or three bytes, by its status. The common case
  // of a rising track, a one-byte delta time and room at hand is written
  // here, without a call.
  bool AddMessage(uint64_t tick, uint8_t status, uint8_t data1, uint8_t data2 = 0) {
    if (order_ != Order::kRising || !open_ || tick < previousTick_ ||
        tick - previousTick_ >= 0x80 || status < 0x80 || status >= 0xF0 ||
        file_.size() - end_ < 4) {
      return AddMessageAnyhow(tick, status, data1, data2);
    }
    uint8_t* out = file_.data() + end_;
    *out++ = uint8_t(tick - previousTick_);
    previousTick_ = tick;
    if (status != runningStatus_) *out++ = status;
    runningStatus_ = status;
    *out++ = data1;
    if (!HasOneDataByte(status)) *out++ = data2;
    end_ = std::size_t(out - file_.data());
    return true;
  }

  // Events added one after another to a rising track with the writer's
  // state held in the run: every byte stored may alias the writer's fields,
  // which would otherwise be read again after each event. While a run is
  // open, nothing else adds to the writer; its end hands the state back.
  class Run {
   public:
    explicit Run(SmfWriter& writer) : writer_(writer) { Load(); }
    ~Run() { Store(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    // As the writer's AddMessage.
    bool AddMessage(uint64_t tick, uint8_t status, uint8_t data1, uint8_t data2 = 0) {
      if (!rising_ || tick < previousTick_ || tick - previousTick_ >= 0x80 || status < 0x80 ||
          status >= 0xF0 || limit_ - out_ < 4) [[unlikely]] {
        Store();
        const bool added = writer_.AddMessageAnyhow(tick, status, data1, data2);
        Load();
        return added;
      }
      *out_++ = uint8_t(tick - previousTick_);
      previousTick_ = tick;
      if (status != runningStatus_) *out_++ = status;
      runningStatus_ = status;
      *out_++ = data1;
      if (!HasOneDataByte(status)) *out_++ = data2;
      return true;
    }
    // As the writer's Add.
    bool Add(uint64_t tick, std::span<const uint8_t> event) {
      Store();
      const bool added = writer_.Add(tick, event);
      Load();
      return added;
    }

   private:
    void Load() {
      rising_ = writer_.open_ && writer_.order_ == Order::kRising;
      out_ = writer_.file_.data() + writer_.end_;
      limit_ = writer_.file_.data() + writer_.file_.size();
      previousTick_ = writer_.previousTick_;
      runningStatus_ = writer_.runningStatus_;
    }
    void Store() {
      writer_.end_ = std::size_t(out_ - writer_.file_.data());
      writer_.previousTick_ = previousTick_;
      writer_.runningStatus_ = runningStatus_;
    }

    SmfWriter& writer_;
    uint8_t* out_;
    uint8_t* limit_;
    uint64_t previousTick_;
    uint8_t runningStatus_;
    bool rising_;
  };

  // The whole file, replacing what `out` held; the writer is left empty.
  // A channel message with the status of the channel message just before
  // it is written in running status.
  SmfWriteResult Write(std::vector<uint8_t>& out);

 private:
  // Up to four bytes are held in the entry itself; longer events hold the
  // offset of their bytes in longBytes_.
  struct Entry {
    uint64_t tick;
    uint32_t length;
    uint32_t data;
  };

  static bool HasOneDataByte(uint8_t status) {
    return (status >> 4) == 0xC || (status >> 4) == 0xD;  // program change, channel pressure
  }
  bool AddMessageAnyhow(uint64_t tick, uint8_t status, uint8_t data1, uint8_t data2);
  uint8_t* Room(std::size_t bytes);
  uint8_t* PutDelta(uint64_t tick, std::size_t eventBytes);
  void Encode(uint64_t tick, const uint8_t* event, std::size_t length);
  void CloseTrack();

  // The header, the closed tracks, and an open rising track: end_ bytes of
  // it, and room ahead that is mapped a little at a time.
  std::vector<uint8_t> file_;
  std::size_t end_ = 0;
  uint16_t tracks_ = 0;
  bool open_ = false;
  Order order_ = Order::kAny;
  std::size_t trackStart_ = 0;  // where the open track's chunk begins in file_
  uint64_t previousTick_ = 0;
  uint64_t endTick_ = 0;
  uint8_t runningStatus_ = 0;
  bool tooLong_ = false;
  uint64_t clampedDeltas_ = 0;
  // The open track's events when it is in any order.
  std::vector<Entry> entries_;
  std::vector<uint8_t> longBytes_;
};

}  // namespace rw::groove
