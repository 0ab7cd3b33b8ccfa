#include "generate.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <optional>

#include "arrangement.h"
#include "crash_downbeat.h"
#include "host_api.h"
#include "percussion_staff.h"
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

// The command's report: each box and message shown as the steps find it.
class ShownReport : public ArrangementReport {
 public:
  void ReaderBox(const std::string& box) override {
    host::CX_AlertMessage(0, 0, 0, box.c_str(), kVersion);
  }
  void Refusal(PartKind, const std::u16string& text) override {
    if (!text.empty()) host::CX_AlertMessage_UTF16(0, CX_MB_EXCLAMATION, 0, text.c_str(), kVersion);
  }
};

// The part's file with a crash on its downbeat; as it is when one sounds
// there already.
GrooveBuffer WithCrashOnTheDownbeat(const GrooveBuffer& file) {
  const groove::CrashDownbeat crash = groove::WithCrashOnDownbeat(file.view());
  const bool rewritten = crash.outcome == groove::CrashOutcome::kStrokeBecameCrash ||
                         crash.outcome == groove::CrashOutcome::kCrashAdded;
  GrooveBuffer copy = groove::CopyIntoGrooveBuffer(rewritten ? crash.file : file.view());
  if (!copy.bytes) throw std::bad_alloc();
  return copy;
}

// The files the import reads: each part's, and the crash versions of the
// parts that follow a fill, written by the plug-in from the groove it
// places.
struct ImportFile {
  PartKind part = PartKind::kMain;
  bool crash = false;
  GrooveBuffer file;
};

std::vector<ImportFile> FilesOf(Arrangement& arrangement) {
  std::vector<ImportFile> files;
  for (auto& load : arrangement.parts) {
    if (!load) continue;
    const PartKind part = load->loaded.part;
    const bool crashes = std::any_of(arrangement.plan.begin(), arrangement.plan.end(),
                                     [&](const Placement& p) { return p.part == part && p.crash; });
    if (crashes) files.push_back({part, true, WithCrashOnTheDownbeat(load->loaded.file)});
    files.push_back({part, false, std::move(load->loaded.file)});
  }
  return files;
}

const ImportFile& FileFor(const std::vector<ImportFile>& files, const Placement& placement) {
  for (const ImportFile& file : files) {
    if (file.part == placement.part && file.crash == placement.crash) return file;
  }
  return files.front();  // cannot happen: every placement's file was made
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

// One import per placement, each of its file through the temporary file,
// into its own measures of the target staff. The temporary file holds
// `inFile` to begin with.
void Place(const std::vector<Placement>& plan, std::uint16_t slot,
           const std::vector<ImportFile>& files, TemporaryGrooveFile& temporary,
           const ImportFile* inFile) {
  std::uint8_t block[CX_MIDI_BLOCK_SIZE] = {};
  const std::u16string& path = temporary.Path();
  const std::size_t units = std::min<std::size_t>(path.size(), CX_PATH_UNITS - 1);
  std::memcpy(block + CX_MIDI_BLOCK_PATH, path.data(), units * sizeof(char16_t));
  for (const Placement& placement : plan) {
    const ImportFile& file = FileFor(files, placement);
    if (&file != inFile) {
      // Written and read back once already, before the score changed.
      if (!temporary.Rewrite(file.file)) return;
      inFile = &file;
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
  ShownReport report;
  Arrangement arrangement = Arrange(options, report);
  if (!arrangement.accepted) return false;
  const std::vector<ImportFile> files = FilesOf(arrangement);

  // Every file the import will read is written and read back before the
  // score changes; the last one written stays in the file.
  TemporaryGrooveFile temporary;
  const ImportFile* inFile = nullptr;
  for (const ImportFile& file : files) {
    if (!temporary.Write(file.file)) {
      ShowMessage(kStringTemporaryFolder, CX_MB_EXCLAMATION, temporary.Folder());
      return false;
    }
    inFile = &file;
  }

  const std::optional<StaffTarget> target = ChooseTarget(options);
  if (!target) return false;  // nothing was created; the file goes with `temporary`
  const NotationStyleRow& notation =
      NotationStyleOfRow(static_cast<std::int32_t>(options.notation));
  notation.prepare(*target, options.work);
  notation::EnsurePercussionChannel(target->staff);
  Place(arrangement.plan, target->slot, files, temporary, inFile);
  temporary.Delete();
  notation.finish(*target, options.work);
  AddMarkers(*target, options);
  return true;
}

}  // namespace rw::shell
