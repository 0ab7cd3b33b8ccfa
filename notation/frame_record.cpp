#include "frame_record.h"

#include <algorithm>
#include <cstring>

#include "host_api.h"
#include "records.h"

namespace rw::notation {
namespace {
constexpr std::size_t kMinimumLayers = 4;
}

FrameRecord::FrameRecord()
    : layers_(std::max<std::size_t>(kMinimumLayers, host::CX_GetMaxLayers(host::kVersion))),
      frameNumbers_(std::make_unique<std::uint8_t[]>(2 * layers_)) {
  cx_put_ptr(record_, CX_FGDS_FRAMES, frameNumbers_.get());
}

bool FrameRecord::Load(std::uint16_t instrument, std::uint16_t measure) {
  // The general record load clears the whole buffer, pointer included, so
  // this record is read through the host function itself.
  std::memset(record_, 0, CX_FGDS_FRAMES);
  std::memset(frameNumbers_.get(), 0, 2 * layers_);
  cx_put_ptr(record_, CX_FGDS_FRAMES, frameNumbers_.get());
  std::uint16_t block[2] = {instrument, measure};
  std::uint32_t size = CX_FGDS_SIZE;
  return host::CX_LoadEData(CX_TAG_FRAME_RECORD, block, record_, &size, host::kVersion) != 0;
}

bool FrameRecord::Save(std::uint16_t instrument, std::uint16_t measure) const {
  return SaveRecord(CX_TAG_FRAME_RECORD, instrument, measure, record_, CX_FGDS_SIZE);
}

std::int16_t FrameRecord::FrameNumber(std::size_t layer) const {
  if (layer >= layers_) return 0;
  return cx_get_i16(frameNumbers_.get(), 2 * layer);
}

std::int32_t FrameRecord::SumOfFirstFourLayers() const {
  std::int32_t sum = 0;
  for (std::size_t layer = 0; layer < kMinimumLayers; ++layer) sum += FrameNumber(layer);
  return sum;
}

}  // namespace rw::notation
