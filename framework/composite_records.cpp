#include "composite_records.h"

namespace rw::host {

std::optional<std::uint16_t> LoadCompositeRecord(std::uint32_t, void*, std::uint32_t*) {
  return std::nullopt;
}

std::optional<std::uint16_t> StoreCompositeRecord(std::uint32_t, const void*, std::uint32_t) {
  return std::nullopt;
}

}  // namespace rw::host
