/* Dialog 102 and its controls: one set of numbers for the resource script
 * and the plug-in. Plain #defines, as the resource compiler reads them. */
#ifndef RW_DIALOG_IDS_H
#define RW_DIALOG_IDS_H

#define RW_DIALOG_TEMPLATE 102

#define RW_ID_OK 1
#define RW_ID_CANCEL 2
#define RW_ID_NEW_STAFF 21      /* radio "New Staff at Bottom of Score" */
#define RW_ID_EXISTING_STAFF 22 /* radio "Existing Staff:" */
#define RW_ID_ENDING 23         /* check box "End with the ending" */
#define RW_ID_COUNT_IN 24       /* check box "Begin with the count-in" */
#define RW_ID_VARIATION 25      /* check box "Alternate with the second groove" */
#define RW_ID_CRASH 26          /* check box "Crash after each fill" */
#define RW_ID_STRAIGHTEN 27     /* check box "Straighten played timing" */
#define RW_ID_ONLY_FITTING 28   /* check box "Only styles that fit these measures" */
#define RW_ID_GENERATE_LIST 1019
#define RW_ID_STAFF_LIST 1020
#define RW_ID_FILL_LIST 1021 /* "Fill every:" */
#define RW_ID_STYLE_LIST 2002
#define RW_ID_GENERATE_LABEL 2003
#define RW_ID_STYLE_GROUP 2004
#define RW_ID_NOTE 2006
#define RW_ID_STYLE_INFO 2007 /* what the selected style is and whether it fits */
#define RW_ID_FILL_LABEL 2008
#define RW_ID_GROOVE_GRID 2009   /* the chosen style's first measures, a row per instrument */
#define RW_ID_ARRANGEMENT 2010   /* group box around the parts and the timing */

/* The staff list is as wide in every language: room for 24 characters and
 * its button. The plug-in widens its drop-down from this for longer names. */
#define RW_STAFF_LIST_WIDTH 112

#endif
