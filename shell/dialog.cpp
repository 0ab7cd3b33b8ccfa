#include "dialog.h"

#include "host_api.h"
#include "module_state.h"

namespace rw::shell {

// Until the command's controls are wired up, the dialog closes as soon as
// it has opened.
std::uint8_t DialogProcedure(void* dialog, std::uint32_t message, std::uint64_t, std::int64_t,
                             std::uint32_t*) {
  try {
    switch (message) {
      case CX_WM_DESTROY:
      case CX_WM_CLOSE:
        dialogRunning = 0;
        return 0;
      case CX_WM_INITDIALOG:
        host::CX_EndDialog(dialog, host::kVersion);
        return 1;
      default:
        return 0;
    }
  } catch (...) {
    return 0;
  }
}

}  // namespace rw::shell
