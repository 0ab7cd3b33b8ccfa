/* Messages, control messages and message-box values that cross the dialog
 * boundary. Their values are the Windows ones, so that a Windows host can pass
 * them through unchanged. */
#ifndef CANTEL_CX_DIALOG_H
#define CANTEL_CX_DIALOG_H

#include "cx_types.h"

/* Messages a dialog procedure receives. */
#define CX_WM_DESTROY 0x0002u
#define CX_WM_CLOSE 0x0010u
#define CX_WM_INITDIALOG 0x0110u
#define CX_WM_COMMAND 0x0111u
#define CX_WM_TIMER 0x0113u

/* What WM_COMMAND carries in the high word of its word parameter. */
#define CX_BN_CLICKED 0u
#define CX_LBN_SELCHANGE 1u /* the user chose another row of a list box */
#define CX_CBN_SELCHANGE 1u /* ... of a drop-down list */

/* A control's text; the word parameter is 0, the long one the text. */
#define CX_WM_SETTEXT 0x000Cu
/* A control's font; the word parameter is the font, the long one 0 (no
 * redraw until the control next paints). */
#define CX_WM_SETFONT 0x0030u

/* List-box and drop-down list messages a plug-in sends to its controls. */
#define CX_LB_ADDSTRING 0x0180u
#define CX_LB_SETCURSEL 0x0186u
#define CX_LB_GETCURSEL 0x0188u
#define CX_LB_RESETCONTENT 0x0184u
#define CX_LB_GETCOUNT 0x018Bu
#define CX_CB_ADDSTRING 0x0143u
#define CX_CB_GETCOUNT 0x0146u
#define CX_CB_GETCURSEL 0x0147u
#define CX_CB_RESETCONTENT 0x014Bu
#define CX_CB_SETCURSEL 0x014Eu
#define CX_CB_GETDROPPEDWIDTH 0x015Fu /* in pixels */
#define CX_CB_SETDROPPEDWIDTH 0x0160u
#define CX_LIST_NONE (-1) /* answer of GETCURSEL without a selection */

/* Message-box styles and answers of CX_AlertMessage(_UTF16). */
#define CX_MB_STOP 16u
#define CX_MB_QUESTION_YESNO 36u
#define CX_MB_EXCLAMATION 48u
#define CX_ID_YES 6u
#define CX_ID_NO 7u

/* Where the host owns the dialog's controls (every POSIX host), it exports
 * these by name beside the CX_ functions; a Windows plug-in uses the
 * system's own. (dialog, control, message, wParam, lParam) -> the answer;
 * 0 for an unknown control. UI thread. */
#ifdef __cplusplus
extern "C" {
#endif
typedef int64_t SendDlgItemMessageW_t(void *dialog, int32_t control, uint32_t message,
                                      uint64_t wparam, int64_t lparam);
typedef int64_t SendDlgItemMessageA_t(void *dialog, int32_t control, uint32_t message,
                                      uint64_t wparam, int64_t lparam);
#ifdef __cplusplus
}
#endif

#endif
