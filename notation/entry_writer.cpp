#include "entry_writer.h"

#include "frame_record.h"
#include "host_api.h"
#include "records.h"

namespace rw::notation {
namespace {

constexpr std::uint32_t kSlashEntryFlags = 0x81000000u;

std::int32_t EntryCount(const void* frame) { return cx_get_i16(frame, CX_TGF_ENTRY_COUNT); }

std::uint8_t* EntryAt(void* entries, std::int32_t index) {
  return static_cast<std::uint8_t*>(entries) + static_cast<std::size_t>(index) * CX_ENTRY_SIZE;
}

}  // namespace

bool AppendSlashEntry(void* frame, std::int32_t duration) {
  if (frame == nullptr) return false;
  const std::int32_t n = EntryCount(frame);
  if (n < 0) return false;
  host::CX_InsertEXENTRY(frame, static_cast<std::uint16_t>(n), 1, host::kVersion);
  // The insertion may have moved the array: only what the host reports now
  // may be written.
  void* entries = cx_get_ptr(frame, CX_TGF_ENTRIES);
  if (entries == nullptr || EntryCount(frame) <= n) return false;

  std::uint8_t* entry = EntryAt(entries, n);
  cx_put_u16(entry, CX_ENTRY_DURATION_SHORT, static_cast<std::uint16_t>(duration));
  cx_put_u32(entry, CX_ENTRY_DURATION, static_cast<std::uint32_t>(duration));
  if (n > 0) {
    const std::uint8_t* previous = EntryAt(entries, n - 1);
    // Wraps like the host's own 32-bit arithmetic instead of overflowing.
    const std::uint32_t position =
        cx_get_u32(previous, CX_ENTRY_POSITION) + cx_get_u32(previous, CX_ENTRY_DURATION);
    cx_put_u32(entry, CX_ENTRY_POSITION, position);
  }
  cx_put_u32(entry, CX_ENTRY_FLAGS, kSlashEntryFlags);
  return true;
}

void FillMeasureWithSlashes(std::uint16_t list, std::uint16_t slot, std::uint16_t measure,
                            const std::uint8_t* measureRecord) {
  void* frame = host::CX_LoadTGF(list, slot, measure, 0, 0, host::kVersion);
  if (frame == nullptr) return;  // nothing to free either

  std::int32_t beats = cx_get_i16(measureRecord, CX_MEASURE_BEATS);
  std::int32_t beatDuration = cx_get_i16(measureRecord, CX_MEASURE_BEAT_DURATION);
  // Compound meters get one slash per dotted beat; 3/4 and 3/8 keep three.
  if (beats >= 6 && beats % 3 == 0) {
    beats /= 3;
    beatDuration *= 3;
  }
  for (std::int32_t beat = 0; beat < beats; ++beat) {
    if (!AppendSlashEntry(frame, beatDuration)) break;
  }
  host::CX_SaveTGF(frame, host::kVersion);
  host::CX_FreeTGF(frame, host::kVersion);
}

bool WriteSlashEntries(const ERegion& region) {
  const std::uint32_t firstMeasure = region.startMeasure;
  const std::uint32_t lastMeasure = region.endMeasure;
  const std::uint32_t firstSlot = region.startSlot;
  const std::uint32_t lastSlot = region.endSlot;
  for (std::uint32_t measure = firstMeasure; measure <= lastMeasure; ++measure) {
    const auto measureNumber = static_cast<std::uint16_t>(measure);
    std::uint8_t measureRecord[CX_MEASURE_SIZE];
    if (!LoadMeasureRecord(measureNumber, measureRecord)) return false;
    for (std::uint32_t slot = firstSlot; slot <= lastSlot; ++slot) {
      const auto slotNumber = static_cast<std::uint16_t>(slot);
      const std::uint16_t instrument =
          host::CX_SlotToInst(slotNumber, region.startList, host::kVersion);
      if (instrument == 0) continue;
      FrameRecord frames;
      // A frame record the host cannot give says nothing about the measure's
      // music, so such a measure is not touched.
      if (!frames.Load(instrument, measureNumber)) continue;
      if (frames.SumOfFirstFourLayers() != 0) continue;
      FillMeasureWithSlashes(region.startList, slotNumber, measureNumber, measureRecord);
    }
  }
  return true;
}

}  // namespace rw::notation
