// the state table is not rectangular
#define LAST_STATES 3, 3, 3, 3, NO,
#include "base.h"
