// The dialog's style list (2002): the library's styles, each category's
// under a heading row, and, while "Only styles that fit these measures" is
// checked, none whose meter does not fit the selected measures (a file that
// gives no meter stays, so that choosing it says why); one row says so when
// none is left. The Generate list (1019) is filled beside it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "meters.h"
#include "module_state.h"
#include "style_library.h"

namespace rw::shell {

// Fills the list and answers its rows. `fits` caches, per style, whether
// its meter fits `meter`, found the first time it is asked.
StyleListRows FillStyleList(void* dialog, const StyleLibrary& styles,
                            std::vector<std::int8_t>& fits, bool onlyFitting,
                            groove::RegionMeter meter);

// The style in a row; nothing for a heading or the row that says none fits.
std::optional<std::size_t> StyleOfRow(const StyleListRows& rows, std::int32_t row);

// The notation styles, selecting `notationRow`.
void FillGenerateList(void* dialog, std::int32_t notationRow);

}  // namespace rw::shell
