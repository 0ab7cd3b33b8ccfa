#include "drum_hits.h"

#include <array>

namespace rw::groove {
namespace {

class HitCollector : public SmfEventVisitor {
 public:
  explicit HitCollector(GrooveHits& out) : out_(out) {}

  void Header(uint16_t, uint16_t, uint16_t division) override { out_.division = division; }
  void TrackStart(int32_t, uint64_t, uint64_t) override { sounding_.fill(kNone); }
  void Event(const SmfEvent& e) override {
    const bool noteOn = IsDrumNoteOn(e);
    if (!noteOn && !IsDrumNoteOff(e)) return;
    std::size_t& sounding = sounding_[e.data1];
    if (sounding != kNone) out_.hits[sounding].noteOff = e.tick;
    sounding = kNone;
    if (noteOn) {
      sounding = out_.hits.size();
      out_.hits.push_back({e.tick, e.data1, e.data2});
    }
  }

 private:
  static constexpr std::size_t kNone = SIZE_MAX;
  GrooveHits& out_;
  std::array<std::size_t, 128> sounding_{};
};

}  // namespace

GrooveHits DrumHitsOf(std::span<const uint8_t> file) {
  GrooveHits result;
  HitCollector collector(result);
  result.wellFormed = WalkStrictly(file.data(), file.size(), &collector).wellFormed;
  if (!result.wellFormed) result.hits.clear();
  return result;
}

}  // namespace rw::groove
