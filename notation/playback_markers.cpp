#include "playback_markers.h"

#include <cantel/cantel.h>

#include <algorithm>

#include "host_api.h"
#include "records.h"
#include "text_expression.h"

namespace rw::notation {
namespace {

constexpr std::int32_t kLookBackMeasures = 25;
constexpr std::uint32_t kSubNumberLimit = 0xFFFF;

constexpr std::uint16_t kMarkerFontPreference = 6;
constexpr std::uint16_t kMarkerEffect = 0x0080;
constexpr std::uint16_t kFallbackFontSize = 0x1000;  // 16 points, in the high byte
constexpr std::uint16_t kAssignmentMarkerWord = 76;
constexpr std::size_t kAssignmentMarkerOffset = 6;

// Which markers of the staff one measure holds.
struct MarkersFound {
  bool on = false;
  bool off = false;
  bool Any() const { return on || off; }
};

// The playback type of an assignment when it is one of the staff's markers,
// else 0. Assignments to all staves, or excluded ones, never count.
std::uint16_t MarkerType(const std::uint8_t* assignment, std::uint16_t instrument) {
  const std::uint16_t flags = cx_get_u16(assignment, CX_EXPRESSION_ASSIGN_FLAGS);
  if ((flags & CX_EXPRESSION_ASSIGN_STAFF_ONLY) == 0 ||
      (flags & CX_EXPRESSION_ASSIGN_EXCLUDED) != 0 ||
      cx_get_u16(assignment, CX_EXPRESSION_ASSIGN_STAFF) != instrument) {
    return 0;
  }
  std::uint8_t definition[CX_EXPRESSION_DEF_SIZE];
  std::uint32_t size = CX_EXPRESSION_DEF_SIZE;
  if (!LoadTDOSRecord(cx_get_u16(assignment, CX_EXPRESSION_ASSIGN_DEF), definition, &size)) {
    return 0;
  }
  const auto type =
      static_cast<std::uint16_t>(cx_get_u16(definition, CX_EXPRESSION_DEF_CATEGORY) & 0xFF);
  return type == kPlaybackOnType || type == kPlaybackOffType ? type : 0;
}

bool LoadAssignment(std::uint16_t measure, std::uint32_t sub, std::uint8_t* assignment) {
  return LoadRecord(CX_TAG_EXPRESSION_ASSIGN, measure, static_cast<std::uint16_t>(sub), assignment,
                    CX_EXPRESSION_ASSIGN_SIZE);
}

MarkersFound ScanMarkers(std::uint16_t instrument, std::uint16_t measure) {
  MarkersFound found;
  std::uint8_t assignment[CX_EXPRESSION_ASSIGN_SIZE];
  for (std::uint32_t sub = 0; sub < kSubNumberLimit && LoadAssignment(measure, sub, assignment);
       ++sub) {
    const std::uint16_t type = MarkerType(assignment, instrument);
    found.on = found.on || type == kPlaybackOnType;
    found.off = found.off || type == kPlaybackOffType;
  }
  return found;
}

// True when the last marker within the look-back leaves playback off.
bool PlaybackAlreadyOffBefore(std::uint16_t instrument, std::uint16_t startMeasure) {
  const std::int32_t first = std::int32_t{startMeasure} - 1;
  const std::int32_t last =
      std::max<std::int32_t>(1, std::int32_t{startMeasure} - kLookBackMeasures);
  for (std::int32_t measure = first; measure >= last; --measure) {
    const MarkersFound found = ScanMarkers(instrument, static_cast<std::uint16_t>(measure));
    if (found.Any()) return !found.on;
  }
  return false;
}

}  // namespace

bool AddPlaybackOffMarker(std::uint16_t instrument, std::uint16_t startMeasure) {
  if (PlaybackAlreadyOffBefore(instrument, startMeasure)) return false;
  std::uint8_t assignment[CX_EXPRESSION_ASSIGN_SIZE];
  for (std::uint32_t sub = 0;
       sub < kSubNumberLimit && LoadAssignment(startMeasure, sub, assignment);) {
    const std::uint16_t type = MarkerType(assignment, instrument);
    if (type == kPlaybackOffType) return false;
    // Deleting moves the later ones down onto this sub-number; a refused
    // delete moves the scan on instead.
    if (type == kPlaybackOnType &&
        DeleteRecord(CX_TAG_EXPRESSION_ASSIGN, startMeasure, static_cast<std::uint16_t>(sub))) {
      continue;
    }
    ++sub;
  }
  return CreateMarkerExpression(u"<HP off>", instrument, startMeasure, kPlaybackOffType, true);
}

bool AddPlaybackOnMarker(std::uint16_t instrument, std::uint16_t measure) {
  if (ScanMarkers(instrument, measure).Any()) return false;
  return CreateMarkerExpression(u"<HP on>", instrument, measure, kPlaybackOnType, true);
}

bool CreateMarkerExpression(const char16_t* text, std::uint16_t instrument, std::uint16_t measure,
                            std::uint16_t type, bool markerFlag) {
  std::uint16_t fontWord = 0;
  std::uint16_t effects = 0;
  std::uint8_t font[CX_FONT_PREFS_SIZE];
  if (LoadRecord(CX_TAG_FONT_PREFS, kMarkerFontPreference, 0, font, CX_FONT_PREFS_SIZE)) {
    fontWord =
        static_cast<std::uint16_t>((cx_get_u16(font, 0) & 0xFF) | (cx_get_u16(font, 2) << 8));
    effects = cx_get_u16(font, 4);
    if (markerFlag) effects |= kMarkerEffect;
  } else {
    // The fall-back keeps effects 0 even for a marker, deliberately.
    const std::uint16_t times = host::CX_FontNameToNum_UTF16(u"Times New Roman", host::kVersion);
    fontWord = static_cast<std::uint16_t>((times & 0xFF) | kFallbackFontSize);
  }

  const std::uint16_t definition =
      CreateTextExpression(text, fontWord, effects, type, 0, 0, true, type);
  if (definition == 0) return false;

  std::uint8_t measureRecord[CX_MEASURE_SIZE];
  const bool measureLoaded = LoadMeasureRecord(measure, measureRecord);

  std::uint8_t assignment[CX_EXPRESSION_ASSIGN_SIZE] = {};
  cx_put_u16(assignment, CX_EXPRESSION_ASSIGN_DEF, definition);
  cx_put_u16(assignment, kAssignmentMarkerOffset, kAssignmentMarkerWord);
  cx_put_u16(assignment, CX_EXPRESSION_ASSIGN_STAFF, instrument);
  std::uint16_t number = measure;
  std::uint16_t sub = CX_SUBNUMBER_APPEND;
  const bool assigned =
      CreateRecord(CX_TAG_EXPRESSION_ASSIGN, number, sub, assignment, CX_EXPRESSION_ASSIGN_SIZE);

  if (measureLoaded) {
    cx_put_u16(measureRecord, CX_MEASURE_FLAGS,
               static_cast<std::uint16_t>(cx_get_u16(measureRecord, CX_MEASURE_FLAGS) |
                                          CX_MEASURE_FLAG_EXPRESSIONS));
    SaveMeasureRecord(measure, measureRecord);
  }
  return assigned;
}

}  // namespace rw::notation
