/* ERegion: the host's region record, and the MIDI import block built on it. */
#ifndef CANTEL_CX_REGION_H
#define CANTEL_CX_REGION_H

#include "cx_types.h"

/* 20 bytes, packed, little-endian: a start half and an end half of 10 bytes.
 * Slots and measures are unsigned 16-bit on the wire; widen them to 32 bits
 * before doing arithmetic. */
#pragma pack(push, 1)
typedef struct ERegion {
  uint16_t startList;     /* staff list number of the start half (0: score) */
  uint16_t startSlot;     /* first staff slot, 1-based */
  uint16_t startMeasure;  /* first measure, 1-based */
  int32_t startPosition;  /* duration units into the start measure */
  uint16_t endList;
  uint16_t endSlot;
  uint16_t endMeasure;
  int32_t endPosition;    /* CX_END_OF_MEASURE: up to the end of the measure */
} ERegion;
#pragma pack(pop)

#define CX_END_OF_MEASURE 0x7FFFFFFF

#define CX_REGION_SIZE 20
#define CX_REGION_START_LIST 0
#define CX_REGION_START_SLOT 2
#define CX_REGION_START_MEASURE 4
#define CX_REGION_START_POSITION 6
#define CX_REGION_END_LIST 10
#define CX_REGION_END_SLOT 12
#define CX_REGION_END_MEASURE 14
#define CX_REGION_END_POSITION 16

CX_STATIC_ASSERT(sizeof(ERegion) == CX_REGION_SIZE, "ERegion is 20 bytes");
CX_STATIC_ASSERT(offsetof(ERegion, startSlot) == CX_REGION_START_SLOT, "");
CX_STATIC_ASSERT(offsetof(ERegion, startMeasure) == CX_REGION_START_MEASURE, "");
CX_STATIC_ASSERT(offsetof(ERegion, startPosition) == CX_REGION_START_POSITION, "");
CX_STATIC_ASSERT(offsetof(ERegion, endList) == CX_REGION_END_LIST, "");
CX_STATIC_ASSERT(offsetof(ERegion, endSlot) == CX_REGION_END_SLOT, "");
CX_STATIC_ASSERT(offsetof(ERegion, endMeasure) == CX_REGION_END_MEASURE, "");
CX_STATIC_ASSERT(offsetof(ERegion, endPosition) == CX_REGION_END_POSITION, "");

/* Block handed to CX_ProcessMidiDataNoSplit: the region to fill, then the
 * path of the Standard MIDI File to import, inline and zero-terminated. */
#define CX_MIDI_BLOCK_REGION 0
#define CX_MIDI_BLOCK_PATH 20
#define CX_MIDI_BLOCK_SIZE (CX_MIDI_BLOCK_PATH + 2 * CX_PATH_UNITS)

/* Path kinds of CX_GetCantelPath. */
#define CX_PATH_TEMPORARY 9        /* a writable folder, ends in a separator */
#define CX_PATH_COMPONENT_FILES 11 /* no trailing separator */

#endif
