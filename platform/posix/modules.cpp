#include <dlfcn.h>

#include "platform.h"

namespace rw::platform {

// The desktop editions first, then the engine libraries that host the same
// interface (the reference host's engine among them).
const char* const kHostModuleNames[kHostModuleCount] = {
    "cantel",           "cantel-pro",         "cantel-songwriter",
    "cantel-allegro",   "cantel-printmusic",  "cantel-notepad",
    "cantel-guitar",    "cantel-education",   "cantel-reader",
    "cantel-trial",     "libCantelEngine.so", "libCantelEngine.so.1",
    "libCantelCore.so",
};

ModuleHandle GetLoadedModule(const char* fileName) {
  // RTLD_NOLOAD only answers for a module that is already in the process;
  // the extra reference it takes is harmless because the handle is kept for
  // the life of the process anyway.
  return dlopen(fileName, RTLD_NOW | RTLD_NOLOAD);
}

void* GetExport(ModuleHandle module, const char* name) {
  if (module == nullptr) return nullptr;
  return dlsym(module, name);
}

ModuleHandle OwnModule() {
  static const ModuleHandle own = [] {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&OwnModule), &info) == 0 || info.dli_fname == nullptr) {
      return ModuleHandle{};
    }
    return dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
  }();
  return own;
}

ModuleHandle DialogControlModule() { return HostModule(); }

}  // namespace rw::platform
