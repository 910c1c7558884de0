// two sites have one line
#define PINNED                                                                                                         \
  {File::encoder, 1, step::write, 10}, { File::encoder, 2, step::write, 10 }
#include "base.h"
