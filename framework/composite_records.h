// Composite preference records: the host keeps them as several 12-byte
// sub-records; the plug-in sees one flat record per kind, assembled on load
// and split again on save.
#pragma once

#include <cstdint>
#include <optional>

namespace rw::host {

// The answer for a composite kind, or nothing for any other tag.
std::optional<std::uint16_t> LoadCompositeRecord(std::uint32_t tag, void* data,
                                                 std::uint32_t* size);
std::optional<std::uint16_t> StoreCompositeRecord(std::uint32_t tag, const void* data,
                                                  std::uint32_t size);

}  // namespace rw::host
