// One walk over the reader's events for decoding and validating: levels, and the chain of handlers.
//
// A handler counts the open elements from its own on. Level 0 is before its own start tag, 1 between its children,
// 2 and more inside a child. Complex children have a handler of their own in their parent's delegate storage, so the
// open complex elements are a chain of handlers. An event is for the last of them; the others only count along.
// They count a start tag only if the last one did, since an element that was refused sends no end tag.
#include "Engines.h"
#include "Handler.h"
#include "Start.h"
#include "rtXmlNamespace.h"
#include "rtxText.h"

namespace ims {

namespace {

// A block that only shows that the handler has its storage; types without complex children never use it.
constexpr size_t minimalStorage = sizeof(void *);

template <class Handler> int takeStorage(RuntimeContext *ctx, const TypeSchema &type, Handler *handler) {
  size_t size = delegates<Handler>(type) ? size_t{RTSAX_DELEGATE_SIZE} : minimalStorage;
  handler->delegateStorage = rtxMemHeapAlloc(ctx, size);
  return handler->delegateStorage ? STATUS_OK : STATUS_NO_MEMORY;
}

} // namespace

int initHandler(RuntimeContext *ctx, const TypeSchema &type, SaxTypeHandler *handler, void *record, int32_t level) {
  setUp(ctx, type, handler, type.decoding, level);
  handler->record = record;
  return takeStorage(ctx, type, handler);
}

int initHandler(RuntimeContext *ctx, const TypeSchema &type, VsaxTypeHandler *handler, int32_t level) {
  setUp(ctx, type, handler, type.validating, level);
  return takeStorage(ctx, type, handler);
}

template <class Handler> void releaseDelegates(Handler *handler) {
  if (Handler *delegate = ownDelegate(handler)) releaseDelegates(delegate);
  if (RtSaxHandler *delegate = handler->delegate) {
    if (delegate->release) delegate->release(handler->context, delegate);
    rtxMemHeapFreePtr(handler->context, delegate->delegateStorage);
    handler->delegate = nullptr;
  }
  if constexpr (fillsRecord<Handler>) discardPending(handler);
}

template void releaseDelegates(SaxTypeHandler *);
template void releaseDelegates(VsaxTypeHandler *);

} // namespace ims
