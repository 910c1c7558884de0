// The validating handlers and the document validators of rule sets.
#include "Functions.h"
#include "QxXmlRuleSetTables.h"

QX_VSAX_HANDLER(cp_oneType)
QX_VSAX_HANDLER(cp_exceptType)
QX_VSAX_HANDLER(cp_manyType)
QX_VSAX_HANDLER(cp_identityType)
QX_VSAX_HANDLER(cp_sphereType)
QX_VSAX_HANDLER(cp_validityType)
QX_VSAX_HANDLER(cp_conditionsType)
QX_VSAX_HANDLER(cp_extensibleType)
QX_VSAX_HANDLER(cp_ruleType)
QX_VSAX_HANDLER(cp__ruleset)

QX_VALIDATE_DOCUMENT(cp_ruleset)
