// A crash on a groove's downbeat: the plug-in places the measure after each
// fill with one, as a drummer lands a fill.
//
// The crash goes into the drum track (the first track with a sounding
// channel-10 note-on) at tick 0. A closed hi-hat or ride stroke there is the
// hand that moves to the crash, so it becomes the crash, and its note-off
// with it; otherwise a crash is added, as loud as the loudest stroke on the
// downbeat (100 on a silent one), released a thirty-second later. The rest
// of the file keeps its bytes: a stroke that becomes the crash changes its
// key bytes only, an added one is inserted into the drum track's chunk with
// the delta times around it split and, where an event after it relied on
// running status, that event's status written out.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace rw::groove {

enum class CrashOutcome : uint8_t {
  kStrokeBecameCrash,  // a closed hi-hat or ride stroke at tick 0 is now the crash
  kCrashAdded,         // a crash stroke was added at tick 0
  kAlreadyCrash,       // a crash (49 or 57) already sounds at tick 0: the file is unchanged
  kRefused,            // no well-formed file, or no drum stroke in it: nothing written
};

struct CrashDownbeat {
  CrashOutcome outcome = CrashOutcome::kRefused;
  std::vector<uint8_t> file;  // with its crash on the downbeat; empty when refused
  int32_t drumTrack = 0;      // 1-based; 0 when refused
};

// `file` is a groove as the import would read it: well-formed by the strict
// walk. The result passes the strict walk too, and the reader gives it the
// same meter and length.
CrashDownbeat WithCrashOnDownbeat(std::span<const uint8_t> file);

}  // namespace rw::groove
