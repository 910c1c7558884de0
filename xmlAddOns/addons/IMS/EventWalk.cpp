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

#include <stdio.h>

namespace ims {

namespace {

// A block that only shows that the handler has its storage; types without complex children never use it.
constexpr size_t minimalStorage = sizeof(void *);

template <class Handler> int takeStorage(RuntimeContext *ctx, const TypeSchema &type, Handler *handler) {
  size_t size = delegates<Handler>(type) ? size_t{RTSAX_DELEGATE_SIZE} : minimalStorage;
  handler->delegateStorage = rtxMemHeapAlloc(ctx, size);
  return handler->delegateStorage ? STATUS_OK : STATUS_NO_MEMORY;
}

// The handler that takes an event from here on. A traced chain is walked callback by callback, so that each of them
// shows.
template <class Handler> Handler *takerOf(Handler *handler) {
  return handler->context->traced ? handler : lastOf(handler);
}

// Hands a start tag to the delegate, if there is one: whether the tag counts.
template <class Handler>
bool forwardStart(Handler *handler, const char *localName, const char *qualifiedName, const char *const *attributes,
                  int &status) {
  RtSaxHandler *delegate = handler->delegate;
  if (!delegate) return true;
  const Handler *own = ownDelegate(handler);
  const int32_t before = own ? own->level : 0;
  status = delegate->startElement(delegate, localName, qualifiedName, attributes);
  return own ? own->level != before : status == 0;
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

namespace {

// A callback of a traced context, with the trace around it. It tells its own name.
template <class Handler, class Walk>
[[gnu::cold, gnu::noinline]] int inTrace(Handler *handler, const char *callback, const char *element, Walk walk) {
  char function[128];
  snprintf(function, sizeof function, "%s_%s_%s", fillsRecord<Handler> ? "QxSAX" : "QxVSAX", typeOf(handler).name,
           callback);
  rtSaxDiagStartFunc(handler, function, element);
  int status = walk();
  rtSaxDiagEndFunc(handler, function, element);
  return status;
}

// The root's start tag, or one that is handed to a handler by hand.
template <class Handler>
[[gnu::noinline]] int startRoot(Handler *handler, const char *localName, const char *const *attributes) {
  return startOwn(handler, localName, attributes);
}

template <class Handler>
inline int takeStart(Handler *handler, const char *localName, const char *qualifiedName,
                     const char *const *attributes) {
  Handler *last = takerOf(handler);
  int32_t before = last->level;
  int status = STATUS_OK;
  if (before == 0) {
    status = startRoot(last, localName, attributes);
  } else if (before == 1) {
    status = startChild(last, localName, qualifiedName, attributes);
  } else if (forwardStart(last, localName, qualifiedName, attributes, status)) {
    ++last->level;
  }
  if (last->level == before) return status;
  // The child's own handler, if it got one just now, has counted for itself.
  for (Handler *ancestor = handler; ancestor != last; ancestor = ownDelegate(ancestor))
    ++ancestor->level;
  return status;
}

template <class Handler> inline int takeCharacters(Handler *handler, const char *bytes, size_t length) {
  if (!collects(handler->context)) return STATUS_OK;
  Handler *last = takerOf(handler);
  int32_t textLevel = typeOf(last).content == Content::text ? 1 : 2;
  if (last->level < textLevel) return STATUS_OK;
  return last->delegate ? last->delegate->characters(last->delegate, bytes, length) : collect(last, bytes, length);
}

template <class Handler> inline int takeEnd(Handler *handler, const char *localName, const char *qualifiedName) {
  const bool chained = !handler->context->traced;
  Handler *last = handler;
  Handler *owner = nullptr;
  --last->level;
  while (Handler *delegate = chained ? ownDelegate(last) : nullptr) {
    owner = last;
    last = delegate;
    --last->level;
  }
  int status = STATUS_OK;
  if (last->level == 0) {
    status = endOwn(last);
    if (owner) endDelegate(owner);
  } else if (last->delegate) {
    status = last->delegate->endElement(last->delegate, localName, qualifiedName);
    if (last->level == 1) endDelegate(last);
  } else if (last->level == 1) {
    status = endChild(last, qualifiedName);
  }
  return status;
}

} // namespace

template <class Handler>
int walkStart(Handler *handler, const char *localName, const char *qualifiedName, const char *const *attributes) {
  auto take = [=] { return takeStart(handler, localName, qualifiedName, attributes); };
  if (handler->context->traced) [[unlikely]]
    return inTrace(handler, "startElement", localName, take);
  return take();
}

template <class Handler> int walkCharacters(Handler *handler, const char *bytes, size_t length) {
  auto take = [=] { return takeCharacters(handler, bytes, length); };
  if (handler->context->traced) [[unlikely]]
    return inTrace(handler, "characters", nullptr, take);
  return take();
}

template <class Handler> int walkEnd(Handler *handler, const char *localName, const char *qualifiedName) {
  auto take = [=] { return takeEnd(handler, localName, qualifiedName); };
  if (handler->context->traced) [[unlikely]]
    return inTrace(handler, "endElement", localName, take);
  return take();
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

template int walkStart(SaxTypeHandler *, const char *, const char *, const char *const *);
template int walkStart(VsaxTypeHandler *, const char *, const char *, const char *const *);
template int walkCharacters(SaxTypeHandler *, const char *, size_t);
template int walkCharacters(VsaxTypeHandler *, const char *, size_t);
template int walkEnd(SaxTypeHandler *, const char *, const char *);
template int walkEnd(VsaxTypeHandler *, const char *, const char *);
template void releaseDelegates(SaxTypeHandler *);
template void releaseDelegates(VsaxTypeHandler *);

} // namespace ims
