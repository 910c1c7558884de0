// a state leads past its table
#define AGE_STATE 5
#include "base.h"
