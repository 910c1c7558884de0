/*
 * Notification filters: what of a resource's state a subscriber wants to be told, and when. Root element "filter-set"
 * in the namespace "urn:ietf:params:xml:ns:simple-filter".
 *
 * To send: QxInit_FilterSetType, fill the members and presence bits, rtxSetOutput, QxXmlE_filter_set, rtxGetOutput,
 * QxMemFree_FilterSetType. To receive: rtxSetInput, QxXmlD_filter_set (or QxXmlV_filter_set, to check only), read the
 * record, QxMemFree_FilterSetType.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLFILTERSET_H
#define QXXMLFILTERSET_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* How an expression names what it selects. */
typedef uint16_t TypeType;
enum {
  TypeType_xpath = 0,
  TypeType_namespace = 1
};

/* ---- Records ---------------------------------------------------------------------------------------------- */

/*
 * Bits of m are the optional members that are present. Members _anyAttr hold attributes of other vocabularies, members
 * _any elements of such as XML text.
 */

/* A prefix that expressions use. */
typedef struct NSBinding {
  RtxXmlString prefix; /* without colon */
  RtxXmlString urn;    /* a URI, its white space collapsed */
} NSBinding;

/* The prefixes of all expressions. */
typedef struct NSBindings {
  RtxList ns_binding; /* of NSBinding; at least one when written */
} NSBindings;

enum {
  InclType_has_type = 1,
  ExclType_has_type = 1
};

/* An expression for what is to be sent. */
typedef struct InclType {
  uint32_t m;
  RtxXmlString value; /* the expression */
  TypeType type;      /* xpath unless said otherwise */
  RtxAttrList _anyAttr;
  RtxNsDeclList nsDecls; /* the declarations on the element, which value may use */
} InclType;

/* An expression for what is to be left out. */
typedef struct ExclType {
  uint32_t m;
  RtxXmlString value; /* the expression */
  TypeType type;      /* xpath unless said otherwise */
  RtxAttrList _anyAttr;
  RtxNsDeclList nsDecls; /* the declarations on the element, which value may use */
} ExclType;

/* What is sent. */
typedef struct WhatType {
  RtxList include; /* of InclType */
  RtxList exclude; /* of ExclType */
  RtxAnyList _any;
} WhatType;

enum {
  ChangedType_has_from = 1,
  ChangedType_has_to = 2,
  ChangedType_has_by = 4
};

/* Fires when the value of an expression changes: from and to certain values, or by a certain amount. */
typedef struct ChangedType {
  uint32_t m;
  RtxXmlString value; /* the expression */
  RtxXmlString from;  /* the value before */
  RtxXmlString to;    /* the value after */
  double by;          /* the least amount of change */
  RtxAttrList _anyAttr;
  RtxNsDeclList nsDecls;
} ChangedType;

/* Fires when all of its conditions hold. */
typedef struct TriggerType {
  RtxList changed; /* of ChangedType */
  RtxList added;   /* of RtxXmlString: expressions */
  RtxList removed; /* of RtxXmlString: expressions */
  RtxAnyList _any;
} TriggerType;

enum {
  FilterType_has_what = 1,
  FilterType_has_uri = 2,
  FilterType_has_domain = 4,
  FilterType_has_remove = 8,
  FilterType_has_enabled = 16
};

/* One filter: what is sent, when, and of which resources. */
typedef struct FilterType {
  uint32_t m;
  WhatType what;   /* what is sent */
  RtxList trigger; /* of TriggerType: when; one that fires is enough */
  RtxAnyList _any;
  RtxXmlString id;     /* unique among the filters of a subscription */
  RtxXmlString uri;    /* of the resource, its white space collapsed */
  RtxXmlString domain; /* of the resources */
  bool remove_;        /* takes back the filter of this id; false unless said otherwise */
  bool enabled;        /* true unless said otherwise */
  RtxAttrList _anyAttr;
} FilterType;

enum {
  FilterSetType_has_ns_bindings = 1,
  FilterSetType_has_package = 2
};

/* A document: the filters of a subscription. */
typedef struct FilterSetType {
  uint32_t m;
  NSBindings ns_bindings; /* the prefixes of all expressions */
  RtxList filter;         /* of FilterType */
  RtxXmlString package_;  /* the event package */
  RtxAttrList _anyAttr;
} FilterSetType;

/*
 * Makes a record empty: presence bits 0, texts null, lists empty, the same for records within. The type of an
 * expression becomes xpath, remove_ false and enabled true, though their bits are clear; by stays as it is. An unusable
 * context (null included) leaves the record untouched and gives STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_NSBinding(RuntimeContext *ctx, NSBinding *record);
QX_API int QxInit_NSBindings(RuntimeContext *ctx, NSBindings *record);
QX_API int QxInit_InclType(RuntimeContext *ctx, InclType *record);
QX_API int QxInit_ExclType(RuntimeContext *ctx, ExclType *record);
QX_API int QxInit_WhatType(RuntimeContext *ctx, WhatType *record);
QX_API int QxInit_ChangedType(RuntimeContext *ctx, ChangedType *record);
QX_API int QxInit_TriggerType(RuntimeContext *ctx, TriggerType *record);
QX_API int QxInit_FilterType(RuntimeContext *ctx, FilterType *record);
QX_API int QxInit_FilterSetType(RuntimeContext *ctx, FilterSetType *record);

/*
 * Frees what a record holds: texts, lists with their items, and the same for records within; optional members only
 * if their bit is set. Clears no pointer and no bit: initialise the record before using it again. The result has no
 * meaning. The texts of NSBinding have no release function: they stay on the heap as long as the heap does.
 */
QX_API int QxMemFree_NSBindings(RuntimeContext *ctx, NSBindings *record);
QX_API int QxMemFree_InclType(RuntimeContext *ctx, InclType *record);
QX_API int QxMemFree_ExclType(RuntimeContext *ctx, ExclType *record);
QX_API int QxMemFree_WhatType(RuntimeContext *ctx, WhatType *record);
QX_API int QxMemFree_ChangedType(RuntimeContext *ctx, ChangedType *record);
QX_API int QxMemFree_TriggerType(RuntimeContext *ctx, TriggerType *record);
QX_API int QxMemFree_FilterType(RuntimeContext *ctx, FilterType *record);
QX_API int QxMemFree_FilterSetType(RuntimeContext *ctx, FilterSetType *record);

/*
 * Prints a record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The type of an
 * expression, remove_ and enabled are printed whether present or not. The result is that of the last line: negative if
 * it was refused.
 */
QX_API int QxPrint_NSBinding(const char *name, const NSBinding *record);
QX_API int QxPrint_NSBindings(const char *name, const NSBindings *record);
QX_API int QxPrint_InclType(const char *name, const InclType *record);
QX_API int QxPrint_ExclType(const char *name, const ExclType *record);
QX_API int QxPrint_WhatType(const char *name, const WhatType *record);
QX_API int QxPrint_ChangedType(const char *name, const ChangedType *record);
QX_API int QxPrint_TriggerType(const char *name, const TriggerType *record);
QX_API int QxPrint_FilterType(const char *name, const FilterType *record);
QX_API int QxPrint_FilterSetType(const char *name, const FilterSetType *record);

/*
 * Appends a binding, which must come from the context's heap. Returns the number of bindings, not a status: as many as
 * before if there was no storage, and the caller still owns item.
 */
QX_API uint32_t QxNSBindings_Append(RuntimeContext *ctx, NSBindings *record, NSBinding *item);

/* The text of a code, "_UNKNOWN_" for one that has none. Only the low 16 bits of value count. */
QX_API const char *QxTypeType_ToString(uint32_t value);

/*
 * The code of a text of length bytes, compared exactly; text and value may be null. STATUS_ENUM_NOT_FOUND, not
 * recorded, for any other text; value is then untouched. Needs no context.
 */
QX_API int QxTypeType_ToEnum(const char *text, size_t length, uint16_t *value);

/* Prints a line with the text of a code, as the printers of records do. */
QX_API int QxPrint_TypeType(const char *name, uint32_t value);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors beside those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists): STATUS_CONSTRAINT_VIOLATION ["NSBindings.count", 0] for
 * bindings without an item, STATUS_INVALID_UTF8 for the text of an element, and for a by that is no finite number. A
 * type without a text is written as "_UNKNOWN_". What was written before the failure stays. A failing attribute of the
 * root itself is recorded but does not end the document, unless there is no room for it. The namespace is always
 * declared, as the default. Foreign attributes are written by the names they have; their prefixes must be declared, on
 * an expression by its own nsDecls.
 *
 * The other three are its steps, for hosts that call them themselves between rtXmlEncStartDocument and
 * rtXmlEncEndDocument; outside a document a declaration would be the host's, and stay.
 */
QX_API int QxXmlE_filter_set(RuntimeContext *ctx, const FilterSetType *record);
QX_API int QxXmlE_filter_set_StartElement(RuntimeContext *ctx, const FilterSetType *record);
QX_API int QxXmlE_filter_set_Contents(RuntimeContext *ctx, const FilterSetType *record);
QX_API int QxXmlE_filter_set_EndElement(RuntimeContext *ctx, const FilterSetType *record);

/*
 * Writes one element of a type under a name and namespace of the caller's (null: without tags). _Attrs writes the
 * attributes, and what declarations the record holds, into a start tag that is open.
 */
QX_API int QxXmlET_NSBinding(RuntimeContext *ctx, const NSBinding *record, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_NSBinding_StartElement(RuntimeContext *ctx, const NSBinding *record, const char *element,
                                          const RtxNamespace *ns);
QX_API int QxXmlET_NSBinding_Attrs(RuntimeContext *ctx, const NSBinding *record, const RtxNamespace *ns);
QX_API int QxXmlET_NSBinding_Contents(RuntimeContext *ctx, const NSBinding *record, const RtxNamespace *ns);
QX_API int QxXmlET_NSBinding_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_NSBindings(RuntimeContext *ctx, const NSBindings *record, const char *element,
                              const RtxNamespace *ns);
QX_API int QxXmlET_NSBindings_StartElement(RuntimeContext *ctx, const NSBindings *record, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_NSBindings_Contents(RuntimeContext *ctx, const NSBindings *record, const RtxNamespace *ns);
QX_API int QxXmlET_NSBindings_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_InclType(RuntimeContext *ctx, const InclType *record, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_InclType_StartElement(RuntimeContext *ctx, const InclType *record, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_InclType_Attrs(RuntimeContext *ctx, const InclType *record, const RtxNamespace *ns);
QX_API int QxXmlET_InclType_Contents(RuntimeContext *ctx, const InclType *record, const RtxNamespace *ns);
QX_API int QxXmlET_InclType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_ExclType(RuntimeContext *ctx, const ExclType *record, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_ExclType_StartElement(RuntimeContext *ctx, const ExclType *record, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_ExclType_Attrs(RuntimeContext *ctx, const ExclType *record, const RtxNamespace *ns);
QX_API int QxXmlET_ExclType_Contents(RuntimeContext *ctx, const ExclType *record, const RtxNamespace *ns);
QX_API int QxXmlET_ExclType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_WhatType(RuntimeContext *ctx, const WhatType *record, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_WhatType_StartElement(RuntimeContext *ctx, const WhatType *record, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_WhatType_Contents(RuntimeContext *ctx, const WhatType *record, const RtxNamespace *ns);
QX_API int QxXmlET_WhatType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_ChangedType(RuntimeContext *ctx, const ChangedType *record, const char *element,
                               const RtxNamespace *ns);
QX_API int QxXmlET_ChangedType_StartElement(RuntimeContext *ctx, const ChangedType *record, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_ChangedType_Attrs(RuntimeContext *ctx, const ChangedType *record, const RtxNamespace *ns);
QX_API int QxXmlET_ChangedType_Contents(RuntimeContext *ctx, const ChangedType *record, const RtxNamespace *ns);
QX_API int QxXmlET_ChangedType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_TriggerType(RuntimeContext *ctx, const TriggerType *record, const char *element,
                               const RtxNamespace *ns);
QX_API int QxXmlET_TriggerType_StartElement(RuntimeContext *ctx, const TriggerType *record, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_TriggerType_Contents(RuntimeContext *ctx, const TriggerType *record, const RtxNamespace *ns);
QX_API int QxXmlET_TriggerType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_FilterType(RuntimeContext *ctx, const FilterType *record, const char *element,
                              const RtxNamespace *ns);
QX_API int QxXmlET_FilterType_StartElement(RuntimeContext *ctx, const FilterType *record, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_FilterType_Attrs(RuntimeContext *ctx, const FilterType *record, const RtxNamespace *ns);
QX_API int QxXmlET_FilterType_Contents(RuntimeContext *ctx, const FilterType *record, const RtxNamespace *ns);
QX_API int QxXmlET_FilterType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_FilterSetType(RuntimeContext *ctx, const FilterSetType *record, const char *element,
                                 const RtxNamespace *ns);
QX_API int QxXmlET_FilterSetType_StartElement(RuntimeContext *ctx, const FilterSetType *record, const char *element,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_FilterSetType_Attrs(RuntimeContext *ctx, const FilterSetType *record, const RtxNamespace *ns);
QX_API int QxXmlET_FilterSetType_Contents(RuntimeContext *ctx, const FilterSetType *record, const RtxNamespace *ns);
QX_API int QxXmlET_FilterSetType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* The same for a code, written as its text. Without a name, the text goes into the attribute that is being written. */
QX_API int QxXmlET_TypeType(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_TypeType_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_TypeType_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_TypeType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH ["filter-set", found], and ["ns_binding", found] for a child that is no binding,
 *   STATUS_ENUM_NOT_FOUND [text] for a type,
 *   STATUS_UNKNOWN_ATTRIBUTE and STATUS_INVALID_ATTRIBUTE ["NSBinding", attribute], STATUS_UNKNOWN_ATTRIBUTE
 *   ["added" or "removed", attribute]: other elements keep foreign attributes or ignore them,
 *   STATUS_MISSING_ATTRIBUTE [type, attribute], STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_INVALID_CONTENT [text, "TriggerType", element],
 *   STATUS_CONSTRAINT_VIOLATION ["NSBindings.count", 0].
 * A remove, enabled or by that does not convert is no error; its bit is set all the same, as is that of a type.
 */
QX_API int QxXmlD_filter_set(RuntimeContext *ctx, FilterSetType *record);

/*
 * Checks the context's input without building a record: as decoding, but foreign elements are not looked into (their
 * own attributes are STATUS_UNKNOWN_ATTRIBUTE ["", attribute]), and bindings may be without an item.
 */
QX_API int QxXmlV_filter_set(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; children with a handler of their own are then refused. The owner frees
 * delegateStorage.
 */
QX_API int QxSAX_NSBinding_init(RuntimeContext *ctx, SaxTypeHandler *handler, NSBinding *record, int32_t level);
QX_API int QxSAX_NSBinding_startElement(void *handler, const char *localName, const char *qualifiedName,
                                        const char *const *attributes);
QX_API int QxSAX_NSBinding_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_NSBinding_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_NSBindings_init(RuntimeContext *ctx, SaxTypeHandler *handler, NSBindings *record, int32_t level);
QX_API int QxSAX_NSBindings_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxSAX_NSBindings_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_NSBindings_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_InclType_init(RuntimeContext *ctx, SaxTypeHandler *handler, InclType *record, int32_t level);
QX_API int QxSAX_InclType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                       const char *const *attributes);
QX_API int QxSAX_InclType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_InclType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_ExclType_init(RuntimeContext *ctx, SaxTypeHandler *handler, ExclType *record, int32_t level);
QX_API int QxSAX_ExclType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                       const char *const *attributes);
QX_API int QxSAX_ExclType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_ExclType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_WhatType_init(RuntimeContext *ctx, SaxTypeHandler *handler, WhatType *record, int32_t level);
QX_API int QxSAX_WhatType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                       const char *const *attributes);
QX_API int QxSAX_WhatType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_WhatType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_ChangedType_init(RuntimeContext *ctx, SaxTypeHandler *handler, ChangedType *record, int32_t level);
QX_API int QxSAX_ChangedType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxSAX_ChangedType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_ChangedType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_TriggerType_init(RuntimeContext *ctx, SaxTypeHandler *handler, TriggerType *record, int32_t level);
QX_API int QxSAX_TriggerType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxSAX_TriggerType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_TriggerType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_FilterType_init(RuntimeContext *ctx, SaxTypeHandler *handler, FilterType *record, int32_t level);
QX_API int QxSAX_FilterType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxSAX_FilterType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_FilterType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_FilterSetType_init(RuntimeContext *ctx, SaxTypeHandler *handler, FilterSetType *record, int32_t level);
QX_API int QxSAX_FilterSetType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxSAX_FilterSetType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_FilterSetType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_NSBinding_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_NSBinding_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxVSAX_NSBinding_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_NSBinding_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_NSBindings_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_NSBindings_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxVSAX_NSBindings_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_NSBindings_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_InclType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_InclType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                        const char *const *attributes);
QX_API int QxVSAX_InclType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_InclType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_ExclType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_ExclType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                        const char *const *attributes);
QX_API int QxVSAX_ExclType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_ExclType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_WhatType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_WhatType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                        const char *const *attributes);
QX_API int QxVSAX_WhatType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_WhatType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_ChangedType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_ChangedType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxVSAX_ChangedType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_ChangedType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_TriggerType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_TriggerType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxVSAX_TriggerType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_TriggerType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_FilterType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_FilterType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxVSAX_FilterType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_FilterType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_FilterSetType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_FilterSetType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxVSAX_FilterSetType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_FilterSetType_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
