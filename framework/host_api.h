// HostApi: one wrapper per function the plug-in binds by name, named exactly
// like the export and with its exact signature (for the host's functions the
// interface version comes last). Each wrapper looks its function up on its
// first call and keeps the address; when the function is missing it answers
// the fallback of bound_functions.h without calling anything. A failed
// look-up is not retried.
#pragma once

#include <cantel/cantel.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "bound_functions.h"

namespace rw::host {

inline constexpr std::uint32_t kVersion = CX_INTERFACE_VERSION;

// The host module the plug-in belongs to, or null outside a host.
void* FindHostModule();

// Test seam: address of a function by name, or null. Installing a resolver
// (or null, for the host module again) forgets every binding, so that each
// function is looked up through it at its next call.
using Resolver = void* (*)(const char* name);
void SetResolver(Resolver resolver);

namespace detail {

enum class Slot : std::size_t {
#define RW_SLOT(name, fallback) name,
  RW_BOUND_FUNCTIONS(RW_SLOT)
#undef RW_SLOT
      kCount
};

// The address bound to `slot`, looked up once under the current resolver;
// null when the function is missing. UI thread; the first look-up of a slot
// is serialised, later reads take no lock.
void* Bound(Slot slot);

template <Slot kSlot, typename Function>
struct Forwarder;

template <Slot kSlot, typename Result, typename... Args>
struct Forwarder<kSlot, Result(Args...)> {
  template <auto kFallback>
  static Result Call(Args... args) {
    const auto bound = reinterpret_cast<Result (*)(Args...)>(Bound(kSlot));
    if (bound == nullptr) {
      if constexpr (std::is_void_v<Result>) {
        return;
      } else {
        return static_cast<Result>(kFallback);
      }
    }
    return bound(args...);
  }
};

}  // namespace detail

// Straight calls with the table's fallback, also for the functions whose
// wrappers below add bookkeeping of their own.
namespace direct {
#define RW_DIRECT(name, fallback)   \
  inline constexpr name##_t* name = \
      &detail::Forwarder<detail::Slot::name, name##_t>::template Call<fallback>;
RW_BOUND_FUNCTIONS(RW_DIRECT)
#undef RW_DIRECT
}  // namespace direct

// Functions passed through as they are.
using direct::CX_AlertMessage;
using direct::CX_AlertMessage_UTF16;
using direct::CX_CreateEData;
using direct::CX_DeleteEData;
using direct::CX_Dialog;
using direct::CX_EnableDlgItem;
using direct::CX_EndDialog;
using direct::CX_FontNameToNum_UTF16;
using direct::CX_FontNumToName_UTF16;
using direct::CX_GetCantelPath;
using direct::CX_GetCurERegions;
using direct::CX_GetDlgCntlVal_UTF16;
using direct::CX_GetEntryMetrics;
using direct::CX_GetMaxLayers;
using direct::CX_GetMeasureDuration;
using direct::CX_GetShowLayer;
using direct::CX_InstToSlot;
using direct::CX_KillTimer;
using direct::CX_NextEData;
using direct::CX_ParseCaretCommand_UTF16;
using direct::CX_PreviousEData;
using direct::CX_ProcessMidiDataNoSplit;
using direct::CX_SetDlgCntlVal_UTF16;
using direct::CX_SetDlgFocus;
using direct::CX_SetTimer;
using direct::CX_SlotToInst;
using direct::SendDlgItemMessageW;

// Frames: counted, and normalised before the host sees them.
CX_LoadTGF_t CX_LoadTGF;
CX_FreeTGF_t CX_FreeTGF;
CX_SaveTGF_t CX_SaveTGF;
CX_InsertEXENTRY_t CX_InsertEXENTRY;
CX_DeleteEXENTRY_t CX_DeleteEXENTRY;
CX_ReduceEntries_t CX_ReduceEntries;

// Edit transactions: counted; an end without an open edit never reaches the host.
CX_StartCantelEdit_t CX_StartCantelEdit;
CX_EndCantelEdit_t CX_EndCantelEdit;

// Records: four composite kinds are assembled from host sub-records, and
// one special kind is read twice.
CX_LoadEData_t CX_LoadEData;
CX_SaveEData_t CX_SaveEData;

// Bookkeeping of the wrappers, process-wide, on the host's UI thread only.
std::int32_t OpenFrameCount();
std::int32_t EditNestingCount();

}  // namespace rw::host
