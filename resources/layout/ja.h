/* Dialog 102 in Japanese: the English layout (en.h) in "MS UI Gothic" 9, the
 * Japanese interface font, with wider buttons for "キャンセル(&C)". */
#include "en.h"

#undef RW_LAYOUT_FONT
#undef RW_AT_OK
#undef RW_AT_CANCEL
#define RW_LAYOUT_FONT 9, "MS UI Gothic", 0, 0, 0x80
#define RW_AT_OK 281, 210, 70, 14
#define RW_AT_CANCEL 361, 210, 70, 14
