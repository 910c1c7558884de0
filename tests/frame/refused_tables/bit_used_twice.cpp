// presence bits are not handed out in order
#define LANG_BIT .bit = 1
#include "base.h"
