// only a number has a range
#define ID_OPTIONS .minimum = 1
#include "base.h"
