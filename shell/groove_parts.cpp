#include "groove_parts.h"

#include <string>

#include "host_api.h"
#include "measures.h"
#include "string_resources.h"

namespace rw::shell {
namespace {

// String 29's advice, when it is not more measures that would help.
constexpr std::uint32_t kStringDrumsAfterFills = 57;
constexpr std::uint32_t kStringDrumsAfterCountInOrEnding = 58;

// The verdict's string, or for drums the part's measures would not reach,
// the advice that fits what took them.
std::uint32_t MessageOf(const groove::GrooveJudgement& judgement, ShortOfMeasures why) {
  if (judgement.verdict != groove::Verdict::kDrumsAfterRegion) {
    return groove::TextOf(judgement.verdict).stringId;
  }
  switch (why) {
    case ShortOfMeasures::kFills:
      return kStringDrumsAfterFills;
    case ShortOfMeasures::kCountInOrEnding:
      return kStringDrumsAfterCountInOrEnding;
    case ShortOfMeasures::kRegion:
      break;
  }
  return groove::TextOf(judgement.verdict).stringId;
}

std::u16string RefusalText(const groove::GrooveJudgement& judgement, std::uint32_t id,
                           PartKind part, const GrooveStyle& style) {
  std::u16string text;
  if (id != 0) {
    text = StringResource(id);
    if (const std::string damage = groove::DamageOf(judgement); !damage.empty()) {
      text += u'\n';
      text += StringResource(groove::kStringDamage, {Widened(damage)});
    }
  }
  // A companion is named after the message, or alone when the reader's box
  // has said why.
  if (const std::uint32_t which = RowOf(part).refusalString; which != 0) {
    std::u16string named = StringResource(which);
    if (const std::size_t at = named.find(u"%s"); at != std::u16string::npos) {
      named.replace(at, 2, style.PartName(part));
    }
    text = text.empty() ? named : text + u"\n\n" + named;
  }
  return text;
}

}  // namespace

std::u16string RefusalText(const groove::GrooveJudgement& judgement) {
  return RefusalText(judgement, groove::TextOf(judgement.verdict).stringId, PartKind::kMain, {});
}

groove::RegionMeter RegionMeterOf(const ERegion& work) {
  const MeasureSpecification spec = ReadMeasureSpecification(work.startMeasure);
  return {spec.beats, spec.beatDuration};
}

PartLoad LoadPart(PartKind part, const GrooveStyle& style, groove::RegionMeter meter,
                  bool straighten) {
  PartLoad load;
  std::optional<GrooveBuffer> file = ReadGrooveFile(style.PathOf(part));
  groove::GrooveProof proof;  // unreadable without a file: the judgement's default
  if (file) proof = groove::ProveGroove(*file, {.straightenPlayed = straighten});
  load.readerBox = proof.log.Text();
  LoadedPart& loaded = load.loaded;
  loaded.part = part;
  loaded.judgement = std::move(proof.judgement);
  loaded.timing = proof.timing;
  loaded.straightened = proof.straightened.has_value();
  loaded.keys = std::move(proof.facts.keys);
  groove::GrooveJudgement& judgement = loaded.judgement;
  if (judgement.verdict == groove::Verdict::kPlaced &&
      !groove::MeterFits(judgement.pattern, meter)) {
    judgement.verdict = groove::Verdict::kMeterMismatch;
  }
  if (judgement.verdict != groove::Verdict::kPlaced) {
    load.refusal = RefusalText(judgement, groove::TextOf(judgement.verdict).stringId, part, style);
    return load;
  }
  loaded.file = std::move(*file);
  load.accepted = true;
  return load;
}

std::optional<std::u16string> UncoveredDrums(LoadedPart& part, const GrooveStyle& style,
                                             groove::RegionMeter meter, std::uint32_t measures,
                                             ShortOfMeasures why) {
  groove::JudgePlacement(part.judgement, meter, measures);
  if (part.judgement.verdict == groove::Verdict::kPlaced) return std::nullopt;
  return RefusalText(part.judgement, MessageOf(part.judgement, why), part.part, style);
}

}  // namespace rw::shell
