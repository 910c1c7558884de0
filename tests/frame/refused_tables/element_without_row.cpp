// a field has no row in the element table
#define LAST_ELEMENTS {"nick", 2, 0, RTSAX_UNBOUNDED},
#include "base.h"
