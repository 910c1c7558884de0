// The document decoders of push-to-talk settings.
#include "Functions.h"
#include "QxXmlPocSettingsTables.h"

QX_DECODE_DOCUMENT(poc_settings, poc_settingsType)
