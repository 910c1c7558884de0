#include "PocSettings.h"

namespace awkward {

namespace {

using namespace ims;

#define SOURCE "awkward/PocSettings"

constexpr ModuleSchema module = {.name = "PocSettings",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = pocSettingsNamespace,
                                 .uri = "urn:oma:params:xml:ns:poc:poc-settings",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = pocSettingsNamespace;

constexpr RtxEnumRow answerModeRows[] = {{"automatic", 0, 9, 0}, {"manual", 1, 6, 1}};

} // namespace

constexpr EnumSchema answerModeEnumeration = makeEnum("amSettingType_answer_mode", &module, 6, answerModeRows);

namespace {

constexpr const char *activeAttribute[] = {"active"};
constexpr TypeOptions isbSettingType_incoming_session_barringOptions = {.name =
                                                                            "isbSettingType_incoming_session_barring",
                                                                        .module = &module,
                                                                        .number = 1,
                                                                        .decoding = decoding,
                                                                        .validating = validating,
                                                                        .content = Content::nothing,
                                                                        .attributes = activeAttribute,
                                                                        .requiredAttributes = 1};
constexpr Field isbSettingType_incoming_session_barringRows[] = {
    ATTRIBUTE(isbSettingType_incoming_session_barring, active)};

} // namespace

AWKWARD_DEFINE(isbSettingType_incoming_session_barring)

namespace {

constexpr uint8_t settingStates[] = {
    1,  no, no, // the setting
    no, 2,  2,  // any
};
constexpr RtSaxElementInfo isbElements[] = {{"incoming-session-barring", ns, 1, 1}, {"", ns, 0, many}};
constexpr TypeOptions isbSettingTypeOptions = {.name = "isbSettingType",
                                               .module = &module,
                                               .number = 2,
                                               .decoding = decoding,
                                               .validating = validating,
                                               .content = Content::elements,
                                               .elements = isbElements,
                                               .states = settingStates};
constexpr Field isbSettingTypeRows[] = {
    ELEMENT(isbSettingType, incoming_session_barring),
    ELEMENT(isbSettingType, anyElems),
    CARRIED(isbSettingType, _anyAttr),
};

constexpr RtSaxElementInfo amElements[] = {{"answer-mode", ns, 1, 1}, {"", ns, 0, many}};
constexpr TypeOptions amSettingTypeOptions = {.name = "amSettingType",
                                              .module = &module,
                                              .number = 3,
                                              .decoding = decoding,
                                              .validating = validating,
                                              .content = Content::elements,
                                              .elements = amElements,
                                              .states = settingStates};
constexpr Field amSettingTypeRows[] = {
    ELEMENT(amSettingType, answer_mode, .enumeration = &answerModeEnumeration),
    ELEMENT(amSettingType, anyElems),
    CARRIED(amSettingType, _anyAttr),
};

} // namespace

AWKWARD_DEFINE(isbSettingType)
AWKWARD_DEFINE(amSettingType)

namespace {

constexpr RtSaxElementInfo entityElements[] = {
    {"isb-settings", ns, 0, 1}, {"am-settings", ns, 0, 1}, {"", ns, 0, many}};
constexpr uint8_t entityStates[] = {
    1, no, no, no, // isb-settings
    2, 2,  no, no, // am-settings
    3, 3,  3,  3,  // any
};
constexpr const char *idAttribute[] = {"id"};
constexpr TypeOptions entityTypeOptions = {.name = "entityType",
                                           .module = &module,
                                           .number = 4,
                                           .decoding = decoding,
                                           .validating = validating,
                                           .content = Content::elements,
                                           .flags = presenceOnly,
                                           .elements = entityElements,
                                           .states = entityStates,
                                           .attributes = idAttribute,
                                           .requiredAttributes = 1};
constexpr Field entityTypeRows[] = {
    ELEMENT(entityType, isb_settings, .bit = 1),
    ELEMENT(entityType, am_settings, .bit = 2),
    ELEMENT(entityType, anyElems),
    ATTRIBUTE(entityType, id),
    CARRIED(entityType, _anyAttr),
};

} // namespace

AWKWARD_DEFINE(entityType)

namespace {

constexpr RtSaxElementInfo settingsElements[] = {{"entity", ns, 1, many}, {"", ns, 0, many}};
constexpr uint8_t settingsStates[] = {
    1, 1, no, // entity
    2, 2, 2,  // any
};
constexpr TypeOptions poc_settingsTypeOptions = {.name = "poc_settingsType",
                                                 .module = &module,
                                                 .number = 5,
                                                 .decoding = decoding,
                                                 .validating = validating,
                                                 .content = Content::elements,
                                                 .elements = settingsElements,
                                                 .states = settingsStates};
constexpr Field poc_settingsTypeRows[] = {
    ELEMENT(poc_settingsType, entity, .items = &entityTypeSchema),
    ELEMENT(poc_settingsType, anyElems),
    CARRIED(poc_settingsType, _anyAttr),
};

} // namespace

AWKWARD_DEFINE(poc_settingsType)

constexpr DocumentSchema poc_settingsDocument = makeDocument({.root = "poc-settings",
                                                              .module = &module,
                                                              .number = 1,
                                                              .type = &poc_settingsTypeSchema,
                                                              .declaration = Declaration::defaultAlways});

} // namespace awkward
