// The module's globals: one instance per loaded module, zero-initialised,
// overwritten by each run of the command.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>

namespace rw::shell {

inline constexpr std::size_t kMenuNameSize = 64;

extern std::uint32_t hostVersion;  // kept, never read
// Filled at each enumeration and never read again; its first text is the
// name of a sibling plug-in and stays as it is.
extern char menuName[kMenuNameSize];
extern std::uint16_t dialogRunning;
extern std::uint16_t commandResult;
extern const ERegion* selectionRegion;  // the host's, null when nothing is selected
extern ERegion documentRegion;
extern ERegion workRegion;
// The dialog's data word: bit 0 new staff chosen at OK, bit 16 cancelled.
extern std::uint32_t dialogFlags;
inline constexpr std::uint32_t kFlagNewStaff = 0x1;
inline constexpr std::uint32_t kFlagCancelled = 0x10000;

// The module's own instance handle, stored when the process attached it.
extern void* instanceHandle;

}  // namespace rw::shell
