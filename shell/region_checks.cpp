#include "region_checks.h"

#include "host_api.h"
#include "measures.h"
#include "records.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringComposite = 17;
constexpr std::uint32_t kStringMeterChanges = 18;
constexpr std::uint32_t kStringReplaceNotes = 14;
constexpr std::uint32_t kTagPercussionMapSize = 12;

// A frame holds notes when it has two or more entries, or one that is not a
// rest. What the host reports is read only within what it reported.
bool HoldsNotes(void* frame) {
  const std::int16_t count = cx_get_i16(frame, CX_TGF_ENTRY_COUNT);
  if (count >= 2) return true;
  const void* entries = cx_get_ptr(frame, CX_TGF_ENTRIES);
  return count == 1 && entries != nullptr &&
         (cx_get_u32(entries, CX_ENTRY_FLAGS) & CX_ENTRY_FLAG_NOTE) != 0;
}

}  // namespace

bool CheckTimeSignatures(const ERegion& work) {
  const std::uint32_t first = work.startMeasure;
  const std::uint32_t last = work.endMeasure;
  MeasureSpecification previous{};
  for (std::uint32_t measure = first; measure <= last; ++measure) {
    const MeasureSpecification spec = ReadMeasureSpecification(static_cast<std::uint16_t>(measure));
    if (spec.composite) {
      ShowMessage(kStringComposite, CX_MB_STOP);
      return false;
    }
    if (measure > first &&
        (spec.beats != previous.beats || spec.beatDuration != previous.beatDuration)) {
      ShowMessage(kStringMeterChanges, CX_MB_STOP);
      return false;
    }
    previous = spec;
  }
  return true;
}

bool CheckExistingNotes(const ERegion& work, std::uint16_t slot) {
  // Hidden layers count as much as shown ones.
  const std::uint32_t layers = host::CX_GetMaxLayers(host::kVersion);
  for (std::uint32_t measure = work.startMeasure; measure <= work.endMeasure; ++measure) {
    for (std::uint32_t layer = 0; layer < layers; ++layer) {
      void* frame = host::CX_LoadTGF(0, slot, static_cast<std::uint16_t>(measure),
                                     static_cast<std::uint16_t>(layer), 0, host::kVersion);
      if (frame == nullptr) continue;
      const bool notes = HoldsNotes(frame);
      host::CX_FreeTGF(frame, host::kVersion);
      if (notes) return AskYesNo(kStringReplaceNotes);
    }
  }
  return true;
}

bool HasPercussionMap() {
  std::uint8_t record[kTagPercussionMapSize];
  return LoadRecord(CX_TAG_PERCUSSION_MAP, 1, 0, record, sizeof record);
}

}  // namespace rw::shell
