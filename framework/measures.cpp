#include "measures.h"

#include <array>

#include "host_api.h"
#include "records.h"

namespace rw {

MeasureSpecification ReadMeasureSpecification(std::uint32_t measure) {
  MeasureSpecification spec;
  if (measure > UINT16_MAX) return spec;
  std::array<std::uint8_t, CX_MEASURE_SIZE> record{};
  if (!LoadMeasureRecord(static_cast<std::uint16_t>(measure), record.data())) return spec;
  spec.loaded = true;
  spec.beats = cx_get_i16(record.data(), CX_MEASURE_BEATS);
  spec.beatDuration = cx_get_i16(record.data(), CX_MEASURE_BEAT_DURATION);
  // The flag byte's top bit, read as a signed byte below 0.
  spec.composite = static_cast<std::int8_t>(record[CX_MEASURE_FLAG_BYTE]) < 0;
  return spec;
}

std::int32_t MeasureDuration(std::uint32_t measure) {
  if (measure > UINT16_MAX) return 0;
  return host::CX_GetMeasureDuration(0, static_cast<std::uint16_t>(measure), host::kVersion);
}

}  // namespace rw
