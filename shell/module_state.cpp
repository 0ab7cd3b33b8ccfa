#include "module_state.h"

namespace rw::shell {

std::uint32_t hostVersion = 0;
char menuName[kMenuNameSize] = "Lantern Cues";
std::uint16_t dialogRunning = 0;
std::uint16_t commandResult = 0;
const ERegion* selectionRegion = nullptr;
ERegion documentRegion = {};
ERegion workRegion = {};
std::uint32_t dialogFlags = 0;
void* instanceHandle = nullptr;

}  // namespace rw::shell
