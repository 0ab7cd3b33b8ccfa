#include "expectations.h"

namespace cantel_host {

bool check_expectations(const Scenario& scenario, const nlohmann::json& result, std::ostream& out) {
  const auto expect = scenario.data.value("expect", nlohmann::json::object());
  int failed = 0;
  for (const auto& [pointer, wanted] : expect.items()) {
    const nlohmann::json::json_pointer at(pointer);
    if (!result.contains(at) && wanted.is_null()) continue;  // null: absent is as good
    if (!result.contains(at)) {
      out << scenario.name << ": " << pointer << " is missing, expected " << wanted.dump() << "\n";
      ++failed;
    } else if (result.at(at) != wanted) {
      out << scenario.name << ": " << pointer << " is " << result.at(at).dump() << ", expected "
          << wanted.dump() << "\n";
      ++failed;
    }
  }
  out << scenario.name << ": " << expect.size() - static_cast<std::size_t>(failed) << " passed, "
      << failed << " failed\n";
  return failed == 0;
}

}  // namespace cantel_host
