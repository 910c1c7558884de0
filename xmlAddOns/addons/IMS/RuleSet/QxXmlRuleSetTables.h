// The tables of the module, for its sources and for whoever walks tables.
#pragma once

#include "QxXmlRuleSet.h"
#include "SchemaBuilder.h"

IMS_SCHEMA(cp_oneType);
IMS_SCHEMA(cp_exceptType);
IMS_SCHEMA(cp_manyType_1);
IMS_SCHEMA(cp_manyType);
IMS_SCHEMA(cp_identityType_1);
IMS_SCHEMA(cp_identityType);
IMS_SCHEMA(cp_sphereType);
IMS_SCHEMA(cp_validityType);
IMS_SCHEMA(cp_conditionsType_1);
IMS_SCHEMA(cp_conditionsType);
IMS_SCHEMA(cp_extensibleType);
IMS_SCHEMA(cp_ruleType);
IMS_SCHEMA(cp__ruleset);

extern const ims::DocumentSchema cp_rulesetDocument;
