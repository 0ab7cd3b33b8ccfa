// Cursor and edit operations of BasicSmfReader. Included by the .cpp files
// that instantiate the reader (and by tests that instantiate it over their
// own store).
#pragma once

#include "smf_reader.h"

namespace rw::groove {

template <class Store>
void BasicSmfReader<Store>::Alert(const char* message) {
  // A broken file can raise a diagnostic per byte; past the bound the load
  // ends instead of showing more.
  if (diagnosticsShown_ >= kMaxDiagnostics) throw RangeCheckError("too many diagnostics");
  ++diagnosticsShown_;
  sink_.Show(message);
}

template <class Store>
void BasicSmfReader<Store>::Initialise() {
  MoveReadPosition(0);
  chunkConsumed_ = 0;
  division_ = 1024;
  diagnosticsShown_ = 0;
  // Deliberately at tick 1, not 0; ticksPerBeat stays as the records hold it.
  for (TimeMark* snapshot : {&smpteSnapshot_, &timeSignatureSnapshot_, &tempoSnapshot_}) {
    StartMark(*snapshot, 1024, 1, 1, 0);
  }
  timeSignatureSnapshot_.numerator = 4;
  timeSignatureSnapshot_.denominator = 4;
  tempoSnapshot_.tempo = 1000000;
  tempoSnapshot_.beatsPerMinute = 60.0;
}

template <class Store>
void BasicSmfReader<Store>::MoveReadPosition(int64_t position) {
  if (position < 0 || static_cast<uint64_t>(position) > store_.capacity()) {
    throw RangeCheckError("read position outside the buffer");
  }
  if (position < readPos_) {
    WriteStaleLengthField();
    store_.Rewind(static_cast<uint64_t>(position));
  }
  readPos_ = position;
}

template <class Store>
void BasicSmfReader<Store>::ReadChunkHeader() {
  WriteStaleLengthField();
  uint8_t id[4];
  ReadBytes(id, 4);
  for (int i = 0; i < 4; ++i) chunkId_[static_cast<std::size_t>(i)] = static_cast<char>(id[i]);
  chunkId_[4] = '\0';
  chunkLengthPos_ = readPos_;
  chunkLength_ = ReadU32();
  chunkEnd_ = readPos_ + chunkLength_;
}

template <class Store>
void BasicSmfReader<Store>::InsertByte() {
  const int64_t position = readPos_;
  if (position < 0) throw RangeCheckError("insertion outside the buffer");
  store_.Insert(static_cast<uint64_t>(position));
  const int64_t length = chunkLength_ + 1;
  chunkLength_ = length;
  readPos_ = position + 1;
  chunkEnd_ += 1;
  // The inserted byte is stepped over without counting as consumed; the
  // chunk's length field follows the growth so the chunk stays well-formed.
  // A file of short messages grows at nearly every event, so the field is
  // written once, with its last value, before anything else can look at
  // those bytes; the write position is left where writing it now would
  // leave it. A field outside the allocation is written now, so that the
  // failure comes here.
  const auto fieldPos = static_cast<uint64_t>(chunkLengthPos_);
  if (fieldPos + 4 <= store_.capacity()) {
    lengthFieldStale_ = true;
    writePos_ = chunkLengthPos_ + 4;
  } else {
    writePos_ = chunkLengthPos_;
    WriteU32(length);
  }
}

template <class Store>
void BasicSmfReader<Store>::WriteStaleLengthField() {
  if (!lengthFieldStale_) return;
  lengthFieldStale_ = false;
  // Inside the allocation (checked when it went stale), so this cannot throw;
  // the write position stays where the last write left it.
  const int64_t writePos = writePos_;
  writePos_ = chunkLengthPos_;
  WriteU32(chunkLength_);
  writePos_ = writePos;
}

template <class Store>
void BasicSmfReader<Store>::CutTo(int64_t position) {
  WriteStaleLengthField();
  if (position < 0 || position > readPos_) throw RangeCheckError("cut outside the buffer");
  store_.Cut(static_cast<uint64_t>(position), static_cast<uint64_t>(readPos_));
  chunkEnd_ += position - readPos_;
  readPos_ = position;
}

}  // namespace rw::groove
