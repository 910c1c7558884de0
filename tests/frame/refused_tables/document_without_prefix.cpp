// a prefix and its declaration belong together
#include "base.h"

constexpr DocumentSchema document = makeDocument(
    {.root = "sample", .module = &module, .number = 1, .type = &SampleSchema, .declaration = Declaration::prefix});
