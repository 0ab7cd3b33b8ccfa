// Composite preference records: the host keeps them as several 12-byte
// sub-records; the plug-in sees one flat record per kind, assembled on load
// and split again on save.
#pragma once

#include <cstdint>
#include <optional>

namespace rw::host {

// The answer for a composite kind, or nothing for any other tag. A load sets
// *size to the composite's full size and fills only the fields that fit in
// the size given; a null buffer only queries the size.
std::optional<std::uint16_t> LoadCompositeRecord(std::uint32_t tag, void* data,
                                                 std::uint32_t* size);
// Writes back only the sub-records whose words change, reading only fields
// within `size`. Refused (0) below two bytes per row.
std::optional<std::uint16_t> StoreCompositeRecord(std::uint32_t tag, const void* data,
                                                  std::uint32_t size);

}  // namespace rw::host
