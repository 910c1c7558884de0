#include "encodeState.h"
#include "escape.h"
#include "internals.h"
#include "names.h"
#include "plainCopy.h"
#include "rtxMemory.h"
#include "usable.h"
#include "xmlName.h"

#include <string.h>

namespace rt {

namespace {

// Copies between one and two words' worth of bytes as two words that may overlap.
template <class Word> inline void copyEnds(char *to, const char *from, size_t length) {
  Word first;
  Word last;
  memcpy(&first, from, sizeof first);
  memcpy(&last, from + length - sizeof last, sizeof last);
  memcpy(to, &first, sizeof first);
  memcpy(to + length - sizeof last, &last, sizeof last);
}

// Names and numbers are short: for them a call costs more than the bytes.
inline void copyShort(char *to, const char *from, size_t length) {
  if (length > 2 * sizeof(uint64_t)) {
    memcpy(to, from, length);
  } else if (length >= sizeof(uint64_t)) {
    copyEnds<uint64_t>(to, from, length);
  } else if (length >= sizeof(uint32_t)) {
    copyEnds<uint32_t>(to, from, length);
  } else if (length != 0) {
    to[0] = from[0];
    to[length / 2] = from[length / 2];
    to[length - 1] = from[length - 1];
  }
}

// A number in decimal.
class Digits {
public:
  explicit Digits(uint32_t value) : first(digits + sizeof digits) {
    do {
      *--first = static_cast<char>('0' + value % 10);
      value /= 10;
    } while (value != 0);
  }
  Digits(const Digits &) = delete;
  Digits &operator=(const Digits &) = delete;

  Text text() const { return {first, static_cast<size_t>(digits + sizeof digits - first)}; }

private:
  char digits[16];
  char *first;
};

Text textOf(const char *text) { return {text, text == nullptr ? 0 : strlen(text)}; }

bool same(Text a, Text b) { return a.length == b.length && (a.length == 0 || memcmp(a.bytes, b.bytes, a.length) == 0); }

// A name as it is written. An empty prefix goes without the colon.
struct Name {
  Text prefix;
  Text local;

  size_t length() const { return local.length + (prefix.length == 0 ? 0 : prefix.length + 1); }
  char *writeTo(char *to) const { // returns where it ends
    if (prefix.length != 0) {
      copyShort(to, prefix.bytes, prefix.length);
      to += prefix.length;
      *to++ = ':';
    }
    copyShort(to, local.bytes, local.length);
    return to + local.length;
  }
};

// A namespace without a prefix of its own takes the one that the context binds to its URI. The context is usable.
Name nameOf(const RuntimeContext *ctx, const char *localName, const RtxNamespace *ns) {
  Name name = {{"", 0}, textOf(localName)};
  if (ns == nullptr) return name;
  NamespaceStack &namespaces = ctx->internals->namespaces;
  if (ns->prefix != nullptr) {
    name.prefix = textOf(ns->prefix);
  } else if (const Binding *binding = namespaces.findUri(ns->uri, false); binding != nullptr) {
    name.prefix = {binding->prefix, binding->prefixLength};
  }
  return name;
}

// The name of an attribute, declarations among them: stem "xmlns:" and a prefix, or a stem alone.
struct AttributeName {
  Text stem;
  Text rest = {"", 0};

  size_t length() const { return stem.length + rest.length; }
  bool equals(const char *name, size_t nameLength) const {
    return nameLength == length() && memcmp(name, stem.bytes, stem.length) == 0 &&
           (rest.length == 0 || memcmp(name + stem.length, rest.bytes, rest.length) == 0);
  }
  // Names with different bits differ.
  uint64_t bit() const {
    if (length() == 0) return 1;
    const Text &end = rest.length == 0 ? stem : rest;
    const unsigned first = static_cast<unsigned char>(stem.bytes[0]);
    const unsigned last = static_cast<unsigned char>(end.bytes[end.length - 1]);
    return uint64_t{1} << ((first * 5 + last * 3 + length()) % 64);
  }
};

AttributeName declarationName(Text prefix) {
  if (prefix.length == 0) return {{"xmlns", 5}};
  return {{"xmlns:", 6}, prefix};
}

// What an element of simple content holds.
enum class ContentKind {
  Characters,
  Section, // characters in a CDATA section
  Digits,  // nothing to be escaped
  Markup,  // XML as it stands
  Bytes    // written as hexadecimal digits
};

struct Content {
  ContentKind kind;
  Text text;

  bool isEmpty() const { return text.bytes == nullptr || (text.length == 0 && kind != ContentKind::Section); }
};

// One primitive at work. What it writes counts when finish() succeeds; a failure leaves the output and the state as
// they were. After a failure nothing more is written, so that callers need not ask after each step.
class Encoder {
public:
  explicit Encoder(RuntimeContext *context) : ctx(context) {
    if (!usable(ctx)) {
      status = STATUS_BAD_CONTEXT;
      return;
    }
    if (!ctx->internals->bufferIsOutput) {
      status = STATUS_WRITE_FAILED;
      return;
    }
    next = ctx->buffer.data + ctx->buffer.byteIndex;
    end = ctx->buffer.data + ctx->buffer.size;
    tagOpen = state().tagOpen;
  }

  bool failed() const { return status != 0; }
  void fail(int why) {
    if (status == 0) status = why;
    end = next; // no room() succeeds from here on
  }

  int finish() {
    if (status != 0) return rollBack();
    ctx->buffer.byteIndex = position();
    state().tagOpen = tagOpen;
    return 0;
  }

  void xmlDeclaration() {
    constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    put({declaration, sizeof declaration - 1});
  }

  // ---- Elements

  void startElement(const char *localName, const RtxNamespace *ns, const RtxNsDeclList *declarations, bool terminate) {
    closeTagForElement();
    OpenTag tag;
    writeStart(tag, nameOf(ctx, localName, ns), ns);
    if (declarations != nullptr) writeList(tag, *declarations);
    if (terminate) {
      terminateTag(tag);
    } else {
      tag.uri = kept(tag.uri);
    }
    if (failed()) return;
    state().rootPending = false;
    state().tag = tag;
    tagOpen = !terminate;
  }

  void endElement(const char *localName, const RtxNamespace *ns) {
    if (refusesMarkup()) return;
    if (!tagOpen) return writeEnd(nameOf(ctx, localName, ns));
    addRootDeclaration(state().tag);
    put({"/>", 2});
    tagOpen = false;
  }

  void terminateOpenTag() {
    if (refusesMarkup()) return;
    if (!tagOpen) return fail(STATUS_WRITE_FAILED);
    closeTag();
  }

  // Writes content within an element, or alone if elementName is null. An element without content is "<a/>".
  void simpleElement(const char *elementName, const RtxNamespace *ns, Content content) {
    if (elementName == nullptr) {
      if (content.isEmpty()) return;
      if (!inAttributes() && tagOpen) closeTag();
      return write(content);
    }
    closeTagForElement();
    const Name name = nameOf(ctx, elementName, ns);
    OpenTag tag;
    writeStart(tag, name, ns);
    addRootDeclaration(tag);
    put(content.isEmpty() ? Text{"/>", 2} : Text{">", 1});
    if (!content.isEmpty()) {
      write(content);
      writeEnd(name);
    }
    if (!failed()) state().rootPending = false;
  }

  // ---- Attributes of the open start tag

  bool mayWriteAttribute() {
    if (!failed() && !tagOpen) fail(STATUS_WRITE_FAILED);
    return !failed();
  }

  void attribute(Text name, Text value, Escape escape) {
    if (!mayWriteAttribute()) return;
    if (has(state().tag, {name})) return fail(STATUS_WRITE_FAILED);
    writeAttribute(state().tag, {name}, value, escape);
  }

  void foreignAttribute(const RtxNamePair &pair) {
    const Text name = textOf(pair.name);
    if (!isQualifiedName(name.bytes, name.length)) return fail(STATUS_INVALID_UTF8);
    if (AttributeName{name}.equals("xmlns", 5)) return declare(state().tag, {"", 0}, textOf(pair.value));
    if (name.length > 6 && memcmp(name.bytes, "xmlns:", 6) == 0)
      return declareOfRecord(state().tag, {name.bytes + 6, name.length - 6}, textOf(pair.value));
    attribute(name, textOf(pair.value), Escape::Attribute);
  }

  void declareList(const RtxNsDeclList &list) { writeList(state().tag, list); }

  void declareContext() {
    uint32_t cursor = 0;
    const NamespaceStack &namespaces = ctx->internals->namespaces;
    while (const Binding *binding = namespaces.nextDeclared(cursor))
      declare(state().tag, {binding->prefix, binding->prefixLength}, {binding->uri, binding->uriLength});
  }

private:
  EncodeState &state() { return ctx->internals->encode; }
  size_t position() const { return static_cast<size_t>(next - ctx->buffer.data); }

  bool inAttributes() const { return ctx->state == XMLSTATE_IN_ATTRIBUTES; }

  bool room(size_t count) {
    if (static_cast<size_t>(end - next) >= count) [[likely]]
      return true;
    return grow(count);
  }

  [[gnu::noinline]] bool grow(size_t count) {
    if (failed()) return false;
    RtxTextBuffer &buffer = ctx->buffer;
    const size_t start = buffer.byteIndex;
    const size_t at = position();
    buffer.byteIndex = at; // what is written so far has to move along
    const int result = rtxCheckBuffer(ctx, count);
    buffer.byteIndex = start;
    next = buffer.data + at;
    end = buffer.data + buffer.size;
    if (result != 0) fail(result);
    return result == 0;
  }

  // What was there before ended with a NUL if its writer put one; that may be overwritten by now.
  int rollBack() {
    if (next != nullptr && position() > ctx->buffer.byteIndex) ctx->buffer.data[ctx->buffer.byteIndex] = '\0';
    return status;
  }

  [[gnu::noinline]] void put(Text text) {
    if (!room(text.length)) return;
    copyShort(next, text.bytes, text.length);
    next += text.length;
  }

  void write(const Content &content) {
    switch (content.kind) {
    case ContentKind::Characters: return escaped(content.text, inAttributes() ? Escape::Attribute : Escape::Text);
    case ContentKind::Section: return inAttributes() ? escaped(content.text, Escape::Attribute) : cdata(content.text);
    case ContentKind::Digits: return put(content.text);
    case ContentKind::Markup: return inAttributes() ? fail(STATUS_WRITE_FAILED) : put(content.text);
    case ContentKind::Bytes: return hexadecimal(content.text);
    }
  }

  void escaped(Text text, Escape escape) {
    if (!room(text.length)) return; // nothing is written in fewer bytes than it has
    const size_t plain = copyPlain(next, text.bytes, text.length, escape);
    next += plain;
    if (plain != text.length) escapedRest({text.bytes + plain, text.length - plain}, escape);
  }

  // Neither "]]>" nor a carriage return can stand in a section: both end it, and another begins behind.
  void cdata(Text text) {
    if (!isXmlText(text.bytes, text.length)) return fail(STATUS_INVALID_UTF8);
    put({"<![CDATA[", 9});
    size_t from = 0;
    for (size_t i = 0; i < text.length; i++) {
      const char byte = text.bytes[i];
      const bool endsSection = byte == '>' && i >= 2 && text.bytes[i - 1] == ']' && text.bytes[i - 2] == ']';
      if (!endsSection && byte != '\r') continue;
      put({text.bytes + from, i - from});
      if (endsSection) {
        put({"]]><![CDATA[", 12});
        from = i;
      } else {
        put({"]]>&#13;<![CDATA[", 17});
        from = i + 1;
      }
    }
    put({text.bytes + from, text.length - from});
    put({"]]>", 3});
  }

  void hexadecimal(Text bytes) {
    if (bytes.length > SIZE_MAX / 2) return fail(STATUS_BUFFER_OVERFLOW);
    if (!room(2 * bytes.length)) return;
    constexpr char digit[] = "0123456789ABCDEF";
    char *to = next;
    for (size_t i = 0; i < bytes.length; i++) {
      const unsigned char byte = static_cast<unsigned char>(bytes.bytes[i]);
      *to++ = digit[byte >> 4];
      *to++ = digit[byte & 0xF];
    }
    next = to;
  }

  // The rest of a text, whose first character cannot simply be copied.
  void escapedRest(Text text, Escape escape) {
    while (text.length != 0) {
      const Escaped first = escapeFirst(text.bytes, text.length, escape);
      if (first.taken == 0) return fail(STATUS_INVALID_UTF8);
      put({first.bytes, first.length});
      text = {text.bytes + first.taken, text.length - first.taken};
      if (!room(text.length)) return;
      const size_t plain = copyPlain(next, text.bytes, text.length, escape);
      next += plain;
      text = {text.bytes + plain, text.length - plain};
    }
  }

  // An element cannot begin or end inside an attribute's value.
  bool refusesMarkup() {
    if (!failed() && tagOpen && inAttributes()) fail(STATUS_WRITE_FAILED);
    return failed();
  }

  void writeStart(OpenTag &tag, const Name &name, const RtxNamespace *ns) {
    tag.start = position();
    if (!room(name.length() + 1)) return;
    *next = '<';
    next = name.writeTo(next + 1);
    tag.nameEnd = tag.attributesEnd = position();
    tag.prefixLength = static_cast<uint32_t>(name.prefix.length);
    tag.uri = ns == nullptr ? nullptr : ns->uri;
    tag.isRoot = state().rootPending;
  }

  void writeEnd(const Name &name) {
    if (!room(name.length() + 3)) return;
    char *to = next;
    *to++ = '<';
    *to++ = '/';
    to = name.writeTo(to);
    *to++ = '>';
    next = to;
  }

  void terminateTag(OpenTag &tag) {
    addRootDeclaration(tag);
    put({">", 1});
  }

  void closeTag() {
    terminateTag(state().tag);
    tagOpen = false;
  }

  void closeTagForElement() {
    if (!refusesMarkup() && tagOpen) closeTag();
  }

  // A root whose prefix the context declares must not go without that declaration.
  void addRootDeclaration(OpenTag &tag) {
    if (!tag.isRoot || tag.declaresItself || failed()) return;
    const Text prefix = {ctx->buffer.data + tag.start + 1, tag.prefixLength};
    const Binding *binding = ctx->internals->namespaces.find(prefix.bytes, prefix.length);
    if (binding == nullptr || binding->uriLength == 0) return;
    if (tag.uri == nullptr && prefix.length == 0) return; // nobody asked for a namespace
    declare(tag, {binding->prefix, binding->prefixLength}, {binding->uri, binding->uriLength});
  }

  void writeList(OpenTag &tag, const RtxNsDeclList &list) {
    for (const RtxListNode *node = list.items.head; node != nullptr && !failed(); node = node->next) {
      const RtxNsDecl *declaration = static_cast<const RtxNsDecl *>(node->data);
      if (declaration != nullptr) declareOfRecord(tag, textOf(declaration->prefix), textOf(declaration->uri));
    }
  }

  // The names in records are whatever somebody has sent; those of the codec and the host are not.
  void declareOfRecord(OpenTag &tag, Text prefix, Text uri) {
    if (prefix.length != 0 && !isNcName(prefix.bytes, prefix.length)) return fail(STATUS_INVALID_UTF8);
    if (reservedName(prefix, uri) != nullptr) return fail(STATUS_INVALID_UTF8);
    declare(tag, prefix, uri);
  }

  // Writes a declaration unless the tag has one of that prefix or its own name would change its namespace.
  void declare(OpenTag &tag, Text prefix, Text uri) {
    if (failed()) return;
    const Text tagPrefix = {ctx->buffer.data + tag.start + 1, tag.prefixLength};
    const bool ofTag = same(prefix, tagPrefix);
    if (ofTag && tag.uri != nullptr && tag.uri != uri.bytes && !same(uri, textOf(tag.uri))) return;
    const AttributeName name = declarationName(prefix);
    if (has(tag, name)) return;
    if (prefix.length != 0 && uri.length == 0) return fail(STATUS_INVALID_UTF8); // nothing undeclares a prefix
    tag.declaresItself |= ofTag;
    writeAttribute(tag, name, uri, Escape::Attribute);
  }

  void writeAttribute(OpenTag &tag, const AttributeName &name, Text value, Escape escape) {
    if (!room(name.length() + 4)) return;
    char *to = next;
    *to++ = ' ';
    copyShort(to, name.stem.bytes, name.stem.length);
    to += name.stem.length;
    copyShort(to, name.rest.bytes, name.rest.length);
    to += name.rest.length;
    *to++ = '=';
    *to++ = '"';
    next = to;
    if (static_cast<size_t>(end - to) > value.length && copyIf<PlainInMarkup>(to, value.bytes, value.length)) {
      next = to + value.length;
      *next++ = '"';
    } else {
      escaped(value, escape);
      put({"\"", 1});
    }
    tag.attributes |= name.bit();
    tag.attributesEnd = position();
  }

  // Whether the tag has an attribute of that name. Where the primitives have written all of them their bits answer
  // most questions; otherwise the tag is read again: blank, name, "=", and a value in double quotes, which holds none.
  bool has(OpenTag &tag, const AttributeName &name) const {
    if (tag.attributesEnd != position()) tag.hasUnknown = true;
    if (!tag.hasUnknown && (tag.attributes == 0 || (tag.attributes & name.bit()) == 0)) return false;
    return isWrittenIn(tag, name);
  }

  bool isWrittenIn(const OpenTag &tag, const AttributeName &name) const {
    const char *at = ctx->buffer.data + tag.nameEnd;
    while (at < next) {
      if (*at == ' ') at++;
      const char *nameStart = at;
      at = find('=', at);
      if (name.equals(nameStart, static_cast<size_t>(at - nameStart))) return true;
      at = find('"', at);
      if (at < next) at = find('"', at + 1);
      if (at < next) at++;
    }
    return false;
  }

  const char *find(char byte, const char *from) const {
    const void *found = memchr(from, byte, static_cast<size_t>(next - from));
    return found == nullptr ? next : static_cast<const char *>(found);
  }

  // The same text, for as long as the tag is open.
  const char *kept(const char *uri) {
    if (uri == nullptr || failed()) return nullptr;
    if (*uri == '\0') return "";
    if (ctx->internals->namespaces.isLasting(uri)) return uri;
    const size_t size = strlen(uri) + 1;
    if (size > state().uriCapacity) {
      char *larger = static_cast<char *>(ctx->internals->heap.systemAllocate(size));
      if (larger == nullptr) {
        fail(STATUS_NO_MEMORY);
        return nullptr;
      }
      ctx->internals->heap.systemRelease(state().uriCopy);
      state().uriCopy = larger;
      state().uriCapacity = size;
    }
    memcpy(state().uriCopy, uri, size);
    return state().uriCopy;
  }

  RuntimeContext *ctx;
  char *next = nullptr;
  char *end = nullptr;
  int status = 0;
  bool tagOpen = false;
};

// What an element or attribute needs in full; the common cases below come to it with a jump.

[[gnu::noinline]] int startElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns,
                                   const RtxNsDeclList *declarations, bool terminate) {
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.startElement(localName, ns, declarations, terminate);
  return encoder.finish();
}

[[gnu::noinline]] int endElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns) {
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.endElement(localName, ns);
  return encoder.finish();
}

[[gnu::noinline]] int encodeAttributeInFull(RuntimeContext *ctx, Text name, Text value) {
  Encoder encoder(ctx);
  encoder.attribute(name, value, Escape::AttributeBytes);
  return encoder.finish();
}

[[gnu::noinline]] int encodeElement(RuntimeContext *ctx, const char *elementName, const RtxNamespace *ns,
                                    Content content) {
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.simpleElement(elementName, ns, content);
  return encoder.finish();
}

// ---- The common cases -----------------------------------------------------------------------------------------
//
// Each is done at once if there is an output with room for it, nothing but the end of a start tag has to come first,
// and no text needs escaping. If not, it returns false and has written nothing that counts; the encoder above does the
// rest.

// Whether an open start tag, if there is one, can be closed by a mere ">".
inline bool mayClose(const RuntimeContext *ctx) {
  const EncodeState &state = ctx->internals->encode;
  if (!state.tagOpen) return true;
  return ctx->state != XMLSTATE_IN_ATTRIBUTES && (!state.tag.isRoot || state.tag.declaresItself);
}

// Whether a tag can begin.
inline bool mayBegin(const RuntimeContext *ctx) { return ctx->internals->bufferIsOutput && mayClose(ctx); }

inline bool hasRoom(const RtxTextBuffer &buffer, size_t count) { return buffer.size - buffer.byteIndex >= count; }

using TagStart = NamespaceStack::TagStart;

// Bytes that the functions below may write for the name of a tag with all around it.
constexpr size_t tagRoom = TagStart::room + longName + 4;

inline char *writeTagStart(char *to, const TagStart &tag, const char *name) {
  memcpy(to, tag.text, sizeof tag.text); // whatever its length
  return name == nullptr ? to + tag.length : copyName(to + tag.length, name);
}

// What was written does not count: the output ends where it did.
inline bool giveUp(RuntimeContext *ctx) {
  ctx->buffer.data[ctx->buffer.byteIndex] = '\0';
  return false;
}

inline char *closeTag(RuntimeContext *ctx, char *to) {
  if (ctx->internals->encode.tagOpen) *to++ = '>';
  return to;
}

inline void wroteTo(RuntimeContext *ctx, const char *end, bool tagOpen) {
  ctx->buffer.byteIndex = static_cast<size_t>(end - ctx->buffer.data);
  ctx->internals->encode.tagOpen = tagOpen;
}

inline bool startPlainElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns, bool terminate) {
  EncodeState &state = ctx->internals->encode;
  if (!mayBegin(ctx) || (terminate && state.rootPending)) return false;
  const TagStart *tagStart = ctx->internals->namespaces.tagStartOf(ns);
  if (tagStart == nullptr || !hasRoom(ctx->buffer, tagRoom)) return false;
  char *const start = closeTag(ctx, ctx->buffer.data + ctx->buffer.byteIndex);
  char *to = writeTagStart(start, *tagStart, localName);
  if (to == nullptr) return giveUp(ctx);
  if (terminate) {
    *to++ = '>';
  } else {
    const size_t nameEnd = static_cast<size_t>(to - ctx->buffer.data);
    state.tag = {.isRoot = state.rootPending,
                 .start = static_cast<size_t>(start - ctx->buffer.data),
                 .nameEnd = nameEnd,
                 .attributesEnd = nameEnd,
                 .prefixLength = tagStart->prefixLength(),
                 .uri = ns == nullptr ? nullptr : ns->uri}; // of the table, if it is one
    state.rootPending = false;
  }
  wroteTo(ctx, to, !terminate);
  return true;
}

inline bool endPlainElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns) {
  if (!mayBegin(ctx)) return false;
  if (ctx->internals->encode.tagOpen) {
    if (!hasRoom(ctx->buffer, 2)) return false;
    char *to = ctx->buffer.data + ctx->buffer.byteIndex;
    *to++ = '/';
    wroteTo(ctx, closeTag(ctx, to), false);
    return true;
  }
  const TagStart *tagStart = ctx->internals->namespaces.tagStartOf(ns);
  if (tagStart == nullptr || !hasRoom(ctx->buffer, tagRoom)) return false;
  char *const start = ctx->buffer.data + ctx->buffer.byteIndex;
  char *to = writeTagStart(start + 1, *tagStart, localName);
  if (to == nullptr) return giveUp(ctx);
  start[0] = '<';
  start[1] = '/';
  *to++ = '>';
  wroteTo(ctx, to, false);
  return true;
}

// Content of an element. Kind: what all bytes of a text must be to be written as they are.
template <class Kind>
inline bool writePlainElement(RuntimeContext *ctx, Text text, const char *localName, const RtxNamespace *ns) {
  if (text.length == 0 || !mayBegin(ctx) || ctx->internals->encode.rootPending) return false;
  const TagStart *tagStart = ctx->internals->namespaces.tagStartOf(ns);
  if (tagStart == nullptr || !hasRoom(ctx->buffer, 2 * tagRoom + text.length)) return false;
  char *const start = closeTag(ctx, ctx->buffer.data + ctx->buffer.byteIndex);
  char *to = writeTagStart(start, *tagStart, localName);
  if (to == nullptr) return giveUp(ctx);
  const size_t nameLength = static_cast<size_t>(to - start) - 1;
  *to++ = '>';
  if (!copyIf<Kind>(to, text.bytes, text.length)) return giveUp(ctx);
  to += text.length;
  *to++ = '<';
  *to++ = '/';
  copyShort(to, start + 1, nameLength);
  to += nameLength;
  *to++ = '>';
  wroteTo(ctx, to, false);
  return true;
}

// Content alone.
template <class Kind> inline bool writePlainContent(RuntimeContext *ctx, Text text) {
  if (text.length == 0 || !mayBegin(ctx) || !hasRoom(ctx->buffer, text.length + 1)) return false;
  char *to = closeTag(ctx, ctx->buffer.data + ctx->buffer.byteIndex);
  if (!copyIf<Kind>(to, text.bytes, text.length)) return giveUp(ctx);
  wroteTo(ctx, to + text.length, false);
  return true;
}

// Markup alone, which is taken as it is.
inline bool writeMarkup(RuntimeContext *ctx, Text text) {
  if (text.length == 0 || ctx->state == XMLSTATE_IN_ATTRIBUTES || !mayBegin(ctx)) return false;
  if (!hasRoom(ctx->buffer, text.length + 1)) return false;
  char *const to = closeTag(ctx, ctx->buffer.data + ctx->buffer.byteIndex);
  memcpy(to, text.bytes, text.length);
  wroteTo(ctx, to + text.length, false);
  return true;
}

// A piece of the value of an attribute.
template <class Kind> inline bool writePlainValue(RuntimeContext *ctx, Text text) {
  const RtxInternals &internals = *ctx->internals;
  if (text.length == 0 || !internals.bufferIsOutput || !hasRoom(ctx->buffer, text.length)) return false;
  char *const to = ctx->buffer.data + ctx->buffer.byteIndex;
  if (!copyIf<Kind>(to, text.bytes, text.length)) return giveUp(ctx);
  wroteTo(ctx, to + text.length, internals.encode.tagOpen);
  return true;
}

template <class InContent, class InValue>
inline bool writePlain(RuntimeContext *ctx, Text text, const char *elementName, const RtxNamespace *ns) {
  if (elementName != nullptr) return writePlainElement<InContent>(ctx, text, elementName, ns);
  if (ctx->state == XMLSTATE_IN_ATTRIBUTES) return writePlainValue<InValue>(ctx, text);
  return writePlainContent<InContent>(ctx, text);
}

template <class Kind> inline bool writePlainAttribute(RuntimeContext *ctx, Text name, Text value) {
  RtxInternals &internals = *ctx->internals;
  OpenTag &tag = internals.encode.tag;
  RtxTextBuffer &buffer = ctx->buffer;
  if (!internals.bufferIsOutput || !internals.encode.tagOpen) return false;
  if (tag.hasUnknown || tag.attributesEnd != buffer.byteIndex || name.length == 0) return false;
  const uint64_t bit = AttributeName{name}.bit();
  if ((tag.attributes & bit) != 0 || !hasRoom(buffer, name.length + value.length + 4)) return false;
  char *to = buffer.data + buffer.byteIndex;
  *to++ = ' ';
  copyShort(to, name.bytes, name.length);
  to += name.length;
  *to++ = '=';
  *to++ = '"';
  if (!copyIf<Kind>(to, value.bytes, value.length)) return giveUp(ctx);
  to += value.length;
  *to++ = '"';
  tag.attributes |= bit;
  wroteTo(ctx, to, true);
  tag.attributesEnd = buffer.byteIndex;
  return true;
}

template <class Kind> int encodeAttribute(RuntimeContext *ctx, Text name, Text value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  return writePlainAttribute<Kind>(ctx, name, value) ? 0 : encodeAttributeInFull(ctx, name, value);
}

} // namespace

void EncodeState::destroy(Heap &heap) {
  heap.systemRelease(uriCopy);
  uriCopy = nullptr;
  uriCapacity = 0;
}

} // namespace rt

using rt::Encoder;

int rtXmlEncStartDocument(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  ctx->state = XMLSTATE_INITIAL;
  internals.encode.reset();
  internals.namespaces.beginDocument();
  Encoder encoder(ctx);
  encoder.xmlDeclaration();
  const int status = encoder.finish();
  if (status == 0) internals.encode.rootPending = true;
  return status;
}

int rtXmlEncEndDocument(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  const bool unfinished = internals.encode.tagOpen || !internals.bufferIsOutput;
  internals.encode.reset();
  internals.namespaces.endDocument();
  return unfinished ? STATUS_WRITE_FAILED : 0;
}

int rtXmlEncStartElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns,
                         const RtxNsDeclList *declarations, bool terminate) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const bool declares = declarations != nullptr && declarations->items.head != nullptr;
  if (!declares && rt::startPlainElement(ctx, localName, ns, terminate)) return 0;
  return rt::startElement(ctx, localName, ns, declarations, terminate);
}

int rtXmlEncNSAttrs(RuntimeContext *ctx, const RtxNsDeclList *declarations) {
  Encoder encoder(ctx);
  if (encoder.mayWriteAttribute()) {
    if (declarations == nullptr) {
      encoder.declareContext();
    } else {
      encoder.declareList(*declarations);
    }
  }
  return encoder.finish();
}

int rtXmlEncTermStartElement(RuntimeContext *ctx) {
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.terminateOpenTag();
  return encoder.finish();
}

int rtXmlEncEndElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  return rt::endPlainElement(ctx, localName, ns) ? 0 : rt::endElement(ctx, localName, ns);
}

int rtXmlEncString(RuntimeContext *ctx, const RtxXmlString *text, const char *elementName, const RtxNamespace *ns) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Text content = rt::textOf(text == nullptr ? nullptr : text->value);
  const bool inSection = text != nullptr && text->cdata;
  if (!inSection && rt::writePlain<rt::PlainInContent, rt::PlainInMarkup>(ctx, content, elementName, ns)) return 0;
  const rt::ContentKind kind = inSection ? rt::ContentKind::Section : rt::ContentKind::Characters;
  return rt::encodeElement(ctx, elementName, ns, {kind, content});
}

int rtXmlEncUTF8Str(RuntimeContext *ctx, const char *text, const char *elementName, const RtxNamespace *ns) {
  const RtxXmlString whole = {false, text};
  return rtXmlEncString(ctx, &whole, elementName, ns);
}

int rtXmlEncUInt(RuntimeContext *ctx, uint32_t value, const char *elementName, const RtxNamespace *ns) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Digits digits(value);
  if (rt::writePlain<rt::AnyBytes, rt::AnyBytes>(ctx, digits.text(), elementName, ns)) return 0;
  return rt::encodeElement(ctx, elementName, ns, {rt::ContentKind::Digits, digits.text()});
}

int rtXmlEncHexBinary(RuntimeContext *ctx, uint32_t length, const uint8_t *bytes, const char *elementName,
                      const RtxNamespace *ns) {
  const rt::Text content = {reinterpret_cast<const char *>(bytes), length};
  return rt::encodeElement(ctx, elementName, ns, {rt::ContentKind::Bytes, content});
}

int rtXmlEncAny(RuntimeContext *ctx, const RtxXmlString *fragment, const char *elementName, const RtxNamespace *ns) {
  const rt::Text text = rt::textOf(fragment == nullptr ? nullptr : fragment->value);
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  if (text.bytes == nullptr) return 0;
  if (elementName == nullptr && rt::writeMarkup(ctx, text)) return 0;
  return rt::encodeElement(ctx, elementName, ns, {rt::ContentKind::Markup, text});
}

int rtXmlEncUTF8Attr2(RuntimeContext *ctx, const char *name, size_t nameLength, const char *value, size_t valueLength) {
  if (value == nullptr) valueLength = 0;
  return rt::encodeAttribute<rt::PlainInMarkup>(ctx, {name, nameLength}, {value, valueLength});
}

int rtXmlEncBoolAttr(RuntimeContext *ctx, bool value, const char *name, size_t nameLength) {
  const rt::Text text = value ? rt::Text{"true", 4} : rt::Text{"false", 5};
  return rt::encodeAttribute<rt::AnyBytes>(ctx, {name, nameLength}, text);
}

int rtXmlEncUIntAttr(RuntimeContext *ctx, uint32_t value, const char *name, size_t nameLength) {
  return rt::encodeAttribute<rt::AnyBytes>(ctx, {name, nameLength}, rt::Digits(value).text());
}

int rtXmlEncDecimalAttr(RuntimeContext *ctx, double value, const char *name, size_t nameLength) {
  char digits[rt::decimalDigits];
  const size_t length = rt::writeDecimal(value, digits);
  if (length == 0) return rt::usable(ctx) ? STATUS_INVALID_UTF8 : STATUS_BAD_CONTEXT;
  return rt::encodeAttribute<rt::AnyBytes>(ctx, {name, nameLength}, {digits, length});
}

int rtXmlEncAnyAttr(RuntimeContext *ctx, const RtxAttrList *attributes) {
  Encoder encoder(ctx);
  if (attributes == nullptr || !encoder.mayWriteAttribute()) return encoder.finish();
  for (const RtxListNode *node = attributes->items.head; node != nullptr && !encoder.failed(); node = node->next) {
    const RtxNamePair *pair = static_cast<const RtxNamePair *>(node->data);
    if (pair != nullptr) encoder.foreignAttribute(*pair);
  }
  return encoder.finish();
}
