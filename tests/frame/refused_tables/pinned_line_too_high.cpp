// a pinned line is out of range
#define PINNED                                                                                                         \
  { File::encoder, 1, step::write, 1000 }
#include "base.h"
