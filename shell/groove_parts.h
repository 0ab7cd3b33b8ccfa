// The files of a style that one run places: the main groove and, when
// chosen and present, its fill and its ending. Each is read, filtered and
// checked as the main groove always was, before anything in the score
// changes.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <optional>

#include "groove_file.h"
#include "phrase_plan.h"
#include "style_library.h"

namespace rw::shell {

struct LoadedPart {
  GroovePart part = GroovePart::kMain;
  GrooveBuffer file;           // the filtered file, as the import will read it
  std::uint32_t measures = 1;  // the part's length
};

// The part of `style` read and checked against the measures of `work`.
// Nothing when it is refused: its message has been shown, naming the file
// when it is a fill or an ending.
std::optional<LoadedPart> LoadPart(GroovePart part, const GrooveStyle& style, const ERegion& work);

}  // namespace rw::shell
