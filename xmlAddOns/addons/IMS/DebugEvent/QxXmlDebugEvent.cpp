// The tables of debug information, and the functions on its records.
#include "Functions.h"
#include "QxXmlDebugEventTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/DebugEvent/QxXmlDebugEvent"

constexpr ModuleSchema module = {.name = "DebugEvent",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "tns_",
                                 .namespaces = &debugNamespaces,
                                 .namespaceIndex = debugInfoNamespace,
                                 .uri = "urn:ietf:params:xml:ns:debuginfo",
                                 .qualifiedAttributes = true};

constexpr int8_t ns = debugInfoNamespace;

// ---- Enumerations ---------------------------------------------------------------------------------------------

constexpr RtxEnumRow reasonRows[] = {{"dialog_established", 0, 18, 0}, {"session_end", 1, 11, 1}};
constexpr EnumSchema tns__reasonEnum = makeEnum("tns__reason", &module, 7, reasonRows);

constexpr RtxEnumRow depthRows[] = {{"maximum", 0, 7, 0}, {"minimum", 1, 7, 1}};
constexpr EnumSchema tns__depthEnum = makeEnum("tns__depth", &module, 8, depthRows);

constexpr RtxEnumRow stateRows[] = {{"full", 0, 4, 0}, {"partial", 1, 7, 1}};
constexpr EnumSchema tns__stateEnum = makeEnum("tns__state", &module, 9, stateRows);

// ---- Triggers and control ---------------------------------------------------------------------------------------

constexpr RtSaxElementInfo startElements[] = {{"from", ns, 0, 1},    {"to", ns, 0, 1},     {"icsi", ns, 0, 1},
                                              {"iari", ns, 0, 1},    {"method", ns, 0, 1}, {"time", ns, 0, 1},
                                              {"debug-id", ns, 0, 1}};
constexpr uint8_t startStates[] = {
    1,   no,  no,  no,  no,  no,  no,  // from
    2,   2,   no,  no,  no,  no,  no,  // to
    3,   3,   3,   no,  no,  no,  no,  // icsi
    4,   4,   4,   4,   no,  no,  no,  // iari
    5,   5,   5,   5,   5,   no,  no,  // method
    6,   6,   6,   6,   6,   6,   no,  // time
    fin, fin, fin, fin, fin, fin, fin, // debug-id
};
QX_TYPE(tns__start_trigger, 1, .content = Content::elements, .elements = startElements, .states = startStates);
constexpr Field tns__start_triggerRows[] = {
    ELEMENT(tns__start_trigger, tns_from, .bit = 1),
    ELEMENT(tns__start_trigger, tns_to, .bit = 2),
    ELEMENT(tns__start_trigger, tns_icsi, .bit = 4),
    ELEMENT(tns__start_trigger, tns_iari, .bit = 8),
    ELEMENT(tns__start_trigger, tns_method, .bit = 16),
    ELEMENT(tns__start_trigger, tns_time, .bit = 32, .flags = collapsed),
    ELEMENT(tns__start_trigger, tns_debug_id, .bit = 64),
};
IMS_DEFINE(tns__start_trigger)

constexpr RtSaxElementInfo stopElements[] = {{"time", ns, 0, 1}, {"time-period", ns, 0, 1}, {"reason", ns, 0, 1}};
constexpr uint8_t stopStates[] = {
    1,   no,  no,  // time
    2,   2,   no,  // time-period
    fin, fin, fin, // reason
};
QX_TYPE(tns__stop_trigger, 2, .content = Content::elements, .elements = stopElements, .states = stopStates);
constexpr Field tns__stop_triggerRows[] = {
    ELEMENT(tns__stop_trigger, tns_time, .bit = 1, .flags = collapsed),
    ELEMENT(tns__stop_trigger, tns_time_period, .bit = 2),
    ELEMENT(tns__stop_trigger, tns_reason, .bit = 4, .enumeration = &tns__reasonEnum),
};
IMS_DEFINE(tns__stop_trigger)

constexpr RtSaxElementInfo controlElements[] = {{"interface", ns, 1, 1}, {"depth", ns, 0, 1}, {"debug-id", ns, 0, 1}};
constexpr uint8_t controlStates[] = {
    1,  no,  no,  // interface
    no, 2,   no,  // depth
    no, fin, fin, // debug-id
};
QX_TYPE(tns__control, 3, .content = Content::elements, .elements = controlElements, .states = controlStates);
constexpr Field tns__controlRows[] = {
    ELEMENT(tns__control, tns_interface),
    ELEMENT(tns__control, tns_depth, .bit = 1, .enumeration = &tns__depthEnum),
    ELEMENT(tns__control, tns_debug_id, .bit = 2),
};
IMS_DEFINE(tns__control)

// ---- Sessions and whose they are --------------------------------------------------------------------------------

constexpr RtSaxElementInfo sessionElements[] = {
    {"start-trigger", ns, 1, 1}, {"stop-trigger", ns, 1, 1}, {"control", ns, 1, 1}};
constexpr uint8_t sessionStates[] = {
    1,  no, no,  // start-trigger
    no, 2,  no,  // stop-trigger
    no, no, fin, // control
};
constexpr const char *sessionAttributes[] = {"id"};
QX_TYPE(tns__session, 4, .content = Content::elements, .elements = sessionElements, .states = sessionStates,
        .attributes = sessionAttributes, .requiredAttributes = 1);
constexpr Field tns__sessionRows[] = {
    ELEMENT(tns__session, tns_start_trigger),
    ELEMENT(tns__session, tns_stop_trigger),
    ELEMENT(tns__session, tns_control),
    ATTRIBUTE(tns__session, tns_id),
};
IMS_DEFINE(tns__session)

constexpr RtSaxElementInfo configElements[] = {{"session", ns, 0, many}};
constexpr uint8_t configStates[] = {1, 1};
constexpr const char *configAttributes[] = {"aor"};
QX_TYPE(tns__debugconfig, 5, .content = Content::elements, .elements = configElements, .states = configStates,
        .attributes = configAttributes, .requiredAttributes = 1);
constexpr Field tns__debugconfigRows[] = {
    ELEMENT(tns__debugconfig, tns_session, .items = &tns__sessionSchema),
    ATTRIBUTE(tns__debugconfig, tns_aor),
};
IMS_DEFINE(tns__debugconfig)

constexpr RtSaxElementInfo infoElements[] = {{"debugconfig", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t infoStates[] = {
    1, 1, no, // debugconfig
    2, 2, 2,  // any
};
constexpr const char *infoAttributes[] = {"version", "state"};
QX_TYPE(tns__debuginfo, 6, .content = Content::elements, .elements = infoElements, .states = infoStates,
        .attributes = infoAttributes, .requiredAttributes = 3);
constexpr Field tns__debuginfoRows[] = {
    ELEMENT(tns__debuginfo, tns_debugconfig, .items = &tns__debugconfigSchema),
    ELEMENT(tns__debuginfo, anyElems),
    ATTRIBUTE(tns__debuginfo, tns_version),
    ATTRIBUTE(tns__debuginfo, tns_state, .enumeration = &tns__stateEnum),
};
IMS_DEFINE(tns__debuginfo)

// ---- Documents ------------------------------------------------------------------------------------------------

constexpr SimpleType textValue = {.kind = Kind::text, .enumeration = nullptr, .collapsed = false};
constexpr SimpleType collapsedTextValue = {.kind = Kind::text, .enumeration = nullptr, .collapsed = true};
constexpr SimpleType bytesValue = {.kind = Kind::hexBinary, .enumeration = nullptr, .collapsed = false};
constexpr SimpleType reasonValue = {.kind = Kind::enumeration, .enumeration = &tns__reasonEnum, .collapsed = false};
constexpr SimpleType depthValue = {.kind = Kind::enumeration, .enumeration = &tns__depthEnum, .collapsed = false};

constexpr DocumentSchema simpleDocument(const char *root, uint16_t number, const SimpleType &simple) {
  return makeDocument({.root = root,
                       .module = &module,
                       .number = number,
                       .simple = &simple,
                       .declaration = Declaration::defaultAlways});
}

constexpr DocumentSchema recordDocument(const char *root, uint16_t number, const TypeSchema &type) {
  return makeDocument({.root = root,
                       .module = &module,
                       .number = number,
                       .type = &type,
                       .declaration = Declaration::prefix,
                       .prefix = "tns"});
}

constexpr DocumentSchema tns_timeDocument = simpleDocument("time", 1, collapsedTextValue);
constexpr DocumentSchema tns_fromDocument = simpleDocument("from", 2, textValue);
constexpr DocumentSchema tns_toDocument = simpleDocument("to", 3, textValue);
constexpr DocumentSchema tns_methodDocument = simpleDocument("method", 4, textValue);
constexpr DocumentSchema tns_icsiDocument = simpleDocument("icsi", 5, textValue);
constexpr DocumentSchema tns_iariDocument = simpleDocument("iari", 6, textValue);
constexpr DocumentSchema tns_debug_idDocument = simpleDocument("debug-id", 7, bytesValue);
constexpr DocumentSchema tns_time_periodDocument = simpleDocument("time-period", 8, textValue);
constexpr DocumentSchema tns_reasonDocument = simpleDocument("reason", 9, reasonValue);
constexpr DocumentSchema tns_interfaceDocument = simpleDocument("interface", 10, textValue);
constexpr DocumentSchema tns_depthDocument = simpleDocument("depth", 11, depthValue);
constexpr DocumentSchema tns_start_triggerDocument = recordDocument("start-trigger", 12, tns__start_triggerSchema);
constexpr DocumentSchema tns_stop_triggerDocument = recordDocument("stop-trigger", 13, tns__stop_triggerSchema);
constexpr DocumentSchema tns_controlDocument = recordDocument("control", 14, tns__controlSchema);
constexpr DocumentSchema tns_sessionDocument = recordDocument("session", 15, tns__sessionSchema);
constexpr DocumentSchema tns_debugconfigDocument = recordDocument("debugconfig", 16, tns__debugconfigSchema);
constexpr DocumentSchema tns_debuginfoDocument = recordDocument("debuginfo", 17, tns__debuginfoSchema);

// ---- Functions ------------------------------------------------------------------------------------------------

QX_INIT(tns__start_trigger)
QX_INIT(tns__stop_trigger)
QX_INIT(tns__control)
QX_INIT(tns__session)
QX_INIT(tns__debugconfig)
QX_INIT(tns__debuginfo)

QX_FREE(tns__start_trigger)
QX_FREE(tns__stop_trigger)
QX_FREE(tns__control)
QX_FREE(tns__session)
QX_FREE(tns__debugconfig)
QX_FREE(tns__debuginfo)

QX_PRINT(tns__start_trigger)
QX_PRINT(tns__stop_trigger)
QX_PRINT(tns__control)
QX_PRINT(tns__session)
QX_PRINT(tns__debugconfig)
QX_PRINT(tns__debuginfo)

QX_ENUM_TEXT(tns__reason)
QX_ENUM_TEXT(tns__depth)
QX_ENUM_TEXT(tns__state)

QX_ENUM_CODE(tns__reason)
QX_ENUM_CODE(tns__depth)
QX_ENUM_CODE(tns__state)

QX_ENUM_PRINT(tns__reason)
QX_ENUM_PRINT(tns__depth)
QX_ENUM_PRINT_AS(QxDbPrint, tns__state)
