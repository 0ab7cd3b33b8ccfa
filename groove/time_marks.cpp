#include "time_marks.h"

#include "range_check.h"

namespace rw::groove {

void StartMark(TimeMark& mark, int32_t ticksPerBeat, int32_t absoluteTick, int32_t measure,
               int32_t tickInMeasure) {
  const int32_t keptTicksPerBeat = mark.ticksPerBeat;
  mark = TimeMark{};
  mark.ticksPerBeat = keptTicksPerBeat;
  mark.absoluteTick = absoluteTick;
  mark.measure = measure;
  mark.tickInMeasure = tickInMeasure;
  mark.positionInMeasure =
      static_cast<int32_t>(static_cast<int64_t>(tickInMeasure) * 1024 / ticksPerBeat);
  mark.beat = tickInMeasure % ticksPerBeat == 0 ? tickInMeasure / ticksPerBeat + 1 : 0;
}

void TimeMarkList::Insert(const TimeMark& mark) {
  const bool hasClosing = firstClosing_ != marks_.end();
  Set::iterator inserted;
  if (marks_.empty() ||
      (mark.absoluteTick >= marks_.rbegin()->absoluteTick && !marks_.rbegin()->endFlag)) {
    KeepRoom();
    inserted = marks_.insert(marks_.end(), mark);
    if (mark.endFlag && !hasClosing) firstClosing_ = inserted;
    return;
  }
  // The list is sorted, so the walk's stop (first later mark or first closing
  // mark) is whichever of the two comes first.
  Set::iterator stop = marks_.upper_bound(mark);
  const bool stopsAtClosing = hasClosing && firstClosing_->absoluteTick <= mark.absoluteTick;
  if (stopsAtClosing) stop = firstClosing_;
  if (stop->absoluteTick < mark.absoluteTick) return;  // after a closing mark: dropped
  KeepRoom();
  inserted = marks_.insert(stop, mark);
  // Inserted before the stop, hence before any closing mark already there.
  if (mark.endFlag) firstClosing_ = inserted;
}

void TimeMarkList::KeepRoom() const {
  if (marks_.size() >= kMaxTimeMarks) throw RangeCheckError("too many time marks");
}

}  // namespace rw::groove
