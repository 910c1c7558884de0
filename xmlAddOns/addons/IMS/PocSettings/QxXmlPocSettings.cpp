// The tables of push-to-talk settings, and the functions on their records.
#include "Functions.h"
#include "QxXmlPocSettingsTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/PocSettings/QxXmlPocSettings"

constexpr ModuleSchema module = {.name = "PocSettings",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = pocSettingsNamespace,
                                 .uri = "urn:oma:params:xml:ns:poc:poc-settings",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = pocSettingsNamespace;

// ---- Settings -------------------------------------------------------------------------------------------------

constexpr const char *activeAttribute[] = {"active"};

constexpr uint8_t settingStates[] = {
    1,  no, no, // the setting
    no, 2,  2,  // any
};

QX_TYPE(isbSettingType_incoming_session_barring, 1, .content = Content::nothing, .attributes = activeAttribute,
        .requiredAttributes = 1);
constexpr Field isbSettingType_incoming_session_barringRows[] = {
    ATTRIBUTE(isbSettingType_incoming_session_barring, active)};
IMS_DEFINE(isbSettingType_incoming_session_barring)

constexpr RtSaxElementInfo isbElements[] = {{"incoming-session-barring", ns, 1, 1}, {"", ns, 0, many}};
QX_TYPE(isbSettingType, 2, .content = Content::elements, .elements = isbElements, .states = settingStates);
constexpr Field isbSettingTypeRows[] = {
    ELEMENT(isbSettingType, incoming_session_barring),
    ELEMENT(isbSettingType, anyElems),
    CARRIED(isbSettingType, _anyAttr),
};
IMS_DEFINE(isbSettingType)

constexpr RtxEnumRow answerModeRows[] = {{"automatic", 0, 9, 0}, {"manual", 1, 6, 1}};
constexpr EnumSchema amSettingType_answer_modeEnum = makeEnum("amSettingType_answer_mode", &module, 10, answerModeRows);

constexpr RtSaxElementInfo amElements[] = {{"answer-mode", ns, 1, 1}, {"", ns, 0, many}};
QX_TYPE(amSettingType, 3, .content = Content::elements, .elements = amElements, .states = settingStates);
constexpr Field amSettingTypeRows[] = {
    ELEMENT(amSettingType, answer_mode, .enumeration = &amSettingType_answer_modeEnum),
    ELEMENT(amSettingType, anyElems),
    CARRIED(amSettingType, _anyAttr),
};
IMS_DEFINE(amSettingType)

QX_TYPE(ipabSettingType_incoming_personal_alert_barring, 4, .content = Content::nothing, .attributes = activeAttribute,
        .requiredAttributes = 1);
constexpr Field ipabSettingType_incoming_personal_alert_barringRows[] = {
    ATTRIBUTE(ipabSettingType_incoming_personal_alert_barring, active)};
IMS_DEFINE(ipabSettingType_incoming_personal_alert_barring)

constexpr RtSaxElementInfo ipabElements[] = {{"incoming-personal-alert-barring", ns, 1, 1}, {"", ns, 0, many}};
QX_TYPE(ipabSettingType, 5, .content = Content::elements, .elements = ipabElements, .states = settingStates);
constexpr Field ipabSettingTypeRows[] = {
    ELEMENT(ipabSettingType, incoming_personal_alert_barring),
    ELEMENT(ipabSettingType, anyElems),
    CARRIED(ipabSettingType, _anyAttr),
};
IMS_DEFINE(ipabSettingType)

QX_TYPE(sssSettingType_simultaneous_sessions_support, 6, .content = Content::nothing, .attributes = activeAttribute,
        .requiredAttributes = 1);
constexpr Field sssSettingType_simultaneous_sessions_supportRows[] = {
    ATTRIBUTE(sssSettingType_simultaneous_sessions_support, active)};
IMS_DEFINE(sssSettingType_simultaneous_sessions_support)

constexpr RtSaxElementInfo sssElements[] = {{"simultaneous-sessions-support", ns, 1, 1}, {"", ns, 0, many}};
QX_TYPE(sssSettingType, 7, .content = Content::elements, .elements = sssElements, .states = settingStates);
constexpr Field sssSettingTypeRows[] = {
    ELEMENT(sssSettingType, simultaneous_sessions_support),
    ELEMENT(sssSettingType, anyElems),
    CARRIED(sssSettingType, _anyAttr),
};
IMS_DEFINE(sssSettingType)

// ---- Entities -------------------------------------------------------------------------------------------------

constexpr RtSaxElementInfo entityElements[] = {{"isb-settings", ns, 0, 1},
                                               {"am-settings", ns, 0, 1},
                                               {"ipab-settings", ns, 0, 1},
                                               {"sss-settings", ns, 0, 1},
                                               {"", ns, 0, many}};
constexpr uint8_t entityStates[] = {
    1, no, no, no, no, no, // isb-settings
    2, 2,  no, no, no, no, // am-settings
    3, 3,  3,  no, no, no, // ipab-settings
    4, 4,  4,  4,  no, no, // sss-settings
    5, 5,  5,  5,  5,  5,  // any
};
constexpr const char *entityAttributes[] = {"id"};
QX_TYPE(entityType, 8, .content = Content::elements, .flags = presenceOnly, .elements = entityElements,
        .states = entityStates, .attributes = entityAttributes, .requiredAttributes = 1);
constexpr Field entityTypeRows[] = {
    ELEMENT(entityType, isb_settings, .bit = 1),
    ELEMENT(entityType, am_settings, .bit = 2),
    ELEMENT(entityType, ipab_settings, .bit = 4),
    ELEMENT(entityType, sss_settings, .bit = 8),
    ELEMENT(entityType, anyElems),
    ATTRIBUTE(entityType, id),
    CARRIED(entityType, _anyAttr),
};
IMS_DEFINE(entityType)

constexpr RtSaxElementInfo settingsElements[] = {{"entity", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t settingsStates[] = {
    1, 1, no, // entity
    2, 2, 2,  // any
};
QX_TYPE(poc_settingsType, 9, .content = Content::elements, .elements = settingsElements, .states = settingsStates);
constexpr Field poc_settingsTypeRows[] = {
    ELEMENT(poc_settingsType, entity, .items = &entityTypeSchema),
    ELEMENT(poc_settingsType, anyElems),
    CARRIED(poc_settingsType, _anyAttr),
};
IMS_DEFINE(poc_settingsType)

// ---- Documents ------------------------------------------------------------------------------------------------

constexpr DocumentSchema poc_settingsDocument = makeDocument({.root = "poc-settings",
                                                              .module = &module,
                                                              .number = 1,
                                                              .type = &poc_settingsTypeSchema,
                                                              .declaration = Declaration::defaultAlways});

// ---- Functions ------------------------------------------------------------------------------------------------

QX_INIT(isbSettingType_incoming_session_barring)
QX_INIT(isbSettingType)
QX_INIT(amSettingType)
QX_INIT(ipabSettingType_incoming_personal_alert_barring)
QX_INIT(ipabSettingType)
QX_INIT(sssSettingType_simultaneous_sessions_support)
QX_INIT(sssSettingType)
QX_INIT(entityType)
QX_INIT(poc_settingsType)

QX_FREE(isbSettingType)
QX_FREE(amSettingType)
QX_FREE(ipabSettingType)
QX_FREE(sssSettingType)
QX_FREE(entityType)
QX_FREE(poc_settingsType)

QX_PRINT(isbSettingType_incoming_session_barring)
QX_PRINT(isbSettingType)
QX_PRINT(amSettingType)
QX_PRINT(ipabSettingType_incoming_personal_alert_barring)
QX_PRINT(ipabSettingType)
QX_PRINT(sssSettingType_simultaneous_sessions_support)
QX_PRINT(sssSettingType)
QX_PRINT(entityType)
QX_PRINT(poc_settingsType)

QX_ENUM_TEXT(amSettingType_answer_mode)

QX_ENUM_CODE(amSettingType_answer_mode)

QX_ENUM_PRINT(amSettingType_answer_mode)
