#include "namespace.h"

#include "internals.h"
#include "nsLists.h"
#include "usable.h"

#include <algorithm>
#include <string.h>

namespace rt {

// A piece of the storage for texts of bindings. Chunks form a chain that is filled front to back.
struct TextChunk {
  TextChunk *next;
  uint32_t capacity;

  char *bytes() { return reinterpret_cast<char *>(this + 1); }
};

namespace {

using Text = NamespaceStack::Text;

constexpr uint32_t textLimit = UINT32_MAX / 4;
constexpr uint32_t firstChunkBytes = 2048;

size_t lengthOf(const char *text) { return text == nullptr ? 0 : strlen(text); }

bool sameBytes(const char *a, const char *b, size_t length) { return length == 0 || memcmp(a, b, length) == 0; }

bool spells(const Binding &binding, Text uri) {
  return binding.uriLength == uri.length && sameBytes(binding.uri, uri.bytes, uri.length);
}

// Doubles a kept array, the first time to at least atFirst elements.
template <class T> bool growArray(Heap &heap, T *&array, uint32_t used, uint32_t &capacity, uint32_t atFirst) {
  if (capacity > textLimit / sizeof(T)) return false;
  const uint32_t grown = capacity == 0 ? atFirst : 2 * capacity;
  T *larger = static_cast<T *>(heap.systemAllocate(grown * sizeof(T)));
  if (larger == nullptr) return false;
  if (used != 0) memcpy(larger, array, used * sizeof(T));
  heap.systemRelease(array);
  array = larger;
  capacity = grown;
  return true;
}

} // namespace

// ---- Scopes

int NamespaceStack::growAndPush(Heap &heap) {
  return growArray(heap, scopes, scopeCount, scopeCapacity, 32) ? push(heap) : int{STATUS_NO_MEMORY};
}

NamespaceStack::Outer NamespaceStack::hideOuter() {
  const Outer outer = {hidden, mark(), hostHidden};
  hidden = outer.top;
  hostHidden = true;
  forgetAnswers();
  return outer;
}

void NamespaceStack::showOuter(const Outer &outer) {
  restore(outer.top);
  hidden = outer.hidden;
  hostHidden = outer.hostHidden;
  forgetAnswers();
}

void NamespaceStack::dropTo(uint32_t count) {
  forgetAnswers();
  for (uint32_t i = bindingCount; i > count; i--)
    *chainOf(bindings[i - 1]) = bindings[i - 1].older;
  chunk = bindings[count].chunk;
  chunkUsed = bindings[count].chunkUsed;
  bindingCount = count;
}

// ---- Finding

// The seed differs from process to process, so that nobody can write a document whose prefixes fall into one chain.
uint32_t NamespaceStack::hashOf(const char *prefix, size_t length) const {
  uint32_t hash = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(this) >> 4);
  for (size_t i = 0; i < length; i++)
    hash = (hash ^ static_cast<unsigned char>(prefix[i])) * 0x01000193U;
  return hash ^ (hash >> 15);
}

uint32_t NamespaceStack::chainOf(uint32_t hash, size_t prefixLength) const {
  if (prefixLength == 0) return newestDefault;
  return buckets == nullptr ? 0 : buckets[hash & (bucketCount - 1)];
}

uint32_t *NamespaceStack::chainOf(const Binding &binding) {
  return binding.prefixLength == 0 ? &newestDefault : &buckets[binding.hash & (bucketCount - 1)];
}

const Binding *NamespaceStack::findInStack(const char *prefix, size_t length, uint32_t hash) const {
  for (uint32_t i = chainOf(hash, length); i > hidden.bindings; i = bindings[i - 1].older) {
    const Binding &binding = bindings[i - 1];
    if (binding.hash == hash && binding.prefixLength == length && sameBytes(binding.prefix, prefix, length))
      return &binding;
  }
  return nullptr;
}

const Binding *NamespaceStack::findHost(const char *prefix, size_t length) const {
  for (uint32_t i = 0; i < hostCount; i++) {
    if (host[i].prefixLength == length && sameBytes(host[i].prefix, prefix, length)) return &host[i];
  }
  return nullptr;
}

const Binding *NamespaceStack::findAnywhere(const char *prefix, size_t prefixLength) const {
  const Binding *binding = findInStack(prefix, prefixLength, hashOf(prefix, prefixLength));
  return binding != nullptr || hostHidden ? binding : findHost(prefix, prefixLength);
}

const char *NamespaceStack::uriOf(const char *prefix, size_t prefixLength) const {
  const Binding *binding = find(prefix, prefixLength);
  return binding == nullptr ? nullptr : binding->uri;
}

bool NamespaceStack::isVisible(const Binding &binding) const {
  return findInStack(binding.prefix, binding.prefixLength, binding.hash) == &binding;
}

// The newest binding that matches and that no newer one of its prefix hides.
template <class Matches> const Binding *NamespaceStack::newestVisible(Matches matches, bool prefixedOnly) const {
  for (uint32_t i = bindingCount; i > hidden.bindings; i--) {
    const Binding &binding = bindings[i - 1];
    if (prefixedOnly && binding.prefixLength == 0) continue;
    if (matches(binding) && (chainOf(binding.hash, binding.prefixLength) == i || isVisible(binding))) return &binding;
  }
  if (hostHidden) return nullptr;
  for (uint32_t i = hostCount; i > 0; i--) {
    const Binding &binding = host[i - 1];
    if (prefixedOnly && binding.prefixLength == 0) continue;
    if (matches(binding) && findInStack(binding.prefix, binding.prefixLength, binding.hash) == nullptr) return &binding;
  }
  return nullptr;
}

const Binding *NamespaceStack::searchUri(const char *uri, bool prefixedOnly) {
  if (uri == nullptr) return nullptr;
  const size_t length = strlen(uri);
  const Binding *binding = newestVisible(
      [uri, length](const Binding &candidate) {
        return spells(candidate, {uri, length});
      },
      prefixedOnly);
  if (!prefixedOnly && tableEntry(uri) >= 0) remember(uri, binding);
  return binding;
}

void NamespaceStack::remember(const char *uri, const Binding *binding) {
  askedUri = uri;
  askedBinding = binding;
  askedPrefix = binding == nullptr ? nullptr : binding->prefix;
  askedTag = unprefixedTag;
  const size_t length = binding == nullptr ? 0 : binding->prefixLength;
  taggedUri = length + 2 <= TagStart::room ? uri : noUri;
  if (length == 0 || taggedUri == noUri) return;
  memcpy(askedTag.text + 1, askedPrefix, length);
  askedTag.text[length + 1] = ':';
  askedTag.length = length + 2;
}

// ---- Binding

int NamespaceStack::bind(Heap &heap, const char *prefix, size_t prefixLength, const char *uri, size_t uriLength) {
  if (prefixLength > textLimit || uriLength > textLimit) return STATUS_NO_MEMORY;
  return add(heap, {prefix, prefixLength}, {uri, uriLength}, false);
}

int NamespaceStack::add(Heap &heap, Text prefix, Text uri, bool declared) {
  const uint32_t hash = hashOf(prefix.bytes, prefix.length);
  return add(heap, prefix, uri, declared, hash, findInStack(prefix.bytes, prefix.length, hash));
}

// present: what the prefix is bound to in the stack.
int NamespaceStack::add(Heap &heap, Text prefix, Text uri, bool declared, uint32_t hash, const Binding *present) {
  const bool same = present != nullptr && spells(*present, uri);
  if (same && present == &bindings[bindingCount - 1] && present->declared == declared) return 0;

  // A present binding lives longer than the one to be added.
  const char *prefixText = same ? present->prefix : nullptr;
  const char *uriText = same ? present->uri : nullptr;
  TextChunk *const chunkBefore = chunk;
  const uint32_t usedBefore = chunkUsed;
  if ((bindingCount == bindingCapacity || buckets == nullptr) && !growForBinding(heap)) return STATUS_NO_MEMORY;
  if (!same) {
    char *texts = takeText(heap, prefix.length + 1 + (uri.lasting ? 0 : uri.length + 1));
    if (texts == nullptr) return STATUS_NO_MEMORY;
    prefixText = texts;
    char *behind = copyText(texts, prefix);
    if (!uri.lasting) copyText(behind, uri);
    uriText = uri.lasting ? uri.bytes : behind;
  }
  Binding &added = bindings[bindingCount];
  added.prefix = prefixText;
  added.uri = uriText;
  added.prefixLength = static_cast<uint32_t>(prefix.length);
  added.uriLength = static_cast<uint32_t>(uri.length);
  added.hash = hash;
  added.tableEpoch = 0;
  added.chunk = chunkBefore;
  added.chunkUsed = usedBefore;
  added.declared = declared;
  uint32_t *chain = chainOf(added);
  added.older = *chain;
  *chain = ++bindingCount;
  forgetAnswers();
  return 0;
}

// Writes a text with its NUL and returns where that ends.
char *NamespaceStack::copyText(char *to, Text text) {
  if (text.length != 0) memcpy(to, text.bytes, text.length);
  to[text.length] = '\0';
  return to + text.length + 1;
}

bool NamespaceStack::growForBinding(Heap &heap) {
  if (bindingCount == bindingCapacity) {
    if (!growArray(heap, bindings, bindingCount, bindingCapacity, 16)) return false;
    if (bindingCapacity > 2 * bucketCount) growBuckets(heap);
  }
  return buckets != nullptr || growBuckets(heap);
}

// Where it fails, chains that are there stay in use: they only grow longer.
bool NamespaceStack::growBuckets(Heap &heap) {
  const uint32_t count = bindingCapacity < 64 ? 64 : bindingCapacity;
  uint32_t *grown = static_cast<uint32_t *>(heap.systemAllocate(count * sizeof(uint32_t)));
  if (grown == nullptr) return false;
  heap.systemRelease(buckets);
  buckets = grown;
  bucketCount = count;
  memset(buckets, 0, count * sizeof(uint32_t));
  newestDefault = 0;
  for (uint32_t i = 0; i < bindingCount; i++) {
    uint32_t *chain = chainOf(bindings[i]);
    bindings[i].older = *chain;
    *chain = i + 1;
  }
  return true;
}

// Room behind the texts of the bindings alive. A kept chunk that is too small makes way for a larger one, so that
// the chain soon fits the documents that come.
char *NamespaceStack::takeText(Heap &heap, size_t size) {
  if (chunk != nullptr && chunk->capacity - chunkUsed >= size) {
    char *bytes = chunk->bytes() + chunkUsed;
    chunkUsed += static_cast<uint32_t>(size);
    return bytes;
  }
  TextChunk *&link = chunk == nullptr ? firstChunk : chunk->next;
  if (link == nullptr || link->capacity < size) {
    const uint32_t least = chunk == nullptr ? firstChunkBytes : 2 * firstChunkBytes;
    const uint32_t capacity = size > least ? static_cast<uint32_t>(size) : least;
    TextChunk *fresh = static_cast<TextChunk *>(heap.systemAllocate(sizeof(TextChunk) + capacity));
    if (fresh == nullptr) return nullptr;
    *fresh = {link == nullptr ? nullptr : link->next, capacity};
    heap.systemRelease(link);
    link = fresh;
  }
  chunk = link;
  chunkUsed = static_cast<uint32_t>(size);
  return chunk->bytes();
}

// ---- URI table

int NamespaceStack::setTable(Heap &heap, const char *const *entries, uint32_t count) {
  if (entries == nullptr) count = 0;
  if (count == tableCount && std::equal(entries, entries + count, table)) return 0;
  tableCount = 0;
  tableEpoch++;
  forgetAnswers();
  while (tableCapacity < count) {
    if (!growArray(heap, table, 0, tableCapacity, 8)) return STATUS_NO_MEMORY;
  }
  if (count != 0) memcpy(table, entries, count * sizeof *table);
  tableCount = count;
  return 0;
}

int NamespaceStack::findTableIndex(const Binding &binding) const {
  int32_t index = tableCount == 0 || binding.uriLength == 0 ? RTXML_NS_NONE : RTXML_NS_FOREIGN;
  for (uint32_t i = 0; i < tableCount && index == RTXML_NS_FOREIGN; i++) {
    if (table[i] != nullptr && strcmp(table[i], binding.uri) == 0) index = static_cast<int32_t>(i);
  }
  binding.tableEpoch = tableEpoch;
  binding.tableIndex = index;
  return index;
}

int NamespaceStack::findTableIndex(const char *prefix) const { return tableIndexOf(find(prefix, lengthOf(prefix))); }

int NamespaceStack::tableEntry(const char *uri) const {
  for (uint32_t i = 0; i < tableCount; i++) {
    if (table[i] == uri) return static_cast<int>(i);
  }
  return -1;
}

// ---- Declarations

void NamespaceStack::beginDocument() {
  endDocument();
  documentStart = mark();
  inDocument = true;
}

int NamespaceStack::declare(Heap &heap, const char *prefix, const char *uri, bool written, bool override) {
  const Text prefixText = {prefix, lengthOf(prefix)};
  // A document lasts no longer than the texts of the table.
  const bool inTable = inDocument && tableEntry(uri) >= 0;
  const Text uriText = {uri, lengthOf(uri), inTable};
  if (prefixText.length > textLimit || uriText.length > textLimit) return STATUS_NO_MEMORY;
  if (!inDocument) return declareHost(heap, prefixText, uriText, written, override);

  if (!override && !hostHidden && findHost(prefix, prefixText.length) != nullptr) return 0;
  const uint32_t hash = hashOf(prefix, prefixText.length);
  const Binding *present = findInStack(prefix, prefixText.length, hash);
  if (present != nullptr && spells(*present, uriText) && (present->declared || !written)) return 0;
  if (const int status = add(heap, prefixText, uriText, written, hash, present); status != 0) return status;
  if (inTable && uri != nullptr) remember(uri, &bindings[bindingCount - 1]); // what the encoder is going to ask for
  return 0;
}

int NamespaceStack::declareHost(Heap &heap, Text prefix, Text uri, bool written, bool override) {
  forgetAnswers();
  Binding *declaration = const_cast<Binding *>(findHost(prefix.bytes, prefix.length));
  if (declaration != nullptr && (!override || spells(*declaration, uri))) {
    declaration->declared |= written;
    uri = {declaration->uri, declaration->uriLength};
  } else {
    if (declaration == nullptr && hostCount == hostCapacity && !growArray(heap, host, hostCount, hostCapacity, 4))
      return STATUS_NO_MEMORY;
    char *texts = static_cast<char *>(heap.systemAllocate(prefix.length + uri.length + 2));
    if (texts == nullptr) return STATUS_NO_MEMORY;
    Binding replacement = {};
    replacement.prefix = texts;
    replacement.uri = copyText(texts, prefix);
    copyText(texts + prefix.length + 1, uri);
    replacement.prefixLength = static_cast<uint32_t>(prefix.length);
    replacement.uriLength = static_cast<uint32_t>(uri.length);
    replacement.hash = hashOf(prefix.bytes, prefix.length);
    replacement.declared = written;
    if (declaration != nullptr) removeHost(heap, declaration);
    host[hostCount++] = replacement;
    prefix.bytes = replacement.prefix; // what was given may have been the text just replaced
    uri.bytes = replacement.uri;
  }
  // It is newer than the bindings that are in scope, and hides them while they last.
  return bindingCount == 0 && !hostHidden ? 0 : add(heap, prefix, uri, false);
}

void NamespaceStack::removeHost(Heap &heap, Binding *declaration) {
  heap.systemRelease(const_cast<char *>(declaration->prefix));
  hostCount--;
  for (Binding *next = declaration; next < host + hostCount; next++)
    *next = next[1];
}

// Position of the newest binding of a prefix that is to be written, plus 1; 0 if there is none in the stack.
uint32_t NamespaceStack::newestDeclared(const Binding &like) const {
  for (uint32_t i = chainOf(like.hash, like.prefixLength); i > hidden.bindings; i = bindings[i - 1].older) {
    const Binding &binding = bindings[i - 1];
    if (binding.declared && binding.hash == like.hash && binding.prefixLength == like.prefixLength &&
        sameBytes(binding.prefix, like.prefix, like.prefixLength))
      return i;
  }
  return 0;
}

const Binding *NamespaceStack::nextDeclared(uint32_t &cursor) const {
  for (; cursor < hostCount; cursor++) {
    const Binding &binding = host[cursor];
    if (!hostHidden && binding.declared && newestDeclared(binding) == 0) return &host[cursor++];
  }
  if (cursor - hostCount < hidden.bindings) cursor = hostCount + hidden.bindings;
  while (cursor - hostCount < bindingCount) {
    const Binding &binding = bindings[cursor - hostCount];
    cursor++;
    const uint32_t position = cursor - hostCount; // plus 1, as in the chains
    if (!binding.declared) continue;
    if (chainOf(binding.hash, binding.prefixLength) == position || newestDeclared(binding) == position) return &binding;
  }
  return nullptr;
}

// ---- Life

const char *NamespaceStack::keepPrefix(Heap &heap, const char *prefix, size_t length) {
  namedBinding = find(prefix, length);
  if (namedBinding != nullptr) return namedBinding->prefix;
  if (length > textLimit) return nullptr;
  if (length >= keptPrefixCapacity) {
    char *larger = static_cast<char *>(heap.systemAllocate(length + 64));
    if (larger == nullptr) return nullptr;
    heap.systemRelease(keptPrefix);
    keptPrefix = larger;
    keptPrefixCapacity = length + 64;
  }
  memcpy(keptPrefix, prefix, length);
  keptPrefix[length] = '\0';
  return keptPrefix;
}

void NamespaceStack::resetToHost() {
  forgetAnswers();
  hidden = {0, 0};
  hostHidden = false;
  inDocument = false;
  restore({0, 0});
}

void NamespaceStack::destroy(Heap &heap) {
  resetToHost();
  while (hostCount != 0)
    removeHost(heap, &host[hostCount - 1]);
  while (firstChunk != nullptr) {
    TextChunk *next = firstChunk->next;
    heap.systemRelease(firstChunk);
    firstChunk = next;
  }
  heap.systemRelease(host);
  heap.systemRelease(scopes);
  heap.systemRelease(bindings);
  heap.systemRelease(buckets);
  heap.systemRelease(table);
  heap.systemRelease(keptPrefix);
}

} // namespace rt

// ---- The C interface

using rt::NamespaceStack;

int rtXmlNSPush(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  return ctx->internals->namespaces.push(ctx->internals->heap);
}

int rtXmlNSPop(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  ctx->internals->namespaces.pop();
  return 0;
}

int rtXmlNSAddPrefixLink(RuntimeContext *ctx, const char *prefix, const char *uri, void *, int) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  return ctx->internals->namespaces.bind(ctx->internals->heap, prefix, rt::lengthOf(prefix), uri, rt::lengthOf(uri));
}

int rtXmlNSGetIndex(RuntimeContext *ctx, const char *prefix) {
  if (!rt::usable(ctx)) return RTXML_NS_NONE;
  return ctx->internals->namespaces.tableIndexOf(prefix);
}

const char *rtXmlNSGetPrefix(RuntimeContext *ctx, const char *uri) {
  if (!rt::usable(ctx)) return nullptr;
  const rt::Binding *binding = ctx->internals->namespaces.findUri(uri, false);
  return binding == nullptr ? nullptr : binding->prefix;
}

int rtXmlNSSetURITable(RuntimeContext *ctx, const char *const *table, uint32_t count) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  return ctx->internals->namespaces.setTable(ctx->internals->heap, table, count);
}

int rtXmlNSSetNamespace(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri, bool override) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  const int status = internals.namespaces.declare(internals.heap, prefix, uri, list == nullptr, override);
  if (status != 0 || list == nullptr) return status;
  return rt::addDeclaration(ctx, list, prefix, uri);
}

int rtXmlNSGetAttrQName(RuntimeContext *ctx, char *buffer, size_t bufferSize, const RtxNamespace *ns,
                        const char *localName, size_t nameLength) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  if (localName == nullptr) nameLength = 0;
  const rt::Binding *binding = ns == nullptr ? nullptr : ctx->internals->namespaces.findUri(ns->uri, true);
  const size_t prefixSize = binding == nullptr ? 0 : binding->prefixLength + size_t{1};
  if (buffer == nullptr || bufferSize <= prefixSize || bufferSize - prefixSize <= nameLength)
    return STATUS_BUFFER_OVERFLOW;
  if (prefixSize != 0) {
    memcpy(buffer, binding->prefix, prefixSize - 1);
    buffer[prefixSize - 1] = ':';
  }
  if (nameLength != 0) memcpy(buffer + prefixSize, localName, nameLength);
  buffer[prefixSize + nameLength] = '\0';
  return 0;
}
