// The plug-in's own string table, loaded into fixed buffers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace rw {

// Loads string `id` in the current language into `buffer`: the buffer is
// set empty first and its last unit is always 0. Returns the buffer, or null
// when capacity is 0.
char16_t* LoadStringResource(std::uint32_t id, char16_t* buffer, std::size_t capacity);
// The 8-bit twin (UTF-8 outside Windows).
char* LoadStringResourceA(std::uint32_t id, char* buffer, std::size_t capacity);

// String `id` in the current language as a string of its own (at most 1023
// units, as a message box shows).
std::u16string StringResource(std::uint32_t id);

// `text` with each "%1", "%2", ... replaced by that argument, so that a
// translation may put them in its own order.
std::u16string Substituted(std::u16string_view text, std::initializer_list<std::u16string> args);
// String `id` with its "%1", "%2", ... replaced.
std::u16string StringResource(std::uint32_t id, std::initializer_list<std::u16string> args);

// ASCII and Latin-1 texts (the reader's, the drum names', numbers), widened.
std::u16string Widened(std::string_view text);

// The truncating load of a fixed field: cleared whole first, at most
// capacity - 1 units copied, the last unit forced to 0.
void LoadStringField(std::uint32_t id, char16_t* field, std::size_t capacity);

}  // namespace rw
