#include "ImCn.h"

namespace awkward {

namespace {

using namespace ims;

#define SOURCE "awkward/ImCn"

constexpr ModuleSchema module = {.name = "ImCn",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "",
                                 .namespaces = nullptr,
                                 .namespaceIndex = noNamespace,
                                 .uri = nullptr,
                                 .qualifiedAttributes = false};

constexpr int8_t ns = noNamespace;

constexpr RtSaxElementInfo alternativeElements[] = {{"type", ns, 1, 1}, {"reason", ns, 1, 1}, {"", ns, 0, many}};
constexpr uint8_t alternativeStates[] = {
    1,  no, no, no, // type
    no, 2,  no, no, // reason
    no, no, 3,  3,  // any
};
constexpr TypeOptions tAlternativeServiceOptions = {.name = "tAlternativeService",
                                                    .module = &module,
                                                    .number = 1,
                                                    .decoding = decoding,
                                                    .validating = validating,
                                                    .content = Content::elements,
                                                    .elements = alternativeElements,
                                                    .states = alternativeStates};
constexpr Field tAlternativeServiceRows[] = {
    ELEMENT(tAlternativeService, type),
    ELEMENT(tAlternativeService, reason),
    ELEMENT(tAlternativeService, anyElems),
    CARRIED(tAlternativeService, _anyAttr),
};

} // namespace

AWKWARD_DEFINE(tAlternativeService)

namespace {

constexpr RtSaxElementInfo bodyElements[] = {
    {"alternative-service", ns, 1, 1}, {"service-info", ns, 1, 1}, {"", ns, 0, many}};
constexpr RtSaxElementInfo choiceElements[] = {{"alternative-service", ns, 1, 1}, {"service-info", ns, 1, 1}};
constexpr TypeOptions tIMS3GPP_1Options = {
    .name = "tIMS3GPP_1", .module = &module, .number = 2, .content = Content::choice, .elements = choiceElements};
constexpr Field tIMS3GPP_1Rows[] = {
    ALTERNATIVE(tIMS3GPP_1, alternative_service),
    ALTERNATIVE(tIMS3GPP_1, service_info),
};

} // namespace

AWKWARD_DEFINE(tIMS3GPP_1)

namespace {

constexpr uint8_t bodyStates[] = {
    1,  no, no, // alternative-service
    1,  no, no, // service-info
    no, 2,  2,  // any
};
constexpr const char *bodyAttributes[] = {"version"};
constexpr TypeOptions tIMS3GPPOptions = {.name = "tIMS3GPP",
                                         .module = &module,
                                         .number = 3,
                                         .decoding = decoding,
                                         .validating = validating,
                                         .content = Content::elements,
                                         .elements = bodyElements,
                                         .states = bodyStates,
                                         .attributes = bodyAttributes,
                                         .requiredAttributes = 1};
constexpr Field tIMS3GPPRows[] = {
    ELEMENT(tIMS3GPP, _choice1),
    ELEMENT(tIMS3GPP, anyElems),
    ATTRIBUTE(tIMS3GPP, version, .flags = lenient),
    CARRIED(tIMS3GPP, _anyAttr),
};

constexpr SimpleType text = {Kind::text, nullptr, false};

} // namespace

AWKWARD_DEFINE(tIMS3GPP)

constexpr DocumentSchema ims_3gppDocument =
    makeDocument({.root = "ims-3gpp", .module = &module, .number = 1, .type = &tIMS3GPPSchema});
constexpr DocumentSchema typeDocument = makeDocument({.root = "type", .module = &module, .number = 2, .simple = &text});

} // namespace awkward
