#include "groove_survey.h"

#include <array>
#include <optional>

#include "drum_hits.h"
#include "drum_key_map.h"
#include "grid_choice.h"

namespace rw::groove {
namespace {

class Survey : public SmfEventVisitor {
 public:
  Survey(const MeterBeats* beats, GrooveSurvey& out) : beats_(beats), out_(out) {
    if (beats_) {
      choice_.emplace(*beats_);
      cursor_.emplace(*beats_);
    }
  }

  std::vector<BeatGrid> grids() const {
    return choice_ ? choice_->Choose() : std::vector<BeatGrid>();
  }

  void Header(uint16_t format, uint16_t, uint16_t division) override {
    out_.format = format;
    out_.division = division;
    grid_ = ProgrammedGrid(division);
  }
  void TrackStart(int32_t, uint64_t, uint64_t) override {
    Release();
    if (beats_) cursor_.emplace(*beats_);
  }
  void Event(const SmfEvent& e) override {
    if (IsDrumNoteOn(e)) {
      ++out_.timing.strokes;
      if (grid_.HoldsRising(e.tick)) ++out_.timing.onGrid;
      if (choice_) Hold(e.tick, e.data2, GeneralMidiKeyOf(e.data1));
    } else if (e.status == 0xFF && e.data1 == 0x2F) {
      Release();
    }
  }

 private:
  // A stroke held back: where it lies in its beat, and as loud as it is.
  struct Held {
    uint64_t tick = 0;
    uint32_t beat = 0;
    uint32_t offset = 0;  // twelfths of a tick, below 2^20
    uint8_t velocity = 0;
    bool held = false;
  };

  // A softer stroke shortly before a louder one of its key (within a
  // thirty-second) is a flam's grace note: it marks no point of any grid,
  // and a late flam's grace would pull the previous beat's centre towards
  // its end. Each stroke is held back until the next of its key shows
  // whether it was one.
  void Hold(uint64_t tick, uint8_t velocity, uint8_t key) {
    Held& before = held_[key];
    if (before.held) {
      const bool grace = 8 * (tick - before.tick) <= out_.division && velocity > before.velocity;
      if (!grace) choice_->AddOnset({0, before.beat, before.offset});
    }
    const BeatPlace place = cursor_->Locate(tick);
    before = {tick, place.beat, uint32_t(place.offset), velocity, true};
  }
  void Release() {
    if (!choice_) return;
    for (Held& stroke : held_) {
      if (stroke.held) choice_->AddOnset({0, stroke.beat, stroke.offset});
      stroke.held = false;
    }
  }

  const MeterBeats* beats_;
  GrooveSurvey& out_;
  std::optional<GridChoice> choice_;
  std::optional<BeatCursor> cursor_;
  ProgrammedGrid grid_{0};
  std::array<Held, 128> held_{};
};

}  // namespace

GrooveSurvey SurveyGroove(std::span<const uint8_t> file, const MeterBeats* beats) {
  GrooveSurvey result;
  Survey survey(beats, result);
  const StrictWalk walk = WalkStrictly(file.data(), file.size(), &survey);
  if (!walk.wellFormed) {
    result.problem = walk.problem.empty() ? "the file needs mending first" : walk.problem;
  } else {
    result.wellFormed = true;
    result.timing = JudgePlayedTiming(result.timing.strokes, result.timing.onGrid);
    result.grids = survey.grids();
  }
  return result;
}

}  // namespace rw::groove
