#include "meter_scan.h"

#include <algorithm>
#include <vector>

#include "event_runs_impl.h"
#include "groove_buffer.h"

namespace rw::groove {
namespace {

using Reader = BasicSmfReader<GapBuffer>;

constexpr uint8_t kMetaStatus = 0xFF;
constexpr uint8_t kSysExStatus = 0xF0;
constexpr uint8_t kEndOfSysEx = 0xF7;
constexpr uint8_t kMetaEndOfTrack = 0x2F;
constexpr uint8_t kMetaTimeSignature = 0x58;

// The reader's walk up to the meter, kept in its own coordinates: it never
// advances past the file's end (it reads zeros there, each with a
// diagnostic), and every message it grows by a byte moves the bytes after
// it one place on in its buffer, which is twice the file's size. Only where
// the reader would end the load early does this need to follow its buffer;
// the bytes themselves are read where they stand in the file.
class Scan {
 public:
  Scan(std::span<const uint8_t> prefix, uint64_t fileSize)
      : bytes_(prefix.data()),
        size_(fileSize),
        available_(std::min<uint64_t>(prefix.size(), fileSize)),
        capacity_(std::max<uint64_t>(1, 2 * std::min(fileSize, kLargestGrooveFile))) {}

  MeterScan Run() {
    // The plug-in reads neither an empty file nor a huge one.
    if (size_ == 0 || size_ > kLargestGrooveFile) {
      state_ = State::kRefused;
    } else if (Header()) {
      FirstTrack();
    }
    MeterScan scan;
    switch (state_) {
      case State::kSettled:
        scan.outcome = MeterScanOutcome::kMeter;
        scan.pattern.division = division_;
        scan.pattern.timeSignature.numerator = snapshot_.numerator;
        scan.pattern.timeSignature.denominator = snapshot_.denominator;
        scan.pattern.timeSignature.ticksPerBeat = snapshot_.ticksPerBeat;
        scan.pattern.timeSignature.ticksPerMeasure = snapshot_.ticksPerMeasure;
        break;
      case State::kShort:
        scan.outcome = MeterScanOutcome::kUnknown;
        scan.wanted = wanted_;
        break;
      case State::kReading:  // every way out settles, refuses or runs short
      case State::kRefused:
        scan.outcome = MeterScanOutcome::kNone;
        break;
    }
    return scan;
  }

 private:
  enum class State { kReading, kShort, kRefused, kSettled };

  bool Reading() const { return state_ == State::kReading; }
  bool Refuse() {
    if (Reading()) state_ = State::kRefused;
    return false;
  }

  void Alert(uint64_t count = 1) {
    alerts_ += count;
    // The diagnostic after the last one a load may show ends the load.
    if (alerts_ > static_cast<uint64_t>(Reader::kMaxDiagnostics)) Refuse();
  }

  uint8_t Byte() {
    if (!Reading()) return 0;
    ++consumed_;
    if (position_ >= size_) {
      Alert();
      return 0;
    }
    if (position_ >= available_) {
      state_ = State::kShort;
      wanted_ = position_ + 1;
      return 0;
    }
    return bytes_[position_++];
  }

  // `count` bytes read for nothing but the count: past the file's end each
  // is a zero with its diagnostic, and the reader's position stays there.
  void Pass(uint64_t count) {
    if (!Reading()) return;
    const uint64_t inFile = position_ < size_ ? std::min(count, size_ - position_) : 0;
    position_ += inFile;
    consumed_ += static_cast<int64_t>(count);
    if (count > inFile) Alert(count - inFile);
  }

  int32_t U16() {
    const int32_t high = Byte();
    return high * 256 + Byte();
  }
  int32_t U32() {
    const auto high = static_cast<uint32_t>(U16());
    const auto low = static_cast<uint32_t>(U16());
    return static_cast<int32_t>((high << 16) | low);
  }
  // As many bytes as it takes; the value wraps in 32 bits.
  int32_t VarLen() {
    uint32_t value = 0;
    uint8_t byte;
    do {
      byte = Byte();
      value = (value << 7) + (byte & 0x7Fu);
    } while (byte >= 0x80);
    return static_cast<int32_t>(value);
  }
  // All four bytes are read whatever the first ones were.
  bool ChunkId(const char* expected) {
    bool same = true;
    for (int i = 0; i < 4; ++i) {
      const bool match = Byte() == static_cast<uint8_t>(expected[i]);
      same = same && match;
    }
    return same;
  }

  // The reader's buffer position of a file position: after the bytes grown so far.
  uint64_t InBuffer(uint64_t position) const { return position + grown_; }
  void MoveTo(uint64_t position) {
    if (InBuffer(position) > capacity_) {
      Refuse();
      return;
    }
    position_ = position;
  }

  bool Header() {
    const bool isHeader = ChunkId("MThd");
    const int64_t length = U32();
    const uint64_t end = position_ + static_cast<uint64_t>(std::max<int64_t>(length, 0));
    if (!isHeader || length < 6) return Refuse();
    if (length > 6) Alert();
    const int32_t format = U16();
    if (format >= 3) return Refuse();
    const int32_t tracks = U16();
    if (tracks < 1) return Refuse();
    if (format == 2 && tracks > 1) Alert();
    if (tracks > 1 && format == 0) return Refuse();
    int32_t division = U16();
    if (division > 32767) {
      int32_t frames = (division / 256) & 0xFF;
      if (frames == 29) {
        frames = 30;
      } else if (frames != 24 && frames != 25 && frames != 30) {
        Alert();
      }
      division = (division & 0xFF) * frames;
    }
    if (!Reading()) return false;
    if (division == 0) return Refuse();
    division_ = division;
    MoveTo(end);
    return Reading();
  }

  void FirstTrack() {
    const bool isTrack = ChunkId("MTrk");
    const int64_t length = U32();
    if (!Reading()) return;
    if (!isTrack || length < 0) {
      Refuse();
      return;
    }
    chunkEnd_ = position_ + static_cast<uint64_t>(length);
    readEnd_ = length;
    consumed_ = 0;
    meter_.ticksPerBeat = division_;
    meter_.ticksPerMeasure = 4 * division_;
    snapshot_ = meter_;

    while (consumed_ < readEnd_) {
      const int32_t delta = VarLen();
      if (!Reading()) return;
      detail::AdvanceTime(absoluteTime_, measure_, tickInMeasure_, meter_.ticksPerMeasure, delta);
      // No time signature after tick 0 leaves a load standing, so nothing
      // later can change the meter.
      if (absoluteTime_ > 0) {
        state_ = State::kSettled;
        return;
      }
      if (!Event()) return;
    }
    Alert();  // the chunk ran out before its End of Track
    MoveTo(chunkEnd_);
    if (Reading()) state_ = State::kSettled;
  }

  // One event after its delta time; false once the track is done with.
  bool Event() {
    const uint64_t eventStart = position_;
    uint8_t status = Byte();
    uint8_t first = status;
    const bool running = status < 0x80;
    if (!running) {
      first = Byte();
      if (status < 0xF0) runningStatus_ = status;
    } else if (Reading()) {
      if (runningStatus_ == 0) return Refuse();
      status = runningStatus_;
    }
    if (!Reading()) return false;

    if (status == kSysExStatus) {
      Pass(4);  // a fixed skip: the length is not read as one
      while (Reading() && Byte() != kEndOfSysEx) {
      }
      return Reading();
    }
    if (status != kMetaStatus) return ChannelMessage(status, running, eventStart);
    return MetaEvent(first);
  }

  bool ChannelMessage(uint8_t status, bool running, uint64_t eventStart) {
    const bool oneData = detail::OneDataByte(status);
    if (!oneData) Byte();
    if (!Reading()) return false;
    // The reader silences every message but the drums' where it stands; one
    // with a single data byte grows by one. With its own status the grown
    // byte is not counted as read, so the track's reading ends a byte
    // further on; in running status it is, and only inside a whole chunk.
    if ((status & 0x0F) == 9 || !oneData) return true;
    if (!running) {
      Grow();
      ++readEnd_;
    } else if (chunkEnd_ <= size_ && eventStart < chunkEnd_) {
      Grow();
    }
    return Reading();
  }

  void Grow() {
    if (position_ > size_ || size_ + grown_ >= capacity_) {
      Refuse();
      return;
    }
    ++grown_;
  }

  bool MetaEvent(uint8_t type) {
    const int32_t length = VarLen();
    if (!Reading()) return false;
    if (static_cast<uint32_t>(length) > static_cast<uint32_t>(Reader::kMaxMetaLength)) {
      return Refuse();
    }
    const uint64_t dataStart = position_;
    const auto dataLength = static_cast<uint32_t>(length);
    // The reader ends its copy of the data with a zero, which stands in for
    // a missing second byte.
    uint8_t data[2] = {0, 0};
    const uint32_t kept = type == kMetaTimeSignature ? std::min<uint32_t>(dataLength, 2) : 0;
    for (uint32_t i = 0; i < kept; ++i) data[i] = Byte();
    Pass(dataLength - kept);
    MoveTo(dataStart + dataLength);
    if (!Reading()) return false;

    if (type == kMetaEndOfTrack) {
      MoveTo(chunkEnd_);
      if (Reading()) state_ = State::kSettled;
      return false;
    }
    if (type == kMetaTimeSignature) {
      if (dataLength == 0) return Refuse();  // a numerator of 0
      return TimeSignature(data[0], data[1]);
    }
    return true;
  }

  bool TimeSignature(uint8_t numerator, uint8_t denominatorPower) {
    if (absoluteTime_ > 0) return Refuse();
    if (tickInMeasure_ % meter_.ticksPerBeat != 0) {
      Alert();  // moved back onto the beat
      absoluteTime_ = detail::Wrap32(static_cast<int64_t>(absoluteTime_) - tickInMeasure_);
      tickInMeasure_ = 0;
    }
    const int32_t fourQuarters = 4 * division_;
    if (denominatorPower > 30 || (int64_t{1} << denominatorPower) > fourQuarters) return Refuse();
    if (numerator == 0) return Refuse();
    meter_.numerator = numerator;
    meter_.denominator = int32_t{1} << denominatorPower;
    meter_.ticksPerBeat = fourQuarters / meter_.denominator;
    meter_.ticksPerMeasure = meter_.numerator * meter_.ticksPerBeat;
    if (absoluteTime_ == 0) snapshot_ = meter_;
    return Reading();
  }

  const uint8_t* bytes_;
  uint64_t size_;
  uint64_t available_;
  uint64_t capacity_;
  State state_ = State::kReading;
  uint64_t wanted_ = 0;
  uint64_t alerts_ = 0;

  uint64_t position_ = 0;  // in the file; it stops at the file's end
  uint64_t grown_ = 0;     // bytes the reader would have inserted so far
  int64_t consumed_ = 0;   // of the track's bytes, as the reader counts them
  int64_t readEnd_ = 0;    // where the track's reading ends, in bytes consumed
  uint64_t chunkEnd_ = 0;  // in the file

  int32_t division_ = 0;
  Meter meter_;
  Meter snapshot_;
  int32_t absoluteTime_ = 0;
  int32_t measure_ = 1;
  int32_t tickInMeasure_ = 0;
  uint8_t runningStatus_ = 0;
};

}  // namespace

MeterScan ScanMeter(std::span<const uint8_t> prefix, uint64_t fileSize) {
  return Scan(prefix, fileSize).Run();
}

MeterScan ScanMeterOfFile(std::FILE* file) {
  MeterScan none;
  none.outcome = MeterScanOutcome::kNone;
  if (file == nullptr || std::fseek(file, 0, SEEK_END) != 0) return none;
  const long end = std::ftell(file);
  if (end <= 0 || static_cast<uint64_t>(end) > kLargestGrooveFile) return none;
  if (std::fseek(file, 0, SEEK_SET) != 0) return none;
  const auto size = static_cast<uint64_t>(end);

  std::vector<uint8_t> bytes;
  uint64_t want = std::min<uint64_t>(size, kMeterScanPrefix);
  for (;;) {
    const std::size_t have = bytes.size();
    bytes.resize(static_cast<std::size_t>(want));
    const std::size_t more = bytes.size() - have;
    if (std::fread(bytes.data() + have, 1, more, file) != more) return none;
    const MeterScan scan = ScanMeter(bytes, size);
    if (scan.outcome != MeterScanOutcome::kUnknown || want >= size) return scan;
    // Twice as much each time, so that a long opening costs a few reads.
    want = std::min(size, std::max({scan.wanted, 2 * want, want + 1}));
  }
}

}  // namespace rw::groove
