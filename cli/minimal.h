// The least that a valid document of a kind says.
#pragma once

#include "Schema.h"

namespace cli {

// Gives a value, all zero before, the members that its kind requires, and nothing else. Texts come from the heap of the
// context. False if there is no storage.
bool fillMinimal(RuntimeContext *ctx, const ims::DocumentSchema &kind, void *value);

} // namespace cli
