// The command dialog (template 102).
#pragma once

#include <cstdint>

namespace rw::shell {

// The procedure the host calls with every message of the dialog; `data` is
// the address of the run's data word handed to CX_Dialog.
std::uint8_t DialogProcedure(void* dialog, std::uint32_t message, std::uint64_t wparam,
                             std::int64_t lparam, std::uint32_t* data);

}  // namespace rw::shell
