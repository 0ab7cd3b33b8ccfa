#include "style_info.h"

#include <algorithm>
#include <string>

#include "arrangement.h"
#include "drum_grid_text.h"

namespace rw::shell {
namespace {

// The measures of the grid, and the characters of a line that the dialog
// shows whole.
constexpr std::int32_t kGridMeasures = 2;
constexpr std::size_t kGridWidth = 60;

// Keeps the first refusal, shows nothing.
class KeptReport : public ArrangementReport {
 public:
  void ReaderBox(const std::string&) override {}
  void Refusal(PartKind part, const std::u16string& text) override {
    if (refused_) return;
    refused_ = part;
    text_ = text;
  }
  const std::optional<PartKind>& refused() const { return refused_; }
  const std::u16string& text() const { return text_; }

 private:
  std::optional<PartKind> refused_;
  std::u16string text_;
};

}  // namespace

StyleInfo DescribeStyle(const GenerateOptions& options) {
  StyleInfo info;
  for (const PartRow& row : PartRows()) {
    info.offer.parts[static_cast<std::size_t>(row.kind)] =
        row.kind != PartKind::kMain && options.style.Has(row.kind);
  }
  KeptReport report;
  Arrangement arrangement = Arrange(options, report);
  info.refusedPart = report.refused();
  info.refusal = report.text();
  if (info.refusedPart) {
    const std::optional<PartLoad>& refused = arrangement[*info.refusedPart];
    info.refusalIsMeter =
        refused && refused->loaded.judgement.verdict == groove::Verdict::kMeterMismatch;
  }

  for (const auto& load : arrangement.parts) {
    if (load && load->loaded.timing.played && !info.played) {
      info.played = load->loaded.timing;
      info.straightened = load->loaded.straightened;
    }
  }
  info.offer.played = info.played.has_value();

  const std::optional<PartLoad>& main = arrangement[PartKind::kMain];
  if (!main) return info;  // cannot happen: the main groove is always tried
  const groove::GrooveJudgement& judgement = main->loaded.judgement;
  info.verdict = judgement.verdict;
  if (judgement.verdict == groove::Verdict::kReaderStopped) {
    info.readerProblem = main->readerBox.substr(0, main->readerBox.find('\n'));
  }
  info.numerator = judgement.pattern.timeSignature.numerator;
  info.denominator = judgement.pattern.timeSignature.denominator;
  info.measures = judgement.grooveMeasures;
  info.keys = main->loaded.keys;
  if (arrangement.accepted) {
    info.grid =
        groove::DrumGridTextOf(main->loaded.file.view(), judgement.pattern,
                               std::min(kGridMeasures, judgement.grooveMeasures), kGridWidth)
            .lines;
  }
  return info;
}

}  // namespace rw::shell
