/* The host functions a plug-in may look up by name in the host module.
 *
 * One row per export: CX_FUNCTION(name, result, parameters, fallback).
 * The comment above each row says who owns what, what a failure returns and
 * on which thread it may be called. Every function takes the interface
 * version (CX_INTERFACE_VERSION) as its last argument. The fallback is what a
 * plug-in should assume when the host lacks the export: a missing export is
 * normal, never an error. All functions run on the host's UI thread.
 *
 * Including this header declares, for every row, the function type
 * name##_t and the pointer type name##_fn. */
#ifndef CANTEL_CX_FUNCTIONS_H
#define CANTEL_CX_FUNCTIONS_H

#include "cx_region.h"
#include "cx_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Dialog procedure of a plug-in dialog: (dialog, message, wParam, lParam,
 * the value handed to CX_Dialog) -> handled. Called by the host, UI thread. */
typedef uint8_t (*CX_DialogProc)(void *dialog, uint32_t message, uint64_t wparam,
                                 int64_t lparam, uint32_t *data);

#define CX_HOST_FUNCTIONS(CX_FUNCTION)                                                            \
  /* layers per staff; fallback 4 */                                                               \
  CX_FUNCTION(CX_GetMaxLayers, uint16_t, (uint32_t version), 4)                                    \
  /* (0, slot, measure, layer from 0, 0): host-owned frame until CX_FreeTGF; null when none */     \
  CX_FUNCTION(CX_LoadTGF, void *,                                                                  \
              (uint16_t list, uint16_t slot, uint16_t measure, uint16_t layer, uint16_t zero,      \
               uint32_t version),                                                                  \
              nullptr)                                                                             \
  /* writes a loaded frame back; frame stays caller's to free; 0 on failure */                     \
  CX_FUNCTION(CX_SaveTGF, uint16_t, (void *frame, uint32_t version), 0)                            \
  /* releases a frame from CX_LoadTGF; result unused */                                            \
  CX_FUNCTION(CX_FreeTGF, uint16_t, (void *frame, uint32_t version), 0)                            \
  /* opens count entries at position; may move the entry array; 0 on failure */                    \
  CX_FUNCTION(CX_InsertEXENTRY, uint16_t,                                                          \
              (void *frame, uint16_t position, uint16_t count, uint32_t version), 0)               \
  /* removes count entries from position; 0 on failure */                                          \
  CX_FUNCTION(CX_DeleteEXENTRY, uint16_t,                                                          \
              (void *frame, uint16_t position, uint16_t count, uint32_t version), 0)               \
  /* merges entries the host considers redundant */                                                \
  CX_FUNCTION(CX_ReduceEntries, void, (void *frame, uint32_t version), 0)                          \
  /* copies min(stored, *size) bytes into caller's buffer and stores the record's size in *size;   \
     null buffer: size query only; 0 when the record does not exist */                             \
  CX_FUNCTION(CX_LoadEData, uint16_t,                                                              \
              (uint32_t tag, uint16_t * number, void *data, uint32_t *size, uint32_t version), 0)  \
  /* creates or replaces the record from caller's bytes; 0 when refused */                         \
  CX_FUNCTION(CX_SaveEData, uint16_t,                                                              \
              (uint32_t tag, uint16_t * number, const void *data, uint32_t size,                   \
               uint32_t version),                                                                  \
              0)                                                                                   \
  /* creates a record; number CX_NUMBER_ANY or sub-number CX_SUBNUMBER_APPEND let the host choose, \
     the chosen words are written back; 0 when refused */                                          \
  CX_FUNCTION(CX_CreateEData, uint16_t,                                                            \
              (uint32_t tag, uint16_t * number, const void *data, uint32_t size,                   \
               uint32_t version),                                                                  \
              0)                                                                                   \
  /* deletes a record; later sub-numbers of the same number move down; 0 when none */              \
  CX_FUNCTION(CX_DeleteEData, uint16_t, (uint32_t tag, uint16_t * number, uint32_t version), 0)    \
  /* steps *number to the next record of the kind and reads it like CX_LoadEData; 0 at the end */  \
  CX_FUNCTION(CX_NextEData, uint16_t,                                                              \
              (uint32_t tag, uint16_t * number, void *data, uint32_t size, uint32_t version), 0)   \
  /* as CX_NextEData, backwards */                                                                 \
  CX_FUNCTION(CX_PreviousEData, uint16_t,                                                          \
              (uint32_t tag, uint16_t * number, void *data, uint32_t size, uint32_t version), 0)   \
  /* runs dialog template `id` of module `instance` modally, calling `procedure` with `data`;      \
     returns when it has ended */                                                                  \
  CX_FUNCTION(CX_Dialog, int64_t,                                                                  \
              (uint16_t id, CX_DialogProc procedure, uint64_t data, uint16_t mode, void *instance, \
               uint32_t version),                                                                  \
              0)                                                                                   \
  /* ends the dialog after the current message */                                                  \
  CX_FUNCTION(CX_EndDialog, void, (void *dialog, uint32_t version), 0)                             \
  /* check state of a button (0 or 1); 0 for an unknown control */                                 \
  CX_FUNCTION(CX_GetDlgCntlVal_UTF16, uint32_t,                                                    \
              (void *dialog, uint32_t control, void *text, uint16_t capacity, uint32_t version),   \
              0)                                                                                   \
  /* (dialog, control, 0, state) sets a button's check state */                                    \
  CX_FUNCTION(CX_SetDlgCntlVal_UTF16, void,                                                        \
              (void *dialog, uint32_t control, uint64_t text, uint32_t value, uint32_t version),   \
              0)                                                                                   \
  /* arms timer `timer`; it fires as WM_TIMER until killed */                                      \
  CX_FUNCTION(CX_SetTimer, void,                                                                   \
              (void *dialog, uint16_t timer, uint32_t milliseconds, uint32_t version), 0)          \
  CX_FUNCTION(CX_KillTimer, void, (void *dialog, uint16_t timer, uint32_t version), 0)             \
  CX_FUNCTION(CX_EnableDlgItem, void,                                                              \
              (void *dialog, uint32_t control, uint16_t enable, uint32_t version), 0)              \
  CX_FUNCTION(CX_SetDlgFocus, void, (void *dialog, uint32_t control, uint32_t version), 0)         \
  /* shows an 8-bit text (string 0) or string `number` of `module`; returns the button; 0: none */ \
  CX_FUNCTION(CX_AlertMessage, uint16_t,                                                           \
              (uint64_t module, uint16_t style, uint32_t number, const char *text,                 \
               uint32_t version),                                                                  \
              0)                                                                                   \
  /* as CX_AlertMessage with a UTF-16 text */                                                      \
  CX_FUNCTION(CX_AlertMessage_UTF16, uint16_t,                                                     \
              (uint64_t module, uint16_t style, uint32_t number, const cx_char16 *text,            \
               uint32_t version),                                                                  \
              0)                                                                                   \
  /* staff number shown in `slot` of staff list `list`; 0 when none */                             \
  CX_FUNCTION(CX_SlotToInst, uint16_t, (uint16_t slot, uint16_t list, uint32_t version), 0)        \
  /* slot of staff `staff` in the score's list; 0 when none */                                     \
  CX_FUNCTION(CX_InstToSlot, uint16_t, (uint16_t staff, uint16_t list, uint32_t version), 0)       \
  /* writes the font's name into caller's buffer of `capacity` units; 0 for an unknown font */     \
  CX_FUNCTION(CX_FontNumToName_UTF16, uint16_t,                                                    \
              (uint16_t font, cx_char16 * name, uint16_t capacity, uint32_t version), 0)           \
  /* font number of a name; 0xFFFF for an unknown font */                                          \
  CX_FUNCTION(CX_FontNameToNum_UTF16, uint16_t, (const cx_char16 *name, uint32_t version),        \
              0xFFFF)                                                                              \
  /* fills caller's metrics records for one entry; 0 on failure */                                 \
  CX_FUNCTION(CX_GetEntryMetrics, uint16_t,                                                        \
              (uint16_t slot, uint16_t measure, uint32_t entry, void *metrics, void *metrics2,     \
               uint16_t zero, uint32_t version),                                                   \
              0)                                                                                   \
  /* (0, measure): its length in duration units; 0 for an unknown measure */                       \
  CX_FUNCTION(CX_GetMeasureDuration, int32_t, (uint16_t zero, uint16_t measure, uint32_t version), \
              0)                                                                                   \
  CX_FUNCTION(CX_GetShowLayer, uint16_t, (uint16_t layer, uint32_t version), 0)                    \
  /* writes a zero-terminated path of at most CX_PATH_UNITS into caller's buffer; see cx_region.h  \
     for the kinds; leaves the buffer alone for an unknown kind */                                 \
  CX_FUNCTION(CX_GetCantelPath, uint16_t, (uint32_t kind, cx_char16 * path, uint32_t version), 0)  \
  /* opens one undoable edit named by the 8-bit text */                                            \
  CX_FUNCTION(CX_StartCantelEdit, uint16_t, (const char *name, uint32_t version), 0)               \
  CX_FUNCTION(CX_EndCantelEdit, uint16_t, (uint32_t version), 0)                                   \
  /* imports the Standard MIDI File named in the block into its region (cx_region.h); 0 on        \
     success */                                                                                    \
  CX_FUNCTION(CX_ProcessMidiDataNoSplit, uint32_t, (void *block, uint32_t version), 0xFFFFFFFFu)   \
  /* parses the caret command at `text`, updates the three font words (font, size, effects) and    \
     returns the position after it (*end as well) */                                               \
  CX_FUNCTION(CX_ParseCaretCommand_UTF16, const cx_char16 *,                                       \
              (const cx_char16 *text, const cx_char16 **end, uint32_t kind, uint16_t *font_info,   \
               uint32_t version),                                                                  \
              nullptr)                                                                             \
  /* current selection regions; the plug-in receives its selection through invoke instead */       \
  CX_FUNCTION(CX_GetCurERegions, uint16_t,                                                         \
              (ERegion * region, void *second, void *third, uint32_t version), 0)

#define CX_DECLARE_FUNCTION_TYPES(name, result, params, fallback) \
  typedef result name##_t params;                                  \
  typedef result(*name##_fn) params;
CX_HOST_FUNCTIONS(CX_DECLARE_FUNCTION_TYPES)
#undef CX_DECLARE_FUNCTION_TYPES

#ifdef __cplusplus
}
#endif

#endif
