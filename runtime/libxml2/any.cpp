// The handler that captures an element as XML text.
#include "escape.h"
#include "internals.h"
#include "reader.h"
#include "rtxError.h"
#include "rtxMemory.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

// The text grows in the storage that the owner frees. What the top element has to declare is known only at the end,
// so it is put in when the entry's text is made.
struct AnyHandler {
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
  RtSaxRelease release;
  void *delegateStorage; // the text
  RuntimeContext *context;
  RtxXmlString *entry;
  int32_t level; // open elements
  size_t length; // of the text
  size_t capacity;
  size_t topNameEnd; // in the text: behind "<" and the name of the top element
  bool tagOpen;      // the last start tag waits for its ">"
  bool failed;       // there was no storage: the entry stays as it is
};
static_assert(sizeof(AnyHandler) <= RTSAX_DELEGATE_SIZE);
// An owner sees by the level whether a start tag was taken.
static_assert(offsetof(AnyHandler, level) == offsetof(SaxTypeHandler, level));
static_assert(offsetof(AnyHandler, context) == offsetof(SaxTypeHandler, context));

Text textOf(const char *text) { return {text, strlen(text)}; }

constexpr size_t firstCapacity = 256;
constexpr size_t longestEscape = 8;

[[gnu::cold, gnu::noinline]] bool grow(AnyHandler &self, size_t length) {
  size_t capacity = self.capacity == 0 ? firstCapacity : self.capacity + self.capacity / 2;
  if (capacity - self.length < length) capacity = self.length + length;
  char *larger = static_cast<char *>(rtxMemHeapAlloc(self.context, capacity));
  if (larger == nullptr) return false;
  if (self.length != 0) memcpy(larger, self.delegateStorage, self.length);
  rtxMemHeapFreePtr(self.context, self.delegateStorage);
  self.delegateStorage = larger;
  self.capacity = capacity;
  return true;
}

// Where length more bytes have room, or null.
inline char *room(AnyHandler &self, size_t length) {
  if (self.capacity - self.length < length && !grow(self, length)) return nullptr;
  return static_cast<char *>(self.delegateStorage) + self.length;
}

inline bool append(AnyHandler &self, Text text) {
  char *to = room(self, text.length);
  if (to == nullptr) return false;
  memcpy(to, text.bytes, text.length);
  self.length += text.length;
  return true;
}

template <size_t size> bool append(AnyHandler &self, const char (&literal)[size]) {
  return append(self, Text{literal, size - 1});
}

bool appendEscaped(AnyHandler &self, Text text, Escape escape) {
  while (text.length != 0) {
    char *to = room(self, text.length + longestEscape);
    if (to == nullptr) return false;
    const size_t plain = copyPlain(to, text.bytes, text.length, escape);
    text.bytes += plain;
    text.length -= plain;
    self.length += plain;
    while (text.length != 0) { // up to the next ASCII character that needs no look
      to = room(self, longestEscape);
      if (to == nullptr) return false;
      Escaped escaped = escapeFirst(text.bytes, text.length, escape);
      if (escaped.taken == 0) escaped = {text.bytes, 1, 1}; // a piece of text may end inside a character
      for (size_t i = 0; i < escaped.length; i++)
        to[i] = escaped.bytes[i];
      self.length += escaped.length;
      text.bytes += escaped.taken;
      text.length -= escaped.taken;
      if (escaped.taken == 1 && escaped.bytes == text.bytes - 1) break;
    }
  }
  return true;
}

bool appendAttribute(AnyHandler &self, const char *name, Text value) {
  return append(self, " ") && append(self, textOf(name)) && append(self, "=\"") &&
         appendEscaped(self, value, Escape::Attribute) && append(self, "\"");
}

bool closeTag(AnyHandler &self) {
  if (!self.tagOpen) return true;
  self.tagOpen = false;
  return append(self, ">");
}

// ---- Namespaces

bool isDeclaration(const char *name) { return strncmp(name, "xmlns", 5) == 0 && (name[5] == '\0' || name[5] == ':'); }

Text prefixOf(const char *qualifiedName) {
  const char *colon = strchr(qualifiedName, ':');
  return {qualifiedName, colon == nullptr ? 0 : static_cast<size_t>(colon - qualifiedName)};
}

bool hasTable(const NamespaceStack &namespaces) {
  Binding foreign = {};
  foreign.prefix = foreign.uri = "-";
  foreign.prefixLength = foreign.uriLength = 1;
  return namespaces.tableIndexOf(&foreign) != RTXML_NS_NONE;
}

// Notes a prefix (empty: the default namespace of an element) that the fragment uses without having declared it. A
// prefix that nobody has declared stays so.
int use(AnyHandler &self, FragmentNames &names, Text prefix) {
  RtxInternals &internals = *self.context->internals;
  if (names.inside.find(prefix.bytes, prefix.length) != nullptr) return 0;
  if (names.fromOutside.find(prefix.bytes, prefix.length) != nullptr) return 0;
  const Binding *binding = internals.namespaces.find(prefix.bytes, prefix.length);
  if (binding != nullptr && binding->uriLength != 0) {
    if (binding->uriLength > names.borrowable) return STATUS_NO_MEMORY;
    return names.fromOutside.declare(internals.heap, binding->prefix, binding->uri, true, true);
  }
  if (prefix.length != 0 || !hasTable(internals.namespaces)) return 0;
  return names.fromOutside.declare(internals.heap, "", "", true, true);
}

int noteNames(AnyHandler &self, FragmentNames &names, const char *qualifiedName, const char *const *attributes) {
  Heap &heap = self.context->internals->heap;
  if (self.level == 0) {
    names.inside.restore({0, 0});
    names.fromOutside.beginDocument();
  }
  int status = names.inside.push(heap);
  for (const char *const *at = attributes; at != nullptr && at[0] != nullptr && status == 0; at += 2) {
    if (!isDeclaration(at[0])) continue;
    const char *prefix = at[0][5] == ':' ? at[0] + 6 : "";
    status = names.inside.bind(heap, prefix, strlen(prefix), "", 0);
  }
  if (status == 0) status = use(self, names, prefixOf(qualifiedName));
  for (const char *const *at = attributes; at != nullptr && at[0] != nullptr && status == 0; at += 2) {
    const Text prefix = prefixOf(at[0]);
    if (prefix.length != 0 && !isDeclaration(at[0])) status = use(self, names, prefix);
  }
  return status;
}

bool appendOuterDeclarations(AnyHandler &self, const NamespaceStack &fromOutside) {
  uint32_t cursor = 0;
  while (const Binding *binding = fromOutside.nextDeclared(cursor)) {
    if (!append(self, binding->prefixLength == 0 ? Text{" xmlns", 6} : Text{" xmlns:", 7}) ||
        !append(self, {binding->prefix, binding->prefixLength}) || !append(self, "=\"") ||
        !appendEscaped(self, {binding->uri, binding->uriLength}, Escape::Attribute) || !append(self, "\""))
      return false;
  }
  return true;
}

// ---- Events

int fail(AnyHandler &self) {
  self.failed = true;
  if (rtSaxIncErrors(self.context)) rtxErrSetNewData(self.context, STATUS_NO_MEMORY, readerPath, lineAnyStorage);
  return rtSaxSetSkipLevelToCurrent(self.context, STATUS_NO_MEMORY);
}

// The declarations from outside are built behind the text and go in behind the top element's name. What they cost is
// paid for, whether there was storage for all or not.
bool storeEntry(AnyHandler &self, FragmentNames &names) {
  const size_t length = self.length;
  const bool appended = appendOuterDeclarations(self, names.fromOutside);
  const size_t cost = self.length - length;
  names.borrowable -= cost < names.borrowable ? cost : names.borrowable;
  if (!appended) return false;
  char *stored = static_cast<char *>(rtxMemHeapAlloc(self.context, self.length + 1));
  if (stored == nullptr) return false;
  const char *text = static_cast<const char *>(self.delegateStorage);
  char *to = stored;
  const Text pieces[] = {{text, self.topNameEnd},
                         {text + length, self.length - length},
                         {text + self.topNameEnd, length - self.topNameEnd}};
  for (const Text &piece : pieces) {
    memcpy(to, piece.bytes, piece.length);
    to += piece.length;
  }
  *to = '\0';
  self.entry->value = stored;
  self.entry->cdata = false;
  return true;
}

bool appendStartTag(AnyHandler &self, const char *qualifiedName, const char *const *attributes) {
  if (!closeTag(self) || !append(self, "<") || !append(self, textOf(qualifiedName))) return false;
  if (self.level == 0) self.topNameEnd = self.length;
  for (const char *const *at = attributes; at != nullptr && at[0] != nullptr; at += 2) {
    if (!appendAttribute(self, at[0], textOf(at[1]))) return false;
  }
  self.tagOpen = true;
  return true;
}

bool appendEndTag(AnyHandler &self, const char *qualifiedName) {
  if (!self.tagOpen) return append(self, "</") && append(self, textOf(qualifiedName)) && append(self, ">");
  self.tagOpen = false;
  return append(self, "/>");
}

int anyCharacters(void *handler, const char *bytes, size_t length) {
  const CallbackTrace trace(handler, "SAXAnyCharacters", nullptr);
  AnyHandler &self = *static_cast<AnyHandler *>(handler);
  if (self.failed || self.level == 0 || length == 0) return 0;
  return closeTag(self) && appendEscaped(self, {bytes, length}, Escape::Text) ? 0 : fail(self);
}

int anyEndElement(void *handler, const char *, const char *qualifiedName) {
  const CallbackTrace trace(handler, "SAXAnyEndElement", qualifiedName);
  AnyHandler &self = *static_cast<AnyHandler *>(handler);
  if (self.level == 0) return 0;
  self.level--;
  if (self.failed) return 0;
  FragmentNames &names = self.context->internals->reader->fragment;
  names.inside.pop();
  if (!appendEndTag(self, qualifiedName)) return fail(self);
  if (self.level > 0) return 0;
  return storeEntry(self, names) ? 0 : fail(self);
}

} // namespace

} // namespace rt

int SAXAnyInit(RuntimeContext *ctx, void *block, RtxXmlString *entry, int32_t) {
  if (!rt::usable(ctx) || block == nullptr || entry == nullptr) return STATUS_BAD_CONTEXT;
  rt::AnyHandler &self = *static_cast<rt::AnyHandler *>(block);
  self = {};
  self.startElement = SAXAnyStartElement;
  self.endElement = rt::anyEndElement;
  self.characters = rt::anyCharacters;
  self.context = ctx;
  self.entry = entry;
  return rt::keptReader(ctx) == nullptr ? STATUS_NO_MEMORY : 0;
}

int SAXAnyStartElement(void *handler, const char *, const char *qualifiedName, const char *const *attributes) {
  const rt::CallbackTrace trace(handler, "SAXAnyStartElement", qualifiedName);
  rt::AnyHandler &self = *static_cast<rt::AnyHandler *>(handler);
  if (!self.failed) {
    const bool noted = rt::noteNames(self, self.context->internals->reader->fragment, qualifiedName, attributes) == 0;
    if (!noted || !rt::appendStartTag(self, qualifiedName, attributes)) return rt::fail(self);
  }
  self.level++;
  return 0;
}
