// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlImCn.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(tAlternativeService);
IMS_SCHEMA(tIMS3GPP_1);
IMS_SCHEMA(tIMS3GPP);

extern const ims::DocumentSchema ims_3gppDocument;
extern const ims::DocumentSchema typeDocument;
extern const ims::DocumentSchema actionDocument;
