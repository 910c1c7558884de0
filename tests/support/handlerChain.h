// What a document that was cut off has left of a chain of handlers.
#pragma once

#include "rtSax.h"
#include "rtx.h"

namespace support {

// Releases the handlers that a document left open when it ended early, and the storage of all, as their owner does.
// Handler is SaxTypeHandler or VsaxTypeHandler.
template <typename Handler> void releaseHandlers(RuntimeContext *ctx, Handler &handler) {
  if (RtSaxHandler *delegate = handler.delegate) {
    if (delegate->release != nullptr) delegate->release(ctx, delegate);
    if (handler.foreignDelegate) {
      rtxMemHeapFreePtr(ctx, delegate->delegateStorage);
    } else {
      releaseHandlers(ctx, *reinterpret_cast<Handler *>(delegate));
    }
    handler.delegate = nullptr;
  }
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  handler.delegateStorage = nullptr;
}

} // namespace support
