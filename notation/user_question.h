// A Yes/No question to the user, from the plug-in's string table.
#pragma once

#include <cstdint>

namespace rw::notation {

// Shows string `stringId` with the Yes/No question style; true only for Yes.
bool AskYesNo(std::uint32_t stringId);

}  // namespace rw::notation
