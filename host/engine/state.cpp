#include "state.h"

#include <algorithm>

#include "utf.h"

namespace cantel_engine {

State& state() {
  static State instance = [] {
    State fresh;
    install_default_fonts(fresh);
    return fresh;
  }();
  return instance;
}

void reset_state() {
  State& s = state();
  s = State{};
  install_default_fonts(s);
}

bool write_allowed(std::uint32_t tag) {
  State& s = state();
  if (s.refused_tags.count(tag) == 0) return true;
  ++s.refused_count;
  return false;
}

// --- measures -------------------------------------------------------------

bool measure_exists(std::uint16_t measure) {
  return state().store.find({CX_TAG_MEASURE, measure, 0}) != nullptr;
}

std::int32_t measure_duration(std::uint16_t measure) {
  const Bytes* record = state().store.find({CX_TAG_MEASURE, measure, 0});
  if (record == nullptr || record->size() < CX_MEASURE_BEAT_DURATION + 2) return 0;
  const std::int64_t product =
      static_cast<std::int64_t>(cx_get_i16(record->data(), CX_MEASURE_BEATS)) *
      cx_get_i16(record->data(), CX_MEASURE_BEAT_DURATION);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(product, INT32_MIN, INT32_MAX));
}

std::uint16_t measure_count() {
  std::uint16_t count = 0;
  while (count < 0xFFFE && measure_exists(static_cast<std::uint16_t>(count + 1))) ++count;
  return count;
}

// --- staves ---------------------------------------------------------------

bool staff_exists(std::uint16_t staff) {
  return staff != 0 && state().store.find({CX_TAG_STAFF_SPEC, staff, 0}) != nullptr;
}

std::vector<std::uint16_t> staff_list(std::uint16_t list) {
  std::vector<std::uint16_t> staves;
  for (const RecordInfo& r : state().store.of_tag(CX_TAG_STAFF_LIST)) {
    if (r.number != list) continue;
    if (r.sub != staves.size()) break;  // the list ends at its first gap
    staves.push_back(r.data.size() >= 2 ? cx_get_u16(r.data.data(), CX_STAFF_LIST_STAFF) : 0);
  }
  return staves;
}

std::uint16_t staff_of_slot(std::uint16_t list, std::uint16_t slot) {
  const auto staves = staff_list(list);
  if (slot == 0 || slot > staves.size()) return 0;
  return staves[slot - 1u];
}

std::uint16_t slot_of_staff(std::uint16_t staff, std::uint16_t list) {
  const auto staves = staff_list(list);
  for (std::size_t i = 0; i < staves.size(); ++i) {
    if (staves[i] == staff && staff != 0) return static_cast<std::uint16_t>(i + 1);
  }
  return 0;
}

void append_to_staff_list(std::uint16_t staff) {
  State& s = state();
  const auto staves = staff_list(0);
  std::int32_t vertical = 0;
  if (!staves.empty()) {
    const Bytes* last =
        s.store.find({CX_TAG_STAFF_LIST, 0, static_cast<std::uint16_t>(staves.size() - 1)});
    vertical = cx_get_i32(last->data(), CX_STAFF_LIST_VERTICAL) - 300;
  }
  Bytes entry(CX_STAFF_LIST_SIZE, 0);
  cx_put_u16(entry.data(), CX_STAFF_LIST_STAFF, staff);
  cx_put_u32(entry.data(), CX_STAFF_LIST_VERTICAL, static_cast<std::uint32_t>(vertical));
  s.store.put({CX_TAG_STAFF_LIST, 0, static_cast<std::uint16_t>(staves.size())}, entry);
}

// --- frames ---------------------------------------------------------------

void OpenFrame::publish() {
  cx_put_ptr(header.data(), CX_TGF_ENTRIES, entries.empty() ? nullptr : entries.data());
  cx_put_u16(header.data(), CX_TGF_ENTRY_COUNT,
             static_cast<std::uint16_t>(entries.size() / CX_ENTRY_SIZE));
}

void store_frame(const FrameKey& key, Bytes entries) {
  State& s = state();
  if (entries.empty()) {
    s.frames.erase(key);
    return;
  }
  StoredFrame& frame = s.frames[key];
  frame.entries = std::move(entries);
  if (frame.number == 0) {
    frame.number = s.next_frame_number;
    // Frame numbers are signed 16-bit to the plug-in; wrap within 1..32767.
    s.next_frame_number = static_cast<std::uint16_t>(s.next_frame_number % 32767 + 1);
  }
}

void clear_layers(std::uint16_t staff, std::uint16_t measure) {
  for (std::uint16_t layer = 0; layer < kMaxLayers; ++layer) {
    state().frames.erase(FrameKey{staff, measure, layer});
  }
}

void write_entry(std::uint8_t* entry, std::int32_t position, std::int32_t duration,
                 const std::vector<std::uint16_t>& keys) {
  std::fill(entry, entry + CX_ENTRY_SIZE, std::uint8_t{0});
  const std::size_t count = std::min<std::size_t>(keys.size(), CX_ENTRY_MAX_NOTES);
  cx_put_u16(entry, CX_ENTRY_DURATION_SHORT, static_cast<std::uint16_t>(duration));
  cx_put_u32(entry, CX_ENTRY_FLAGS,
             CX_ENTRY_FLAG_LEGAL | (count > 0 ? CX_ENTRY_FLAG_NOTE : 0u));
  cx_put_u16(entry, CX_ENTRY_NOTE_COUNT, static_cast<std::uint16_t>(count));
  for (std::size_t i = 0; i < count; ++i) {
    std::uint8_t* note = entry + CX_ENTRY_NOTES + i * CX_NOTE_SIZE;
    const auto id = static_cast<std::uint16_t>(i + 1);
    cx_put_u16(note, CX_NOTE_KEY, keys[i]);
    cx_put_u16(note, CX_NOTE_ID, id);
    cx_put_u32(note, CX_NOTE_FLAGS,
               (static_cast<std::uint32_t>(id) << CX_NOTE_ID_BITS_SHIFT) & CX_NOTE_ID_BITS_MASK);
  }
  cx_put_u32(entry, CX_ENTRY_POSITION, static_cast<std::uint32_t>(position));
  cx_put_u32(entry, CX_ENTRY_DURATION, static_cast<std::uint32_t>(duration));
}

EntryInfo read_entry(const std::uint8_t* entry) {
  EntryInfo info;
  info.position = cx_get_i32(entry, CX_ENTRY_POSITION);
  info.duration = cx_get_i32(entry, CX_ENTRY_DURATION);
  info.flags = cx_get_u32(entry, CX_ENTRY_FLAGS);
  const int count = std::clamp<int>(cx_get_i16(entry, CX_ENTRY_NOTE_COUNT), 0, CX_ENTRY_MAX_NOTES);
  for (int i = 0; i < count; ++i) {
    info.keys.push_back(
        cx_get_u16(entry, CX_ENTRY_NOTES + static_cast<std::size_t>(i) * CX_NOTE_SIZE));
  }
  return info;
}

// --- fonts ----------------------------------------------------------------

void install_default_fonts(State& s) {
  s.fonts = {{1, "Times New Roman", 0}, {2, "Arial", 0}, {3, "Sonetta", 0},
             {4, "Sonetta Percussion", 0}, {5, "Sonetta Text", 0}};
  // Default expression font (6) and its fall-back (15): Times New Roman 12.
  for (std::uint16_t number : {std::uint16_t{6}, std::uint16_t{15}}) {
    Bytes prefs(CX_FONT_PREFS_SIZE, 0);
    cx_put_u16(prefs.data(), 0, 1);
    cx_put_u16(prefs.data(), 2, 12);
    s.store.put({CX_TAG_FONT_PREFS, number, 0}, prefs);
  }
}

std::optional<std::uint16_t> font_number(const std::u16string& name) {
  for (const FontEntry& f : state().fonts) {
    if (utf8_to_utf16(f.name) == name) return f.number;
  }
  return std::nullopt;
}

const FontEntry* font_entry(std::uint16_t number) {
  for (const FontEntry& f : state().fonts) {
    if (f.number == number) return &f;
  }
  return nullptr;
}

}  // namespace cantel_engine
