// an attribute is either required or has a presence bit
#define ID_OPTIONS .bit = 2
#define LANG_BIT .bit = 4
#include "base.h"
