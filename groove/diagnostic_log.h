// The diagnostics of one load, kept instead of shown, so that the plug-in can
// show them together in one box after the load and the groove author's tool
// can print the same box.
#pragma once

#include <string>
#include <vector>

#include "diagnostic_sink.h"

namespace rw::groove {

class DiagnosticLog : public DiagnosticSink {
 public:
  struct Entry {
    std::string text;
    int count = 0;
  };

  void Show(const char* text) override;

  bool empty() const { return entries_.empty(); }
  // The distinct texts in the order they first arose.
  const std::vector<Entry>& entries() const { return entries_; }
  // The one box: a line per distinct text, a repeated one once with its
  // count, as in "Parsing error - trying to read beyond EOF. (16 times)".
  std::string Text() const;

 private:
  // The reader bounds a load to 16 diagnostics, so a linear search is all
  // this needs.
  std::vector<Entry> entries_;
};

}  // namespace rw::groove
