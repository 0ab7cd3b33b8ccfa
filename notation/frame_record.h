// The frame record "FGDS" of one staff in one measure: the staff's clef in
// that measure and one frame number per layer. The host writes the frame
// numbers through a pointer into an array that this holder owns.
#pragma once

#include <cantel/cantel.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace rw::notation {

class FrameRecord {
 public:
  // Allocates max(4, layers of the host) zeroed frame numbers.
  FrameRecord();
  FrameRecord(const FrameRecord&) = delete;
  FrameRecord& operator=(const FrameRecord&) = delete;

  // Clears the header and the frame numbers, then asks the host.
  bool Load(std::uint16_t instrument, std::uint16_t measure);
  // The host reads the header only; the pointer stays ours.
  bool Save(std::uint16_t instrument, std::uint16_t measure) const;

  std::uint16_t Clef() const { return cx_get_u16(record_, CX_FGDS_CLEF); }
  void SetClef(std::uint16_t clef) { cx_put_u16(record_, CX_FGDS_CLEF, clef); }

  // Frame number of a layer from 0; 0 when the layer has no frame there.
  std::int16_t FrameNumber(std::size_t layer) const;
  // Sum of the first four layers' frame numbers: 0 when they hold no music.
  std::int32_t SumOfFirstFourLayers() const;

 private:
  std::uint8_t record_[CX_FGDS_SIZE] = {};
  std::size_t layers_ = 0;
  std::unique_ptr<std::uint8_t[]> frameNumbers_;
};

}  // namespace rw::notation
