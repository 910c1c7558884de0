// The exported functions of a module, by family. Each is one line that hands the table of its type, enumeration or
// document to an engine; a module's sources list which families each of its types has. The prototypes stand in
// the module's header, where the compiler compares them with these definitions.
//
// Tables are named <Type>Schema, <Enumeration>Enum and <document>Document.
#pragma once

#include "Engines.h"

// ---- Base file ------------------------------------------------------------------------------------------------

#define QX_INIT(T)                                                                                                     \
  int QxInit_##T(RuntimeContext *ctx, T *record) { return ims::initRecord(ctx, T##Schema, record); }

#define QX_FREE(T)                                                                                                     \
  int QxMemFree_##T(RuntimeContext *ctx, T *record) { return ims::freeRecord(ctx, T##Schema, record); }

#define QX_PRINT(T)                                                                                                    \
  int QxPrint_##T(const char *name, const T *record) { return ims::printRecord(name, T##Schema, record); }

// A record that is a list of Item in its member list.
#define QX_APPEND(T, list, Item)                                                                                       \
  uint32_t Qx##T##_Append(RuntimeContext *ctx, T *record, Item *item) {                                                \
    return ims::appendItem(ctx, &record->list, item);                                                                  \
  }

#define QX_ENUM_TEXT(E)                                                                                                \
  const char *Qx##E##_ToString(uint32_t value) { return ims::enumText(E##Enum, value); }

#define QX_ENUM_CODE(E)                                                                                                \
  int Qx##E##_ToEnum(RuntimeContext *, const char *text, uint16_t *value) {                                            \
    return ims::enumCodeOfText(E##Enum, text, value);                                                                  \
  }

#define QX_ENUM_CODE_OF_BYTES(E)                                                                                       \
  int Qx##E##_ToEnum(const char *text, size_t length, uint16_t *value) {                                               \
    return ims::enumCode(E##Enum, text, length, value);                                                                \
  }

#define QX_ENUM_PRINT(E) QX_ENUM_PRINT_AS(QxPrint, E)
// Where the name with the usual prefix is another type's.
#define QX_ENUM_PRINT_AS(prefix, E)                                                                                    \
  int prefix##_##E(const char *name, uint32_t value) { return ims::printEnum(name, E##Enum, value); }

// ---- Encoders -------------------------------------------------------------------------------------------------

#define QX_ENCODE_TYPE(T)                                                                                              \
  int QxXmlET_##T(RuntimeContext *ctx, const T *record, const char *element, const RtxNamespace *ns) {                 \
    return ims::encodeType(ctx, T##Schema, record, element, ns);                                                       \
  }                                                                                                                    \
  int QxXmlET_##T##_StartElement(RuntimeContext *ctx, const T *record, const char *element, const RtxNamespace *ns) {  \
    return ims::encodeTypeStart(ctx, T##Schema, record, element, ns);                                                  \
  }                                                                                                                    \
  int QxXmlET_##T##_Contents(RuntimeContext *ctx, const T *record, const RtxNamespace *) {                             \
    return ims::encodeTypeContents(ctx, T##Schema, record);                                                            \
  }                                                                                                                    \
  int QxXmlET_##T##_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns) {                     \
    return ims::encodeTypeEnd(ctx, T##Schema, element, ns);                                                            \
  }

// For a type with attributes or declarations.
#define QX_ENCODE_ATTRIBUTES(T)                                                                                        \
  int QxXmlET_##T##_Attrs(RuntimeContext *ctx, const T *record, const RtxNamespace *ns) {                              \
    return ims::encodeTypeAttributes(ctx, T##Schema, record, ns);                                                      \
  }

#define QX_ENCODE_ENUM(E) QX_ENCODE_ENUM_AS(QxXmlET, E)
// Where the names with the usual prefix are another type's.
#define QX_ENCODE_ENUM_AS(prefix, E)                                                                                   \
  int prefix##_##E(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns) {                 \
    return ims::encodeEnum(ctx, E##Enum, value, element, ns);                                                          \
  }                                                                                                                    \
  int prefix##_##E##_StartElement(RuntimeContext *ctx, uint32_t, const char *element, const RtxNamespace *ns) {        \
    return ims::encodeEnumStart(ctx, E##Enum, element, ns);                                                            \
  }                                                                                                                    \
  int prefix##_##E##_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *) {                             \
    return ims::encodeEnumContents(ctx, E##Enum, value);                                                               \
  }                                                                                                                    \
  int prefix##_##E##_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns) {                    \
    return ims::encodeEnumEnd(ctx, E##Enum, element, ns);                                                              \
  }

// element is the root's name as it stands in the functions' names.
#define QX_ENCODE_DOCUMENT(element, T)                                                                                 \
  int QxXmlE_##element(RuntimeContext *ctx, const T *record) {                                                         \
    return ims::encodeDocument(ctx, element##Document, record);                                                        \
  }                                                                                                                    \
  int QxXmlE_##element##_StartElement(RuntimeContext *ctx, const T *record) {                                          \
    return ims::encodeDocumentStart(ctx, element##Document, record);                                                   \
  }                                                                                                                    \
  int QxXmlE_##element##_Contents(RuntimeContext *ctx, const T *record) {                                              \
    return ims::encodeDocumentContents(ctx, element##Document, record);                                                \
  }                                                                                                                    \
  int QxXmlE_##element##_EndElement(RuntimeContext *ctx, const T *) {                                                  \
    return ims::encodeDocumentEnd(ctx, element##Document);                                                             \
  }

// A document whose value is a code.
#define QX_ENCODE_CODE_DOCUMENT(element)                                                                               \
  int QxXmlE_##element(RuntimeContext *ctx, uint32_t value) {                                                          \
    auto code = static_cast<uint16_t>(value);                                                                          \
    return ims::encodeDocument(ctx, element##Document, &code);                                                         \
  }                                                                                                                    \
  int QxXmlE_##element##_StartElement(RuntimeContext *ctx, uint32_t) {                                                 \
    return ims::encodeDocumentStart(ctx, element##Document, nullptr);                                                  \
  }                                                                                                                    \
  int QxXmlE_##element##_Contents(RuntimeContext *ctx, uint32_t value) {                                               \
    auto code = static_cast<uint16_t>(value);                                                                          \
    return ims::encodeDocumentContents(ctx, element##Document, &code);                                                 \
  }                                                                                                                    \
  int QxXmlE_##element##_EndElement(RuntimeContext *ctx, uint32_t) {                                                   \
    return ims::encodeDocumentEnd(ctx, element##Document);                                                             \
  }

// ---- Document decoders and validators -------------------------------------------------------------------------

#define QX_DECODE_DOCUMENT(element, T)                                                                                 \
  int QxXmlD_##element(RuntimeContext *ctx, T *record) { return ims::decodeDocument(ctx, element##Document, record); }

#define QX_VALIDATE_DOCUMENT(element)                                                                                  \
  int QxXmlV_##element(RuntimeContext *ctx) { return ims::validateDocument(ctx, element##Document); }

// ---- Handlers -------------------------------------------------------------------------------------------------

#define QX_HANDLER_CALLBACKS(prefix, T, Handler)                                                                       \
  int prefix##_##T##_startElement(void *handler, const char *localName, const char *qualifiedName,                     \
                                  const char *const *attributes) {                                                     \
    return ims::walkStart(static_cast<Handler *>(handler), localName, qualifiedName, attributes);                      \
  }                                                                                                                    \
  int prefix##_##T##_characters(void *handler, const char *bytes, size_t length) {                                     \
    return ims::walkCharacters(static_cast<Handler *>(handler), bytes, length);                                        \
  }                                                                                                                    \
  int prefix##_##T##_endElement(void *handler, const char *localName, const char *qualifiedName) {                     \
    return ims::walkEnd(static_cast<Handler *>(handler), localName, qualifiedName);                                    \
  }

#define QX_SAX_HANDLER(T)                                                                                              \
  int QxSAX_##T##_init(RuntimeContext *ctx, SaxTypeHandler *handler, T *record, int32_t level) {                       \
    return ims::initHandler(ctx, T##Schema, handler, record, level);                                                   \
  }                                                                                                                    \
  QX_HANDLER_CALLBACKS(QxSAX, T, SaxTypeHandler)

#define QX_VSAX_HANDLER(T)                                                                                             \
  int QxVSAX_##T##_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level) {                                \
    return ims::initHandler(ctx, T##Schema, handler, level);                                                           \
  }                                                                                                                    \
  QX_HANDLER_CALLBACKS(QxVSAX, T, VsaxTypeHandler)

// The callbacks of a type, for its table.
#define QX_SAX_CALLBACKS(T)                                                                                            \
  { QxSAX_##T##_startElement, QxSAX_##T##_endElement, QxSAX_##T##_characters }
#define QX_VSAX_CALLBACKS(T)                                                                                           \
  { QxVSAX_##T##_startElement, QxVSAX_##T##_endElement, QxVSAX_##T##_characters }

// The options of a type with handlers; number is its own among the types of its module, whose schema is module.
#define QX_TYPE(T, number_, ...)                                                                                       \
  constexpr ims::TypeOptions T##Options = {.name = #T,                                                                 \
                                           .module = &module,                                                          \
                                           .number = number_,                                                          \
                                           .decoding = QX_SAX_CALLBACKS(T),                                            \
                                           .validating = QX_VSAX_CALLBACKS(T),                                         \
                                           __VA_ARGS__}

// The options of a choice, which has no handlers.
#define QX_CHOICE(T, number_, ...)                                                                                     \
  constexpr ims::TypeOptions T##Options = {                                                                            \
      .name = #T, .module = &module, .number = number_, .content = ims::Content::choice, __VA_ARGS__}
