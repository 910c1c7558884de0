// an element and its member have different names
#define NAME_ELEMENT "nome"
#include "base.h"
