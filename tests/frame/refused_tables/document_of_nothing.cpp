// a document is a record or a simple value
#include "base.h"

constexpr DocumentSchema document = makeDocument({.root = "sample", .module = &module, .number = 1});
