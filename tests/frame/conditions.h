// A part of a rule set as a document of its own: the tests of its types need no rules around them.
#pragma once

#include "RuleSet/QxXmlRuleSetTables.h"

namespace frame {

extern const ims::DocumentSchema conditionsDocument;

} // namespace frame
