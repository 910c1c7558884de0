// The attributes of a handler's own element.
#include "Engines.h"
#include "Handler.h"
#include "rtXmlNamespace.h"
#include "rtxText.h"

#include <string.h>

namespace ims {

namespace {

constexpr int unknown = -1;

bool isInstanceAttribute(const char *name) {
  return name[0] == 'x' && name[1] == 's' && name[2] == 'i' && name[3] == ':';
}

// The id of an attribute that is named by its prefix, or unknown.
[[gnu::cold, gnu::noinline]] int qualifiedAttributeId(RuntimeContext *ctx, const TypeSchema &type, const char *name,
                                                      uint32_t &seen) {
  const char *localName = nullptr;
  const char *prefix = nullptr;
  if (rtXmlDecQName(ctx, name, &localName, &prefix) != 0 || !prefix) return unknown;
  if (rtXmlNSGetIndex(ctx, prefix) != type.module->namespaceIndex) return unknown;
  return rtSaxGetAttributeID(localName, type.attributeCount, type.attributeNames, &seen);
}

// The id of an attribute, or unknown; an attribute that comes a second time under another spelling is unknown too.
inline int attributeId(RuntimeContext *ctx, const TypeSchema &type, const char *name, uint32_t &seen) {
  if (type.attributeCount == 0) return unknown;
  uint32_t before = seen;
  int id = rtSaxGetAttributeID(name, type.attributeCount, type.attributeNames, &seen);
  if (id < 0 && type.module->qualifiedAttributes) id = qualifiedAttributeId(ctx, type, name, seen);
  return seen == before || id >= type.attributeCount ? unknown : id;
}

template <class Handler>
[[gnu::cold, gnu::noinline]] void recordWithName(Handler *handler, int status, uint8_t step, const char *name) {
  if (!counted(handler)) return;
  rtxErrAddStrParm(handler->context, typeOf(handler).name);
  rtxErrAddStrParm(handler->context, name);
  record(handler, status, nullptr, step);
}

// A value that was not taken: what it is about, then that the attribute is invalid.
template <class Handler>
[[gnu::cold, gnu::noinline]] void recordInvalid(Handler *handler, int status, const Field *field, uint8_t step,
                                                const char *name) {
  pass(handler, status, field, step);
  recordWithName(handler, STATUS_INVALID_ATTRIBUTE, step::invalidAttribute, name);
}

template <class Handler>
[[gnu::cold, gnu::noinline]] void recordFailure(Handler *handler, const Field &field, int status, const char *name) {
  // Lenient or not, a lack of storage never passes for success.
  if (has(field, lenient) && status != STATUS_NO_MEMORY) return;
  if (field.kind == Kind::enumeration && status == STATUS_ENUM_NOT_FOUND) {
    rtxErrAddCtxtBufParm(handler->context);
    record(handler, status, &field, step::enumeration);
    if (has(field, enumErrorOnly)) return;
  }
  recordInvalid(handler, status, &field, step::conversion, name);
}

template <class Handler> inline void readKnown(Handler *handler, const Field &field, const char *name) {
  void *owner = nullptr;
  if constexpr (fillsRecord<Handler>) owner = handler->record;
  Conversion conversion = {STATUS_OK, true};
  if (fillsRecord<Handler> && field.kind == Kind::text && !has(field, collapsed)) { // the most common kind by far
    conversion.status = rtXmlDecXmlStr(handler->context, &memberAt<RtxXmlString>(owner, field));
  } else {
    conversion = convert(handler, field, owner, name);
  }
  bool present = conversion.inRange && (conversion.status == 0 || has(field, presentAlways));
  if constexpr (fillsRecord<Handler>) {
    if (present && field.bit != 0) presenceOf(handler->record) |= field.bit;
  }
  if (conversion.inRange && conversion.status != 0) [[unlikely]]
    recordFailure(handler, field, conversion.status, name);
}

// Keeps a copy of a foreign attribute.
int keepAttribute(RuntimeContext *ctx, RtxList *list, const char *name, const char *value) {
  auto *pair = static_cast<RtxNamePair *>(rtxMemHeapAlloc(ctx, sizeof(RtxNamePair)));
  if (!pair) return STATUS_NO_MEMORY;
  pair->name = rtxUTF8Strdup(ctx, name);
  pair->value = pair->name ? rtxUTF8Strdup(ctx, value) : nullptr;
  if (pair->value && rtxDListAppend(ctx, list, pair)) return STATUS_OK;
  rtxMemHeapFreePtr(ctx, pair->value);
  rtxMemHeapFreePtr(ctx, pair->name);
  rtxMemHeapFreePtr(ctx, pair);
  return STATUS_NO_MEMORY;
}

template <class Handler>
[[gnu::cold, gnu::noinline]] void readForeign(Handler *handler, const TypeSchema &type, const char *name,
                                              const char *value) {
  RuntimeContext *ctx = handler->context;
  if (type.attributeList == noField) {
    recordWithName(handler, STATUS_UNKNOWN_ATTRIBUTE, step::unknownAttribute, name);
    return;
  }
  if (rtXmlDecXSIAttr(ctx, name, value) == 0) return;
  if constexpr (fillsRecord<Handler>) {
    const Field &field = type.fields[type.attributeList];
    int status = keepAttribute(ctx, &listAt(handler->record, field), name, value);
    if (status != 0) recordInvalid(handler, status, &field, step::conversion, name);
  }
}

template <class Handler>
[[gnu::cold, gnu::noinline]] void readDeclaration(Handler *handler, const TypeSchema &type, const char *name,
                                                  const char *value) {
  RtxNsDeclList *list = nullptr;
  if constexpr (fillsRecord<Handler>) {
    if (type.namespaceList != noField)
      list = &memberAt<RtxNsDeclList>(handler->record, type.fields[type.namespaceList]);
  }
  int status = rtXmlDecNSAttr(handler->context, name, value, list, nullptr, 0);
  if (status != 0) recordInvalid(handler, status, nullptr, step::declaration, name);
}

template <class Handler>
inline void readAttribute(Handler *handler, const char *name, const char *value, uint32_t &seen) {
  const TypeSchema &type = typeOf(handler);
  RuntimeContext *ctx = handler->context;
  rtxInitContextBuffer(ctx, value, strlen(value));
  int id = attributeId(ctx, type, name, seen);
  if (id != unknown) {
    readKnown(handler, type.fields[type.firstAttribute + id], name);
  } else if (isDeclaration(name)) {
    readDeclaration(handler, type, name, value);
  } else if (isInstanceAttribute(name)) {
    rtXmlDecXSIAttr(ctx, name, value);
  } else {
    readForeign(handler, type, name, value);
  }
}

} // namespace

template <class Handler> void readAttributes(Handler *handler, const char *const *attributes) {
  const TypeSchema &type = typeOf(handler);
  RuntimeContext *ctx = handler->context;
  uint32_t seen = 0;
  bool presenceAlone = !fillsRecord<Handler> && has(type, presenceOnly);
  for (; attributes && attributes[0]; attributes += 2) {
    if (presenceAlone) {
      attributeId(ctx, type, attributes[0], seen);
    } else {
      readAttribute(handler, attributes[0], attributes[1], seen);
    }
  }
  if ((type.requiredAttributes & ~seen) == 0) [[likely]]
    return;
  int status = rtSaxTestAttributesPresent(ctx, &seen, type.requiredAttributes, type.attributeNames, type.attributeCount,
                                          type.name);
  passRecorded(handler, status, step::missingAttribute);
}

template void readAttributes(SaxTypeHandler *, const char *const *);
template void readAttributes(VsaxTypeHandler *, const char *const *);

} // namespace ims
