/*
 * Authorisation rules: who may see or do what, and under which conditions. Root element "ruleset" in the namespace
 * "urn:ietf:params:xml:ns:common-policy".
 *
 * To send: QxInit_cp__ruleset, fill the members and presence bits, rtxSetOutput, QxXmlE_cp_ruleset, rtxGetOutput,
 * QxMemFree_cp__ruleset. To receive: rtxSetInput, QxXmlD_cp_ruleset (or QxXmlV_cp_ruleset, to check only), read the
 * record, QxMemFree_cp__ruleset.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLRULESET_H
#define QXXMLRULESET_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Bits of m are the optional members that are present. A record with a selector t is one of several alternatives:
 * 0 is none, any other names the member of u that counts. A member cp__any holds elements of other vocabularies as
 * XML text.
 */

enum {
  cp_oneType_has_any = 1
};

/* One identity. */
typedef struct cp_oneType {
  uint32_t m;
  RtxXmlString cp__any;
  RtxXmlString cp_id; /* a URI, its white space collapsed */
} cp_oneType;

enum {
  cp_exceptType_has_domain = 1,
  cp_exceptType_has_id = 2
};

/* Who is left out of many: a domain or one identity. */
typedef struct cp_exceptType {
  uint32_t m;
  RtxXmlString cp_domain; /* whose identities are left out */
  RtxXmlString cp_id;     /* the identity that is left out, a URI */
} cp_exceptType;

enum {
  cp_manyType_1_except = 1,
  cp_manyType_1_any = 2
};

/* What narrows the many: an exception, or an element of another vocabulary. */
typedef struct cp_manyType_1 {
  uint16_t t;
  union {
    cp_exceptType cp_except;
    RtxXmlString cp__any;
  } u;
} cp_manyType_1;

enum {
  cp_manyType_has_domain = 1
};

/* All authenticated identities, or those of one domain. */
typedef struct cp_manyType {
  uint32_t m;
  RtxList cp__choice;     /* of cp_manyType_1 */
  RtxXmlString cp_domain; /* the domain; absent: any */
} cp_manyType;

enum {
  cp_identityType_1_one = 1,
  cp_identityType_1_many = 2,
  cp_identityType_1_any = 3
};

/* One way to say who. */
typedef struct cp_identityType_1 {
  uint16_t t;
  union {
    cp_oneType cp_one;
    cp_manyType cp_many;
    RtxXmlString cp__any;
  } u;
} cp_identityType_1;

/* Holds for whoever fits one of the items, of which there is at least one when written. */
typedef struct cp_identityType {
  RtxList items; /* of cp_identityType_1 */
} cp_identityType;

/* Holds while the owner is in this sphere, "work" or "home", say. */
typedef struct cp_sphereType {
  RtxXmlString cp_value; /* the name of the sphere */
} cp_sphereType;

/* Holds from one date and time until another, both kept as text. */
typedef struct cp_validityType {
  RtxXmlString cp_from;  /* a date and time */
  RtxXmlString cp_until; /* a date and time */
} cp_validityType;

enum {
  cp_conditionsType_1_identity = 1,
  cp_conditionsType_1_sphere = 2,
  cp_conditionsType_1_validity = 3,
  cp_conditionsType_1_any = 4
};

/* One condition. */
typedef struct cp_conditionsType_1 {
  uint16_t t;
  union {
    cp_identityType cp_identity;
    cp_sphereType cp_sphere;
    cp_validityType cp_validity;
    RtxAnyList cp__any; /* a run of elements that stand side by side */
  } u;
} cp_conditionsType_1;

/* All of them must hold. */
typedef struct cp_conditionsType {
  RtxList items; /* of cp_conditionsType_1 */
} cp_conditionsType;

/* What is done, or what is left of what is shown: all in other vocabularies. */
typedef struct cp_extensibleType {
  RtxAnyList items; /* elements of other vocabularies */
} cp_extensibleType;

enum {
  cp_ruleType_has_conditions = 1,
  cp_ruleType_has_actions = 2,
  cp_ruleType_has_transformations = 4
};

/* A rule: who may, under which conditions. */
typedef struct cp_ruleType {
  uint32_t m;
  cp_conditionsType cp_conditions;      /* absent: it always holds */
  cp_extensibleType cp_actions;         /* what is then done */
  cp_extensibleType cp_transformations; /* what is then shown */
  RtxXmlString cp_id;                   /* unique in the rule set, its white space collapsed */
} cp_ruleType;

/* A document. */
typedef struct cp__ruleset {
  RtxList cp_rule; /* of cp_ruleType */
} cp__ruleset;

/* ---- Records ---------------------------------------------------------------------------------------------- */

/*
 * Makes a record empty: presence bits 0, texts null, lists empty, the same for records within; the selector of a
 * choice 0 and all of its union. An unusable context (null included) leaves the record untouched and gives
 * STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_cp_oneType(RuntimeContext *ctx, cp_oneType *record);
QX_API int QxInit_cp_exceptType(RuntimeContext *ctx, cp_exceptType *record);
QX_API int QxInit_cp_manyType_1(RuntimeContext *ctx, cp_manyType_1 *record);
QX_API int QxInit_cp_manyType(RuntimeContext *ctx, cp_manyType *record);
QX_API int QxInit_cp_identityType_1(RuntimeContext *ctx, cp_identityType_1 *record);
QX_API int QxInit_cp_identityType(RuntimeContext *ctx, cp_identityType *record);
QX_API int QxInit_cp_sphereType(RuntimeContext *ctx, cp_sphereType *record);
QX_API int QxInit_cp_validityType(RuntimeContext *ctx, cp_validityType *record);
QX_API int QxInit_cp_conditionsType_1(RuntimeContext *ctx, cp_conditionsType_1 *record);
QX_API int QxInit_cp_conditionsType(RuntimeContext *ctx, cp_conditionsType *record);
QX_API int QxInit_cp_extensibleType(RuntimeContext *ctx, cp_extensibleType *record);
QX_API int QxInit_cp_ruleType(RuntimeContext *ctx, cp_ruleType *record);
QX_API int QxInit_cp__ruleset(RuntimeContext *ctx, cp__ruleset *record);

/*
 * Frees what a record holds: texts, lists with their items, and the same for records within; optional members only
 * if their bit is set, of a choice only what the selector names. Clears no pointer and no bit: initialise the record
 * before using it again. The result has no meaning. The texts of cp_exceptType and cp_sphereType have no release
 * function: they stay on the heap as long as the heap does.
 */
QX_API int QxMemFree_cp_oneType(RuntimeContext *ctx, cp_oneType *record);
QX_API int QxMemFree_cp_manyType_1(RuntimeContext *ctx, cp_manyType_1 *record);
QX_API int QxMemFree_cp_manyType(RuntimeContext *ctx, cp_manyType *record);
QX_API int QxMemFree_cp_identityType_1(RuntimeContext *ctx, cp_identityType_1 *record);
QX_API int QxMemFree_cp_identityType(RuntimeContext *ctx, cp_identityType *record);
QX_API int QxMemFree_cp_validityType(RuntimeContext *ctx, cp_validityType *record);
QX_API int QxMemFree_cp_conditionsType_1(RuntimeContext *ctx, cp_conditionsType_1 *record);
QX_API int QxMemFree_cp_conditionsType(RuntimeContext *ctx, cp_conditionsType *record);
QX_API int QxMemFree_cp_extensibleType(RuntimeContext *ctx, cp_extensibleType *record);
QX_API int QxMemFree_cp_ruleType(RuntimeContext *ctx, cp_ruleType *record);
QX_API int QxMemFree_cp__ruleset(RuntimeContext *ctx, cp__ruleset *record);

/*
 * Prints a record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The result is
 * that of the last line: negative if it was refused.
 */
QX_API int QxPrint_cp_oneType(const char *name, const cp_oneType *record);
QX_API int QxPrint_cp_exceptType(const char *name, const cp_exceptType *record);
QX_API int QxPrint_cp_manyType_1(const char *name, const cp_manyType_1 *record);
QX_API int QxPrint_cp_manyType(const char *name, const cp_manyType *record);
QX_API int QxPrint_cp_identityType_1(const char *name, const cp_identityType_1 *record);
QX_API int QxPrint_cp_identityType(const char *name, const cp_identityType *record);
QX_API int QxPrint_cp_sphereType(const char *name, const cp_sphereType *record);
QX_API int QxPrint_cp_validityType(const char *name, const cp_validityType *record);
QX_API int QxPrint_cp_conditionsType_1(const char *name, const cp_conditionsType_1 *record);
QX_API int QxPrint_cp_conditionsType(const char *name, const cp_conditionsType *record);
QX_API int QxPrint_cp_extensibleType(const char *name, const cp_extensibleType *record);
QX_API int QxPrint_cp_ruleType(const char *name, const cp_ruleType *record);
QX_API int QxPrint_cp__ruleset(const char *name, const cp__ruleset *record);

/*
 * Appends an item, which must come from the context's heap. Returns the number of items, not a status: as many as
 * before if there was no storage, and the caller still owns item.
 */
QX_API uint32_t Qxcp_identityType_Append(RuntimeContext *ctx, cp_identityType *record, cp_identityType_1 *item);
QX_API uint32_t Qxcp_conditionsType_Append(RuntimeContext *ctx, cp_conditionsType *record, cp_conditionsType_1 *item);
QX_API uint32_t Qxcp_extensibleType_Append(RuntimeContext *ctx, cp_extensibleType *record, RtxXmlString *item);
QX_API uint32_t Qxcp__ruleset_Append(RuntimeContext *ctx, cp__ruleset *record, cp_ruleType *item);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors beside those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists): STATUS_INVALID_CHOICE [selector],
 * STATUS_CONSTRAINT_VIOLATION ["cp_identityType.count", 0] for an identity without an item, STATUS_INVALID_UTF8 for the
 * text of an element. What was written before the failure stays. The namespace is declared with the prefix "cp"
 * unless the context's namespaces are preset.
 *
 * The other three are its steps, for hosts that call them themselves between rtXmlEncStartDocument and
 * rtXmlEncEndDocument; outside a document a declaration would be the host's, and stay.
 */
QX_API int QxXmlE_cp_ruleset(RuntimeContext *ctx, const cp__ruleset *record);
QX_API int QxXmlE_cp_ruleset_StartElement(RuntimeContext *ctx, const cp__ruleset *record);
QX_API int QxXmlE_cp_ruleset_Contents(RuntimeContext *ctx, const cp__ruleset *record);
QX_API int QxXmlE_cp_ruleset_EndElement(RuntimeContext *ctx, const cp__ruleset *record);

/*
 * Writes one element of a type under a name and namespace of the caller's (null: without tags). _Attrs writes the
 * attributes alone into a start tag that is open. A choice has no element of its own: it is written as the element
 * that its selector names, and what is given as name and namespace must be null.
 */
QX_API int QxXmlET_cp_oneType(RuntimeContext *ctx, const cp_oneType *record, const char *element,
                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_oneType_StartElement(RuntimeContext *ctx, const cp_oneType *record, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_cp_oneType_Attrs(RuntimeContext *ctx, const cp_oneType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_oneType_Contents(RuntimeContext *ctx, const cp_oneType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_oneType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_exceptType(RuntimeContext *ctx, const cp_exceptType *record, const char *element,
                                 const RtxNamespace *ns);
QX_API int QxXmlET_cp_exceptType_StartElement(RuntimeContext *ctx, const cp_exceptType *record, const char *element,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_exceptType_Attrs(RuntimeContext *ctx, const cp_exceptType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_exceptType_Contents(RuntimeContext *ctx, const cp_exceptType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_exceptType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_manyType_1(RuntimeContext *ctx, const cp_manyType_1 *record, const char *element,
                                 const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_1_StartElement(RuntimeContext *ctx, const cp_manyType_1 *record, const char *element,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_1_Contents(RuntimeContext *ctx, const cp_manyType_1 *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_1_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_manyType(RuntimeContext *ctx, const cp_manyType *record, const char *element,
                               const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_StartElement(RuntimeContext *ctx, const cp_manyType *record, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_Attrs(RuntimeContext *ctx, const cp_manyType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_Contents(RuntimeContext *ctx, const cp_manyType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_manyType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_identityType_1(RuntimeContext *ctx, const cp_identityType_1 *record, const char *element,
                                     const RtxNamespace *ns);
QX_API int QxXmlET_cp_identityType_1_StartElement(RuntimeContext *ctx, const cp_identityType_1 *record,
                                                  const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_cp_identityType_1_Contents(RuntimeContext *ctx, const cp_identityType_1 *record,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_identityType_1_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_identityType(RuntimeContext *ctx, const cp_identityType *record, const char *element,
                                   const RtxNamespace *ns);
QX_API int QxXmlET_cp_identityType_StartElement(RuntimeContext *ctx, const cp_identityType *record, const char *element,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_cp_identityType_Contents(RuntimeContext *ctx, const cp_identityType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_identityType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_sphereType(RuntimeContext *ctx, const cp_sphereType *record, const char *element,
                                 const RtxNamespace *ns);
QX_API int QxXmlET_cp_sphereType_StartElement(RuntimeContext *ctx, const cp_sphereType *record, const char *element,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_sphereType_Attrs(RuntimeContext *ctx, const cp_sphereType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_sphereType_Contents(RuntimeContext *ctx, const cp_sphereType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_sphereType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_validityType(RuntimeContext *ctx, const cp_validityType *record, const char *element,
                                   const RtxNamespace *ns);
QX_API int QxXmlET_cp_validityType_StartElement(RuntimeContext *ctx, const cp_validityType *record, const char *element,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_cp_validityType_Contents(RuntimeContext *ctx, const cp_validityType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_validityType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_conditionsType_1(RuntimeContext *ctx, const cp_conditionsType_1 *record, const char *element,
                                       const RtxNamespace *ns);
QX_API int QxXmlET_cp_conditionsType_1_StartElement(RuntimeContext *ctx, const cp_conditionsType_1 *record,
                                                    const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_cp_conditionsType_1_Contents(RuntimeContext *ctx, const cp_conditionsType_1 *record,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_cp_conditionsType_1_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_conditionsType(RuntimeContext *ctx, const cp_conditionsType *record, const char *element,
                                     const RtxNamespace *ns);
QX_API int QxXmlET_cp_conditionsType_StartElement(RuntimeContext *ctx, const cp_conditionsType *record,
                                                  const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_cp_conditionsType_Contents(RuntimeContext *ctx, const cp_conditionsType *record,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_conditionsType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_extensibleType(RuntimeContext *ctx, const cp_extensibleType *record, const char *element,
                                     const RtxNamespace *ns);
QX_API int QxXmlET_cp_extensibleType_StartElement(RuntimeContext *ctx, const cp_extensibleType *record,
                                                  const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_cp_extensibleType_Contents(RuntimeContext *ctx, const cp_extensibleType *record,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_cp_extensibleType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp_ruleType(RuntimeContext *ctx, const cp_ruleType *record, const char *element,
                               const RtxNamespace *ns);
QX_API int QxXmlET_cp_ruleType_StartElement(RuntimeContext *ctx, const cp_ruleType *record, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_cp_ruleType_Attrs(RuntimeContext *ctx, const cp_ruleType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_ruleType_Contents(RuntimeContext *ctx, const cp_ruleType *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp_ruleType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_cp__ruleset(RuntimeContext *ctx, const cp__ruleset *record, const char *element,
                               const RtxNamespace *ns);
QX_API int QxXmlET_cp__ruleset_StartElement(RuntimeContext *ctx, const cp__ruleset *record, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_cp__ruleset_Contents(RuntimeContext *ctx, const cp__ruleset *record, const RtxNamespace *ns);
QX_API int QxXmlET_cp__ruleset_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH ["ruleset", found], and ["cp_rule", found] for a child of the root that is no rule,
 *   STATUS_UNKNOWN_ATTRIBUTE [type or child, attribute], STATUS_MISSING_ATTRIBUTE [type, attribute],
 *   STATUS_INVALID_ATTRIBUTE [type, attribute], STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_INVALID_CONTENT [text, "cp_validityType", element],
 *   STATUS_CONSTRAINT_VIOLATION [".count", 0] for an identity without an item.
 * A rule enters the list when its element has ended; so does a foreign element of actions and transformations.
 */
QX_API int QxXmlD_cp_ruleset(RuntimeContext *ctx, cp__ruleset *record);

/*
 * Checks the context's input without building a record: as decoding, but from and until must be dates and times,
 * foreign elements are not looked into (their own attributes are STATUS_UNKNOWN_ATTRIBUTE ["", attribute]), and an
 * identity may be empty.
 */
QX_API int QxXmlV_cp_ruleset(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; children with a handler of their own are then refused. The owner frees
 * delegateStorage.
 */
QX_API int QxSAX_cp_oneType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_oneType *record, int32_t level);
QX_API int QxSAX_cp_oneType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxSAX_cp_oneType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_oneType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_exceptType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_exceptType *record, int32_t level);
QX_API int QxSAX_cp_exceptType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxSAX_cp_exceptType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_exceptType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_manyType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_manyType *record, int32_t level);
QX_API int QxSAX_cp_manyType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxSAX_cp_manyType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_manyType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_identityType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_identityType *record,
                                      int32_t level);
QX_API int QxSAX_cp_identityType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxSAX_cp_identityType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_identityType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_sphereType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_sphereType *record, int32_t level);
QX_API int QxSAX_cp_sphereType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxSAX_cp_sphereType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_sphereType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_validityType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_validityType *record,
                                      int32_t level);
QX_API int QxSAX_cp_validityType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxSAX_cp_validityType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_validityType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_conditionsType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_conditionsType *record,
                                        int32_t level);
QX_API int QxSAX_cp_conditionsType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxSAX_cp_conditionsType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_conditionsType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_extensibleType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_extensibleType *record,
                                        int32_t level);
QX_API int QxSAX_cp_extensibleType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxSAX_cp_extensibleType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_extensibleType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp_ruleType_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp_ruleType *record, int32_t level);
QX_API int QxSAX_cp_ruleType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxSAX_cp_ruleType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp_ruleType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_cp__ruleset_init(RuntimeContext *ctx, SaxTypeHandler *handler, cp__ruleset *record, int32_t level);
QX_API int QxSAX_cp__ruleset_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxSAX_cp__ruleset_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_cp__ruleset_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_oneType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_oneType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxVSAX_cp_oneType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_oneType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_exceptType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_exceptType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxVSAX_cp_exceptType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_exceptType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_manyType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_manyType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxVSAX_cp_manyType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_manyType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_identityType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_identityType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxVSAX_cp_identityType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_identityType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_sphereType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_sphereType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxVSAX_cp_sphereType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_sphereType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_validityType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_validityType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxVSAX_cp_validityType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_validityType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_conditionsType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_conditionsType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                 const char *const *attributes);
QX_API int QxVSAX_cp_conditionsType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_conditionsType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_extensibleType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_extensibleType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                 const char *const *attributes);
QX_API int QxVSAX_cp_extensibleType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_extensibleType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp_ruleType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp_ruleType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxVSAX_cp_ruleType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp_ruleType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_cp__ruleset_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_cp__ruleset_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxVSAX_cp__ruleset_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_cp__ruleset_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
