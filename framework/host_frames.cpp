// Frame wrappers: the open-frame count moves before the look-up, so it moves
// even when the host lacks the export; frames are normalised before the host
// reads them back.
#include "frame_normalize.h"
#include "host_api.h"

namespace rw::host {
namespace {
std::int32_t openFrames = 0;
}

std::int32_t OpenFrameCount() { return openFrames; }

void* CX_LoadTGF(std::uint16_t list, std::uint16_t slot, std::uint16_t measure,
                 std::uint16_t layer, std::uint16_t zero, std::uint32_t version) {
  ++openFrames;
  return direct::CX_LoadTGF(list, slot, measure, layer, zero, version);
}

std::uint16_t CX_FreeTGF(void* frame, std::uint32_t version) {
  --openFrames;
  return direct::CX_FreeTGF(frame, version);
}

std::uint16_t CX_SaveTGF(void* frame, std::uint32_t version) {
  NormalizeFrame(frame);
  return direct::CX_SaveTGF(frame, version);
}

std::uint16_t CX_InsertEXENTRY(void* frame, std::uint16_t position, std::uint16_t count,
                               std::uint32_t version) {
  NormalizeFrame(frame);
  return direct::CX_InsertEXENTRY(frame, position, count, version);
}

std::uint16_t CX_DeleteEXENTRY(void* frame, std::uint16_t position, std::uint16_t count,
                               std::uint32_t version) {
  NormalizeFrame(frame);
  return direct::CX_DeleteEXENTRY(frame, position, count, version);
}

void CX_ReduceEntries(void* frame, std::uint32_t version) {
  NormalizeFrame(frame);
  direct::CX_ReduceEntries(frame, version);
}

}  // namespace rw::host
