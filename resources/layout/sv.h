/* Dialog 102 in Swedish: the English layout (en.h), whose label column holds
 * "Generera:" and "Break var:". */
#include "en.h"
