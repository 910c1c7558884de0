// The tables of dialog state, and the functions on its records.
#include "Functions.h"
#include "QxXmlDialogInfoTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfo"

constexpr ModuleSchema module = {.name = "DialogInfo",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "tns_",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = dialogInfoNamespace,
                                 .uri = "urn:ietf:params:xml:ns:dialog-info",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = dialogInfoNamespace;

// ---- Enumerations ---------------------------------------------------------------------------------------------

constexpr RtxEnumRow infoStateRows[] = {{"full", 0, 4, 0}, {"partial", 1, 7, 1}};
constexpr EnumSchema tns__dialog_info_stateEnum = makeEnum("tns__dialog_info_state", &module, 11, infoStateRows);

constexpr RtxEnumRow eventRows[] = {{"cancelled", 0, 9, 0}, {"error", 5, 5, 3},       {"local-bye", 3, 9, 5},
                                    {"rejected", 1, 8, 2},  {"remote-bye", 4, 10, 4}, {"replaced", 2, 8, 1},
                                    {"timeout", 6, 7, 6}};
constexpr EnumSchema tns__state_eventEnum = makeEnum("tns__state_event", &module, 12, eventRows);

constexpr RtxEnumRow directionRows[] = {{"initiator", 0, 9, 0}, {"recipient", 1, 9, 1}};
constexpr EnumSchema tns__dialog_directionEnum = makeEnum("tns__dialog_direction", &module, 13, directionRows);

// ---- Texts with attributes ------------------------------------------------------------------------------------

constexpr const char *stateAttributes[] = {"event", "code"};
QX_TYPE(tns__state, 1, .content = Content::text, .attributes = stateAttributes, .pinned = initialisesAt<88>);
constexpr Field tns__stateRows[] = {
    CONTENT(tns__state, value),
    ATTRIBUTE(tns__state, tns_event, .bit = 1, .flags = presentAlways, .enumeration = &tns__state_eventEnum),
    ATTRIBUTE(tns__state, tns_code, .bit = 2, .flags = presentAlways, .minimum = 100, .maximum = 699),
    CARRIED(tns__state, nsDecls),
};
IMS_DEFINE(tns__state)

constexpr const char *nameaddrAttributes[] = {"display-name"};
QX_TYPE(tns_nameaddr, 3, .content = Content::text, .attributes = nameaddrAttributes, .pinned = initialisesAt<120>);
constexpr Field tns_nameaddrRows[] = {
    CONTENT(tns_nameaddr, value),
    ATTRIBUTE(tns_nameaddr, tns_display_name, .bit = 1),
    CARRIED(tns_nameaddr, nsDecls),
};
IMS_DEFINE(tns_nameaddr)

constexpr const char *sessdAttributes[] = {"type"};
QX_TYPE(tns_sessd, 7, .content = Content::text, .attributes = sessdAttributes, .requiredAttributes = 1,
        .pinned = initialisesAt<210>);
constexpr Field tns_sessdRows[] = {
    CONTENT(tns_sessd, value),
    ATTRIBUTE(tns_sessd, tns_type),
    CARRIED(tns_sessd, nsDecls),
};
IMS_DEFINE(tns_sessd)

// ---- Attributes alone -----------------------------------------------------------------------------------------

constexpr const char *replacesAttributes[] = {"call-id", "local-tag", "remote-tag"};
QX_TYPE(tns__dialog_replaces, 2, .content = Content::nothing, .attributes = replacesAttributes, .requiredAttributes = 7,
        .pinned = initialisesAt<106>);
constexpr Field tns__dialog_replacesRows[] = {
    ATTRIBUTE(tns__dialog_replaces, tns_call_id),
    ATTRIBUTE(tns__dialog_replaces, tns_local_tag),
    ATTRIBUTE(tns__dialog_replaces, tns_remote_tag),
};
IMS_DEFINE(tns__dialog_replaces)

constexpr const char *paramAttributes[] = {"pname", "pval"};
QX_TYPE(tns_participant_target_param, 5, .content = Content::nothing, .attributes = paramAttributes,
        .requiredAttributes = 3, .pinned = initialisesAt<173>);
constexpr Field tns_participant_target_paramRows[] = {
    ATTRIBUTE(tns_participant_target_param, tns_pname),
    ATTRIBUTE(tns_participant_target_param, tns_pval),
};
IMS_DEFINE(tns_participant_target_param)

// ---- Children -------------------------------------------------------------------------------------------------

constexpr RtSaxElementInfo routeSetElements[] = {{"hop", ns, 1, many}};
QX_TYPE(tns__dialog_route_set, 4, .content = Content::named, .flags = noEmptyList, .elements = routeSetElements,
        .pinned = initialisesAt<144>);
constexpr Field tns__dialog_route_setRows[] = {ELEMENT(tns__dialog_route_set, tns_hop)};
IMS_DEFINE(tns__dialog_route_set)

constexpr RtSaxElementInfo targetElements[] = {{"param", ns, 0, many}};
constexpr uint8_t targetStates[] = {1, 1};
constexpr const char *targetAttributes[] = {"uri"};
QX_TYPE(tns_participant_target, 6, .content = Content::elements, .elements = targetElements, .states = targetStates,
        .attributes = targetAttributes, .requiredAttributes = 1, .pinned = initialisesAt<186>);
constexpr Field tns_participant_targetRows[] = {
    ELEMENT(tns_participant_target, tns_param, .items = &tns_participant_target_paramSchema),
    ATTRIBUTE(tns_participant_target, tns_uri),
};
IMS_DEFINE(tns_participant_target)

constexpr RtSaxElementInfo participantElements[] = {{"identity", ns, 0, 1},
                                                    {"target", ns, 0, 1},
                                                    {"session-description", ns, 0, 1},
                                                    {"cseq", ns, 0, 1},
                                                    {"", ns, 0, many}};
constexpr uint8_t participantStates[] = {
    1, no, no, no, no, no, // identity
    2, 2,  no, no, no, no, // target
    3, 3,  3,  no, no, no, // session-description
    4, 4,  4,  4,  no, no, // cseq
    5, 5,  5,  5,  5,  5,  // any
};
QX_TYPE(tns_participant, 8, .content = Content::elements, .elements = participantElements, .states = participantStates,
        .pinned = initialisesAt<231>);
constexpr Field tns_participantRows[] = {
    ELEMENT(tns_participant, tns_identity, .bit = 1),
    ELEMENT(tns_participant, tns_target, .bit = 2),
    ELEMENT(tns_participant, tns_session_description, .bit = 4),
    ELEMENT(tns_participant, tns_cseq, .bit = 8),
    ELEMENT(tns_participant, anyElems),
};
IMS_DEFINE(tns_participant)

constexpr RtSaxElementInfo dialogElements[] = {
    {"state", ns, 1, 1},     {"duration", ns, 0, 1}, {"replaces", ns, 0, 1}, {"referred-by", ns, 0, 1},
    {"route-set", ns, 0, 1}, {"local", ns, 0, 1},    {"remote", ns, 0, 1},   {"", ns, 0, many}};
constexpr uint8_t dialogStates[] = {
    1,  no, no, no, no, no, no, no, no, // state
    no, 2,  no, no, no, no, no, no, no, // duration
    no, 3,  3,  no, no, no, no, no, no, // replaces
    no, 4,  4,  4,  no, no, no, no, no, // referred-by
    no, 5,  5,  5,  5,  no, no, no, no, // route-set
    no, 6,  6,  6,  6,  6,  no, no, no, // local
    no, 7,  7,  7,  7,  7,  7,  no, no, // remote
    no, 8,  8,  8,  8,  8,  8,  8,  8,  // any
};
constexpr const char *dialogAttributes[] = {"id", "call-id", "local-tag", "remote-tag", "direction"};
QX_TYPE(tns__dialog, 9, .content = Content::elements, .elements = dialogElements, .states = dialogStates,
        .attributes = dialogAttributes, .requiredAttributes = 1, .pinned = initialisesAt<289>);
constexpr Field tns__dialogRows[] = {
    ELEMENT(tns__dialog, tns_state),
    ELEMENT(tns__dialog, tns_duration, .bit = 1),
    ELEMENT(tns__dialog, tns_replaces, .bit = 2),
    ELEMENT(tns__dialog, tns_referred_by, .bit = 4),
    ELEMENT(tns__dialog, tns_route_set, .bit = 8),
    ELEMENT(tns__dialog, tns_local, .bit = 16),
    ELEMENT(tns__dialog, tns_remote, .bit = 32),
    ELEMENT(tns__dialog, anyElems),
    ATTRIBUTE(tns__dialog, tns_id),
    ATTRIBUTE(tns__dialog, tns_call_id, .bit = 64),
    ATTRIBUTE(tns__dialog, tns_local_tag, .bit = 128),
    ATTRIBUTE(tns__dialog, tns_remote_tag, .bit = 256),
    ATTRIBUTE(tns__dialog, tns_direction, .bit = 512, .flags = presentAlways,
              .enumeration = &tns__dialog_directionEnum),
};
IMS_DEFINE(tns__dialog)

constexpr RtSaxElementInfo dialogInfoElements[] = {{"dialog", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t dialogInfoStates[] = {
    1, 1, no, // dialog
    2, 2, 2,  // any
};
constexpr const char *dialogInfoAttributes[] = {"version", "state", "entity"};
QX_TYPE(tns__dialog_info, 10, .content = Content::elements, .elements = dialogInfoElements, .states = dialogInfoStates,
        .attributes = dialogInfoAttributes, .requiredAttributes = 7, .pinned = initialisesAt<351>);
constexpr Field tns__dialog_infoRows[] = {
    ELEMENT(tns__dialog_info, tns_dialog, .items = &tns__dialogSchema),
    ELEMENT(tns__dialog_info, anyElems),
    ATTRIBUTE(tns__dialog_info, tns_version),
    ATTRIBUTE(tns__dialog_info, tns_state, .enumeration = &tns__dialog_info_stateEnum),
    ATTRIBUTE(tns__dialog_info, tns_entity),
};
IMS_DEFINE(tns__dialog_info)

// ---- Documents -------------------------------------------------------------------------------------------------

constexpr DocumentSchema tns_stateDocument = makeDocument({.root = "state",
                                                           .module = &module,
                                                           .number = 1,
                                                           .type = &tns__stateSchema,
                                                           .declaration = Declaration::prefixInRecord,
                                                           .prefix = "tns"});
constexpr DocumentSchema tns_dialogDocument = makeDocument({.root = "dialog",
                                                            .module = &module,
                                                            .number = 2,
                                                            .type = &tns__dialogSchema,
                                                            .declaration = Declaration::prefix,
                                                            .prefix = "tns"});
constexpr DocumentSchema tns_dialog_infoDocument = makeDocument({.root = "dialog-info",
                                                                 .module = &module,
                                                                 .number = 3,
                                                                 .type = &tns__dialog_infoSchema,
                                                                 .declaration = Declaration::prefix,
                                                                 .prefix = "tns"});

// ---- Functions -------------------------------------------------------------------------------------------------

QX_INIT(tns__state)
QX_INIT(tns__dialog_replaces)
QX_INIT(tns_nameaddr)
QX_INIT(tns__dialog_route_set)
QX_INIT(tns_participant_target_param)
QX_INIT(tns_participant_target)
QX_INIT(tns_sessd)
QX_INIT(tns_participant)
QX_INIT(tns__dialog)
QX_INIT(tns__dialog_info)

QX_FREE(tns__state)
QX_FREE(tns_nameaddr)
QX_FREE(tns__dialog_route_set)
QX_FREE(tns_participant_target)
QX_FREE(tns_sessd)
QX_FREE(tns_participant)
QX_FREE(tns__dialog)
QX_FREE(tns__dialog_info)

QX_PRINT(tns__state)
QX_PRINT(tns__dialog_replaces)
QX_PRINT(tns_nameaddr)
QX_PRINT(tns__dialog_route_set)
QX_PRINT(tns_participant_target_param)
QX_PRINT(tns_participant_target)
QX_PRINT(tns_sessd)
QX_PRINT(tns_participant)
QX_PRINT(tns__dialog)
QX_PRINT(tns__dialog_info)

QX_APPEND(tns__dialog_route_set, tns_hop, RtxXmlString)

QX_ENUM_TEXT(tns__dialog_info_state)
QX_ENUM_TEXT(tns__state_event)
QX_ENUM_TEXT(tns__dialog_direction)

QX_ENUM_CODE(tns__dialog_info_state)
QX_ENUM_CODE(tns__state_event)
QX_ENUM_CODE(tns__dialog_direction)

QX_ENUM_PRINT(tns__dialog_info_state)
QX_ENUM_PRINT(tns__state_event)
QX_ENUM_PRINT(tns__dialog_direction)
