#pragma once

#include "Schema.h"

#include <stddef.h>

namespace bench {

// Bytes of a record and of everything that it refers to: the records, nodes and texts of a decoder's result.
size_t resultSize(const ims::TypeSchema &type, const void *record);

} // namespace bench
