// The encoders of rule sets.
#include "Functions.h"
#include "QxXmlRuleSetTables.h"

QX_ENCODE_TYPE(cp_oneType)
QX_ENCODE_TYPE(cp_exceptType)
QX_ENCODE_TYPE(cp_manyType_1)
QX_ENCODE_TYPE(cp_manyType)
QX_ENCODE_TYPE(cp_identityType_1)
QX_ENCODE_TYPE(cp_identityType)
QX_ENCODE_TYPE(cp_sphereType)
QX_ENCODE_TYPE(cp_validityType)
QX_ENCODE_TYPE(cp_conditionsType_1)
QX_ENCODE_TYPE(cp_conditionsType)
QX_ENCODE_TYPE(cp_extensibleType)
QX_ENCODE_TYPE(cp_ruleType)
QX_ENCODE_TYPE(cp__ruleset)

QX_ENCODE_ATTRIBUTES(cp_oneType)
QX_ENCODE_ATTRIBUTES(cp_exceptType)
QX_ENCODE_ATTRIBUTES(cp_manyType)
QX_ENCODE_ATTRIBUTES(cp_sphereType)
QX_ENCODE_ATTRIBUTES(cp_ruleType)

QX_ENCODE_DOCUMENT(cp_ruleset, cp__ruleset)
