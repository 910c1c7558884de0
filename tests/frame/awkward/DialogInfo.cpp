#include "DialogInfo.h"

namespace awkward {

namespace {

using namespace ims;

#define SOURCE "awkward/DialogInfo"

constexpr ModuleSchema module = {.name = "DialogInfo",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "tns_",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = dialogInfoNamespace,
                                 .uri = "urn:ietf:params:xml:ns:dialog-info",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = dialogInfoNamespace;

constexpr RtxEnumRow stateEventRows[] = {{"cancelled", 0, 9, 0}, {"error", 5, 5, 3},       {"local-bye", 3, 9, 5},
                                         {"rejected", 1, 8, 2},  {"remote-bye", 4, 10, 4}, {"replaced", 2, 8, 1},
                                         {"timeout", 6, 7, 6}};
constexpr RtxEnumRow directionRows[] = {{"initiator", 0, 9, 0}, {"recipient", 1, 9, 1}};
constexpr RtxEnumRow infoStateRows[] = {{"full", 0, 4, 0}, {"partial", 1, 7, 1}};

} // namespace

constexpr EnumSchema stateEventEnumeration = makeEnum("tns__state_event", &module, 11, stateEventRows);
constexpr EnumSchema dialogDirectionEnumeration = makeEnum("tns__dialog_direction", &module, 12, directionRows);
constexpr EnumSchema dialogInfoStateEnumeration = makeEnum("tns__dialog_info_state", &module, 13, infoStateRows);

namespace {

// ---- Texts with attributes ------------------------------------------------------------------------------------

constexpr const char *stateAttributes[] = {"event", "code"};
constexpr TypeOptions tns__stateOptions = {.name = "tns__state",
                                           .module = &module,
                                           .number = 1,
                                           .content = Content::text,
                                           .attributes = stateAttributes,
                                           .decoding = decoding,
                                           .validating = validating};
constexpr Field tns__stateRows[] = {
    CONTENT(tns__state, value),
    ATTRIBUTE(tns__state, tns_event, .bit = 1, .flags = presentAlways, .enumeration = &stateEventEnumeration),
    ATTRIBUTE(tns__state, tns_code, .bit = 2, .flags = presentAlways, .minimum = 100, .maximum = 699),
    CARRIED(tns__state, nsDecls),
};

constexpr const char *nameaddrAttributes[] = {"display-name"};
constexpr TypeOptions tns_nameaddrOptions = {.name = "tns_nameaddr",
                                             .module = &module,
                                             .number = 3,
                                             .content = Content::text,
                                             .attributes = nameaddrAttributes,
                                             .decoding = decoding,
                                             .validating = validating};
constexpr Field tns_nameaddrRows[] = {
    CONTENT(tns_nameaddr, value),
    ATTRIBUTE(tns_nameaddr, tns_display_name, .bit = 1),
    CARRIED(tns_nameaddr, nsDecls),
};

constexpr const char *sessdAttributes[] = {"type"};
constexpr TypeOptions tns_sessdOptions = {.name = "tns_sessd",
                                          .module = &module,
                                          .number = 7,
                                          .content = Content::text,
                                          .attributes = sessdAttributes,
                                          .requiredAttributes = 1,
                                          .decoding = decoding,
                                          .validating = validating};
constexpr Field tns_sessdRows[] = {
    CONTENT(tns_sessd, value),
    ATTRIBUTE(tns_sessd, tns_type),
    CARRIED(tns_sessd, nsDecls),
};

// ---- Attributes alone -----------------------------------------------------------------------------------------

constexpr const char *replacesAttributes[] = {"call-id", "local-tag", "remote-tag"};
constexpr TypeOptions tns__dialog_replacesOptions = {.name = "tns__dialog_replaces",
                                                     .module = &module,
                                                     .number = 2,
                                                     .content = Content::nothing,
                                                     .attributes = replacesAttributes,
                                                     .requiredAttributes = 7,
                                                     .decoding = decoding,
                                                     .validating = validating};
constexpr Field tns__dialog_replacesRows[] = {
    ATTRIBUTE(tns__dialog_replaces, tns_call_id),
    ATTRIBUTE(tns__dialog_replaces, tns_local_tag),
    ATTRIBUTE(tns__dialog_replaces, tns_remote_tag),
};

constexpr const char *paramAttributes[] = {"pname", "pval"};
constexpr TypeOptions tns_participant_target_paramOptions = {.name = "tns_participant_target_param",
                                                             .module = &module,
                                                             .number = 5,
                                                             .content = Content::nothing,
                                                             .attributes = paramAttributes,
                                                             .requiredAttributes = 3,
                                                             .decoding = decoding,
                                                             .validating = validating};
constexpr Field tns_participant_target_paramRows[] = {
    ATTRIBUTE(tns_participant_target_param, tns_pname),
    ATTRIBUTE(tns_participant_target_param, tns_pval),
};

} // namespace

AWKWARD_DEFINE(tns__state)
AWKWARD_DEFINE(tns__dialog_replaces)
AWKWARD_DEFINE(tns_nameaddr)
AWKWARD_DEFINE(tns_participant_target_param)
AWKWARD_DEFINE(tns_sessd)

// ---- Children -------------------------------------------------------------------------------------------------

namespace {

constexpr RtSaxElementInfo routeSetElements[] = {{"hop", ns, 1, many}};
constexpr TypeOptions tns__dialog_route_setOptions = {.name = "tns__dialog_route_set",
                                                      .module = &module,
                                                      .number = 4,
                                                      .content = Content::named,
                                                      .flags = noEmptyList,
                                                      .elements = routeSetElements,
                                                      .decoding = decoding,
                                                      .validating = validating};
constexpr Field tns__dialog_route_setRows[] = {ELEMENT(tns__dialog_route_set, tns_hop)};

constexpr RtSaxElementInfo targetElements[] = {{"param", ns, 0, many}};
constexpr uint8_t targetStates[] = {1, 1};
constexpr const char *targetAttributes[] = {"uri"};
constexpr TypeOptions tns_participant_targetOptions = {.name = "tns_participant_target",
                                                       .module = &module,
                                                       .number = 6,
                                                       .content = Content::elements,
                                                       .elements = targetElements,
                                                       .states = targetStates,
                                                       .attributes = targetAttributes,
                                                       .requiredAttributes = 1,
                                                       .decoding = decoding,
                                                       .validating = validating};
constexpr Field tns_participant_targetRows[] = {
    ELEMENT(tns_participant_target, tns_param, .items = &tns_participant_target_paramSchema),
    ATTRIBUTE(tns_participant_target, tns_uri),
};

} // namespace

AWKWARD_DEFINE(tns__dialog_route_set)
AWKWARD_DEFINE(tns_participant_target)

namespace {

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
constexpr TypeOptions tns_participantOptions = {.name = "tns_participant",
                                                .module = &module,
                                                .number = 8,
                                                .content = Content::elements,
                                                .elements = participantElements,
                                                .states = participantStates,
                                                .decoding = decoding,
                                                .validating = validating};
constexpr Field tns_participantRows[] = {
    ELEMENT(tns_participant, tns_identity, .bit = 1),
    ELEMENT(tns_participant, tns_target, .bit = 2),
    ELEMENT(tns_participant, tns_session_description, .bit = 4),
    ELEMENT(tns_participant, tns_cseq, .bit = 8),
    ELEMENT(tns_participant, anyElems),
};

} // namespace

AWKWARD_DEFINE(tns_participant)

namespace {

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
constexpr TypeOptions tns__dialogOptions = {.name = "tns__dialog",
                                            .module = &module,
                                            .number = 9,
                                            .content = Content::elements,
                                            .elements = dialogElements,
                                            .states = dialogStates,
                                            .attributes = dialogAttributes,
                                            .requiredAttributes = 1,
                                            .decoding = decoding,
                                            .validating = validating};
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
              .enumeration = &dialogDirectionEnumeration),
};

} // namespace

AWKWARD_DEFINE(tns__dialog)

namespace {

constexpr RtSaxElementInfo dialogInfoElements[] = {{"dialog", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t dialogInfoStates[] = {
    1, 1, no, // dialog
    2, 2, 2,  // any
};
constexpr const char *dialogInfoAttributes[] = {"version", "state", "entity"};
constexpr TypeOptions tns__dialog_infoOptions = {.name = "tns__dialog_info",
                                                 .module = &module,
                                                 .number = 10,
                                                 .content = Content::elements,
                                                 .elements = dialogInfoElements,
                                                 .states = dialogInfoStates,
                                                 .attributes = dialogInfoAttributes,
                                                 .requiredAttributes = 7,
                                                 .decoding = decoding,
                                                 .validating = validating};
constexpr Field tns__dialog_infoRows[] = {
    ELEMENT(tns__dialog_info, tns_dialog, .items = &tns__dialogSchema),
    ELEMENT(tns__dialog_info, anyElems),
    ATTRIBUTE(tns__dialog_info, tns_version),
    ATTRIBUTE(tns__dialog_info, tns_state, .enumeration = &dialogInfoStateEnumeration),
    ATTRIBUTE(tns__dialog_info, tns_entity),
};

} // namespace

AWKWARD_DEFINE(tns__dialog_info)

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

} // namespace awkward
