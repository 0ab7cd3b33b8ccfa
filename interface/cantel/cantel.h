/* The whole Cantel plug-in interface. */
#ifndef CANTEL_CANTEL_H
#define CANTEL_CANTEL_H
#include "cx_dialog.h"
#include "cx_frame.h"
#include "cx_functions.h"
#include "cx_plugin.h"
#include "cx_records.h"
#include "cx_region.h"
#include "cx_types.h"
CX_STATIC_ASSERT(sizeof(void *) == 8, "the interface is defined for 64-bit processes");
#endif
