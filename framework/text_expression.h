// Text expressions: the expression text record "pxxt" and the creation of a
// text expression definition "TDOS" with its font prefix, text block and
// placement.
#pragma once

#include <cstdint>

namespace rw {

// Creates (or finds) the text expression definition for `text` and answers
// its number, 0 when nothing could be created. An existing definition with
// the same prefixed text and category is reused and nothing is created.
std::uint16_t CreateTextExpression(const char16_t* text, std::uint16_t fontWord,
                                   std::uint16_t effects, std::uint16_t category,
                                   std::uint16_t searchFlag1, std::uint16_t searchFlag2,
                                   bool playbackFlag, std::uint16_t playbackValue);

}  // namespace rw
