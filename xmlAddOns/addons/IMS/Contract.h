// Whether a context comes from a runtime of the contract that the codec was built for.
#pragma once

#include "rtxError.h"

namespace ims {

// To be asked before anything else of the context is looked at. What is no context at all is the runtime's to refuse.
inline bool keepsContract(RuntimeContext *ctx) {
  return !ctx || ctx->contract == RTX_CONTRACT_VERSION || rtxCheckContext(ctx) != 0;
}

inline int recordOtherContract(RuntimeContext *ctx, const char *path, int line) {
  rtxErrAddUIntParm(ctx, ctx->contract);
  rtxErrAddUIntParm(ctx, RTX_CONTRACT_VERSION);
  return rtxErrSetNewData(ctx, STATUS_BAD_CONTEXT, path, line);
}

} // namespace ims
