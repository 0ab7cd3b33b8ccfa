#include "groove_parts.h"

#include <string>

#include "diagnostic_log.h"
#include "host_api.h"
#include "measures.h"
#include "string_resources.h"
#include "user_messages.h"

namespace rw::shell {
namespace {

constexpr std::uint32_t kStringFillRefused = 31;
constexpr std::uint32_t kStringEndingRefused = 32;
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

// The one message of a refused part; a fill or an ending is named after
// it. `id` 0: the reader's box has already said why, and only a companion
// needs a word more.
void ShowRefusal(std::uint32_t id, GroovePart part, const GrooveStyle& style) {
  if (part == GroovePart::kMain) {
    if (id != 0) ShowMessage(id, CX_MB_EXCLAMATION);
    return;
  }
  const bool fill = part == GroovePart::kFill;
  std::u16string which = StringResource(fill ? kStringFillRefused : kStringEndingRefused);
  if (const std::size_t at = which.find(u"%s"); at != std::u16string::npos) {
    which.replace(at, 2, fill ? style.FillName() : style.EndingName());
  }
  const std::u16string text = id != 0 ? StringResource(id) + u"\n\n" + which : which;
  host::CX_AlertMessage_UTF16(0, CX_MB_EXCLAMATION, 0, text.c_str(), host::kVersion);
}

}  // namespace

PartProof ProvePart(const std::u16string& path) {
  PartProof proof;
  proof.file = ReadGrooveFile(path);
  if (!proof.file) return proof;  // unreadable: the judgement's default
  groove::DiagnosticLog log;
  groove::SmfReader reader(proof.file->bytes.get(), &proof.file->size, proof.file->capacity, log);
  proof.judgement = groove::ProveGroove(reader, log, proof.file->bytes.get(), &proof.file->size);
  proof.readerBox = log.Text();
  for (int key = 0; key < 128; ++key) {
    if (reader.keyUsed(key)) proof.keys.push_back(key);
  }
  return proof;
}

groove::RegionMeter RegionMeterOf(const ERegion& work) {
  const MeasureSpecification spec = ReadMeasureSpecification(work.startMeasure);
  return {spec.beats, spec.beatDuration};
}

std::optional<LoadedPart> LoadPart(GroovePart part, const GrooveStyle& style,
                                   groove::RegionMeter meter) {
  PartProof proof = ProvePart(PathOf(part, style));
  // Everything the reader said, in one box after the load.
  if (!proof.readerBox.empty()) {
    host::CX_AlertMessage(0, 0, 0, proof.readerBox.c_str(), host::kVersion);
  }
  groove::GrooveJudgement& judgement = proof.judgement;
  if (judgement.verdict == groove::Verdict::kPlaced &&
      !groove::MeterFits(judgement.pattern, meter)) {
    judgement.verdict = groove::Verdict::kMeterMismatch;
  }
  if (judgement.verdict != groove::Verdict::kPlaced) {
    ShowRefusal(groove::TextOf(judgement.verdict).stringId, part, style);
    return std::nullopt;
  }
  return LoadedPart{part, std::move(*proof.file), judgement};
}

bool CoversItsDrums(LoadedPart& part, const GrooveStyle& style, groove::RegionMeter meter,
                    std::uint32_t measures) {
  groove::JudgePlacement(part.judgement, meter, measures);
  if (part.judgement.verdict == groove::Verdict::kPlaced) return true;
  ShowRefusal(groove::TextOf(part.judgement.verdict).stringId, part.part, style);
  return false;
}

}  // namespace rw::shell
