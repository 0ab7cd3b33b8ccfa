// Everything the engine holds for its one document, and the helpers the
// exported functions share. Single-threaded: the host calls its plug-ins on
// its UI thread only.
#ifndef CANTEL_ENGINE_STATE_H
#define CANTEL_ENGINE_STATE_H

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cantel_engine/document.h"
#include "record_store.h"

namespace cantel_engine {

inline constexpr std::uint16_t kMaxLayers = 4;

struct FrameKey {
  std::uint16_t staff = 0;
  std::uint16_t measure = 0;
  std::uint16_t layer = 0;
  auto operator<=>(const FrameKey&) const = default;
};

// The entries of one staff, measure and layer: CX_ENTRY_SIZE bytes each,
// back to back, exactly as a TGF carries them.
struct StoredFrame {
  Bytes entries;
  std::uint16_t number = 0;  // non-zero while the layer holds entries
};

// A TGF handed out by CX_LoadTGF. The header is the 24 bytes the plug-in
// sees; the entries live in a vector whose address the header points at.
struct OpenFrame {
  std::array<std::uint8_t, CX_TGF_SIZE> header{};
  Bytes entries;
  FrameKey key;
  void publish();  // writes the entry pointer and count into the header
};

// How a drawn dialog is shown to a watching person or a screenshot.
struct Presentation {
  int hold_ms = 0;
  std::string folder;
  std::string name;
};

struct State {
  RecordStore store;
  std::map<FrameKey, StoredFrame> frames;
  std::map<std::pair<std::uint16_t, std::uint16_t>, std::uint16_t> clefs;  // (staff, measure)
  std::uint16_t next_frame_number = 1;
  std::vector<FontEntry> fonts;
  std::optional<std::string> temporary_path;
  std::optional<std::string> component_path;
  std::optional<std::string> groove_folder;  // the plug-in's, inside component_path
  std::deque<std::uint16_t> answers;
  std::vector<DialogAction> dialog_script;
  std::set<std::uint32_t> refused_tags;
  int refused_count = 0;
  std::optional<ERegion> selection;
  std::vector<AlertRecord> alerts;
  EditLog edits;
  std::map<const void*, std::unique_ptr<OpenFrame>> open_frames;
  std::vector<ImportRecord> imports;
  std::vector<DialogStep> dialog_steps;
  std::vector<HostCall> calls;
  std::optional<std::uint32_t> data_word;
  int open_edits = 0;
  Presentation presentation;
  int dialogs_shown = 0;
};

State& state();
void reset_state();

// Record writes that honour the refusal fault; false when refused.
bool write_allowed(std::uint32_t tag);

// Measures are "SMOS" records.
bool measure_exists(std::uint16_t measure);
std::int32_t measure_duration(std::uint16_t measure);
std::uint16_t measure_count();

// Staves: "SIOS" records, ordered by staff list 0 ("uIOS" (list, index)).
bool staff_exists(std::uint16_t staff);
std::uint16_t staff_of_slot(std::uint16_t list, std::uint16_t slot);
std::uint16_t slot_of_staff(std::uint16_t staff, std::uint16_t list);
std::vector<std::uint16_t> staff_list(std::uint16_t list);
// Appends a staff to the bottom of list 0.
void append_to_staff_list(std::uint16_t staff);

// Frames.
void store_frame(const FrameKey& key, Bytes entries);
void clear_layers(std::uint16_t staff, std::uint16_t measure);
void write_entry(std::uint8_t* entry, std::int32_t position, std::int32_t duration,
                 const std::vector<std::uint16_t>& keys);
EntryInfo read_entry(const std::uint8_t* entry);

// Fonts and texts.
std::optional<std::uint16_t> font_number(const std::u16string& name);
const FontEntry* font_entry(std::uint16_t number);
void install_default_fonts(State& s);

// The MIDI import behind CX_ProcessMidiDataNoSplit; returns its answer.
std::uint32_t import_midi(const std::uint8_t* block);

}  // namespace cantel_engine

#endif
