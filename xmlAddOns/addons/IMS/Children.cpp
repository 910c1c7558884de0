// The start tags of a handler's direct children: which are accepted, and who takes them.
#include "Engines.h"
#include "Handler.h"
#include "Start.h"
#include "Trace.h"
#include "rtXmlNamespace.h"
#include "rtxText.h"

#include <string.h>

namespace ims {

namespace {

// One start tag on its way.
struct StartTag {
  const char *localName;
  const char *qualifiedName;
  const char *const *attributes;
};

// ---- Which children are accepted ------------------------------------------------------------------------------

// An element that has no place here.
template <class Handler> [[gnu::cold]] int refuse(Handler *handler, const StartTag &tag) {
  if (!counted(handler)) return skip(handler, STATUS_OK);
  rtxErrAddStrParm(handler->context, tag.qualifiedName);
  return skip(handler, record(handler, STATUS_UNEXPECTED_ELEMENT, nullptr, step::refused));
}

// A child of another name than the only one that this type has.
template <class Handler> [[gnu::cold]] int refuseName(Handler *handler, const StartTag &tag) {
  if (!counted(handler)) return skip(handler, STATUS_OK);
  rtxErrAddStrParm(handler->context, typeOf(handler).fields[0].name);
  rtxErrAddStrParm(handler->context, tag.qualifiedName);
  return skip(handler, record(handler, STATUS_ROOT_MISMATCH, nullptr, step::refused));
}

// The namespace index of a child's name that has a prefix or declares namespaces, with its declarations in force.
template <class Handler> [[gnu::noinline]] int resolve(Handler *handler, const StartTag &tag, int &index) {
  RuntimeContext *ctx = handler->context;
  int status = STATUS_OK;
  bool scoped = false;
  for (const char *const *attribute = tag.attributes; attribute && attribute[0] && status == 0; attribute += 2) {
    const char *name = attribute[0];
    if (!isDeclaration(name)) continue;
    if (!scoped) status = rtXmlNSPush(ctx);
    if (status != 0) break;
    scoped = true;
    status = rtXmlNSAddPrefixLink(ctx, name[5] == ':' ? name + 6 : nullptr, attribute[1], nullptr, 0);
  }
  const char *prefix = nullptr;
  if (status == 0 && tag.localName != tag.qualifiedName)
    status = rtXmlDecQName(ctx, tag.qualifiedName, nullptr, &prefix);
  if (status == 0) index = rtXmlNSGetIndex(ctx, prefix);
  if (scoped) rtXmlNSPop(ctx);
  return status;
}

// Whether the child's name is in the default namespace, whatever that is.
inline bool isPlain(const StartTag &tag) {
  if (tag.localName != tag.qualifiedName) return false;
  for (const char *const *attribute = tag.attributes; attribute && attribute[0]; attribute += 2)
    if (isDeclaration(attribute[0])) return false;
  return true;
}

// The element id of a child by the tables. False: it is refused, and status is what the callback returns.
template <class Handler> bool lookUp(Handler *handler, const StartTag &tag, int &status) {
  const TypeSchema &type = typeOf(handler);
  RuntimeContext *ctx = handler->context;
  int index = RTXML_NS_NONE;
  if (isPlain(tag)) [[likely]] {
    index = rtXmlNSGetIndex(ctx, nullptr);
  } else if (status = resolve(handler, tag, index); status != 0) {
    if (counted(handler)) pass(handler, status, nullptr, step::childScope);
    skip(handler, status);
    return false;
  }
  uint16_t id = rtSaxGetElemID8(&handler->contentState, handler->elementId, tag.localName, index, type.elements,
                                type.states, type.elementCount, type.stateCount);
  if (id == RTSAX_NO_ELEMENT && has(type, refusesAtOnce)) {
    status = refuse(handler, tag);
    return false;
  }
  if (id == RTSAX_NO_ELEMENT) {
    id = rtSaxLookupElemID8(ctx, &handler->contentState, handler->elementId, tag.localName, tag.qualifiedName, -1,
                            type.elements, type.states, type.elementCount, type.stateCount);
    if (id == RTSAX_NO_ELEMENT) {
      status = pass(handler, rtxErrGetLastError(ctx), nullptr, step::lookup);
      return false;
    }
  }
  handler->elementId = static_cast<int16_t>(id);
  return true;
}

// ---- Who takes them -------------------------------------------------------------------------------------------

void *newItem(RuntimeContext *ctx, size_t size) {
  void *item = rtxMemHeapAlloc(ctx, size);
  if (item) memset(item, 0, size);
  return item;
}

void *newRecord(RuntimeContext *ctx, const TypeSchema &type) {
  void *record = newItem(ctx, type.size);
  if (record && has(type, hasDefaults)) clearRecord(type, record); // the rest of it is zero already
  return record;
}

// A record that a child fills, by a handler of its own.
struct Nested {
  const TypeSchema *type; // null: none
  void *record;           // null: for a handler that only checks
};

// Hands a child to a handler of its type.
template <class Handler>
int delegateRecord(Handler *handler, const TypeSchema &type, void *target, const StartTag &tag) {
  if (!handler->delegateStorage) return skipForStorage(handler);
  auto *delegate = static_cast<Handler *>(handler->delegateStorage);
  if constexpr (fillsRecord<Handler>) {
    setUp(handler->context, type, delegate, type.decoding, 0);
    delegate->record = target;
  } else {
    (void)target;
    setUp(handler->context, type, delegate, type.validating, 0);
  }
  // Without storage for delegates of its own the child refuses those that need one, and says so then.
  if (delegates<Handler>(type)) delegate->delegateStorage = rtxMemHeapAlloc(handler->context, RTSAX_DELEGATE_SIZE);
  handler->delegate = reinterpret_cast<RtSaxHandler *>(delegate);
  handler->foreignDelegate = false;
  int status = handler->context->traced
                   ? delegate->startElement(delegate, tag.localName, tag.qualifiedName, tag.attributes)
                   : startOwn(delegate, tag.localName, tag.attributes);
  if (delegate->level > 0) {
    ++handler->level;
  } else {
    dropDelegate(handler);
  }
  return status;
}

// Hands a foreign child to the runtime's handler, which keeps it as text.
int delegateForeign(SaxTypeHandler *handler, RtxXmlString *entry, const StartTag &tag) {
  RuntimeContext *ctx = handler->context;
  void *block = handler->delegateStorage;
  if (!block || SAXAnyInit(ctx, block, entry, 0) != 0) return skipForStorage(handler);
  handler->delegate = static_cast<RtSaxHandler *>(block);
  handler->foreignDelegate = true;
  int status = SAXAnyStartElement(block, tag.localName, tag.qualifiedName, tag.attributes);
  if (status == 0) {
    ++handler->level;
  } else {
    dropDelegate(handler);
  }
  return status;
}

// Puts an item into its list now, or keeps it until its element has ended.
bool placeItem(SaxTypeHandler *handler, const Field &field, RtxList &list, void *item) {
  if (has(field, appendedAtEnd)) {
    handler->pendingItem = item;
    return true;
  }
  return rtxDListAppend(handler->context, &list, item) != nullptr;
}

int startForeignItem(SaxTypeHandler *handler, const Field &field, RtxList &list, const StartTag &tag) {
  RuntimeContext *ctx = handler->context;
  auto *entry = static_cast<RtxXmlString *>(newItem(ctx, sizeof(RtxXmlString)));
  if (!entry) return skipForStorage(handler);
  if (!placeItem(handler, field, list, entry)) {
    rtxMemHeapFreePtr(ctx, entry);
    return skipForStorage(handler);
  }
  return delegateForeign(handler, entry, tag);
}

int startRecordItem(SaxTypeHandler *handler, const Field &field, Nested &nested) {
  RuntimeContext *ctx = handler->context;
  void *item = newRecord(ctx, *field.type);
  if (!item) return skipForStorage(handler);
  if (!placeItem(handler, field, listAt(handler->record, field), item)) {
    rtxMemHeapFreePtr(ctx, item);
    return skipForStorage(handler);
  }
  nested = {field.type, item};
  return STATUS_OK;
}

void markPresent(SaxTypeHandler *handler, const Field &field) {
  if (has(field, required)) {
    handler->seenRequired |= field.bit;
  } else if (field.bit != 0) {
    presenceOf(handler->record) |= field.bit;
  }
}

// Starts the alternative that this child is, in a choice that is ready for it.
int startAlternative(SaxTypeHandler *handler, void *choice, const Field &alternative, const StartTag &tag,
                     Nested &nested) {
  switch (alternative.kind) {
  case Kind::record: {
    void *target = static_cast<char *>(choice) + alternative.offset;
    clearRecord(*alternative.type, target);
    nested = {alternative.type, target};
    return STATUS_OK;
  }
  case Kind::foreign: return delegateForeign(handler, &memberAt<RtxXmlString>(choice, alternative), tag);
  case Kind::foreignList: return startForeignItem(handler, alternative, listAt(choice, alternative), tag);
  default: // a text, which is converted at its end
    ++handler->level;
    return STATUS_OK;
  }
}

// The choice that a child of a choice list fills: a new item, but a run of foreign elements shares one.
void *choiceFor(SaxTypeHandler *handler, const Field &field, uint16_t selector) {
  RuntimeContext *ctx = handler->context;
  RtxList &list = listAt(handler->record, field);
  bool joins = field.type->fields[selector - 1].kind == Kind::foreignList;
  if (joins && list.tail && selectorOf(list.tail->data) == selector) return list.tail->data;
  void *item = newRecord(ctx, *field.type);
  if (!item) return nullptr;
  if (!rtxDListAppend(ctx, &list, item)) {
    rtxMemHeapFreePtr(ctx, item);
    return nullptr;
  }
  selectorOf(item) = selector;
  return item;
}

// Fills the record with an accepted child. A record among its parts is left to the caller, in nested.
int startField(SaxTypeHandler *handler, const Field &field, const StartTag &tag, Nested &nested) {
  void *member = static_cast<char *>(handler->record) + field.offset;
  auto selector = static_cast<uint16_t>(handler->elementId - field.id + 1);
  switch (field.kind) {
  case Kind::record:
    markPresent(handler, field);
    clearRecord(*field.type, member);
    nested = {field.type, member};
    return STATUS_OK;
  case Kind::recordList: return startRecordItem(handler, field, nested);
  case Kind::choice:
    selectorOf(member) = selector;
    return startAlternative(handler, member, field.type->fields[selector - 1], tag, nested);
  case Kind::choiceList: {
    void *choice = choiceFor(handler, field, selector);
    if (!choice) return skipForStorage(handler);
    return startAlternative(handler, choice, field.type->fields[selector - 1], tag, nested);
  }
  case Kind::foreign:
    markPresent(handler, field);
    *static_cast<RtxXmlString *>(member) = {false, nullptr};
    return delegateForeign(handler, static_cast<RtxXmlString *>(member), tag);
  case Kind::foreignList: return startForeignItem(handler, field, listAt(handler->record, field), tag);
  default:
    handler->hex = {0, 0};
    ++handler->level;
    return STATUS_OK;
  }
}

// Checks an accepted child: only records have a handler, foreign elements are not looked into.
int startField(VsaxTypeHandler *handler, const Field &field, const StartTag &, Nested &nested) {
  const Field *child = &field;
  if (field.kind == Kind::choice || field.kind == Kind::choiceList)
    child = &field.type->fields[handler->elementId - field.id];
  if (child->kind == Kind::record || child->kind == Kind::recordList) {
    if (has(field, required)) handler->seenRequired |= field.bit; // of a text its end does
    nested = {child->type, nullptr};
    return STATUS_OK;
  }
  handler->hex = {0, 0};
  ++handler->level;
  return STATUS_OK;
}

// Deals with the start tag of a direct child; the handler's level goes up if the child is accepted.
template <class Handler>
int startChild(Handler *handler, const char *localName, const char *qualifiedName, const char *const *attributes) {
  const TypeSchema &type = typeOf(handler);
  RuntimeContext *ctx = handler->context;
  StartTag tag = {localName, qualifiedName, attributes};
  ctx->state = XMLSTATE_IN_ELEMENT;
  int status = STATUS_OK;
  switch (type.content) {
  case Content::elements:
    if (!lookUp(handler, tag, status)) return status;
    break;
  case Content::named:
    if (rtXmlStrCmpAsc(localName, type.elements[0].name) != 0) return refuseName(handler, tag);
    handler->elementId = 0;
    break;
  case Content::anything: handler->elementId = 0; break;
  default: return refuse(handler, tag);
  }
  handler->field = &type.fields[type.fieldsByElement[handler->elementId]];
  Nested nested = {nullptr, nullptr};
  status = startField(handler, fieldOf(handler), tag, nested);
  if (nested.type) status = delegateRecord(handler, *nested.type, nested.record, tag);
  // A child that nobody else looks at must not carry attributes.
  bool accepted = handler->level > 1;
  if (accepted && attributes && attributes[0] && !handler->delegate && type.content != Content::anything) {
    const char *name = type.elements[handler->elementId].name;
    passRecorded(handler, rtSaxReportUnexpAttrs(ctx, attributes, name), step::unexpectedAttributes);
  }
  if constexpr (fillsRecord<Handler>) {
    if (!accepted) discardPending(handler);
  }
  return status;
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

// The root's start tag, or one that is handed to a handler by hand.
template <class Handler>
[[gnu::noinline]] int startRoot(Handler *handler, const char *localName, const char *const *attributes) {
  return startOwn(handler, localName, attributes);
}

// A tag counts for the handlers on the way to the last one, unless that refuses it.
template <class Handler>
[[gnu::noinline]] int takeStart(Handler *handler, const char *localName, const char *qualifiedName,
                                const char *const *attributes) {
  Handler *last = handler;
  const bool chained = !handler->context->traced;
  while (Handler *delegate = chained ? ownDelegate(last) : nullptr) {
    ++last->level;
    last = delegate;
  }
  int32_t before = last->level;
  int status = STATUS_OK;
  if (before == 1) {
    status = startChild(last, localName, qualifiedName, attributes);
  } else if (before == 0) {
    status = startRoot(last, localName, attributes);
  } else if (forwardStart(last, localName, qualifiedName, attributes, status)) {
    ++last->level;
  }
  if (last->level != before) [[likely]]
    return status;
  for (Handler *ancestor = handler; ancestor != last; ancestor = ownDelegate(ancestor))
    --ancestor->level;
  return status;
}

} // namespace

void discardPending(SaxTypeHandler *handler) {
  void *item = handler->pendingItem;
  if (!item) return;
  const Field &field = fieldOf(handler);
  if (field.kind == Kind::recordList) {
    discardRecord(handler->context, *field.type, item);
  } else {
    rtxMemHeapFreePtr(handler->context, static_cast<RtxXmlString *>(item)->value);
  }
  rtxMemHeapFreePtr(handler->context, item);
  handler->pendingItem = nullptr;
}

template <class Handler>
int walkStart(Handler *handler, const char *localName, const char *qualifiedName, const char *const *attributes) {
  if (!handler->context->traced) [[likely]]
    return takeStart(handler, localName, qualifiedName, attributes);
  return inTrace(handler, "startElement", localName,
                 [=] { return takeStart(handler, localName, qualifiedName, attributes); });
}

template int walkStart(SaxTypeHandler *, const char *, const char *, const char *const *);
template int walkStart(VsaxTypeHandler *, const char *, const char *, const char *const *);

} // namespace ims
