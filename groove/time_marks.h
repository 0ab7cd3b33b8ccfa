// A musical position with the meter, tempo and SMPTE offset in force there,
// and the reader's list of such marks, kept in order of absolute tick.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace rw::groove {

struct TimeMark {
  int32_t absoluteTick = 0;
  int32_t measure = 0;
  int32_t beat = 0;   // 1-based when the position falls on a beat, else 0
  int32_t tempo = 0;  // microseconds per quarter note; 0 when the mark holds none
  int32_t tickInMeasure = 0;
  int32_t positionInMeasure = 0;  // in 1/1024 beats
  double beatsPerMinute = 0.0;
  uint8_t endFlag = 0;
  int32_t numerator = 0;
  int32_t ticksPerBeat = 0;
  int32_t ticksPerMeasure = 0;
  int32_t denominator = 0;
  std::array<uint8_t, 5> smpteOffset{};  // hours, minutes, seconds, frames, hundredths
};

// Reuses the record for a fresh mark at a position. Every field is cleared
// except ticksPerBeat, which keeps whatever the record held: the parser fills
// it whenever it fills a meter, and the defaults rely on it staying put.
void StartMark(TimeMark& mark, int32_t ticksPerBeat, int32_t absoluteTick, int32_t measure,
               int32_t tickInMeasure);

// Sorted by absolute tick; nothing is recorded after the first closing mark
// unless it can simply be appended. Insertion is logarithmic so that a file
// whose marks arrive in falling order cannot make a load quadratic. A file
// of nothing but meta events must not grow the list without bound either:
// one mark more than kMaxTimeMarks ends the load (RangeCheckError).
class TimeMarkList {
 public:
  static constexpr std::size_t kMaxTimeMarks = 65536;

  TimeMarkList() = default;
  TimeMarkList(const TimeMarkList&) = delete;
  TimeMarkList& operator=(const TimeMarkList&) = delete;

  void Insert(const TimeMark& mark);
  std::size_t size() const { return marks_.size(); }
  bool empty() const { return marks_.empty(); }
  std::vector<TimeMark> Marks() const { return {marks_.begin(), marks_.end()}; }

 private:
  void KeepRoom() const;

  struct ByTick {
    bool operator()(const TimeMark& a, const TimeMark& b) const {
      return a.absoluteTick < b.absoluteTick;
    }
  };
  using Set = std::multiset<TimeMark, ByTick>;
  Set marks_;
  Set::iterator firstClosing_ = marks_.end();  // first mark with its end flag set
};

}  // namespace rw::groove
