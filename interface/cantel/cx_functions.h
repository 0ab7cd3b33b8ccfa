/* The host functions a plug-in may look up by name in the host module.
 *
 * One row per export: CX_FUNCTION(name, result, parameters). Every function
 * takes the interface version (CX_INTERFACE_VERSION) as its last argument
 * and runs on the host's UI thread only. The comment above each row says
 * what it does, who owns what crosses it, and what the host answers when it
 * fails ("-" where there is no answer). A host may lack any export; what a
 * plug-in assumes then is the plug-in's own business.
 *
 * Including this header declares, for every row, the function type
 * name##_t and the pointer type name##_fn. Plain C. */
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

#define CX_HOST_FUNCTIONS(CX_FUNCTION)                                                             \
  /* layers per staff. Fails: - */                                                                 \
  CX_FUNCTION(CX_GetMaxLayers, uint16_t, (uint32_t version))                                       \
  /* frame of (0, slot, measure, layer from 0, 0), host-owned until CX_FreeTGF. Fails: null */     \
  CX_FUNCTION(CX_LoadTGF, void *,                                                                  \
              (uint16_t list, uint16_t slot, uint16_t measure, uint16_t layer, uint16_t zero,      \
               uint32_t version))                                                                  \
  /* writes a loaded frame back; the caller still frees it. Fails: 0 */                            \
  CX_FUNCTION(CX_SaveTGF, uint16_t, (void *frame, uint32_t version))                               \
  /* releases a frame from CX_LoadTGF. Result unused */                                            \
  CX_FUNCTION(CX_FreeTGF, uint16_t, (void *frame, uint32_t version))                               \
  /* opens count entries at position; may move the frame's entry array. Fails: 0 */                \
  CX_FUNCTION(CX_InsertEXENTRY, uint16_t,                                                          \
              (void *frame, uint16_t position, uint16_t count, uint32_t version))                  \
  /* removes count entries from position. Fails: 0 */                                              \
  CX_FUNCTION(CX_DeleteEXENTRY, uint16_t,                                                          \
              (void *frame, uint16_t position, uint16_t count, uint32_t version))                  \
  /* merges entries the host considers redundant. Fails: - */                                      \
  CX_FUNCTION(CX_ReduceEntries, void, (void *frame, uint32_t version))                             \
  /* copies min(stored, *size) bytes into the caller's buffer, the record's size into *size;       \
     null buffer: size only. Fails: 0 (no such record) */                                          \
  CX_FUNCTION(CX_LoadEData, uint16_t,                                                              \
              (uint32_t tag, uint16_t * number, void *data, uint32_t *size, uint32_t version))     \
  /* creates or replaces the record from the caller's bytes. Fails: 0 */                           \
  CX_FUNCTION(CX_SaveEData, uint16_t,                                                              \
              (uint32_t tag, uint16_t * number, const void *data, uint32_t size,                   \
               uint32_t version))                                                                  \
  /* creates a record; CX_NUMBER_ANY / CX_SUBNUMBER_APPEND let the host choose and write           \
     the chosen words back. Fails: 0 */                                                            \
  CX_FUNCTION(CX_CreateEData, uint16_t,                                                            \
              (uint32_t tag, uint16_t * number, const void *data, uint32_t size,                   \
               uint32_t version))                                                                  \
  /* deletes a record; later sub-numbers of that number move down. Fails: 0 */                     \
  CX_FUNCTION(CX_DeleteEData, uint16_t, (uint32_t tag, uint16_t * number, uint32_t version))       \
  /* steps *number to the next record of the kind and reads it like CX_LoadEData. Fails: 0 */      \
  CX_FUNCTION(CX_NextEData, uint16_t,                                                              \
              (uint32_t tag, uint16_t * number, void *data, uint32_t size, uint32_t version))      \
  /* as CX_NextEData, backwards. Fails: 0 */                                                       \
  CX_FUNCTION(CX_PreviousEData, uint16_t,                                                          \
              (uint32_t tag, uint16_t * number, void *data, uint32_t size, uint32_t version))      \
  /* runs template `id` of `instance` modally; `procedure` gets `data`; returns when it has        \
     ended; the dialog window is the host's. Fails: 0, no dialog */                                \
  CX_FUNCTION(CX_Dialog, int64_t,                                                                  \
              (uint16_t id, CX_DialogProc procedure, uint64_t data, uint16_t mode, void *instance, \
               uint32_t version))                                                                  \
  /* ends the dialog after the current message. Fails: - */                                        \
  CX_FUNCTION(CX_EndDialog, void, (void *dialog, uint32_t version))                                \
  /* check state (0 or 1) of a button. Fails: 0 (unknown control) */                               \
  CX_FUNCTION(CX_GetDlgCntlVal_UTF16, uint32_t,                                                    \
              (void *dialog, uint32_t control, void *text, uint16_t capacity, uint32_t version))   \
  /* (dialog, control, 0, state) sets a button's check state. Fails: - */                          \
  CX_FUNCTION(CX_SetDlgCntlVal_UTF16, void,                                                        \
              (void *dialog, uint32_t control, uint64_t text, uint32_t value, uint32_t version))   \
  /* arms `timer`: WM_TIMER every period until killed. Fails: - */                                 \
  CX_FUNCTION(CX_SetTimer, void,                                                                   \
              (void *dialog, uint16_t timer, uint32_t milliseconds, uint32_t version))             \
  /* disarms `timer`. Fails: - */                                                                  \
  CX_FUNCTION(CX_KillTimer, void, (void *dialog, uint16_t timer, uint32_t version))                \
  /* enables (1) or disables (0) a control. Fails: - */                                            \
  CX_FUNCTION(CX_EnableDlgItem, void,                                                              \
              (void *dialog, uint32_t control, uint16_t enable, uint32_t version))                 \
  /* moves the keyboard focus to a control. Fails: - */                                            \
  CX_FUNCTION(CX_SetDlgFocus, void, (void *dialog, uint32_t control, uint32_t version))            \
  /* shows the caller's 8-bit text (number 0) or string `number`; the button. Fails: 0 */          \
  CX_FUNCTION(CX_AlertMessage, uint16_t,                                                           \
              (uint64_t module, uint16_t style, uint32_t number, const char *text,                 \
               uint32_t version))                                                                  \
  /* as CX_AlertMessage with the caller's UTF-16 text. Fails: 0 */                                 \
  CX_FUNCTION(CX_AlertMessage_UTF16, uint16_t,                                                     \
              (uint64_t module, uint16_t style, uint32_t number, const cx_char16 *text,            \
               uint32_t version))                                                                  \
  /* staff number shown in `slot` of staff list `list`. Fails: 0 */                                \
  CX_FUNCTION(CX_SlotToInst, uint16_t, (uint16_t slot, uint16_t list, uint32_t version))           \
  /* slot of `staff` in the score's list. Fails: 0 */                                              \
  CX_FUNCTION(CX_InstToSlot, uint16_t, (uint16_t staff, uint16_t list, uint32_t version))          \
  /* the font's name into the caller's buffer of `capacity` units. Fails: 0 (unknown font) */      \
  CX_FUNCTION(CX_FontNumToName_UTF16, uint16_t,                                                    \
              (uint16_t font, cx_char16 * name, uint16_t capacity, uint32_t version))              \
  /* font number of the caller's name. Fails: 0xFFFF (unknown font) */                             \
  CX_FUNCTION(CX_FontNameToNum_UTF16, uint16_t, (const cx_char16 *name, uint32_t version))         \
  /* fills the caller's two metrics records for one entry. Fails: 0 */                             \
  CX_FUNCTION(CX_GetEntryMetrics, uint16_t,                                                        \
              (uint16_t slot, uint16_t measure, uint32_t entry, void *metrics, void *metrics2,     \
               uint16_t zero, uint32_t version))                                                   \
  /* (0, measure): its length in duration units. Fails: 0 (unknown measure) */                     \
  CX_FUNCTION(CX_GetMeasureDuration, int32_t, (uint16_t zero, uint16_t measure, uint32_t version)) \
  /* whether layer `layer` (from 0) is shown. Fails: 0 */                                          \
  CX_FUNCTION(CX_GetShowLayer, uint16_t, (uint16_t layer, uint32_t version))                       \
  /* zero-terminated path of `kind` (cx_region.h) into the caller's CX_PATH_UNITS. Fails: -        \
     the buffer is left as it was */                                                               \
  CX_FUNCTION(CX_GetCantelPath, uint16_t, (uint32_t kind, cx_char16 * path, uint32_t version))     \
  /* opens one undoable edit named by the caller's 8-bit text. Result unused */                    \
  CX_FUNCTION(CX_StartCantelEdit, uint16_t, (const char *name, uint32_t version))                  \
  /* closes the edit opened last. Result unused */                                                 \
  CX_FUNCTION(CX_EndCantelEdit, uint16_t, (uint32_t version))                                      \
  /* imports the Standard MIDI File named in the caller's block into its region                    \
     (cx_region.h); 0 on success. Fails: non-zero */                                               \
  CX_FUNCTION(CX_ProcessMidiDataNoSplit, uint32_t, (void *block, uint32_t version))                \
  /* parses the caret command at `text` into the caller's three font words (font, size,            \
     effects); returns the position after it, *end as well. Fails: `text` unchanged */             \
  CX_FUNCTION(CX_ParseCaretCommand_UTF16, const cx_char16 *,                                       \
              (const cx_char16 *text, const cx_char16 **end, uint32_t kind, uint16_t *font_info,   \
               uint32_t version))                                                                  \
  /* the current selection into the caller's region. Fails: 0 */                                   \
  CX_FUNCTION(CX_GetCurERegions, uint16_t,                                                         \
              (ERegion * region, void *second, void *third, uint32_t version))

#define CX_DECLARE_FUNCTION_TYPES(name, result, params) \
  typedef result name##_t params;                      \
  typedef result(*name##_fn) params;
CX_HOST_FUNCTIONS(CX_DECLARE_FUNCTION_TYPES)
#undef CX_DECLARE_FUNCTION_TYPES

#ifdef __cplusplus
}
#endif

#endif
