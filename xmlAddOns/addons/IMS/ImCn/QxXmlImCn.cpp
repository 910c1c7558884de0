// The tables of the 3GPP IMS body, and the functions on its records.
#include "Functions.h"
#include "QxXmlImCnTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/ImCn/QxXmlImCn"

constexpr ModuleSchema module = {.name = "ImCn",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "",
                                 .namespaces = nullptr,
                                 .namespaceIndex = noNamespace,
                                 .uri = "",
                                 .qualifiedAttributes = false};

constexpr int8_t ns = noNamespace;

constexpr RtSaxElementInfo alternativeElements[] = {{"type", ns, 1, 1}, {"reason", ns, 1, 1}, {"", ns, 0, many}};
constexpr uint8_t alternativeStates[] = {
    1,  no, no, no, // type
    no, 2,  no, no, // reason
    no, no, 3,  3,  // any
};
QX_TYPE(tAlternativeService, 1, .content = Content::elements, .elements = alternativeElements,
        .states = alternativeStates, .pinned = initialisesAt<33>);
constexpr Field tAlternativeServiceRows[] = {
    ELEMENT(tAlternativeService, type),
    ELEMENT(tAlternativeService, reason),
    ELEMENT(tAlternativeService, anyElems),
    CARRIED(tAlternativeService, _anyAttr),
};
IMS_DEFINE(tAlternativeService)

constexpr RtSaxElementInfo choiceElements[] = {{"alternative-service", ns, 1, 1}, {"service-info", ns, 1, 1}};
QX_CHOICE(tIMS3GPP_1, 2, .elements = choiceElements, .pinned = initialisesAt<62>);
constexpr Field tIMS3GPP_1Rows[] = {
    ALTERNATIVE(tIMS3GPP_1, alternative_service),
    ALTERNATIVE(tIMS3GPP_1, service_info),
};
IMS_DEFINE(tIMS3GPP_1)

constexpr RtSaxElementInfo bodyElements[] = {
    {"alternative-service", ns, 1, 1}, {"service-info", ns, 1, 1}, {"", ns, 0, many}};
constexpr uint8_t bodyStates[] = {
    1,  no, no, // alternative-service
    1,  no, no, // service-info
    no, 2,  2,  // any
};
constexpr const char *bodyAttributes[] = {"version"};
QX_TYPE(tIMS3GPP, 3, .content = Content::elements, .elements = bodyElements, .states = bodyStates,
        .attributes = bodyAttributes, .requiredAttributes = 1, .pinned = initialisesAt<86>);
constexpr Field tIMS3GPPRows[] = {
    ELEMENT(tIMS3GPP, _choice1),
    ELEMENT(tIMS3GPP, anyElems),
    ATTRIBUTE(tIMS3GPP, version, .flags = lenient),
    CARRIED(tIMS3GPP, _anyAttr),
};
IMS_DEFINE(tIMS3GPP)

// ---- Documents ------------------------------------------------------------------------------------------------

constexpr SimpleType textValue = {.kind = Kind::text, .enumeration = nullptr, .collapsed = false};

constexpr DocumentSchema ims_3gppDocument =
    makeDocument({.root = "ims-3gpp", .module = &module, .number = 1, .type = &tIMS3GPPSchema});
constexpr DocumentSchema typeDocument =
    makeDocument({.root = "type", .module = &module, .number = 2, .simple = &textValue});
constexpr DocumentSchema actionDocument =
    makeDocument({.root = "action", .module = &module, .number = 3, .simple = &textValue});

// ---- Functions ------------------------------------------------------------------------------------------------

QX_INIT(tAlternativeService)
QX_INIT(tIMS3GPP_1)
QX_INIT(tIMS3GPP)

QX_FREE(tAlternativeService)
QX_FREE(tIMS3GPP_1)
QX_FREE(tIMS3GPP)

QX_PRINT(tAlternativeService)
QX_PRINT(tIMS3GPP_1)
QX_PRINT(tIMS3GPP)
