#include "phrase_controls.h"

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

void Enable(void* dialog, std::uint32_t control, bool enable) {
  host::CX_EnableDlgItem(dialog, control, enable ? 1 : 0, kVersion);
}

}  // namespace

void FillPhraseControls(void* dialog, PhraseControls& phrase, const RememberedChoices& choices) {
  phrase.fillEvery = choices.fillEvery;
  phrase.ending = choices.ending;
  host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_RESETCONTENT, 0, 0);
  for (const std::uint32_t id : kFillChoiceStrings) {
    char16_t text[kRowTextCapacity];
    LoadStringResource(id, text, kRowTextCapacity);
    host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_ADDSTRING, 0,
                              static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(text)));
  }
  SelectFillRow(dialog, 0);
}

void OfferPhrase(void* dialog, PhraseControls& phrase, bool hasFill, bool hasEnding) {
  ReadPhrase(dialog, phrase);
  // Only what changes is sent: the host sees one call per control the
  // user would see change.
  if (hasFill != phrase.fillOffered) {
    phrase.fillOffered = hasFill;
    SelectFillRow(dialog, hasFill ? FillRowOf(phrase.fillEvery) : 0);
    Enable(dialog, RW_ID_FILL_LABEL, hasFill);
    Enable(dialog, RW_ID_FILL_LIST, hasFill);
  }
  if (hasEnding != phrase.endingOffered) {
    phrase.endingOffered = hasEnding;
    if (phrase.ending) host::CX_SetDlgCntlVal_UTF16(dialog, RW_ID_ENDING, 0, hasEnding, kVersion);
    Enable(dialog, RW_ID_ENDING, hasEnding);
  }
}

void ToggleEnding(void* dialog, PhraseControls& phrase) {
  if (!phrase.endingOffered) return;
  phrase.ending = !phrase.ending;
  host::CX_SetDlgCntlVal_UTF16(dialog, RW_ID_ENDING, 0, phrase.ending ? 1 : 0, kVersion);
}

void ReadPhrase(void* dialog, PhraseControls& phrase) {
  if (!phrase.fillOffered) return;
  const std::int64_t row =
      host::SendDlgItemMessageW(dialog, RW_ID_FILL_LIST, CX_CB_GETCURSEL, 0, 0);
  if (row >= 0 && static_cast<std::size_t>(row) < std::size(kFillChoices)) {
    phrase.fillEvery = kFillChoices[static_cast<std::size_t>(row)];
  }
}

}  // namespace rw::shell
