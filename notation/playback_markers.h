// The text expressions "<HP off>" and "<HP on>" that switch the host's HP
// playback off over the written groove and on again behind it, on the
// target staff only.
#pragma once

#include <cstdint>

namespace rw::notation {

inline constexpr std::uint16_t kPlaybackOnType = 16;
inline constexpr std::uint16_t kPlaybackOffType = 17;

// "<HP off>" at the region's first measure, unless playback is already off
// there: an "<HP off>" in that measure, or as the last marker within the 25
// measures before it. An "<HP on>" in that measure is replaced. True when a
// marker was added.
bool AddPlaybackOffMarker(std::uint16_t instrument, std::uint16_t startMeasure);

// "<HP on>" at `measure` (the one after the region) unless a marker is
// already there. True when a marker was added.
bool AddPlaybackOnMarker(std::uint16_t instrument, std::uint16_t measure);

// Creates the expression `text` with playback type `type` and assigns it
// to the staff in `measure`. With `markerFlag` the document's expression font
// is used with effects bit 7 set. False when nothing could be created.
bool CreateMarkerExpression(const char16_t* text, std::uint16_t instrument, std::uint16_t measure,
                            std::uint16_t type, bool markerFlag);

}  // namespace rw::notation
