// Frames of entries (TGF): handed out by CX_LoadTGF, owned by the engine
// until CX_FreeTGF, written back by CX_SaveTGF.
#include <algorithm>
#include <cstring>

#include "exports.h"
#include "state.h"

using namespace cantel_engine;

namespace {

OpenFrame* find_open(void* frame) {
  auto it = state().open_frames.find(frame);
  return it == state().open_frames.end() ? nullptr : it->second.get();
}

std::size_t entry_count(const OpenFrame& frame) { return frame.entries.size() / CX_ENTRY_SIZE; }

}  // namespace

CX_EXPORT uint16_t CX_GetMaxLayers(uint32_t) { return kMaxLayers; }
CX_CHECK_SIGNATURE(CX_GetMaxLayers);

CX_EXPORT uint16_t CX_GetShowLayer(uint16_t layer, uint32_t) {
  return layer <= kMaxLayers ? 1 : 0;  // every layer is shown
}
CX_CHECK_SIGNATURE(CX_GetShowLayer);

CX_EXPORT void* CX_LoadTGF(uint16_t list, uint16_t slot, uint16_t measure, uint16_t layer, uint16_t,
                           uint32_t) {
  const std::uint16_t staff = staff_of_slot(list, slot);
  if (!staff_exists(staff) || !measure_exists(measure) || layer >= kMaxLayers) return nullptr;
  auto frame = std::make_unique<OpenFrame>();
  frame->key = FrameKey{staff, measure, layer};
  auto stored = state().frames.find(frame->key);
  if (stored != state().frames.end()) frame->entries = stored->second.entries;
  cx_put_u16(frame->header.data(), CX_TGF_SLOT, slot);
  cx_put_u16(frame->header.data(), CX_TGF_MEASURE, measure);
  cx_put_u16(frame->header.data(), CX_TGF_LAYER, layer);
  frame->publish();
  void* handle = frame->header.data();
  state().open_frames[handle] = std::move(frame);
  return handle;
}
CX_CHECK_SIGNATURE(CX_LoadTGF);

CX_EXPORT uint16_t CX_SaveTGF(void* frame, uint32_t) {
  OpenFrame* open = find_open(frame);
  if (open == nullptr || !staff_exists(open->key.staff) || !measure_exists(open->key.measure)) {
    return 0;
  }
  store_frame(open->key, open->entries);
  return 1;
}
CX_CHECK_SIGNATURE(CX_SaveTGF);

CX_EXPORT uint16_t CX_FreeTGF(void* frame, uint32_t) {
  return state().open_frames.erase(frame) > 0 ? 1 : 0;
}
CX_CHECK_SIGNATURE(CX_FreeTGF);

CX_EXPORT uint16_t CX_InsertEXENTRY(void* frame, uint16_t position, uint16_t count, uint32_t) {
  OpenFrame* open = find_open(frame);
  if (open == nullptr || count == 0) return 0;
  const std::size_t existing = entry_count(*open);
  if (position > existing || existing + count > 0x7FFF) return 0;
  open->entries.insert(open->entries.begin() + static_cast<std::ptrdiff_t>(position * CX_ENTRY_SIZE),
                       static_cast<std::size_t>(count) * CX_ENTRY_SIZE, std::uint8_t{0});
  for (std::size_t i = position; i < position + std::size_t{count}; ++i) {
    std::uint8_t* entry = open->entries.data() + i * CX_ENTRY_SIZE;
    std::int64_t start = 0;
    if (i > 0) {
      const std::uint8_t* before = entry - CX_ENTRY_SIZE;
      start = std::int64_t{cx_get_i32(before, CX_ENTRY_POSITION)} +
              cx_get_i32(before, CX_ENTRY_DURATION);
    }
    cx_put_u32(entry, CX_ENTRY_POSITION,
               static_cast<std::uint32_t>(std::clamp<std::int64_t>(start, INT32_MIN, INT32_MAX)));
    cx_put_u32(entry, CX_ENTRY_FLAGS, CX_ENTRY_FLAG_LEGAL);
  }
  open->publish();
  return 1;
}
CX_CHECK_SIGNATURE(CX_InsertEXENTRY);

CX_EXPORT uint16_t CX_DeleteEXENTRY(void* frame, uint16_t position, uint16_t count, uint32_t) {
  OpenFrame* open = find_open(frame);
  if (open == nullptr) return 0;
  const std::size_t existing = entry_count(*open);
  if (position >= existing) return 0;
  const std::size_t removed = std::min<std::size_t>(count, existing - position);
  auto first = open->entries.begin() + static_cast<std::ptrdiff_t>(position * CX_ENTRY_SIZE);
  open->entries.erase(first, first + static_cast<std::ptrdiff_t>(removed * CX_ENTRY_SIZE));
  open->publish();
  return 1;
}
CX_CHECK_SIGNATURE(CX_DeleteEXENTRY);

// This host finds no entries redundant.
CX_EXPORT void CX_ReduceEntries(void*, uint32_t) {}
CX_CHECK_SIGNATURE(CX_ReduceEntries);

// The engine lays nothing out, so it has no metrics to give.
CX_EXPORT uint16_t CX_GetEntryMetrics(uint16_t, uint16_t, uint32_t, void*, void*, uint16_t,
                                      uint32_t) {
  return 0;
}
CX_CHECK_SIGNATURE(CX_GetEntryMetrics);

CX_EXPORT int32_t CX_GetMeasureDuration(uint16_t, uint16_t measure, uint32_t) {
  return measure_duration(measure);
}
CX_CHECK_SIGNATURE(CX_GetMeasureDuration);

CX_EXPORT uint16_t CX_SlotToInst(uint16_t slot, uint16_t list, uint32_t) {
  return staff_of_slot(list, slot);
}
CX_CHECK_SIGNATURE(CX_SlotToInst);

CX_EXPORT uint16_t CX_InstToSlot(uint16_t staff, uint16_t list, uint32_t) {
  return slot_of_staff(staff, list);
}
CX_CHECK_SIGNATURE(CX_InstToSlot);
