// A handler at its start: made ready, and at its own start tag. Inline, for every record in a document comes by here.
#pragma once

#include "Handler.h"
#include "rtXmlNamespace.h"
#include "rtxText.h"

namespace ims {

// Whether some child is handed to a handler of its own.
template <class Handler> inline bool delegates(const TypeSchema &type) {
  return has(type, delegatesRecords) || (fillsRecord<Handler> && has(type, delegatesForeign));
}

// Everything but the storage for delegates.
template <class Handler>
inline void setUp(RuntimeContext *ctx, const TypeSchema &type, Handler *handler, const HandlerCallbacks &callbacks,
                  int32_t level) {
  handler->startElement = callbacks.startElement;
  handler->endElement = callbacks.endElement;
  handler->characters = callbacks.characters;
  handler->release = nullptr;
  handler->delegateStorage = nullptr;
  handler->context = ctx;
  handler->rootName = nullptr;
  handler->level = level;
  handler->startLevel = level;
  handler->elementId = 0;
  handler->contentState = 0;
  handler->seenRequired = 0;
  handler->delegate = nullptr;
  handler->type = &type;
  handler->field = nullptr;
  handler->pendingItem = nullptr;
  handler->hex = {0, 0};
  handler->foreignDelegate = false;
  rtxMemBufReset(collectionOf(ctx));
}

template <class Handler> [[gnu::cold, gnu::noinline]] void checkRootName(Handler *handler, const char *localName) {
  if (rtxUTF8StrEqual(handler->rootName, localName) || !counted(handler)) return;
  rtxErrAddStrParm(handler->context, handler->rootName);
  rtxErrAddStrParm(handler->context, localName);
  record(handler, STATUS_ROOT_MISMATCH, nullptr, step::rootName);
}

// There is no storage for the scope.
template <class Handler> [[gnu::cold, gnu::noinline]] int refuseScope(Handler *handler, int status) {
  if (counted(handler)) pass(handler, status, nullptr, step::scope);
  return skip(handler, status);
}

// The handler's own start tag; its level becomes 1 if it is accepted.
template <class Handler> inline int startOwn(Handler *handler, const char *localName, const char *const *attributes) {
  RuntimeContext *ctx = handler->context;
  if (handler->rootName) checkRootName(handler, localName);
  int status = rtXmlNSPush(ctx);
  if (status != 0) [[unlikely]]
    return refuseScope(handler, status);
  ctx->state = XMLSTATE_IN_ELEMENT;
  if (has(typeOf(handler), hasAttributes)) readAttributes(handler, attributes);
  ++handler->level;
  return STATUS_OK;
}

} // namespace ims
