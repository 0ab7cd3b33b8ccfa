// The plug-in module as the host sees it: loaded by path into a process that
// already holds the reference host's engine, reached only through its six
// exports.
#pragma once

#include <cantel/cantel.h>
#include <dlfcn.h>

#include <stdexcept>
#include <string>

class PluginModule {
 public:
  explicit PluginModule(const char* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) throw std::runtime_error(std::string("cannot load ") + path);
    version = Bind<CantelExtensionVersion_t>("CantelExtensionVersion");
    init = Bind<CantelExtensionInit_t>("CantelExtensionInit");
    enumerate = Bind<CantelExtensionEnumerate_UTF16_t>("CantelExtensionEnumerate_UTF16");
    menuStatus = Bind<CantelExtensionGetMenuStatus_t>("CantelExtensionGetMenuStatus");
    invoke = Bind<CantelExtensionInvoke_t>("CantelExtensionInvoke");
    terminate = Bind<CantelExtensionTerminate_t>("CantelExtensionTerminate");
  }
  PluginModule(const PluginModule&) = delete;
  PluginModule& operator=(const PluginModule&) = delete;

  CantelExtensionVersion_t* version;
  CantelExtensionInit_t* init;
  CantelExtensionEnumerate_UTF16_t* enumerate;
  CantelExtensionGetMenuStatus_t* menuStatus;
  CantelExtensionInvoke_t* invoke;
  CantelExtensionTerminate_t* terminate;

 private:
  template <typename Fn>
  Fn* Bind(const char* name) {
    void* symbol = dlsym(handle_, name);
    if (symbol == nullptr) throw std::runtime_error(std::string("missing export ") + name);
    return reinterpret_cast<Fn*>(symbol);
  }
  void* handle_;
};
