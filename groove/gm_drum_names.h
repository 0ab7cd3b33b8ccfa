// General MIDI percussion key names: how rwgroove reports a groove's
// instruments, and how the dialog shows them.
#pragma once

#include <string>

namespace rw::groove {

// "Acoustic Bass Drum" for key 35 ... "Open Triangle" for 81; "key N" otherwise.
std::string DrumKeyName(int key);

}  // namespace rw::groove
