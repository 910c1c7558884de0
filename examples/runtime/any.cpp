// The handler that captures an element as XML text which means the same on its own.
#include "context.h"
#include "escape.h"

namespace tiny {

namespace {

struct AnyHandler {
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
  RtSaxRelease release;
  void *delegateStorage;
  RuntimeContext *context;
  RtxXmlString *entry;
  int32_t level;
  bool tagOpen;      // the last start tag waits for its ">"
  bool failed;       // there was no storage: the entry stays as it is
  bool declaresNone; // xmlns="" is among the declarations
  bool isRead;       // a reader has bound what the element declares; without one nothing is known of what is around
  RtxMemBuf text;
  RtxMemBuf declarations; // of what the element uses and has around it, for its start tag
  size_t nameEnd;         // of the element, in the text: where they go in
  size_t firstInside;     // of the bindings
};
static_assert(sizeof(AnyHandler) <= RTSAX_DELEGATE_SIZE);
static_assert(offsetof(AnyHandler, context) == offsetof(SaxTypeHandler, context)); // for the trace

bool put(RtxMemBuf &buffer, std::string_view text) { return rtxMemBufAppend(&buffer, text.data(), text.size()) == 0; }

bool putEscaped(RtxMemBuf &buffer, std::string_view text, bool inAttribute) {
  size_t plain = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char *reference = referenceFor(text[i], inAttribute);
    if (!reference) continue;
    if (!put(buffer, {text.data() + plain, i - plain}) || !put(buffer, reference)) return false;
    plain = i + 1;
  }
  return put(buffer, {text.data() + plain, text.size() - plain});
}

bool putAttribute(RtxMemBuf &buffer, std::string_view name, std::string_view value) {
  return put(buffer, " ") && put(buffer, name) && put(buffer, "=\"") && putEscaped(buffer, value, true) &&
         put(buffer, "\"");
}

bool closeTag(AnyHandler &self) {
  const bool closed = !self.tagOpen || put(self.text, ">");
  self.tagOpen = false;
  return closed;
}

void releaseText(RuntimeContext *ctx, void *handler) {
  AnyHandler &self = *static_cast<AnyHandler *>(handler);
  rtxMemHeapFreePtr(ctx, self.text.data);
  rtxMemHeapFreePtr(ctx, self.declarations.data);
  self.text = self.declarations = {ctx, 0, 0, 0, nullptr};
}

// An owner need not release a handler that has failed at its start tag.
int fail(AnyHandler &self) {
  self.failed = true;
  releaseText(self.context, &self);
  if (rtSaxIncErrors(self.context)) rtxErrSetNewData(self.context, STATUS_NO_MEMORY, readerPath, lineAnyStorage);
  return rtSaxSetSkipLevelToCurrent(self.context, STATUS_NO_MEMORY);
}

// ---- Namespaces

// A long name of a namespace is written once in a document, and would be copied for each of its short elements: what
// that costs is paid for out of a part of the heap.
bool borrow(AnyHandler &self, std::string_view prefix, std::string_view uri) {
  size_t &left = self.context->internals->reader.borrowable;
  if (uri.size() > left) return false;
  const size_t before = self.declarations.used;
  const bool written = put(self.declarations, prefix.empty() ? " xmlns" : " xmlns:") &&
                       put(self.declarations, prefix) && put(self.declarations, "=\"") &&
                       putEscaped(self.declarations, uri, true) && put(self.declarations, "\"");
  const size_t cost = self.declarations.used - before;
  left -= cost < left ? cost : left;
  return written;
}

// Declares a prefix in the top element if it is bound around that and not yet declared there. A name in no namespace
// must not fall into the default one of the place where it is written again.
bool use(AnyHandler &self, std::string_view prefix) {
  RtxInternals &internals = *self.context->internals;
  Binding *binding = internals.namespaces.find(prefix);
  if (internals.namespaces.isInside(binding, self.firstInside)) return true;
  if (!binding || !*binding->uri) {
    if (!prefix.empty() || self.declaresNone || !internals.namespaces.hasTable()) return true;
    self.declaresNone = true;
    return putAttribute(self.declarations, "xmlns", "");
  }
  if (binding->usedBy == internals.fragments) return true;
  binding->usedBy = internals.fragments;
  return borrow(self, prefix, {binding->uri, binding->uriLength});
}

// The fragment's own bindings are those that its element has made and what comes behind.
void beginFragment(AnyHandler &self) {
  RtxInternals &internals = *self.context->internals;
  const RtSaxReader &reader = internals.reader;
  self.isRead = reader.parsing && reader.open.count > 0;
  if (self.isRead) self.firstInside = reader.open.items[reader.open.count - 1].outside.bindings;
  ++internals.fragments;
}

bool useNames(AnyHandler &self, const char *qualifiedName, const char *const *attributes) {
  if (!self.isRead) return true;
  if (!use(self, prefixOf(qualifiedName))) return false;
  for (const char *const *at = attributes; at && at[0]; at += 2) {
    const std::string_view prefix = prefixOf(at[0]);
    if (!prefix.empty() && !isDeclaration(at[0]) && !use(self, prefix)) return false;
  }
  return true;
}

// ---- Events

bool putStartTag(AnyHandler &self, const char *qualifiedName, const char *const *attributes) {
  if (!closeTag(self) || !put(self.text, "<") || !put(self.text, qualifiedName)) return false;
  if (self.level == 0) self.nameEnd = self.text.used;
  for (const char *const *at = attributes; at && at[0]; at += 2) {
    if (!putAttribute(self.text, at[0], at[1])) return false;
  }
  self.tagOpen = true;
  return true;
}

bool putEndTag(AnyHandler &self, const char *qualifiedName) {
  if (!self.tagOpen) return put(self.text, "</") && put(self.text, qualifiedName) && put(self.text, ">");
  self.tagOpen = false;
  return put(self.text, "/>");
}

bool storeEntry(AnyHandler &self) {
  const RtxMemBuf &text = self.text;
  const RtxMemBuf &declarations = self.declarations;
  char *stored = static_cast<char *>(rtxMemHeapAlloc(self.context, text.used + declarations.used + 1));
  if (!stored) return false;
  memcpy(stored, text.data, self.nameEnd);
  if (declarations.used > 0) memcpy(stored + self.nameEnd, declarations.data, declarations.used);
  memcpy(stored + self.nameEnd + declarations.used, text.data + self.nameEnd, text.used - self.nameEnd);
  stored[text.used + declarations.used] = '\0';
  *self.entry = {false, stored};
  return true;
}

int anyCharacters(void *handler, const char *bytes, size_t length) {
  const CallbackTrace traced(handler, "SAXAnyCharacters", nullptr);
  AnyHandler &self = *static_cast<AnyHandler *>(handler);
  if (self.failed || self.level == 0) return 0;
  return closeTag(self) && putEscaped(self.text, {bytes, length}, false) ? 0 : fail(self);
}

int anyEndElement(void *handler, const char *, const char *qualifiedName) {
  const CallbackTrace traced(handler, "SAXAnyEndElement", qualifiedName);
  AnyHandler &self = *static_cast<AnyHandler *>(handler);
  --self.level;
  if (self.failed) return 0;
  const bool kept = putEndTag(self, qualifiedName) && (self.level > 0 || storeEntry(self));
  return kept ? 0 : fail(self);
}

} // namespace

} // namespace tiny

using namespace tiny;

int SAXAnyInit(RuntimeContext *ctx, void *block, RtxXmlString *entry, int32_t) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  AnyHandler &self = *static_cast<AnyHandler *>(block);
  self = {};
  self.startElement = SAXAnyStartElement;
  self.endElement = anyEndElement;
  self.characters = anyCharacters;
  self.release = releaseText;
  self.context = self.text.context = self.declarations.context = ctx;
  self.entry = entry;
  return 0;
}

int SAXAnyStartElement(void *handler, const char *, const char *qualifiedName, const char *const *attributes) {
  const CallbackTrace traced(handler, __func__, qualifiedName);
  AnyHandler &self = *static_cast<AnyHandler *>(handler);
  if (self.level == 0) beginFragment(self);
  if (!self.failed && (!useNames(self, qualifiedName, attributes) || !putStartTag(self, qualifiedName, attributes)))
    return fail(self);
  ++self.level;
  return 0;
}
