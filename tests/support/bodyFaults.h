// The bodies of a module as bodies for faults and everyHeapLimit.
#pragma once

#include "documentReading.h"
#include "faults.h"
#include "output.h"

namespace support {

// Reads text: its outcome is the record.
Outcome decodeBody(RuntimeContext *ctx, const std::string &text,
                   const std::function<Reading(RuntimeContext *ctx)> &decode);

// Checks text: there is no result.
Outcome validateBody(RuntimeContext *ctx, const std::string &text,
                     const std::function<int(RuntimeContext *ctx)> &validate);

// Writes into the context's growing output: the outcome is the text.
Outcome encodeBody(RuntimeContext *ctx, const Encode &encode);

} // namespace support
