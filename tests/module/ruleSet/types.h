// The record types of rule sets with the functions that each of them has.
#pragma once

#include "RuleSet/QxXmlRuleSet.h"
#include "record.h"

#define RULES_FUNCTIONS(T)                                                                                             \
  RECORD_FUNCTIONS(T)                                                                                                  \
  static void release(RuntimeContext *ctx, T *record);
#define RULES_ELEMENT(T)                                                                                               \
  template <> struct support::Functions<T> { RULES_FUNCTIONS(T) HANDLER_FUNCTIONS(T) };
#define RULES_CHOICE(T)                                                                                                \
  template <> struct support::Functions<T> { RULES_FUNCTIONS(T) };
RULES_ELEMENT(cp_oneType)
RULES_ELEMENT(cp_exceptType)
RULES_CHOICE(cp_manyType_1)
RULES_ELEMENT(cp_manyType)
RULES_CHOICE(cp_identityType_1)
RULES_ELEMENT(cp_identityType)
RULES_ELEMENT(cp_sphereType)
RULES_ELEMENT(cp_validityType)
RULES_CHOICE(cp_conditionsType_1)
RULES_ELEMENT(cp_conditionsType)
RULES_ELEMENT(cp_extensibleType)
RULES_ELEMENT(cp_ruleType)
RULES_ELEMENT(cp__ruleset)
#undef RULES_CHOICE
#undef RULES_ELEMENT
#undef RULES_FUNCTIONS

namespace rules {

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:common-policy";

// Records with a selector, which have no element of their own.
template <typename T> inline constexpr bool isChoice = requires(T record) { record.t; };

// Calls test<T>() for each record type.
template <typename Test> void forEachType(const Test &test) {
  support::forEachType<cp_oneType, cp_exceptType, cp_manyType_1, cp_manyType, cp_identityType_1, cp_identityType,
                       cp_sphereType, cp_validityType, cp_conditionsType_1, cp_conditionsType, cp_extensibleType,
                       cp_ruleType, cp__ruleset>(test);
}

} // namespace rules
