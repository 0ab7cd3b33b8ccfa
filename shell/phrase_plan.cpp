#include "phrase_plan.h"

#include <algorithm>

namespace rw::shell {
namespace {

Placement At(PartKind part, std::int64_t first, std::int64_t last) {
  return {part, static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(last)};
}

// A groove from `first`, once per its length, the last cut at `last`.
void Repeat(PartKind part, std::int64_t length, std::int64_t first, std::int64_t last,
            std::vector<Placement>& out) {
  for (std::int64_t start = first; start <= last; start += length) {
    out.push_back(At(part, start, std::min(start + length - 1, last)));
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
  const bool countIn = lengths.countIn > 0 && lengths.countIn < measures;
  const std::int64_t bodyFirst = std::int64_t{first} + (countIn ? lengths.countIn : 0);
  const bool ending = lengths.ending > 0 && lengths.ending <= std::int64_t{last} - bodyFirst + 1;
  const std::int64_t bodyLast = ending ? std::int64_t{last} - lengths.ending : last;
  if (countIn) out.push_back(At(PartKind::kCountIn, first, bodyFirst - 1));

  const std::int64_t groove = std::max<std::uint32_t>(lengths.groove, 1);
  const std::int64_t variation = lengths.variation;
  const bool fills = lengths.fill > 0 && lengths.phrase > lengths.fill;
  const std::int64_t phrase = fills ? lengths.phrase : variation > 0 ? kAlternationMeasures : 0;
  if (phrase == 0) {
    Repeat(PartKind::kMain, groove, bodyFirst, bodyLast, out);
  } else {
    std::int64_t number = 1;
    for (std::int64_t start = bodyFirst; start <= bodyLast; start += phrase, ++number) {
      const bool second = variation > 0 && number % 2 == 0;
      const PartKind part = second ? PartKind::kVariation : PartKind::kMain;
      const std::int64_t length = second ? variation : groove;
      const std::int64_t phraseLast = start + phrase - 1;
      if (phraseLast > bodyLast) {  // an incomplete last phrase: no fill
        Repeat(part, length, start, bodyLast, out);
        break;
      }
      const std::int64_t grooveLast = fills ? phraseLast - lengths.fill : phraseLast;
      Repeat(part, length, start, grooveLast, out);
      if (fills) out.push_back(At(PartKind::kFill, grooveLast + 1, phraseLast));
    }
  }
  if (ending) out.push_back(At(PartKind::kEnding, bodyLast + 1, last));

  if (lengths.crashAfterFill) {
    for (std::size_t i = 1; i < out.size(); ++i) {
      if (out[i - 1].part == PartKind::kFill && out[i].part != PartKind::kFill) {
        out[i].crash = true;
      }
    }
  }
  return out;
}

}  // namespace rw::shell
