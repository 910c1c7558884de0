// The end of every step of encoding.
#pragma once

#include "rtxMemory.h"

namespace ims {

// Keeps the output a C string: puts a NUL behind it without counting it. False if there is no room for it.
inline bool terminated(RuntimeContext *ctx) {
  if (rtxCheckBuffer(ctx, 1) != 0) return false;
  ctx->buffer.data[ctx->buffer.byteIndex] = '\0';
  return true;
}

} // namespace ims
