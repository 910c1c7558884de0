#include "foreign.h"

#include <optional>

namespace differential {

std::string text(const xmlChar *chars) { return chars == nullptr ? "" : reinterpret_cast<const char *>(chars); }

std::string uriOf(const xmlNs *ns) { return ns == nullptr ? "" : text(ns->href); }

namespace {

const xmlNode *parentOf(const xmlNode &element) {
  return element.parent != nullptr && element.parent->type == XML_ELEMENT_NODE ? element.parent : nullptr;
}

// Null: there is no such element.
const ElementRule *ruleFor(const Vocabulary &vocabulary, const xmlNode &element) {
  return vocabulary.find(localPart(text(element.name)));
}

std::optional<std::string> declaredDefault(const xmlNode &element) {
  for (const xmlNs *ns = element.nsDef; ns != nullptr; ns = ns->next)
    if (ns->prefix == nullptr) return text(ns->href);
  return {};
}

// What the value of an attribute declares whose name only begins with xmlns. Such an attribute stands behind all
// declarations of its tag, so that it prevails.
std::optional<std::string> seeminglyDeclaredDefault(const xmlNode &element) {
  std::optional<std::string> uri;
  for (const xmlAttr *attribute = element.properties; attribute != nullptr; attribute = attribute->next)
    if (attribute->ns == nullptr && text(attribute->name).starts_with("xmlns"))
      uri = attribute->children == nullptr ? "" : text(attribute->children->content);
  return uri;
}

// The namespace of names without a prefix that the children of this element have.
std::string defaultInside(const Vocabulary &vocabulary, const xmlNode *element) {
  for (; element != nullptr; element = parentOf(*element)) {
    const ElementRule *rule = ruleFor(vocabulary, *element);
    const bool attributesAreRead = rule != nullptr && !rule->attributes.empty();
    if (const auto uri = seeminglyDeclaredDefault(*element); uri && attributesAreRead) return *uri;
    if (const auto uri = declaredDefault(*element)) return *uri;
  }
  return {};
}

std::string namespaceInLookup(const Vocabulary &vocabulary, const xmlNode &element) {
  const bool prefixed =
      (element.ns != nullptr && element.ns->prefix != nullptr) || text(element.name).find(':') != std::string::npos;
  if (prefixed) return uriOf(element.ns);
  if (const auto uri = seeminglyDeclaredDefault(element)) return *uri;
  if (const auto uri = declaredDefault(element)) return *uri;
  return defaultInside(vocabulary, parentOf(element));
}

bool isFirstChild(xmlNode *element) { return xmlPreviousElementSibling(element) == nullptr; }

} // namespace

bool isForeign(const Vocabulary &vocabulary, const xmlNode &element) {
  const xmlNode *parent = parentOf(element);
  const ElementRule *rule = parent == nullptr ? nullptr : ruleFor(vocabulary, *parent);
  if (rule == nullptr || rule->wildcard == Wildcard::none) return false;
  if (rule->wildcard == Wildcard::everything) return true;
  const std::string uri = namespaceInLookup(vocabulary, element);
  if (uri == vocabulary.uri) return false;
  const bool known = rule->hasChild(localPart(text(element.name)));
  if (uri.empty()) return !known;
  // Where a foreign element has no place yet, the name alone decides.
  const bool hasPlace = rule->shuffled || rule->children.empty() || rule->children[0].least == 0 ||
                        !isFirstChild(const_cast<xmlNode *>(&element));
  return hasPlace || !known;
}

bool isInsideForeign(const Vocabulary &vocabulary, const xmlNode &element) {
  for (const xmlNode *around = parentOf(element); around != nullptr; around = parentOf(*around))
    if (isForeign(vocabulary, *around)) return true;
  return false;
}

} // namespace differential
