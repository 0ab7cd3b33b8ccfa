// Messages from the plug-in's string table, shown by the host with no owner
// window. The framework's only voice: everything else in it is silent.
#pragma once

#include <cstdint>
#include <string_view>

namespace rw {

// Shows string `id` in the current language with a message-box style;
// returns the button the user pressed (0 when the host cannot show it).
std::uint16_t ShowMessage(std::uint32_t id, std::uint16_t style);
// The same, with the string's "%s" replaced by `argument`.
std::uint16_t ShowMessage(std::uint32_t id, std::uint16_t style, std::u16string_view argument);
// Asks string `id` as a Yes/No question; true only for Yes.
bool AskYesNo(std::uint32_t id);

}  // namespace rw
