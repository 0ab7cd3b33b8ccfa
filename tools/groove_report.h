// The reports of one inspection: JSON for scripts, text for a person.
#pragma once

#include <string>

#include "groove_examination.h"

namespace rw::tools {

std::string JsonReport(const GrooveInspection& inspection);
std::string TextReport(const std::string& name, const GrooveInspection& inspection);

}  // namespace rw::tools
