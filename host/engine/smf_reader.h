// The host's own Standard MIDI File reader: just enough to find the note
// onsets of every track and channel. Independent of any plug-in's reader on
// purpose, so that a plug-in's filter is checked against a second opinion.
#ifndef CANTEL_ENGINE_SMF_READER_H
#define CANTEL_ENGINE_SMF_READER_H

#include <cstdint>
#include <string>
#include <vector>

namespace cantel_engine {

struct SmfOnset {
  std::uint64_t tick = 0;  // from the start of the file
  std::uint8_t channel = 0;
  std::uint8_t key = 0;
  std::uint8_t velocity = 0;
};

struct SmfContent {
  std::uint16_t format = 0;
  std::uint16_t tracks = 0;
  std::uint16_t division = 0;  // ticks per quarter note
  std::vector<SmfOnset> onsets;  // note-ons with velocity above 0, by tick
};

struct SmfResult {
  bool ok = false;
  std::string error;
  SmfContent content;
};

SmfResult read_smf(const std::vector<std::uint8_t>& bytes);

}  // namespace cantel_engine

#endif
