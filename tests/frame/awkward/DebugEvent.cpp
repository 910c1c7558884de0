#include "DebugEvent.h"

namespace awkward {

namespace {

using namespace ims;

#define SOURCE "awkward/DebugEvent"

constexpr ModuleSchema module = {.name = "DebugEvent",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "tns_",
                                 .namespaces = &debugNamespaces,
                                 .namespaceIndex = debugInfoNamespace,
                                 .uri = "urn:ietf:params:xml:ns:debuginfo",
                                 .qualifiedAttributes = true};

constexpr int8_t ns = debugInfoNamespace;

constexpr RtxEnumRow reasonRows[] = {{"dialog_established", 0, 18, 0}, {"session_end", 1, 11, 1}};
constexpr RtxEnumRow depthRows[] = {{"maximum", 0, 7, 0}, {"minimum", 1, 7, 1}};
constexpr RtxEnumRow stateRows[] = {{"full", 0, 4, 0}, {"partial", 1, 7, 1}};

} // namespace

constexpr EnumSchema reasonEnumeration = makeEnum("tns__reason", &module, 7, reasonRows);
constexpr EnumSchema depthEnumeration = makeEnum("tns__depth", &module, 8, depthRows);
constexpr EnumSchema debugStateEnumeration = makeEnum("tns__state", &module, 9, stateRows);

namespace {

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
constexpr TypeOptions tns__start_triggerOptions = {.name = "tns__start_trigger",
                                                   .module = &module,
                                                   .number = 1,
                                                   .decoding = decoding,
                                                   .validating = validating,
                                                   .content = Content::elements,
                                                   .elements = startElements,
                                                   .states = startStates};
constexpr Field tns__start_triggerRows[] = {
    ELEMENT(tns__start_trigger, tns_from, .bit = 1),
    ELEMENT(tns__start_trigger, tns_to, .bit = 2),
    ELEMENT(tns__start_trigger, tns_icsi, .bit = 4),
    ELEMENT(tns__start_trigger, tns_iari, .bit = 8),
    ELEMENT(tns__start_trigger, tns_method, .bit = 16),
    ELEMENT(tns__start_trigger, tns_time, .bit = 32, .flags = collapsed),
    ELEMENT(tns__start_trigger, tns_debug_id, .bit = 64),
};

constexpr RtSaxElementInfo stopElements[] = {{"time", ns, 0, 1}, {"time-period", ns, 0, 1}, {"reason", ns, 0, 1}};
constexpr uint8_t stopStates[] = {
    1,   no,  no,  // time
    2,   2,   no,  // time-period
    fin, fin, fin, // reason
};
constexpr TypeOptions tns__stop_triggerOptions = {.name = "tns__stop_trigger",
                                                  .module = &module,
                                                  .number = 2,
                                                  .decoding = decoding,
                                                  .validating = validating,
                                                  .content = Content::elements,
                                                  .elements = stopElements,
                                                  .states = stopStates};
constexpr Field tns__stop_triggerRows[] = {
    ELEMENT(tns__stop_trigger, tns_time, .bit = 1, .flags = collapsed),
    ELEMENT(tns__stop_trigger, tns_time_period, .bit = 2),
    ELEMENT(tns__stop_trigger, tns_reason, .bit = 4, .enumeration = &reasonEnumeration),
};

constexpr RtSaxElementInfo controlElements[] = {{"interface", ns, 1, 1}, {"depth", ns, 0, 1}, {"debug-id", ns, 0, 1}};
constexpr uint8_t controlStates[] = {
    1,  no,  no,  // interface
    no, 2,   no,  // depth
    no, fin, fin, // debug-id
};
constexpr TypeOptions tns__controlOptions = {.name = "tns__control",
                                             .module = &module,
                                             .number = 3,
                                             .decoding = decoding,
                                             .validating = validating,
                                             .content = Content::elements,
                                             .elements = controlElements,
                                             .states = controlStates};
constexpr Field tns__controlRows[] = {
    ELEMENT(tns__control, tns_interface),
    ELEMENT(tns__control, tns_depth, .bit = 1, .enumeration = &depthEnumeration),
    ELEMENT(tns__control, tns_debug_id, .bit = 2),
};

} // namespace

AWKWARD_DEFINE(tns__start_trigger)
AWKWARD_DEFINE(tns__stop_trigger)
AWKWARD_DEFINE(tns__control)

namespace {

constexpr RtSaxElementInfo sessionElements[] = {
    {"start-trigger", ns, 1, 1}, {"stop-trigger", ns, 1, 1}, {"control", ns, 1, 1}};
constexpr uint8_t sessionStates[] = {
    1,  no, no,  // start-trigger
    no, 2,  no,  // stop-trigger
    no, no, fin, // control
};
constexpr const char *sessionAttributes[] = {"id"};
constexpr TypeOptions tns__sessionOptions = {.name = "tns__session",
                                             .module = &module,
                                             .number = 4,
                                             .decoding = decoding,
                                             .validating = validating,
                                             .content = Content::elements,
                                             .elements = sessionElements,
                                             .states = sessionStates,
                                             .attributes = sessionAttributes,
                                             .requiredAttributes = 1};
constexpr Field tns__sessionRows[] = {
    ELEMENT(tns__session, tns_start_trigger),
    ELEMENT(tns__session, tns_stop_trigger),
    ELEMENT(tns__session, tns_control),
    ATTRIBUTE(tns__session, tns_id),
};

} // namespace

AWKWARD_DEFINE(tns__session)

namespace {

constexpr RtSaxElementInfo configElements[] = {{"session", ns, 0, many}};
constexpr uint8_t configStates[] = {1, 1};
constexpr const char *configAttributes[] = {"aor"};
constexpr TypeOptions tns__debugconfigOptions = {.name = "tns__debugconfig",
                                                 .module = &module,
                                                 .number = 5,
                                                 .decoding = decoding,
                                                 .validating = validating,
                                                 .content = Content::elements,
                                                 .elements = configElements,
                                                 .states = configStates,
                                                 .attributes = configAttributes,
                                                 .requiredAttributes = 1};
constexpr Field tns__debugconfigRows[] = {
    ELEMENT(tns__debugconfig, tns_session, .items = &tns__sessionSchema),
    ATTRIBUTE(tns__debugconfig, tns_aor),
};

} // namespace

AWKWARD_DEFINE(tns__debugconfig)

namespace {

constexpr RtSaxElementInfo infoElements[] = {{"debugconfig", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t infoStates[] = {
    1, 1, no, // debugconfig
    2, 2, 2,  // any
};
constexpr const char *infoAttributes[] = {"version", "state"};
constexpr TypeOptions tns__debuginfoOptions = {.name = "tns__debuginfo",
                                               .module = &module,
                                               .number = 6,
                                               .decoding = decoding,
                                               .validating = validating,
                                               .content = Content::elements,
                                               .elements = infoElements,
                                               .states = infoStates,
                                               .attributes = infoAttributes,
                                               .requiredAttributes = 3};
constexpr Field tns__debuginfoRows[] = {
    ELEMENT(tns__debuginfo, tns_debugconfig, .items = &tns__debugconfigSchema),
    ELEMENT(tns__debuginfo, anyElems),
    ATTRIBUTE(tns__debuginfo, tns_version),
    ATTRIBUTE(tns__debuginfo, tns_state, .enumeration = &debugStateEnumeration),
};

constexpr SimpleType time = {Kind::text, nullptr, true};
constexpr SimpleType debugId = {Kind::hexBinary, nullptr, false};
constexpr SimpleType reason = {Kind::enumeration, &reasonEnumeration, false};

constexpr DocumentSchema recordDocument(const char *root, uint16_t number, const TypeSchema &type) {
  return makeDocument({.root = root,
                       .module = &module,
                       .number = number,
                       .type = &type,
                       .declaration = Declaration::prefix,
                       .prefix = "tns"});
}

constexpr DocumentSchema simpleDocument(const char *root, uint16_t number, const SimpleType &simple) {
  return makeDocument({.root = root,
                       .module = &module,
                       .number = number,
                       .simple = &simple,
                       .declaration = Declaration::defaultAlways});
}

} // namespace

AWKWARD_DEFINE(tns__debuginfo)

constexpr DocumentSchema tns_start_triggerDocument = recordDocument("start-trigger", 1, tns__start_triggerSchema);
constexpr DocumentSchema tns_controlDocument = recordDocument("control", 2, tns__controlSchema);
constexpr DocumentSchema tns_sessionDocument = recordDocument("session", 3, tns__sessionSchema);
constexpr DocumentSchema tns_debuginfoDocument = recordDocument("debuginfo", 4, tns__debuginfoSchema);
constexpr DocumentSchema tns_timeDocument = simpleDocument("time", 5, time);
constexpr DocumentSchema tns_debug_idDocument = simpleDocument("debug-id", 6, debugId);
constexpr DocumentSchema tns_reasonDocument = simpleDocument("reason", 7, reason);

} // namespace awkward
