// The Standard MIDI File writer: what it writes walks strictly and loads in
// the reader without a diagnostic, byte for byte as built by hand.
#include "smf_writer.h"

#include <gtest/gtest.h>

#include "smf_builder.h"
#include "smf_walk.h"

namespace rw::groove::testing {
namespace {

Bytes Written(SmfWriter& writer, SmfWriteResult* result = nullptr) {
  Bytes out;
  const SmfWriteResult r = writer.Write(out);
  if (result) *result = r;
  EXPECT_TRUE(r.written);
  return out;
}

TEST(TheSmfWriter, WritesEachTrackInOrderOfTickWithItsEndOfTrack) {
  SmfWriter writer(1, 480);
  writer.StartTrack();
  const uint8_t tempoEvent[] = {0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20};
  const uint8_t meter[] = {0xFF, 0x58, 0x04, 0x03, 0x02, 24, 8};
  writer.Add(0, tempoEvent);
  writer.Add(0, meter);
  writer.StartTrack();
  // Added out of order: the writer orders by tick, keeping the order of
  // events of one tick, and the End of Track goes last, at the latest tick
  // given for it.
  writer.AddMessage(480, 0x99, 38, 90);
  const uint8_t endOfTrack[] = {0xFF, 0x2F, 0x00};
  writer.Add(0, endOfTrack);
  writer.AddMessage(0, 0x99, 36, 100);
  writer.AddMessage(0, 0xB9, 4, 20);
  writer.AddMessage(600, 0x89, 38, 64);
  writer.AddMessage(0, 0xC9, 5);  // two bytes by its status
  const Bytes expected = smf(1, 480,
                             {cat({tempo(0, 500000), timeSignature(0, 3, 2), kEndOfTrack}),
                              cat({note(0, 0x99, 36, 100),  // tick 0
                                   {0x00, 0xB9, 4, 20},     // tick 0
                                   {0x00, 0xC9, 5},         // tick 0
                                   note(480, 0x99, 38, 90),
                                   note(120, 0x89, 38, 64),
                                   kEndOfTrack})});
  const Bytes file = Written(writer);
  EXPECT_EQ(file, expected);
  EXPECT_TRUE(WalkStrictly(file.data(), file.size()).wellFormed);
  const Load load(file);
  EXPECT_TRUE(load.alerts().empty());
  EXPECT_EQ(load.pattern.timeSignature.numerator, 3);
}

TEST(TheSmfWriter, WritesDeltaTimesUpToTheLongestFourBytesHoldAndClampsLongerGaps) {
  SmfWriter writer(0, 480);
  writer.StartTrack();
  const uint32_t deltas[] = {0x7F, 0x80, 0x3FFF, 0x4000, 0x1FFFFF, 0x200000, 0x0FFFFFFF};
  uint64_t tick = 0;
  Bytes events;
  for (uint32_t delta : deltas) {
    tick += delta;
    writer.AddMessage(tick, 0xB9, 4, 0);
    // In running status after the first.
    events = cat({events, vlq(delta), events.empty() ? Bytes{0xB9, 4, 0} : Bytes{4, 0}});
  }
  const Bytes file = Written(writer);
  EXPECT_EQ(file, smf(0, 480, {cat({events, kEndOfTrack})}));
  EXPECT_TRUE(WalkStrictly(file.data(), file.size()).wellFormed);
  EXPECT_TRUE(Load(file).alerts().empty());

  // One tick past the longest delta: written as the longest.
  SmfWriter beyond(0, 480);
  beyond.StartTrack();
  beyond.AddMessage(0, 0x99, 36, 100);
  beyond.AddMessage(uint64_t{SmfWriter::kMaxDelta} + 1, 0x89, 36, 64);
  SmfWriteResult result;
  const Bytes clamped = Written(beyond, &result);
  EXPECT_EQ(result.clampedDeltas, 1u);
  EXPECT_EQ(clamped, smf(0, 480,
                         {cat({note(0, 0x99, 36, 100),
                               {0xFF, 0xFF, 0xFF, 0x7F, 0x89, 36, 64},  // delta 0x0FFFFFFF
                               kEndOfTrack})}));
}

TEST(TheSmfWriter, WritesARisingTrackAsItComesInRunningStatusUntilAMetaEvent) {
  SmfWriter writer(0, 480);
  writer.StartTrack(SmfWriter::Order::kRising);
  EXPECT_TRUE(writer.AddMessage(10, 0x99, 36, 100));
  EXPECT_TRUE(writer.AddMessage(10, 0x99, 38, 90));
  EXPECT_FALSE(writer.AddMessage(5, 0x99, 42, 80)) << "before the last event";
  const uint8_t endOfTrack[] = {0xFF, 0x2F, 0x00};
  EXPECT_TRUE(writer.Add(5, endOfTrack)) << "it only marks where the track may end";
  const uint8_t text[] = {0xFF, 0x01, 0x01, 'x'};
  EXPECT_TRUE(writer.Add(20, text));
  EXPECT_TRUE(writer.AddMessage(20, 0x99, 36, 0));
  EXPECT_TRUE(writer.AddMessage(30, 0x89, 38, 64));
  EXPECT_TRUE(writer.AddMessage(40, 0x89, 42, 64));
  EXPECT_EQ(Written(writer), smf(0, 480,
                                 {cat({note(10, 0x99, 36, 100),
                                       {0x00, 38, 90},  // running status
                                       {0x0A, 0xFF, 0x01, 0x01, 'x'},
                                       note(0, 0x99, 36, 0),
                                       note(10, 0x89, 38, 64),
                                       {0x0A, 42, 64},
                                       kEndOfTrack})}));
  Bytes again;
  EXPECT_FALSE(writer.Write(again).written) << "the writer is left empty";
}

TEST(TheSmfWriter, KeepsTheBytesOfLongEventsAndRefusesWhatIsNoEvent) {
  SmfWriter writer(1, 480);
  const uint8_t note[] = {0x99, 36, 100};
  EXPECT_FALSE(writer.Add(0, note)) << "no track is open";
  writer.StartTrack();
  EXPECT_FALSE(writer.Add(0, {})) << "no bytes";
  const uint8_t running[] = {36, 100};
  EXPECT_FALSE(writer.Add(0, running)) << "no status byte";
  const uint8_t text[] = {0xFF, 0x01, 0x05, 'h', 'e', 'l', 'l', 'o'};
  const uint8_t sysEx[] = {0xF0, 0x05, 0x7E, 0x7F, 0x09, 0x01, 0xF7};
  EXPECT_TRUE(writer.Add(0, text));
  EXPECT_TRUE(writer.Add(0, sysEx));
  EXPECT_EQ(Written(writer), smf(1, 480,
                                 {cat({{0x00},
                                       Bytes(std::begin(text), std::end(text)),
                                       {0x00},
                                       Bytes(std::begin(sysEx), std::end(sysEx)),
                                       kEndOfTrack})}));

  Bytes out{1, 2, 3};
  EXPECT_FALSE(SmfWriter(0, 480).Write(out).written) << "a file needs a track";
  EXPECT_TRUE(out.empty());
}

}  // namespace
}  // namespace rw::groove::testing
