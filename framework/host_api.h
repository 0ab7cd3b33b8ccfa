// HostApi: one wrapper per host function, named exactly like the host's
// export and with its exact signature (the interface version comes last).
// Each wrapper looks its export up by name on its first call, once per
// process, under the thread-safe initialisation of a function-local static,
// and answers the interface table's fallback when the host lacks it. A
// failed look-up is never retried.
#pragma once

#include <cantel/cantel.h>

#include <cstdint>
#include <type_traits>

namespace rw::host {

inline constexpr std::uint32_t kVersion = CX_INTERFACE_VERSION;

// Address of a host export, or null. Tests may replace the look-up in the
// host module with their own; only functions not bound yet see the change.
using Resolver = void* (*)(const char* exportName);
void SetResolver(Resolver resolver);
void* FindHostModule();
void* LookupHostFunction(const char* exportName);

namespace detail {

template <typename Function>
struct Forwarder;

template <typename Result, typename... Args>
struct Forwarder<Result(Args...)> {
  template <const char* kName, auto kFallback>
  static Result Call(Args... args) {
    static const auto bound = reinterpret_cast<Result (*)(Args...)>(LookupHostFunction(kName));
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

#define RW_HOST_EXPORT_NAME(name, result, params, fallback) \
  inline constexpr char name##_name[] = #name;
CX_HOST_FUNCTIONS(RW_HOST_EXPORT_NAME)
#undef RW_HOST_EXPORT_NAME

}  // namespace detail

// Straight calls to the host with the table's fallback, also for the
// functions whose wrappers below add bookkeeping of their own.
namespace direct {
#define RW_HOST_DIRECT(name, result, params, fallback) \
  inline constexpr name##_t* name = &detail::Forwarder<name##_t>::Call<detail::name##_name, fallback>;
CX_HOST_FUNCTIONS(RW_HOST_DIRECT)
#undef RW_HOST_DIRECT
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
