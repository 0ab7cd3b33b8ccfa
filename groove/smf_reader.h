// SmfReader: a cursor over a Standard MIDI File held whole in a caller-owned
// buffer, and the state of one load (header, track, groove model).
//
// The reader is a template over its byte store so that the tests can run the
// very same parser over a plain, literal in-place store and compare the
// bytes it leaves with those of the fast store (GapBuffer) used everywhere
// else; the literal store offers no window, so it is read byte by byte. Positions are kept in 64
// bits; every value the file controls goes through unsigned or wider arithmetic.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>

#include "diagnostic_sink.h"
#include "gap_buffer.h"
#include "range_check.h"
#include "time_marks.h"

namespace rw::groove {

// The meter a track counts its measures in: 4/4 until a time signature
// says otherwise.
struct Meter {
  int32_t numerator = 4;
  int32_t denominator = 4;
  int32_t ticksPerBeat = 0;
  int32_t ticksPerMeasure = 0;
};

// Where the parse of one track stands.
struct TrackState {
  Meter meter;
  int32_t absoluteTime = 0;
  int32_t measure = 1;
  int32_t tickInMeasure = 0;
  uint8_t runningStatus = 0;
};

// What the drum events of the load have shown so far.
struct DrumState {
  int32_t lastMeasure = 0;  // where the last drum event lies
  int32_t lastTick = 0;
  int32_t highestKey = 0;
  int32_t lowestKey = 127;
};

// A store that hands out its unread bytes as one contiguous window lets the
// reader decode runs of ordinary events from it directly (event_runs_impl.h);
// any other store is read byte by byte.
template <class Store>
concept WindowedStore = requires(Store store, const Store constStore, uint64_t position) {
  { constStore.Window(position) } -> std::same_as<const uint8_t*>;
  store.OpenStream(position);
};

// The literal rules leave every event in running status as it stands. The
// reader gives a one-data-byte one after a silenced message its missing
// byte, so that a reader that never saw the original status reads it as the
// filter means it; a store that says it reads by the literal rules is left
// without that rewrite, so that the tests can hold the rewrite to changing
// how bytes are written and never what is read.
template <class Store>
concept ReadsByTheLiteralRules = requires {
  requires Store::kLiteralRules;
};

template <class Store>
class BasicSmfReader {
 public:
  static constexpr int32_t kNoLastMeasure = 99999;
  static constexpr int kMaxDiagnostics = 16;
  static constexpr int kMaxMetaLength = 1024;

  // `capacity` is the allocation behind `buffer` (twice the file's size).
  BasicSmfReader(uint8_t* buffer, uint64_t* size, uint64_t capacity, DiagnosticSink& sink)
      : store_(buffer, size, capacity), sink_(sink) {}
  BasicSmfReader(const BasicSmfReader&) = delete;
  BasicSmfReader& operator=(const BasicSmfReader&) = delete;

  // --- The byte stream -----------------------------------------------------

  void Initialise();

  uint8_t ReadByte() {
    uint8_t value = 0;
    if (readPos_ >= 0 && static_cast<uint64_t>(readPos_) < store_.size()) {
      value = store_.Get(static_cast<uint64_t>(readPos_));
      ++readPos_;
    } else {
      Alert(text::kReadBeyondEof);
    }
    ++chunkConsumed_;
    return value;
  }

  void ReadBytes(uint8_t* destination, int64_t count) {
    for (int64_t i = 0; i < count; ++i) destination[i] = ReadByte();
  }
  void ReadTwoBytes(uint8_t& first, uint8_t& second) {
    first = ReadByte();
    second = ReadByte();
  }
  void ReadThreeBytes(uint8_t& first, uint8_t& second, uint8_t& third) {
    first = ReadByte();
    second = ReadByte();
    third = ReadByte();
  }
  int32_t ReadU16() {
    const int32_t high = ReadByte();
    return high * 256 + ReadByte();
  }
  int32_t ReadU32() {
    const auto high = static_cast<uint32_t>(ReadU16());
    const auto low = static_cast<uint32_t>(ReadU16());
    return static_cast<int32_t>((high << 16) | low);
  }
  // No limit on the number of bytes; the value wraps in 32 bits.
  int32_t ReadVarLen() {
    uint32_t value = 0;
    uint8_t byte;
    do {
      byte = ReadByte();
      value = (value << 7) + (byte & 0x7Fu);
    } while (byte >= 0x80);
    return static_cast<int32_t>(value);
  }

  void ReadChunkHeader();
  void SkipToChunkEnd() { MoveReadPosition(chunkEnd_); }

  // A negative position wraps to one far outside the buffer, which the store
  // refuses.
  void WriteByte(uint8_t value) {
    store_.Put(static_cast<uint64_t>(writePos_), value);
    ++writePos_;
  }
  void WriteBytes(const uint8_t* source, int64_t count) {
    for (int64_t i = 0; i < count; ++i) WriteByte(source[i]);
  }
  void WriteTwoBytes(uint8_t first, uint8_t second) {
    WriteByte(first);
    WriteByte(second);
  }
  void WriteU16(int64_t value) {
    WriteByte(static_cast<uint8_t>((value >> 8) & 0xFF));
    WriteByte(static_cast<uint8_t>(value & 0xFF));
  }
  void WriteU32(int64_t value) {
    WriteU16(value / 65536);
    WriteU16(value);
  }

  void InsertByte();
  void CutTo(int64_t position);

  // --- Loading --------------------------------------------------------------

  bool ReadHeader();
  bool LoadTracks();
  bool ParseTrack(int32_t trackNumber, bool& drumEventsFound, bool collect);

  // Not set by a load; a caller that wants range marks supplies the range.
  void SetMeasureRange(int32_t first, int32_t last) {
    firstMeasure_ = first;
    lastMeasure_ = last;
  }

  // Every byte of the filtered file back at its own index in the buffer.
  void FlushBuffer() {
    WriteStaleLengthField();
    store_.Flush();
  }

  // --- State, for the caller and the tests ----------------------------------

  int64_t readPosition() const { return readPos_; }
  int64_t writePosition() const { return writePos_; }
  void SetWritePosition(int64_t position) { writePos_ = position; }
  void SetReadPosition(int64_t position) { MoveReadPosition(position); }
  const char* chunkId() const { return chunkId_.data(); }
  int64_t chunkLength() const { return chunkLength_; }
  int64_t chunkEnd() const { return chunkEnd_; }
  int64_t chunkLengthFieldPosition() const { return chunkLengthPos_; }
  int64_t chunkConsumed() const { return chunkConsumed_; }

  int32_t format() const { return format_; }
  int32_t trackCount() const { return trackCount_; }
  int32_t division() const { return division_; }
  bool drumNotesFound() const { return drumNotesFound_; }
  int32_t lastDrumMeasure() const { return drums_.lastMeasure; }
  int32_t lastDrumTick() const { return drums_.lastTick; }
  int32_t highestDrumKey() const { return drums_.highestKey; }
  int32_t lowestDrumKey() const { return drums_.lowestKey; }
  bool keyUsed(int key) const { return keyFlags_[static_cast<std::size_t>(key)] != 0; }
  const TimeMarkList& timeMarks() const { return marks_; }
  const TimeMark& smpteSnapshot() const { return smpteSnapshot_; }
  const TimeMark& timeSignatureSnapshot() const { return timeSignatureSnapshot_; }
  const TimeMark& tempoSnapshot() const { return tempoSnapshot_; }
  bool startMarkDone() const { return startMarkDone_; }
  bool endMarkDone() const { return endMarkDone_; }

 private:
  void Alert(const char* message);
  void MoveReadPosition(int64_t position);
  void WriteStaleLengthField();

  // Track parsing helpers.
  void ResetTrackState(int32_t trackNumber);
  // A fresh current mark at the track's present position.
  void StartMarkHere() {
    StartMark(currentMark_, track_.meter.ticksPerBeat, track_.absoluteTime, track_.measure,
              track_.tickInMeasure);
  }
  static void MarkMeter(TimeMark& mark, const Meter& meter) {
    mark.numerator = meter.numerator;
    mark.denominator = meter.denominator;
    mark.ticksPerBeat = meter.ticksPerBeat;
    mark.ticksPerMeasure = meter.ticksPerMeasure;
  }
  void AdvanceTime(int32_t delta);
  bool RangeMarksPending() const { return (firstMeasure_ > 1 && !startMarkDone_) || !endMarkDone_; }
  void MakeRangeMarks(int32_t delta);
  void MakeRangeMark(int32_t target);
  void InsertMark(const TimeMark& mark);
  void SkipSysEx();
  bool ReadChannelEventsInWindow(bool collect, bool& drumEventsFound);
  struct WindowRun;
  // Out of line so that each loop has the registers to itself.
  template <bool kTwoData, bool kDrum>
  [[gnu::noinline]] void ReadRunningStatusRun(WindowRun& run);
  [[gnu::noinline]] void SilenceRun(WindowRun& run);
  void HandleChannelEvent(uint8_t status, uint8_t firstData, int64_t eventStart, bool running,
                          bool collect, bool& drumEventsFound);
  void RecordDrumEvent(uint8_t status, uint8_t key, bool& drumEventsFound) {
    drumEventsFound = true;
    drums_.lastMeasure = track_.measure;
    drums_.lastTick = track_.tickInMeasure;
    if (NamesKey(status)) NoteKey(key, drums_.highestKey, drums_.lowestKey);
  }
  // A note on (velocity 0 included) or a note off: its first data byte is a
  // key the groove uses.
  static bool NamesKey(uint8_t status) { return (status >> 4) == 9 || (status >> 4) == 8; }
  void NoteKey(uint8_t key, int32_t& highest, int32_t& lowest) {
    if (key > highest) highest = key;
    if (key < lowest) lowest = key;
    keyFlags_[key] = 1;
  }
  void SilenceEvent(int64_t eventStart, bool secondData);
  void SilenceRunningEvent(int64_t eventStart);
  // Whether every chunk lies whole in the file, as their lengths lay them
  // out: only then may running events get a byte. In a file cut short,
  // bytes read past its end are zeros, and a cut or a move beyond them is a
  // range-check failure that a grown file would escape; such a file is
  // refused anyway, and left exactly as the literal rules leave it.
  bool ChunksLieInFile() const;
  // A byte of the current chunk, in a file whose chunks lie whole in it: a
  // running event read past its chunk's end is left as it stands, so that
  // the rewrite never changes what the load reads or how it ends.
  bool InsideWholeChunk(int64_t position) const {
    return rewritesRunningEvents_ && position < chunkEnd_;
  }
  enum class MetaOutcome { kNext, kEndOfTrack, kFail };
  MetaOutcome HandleMetaEvent(uint8_t type, int32_t trackNumber);
  void SetTimeSignature(uint8_t numerator, uint8_t denominatorPower);

  Store store_;
  DiagnosticSink& sink_;
  int diagnosticsShown_ = 0;

  // Cursor.
  int64_t readPos_ = 0;
  int64_t writePos_ = 0;
  int64_t trackCountPos_ = 0;
  int64_t chunkLengthPos_ = 0;
  std::array<char, 5> chunkId_{};
  int64_t chunkLength_ = 0;
  int64_t chunkEnd_ = 0;
  int64_t chunkConsumed_ = 0;
  bool lengthFieldStale_ = false;       // chunkLength_ not yet written back to its field
  bool rewritesRunningEvents_ = false;  // ChunksLieInFile, found at the start of the load

  // Header.
  int32_t format_ = 0;
  int32_t trackCount_ = 0;
  int32_t division_ = 1024;
  bool drumNotesFound_ = false;

  // Track.
  TrackState track_;
  bool markPending_ = false;
  TimeMark currentMark_{};
  std::array<uint8_t, kMaxMetaLength + 1> metaData_{};

  // Groove model.
  int32_t firstMeasure_ = 0;
  int32_t lastMeasure_ = kNoLastMeasure;
  DrumState drums_;
  TimeMarkList marks_;
  TimeMark smpteSnapshot_{};
  TimeMark timeSignatureSnapshot_{};
  TimeMark tempoSnapshot_{};
  bool startMarkDone_ = false;
  bool endMarkDone_ = false;
  // One flag per key; a data byte of 128 or more lands in the two spare
  // tables behind it, which nothing reads.
  std::array<uint8_t, 3 * 128> keyFlags_{};
};

using SmfReader = BasicSmfReader<GapBuffer>;

}  // namespace rw::groove
