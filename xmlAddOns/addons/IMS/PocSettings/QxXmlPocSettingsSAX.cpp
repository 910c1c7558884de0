// The decoding handlers of push-to-talk settings.
#include "Functions.h"
#include "QxXmlPocSettingsTables.h"

QX_SAX_HANDLER(isbSettingType_incoming_session_barring)
QX_SAX_HANDLER(isbSettingType)
QX_SAX_HANDLER(amSettingType)
QX_SAX_HANDLER(ipabSettingType_incoming_personal_alert_barring)
QX_SAX_HANDLER(ipabSettingType)
QX_SAX_HANDLER(sssSettingType_simultaneous_sessions_support)
QX_SAX_HANDLER(sssSettingType)
QX_SAX_HANDLER(entityType)
QX_SAX_HANDLER(poc_settingsType)
