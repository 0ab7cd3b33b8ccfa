#include "generate.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "groove_parts.h"
#include "host_api.h"
#include "percussion_staff.h"
#include "phrase_plan.h"
#include "playback_markers.h"
#include "region_checks.h"
#include "staff_list.h"
#include "staff_names.h"
#include "string_resources.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringTemporaryFolder = 30;
constexpr std::uint32_t kStringNewStaffName = 38;          // "Drums"
constexpr std::uint32_t kStringNewStaffAbbreviation = 39;  // "Dr."

using host::kVersion;

// The parts a run places, by GroovePart; the ones not placed stay empty.
using Parts = std::array<std::optional<LoadedPart>, 3>;

std::optional<LoadedPart>& PartOf(Parts& parts, GroovePart part) {
  return parts[static_cast<std::size_t>(part)];
}

// The main groove, and each companion that is chosen and present. False
// when one of them is refused (its message shown).
bool LoadParts(const GenerateOptions& options, groove::RegionMeter meter, Parts& parts) {
  const GrooveStyle& style = options.style;
  PartOf(parts, GroovePart::kMain) = LoadPart(GroovePart::kMain, style, meter);
  if (!PartOf(parts, GroovePart::kMain)) return false;
  if (options.fillEvery > 0 && style.HasFill()) {
    PartOf(parts, GroovePart::kFill) = LoadPart(GroovePart::kFill, style, meter);
    if (!PartOf(parts, GroovePart::kFill)) return false;
  }
  if (options.ending && style.HasEnding()) {
    PartOf(parts, GroovePart::kEnding) = LoadPart(GroovePart::kEnding, style, meter);
    if (!PartOf(parts, GroovePart::kEnding)) return false;
  }
  return true;
}

std::vector<Placement> Plan(const GenerateOptions& options, Parts& parts) {
  PhraseLengths lengths;
  lengths.groove = PartOf(parts, GroovePart::kMain)->Measures();
  if (const auto& fill = PartOf(parts, GroovePart::kFill)) {
    lengths.fill = fill->Measures();
    lengths.phrase = options.fillEvery;
  }
  if (const auto& ending = PartOf(parts, GroovePart::kEnding)) lengths.ending = ending->Measures();
  return PlanPlacements(options.work.startMeasure, options.work.endMeasure, lengths);
}

// Every part the plan places brings at least one drum note-on into the
// measures it is placed in: each placement imports its part from the part's
// start, so the longest placement shows what can be heard of it.
bool PlacementsSoundDrums(const std::vector<Placement>& plan, const GenerateOptions& options,
                          groove::RegionMeter meter, Parts& parts) {
  for (auto& part : parts) {
    if (!part) continue;
    std::uint32_t longest = 0;
    for (const Placement& placement : plan) {
      if (placement.part != part->part) continue;
      longest = std::max(longest, placement.lastMeasure - placement.firstMeasure + 1);
    }
    if (longest > 0 && !CoversItsDrums(*part, options.style, meter, longest)) return false;
  }
  return true;
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
    // Unnamed, the host would show it as "[Staff n]". A refused name leaves
    // it so: the groove still has its staff.
    if (added.staff != 0) {
      SetStaffNames(added.staff, StringResource(kStringNewStaffName).c_str(),
                    StringResource(kStringNewStaffAbbreviation).c_str());
    }
  } else {
    target.slot = static_cast<std::uint16_t>(options.staffRow + 1);
    target.staff = host::CX_SlotToInst(target.slot, 0, kVersion);
  }
  if (target.staff == 0 || target.staff == CX_NUMBER_ANY || target.slot == 0) return std::nullopt;
  return target;
}

// One import per placement, each of its part's file through the temporary
// file, into its own measures of the target staff. The temporary file holds
// `inFile` to begin with.
void Place(const std::vector<Placement>& plan, std::uint16_t slot, Parts& parts,
           TemporaryGrooveFile& temporary, GroovePart inFile) {
  std::uint8_t block[CX_MIDI_BLOCK_SIZE] = {};
  const std::u16string& path = temporary.Path();
  const std::size_t units = std::min<std::size_t>(path.size(), CX_PATH_UNITS - 1);
  std::memcpy(block + CX_MIDI_BLOCK_PATH, path.data(), units * sizeof(char16_t));
  for (const Placement& placement : plan) {
    if (placement.part != inFile) {
      // Written and read back once already, before the score changed.
      if (!temporary.Rewrite(PartOf(parts, placement.part)->file)) return;
      inFile = placement.part;
    }
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
  const groove::RegionMeter meter = RegionMeterOf(options.work);
  Parts parts;
  if (!LoadParts(options, meter, parts)) return false;
  const std::vector<Placement> plan = Plan(options, parts);
  if (!PlacementsSoundDrums(plan, options, meter, parts)) return false;

  // Every file the import will read is written and read back before the
  // score changes; the last one written stays in the file.
  TemporaryGrooveFile temporary;
  GroovePart inFile = GroovePart::kMain;
  for (const auto& part : parts) {
    if (!part) continue;
    if (!temporary.Write(part->file)) {
      ShowMessage(kStringTemporaryFolder, CX_MB_EXCLAMATION, temporary.Folder());
      return false;
    }
    inFile = part->part;
  }

  const std::optional<StaffTarget> target = ChooseTarget(options);
  if (!target) return false;  // nothing was created; the file goes with `temporary`
  const NotationStyleRow& notation =
      NotationStyleOfRow(static_cast<std::int32_t>(options.notation));
  notation.prepare(*target, options.work);
  notation::EnsurePercussionChannel(target->staff);
  Place(plan, target->slot, parts, temporary, inFile);
  temporary.Delete();
  notation.finish(*target, options.work);
  AddMarkers(*target, options);
  return true;
}

}  // namespace rw::shell
