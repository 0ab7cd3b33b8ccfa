// The measure meters a groove fits, by the command's own meter rule: the
// common meters a score uses, each written as a notation program holds it
// (compound meters both in dotted beats and in their eighths).
#pragma once

#include <string>
#include <vector>

#include "groove_verdict.h"

namespace rw::tools {

struct NamedMeter {
  std::string name;  // "6/8 (2 dotted beats)"
  groove::RegionMeter meter;
};

// Of the groove's own meter and the common ones (own first), those whose
// measures the plug-in would fill with this groove.
std::vector<NamedMeter> FittingMeters(const groove::GroovePattern& groove);

}  // namespace rw::tools
