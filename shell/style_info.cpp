#include "style_info.h"

#include <string>

#include "groove_parts.h"

namespace rw::shell {

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

}  // namespace rw::shell
