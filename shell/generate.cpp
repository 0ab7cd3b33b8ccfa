#include "generate.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <stdexcept>

#include "groove_file.h"
#include "host_api.h"
#include "load_groove.h"
#include "measures.h"
#include "percussion_staff.h"
#include "phrase_plan.h"
#include "playback_markers.h"
#include "region_checks.h"
#include "regions.h"
#include "staff_list.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringCannotOpen = 19;
constexpr std::uint32_t kStringNoDrums = 20;
constexpr std::uint32_t kStringMeterMismatch = 21;
constexpr std::uint32_t kStringTemporaryFolder = 30;

using host::kVersion;

// The reader's own messages, shown as they arise.
class AlertSink : public groove::DiagnosticSink {
 public:
  void Show(const char* text) override { host::CX_AlertMessage(0, 0, 0, text, kVersion); }
};

// Whether the groove's meter fits the region: equal length, and the same
// number of beats once a dotted beat is counted in its thirds and 2/2 and
// 4/4 are taken for each other.
bool MeterFits(const groove::GroovePattern& groove, const ERegion& work) {
  if (groove.division <= 0) return false;
  const MeasureSpecification spec = ReadMeasureSpecification(work.startMeasure);
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

// The staff that receives the groove: a new one at the bottom of the score,
// or the one in the chosen row. Nothing when a new staff could not be made.
std::optional<StaffTarget> ChooseTarget(const GenerateOptions& options) {
  StaffTarget target;
  target.isNew = options.newStaff;
  if (options.newStaff) {
    const RegionStaff added = AddStaffAtBottom();
    target.staff = added.staff;
    target.slot = static_cast<std::uint16_t>(added.slot);
  } else {
    target.slot = static_cast<std::uint16_t>(options.staffRow + 1);
    target.staff = host::CX_SlotToInst(target.slot, 0, kVersion);
  }
  if (target.staff == 0 || target.staff == CX_NUMBER_ANY || target.slot == 0) return std::nullopt;
  return target;
}

// One import per placement, each into its own measures of the target staff.
void Place(const std::vector<Placement>& plan, std::uint16_t slot, const std::u16string& path) {
  std::uint8_t block[CX_MIDI_BLOCK_SIZE] = {};
  const std::size_t units = std::min<std::size_t>(path.size(), CX_PATH_UNITS - 1);
  std::memcpy(block + CX_MIDI_BLOCK_PATH, path.data(), units * sizeof(char16_t));
  for (const Placement& placement : plan) {
    ERegion place{};
    place.startSlot = place.endSlot = slot;
    place.startMeasure = static_cast<std::uint16_t>(placement.firstMeasure);
    place.endMeasure = static_cast<std::uint16_t>(placement.lastMeasure);
    place.startPosition = 0;
    place.endPosition = CX_END_OF_MEASURE;
    std::memcpy(block + CX_MIDI_BLOCK_REGION, &place, sizeof place);
    host::CX_ProcessMidiDataNoSplit(block, kVersion);
  }
}

void AddMarkers(const StaffTarget& target, const GenerateOptions& options) {
  notation::AddPlaybackOffMarker(target.staff, options.work.startMeasure);
  if (options.work.endMeasure < options.document.endMeasure) {
    notation::AddPlaybackOnMarker(target.staff,
                                  static_cast<std::uint16_t>(options.work.endMeasure + 1));
  }
}

}  // namespace

bool GenerateGroove(const GenerateOptions& options) {
  // The staff list's row is passed as the slot, as it stands.
  if (!options.newStaff &&
      !CheckExistingNotes(options.work, static_cast<std::uint16_t>(options.staffRow + 1))) {
    return false;
  }

  std::optional<GrooveBuffer> groove = ReadGrooveFile(options.style.Path());
  if (!groove) {
    ShowMessage(kStringCannotOpen, CX_MB_EXCLAMATION);
    return false;
  }

  groove::GroovePattern pattern;
  try {
    AlertSink sink;
    groove::SmfReader reader(groove->bytes.get(), &groove->size, groove->capacity, sink);
    pattern = groove::LoadGroove(reader, options.document.endMeasure);
  } catch (const std::out_of_range&) {
    // A file that would drive the reader outside its limits.
    ShowMessage(kStringCannotOpen, CX_MB_EXCLAMATION);
    return false;
  } catch (const std::bad_alloc&) {
    ShowMessage(kStringCannotOpen, CX_MB_EXCLAMATION);
    return false;
  }
  if (!pattern.loaded) return false;
  if (!pattern.drumNotesFound || pattern.lastDrumMeasure == 0) {
    ShowMessage(kStringNoDrums, CX_MB_EXCLAMATION);
    return false;
  }
  const std::int64_t grooveMeasures = std::max<std::int64_t>(1, groove::GrooveMeasures(pattern));
  if (!MeterFits(pattern, options.work)) {
    ShowMessage(kStringMeterMismatch, CX_MB_EXCLAMATION);
    return false;
  }

  TemporaryGrooveFile temporary;
  if (!temporary.Write(*groove)) {
    ShowMessage(kStringTemporaryFolder, CX_MB_EXCLAMATION, temporary.Folder());
    return false;
  }
  const std::optional<StaffTarget> target = ChooseTarget(options);
  if (!target) return false;  // nothing was created; the file goes with `temporary`
  const NotationStyleRow& notation =
      NotationStyleOfRow(static_cast<std::int32_t>(options.notation));
  notation.prepare(*target, options.work);
  notation::EnsurePercussionChannel(target->staff);
  PhraseLengths lengths;
  lengths.groove = static_cast<std::uint32_t>(grooveMeasures);
  Place(PlanPlacements(options.work.startMeasure, options.work.endMeasure, lengths), target->slot,
        temporary.Path());
  temporary.Delete();
  notation.finish(*target, options.work);
  AddMarkers(*target, options);
  return true;
}

}  // namespace rw::shell
