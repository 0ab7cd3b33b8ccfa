// The POSIX host draws the dialog's controls itself: there is no font of the
// plug-in's to make or delete.
#include "platform.h"

namespace rw::platform {

FontHandle CreateFixedWidthFont(void*) { return nullptr; }

void DeleteFont(FontHandle) {}

}  // namespace rw::platform
