// a field has no row in the attribute table
#define ATTRIBUTES "id"
#include "base.h"
