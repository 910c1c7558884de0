// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlIsComposing.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(tns__isComposing);

extern const ims::DocumentSchema tns_isComposingDocument;
