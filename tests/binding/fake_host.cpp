#include "fake_host.h"

#include <algorithm>
#include <cstring>

namespace fake_host {
namespace {

std::uint16_t StartEdit(const char*, std::uint32_t) {
  ++startEditCalls;
  return 1;
}

std::uint16_t EndEdit(std::uint32_t) {
  ++endEditCalls;
  return 7;  // distinguishable from the binding's own answer
}

std::uint16_t SaveFrame(void* frame, std::uint32_t) {
  const auto* entries = static_cast<const std::uint8_t*>(cx_get_ptr(frame, CX_TGF_ENTRIES));
  const auto count = static_cast<std::size_t>(cx_get_i16(frame, CX_TGF_ENTRY_COUNT));
  savedEntries.assign(entries, entries + count * CX_ENTRY_SIZE);
  return 1;
}

void* LoadFrame(std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t,
                std::uint32_t) {
  return nullptr;
}

std::uint16_t FreeFrame(void*, std::uint32_t) { return 1; }

std::uint16_t MaxLayers(std::uint32_t) { return 8; }

std::int64_t SendToControl(void*, std::int32_t control, std::uint32_t message, std::uint64_t,
                           std::int64_t) {
  return control * 0x10000 + message;
}

}  // namespace

void* Resolve(const char* name) {
  ++lookups[name];
  if (std::find(missing.begin(), missing.end(), name) != missing.end()) return nullptr;
  const std::string n(name);
  if (n == "CX_StartCantelEdit") return reinterpret_cast<void*>(&StartEdit);
  if (n == "CX_EndCantelEdit") return reinterpret_cast<void*>(&EndEdit);
  if (n == "CX_SaveTGF") return reinterpret_cast<void*>(&SaveFrame);
  if (n == "CX_LoadTGF") return reinterpret_cast<void*>(&LoadFrame);
  if (n == "CX_FreeTGF") return reinterpret_cast<void*>(&FreeFrame);
  if (n == "CX_GetMaxLayers") return reinterpret_cast<void*>(&MaxLayers);
  if (n == "SendDlgItemMessageW") return reinterpret_cast<void*>(&SendToControl);
  return nullptr;
}

}  // namespace fake_host
