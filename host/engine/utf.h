// UTF-8 <-> UTF-16 for the engine's texts and paths. Invalid input is
// replaced, never rejected: the host shows what it was given.
#ifndef CANTEL_ENGINE_UTF_H
#define CANTEL_ENGINE_UTF_H

#include <string>

namespace cantel_engine {

std::u16string utf8_to_utf16(const std::string& text);
std::string utf16_to_utf8(const std::u16string& text);
// Reads a zero-terminated UTF-16 text of at most `limit` units.
std::u16string read_utf16(const char16_t* text, std::size_t limit);

}  // namespace cantel_engine

#endif
