#include "smf_walk.h"

namespace rw::groove {
namespace {

constexpr uint32_t kHeaderId = 0x4D546864;  // "MThd"
constexpr uint32_t kTrackId = 0x4D54726B;   // "MTrk"
constexpr uint64_t kChunkHeaderSize = 8;
constexpr uint32_t kMinHeaderLength = 6;
constexpr int kMaxVarLenBytes = 4;
constexpr uint8_t kMetaEndOfTrack = 0x2F;

// The one place that knows where the walk may read: [position, end) of the
// file's bytes. Every read checks the bound first.
class Cursor {
 public:
  Cursor(const uint8_t* bytes, uint64_t begin, uint64_t end)
      : bytes_(bytes), position_(begin), end_(end) {}

  uint64_t position() const { return position_; }
  uint64_t left() const { return end_ - position_; }
  bool AtEnd() const { return position_ >= end_; }
  const uint8_t* here() const { return bytes_ + position_; }

  bool Byte(uint8_t& out) {
    if (position_ >= end_) return false;
    out = bytes_[position_++];
    return true;
  }
  bool BigEndian(int width, uint32_t& out) {
    if (left() < static_cast<uint64_t>(width)) return false;
    out = 0;
    for (int i = 0; i < width; ++i) out = (out << 8) | bytes_[position_++];
    return true;
  }
  bool Skip(uint64_t count) {
    if (count > left()) return false;
    position_ += count;
    return true;
  }

  enum class VarLen { kOk, kPastEnd, kTooLong };
  VarLen ReadVarLen(uint32_t& out) {
    out = 0;
    for (int i = 0; i < kMaxVarLenBytes; ++i) {
      uint8_t byte;
      if (!Byte(byte)) return VarLen::kPastEnd;
      out = (out << 7) | (byte & 0x7Fu);
      if (byte < 0x80) return VarLen::kOk;
    }
    return VarLen::kTooLong;
  }

 private:
  const uint8_t* bytes_;
  uint64_t position_;
  uint64_t end_;
};

std::string Hex(uint8_t value) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  return std::string("0x") + kDigits[value >> 4] + kDigits[value & 0xF];
}

std::string TrackName(int32_t track) { return "track " + std::to_string(track); }

// A channel message's data bytes: one for program change and channel
// pressure, two for the rest.
int DataBytesOf(uint8_t status) {
  const int kind = status >> 4;
  return (kind == 0xC || kind == 0xD) ? 1 : 2;
}

bool IsDrumNoteOn(uint8_t status, uint8_t velocity) { return status == 0x99 && velocity > 0; }

class Walk {
 public:
  Walk(const uint8_t* bytes, uint64_t size, SmfEventVisitor* visitor)
      : bytes_(bytes), size_(size), visitor_(visitor) {}

  StrictWalk Run() {
    uint16_t declaredTracks = 0;
    if (Header(declaredTracks) && Chunks(declaredTracks)) {
      result_.wellFormed = result_.mends.empty();
      result_.mendable = !result_.mends.empty();
    }
    return result_;
  }

 private:
  bool Fail(int32_t track, uint64_t offset, std::string problem) {
    result_.problem = std::move(problem);
    result_.track = track;
    result_.offset = offset;
    return false;
  }

  bool Header(uint16_t& declaredTracks) {
    if (size_ == 0) return Fail(0, 0, "the file is empty");
    Cursor in(bytes_, 0, size_);
    uint32_t id = 0;
    uint32_t length = 0;
    if (!in.BigEndian(4, id) || id != kHeaderId) {
      return Fail(0, 0, "the file does not begin with a MIDI header chunk (\"MThd\")");
    }
    if (!in.BigEndian(4, length)) return Fail(0, 4, "the file ends inside its header chunk");
    if (length < kMinHeaderLength) {
      return Fail(
          0, 4,
          "the header chunk holds " + std::to_string(length) + " bytes, fewer than the 6 it needs");
    }
    if (length > in.left()) return Fail(0, 4, "the header chunk runs past the end of the file");
    uint32_t format = 0;
    uint32_t tracks = 0;
    uint32_t division = 0;
    in.BigEndian(2, format);
    in.BigEndian(2, tracks);
    in.BigEndian(2, division);
    if (format > 2)
      return Fail(0, 8,
                  "the header names format " + std::to_string(format) + "; only 0, 1 and 2 exist");
    if (tracks == 0) return Fail(0, 10, "the header counts no tracks");
    if ((division & 0x8000) != 0) {
      return Fail(0, 12, "the division counts SMPTE frames, not ticks per quarter note");
    }
    if (division == 0) return Fail(0, 12, "the division is 0 ticks per quarter note");
    declaredTracks = static_cast<uint16_t>(tracks);
    if (visitor_) {
      visitor_->Header(static_cast<uint16_t>(format), declaredTracks,
                       static_cast<uint16_t>(division));
    }
    result_.headerEnd = kChunkHeaderSize + length;
    return true;
  }

  void Note(MendKind kind, int32_t track, uint64_t bytes = 0) {
    result_.mends.push_back({kind, track, bytes});
  }

  bool Chunks(uint16_t declaredTracks) {
    int32_t tracks = 0;
    uint64_t position = result_.headerEnd;
    while (position < size_) {
      if (tracks == declaredTracks) {
        // Whatever follows the tracks the header counts is no part of the
        // file a reader reads: left out, however it looks.
        Note(MendKind::kBeyondCountedTracks, 0, size_ - position);
        return true;
      }
      Cursor in(bytes_, position, size_);
      uint32_t id = 0;
      uint32_t length = 0;
      if (!in.BigEndian(4, id) || !in.BigEndian(4, length)) {
        return Fail(0, position,
                    "the file ends inside the header of a chunk (" +
                        std::to_string(size_ - position) +
                        " bytes are left after the last whole chunk)");
      }
      const bool isTrack = id == kTrackId;
      if (isTrack) ++tracks;
      if (length > in.left()) {
        // A visitor still sees the events that made it into the file.
        if (isTrack && visitor_) Track(tracks, position, in.position(), size_);
        const std::string what = isTrack ? TrackName(tracks) : "a chunk that is not a track";
        return Fail(isTrack ? tracks : 0, position,
                    "the file ends inside " + what + " (its chunk claims " +
                        std::to_string(length) + " bytes, " + std::to_string(in.left()) +
                        " are left)");
      }
      if (isTrack && !Track(tracks, position, in.position(), in.position() + length)) return false;
      position = in.position() + length;
    }
    if (tracks != declaredTracks) {
      return Fail(0, 10,
                  "the header counts " + std::to_string(declaredTracks) +
                      " track(s), the file holds " + std::to_string(tracks));
    }
    return true;
  }

  bool Track(int32_t track, uint64_t chunkOffset, uint64_t begin, uint64_t end) {
    if (visitor_) visitor_->TrackStart(track, chunkOffset, end - begin);
    TrackExtent extent{chunkOffset, begin, end, false};
    Cursor in(bytes_, begin, end);
    uint64_t tick = 0;
    uint8_t running = 0;  // carried across meta and SysEx events, as imports read it
    while (!in.AtEnd()) {
      const uint64_t eventStart = in.position();
      uint32_t delta = 0;
      switch (in.ReadVarLen(delta)) {
        case Cursor::VarLen::kOk:
          break;
        case Cursor::VarLen::kPastEnd:
          return Fail(track, eventStart, "an event runs past the end of " + TrackName(track));
        case Cursor::VarLen::kTooLong:
          return Fail(track, eventStart,
                      "a delta time in " + TrackName(track) + " is longer than 4 bytes");
      }
      tick += delta;
      SmfEvent event;
      event.track = track;
      event.tick = tick;
      event.offset = in.position();
      uint8_t first = 0;
      if (!in.Byte(first))
        return Fail(track, eventStart, "an event runs past the end of " + TrackName(track));

      if (first == 0xFF || first == 0xF0 || first == 0xF7) {
        event.status = first;
        if (first == 0xFF && !in.Byte(event.data1)) {
          return Fail(track, event.offset, "a meta event runs past the end of " + TrackName(track));
        }
        uint32_t length = 0;
        const Cursor::VarLen read = in.ReadVarLen(length);
        if (read == Cursor::VarLen::kTooLong) {
          return Fail(track, event.offset,
                      "the length of a " + std::string(first == 0xFF ? "meta" : "SysEx") +
                          " event in " + TrackName(track) + " is longer than 4 bytes");
        }
        event.payload = in.here();
        event.payloadLength = length;
        if (read == Cursor::VarLen::kPastEnd || !in.Skip(length)) {
          return Fail(track, event.offset,
                      std::string(first == 0xFF ? "a meta" : "a SysEx") +
                          " event runs past the end of " + TrackName(track));
        }
        if (visitor_) visitor_->Event(event);
        if (first == 0xFF && event.data1 == kMetaEndOfTrack) {
          if (length != 0) Note(MendKind::kEndOfTrackLength, track);
          if (!in.AtEnd()) Note(MendKind::kBytesAfterEndOfTrack, track, end - in.position());
          extent.keptEnd = event.offset;
          extent.endOfTrack = true;
          result_.extents.push_back(extent);
          return true;
        }
        continue;
      }

      if (first >= 0xF0) {
        return Fail(track, event.offset,
                    "the status byte " + Hex(first) + " in " + TrackName(track) +
                        " is not defined in a file");
      }
      if (first >= 0x80) {
        running = first;
        if (!in.Byte(event.data1)) {
          return Fail(track, event.offset, "an event runs past the end of " + TrackName(track));
        }
      } else {
        if (running == 0) {
          return Fail(track, event.offset,
                      "a data byte (" + Hex(first) + ") in " + TrackName(track) +
                          " follows no channel message (running status is undefined)");
        }
        event.running = true;
        event.data1 = first;
      }
      event.status = running;
      if (DataBytesOf(running) == 2 && !in.Byte(event.data2)) {
        return Fail(track, event.offset, "an event runs past the end of " + TrackName(track));
      }
      if (event.data1 >= 0x80 || event.data2 >= 0x80) {
        return Fail(track, event.offset,
                    "a channel message in " + TrackName(track) + " has a data byte of " +
                        Hex(event.data1 >= 0x80 ? event.data1 : event.data2) +
                        ", where only 0x00 to 0x7F can stand");
      }
      if (IsDrumNoteOn(event.status, event.data2)) {
        ++result_.drumNoteOns;
        if (!result_.firstDrumNoteOnTick || tick < *result_.firstDrumNoteOnTick) {
          result_.firstDrumNoteOnTick = tick;
        }
      }
      if (visitor_) visitor_->Event(event);
    }
    // Every event is whole: its end is certain.
    Note(MendKind::kEndOfTrackAdded, track);
    result_.extents.push_back(extent);
    return true;
  }

  const uint8_t* bytes_;
  uint64_t size_;
  SmfEventVisitor* visitor_;
  StrictWalk result_;
};

}  // namespace

StrictWalk WalkStrictly(const uint8_t* bytes, uint64_t size, SmfEventVisitor* visitor) {
  return Walk(bytes, size, visitor).Run();
}

std::vector<uint8_t> MendedFile(const uint8_t* bytes, const StrictWalk& walk) {
  static constexpr uint8_t kEndOfTrack[] = {0xFF, kMetaEndOfTrack, 0x00};
  std::vector<uint8_t> out(bytes, bytes + walk.headerEnd);
  for (const TrackExtent& extent : walk.extents) {
    const uint64_t lengthAt = out.size() + 4;
    out.insert(out.end(), bytes + extent.chunkOffset,
               bytes + extent.chunkOffset + kChunkHeaderSize);
    out.insert(out.end(), bytes + extent.dataBegin, bytes + extent.keptEnd);
    if (!extent.endOfTrack) out.push_back(0x00);  // at once after the last event
    out.insert(out.end(), std::begin(kEndOfTrack), std::end(kEndOfTrack));
    const uint64_t length = out.size() - lengthAt - 4;
    for (int i = 0; i < 4; ++i) {
      out[lengthAt + static_cast<uint64_t>(i)] = static_cast<uint8_t>(length >> (24 - 8 * i));
    }
  }
  return out;
}

std::string DescribeMend(const Mend& mend) {
  const std::string bytes = std::to_string(mend.bytes) + (mend.bytes == 1 ? " byte" : " bytes");
  switch (mend.kind) {
    case MendKind::kEndOfTrackAdded:
      return TrackName(mend.track) + " had no End of Track: one was added after its last event";
    case MendKind::kBytesAfterEndOfTrack:
      return "the " + bytes + " after the End of Track of " + TrackName(mend.track) +
             " were left out";
    case MendKind::kEndOfTrackLength:
      return "the End of Track of " + TrackName(mend.track) + " carried data: written without";
    case MendKind::kBeyondCountedTracks:
      return "the " + bytes + " after the tracks the header counts were left out";
  }
  return "";
}

}  // namespace rw::groove
