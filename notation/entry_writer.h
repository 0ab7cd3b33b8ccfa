// Slash entries of their own for the slash notation style: every measure of
// the target staff that the import left empty gets one rest per beat, which
// the slash staff style shows as a slash.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::notation {

// Fills every empty measure of every staff of the region. False when a
// measure record could not be loaded; the measures before it stay filled.
bool WriteSlashEntries(const ERegion& region);

// Writes the slashes of one measure into layer 1 of the staff in `slot` of
// staff list `list`. `measureRecord` is the measure's loaded "SMOS" record.
void FillMeasureWithSlashes(std::uint16_t list, std::uint16_t slot, std::uint16_t measure,
                            const std::uint8_t* measureRecord);

// Appends one slash of `duration` to a loaded frame. False when the host
// did not add an entry, so that the caller stops filling.
bool AppendSlashEntry(void* frame, std::int32_t duration);

}  // namespace rw::notation
