#include "style_list.h"

#include <cantel/cantel.h>

#include <memory>

#include "dialog_ids.h"
#include "host_api.h"
#include "meter_scan.h"
#include "notation_styles.h"
#include "platform.h"
#include "string_resources.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringNoneFits = 59;    // "No style fits these %1 measures."
constexpr std::uint32_t kStringOwnGrooves = 61;  // the heading of the user's own folder
constexpr std::size_t kNotationTextCapacity = 257;
constexpr char16_t kHeadingMark[] = u"\u2014 ";
constexpr char16_t kHeadingEnd[] = u" \u2014";

std::int64_t TextArgument(const void* text) {
  return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text));
}

void AddRow(void* dialog, const std::u16string& text) {
  host::SendDlgItemMessageW(dialog, RW_ID_STYLE_LIST, CX_LB_ADDSTRING, 0,
                            TextArgument(text.c_str()));
}

// The heading a style stands under: its category, in the user's own folder
// under that folder's name; none at the top of the shipped folder.
std::u16string HeadingOf(const GrooveStyle& style) {
  const std::u16string category = style.Category();
  if (!style.own) return category;
  const std::u16string own = StringResource(kStringOwnGrooves);
  return category.empty() ? own : own + u"\\" + category;
}

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Whether the groove's meter, as the reader would find it, fits measures
// of `meter`: from the file's first bytes, the whole file only when they
// cannot tell. A file that gives no meter stays listed, so that choosing it
// tells the user why it cannot be placed: only another meter hides a style.
bool MeterFitsMeasures(const GrooveStyle& style, groove::RegionMeter meter) {
  const std::u16string path = style.PathOf(PartKind::kMain);
  std::uint8_t prefix[groove::kMeterScanPrefix];
  std::uint64_t size = 0;
  const std::int64_t read = platform::ReadFilePrefix(path.c_str(), prefix, sizeof prefix, &size);
  if (read < 0) return true;
  groove::MeterScan scan = groove::ScanMeter({prefix, static_cast<std::size_t>(read)}, size);
  if (scan.outcome == groove::MeterScanOutcome::kUnknown) {
    const std::unique_ptr<std::FILE, FileCloser> file(platform::OpenFileW(path.c_str(), "rb"));
    if (!file) return true;
    scan = groove::ScanMeterOfFile(file.get());
  }
  return scan.outcome != groove::MeterScanOutcome::kMeter || groove::MeterFits(scan.pattern, meter);
}

}  // namespace

StyleListRows FillStyleList(void* dialog, const StyleLibrary& styles,
                            std::vector<std::int8_t>& fits, bool onlyFitting,
                            groove::RegionMeter meter) {
  StyleListRows rows;
  host::SendDlgItemMessageW(dialog, RW_ID_STYLE_LIST, CX_LB_RESETCONTENT, 0, 0);
  fits.resize(styles.size(), -1);
  std::optional<std::u16string> heading;
  bool shown = false;
  for (std::size_t i = 0; i < styles.size(); ++i) {
    const GrooveStyle& style = styles[i];
    if (onlyFitting) {
      if (fits[i] < 0) fits[i] = MeterFitsMeasures(style, meter) ? 1 : 0;
      if (fits[i] == 0) continue;
    }
    const std::u16string under = HeadingOf(style);
    if (!under.empty() && under != heading) {
      AddRow(dialog, kHeadingMark + under + kHeadingEnd);
      rows.styleOfRow.push_back(-1);
    }
    heading = under;
    AddRow(dialog, style.ShownName());
    rows.styleOfRow.push_back(static_cast<std::int64_t>(i));
    shown = true;
  }
  if (!shown && !styles.empty()) {
    AddRow(dialog, StringResource(kStringNoneFits, {Widened(groove::MeterName(meter))}));
    rows.styleOfRow.push_back(-1);
    rows.noneFits = true;
  }
  return rows;
}

std::optional<std::size_t> StyleOfRow(const StyleListRows& rows, std::int32_t row) {
  if (row < 0 || static_cast<std::size_t>(row) >= rows.styleOfRow.size()) return std::nullopt;
  const std::int64_t style = rows.styleOfRow[static_cast<std::size_t>(row)];
  if (style < 0) return std::nullopt;
  return static_cast<std::size_t>(style);
}

// In UTF-16, as every list is: 8-bit texts would pass through the system's
// code page, which need not be the language's.
void FillGenerateList(void* dialog, std::int32_t notationRow) {
  host::SendDlgItemMessageW(dialog, RW_ID_GENERATE_LIST, CX_CB_RESETCONTENT, 0, 0);
  for (const NotationStyleRow& style : NotationStyles()) {
    char16_t text[kNotationTextCapacity];
    LoadStringResource(style.stringId, text, kNotationTextCapacity);
    host::SendDlgItemMessageW(dialog, RW_ID_GENERATE_LIST, CX_CB_ADDSTRING, 0, TextArgument(text));
  }
  host::SendDlgItemMessageW(dialog, RW_ID_GENERATE_LIST, CX_CB_SETCURSEL,
                            static_cast<std::uint64_t>(static_cast<std::int64_t>(notationRow)), 0);
}

}  // namespace rw::shell
