// Every function the plug-in binds by name, with what it assumes when the
// function is missing: one row per function, X(name, fallback). The
// signatures are the interface's (name##_t). A missing function is normal:
// the wrapper answers the fallback and the plug-in carries on. Functions
// without a result list 0, which nothing reads.
#pragma once

// The host's exports, found in the host module.
#define RW_HOST_EXPORTS(X)                                                                     \
  X(CX_GetMaxLayers, 4)                                                                        \
  X(CX_LoadTGF, nullptr)                                                                       \
  X(CX_SaveTGF, 0)                                                                             \
  X(CX_FreeTGF, 0)                                                                             \
  X(CX_InsertEXENTRY, 0)                                                                       \
  X(CX_DeleteEXENTRY, 0)                                                                       \
  X(CX_ReduceEntries, 0)                                                                       \
  X(CX_LoadEData, 0)                                                                           \
  X(CX_SaveEData, 0)                                                                           \
  X(CX_CreateEData, 0)                                                                         \
  X(CX_DeleteEData, 0)                                                                         \
  X(CX_NextEData, 0)                                                                           \
  X(CX_PreviousEData, 0)                                                                       \
  X(CX_Dialog, 0) /* no dialog: the run ends as a cancel does */                               \
  X(CX_EndDialog, 0)                                                                           \
  X(CX_GetDlgCntlVal_UTF16, 0)                                                                 \
  X(CX_SetDlgCntlVal_UTF16, 0)                                                                 \
  X(CX_SetTimer, 0)                                                                            \
  X(CX_KillTimer, 0)                                                                           \
  X(CX_EnableDlgItem, 0)                                                                       \
  X(CX_SetDlgFocus, 0)                                                                         \
  X(CX_AlertMessage, 0)                                                                        \
  X(CX_AlertMessage_UTF16, 0) /* an unanswered question is not Yes */                          \
  X(CX_SlotToInst, 0)                                                                          \
  X(CX_InstToSlot, 0)                                                                          \
  X(CX_FontNumToName_UTF16, 0)                                                                 \
  X(CX_FontNameToNum_UTF16, 0xFFFF) /* the host's answer for an unknown font */               \
  X(CX_GetEntryMetrics, 0)                                                                     \
  X(CX_GetMeasureDuration, 0)                                                                  \
  X(CX_GetShowLayer, 0)                                                                        \
  X(CX_GetCantelPath, 0) /* the caller's cleared buffer stays empty */                         \
  X(CX_StartCantelEdit, 0)                                                                     \
  X(CX_EndCantelEdit, 0)                                                                       \
  X(CX_ProcessMidiDataNoSplit, 0xFFFFFFFFu)                                                    \
  X(CX_ParseCaretCommand_UTF16, nullptr)                                                       \
  X(CX_GetCurERegions, 0)

// The list-box and combo-box messages to the dialog's controls: the system's
// own on Windows, exported beside the CX_ functions by a host that owns the
// controls itself (every POSIX host).
#define RW_CONTROL_MESSAGES(X) X(SendDlgItemMessageW, 0)

#define RW_BOUND_FUNCTIONS(X) RW_HOST_EXPORTS(X) RW_CONTROL_MESSAGES(X)
