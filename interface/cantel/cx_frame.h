/* Frames of entries (TGF), entries (EXENTRY) and their notes, as the host
 * lays them out: packed, no alignment padding. Only offsets are given; both
 * sides read and write them with the accessors of cx_types.h. */
#ifndef CANTEL_CX_FRAME_H
#define CANTEL_CX_FRAME_H

#include "cx_types.h"

/* Frame: one staff, measure and layer. Host-owned between CX_LoadTGF and
 * CX_FreeTGF. */
#define CX_TGF_SLOT 0          /* u16: staff slot it was loaded for */
#define CX_TGF_MEASURE 2       /* u16 */
#define CX_TGF_LAYER 4         /* u16: layer index from 0 */
#define CX_TGF_RESERVED 6      /* 8 bytes the host keeps for itself */
#define CX_TGF_ENTRIES 14      /* pointer to the entry array */
#define CX_TGF_ENTRY_COUNT 22  /* i16 */
#define CX_TGF_SIZE 24

/* Entry: 146 bytes, contiguous in the frame's entry array. */
#define CX_ENTRY_DURATION_SHORT 4  /* i16 */
#define CX_ENTRY_FLAGS 8           /* u32 */
#define CX_ENTRY_FLAGS2 12         /* u16 */
#define CX_ENTRY_NOTE_COUNT 14     /* i16 */
#define CX_ENTRY_NOTES 16          /* CX_ENTRY_MAX_NOTES notes */
#define CX_ENTRY_POSITION 136      /* i32, duration units into the measure */
#define CX_ENTRY_DURATION 140      /* i32 */
#define CX_ENTRY_SIZE 146
#define CX_ENTRY_MAX_NOTES 12

#define CX_ENTRY_FLAG_NOTE 0x40000000u   /* clear: a rest */
#define CX_ENTRY_FLAG_LEGAL 0x80000000u  /* set on every live entry */
#define CX_ENTRY_FLAG_FILLED 0x01000000u /* an entry given a placeholder note */

/* Note: 10 bytes inside an entry. */
#define CX_NOTE_KEY 0      /* u16: the host keeps the MIDI key here */
#define CX_NOTE_WORD2 2    /* u16: host-defined */
#define CX_NOTE_ID 4       /* i16: note identifier, unique in its entry */
#define CX_NOTE_FLAGS 6    /* u32: bits 16 to 20 mirror the identifier */
#define CX_NOTE_SIZE 10
#define CX_NOTE_ID_BITS_SHIFT 16
#define CX_NOTE_ID_BITS_MASK 0x001F0000u

CX_STATIC_ASSERT(CX_TGF_ENTRIES + 8 == CX_TGF_ENTRY_COUNT, "entry pointer is 8 bytes");
CX_STATIC_ASSERT(CX_ENTRY_NOTES + CX_ENTRY_MAX_NOTES * CX_NOTE_SIZE == CX_ENTRY_POSITION,
                 "the notes end where the position begins");
CX_STATIC_ASSERT(CX_ENTRY_DURATION + 4 <= CX_ENTRY_SIZE, "");
CX_STATIC_ASSERT(CX_NOTE_FLAGS + 4 == CX_NOTE_SIZE, "");

/* Frame record "FGDS" of one staff in one measure: 14 packed bytes. The
 * host fills bytes 0 to 5 and writes one frame number per layer through the
 * pointer at 6, into an array the caller owns (max(4, layers) elements). */
#define CX_FGDS_CLEF 0
#define CX_FGDS_RESERVED 2
#define CX_FGDS_FRAMES 6
#define CX_FGDS_SIZE 14
CX_STATIC_ASSERT(CX_FGDS_FRAMES + 8 == CX_FGDS_SIZE, "");

#endif
