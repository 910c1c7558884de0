#include "Engines.h"
#include "Member.h"
#include "Output.h"
#include "Parameter.h"
#include "rtXmlEncode.h"
#include "rtXmlNamespace.h"
#include "rtxError.h"
#include "rtxText.h"

#include <stdio.h>
#include <string.h>

namespace ims {

namespace {

const char *encoderPath(const TypeSchema &type) { return type.module->paths[int(File::encoder)]; }

int lineOf(const TypeSchema &type, uint8_t row, uint8_t step) { return siteLine(type, File::encoder, row, step); }

// Adds the place of a failing step, of the type or of a field, to the trail and passes the status on.
[[gnu::cold]] int wrap(RuntimeContext *ctx, int status, const TypeSchema &type, uint8_t step) {
  return rtxErrSetData(ctx, status, encoderPath(type), lineOf(type, 0, step));
}
[[gnu::cold]] int wrap(RuntimeContext *ctx, int status, const TypeSchema &type, const Field &field, uint8_t step) {
  return rtxErrSetData(ctx, status, encoderPath(type), lineOf(type, rowOf(type, field), step));
}

// Records an error that the encoder itself has found.
[[gnu::cold]] int fail(RuntimeContext *ctx, int status, const TypeSchema &type, uint8_t step) {
  return rtxErrSetNewData(ctx, status, encoderPath(type), lineOf(type, 0, step));
}
[[gnu::cold]] int fail(RuntimeContext *ctx, int status, const TypeSchema &type, const Field &field, uint8_t step) {
  return rtxErrSetNewData(ctx, status, encoderPath(type), lineOf(type, rowOf(type, field), step));
}

inline int terminate(RuntimeContext *ctx, const TypeSchema &type, uint8_t step) {
  return terminated(ctx) ? int{STATUS_OK} : fail(ctx, STATUS_BUFFER_OVERFLOW, type, step);
}

// The namespace under which a type's children are written: the prefix that the context binds to the module's URI.
RtxNamespace childNamespace(RuntimeContext *ctx, const ModuleSchema &module) {
  const char *uri = module.uri;
  if (module.namespaces) {
    const char *const *table = module.namespaces->registry(ctx);
    // A table that could not be made is no reason to fail: its texts are constants.
    if (table) uri = table[module.namespaceIndex];
  }
  return {rtXmlNSGetPrefix(ctx, uri), uri};
}

int checkRange(RuntimeContext *ctx, const TypeSchema &type, const Field &field, uint32_t value) {
  if (!isOutOfRange(field, value)) return STATUS_OK;
  addMemberParameter(ctx, type, field.name);
  rtxErrAddUIntParm(ctx, value);
  return fail(ctx, STATUS_CONSTRAINT_VIOLATION, type, field, step::facet);
}

uint32_t numberAt(const void *record, const Field &field) {
  return field.kind == Kind::uint16 ? memberAt<uint16_t>(record, field) : memberAt<uint32_t>(record, field);
}

inline int encodeText(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const RtxXmlString &text,
                      const char *element, const RtxNamespace *ns) {
  int status = rtxValidateUTF8(ctx, text.value);
  if (status != 0) return wrap(ctx, status, type, field, step::validate);
  status = rtXmlEncString(ctx, &text, element, ns);
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

// ---- Attributes -----------------------------------------------------------------------------------------------

// Room for the name of a qualified attribute. A prefix that does not fit is a lack of room like any other.
constexpr size_t attributeNameSize = 256;

// Writes an attribute's opening up to its quote, the enumeration's text and the closing quote: at once, or step by step
// for the step that fails to be known.
int encodeEnumAttribute(RuntimeContext *ctx, const TypeSchema &type, const Field &field, uint16_t code,
                        const char *name, size_t length) {
  const char *text = enumText(*field.enumeration, code);
  if (rtXmlEncUTF8Attr2(ctx, name, length, text, rtxUTF8LenBytes(text)) == 0) return STATUS_OK;
  if (rtxCheckBuffer(ctx, length + 3) != 0) return fail(ctx, STATUS_BUFFER_OVERFLOW, type, field, step::openRoom);
  char *out = ctx->buffer.data + ctx->buffer.byteIndex;
  *out++ = ' ';
  memcpy(out, name, length);
  out += length;
  *out++ = '=';
  *out = '"';
  ctx->buffer.byteIndex += length + 3;
  int status = encodeEnum(ctx, *field.enumeration, code, nullptr, nullptr);
  if (status != 0) return wrap(ctx, status, type, field, step::write);
  if (rtxCheckBuffer(ctx, 1) != 0) return fail(ctx, STATUS_BUFFER_OVERFLOW, type, field, step::closeRoom);
  ctx->buffer.data[ctx->buffer.byteIndex++] = '"';
  return STATUS_OK;
}

struct AttributeName {
  const char *text;
  size_t length;
};
// The qualified name, or null: the one of the schema.
inline AttributeName nameOf(const TypeSchema &type, const Field &field, const char *qualified) {
  if (qualified) return {qualified, strlen(qualified)};
  return {type.attributeNames[field.id], field.nameLength};
}

inline int encodeTextAttribute(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const void *record,
                               const char *qualified) {
  const char *value = memberAt<RtxXmlString>(record, field).value;
  size_t valueLength = rtxUTF8LenBytes(value);
  AttributeName name = nameOf(type, field, qualified); // not before: it would have to be kept over the call
  int status = rtXmlEncUTF8Attr2(ctx, name.text, name.length, value, valueLength);
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

int encodeAttribute(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const void *record,
                    const char *qualified) {
  AttributeName name = nameOf(type, field, qualified);
  int status = STATUS_OK;
  switch (field.kind) {
  case Kind::text: return encodeTextAttribute(ctx, type, field, record, qualified);
  case Kind::uint32:
  case Kind::uint16: {
    uint32_t value = numberAt(record, field);
    status = checkRange(ctx, type, field, value);
    if (status != 0) return status;
    status = rtXmlEncUIntAttr(ctx, value, name.text, name.length);
    break;
  }
  case Kind::boolean: status = rtXmlEncBoolAttr(ctx, memberAt<bool>(record, field), name.text, name.length); break;
  case Kind::decimal: status = rtXmlEncDecimalAttr(ctx, memberAt<double>(record, field), name.text, name.length); break;
  case Kind::enumeration:
    return encodeEnumAttribute(ctx, type, field, memberAt<uint16_t>(record, field), name.text, name.length);
  default: break;
  }
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

[[gnu::noinline]] int encodeQualified(RuntimeContext *ctx, const TypeSchema &type, const Field &field,
                                      const void *record, const RtxNamespace *ns) {
  char name[attributeNameSize];
  int status = rtXmlNSGetAttrQName(ctx, name, sizeof(name), ns, type.attributeNames[field.id], field.nameLength);
  if (status != 0) return wrap(ctx, status, type, field, step::qualifiedName);
  return encodeAttribute(ctx, type, field, record, name);
}

const RtxNsDeclList *declarationsOf(const TypeSchema &type, const void *record) {
  if (type.namespaceList == noField) return nullptr;
  return &memberAt<RtxNsDeclList>(record, type.fields[type.namespaceList]);
}

// opened: the start tag is known to be open, so that nothing can be said against an empty list.
inline int encodeDeclarations(RuntimeContext *ctx, const TypeSchema &type, const void *record, bool opened) {
  const RtxNsDeclList *declarations = declarationsOf(type, record);
  if (!declarations || (opened && !declarations->items.head)) return STATUS_OK;
  int status = rtXmlEncNSAttrs(ctx, declarations);
  return status != 0 ? wrap(ctx, status, type, step::declarations) : status;
}

[[gnu::always_inline]] inline int encodeOwnAttributes(RuntimeContext *ctx, const TypeSchema &type, const void *record,
                                                      const RtxNamespace *ns, bool opened) {
  bool qualified = type.module->qualifiedAttributes;
  for (const Field &field : attributesOf(type)) {
    if (!isPresent(field, record)) continue;
    int status = STATUS_OK;
    if (qualified) {
      status = encodeQualified(ctx, type, field, record, ns);
    } else if (field.kind == Kind::text) { // the most common kind by far
      status = encodeTextAttribute(ctx, type, field, record, nullptr);
    } else {
      status = encodeAttribute(ctx, type, field, record, nullptr);
    }
    if (status != 0) return status;
  }
  if (type.attributeList == noField) return STATUS_OK;
  const Field &field = type.fields[type.attributeList];
  const RtxAttrList &attributes = memberAt<RtxAttrList>(record, field);
  if (opened && !attributes.items.head) return STATUS_OK;
  int status = rtXmlEncAnyAttr(ctx, &attributes);
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

// While attributes are written nothing may close the start tag; every way out restores the state.
class AttributeState {
public:
  explicit AttributeState(RuntimeContext *context) : ctx(context) { ctx->state = XMLSTATE_IN_ATTRIBUTES; }
  ~AttributeState() { ctx->state = XMLSTATE_IN_ELEMENT; }
  AttributeState(const AttributeState &) = delete;
  AttributeState &operator=(const AttributeState &) = delete;

private:
  RuntimeContext *ctx;
};

enum class Order : bool {
  attributesFirst,
  declarationsFirst
};

[[gnu::always_inline]] inline int encodeAttributesInOrder(RuntimeContext *ctx, const TypeSchema &type,
                                                          const void *record, const RtxNamespace *ns, Order order,
                                                          bool opened) {
  AttributeState state(ctx);
  int status = STATUS_OK;
  if (order == Order::declarationsFirst) status = encodeDeclarations(ctx, type, record, opened);
  if (status == 0) status = encodeOwnAttributes(ctx, type, record, ns, opened);
  if (status == 0 && order == Order::attributesFirst) status = encodeDeclarations(ctx, type, record, opened);
  return status;
}

// ---- Children -------------------------------------------------------------------------------------------------

int encodeForeign(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const RtxXmlString *fragment,
                  const RtxNamespace *ns) {
  int status = rtXmlEncAny(ctx, fragment, nullptr, ns);
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

int encodeElement(RuntimeContext *ctx, const TypeSchema &type, const void *record, const char *element,
                  const RtxNamespace *ns, const RtxNamespace *childNs);

// A record inside a record of a type: what is true of the namespace of the one's children is true of the other's.
inline int encodeNested(RuntimeContext *ctx, const TypeSchema &type, const TypeSchema &nested, const void *record,
                        const char *element, const RtxNamespace *ns) {
  return encodeElement(ctx, nested, record, element, ns, nested.module == type.module ? ns : nullptr);
}

// The alternative of a choice has a name, the choice has none.
inline int encodeRecord(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const void *record,
                        const RtxNamespace *ns) {
  const char *element = field.kind == Kind::choice ? nullptr : type.elements[field.id].name;
  int status = encodeNested(ctx, type, *field.type, static_cast<const char *>(record) + field.offset, element, ns);
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

int encodeItems(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const RtxList &list,
                const char *element, const RtxNamespace *ns) {
  for (const RtxListNode *node = list.head; node; node = node->next) {
    int status = STATUS_OK;
    switch (field.kind) {
    case Kind::recordList:
    case Kind::choiceList:
      status = encodeNested(ctx, type, *field.type, node->data, element, ns);
      if (status != 0) status = wrap(ctx, status, type, field, step::write);
      break;
    case Kind::textList:
      status = encodeText(ctx, type, field, *static_cast<const RtxXmlString *>(node->data), element, ns);
      break;
    default: status = encodeForeign(ctx, type, field, static_cast<const RtxXmlString *>(node->data), ns); break;
    }
    if (status != 0) return status;
  }
  return STATUS_OK;
}

int encodeChild(RuntimeContext *ctx, const TypeSchema &type, const Field &field, const void *record,
                const RtxNamespace *ns) {
  const char *element = type.elements[field.id].name;
  int status = STATUS_OK;
  switch (field.kind) {
  case Kind::text: return encodeText(ctx, type, field, memberAt<RtxXmlString>(record, field), element, ns);
  case Kind::foreign: return encodeForeign(ctx, type, field, &memberAt<RtxXmlString>(record, field), ns);
  case Kind::uint32:
  case Kind::uint16: {
    uint32_t value = numberAt(record, field);
    status = checkRange(ctx, type, field, value);
    if (status != 0) return status;
    status = rtXmlEncUInt(ctx, value, element, ns);
    break;
  }
  case Kind::hexBinary: {
    const auto &value = memberAt<RtxHexBinary>(record, field);
    status = rtXmlEncHexBinary(ctx, value.length, value.bytes, element, ns);
    break;
  }
  case Kind::enumeration:
    status = encodeEnum(ctx, *field.enumeration, memberAt<uint16_t>(record, field), element, ns);
    break;
  case Kind::record:
  case Kind::choice: return encodeRecord(ctx, type, field, record, ns);
  case Kind::choiceList: return encodeItems(ctx, type, field, listAt(record, field), nullptr, ns);
  case Kind::recordList:
  case Kind::textList:
  case Kind::foreignList: return encodeItems(ctx, type, field, listAt(record, field), element, ns);
  default: break;
  }
  return status != 0 ? wrap(ctx, status, type, field, step::write) : status;
}

[[gnu::cold, gnu::noinline]] int failSelector(RuntimeContext *ctx, const TypeSchema &type, const void *record) {
  char selector[40];
  snprintf(selector, sizeof(selector), "%d", selectorOf(record));
  rtxErrAddStrParm(ctx, selector);
  return fail(ctx, STATUS_INVALID_CHOICE, type, step::selector);
}

inline int encodeAlternative(RuntimeContext *ctx, const TypeSchema &type, const void *record, const RtxNamespace *ns) {
  const Field *alternative = alternativeOf(type, record);
  return alternative ? encodeChild(ctx, type, *alternative, record, ns) : failSelector(ctx, type, record);
}

// ns: under which the children are written; null: not known yet.
[[gnu::always_inline]] inline int encodeChildren(RuntimeContext *ctx, const TypeSchema &type, const void *record,
                                                 const RtxNamespace *ns) {
  RtxNamespace own;
  if (!ns) {
    bool hasChildren = type.elementCount != 0 || type.content == Content::choice;
    own = hasChildren ? childNamespace(ctx, *type.module) : RtxNamespace{nullptr, nullptr};
    ns = &own;
  }
  if (type.content == Content::choice) return encodeAlternative(ctx, type, record, ns);
  if (has(type, noEmptyList) && listAt(record, type.fields[0]).count == 0) {
    addMemberParameter(ctx, type, "count");
    rtxErrAddIntParm(ctx, 0);
    return fail(ctx, STATUS_CONSTRAINT_VIOLATION, type, step::listCount);
  }
  if (type.content == Content::text) {
    const Field &field = type.fields[type.value];
    return encodeText(ctx, type, field, memberAt<RtxXmlString>(record, field), nullptr, ns);
  }
  for (const Field &field : contentOf(type)) {
    if (!isPresent(field, record)) continue;
    int status = STATUS_OK;
    if (field.kind == Kind::record || field.kind == Kind::choice) { // the most common kinds
      status = encodeRecord(ctx, type, field, record, ns);
    } else if (field.kind == Kind::text) {
      status = encodeText(ctx, type, field, memberAt<RtxXmlString>(record, field), type.elements[field.id].name, ns);
    } else {
      status = encodeChild(ctx, type, field, record, ns);
    }
    if (status != 0) return status;
  }
  return STATUS_OK;
}

// ---- The parts of an element ----------------------------------------------------------------------------------

[[gnu::always_inline]] inline int encodeStart(RuntimeContext *ctx, const TypeSchema &type, const void *record,
                                              const char *element, const RtxNamespace *ns) {
  bool attributes = has(type, hasAttributes);
  // Where foreign attributes are kept beside declarations, they need the declarations of their prefixes first.
  bool declareFirst = type.attributeList != noField;
  if (element) {
    const RtxNsDeclList *declarations = declareFirst ? declarationsOf(type, record) : nullptr;
    int status = rtXmlEncStartElement(ctx, element, ns, declarations, !attributes);
    if (status != 0) return wrap(ctx, status, type, step::startTag);
  }
  if (attributes) {
    int status = encodeAttributesInOrder(ctx, type, record, ns, Order::attributesFirst, element != nullptr);
    if (status != 0) return status;
  }
  return terminate(ctx, type, step::startRoom);
}

[[gnu::always_inline]] inline int encodeContents(RuntimeContext *ctx, const TypeSchema &type, const void *record,
                                                 const RtxNamespace *childNs) {
  int status = encodeChildren(ctx, type, record, childNs);
  return status != 0 ? status : terminate(ctx, type, step::contentsRoom);
}

[[gnu::always_inline]] inline int encodeEnd(RuntimeContext *ctx, const TypeSchema &type, const char *element,
                                            const RtxNamespace *ns) {
  if (element) {
    int status = rtXmlEncEndElement(ctx, element, ns);
    if (status != 0) return wrap(ctx, status, type, step::endTag);
  }
  return terminate(ctx, type, step::endRoom);
}

int encodeElement(RuntimeContext *ctx, const TypeSchema &type, const void *record, const char *element,
                  const RtxNamespace *ns, const RtxNamespace *childNs) {
  int status = encodeStart(ctx, type, record, element, ns);
  if (status != 0) return wrap(ctx, status, type, step::wrapStart);
  status = encodeContents(ctx, type, record, childNs);
  if (status != 0) return wrap(ctx, status, type, step::wrapContents);
  status = encodeEnd(ctx, type, element, ns);
  return status != 0 ? wrap(ctx, status, type, step::wrapEnd) : status;
}

} // namespace

// ---- Types ----------------------------------------------------------------------------------------------------

int encodeType(RuntimeContext *ctx, const TypeSchema &type, const void *record, const char *element,
               const RtxNamespace *ns) {
  return encodeElement(ctx, type, record, element, ns, nullptr);
}

int encodeTypeStart(RuntimeContext *ctx, const TypeSchema &type, const void *record, const char *element,
                    const RtxNamespace *ns) {
  return encodeStart(ctx, type, record, element, ns);
}

int encodeTypeAttributes(RuntimeContext *ctx, const TypeSchema &type, const void *record, const RtxNamespace *ns) {
  bool textWithDeclarations = type.namespaceList != noField && type.attributeList == noField;
  Order order = textWithDeclarations ? Order::declarationsFirst : Order::attributesFirst;
  return encodeAttributesInOrder(ctx, type, record, ns, order, false);
}

int encodeTypeContents(RuntimeContext *ctx, const TypeSchema &type, const void *record) {
  return encodeContents(ctx, type, record, nullptr);
}

int encodeTypeEnd(RuntimeContext *ctx, const TypeSchema &type, const char *element, const RtxNamespace *ns) {
  return encodeEnd(ctx, type, element, ns);
}

// ---- Enumerations ---------------------------------------------------------------------------------------------

namespace {

int wrapEnum(RuntimeContext *ctx, int status, const EnumSchema &type, uint8_t step) {
  return status != 0 ? rtxErrSetData(ctx, status, type.module->paths[int(File::encoder)], siteLine(type, step)) : 0;
}

int terminateEnum(RuntimeContext *ctx, const EnumSchema &type, uint8_t step) {
  if (terminated(ctx)) return STATUS_OK;
  return rtxErrSetNewData(ctx, STATUS_BUFFER_OVERFLOW, type.module->paths[int(File::encoder)], siteLine(type, step));
}

} // namespace

int encodeEnumStart(RuntimeContext *ctx, const EnumSchema &type, const char *element, const RtxNamespace *ns) {
  if (element) {
    int status = rtXmlEncStartElement(ctx, element, ns, nullptr, true);
    if (status != 0) return wrapEnum(ctx, status, type, step::startTag);
  }
  return terminateEnum(ctx, type, step::startRoom);
}

int encodeEnumContents(RuntimeContext *ctx, const EnumSchema &type, uint32_t code) {
  int status = rtXmlEncUTF8Str(ctx, enumText(type, code), nullptr, nullptr);
  if (status != 0) return wrapEnum(ctx, status, type, step::declarations);
  return terminateEnum(ctx, type, step::contentsRoom);
}

int encodeEnumEnd(RuntimeContext *ctx, const EnumSchema &type, const char *element, const RtxNamespace *ns) {
  if (element) {
    int status = rtXmlEncEndElement(ctx, element, ns);
    if (status != 0) return wrapEnum(ctx, status, type, step::endTag);
  }
  return terminateEnum(ctx, type, step::endRoom);
}

int encodeEnum(RuntimeContext *ctx, const EnumSchema &type, uint32_t code, const char *element,
               const RtxNamespace *ns) {
  int status = encodeEnumStart(ctx, type, element, ns);
  if (status != 0) return wrapEnum(ctx, status, type, step::wrapStart);
  status = encodeEnumContents(ctx, type, code);
  if (status != 0) return wrapEnum(ctx, status, type, step::wrapContents);
  status = encodeEnumEnd(ctx, type, element, ns);
  return wrapEnum(ctx, status, type, step::wrapEnd);
}

} // namespace ims
