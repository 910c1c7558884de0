// The validating handlers and the document validators of notification filters.
#include "Functions.h"
#include "QxXmlFilterSetTables.h"

QX_VSAX_HANDLER(NSBinding)
QX_VSAX_HANDLER(NSBindings)
QX_VSAX_HANDLER(InclType)
QX_VSAX_HANDLER(ExclType)
QX_VSAX_HANDLER(WhatType)
QX_VSAX_HANDLER(ChangedType)
QX_VSAX_HANDLER(TriggerType)
QX_VSAX_HANDLER(FilterType)
QX_VSAX_HANDLER(FilterSetType)

QX_VALIDATE_DOCUMENT(filter_set)
