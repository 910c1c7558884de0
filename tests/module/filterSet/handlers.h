// Handlers outside the document functions: what a document that was cut off has left open.
#pragma once

#include "rtx.h"

namespace filters {

// Releases the delegates below a handler, the innermost first, and then its storage.
template <class Handler> void releaseChain(RuntimeContext *ctx, Handler &handler) {
  if (handler.delegate != nullptr) {
    if (handler.foreignDelegate) {
      if (handler.delegate->release != nullptr) handler.delegate->release(ctx, handler.delegate);
      rtxMemHeapFreePtr(ctx, handler.delegate->delegateStorage);
    } else {
      releaseChain(ctx, *reinterpret_cast<Handler *>(handler.delegate));
    }
    handler.delegate = nullptr;
  }
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
}

} // namespace filters
