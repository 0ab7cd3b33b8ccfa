/* Dialog 102 in English, and in the languages shown in English: x, y, width,
 * height in dialog units of "MS Shell Dlg" 8. On the left the style column:
 * the filter, whole rows of styles, the line that describes the chosen
 * style and its drum grid, wide enough for two measures of sixteenths in a
 * fixed-width font. On the right the placement with the staff list under
 * its radio button, the Generate list, the arrangement in the order a
 * drummer plays it, the buttons and the note. */
#define RW_LAYOUT_SIZE 460, 288
#define RW_LAYOUT_FONT 8, "MS Shell Dlg", 0, 0, 0x1

#define RW_AT_STYLE_GROUP 7, 7, 246, 274
#define RW_AT_ONLY_FITTING 14, 19, 232, 10
#define RW_AT_STYLE_LIST 14, 32, 232, 108
#define RW_AT_STYLE_INFO 14, 144, 232, 56
#define RW_AT_GROOVE_GRID 14, 203, 232, 74
#define RW_AT_PLACE_GROUP 260, 7, 193, 60
#define RW_AT_NEW_STAFF 268, 19, 177, 10
#define RW_AT_EXISTING_STAFF 268, 33, 177, 10
#define RW_AT_STAFF_LIST 280, 46, RW_STAFF_LIST_WIDTH, 120
#define RW_AT_GENERATE_LABEL 260, 77, 46, 8
#define RW_AT_GENERATE_LIST 308, 75, 145, 80
#define RW_AT_ARRANGEMENT 260, 93, 193, 108
#define RW_AT_COUNT_IN 268, 105, 177, 10
#define RW_AT_FILL_LABEL 268, 121, 46, 8
#define RW_AT_FILL_LIST 316, 119, 72, 80
#define RW_AT_CRASH 268, 137, 177, 10
#define RW_AT_VARIATION 268, 152, 177, 10
#define RW_AT_ENDING 268, 167, 177, 10
#define RW_AT_STRAIGHTEN 268, 182, 177, 10
#define RW_AT_OK 289, 210, 62, 14
#define RW_AT_CANCEL 361, 210, 62, 14
#define RW_AT_NOTE 260, 234, 193, 44
