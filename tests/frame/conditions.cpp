#include "conditions.h"

namespace frame {

namespace {

using namespace ims;

#define SOURCE "tests/frame/conditions"

constexpr ModuleSchema module = {.name = "RuleSet",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "cp_",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = commonPolicyNamespace,
                                 .uri = "urn:ietf:params:xml:ns:common-policy",
                                 .qualifiedAttributes = false};

} // namespace

constexpr DocumentSchema conditionsDocument = makeDocument({.root = "conditions",
                                                            .module = &module,
                                                            .number = 2,
                                                            .type = &cp_conditionsTypeSchema,
                                                            .declaration = Declaration::prefix,
                                                            .prefix = "cp"});

} // namespace frame
