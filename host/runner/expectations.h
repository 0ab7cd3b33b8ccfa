// The "expect" section of a scenario: JSON pointers into the result and the
// values they must hold.
#ifndef CANTEL_HOST_EXPECTATIONS_H
#define CANTEL_HOST_EXPECTATIONS_H

#include <nlohmann/json.hpp>
#include <ostream>

#include "scenario.h"

namespace cantel_host {

// Prints each mismatch; true when all expectations hold.
bool check_expectations(const Scenario& scenario, const nlohmann::json& result, std::ostream& out);

}  // namespace cantel_host

#endif
