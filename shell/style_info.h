// What the dialog tells about the selected style before OK: what the command
// would conclude for the selected measures with the parts and options
// chosen, found silently by the command's own steps from the files read and
// reduced in memory. Nothing is shown and nothing is written.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "arrangement_controls.h"
#include "generate.h"
#include "groove_verdict.h"
#include "played_timing.h"

namespace rw::shell {

struct StyleInfo {
  groove::Verdict verdict = groove::Verdict::kUnreadable;  // of the main groove
  std::u16string refusal;  // what the command would show; empty when it places the style
  std::optional<PartKind> refusedPart;
  bool refusalIsMeter = false;  // the refused part's meter does not fit the measures
  std::string readerProblem;    // the reader's first diagnostic, when it stopped the main's load
  std::int32_t numerator = 0;   // the main groove's meter; 0 when the file gave none
  std::int32_t denominator = 0;
  std::int32_t measures = 0;  // its length, once its drums are proven
  std::vector<int> keys;      // the drum keys it plays, ascending
  // The first part that was played (the main groove first): how, and
  // whether it is written straight.
  std::optional<groove::PlayedTiming> played;
  bool straightened = false;
  StyleOffer offer;               // the companions the style has, and whether one was played
  std::vector<std::string> grid;  // its first measures as placed; empty when refused
};

// `options` carries the selected measures, the style, the parts chosen and
// whether played parts are written straight.
StyleInfo DescribeStyle(const GenerateOptions& options);

}  // namespace rw::shell
