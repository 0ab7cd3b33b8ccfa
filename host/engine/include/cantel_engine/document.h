// In-process access to the reference host's one document: build a score,
// script the user, and inspect what a plug-in (or a test) did to it.
//
// Tests that link CantelEngine call cantel_engine::document(). A program that
// loads the engine by path finds the same object through the exported C
// function CantelEngine_Document(); every member is virtual so that such a
// program needs no link-time symbols.
#ifndef CANTEL_ENGINE_DOCUMENT_H
#define CANTEL_ENGINE_DOCUMENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cantel/cantel.h"

#if defined(_WIN32)
#if defined(CANTEL_ENGINE_BUILD)
#define CANTEL_ENGINE_API __declspec(dllexport)
#else
#define CANTEL_ENGINE_API __declspec(dllimport)
#endif
#else
#define CANTEL_ENGINE_API __attribute__((visibility("default")))
#endif

namespace cantel_engine {

using Bytes = std::vector<std::uint8_t>;

struct MeasureSpec {
  std::int16_t beats = 4;
  std::int16_t beat_duration = 1024;  // a quarter note
  bool composite = false;
  std::uint16_t flags = 0;
};

struct FontEntry {
  std::uint16_t number = 0;
  std::string name;  // UTF-8
  std::uint16_t parameter = 0;
};

// One entry of a frame as the document holds it.
struct EntryInfo {
  std::int32_t position = 0;
  std::int32_t duration = 0;
  std::uint32_t flags = 0;
  std::vector<std::uint16_t> keys;  // in note order, up to 12
};

struct RecordInfo {
  std::uint32_t tag = 0;
  std::uint16_t number = 0;
  std::uint16_t sub = 0;
  Bytes data;
};

struct AlertRecord {
  std::string text;  // UTF-8
  std::uint16_t style = 0;
  std::uint16_t answer = 0;
  bool wide = false;  // came through CX_AlertMessage_UTF16
};

struct ImportRecord {
  ERegion region{};
  std::string path;  // as the plug-in passed it, UTF-8
  std::uint32_t result = 0;
  std::uint32_t notes_placed = 0;
  std::string error;           // why the file could not be read; empty on success
  std::optional<Bytes> bytes;  // the file as it was at the import; none when it did not open
};

// One dialog-related host call as the plug-in made it. `args` are the
// arguments after the dialog handle and before the interface version, with
// pointers as 0 (null) or 1.
struct HostCall {
  std::string fn;
  std::vector<std::int64_t> args;
  std::optional<std::int64_t> result;  // for the calls that answer
  bool foreign_dialog = false;         // the handle was not the open dialog's
  std::uint32_t version = CX_INTERFACE_VERSION;
};

struct EditLog {
  int started = 0;
  int ended = 0;
  int unbalanced_ends = 0;  // ends with no edit open
  std::vector<std::string> labels;
};

// What the user does in a dialog, in order.
struct DialogAction {
  enum class Kind { Click, ChooseStyle, ChooseRow, Close, RemoveGrooveFile };
  Kind kind = Kind::Click;
  int control = 0;   // Click, ChooseRow
  int row = -1;      // ChooseRow by index
  std::string text;  // ChooseStyle (list 2002), ChooseRow by shown text, or the file's name
};

struct ControlState {
  // What the result shows of a control: a button's state, a list's rows, a
  // text the plug-in sets. Labels (their text is the template's) show
  // nothing but whether they are enabled.
  enum class Kind { Label, Button, Radio, CheckBox, ListBox, DropDown, Text };
  int id = 0;
  Kind kind = Kind::Label;
  bool enabled = true;
  std::uint32_t check = 0;         // Radio, CheckBox
  std::vector<std::string> items;  // ListBox, DropDown; UTF-8
  int selection = CX_LIST_NONE;
  std::string text;  // Text: as the plug-in set it, UTF-8
  bool is_list() const { return kind == Kind::ListBox || kind == Kind::DropDown; }
};

// The dialog as the user saw it after one event.
struct DialogStep {
  std::string event;  // "init", "click 21", "timer 1", "system close", ...
  std::string note;   // e.g. why an action was refused
  int focus = 0;
  bool ended = false;
  std::vector<ControlState> controls;
};

class Document {
 public:
  virtual ~Document() = default;

  // An empty score with the default fonts and font preferences, no faults,
  // no scripted user, no logs.
  virtual void reset() = 0;

  // --- building ---------------------------------------------------------
  // Appends measures; returns the number of the first one added.
  virtual std::uint16_t add_measures(int count, const MeasureSpec& spec) = 0;
  // Adds a staff at the bottom of staff list 0 and returns its number. Empty
  // names leave the name field at 0.
  virtual std::uint16_t add_staff(const std::string& full_name,
                                  const std::string& abbreviated_name) = 0;
  virtual void set_record(std::uint32_t tag, std::uint16_t number, std::uint16_t sub,
                          const Bytes& data) = 0;
  virtual bool remove_record(std::uint32_t tag, std::uint16_t number, std::uint16_t sub) = 0;
  // Creates a UTF-16 text record ("lbxt", "pxxt") and returns its number.
  virtual std::uint16_t add_text(std::uint32_t tag, const std::string& text) = 0;
  virtual void set_clef(std::uint16_t staff, std::uint16_t measure, std::uint16_t clef) = 0;
  // Appends one entry to a layer (from 0); no keys makes a rest.
  virtual void add_entry(std::uint16_t staff, std::uint16_t measure, std::uint16_t layer,
                         std::int32_t position, std::int32_t duration,
                         const std::vector<std::uint16_t>& keys) = 0;
  virtual void set_fonts(const std::vector<FontEntry>& fonts) = 0;
  virtual void set_font_preference(std::uint16_t number, std::uint16_t font, std::uint16_t size,
                                   std::uint16_t effects) = 0;
  // Path kinds CX_PATH_TEMPORARY and CX_PATH_COMPONENT_FILES, UTF-8, given
  // as CX_GetCantelPath shall answer them.
  virtual void set_path(std::uint32_t kind, const std::string& path) = 0;
  // The plug-in's groove folder (UTF-8), where the scripted user removes a
  // groove file while the dialog is open. The host itself knows the folder
  // only as the one its runner made.
  virtual void set_groove_folder(const std::string& path) = 0;
  // Answers to the questions (style 36) in order.
  virtual void script_answers(const std::vector<std::uint16_t>& answers) = 0;
  virtual void script_dialog(const std::vector<DialogAction>& actions) = 0;
  // Saves, creates and deletes of this tag are refused from now on.
  virtual void refuse_writes(std::uint32_t tag) = 0;
  virtual void set_selection(const std::optional<ERegion>& selection) = 0;
  // Where the engine draws the dialog itself (Windows): a pause before each
  // scripted action, and a PNG of the dialog before each action saved in
  // `folder` (none when empty) as "<name>.<dialog>.<action>.png", counted
  // from 1 and 0.
  virtual void set_presentation(int hold_ms, const std::string& folder,
                                const std::string& name) = 0;
  // Forgets what the last invoke did (alerts, dialog, edits, imports, calls,
  // data word) and keeps the score; an edit left open stays open.
  virtual void clear_run_log() = 0;

  // --- inspecting -------------------------------------------------------
  // The host's own selection record, which invoke is handed; null when
  // nothing is selected.
  virtual ERegion* selection_record() = 0;
  virtual std::optional<Bytes> record(std::uint32_t tag, std::uint16_t number,
                                      std::uint16_t sub) const = 0;
  virtual std::vector<RecordInfo> records(std::uint32_t tag) const = 0;
  virtual std::vector<RecordInfo> all_records() const = 0;
  virtual std::optional<std::string> text(std::uint32_t tag, std::uint16_t number) const = 0;
  virtual std::uint16_t measure_count() const = 0;
  virtual std::vector<std::uint16_t> staves_in_order() const = 0;
  virtual std::uint16_t clef(std::uint16_t staff, std::uint16_t measure) const = 0;
  virtual std::vector<EntryInfo> entries(std::uint16_t staff, std::uint16_t measure,
                                         std::uint16_t layer) const = 0;
  virtual std::uint16_t frame_number(std::uint16_t staff, std::uint16_t measure,
                                     std::uint16_t layer) const = 0;
  virtual const std::vector<AlertRecord>& alerts() const = 0;
  virtual const EditLog& edits() const = 0;
  virtual int open_frames() const = 0;
  virtual const std::vector<ImportRecord>& imports() const = 0;
  virtual const std::vector<DialogStep>& dialog_steps() const = 0;
  virtual const std::vector<HostCall>& calls() const = 0;
  // The word at the address handed to CX_Dialog, read when the dialog ended.
  virtual std::optional<std::uint32_t> data_word() const = 0;
  // Writes the engine refused because of refuse_writes.
  virtual int refused_writes() const = 0;
};

CANTEL_ENGINE_API Document& document();

}  // namespace cantel_engine

extern "C" CANTEL_ENGINE_API cantel_engine::Document* CantelEngine_Document();

#endif
