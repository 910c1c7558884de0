// accepted
#include "base.h"
