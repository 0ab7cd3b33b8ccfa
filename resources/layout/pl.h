/* Dialog 102 in Polish: the English layout (en.h) with a wider column for the
 * labels of the Generate list and of the fills ("Przejście co:"). */
#include "en.h"

#undef RW_AT_GENERATE_LABEL
#undef RW_AT_GENERATE_LIST
#undef RW_AT_FILL_LABEL
#undef RW_AT_FILL_LIST
#define RW_AT_GENERATE_LABEL 260, 77, 58, 8
#define RW_AT_GENERATE_LIST 320, 75, 133, 80
#define RW_AT_FILL_LABEL 268, 121, 58, 8
#define RW_AT_FILL_LIST 328, 119, 72, 80
