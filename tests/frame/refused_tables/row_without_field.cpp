// an element id has no field
#define LAST_ELEMENTS {"nick", 2, 0, 1}, {"", 2, 0, 1}, {"more", 2, 0, 1},
#include "base.h"
