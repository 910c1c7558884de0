// A part of a rule set as a document of its own: the tests of its types need no rules around them.
#pragma once

#include "RuleSet/QxXmlRuleSetTables.h"

namespace awkward {

extern const ims::DocumentSchema cp_conditionsDocument;

} // namespace awkward
