// The record functions, with the kinds the engine serves from its own
// tables: frame records ("FGDS") and font names ("NFOS").
#include <algorithm>
#include <cstring>

#include "exports.h"
#include "state.h"
#include "utf.h"

namespace cantel_engine {
namespace {

bool is_text_tag(std::uint32_t tag) {
  return tag == CX_TAG_BLOCK_TEXT || tag == CX_TAG_EXPRESSION_TEXT;
}

// Copies min(stored, given) bytes and reports the stored size.
std::uint16_t deliver(const Bytes& stored, void* data, std::uint32_t* size) {
  if (data != nullptr && size != nullptr) {
    std::memcpy(data, stored.data(), std::min<std::size_t>(stored.size(), *size));
  }
  if (size != nullptr) *size = static_cast<std::uint32_t>(stored.size());
  return 1;
}

// "FGDS" (staff, measure): the clef, then one frame number per layer written
// through the caller's pointer at byte 6. Bytes 6 to 13 stay the caller's.
std::uint16_t load_frame_record(std::uint16_t staff, std::uint16_t measure, void* data,
                                std::uint32_t* size) {
  if (!staff_exists(staff) || !measure_exists(measure)) return 0;
  if (data != nullptr && size != nullptr && *size >= CX_FGDS_FRAMES) {
    auto* bytes = static_cast<std::uint8_t*>(data);
    std::fill(bytes, bytes + CX_FGDS_FRAMES, std::uint8_t{0});
    auto clef = state().clefs.find({staff, measure});
    cx_put_u16(bytes, CX_FGDS_CLEF, clef == state().clefs.end() ? 0 : clef->second);
    if (*size >= CX_FGDS_SIZE) {
      auto* numbers = static_cast<std::uint8_t*>(cx_get_ptr(bytes, CX_FGDS_FRAMES));
      for (std::uint16_t layer = 0; numbers != nullptr && layer < kMaxLayers; ++layer) {
        auto frame = state().frames.find(FrameKey{staff, measure, layer});
        cx_put_u16(numbers, 2u * layer, frame == state().frames.end() ? 0 : frame->second.number);
      }
    }
  }
  if (size != nullptr) *size = CX_FGDS_SIZE;
  return 1;
}

std::uint16_t save_frame_record(std::uint16_t staff, std::uint16_t measure, const void* data,
                                std::uint32_t size) {
  if (!staff_exists(staff) || !measure_exists(measure) || data == nullptr || size < 2) return 0;
  state().clefs[{staff, measure}] = cx_get_u16(data, CX_FGDS_CLEF);
  return 1;
}

std::uint16_t load_font_name(std::uint16_t font, void* data, std::uint32_t* size) {
  const FontEntry* entry = font_entry(font);
  if (entry == nullptr) return 0;
  Bytes record(CX_FONT_NAME_SIZE, 0);
  cx_put_u16(record.data(), CX_FONT_NAME_PARAMETER, entry->parameter);
  const std::u16string name = utf8_to_utf16(entry->name);
  const std::size_t units = std::min<std::size_t>(name.size(), (CX_FONT_NAME_SIZE - 14) / 2);
  for (std::size_t i = 0; i < units; ++i) cx_put_u16(record.data(), CX_FONT_NAME_TEXT + 2 * i, name[i]);
  return deliver(record, data, size);
}

}  // namespace
}  // namespace cantel_engine

using namespace cantel_engine;

CX_EXPORT uint16_t CX_LoadEData(uint32_t tag, uint16_t* number, void* data, uint32_t* size,
                                uint32_t) {
  if (number == nullptr) return 0;
  if (tag == CX_TAG_FRAME_RECORD) return load_frame_record(number[0], number[1], data, size);
  if (tag == CX_TAG_FONT_NAME) return load_font_name(number[0], data, size);
  const Bytes* stored = state().store.find({tag, number[0], number[1]});
  if (stored == nullptr) return 0;
  return deliver(*stored, data, size);
}
CX_CHECK_SIGNATURE(CX_LoadEData);

CX_EXPORT uint16_t CX_SaveEData(uint32_t tag, uint16_t* number, const void* data, uint32_t size,
                                uint32_t) {
  if (number == nullptr || !write_allowed(tag)) return 0;
  if (tag == CX_TAG_FRAME_RECORD) return save_frame_record(number[0], number[1], data, size);
  if (tag == CX_TAG_FONT_NAME) return 0;  // fonts belong to the system
  Bytes bytes(size, 0);
  if (data != nullptr && size > 0) std::memcpy(bytes.data(), data, size);
  state().store.put({tag, number[0], number[1]}, std::move(bytes));
  return 1;
}
CX_CHECK_SIGNATURE(CX_SaveEData);

CX_EXPORT uint16_t CX_CreateEData(uint32_t tag, uint16_t* number, const void* data, uint32_t size,
                                  uint32_t) {
  if (number == nullptr || !write_allowed(tag)) return 0;
  if (tag == CX_TAG_FRAME_RECORD || tag == CX_TAG_FONT_NAME) return 0;
  State& s = state();
  const bool new_number = number[0] == CX_NUMBER_ANY;
  if (new_number) {
    const std::uint16_t free = s.store.lowest_free_number(tag);
    if (free == 0) return 0;
    number[0] = free;
    if (number[1] == CX_SUBNUMBER_APPEND) number[1] = 0;
  } else if (number[1] == CX_SUBNUMBER_APPEND) {
    const auto sub = s.store.append_sub(tag, number[0]);
    if (!sub) return 0;
    number[1] = *sub;
  }
  // Texts are created with their length in UTF-16 units.
  const std::size_t bytes_size = is_text_tag(tag) ? 2u * static_cast<std::size_t>(size) : size;
  Bytes bytes(bytes_size, 0);
  if (data != nullptr && bytes_size > 0) std::memcpy(bytes.data(), data, bytes_size);
  if (tag == CX_TAG_STAFF_SPEC && new_number) {
    bytes.resize(std::max<std::size_t>(bytes.size(), CX_STAFF_SPEC_SIZE), 0);
    s.store.put({tag, number[0], number[1]}, std::move(bytes));
    append_to_staff_list(number[0]);
    return 1;
  }
  s.store.put({tag, number[0], number[1]}, std::move(bytes));
  return 1;
}
CX_CHECK_SIGNATURE(CX_CreateEData);

CX_EXPORT uint16_t CX_DeleteEData(uint32_t tag, uint16_t* number, uint32_t) {
  if (number == nullptr || !write_allowed(tag)) return 0;
  return state().store.erase({tag, number[0], number[1]}) ? 1 : 0;
}
CX_CHECK_SIGNATURE(CX_DeleteEData);

namespace {
uint16_t step(bool forward, uint32_t tag, uint16_t* number, void* data, uint32_t size) {
  if (number == nullptr) return 0;
  const RecordKey from{tag, number[0], number[1]};
  const auto found = forward ? state().store.next(from) : state().store.previous(from);
  if (!found) return 0;
  number[0] = found->number;
  number[1] = found->sub;
  std::uint32_t given = size;
  return deliver(*state().store.find(*found), data, &given);
}
}  // namespace

CX_EXPORT uint16_t CX_NextEData(uint32_t tag, uint16_t* number, void* data, uint32_t size,
                                uint32_t) {
  return step(true, tag, number, data, size);
}
CX_CHECK_SIGNATURE(CX_NextEData);

CX_EXPORT uint16_t CX_PreviousEData(uint32_t tag, uint16_t* number, void* data, uint32_t size,
                                    uint32_t) {
  return step(false, tag, number, data, size);
}
CX_CHECK_SIGNATURE(CX_PreviousEData);
