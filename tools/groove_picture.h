// The drum grid of a groove file as the plug-in would place it: the sounding
// drum notes of its filtered file, measured in the groove's own meter.
#pragma once

#include <span>
#include <string>

#include "drum_grid.h"
#include "groove_examination.h"

namespace rw::tools {

// `filtered` is the file the reader left (after `InspectGroove`).
DrumGrid GrooveGrid(const std::string& name, const GrooveInspection& inspection,
                    std::span<const uint8_t> filtered);

}  // namespace rw::tools
