#include "xmlJudge.h"

#include <algorithm>
#include <climits>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace support {

namespace {

std::string text(const xmlChar *chars) { return chars == nullptr ? "" : reinterpret_cast<const char *>(chars); }

std::string uriOf(const xmlNs *ns) { return ns == nullptr ? "" : text(ns->href); }

std::string attributeName(const xmlAttr &attribute) {
  const std::string uri = uriOf(attribute.ns);
  return uri.empty() ? text(attribute.name) : "{" + uri + "}" + text(attribute.name);
}

XmlElement build(xmlNode *node) {
  XmlElement element;
  element.uri = uriOf(node->ns);
  element.name = text(node->name);
  for (const xmlAttr *attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
    xmlChar *value = xmlNodeListGetString(node->doc, attribute->children, 1);
    element.attributes.emplace_back(attributeName(*attribute), text(value));
    xmlFree(value);
  }
  std::sort(element.attributes.begin(), element.attributes.end());
  for (xmlNode *child = node->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE) {
      element.children.push_back(build(child));
      element.sequence += element.children.back().infoset();
    } else if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) {
      element.text += text(child->content);
      element.sequence += text(child->content);
    }
  }
  return element;
}

std::optional<XmlElement> parse(std::string_view document, bool namespaces) {
  if (document.size() > INT_MAX) return std::nullopt;
  const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
  if (parser == nullptr) return std::nullopt;
  const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> tree(
      xmlCtxtReadMemory(parser.get(), document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
      xmlFreeDoc);
  if (tree == nullptr || parser->wellFormed == 0) return std::nullopt;
  if (namespaces && parser->nsWellFormed == 0) return std::nullopt;
  xmlNode *root = xmlDocGetRootElement(tree.get());
  if (root == nullptr) return std::nullopt;
  return build(root);
}

} // namespace

std::string XmlElement::infoset() const {
  std::string all = "{" + uri + "}" + name + "[";
  for (const auto &[attribute, value] : attributes)
    all += attribute + "=\"" + value + "\"";
  return all + "](" + sequence + ")";
}

std::optional<XmlElement> parseXml(std::string_view document) { return parse(document, false); }

std::optional<XmlElement> parseNamespacedXml(std::string_view document) { return parse(document, true); }

} // namespace support
