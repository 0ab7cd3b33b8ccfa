#include "style_info.h"

#include <string>

#include "groove_parts.h"

namespace rw::shell {
namespace {

constexpr std::int32_t kWholeNote = 4096;  // duration units

bool IsDotted(std::int32_t duration) { return duration > 0 && (duration & (duration - 1)) != 0; }

std::u16string Number(std::int64_t value) {
  std::u16string text;
  for (const char c : std::to_string(value)) text += static_cast<char16_t>(c);
  return text;
}

}  // namespace

StyleInfo DescribeStyle(const GrooveStyle& style, const ERegion& work) {
  StyleInfo info;
  info.hasFill = style.HasFill();
  info.hasEnding = style.HasEnding();
  PartProof proof = ProvePart(style.Path());
  groove::GrooveJudgement& judgement = proof.judgement;
  const std::int64_t measures = std::int64_t{work.endMeasure} - work.startMeasure + 1;
  groove::JudgePlacement(judgement, RegionMeterOf(work), measures);
  info.verdict = judgement.verdict;
  info.messageId = groove::TextOf(judgement.verdict).stringId;
  if (judgement.verdict == groove::Verdict::kReaderStopped) {
    info.readerProblem = proof.readerBox.substr(0, proof.readerBox.find('\n'));
  }
  info.numerator = judgement.pattern.timeSignature.numerator;
  info.denominator = judgement.pattern.timeSignature.denominator;
  info.measures = judgement.grooveMeasures;
  info.keys = std::move(proof.keys);
  return info;
}

std::u16string MeterText(groove::RegionMeter meter) {
  if (meter.beats <= 0 || meter.beatDuration <= 0) return u"?";
  // A dotted beat is three of the note value below it.
  const std::int32_t unit =
      IsDotted(meter.beatDuration) ? meter.beatDuration / 3 : meter.beatDuration;
  const std::int64_t beats =
      IsDotted(meter.beatDuration) ? std::int64_t{meter.beats} * 3 : meter.beats;
  if (unit <= 0 || kWholeNote % unit != 0) return Number(beats) + u"/?";
  return Number(beats) + u"/" + Number(kWholeNote / unit);
}

}  // namespace rw::shell
