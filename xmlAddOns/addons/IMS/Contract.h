// Whether a context comes from a runtime of the contract that the codec was built for.
#pragma once

#include "rtxError.h"

namespace ims {

// To be asked before anything else of the context is looked at. A null context is the runtime's to refuse.
inline bool keepsContract(const RuntimeContext *ctx) { return !ctx || ctx->contract == RTX_CONTRACT_VERSION; }

inline int recordOtherContract(RuntimeContext *ctx, const char *path, int line) {
  rtxErrAddUIntParm(ctx, ctx->contract);
  rtxErrAddUIntParm(ctx, RTX_CONTRACT_VERSION);
  return rtxErrSetNewData(ctx, STATUS_BAD_CONTEXT, path, line);
}

} // namespace ims
