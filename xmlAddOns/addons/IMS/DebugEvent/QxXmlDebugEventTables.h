// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlDebugEvent.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(tns__start_trigger);
IMS_SCHEMA(tns__stop_trigger);
IMS_SCHEMA(tns__control);
IMS_SCHEMA(tns__session);
IMS_SCHEMA(tns__debugconfig);
IMS_SCHEMA(tns__debuginfo);

extern const ims::EnumSchema tns__reasonEnum;
extern const ims::EnumSchema tns__depthEnum;
extern const ims::EnumSchema tns__stateEnum;

extern const ims::DocumentSchema tns_timeDocument;
extern const ims::DocumentSchema tns_fromDocument;
extern const ims::DocumentSchema tns_toDocument;
extern const ims::DocumentSchema tns_methodDocument;
extern const ims::DocumentSchema tns_icsiDocument;
extern const ims::DocumentSchema tns_iariDocument;
extern const ims::DocumentSchema tns_debug_idDocument;
extern const ims::DocumentSchema tns_time_periodDocument;
extern const ims::DocumentSchema tns_reasonDocument;
extern const ims::DocumentSchema tns_interfaceDocument;
extern const ims::DocumentSchema tns_depthDocument;
extern const ims::DocumentSchema tns_start_triggerDocument;
extern const ims::DocumentSchema tns_stop_triggerDocument;
extern const ims::DocumentSchema tns_controlDocument;
extern const ims::DocumentSchema tns_sessionDocument;
extern const ims::DocumentSchema tns_debugconfigDocument;
extern const ims::DocumentSchema tns_debuginfoDocument;
