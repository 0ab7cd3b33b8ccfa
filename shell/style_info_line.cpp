#include "style_info_line.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "dialog_ids.h"
#include "gm_drum_names.h"
#include "host_api.h"
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
// About two lines of the description; the rest of the drums is counted.
constexpr std::size_t kInstrumentsBudget = 72;

// `text` with each "%1", "%2", ... replaced by that argument, so that a
// translation may put them in its own order.
std::u16string Substituted(std::u16string_view text, std::initializer_list<std::u16string> args) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t next = i + 1 < text.size() ? text[i + 1] : u'\0';
    const auto index = static_cast<std::size_t>(next - u'1');
    if (text[i] == u'%' && next >= u'1' && next <= u'9' && index < args.size()) {
      out += *(args.begin() + index);
      ++i;
    } else {
      out += text[i];
    }
  }
  return out;
}

// ASCII and Latin-1 texts of the reader and the drum names, widened.
std::u16string Widened(std::string_view text) {
  std::u16string out;
  for (const char c : text) out += static_cast<char16_t>(static_cast<unsigned char>(c));
  return out;
}

std::u16string Number(std::int64_t value) { return Widened(std::to_string(value)); }

constexpr std::int32_t kWholeNote = 4096;  // duration units

// The time signature of the selected measures as a musician writes it:
// "4/4", or "6/8" for two dotted quarters.
std::u16string MeterText(groove::RegionMeter meter) {
  if (meter.beats <= 0 || meter.beatDuration <= 0) return u"?";
  // A dotted beat is three of the note value below it.
  const bool dotted = (meter.beatDuration & (meter.beatDuration - 1)) != 0;
  const std::int32_t unit = dotted ? meter.beatDuration / 3 : meter.beatDuration;
  const std::int64_t beats = dotted ? std::int64_t{meter.beats} * 3 : meter.beats;
  if (unit <= 0 || kWholeNote % unit != 0) return Number(beats) + u"/?";
  return Number(beats) + u"/" + Number(kWholeNote / unit);
}

std::u16string GrooveMeter(const StyleInfo& info) {
  if (info.numerator <= 0 || info.denominator <= 0) return u"?";
  return Number(info.numerator) + u"/" + Number(info.denominator);
}

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
  return Substituted(StringResource(kStringInstruments), {names});
}

// What the command would conclude, after the groove's meter and length.
std::u16string Conclusion(const StyleInfo& info, groove::RegionMeter selected) {
  const std::u16string meter = MeterText(selected);
  switch (info.verdict) {
    case groove::Verdict::kPlaced:
      return Substituted(StringResource(kStringFits), {meter});
    case groove::Verdict::kDrumsAfterRegion:
      return StringResource(kStringDrumsAfter);
    default:
      return Substituted(StringResource(kStringDoesNotFit), {meter});
  }
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
      text += Substituted(StringResource(length),
                          {GrooveMeter(info), Number(info.measures), Conclusion(info, selected)});
      return text + u"\n" + Instruments(info.keys);
    }
    case groove::Verdict::kReaderStopped:
      return text + Substituted(StringResource(kStringCannotRead), {Widened(info.readerProblem)});
    case groove::Verdict::kUnreadable:
    case groove::Verdict::kNoDrumNotes:
      break;
  }
  return text + StringResource(info.messageId);
}

void ShowStyleInfoLine(void* dialog, const std::u16string& text) {
  host::SendDlgItemMessageW(
      dialog, RW_ID_STYLE_INFO, CX_WM_SETTEXT, 0,
      static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text.c_str())));
}

}  // namespace rw::shell
