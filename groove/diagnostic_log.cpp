#include "diagnostic_log.h"

namespace rw::groove {

void DiagnosticLog::Show(const char* text) {
  for (Entry& entry : entries_) {
    if (entry.text == text) {
      ++entry.count;
      return;
    }
  }
  entries_.push_back({text, 1});
}

std::string DiagnosticLog::Text() const {
  std::string box;
  for (const Entry& entry : entries_) {
    if (!box.empty()) box += '\n';
    box += entry.text;
    if (entry.count > 1) box += " (" + std::to_string(entry.count) + " times)";
  }
  return box;
}

}  // namespace rw::groove
