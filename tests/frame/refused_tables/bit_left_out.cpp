// presence bits are not handed out in order
#define LANG_BIT .bit = 4
#include "base.h"
