// an attribute is either required or has a presence bit
#define LANG_BIT .flags = 0
#include "base.h"
