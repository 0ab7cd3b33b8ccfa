// What the dialog tells about the selected style before OK: what the command
// would conclude for the selected measures, found silently from the file
// read and reduced in memory. Nothing is shown and nothing is written.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <string>
#include <vector>

#include "groove_verdict.h"
#include "style_library.h"

namespace rw::shell {

struct StyleInfo {
  groove::Verdict verdict = groove::Verdict::kUnreadable;
  std::uint32_t messageId = 0;  // the string the command would show; 0 for none of its own
  std::string readerProblem;    // the reader's first diagnostic, when it stopped the load
  std::int32_t numerator = 0;   // the groove's meter; 0 when the file gave none
  std::int32_t denominator = 0;
  std::int32_t measures = 0;  // its length, once its drums are proven
  std::vector<int> keys;      // the drum keys it plays, ascending
  bool hasFill = false;
  bool hasEnding = false;
};

StyleInfo DescribeStyle(const GrooveStyle& style, const ERegion& work);

}  // namespace rw::shell
