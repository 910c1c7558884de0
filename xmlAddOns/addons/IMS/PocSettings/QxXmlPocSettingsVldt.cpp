// The validating handlers and the document validators of push-to-talk settings.
#include "Functions.h"
#include "QxXmlPocSettingsTables.h"

QX_VSAX_HANDLER(isbSettingType_incoming_session_barring)
QX_VSAX_HANDLER(isbSettingType)
QX_VSAX_HANDLER(amSettingType)
QX_VSAX_HANDLER(ipabSettingType_incoming_personal_alert_barring)
QX_VSAX_HANDLER(ipabSettingType)
QX_VSAX_HANDLER(sssSettingType_simultaneous_sessions_support)
QX_VSAX_HANDLER(sssSettingType)
QX_VSAX_HANDLER(entityType)
QX_VSAX_HANDLER(poc_settingsType)

QX_VALIDATE_DOCUMENT(poc_settings)
