// General MIDI percussion key names: how rwgroove reports a groove's
// instruments, and how the dialog shows them.
#pragma once

#include <string>

namespace rw::groove {

// "Acoustic Bass Drum" for key 35 ... "Open Triangle" for 81; "key N" otherwise.
std::string DrumKeyName(int key);

// The names the starter library's pattern descriptions use, at most three
// letters: "BD" for key 36, "SN" for 38, "HH" for 42 ...; "k22" for a key
// General MIDI does not name.
std::string DrumKeyShortName(int key);

}  // namespace rw::groove
