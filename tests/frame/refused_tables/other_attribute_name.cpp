// an attribute and its member have different names
#define ATTRIBUTES "id", "language"
#include "base.h"
