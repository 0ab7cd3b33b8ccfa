/* Forgets one layout before the next is included. */
#undef RW_LAYOUT_SIZE
#undef RW_LAYOUT_FONT
#undef RW_AT_STYLE_GROUP
#undef RW_AT_STYLE_LIST
#undef RW_AT_PLACE_GROUP
#undef RW_AT_NEW_STAFF
#undef RW_AT_EXISTING_STAFF
#undef RW_AT_STAFF_LIST
#undef RW_AT_GENERATE_LABEL
#undef RW_AT_GENERATE_LIST
#undef RW_AT_FILL_LABEL
#undef RW_AT_FILL_LIST
#undef RW_AT_ENDING
#undef RW_AT_STYLE_INFO
#undef RW_AT_OK
#undef RW_AT_CANCEL
#undef RW_AT_NOTE
