// the record has no list for its root's declaration
#include "base.h"

constexpr DocumentSchema document = makeDocument({.root = "sample",
                                                  .module = &module,
                                                  .number = 1,
                                                  .type = &SampleSchema,
                                                  .declaration = Declaration::prefixInRecord,
                                                  .prefix = "t"});
