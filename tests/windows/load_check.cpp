// Loads the plug-in DLL as Cantel would, after loading a host module or
// without one, and reports what Windows (or Wine) made of it:
//   load_check [--engine ENGINE.dll] PLUGIN.dll
// prints "loaded" with the plug-in's exports, or "refused"; exit 0 / 1.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <initializer_list>

int wmain(int argc, wchar_t** argv) {
  const wchar_t* engine = nullptr;
  const wchar_t* plugin = nullptr;
  for (int i = 1; i < argc; ++i) {
    if (std::wcscmp(argv[i], L"--engine") == 0 && i + 1 < argc) {
      engine = argv[++i];
    } else {
      plugin = argv[i];
    }
  }
  if (plugin == nullptr) {
    std::fputs("usage: load_check [--engine ENGINE.dll] PLUGIN.dll\n", stderr);
    return 2;
  }
  if (engine != nullptr && LoadLibraryW(engine) == nullptr) {
    std::fprintf(stderr, "cannot load the engine (error %lu)\n", GetLastError());
    return 2;
  }
  HMODULE module = LoadLibraryW(plugin);
  if (module == nullptr) {
    std::puts("refused");
    return 1;
  }
  std::puts("loaded");
  for (const char* name : {"CantelExtensionVersion", "CantelExtensionInit",
                           "CantelExtensionEnumerate_UTF16", "CantelExtensionGetMenuStatus",
                           "CantelExtensionInvoke", "CantelExtensionTerminate"}) {
    std::printf("%s %s\n", name, GetProcAddress(module, name) != nullptr ? "found" : "missing");
  }
  return 0;
}
