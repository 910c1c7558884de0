// The decoding handlers of rule sets.
#include "Functions.h"
#include "QxXmlRuleSetTables.h"

QX_SAX_HANDLER(cp_oneType)
QX_SAX_HANDLER(cp_exceptType)
QX_SAX_HANDLER(cp_manyType)
QX_SAX_HANDLER(cp_identityType)
QX_SAX_HANDLER(cp_sphereType)
QX_SAX_HANDLER(cp_validityType)
QX_SAX_HANDLER(cp_conditionsType)
QX_SAX_HANDLER(cp_extensibleType)
QX_SAX_HANDLER(cp_ruleType)
QX_SAX_HANDLER(cp__ruleset)
