#include "generate.h"

#include <cantel/cantel.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "dialog_state.h"
#include "drum_clef.h"
#include "frame_record.h"
#include "groove_file.h"
#include "host_api.h"
#include "load_groove.h"
#include "measures.h"
#include "messages.h"
#include "module_state.h"
#include "percussion_staff.h"
#include "playback_markers.h"
#include "records.h"
#include "regions.h"
#include "slash_notation.h"
#include "staff_list.h"
#include "style_library.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringCannotOpen = 19;
constexpr std::uint32_t kStringNoDrums = 20;
constexpr std::uint32_t kStringMeterMismatch = 21;

constexpr std::uint16_t kNewStaffFlags = 0xF700;
constexpr std::uint16_t kExistingStaffFlagsKept = 0xEFFE;

using host::kVersion;

// The reader's own messages, shown as they arise.
class AlertSink : public groove::DiagnosticSink {
 public:
  void Show(const char* text) override { host::CX_AlertMessage(0, 0, 0, text, kVersion); }
};

std::optional<GrooveBuffer> ReadChosenStyle() {
  if (styleIndex < 0 || static_cast<std::size_t>(styleIndex) >= styleLibrary.size()) {
    return std::nullopt;
  }
  return ReadGrooveFile(grooveFolder + styleLibrary[static_cast<std::size_t>(styleIndex)].found.fileName);
}

// Whether the groove's meter fits the region: equal length, and the same
// number of beats once a dotted beat is counted in its thirds and 2/2 and
// 4/4 are taken for each other.
bool MeterFits(const groove::GroovePattern& groove) {
  if (groove.division <= 0) return false;
  const MeasureSpecification spec = ReadMeasureSpecification(workRegion.startMeasure);
  const std::int64_t regionLength = spec.Length();
  const std::int64_t grooveLength =
      std::int64_t{groove.timeSignature.ticksPerMeasure} * 1024 / groove.division;
  std::int64_t a = spec.beats;
  std::int64_t b = groove.timeSignature.numerator;
  if (a != b) {
    if (spec.beatDuration != FloorPowerOfTwo(spec.beatDuration)) {
      a *= 3;
    } else if (a == 2 * b || 2 * a == b) {
      b = a;
    }
  }
  return regionLength == grooveLength && a == b;
}

struct Target {
  std::uint16_t staff = 0;
  ERegion place{};
};

// The staff that receives the groove, and the region of its first
// repetition; nothing when a new staff could not be made.
std::optional<Target> ChooseTarget(bool newStaff) {
  Target target;
  target.place = workRegion;
  target.place.startPosition = 0;
  target.place.endPosition = CX_END_OF_MEASURE;
  target.place.startList = 0;
  target.place.endList = 0;
  if (newStaff) {
    const std::uint16_t added = AddStaffAtBottom();
    if (added == 0 || added == CX_NUMBER_ANY) return std::nullopt;
    target.place.startSlot = target.place.endSlot = host::CX_InstToSlot(added, 0, kVersion);
  } else {
    target.place.startSlot = target.place.endSlot =
        static_cast<std::uint16_t>(targetStaffIndex + 1);
  }
  target.staff = host::CX_SlotToInst(target.place.startSlot, target.place.startList, kVersion);
  if (target.staff == 0 || target.place.startSlot == 0) return std::nullopt;
  return target;
}

void PrepareStaff(NotationStyle style, std::uint16_t staff, bool newStaff) {
  switch (style) {
    case NotationStyle::PercussionMap:
      notation::SetUpPercussionStaff(staff, workRegion, newStaff);
      break;
    case NotationStyle::Slash: {
      notation::FrameRecord frames;
      frames.Load(staff, workRegion.startMeasure);
      notation::SetStaffClef(staff, frames.Clef(), workRegion);
      break;
    }
    case NotationStyle::Normal:
      notation::SetStaffClef(staff, notation::kDrumSetClef, workRegion);
      break;
    default:  // no row chosen in the Generate list: only the channel below
      break;
  }
  notation::EnsurePercussionChannel(staff);
}

// One import per repetition of the groove; the last is cut at the region's end.
void PlaceRepetitions(ERegion place, const std::u16string& path, std::int64_t grooveMeasures) {
  std::uint8_t block[CX_MIDI_BLOCK_SIZE] = {};
  const std::size_t units = std::min<std::size_t>(path.size(), CX_PATH_UNITS - 1);
  std::memcpy(block + CX_MIDI_BLOCK_PATH, path.data(), units * sizeof(char16_t));

  const std::int64_t measures =
      std::int64_t{workRegion.endMeasure} - std::int64_t{workRegion.startMeasure} + 1;
  const std::int64_t repetitions = std::max<std::int64_t>(1, (measures + grooveMeasures - 1) / grooveMeasures);
  std::int64_t start = workRegion.startMeasure;
  for (std::int64_t k = 0; k < repetitions; ++k) {
    place.startMeasure = static_cast<std::uint16_t>(start);
    place.startPosition = 0;
    place.endMeasure =
        static_cast<std::uint16_t>(std::min<std::int64_t>(start + grooveMeasures - 1, workRegion.endMeasure));
    place.endPosition = CX_END_OF_MEASURE;
    std::memcpy(block + CX_MIDI_BLOCK_REGION, &place, sizeof place);
    host::CX_ProcessMidiDataNoSplit(block, kVersion);
    start += grooveMeasures;
  }
}

void FinishStaff(NotationStyle style, std::uint16_t staff, bool newStaff) {
  if (style == NotationStyle::Slash) {
    ERegion region = workRegion;
    region.startList = region.endList = 0;
    region.startSlot = region.endSlot = host::CX_InstToSlot(staff, 0, kVersion);
    notation::ApplySlashNotation(region);
    return;
  }
  std::uint8_t spec[CX_STAFF_SPEC_SIZE];
  if (!LoadRecord(CX_TAG_STAFF_SPEC, staff, 0, spec, sizeof spec)) return;
  const std::uint16_t flags = cx_get_u16(spec, CX_STAFF_SPEC_FLAGS);
  cx_put_u16(spec, CX_STAFF_SPEC_FLAGS,
             newStaff ? kNewStaffFlags : static_cast<std::uint16_t>(flags & kExistingStaffFlagsKept));
  SaveRecord(CX_TAG_STAFF_SPEC, staff, 0, spec, sizeof spec);
}

void AddMarkers(std::uint16_t staff) {
  notation::AddPlaybackOffMarker(staff, workRegion.startMeasure);
  if (workRegion.endMeasure < documentRegion.endMeasure) {
    notation::AddPlaybackOnMarker(staff, static_cast<std::uint16_t>(workRegion.endMeasure + 1));
  }
}

}  // namespace

bool GenerateGroove(void*, std::uint32_t* data) {
  if (!CheckTimeSignatures()) return false;
  const bool newStaff = data != nullptr && (*data & kFlagNewStaff) != 0;
  if (!newStaff && !CheckExistingNotes()) return false;

  std::optional<GrooveBuffer> groove = ReadChosenStyle();
  if (!groove) {
    ShowMessage(kStringCannotOpen, CX_MB_EXCLAMATION);
    return false;
  }

  groove::GroovePattern pattern;
  try {
    AlertSink sink;
    groove::SmfReader reader(groove->bytes.get(), &groove->size, groove->capacity, sink);
    pattern = groove::LoadGroove(reader, documentRegion.endMeasure);
  } catch (const std::out_of_range&) {
    // A file that would drive the reader outside its limits.
    ShowMessage(kStringCannotOpen, CX_MB_EXCLAMATION);
    return false;
  }
  if (!pattern.loaded) return false;
  if (!pattern.drumNotesFound || pattern.lastDrumMeasure == 0) {
    ShowMessage(kStringNoDrums, CX_MB_EXCLAMATION);
    return false;
  }
  const std::int64_t grooveMeasures = std::max<std::int64_t>(1, groove::GrooveMeasures(pattern));
  if (!MeterFits(pattern)) {
    ShowMessage(kStringMeterMismatch, CX_MB_EXCLAMATION);
    return false;
  }

  TemporaryGrooveFile temporary;
  if (temporary.Write(*groove)) {
    const std::optional<Target> target = ChooseTarget(newStaff);
    if (!target) return false;  // nothing was created; the file goes with `temporary`
    const auto style = static_cast<NotationStyle>(notationIndex);
    PrepareStaff(style, target->staff, newStaff);
    PlaceRepetitions(target->place, temporary.Path(), grooveMeasures);
    temporary.Delete();
    FinishStaff(style, target->staff, newStaff);
    AddMarkers(target->staff);
  }
  commandResult = 1;
  return true;
}

}  // namespace rw::shell
