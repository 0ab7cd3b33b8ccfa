// A separate look at a filtered groove file for its authors: does the drum
// track carry a time signature of its own? The host's import takes the
// meter of the track it places, so a drum track without one reads as 4/4.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace rw::tools {

// For the second track chunk of a Standard MIDI File: whether it holds a
// time-signature event. Empty when the file has no second track chunk or it
// cannot be walked.
std::optional<bool> SecondTrackHasTimeSignature(const uint8_t* file, std::size_t size);

}  // namespace rw::tools
