// Writing a played groove straight, before a notation program's MIDI import
// places it: every stroke moves to the nearest point of its beat's grid
// (beat_grid.h, grid_choice.h), strokes of one key on one point become the
// loudest of them, electronic-kit keys become General MIDI ones
// (drum_key_map.h), and every other event stays where it is.
//
// Two walks over the filtered file, and no table of its events: the first
// measures the timing and chooses the grids (groove_survey.h), the second
// writes the straight file as it goes (straight_stream.h). Time and memory
// grow with the file's size, memory only by the straight file itself.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "beat_grid.h"
#include "drum_key_map.h"
#include "groove_pattern.h"
#include "played_timing.h"

namespace rw::groove {

// The meter of a loaded groove: the reader's time-signature snapshot.
GrooveMeter MeterOf(const GroovePattern& pattern);

struct StraighteningReport {
  std::vector<BeatGrid> beatGrids;  // one per beat of the meter, from the barline
  uint64_t onsetsBefore = 0;        // sounding channel-10 note-ons of the input
  uint64_t onsetsAfter = 0;         // of the output
  uint64_t strokesMerged = 0;       // into a louder stroke of their key on their point
  uint64_t strokesMoved = 0;        // written at a tick other than the one they were played at
  std::vector<DrumKeyMapping> mappedKeys;       // the keys met that were mapped, in key order
  std::vector<uint8_t> keysOutsideGeneralMidi;  // distinct keys outside 35-81 still written
  uint64_t clampedDeltas = 0;  // gaps too long for a delta time; 0 in any real groove
};

struct StraightGroove {
  bool written = false;
  std::string problem;  // why not: the input fails the strict walk, or the meter is not its own
  std::vector<uint8_t> bytes;
  StraighteningReport report;
};

// Writes a played groove straight. `filtered` is the reader's filtered file
// and `meter` its meter (MeterOf the load). The caller has measured the
// groove (MeasurePlayedTiming, or StraightenIfPlayed below) and found it
// played: a programmed groove must never be rewritten, and this function
// does not look.
//
// Same format, division and tracks. Strokes are merged within their track:
// the reader keeps a single drum track. Each stroke is released (a note-on
// of velocity 0, which keeps running status) at its new tick plus the
// length it was held, at least a tick and at most up to its key's next
// stroke; at one tick releases come first, then the events kept in their
// order, then strokes. The result passes the strict walk and holds no more
// sounding note-ons than the input. `storage` lends its allocation to the
// straight file's bytes.
StraightGroove Straighten(std::span<const uint8_t> filtered, const GrooveMeter& meter,
                          std::vector<uint8_t> storage = {});

// The whole step the command takes: the groove's timing is measured, and
// only a played groove is written straight (by the second walk, which a
// programmed groove never costs).
struct TimingStep {
  std::optional<PlayedTiming> timing;      // nothing when the file fails the strict walk
  std::optional<StraightGroove> straight;  // only for a played groove
};
TimingStep StraightenIfPlayed(std::span<const uint8_t> filtered, const GrooveMeter& meter,
                              std::vector<uint8_t> storage = {});

}  // namespace rw::groove
