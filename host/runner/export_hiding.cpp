#include "export_hiding.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "cantel/cantel.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace cantel_host {

namespace {

#define CANTEL_HOST_EXPORT_NAME(name, ...) #name,
const char* const kHostFunctions[] = {CX_HOST_FUNCTIONS(CANTEL_HOST_EXPORT_NAME)};
#undef CANTEL_HOST_EXPORT_NAME

bool sorts_before(const std::string& a, const char* b) { return std::strcmp(a.c_str(), b) < 0; }

#if defined(_WIN32)

// The engine's export name table, sorted as the loader's binary search
// needs it. Both are the platform's documented image structures.
struct NameTable {
  std::uint8_t* base = nullptr;
  const DWORD* names = nullptr;
  DWORD count = 0;
  char* name(DWORD i) const { return reinterpret_cast<char*>(base + names[i]); }
};

NameTable name_table(const Module& engine) {
  NameTable table;
  table.base = static_cast<std::uint8_t*>(engine.handle());
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(table.base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(table.base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& entry =
      nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto* exports =
      reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(table.base + entry.VirtualAddress);
  table.names = reinterpret_cast<const DWORD*>(table.base + exports->AddressOfNames);
  table.count = exports->NumberOfNames;
  return table;
}

void overwrite(char* text, const std::string& spelling) {
  const std::size_t size = std::strlen(text) + 1;
  DWORD previous = 0;
  if (!VirtualProtect(text, size, PAGE_READWRITE, &previous)) {
    throw std::runtime_error("cannot make the engine's export names writable");
  }
  std::memset(text, 0, size);
  std::memcpy(text, spelling.data(), spelling.size());
  VirtualProtect(text, size, previous, &previous);
}

void hide_one(const Module& engine, const std::string& name) {
  const NameTable table = name_table(engine);
  for (DWORD i = 0; i < table.count; ++i) {
    if (name != table.name(i)) continue;
    const std::string spelling = hidden_spelling(name, i > 0 ? table.name(i - 1) : nullptr,
                                                 i + 1 < table.count ? table.name(i + 1) : nullptr);
    if (spelling.empty()) throw std::runtime_error("no spelling keeps the export order: " + name);
    overwrite(table.name(i), spelling);
    return;
  }
  // Not exported at all (the reduced engine): already lacking.
}

#else

// The protection of the loaded segment that holds `address`.
int protection_of(const void* address) {
  struct Search {
    std::uintptr_t address;
    int protection = -1;
  } search{reinterpret_cast<std::uintptr_t>(address)};
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* data) {
        auto* s = static_cast<Search*>(data);
        for (int i = 0; i < info->dlpi_phnum; ++i) {
          const ElfW(Phdr)& segment = info->dlpi_phdr[i];
          const std::uintptr_t start = info->dlpi_addr + segment.p_vaddr;
          if (segment.p_type != PT_LOAD || s->address < start ||
              s->address >= start + segment.p_memsz) {
            continue;
          }
          s->protection = ((segment.p_flags & PF_R) != 0 ? PROT_READ : 0) |
                          ((segment.p_flags & PF_W) != 0 ? PROT_WRITE : 0) |
                          ((segment.p_flags & PF_X) != 0 ? PROT_EXEC : 0);
          return 1;
        }
        return 0;
      },
      &search);
  return search.protection;
}

void overwrite(char* text, const std::string& spelling) {
  const int protection = protection_of(text);
  if (protection < 0) throw std::runtime_error("the export name lies in no loaded segment");
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(text);
  const std::uintptr_t first = at & ~(page - 1);
  const std::size_t length = at + std::strlen(text) + 1 - first;
  void* pages = reinterpret_cast<void*>(first);
  if (mprotect(pages, length, protection | PROT_WRITE) != 0) {
    throw std::runtime_error("cannot make the engine's symbol names writable");
  }
  const std::size_t size = std::strlen(text) + 1;
  std::memset(text, 0, size);
  std::memcpy(text, spelling.data(), spelling.size());
  mprotect(pages, length, protection);
}

// The symbol's name in the engine's dynamic string table. The lookup hashes
// the name asked for and then compares strings, so a misspelt entry is
// passed over wherever its hash leads.
void hide_one(const Module& engine, const std::string& name) {
  void* address = dlsym(engine.handle(), name.c_str());
  if (address == nullptr) return;  // not exported at all (the reduced engine)
  Dl_info info{};
  void* entry = nullptr;
  if (dladdr1(address, &info, &entry, RTLD_DL_SYMENT) == 0 || info.dli_sname == nullptr ||
      name != info.dli_sname) {
    throw std::runtime_error("cannot find the symbol name of " + name);
  }
  overwrite(const_cast<char*>(info.dli_sname), hidden_spelling(name, nullptr, nullptr));
}

#endif

}  // namespace

std::string hidden_spelling(const std::string& name, const char* before, const char* after) {
  if (name.empty()) return {};
  const std::string stem = name.substr(0, name.size() - 1);
  const auto last = static_cast<unsigned char>(name.back());
  std::vector<std::string> candidates;
  if (last < 0x7E) candidates.push_back(stem + static_cast<char>(last + 1));
  if (!stem.empty()) candidates.push_back(stem);
  if (last > 0x21) candidates.push_back(stem + static_cast<char>(last - 1));
  for (const std::string& c : candidates) {
    if ((before == nullptr || std::strcmp(before, c.c_str()) < 0) &&
        (after == nullptr || sorts_before(c, after))) {
      return c;
    }
  }
  return {};
}

void hide_exports(const Module& engine, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (std::find(std::begin(kHostFunctions), std::end(kHostFunctions), name) ==
        std::end(kHostFunctions)) {
      throw std::runtime_error("faults.lacks: " + name + " is no host function");
    }
  }
  std::vector<const char*> present;
  for (const char* name : kHostFunctions) {
    if (engine.symbol(name) != nullptr) present.push_back(name);
  }
  for (const std::string& name : names) hide_one(engine, name);
  // Each hidden name is gone, and nothing else went with it.
  for (const char* name : present) {
    const bool hidden = std::find(names.begin(), names.end(), name) != names.end();
    if ((engine.symbol(name) == nullptr) != hidden) {
      throw std::runtime_error(std::string("hiding exports changed the look-up of ") + name);
    }
  }
}

}  // namespace cantel_host
