#include <windows.h>

#include "platform.h"

namespace rw::platform {

// The desktop editions first, then the engine libraries that host the same
// interface (the reference host's engine among them).
const char* const kHostModuleNames[kHostModuleCount] = {
    "Cantel.exe",          "CantelPro.exe",      "CantelSongWriter.exe", "CantelAllegro.exe",
    "CantelPrintMusic.exe", "CantelNotePad.exe", "CantelGuitar.exe",     "CantelEducation.exe",
    "CantelReader.exe",    "CantelTrial.exe",    "CantelEngine.dll",     "CantelEngine64.dll",
    "CantelCore.dll",
};

ModuleHandle GetLoadedModule(const char* fileName) {
  return reinterpret_cast<ModuleHandle>(::GetModuleHandleA(fileName));
}

void* GetExport(ModuleHandle module, const char* name) {
  if (module == nullptr) return nullptr;
  return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(module), name));
}

ModuleHandle OwnModule() {
  HMODULE own = nullptr;
  ::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&OwnModule), &own);
  return own;
}

ModuleHandle DialogControlModule() {
  return reinterpret_cast<ModuleHandle>(::GetModuleHandleA("user32.dll"));
}

}  // namespace rw::platform
