#include "FilterSet.h"

namespace awkward {

namespace {

using namespace ims;

#define SOURCE "awkward/FilterSet"

constexpr ModuleSchema module = {.name = "FilterSet",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = simpleFilterNamespace,
                                 .uri = "urn:ietf:params:xml:ns:simple-filter",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = simpleFilterNamespace;

constexpr TypeOptions options(const char *name, uint16_t number, Content content) {
  return {.name = name,
          .module = &module,
          .number = number,
          .decoding = decoding,
          .validating = validating,
          .content = content};
}

constexpr RtxEnumRow typeTypeRows[] = {{"namespace", 1, 9, 1}, {"xpath", 0, 5, 0}};

} // namespace

constexpr EnumSchema typeTypeEnumeration = makeEnum("TypeType", &module, 11, typeTypeRows);

namespace {

constexpr const char *bindingAttributes[] = {"prefix", "urn"};
constexpr TypeOptions NSBindingOptions = [] {
  TypeOptions type = options("NSBinding", 1, Content::nothing);
  type.attributes = bindingAttributes;
  type.requiredAttributes = 3;
  return type;
}();
constexpr Field NSBindingRows[] = {
    ATTRIBUTE(NSBinding, prefix),
    ATTRIBUTE(NSBinding, urn, .flags = collapsed),
};

constexpr const char *typeAttribute[] = {"type"};
constexpr TypeOptions InclTypeOptions = [] {
  TypeOptions type = options("InclType", 3, Content::text);
  type.attributes = typeAttribute;
  return type;
}();
constexpr Field InclTypeRows[] = {
    CONTENT(InclType, value),
    ATTRIBUTE(InclType, type, .bit = 1, .flags = presentAlways | enumErrorOnly | printedAlways | initialZero,
              .enumeration = &typeTypeEnumeration),
    CARRIED(InclType, _anyAttr),
    CARRIED(InclType, nsDecls),
};

constexpr const char *changedAttributes[] = {"from", "to", "by"};
constexpr TypeOptions ChangedTypeOptions = [] {
  TypeOptions type = options("ChangedType", 6, Content::text);
  type.attributes = changedAttributes;
  return type;
}();
constexpr Field ChangedTypeRows[] = {
    CONTENT(ChangedType, value),
    ATTRIBUTE(ChangedType, from, .bit = 1, .flags = presentAlways | lenient),
    ATTRIBUTE(ChangedType, to, .bit = 2, .flags = presentAlways | lenient),
    ATTRIBUTE(ChangedType, by, .bit = 4, .flags = presentAlways | lenient),
    CARRIED(ChangedType, _anyAttr),
    CARRIED(ChangedType, nsDecls),
};

} // namespace

AWKWARD_DEFINE(NSBinding)
AWKWARD_DEFINE(InclType)
AWKWARD_DEFINE(ChangedType)

namespace {

constexpr RtSaxElementInfo bindingsElements[] = {{"ns-binding", ns, 1, many}};
constexpr TypeOptions NSBindingsOptions = [] {
  TypeOptions type = options("NSBindings", 2, Content::named);
  type.flags = noEmptyList;
  type.elements = bindingsElements;
  return type;
}();
constexpr Field NSBindingsRows[] = {ELEMENT(NSBindings, ns_binding, .flags = appendedAtEnd, .items = &NSBindingSchema)};

constexpr RtSaxElementInfo whatElements[] = {{"include", ns, 0, many}, {"exclude", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t whatStates[] = {
    1, 1, no, no, // include
    2, 2, 2,  no, // exclude
    3, 3, 3,  3,  // any
};
constexpr TypeOptions WhatTypeOptions = [] {
  TypeOptions type = options("WhatType", 5, Content::elements);
  type.elements = whatElements;
  type.states = whatStates;
  return type;
}();
constexpr Field WhatTypeRows[] = {
    ELEMENT(WhatType, include, .items = &InclTypeSchema),
    ELEMENT(WhatType, exclude, .items = &InclTypeSchema),
    ELEMENT(WhatType, _any),
};

constexpr RtSaxElementInfo triggerElements[] = {
    {"changed", ns, 0, many}, {"added", ns, 0, many}, {"removed", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t triggerStates[] = {
    1, 1, no, no, no, // changed
    2, 2, 2,  no, no, // added
    3, 3, 3,  3,  no, // removed
    4, 4, 4,  4,  4,  // any
};
constexpr TypeOptions TriggerTypeOptions = [] {
  TypeOptions type = options("TriggerType", 7, Content::elements);
  type.elements = triggerElements;
  type.states = triggerStates;
  return type;
}();
constexpr Field TriggerTypeRows[] = {
    ELEMENT(TriggerType, changed, .items = &ChangedTypeSchema),
    ELEMENT(TriggerType, added),
    ELEMENT(TriggerType, removed),
    ELEMENT(TriggerType, _any),
};

} // namespace

AWKWARD_DEFINE(NSBindings)
AWKWARD_DEFINE(WhatType)
AWKWARD_DEFINE(TriggerType)

namespace {

constexpr RtSaxElementInfo filterElements[] = {{"what", ns, 0, 1}, {"trigger", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t filterStates[] = {
    1, no, no, no, // what
    2, 2,  2,  no, // trigger
    3, 3,  3,  3,  // any
};
constexpr const char *filterAttributes[] = {"id", "uri", "domain", "remove", "enabled"};
constexpr TypeOptions FilterTypeOptions = [] {
  TypeOptions type = options("FilterType", 8, Content::elements);
  type.elements = filterElements;
  type.states = filterStates;
  type.attributes = filterAttributes;
  type.requiredAttributes = 1;
  return type;
}();
constexpr Field FilterTypeRows[] = {
    ELEMENT(FilterType, what, .bit = 1),
    ELEMENT(FilterType, trigger, .items = &TriggerTypeSchema),
    ELEMENT(FilterType, _any),
    ATTRIBUTE(FilterType, id, .flags = lenient),
    ATTRIBUTE(FilterType, uri, .bit = 2, .flags = presentAlways | lenient | collapsed),
    ATTRIBUTE(FilterType, domain, .bit = 4, .flags = presentAlways | lenient),
    ATTRIBUTE(FilterType, remove_, .bit = 8, .flags = presentAlways | lenient | printedAlways | initialZero),
    ATTRIBUTE(FilterType, enabled, .bit = 16, .flags = presentAlways | lenient | printedAlways | initialTrue),
    CARRIED(FilterType, _anyAttr),
};

} // namespace

AWKWARD_DEFINE(FilterType)

namespace {

constexpr RtSaxElementInfo filterSetElements[] = {{"ns-bindings", ns, 0, 1}, {"filter", ns, 0, many}};
constexpr uint8_t filterSetStates[] = {
    1, no, no, // ns-bindings
    2, 2,  2,  // filter
};
constexpr const char *filterSetAttributes[] = {"package"};
constexpr TypeOptions FilterSetTypeOptions = [] {
  TypeOptions type = options("FilterSetType", 9, Content::elements);
  type.elements = filterSetElements;
  type.states = filterSetStates;
  type.attributes = filterSetAttributes;
  return type;
}();
constexpr Field FilterSetTypeRows[] = {
    ELEMENT(FilterSetType, ns_bindings, .bit = 1),
    ELEMENT(FilterSetType, filter, .items = &FilterTypeSchema),
    ATTRIBUTE(FilterSetType, package_, .bit = 2),
    CARRIED(FilterSetType, _anyAttr),
};

} // namespace

AWKWARD_DEFINE(FilterSetType)

constexpr DocumentSchema filter_setDocument = makeDocument({.root = "filter-set",
                                                            .module = &module,
                                                            .number = 1,
                                                            .type = &FilterSetTypeSchema,
                                                            .declaration = Declaration::defaultAlways});

} // namespace awkward
