// The header chunk and the walk over the track chunks.
#pragma once

#include <cstring>

#include "smf_reader_impl.h"

namespace rw::groove {

template <class Store>
bool BasicSmfReader<Store>::ReadHeader() {
  ReadChunkHeader();
  if (std::memcmp(chunkId_.data(), "MThd", 4) != 0) {
    Alert(text::kInvalidHeaderChunkId);
    return false;
  }
  if (chunkLength_ < 6) {
    Alert(text::kInvalidHeaderChunkLength);
    return false;
  }
  if (chunkLength_ > 6) Alert(text::kHeaderTooLong);

  format_ = ReadU16();
  if (format_ >= 3) {
    Alert(text::kInvalidFormatId);
    return false;
  }
  trackCountPos_ = readPos_;
  trackCount_ = ReadU16();
  if (trackCount_ < 1) {
    Alert(text::kNoTracks);
    return false;
  }
  // All tracks of a format 2 file are still parsed and filtered.
  if (format_ == 2 && trackCount_ > 1) Alert(text::kFormat2OnlyTrack1);
  if (trackCount_ > 1 && format_ == 0) {
    Alert(text::kFormat0OneTrack);
    return false;
  }

  int32_t division = ReadU16();
  if (division > 32767) {
    // The frame rate is stored as a negative byte; read unsigned it is never
    // one of the usual rates, so an SMPTE file always draws the alert and
    // gets a large division. Kept as the program has always done it.
    int32_t frames = (division / 256) & 0xFF;
    if (frames == 29) {
      frames = 30;
    } else if (frames != 24 && frames != 25 && frames != 30) {
      Alert(text::kUnusualFrameRate);
    }
    division = (division & 0xFF) * frames;
  }
  if (division == 0) throw RangeCheckError("division of 0");
  division_ = division;

  SkipToChunkEnd();
  timeSignatureSnapshot_.ticksPerBeat = division_;
  timeSignatureSnapshot_.ticksPerMeasure = 4 * division_;
  return true;
}

template <class Store>
bool BasicSmfReader<Store>::ChunksLieInFile() const {
  // The chunk headers alone, read before anything else is: one step per
  // chunk, whatever its size.
  const uint64_t size = store_.size();
  uint64_t position = 0;
  while (position < size) {
    if (size - position < 8) return false;
    uint64_t length = 0;
    for (uint64_t i = 4; i < 8; ++i) length = (length << 8) | store_.Get(position + i);
    if (length > size - position - 8) return false;
    position += 8 + length;
  }
  return true;
}

template <class Store>
bool BasicSmfReader<Store>::LoadTracks() {
  // Whatever way the load ends, the caller finds the filtered file in place.
  struct FlushOnExit {
    BasicSmfReader& reader;
    ~FlushOnExit() { reader.FlushBuffer(); }
  } flushOnExit{*this};

  Initialise();
  rewritesRunningEvents_ = !ReadsByTheLiteralRules<Store> && ChunksLieInFile();
  if (!ReadHeader()) return false;

  drumNotesFound_ = false;
  for (int32_t track = 1; track <= trackCount_;) {
    const int64_t trackStart = readPos_;
    bool trackHasDrums = false;
    if (!ParseTrack(track, trackHasDrums, !drumNotesFound_)) return false;
    if (trackHasDrums) drumNotesFound_ = true;
    if (!trackHasDrums && track >= 2) {
      // Neither the conductor track nor the drum track: the whole chunk
      // leaves the file and the next one is parsed under the same number.
      CutTo(trackStart);
      --trackCount_;
      writePos_ = trackCountPos_;
      WriteU16(trackCount_);
      continue;
    }
    ++track;
  }
  return !marks_.empty();
}

}  // namespace rw::groove
