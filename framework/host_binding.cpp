#include <atomic>

#include "host_api.h"
#include "platform.h"

namespace rw::host {
namespace {

void* LookupInHostModule(const char* exportName) {
  return platform::GetExport(FindHostModule(), exportName);
}

std::atomic<Resolver> resolver{&LookupInHostModule};

}  // namespace

void SetResolver(Resolver replacement) {
  resolver.store(replacement != nullptr ? replacement : &LookupInHostModule);
}

void* FindHostModule() { return platform::HostModule(); }

void* LookupHostFunction(const char* exportName) { return resolver.load()(exportName); }

// Every export of the table is either forwarded as it is or wrapped above.
namespace {
#define RW_COUNT_ROW(name, result, params, fallback) +1
constexpr int kTableRows = 0 CX_HOST_FUNCTIONS(RW_COUNT_ROW);
#undef RW_COUNT_ROW
static_assert(kTableRows == 26 + 10, "a new host function needs a wrapper in host_api.h");
}  // namespace

}  // namespace rw::host
