/*
 * Dialog state: the calls of a user, each with its state, its two participants and how it came about. Namespace
 * "urn:ietf:params:xml:ns:dialog-info"; root elements "dialog-info" (the whole document), "dialog" and "state".
 *
 * To send: QxInit_ on the record, fill the members and presence bits, rtxSetOutput, QxXmlE_, rtxGetOutput,
 * QxMemFree_. To receive: rtxSetInput, QxXmlD_ (or QxXmlV_, to check only), read the record, QxMemFree_.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLDIALOGINFO_H
#define QXXMLDIALOGINFO_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Enumerations ----------------------------------------------------------------------------------------- */

/* Whether a document has all dialogs, or those that changed since the version before. */
typedef uint16_t tns__dialog_info_state;
enum {
  tns__dialog_info_state_full = 0,
  tns__dialog_info_state_partial = 1
};

/* What brought a dialog into its state. */
typedef uint16_t tns__state_event;
enum {
  tns__state_event_cancelled = 0,
  tns__state_event_rejected = 1,
  tns__state_event_replaced = 2,
  tns__state_event_local_bye = 3,
  tns__state_event_remote_bye = 4,
  tns__state_event_error = 5,
  tns__state_event_timeout = 6
};

/* Whether the observed user called or was called. */
typedef uint16_t tns__dialog_direction;
enum {
  tns__dialog_direction_initiator = 0,
  tns__dialog_direction_recipient = 1
};

/* ---- Records ---------------------------------------------------------------------------------------------- */

/* Bits of m: the optional members that are present. */
enum {
  tns__state_has_event = 1,
  tns__state_has_code = 2
};

/* The state of a dialog. */
typedef struct tns__state {
  uint32_t m;
  RtxXmlString value;         /* "trying", "early", "confirmed" and so on, but kept as any text */
  tns__state_event tns_event; /* what led here */
  uint16_t tns_code;          /* the response that led here, 100 to 699 */
  RtxNsDeclList nsDecls;      /* the declarations on the element, written back with it */
} tns__state;

/* The dialog that this one takes the place of. */
typedef struct tns__dialog_replaces {
  RtxXmlString tns_call_id;    /* its call identifier */
  RtxXmlString tns_local_tag;  /* its tag on the user's side */
  RtxXmlString tns_remote_tag; /* its tag on the other side */
} tns__dialog_replaces;

enum {
  tns_nameaddr_has_display_name = 1
};

/* An address with a name. */
typedef struct tns_nameaddr {
  uint32_t m;
  RtxXmlString value;            /* a URI */
  RtxXmlString tns_display_name; /* the name, for people */
  RtxNsDeclList nsDecls;
} tns_nameaddr;

/* The route that requests within the dialog take. */
typedef struct tns__dialog_route_set {
  RtxList tns_hop; /* of RtxXmlString; at least one when written */
} tns__dialog_route_set;

/* A parameter of a contact, such as an audio capability. */
typedef struct tns_participant_target_param {
  RtxXmlString tns_pname; /* its name */
  RtxXmlString tns_pval;  /* its value */
} tns_participant_target_param;

/* Where a participant is reached. */
typedef struct tns_participant_target {
  RtxList tns_param;    /* of tns_participant_target_param */
  RtxXmlString tns_uri; /* the contact */
} tns_participant_target;

/* A description of the session. */
typedef struct tns_sessd {
  RtxXmlString value;    /* the description itself */
  RtxXmlString tns_type; /* the MIME type of value */
  RtxNsDeclList nsDecls;
} tns_sessd;

enum {
  tns_participant_has_identity = 1,
  tns_participant_has_target = 2,
  tns_participant_has_session_description = 4,
  tns_participant_has_cseq = 8
};

/* One side of a dialog. */
typedef struct tns_participant {
  uint32_t m;
  tns_nameaddr tns_identity;         /* who it is */
  tns_participant_target tns_target; /* where it is reached */
  tns_sessd tns_session_description; /* what it said last of the session */
  uint32_t tns_cseq;                 /* the last sequence number used in this direction */
  RtxAnyList anyElems;
} tns_participant;

enum {
  tns__dialog_has_duration = 1,
  tns__dialog_has_replaces = 2,
  tns__dialog_has_referred_by = 4,
  tns__dialog_has_route_set = 8,
  tns__dialog_has_local = 16,
  tns__dialog_has_remote = 32,
  tns__dialog_has_call_id = 64,
  tns__dialog_has_local_tag = 128,
  tns__dialog_has_remote_tag = 256,
  tns__dialog_has_direction = 512
};

/* One call of the user, or an attempt. */
typedef struct tns__dialog {
  uint32_t m;
  tns__state tns_state;                /* its state */
  uint32_t tns_duration;               /* seconds since the dialog began */
  tns__dialog_replaces tns_replaces;   /* the dialog whose place it took */
  tns_nameaddr tns_referred_by;        /* who has asked for the call */
  tns__dialog_route_set tns_route_set; /* its route */
  tns_participant tns_local;           /* the user */
  tns_participant tns_remote;          /* who the user speaks with */
  RtxAnyList anyElems;
  RtxXmlString tns_id;                 /* unique among the dialogs of one user */
  RtxXmlString tns_call_id;            /* the call identifier */
  RtxXmlString tns_local_tag;          /* the tag on the user's side */
  RtxXmlString tns_remote_tag;         /* the tag on the other side */
  tns__dialog_direction tns_direction; /* who called */
} tns__dialog;

/* A document: all dialogs of a user, or those that have changed. */
typedef struct tns__dialog_info {
  RtxList tns_dialog; /* of tns__dialog */
  RtxAnyList anyElems;
  uint32_t tns_version;             /* counts up with every document of a subscription */
  tns__dialog_info_state tns_state; /* all dialogs, or those that have changed */
  RtxXmlString tns_entity;          /* the URI of the observed user */
} tns__dialog_info;

/*
 * Makes a record empty: presence bits 0, texts null, lists empty, the same for records within. Numbers and codes stay
 * as they are, since only a presence bit or a decoder gives them a meaning. An unusable context (null included)
 * leaves the record untouched and gives STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_tns__state(RuntimeContext *ctx, tns__state *record);
QX_API int QxInit_tns__dialog_replaces(RuntimeContext *ctx, tns__dialog_replaces *record);
QX_API int QxInit_tns_nameaddr(RuntimeContext *ctx, tns_nameaddr *record);
QX_API int QxInit_tns__dialog_route_set(RuntimeContext *ctx, tns__dialog_route_set *record);
QX_API int QxInit_tns_participant_target_param(RuntimeContext *ctx, tns_participant_target_param *record);
QX_API int QxInit_tns_participant_target(RuntimeContext *ctx, tns_participant_target *record);
QX_API int QxInit_tns_sessd(RuntimeContext *ctx, tns_sessd *record);
QX_API int QxInit_tns_participant(RuntimeContext *ctx, tns_participant *record);
QX_API int QxInit_tns__dialog(RuntimeContext *ctx, tns__dialog *record);
QX_API int QxInit_tns__dialog_info(RuntimeContext *ctx, tns__dialog_info *record);

/*
 * Frees what a record holds: texts, lists with their items, and the same for records within; optional members only
 * if their bit is set. Clears no pointer and no bit: initialise the record before using it again. The result has no
 * meaning. The texts of tns__dialog_replaces and of the parameters in a target have no release function: they stay on
 * the heap as long as the heap does.
 */
QX_API int QxMemFree_tns__state(RuntimeContext *ctx, tns__state *record);
QX_API int QxMemFree_tns_nameaddr(RuntimeContext *ctx, tns_nameaddr *record);
QX_API int QxMemFree_tns__dialog_route_set(RuntimeContext *ctx, tns__dialog_route_set *record);
QX_API int QxMemFree_tns_participant_target(RuntimeContext *ctx, tns_participant_target *record);
QX_API int QxMemFree_tns_sessd(RuntimeContext *ctx, tns_sessd *record);
QX_API int QxMemFree_tns_participant(RuntimeContext *ctx, tns_participant *record);
QX_API int QxMemFree_tns__dialog(RuntimeContext *ctx, tns__dialog *record);
QX_API int QxMemFree_tns__dialog_info(RuntimeContext *ctx, tns__dialog_info *record);

/*
 * Prints a record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The result is
 * that of the last line: negative if it was refused.
 */
QX_API int QxPrint_tns__state(const char *name, const tns__state *record);
QX_API int QxPrint_tns__dialog_replaces(const char *name, const tns__dialog_replaces *record);
QX_API int QxPrint_tns_nameaddr(const char *name, const tns_nameaddr *record);
QX_API int QxPrint_tns__dialog_route_set(const char *name, const tns__dialog_route_set *record);
QX_API int QxPrint_tns_participant_target_param(const char *name, const tns_participant_target_param *record);
QX_API int QxPrint_tns_participant_target(const char *name, const tns_participant_target *record);
QX_API int QxPrint_tns_sessd(const char *name, const tns_sessd *record);
QX_API int QxPrint_tns_participant(const char *name, const tns_participant *record);
QX_API int QxPrint_tns__dialog(const char *name, const tns__dialog *record);
QX_API int QxPrint_tns__dialog_info(const char *name, const tns__dialog_info *record);

/*
 * Appends a hop, which must come from the context's heap. Returns the number of hops, not a status: as many as before
 * if there was no storage, and the caller still owns item.
 */
QX_API uint32_t Qxtns__dialog_route_set_Append(RuntimeContext *ctx, tns__dialog_route_set *record, RtxXmlString *item);

/* The text of a code, "_UNKNOWN_" for one that has none. Only the low 16 bits of value count. */
QX_API const char *Qxtns__dialog_info_state_ToString(uint32_t value);
QX_API const char *Qxtns__state_event_ToString(uint32_t value);
QX_API const char *Qxtns__dialog_direction_ToString(uint32_t value);

/*
 * The code of a text, compared exactly; value may be null. STATUS_ENUM_NOT_FOUND, not recorded, for any other text and
 * for null; value is then untouched. ctx is not used.
 */
QX_API int Qxtns__dialog_info_state_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);
QX_API int Qxtns__state_event_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);
QX_API int Qxtns__dialog_direction_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);

/* Prints a line with the text of a code, as the printers of records do. */
QX_API int QxPrint_tns__dialog_info_state(const char *name, uint32_t value);
QX_API int QxPrint_tns__state_event(const char *name, uint32_t value);
QX_API int QxPrint_tns__dialog_direction(const char *name, uint32_t value);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors beside those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists): STATUS_CONSTRAINT_VIOLATION ["tns__state.tns_code", value]
 * for a code outside 100 to 699, STATUS_CONSTRAINT_VIOLATION ["tns__dialog_route_set.count", 0] for a route set
 * without a hop, STATUS_INVALID_UTF8 for the text of an element. A code without a text is written as "_UNKNOWN_". What
 * was written before the failure stays. A failing attribute of the root itself is recorded but does not end the
 * document, unless there is no room for it. The namespace is declared with the prefix "tns" unless the context's
 * namespaces are preset; a "state" document puts that declaration into the record's nsDecls, where it stays.
 *
 * The other three of each are its steps, for hosts that call them themselves between rtXmlEncStartDocument and
 * rtXmlEncEndDocument; outside a document a declaration would be the host's, and stay.
 */
QX_API int QxXmlE_tns_dialog_info(RuntimeContext *ctx, const tns__dialog_info *record);
QX_API int QxXmlE_tns_dialog_info_StartElement(RuntimeContext *ctx, const tns__dialog_info *record);
QX_API int QxXmlE_tns_dialog_info_Contents(RuntimeContext *ctx, const tns__dialog_info *record);
QX_API int QxXmlE_tns_dialog_info_EndElement(RuntimeContext *ctx, const tns__dialog_info *record);

QX_API int QxXmlE_tns_dialog(RuntimeContext *ctx, const tns__dialog *record);
QX_API int QxXmlE_tns_dialog_StartElement(RuntimeContext *ctx, const tns__dialog *record);
QX_API int QxXmlE_tns_dialog_Contents(RuntimeContext *ctx, const tns__dialog *record);
QX_API int QxXmlE_tns_dialog_EndElement(RuntimeContext *ctx, const tns__dialog *record);

QX_API int QxXmlE_tns_state(RuntimeContext *ctx, const tns__state *record);
QX_API int QxXmlE_tns_state_StartElement(RuntimeContext *ctx, const tns__state *record);
QX_API int QxXmlE_tns_state_Contents(RuntimeContext *ctx, const tns__state *record);
QX_API int QxXmlE_tns_state_EndElement(RuntimeContext *ctx, const tns__state *record);

/*
 * Writes one element of a type under a name and namespace of the caller's (null: without tags). _StartElement writes
 * the attributes and then the declarations that the record holds; _Attrs writes the same into a start tag that is
 * open, declarations first.
 */
QX_API int QxXmlET_tns__state(RuntimeContext *ctx, const tns__state *record, const char *element,
                              const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_StartElement(RuntimeContext *ctx, const tns__state *record, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_Attrs(RuntimeContext *ctx, const tns__state *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_Contents(RuntimeContext *ctx, const tns__state *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__dialog_replaces(RuntimeContext *ctx, const tns__dialog_replaces *record, const char *element,
                                        const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_replaces_StartElement(RuntimeContext *ctx, const tns__dialog_replaces *record,
                                                     const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_replaces_Attrs(RuntimeContext *ctx, const tns__dialog_replaces *record,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_replaces_Contents(RuntimeContext *ctx, const tns__dialog_replaces *record,
                                                 const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_replaces_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns_nameaddr(RuntimeContext *ctx, const tns_nameaddr *record, const char *element,
                                const RtxNamespace *ns);
QX_API int QxXmlET_tns_nameaddr_StartElement(RuntimeContext *ctx, const tns_nameaddr *record, const char *element,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tns_nameaddr_Attrs(RuntimeContext *ctx, const tns_nameaddr *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns_nameaddr_Contents(RuntimeContext *ctx, const tns_nameaddr *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns_nameaddr_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__dialog_route_set(RuntimeContext *ctx, const tns__dialog_route_set *record, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_route_set_StartElement(RuntimeContext *ctx, const tns__dialog_route_set *record,
                                                      const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_route_set_Contents(RuntimeContext *ctx, const tns__dialog_route_set *record,
                                                  const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_route_set_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns_participant_target_param(RuntimeContext *ctx, const tns_participant_target_param *record,
                                                const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_param_StartElement(RuntimeContext *ctx,
                                                             const tns_participant_target_param *record,
                                                             const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_param_Attrs(RuntimeContext *ctx, const tns_participant_target_param *record,
                                                      const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_param_Contents(RuntimeContext *ctx,
                                                         const tns_participant_target_param *record,
                                                         const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_param_EndElement(RuntimeContext *ctx, const char *element,
                                                           const RtxNamespace *ns);

QX_API int QxXmlET_tns_participant_target(RuntimeContext *ctx, const tns_participant_target *record,
                                          const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_StartElement(RuntimeContext *ctx, const tns_participant_target *record,
                                                       const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_Attrs(RuntimeContext *ctx, const tns_participant_target *record,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_Contents(RuntimeContext *ctx, const tns_participant_target *record,
                                                   const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_target_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns_sessd(RuntimeContext *ctx, const tns_sessd *record, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns_sessd_StartElement(RuntimeContext *ctx, const tns_sessd *record, const char *element,
                                          const RtxNamespace *ns);
QX_API int QxXmlET_tns_sessd_Attrs(RuntimeContext *ctx, const tns_sessd *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns_sessd_Contents(RuntimeContext *ctx, const tns_sessd *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns_sessd_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns_participant(RuntimeContext *ctx, const tns_participant *record, const char *element,
                                   const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_StartElement(RuntimeContext *ctx, const tns_participant *record, const char *element,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_Contents(RuntimeContext *ctx, const tns_participant *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns_participant_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__dialog(RuntimeContext *ctx, const tns__dialog *record, const char *element,
                               const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_StartElement(RuntimeContext *ctx, const tns__dialog *record, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_Attrs(RuntimeContext *ctx, const tns__dialog *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_Contents(RuntimeContext *ctx, const tns__dialog *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__dialog_info(RuntimeContext *ctx, const tns__dialog_info *record, const char *element,
                                    const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_StartElement(RuntimeContext *ctx, const tns__dialog_info *record,
                                                 const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_Attrs(RuntimeContext *ctx, const tns__dialog_info *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_Contents(RuntimeContext *ctx, const tns__dialog_info *record,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* The same for a code, written as its text. Without a name, the text goes into the attribute that is being written. */
QX_API int QxXmlET_tns__dialog_info_state(RuntimeContext *ctx, uint32_t value, const char *element,
                                          const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_state_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                                       const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_state_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_info_state_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__state_event(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_event_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                                 const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_event_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_tns__state_event_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__dialog_direction(RuntimeContext *ctx, uint32_t value, const char *element,
                                         const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_direction_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                                      const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_direction_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_tns__dialog_direction_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH [expected, found], and ["tns_hop", found] for a child of a route set that is no hop,
 *   STATUS_ENUM_NOT_FOUND [text], followed by
 *   STATUS_INVALID_ATTRIBUTE [type, attribute], which also follows the status of a number that does not convert,
 *   STATUS_UNKNOWN_ATTRIBUTE [type or child, attribute], STATUS_MISSING_ATTRIBUTE [type, attribute],
 *   STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_INVALID_CONTENT [text, type, element] for a duration or cseq that is no number,
 *   STATUS_CONSTRAINT_VIOLATION ["tns__state.tns_code", value] and ["tns__dialog_route_set.count", 0].
 * The presence bits of event, direction and code are set even if the text was none of theirs; a code out of range is
 * stored and its bit stays clear. A dialog without a state is no error.
 */
QX_API int QxXmlD_tns_dialog_info(RuntimeContext *ctx, tns__dialog_info *record);
QX_API int QxXmlD_tns_dialog(RuntimeContext *ctx, tns__dialog *record);
QX_API int QxXmlD_tns_state(RuntimeContext *ctx, tns__state *record);

/*
 * Checks the context's input without building a record: as decoding, but foreign elements are not looked into (their
 * own attributes are STATUS_UNKNOWN_ATTRIBUTE ["", attribute]), a route set may be empty, and the parameter for a code
 * out of range is "code".
 */
QX_API int QxXmlV_tns_dialog_info(RuntimeContext *ctx);
QX_API int QxXmlV_tns_dialog(RuntimeContext *ctx);
QX_API int QxXmlV_tns_state(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; children with a handler of their own are then refused. The owner frees
 * delegateStorage.
 */
QX_API int QxSAX_tns__state_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__state *record, int32_t level);
QX_API int QxSAX_tns__state_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxSAX_tns__state_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__state_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__dialog_replaces_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__dialog_replaces *record,
                                           int32_t level);
QX_API int QxSAX_tns__dialog_replaces_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                   const char *const *attributes);
QX_API int QxSAX_tns__dialog_replaces_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__dialog_replaces_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns_nameaddr_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns_nameaddr *record, int32_t level);
QX_API int QxSAX_tns_nameaddr_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxSAX_tns_nameaddr_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns_nameaddr_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__dialog_route_set_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__dialog_route_set *record,
                                            int32_t level);
QX_API int QxSAX_tns__dialog_route_set_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                    const char *const *attributes);
QX_API int QxSAX_tns__dialog_route_set_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__dialog_route_set_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns_participant_target_param_init(RuntimeContext *ctx, SaxTypeHandler *handler,
                                                   tns_participant_target_param *record, int32_t level);
QX_API int QxSAX_tns_participant_target_param_startElement(void *handler, const char *localName,
                                                           const char *qualifiedName, const char *const *attributes);
QX_API int QxSAX_tns_participant_target_param_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns_participant_target_param_endElement(void *handler, const char *localName,
                                                         const char *qualifiedName);

QX_API int QxSAX_tns_participant_target_init(RuntimeContext *ctx, SaxTypeHandler *handler,
                                             tns_participant_target *record, int32_t level);
QX_API int QxSAX_tns_participant_target_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                     const char *const *attributes);
QX_API int QxSAX_tns_participant_target_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns_participant_target_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns_sessd_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns_sessd *record, int32_t level);
QX_API int QxSAX_tns_sessd_startElement(void *handler, const char *localName, const char *qualifiedName,
                                        const char *const *attributes);
QX_API int QxSAX_tns_sessd_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns_sessd_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns_participant_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns_participant *record,
                                      int32_t level);
QX_API int QxSAX_tns_participant_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxSAX_tns_participant_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns_participant_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__dialog_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__dialog *record, int32_t level);
QX_API int QxSAX_tns__dialog_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxSAX_tns__dialog_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__dialog_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__dialog_info_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__dialog_info *record,
                                       int32_t level);
QX_API int QxSAX_tns__dialog_info_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxSAX_tns__dialog_info_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__dialog_info_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__state_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__state_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxVSAX_tns__state_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__state_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__dialog_replaces_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__dialog_replaces_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                    const char *const *attributes);
QX_API int QxVSAX_tns__dialog_replaces_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__dialog_replaces_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns_nameaddr_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns_nameaddr_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxVSAX_tns_nameaddr_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns_nameaddr_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__dialog_route_set_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__dialog_route_set_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                     const char *const *attributes);
QX_API int QxVSAX_tns__dialog_route_set_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__dialog_route_set_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns_participant_target_param_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns_participant_target_param_startElement(void *handler, const char *localName,
                                                            const char *qualifiedName, const char *const *attributes);
QX_API int QxVSAX_tns_participant_target_param_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns_participant_target_param_endElement(void *handler, const char *localName,
                                                          const char *qualifiedName);

QX_API int QxVSAX_tns_participant_target_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns_participant_target_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                      const char *const *attributes);
QX_API int QxVSAX_tns_participant_target_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns_participant_target_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns_sessd_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns_sessd_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxVSAX_tns_sessd_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns_sessd_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns_participant_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns_participant_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxVSAX_tns_participant_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns_participant_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__dialog_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__dialog_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxVSAX_tns__dialog_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__dialog_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__dialog_info_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__dialog_info_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxVSAX_tns__dialog_info_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__dialog_info_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
