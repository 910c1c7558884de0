// The decoding handlers of notification filters.
#include "Functions.h"
#include "QxXmlFilterSetTables.h"

QX_SAX_HANDLER(NSBinding)
QX_SAX_HANDLER(NSBindings)
QX_SAX_HANDLER(InclType)
QX_SAX_HANDLER(ExclType)
QX_SAX_HANDLER(WhatType)
QX_SAX_HANDLER(ChangedType)
QX_SAX_HANDLER(TriggerType)
QX_SAX_HANDLER(FilterType)
QX_SAX_HANDLER(FilterSetType)
