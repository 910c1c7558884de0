// The record types of rule sets with the functions that each of them has.
#pragma once

#include "RuleSet/QxXmlRuleSet.h"
#include "record.h"

namespace rules {

// Gives back what no function of the library does: nothing, of most types.
template <typename T> void releaseRest(RuntimeContext *, const T &) {}
void releaseRest(RuntimeContext *ctx, const cp_exceptType &record);
void releaseRest(RuntimeContext *ctx, const cp_sphereType &record);
void releaseRest(RuntimeContext *ctx, const cp_manyType_1 &record);
void releaseRest(RuntimeContext *ctx, const cp_manyType &record);
void releaseRest(RuntimeContext *ctx, const cp_identityType_1 &record);
void releaseRest(RuntimeContext *ctx, const cp_identityType &record);
void releaseRest(RuntimeContext *ctx, const cp_conditionsType_1 &record);
void releaseRest(RuntimeContext *ctx, const cp_conditionsType &record);
void releaseRest(RuntimeContext *ctx, const cp_ruleType &record);
void releaseRest(RuntimeContext *ctx, const cp__ruleset &record);

} // namespace rules

#define RULES_FUNCTIONS(T, FREE) RECORD_FUNCTIONS(T) RELEASE_FUNCTIONS(T, rules::releaseRest, FREE)
#define RULES_ELEMENT(T, FREE)                                                                                         \
  template <> struct support::Functions<T> { RULES_FUNCTIONS(T, FREE) HANDLER_FUNCTIONS(T) };
#define RULES_CHOICE(T, FREE)                                                                                          \
  template <> struct support::Functions<T> { RULES_FUNCTIONS(T, FREE) };
RULES_ELEMENT(cp_oneType, QxMemFree_cp_oneType)
RULES_ELEMENT(cp_exceptType, nullptr)
RULES_CHOICE(cp_manyType_1, QxMemFree_cp_manyType_1)
RULES_ELEMENT(cp_manyType, QxMemFree_cp_manyType)
RULES_CHOICE(cp_identityType_1, QxMemFree_cp_identityType_1)
RULES_ELEMENT(cp_identityType, QxMemFree_cp_identityType)
RULES_ELEMENT(cp_sphereType, nullptr)
RULES_ELEMENT(cp_validityType, QxMemFree_cp_validityType)
RULES_CHOICE(cp_conditionsType_1, QxMemFree_cp_conditionsType_1)
RULES_ELEMENT(cp_conditionsType, QxMemFree_cp_conditionsType)
RULES_ELEMENT(cp_extensibleType, QxMemFree_cp_extensibleType)
RULES_ELEMENT(cp_ruleType, QxMemFree_cp_ruleType)
RULES_ELEMENT(cp__ruleset, QxMemFree_cp__ruleset)
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
