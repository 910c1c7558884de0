// a list has no presence bit
#define NICK_OPTIONS .bit = 2
#include "base.h"
