#include "style_info_line.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "dialog_ids.h"
#include "gm_drum_names.h"
#include "host_api.h"
#include "meters.h"
#include "string_resources.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringLength = 40;      // "Meter %1, %2 measures long: %3"
constexpr std::uint32_t kStringOneMeasure = 41;  // "Meter %1, 1 measure long: %3"
constexpr std::uint32_t kStringFits = 42;
constexpr std::uint32_t kStringDoesNotFit = 43;
constexpr std::uint32_t kStringDrumsAfter = 44;
constexpr std::uint32_t kStringInstruments = 45;
constexpr std::uint32_t kStringCannotRead = 46;
constexpr std::uint32_t kStringPlayedStraight =
    50;  // "Played timing: %1 % ...; written straight..."
constexpr std::uint32_t kStringPlayedAsPlayed = 51;  // "...; placed as played"
constexpr std::uint32_t kStringPartDoesNotFit = 52;  // "its %1 (%2) does not fit these %3 measures"
constexpr std::uint32_t kStringPartRefused = 60;     // "its %1 (%2) cannot be used"
// About two lines of the description; the rest of the drums is counted.
constexpr std::size_t kInstrumentsBudget = 72;

std::u16string Number(std::int64_t value) { return Widened(std::to_string(value)); }

// As many names as fit the budget, in key order, and how many more there are.
std::u16string Instruments(const std::vector<int>& keys) {
  std::u16string names;
  std::size_t shown = 0;
  for (const int key : keys) {
    const std::u16string name = Widened(groove::DrumKeyName(key));
    const std::size_t length = names.size() + (shown > 0 ? 2 : 0) + name.size();
    if (shown > 0 && length > kInstrumentsBudget) break;
    if (shown > 0) names += u", ";
    names += name;
    ++shown;
  }
  if (shown < keys.size()) names += u" +" + Number(static_cast<std::int64_t>(keys.size() - shown));
  return StringResource(kStringInstruments, {names});
}

// What the command would conclude, after the groove's meter and length,
// and whether the refusal's own text must follow on a line of its own.
struct Conclusion {
  std::u16string text;
  bool refusalFollows = false;
};

Conclusion Concluded(const GrooveStyle& style, const StyleInfo& info,
                     groove::RegionMeter selected) {
  const std::u16string meter = Widened(groove::MeterName(selected));
  if (info.verdict == groove::Verdict::kMeterMismatch) {
    return {StringResource(kStringDoesNotFit, {meter})};
  }
  if (info.verdict == groove::Verdict::kDrumsAfterRegion) {
    return {StringResource(kStringDrumsAfter), true};
  }
  if (!info.refusedPart || info.refusal.empty()) return {StringResource(kStringFits, {meter})};
  const PartKind part = *info.refusedPart;
  const std::u16string name = StringResource(RowOf(part).nameString);
  const std::u16string file = style.PartName(part);
  if (info.refusalIsMeter) return {StringResource(kStringPartDoesNotFit, {name, file, meter})};
  return {StringResource(kStringPartRefused, {name, file}), true};
}

std::u16string PlayedLine(const StyleInfo& info) {
  const groove::PlayedTiming& timing = *info.played;
  const std::uint64_t share = timing.strokes ? timing.onGrid * 100 / timing.strokes : 0;
  return StringResource(info.straightened ? kStringPlayedStraight : kStringPlayedAsPlayed,
                        {Number(static_cast<std::int64_t>(share))});
}

}  // namespace

std::u16string StyleInfoLine(const GrooveStyle& style, const StyleInfo& info,
                             groove::RegionMeter selected) {
  std::u16string text = style.ShownName() + u"\n";
  switch (info.verdict) {
    case groove::Verdict::kPlaced:
    case groove::Verdict::kMeterMismatch:
    case groove::Verdict::kDrumsAfterRegion: {
      const std::uint32_t length = info.measures == 1 ? kStringOneMeasure : kStringLength;
      const Conclusion conclusion = Concluded(style, info, selected);
      text += StringResource(length, {Widened(groove::MeterName(info.numerator, info.denominator)),
                                      Number(info.measures), conclusion.text});
      // Appended line by line: a line that starts with a literal and a
      // temporary draws GCC 12's false overlap warning.
      if (conclusion.refusalFollows) (text += u'\n') += info.refusal;
      if (info.played) (text += u'\n') += PlayedLine(info);
      return (text += u'\n') += Instruments(info.keys);
    }
    case groove::Verdict::kReaderStopped:
      return text + StringResource(kStringCannotRead, {Widened(info.readerProblem)});
    case groove::Verdict::kUnreadable:
    case groove::Verdict::kNoDrumNotes:
      break;
  }
  return text + info.refusal;
}

void ShowStyleInfoLine(void* dialog, const std::u16string& text) {
  host::SendDlgItemMessageW(
      dialog, RW_ID_STYLE_INFO, CX_WM_SETTEXT, 0,
      static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text.c_str())));
}

}  // namespace rw::shell
