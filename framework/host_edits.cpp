// Edit transactions are counted so that an unbalanced end is harmless: it
// answers 1 without reaching the host.
#include "host_api.h"

namespace rw::host {
namespace {
std::int32_t openEdits = 0;
}

std::int32_t EditNestingCount() { return openEdits; }

std::uint16_t CX_StartCantelEdit(const char* name, std::uint32_t version) {
  ++openEdits;
  return direct::CX_StartCantelEdit(name, version);
}

std::uint16_t CX_EndCantelEdit(std::uint32_t version) {
  if (openEdits < 1) return 1;
  --openEdits;
  return direct::CX_EndCantelEdit(version);
}

}  // namespace rw::host
