#include "namespaces.h"

#include "context.h"
#include "rtXmlNamespace.h"

namespace tiny {

namespace {

// What was there goes last: the texts may be those of the binding itself.
bool fill(System &system, Binding &binding, std::string_view prefix, std::string_view uri) {
  const size_t size = prefix.size() + uri.size() + 2;
  char *text = size > binding.room ? static_cast<char *>(system.take(size)) : binding.texts;
  if (!text) return false;
  memcpy(text, prefix.data(), prefix.size());
  text[prefix.size()] = '\0';
  memcpy(text + prefix.size() + 1, uri.data(), uri.size());
  text[size - 1] = '\0';
  if (text != binding.texts) {
    system.give(binding.texts);
    binding.texts = text;
    binding.room = size;
  }
  binding.prefix = text;
  binding.uri = text + prefix.size() + 1;
  binding.uriLength = uri.size();
  return true;
}

std::string_view viewOf(const char *text) { return text ? std::string_view(text) : std::string_view(""); }

} // namespace

// ---- Scopes

void Namespaces::pop() {
  if (scopes.count > base.scopes) restore({scopes.items[scopes.count - 1], scopes.count - 1});
}

void Namespaces::restore(Mark to) {
  while (bindings.count > to.bindings) {
    const Binding &dropped = bindings.items[--bindings.count];
    heads[bucketOf(dropped.prefix)] = dropped.older;
  }
  if (scopes.count > to.scopes) scopes.count = to.scopes;
}

void Namespaces::hide() {
  shown = base;
  base = mark();
  hostHidden = true;
}

void Namespaces::show() {
  restore(base);
  base = shown;
  hostHidden = false;
}

void Namespaces::reset() {
  restore({0, 0});
  base = {0, 0};
  hostHidden = inDocument = false;
}

void Namespaces::beginDocument() {
  endDocument();
  document = mark();
  inDocument = true;
}

void Namespaces::endDocument() {
  if (inDocument) restore(document);
  inDocument = false;
}

// ---- Bindings

// Which prefixes share a bucket differs from process to process, so that nobody can write a document for it.
size_t Namespaces::bucketOf(std::string_view prefix) const {
  uint32_t hash = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(this) >> 4);
  for (const char c : prefix)
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x01000193u;
  return (hash ^ hash >> 15) % buckets;
}

bool Namespaces::bind(System &system, std::string_view prefix, std::string_view uri, bool declared) {
  if (!bindings.reserve(system, 1)) return false;
  Binding &binding = bindings.items[bindings.count];
  if (!fill(system, binding, prefix, uri)) return false;
  uint32_t &head = heads[bucketOf(prefix)];
  binding.declared = declared;
  binding.older = head;
  binding.usedBy = 0;
  head = static_cast<uint32_t>(++bindings.count);
  return true;
}

Binding *Namespaces::find(std::string_view prefix, bool declaredOnly) {
  for (uint32_t at = heads[bucketOf(prefix)]; at > base.bindings; at = bindings.items[at - 1].older) {
    Binding &binding = bindings.items[at - 1];
    if (prefix == binding.prefix && (binding.declared || !declaredOnly)) return &binding;
  }
  Binding *declaration = hostHidden ? nullptr : findHost(prefix);
  return declaration && (declaration->declared || !declaredOnly) ? declaration : nullptr;
}

Binding *Namespaces::findHost(std::string_view prefix) {
  for (size_t i = 0; i < host.count; ++i) {
    if (prefix == host.items[i].prefix) return &host.items[i];
  }
  return nullptr;
}

Binding *Namespaces::findUri(std::string_view uri, bool prefixed) {
  const auto answers = [&](const Binding &binding) {
    return uri == binding.uri && (*binding.prefix || !prefixed) && find(binding.prefix) == &binding;
  };
  for (size_t i = bindings.count; i > base.bindings; --i) {
    if (answers(bindings.items[i - 1])) return &bindings.items[i - 1];
  }
  for (size_t i = hostHidden ? 0 : host.count; i > 0; --i) {
    if (answers(host.items[i - 1])) return &host.items[i - 1];
  }
  return nullptr;
}

bool Namespaces::isInside(const Binding *binding, size_t first) const {
  return binding >= bindings.items + first && binding < bindings.items + bindings.count;
}

// ---- Declarations

// What the host declares outside of a document stays below the stack. On the stack it hides what is bound there.
bool Namespaces::declare(System &system, std::string_view prefix, std::string_view uri, bool written, bool override) {
  Binding *ofHost = findHost(prefix);
  if (inDocument) {
    if (ofHost && !override) return true;
    const Binding *now = find(prefix, written);
    return (now && now == find(prefix) && uri == now->uri) || bind(system, prefix, uri, written);
  }
  if (ofHost && !override) uri = ofHost->uri;
  if (!ofHost) {
    if (!host.reserve(system, 1) || !fill(system, host.items[host.count], prefix, uri)) return false;
    ofHost = &host.items[host.count++];
    ofHost->declared = false;
  } else if (uri != ofHost->uri) {
    ofHost->room = 0;
    if (!fill(system, *ofHost, prefix, uri)) return false;
  }
  ofHost->declared |= written;
  const Binding *now = find(ofHost->prefix);
  return strcmp(now->uri, ofHost->uri) == 0 || bind(system, ofHost->prefix, ofHost->uri, false);
}

const Binding *Namespaces::nextDeclared(size_t &at) {
  for (; at < host.count + bindings.count; ++at) {
    const Binding &binding = at < host.count ? host.items[at] : bindings.items[at - host.count];
    if (binding.declared && find(binding.prefix, true) == &binding) return ++at, &binding;
  }
  return nullptr;
}

// ---- The table of URIs

bool Namespaces::setTable(System &system, const char *const *uris, uint32_t count) {
  table.count = 0;
  return !uris || table.append(system, uris, count);
}

int Namespaces::indexOf(const Binding *binding) const {
  if (!binding || !*binding->uri || table.count == 0) return RTXML_NS_NONE;
  for (size_t i = 0; i < table.count; ++i) {
    if (table.items[i] && strcmp(table.items[i], binding->uri) == 0) return static_cast<int>(i);
  }
  return RTXML_NS_FOREIGN;
}

void Namespaces::destroy(System &system) {
  for (size_t i = 0; i < bindings.capacity; ++i)
    system.give(bindings.items[i].texts);
  for (size_t i = 0; i < host.capacity; ++i)
    system.give(host.items[i].texts);
  bindings.destroy(system);
  scopes.destroy(system);
  host.destroy(system);
  table.destroy(system);
}

} // namespace tiny

using namespace tiny;

int rtXmlNSPush(RuntimeContext *ctx) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  return ctx->internals->namespaces.push(ctx->internals->system) ? 0 : STATUS_NO_MEMORY;
}

int rtXmlNSPop(RuntimeContext *ctx) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  ctx->internals->namespaces.pop();
  return 0;
}

int rtXmlNSAddPrefixLink(RuntimeContext *ctx, const char *prefix, const char *uri, void *, int) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const bool bound = ctx->internals->namespaces.bind(ctx->internals->system, viewOf(prefix), viewOf(uri), false);
  return bound ? 0 : STATUS_NO_MEMORY;
}

int rtXmlNSGetIndex(RuntimeContext *ctx, const char *prefix) {
  if (!usable(ctx)) return RTXML_NS_NONE;
  Namespaces &namespaces = ctx->internals->namespaces;
  return namespaces.indexOf(namespaces.find(viewOf(prefix)));
}

const char *rtXmlNSGetPrefix(RuntimeContext *ctx, const char *uri) {
  if (!usable(ctx) || !uri) return nullptr;
  const Binding *binding = ctx->internals->namespaces.findUri(uri, false);
  return binding ? binding->prefix : nullptr;
}

int rtXmlNSSetURITable(RuntimeContext *ctx, const char *const *table, uint32_t count) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  return ctx->internals->namespaces.setTable(ctx->internals->system, table, count) ? 0 : STATUS_NO_MEMORY;
}

int rtXmlNSSetNamespace(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri, bool override) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  if (!internals.namespaces.declare(internals.system, viewOf(prefix), viewOf(uri), !list, override))
    return STATUS_NO_MEMORY;
  if (!list) return 0;
  for (const RtxListNode *node = list->items.head; node; node = node->next) {
    if (viewOf(static_cast<const RtxNsDecl *>(node->data)->prefix) == viewOf(prefix)) return 0;
  }
  return addDeclaration(ctx, list, prefix, uri);
}

int rtXmlNSGetAttrQName(RuntimeContext *ctx, char *buffer, size_t bufferSize, const RtxNamespace *ns,
                        const char *localName, size_t nameLength) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const Binding *binding = ns && ns->uri ? ctx->internals->namespaces.findUri(ns->uri, true) : nullptr;
  const size_t prefixLength = binding ? strlen(binding->prefix) : 0;
  const size_t before = binding ? prefixLength + 1 : 0;
  if (bufferSize <= before || bufferSize - before <= nameLength) return STATUS_BUFFER_OVERFLOW;
  if (binding) {
    memcpy(buffer, binding->prefix, prefixLength);
    buffer[prefixLength] = ':';
  }
  memcpy(buffer + before, localName, nameLength);
  buffer[before + nameLength] = '\0';
  return 0;
}
