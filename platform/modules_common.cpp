#include "platform.h"

namespace rw::platform {

ModuleHandle HostModule() {
  static const ModuleHandle host = [] {
    for (const char* name : kHostModuleNames) {
      if (ModuleHandle module = GetLoadedModule(name)) return module;
    }
    return ModuleHandle{};
  }();
  return host;
}

}  // namespace rw::platform
