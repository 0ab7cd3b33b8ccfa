// A style arranged over the selected measures, as the command places it:
// each chosen part that the style has, read and proven in the table's order,
// the placement plan, and the check that every part sounds in the measures
// it gets. The command shows what it finds as it goes; the dialog's style
// line runs the same steps silently before OK, so that both conclude the
// same.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "generate.h"
#include "groove_parts.h"
#include "phrase_plan.h"

namespace rw::shell {

// Where the steps' messages go: shown to the user by the command, kept by
// the style line.
class ArrangementReport {
 public:
  virtual ~ArrangementReport() = default;
  // The reader's one box after a part's load, when it said something.
  virtual void ReaderBox(const std::string& box) = 0;
  // Why the arrangement is refused, after which nothing more is done.
  virtual void Refusal(PartKind part, const std::u16string& text) = 0;
};

struct Arrangement {
  // The parts tried, by kind: each chosen part the style has, up to the
  // first refused one.
  std::array<std::optional<PartLoad>, kPartKinds> parts;
  std::vector<Placement> plan;
  bool accepted = false;  // every part proven, fitting and sounding where it is placed

  std::optional<PartLoad>& operator[](PartKind kind) {
    return parts[static_cast<std::size_t>(kind)];
  }
  const std::optional<PartLoad>& operator[](PartKind kind) const {
    return parts[static_cast<std::size_t>(kind)];
  }
};

Arrangement Arrange(const GenerateOptions& options, ArrangementReport& report);

}  // namespace rw::shell
