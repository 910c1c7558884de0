#include "judges.h"

#include "errors.h"
#include "foreign.h"
#include "input.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <libxml/xmlschemastypes.h>

namespace differential {

// ---- The schema --------------------------------------------------------------------------------------------------

namespace {

using What = SchemaComplaint::What;

std::string taken(xmlChar *chars) {
  const std::string copy = text(chars);
  xmlFree(chars);
  return copy;
}

What whatOf(const xmlError &error) {
  switch (error.code) {
  case XML_SCHEMAV_CVC_ELT_1: return What::unknownRoot;
  case XML_SCHEMAV_ELEMENT_CONTENT:
    return std::string(error.message).find("Missing child") == std::string::npos ? What::childRefused
                                                                                 : What::childMissing;
  case XML_SCHEMAV_CVC_COMPLEX_TYPE_3_2_1:
  case XML_SCHEMAV_CVC_COMPLEX_TYPE_3_2_2:
  case XML_SCHEMAV_CVC_TYPE_3_1_1: return What::attributeRefused;
  case XML_SCHEMAV_CVC_COMPLEX_TYPE_4: return What::attributeMissing;
  case XML_SCHEMAV_CVC_COMPLEX_TYPE_2_1:
  case XML_SCHEMAV_CVC_COMPLEX_TYPE_2_3: return What::textRefused;
  case XML_SCHEMAV_CVC_COMPLEX_TYPE_2_2:
  case XML_SCHEMAV_CVC_TYPE_3_1_2: return What::elementsInSimple;
  case XML_SCHEMAV_CVC_DATATYPE_VALID_1_2_1:
  case XML_SCHEMAV_CVC_ENUMERATION_VALID:
  case XML_SCHEMAV_CVC_MININCLUSIVE_VALID:
  case XML_SCHEMAV_CVC_MAXINCLUSIVE_VALID: return What::value;
  case XML_SCHEMAV_CVC_ELT_3_1: return What::notNillable;
  case XML_SCHEMAV_CVC_TYPE_1:
  case XML_SCHEMAV_CVC_ELT_4_1:
  case XML_SCHEMAV_CVC_ELT_4_2:
  case XML_SCHEMAV_CVC_ELT_4_3: return What::type;
  default: return What::other;
  }
}

// The attribute that a complaint is about has its name, "{uri}name" or "name",
// in the message only.
void describeAttribute(SchemaComplaint &complaint, const xmlNode &element) {
  static const std::string before = "attribute '";
  const size_t found = complaint.message.find(before);
  if (found == std::string::npos) return;
  const size_t start = found + before.size();
  const std::string name = complaint.message.substr(start, complaint.message.find('\'', start) - start);
  complaint.attribute = name; // if the element does not have it
  for (const xmlAttr *attribute = element.properties; attribute != nullptr; attribute = attribute->next) {
    const std::string uri = uriOf(attribute->ns);
    if ((uri.empty() ? "" : "{" + uri + "}") + text(attribute->name) != name) continue;
    const std::string prefix = attribute->ns == nullptr ? "" : text(attribute->ns->prefix) + ":";
    complaint.attribute = prefix + text(attribute->name);
    complaint.attributeUri = uri;
    complaint.value = taken(xmlNodeListGetString(element.doc, attribute->children, 1));
  }
}

struct Listener {
  const Vocabulary *vocabulary;
  std::vector<SchemaComplaint> complaints;
};

void listen(void *data, xmlErrorPtr error) {
  auto *listener = static_cast<Listener *>(data);
  SchemaComplaint complaint{};
  complaint.vocabulary = listener->vocabulary;
  complaint.what = whatOf(*error);
  complaint.message = std::to_string(error->code) + " " + (error->message == nullptr ? "" : error->message);
  auto *node = static_cast<xmlNode *>(error->node);
  if (node != nullptr && node->type == XML_ATTRIBUTE_NODE) node = node->parent;
  if (node != nullptr) {
    complaint.value = taken(xmlNodeGetContent(node));
    describeAttribute(complaint, *node);
  }
  if (node != nullptr) {
    complaint.element = text(node->name);
    complaint.uri = uriOf(node->ns);
    for (const xmlAttr *attribute = node->properties; attribute != nullptr; attribute = attribute->next)
      complaint.present.push_back("{" + uriOf(attribute->ns) + "}" + text(attribute->name));
    complaint.hasElements = xmlFirstElementChild(node) != nullptr;
    const xmlNode *above = node->parent;
    if (above != nullptr && above->type == XML_ELEMENT_NODE) complaint.parent = text(above->name);
    complaint.foreign = isForeign(*listener->vocabulary, *node);
    complaint.insideForeign = isInsideForeign(*listener->vocabulary, *node);
  }
  listener->complaints.push_back(std::move(complaint));
}

void ignore(void *, xmlErrorPtr) {}

} // namespace

struct Schema::State {
  const Vocabulary *vocabulary;
  xmlSchema *schema;
};

Schema::Schema(const std::filesystem::path &folder, const Vocabulary &vocabulary)
    : state(std::make_unique<State>(State{&vocabulary, nullptr})) {
  xmlSetExternalEntityLoader(xmlNoNetExternalEntityLoader);
  xmlSchemaParserCtxt *parser = xmlSchemaNewParserCtxt((folder / vocabulary.schema).c_str());
  if (parser == nullptr) return;
  state->schema = xmlSchemaParse(parser);
  xmlSchemaFreeParserCtxt(parser);
}

Schema::Schema(Schema &&) noexcept = default;

Schema::~Schema() {
  if (state != nullptr) xmlSchemaFree(state->schema);
}

bool Schema::usable() const { return state->schema != nullptr; }

std::vector<SchemaComplaint> Schema::complaints(const std::string &body) const {
  Listener listener{state->vocabulary, {}};
  xmlParserCtxt *parser = xmlNewParserCtxt();
  xmlSetStructuredErrorFunc(nullptr, ignore);
  xmlDoc *document = xmlCtxtReadMemory(parser, body.data(), static_cast<int>(body.size()), nullptr, nullptr,
                                       XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (document == nullptr) {
    SchemaComplaint complaint{};
    complaint.vocabulary = state->vocabulary;
    complaint.what = What::other;
    complaint.message = "not well-formed";
    listener.complaints.push_back(complaint);
  } else {
    xmlSchemaValidCtxt *validator = xmlSchemaNewValidCtxt(state->schema);
    xmlSchemaSetValidStructuredErrors(validator, listen, &listener);
    const int verdict = xmlSchemaValidateDoc(validator, document);
    EXPECT_EQ(verdict == 0, listener.complaints.empty()) << body;
    xmlSchemaFreeValidCtxt(validator);
    xmlFreeDoc(document);
  }
  xmlFreeParserCtxt(parser);
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  return std::move(listener.complaints);
}

bool isDateTime(const std::string &text) {
  const xmlSchemaType *type = xmlSchemaGetBuiltInType(XML_SCHEMAS_DATETIME);
  return xmlSchemaValidatePredefinedType(const_cast<xmlSchemaType *>(type),
                                         reinterpret_cast<const xmlChar *>(text.c_str()), nullptr) == 0;
}

// ---- The library -------------------------------------------------------------------------------------------------

namespace {

// Of the attribute at this place, still escaped.
std::string attributeValueAt(const std::string &body, size_t offset) {
  const size_t quote = body.find_first_of("\"'><", offset);
  if (quote == std::string::npos || body[quote] == '<' || body[quote] == '>') return {};
  return body.substr(quote + 1, body.find(body[quote], quote + 1) - quote - 1);
}

// A conversion is reported by what went wrong and, at the same place, by what
// it was about: the second is enough.
bool isFirstOfTwo(const RtxError &error, const RtxError *next) {
  return next != nullptr && next->offset == error.offset &&
         (next->status == STATUS_INVALID_ATTRIBUTE || next->status == STATUS_INVALID_CONTENT) &&
         (error.status == STATUS_ENUM_NOT_FOUND || error.status == STATUS_INVALID_LEXICAL_FORM);
}

} // namespace

std::vector<LibraryComplaint> complaints(const support::Context &ctx, const Vocabulary &vocabulary, const Root &root,
                                         const std::string &body) {
  rtxContextReset(ctx);
  EXPECT_EQ(support::setInput(ctx, body), 0);
  const int status = root.validate(ctx);
  std::vector<LibraryComplaint> all;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    if (isFirstOfTwo(*error, rtxErrAt(ctx, i + 1))) continue;
    LibraryComplaint complaint{&vocabulary, &root, error->status, {}, {}, {}, {}, {}};
    for (uint32_t p = 0; p < error->paramCount; ++p) {
      const RtxErrorParam &param = error->params[p];
      complaint.params.push_back(param.kind == RTX_PARAM_TEXT ? std::string(param.text, param.length) : "number");
    }
    complaint.path = error->elementPath == nullptr ? "" : error->elementPath;
    complaint.place = placeAt(body, error->offset);
    complaint.value = attributeValueAt(body, error->offset);
    complaint.message = support::errorText(*error) + " at " + support::placeText(*error);
    all.push_back(std::move(complaint));
    // Whatever follows is about a root that was read as another type.
    if (error->status == STATUS_ROOT_MISMATCH && all.back().path.rfind('/') == 0) break;
  }
  if (status == STATUS_NOT_SUPPORTED) all.push_back({&vocabulary, &root, status, {}, {}, {}, {}, "no validator"});
  EXPECT_EQ(status == 0, all.empty()) << status << " " << body;
  return all;
}

} // namespace differential
