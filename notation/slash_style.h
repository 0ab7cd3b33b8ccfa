// The staff style "Rhythm Weave Slash Notation" that shows a staff as
// rhythm slashes: created once per document and found again by its words.
#pragma once

#include <cstdint>

namespace rw::notation {

// True for a staff style definition ("YSOS") whose kind and option words
// make it a slash style, whatever its name.
bool IsSlashStyle(const std::uint8_t* definition);

// True when staff style `number` loads and is a slash style.
bool IsSlashStyleNumber(std::uint16_t number);

// The first slash style among numbers 1 to 999, else a new one; 0 when the
// host created none.
std::uint16_t FindOrCreateSlashStyle();

}  // namespace rw::notation
