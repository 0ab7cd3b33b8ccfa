/* Dialog 102 in English, and in the languages shown in English: x, y, width,
 * height in dialog units of "MS Shell Dlg" 8. The styles on the left, whole
 * rows of them; on the right the placement with the staff list under its
 * radio button, the Generate list, the phrase controls, the line that
 * describes the chosen style, the buttons and the note. */
#define RW_LAYOUT_SIZE 366, 236
#define RW_LAYOUT_FONT 8, "MS Shell Dlg", 0, 0, 0x1

#define RW_AT_STYLE_GROUP 7, 7, 152, 222
#define RW_AT_STYLE_LIST 14, 19, 138, 204
#define RW_AT_PLACE_GROUP 167, 7, 192, 60
#define RW_AT_NEW_STAFF 175, 19, 176, 10
#define RW_AT_EXISTING_STAFF 175, 33, 176, 10
#define RW_AT_STAFF_LIST 187, 46, RW_STAFF_LIST_WIDTH, 120
#define RW_AT_GENERATE_LABEL 167, 77, 46, 8
#define RW_AT_GENERATE_LIST 215, 75, 144, 80
#define RW_AT_FILL_LABEL 167, 94, 46, 8
#define RW_AT_FILL_LIST 215, 92, 72, 80
#define RW_AT_ENDING 215, 109, 144, 10
#define RW_AT_STYLE_INFO 167, 125, 192, 50
#define RW_AT_OK 196, 181, 62, 14
#define RW_AT_CANCEL 268, 181, 62, 14
#define RW_AT_NOTE 167, 201, 192, 32
