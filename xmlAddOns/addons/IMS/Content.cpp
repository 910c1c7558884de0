// Character data: collected while it arrives, converted when its element ends.
#include "Engines.h"
#include "Handler.h"
#include "Trace.h"
#include "rtXmlNamespace.h"

#include <string.h>

namespace ims {

namespace {

// Whether the text is that of a child in hexadecimal digits, or of an element inside it.
template <class Handler> bool isHexChild(const Handler *handler) {
  return handler->level >= 2 && fieldOf(handler).kind == Kind::hexBinary;
}

// The base of the record that a child's field belongs to, and the field: for a choice, its alternative.
struct Target {
  const Field *field;
  void *owner;
};

template <class Handler> Target targetOf(Handler *handler) {
  const Field &field = fieldOf(handler);
  void *record = nullptr;
  if constexpr (fillsRecord<Handler>) record = handler->record;
  if (field.kind != Kind::choice) return {&field, record};
  void *choice = record ? static_cast<char *>(record) + field.offset : nullptr;
  return {&field.type->fields[handler->elementId - field.id], choice};
}

template <class Handler> int skipContent(Handler *handler, const char *qualifiedName) {
  if (!counted(handler)) return skip(handler, STATUS_OK);
  RuntimeContext *ctx = handler->context;
  rtxErrAddCtxtBufParm(ctx);
  rtxErrAddStrParm(ctx, typeOf(handler).name);
  rtxErrAddStrParm(ctx, qualifiedName);
  return skip(handler, record(handler, STATUS_INVALID_CONTENT, nullptr, step::content));
}

// A conversion whose own status is what is recorded.
template <class Handler> int skipOwn(Handler *handler, int status, const Field *field, uint8_t step) {
  if (counted(handler)) pass(handler, status, field, step);
  return skip(handler, status);
}

// Takes a list's text into a new item, which enters the list only if all went well.
int appendText(SaxTypeHandler *handler, const Field &field) {
  RuntimeContext *ctx = handler->context;
  auto *text = static_cast<RtxXmlString *>(rtxMemHeapAlloc(ctx, sizeof(RtxXmlString)));
  if (!text) return STATUS_NO_MEMORY;
  *text = {false, nullptr};
  int status = rtXmlDecXmlStr(ctx, text);
  if (status == 0 && !rtxDListAppend(ctx, &listAt(handler->record, field), text)) status = STATUS_NO_MEMORY;
  if (status != 0) {
    rtxMemHeapFreePtr(ctx, text->value);
    rtxMemHeapFreePtr(ctx, text);
  }
  return status;
}

// Copies the bytes that were converted piece by piece.
int takeBytes(SaxTypeHandler *handler, const Field &field) {
  RuntimeContext *ctx = handler->context;
  auto length = static_cast<uint32_t>(ctx->buffer.size);
  uint8_t *bytes = nullptr;
  if (length > 0) {
    bytes = static_cast<uint8_t *>(rtxMemHeapAlloc(ctx, length));
    if (!bytes) return STATUS_NO_MEMORY;
    memcpy(bytes, ctx->buffer.data, length);
  }
  memberAt<RtxHexBinary>(handler->record, field) = {length, bytes};
  return STATUS_OK;
}

// An odd number of digits: the text that failed is given as the digits of the bytes collected, as far as errors
// keep a text.
template <class Handler> int skipOddDigits(Handler *handler, const char *qualifiedName) {
  if (!counted(handler)) return skip(handler, STATUS_OK);
  RuntimeContext *ctx = handler->context;
  constexpr size_t shownBytes = 256;
  char digits[2 * shownBytes + 2];
  size_t length = ctx->buffer.size < shownBytes ? ctx->buffer.size : shownBytes;
  size_t out = 0;
  const char *hex = "0123456789ABCDEF";
  for (size_t i = 0; i < length; ++i) {
    auto byte = static_cast<uint8_t>(ctx->buffer.data[i]);
    digits[out++] = hex[byte >> 4];
    digits[out++] = hex[byte & 15];
  }
  if (length == ctx->buffer.size) digits[out++] = hex[handler->hex.pending & 15];
  digits[out] = '\0';
  rtxErrAddStrParm(ctx, digits);
  rtxErrAddStrParm(ctx, typeOf(handler).name);
  rtxErrAddStrParm(ctx, qualifiedName);
  return skip(handler, record(handler, STATUS_INVALID_CONTENT, nullptr, step::content));
}

template <class Handler> void markConverted(Handler *handler, const Field &field) {
  if (has(field, required)) {
    handler->seenRequired |= field.bit;
  } else if constexpr (fillsRecord<Handler>) {
    if (field.bit != 0) presenceOf(handler->record) |= field.bit;
  }
}

template <class Handler>
Conversion convertCollected(Handler *handler, const Field &field, void *owner, const char *xmlName) {
  if constexpr (fillsRecord<Handler>) {
    if (field.kind == Kind::textList) return {appendText(handler, field), true};
    if (field.kind == Kind::hexBinary) return {takeBytes(handler, field), true};
  }
  return convert(handler, field, owner, xmlName);
}

template <class Handler> int collect(Handler *handler, const char *bytes, size_t length) {
  RuntimeContext *ctx = handler->context;
  ctx->state = XMLSTATE_IN_TEXT;
  RtxMemBuf *collection = collectionOf(ctx);
  int status = isHexChild(handler) && collection ? rtXmlDecHexBinary(ctx, bytes, length, &handler->hex, collection)
                                                 : rtxMemBufAppend(collection, bytes, length);
  if (status == 0) return STATUS_OK;
  return skipOwn(handler, status, nullptr, step::append);
}

template <class Handler> int endChild(Handler *handler, const char *qualifiedName) {
  RuntimeContext *ctx = handler->context;
  if (!collects(ctx)) return STATUS_OK;
  const TypeSchema &type = typeOf(handler);
  viewCollectedText(ctx);
  Target target = targetOf(handler);
  if (isForeign(*target.field)) return STATUS_OK;
  if (target.field->kind == Kind::hexBinary && handler->hex.pending != 0) return skipOddDigits(handler, qualifiedName);
  const char *xmlName = type.elements ? type.elements[handler->elementId].name : qualifiedName;
  Conversion conversion = convertCollected(handler, *target.field, target.owner, xmlName);
  if (!conversion.inRange) return skip(handler, conversion.status);
  if (conversion.status == 0) {
    markConverted(handler, *target.field);
    return STATUS_OK;
  }
  if (type.content == Content::named) return skipOwn(handler, conversion.status, target.field, step::conversion);
  if (target.field->kind == Kind::enumeration && conversion.status == STATUS_ENUM_NOT_FOUND) {
    rtxErrAddCtxtBufParm(ctx);
    record(handler, conversion.status, target.field, step::enumeration);
  }
  return skipContent(handler, qualifiedName);
}

template <class Handler> int endOwn(Handler *handler) {
  RuntimeContext *ctx = handler->context;
  const TypeSchema &type = typeOf(handler);
  int status = STATUS_OK;
  if (type.content == Content::text && collects(ctx)) {
    viewCollectedText(ctx);
    if constexpr (fillsRecord<Handler>) {
      const Field &value = type.fields[type.value];
      status = rtXmlDecXmlStr(ctx, &memberAt<RtxXmlString>(handler->record, value));
      if (status != 0) status = skipOwn(handler, status, &value, step::conversion);
    }
  }
  rtXmlNSPop(ctx);
  ctx->state = XMLSTATE_DOC_END;
  // Nothing follows that could need a delegate.
  if (handler->delegateStorage) rtxMemHeapFreePtr(ctx, handler->delegateStorage);
  handler->delegateStorage = nullptr;
  if constexpr (fillsRecord<Handler>) {
    if (!has(type, noEmptyList) || listAt(handler->record, type.fields[0]).count > 0) return status;
    if (!counted(handler)) return skip(handler, STATUS_OK);
    if (has(type, countedByMember)) {
      rtxErrAddStrParm(ctx, ".count");
    } else {
      addMemberParameter(ctx, type, "count");
    }
    rtxErrAddIntParm(ctx, 0);
    status = skip(handler, record(handler, STATUS_CONSTRAINT_VIOLATION, nullptr, step::ownCount));
  }
  return status;
}

template <class Handler> void endDelegate(Handler *handler) {
  RuntimeContext *ctx = handler->context;
  RtSaxHandler *delegate = handler->delegate;
  if (delegate->release) delegate->release(ctx, delegate);
  dropDelegate(handler);
  if constexpr (fillsRecord<Handler>) {
    void *item = handler->pendingItem;
    if (!item) return;
    const Field &field = fieldOf(handler);
    if (!rtxDListAppend(ctx, &listAt(handler->record, field), item)) {
      skipForStorage(handler);
      discardPending(handler);
    }
    handler->pendingItem = nullptr;
  }
}

template <class Handler> [[gnu::noinline]] int takeCharacters(Handler *handler, const char *bytes, size_t length) {
  if (!collects(handler->context)) return STATUS_OK;
  Handler *last = takerOf(handler);
  int32_t textLevel = typeOf(last).content == Content::text ? 1 : 2;
  if (last->level < textLevel) return STATUS_OK;
  return last->delegate ? last->delegate->characters(last->delegate, bytes, length) : collect(last, bytes, length);
}

template <class Handler>
[[gnu::noinline]] int takeEnd(Handler *handler, const char *localName, const char *qualifiedName) {
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

template <class Handler> int walkCharacters(Handler *handler, const char *bytes, size_t length) {
  if (!handler->context->traced) [[likely]]
    return takeCharacters(handler, bytes, length);
  return inTrace(handler, "characters", nullptr, [=] { return takeCharacters(handler, bytes, length); });
}

template <class Handler> int walkEnd(Handler *handler, const char *localName, const char *qualifiedName) {
  if (!handler->context->traced) [[likely]]
    return takeEnd(handler, localName, qualifiedName);
  return inTrace(handler, "endElement", localName, [=] { return takeEnd(handler, localName, qualifiedName); });
}

template int walkCharacters(SaxTypeHandler *, const char *, size_t);
template int walkCharacters(VsaxTypeHandler *, const char *, size_t);
template int walkEnd(SaxTypeHandler *, const char *, const char *);
template int walkEnd(VsaxTypeHandler *, const char *, const char *);

} // namespace ims
