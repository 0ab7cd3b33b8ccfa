// Fonts, the caret-command parser, alerts, paths and undoable edits.
#include <algorithm>
#include <cstring>

#include "exports.h"
#include "state.h"
#include "utf.h"

using namespace cantel_engine;

CX_EXPORT uint16_t CX_FontNumToName_UTF16(uint16_t font, cx_char16* name, uint16_t capacity,
                                          uint32_t) {
  const FontEntry* entry = font_entry(font);
  if (entry == nullptr || name == nullptr || capacity == 0) return 0;
  const std::u16string text = utf8_to_utf16(entry->name);
  const std::size_t units = std::min<std::size_t>(text.size(), capacity - 1u);
  std::copy_n(text.begin(), units, name);
  name[units] = 0;
  return 1;
}
CX_CHECK_SIGNATURE(CX_FontNumToName_UTF16);

CX_EXPORT uint16_t CX_FontNameToNum_UTF16(const cx_char16* name, uint32_t) {
  if (name == nullptr) return 0xFFFF;
  return font_number(read_utf16(name, 1024)).value_or(0xFFFF);
}
CX_CHECK_SIGNATURE(CX_FontNameToNum_UTF16);

namespace {

// "^name(arguments)" at `text`: name and arguments, and the position after
// the closer; nothing when the text holds no complete command there.
struct CaretCommand {
  std::u16string name;
  std::u16string arguments;
  const cx_char16* after = nullptr;
};

std::optional<CaretCommand> split_command(const cx_char16* text) {
  if (text == nullptr || text[0] != u'^') return std::nullopt;
  CaretCommand command;
  const cx_char16* p = text + 1;
  while (*p != 0 && *p != u'(') command.name.push_back(*p++);
  if (*p != u'(') return std::nullopt;
  ++p;
  while (*p != 0 && *p != u')') command.arguments.push_back(*p++);
  if (*p != u')') return std::nullopt;
  command.after = p + 1;
  return command;
}

uint16_t parse_number(const std::u16string& text) {
  std::uint32_t value = 0;
  for (char16_t c : text) {
    if (c < u'0' || c > u'9') break;
    value = std::min<std::uint32_t>(value * 10 + (c - u'0'), 0xFFFF);
  }
  return static_cast<uint16_t>(value);
}

}  // namespace

CX_EXPORT const cx_char16* CX_ParseCaretCommand_UTF16(const cx_char16* text, const cx_char16** end,
                                                      uint32_t, uint16_t* font_info, uint32_t) {
  const auto command = split_command(text);
  if (!command) {
    if (end != nullptr) *end = text;
    return nullptr;
  }
  if (font_info != nullptr) {
    if (command->name == u"font") {
      const auto comma = command->arguments.find(u',');
      font_info[0] = font_number(command->arguments.substr(0, comma)).value_or(0);
    } else if (command->name == u"size") {
      font_info[1] = parse_number(command->arguments);
    } else if (command->name == u"nfx") {
      font_info[2] = parse_number(command->arguments);
    }
  }
  if (end != nullptr) *end = command->after;
  return command->after;
}
CX_CHECK_SIGNATURE(CX_ParseCaretCommand_UTF16);

namespace {
uint16_t show_alert(std::string text, uint16_t style, bool wide) {
  State& s = state();
  uint16_t answer = 1;
  if (style == CX_MB_QUESTION_YESNO) {
    answer = CX_ID_NO;
    if (!s.answers.empty()) {
      answer = s.answers.front();
      s.answers.pop_front();
    }
  }
  s.alerts.push_back({std::move(text), style, answer, wide});
  return answer;
}
}  // namespace

CX_EXPORT uint16_t CX_AlertMessage(uint64_t, uint16_t style, uint32_t number, const char* text,
                                   uint32_t) {
  std::string shown = text != nullptr ? std::string(text) : std::string();
  if (number != 0) shown = "[string " + std::to_string(number) + "]";
  return show_alert(std::move(shown), style, false);
}
CX_CHECK_SIGNATURE(CX_AlertMessage);

CX_EXPORT uint16_t CX_AlertMessage_UTF16(uint64_t, uint16_t style, uint32_t number,
                                         const cx_char16* text, uint32_t) {
  std::string shown = utf16_to_utf8(read_utf16(text, 65536));
  if (number != 0) shown = "[string " + std::to_string(number) + "]";
  return show_alert(std::move(shown), style, true);
}
CX_CHECK_SIGNATURE(CX_AlertMessage_UTF16);

CX_EXPORT uint16_t CX_GetCantelPath(uint32_t kind, cx_char16* path, uint32_t) {
  if (path == nullptr) return 0;
  const std::optional<std::string>* chosen = nullptr;
  if (kind == CX_PATH_TEMPORARY) chosen = &state().temporary_path;
  if (kind == CX_PATH_COMPONENT_FILES) chosen = &state().component_path;
  if (chosen == nullptr) return 0;
  const std::u16string text = utf8_to_utf16(chosen->value_or(""));
  const std::size_t units = std::min<std::size_t>(text.size(), CX_PATH_UNITS - 1);
  std::copy_n(text.begin(), units, path);
  path[units] = 0;
  return 1;
}
CX_CHECK_SIGNATURE(CX_GetCantelPath);

// The log counts one invoke's edits; the open count spans invokes, so that
// an edit a run leaves open can still be closed by the next.
CX_EXPORT uint16_t CX_StartCantelEdit(const char* name, uint32_t) {
  State& s = state();
  ++s.edits.started;
  ++s.open_edits;
  s.edits.labels.push_back(name != nullptr ? name : "");
  return 1;
}
CX_CHECK_SIGNATURE(CX_StartCantelEdit);

CX_EXPORT uint16_t CX_EndCantelEdit(uint32_t) {
  State& s = state();
  if (s.open_edits < 1) {
    ++s.edits.unbalanced_ends;
    return 0;
  }
  --s.open_edits;
  ++s.edits.ended;
  return 1;
}
CX_CHECK_SIGNATURE(CX_EndCantelEdit);

CX_EXPORT uint32_t CX_ProcessMidiDataNoSplit(void* block, uint32_t) {
  if (block == nullptr) return 0xFFFFFFFFu;
  return import_midi(static_cast<const std::uint8_t*>(block));
}
CX_CHECK_SIGNATURE(CX_ProcessMidiDataNoSplit);

CX_EXPORT uint16_t CX_GetCurERegions(ERegion* region, void*, void*, uint32_t) {
  const auto& selection = state().selection;
  if (region == nullptr || !selection) return 0;
  std::memcpy(region, &*selection, sizeof(ERegion));
  return 1;
}
CX_CHECK_SIGNATURE(CX_GetCurERegions);
