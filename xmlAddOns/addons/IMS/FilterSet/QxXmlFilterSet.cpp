// The tables of notification filters, and the functions on their records.
#include "Functions.h"
#include "QxXmlFilterSetTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/FilterSet/QxXmlFilterSet"

constexpr ModuleSchema module = {.name = "FilterSet",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = simpleFilterNamespace,
                                 .uri = "urn:ietf:params:xml:ns:simple-filter",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = simpleFilterNamespace;

constexpr RtxEnumRow typeRows[] = {{"namespace", 1, 9, 1}, {"xpath", 0, 5, 0}};
constexpr EnumSchema TypeTypeEnum = makeEnum("TypeType", &module, 10, typeRows);

// ---- Prefixes of expressions ----------------------------------------------------------------------------------

constexpr const char *bindingAttributes[] = {"prefix", "urn"};
QX_TYPE(NSBinding, 1, .content = Content::nothing, .attributes = bindingAttributes, .requiredAttributes = 3);
constexpr Field NSBindingRows[] = {
    ATTRIBUTE(NSBinding, prefix),
    ATTRIBUTE(NSBinding, urn, .flags = collapsed),
};
IMS_DEFINE(NSBinding)

constexpr RtSaxElementInfo bindingsElements[] = {{"ns-binding", ns, 1, many}};
QX_TYPE(NSBindings, 2, .content = Content::named, .flags = noEmptyList, .elements = bindingsElements);
constexpr Field NSBindingsRows[] = {ELEMENT(NSBindings, ns_binding, .flags = appendedAtEnd, .items = &NSBindingSchema)};
IMS_DEFINE(NSBindings)

// ---- What is sent ---------------------------------------------------------------------------------------------

constexpr const char *expressionAttributes[] = {"type"};
QX_TYPE(InclType, 3, .content = Content::text, .attributes = expressionAttributes);
constexpr Field InclTypeRows[] = {
    CONTENT(InclType, value),
    ATTRIBUTE(InclType, type, .bit = 1, .flags = presentAlways | enumErrorOnly | printedAlways | initialZero,
              .enumeration = &TypeTypeEnum),
    CARRIED(InclType, _anyAttr),
    CARRIED(InclType, nsDecls),
};
IMS_DEFINE(InclType)

QX_TYPE(ExclType, 4, .content = Content::text, .attributes = expressionAttributes);
constexpr Field ExclTypeRows[] = {
    CONTENT(ExclType, value),
    ATTRIBUTE(ExclType, type, .bit = 1, .flags = presentAlways | enumErrorOnly | printedAlways | initialZero,
              .enumeration = &TypeTypeEnum),
    CARRIED(ExclType, _anyAttr),
    CARRIED(ExclType, nsDecls),
};
IMS_DEFINE(ExclType)

constexpr RtSaxElementInfo whatElements[] = {{"include", ns, 0, many}, {"exclude", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t whatStates[] = {
    1, 1, no, no, // include
    2, 2, 2,  no, // exclude
    3, 3, 3,  3,  // any
};
QX_TYPE(WhatType, 5, .content = Content::elements, .elements = whatElements, .states = whatStates);
constexpr Field WhatTypeRows[] = {
    ELEMENT(WhatType, include, .items = &InclTypeSchema),
    ELEMENT(WhatType, exclude, .items = &ExclTypeSchema),
    ELEMENT(WhatType, _any),
};
IMS_DEFINE(WhatType)

// ---- When it is sent ------------------------------------------------------------------------------------------

constexpr const char *changedAttributes[] = {"from", "to", "by"};
QX_TYPE(ChangedType, 6, .content = Content::text, .attributes = changedAttributes);
constexpr Field ChangedTypeRows[] = {
    CONTENT(ChangedType, value),
    ATTRIBUTE(ChangedType, from, .bit = 1, .flags = presentAlways | lenient),
    ATTRIBUTE(ChangedType, to, .bit = 2, .flags = presentAlways | lenient),
    ATTRIBUTE(ChangedType, by, .bit = 4, .flags = presentAlways | lenient),
    CARRIED(ChangedType, _anyAttr),
    CARRIED(ChangedType, nsDecls),
};
IMS_DEFINE(ChangedType)

constexpr RtSaxElementInfo triggerElements[] = {
    {"changed", ns, 0, many}, {"added", ns, 0, many}, {"removed", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t triggerStates[] = {
    1, 1, no, no, no, // changed
    2, 2, 2,  no, no, // added
    3, 3, 3,  3,  no, // removed
    4, 4, 4,  4,  4,  // any
};
QX_TYPE(TriggerType, 7, .content = Content::elements, .elements = triggerElements, .states = triggerStates);
constexpr Field TriggerTypeRows[] = {
    ELEMENT(TriggerType, changed, .items = &ChangedTypeSchema),
    ELEMENT(TriggerType, added),
    ELEMENT(TriggerType, removed),
    ELEMENT(TriggerType, _any),
};
IMS_DEFINE(TriggerType)

// ---- Filters --------------------------------------------------------------------------------------------------

constexpr RtSaxElementInfo filterElements[] = {{"what", ns, 0, 1}, {"trigger", ns, 0, many}, {"", ns, 0, many}};
constexpr uint8_t filterStates[] = {
    1, no, no, no, // what
    2, 2,  2,  no, // trigger
    3, 3,  3,  3,  // any
};
constexpr const char *filterAttributes[] = {"id", "uri", "domain", "remove", "enabled"};
QX_TYPE(FilterType, 8, .content = Content::elements, .elements = filterElements, .states = filterStates,
        .attributes = filterAttributes, .requiredAttributes = 1);
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
IMS_DEFINE(FilterType)

constexpr RtSaxElementInfo filterSetElements[] = {{"ns-bindings", ns, 0, 1}, {"filter", ns, 0, many}};
constexpr uint8_t filterSetStates[] = {
    1, no, no, // ns-bindings
    2, 2,  2,  // filter
};
constexpr const char *filterSetAttributes[] = {"package"};
QX_TYPE(FilterSetType, 9, .content = Content::elements, .elements = filterSetElements, .states = filterSetStates,
        .attributes = filterSetAttributes);
constexpr Field FilterSetTypeRows[] = {
    ELEMENT(FilterSetType, ns_bindings, .bit = 1),
    ELEMENT(FilterSetType, filter, .items = &FilterTypeSchema),
    ATTRIBUTE(FilterSetType, package_, .bit = 2),
    CARRIED(FilterSetType, _anyAttr),
};
IMS_DEFINE(FilterSetType)

// ---- Documents ------------------------------------------------------------------------------------------------

constexpr DocumentSchema filter_setDocument = makeDocument({.root = "filter-set",
                                                            .module = &module,
                                                            .number = 1,
                                                            .type = &FilterSetTypeSchema,
                                                            .declaration = Declaration::defaultAlways});

// ---- Functions ------------------------------------------------------------------------------------------------

QX_INIT(NSBinding)
QX_INIT(NSBindings)
QX_INIT(InclType)
QX_INIT(ExclType)
QX_INIT(WhatType)
QX_INIT(ChangedType)
QX_INIT(TriggerType)
QX_INIT(FilterType)
QX_INIT(FilterSetType)

QX_FREE(NSBindings)
QX_FREE(InclType)
QX_FREE(ExclType)
QX_FREE(WhatType)
QX_FREE(ChangedType)
QX_FREE(TriggerType)
QX_FREE(FilterType)
QX_FREE(FilterSetType)

QX_PRINT(NSBinding)
QX_PRINT(NSBindings)
QX_PRINT(InclType)
QX_PRINT(ExclType)
QX_PRINT(WhatType)
QX_PRINT(ChangedType)
QX_PRINT(TriggerType)
QX_PRINT(FilterType)
QX_PRINT(FilterSetType)

QX_APPEND(NSBindings, ns_binding, NSBinding)

QX_ENUM_TEXT(TypeType)

QX_ENUM_CODE_OF_BYTES(TypeType)

QX_ENUM_PRINT(TypeType)
