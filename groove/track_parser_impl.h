// The events of one track chunk: musical time, drum events, the silencing of
// every other channel event in place, and meta events as time marks.
#pragma once

#include <cstring>
#include <limits>

#include "event_runs_impl.h"
#include "smf_reader_impl.h"

namespace rw::groove {

template <class Store>
void BasicSmfReader<Store>::ResetTrackState(int32_t trackNumber) {
  track_ = TrackState{};
  track_.meter.ticksPerBeat = division_;
  track_.meter.ticksPerMeasure = 4 * division_;
  chunkConsumed_ = 0;
  markPending_ = false;
  // Range marks are made in track 1 only.
  startMarkDone_ = trackNumber >= 2;
  endMarkDone_ = trackNumber >= 2 || lastMeasure_ == kNoLastMeasure;
}

template <class Store>
bool BasicSmfReader<Store>::ParseTrack(int32_t trackNumber, bool& drumEventsFound, bool collect) {
  ReadChunkHeader();
  if (std::memcmp(chunkId_.data(), "MTrk", 4) != 0) {
    Alert(text::kInvalidTrackChunkId);
    return false;
  }
  if (chunkLength_ < 0) throw RangeCheckError("track chunk length with its top bit set");
  ResetTrackState(trackNumber);

  while (chunkConsumed_ < chunkLength_) {
    if constexpr (WindowedStore<Store>) {
      if (ReadChannelEventsInWindow(collect, drumEventsFound)) continue;
    }

    const int32_t delta = ReadVarLen();
    if (delta > 0 && RangeMarksPending()) MakeRangeMarks(delta);
    AdvanceTime(delta);

    const int64_t eventStart = readPos_;
    uint8_t status = ReadByte();
    uint8_t firstData;
    bool running = false;
    if (status >= 0x80) {
      firstData = ReadByte();  // for a meta event, its type
      if (status < 0xF0) track_.runningStatus = status;
    } else {
      firstData = status;
      if (track_.runningStatus == 0) {
        Alert(text::kRunningStatusUndefined);
        return false;
      }
      status = track_.runningStatus;
      running = true;
    }

    if (status == 0xF0) {
      SkipSysEx();
    } else if (status < 0xFF) {
      HandleChannelEvent(status, firstData, eventStart, running, collect, drumEventsFound);
    } else {
      switch (HandleMetaEvent(firstData, trackNumber)) {
        case MetaOutcome::kNext:
          break;
        case MetaOutcome::kEndOfTrack:
          return true;
        case MetaOutcome::kFail:
          return false;
      }
    }
  }

  // The chunk ran out without an end-of-track event.
  if (markPending_) InsertMark(currentMark_);
  StartMarkHere();
  currentMark_.endFlag = 1;
  InsertMark(currentMark_);
  Alert(text::kEndOfTrackMissing);
  SkipToChunkEnd();
  return true;
}

template <class Store>
void BasicSmfReader<Store>::AdvanceTime(int32_t delta) {
  detail::AdvanceTime(track_.absoluteTime, track_.measure, track_.tickInMeasure,
                      track_.meter.ticksPerMeasure, delta);
}

template <class Store>
void BasicSmfReader<Store>::MakeRangeMarks(int32_t delta) {
  // Deliberately ignores the tick within the measure.
  const int64_t reached =
      static_cast<int64_t>(track_.measure) + delta / track_.meter.ticksPerMeasure;
  if (firstMeasure_ > 1 && !startMarkDone_ && reached >= firstMeasure_) {
    MakeRangeMark(firstMeasure_);
    startMarkDone_ = true;
  }
  if (!endMarkDone_ && reached >= static_cast<int64_t>(lastMeasure_) + 1) {
    MakeRangeMark(detail::Wrap32(static_cast<int64_t>(lastMeasure_) + 1));
    endMarkDone_ = true;
  }
}

template <class Store>
void BasicSmfReader<Store>::MakeRangeMark(int32_t target) {
  if (markPending_) InsertMark(currentMark_);
  StartMarkHere();
  MarkMeter(currentMark_, track_.meter);
  currentMark_.tickInMeasure = 0;
  currentMark_.positionInMeasure = 0;
  // From the start of the present measure, a whole measure per step to the
  // target: computed in one go.
  const int64_t measureStart = static_cast<int64_t>(track_.absoluteTime) - track_.tickInMeasure;
  const int64_t steps = static_cast<int64_t>(track_.measure) - target;
  currentMark_.measure = target;
  currentMark_.absoluteTick = detail::Wrap32(measureStart - steps * track_.meter.ticksPerMeasure);
  markPending_ = true;
}

template <class Store>
void BasicSmfReader<Store>::InsertMark(const TimeMark& mark) {
  if (mark.tickInMeasure == 0) {
    if (mark.measure == firstMeasure_) startMarkDone_ = true;
    if (mark.measure == static_cast<int64_t>(lastMeasure_) + 1) endMarkDone_ = true;
  }
  marks_.Insert(mark);
}

template <class Store>
void BasicSmfReader<Store>::SkipSysEx() {
  // A fixed skip: the length field is not interpreted.
  for (int i = 0; i < 4; ++i) ReadByte();
  while (ReadByte() != 0xF7) {
  }
}

template <class Store>
void BasicSmfReader<Store>::HandleChannelEvent(uint8_t status, uint8_t firstData,
                                               int64_t eventStart, bool running, bool collect,
                                               bool& drumEventsFound) {
  const bool secondData = !detail::OneDataByte(status);
  if (secondData) ReadByte();
  if (collect && (status & 0x0F) == 9) {
    RecordDrumEvent(status, firstData, drumEventsFound);
  } else if (!running) {
    SilenceEvent(eventStart, secondData);
  } else if (!secondData && !ReadsByTheLiteralRules<Store> && InsideWholeChunk(eventStart)) {
    SilenceRunningEvent(eventStart);
  }
  // Events in running status with two data bytes are left alone: after the
  // rewrite they follow the status 0x89 and read as note offs on channel 10.
}

template <class Store>
void BasicSmfReader<Store>::SilenceRunningEvent(int64_t eventStart) {
  // A one-data-byte message in running status after a silenced one. A
  // reader that never saw the original status reads it under 0x89, which
  // takes two data bytes: it becomes a note off of key 0, velocity 64, as
  // the rewritten event before it.
  writePos_ = eventStart;
  WriteByte(0x00);
  InsertByte();
  // The inserted byte is counted as read: the rewrite changes how the event
  // is written, never where the track's reading ends.
  ++chunkConsumed_;
  writePos_ = eventStart + 1;
  WriteByte(0x40);
}

template <class Store>
void BasicSmfReader<Store>::SilenceEvent(int64_t eventStart, bool secondData) {
  // A note off on channel 10, key 0, velocity 64, written over the event.
  writePos_ = eventStart;
  WriteByte(0x89);
  if (!secondData) InsertByte();
  writePos_ = eventStart + 1;
  WriteByte(0x00);
  WriteByte(0x40);
}

template <class Store>
typename BasicSmfReader<Store>::MetaOutcome BasicSmfReader<Store>::HandleMetaEvent(
    uint8_t type, int32_t trackNumber) {
  const int32_t length = ReadVarLen();
  if (static_cast<uint32_t>(length) > static_cast<uint32_t>(kMaxMetaLength)) {
    throw RangeCheckError("meta event longer than 1024 bytes");
  }
  const int64_t dataStart = readPos_;
  ReadBytes(metaData_.data(), length);
  metaData_[static_cast<std::size_t>(length)] = 0;
  MoveReadPosition(dataStart + length);

  if (!markPending_ || currentMark_.absoluteTick != track_.absoluteTime) {
    if (markPending_) {
      InsertMark(currentMark_);
      markPending_ = false;
    }
    StartMarkHere();
  }
  const bool atStartOfTrack1 = trackNumber == 1 && track_.absoluteTime == 0;

  switch (type) {
    case 0x2F:
      SkipToChunkEnd();
      if (trackNumber == 1) {
        currentMark_.endFlag = 1;
        InsertMark(currentMark_);
      }
      return MetaOutcome::kEndOfTrack;
    case 0x51: {
      const int32_t tempo = metaData_[0] * 65536 + metaData_[1] * 256 + metaData_[2];
      currentMark_.tempo = tempo;
      currentMark_.beatsPerMinute =
          tempo == 0 ? std::numeric_limits<double>::infinity() : 60000000.0 / tempo;
      if (atStartOfTrack1) tempoSnapshot_ = currentMark_;
      markPending_ = true;
      return MetaOutcome::kNext;
    }
    case 0x54:
      for (std::size_t i = 0; i < currentMark_.smpteOffset.size(); ++i) {
        currentMark_.smpteOffset[i] = metaData_[i];
      }
      if (atStartOfTrack1) smpteSnapshot_ = currentMark_;
      markPending_ = true;
      return MetaOutcome::kNext;
    case 0x58:
      if (track_.absoluteTime > 0) {
        Alert(text::kTimeSignatureChanges);
        return MetaOutcome::kFail;
      }
      if (track_.tickInMeasure % track_.meter.ticksPerBeat != 0) {
        Alert(text::kOffbeatTimeSignature);
        track_.absoluteTime =
            detail::Wrap32(static_cast<int64_t>(track_.absoluteTime) - track_.tickInMeasure);
        track_.tickInMeasure = 0;
        currentMark_.beat = 1;
      }
      SetTimeSignature(metaData_[0], metaData_[1]);
      if (trackNumber == 1 && track_.absoluteTime == 0) timeSignatureSnapshot_ = currentMark_;
      markPending_ = true;
      return MetaOutcome::kNext;
    default:
      return MetaOutcome::kNext;
  }
}

template <class Store>
void BasicSmfReader<Store>::SetTimeSignature(uint8_t numerator, uint8_t denominatorPower) {
  // A denominator beyond 2^30 cannot be held, and any above four times the
  // division gives no ticks per beat: both end the load.
  const int32_t fourQuarters = 4 * division_;
  if (denominatorPower > 30 || (int64_t{1} << denominatorPower) > fourQuarters) {
    throw RangeCheckError("time signature with 0 ticks per beat");
  }
  if (numerator == 0) throw RangeCheckError("time signature with 0 ticks per measure");
  Meter& meter = track_.meter;
  meter.numerator = numerator;
  meter.denominator = int32_t{1} << denominatorPower;
  meter.ticksPerBeat = fourQuarters / meter.denominator;
  meter.ticksPerMeasure = meter.numerator * meter.ticksPerBeat;
  MarkMeter(currentMark_, meter);
}

}  // namespace rw::groove
