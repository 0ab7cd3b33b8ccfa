#include "phrase_plan.h"

#include <algorithm>

namespace rw::shell {
namespace {

// The main groove from `first`, once per its length, the last cut at `last`.
void PlaceMain(std::int64_t first, std::int64_t last, std::int64_t groove,
               std::vector<Placement>& out) {
  for (std::int64_t start = first; start <= last; start += groove) {
    const std::int64_t end = std::min(start + groove - 1, last);
    out.push_back(
        {GroovePart::kMain, static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(end)});
  }
}

}  // namespace

std::vector<Placement> PlanPlacements(std::uint32_t first, std::uint32_t last,
                                      const PhraseLengths& lengths) {
  std::vector<Placement> out;
  if (last < first) return out;
  // Measures and lengths come from the document and the files: 64-bit
  // signed arithmetic, so that an empty body is simply empty.
  const std::int64_t measures = std::int64_t{last} - first + 1;
  const std::int64_t groove = std::max<std::uint32_t>(lengths.groove, 1);
  const bool ending = lengths.ending > 0 && lengths.ending <= measures;
  const std::int64_t bodyLast = ending ? std::int64_t{last} - lengths.ending : last;

  const bool fills = lengths.fill > 0 && lengths.phrase > lengths.fill;
  if (!fills) {
    PlaceMain(first, bodyLast, groove, out);
  } else {
    for (std::int64_t start = first; start <= bodyLast; start += lengths.phrase) {
      const std::int64_t phraseLast = start + lengths.phrase - 1;
      if (phraseLast > bodyLast) {  // an incomplete last phrase: no fill
        PlaceMain(start, bodyLast, groove, out);
        break;
      }
      const std::int64_t fillFirst = phraseLast - lengths.fill + 1;
      PlaceMain(start, fillFirst - 1, groove, out);
      out.push_back({GroovePart::kFill, static_cast<std::uint32_t>(fillFirst),
                     static_cast<std::uint32_t>(phraseLast)});
    }
  }
  if (ending) {
    out.push_back({GroovePart::kEnding, static_cast<std::uint32_t>(bodyLast + 1), last});
  }
  return out;
}

}  // namespace rw::shell
