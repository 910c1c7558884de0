#include "Awkward.h"

#include "DebugEvent.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "RuleSet.h"

namespace awkward {

namespace {

constexpr const ims::TypeSchema *types[] = {
    &tns__stateSchema,
    &tns__dialog_replacesSchema,
    &tns_nameaddrSchema,
    &tns__dialog_route_setSchema,
    &tns_participant_target_paramSchema,
    &tns_participant_targetSchema,
    &tns_sessdSchema,
    &tns_participantSchema,
    &tns__dialogSchema,
    &tns__dialog_infoSchema,
    &cp_oneTypeSchema,
    &cp_exceptTypeSchema,
    &cp_manyType_1Schema,
    &cp_manyTypeSchema,
    &cp_identityType_1Schema,
    &cp_identityTypeSchema,
    &cp_sphereTypeSchema,
    &cp_validityTypeSchema,
    &cp_conditionsType_1Schema,
    &cp_conditionsTypeSchema,
    &cp_extensibleTypeSchema,
    &cp_ruleTypeSchema,
    &cp__rulesetSchema,
    &NSBindingSchema,
    &NSBindingsSchema,
    &InclTypeSchema,
    &ExclTypeSchema,
    &WhatTypeSchema,
    &ChangedTypeSchema,
    &TriggerTypeSchema,
    &FilterTypeSchema,
    &FilterSetTypeSchema,
    &isbSettingType_incoming_session_barringSchema,
    &isbSettingTypeSchema,
    &amSettingTypeSchema,
    &ipabSettingType_incoming_personal_alert_barringSchema,
    &ipabSettingTypeSchema,
    &sssSettingType_simultaneous_sessions_supportSchema,
    &sssSettingTypeSchema,
    &entityTypeSchema,
    &poc_settingsTypeSchema,
    &tAlternativeServiceSchema,
    &tIMS3GPP_1Schema,
    &tIMS3GPPSchema,
    &tns__start_triggerSchema,
    &tns__stop_triggerSchema,
    &tns__controlSchema,
    &tns__sessionSchema,
    &tns__debugconfigSchema,
    &tns__debuginfoSchema,
};

constexpr const ims::EnumSchema *enumerations[] = {
    &tns__dialog_info_stateEnum,    &tns__state_eventEnum, &tns__dialog_directionEnum, &TypeTypeEnum,
    &amSettingType_answer_modeEnum, &reasonEnumeration,    &depthEnumeration,          &debugStateEnumeration,
};

constexpr const ims::DocumentSchema *documents[] = {
    &tns_stateDocument,     &tns_dialogDocument,        &tns_dialog_infoDocument, &cp_rulesetDocument,
    &cp_conditionsDocument, &filter_setDocument,        &poc_settingsDocument,    &ims_3gppDocument,
    &typeDocument,          &tns_start_triggerDocument, &tns_controlDocument,     &tns_sessionDocument,
    &tns_debuginfoDocument, &tns_timeDocument,          &tns_debug_idDocument,    &tns_reasonDocument,
};

} // namespace

std::span<const ims::TypeSchema *const> awkwardTypes() { return types; }
std::span<const ims::EnumSchema *const> awkwardEnumerations() { return enumerations; }
std::span<const ims::DocumentSchema *const> awkwardDocuments() { return documents; }

} // namespace awkward
