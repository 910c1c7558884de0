// the wildcard stands in another row than its field
#define LAST_ELEMENTS {"", 2, 0, 1}, {"nick", 2, 0, 1},
#include "base.h"
