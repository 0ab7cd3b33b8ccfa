/* Dialog 102 in Polish: the English layout (en.h) with a wider column for the
 * labels of the Generate list and of the fills ("Przejście co:"), and a
 * taller note. */
#include "en.h"

#undef RW_AT_GENERATE_LABEL
#undef RW_AT_GENERATE_LIST
#undef RW_AT_FILL_LABEL
#undef RW_AT_FILL_LIST
#undef RW_AT_ENDING
#undef RW_AT_NOTE
#define RW_AT_GENERATE_LABEL 167, 77, 58, 8
#define RW_AT_GENERATE_LIST 227, 75, 132, 80
#define RW_AT_FILL_LABEL 167, 94, 58, 8
#define RW_AT_FILL_LIST 227, 92, 72, 80
#define RW_AT_ENDING 227, 109, 132, 10
#define RW_AT_NOTE 167, 199, 192, 34
