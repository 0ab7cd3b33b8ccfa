// Loading the engine and the plug-in by path, on POSIX and on Windows.
#ifndef CANTEL_HOST_MODULE_LOADER_H
#define CANTEL_HOST_MODULE_LOADER_H

#include <string>

namespace cantel_host {

class Module {
 public:
  // `global`: make the module's symbols visible to modules loaded later (the
  // engine, which the plug-in finds by name among the loaded modules).
  bool load(const std::string& path, bool global);
  void* symbol(const char* name) const;
  void* handle() const { return handle_; }
  const std::string& error() const { return error_; }

 private:
  void* handle_ = nullptr;
  std::string error_;
};

template <typename Function>
Function* find(const Module& module, const char* name) {
  return reinterpret_cast<Function*>(module.symbol(name));
}

}  // namespace cantel_host

#endif
