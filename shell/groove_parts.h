// The files of a style that one run places: the main groove and each
// companion that is chosen and present, each read, filtered and proven as
// the main groove is. Silent: what the reader said and why a part is
// refused come back as texts, which the command shows and the dialog's
// style line reports.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <optional>
#include <string>

#include "groove_file.h"
#include "groove_proof.h"
#include "groove_verdict.h"
#include "style_library.h"
#include "style_parts.h"

namespace rw::shell {

// The meter of the measures a run fills, as the verdict reads it.
groove::RegionMeter RegionMeterOf(const ERegion& work);

// The message of a refusal: the verdict's string and, when the strict walk
// refused the file, the line that says what is damaged; empty when the
// reader's box has said it all.
std::u16string RefusalText(const groove::GrooveJudgement& judgement);

struct LoadedPart {
  PartKind part = PartKind::kMain;
  GrooveBuffer file;  // the file the import will read
  groove::GrooveJudgement judgement;
  groove::PlayedTiming timing;  // as the file was given
  bool straightened = false;    // played, and written straight
  std::vector<int> keys;        // the drum keys of the file the import will read, ascending
  std::uint32_t Measures() const { return static_cast<std::uint32_t>(judgement.grooveMeasures); }
};

struct PartLoad {
  LoadedPart loaded;       // its file only once it is accepted
  bool accepted = false;   // proven, and its meter fits
  std::string readerBox;   // the reader's one box; empty when it said nothing
  std::u16string refusal;  // why it is refused (a companion named); may be empty
};

// A part of `style` read, proven and its meter checked against `meter`.
PartLoad LoadPart(PartKind part, const GrooveStyle& style, groove::RegionMeter meter,
                  bool straighten);

// Why a part's drums would not be heard in the measures it is given: the
// selection is too short, or the fills or the count-in and the ending leave
// the part too few measures.
enum class ShortOfMeasures { kRegion, kFills, kCountInOrEnding };

// Whether a drum note-on of the part falls in the `measures` its longest
// placement covers; otherwise what to change (naming a companion).
std::optional<std::u16string> UncoveredDrums(LoadedPart& part, const GrooveStyle& style,
                                             groove::RegionMeter meter, std::uint32_t measures,
                                             ShortOfMeasures why);

}  // namespace rw::shell
