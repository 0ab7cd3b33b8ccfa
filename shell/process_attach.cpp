// The module belongs only in a process that hosts the plug-in interface.
#include "host_api.h"
#include "module_state.h"
#include "platform.h"

#if defined(_WIN32)
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  if (rw::host::FindHostModule() == nullptr) return FALSE;
  rw::shell::moduleState.instance = instance;
  return TRUE;
}

#else

// A shared library here cannot refuse to load: without a host every wrapper
// simply answers its fallback.
__attribute__((constructor)) static void AttachToProcess() {
  rw::host::FindHostModule();
  rw::shell::moduleState.instance = rw::platform::OwnModule();
}

#endif
