// The tables of rule sets, and the functions on their records.
#include "Functions.h"
#include "QxXmlRuleSetTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSet"

constexpr ModuleSchema module = {.name = "RuleSet",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "cp_",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = commonPolicyNamespace,
                                 .uri = "urn:ietf:params:xml:ns:common-policy",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = commonPolicyNamespace;

// ---- Whom a rule is about -------------------------------------------------------------------------------------

constexpr RtSaxElementInfo oneElements[] = {{"", ns, 0, 1}};
constexpr uint8_t oneStates[] = {fin};
constexpr const char *oneAttributes[] = {"id"};
QX_TYPE(cp_oneType, 1, .content = Content::elements, .elements = oneElements, .states = oneStates,
        .attributes = oneAttributes, .requiredAttributes = 1);
constexpr Field cp_oneTypeRows[] = {
    ELEMENT(cp_oneType, cp__any, .bit = 1, .foreign = true),
    ATTRIBUTE(cp_oneType, cp_id, .flags = collapsed),
};
IMS_DEFINE(cp_oneType)

constexpr const char *exceptAttributes[] = {"domain", "id"};
QX_TYPE(cp_exceptType, 2, .content = Content::nothing, .attributes = exceptAttributes);
constexpr Field cp_exceptTypeRows[] = {
    ATTRIBUTE(cp_exceptType, cp_domain, .bit = 1),
    ATTRIBUTE(cp_exceptType, cp_id, .bit = 2, .flags = collapsed),
};
IMS_DEFINE(cp_exceptType)

constexpr RtSaxElementInfo manyElements[] = {{"except", ns, 1, 1}, {"", ns, 0, 1}};
constexpr uint8_t manyStates[] = {
    1, 1, // except
    1, 1, // any
};
QX_CHOICE(cp_manyType_1, 3, .elements = manyElements);
constexpr Field cp_manyType_1Rows[] = {
    ALTERNATIVE(cp_manyType_1, cp_except),
    ALTERNATIVE(cp_manyType_1, cp__any, .foreign = true),
};
IMS_DEFINE(cp_manyType_1)

constexpr const char *manyAttributes[] = {"domain"};
QX_TYPE(cp_manyType, 4, .content = Content::elements, .elements = manyElements, .states = manyStates,
        .attributes = manyAttributes);
constexpr Field cp_manyTypeRows[] = {
    ELEMENT(cp_manyType, cp__choice, .items = &cp_manyType_1Schema),
    ATTRIBUTE(cp_manyType, cp_domain, .bit = 1),
};
IMS_DEFINE(cp_manyType)

constexpr RtSaxElementInfo identityElements[] = {{"one", ns, 1, 1}, {"many", ns, 1, 1}, {"", ns, 1, 1}};
constexpr uint8_t identityStates[] = {
    1, 1, // one
    1, 1, // many
    1, 1, // any
};
QX_CHOICE(cp_identityType_1, 5, .elements = identityElements);
constexpr Field cp_identityType_1Rows[] = {
    ALTERNATIVE(cp_identityType_1, cp_one),
    ALTERNATIVE(cp_identityType_1, cp_many),
    ALTERNATIVE(cp_identityType_1, cp__any, .foreign = true),
};
IMS_DEFINE(cp_identityType_1)

QX_TYPE(cp_identityType, 6, .content = Content::elements, .flags = refusesAtOnce | noEmptyList | countedByMember,
        .elements = identityElements, .states = identityStates);
constexpr Field cp_identityTypeRows[] = {ELEMENT(cp_identityType, items, .items = &cp_identityType_1Schema)};
IMS_DEFINE(cp_identityType)

// ---- Where and when it holds ----------------------------------------------------------------------------------

constexpr const char *sphereAttributes[] = {"value"};
QX_TYPE(cp_sphereType, 7, .content = Content::nothing, .attributes = sphereAttributes, .requiredAttributes = 1);
constexpr Field cp_sphereTypeRows[] = {ATTRIBUTE(cp_sphereType, cp_value)};
IMS_DEFINE(cp_sphereType)

constexpr RtSaxElementInfo validityElements[] = {{"from", ns, 1, 1}, {"until", ns, 1, 1}};
constexpr uint8_t validityStates[] = {
    1, no,   // from
    no, fin, // until
};
QX_TYPE(cp_validityType, 8, .content = Content::elements, .elements = validityElements, .states = validityStates);
constexpr Field cp_validityTypeRows[] = {
    ELEMENT(cp_validityType, cp_from, .flags = checkedDateTime),
    ELEMENT(cp_validityType, cp_until, .flags = checkedDateTime),
};
IMS_DEFINE(cp_validityType)

constexpr RtSaxElementInfo conditionsElements[] = {
    {"identity", ns, 0, 1}, {"sphere", ns, 0, 1}, {"validity", ns, 0, 1}, {"", ns, 0, many}};
constexpr uint8_t conditionsStates[] = {
    1, 1, // identity
    1, 1, // sphere
    1, 1, // validity
    1, 1, // any
};
QX_CHOICE(cp_conditionsType_1, 9, .elements = conditionsElements);
constexpr Field cp_conditionsType_1Rows[] = {
    ALTERNATIVE(cp_conditionsType_1, cp_identity),
    ALTERNATIVE(cp_conditionsType_1, cp_sphere),
    ALTERNATIVE(cp_conditionsType_1, cp_validity),
    ALTERNATIVE(cp_conditionsType_1, cp__any),
};
IMS_DEFINE(cp_conditionsType_1)

QX_TYPE(cp_conditionsType, 10, .content = Content::elements, .flags = refusesAtOnce, .elements = conditionsElements,
        .states = conditionsStates);
constexpr Field cp_conditionsTypeRows[] = {ELEMENT(cp_conditionsType, items, .items = &cp_conditionsType_1Schema)};
IMS_DEFINE(cp_conditionsType)

// ---- Rules ----------------------------------------------------------------------------------------------------

constexpr RtSaxElementInfo extensibleElements[] = {{"", ns, 0, many}};
QX_TYPE(cp_extensibleType, 11, .content = Content::anything, .elements = extensibleElements);
constexpr Field cp_extensibleTypeRows[] = {ELEMENT(cp_extensibleType, items, .flags = appendedAtEnd)};
IMS_DEFINE(cp_extensibleType)

constexpr RtSaxElementInfo ruleElements[] = {
    {"conditions", ns, 0, 1}, {"actions", ns, 0, 1}, {"transformations", ns, 0, 1}};
constexpr uint8_t ruleStates[] = {
    1,   no,  no,  // conditions
    2,   2,   no,  // actions
    fin, fin, fin, // transformations
};
constexpr const char *ruleAttributes[] = {"id"};
QX_TYPE(cp_ruleType, 12, .content = Content::elements, .elements = ruleElements, .states = ruleStates,
        .attributes = ruleAttributes, .requiredAttributes = 1);
constexpr Field cp_ruleTypeRows[] = {
    ELEMENT(cp_ruleType, cp_conditions, .bit = 1),
    ELEMENT(cp_ruleType, cp_actions, .bit = 2),
    ELEMENT(cp_ruleType, cp_transformations, .bit = 4),
    ATTRIBUTE(cp_ruleType, cp_id, .flags = collapsed),
};
IMS_DEFINE(cp_ruleType)

constexpr RtSaxElementInfo rulesetElements[] = {{"rule", ns, 0, many}};
QX_TYPE(cp__ruleset, 13, .content = Content::named, .elements = rulesetElements);
constexpr Field cp__rulesetRows[] = {
    ELEMENT(cp__ruleset, cp_rule, .flags = appendedAtEnd, .items = &cp_ruleTypeSchema)};
IMS_DEFINE(cp__ruleset)

// ---- Documents ------------------------------------------------------------------------------------------------

constexpr DocumentSchema cp_rulesetDocument = makeDocument({.root = "ruleset",
                                                            .module = &module,
                                                            .number = 1,
                                                            .type = &cp__rulesetSchema,
                                                            .declaration = Declaration::prefix,
                                                            .prefix = "cp"});

// ---- Functions ------------------------------------------------------------------------------------------------

QX_INIT(cp_oneType)
QX_INIT(cp_exceptType)
QX_INIT(cp_manyType_1)
QX_INIT(cp_manyType)
QX_INIT(cp_identityType_1)
QX_INIT(cp_identityType)
QX_INIT(cp_sphereType)
QX_INIT(cp_validityType)
QX_INIT(cp_conditionsType_1)
QX_INIT(cp_conditionsType)
QX_INIT(cp_extensibleType)
QX_INIT(cp_ruleType)
QX_INIT(cp__ruleset)

QX_FREE(cp_oneType)
QX_FREE(cp_manyType_1)
QX_FREE(cp_manyType)
QX_FREE(cp_identityType_1)
QX_FREE(cp_identityType)
QX_FREE(cp_validityType)
QX_FREE(cp_conditionsType_1)
QX_FREE(cp_conditionsType)
QX_FREE(cp_extensibleType)
QX_FREE(cp_ruleType)
QX_FREE(cp__ruleset)

QX_PRINT(cp_oneType)
QX_PRINT(cp_exceptType)
QX_PRINT(cp_manyType_1)
QX_PRINT(cp_manyType)
QX_PRINT(cp_identityType_1)
QX_PRINT(cp_identityType)
QX_PRINT(cp_sphereType)
QX_PRINT(cp_validityType)
QX_PRINT(cp_conditionsType_1)
QX_PRINT(cp_conditionsType)
QX_PRINT(cp_extensibleType)
QX_PRINT(cp_ruleType)
QX_PRINT(cp__ruleset)

QX_APPEND(cp_identityType, items, cp_identityType_1)
QX_APPEND(cp_conditionsType, items, cp_conditionsType_1)
QX_APPEND(cp_extensibleType, items.items, RtxXmlString)
QX_APPEND(cp__ruleset, cp_rule, cp_ruleType)
