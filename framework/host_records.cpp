#include <algorithm>
#include <cstring>

#include "composite_records.h"
#include "host_api.h"

namespace rw::host {
namespace {

// A record kind the host may answer 0 for although it filled the buffer;
// what arrived counts. When the host does answer, the record is read a
// second time through the general path.
constexpr std::uint32_t kTagFilledWithoutAnswer = 0x4F156649;
constexpr std::size_t kFilledWithoutAnswerSize = 252;

// Composite records are split into sub-records only for callers built
// against an interface that knows them.
constexpr std::uint32_t kFirstCompositeVersion = 0x08000000;

}  // namespace

std::uint16_t CX_LoadEData(std::uint32_t tag, std::uint16_t* number, void* data,
                           std::uint32_t* size, std::uint32_t version) {
  if (tag == kTagFilledWithoutAnswer && data != nullptr) {
    auto* bytes = static_cast<std::uint8_t*>(data);
    std::memset(bytes, 0, kFilledWithoutAnswerSize);
    if (direct::CX_LoadEData(tag, number, data, size, version) == 0) {
      return std::any_of(bytes, bytes + kFilledWithoutAnswerSize, [](std::uint8_t b) { return b != 0; })
                 ? 1
                 : 0;
    }
  }
  if (auto composite = LoadCompositeRecord(tag, data, size)) return *composite;
  return direct::CX_LoadEData(tag, number, data, size, version);
}

std::uint16_t CX_SaveEData(std::uint32_t tag, std::uint16_t* number, const void* data,
                           std::uint32_t size, std::uint32_t version) {
  if (version >= kFirstCompositeVersion) {
    if (auto composite = StoreCompositeRecord(tag, data, size)) return *composite;
  }
  return direct::CX_SaveEData(tag, number, data, size, version);
}

}  // namespace rw::host
