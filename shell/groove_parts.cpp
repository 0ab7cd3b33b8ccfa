#include "groove_parts.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>

#include "host_api.h"
#include "load_groove.h"
#include "measures.h"
#include "regions.h"
#include "string_resources.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringCannotOpen = 19;
constexpr std::uint32_t kStringNoDrums = 20;
constexpr std::uint32_t kStringMeterMismatch = 21;
constexpr std::uint32_t kStringFillRefused = 31;
constexpr std::uint32_t kStringEndingRefused = 32;
constexpr std::size_t kMessageCapacity = 1024;

// The reader's own messages, shown as they arise.
class AlertSink : public groove::DiagnosticSink {
 public:
  void Show(const char* text) override { host::CX_AlertMessage(0, 0, 0, text, host::kVersion); }
};

std::u16string LoadedString(std::uint32_t id) {
  char16_t text[kMessageCapacity];
  LoadStringResource(id, text, kMessageCapacity);
  return text;
}

// One message for a refused part; a fill or an ending is named after it.
// `id` 0: the reader has already said why, and only a companion needs a
// word more.
void ShowRefusal(std::uint32_t id, GroovePart part, const GrooveStyle& style) {
  if (part == GroovePart::kMain) {
    if (id != 0) ShowMessage(id, CX_MB_EXCLAMATION);
    return;
  }
  const bool fill = part == GroovePart::kFill;
  std::u16string which = LoadedString(fill ? kStringFillRefused : kStringEndingRefused);
  if (const std::size_t at = which.find(u"%s"); at != std::u16string::npos) {
    which.replace(at, 2, fill ? style.FillName() : style.EndingName());
  }
  const std::u16string text = id != 0 ? LoadedString(id) + u"\n\n" + which : which;
  host::CX_AlertMessage_UTF16(0, CX_MB_EXCLAMATION, 0, text.c_str(), host::kVersion);
}

std::u16string PathOf(GroovePart part, const GrooveStyle& style) {
  switch (part) {
    case GroovePart::kFill:
      return style.folder + style.FillName();
    case GroovePart::kEnding:
      return style.folder + style.EndingName();
    case GroovePart::kMain:
      break;
  }
  return style.Path();
}

// Whether the groove's meter fits the region: equal length, and the same
// number of beats once a dotted beat is counted in its thirds and 2/2 and
// 4/4 are taken for each other.
bool MeterFits(const groove::GroovePattern& groove, const ERegion& work) {
  if (groove.division <= 0) return false;
  const MeasureSpecification spec = ReadMeasureSpecification(work.startMeasure);
  const std::int64_t regionLength = spec.Length();
  const std::int64_t grooveLength =
      std::int64_t{groove.timeSignature.ticksPerMeasure} * 1024 / groove.division;
  std::int64_t a = spec.beats;
  std::int64_t b = groove.timeSignature.numerator;
  if (a != b) {
    if (spec.beatDuration != FloorPowerOfTwo(spec.beatDuration)) {
      a *= 3;
    } else if (a == 2 * b || 2 * a == b) {
      b = a;
    }
  }
  return regionLength == grooveLength && a == b;
}

}  // namespace

std::optional<LoadedPart> LoadPart(GroovePart part, const GrooveStyle& style, const ERegion& work) {
  std::optional<GrooveBuffer> file = ReadGrooveFile(PathOf(part, style));
  if (!file) {
    ShowRefusal(kStringCannotOpen, part, style);
    return std::nullopt;
  }

  groove::GroovePattern pattern;
  try {
    AlertSink sink;
    groove::SmfReader reader(file->bytes.get(), &file->size, file->capacity, sink);
    pattern = groove::LoadGroove(reader, 0);
  } catch (const std::out_of_range&) {
    // A file that would drive the reader outside its limits.
    ShowRefusal(kStringCannotOpen, part, style);
    return std::nullopt;
  } catch (const std::bad_alloc&) {
    ShowRefusal(kStringCannotOpen, part, style);
    return std::nullopt;
  }
  if (!pattern.loaded) {
    ShowRefusal(0, part, style);
    return std::nullopt;
  }
  if (!pattern.drumNotesFound || pattern.lastDrumMeasure == 0) {
    ShowRefusal(kStringNoDrums, part, style);
    return std::nullopt;
  }
  if (!MeterFits(pattern, work)) {
    ShowRefusal(kStringMeterMismatch, part, style);
    return std::nullopt;
  }
  LoadedPart loaded;
  loaded.part = part;
  loaded.file = std::move(*file);
  loaded.measures = static_cast<std::uint32_t>(std::max(1, groove::GrooveMeasures(pattern)));
  return loaded;
}

}  // namespace rw::shell
