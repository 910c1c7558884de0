// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlDialogInfo.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(tns__state);
IMS_SCHEMA(tns__dialog_replaces);
IMS_SCHEMA(tns_nameaddr);
IMS_SCHEMA(tns__dialog_route_set);
IMS_SCHEMA(tns_participant_target_param);
IMS_SCHEMA(tns_participant_target);
IMS_SCHEMA(tns_sessd);
IMS_SCHEMA(tns_participant);
IMS_SCHEMA(tns__dialog);
IMS_SCHEMA(tns__dialog_info);

extern const ims::EnumSchema tns__dialog_info_stateEnum;
extern const ims::EnumSchema tns__state_eventEnum;
extern const ims::EnumSchema tns__dialog_directionEnum;

extern const ims::DocumentSchema tns_dialog_infoDocument;
extern const ims::DocumentSchema tns_dialogDocument;
extern const ims::DocumentSchema tns_stateDocument;
