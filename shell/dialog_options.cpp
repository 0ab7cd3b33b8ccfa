#include "dialog_options.h"

#include "dialog_ids.h"

namespace rw::shell {
namespace {

constexpr OptionRow kOptionRows[] = {
    {Option::kCrashAfterFill, RW_ID_CRASH, "rhythmweaveCrash"},
    {Option::kStraighten, RW_ID_STRAIGHTEN, "rhythmweaveStraighten"},
    {Option::kOnlyFitting, RW_ID_ONLY_FITTING, "rhythmweaveOnlyFitting"},
};
static_assert(std::size(kOptionRows) == kOptions);

}  // namespace

std::span<const OptionRow> OptionRows() { return kOptionRows; }

}  // namespace rw::shell
