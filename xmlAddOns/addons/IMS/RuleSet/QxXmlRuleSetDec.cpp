// The document decoders of rule sets.
#include "Functions.h"
#include "QxXmlRuleSetTables.h"

QX_DECODE_DOCUMENT(cp_ruleset, cp__ruleset)
