#include "RuleSet.h"

namespace awkward {

namespace {

using namespace ims;

#define SOURCE "awkward/RuleSet"

constexpr ModuleSchema module = {.name = "RuleSet",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "cp_",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = commonPolicyNamespace,
                                 .uri = "urn:ietf:params:xml:ns:common-policy",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = commonPolicyNamespace;

constexpr TypeOptions options(const char *name, uint16_t number, Content content) {
  return {.name = name,
          .module = &module,
          .number = number,
          .decoding = decoding,
          .validating = validating,
          .content = content};
}

// ---- Attributes alone -----------------------------------------------------------------------------------------

constexpr const char *idAttribute[] = {"id"};
constexpr const char *domainAttribute[] = {"domain"};
constexpr const char *valueAttribute[] = {"value"};
constexpr const char *exceptAttributes[] = {"domain", "id"};

constexpr TypeOptions cp_exceptTypeOptions = [] {
  TypeOptions type = options("cp_exceptType", 2, Content::nothing);
  type.attributes = exceptAttributes;
  return type;
}();
constexpr Field cp_exceptTypeRows[] = {
    ATTRIBUTE(cp_exceptType, cp_domain, .bit = 1),
    ATTRIBUTE(cp_exceptType, cp_id, .bit = 2, .flags = collapsed),
};

constexpr TypeOptions cp_sphereTypeOptions = [] {
  TypeOptions type = options("cp_sphereType", 7, Content::nothing);
  type.attributes = valueAttribute;
  type.requiredAttributes = 1;
  return type;
}();
constexpr Field cp_sphereTypeRows[] = {ATTRIBUTE(cp_sphereType, cp_value)};

// ---- One foreign element --------------------------------------------------------------------------------------

constexpr RtSaxElementInfo oneElements[] = {{"", ns, 0, 1}};
constexpr uint8_t oneStates[] = {fin};
constexpr TypeOptions cp_oneTypeOptions = [] {
  TypeOptions type = options("cp_oneType", 1, Content::elements);
  type.elements = oneElements;
  type.states = oneStates;
  type.attributes = idAttribute;
  type.requiredAttributes = 1;
  return type;
}();
constexpr Field cp_oneTypeRows[] = {
    ELEMENT(cp_oneType, cp__any, .bit = 1, .foreign = true),
    ATTRIBUTE(cp_oneType, cp_id, .flags = collapsed),
};

} // namespace

AWKWARD_DEFINE(cp_exceptType)
AWKWARD_DEFINE(cp_sphereType)
AWKWARD_DEFINE(cp_oneType)

// ---- Choices --------------------------------------------------------------------------------------------------

namespace {

constexpr RtSaxElementInfo manyElements[] = {{"except", ns, 1, 1}, {"", ns, 0, 1}};
constexpr uint8_t manyStates[] = {
    1, 1, // except
    1, 1, // any
};
constexpr TypeOptions cp_manyType_1Options = [] {
  TypeOptions type = options("cp_manyType_1", 3, Content::choice);
  type.elements = manyElements;
  return type;
}();
constexpr Field cp_manyType_1Rows[] = {
    ALTERNATIVE(cp_manyType_1, cp_except),
    ALTERNATIVE(cp_manyType_1, cp__any, .foreign = true),
};

} // namespace

AWKWARD_DEFINE(cp_manyType_1)

namespace {

constexpr TypeOptions cp_manyTypeOptions = [] {
  TypeOptions type = options("cp_manyType", 4, Content::elements);
  type.elements = manyElements;
  type.states = manyStates;
  type.attributes = domainAttribute;
  return type;
}();
constexpr Field cp_manyTypeRows[] = {
    ELEMENT(cp_manyType, cp__choice, .items = &cp_manyType_1Schema),
    ATTRIBUTE(cp_manyType, cp_domain, .bit = 1),
};

} // namespace

AWKWARD_DEFINE(cp_manyType)

namespace {

constexpr RtSaxElementInfo identityElements[] = {{"one", ns, 1, 1}, {"many", ns, 1, 1}, {"", ns, 1, 1}};
constexpr uint8_t identityStates[] = {
    1, 1, // one
    1, 1, // many
    1, 1, // any
};
constexpr TypeOptions cp_identityType_1Options = [] {
  TypeOptions type = options("cp_identityType_1", 5, Content::choice);
  type.elements = identityElements;
  return type;
}();
constexpr Field cp_identityType_1Rows[] = {
    ALTERNATIVE(cp_identityType_1, cp_one),
    ALTERNATIVE(cp_identityType_1, cp_many),
    ALTERNATIVE(cp_identityType_1, cp__any, .foreign = true),
};

} // namespace

AWKWARD_DEFINE(cp_identityType_1)

namespace {

constexpr TypeOptions cp_identityTypeOptions = [] {
  TypeOptions type = options("cp_identityType", 6, Content::elements);
  type.flags = refusesAtOnce | noEmptyList | countedByMember;
  type.elements = identityElements;
  type.states = identityStates;
  return type;
}();
constexpr Field cp_identityTypeRows[] = {ELEMENT(cp_identityType, items, .items = &cp_identityType_1Schema)};

constexpr RtSaxElementInfo validityElements[] = {{"from", ns, 1, 1}, {"until", ns, 1, 1}};
constexpr uint8_t validityStates[] = {
    1, no,   // from
    no, fin, // until
};
constexpr TypeOptions cp_validityTypeOptions = [] {
  TypeOptions type = options("cp_validityType", 8, Content::elements);
  type.elements = validityElements;
  type.states = validityStates;
  return type;
}();
constexpr Field cp_validityTypeRows[] = {
    ELEMENT(cp_validityType, cp_from, .flags = checkedDateTime),
    ELEMENT(cp_validityType, cp_until, .flags = checkedDateTime),
};

} // namespace

AWKWARD_DEFINE(cp_identityType)
AWKWARD_DEFINE(cp_validityType)

namespace {

constexpr RtSaxElementInfo conditionsElements[] = {
    {"identity", ns, 0, 1}, {"sphere", ns, 0, 1}, {"validity", ns, 0, 1}, {"", ns, 0, many}};
constexpr uint8_t conditionsStates[] = {
    1, 1, // identity
    1, 1, // sphere
    1, 1, // validity
    1, 1, // any
};
constexpr TypeOptions cp_conditionsType_1Options = [] {
  TypeOptions type = options("cp_conditionsType_1", 9, Content::choice);
  type.elements = conditionsElements;
  return type;
}();
constexpr Field cp_conditionsType_1Rows[] = {
    ALTERNATIVE(cp_conditionsType_1, cp_identity),
    ALTERNATIVE(cp_conditionsType_1, cp_sphere),
    ALTERNATIVE(cp_conditionsType_1, cp_validity),
    ALTERNATIVE(cp_conditionsType_1, cp__any),
};

} // namespace

AWKWARD_DEFINE(cp_conditionsType_1)

namespace {

constexpr TypeOptions cp_conditionsTypeOptions = [] {
  TypeOptions type = options("cp_conditionsType", 10, Content::elements);
  type.flags = refusesAtOnce;
  type.elements = conditionsElements;
  type.states = conditionsStates;
  return type;
}();
constexpr Field cp_conditionsTypeRows[] = {ELEMENT(cp_conditionsType, items, .items = &cp_conditionsType_1Schema)};

// ---- Items that enter their list at their end -----------------------------------------------------------------

constexpr RtSaxElementInfo extensibleElements[] = {{"", ns, 0, many}};
constexpr TypeOptions cp_extensibleTypeOptions = [] {
  TypeOptions type = options("cp_extensibleType", 11, Content::anything);
  type.elements = extensibleElements;
  return type;
}();
constexpr Field cp_extensibleTypeRows[] = {ELEMENT(cp_extensibleType, items, .flags = appendedAtEnd)};

} // namespace

AWKWARD_DEFINE(cp_conditionsType)
AWKWARD_DEFINE(cp_extensibleType)

namespace {

constexpr RtSaxElementInfo ruleElements[] = {
    {"conditions", ns, 0, 1}, {"actions", ns, 0, 1}, {"transformations", ns, 0, 1}};
constexpr uint8_t ruleStates[] = {
    1,   no,  no,  // conditions
    2,   2,   no,  // actions
    fin, fin, fin, // transformations
};
constexpr TypeOptions cp_ruleTypeOptions = [] {
  TypeOptions type = options("cp_ruleType", 12, Content::elements);
  type.elements = ruleElements;
  type.states = ruleStates;
  type.attributes = idAttribute;
  type.requiredAttributes = 1;
  return type;
}();
constexpr Field cp_ruleTypeRows[] = {
    ELEMENT(cp_ruleType, cp_conditions, .bit = 1),
    ELEMENT(cp_ruleType, cp_actions, .bit = 2),
    ELEMENT(cp_ruleType, cp_transformations, .bit = 4),
    ATTRIBUTE(cp_ruleType, cp_id, .flags = collapsed),
};

} // namespace

AWKWARD_DEFINE(cp_ruleType)

namespace {

constexpr RtSaxElementInfo rulesetElements[] = {{"rule", ns, 0, many}};
constexpr TypeOptions cp__rulesetOptions = [] {
  TypeOptions type = options("cp__ruleset", 13, Content::named);
  type.elements = rulesetElements;
  return type;
}();
constexpr Field cp__rulesetRows[] = {
    ELEMENT(cp__ruleset, cp_rule, .flags = appendedAtEnd, .items = &cp_ruleTypeSchema)};

} // namespace

AWKWARD_DEFINE(cp__ruleset)

constexpr DocumentSchema cp_rulesetDocument = makeDocument({.root = "ruleset",
                                                            .module = &module,
                                                            .number = 1,
                                                            .type = &cp__rulesetSchema,
                                                            .declaration = Declaration::prefix,
                                                            .prefix = "cp"});
constexpr DocumentSchema cp_conditionsDocument = makeDocument({.root = "conditions",
                                                               .module = &module,
                                                               .number = 2,
                                                               .type = &cp_conditionsTypeSchema,
                                                               .declaration = Declaration::prefix,
                                                               .prefix = "cp"});

} // namespace awkward
