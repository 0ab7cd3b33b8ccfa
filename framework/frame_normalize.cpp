#include "frame_normalize.h"

#include <cantel/cx_frame.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace rw::host {
namespace {

// The host expects every written entry to carry at least one note slot; the
// switch stays on for the life of the process.
constexpr bool kGiveEmptyEntriesANote = true;

std::uint8_t* NoteAt(std::uint8_t* entry, int index) {
  return entry + CX_ENTRY_NOTES + static_cast<std::size_t>(index) * CX_NOTE_SIZE;
}

std::int16_t IdOf(std::uint8_t* entry, int index) {
  return cx_get_i16(NoteAt(entry, index), CX_NOTE_ID);
}

void NormalizeEntry(std::uint8_t* entry) {
  // The count comes from the host's memory: never trust it beyond the slots.
  const int count = std::clamp<int>(cx_get_i16(entry, CX_ENTRY_NOTE_COUNT), 0, CX_ENTRY_MAX_NOTES);

  std::int32_t highest = 0;
  for (int i = 0; i < count; ++i) highest = std::max<std::int32_t>(highest, IdOf(entry, i));

  // Of two equal identifiers the earlier note is renumbered and the later
  // keeps its value.
  for (int i = 0; i < count; ++i) {
    const std::int16_t id = IdOf(entry, i);
    bool renumber = id == 0;
    for (int k = 0; k < count && !renumber; ++k) renumber = k != i && IdOf(entry, k) == id;
    if (renumber) {
      ++highest;
      cx_put_u16(NoteAt(entry, i), CX_NOTE_ID, static_cast<std::uint16_t>(highest));
    }
  }

  for (int i = 0; i < count; ++i) {
    std::uint8_t* note = NoteAt(entry, i);
    const auto idBits = static_cast<std::uint32_t>(cx_get_u16(note, CX_NOTE_ID) & 0x1Fu)
                        << CX_NOTE_ID_BITS_SHIFT;
    const std::uint32_t flags = cx_get_u32(note, CX_NOTE_FLAGS);
    cx_put_u32(note, CX_NOTE_FLAGS, (flags & ~CX_NOTE_ID_BITS_MASK) | idBits);
  }
  for (int i = count; i < CX_ENTRY_MAX_NOTES; ++i) std::memset(NoteAt(entry, i), 0, CX_NOTE_SIZE);

  if (kGiveEmptyEntriesANote && count == 0) {
    cx_put_u16(entry, CX_ENTRY_NOTE_COUNT, 1);
    cx_put_u32(NoteAt(entry, 0), CX_NOTE_FLAGS, 0x80000000u);
    cx_put_u32(entry, CX_ENTRY_FLAGS, cx_get_u32(entry, CX_ENTRY_FLAGS) | CX_ENTRY_FLAG_FILLED);
  }
}

}  // namespace

void NormalizeFrame(void* frame) {
  if (frame == nullptr) return;
  auto* entries = static_cast<std::uint8_t*>(cx_get_ptr(frame, CX_TGF_ENTRIES));
  const std::int16_t count = cx_get_i16(frame, CX_TGF_ENTRY_COUNT);
  if (entries == nullptr) return;
  for (int i = 0; i < count; ++i) {
    NormalizeEntry(entries + static_cast<std::size_t>(i) * CX_ENTRY_SIZE);
  }
}

}  // namespace rw::host
