/* Dialog 102 and its controls: one set of numbers for the resource script
 * and the plug-in. Plain #defines, as the resource compiler reads them. */
#ifndef RW_DIALOG_IDS_H
#define RW_DIALOG_IDS_H

#define RW_DIALOG_TEMPLATE 102

#define RW_ID_OK 1
#define RW_ID_CANCEL 2
#define RW_ID_NEW_STAFF 21      /* radio "New Staff at Bottom of Score" */
#define RW_ID_EXISTING_STAFF 22 /* radio "Existing Staff:" */
#define RW_ID_GENERATE_LIST 1019
#define RW_ID_STAFF_LIST 1020
#define RW_ID_STYLE_LIST 2002
#define RW_ID_GENERATE_LABEL 2003
#define RW_ID_STYLE_GROUP 2004
#define RW_ID_NOTE 2006

#endif
