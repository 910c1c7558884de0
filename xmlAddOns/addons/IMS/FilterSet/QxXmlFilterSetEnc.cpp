// The encoders of notification filters.
#include "Functions.h"
#include "QxXmlFilterSetTables.h"

QX_ENCODE_TYPE(NSBinding)
QX_ENCODE_TYPE(NSBindings)
QX_ENCODE_TYPE(InclType)
QX_ENCODE_TYPE(ExclType)
QX_ENCODE_TYPE(WhatType)
QX_ENCODE_TYPE(ChangedType)
QX_ENCODE_TYPE(TriggerType)
QX_ENCODE_TYPE(FilterType)
QX_ENCODE_TYPE(FilterSetType)

QX_ENCODE_ATTRIBUTES(NSBinding)
QX_ENCODE_ATTRIBUTES(InclType)
QX_ENCODE_ATTRIBUTES(ExclType)
QX_ENCODE_ATTRIBUTES(ChangedType)
QX_ENCODE_ATTRIBUTES(FilterType)
QX_ENCODE_ATTRIBUTES(FilterSetType)

QX_ENCODE_ENUM(TypeType)

QX_ENCODE_DOCUMENT(filter_set, FilterSetType)
