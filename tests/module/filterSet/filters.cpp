#include "filters.h"

#include <charconv>
#include <functional>
#include <regex>

namespace filters {

using support::itemsOf;

// ---- Building ------------------------------------------------------------------------------------------------------

void declare(RuntimeContext *ctx, RtxNsDeclList &list, const char *prefix, const char *uri) {
  auto *declaration = newBlock<RtxNsDecl>(ctx);
  *declaration = {rtxUTF8Strdup(ctx, prefix), rtxUTF8Strdup(ctx, uri)};
  rtxDListAppend(ctx, &list.items, declaration);
}

void fill(RuntimeContext *ctx, NSBinding &record) {
  record.prefix = xmlString(ctx, "p");
  record.urn = xmlString(ctx, "urn:p");
}

void fill(RuntimeContext *ctx, NSBindings &record) {
  fill(ctx, append<NSBinding>(ctx, record.ns_binding));
  auto &second = append<NSBinding>(ctx, record.ns_binding);
  second.prefix = xmlString(ctx, "q");
  second.urn = xmlString(ctx, "urn:q");
}

namespace {

template <class T> void fillCarried(RuntimeContext *ctx, T &record) {
  addAttribute(ctx, record._anyAttr, "v:k", "1");
  addAttribute(ctx, record._anyAttr, "l", "2");
  declare(ctx, record.nsDecls, "v", "urn:v");
}

} // namespace

void fill(RuntimeContext *ctx, InclType &record) {
  record.m = InclType_has_type;
  record.value = xmlString(ctx, "urn:p");
  record.type = TypeType_namespace;
  fillCarried(ctx, record);
}

void fill(RuntimeContext *ctx, ExclType &record) {
  record.m = ExclType_has_type;
  record.value = xmlString(ctx, "/p:a/p:b");
  record.type = TypeType_xpath;
  fillCarried(ctx, record);
}

void fill(RuntimeContext *ctx, WhatType &record) {
  fill(ctx, append<InclType>(ctx, record.include));
  append<InclType>(ctx, record.include).value = xmlString(ctx, "/p:a");
  fill(ctx, append<ExclType>(ctx, record.exclude));
  addForeign(ctx, record._any, "<x:f xmlns:x=\"urn:x\"/>");
}

void fill(RuntimeContext *ctx, ChangedType &record) {
  record.m = ChangedType_has_from | ChangedType_has_to | ChangedType_has_by;
  record.value = xmlString(ctx, "/p:a/p:c");
  record.from = xmlString(ctx, "CLOSED");
  record.to = xmlString(ctx, "OPEN");
  record.by = 2.5;
  fillCarried(ctx, record);
}

void fill(RuntimeContext *ctx, TriggerType &record) {
  fill(ctx, append<ChangedType>(ctx, record.changed));
  addText(ctx, record.added, "/p:d");
  addText(ctx, record.added, "/p:e");
  addText(ctx, record.removed, "/p:f");
  addForeign(ctx, record._any, "<x:g xmlns:x=\"urn:x\">t</x:g>");
}

void fill(RuntimeContext *ctx, FilterType &record) {
  record.m =
      FilterType_has_what | FilterType_has_uri | FilterType_has_domain | FilterType_has_remove | FilterType_has_enabled;
  fill(ctx, record.what);
  fill(ctx, append<TriggerType>(ctx, record.trigger));
  addForeign(ctx, record._any, "<x:h xmlns:x=\"urn:x\"/>");
  record.id = xmlString(ctx, "a");
  record.uri = xmlString(ctx, "sip:a@example.com");
  record.domain = xmlString(ctx, "example.com");
  record.remove_ = true;
  record.enabled = false;
  addAttribute(ctx, record._anyAttr, "k", "v");
}

void fill(RuntimeContext *ctx, FilterSetType &record) {
  record.m = FilterSetType_has_ns_bindings | FilterSetType_has_package;
  fill(ctx, record.ns_bindings);
  fill(ctx, append<FilterType>(ctx, record.filter));
  append<FilterType>(ctx, record.filter).id = xmlString(ctx, "b");
  record.package_ = xmlString(ctx, "presence");
  addAttribute(ctx, record._anyAttr, "k", "v");
}

// ---- Showing -------------------------------------------------------------------------------------------------------

namespace {

std::string shown(const RtxXmlString &text) {
  EXPECT_FALSE(text.cdata);
  return text.value == nullptr ? "-" : text.value;
}

// Parts with a blank between them.
class Parts {
public:
  void add(std::string_view part) {
    if (!all.empty()) all += " ";
    all += part;
  }
  void add(std::string_view name, std::string_view value) { add(std::string(name) + "=" + std::string(value)); }
  void unknownBits(uint32_t m, uint32_t known) {
    if ((m & ~known) != 0) add("m", std::to_string(m));
  }
  std::string in(const char *brackets) const { return all.empty() ? "" : brackets[0] + all + brackets[1]; }

private:
  std::string all;
};

void addTexts(Parts &parts, const char *name, const RtxList &list) {
  for (const RtxXmlString *text : itemsOf<RtxXmlString>(list))
    parts.add(std::string(name) + "[" + shown(*text) + "]");
}

void addAttributes(Parts &parts, const RtxAttrList &list) {
  for (const RtxNamePair *pair : itemsOf<RtxNamePair>(list.items))
    parts.add("@"s + pair->name, pair->value);
}

void addDeclarations(Parts &parts, const RtxNsDeclList &list) {
  for (const RtxNsDecl *declaration : itemsOf<RtxNsDecl>(list.items)) {
    const bool prefixed = declaration->prefix != nullptr && *declaration->prefix != '\0';
    parts.add(prefixed ? "xmlns:"s + declaration->prefix : "xmlns"s, declaration->uri);
  }
}

std::string dump(const NSBinding &record) { return shown(record.prefix) + "=" + shown(record.urn); }

template <class T> std::string dumpExpression(const char *name, const T &record) {
  Parts attributes;
  if ((record.m & 1) != 0) attributes.add("type", QxTypeType_ToString(record.type));
  addAttributes(attributes, record._anyAttr);
  addDeclarations(attributes, record.nsDecls);
  attributes.unknownBits(record.m, 1);
  return name + attributes.in("()") + "[" + shown(record.value) + "]";
}

std::string number(double value) {
  char digits[400];
  const auto end = std::to_chars(digits, digits + sizeof digits, value);
  return {digits, end.ptr};
}

std::string dump(const ChangedType &record) {
  Parts attributes;
  if ((record.m & ChangedType_has_from) != 0) attributes.add("from", shown(record.from));
  if ((record.m & ChangedType_has_to) != 0) attributes.add("to", shown(record.to));
  if ((record.m & ChangedType_has_by) != 0) attributes.add("by", number(record.by));
  addAttributes(attributes, record._anyAttr);
  addDeclarations(attributes, record.nsDecls);
  attributes.unknownBits(record.m, 7);
  return "changed" + attributes.in("()") + "[" + shown(record.value) + "]";
}

} // namespace

std::string dump(const NSBindings &record) {
  Parts bindings;
  for (const NSBinding *binding : itemsOf<NSBinding>(record.ns_binding))
    bindings.add(dump(*binding));
  return "bindings" + bindings.in("{}");
}

std::string dump(const WhatType &record) {
  Parts children;
  for (const InclType *include : itemsOf<InclType>(record.include))
    children.add(dumpExpression("include", *include));
  for (const ExclType *exclude : itemsOf<ExclType>(record.exclude))
    children.add(dumpExpression("exclude", *exclude));
  addTexts(children, "any", record._any.items);
  return "what" + children.in("{}");
}

std::string dump(const TriggerType &record) {
  Parts children;
  for (const ChangedType *changed : itemsOf<ChangedType>(record.changed))
    children.add(dump(*changed));
  addTexts(children, "added", record.added);
  addTexts(children, "removed", record.removed);
  addTexts(children, "any", record._any.items);
  return "trigger" + children.in("{}");
}

std::string dump(const FilterType &record) {
  Parts attributes;
  attributes.add("id", shown(record.id));
  if ((record.m & FilterType_has_uri) != 0) attributes.add("uri", shown(record.uri));
  if ((record.m & FilterType_has_domain) != 0) attributes.add("domain", shown(record.domain));
  if ((record.m & FilterType_has_remove) != 0) attributes.add("remove", record.remove_ ? "true" : "false");
  if ((record.m & FilterType_has_enabled) != 0) attributes.add("enabled", record.enabled ? "true" : "false");
  addAttributes(attributes, record._anyAttr);
  attributes.unknownBits(record.m, 31);
  Parts children;
  if ((record.m & FilterType_has_what) != 0) children.add(dump(record.what));
  for (const TriggerType *trigger : itemsOf<TriggerType>(record.trigger))
    children.add(dump(*trigger));
  addTexts(children, "any", record._any.items);
  return "filter" + attributes.in("()") + children.in("{}");
}

std::string dump(const FilterSetType &record) {
  Parts attributes;
  if ((record.m & FilterSetType_has_package) != 0) attributes.add("package", shown(record.package_));
  addAttributes(attributes, record._anyAttr);
  attributes.unknownBits(record.m, 3);
  Parts children;
  if ((record.m & FilterSetType_has_ns_bindings) != 0) children.add(dump(record.ns_bindings));
  for (const FilterType *filter : itemsOf<FilterType>(record.filter))
    children.add(dump(*filter));
  return attributes.in("()") + children.in("{}");
}

std::string errorList(RuntimeContext *ctx) { return support::errorsBySource(ctx, "QxXmlFilterSet"); }

std::string meaning(const support::XmlElement &element) {
  std::string all = "{" + element.uri + "}" + element.name + "[";
  for (const auto &[name, value] : element.attributes)
    all += name + "=\"" + value + "\" ";
  all += "](" + (element.children.empty() ? element.text : "");
  for (const support::XmlElement &child : element.children)
    all += meaning(child);
  return all + ")";
}

// ---- Reading and writing
// ---------------------------------------------------------------------------------------------

Reading decodeInput(RuntimeContext *ctx) {
  auto record = Record<FilterSetType>::uninitialised(ctx);
  const int status = QxXmlD_filter_set(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  return {status, record.owned ? dump(*record) : "", errorList(ctx)};
}

int decodeStatus(RuntimeContext *ctx) { return decodeInput(ctx).status; }

Reading decode(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, decodeInput);
}

Reading decode(const std::string &document) { return support::readDocument(document, decodeInput); }

static Reading validateInput(RuntimeContext *ctx) {
  const int status = QxXmlV_filter_set(ctx);
  return {status, "", errorList(ctx)};
}

Reading validate(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, validateInput);
}

Reading validate(const std::string &document) { return support::readDocument(document, validateInput); }

std::string document(std::string_view content, std::string_view attributes) {
  return "<filter-set xmlns=\""s + namespaceUri + "\"" + std::string(attributes) + ">" + std::string(content) +
         "</filter-set>";
}

std::string encodeRecord(RuntimeContext *ctx, const FilterSetType *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [record](RuntimeContext *c) { return QxXmlE_filter_set(c, record); }));
}

} // namespace filters
