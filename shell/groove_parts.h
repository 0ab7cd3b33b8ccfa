// The files of a style that one run places: the main groove and, when
// chosen and present, its fill and its ending. Each is read, filtered and
// proven as the main groove is, before anything in the score changes.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "groove_file.h"
#include "groove_verdict.h"
#include "phrase_plan.h"
#include "style_library.h"

namespace rw::shell {

// One file read, filtered and proven, silently: what the command concludes
// before any region is considered, and the reader's one box (empty when it
// said nothing).
struct PartProof {
  std::optional<GrooveBuffer> file;  // the filtered file; none when it could not be read
  groove::GrooveJudgement judgement;
  std::string readerBox;
  std::vector<int> keys;  // the drum keys the groove plays, ascending
};
PartProof ProvePart(const std::u16string& path);

// The meter of the measures a run fills, as the verdict reads it.
groove::RegionMeter RegionMeterOf(const ERegion& work);

struct LoadedPart {
  GroovePart part = GroovePart::kMain;
  GrooveBuffer file;  // the filtered file, as the import will read it
  groove::GrooveJudgement judgement;
  std::uint32_t Measures() const { return static_cast<std::uint32_t>(judgement.grooveMeasures); }
};

// A part of `style` proven and its meter checked against `meter`. Nothing
// when it is refused: the reader's box and one message have been shown, the
// message naming the file when it is a fill or an ending.
std::optional<LoadedPart> LoadPart(GroovePart part, const GrooveStyle& style,
                                   groove::RegionMeter meter);

// Whether a drum note-on of the part falls in the `measures` its longest
// placement covers; otherwise shows string 29 (naming a companion) and
// answers false.
bool CoversItsDrums(LoadedPart& part, const GrooveStyle& style, groove::RegionMeter meter,
                    std::uint32_t measures);

}  // namespace rw::shell
