/*
 * Debug information: which sessions of a user's device are to be logged, from which event to which, and how. Namespace
 * "urn:ietf:params:xml:ns:debuginfo"; every element can be the root of a document. Attributes belong to the namespace
 * too: they are written with its prefix, or bare where none is bound to it, and read in both spellings.
 *
 * The namespace table is the one of the debug-info registry of QxXmlIMS.h: give these documents a context of their own.
 *
 * To send: QxInit_ on the record, fill the members and presence bits, rtxSetOutput, QxXmlE_, rtxGetOutput,
 * QxMemFree_. To receive: rtxSetInput, QxXmlD_ (or QxXmlV_, to check only), read the record, QxMemFree_.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLDEBUGEVENT_H
#define QXXMLDEBUGEVENT_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Enumerations ----------------------------------------------------------------------------------------- */

/* What ends the logging of a session. */
typedef uint16_t tns__reason;
enum {
  tns__reason_dialog_established = 0,
  tns__reason_session_end = 1
};

/* How much is logged. */
typedef uint16_t tns__depth;
enum {
  tns__depth_maximum = 0,
  tns__depth_minimum = 1
};

/*
 * Whether a document has all configurations, or those that changed. The type's name is the enumeration "tns__state",
 * but in C that is the record of dialog state.
 */
enum {
  tns__debuginfo_state_full = 0,
  tns__debuginfo_state_partial = 1
};

/* ---- Records ---------------------------------------------------------------------------------------------- */

/* Bits of m: the optional members that are present. */
enum {
  tns__start_trigger_has_from = 1,
  tns__start_trigger_has_to = 2,
  tns__start_trigger_has_icsi = 4,
  tns__start_trigger_has_iari = 8,
  tns__start_trigger_has_method = 16,
  tns__start_trigger_has_time = 32,
  tns__start_trigger_has_debug_id = 64
};

/* What begins the logging of a session: a request that fits all of these. */
typedef struct tns__start_trigger {
  uint32_t m;
  RtxXmlString tns_from;     /* the sender of the request */
  RtxXmlString tns_to;       /* its receiver */
  RtxXmlString tns_icsi;     /* a communication service identifier */
  RtxXmlString tns_iari;     /* an application reference identifier */
  RtxXmlString tns_method;   /* its method */
  RtxXmlString tns_time;     /* a date and time, kept as text, its white space collapsed */
  RtxHexBinary tns_debug_id; /* that the request carries */
} tns__start_trigger;

enum {
  tns__stop_trigger_has_time = 1,
  tns__stop_trigger_has_time_period = 2,
  tns__stop_trigger_has_reason = 4
};

/* What ends the logging of a session. */
typedef struct tns__stop_trigger {
  uint32_t m;
  RtxXmlString tns_time;        /* a date and time, kept as text, its white space collapsed */
  RtxXmlString tns_time_period; /* a duration, kept as text */
  tns__reason tns_reason;       /* what happens to the session */
} tns__stop_trigger;

enum {
  tns__control_has_depth = 1,
  tns__control_has_debug_id = 2
};

/* How a session is logged. */
typedef struct tns__control {
  uint32_t m;
  RtxXmlString tns_interface; /* which reference points are logged */
  tns__depth tns_depth;       /* how much */
  RtxHexBinary tns_debug_id;  /* that is given to what is logged */
} tns__control;

/* Which sessions are logged, and how. */
typedef struct tns__session {
  tns__start_trigger tns_start_trigger; /* what begins it */
  tns__stop_trigger tns_stop_trigger;   /* what ends it */
  tns__control tns_control;             /* how it is done */
  RtxXmlString tns_id;                  /* required */
} tns__session;

/* What is logged of one user. */
typedef struct tns__debugconfig {
  RtxList tns_session;  /* of tns__session */
  RtxXmlString tns_aor; /* the user's address of record */
} tns__debugconfig;

/* A document: the configurations of all users. */
typedef struct tns__debuginfo {
  RtxList tns_debugconfig; /* of tns__debugconfig */
  RtxAnyList anyElems;     /* elements of other vocabularies, as XML text */
  uint32_t tns_version;    /* required, and without a default: set it before encoding */
  uint16_t tns_state;      /* the same */
} tns__debuginfo;

/*
 * Makes a record empty: presence bits 0, texts null, bytes null and none, lists empty, the same for records within.
 * Codes and the version stay as they are. An unusable context (null included) leaves the record untouched and gives
 * STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_tns__start_trigger(RuntimeContext *ctx, tns__start_trigger *record);
QX_API int QxInit_tns__stop_trigger(RuntimeContext *ctx, tns__stop_trigger *record);
QX_API int QxInit_tns__control(RuntimeContext *ctx, tns__control *record);
QX_API int QxInit_tns__session(RuntimeContext *ctx, tns__session *record);
QX_API int QxInit_tns__debugconfig(RuntimeContext *ctx, tns__debugconfig *record);
QX_API int QxInit_tns__debuginfo(RuntimeContext *ctx, tns__debuginfo *record);

/*
 * Frees what a record holds: texts, bytes, lists with their items, and the same for records within; optional members
 * only if their bit is set. Clears no pointer and no bit: initialise the record before using it again. The result has
 * no meaning.
 */
QX_API int QxMemFree_tns__start_trigger(RuntimeContext *ctx, tns__start_trigger *record);
QX_API int QxMemFree_tns__stop_trigger(RuntimeContext *ctx, tns__stop_trigger *record);
QX_API int QxMemFree_tns__control(RuntimeContext *ctx, tns__control *record);
QX_API int QxMemFree_tns__session(RuntimeContext *ctx, tns__session *record);
QX_API int QxMemFree_tns__debugconfig(RuntimeContext *ctx, tns__debugconfig *record);
QX_API int QxMemFree_tns__debuginfo(RuntimeContext *ctx, tns__debuginfo *record);

/*
 * Prints a record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The result is
 * that of the last line: negative if it was refused, 0 if there was nothing to print.
 */
QX_API int QxPrint_tns__start_trigger(const char *name, const tns__start_trigger *record);
QX_API int QxPrint_tns__stop_trigger(const char *name, const tns__stop_trigger *record);
QX_API int QxPrint_tns__control(const char *name, const tns__control *record);
QX_API int QxPrint_tns__session(const char *name, const tns__session *record);
QX_API int QxPrint_tns__debugconfig(const char *name, const tns__debugconfig *record);
QX_API int QxPrint_tns__debuginfo(const char *name, const tns__debuginfo *record);

/* The text of a code, "_UNKNOWN_" for one that has none. Only the low 16 bits of value count. */
QX_API const char *Qxtns__reason_ToString(uint32_t value);
QX_API const char *Qxtns__depth_ToString(uint32_t value);
QX_API const char *Qxtns__state_ToString(uint32_t value);

/*
 * The code of a text, compared exactly; value may be null. STATUS_ENUM_NOT_FOUND, not recorded, for any other text and
 * for null; value is then untouched. ctx is not used.
 */
QX_API int Qxtns__reason_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);
QX_API int Qxtns__depth_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);
QX_API int Qxtns__state_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);

/* Prints a line with the text of a code, as the printers of records do. */
QX_API int QxPrint_tns__reason(const char *name, uint32_t value);
QX_API int QxPrint_tns__depth(const char *name, uint32_t value);
QX_API int QxDbPrint_tns__state(const char *name, uint32_t value);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors beside those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists): STATUS_INVALID_UTF8 for the text of an element. A code
 * without a text is written as "_UNKNOWN_". What was written before the failure stays. A failing attribute of the root
 * itself is recorded but does not end the document, unless there is no room for it. The namespace is declared with the
 * prefix "tns" unless the context's namespaces are preset. The published schema wants attributes without a prefix: a
 * host that needs them so declares the namespace as its default and presets the context's namespaces.
 *
 * The other three of each are its steps, for hosts that call them themselves between rtXmlEncStartDocument and
 * rtXmlEncEndDocument; outside a document a declaration would be the host's, and stay.
 */
QX_API int QxXmlE_tns_start_trigger(RuntimeContext *ctx, const tns__start_trigger *record);
QX_API int QxXmlE_tns_start_trigger_StartElement(RuntimeContext *ctx, const tns__start_trigger *record);
QX_API int QxXmlE_tns_start_trigger_Contents(RuntimeContext *ctx, const tns__start_trigger *record);
QX_API int QxXmlE_tns_start_trigger_EndElement(RuntimeContext *ctx, const tns__start_trigger *record);

QX_API int QxXmlE_tns_stop_trigger(RuntimeContext *ctx, const tns__stop_trigger *record);
QX_API int QxXmlE_tns_stop_trigger_StartElement(RuntimeContext *ctx, const tns__stop_trigger *record);
QX_API int QxXmlE_tns_stop_trigger_Contents(RuntimeContext *ctx, const tns__stop_trigger *record);
QX_API int QxXmlE_tns_stop_trigger_EndElement(RuntimeContext *ctx, const tns__stop_trigger *record);

QX_API int QxXmlE_tns_control(RuntimeContext *ctx, const tns__control *record);
QX_API int QxXmlE_tns_control_StartElement(RuntimeContext *ctx, const tns__control *record);
QX_API int QxXmlE_tns_control_Contents(RuntimeContext *ctx, const tns__control *record);
QX_API int QxXmlE_tns_control_EndElement(RuntimeContext *ctx, const tns__control *record);

QX_API int QxXmlE_tns_session(RuntimeContext *ctx, const tns__session *record);
QX_API int QxXmlE_tns_session_StartElement(RuntimeContext *ctx, const tns__session *record);
QX_API int QxXmlE_tns_session_Contents(RuntimeContext *ctx, const tns__session *record);
QX_API int QxXmlE_tns_session_EndElement(RuntimeContext *ctx, const tns__session *record);

QX_API int QxXmlE_tns_debugconfig(RuntimeContext *ctx, const tns__debugconfig *record);
QX_API int QxXmlE_tns_debugconfig_StartElement(RuntimeContext *ctx, const tns__debugconfig *record);
QX_API int QxXmlE_tns_debugconfig_Contents(RuntimeContext *ctx, const tns__debugconfig *record);
QX_API int QxXmlE_tns_debugconfig_EndElement(RuntimeContext *ctx, const tns__debugconfig *record);

QX_API int QxXmlE_tns_debuginfo(RuntimeContext *ctx, const tns__debuginfo *record);
QX_API int QxXmlE_tns_debuginfo_StartElement(RuntimeContext *ctx, const tns__debuginfo *record);
QX_API int QxXmlE_tns_debuginfo_Contents(RuntimeContext *ctx, const tns__debuginfo *record);
QX_API int QxXmlE_tns_debuginfo_EndElement(RuntimeContext *ctx, const tns__debuginfo *record);

/* The same for documents that are one value. The namespace is always declared, as the default. */
QX_API int QxXmlE_tns_time(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_time_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_time_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_time_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_from(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_from_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_from_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_from_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_to(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_to_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_to_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_to_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_method(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_method_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_method_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_method_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_icsi(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_icsi_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_icsi_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_icsi_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_iari(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_iari_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_iari_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_iari_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_debug_id(RuntimeContext *ctx, const RtxHexBinary *bytes);
QX_API int QxXmlE_tns_debug_id_StartElement(RuntimeContext *ctx, const RtxHexBinary *bytes);
QX_API int QxXmlE_tns_debug_id_Contents(RuntimeContext *ctx, const RtxHexBinary *bytes);
QX_API int QxXmlE_tns_debug_id_EndElement(RuntimeContext *ctx, const RtxHexBinary *bytes);

QX_API int QxXmlE_tns_time_period(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_time_period_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_time_period_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_time_period_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_reason(RuntimeContext *ctx, uint32_t value);
QX_API int QxXmlE_tns_reason_StartElement(RuntimeContext *ctx, uint32_t value);
QX_API int QxXmlE_tns_reason_Contents(RuntimeContext *ctx, uint32_t value);
QX_API int QxXmlE_tns_reason_EndElement(RuntimeContext *ctx, uint32_t value);

QX_API int QxXmlE_tns_interface(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_interface_StartElement(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_interface_Contents(RuntimeContext *ctx, const RtxXmlString *text);
QX_API int QxXmlE_tns_interface_EndElement(RuntimeContext *ctx, const RtxXmlString *text);

QX_API int QxXmlE_tns_depth(RuntimeContext *ctx, uint32_t value);
QX_API int QxXmlE_tns_depth_StartElement(RuntimeContext *ctx, uint32_t value);
QX_API int QxXmlE_tns_depth_Contents(RuntimeContext *ctx, uint32_t value);
QX_API int QxXmlE_tns_depth_EndElement(RuntimeContext *ctx, uint32_t value);

/*
 * Writes one element of a type under a name and namespace of the caller's (null: without tags). _Attrs writes the
 * attributes alone into a start tag that is open.
 */
QX_API int QxXmlET_tns__start_trigger(RuntimeContext *ctx, const tns__start_trigger *record, const char *element,
                                      const RtxNamespace *ns);
QX_API int QxXmlET_tns__start_trigger_StartElement(RuntimeContext *ctx, const tns__start_trigger *record,
                                                   const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__start_trigger_Contents(RuntimeContext *ctx, const tns__start_trigger *record,
                                               const RtxNamespace *ns);
QX_API int QxXmlET_tns__start_trigger_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__stop_trigger(RuntimeContext *ctx, const tns__stop_trigger *record, const char *element,
                                     const RtxNamespace *ns);
QX_API int QxXmlET_tns__stop_trigger_StartElement(RuntimeContext *ctx, const tns__stop_trigger *record,
                                                  const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__stop_trigger_Contents(RuntimeContext *ctx, const tns__stop_trigger *record,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_tns__stop_trigger_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__control(RuntimeContext *ctx, const tns__control *record, const char *element,
                                const RtxNamespace *ns);
QX_API int QxXmlET_tns__control_StartElement(RuntimeContext *ctx, const tns__control *record, const char *element,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tns__control_Contents(RuntimeContext *ctx, const tns__control *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__control_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__session(RuntimeContext *ctx, const tns__session *record, const char *element,
                                const RtxNamespace *ns);
QX_API int QxXmlET_tns__session_StartElement(RuntimeContext *ctx, const tns__session *record, const char *element,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tns__session_Attrs(RuntimeContext *ctx, const tns__session *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__session_Contents(RuntimeContext *ctx, const tns__session *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__session_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__debugconfig(RuntimeContext *ctx, const tns__debugconfig *record, const char *element,
                                    const RtxNamespace *ns);
QX_API int QxXmlET_tns__debugconfig_StartElement(RuntimeContext *ctx, const tns__debugconfig *record,
                                                 const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__debugconfig_Attrs(RuntimeContext *ctx, const tns__debugconfig *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__debugconfig_Contents(RuntimeContext *ctx, const tns__debugconfig *record,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_tns__debugconfig_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__debuginfo(RuntimeContext *ctx, const tns__debuginfo *record, const char *element,
                                  const RtxNamespace *ns);
QX_API int QxXmlET_tns__debuginfo_StartElement(RuntimeContext *ctx, const tns__debuginfo *record, const char *element,
                                               const RtxNamespace *ns);
QX_API int QxXmlET_tns__debuginfo_Attrs(RuntimeContext *ctx, const tns__debuginfo *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__debuginfo_Contents(RuntimeContext *ctx, const tns__debuginfo *record, const RtxNamespace *ns);
QX_API int QxXmlET_tns__debuginfo_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* The same for a code, written as its text. Without a name, the text goes into the attribute that is being written. */
QX_API int QxXmlET_tns__reason(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__reason_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                            const RtxNamespace *ns);
QX_API int QxXmlET_tns__reason_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_tns__reason_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_tns__depth(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_tns__depth_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_tns__depth_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_tns__depth_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlDbET_tns__state(RuntimeContext *ctx, uint32_t value, const char *element, const RtxNamespace *ns);
QX_API int QxXmlDbET_tns__state_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                             const RtxNamespace *ns);
QX_API int QxXmlDbET_tns__state_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlDbET_tns__state_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH [expected, found], STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_ENUM_NOT_FOUND [text], followed by one of the next two,
 *   STATUS_INVALID_CONTENT [text, type, element], STATUS_INVALID_ATTRIBUTE [type, attribute], which also follows the
 *   status of a number that does not convert,
 *   STATUS_INVALID_LEXICAL_FORM for a debug-id that is not hexadecimal,
 *   STATUS_UNKNOWN_ATTRIBUTE [type or child, attribute], STATUS_MISSING_ATTRIBUTE [type, attribute].
 * A child that is missing is no error.
 */
QX_API int QxXmlD_tns_start_trigger(RuntimeContext *ctx, tns__start_trigger *record);
QX_API int QxXmlD_tns_stop_trigger(RuntimeContext *ctx, tns__stop_trigger *record);
QX_API int QxXmlD_tns_control(RuntimeContext *ctx, tns__control *record);
QX_API int QxXmlD_tns_session(RuntimeContext *ctx, tns__session *record);
QX_API int QxXmlD_tns_debugconfig(RuntimeContext *ctx, tns__debugconfig *record);
QX_API int QxXmlD_tns_debuginfo(RuntimeContext *ctx, tns__debuginfo *record);

/*
 * Reads a document that is one value. The caller frees text->value or bytes->bytes with rtxMemHeapFreePtr. The value is
 * untouched if the document is not well-formed or its text does not convert.
 */
QX_API int QxXmlD_tns_time(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_from(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_to(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_method(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_icsi(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_iari(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_debug_id(RuntimeContext *ctx, RtxHexBinary *bytes);
QX_API int QxXmlD_tns_time_period(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_reason(RuntimeContext *ctx, uint16_t *value);
QX_API int QxXmlD_tns_interface(RuntimeContext *ctx, RtxXmlString *text);
QX_API int QxXmlD_tns_depth(RuntimeContext *ctx, uint16_t *value);

/*
 * Checks the context's input without building a record: as decoding, but texts are not looked at, and foreign elements
 * are not looked into: their own attributes are STATUS_UNKNOWN_ATTRIBUTE ["", attribute].
 */
QX_API int QxXmlV_tns_start_trigger(RuntimeContext *ctx);
QX_API int QxXmlV_tns_stop_trigger(RuntimeContext *ctx);
QX_API int QxXmlV_tns_control(RuntimeContext *ctx);
QX_API int QxXmlV_tns_session(RuntimeContext *ctx);
QX_API int QxXmlV_tns_debugconfig(RuntimeContext *ctx);
QX_API int QxXmlV_tns_debuginfo(RuntimeContext *ctx);

/* Not offered: STATUS_NOT_SUPPORTED, not recorded. The context is not looked at. */
QX_API int QxXmlV_tns_time(RuntimeContext *ctx);
QX_API int QxXmlV_tns_from(RuntimeContext *ctx);
QX_API int QxXmlV_tns_to(RuntimeContext *ctx);
QX_API int QxXmlV_tns_method(RuntimeContext *ctx);
QX_API int QxXmlV_tns_icsi(RuntimeContext *ctx);
QX_API int QxXmlV_tns_iari(RuntimeContext *ctx);
QX_API int QxXmlV_tns_debug_id(RuntimeContext *ctx);
QX_API int QxXmlV_tns_time_period(RuntimeContext *ctx);
QX_API int QxXmlV_tns_reason(RuntimeContext *ctx);
QX_API int QxXmlV_tns_interface(RuntimeContext *ctx);
QX_API int QxXmlV_tns_depth(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; children with a handler of their own are then refused. The owner frees
 * delegateStorage.
 */
QX_API int QxSAX_tns__start_trigger_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__start_trigger *record,
                                         int32_t level);
QX_API int QxSAX_tns__start_trigger_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                 const char *const *attributes);
QX_API int QxSAX_tns__start_trigger_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__start_trigger_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__stop_trigger_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__stop_trigger *record,
                                        int32_t level);
QX_API int QxSAX_tns__stop_trigger_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxSAX_tns__stop_trigger_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__stop_trigger_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__control_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__control *record, int32_t level);
QX_API int QxSAX_tns__control_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxSAX_tns__control_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__control_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__session_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__session *record, int32_t level);
QX_API int QxSAX_tns__session_startElement(void *handler, const char *localName, const char *qualifiedName,
                                           const char *const *attributes);
QX_API int QxSAX_tns__session_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__session_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__debugconfig_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__debugconfig *record,
                                       int32_t level);
QX_API int QxSAX_tns__debugconfig_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxSAX_tns__debugconfig_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__debugconfig_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_tns__debuginfo_init(RuntimeContext *ctx, SaxTypeHandler *handler, tns__debuginfo *record,
                                     int32_t level);
QX_API int QxSAX_tns__debuginfo_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxSAX_tns__debuginfo_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_tns__debuginfo_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__start_trigger_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__start_trigger_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                  const char *const *attributes);
QX_API int QxVSAX_tns__start_trigger_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__start_trigger_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__stop_trigger_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__stop_trigger_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                 const char *const *attributes);
QX_API int QxVSAX_tns__stop_trigger_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__stop_trigger_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__control_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__control_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxVSAX_tns__control_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__control_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__session_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__session_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxVSAX_tns__session_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__session_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__debugconfig_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__debugconfig_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxVSAX_tns__debugconfig_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__debugconfig_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_tns__debuginfo_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_tns__debuginfo_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxVSAX_tns__debuginfo_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_tns__debuginfo_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
