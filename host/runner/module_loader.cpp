#include "module_loader.h"

#if defined(_WIN32)
#include <windows.h>

#include <filesystem>
#else
#include <dlfcn.h>
#endif

namespace cantel_host {

#if defined(_WIN32)
bool Module::load(const std::string& path, bool) {
  handle_ = reinterpret_cast<void*>(LoadLibraryW(std::filesystem::u8path(path).wstring().c_str()));
  if (handle_ == nullptr) error_ = "LoadLibrary failed with " + std::to_string(GetLastError());
  return handle_ != nullptr;
}

void* Module::symbol(const char* name) const {
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}
#else
bool Module::load(const std::string& path, bool global) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | (global ? RTLD_GLOBAL : RTLD_LOCAL));
  if (handle_ == nullptr) error_ = dlerror();
  return handle_ != nullptr;
}

void* Module::symbol(const char* name) const {
  return handle_ == nullptr ? nullptr : dlsym(handle_, name);
}
#endif

}  // namespace cantel_host
