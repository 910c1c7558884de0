// The namespace bindings of a context: a stack of scoped bindings, and the declarations that belong to the host.
//
// Every element of a document being read opens and closes scopes, so those two cost a few instructions and nothing
// is allocated once the stack has grown to the size that the documents need.
#pragma once

#include "rtXmlNamespace.h"

#include <string.h>

namespace rt {

class Heap;

// A prefix bound to a URI. Texts are NUL-terminated; the default namespace has an empty prefix. A pointer to
// it is good until the next binding is made, its texts are as long as it is bound.
struct Binding {
  const char *prefix;
  const char *uri;
  uint32_t prefixLength;
  uint32_t uriLength;
  uint32_t hash;               // of the prefix
  uint32_t older;              // 1 + position of the next older binding in the same chain, 0: none
  mutable uint32_t tableEpoch; // the URI table for which tableIndex was found
  mutable int32_t tableIndex;
  struct TextChunk *chunk; // where texts began before this binding: dropping it goes back to there
  uint32_t chunkUsed;
  bool declared; // to be written by the encoder
};

class NamespaceStack {
public:
  struct Mark {
    uint32_t bindings;
    uint32_t scopes;
  };

  struct Text {
    const char *bytes;
    size_t length;
    bool lasting = false; // NUL-terminated and there for longer than any binding
  };

  NamespaceStack() = default;
  NamespaceStack(const NamespaceStack &) = delete;
  NamespaceStack &operator=(const NamespaceStack &) = delete;

  // ---- Scopes

  // Restoring a mark drops the scopes and bindings made since it was taken.
  Mark mark() const { return {bindingCount, scopeCount}; }
  void restore(const Mark &mark) {
    if (mark.scopes < scopeCount) scopeCount = mark.scopes;
    if (mark.bindings < bindingCount) dropTo(mark.bindings);
  }

  int push(Heap &heap) {
    if (scopeCount == scopeCapacity) [[unlikely]]
      return growAndPush(heap);
    scopes[scopeCount++] = bindingCount;
    return 0;
  }
  void pop() {
    if (scopeCount == hidden.scopes) return;
    const uint32_t outer = scopes[--scopeCount];
    if (outer < bindingCount) dropTo(outer);
  }

  // What has been bound so far is invisible, and a surplus pop cannot reach it, until showOuter is called with the
  // result, which also drops everything bound in between.
  struct Outer {
    Mark hidden;
    Mark top;
    bool hostHidden;
  };
  Outer hideOuter();
  void showOuter(const Outer &outer);

  // ---- Bindings

  // Binds a prefix (length 0: the default namespace) in the current scope. Texts are copied and need no NUL. 0 or
  // STATUS_NO_MEMORY. Nothing changes if that is what the prefix means already.
  int bind(Heap &heap, const char *prefix, size_t prefixLength, const char *uri, size_t uriLength);

  // The visible binding of a prefix, or null.
  const Binding *find(const char *prefix, size_t prefixLength) const {
    if (prefixLength == 0 && newestDefault > hidden.bindings) return &bindings[newestDefault - 1];
    return findAnywhere(prefix, prefixLength);
  }
  // Its URI, or null if the prefix is unbound. "" undeclares the default namespace.
  const char *uriOf(const char *prefix, size_t prefixLength) const;
  // The newest visible binding of a URI, or null. Without the default namespace if prefixedOnly is set.
  const Binding *findUri(const char *uri, bool prefixedOnly) {
    return uri == askedUri && !prefixedOnly ? askedBinding : searchUri(uri, prefixedOnly);
  }

  // ---- URI table

  int setTable(Heap &heap, const char *const *table, uint32_t count);
  // Index of the URI that a binding stands for, as rtXmlNSGetIndex gives it. Null: no binding.
  int tableIndexOf(const Binding *binding) const {
    if (binding == nullptr) return RTXML_NS_NONE;
    return binding->tableEpoch == tableEpoch ? binding->tableIndex : findTableIndex(*binding);
  }
  // The same for what a prefix is bound to; null: the default namespace, for which every element asks.
  int tableIndexOf(const char *prefix) const {
    if (prefix == nullptr && newestDefault > hidden.bindings) [[likely]] {
      const Binding &binding = bindings[newestDefault - 1];
      if (binding.tableEpoch == tableEpoch) return binding.tableIndex;
    }
    if (namedBinding != nullptr && prefix == namedBinding->prefix) return tableIndexOf(namedBinding);
    return findTableIndex(prefix);
  }
  // Position of the entry that is this very pointer, or -1.
  int tableEntry(const char *uri) const;

  // Whether a text is an entry of the table, and so there for longer than any document.
  bool isLasting(const char *uri) const { return uri == askedUri || tableEntry(uri) >= 0; }

  // How a tag of a name begins: "<", the prefix and its colon.
  struct TagStart {
    static constexpr size_t room = 8;
    char text[room];
    size_t length;
    uint32_t prefixLength() const { return length == 1 ? 0 : static_cast<uint32_t>(length - 2); }
  };
  // That of a namespace, if it is none or the one that findUri was last asked for; else null.
  const TagStart *tagStartOf(const RtxNamespace *ns) const {
    if (ns == nullptr) return &unprefixedTag;
    if (ns->uri == taggedUri && (ns->prefix == askedPrefix || ns->prefix == nullptr)) return &askedTag;
    return ns->uri == nullptr && ns->prefix == nullptr ? &unprefixedTag : nullptr;
  }

  // ---- Declarations, which the encoder writes

  // Between these two, declarations belong to the document; outside they belong to the host. Both drop what an
  // earlier document has left. A new output ends the document as well.
  void beginDocument();
  void endDocument() {
    if (inDocument) restore(documentStart);
    inDocument = false;
  }

  // Binds a prefix as rtXmlNSSetNamespace does. written: an encoder shall write the declaration.
  int declare(Heap &heap, const char *prefix, const char *uri, bool written, bool override);

  // The declarations to be written, oldest first, each prefix once. Start with cursor 0; null ends the walk.
  const Binding *nextDeclared(uint32_t &cursor) const;

  // A prefix with a NUL behind it that stays until the next call; null: no storage.
  const char *keepPrefix(Heap &heap, const char *prefix, size_t length);

  // What keepPrefix was last asked for, if a qualified name has that prefix, is bound, and nothing was bound since;
  // else null.
  const Binding *bindingAskedFor(const char *qualifiedName) const {
    if (namedBinding == nullptr) return nullptr;
    const char *prefix = namedBinding->prefix;
    while (*prefix != '\0' && *prefix == *qualifiedName)
      prefix++, qualifiedName++;
    return *prefix == '\0' && *qualifiedName == ':' ? namedBinding : nullptr;
  }

  // ---- Life

  void resetToHost(); // drops all but the host's declarations and the URI table's storage
  void destroy(Heap &heap);

private:
  uint32_t *chainOf(const Binding &binding);
  uint32_t chainOf(uint32_t hash, size_t prefixLength) const;
  uint32_t hashOf(const char *prefix, size_t length) const;
  const Binding *findInStack(const char *prefix, size_t length, uint32_t hash) const;
  const Binding *findHost(const char *prefix, size_t length) const;
  [[gnu::noinline]] const Binding *findAnywhere(const char *prefix, size_t prefixLength) const;
  const Binding *searchUri(const char *uri, bool prefixedOnly);
  [[gnu::cold, gnu::noinline]] int findTableIndex(const Binding &binding) const;
  [[gnu::noinline]] int findTableIndex(const char *prefix) const;
  bool isVisible(const Binding &binding) const;
  template <class Matches> const Binding *newestVisible(Matches matches, bool prefixedOnly) const;
  uint32_t newestDeclared(const Binding &like) const;

  void remember(const char *uri, const Binding *binding);
  void forgetAnswers() {
    askedUri = taggedUri = noUri;
    namedBinding = nullptr;
  }

  int add(Heap &heap, Text prefix, Text uri, bool declared);
  int add(Heap &heap, Text prefix, Text uri, bool declared, uint32_t hash, const Binding *present);
  int declareHost(Heap &heap, Text prefix, Text uri, bool written, bool override);
  void removeHost(Heap &heap, Binding *declaration);
  [[gnu::noinline]] void dropTo(uint32_t count);

  [[gnu::cold, gnu::noinline]] int growAndPush(Heap &heap);
  bool growForBinding(Heap &heap);
  bool growBuckets(Heap &heap);
  char *takeText(Heap &heap, size_t size);
  static char *copyText(char *to, Text text);

  uint32_t *scopes = nullptr; // binding count at the opening of each open scope
  uint32_t scopeCount = 0;
  uint32_t scopeCapacity = 0;

  Binding *bindings = nullptr;
  uint32_t bindingCount = 0;
  uint32_t bindingCapacity = 0;

  // Chains of bindings by prefix, newest first: 1 + position of a chain's newest, 0: none. A document may hold ten
  // thousands of declarations, so a plain search would not do.
  uint32_t newestDefault = 0;
  uint32_t *buckets = nullptr;
  uint32_t bucketCount = 0;

  struct TextChunk *firstChunk = nullptr; // kept
  struct TextChunk *chunk = nullptr;      // the one that takes the next text
  uint32_t chunkUsed = 0;

  Binding *host = nullptr; // texts of each in a block of its own
  uint32_t hostCount = 0;
  uint32_t hostCapacity = 0;

  Mark hidden = {0, 0};
  bool hostHidden = false;
  bool inDocument = false;
  Mark documentStart = {0, 0};

  const char **table = nullptr;
  uint32_t tableCount = 0;
  uint32_t tableCapacity = 0;
  uint32_t tableEpoch = 1;

  // The answer to the last question for a URI that is an entry of the table. No URI: bindings have changed since.
  static constexpr char noUri[] = "";
  const char *askedUri = noUri;
  const char *taggedUri = noUri; // the same, if the tag of its names is known
  const Binding *askedBinding = nullptr;
  const char *askedPrefix = nullptr;
  TagStart askedTag = {};
  static constexpr TagStart unprefixedTag = {"<", 1};

  const Binding *namedBinding = nullptr; // of the prefix that keepPrefix was last asked for; null: none, or not known

  char *keptPrefix = nullptr;
  size_t keptPrefixCapacity = 0;
};

} // namespace rt
