// types are numbered from 1, below the documents
#define TYPE_NUMBER 0
#include "base.h"
