#include "style_parts.h"

#include "dialog_ids.h"

namespace rw::shell {
namespace {

constexpr PartRow kParts[] = {
    {PartKind::kMain, u"", 0, 0, 0, nullptr},
    {PartKind::kVariation, u"Variations", 53, 49, RW_ID_VARIATION, "rhythmweaveVariation"},
    {PartKind::kCountIn, u"Count-ins", 54, 48, RW_ID_COUNT_IN, "rhythmweaveCountIn"},
    {PartKind::kFill, u"Fills", 55, 31, RW_ID_FILL_LIST, "rhythmweaveFill"},
    {PartKind::kEnding, u"Endings", 56, 32, RW_ID_ENDING, "rhythmweaveEnding"},
};
static_assert(std::size(kParts) == kPartKinds);

constexpr bool InKindOrder() {
  for (std::size_t i = 0; i < kPartKinds; ++i) {
    if (static_cast<std::size_t>(kParts[i].kind) != i) return false;
  }
  return true;
}
static_assert(InKindOrder(), "RowOf finds a row by its kind");

}  // namespace

std::span<const PartRow> PartRows() { return kParts; }

const PartRow& RowOf(PartKind kind) { return kParts[static_cast<std::size_t>(kind)]; }

}  // namespace rw::shell
