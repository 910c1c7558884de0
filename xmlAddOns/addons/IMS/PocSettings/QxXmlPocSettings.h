/*
 * Push-to-talk settings: how each entity, a user's device, say, wants to be called. Root element "poc-settings" in the
 * namespace "urn:oma:params:xml:ns:poc:poc-settings".
 *
 * To send: QxInit_poc_settingsType, fill the members and presence bits, rtxSetOutput, QxXmlE_poc_settings,
 * rtxGetOutput, QxMemFree_poc_settingsType. To receive: rtxSetInput, QxXmlD_poc_settings (or QxXmlV_poc_settings, to
 * check only), read the record, QxMemFree_poc_settingsType.
 *
 * For all functions here: ctx is a context from rtxContextCreate, used by one thread at a time; records belong to
 * the caller, what they point at belongs to the context's heap. Arguments must not be null unless said so. Each
 * returns 0 or a negative status of rtxStatus.h unless said otherwise; failures are recorded on the context.
 */
#ifndef QXXMLPOCSETTINGS_H
#define QXXMLPOCSETTINGS_H

#include "QxXmlIMS.h"
#include "rtSax.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Who takes a call: the device by itself, or its user. */
typedef uint16_t amSettingType_answer_mode;
enum {
  amSettingType_answer_mode_automatic = 0,
  amSettingType_answer_mode_manual = 1
};

/* ---- Records ---------------------------------------------------------------------------------------------- */

/*
 * Bits of m are the optional members that are present. Members anyElems hold elements of other vocabularies as XML
 * text, members _anyAttr attributes that the schema does not name.
 */

/* Whether invitations to sessions are turned away. */
typedef struct isbSettingType_incoming_session_barring {
  bool active; /* required, and without a default: set it before encoding */
} isbSettingType_incoming_session_barring;

/* The setting for invitations to sessions. */
typedef struct isbSettingType {
  isbSettingType_incoming_session_barring incoming_session_barring; /* required */
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
} isbSettingType;

/* How invitations are answered. */
typedef struct amSettingType {
  amSettingType_answer_mode answer_mode; /* required, and without a default */
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
} amSettingType;

/* Whether personal alerts are turned away. */
typedef struct ipabSettingType_incoming_personal_alert_barring {
  bool active; /* required, and without a default: set it before encoding */
} ipabSettingType_incoming_personal_alert_barring;

/* The setting for personal alerts. */
typedef struct ipabSettingType {
  ipabSettingType_incoming_personal_alert_barring incoming_personal_alert_barring; /* required */
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
} ipabSettingType;

/* Whether several sessions may run at a time. */
typedef struct sssSettingType_simultaneous_sessions_support {
  bool active; /* required, and without a default: set it before encoding */
} sssSettingType_simultaneous_sessions_support;

/* The setting for several sessions. */
typedef struct sssSettingType {
  sssSettingType_simultaneous_sessions_support simultaneous_sessions_support; /* required */
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
} sssSettingType;

enum {
  entityType_has_isb_settings = 1,
  entityType_has_am_settings = 2,
  entityType_has_ipab_settings = 4,
  entityType_has_sss_settings = 8
};

/* What one entity wants. */
typedef struct entityType {
  uint32_t m;
  isbSettingType isb_settings;   /* whether invitations are turned away */
  amSettingType am_settings;     /* how they are answered */
  ipabSettingType ipab_settings; /* whether personal alerts are turned away */
  sssSettingType sss_settings;   /* whether several sessions may run at a time */
  RtxAnyList anyElems;
  RtxXmlString id; /* of the entity; required */
  RtxAttrList _anyAttr;
} entityType;

/* A document: the settings of all entities. */
typedef struct poc_settingsType {
  RtxList entity; /* of entityType */
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
} poc_settingsType;

/*
 * Makes a record empty: presence bits 0, texts null, lists empty, the same for records within, absent ones included.
 * active and answer_mode stay as they are. An unusable context (null included) leaves the record untouched and gives
 * STATUS_BAD_CONTEXT.
 */
QX_API int QxInit_isbSettingType_incoming_session_barring(RuntimeContext *ctx,
                                                          isbSettingType_incoming_session_barring *record);
QX_API int QxInit_isbSettingType(RuntimeContext *ctx, isbSettingType *record);
QX_API int QxInit_amSettingType(RuntimeContext *ctx, amSettingType *record);
QX_API int
QxInit_ipabSettingType_incoming_personal_alert_barring(RuntimeContext *ctx,
                                                       ipabSettingType_incoming_personal_alert_barring *record);
QX_API int QxInit_ipabSettingType(RuntimeContext *ctx, ipabSettingType *record);
QX_API int QxInit_sssSettingType_simultaneous_sessions_support(RuntimeContext *ctx,
                                                               sssSettingType_simultaneous_sessions_support *record);
QX_API int QxInit_sssSettingType(RuntimeContext *ctx, sssSettingType *record);
QX_API int QxInit_entityType(RuntimeContext *ctx, entityType *record);
QX_API int QxInit_poc_settingsType(RuntimeContext *ctx, poc_settingsType *record);

/*
 * Frees what a record holds: texts, lists with their items, and the same for records within; optional members only
 * if their bit is set. Clears no pointer and no bit: initialise the record before using it again. The result has no
 * meaning.
 */
QX_API int QxMemFree_isbSettingType(RuntimeContext *ctx, isbSettingType *record);
QX_API int QxMemFree_amSettingType(RuntimeContext *ctx, amSettingType *record);
QX_API int QxMemFree_ipabSettingType(RuntimeContext *ctx, ipabSettingType *record);
QX_API int QxMemFree_sssSettingType(RuntimeContext *ctx, sssSettingType *record);
QX_API int QxMemFree_entityType(RuntimeContext *ctx, entityType *record);
QX_API int QxMemFree_poc_settingsType(RuntimeContext *ctx, poc_settingsType *record);

/*
 * Prints a record as rtxPrint.h does, one line a value, each name beginning with name. Needs no context. The result is
 * that of the last line: negative if it was refused.
 */
QX_API int QxPrint_isbSettingType_incoming_session_barring(const char *name,
                                                           const isbSettingType_incoming_session_barring *record);
QX_API int QxPrint_isbSettingType(const char *name, const isbSettingType *record);
QX_API int QxPrint_amSettingType(const char *name, const amSettingType *record);
QX_API int
QxPrint_ipabSettingType_incoming_personal_alert_barring(const char *name,
                                                        const ipabSettingType_incoming_personal_alert_barring *record);
QX_API int QxPrint_ipabSettingType(const char *name, const ipabSettingType *record);
QX_API int
QxPrint_sssSettingType_simultaneous_sessions_support(const char *name,
                                                     const sssSettingType_simultaneous_sessions_support *record);
QX_API int QxPrint_sssSettingType(const char *name, const sssSettingType *record);
QX_API int QxPrint_entityType(const char *name, const entityType *record);
QX_API int QxPrint_poc_settingsType(const char *name, const poc_settingsType *record);

/* The text of a code, "_UNKNOWN_" for one that has none. Only the low 16 bits of value count. */
QX_API const char *QxamSettingType_answer_mode_ToString(uint32_t value);

/*
 * The code of a text, compared exactly; value may be null. STATUS_ENUM_NOT_FOUND, not recorded, for any other text and
 * for null; value is then untouched. ctx is not used.
 */
QX_API int QxamSettingType_answer_mode_ToEnum(RuntimeContext *ctx, const char *text, uint16_t *value);

/* Prints a line with the text of a code, as the printers of records do. */
QX_API int QxPrint_amSettingType_answer_mode(const char *name, uint32_t value);

/* ---- Encoding --------------------------------------------------------------------------------------------- */

/*
 * Writes a whole document to the context's output, NUL-terminated. Errors are those of the output
 * (STATUS_BUFFER_OVERFLOW and what rtXmlEncode.h lists). An answer mode without a text is written as "_UNKNOWN_". What
 * was written before the failure stays. A failing attribute of the root itself is recorded but does not end the
 * document, unless there is no room for it. The namespace is always declared, as the default. Foreign attributes are
 * written by the names they have; their prefixes must be declared.
 *
 * The other three are its steps, for hosts that call them themselves between rtXmlEncStartDocument and
 * rtXmlEncEndDocument; outside a document a declaration would be the host's, and stay.
 */
QX_API int QxXmlE_poc_settings(RuntimeContext *ctx, const poc_settingsType *record);
QX_API int QxXmlE_poc_settings_StartElement(RuntimeContext *ctx, const poc_settingsType *record);
QX_API int QxXmlE_poc_settings_Contents(RuntimeContext *ctx, const poc_settingsType *record);
QX_API int QxXmlE_poc_settings_EndElement(RuntimeContext *ctx, const poc_settingsType *record);

/*
 * Writes one element of a type under a name and namespace of the caller's (null: without tags). _Attrs writes the
 * attributes alone into a start tag that is open.
 */
QX_API int QxXmlET_isbSettingType_incoming_session_barring(RuntimeContext *ctx,
                                                           const isbSettingType_incoming_session_barring *record,
                                                           const char *element, const RtxNamespace *ns);
QX_API int
QxXmlET_isbSettingType_incoming_session_barring_StartElement(RuntimeContext *ctx,
                                                             const isbSettingType_incoming_session_barring *record,
                                                             const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_incoming_session_barring_Attrs(RuntimeContext *ctx,
                                                                 const isbSettingType_incoming_session_barring *record,
                                                                 const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_incoming_session_barring_Contents(
    RuntimeContext *ctx, const isbSettingType_incoming_session_barring *record, const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_incoming_session_barring_EndElement(RuntimeContext *ctx, const char *element,
                                                                      const RtxNamespace *ns);

QX_API int QxXmlET_isbSettingType(RuntimeContext *ctx, const isbSettingType *record, const char *element,
                                  const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_StartElement(RuntimeContext *ctx, const isbSettingType *record, const char *element,
                                               const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_Attrs(RuntimeContext *ctx, const isbSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_Contents(RuntimeContext *ctx, const isbSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_isbSettingType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_amSettingType(RuntimeContext *ctx, const amSettingType *record, const char *element,
                                 const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_StartElement(RuntimeContext *ctx, const amSettingType *record, const char *element,
                                              const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_Attrs(RuntimeContext *ctx, const amSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_Contents(RuntimeContext *ctx, const amSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int
QxXmlET_ipabSettingType_incoming_personal_alert_barring(RuntimeContext *ctx,
                                                        const ipabSettingType_incoming_personal_alert_barring *record,
                                                        const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_incoming_personal_alert_barring_StartElement(
    RuntimeContext *ctx, const ipabSettingType_incoming_personal_alert_barring *record, const char *element,
    const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_incoming_personal_alert_barring_Attrs(
    RuntimeContext *ctx, const ipabSettingType_incoming_personal_alert_barring *record, const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_incoming_personal_alert_barring_Contents(
    RuntimeContext *ctx, const ipabSettingType_incoming_personal_alert_barring *record, const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_incoming_personal_alert_barring_EndElement(RuntimeContext *ctx, const char *element,
                                                                              const RtxNamespace *ns);

QX_API int QxXmlET_ipabSettingType(RuntimeContext *ctx, const ipabSettingType *record, const char *element,
                                   const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_StartElement(RuntimeContext *ctx, const ipabSettingType *record, const char *element,
                                                const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_Attrs(RuntimeContext *ctx, const ipabSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_Contents(RuntimeContext *ctx, const ipabSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_ipabSettingType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int
QxXmlET_sssSettingType_simultaneous_sessions_support(RuntimeContext *ctx,
                                                     const sssSettingType_simultaneous_sessions_support *record,
                                                     const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_simultaneous_sessions_support_StartElement(
    RuntimeContext *ctx, const sssSettingType_simultaneous_sessions_support *record, const char *element,
    const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_simultaneous_sessions_support_Attrs(
    RuntimeContext *ctx, const sssSettingType_simultaneous_sessions_support *record, const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_simultaneous_sessions_support_Contents(
    RuntimeContext *ctx, const sssSettingType_simultaneous_sessions_support *record, const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_simultaneous_sessions_support_EndElement(RuntimeContext *ctx, const char *element,
                                                                           const RtxNamespace *ns);

QX_API int QxXmlET_sssSettingType(RuntimeContext *ctx, const sssSettingType *record, const char *element,
                                  const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_StartElement(RuntimeContext *ctx, const sssSettingType *record, const char *element,
                                               const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_Attrs(RuntimeContext *ctx, const sssSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_Contents(RuntimeContext *ctx, const sssSettingType *record, const RtxNamespace *ns);
QX_API int QxXmlET_sssSettingType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_entityType(RuntimeContext *ctx, const entityType *record, const char *element,
                              const RtxNamespace *ns);
QX_API int QxXmlET_entityType_StartElement(RuntimeContext *ctx, const entityType *record, const char *element,
                                           const RtxNamespace *ns);
QX_API int QxXmlET_entityType_Attrs(RuntimeContext *ctx, const entityType *record, const RtxNamespace *ns);
QX_API int QxXmlET_entityType_Contents(RuntimeContext *ctx, const entityType *record, const RtxNamespace *ns);
QX_API int QxXmlET_entityType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

QX_API int QxXmlET_poc_settingsType(RuntimeContext *ctx, const poc_settingsType *record, const char *element,
                                    const RtxNamespace *ns);
QX_API int QxXmlET_poc_settingsType_StartElement(RuntimeContext *ctx, const poc_settingsType *record,
                                                 const char *element, const RtxNamespace *ns);
QX_API int QxXmlET_poc_settingsType_Attrs(RuntimeContext *ctx, const poc_settingsType *record, const RtxNamespace *ns);
QX_API int QxXmlET_poc_settingsType_Contents(RuntimeContext *ctx, const poc_settingsType *record,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_poc_settingsType_EndElement(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

/* The same for a code, written as its text. */
QX_API int QxXmlET_amSettingType_answer_mode(RuntimeContext *ctx, uint32_t value, const char *element,
                                             const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_answer_mode_StartElement(RuntimeContext *ctx, uint32_t value, const char *element,
                                                          const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_answer_mode_Contents(RuntimeContext *ctx, uint32_t value, const RtxNamespace *ns);
QX_API int QxXmlET_amSettingType_answer_mode_EndElement(RuntimeContext *ctx, const char *element,
                                                        const RtxNamespace *ns);

/* ---- Decoding and validating ------------------------------------------------------------------------------ */

/*
 * Reads the context's input into record, which is initialised first. Reads on after an error: what is wrong is
 * left out and recorded, the rest is in the record, which must be freed in any case. Returns the status of the
 * parse if the document is not well-formed, else that of the first error on the context, older ones included.
 * STATUS_READER_FAILED: the context is unusable, has no input or a reader at work, or there is no storage for one;
 * record was not touched. Errors recorded, beside STATUS_NO_MEMORY:
 *   STATUS_ROOT_MISMATCH ["poc-settings", found], STATUS_UNEXPECTED_ELEMENT [element],
 *   STATUS_ENUM_NOT_FOUND [text], followed by STATUS_INVALID_CONTENT [text, "amSettingType", element],
 *   STATUS_UNKNOWN_ATTRIBUTE [type or child, attribute], STATUS_MISSING_ATTRIBUTE [type, attribute],
 *   STATUS_INVALID_ATTRIBUTE [type, attribute], which follows the status of an active that does not convert.
 * A setting without the element that holds its value is no error: the value is then 0. Entities and all in them stand
 * in zeroed storage.
 */
QX_API int QxXmlD_poc_settings(RuntimeContext *ctx, poc_settingsType *record);

/*
 * Checks the context's input without building a record: as decoding, but the attributes of an entity are looked at
 * only for id, and foreign elements are not looked into: their own attributes are STATUS_UNKNOWN_ATTRIBUTE
 * ["", attribute].
 */
QX_API int QxXmlV_poc_settings(RuntimeContext *ctx);

/*
 * The handlers, for hosts that drive a reader themselves. level is 0. An init that finds no storage gives
 * STATUS_NO_MEMORY, not recorded; children with a handler of their own are then refused. The owner frees
 * delegateStorage.
 */
QX_API int QxSAX_isbSettingType_incoming_session_barring_init(RuntimeContext *ctx, SaxTypeHandler *handler,
                                                              isbSettingType_incoming_session_barring *record,
                                                              int32_t level);
QX_API int QxSAX_isbSettingType_incoming_session_barring_startElement(void *handler, const char *localName,
                                                                      const char *qualifiedName,
                                                                      const char *const *attributes);
QX_API int QxSAX_isbSettingType_incoming_session_barring_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_isbSettingType_incoming_session_barring_endElement(void *handler, const char *localName,
                                                                    const char *qualifiedName);

QX_API int QxSAX_isbSettingType_init(RuntimeContext *ctx, SaxTypeHandler *handler, isbSettingType *record,
                                     int32_t level);
QX_API int QxSAX_isbSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxSAX_isbSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_isbSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_amSettingType_init(RuntimeContext *ctx, SaxTypeHandler *handler, amSettingType *record, int32_t level);
QX_API int QxSAX_amSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                            const char *const *attributes);
QX_API int QxSAX_amSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_amSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int
QxSAX_ipabSettingType_incoming_personal_alert_barring_init(RuntimeContext *ctx, SaxTypeHandler *handler,
                                                           ipabSettingType_incoming_personal_alert_barring *record,
                                                           int32_t level);
QX_API int QxSAX_ipabSettingType_incoming_personal_alert_barring_startElement(void *handler, const char *localName,
                                                                              const char *qualifiedName,
                                                                              const char *const *attributes);
QX_API int QxSAX_ipabSettingType_incoming_personal_alert_barring_characters(void *handler, const char *bytes,
                                                                            size_t length);
QX_API int QxSAX_ipabSettingType_incoming_personal_alert_barring_endElement(void *handler, const char *localName,
                                                                            const char *qualifiedName);

QX_API int QxSAX_ipabSettingType_init(RuntimeContext *ctx, SaxTypeHandler *handler, ipabSettingType *record,
                                      int32_t level);
QX_API int QxSAX_ipabSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxSAX_ipabSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_ipabSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_sssSettingType_simultaneous_sessions_support_init(RuntimeContext *ctx, SaxTypeHandler *handler,
                                                                   sssSettingType_simultaneous_sessions_support *record,
                                                                   int32_t level);
QX_API int QxSAX_sssSettingType_simultaneous_sessions_support_startElement(void *handler, const char *localName,
                                                                           const char *qualifiedName,
                                                                           const char *const *attributes);
QX_API int QxSAX_sssSettingType_simultaneous_sessions_support_characters(void *handler, const char *bytes,
                                                                         size_t length);
QX_API int QxSAX_sssSettingType_simultaneous_sessions_support_endElement(void *handler, const char *localName,
                                                                         const char *qualifiedName);

QX_API int QxSAX_sssSettingType_init(RuntimeContext *ctx, SaxTypeHandler *handler, sssSettingType *record,
                                     int32_t level);
QX_API int QxSAX_sssSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxSAX_sssSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_sssSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_entityType_init(RuntimeContext *ctx, SaxTypeHandler *handler, entityType *record, int32_t level);
QX_API int QxSAX_entityType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                         const char *const *attributes);
QX_API int QxSAX_entityType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_entityType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxSAX_poc_settingsType_init(RuntimeContext *ctx, SaxTypeHandler *handler, poc_settingsType *record,
                                       int32_t level);
QX_API int QxSAX_poc_settingsType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxSAX_poc_settingsType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxSAX_poc_settingsType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_isbSettingType_incoming_session_barring_init(RuntimeContext *ctx, VsaxTypeHandler *handler,
                                                               int32_t level);
QX_API int QxVSAX_isbSettingType_incoming_session_barring_startElement(void *handler, const char *localName,
                                                                       const char *qualifiedName,
                                                                       const char *const *attributes);
QX_API int QxVSAX_isbSettingType_incoming_session_barring_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_isbSettingType_incoming_session_barring_endElement(void *handler, const char *localName,
                                                                     const char *qualifiedName);

QX_API int QxVSAX_isbSettingType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_isbSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxVSAX_isbSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_isbSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_amSettingType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_amSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                             const char *const *attributes);
QX_API int QxVSAX_amSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_amSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_ipabSettingType_incoming_personal_alert_barring_init(RuntimeContext *ctx, VsaxTypeHandler *handler,
                                                                       int32_t level);
QX_API int QxVSAX_ipabSettingType_incoming_personal_alert_barring_startElement(void *handler, const char *localName,
                                                                               const char *qualifiedName,
                                                                               const char *const *attributes);
QX_API int QxVSAX_ipabSettingType_incoming_personal_alert_barring_characters(void *handler, const char *bytes,
                                                                             size_t length);
QX_API int QxVSAX_ipabSettingType_incoming_personal_alert_barring_endElement(void *handler, const char *localName,
                                                                             const char *qualifiedName);

QX_API int QxVSAX_ipabSettingType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_ipabSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                               const char *const *attributes);
QX_API int QxVSAX_ipabSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_ipabSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_sssSettingType_simultaneous_sessions_support_init(RuntimeContext *ctx, VsaxTypeHandler *handler,
                                                                    int32_t level);
QX_API int QxVSAX_sssSettingType_simultaneous_sessions_support_startElement(void *handler, const char *localName,
                                                                            const char *qualifiedName,
                                                                            const char *const *attributes);
QX_API int QxVSAX_sssSettingType_simultaneous_sessions_support_characters(void *handler, const char *bytes,
                                                                          size_t length);
QX_API int QxVSAX_sssSettingType_simultaneous_sessions_support_endElement(void *handler, const char *localName,
                                                                          const char *qualifiedName);

QX_API int QxVSAX_sssSettingType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_sssSettingType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                              const char *const *attributes);
QX_API int QxVSAX_sssSettingType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_sssSettingType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_entityType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_entityType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                          const char *const *attributes);
QX_API int QxVSAX_entityType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_entityType_endElement(void *handler, const char *localName, const char *qualifiedName);

QX_API int QxVSAX_poc_settingsType_init(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
QX_API int QxVSAX_poc_settingsType_startElement(void *handler, const char *localName, const char *qualifiedName,
                                                const char *const *attributes);
QX_API int QxVSAX_poc_settingsType_characters(void *handler, const char *bytes, size_t length);
QX_API int QxVSAX_poc_settingsType_endElement(void *handler, const char *localName, const char *qualifiedName);

#ifdef __cplusplus
}
#endif

#endif
