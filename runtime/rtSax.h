/*
 * The event-driven reader, the lookups that its handlers use, and the handlers that the runtime brings along.
 *
 * What a handler may rely on:
 * - One start and one end callback per element, in document order; character data in any number of pieces, CDATA
 *   sections and references resolved. Comments and processing instructions are not delivered.
 * - Attributes, namespace declarations among them, come as name and value in document order, ended by a null
 *   name; the array may be null. Values are NUL-terminated, writable copies that live during the callback.
 * - The element's declarations are bound before its start callback and gone after its end.
 * - A start callback that asks to skip, or returns non-zero: nothing of that element follows, nor its end tag.
 * - A characters callback that asks to skip: nothing inside the element follows but its end tag; before that
 *   the state is 0 and the collection buffer empty. Its result, and that of an end callback, is ignored.
 * - Nothing stops the parse but the document itself; after the first fatal error no callback follows.
 */
#ifndef RT_SAX_H
#define RT_SAX_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A start tag. Non-zero skips the element. What the arguments point at lives during the callback. */
typedef int (*RtSaxStartElement)(void *handler, const char *localName, const char *qualifiedName,
                                 const char *const *attributes);

/* An end tag; the result does not matter. */
typedef int (*RtSaxEndElement)(void *handler, const char *localName, const char *qualifiedName);

/* Character data, without a NUL behind it; the result does not matter. */
typedef int (*RtSaxCharacters)(void *handler, const char *bytes, size_t length);

/* The owner has no more use for the handler. */
typedef void (*RtSaxRelease)(RuntimeContext *ctx, void *handler);

/*
 * How every handler begins, and how an owner looks at a handler of any type: hence it may alias them. The owner
 * frees the delegateStorage.
 */
typedef struct RTX_MAY_ALIAS RtSaxHandler {
  RtSaxStartElement startElement; /* never null */
  RtSaxEndElement endElement;     /* never null */
  RtSaxCharacters characters;     /* never null */
  RtSaxRelease release;           /* null: nothing to do */
  void *delegateStorage;          /* block of the heap for the handler of a child; null: none yet */
} RtSaxHandler;

/* Bytes of a block that holds any handler of the codec or of a runtime. */
enum {
  RTSAX_DELEGATE_SIZE = 160
};

/* A handler that fills a record. */
typedef struct SaxTypeHandler {
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
  RtSaxRelease release;
  void *delegateStorage;
  RuntimeContext *context; /* whose reader drives it */
  const char *rootName;    /* expected name of the handler's own element, null: any */
  int32_t level;           /* open elements, the handler's own included */
  int32_t startLevel;      /* that its init was given: 0 */
  int16_t elementId;       /* of the child being read */
  uint8_t contentState;    /* which children may come next: a column of the type's state table */
  void *record;            /* what is filled */
  uint32_t seenRequired;   /* one bit for each required child */
  RtSaxHandler *delegate;  /* receives the events of a child while that is open */
  /* Of the engine that drives the handler. */
  const void *type;
  const void *field;    /* of the child being read */
  void *pendingItem;    /* an item that enters its list only at its end */
  RtXmlHexState hex;    /* of a child in hexadecimal text */
  bool foreignDelegate; /* delegate is a handler of the runtime */
} SaxTypeHandler;

/* A handler that only checks: the same without a record. */
typedef struct VsaxTypeHandler {
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
  RtSaxRelease release;
  void *delegateStorage;
  RuntimeContext *context;
  const char *rootName;
  int32_t level;
  int32_t startLevel;
  int16_t elementId;
  uint8_t contentState;
  uint32_t seenRequired;
  RtSaxHandler *delegate;
  /* Of the engine that drives the handler. */
  const void *type;
  const void *field;    /* of the child being read */
  void *pendingItem;    /* an item that enters its list only at its end */
  RtXmlHexState hex;    /* of a child in hexadecimal text */
  bool foreignDelegate; /* delegate is a handler of the runtime */
} VsaxTypeHandler;

/* ---- Reader ----------------------------------------------------------------------------------------------- */

/* A parse of a context's input; the runtime's own. */
typedef struct RtSaxReader RtSaxReader;

/*
 * A reader of the context's input that calls back with handler; null if the context is unusable or has no
 * input, or there is no storage. One reader of a context at a time. Starts the count of errors anew. Until its release
 * names mean what the document declares, not what the host has.
 *
 * Every reader takes UTF-8; the one over libxml2 also takes UTF-16, ISO-8859-1 and US-ASCII.
 */
RTX_API RtSaxReader *rtSaxCCreateXmlReader(RuntimeContext *ctx, void *handler, RtSaxStartElement startElement,
                                           RtSaxEndElement endElement, RtSaxCharacters characters);

/*
 * Reads the document to its end. 0 if it is well-formed, whatever the handlers made of it; else
 * STATUS_PARSE_FAILED, STATUS_LIMIT_EXCEEDED or STATUS_NO_MEMORY, recorded with its place, or STATUS_BAD_CONTEXT for a
 * reader that is null, released or parsing already.
 */
RTX_API int rtSaxCParse(RtSaxReader *reader);

/* Ends a reader and puts the context's text buffer and namespace bindings back. Null is a no-op. */
RTX_API void rtSaxCReleaseReader(RtSaxReader *reader);

/* ---- Lookups ---------------------------------------------------------------------------------------------- */

/* A maxOccurs without bound. */
#define RTSAX_UNBOUNDED UINT32_MAX
enum {
  RTSAX_NOT_ALLOWED = 0xFF,
  RTSAX_FINAL = 0xFE,
  RTSAX_NO_ELEMENT = 65535
};

/* A child particle; the row number is the element id. An empty name stands for any element. */
typedef struct RtSaxElementInfo {
  const char *name;       /* the local name */
  int32_t namespaceIndex; /* in the URI table; -1: no namespace */
  uint32_t minOccurs;     /* the occurrence columns describe; the state table alone decides */
  uint32_t maxOccurs;     /* or RTSAX_UNBOUNDED */
} RtSaxElementInfo;

/*
 * Element id of a child start tag that is allowed in *contentState, which moves on; RTSAX_NO_ELEMENT if it is
 * not allowed. states has a row of stateCount cells an element: the next state, RTSAX_NOT_ALLOWED, or
 * RTSAX_FINAL, after which no child is allowed.
 * A named row matches the local name in its namespace or in none; if one matches, its cell decides. Otherwise
 * the wildcard row takes an element of another namespace or of none. currentElementId does not matter.
 */
RTX_API uint16_t rtSaxGetElemID8(uint8_t *contentState, int16_t currentElementId, const char *localName,
                                 int namespaceIndex, const RtSaxElementInfo *elements, const uint8_t *states,
                                 uint32_t elementCount, uint32_t stateCount);

/*
 * The same by local name alone and without the wildcard. An element that is refused is recorded as
 * STATUS_UNEXPECTED_ELEMENT [qualifiedName] if the error count allows, and skipped in any case.
 */
RTX_API uint16_t rtSaxLookupElemID8(RuntimeContext *ctx, uint8_t *contentState, int16_t currentElementId,
                                    const char *localName, const char *qualifiedName, int namespaceIndex,
                                    const RtSaxElementInfo *elements, const uint8_t *states, uint32_t elementCount,
                                    uint32_t stateCount);

/* Index of an attribute name and its bit set in *seen; -1 if the name is not in the table. */
RTX_API int rtSaxGetAttributeID(const char *name, uint32_t count, const char *const *names, uint32_t *seen);

/*
 * Records STATUS_MISSING_ATTRIBUTE [typeName, attribute] for each required bit that is not in *seen, as far as
 * the error count allows. 0 if none is missing, else the status.
 */
RTX_API int rtSaxTestAttributesPresent(RuntimeContext *ctx, const uint32_t *seen, uint32_t required,
                                       const char *const *names, uint32_t count, const char *typeName);

/*
 * Records STATUS_UNKNOWN_ATTRIBUTE [elementName, attribute] for each attribute that is neither a declaration, which is
 * a name that begins with "xmlns", nor of the schema instance, as far as the error count allows. 0 if there is none,
 * else the status.
 */
RTX_API int rtSaxReportUnexpAttrs(RuntimeContext *ctx, const char *const *attributes, const char *elementName);

/* Counts an error of the reader at work. Non-zero if it is to be recorded; without a reader, unless the limit is 0. */
RTX_API int rtSaxIncErrors(RuntimeContext *ctx);

/*
 * Asks the reader to skip the rest of the current element, whatever the status. In an end callback, and without
 * a reader, nothing is left to skip. Returns status.
 */
RTX_API int rtSaxSetSkipLevelToCurrent(RuntimeContext *ctx, int status);

/*
 * Trace of the entry and exit of a callback of a SaxTypeHandler or VsaxTypeHandler, for the option trace. Called while
 * the context is traced; without effect otherwise.
 */
RTX_API void rtSaxDiagStartFunc(void *handler, const char *function, const char *element);
RTX_API void rtSaxDiagEndFunc(void *handler, const char *function, const char *element);

/* ---- Handlers of the runtime ------------------------------------------------------------------------------ */

/*
 * Makes block (RTSAX_DELEGATE_SIZE bytes) a handler that captures the element that it is given, with all it
 * holds, as XML text which means the same on its own. entry takes the text, on the heap, at the element's end
 * tag and is not touched before. level is 0. Returns 0, STATUS_NO_MEMORY or STATUS_BAD_CONTEXT.
 *
 * If SAXAnyStartElement fails for the element itself, the handler has given back what it took: the codec then drops the
 * block without a call of release.
 */
RTX_API int SAXAnyInit(RuntimeContext *ctx, void *block, RtxXmlString *entry, int32_t level);
RTX_API int SAXAnyStartElement(void *handler, const char *localName, const char *qualifiedName,
                               const char *const *attributes);

/*
 * A handler for a document whose root holds only text. The text is collected, and at the root's end tag the
 * context's text buffer points at it. Another root name is recorded as STATUS_ROOT_MISMATCH, child elements as
 * STATUS_UNEXPECTED_ELEMENT and skipped, attributes as by rtSaxReportUnexpAttrs.
 */
RTX_API int SAXSimpleTypeInit(RuntimeContext *ctx, SaxTypeHandler *handler, const char *rootName);
RTX_API int SAXSimpleTypeStartElement(void *handler, const char *localName, const char *qualifiedName,
                                      const char *const *attributes);
RTX_API int SAXSimpleTypeCharacters(void *handler, const char *bytes, size_t length);
RTX_API int SAXSimpleTypeEndElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
