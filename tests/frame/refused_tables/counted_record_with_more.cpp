// only a record that is a list counts its items
#define TYPE_FLAGS noEmptyList
#include "base.h"
