// The in-process Document API over the engine's state.
#include "cantel_engine/document.h"

#include "state.h"
#include "utf.h"

namespace cantel_engine {
namespace {

Bytes text_bytes(const std::string& text) {
  const std::u16string units = utf8_to_utf16(text);
  Bytes bytes(units.size() * 2, 0);
  for (std::size_t i = 0; i < units.size(); ++i) cx_put_u16(bytes.data(), 2 * i, units[i]);
  return bytes;
}

class DocumentImpl final : public Document {
 public:
  DocumentImpl() { reset_state(); }

  void reset() override { reset_state(); }

  std::uint16_t add_measures(int count, const MeasureSpec& spec) override {
    const auto first = static_cast<std::uint16_t>(cantel_engine::measure_count() + 1);
    for (int i = 0; i < count; ++i) {
      Bytes record(CX_MEASURE_SIZE, 0);
      cx_put_u16(record.data(), CX_MEASURE_BEATS, static_cast<std::uint16_t>(spec.beats));
      cx_put_u16(record.data(), CX_MEASURE_BEAT_DURATION,
                 static_cast<std::uint16_t>(spec.beat_duration));
      record[CX_MEASURE_FLAG_BYTE] = spec.composite ? 0x80 : 0;
      cx_put_u16(record.data(), CX_MEASURE_FLAGS, spec.flags);
      state().store.put({CX_TAG_MEASURE, static_cast<std::uint16_t>(first + i), 0}, record);
    }
    return first;
  }

  std::uint16_t add_staff(const std::string& full_name,
                          const std::string& abbreviated_name) override {
    State& s = state();
    const std::uint16_t staff = s.store.lowest_free_number(CX_TAG_STAFF_SPEC);
    Bytes spec(CX_STAFF_SPEC_SIZE, 0);
    cx_put_u16(spec.data(), CX_STAFF_SPEC_FULL_NAME, name_block(full_name));
    cx_put_u16(spec.data(), CX_STAFF_SPEC_ABBREVIATED_NAME, name_block(abbreviated_name));
    s.store.put({CX_TAG_STAFF_SPEC, staff, 0}, spec);
    append_to_staff_list(staff);
    return staff;
  }

  void set_record(std::uint32_t tag, std::uint16_t number, std::uint16_t sub,
                  const Bytes& data) override {
    state().store.put({tag, number, sub}, data);
  }

  bool remove_record(std::uint32_t tag, std::uint16_t number, std::uint16_t sub) override {
    return state().store.erase({tag, number, sub});
  }

  std::uint16_t add_text(std::uint32_t tag, const std::string& text) override {
    const std::uint16_t number = state().store.lowest_free_number(tag);
    state().store.put({tag, number, 0}, text_bytes(text));
    return number;
  }

  void set_clef(std::uint16_t staff, std::uint16_t measure, std::uint16_t clef) override {
    state().clefs[{staff, measure}] = clef;
  }

  void add_entry(std::uint16_t staff, std::uint16_t measure, std::uint16_t layer,
                 std::int32_t position, std::int32_t duration,
                 const std::vector<std::uint16_t>& keys) override {
    const FrameKey key{staff, measure, layer};
    Bytes entries;
    if (auto it = state().frames.find(key); it != state().frames.end())
      entries = it->second.entries;
    entries.resize(entries.size() + CX_ENTRY_SIZE);
    write_entry(entries.data() + entries.size() - CX_ENTRY_SIZE, position, duration, keys);
    store_frame(key, std::move(entries));
  }

  void set_fonts(const std::vector<FontEntry>& fonts) override { state().fonts = fonts; }

  void set_font_preference(std::uint16_t number, std::uint16_t font, std::uint16_t size,
                           std::uint16_t effects) override {
    Bytes prefs(CX_FONT_PREFS_SIZE, 0);
    cx_put_u16(prefs.data(), 0, font);
    cx_put_u16(prefs.data(), 2, size);
    cx_put_u16(prefs.data(), 4, effects);
    state().store.put({CX_TAG_FONT_PREFS, number, 0}, prefs);
  }

  void set_path(std::uint32_t kind, const std::string& path) override {
    if (kind == CX_PATH_TEMPORARY) state().temporary_path = path;
    if (kind == CX_PATH_COMPONENT_FILES) state().component_path = path;
  }

  void set_groove_folder(const std::string& path) override { state().groove_folder = path; }

  void script_answers(const std::vector<std::uint16_t>& answers) override {
    state().answers.assign(answers.begin(), answers.end());
  }

  void script_dialog(const std::vector<DialogAction>& actions) override {
    state().dialog_script = actions;
  }

  void refuse_writes(std::uint32_t tag) override { state().refused_tags.insert(tag); }

  void set_selection(const std::optional<ERegion>& selection) override {
    state().selection = selection;
  }

  void set_presentation(int hold_ms, const std::string& folder, const std::string& name) override {
    state().presentation = Presentation{hold_ms, folder, name};
  }

  void clear_run_log() override {
    State& s = state();
    s.alerts.clear();
    s.dialog_steps.clear();
    s.edits = EditLog{};
    s.imports.clear();
    s.calls.clear();
    s.data_word.reset();
  }

  ERegion* selection_record() override {
    auto& selection = state().selection;
    return selection ? &*selection : nullptr;
  }

  std::optional<Bytes> record(std::uint32_t tag, std::uint16_t number,
                              std::uint16_t sub) const override {
    const Bytes* found = state().store.find({tag, number, sub});
    if (found == nullptr) return std::nullopt;
    return *found;
  }

  std::vector<RecordInfo> records(std::uint32_t tag) const override {
    return state().store.of_tag(tag);
  }

  std::vector<RecordInfo> all_records() const override { return state().store.all(); }

  std::optional<std::string> text(std::uint32_t tag, std::uint16_t number) const override {
    const Bytes* found = state().store.find({tag, number, 0});
    if (found == nullptr) return std::nullopt;
    std::u16string units;
    for (std::size_t i = 0; i + 1 < found->size(); i += 2) {
      const auto unit = static_cast<char16_t>(cx_get_u16(found->data(), i));
      if (unit == 0) break;
      units.push_back(unit);
    }
    return utf16_to_utf8(units);
  }

  std::uint16_t measure_count() const override { return cantel_engine::measure_count(); }

  std::vector<std::uint16_t> staves_in_order() const override { return staff_list(0); }

  std::uint16_t clef(std::uint16_t staff, std::uint16_t measure) const override {
    auto it = state().clefs.find({staff, measure});
    return it == state().clefs.end() ? 0 : it->second;
  }

  std::vector<EntryInfo> entries(std::uint16_t staff, std::uint16_t measure,
                                 std::uint16_t layer) const override {
    std::vector<EntryInfo> out;
    auto it = state().frames.find(FrameKey{staff, measure, layer});
    if (it == state().frames.end()) return out;
    const Bytes& bytes = it->second.entries;
    for (std::size_t at = 0; at + CX_ENTRY_SIZE <= bytes.size(); at += CX_ENTRY_SIZE) {
      out.push_back(read_entry(bytes.data() + at));
    }
    return out;
  }

  std::uint16_t frame_number(std::uint16_t staff, std::uint16_t measure,
                             std::uint16_t layer) const override {
    auto it = state().frames.find(FrameKey{staff, measure, layer});
    return it == state().frames.end() ? 0 : it->second.number;
  }

  const std::vector<AlertRecord>& alerts() const override { return state().alerts; }
  const EditLog& edits() const override { return state().edits; }
  int open_frames() const override { return static_cast<int>(state().open_frames.size()); }
  const std::vector<ImportRecord>& imports() const override { return state().imports; }
  const std::vector<DialogStep>& dialog_steps() const override { return state().dialog_steps; }
  const std::vector<HostCall>& calls() const override { return state().calls; }
  std::optional<std::uint32_t> data_word() const override { return state().data_word; }
  int refused_writes() const override { return state().refused_count; }

 private:
  // A name is an "lbxt" text shown by an "XTOS" block; 0 for no name.
  std::uint16_t name_block(const std::string& name) {
    if (name.empty()) return 0;
    const std::uint16_t text_number = add_text(CX_TAG_BLOCK_TEXT, name);
    const std::uint16_t block = state().store.lowest_free_number(CX_TAG_TEXT_BLOCK);
    Bytes record(CX_TEXT_BLOCK_SIZE, 0);
    cx_put_u16(record.data(), CX_TEXT_BLOCK_TEXT, text_number);
    state().store.put({CX_TAG_TEXT_BLOCK, block, 0}, record);
    return block;
  }
};

}  // namespace

Document& document() {
  static DocumentImpl instance;
  return instance;
}

}  // namespace cantel_engine

extern "C" CANTEL_ENGINE_API cantel_engine::Document* CantelEngine_Document() {
  return &cantel_engine::document();
}
