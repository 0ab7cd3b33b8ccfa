/* The six functions a Cantel plug-in exports, with C linkage. The host calls
 * them on its UI thread, in this order at start-up: Version, Init,
 * Enumerate_UTF16 (index 0, 1, ... until it answers 0), GetMenuStatus when it
 * builds its menu; Invoke per command; Terminate before unloading. */
#ifndef CANTEL_CX_PLUGIN_H
#define CANTEL_CX_PLUGIN_H

#include "cx_region.h"
#include "cx_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Menu record filled by Enumerate: three 128-unit texts, then two zero units. */
#define CX_MENU_TEXT_UNITS 128
#define CX_MENU_COMMAND 0
#define CX_MENU_TEXT2 128
#define CX_MENU_TEXT3 256
#define CX_MENU_TAIL 384
#define CX_MENU_RECORD_UNITS 386

/* host version -> the interface version the plug-in was built for */
typedef uint32_t CantelExtensionVersion_t(uint32_t hostVersion);
/* writes 0 through `flags`; 1 when ready */
typedef uint16_t CantelExtensionInit_t(void *host, uint32_t *flags);
/* fills the host-owned menu record for entry `index`; 0 when there is none */
typedef uint16_t CantelExtensionEnumerate_UTF16_t(void *host, int16_t index, cx_char16 *menu);
/* 1 when the entry is enabled */
typedef uint16_t CantelExtensionGetMenuStatus_t(int16_t index);
/* runs entry `index` on the selection (null: none) of the document; the regions stay the
   host's; returns 1 when the document was changed */
typedef uint16_t CantelExtensionInvoke_t(void *window, int16_t index, const ERegion *selection,
                                         const ERegion *document);
/* last call before unloading */
typedef void CantelExtensionTerminate_t(void *host);

#ifdef __cplusplus
}
#endif

#endif
