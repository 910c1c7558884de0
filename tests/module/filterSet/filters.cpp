#include "filters.h"

#include <charconv>
#include <functional>
#include <regex>

namespace filters {

// ---- Building ------------------------------------------------------------------------------------------------------

RtxXmlString xmlString(RuntimeContext *ctx, const char *text) { return {false, rtxUTF8Strdup(ctx, text)}; }

void appendText(RuntimeContext *ctx, RtxList &list, const char *text) {
  auto *item = newBlock<RtxXmlString>(ctx);
  *item = xmlString(ctx, text);
  rtxDListAppend(ctx, &list, item);
}

void foreignElement(RuntimeContext *ctx, RtxAnyList &list, const char *element) {
  appendText(ctx, list.items, element);
}

void foreignAttribute(RuntimeContext *ctx, RtxAttrList &list, const char *name, const char *value) {
  auto *pair = newBlock<RtxNamePair>(ctx);
  *pair = {rtxUTF8Strdup(ctx, name), rtxUTF8Strdup(ctx, value)};
  rtxDListAppend(ctx, &list.items, pair);
}

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
  foreignAttribute(ctx, record._anyAttr, "v:k", "1");
  foreignAttribute(ctx, record._anyAttr, "l", "2");
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
  foreignElement(ctx, record._any, "<x:f xmlns:x=\"urn:x\"/>");
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
  appendText(ctx, record.added, "/p:d");
  appendText(ctx, record.added, "/p:e");
  appendText(ctx, record.removed, "/p:f");
  foreignElement(ctx, record._any, "<x:g xmlns:x=\"urn:x\">t</x:g>");
}

void fill(RuntimeContext *ctx, FilterType &record) {
  record.m =
      FilterType_has_what | FilterType_has_uri | FilterType_has_domain | FilterType_has_remove | FilterType_has_enabled;
  fill(ctx, record.what);
  fill(ctx, append<TriggerType>(ctx, record.trigger));
  foreignElement(ctx, record._any, "<x:h xmlns:x=\"urn:x\"/>");
  record.id = xmlString(ctx, "a");
  record.uri = xmlString(ctx, "sip:a@example.com");
  record.domain = xmlString(ctx, "example.com");
  record.remove_ = true;
  record.enabled = false;
  foreignAttribute(ctx, record._anyAttr, "k", "v");
}

void fill(RuntimeContext *ctx, FilterSetType &record) {
  record.m = FilterSetType_has_ns_bindings | FilterSetType_has_package;
  fill(ctx, record.ns_bindings);
  fill(ctx, append<FilterType>(ctx, record.filter));
  append<FilterType>(ctx, record.filter).id = xmlString(ctx, "b");
  record.package_ = xmlString(ctx, "presence");
  foreignAttribute(ctx, record._anyAttr, "k", "v");
}

void release(RuntimeContext *ctx, NSBinding &record) {
  rtxMemHeapFreePtr(ctx, record.prefix.value);
  rtxMemHeapFreePtr(ctx, record.urn.value);
}

void release(RuntimeContext *ctx, NSBindings &record) {
  for (RtxListNode *node = record.ns_binding.head; node != nullptr; node = node->next)
    release(ctx, *static_cast<NSBinding *>(node->data));
  QxMemFree_NSBindings(ctx, &record);
}

void release(RuntimeContext *ctx, InclType &record) { QxMemFree_InclType(ctx, &record); }
void release(RuntimeContext *ctx, ExclType &record) { QxMemFree_ExclType(ctx, &record); }
void release(RuntimeContext *ctx, WhatType &record) { QxMemFree_WhatType(ctx, &record); }
void release(RuntimeContext *ctx, ChangedType &record) { QxMemFree_ChangedType(ctx, &record); }
void release(RuntimeContext *ctx, TriggerType &record) { QxMemFree_TriggerType(ctx, &record); }
void release(RuntimeContext *ctx, FilterType &record) { QxMemFree_FilterType(ctx, &record); }

void release(RuntimeContext *ctx, FilterSetType &record) {
  if ((record.m & FilterSetType_has_ns_bindings) != 0) release(ctx, record.ns_bindings);
  QxMemFree_FilterSetType(ctx, &record);
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

// The items of a list that is linked as it should be.
template <class T> std::vector<const T *> itemsOf(const RtxList &list) {
  std::vector<const T *> items;
  const RtxListNode *last = nullptr;
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next) {
    EXPECT_EQ(node->prev, last);
    last = node;
    items.push_back(static_cast<const T *>(node->data));
  }
  EXPECT_EQ(list.tail, last);
  EXPECT_EQ(list.count, items.size());
  return items;
}

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
  Record<FilterSetType> record(ctx, Start::raw);
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
