/* The interface is shared with hosts written in C: this translation unit
 * keeps it compiling as plain C11 in every build. */
#include <cantel/cantel.h>

/* One use of a generated function type, so that the X-macro is expanded. */
static CX_GetMaxLayers_fn unused_binding = 0;
const void *cantel_interface_check(void) { return (const void *)&unused_binding; }
