// What the module keeps while it is loaded, in one place: the run of the
// command in progress, which the host's dialog callback needs, and the
// user's choices, remembered from one run to the next. Everything here is
// touched on the host's UI thread only, one invoke at a time; the generate
// command reads none of it and gets what it needs as arguments.
#pragma once

#include <cantel/cantel.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "dialog_options.h"
#include "style_library.h"
#include "style_parts.h"

namespace rw::shell {

inline constexpr std::uint32_t kFlagNewStaff = 0x1;       // data word: new staff chosen at OK
inline constexpr std::uint32_t kFlagCancelled = 0x10000;  // data word: the user cancelled
inline constexpr std::uint32_t kPlacementNotRead = 0xFFFFFFFF;

// The choices that outlive a run while the module stays loaded. The
// placement, the parts and the options are also stored for the next
// session (settings.h).
struct RememberedChoices {
  std::uint32_t placement = kPlacementNotRead;  // bit 0: new staff; until read, kPlacementNotRead
  std::int32_t styleRow = -1;                   // the style list at the last OK; -1 for none
  std::int32_t staffRow = 0;                    // the staff list at the last OK
  std::int32_t notationRow = 0;                 // the Generate list, selected again at each opening
  PartChoices parts;  // a fill closes every parts[kFill] measures; 0: none
  OptionChoices options;
};

// The arrangement's controls in the open dialog (arrangement_controls.h):
// the user's choices in this opening, and what the selected style offers.
struct ArrangementControls {
  PartChoices parts;
  OptionChoices options;
  std::array<bool, kPartKinds> offered{};  // the companions the selected style has
  bool crashOffered = false;               // fills are offered and chosen
  bool played = false;                     // the style or a chosen companion was played
};

// The style list of the open dialog (style_list.h).
struct StyleListRows {
  std::vector<std::int64_t> styleOfRow;  // per row: its style in the library, -1 for a heading
  bool noneFits = false;                 // one row says no style fits
};

// One run of the command, from invoke to its return.
struct CommandRun {
  const ERegion* selection = nullptr;  // the host's own, null when nothing is selected
  ERegion document{};
  ERegion work{};                 // whole measures; what the command fills
  std::uint32_t dialogFlags = 0;  // the dialog's data word; CX_Dialog is handed its address
  std::uint16_t dialogRunning = 0;
  std::uint16_t result = 0;  // what invoke answers: 1 once the groove was written
  // The dialog's own state while it is open.
  StyleLibrary styles;
  std::vector<std::int8_t> fits;  // per style: -1 not yet known, else whether its meter fits
  StyleListRows rows;
  bool regionAccepted = false;  // the region's meters passed at the opening
  bool timerPending = false;    // the close timer is armed
  void* gridFont = nullptr;     // the drum grid's fixed-width font, deleted with the dialog
  ArrangementControls arrangement;
};

inline constexpr std::size_t kMenuNameSize = 64;

struct ModuleState {
  std::uint32_t hostVersion = 0;  // kept, never read
  // Filled at each enumeration and never read again; its first text is the
  // name of a sibling plug-in and stays as it is.
  char menuName[kMenuNameSize] = "Lantern Cues";
  void* instance = nullptr;  // the module's own, for its resources
  CommandRun run;
  RememberedChoices choices;
};

extern ModuleState moduleState;

}  // namespace rw::shell
