// General MIDI percussion key names, for the reports of rwgroove.
#pragma once

#include <string>

namespace rw::tools {

// "Acoustic Bass Drum" for key 35 ... "Open Triangle" for 81; "key N" otherwise.
std::string DrumKeyName(int key);

}  // namespace rw::tools
