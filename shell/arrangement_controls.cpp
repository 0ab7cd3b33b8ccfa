#include "arrangement_controls.h"

#include <algorithm>
#include <iterator>

#include "dialog_ids.h"
#include "host_api.h"
#include "settings.h"
#include "string_resources.h"

namespace rw::shell {
namespace {

using host::kVersion;

// The drop-down's rows: "No fills", "2 measures", ... in kFillChoices' order.
constexpr std::uint32_t kFillChoiceStrings[] = {33, 34, 35, 36, 37};
static_assert(std::size(kFillChoiceStrings) == std::size(kFillChoices));
constexpr std::size_t kRowTextCapacity = 64;

std::int64_t FillRowOf(std::uint32_t measures) {
  const auto* found = std::find(std::begin(kFillChoices), std::end(kFillChoices), measures);
  return found == std::end(kFillChoices) ? 0 : found - std::begin(kFillChoices);
}

void SelectFillRow(void* dialog, std::int64_t row) {
  host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_SETCURSEL,
                            static_cast<std::uint64_t>(row), 0);
}

void Enable(void* dialog, int control, bool enable) {
  host::CX_EnableDlgItem(dialog, static_cast<std::uint32_t>(control), enable ? 1 : 0, kVersion);
}

void Check(void* dialog, int control, bool checked) {
  host::CX_SetDlgCntlVal_UTF16(dialog, static_cast<std::uint32_t>(control), 0, checked ? 1 : 0,
                               kVersion);
}

// A check box that is offered or withdrawn: it shows the choice only while
// offered. Only what changes is sent, so the host sees one call per control
// the user would see change.
void Offer(void* dialog, int control, bool& offered, bool offer, bool chosen) {
  if (offered == offer) return;
  offered = offer;
  if (chosen) Check(dialog, control, offer);
  Enable(dialog, control, offer);
}

const OptionRow& RowOf(Option option) { return OptionRows()[static_cast<std::size_t>(option)]; }

void OfferCrash(void* dialog, ArrangementControls& controls) {
  const bool fills = controls.offered[static_cast<std::size_t>(PartKind::kFill)] &&
                     controls.parts[PartKind::kFill] > 0;
  Offer(dialog, RowOf(Option::kCrashAfterFill).control, controls.crashOffered, fills,
        controls.options[Option::kCrashAfterFill]);
}

}  // namespace

void FillArrangementControls(void* dialog, ArrangementControls& controls,
                             const RememberedChoices& choices) {
  controls = ArrangementControls{};
  controls.parts = choices.parts;
  controls.options = choices.options;
  host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_RESETCONTENT, 0, 0);
  for (const std::uint32_t id : kFillChoiceStrings) {
    char16_t text[kRowTextCapacity];
    LoadStringResource(id, text, kRowTextCapacity);
    host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_ADDSTRING, 0,
                              static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text)));
  }
  SelectFillRow(dialog, 0);
}

void OfferArrangement(void* dialog, ArrangementControls& controls, const StyleOffer& offer) {
  ReadFillChoice(dialog, controls);
  for (const PartRow& row : PartRows()) {
    if (row.kind == PartKind::kMain) continue;
    const auto k = static_cast<std::size_t>(row.kind);
    bool& offered = controls.offered[k];
    if (row.kind != PartKind::kFill) {
      Offer(dialog, row.control, offered, offer.parts[k], controls.parts[row.kind] != 0);
    } else if (offered != offer.parts[k]) {
      offered = offer.parts[k];
      SelectFillRow(dialog, offered ? FillRowOf(controls.parts[row.kind]) : 0);
      Enable(dialog, RW_ID_FILL_LABEL, offered);
      Enable(dialog, row.control, offered);
    }
  }
  OfferCrash(dialog, controls);
  Offer(dialog, RowOf(Option::kStraighten).control, controls.played, offer.played,
        controls.options[Option::kStraighten]);
}

bool ToggleArrangement(void* dialog, ArrangementControls& controls, int control) {
  for (const PartRow& row : PartRows()) {
    if (row.kind == PartKind::kMain || row.kind == PartKind::kFill || row.control != control) {
      continue;
    }
    if (controls.offered[static_cast<std::size_t>(row.kind)]) {
      std::uint32_t& chosen = controls.parts[row.kind];
      chosen = chosen != 0 ? 0 : 1;
      Check(dialog, control, chosen != 0);
    }
    return true;
  }
  const struct {
    Option option;
    bool offered;
  } options[] = {{Option::kCrashAfterFill, controls.crashOffered},
                 {Option::kStraighten, controls.played}};
  for (const auto& [option, offered] : options) {
    if (RowOf(option).control != control) continue;
    if (offered) {
      bool& chosen = controls.options[option];
      chosen = !chosen;
      Check(dialog, control, chosen);
    }
    return true;
  }
  return false;
}

void ReadFillChoice(void* dialog, ArrangementControls& controls) {
  if (!controls.offered[static_cast<std::size_t>(PartKind::kFill)]) return;
  const std::int64_t row =
      host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_GETCURSEL, 0, 0);
  if (row >= 0 && static_cast<std::size_t>(row) < std::size(kFillChoices)) {
    controls.parts[PartKind::kFill] = kFillChoices[static_cast<std::size_t>(row)];
  }
  OfferCrash(dialog, controls);
}

}  // namespace rw::shell
