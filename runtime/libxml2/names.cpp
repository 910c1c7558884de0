#include "names.h"

#include "namespace.h"
#include "rtxStatus.h"
#include "xmlName.h"

#include <string.h>

namespace rt {

namespace {

constexpr char xmlUri[] = "http://www.w3.org/XML/1998/namespace";
constexpr char xmlnsUri[] = "http://www.w3.org/2000/xmlns/";

} // namespace

const char *reservedName(Text prefix, Text uri) {
  if (prefix.is("xmlns")) return "the prefix xmlns cannot be declared";
  if (prefix.is("xml")) return uri.is(xmlUri) ? nullptr : "the prefix xml cannot be bound to another namespace";
  if (uri.is(xmlUri)) return "the namespace of xml cannot be bound to another prefix";
  if (uri.is(xmlnsUri)) return "the namespace of xmlns cannot be declared";
  return nullptr;
}

namespace {

// Why a declaration is wrong, or null. prefix empty: of the default namespace.
const char *declarationFault(Text prefix, Text uri) {
  if (const char *fault = reservedName(prefix, uri)) return fault;
  return prefix.length != 0 && uri.length == 0 ? "a prefix cannot be undeclared" : nullptr;
}

// The parser has looked at the first character of the whole name only.
bool isLocalName(Text name) {
  return name.length != 0 && nameStart(name.bytes, name.length) != 0 && memchr(name.bytes, ':', name.length) == nullptr;
}

// A prefixed attribute whose name has been resolved.
struct ExpandedName {
  uint32_t hash; // of the local name
  bool bound;
  Text local;
  Text uri; // of an undeclared prefix: the prefix, which is equal for equal names only

  bool operator==(const ExpandedName &other) const {
    return bound == other.bound && local.is(other.local) && uri.is(other.uri);
  }
};

ExpandedName expand(const NamespaceStack &namespaces, const NameParts &parts) {
  const Text prefix = parts.prefix();
  const Text local = parts.localName();
  uint32_t hash = 0;
  for (size_t i = 0; i < local.length; i++)
    hash = hash * 31 + static_cast<unsigned char>(local.bytes[i]);
  if (prefix.is("xml")) return {hash, true, local, {xmlUri, sizeof xmlUri - 1}};
  if (const Binding *binding = namespaces.find(prefix.bytes, prefix.length))
    return {hash, true, local, {binding->uri, binding->uriLength}};
  return {hash, false, local, prefix};
}

// Two names that differ as written can still be equal by namespace.
AttributeCheck findDuplicate(const NamespaceStack &namespaces, NameCache &names, const char *const *attributes,
                             size_t &comparisons) {
  ExpandedName seen[mostAttributes];
  uint32_t count = 0;
  for (uint32_t i = 0; attributes[2 * i] != nullptr; i++) {
    const NameParts &parts = names.partsOf(attributes[2 * i]);
    if (parts.kind != NameKind::prefixed) continue;
    const ExpandedName name = expand(namespaces, parts);
    for (uint32_t k = 0; k < count; k++) {
      if (seen[k].hash != name.hash) continue;
      const size_t cost = 1 + (name.local.length + name.uri.length) / 16;
      if (cost > comparisons)
        return {STATUS_LIMIT_EXCEEDED, i, "comparisons of attributes by namespace", comparisonLimit};
      comparisons -= cost;
      if (seen[k] == name) return {STATUS_PARSE_FAILED, i, "two attributes of the same namespace and name"};
    }
    seen[count++] = name;
  }
  return {};
}

} // namespace

NameParts splitName(const char *name) {
  NameParts parts;
  const char *colon = strchr(name, ':');
  parts.name = name;
  parts.local = colon == nullptr ? name : colon + 1;
  parts.localLength = static_cast<uint32_t>(strlen(parts.local));
  if (colon == nullptr)
    parts.kind = strcmp(name, "xmlns") == 0 ? NameKind::defaultDeclaration : NameKind::plain;
  else if (colon == name || !isLocalName(parts.localName()))
    parts.kind = NameKind::malformed;
  else
    parts.kind = parts.prefix().is("xmlns") ? NameKind::prefixDeclaration : NameKind::prefixed;
  return parts;
}

AttributeCheck bindDeclarations(Heap &heap, NamespaceStack &namespaces, NameCache &names, const char *const *attributes,
                                uint32_t attributeLimit, size_t &comparisons) {
  uint32_t prefixed = 0;
  for (uint32_t i = 0; attributes[2 * i] != nullptr; i++) {
    if (i == attributeLimit) return {STATUS_LIMIT_EXCEEDED, i, "attributeLimit", attributeLimit};
    const NameParts &parts = names.partsOf(attributes[2 * i]);
    if (parts.kind == NameKind::plain) continue;
    if (parts.kind == NameKind::malformed) return {STATUS_PARSE_FAILED, i, "misplaced colon in an attribute's name"};
    if (parts.kind == NameKind::prefixed) {
      prefixed++;
      continue;
    }
    Text prefix = {"", 0};
    if (parts.kind == NameKind::prefixDeclaration) prefix = parts.localName();
    const Text uri = {attributes[2 * i + 1], strlen(attributes[2 * i + 1])};
    if (const char *fault = declarationFault(prefix, uri)) return {STATUS_PARSE_FAILED, i, fault};
    const int status = namespaces.bind(heap, prefix.bytes, prefix.length, uri.bytes, uri.length);
    if (status != 0) return {status, i, nullptr};
  }
  return prefixed < 2 ? AttributeCheck{} : findDuplicate(namespaces, names, attributes, comparisons);
}

} // namespace rt
