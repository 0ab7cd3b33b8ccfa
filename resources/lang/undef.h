/* Forgets one language's texts before the next is included. */
#undef RW_LANG_STRINGS
#undef RW_DLG_CAPTION
#undef RW_DLG_STYLE
#undef RW_DLG_PLACE
#undef RW_DLG_NEW_STAFF
#undef RW_DLG_EXISTING_STAFF
#undef RW_DLG_GENERATE
#undef RW_DLG_OK
#undef RW_DLG_CANCEL
#undef RW_DLG_NOTE
#undef RW_DLG_FILL_EVERY
#undef RW_DLG_ENDING
