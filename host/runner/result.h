// The result of a run as JSON, and its readable view.
#ifndef CANTEL_HOST_RESULT_H
#define CANTEL_HOST_RESULT_H

#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "cantel_engine/document.h"

namespace cantel_host {

// The whole score: measures, staves in slot order with their entries,
// channels, expressions, staff styles, and every record by tag.
nlohmann::json score_json(const cantel_engine::Document& document);
// Drum grids of the staves in `staves`, one per measure.
std::string drum_view(const cantel_engine::Document& document, const std::set<int>& staves);

}  // namespace cantel_host

#endif
