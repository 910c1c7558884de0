// The test that every exported operation starts with.
#pragma once

#include "rtxContext.h"

namespace rt {

// The mark of a context that lives at this address: neither foreign nor copied storage has it, nor a context that a
// runtime of another contract made, nor a freed one as long as its storage has not changed since.
inline uintptr_t signatureOf(const RuntimeContext *ctx) {
  return reinterpret_cast<uintptr_t>(ctx) ^ (uintptr_t{0x52745843} + RTX_CONTRACT_VERSION);
}

// Reads nothing behind the context itself.
inline bool usable(const RuntimeContext *ctx) { return ctx != nullptr && ctx->signature == signatureOf(ctx); }

} // namespace rt
