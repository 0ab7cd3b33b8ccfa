#include <atomic>
#include <mutex>

#include "host_api.h"
#include "platform.h"

namespace rw::host {
namespace detail {
namespace {

constexpr auto kSlotCount = static_cast<std::size_t>(Slot::kCount);

constexpr const char* kNames[kSlotCount] = {
#define RW_NAME(name, fallback) #name,
    RW_BOUND_FUNCTIONS(RW_NAME)
#undef RW_NAME
};

// Every row of the interface has its row here, and nothing more.
#define RW_HAS_SLOT(name, result, params) \
  static_assert(static_cast<std::size_t>(Slot::name) < kSlotCount);
CX_HOST_FUNCTIONS(RW_HAS_SLOT)
#undef RW_HAS_SLOT
#define RW_COUNT(...) +1
static_assert(0 RW_HOST_EXPORTS(RW_COUNT) == 0 CX_HOST_FUNCTIONS(RW_COUNT),
              "every host export the plug-in binds is in the interface");
constexpr std::size_t kHostExportCount = 0 RW_HOST_EXPORTS(RW_COUNT);
#undef RW_COUNT

struct BindingSlot {
  std::atomic<bool> lookedUp{false};
  std::atomic<void*> address{nullptr};
};
BindingSlot slots[kSlotCount];
std::mutex bindingLock;
Resolver resolver = nullptr;  // under bindingLock

void* LookUp(std::size_t index) {
  if (resolver != nullptr) return resolver(kNames[index]);
  const platform::ModuleHandle home =
      index < kHostExportCount ? platform::HostModule() : platform::DialogControlModule();
  return platform::GetExport(home, kNames[index]);
}

}  // namespace

void* Bound(Slot slot) {
  BindingSlot& binding = slots[static_cast<std::size_t>(slot)];
  if (!binding.lookedUp.load(std::memory_order_acquire)) {
    const std::lock_guard<std::mutex> lock(bindingLock);
    if (!binding.lookedUp.load(std::memory_order_relaxed)) {
      binding.address.store(LookUp(static_cast<std::size_t>(slot)), std::memory_order_relaxed);
      binding.lookedUp.store(true, std::memory_order_release);
    }
  }
  return binding.address.load(std::memory_order_relaxed);
}

}  // namespace detail

void* FindHostModule() { return platform::HostModule(); }

void SetResolver(Resolver replacement) {
  const std::lock_guard<std::mutex> lock(detail::bindingLock);
  detail::resolver = replacement;
  for (detail::BindingSlot& binding : detail::slots) {
    binding.address.store(nullptr, std::memory_order_relaxed);
    binding.lookedUp.store(false, std::memory_order_release);
  }
}

}  // namespace rw::host
