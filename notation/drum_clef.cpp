#include "drum_clef.h"

#include <algorithm>

#include "frame_record.h"
#include "host_api.h"
#include "records.h"
#include "user_messages.h"

namespace rw::notation {
namespace {

// Clef definition "fcbg", numbered by clef index.
constexpr std::size_t kClefPosition = 0;
constexpr std::size_t kClefSymbol = 2;
constexpr std::size_t kClefPosition2 = 6;
constexpr std::size_t kClefOptions = 8;
constexpr std::size_t kClefFont = 12;
constexpr std::size_t kClefFontSize = 14;
constexpr std::size_t kClefFontEffects = 16;
constexpr std::size_t kClefFlags = 18;
constexpr std::uint16_t kClefOwnFont = 0x0002;

constexpr std::uint32_t kDrumClefQuestion = 26;
constexpr std::size_t kFontNameCapacity = 256;
constexpr char16_t kSonetta[] = u"Sonetta";
constexpr std::size_t kSonettaLength = 7;

bool FontIsSonetta(std::uint16_t font) {
  char16_t name[kFontNameCapacity] = {};
  host::CX_FontNumToName_UTF16(font, name, kFontNameCapacity, host::kVersion);
  name[kFontNameCapacity - 1] = 0;
  return std::equal(kSonetta, kSonetta + kSonettaLength, name);
}

// A definition without a font of its own is drawn in font 0.
bool DrawnInSonetta(const std::uint8_t* definition) {
  const bool ownFont = (cx_get_u16(definition, kClefFlags) & kClefOwnFont) != 0;
  return FontIsSonetta(ownFont ? cx_get_u16(definition, kClefFont) : std::uint16_t{0});
}

// The plug-in's own drawing of the drum-set clef; the word at byte 10 is
// the host's and stays.
void WriteRepairedDefinition(std::uint8_t* definition) {
  cx_put_u16(definition, kClefPosition, static_cast<std::uint16_t>(-10));
  cx_put_u32(definition, kClefSymbol, 139);
  cx_put_u16(definition, kClefPosition2, static_cast<std::uint16_t>(-6));
  cx_put_u16(definition, kClefOptions, 0);
  cx_put_u16(definition, kClefFont, host::CX_FontNameToNum_UTF16(kSonetta, host::kVersion));
  cx_put_u16(definition, kClefFontSize, 24);
  cx_put_u16(definition, kClefFontEffects, 0);
  cx_put_u16(definition, kClefFlags,
             static_cast<std::uint16_t>(cx_get_u16(definition, kClefFlags) | kClefOwnFont));
}

}  // namespace

void SetStaffClef(std::uint16_t instrument, std::uint16_t clef, const ERegion& region) {
  const std::uint32_t lastMeasure = region.endMeasure;
  FrameRecord frames;
  for (std::uint32_t measure = region.startMeasure; measure <= lastMeasure; ++measure) {
    const auto measureNumber = static_cast<std::uint16_t>(measure);
    if (!frames.Load(instrument, measureNumber)) continue;
    frames.SetClef(clef);
    frames.Save(instrument, measureNumber);
  }
  if (clef != kDrumSetClef) return;

  std::uint8_t definition[CX_CLEF_DEF_SIZE];
  const bool loaded = LoadRecord(CX_TAG_CLEF_DEF, kDrumSetClef, 0, definition, CX_CLEF_DEF_SIZE);
  if (loaded && DrawnInSonetta(definition)) return;
  if (!AskYesNo(kDrumClefQuestion)) return;
  // A definition the host does not give counts as wrong, but only a record
  // that was read is written back.
  if (!loaded) return;
  WriteRepairedDefinition(definition);
  SaveRecord(CX_TAG_CLEF_DEF, kDrumSetClef, 0, definition, CX_CLEF_DEF_SIZE);
}

}  // namespace rw::notation
