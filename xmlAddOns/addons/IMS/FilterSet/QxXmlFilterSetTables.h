// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlFilterSet.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(NSBinding);
IMS_SCHEMA(NSBindings);
IMS_SCHEMA(InclType);
IMS_SCHEMA(ExclType);
IMS_SCHEMA(WhatType);
IMS_SCHEMA(ChangedType);
IMS_SCHEMA(TriggerType);
IMS_SCHEMA(FilterType);
IMS_SCHEMA(FilterSetType);

extern const ims::EnumSchema TypeTypeEnum;

extern const ims::DocumentSchema filter_setDocument;
