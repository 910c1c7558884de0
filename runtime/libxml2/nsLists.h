// Declaration lists of records.
#pragma once

#include "rtXmlNamespace.h"

namespace rt {

// Adds a heap copy of a declaration unless the prefix (null or empty: default) is in the list. 0 or STATUS_NO_MEMORY.
int addDeclaration(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri);

} // namespace rt
