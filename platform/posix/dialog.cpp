#include <cantel/cx_dialog.h>

#include "platform.h"

namespace rw::platform {
namespace {

// The host owns the dialog's controls here and exports the message calls
// beside its CX_ functions; they are bound once, like a host function.
template <typename Fn>
Fn* BoundFromHost(const char* name) {
  return reinterpret_cast<Fn*>(GetExport(HostModule(), name));
}

}  // namespace

std::int64_t SendDlgItemMessageW(void* dialog, int control, std::uint32_t message,
                                 std::uint64_t wparam, std::int64_t lparam) {
  static SendDlgItemMessageW_t* const send = BoundFromHost<SendDlgItemMessageW_t>("SendDlgItemMessageW");
  return send != nullptr ? send(dialog, control, message, wparam, lparam) : 0;
}

std::int64_t SendDlgItemMessageA(void* dialog, int control, std::uint32_t message,
                                 std::uint64_t wparam, std::int64_t lparam) {
  static SendDlgItemMessageA_t* const send = BoundFromHost<SendDlgItemMessageA_t>("SendDlgItemMessageA");
  return send != nullptr ? send(dialog, control, message, wparam, lparam) : 0;
}

}  // namespace rw::platform
