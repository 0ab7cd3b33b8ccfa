// The command dialog (template 102).
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::shell {

inline constexpr std::uint16_t kDialogTemplate = 102;

// The procedure the host calls with every message of the dialog; `data` is
// the address of dialogFlags handed to CX_Dialog.
std::uint8_t DialogProcedure(void* dialog, std::uint32_t message, std::uint64_t wparam,
                             std::int64_t lparam, std::uint32_t* data);

}  // namespace rw::shell
