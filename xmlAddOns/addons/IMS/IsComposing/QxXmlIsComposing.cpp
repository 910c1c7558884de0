// The tables of the composing indication, and the functions on its record.
#include "Functions.h"
#include "QxXmlIsComposingTables.h"

using namespace ims;

#define SOURCE "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposing"

constexpr ModuleSchema module = {.name = "IsComposing",
                                 .paths = {SOURCE, SOURCE "Enc", SOURCE "Dec", SOURCE "SAX", SOURCE "Vldt"},
                                 .memberPrefix = "tns_",
                                 .namespaces = &imsNamespaces,
                                 .namespaceIndex = isComposingNamespace,
                                 .uri = "urn:ietf:params:xml:ns:im-iscomposing",
                                 .qualifiedAttributes = false};

constexpr RtSaxElementInfo elements[] = {
    {"state", isComposingNamespace, 1, 1},       {"lastactive", isComposingNamespace, 0, 1},
    {"contenttype", isComposingNamespace, 0, 1}, {"refresh", isComposingNamespace, 0, 1},
    {"", isComposingNamespace, 0, many},
};

constexpr uint8_t states[] = {
    1,  no, no, no, no, no, // state
    no, 2,  no, no, no, no, // lastactive
    no, 3,  3,  no, no, no, // contenttype
    no, 4,  4,  4,  no, no, // refresh
    no, 5,  5,  5,  5,  5,  // any
};

enum Row : uint8_t {
  ofType,
  ofState,
  ofLastactive,
  ofContenttype,
  ofRefresh,
  ofAny
};

constexpr PinnedLine typeLines[] = {
    {File::base, ofType, step::checkContext, 34},

    {File::encoder, ofType, step::wrapStart, 43},
    {File::encoder, ofType, step::wrapContents, 46},
    {File::encoder, ofType, step::wrapEnd, 49},
    {File::encoder, ofType, step::startTag, 62},
    {File::encoder, ofType, step::startRoom, 64},
    {File::encoder, ofState, step::validate, 83},
    {File::encoder, ofState, step::write, 86},
    {File::encoder, ofLastactive, step::validate, 91},
    {File::encoder, ofLastactive, step::write, 95},
    {File::encoder, ofContenttype, step::validate, 101},
    {File::encoder, ofContenttype, step::write, 105},
    {File::encoder, ofRefresh, step::facet, 113},
    {File::encoder, ofRefresh, step::write, 117},
    {File::encoder, ofAny, step::write, 123},
    {File::encoder, ofType, step::contentsRoom, 128},
    {File::encoder, ofType, step::endTag, 140},
    {File::encoder, ofType, step::endRoom, 142},

    {File::handlers, ofType, step::rootName, 73},
    {File::handlers, ofType, step::lookup, 110},
    {File::handlers, ofType, step::unexpectedAttributes, 133},
    {File::handlers, ofType, step::append, 169},
    {File::handlers, ofRefresh, step::range, 236},
    {File::handlers, ofType, step::content, 251},

    {File::validators, ofType, step::rootName, 72},
    {File::validators, ofType, step::lookup, 109},
    {File::validators, ofType, step::unexpectedAttributes, 123},
    {File::validators, ofType, step::append, 159},
    {File::validators, ofRefresh, step::range, 218},
    {File::validators, ofType, step::content, 231},
};

constexpr PinnedLine documentLines[] = {
    {File::encoder, ofType, step::startDocument, 165},
    {File::encoder, ofType, step::wrapRootStart, 168},
    {File::encoder, ofType, step::wrapRootContents, 171},
    {File::encoder, ofType, step::wrapRootEnd, 174},
    {File::encoder, ofType, step::rootStart, 196},
    {File::encoder, ofType, step::rootDeclarations, 199},
    {File::encoder, ofType, step::rootStartRoom, 202},
    {File::encoder, ofType, step::rootContentsRoom, 218},
    {File::encoder, ofType, step::rootEnd, 232},
    {File::encoder, ofType, step::rootEndRoom, 234},
    {File::decoder, ofType, step::reader, 62},
    {File::validators, ofType, step::reader, 295},
};

QX_TYPE(tns__isComposing, 1, .content = Content::elements, .elements = elements, .states = states, .pinned = typeLines);

constexpr Field tns__isComposingRows[] = {
    ELEMENT(tns__isComposing, tns_state),
    ELEMENT(tns__isComposing, tns_lastactive, .bit = 1, .flags = checkedDateTime),
    ELEMENT(tns__isComposing, tns_contenttype, .bit = 2),
    ELEMENT(tns__isComposing, tns_refresh, .bit = 4, .minimum = 1),
    ELEMENT(tns__isComposing, anyElems),
};
IMS_DEFINE(tns__isComposing)

constexpr DocumentSchema tns_isComposingDocument = makeDocument({.root = "isComposing",
                                                                 .module = &module,
                                                                 .number = 1,
                                                                 .type = &tns__isComposingSchema,
                                                                 .declaration = Declaration::prefix,
                                                                 .prefix = "tns",
                                                                 .pinned = documentLines});

QX_INIT(tns__isComposing)
QX_FREE(tns__isComposing)
QX_PRINT(tns__isComposing)
