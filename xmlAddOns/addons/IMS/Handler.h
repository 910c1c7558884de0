// What the parts of the event walk share: one handler at work, filling a record or only checking.
#pragma once

#include "Member.h"
#include "Parameter.h"
#include "rtXmlDecode.h"
#include "rtxError.h"
#include "rtxMemory.h"

#include <type_traits>

namespace ims {

// The two sinks of the walk: a SaxTypeHandler fills a record, a VsaxTypeHandler has none.
template <class Handler> inline constexpr bool fillsRecord = std::is_same_v<Handler, SaxTypeHandler>;
template <class Handler> inline constexpr File fileOf = fillsRecord<Handler> ? File::handlers : File::validators;

static_assert(sizeof(SaxTypeHandler) <= RTSAX_DELEGATE_SIZE && sizeof(VsaxTypeHandler) <= RTSAX_DELEGATE_SIZE,
              "a delegate block holds any handler");

template <class Handler> const TypeSchema &typeOf(const Handler *handler) {
  return *static_cast<const TypeSchema *>(handler->type);
}

// What the child being read fills.
template <class Handler> const Field &fieldOf(const Handler *handler) {
  return *static_cast<const Field *>(handler->field);
}

// The handler's delegate, if it is one of the codec's own.
template <class Handler> Handler *ownDelegate(const Handler *handler) {
  return handler->foreignDelegate ? nullptr : reinterpret_cast<Handler *>(handler->delegate);
}

// The handler at the end of the chain: the one that the next event is for.
template <class Handler> Handler *lastOf(Handler *handler) {
  while (Handler *delegate = ownDelegate(handler))
    handler = delegate;
  return handler;
}

// The handler that takes an event from here on. A traced chain is walked callback by callback, so that each of them
// shows.
template <class Handler> Handler *takerOf(Handler *handler) {
  return handler->context->traced ? handler : lastOf(handler);
}

// ---- Errors ---------------------------------------------------------------------------------------------------

template <class Handler> const char *pathOf(const Handler *handler) {
  return typeOf(handler).module->paths[int(fileOf<Handler>)];
}

template <class Handler> [[gnu::cold]] int lineOf(const Handler *handler, const Field *field, uint8_t step) {
  const TypeSchema &type = typeOf(handler);
  return siteLine(type, fileOf<Handler>, field ? rowOf(type, *field) : uint8_t{0}, step);
}

// Starts a record with the parameters added before. field null: the type's own site.
template <class Handler> [[gnu::cold]] int record(Handler *handler, int status, const Field *field, uint8_t step) {
  return rtxErrSetNewData(handler->context, status, pathOf(handler), lineOf(handler, field, step));
}

// Adds this place to the trail of a status that came from elsewhere.
template <class Handler> [[gnu::cold]] int pass(Handler *handler, int status, const Field *field, uint8_t step) {
  return rtxErrSetData(handler->context, status, pathOf(handler), lineOf(handler, field, step));
}

// The same for a status that the runtime records itself. If the error count kept it out, there is none of it to add to,
// or only an older one of the same kind.
template <class Handler> void passRecorded(Handler *handler, int status, uint8_t step) {
  if (status != 0 && rtxErrGetLastError(handler->context) == status) pass(handler, status, nullptr, step);
}

// Counts an error; true if it is to be recorded.
template <class Handler> bool counted(Handler *handler) { return rtSaxIncErrors(handler->context) != 0; }

// Leaves out the rest of the current element, whether its error was recorded or not.
template <class Handler> [[gnu::cold]] int skip(Handler *handler, int status) {
  return rtSaxSetSkipLevelToCurrent(handler->context, status);
}

// There is no storage for a child: it is left out.
template <class Handler> [[gnu::cold]] int skipForStorage(Handler *handler) {
  int status = counted(handler) ? record(handler, STATUS_NO_MEMORY, nullptr, step::storage) : STATUS_OK;
  return skip(handler, status);
}

// The storage of a delegate's own delegates goes; the delegate's was the handler's.
template <class Handler> void dropDelegate(Handler *handler) {
  RtSaxHandler *delegate = handler->delegate;
  if (delegate->delegateStorage) rtxMemHeapFreePtr(handler->context, delegate->delegateStorage);
  delegate->delegateStorage = nullptr;
  handler->delegate = nullptr;
}

// ---- Names ----------------------------------------------------------------------------------------------------

// Whether an attribute declares a namespace, by the beginning of its name.
inline bool isDeclaration(const char *name) {
  return name[0] == 'x' && name[1] == 'm' && name[2] == 'l' && name[3] == 'n' && name[4] == 's';
}

// ---- Text -----------------------------------------------------------------------------------------------------

// The buffer in which the context collects a child's text; null without a reader.
inline RtxMemBuf *collectionOf(RuntimeContext *ctx) { return ctx->reader ? &ctx->reader->text : nullptr; }

inline bool collects(const RuntimeContext *ctx) {
  return ctx->state == XMLSTATE_IN_ELEMENT || ctx->state == XMLSTATE_IN_TEXT;
}

// Points the text buffer at what was collected and empties the collection; its bytes stay until the next append.
inline void viewCollectedText(RuntimeContext *ctx) {
  RtxMemBuf *collected = collectionOf(ctx);
  const char *data = collected && collected->data ? collected->data + collected->start : "";
  rtxInitContextBuffer(ctx, data, collected ? collected->used - collected->start : 0);
  rtxMemBufReset(collected);
}

struct Conversion {
  int status;
  bool inRange; // false: the value is one, but not one that the schema allows; recorded if the count allows
};

// Converts the text buffer into a field of owner, or for a handler without a record only checks that it converts.
// xmlName is the validator's name for a value out of range.
template <class Handler> Conversion convert(Handler *handler, const Field &field, void *owner, const char *xmlName);

// ---- Parts of the walk ----------------------------------------------------------------------------------------

// Converts the attributes of the handler's own element, of a type that has some.
template <class Handler> void readAttributes(Handler *handler, const char *const *attributes);

// Gives back an item that never entered its list.
void discardPending(SaxTypeHandler *handler);

} // namespace ims
