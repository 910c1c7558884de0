// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlPocSettings.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(isbSettingType_incoming_session_barring);
IMS_SCHEMA(isbSettingType);
IMS_SCHEMA(amSettingType);
IMS_SCHEMA(ipabSettingType_incoming_personal_alert_barring);
IMS_SCHEMA(ipabSettingType);
IMS_SCHEMA(sssSettingType_simultaneous_sessions_support);
IMS_SCHEMA(sssSettingType);
IMS_SCHEMA(entityType);
IMS_SCHEMA(poc_settingsType);

extern const ims::EnumSchema amSettingType_answer_modeEnum;

extern const ims::DocumentSchema poc_settingsDocument;
