/*
 * The composing indication: whether a chat peer is typing. Root element "isComposing" in the namespace
 * "urn:ietf:params:xml:ns:im-iscomposing".
 *
 * To send: QxInit_tns__isComposing, fill the members and presence bits, rtxSetOutput, QxXmlE_tns_isComposing,
 * rtxGetOutput, QxMemFree_tns__isComposing. To receive: rtxSetInput, QxXmlD_tns_isComposing (or
 * QxXmlV_tns_isComposing, to check only), read the record, QxMemFree_tns__isComposing.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLISCOMPOSING_H
#define QXXMLISCOMPOSING_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bits of m: the optional members that are present. */
enum {
  tns__isComposing_has_lastactive = 1,
  tns__isComposing_has_contenttype = 2,
  tns__isComposing_has_refresh = 4
};

/* One indication. */
typedef struct tns__isComposing {
  uint32_t m;
  RtxXmlString tns_state;       /* required; "active" or "idle", but kept as any text */
  RtxXmlString tns_lastactive;  /* a date and time, kept as text */
  RtxXmlString tns_contenttype; /* the MIME type of what is being composed */
  uint32_t tns_refresh;         /* seconds, above 0 */
  RtxAnyList anyElems;          /* elements of other vocabularies */
} tns__isComposing;

/* ---- Records ---------------------------------------------------------------------------------------------- */

/*
 * Makes a record empty: m 0, texts null, list empty; tns_refresh stays as it is, since only its presence bit gives
 * it a meaning. An unusable context (null included) leaves the record untouched and gives STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_tns__isComposing(RuntimeContext *ctx, tns__isComposing *record);

/*
 * Frees what the record holds: the state, optional texts whose bit is set, foreign elements. Clears no text
 * pointer and no bit: initialise the record before using it again. The result has no meaning.
 */
QX_API int QxMemFree_tns__isComposing(RuntimeContext *ctx, tns__isComposing *record);

/*
 * Prints the record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The result
 * is that of the last line: negative if it was refused.
 */
QX_API int QxPrint_tns__isComposing(const char *name, const tns__isComposing *record);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors beside those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists): STATUS_CONSTRAINT_VIOLATION
 * ["tns__isComposing.tns_refresh", value] for a refresh of 0, STATUS_INVALID_UTF8 for a text. What was written
 * before the failure stays. The other three are its steps, for hosts that call them themselves between
 * rtXmlEncStartDocument and rtXmlEncEndDocument; outside a document a declaration would be the host's, and stay.
 */
QX_API int QxXmlE_tns_isComposing(RuntimeContext *ctx, const tns__isComposing *record);
QX_API int QxXmlE_tns_isComposing_StartElement(RuntimeContext *ctx, const tns__isComposing *record);
QX_API int QxXmlE_tns_isComposing_Contents(RuntimeContext *ctx, const tns__isComposing *record);
QX_API int QxXmlE_tns_isComposing_EndElement(RuntimeContext *ctx, const tns__isComposing *record);

/* Writes one element of this type under a name and namespace of the caller's (null: without tags). */
QX_API int QxXmlET_tns__isComposing(RuntimeContext *ctx, const tns__isComposing *record, const char *element,
                                    const RtxNamespace *ns);
QX_API int QxXmlET_tns__isComposing_StartElement(RuntimeContext *ctx, const tns__isComposing *record,
                                                 const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__isComposing_Contents(RuntimeContext *ctx, const tns__isComposing *record,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tns__isComposing_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH ["isComposing", found], STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_UNKNOWN_ATTRIBUTE [child, attribute], STATUS_INVALID_CONTENT [text, "tns__isComposing", element],
 *   STATUS_CONSTRAINT_VIOLATION ["tns__isComposing.tns_refresh", value].
 */
QX_API int QxXmlD_tns_isComposing(RuntimeContext *ctx, tns__isComposing *record);

/*
 * Checks the context's input without building a record: as decoding, but lastactive must be a date and time,
 * foreign elements are not looked into, and the parameter for a refresh of 0 is "refresh".
 */
QX_API int QxXmlV_tns_isComposing(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; foreign elements are then refused. The owner frees delegateStorage.
 */
QX_API int QxSAX_tns__isComposing_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__isComposing *record,
                                       int32_t level);
QX_API int QxSAX_tns__isComposing_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxSAX_tns__isComposing_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__isComposing_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__isComposing_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__isComposing_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxVSAX_tns__isComposing_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__isComposing_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
