/* Record kinds of the host's document database and the fields that both the
 * host and its plug-ins interpret. A record is addressed by its tag and a
 * number block of two u16 words (number, sub-number). */
#ifndef CANTEL_CX_RECORDS_H
#define CANTEL_CX_RECORDS_H

#include "cx_types.h"

/* Number that asks the host to choose one on create, and the sub-number that
 * asks it to append. */
#define CX_NUMBER_ANY 0xFFFFu
#define CX_SUBNUMBER_APPEND 0xFFFFu

/* Measure specification, one per measure. */
#define CX_TAG_MEASURE CX_TAG('S', 'M', 'O', 'S')
#define CX_MEASURE_SIZE 30
#define CX_MEASURE_BEATS 8          /* i16 */
#define CX_MEASURE_BEAT_DURATION 10 /* i16, duration units */
#define CX_MEASURE_FLAG_BYTE 12     /* bit 7: composite time signature */
#define CX_MEASURE_FLAGS 14         /* u16 */
#define CX_MEASURE_FLAG_EXPRESSIONS 0x4000u

/* Staff specification, one per staff (instrument) number. */
#define CX_TAG_STAFF_SPEC CX_TAG('S', 'I', 'O', 'S')
#define CX_STAFF_SPEC_SIZE 136
#define CX_STAFF_SPEC_FLAGS 4
#define CX_STAFF_SPEC_FONT 6
#define CX_STAFF_SPEC_NOTATION 8
#define CX_STAFF_SPEC_OPTIONS 10
#define CX_STAFF_SPEC_CLEFS 12
#define CX_STAFF_SPEC_OPTIONS2 22
#define CX_STAFF_SPEC_ABBREVIATED_NAME 30 /* u16 text block number, 0: none */
#define CX_STAFF_SPEC_FULL_NAME 32        /* u16 text block number, 0: none */

/* Staff list entry (list number, index): the score's order of staves. */
#define CX_TAG_STAFF_LIST CX_TAG('u', 'I', 'O', 'S')
#define CX_STAFF_LIST_SIZE 24
#define CX_STAFF_LIST_STAFF 0    /* u16 staff number */
#define CX_STAFF_LIST_VERTICAL 8 /* i32 vertical position, page units */

/* Frame record of a staff in a measure, numbered (staff, measure). */
#define CX_TAG_FRAME_RECORD CX_TAG('F', 'G', 'D', 'S')

/* Text block: its first word is the number of the text it shows. */
#define CX_TAG_TEXT_BLOCK CX_TAG('X', 'T', 'O', 'S')
#define CX_TEXT_BLOCK_SIZE 30
#define CX_TEXT_BLOCK_TEXT 0
/* Texts, UTF-16. Sizes are given in UTF-16 units on create and answered in
 * bytes by a size query. */
#define CX_TAG_BLOCK_TEXT CX_TAG('l', 'b', 'x', 't')
#define CX_TAG_EXPRESSION_TEXT CX_TAG('p', 'x', 'x', 't')

/* Font name record, numbered by font. */
#define CX_TAG_FONT_NAME CX_TAG('N', 'F', 'O', 'S')
#define CX_FONT_NAME_SIZE 1036
#define CX_FONT_NAME_PARAMETER 0 /* u16: second parameter of a font tag */
#define CX_FONT_NAME_TEXT 12     /* UTF-16, zero-terminated */

/* Font preferences: entries of three words (font, size, effects). */
#define CX_TAG_FONT_PREFS CX_TAG('f', 'd', 'f', 'p')
#define CX_FONT_PREFS_SIZE 6

/* Text expression definitions, their categories and their assignments. */
#define CX_TAG_EXPRESSION_DEF CX_TAG('T', 'D', 'O', 'S')
#define CX_EXPRESSION_DEF_SIZE 76
#define CX_EXPRESSION_DEF_CREATE_SIZE 38
#define CX_EXPRESSION_DEF_TEXT_BLOCK 0
#define CX_EXPRESSION_DEF_CATEGORY 10 /* low byte: playback type */
#define CX_EXPRESSION_DEF_PLAYBACK 26
#define CX_TAG_EXPRESSION_CATEGORY CX_TAG('C', 'M', 'O', 'S')
#define CX_EXPRESSION_CATEGORY_SIZE 296
#define CX_TAG_EXPRESSION_ASSIGN CX_TAG('Y', 'D', 'O', 'S')
#define CX_EXPRESSION_ASSIGN_SIZE 24
#define CX_EXPRESSION_ASSIGN_DEF 0
#define CX_EXPRESSION_ASSIGN_STAFF 8
#define CX_EXPRESSION_ASSIGN_FLAGS 10
#define CX_EXPRESSION_ASSIGN_STAFF_ONLY 0x1000u
#define CX_EXPRESSION_ASSIGN_EXCLUDED 0x2000u

/* Staff styles and their assignments to ranges of a staff. */
#define CX_TAG_STAFF_STYLE CX_TAG('Y', 'S', 'O', 'S')
#define CX_STAFF_STYLE_SIZE 296
#define CX_TAG_STAFF_STYLE_ASSIGN CX_TAG('y', 'S', 0x02, 'O')
#define CX_STAFF_STYLE_ASSIGN_SIZE 24
#define CX_STAFF_STYLE_ASSIGN_STYLE 0
#define CX_STAFF_STYLE_ASSIGN_START_MEASURE 12
#define CX_STAFF_STYLE_ASSIGN_START_POSITION 14
#define CX_STAFF_STYLE_ASSIGN_END_MEASURE 18
#define CX_STAFF_STYLE_ASSIGN_END_POSITION 20

/* Clef definitions, numbered by clef index. */
#define CX_TAG_CLEF_DEF CX_TAG('f', 'c', 'b', 'g')
#define CX_CLEF_DEF_SIZE 20

/* Playback: the staff's channel references and the channel definitions. */
#define CX_TAG_PLAYBACK CX_TAG('L', 'P', 0x02, 'O')
#define CX_PLAYBACK_SIZE 48
#define CX_TAG_CHANNEL_DEF CX_TAG('C', 'O', 't', 'o')
#define CX_CHANNEL_DEF_SIZE 12
#define CX_TAG_CHANNEL_NAME CX_TAG('c', 'o', 's', 'o')

/* Percussion: the document's percussion map and a staff's use of it. */
#define CX_TAG_PERCUSSION_MAP CX_TAG('L', 'D', 't', 'o')
#define CX_TAG_PERCUSSION_NOTATION CX_TAG('S', 'D', 't', 'o')

/* Composite preference records are assembled from 12-byte sub-records
 * whose tags are (c2, c1, 't', 'o'). */
#define CX_SUBRECORD_SIZE 12

#endif
