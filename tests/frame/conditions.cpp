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

// Put together by hand: the address of a table of another source is no constant for a sanitizer's comparisons.
constexpr DocumentSchema conditionsDocument = {.root = "conditions",
                                               .module = &module,
                                               .type = &cp_conditionsTypeSchema,
                                               .simple = nullptr,
                                               .prefix = "cp",
                                               .pinned = nullptr,
                                               .number = 2,
                                               .pinnedCount = 0,
                                               .declaration = Declaration::prefix};

} // namespace frame
