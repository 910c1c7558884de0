/*
 * The 3GPP IMS body: that another service stands in for the one asked for, or information for a service. Root elements
 * "ims-3gpp", "type" and "action", in no namespace.
 *
 * To send: QxInit_tIMS3GPP, fill the members and the selector, rtxSetOutput, QxXmlE_ims_3gpp, rtxGetOutput,
 * QxMemFree_tIMS3GPP. To receive: rtxSetInput, QxXmlD_ims_3gpp (or QxXmlV_ims_3gpp, to check only), read the record,
 * QxMemFree_tIMS3GPP.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLIMCN_H
#define QXXMLIMCN_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---------------------------------------------------------------------------------------------- */

/*
 * Members anyElems hold elements of other vocabularies as XML text, members _anyAttr attributes that the schema does
 * not name. A selector t of 0 is none, any other names the member of u that counts.
 */

/* What stands in for the service, and why. */
typedef struct tAlternativeService {
  RtxXmlString type;   /* of the service that stands in, such as "emergency" */
  RtxXmlString reason; /* for people */
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
} tAlternativeService;

enum {
  tIMS3GPP_1_alternative_service = 1,
  tIMS3GPP_1_service_info = 2
};

/* What the body is about. */
typedef struct tIMS3GPP_1 {
  uint16_t t;
  union {
    tAlternativeService alternative_service;
    RtxXmlString service_info;
  } u;
} tIMS3GPP_1;

/* A document. */
typedef struct tIMS3GPP {
  tIMS3GPP_1 _choice1; /* what it is about */
  RtxAnyList anyElems;
  double version; /* of the format; required, and without a default: set it before encoding */
  RtxAttrList _anyAttr;
} tIMS3GPP;

/*
 * Makes a record empty: texts null, lists empty, the same for records within; the selector of the choice 0 and all of
 * its union. version stays as it is. An unusable context (null included) leaves the record untouched and gives
 * STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_tAlternativeService(RuntimeContext *ctx, tAlternativeService *record);
QX_API int QxInit_tIMS3GPP_1(RuntimeContext *ctx, tIMS3GPP_1 *record);
QX_API int QxInit_tIMS3GPP(RuntimeContext *ctx, tIMS3GPP *record);

/*
 * Frees what a record holds: texts, lists with their items, and the same for records within; of the choice only what
 * the selector names. Clears no pointer: initialise the record before using it again. The result has no meaning.
 */
QX_API int QxMemFree_tAlternativeService(RuntimeContext *ctx, tAlternativeService *record);
QX_API int QxMemFree_tIMS3GPP_1(RuntimeContext *ctx, tIMS3GPP_1 *record);
QX_API int QxMemFree_tIMS3GPP(RuntimeContext *ctx, tIMS3GPP *record);

/*
 * Prints a record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The result is
 * that of the last line: negative if it was refused.
 */
QX_API int QxPrint_tAlternativeService(const char *name, const tAlternativeService *record);
QX_API int QxPrint_tIMS3GPP_1(const char *name, const tIMS3GPP_1 *record);
QX_API int QxPrint_tIMS3GPP(const char *name, const tIMS3GPP *record);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors beside those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists): STATUS_INVALID_CHOICE [selector], STATUS_INVALID_UTF8 for the
 * text of an element. What was written before the failure stays. A failing attribute of the root itself (a version
 * that is no finite number, say) is recorded but does not end the document, unless there is no room for it. Foreign
 * attributes are written by the names they have; their prefixes must be declared.
 *
 * The other three are its steps, for hosts that call them themselves between rtXmlEncStartDocument and
 * rtXmlEncEndDocument.
 */
QX_API int QxXmlE_ims_3gpp(RuntimeContext *ctx, const tIMS3GPP *record);
QX_API int QxXmlE_ims_3gpp_StartElement(RuntimeContext *ctx, const tIMS3GPP *record);
QX_API int QxXmlE_ims_3gpp_Contents(RuntimeContext *ctx, const tIMS3GPP *record);
QX_API int QxXmlE_ims_3gpp_EndElement(RuntimeContext *ctx, const tIMS3GPP *record);

/* Documents that are a text: the emergency or other type, and the action, as elements of their own. */
QX_API int QxXmlE_type(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_type_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_type_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_type_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_action(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_action_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_action_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_action_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

/*
 * Writes one element of a type under a name and namespace of the caller's (null: without tags). _Attrs writes the
 * attributes alone into a start tag that is open. The choice has no element of its own: without a name it is written
 * as the element that its selector names.
 */
QX_API int QxXmlET_tAlternativeService(RuntimeContext *ctx, const tAlternativeService *record, const char *element,
                                       const RtxNamespace *ns);
QX_API int QxXmlET_tAlternativeService_StartElement(RuntimeContext *ctx, const tAlternativeService *record,
                                                    const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tAlternativeService_Attrs(RuntimeContext *ctx, const tAlternativeService *record,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tAlternativeService_Contents(RuntimeContext *ctx, const tAlternativeService *record,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_tAlternativeService_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tIMS3GPP_1(RuntimeContext *ctx, const tIMS3GPP_1 *record, const char *element,
                              const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_1_StartElement(RuntimeContext *ctx, const tIMS3GPP_1 *record, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_1_Contents(RuntimeContext *ctx, const tIMS3GPP_1 *record, const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_1_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tIMS3GPP(RuntimeContext *ctx, const tIMS3GPP *record, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_StartElement(RuntimeContext *ctx, const tIMS3GPP *record, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_Attrs(RuntimeContext *ctx, const tIMS3GPP *record, const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_Contents(RuntimeContext *ctx, const tIMS3GPP *record, const RtxNamespace *ns);
QX_API int QxXmlET_tIMS3GPP_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH ["ims-3gpp", found], STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_MISSING_ATTRIBUTE ["tIMS3GPP", "version"], STATUS_UNKNOWN_ATTRIBUTE [child, attribute],
 *   STATUS_INVALID_CONTENT [text, type, element].
 * A version that is no number is no error and leaves the member as it was.
 */
QX_API int QxXmlD_ims_3gpp(RuntimeContext *ctx, tIMS3GPP *record);

/*
 * Reads a document that is a text. The caller frees text->value with rtxMemHeapFreePtr. text is untouched if the
 * document is not well-formed.
 */
QX_API int QxXmlD_type(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_action(RuntimeContext *ctx, RtxXmlString *text);

/* Checks the context's input without building a record: as decoding, but foreign elements are not looked into. */
QX_API int QxXmlV_ims_3gpp(RuntimeContext *ctx);

/* Not offered: STATUS_NOT_SUPPORTED, not recorded. The context is not looked at. */
QX_API int QxXmlV_type(RuntimeContext *ctx);
QX_API int QxXmlV_action(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; children with a handler of their own are then refused. The owner frees
 * delegateStorage.
 */
QX_API int QxSAX_tAlternativeService_init(RuntimeContext *ctx, SaxTypeHandler *handler, tAlternativeService *record,
                                          int32_t level);
QX_API int QxSAX_tAlternativeService_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                  const char *const *attributes);
QX_API int QxSAX_tAlternativeService_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tAlternativeService_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tIMS3GPP_init(RuntimeContext *ctx, SaxTypeHandler *handler, tIMS3GPP *record, int32_t level);
QX_API int QxSAX_tIMS3GPP_startElement(void *handler, const char *localName, const char *qualifiedName,
                                       const char *const *attributes);
QX_API int QxSAX_tIMS3GPP_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tIMS3GPP_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tAlternativeService_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tAlternativeService_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                   const char *const *attributes);
QX_API int QxVSAX_tAlternativeService_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tAlternativeService_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tIMS3GPP_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tIMS3GPP_startElement(void *handler, const char *localName, const char *qualifiedName,
                                        const char *const *attributes);
QX_API int QxVSAX_tIMS3GPP_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tIMS3GPP_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
