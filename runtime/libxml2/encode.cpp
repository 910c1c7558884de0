#include "encodeState.h"
#include "escape.h"
#include "internals.h"
#include "rtxMemory.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

struct Text {
  const char *bytes;
  size_t length;
};

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

inline Name nameOf(const RuntimeContext *ctx, const char *localName, const RtxNamespace *ns) {
  Name name = {{"", 0}, textOf(localName)};
  if (ns != nullptr && ns->prefix != nullptr)
    name.prefix = {ns->prefix, ctx->internals->namespaces.lengthOfPrefix(ns->prefix)};
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

// One primitive at work. What it writes counts when finish() succeeds; a failure leaves the output and the state as
// they were. After a failure nothing more is written, so that callers need not ask after each step.
//
// Steps that are rare take an encoder by value and return it, out of line. So the address of the one at work is never
// taken, and the common steps have its members in registers.
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
    if (status != 0) return rollBack(*this);
    ctx->buffer.byteIndex = position();
    state().tagOpen = tagOpen;
    return 0;
  }

  // ---- Elements

  void startElement(const char *localName, const RtxNamespace *ns, const RtxNsDeclList *declarations, bool terminate) {
    if (tagOpen) *this = withTagClosed(*this);
    const Name name = nameOf(ctx, localName, ns);
    if (terminate && declarations == nullptr && !state().rootPending) return writeWholeStart(name, false);
    OpenTag tag;
    writeStart(tag, name, ns);
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
    if (tagOpen) {
      *this = withTagEmpty(*this);
    } else {
      writeEnd(nameOf(ctx, localName, ns));
    }
  }

  void terminateOpenTag() {
    if (refusesMarkup()) return;
    if (!tagOpen) return fail(STATUS_WRITE_FAILED);
    closeTag();
  }

  // Writes what content writes, within an element unless elementName is null. An element without content is "<a/>".
  template <class Content>
  void simpleElement(const char *elementName, const RtxNamespace *ns, bool empty, Content content) {
    if (elementName == nullptr) {
      if (empty) return;
      if (!inAttributes() && tagOpen) *this = withTagClosed(*this);
      content();
      return;
    }
    if (tagOpen) *this = withTagClosed(*this);
    const Name name = nameOf(ctx, elementName, ns);
    const size_t start = position();
    const bool isRoot = state().rootPending;
    if (isRoot) {
      *this = withRootStart(*this, name, ns, empty);
    } else {
      writeWholeStart(name, empty);
    }
    if (!empty) {
      content();
      writeEndOf(start + 1, name.length());
    }
    if (isRoot && !failed()) state().rootPending = false;
  }

  // ---- Content

  bool inAttributes() const { return ctx->state == XMLSTATE_IN_ATTRIBUTES; }

  void put(Text text) {
    if (!room(text.length)) return;
    copyShort(next, text.bytes, text.length);
    next += text.length;
  }

  void markup(Text text) {
    if (inAttributes()) return fail(STATUS_WRITE_FAILED);
    put(text);
  }

  void escaped(Text text, Escape escape) {
    if (!room(text.length)) return; // nothing is written in fewer bytes than it has
    const size_t plain = copyPlain(next, text.bytes, text.length, escape);
    next += plain;
    if (plain != text.length) *this = withRest(*this, {text.bytes + plain, text.length - plain}, escape);
  }

  void cdata(Text text) { *this = withSection(*this, text); }

  void hexadecimal(const uint8_t *bytes, size_t length) {
    if (length > SIZE_MAX / 2) return fail(STATUS_BUFFER_OVERFLOW);
    if (!room(2 * length)) return;
    constexpr char digit[] = "0123456789ABCDEF";
    char *to = next;
    for (size_t i = 0; i < length; i++) {
      *to++ = digit[bytes[i] >> 4];
      *to++ = digit[bytes[i] & 0xF];
    }
    next = to;
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

  bool room(size_t count) {
    if (static_cast<size_t>(end - next) >= count) [[likely]]
      return true;
    *this = grown(*this, count);
    return status == 0;
  }

  [[gnu::noinline]] static Encoder grown(Encoder encoder, size_t count) {
    if (encoder.failed()) return encoder;
    RtxTextBuffer &buffer = encoder.ctx->buffer;
    const size_t start = buffer.byteIndex;
    const size_t at = encoder.position();
    buffer.byteIndex = at; // what is written so far has to move along
    const int result = rtxCheckBuffer(encoder.ctx, count);
    buffer.byteIndex = start;
    encoder.next = buffer.data + at;
    encoder.end = buffer.data + buffer.size;
    if (result != 0) encoder.fail(result);
    return encoder;
  }

  // What was there before ended with a NUL if its writer put one; that may be overwritten by now.
  [[gnu::noinline]] static int rollBack(Encoder encoder) {
    if (encoder.next != nullptr && encoder.position() > encoder.ctx->buffer.byteIndex)
      encoder.ctx->buffer.data[encoder.ctx->buffer.byteIndex] = '\0';
    return encoder.status;
  }

  // With the rest of a text, whose first character cannot simply be copied.
  [[gnu::noinline]] static Encoder withRest(Encoder encoder, Text text, Escape escape) {
    while (text.length != 0) {
      const Escaped first = escapeFirst(text.bytes, text.length, escape);
      if (first.taken == 0) {
        encoder.fail(STATUS_INVALID_UTF8);
        break;
      }
      encoder.put({first.bytes, first.length});
      text = {text.bytes + first.taken, text.length - first.taken};
      if (!encoder.room(text.length)) break;
      const size_t plain = copyPlain(encoder.next, text.bytes, text.length, escape);
      encoder.next += plain;
      text = {text.bytes + plain, text.length - plain};
    }
    return encoder;
  }

  // With a text in a CDATA section. Neither "]]>" nor a carriage return can stand in one: both end it, and another
  // begins behind.
  [[gnu::noinline]] static Encoder withSection(Encoder encoder, Text text) {
    if (!isXmlText(text.bytes, text.length)) encoder.fail(STATUS_INVALID_UTF8);
    encoder.put({"<![CDATA[", 9});
    size_t from = 0;
    for (size_t i = 0; i < text.length; i++) {
      const char byte = text.bytes[i];
      const bool endsSection = byte == '>' && i >= 2 && text.bytes[i - 1] == ']' && text.bytes[i - 2] == ']';
      if (!endsSection && byte != '\r') continue;
      encoder.put({text.bytes + from, i - from});
      if (endsSection) {
        encoder.put({"]]><![CDATA[", 12});
        from = i;
      } else {
        encoder.put({"]]>&#13;<![CDATA[", 17});
        from = i + 1;
      }
    }
    encoder.put({text.bytes + from, text.length - from});
    encoder.put({"]]>", 3});
    return encoder;
  }

  [[gnu::noinline]] static Encoder withTagClosed(Encoder encoder) {
    if (!encoder.refusesMarkup()) encoder.closeTag();
    return encoder;
  }

  [[gnu::noinline]] static Encoder withTagEmpty(Encoder encoder) {
    if (encoder.refusesMarkup()) return encoder;
    encoder.addRootDeclaration(encoder.state().tag);
    encoder.put({"/>", 2});
    encoder.tagOpen = false;
    return encoder;
  }

  [[gnu::noinline]] static Encoder withRootStart(Encoder encoder, Name name, const RtxNamespace *ns, bool empty) {
    OpenTag tag;
    encoder.writeStart(tag, name, ns);
    encoder.addRootDeclaration(tag);
    encoder.put(empty ? Text{"/>", 2} : Text{">", 1});
    return encoder;
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

  void writeWholeStart(const Name &name, bool empty) {
    if (!room(name.length() + (empty ? 3 : 2))) return;
    char *to = next;
    *to = '<';
    to = name.writeTo(to + 1);
    if (empty) *to++ = '/';
    *to++ = '>';
    next = to;
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

  // The same for a name that stands in the output already.
  void writeEndOf(size_t nameAt, size_t nameLength) {
    if (!room(nameLength + 3)) return;
    char *to = next;
    *to++ = '<';
    *to++ = '/';
    copyShort(to, ctx->buffer.data + nameAt, nameLength);
    to += nameLength;
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
    const bool isPrefix = isNcName(prefix.bytes, prefix.length) && !same(prefix, {"xmlns", 5});
    if (prefix.length != 0 && !isPrefix) return fail(STATUS_INVALID_UTF8);
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
    escaped(value, escape);
    put({"\"", 1});
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
    if (ctx->internals->namespaces.tableEntry(uri) >= 0) return uri;
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

// Every other case of text.
[[gnu::noinline]] int encodeText(RuntimeContext *ctx, Text text, bool inSection, const char *elementName,
                                 const RtxNamespace *ns) {
  Encoder encoder(ctx);
  if (encoder.failed()) return encoder.finish();
  encoder.simpleElement(elementName, ns, text.length == 0 && !inSection, [&] {
    if (inSection) {
      encoder.cdata(text);
    } else {
      encoder.escaped(text, encoder.inAttributes() ? Escape::Attribute : Escape::Text);
    }
  });
  return encoder.finish();
}

// Whether a name can be written at once: there is an output, and no start tag has to be closed first.
inline bool isIdle(const RuntimeContext *ctx) {
  const RtxInternals &internals = *ctx->internals;
  return internals.bufferIsOutput && !internals.encode.tagOpen && !internals.encode.rootPending;
}

// The common case of an element of simple content: nothing is pending, there is room, and the text needs no escaping.
// False if it is another case; then nothing has been written that counts.
inline bool writePlainElement(RuntimeContext *ctx, Text text, const char *localName, const RtxNamespace *ns) {
  if (!isIdle(ctx) || localName == nullptr || text.length == 0) return false;
  const Name name = nameOf(ctx, localName, ns);
  RtxTextBuffer &buffer = ctx->buffer;
  const size_t nameLength = name.length();
  if (buffer.size - buffer.byteIndex < 2 * nameLength + 5 + text.length) return false;

  char *const start = buffer.data + buffer.byteIndex;
  *start = '<';
  char *to = name.writeTo(start + 1);
  *to++ = '>';
  if (copyPlain(to, text.bytes, text.length, Escape::Text) != text.length) return false;
  to += text.length;
  *to++ = '<';
  *to++ = '/';
  copyShort(to, start + 1, nameLength);
  to += nameLength;
  *to++ = '>';
  buffer.byteIndex = static_cast<size_t>(to - buffer.data);
  return true;
}

// The same for a tag without attributes, which begins with opening.
inline bool writePlainTag(RuntimeContext *ctx, Text opening, const char *localName, const RtxNamespace *ns) {
  if (!isIdle(ctx)) return false;
  const Name name = nameOf(ctx, localName, ns);
  RtxTextBuffer &buffer = ctx->buffer;
  if (buffer.size - buffer.byteIndex < opening.length + name.length() + 1) return false;
  char *to = buffer.data + buffer.byteIndex;
  copyShort(to, opening.bytes, opening.length);
  to = name.writeTo(to + opening.length);
  *to++ = '>';
  buffer.byteIndex = static_cast<size_t>(to - buffer.data);
  return true;
}

int encodeAttribute(RuntimeContext *ctx, Text name, Text value, Escape escape) {
  Encoder encoder(ctx);
  encoder.attribute(name, value, escape);
  return encoder.finish();
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
  constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  ctx->state = XMLSTATE_INITIAL;
  internals.encode.reset();
  internals.namespaces.beginDocument();
  Encoder encoder(ctx);
  encoder.put({declaration, sizeof declaration - 1});
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
  if (terminate && declarations == nullptr && rt::writePlainTag(ctx, {"<", 1}, localName, ns)) return 0;
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.startElement(localName, ns, declarations, terminate);
  return encoder.finish();
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
  if (rt::writePlainTag(ctx, {"</", 2}, localName, ns)) return 0;
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.endElement(localName, ns);
  return encoder.finish();
}

int rtXmlEncString(RuntimeContext *ctx, const RtxXmlString *text, const char *elementName, const RtxNamespace *ns) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Text content = rt::textOf(text == nullptr ? nullptr : text->value);
  const bool inSection = content.bytes != nullptr && text->cdata && ctx->state != XMLSTATE_IN_ATTRIBUTES;
  if (!inSection && rt::writePlainElement(ctx, content, elementName, ns)) return 0;
  return rt::encodeText(ctx, content, inSection, elementName, ns);
}

int rtXmlEncUTF8Str(RuntimeContext *ctx, const char *text, const char *elementName, const RtxNamespace *ns) {
  const RtxXmlString whole = {false, text};
  return rtXmlEncString(ctx, &whole, elementName, ns);
}

int rtXmlEncUInt(RuntimeContext *ctx, uint32_t value, const char *elementName, const RtxNamespace *ns) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Digits digits(value);
  if (rt::writePlainElement(ctx, digits.text(), elementName, ns)) return 0;
  Encoder encoder(ctx);
  if (!encoder.failed()) encoder.simpleElement(elementName, ns, false, [&] { encoder.put(digits.text()); });
  return encoder.finish();
}

int rtXmlEncHexBinary(RuntimeContext *ctx, uint32_t length, const uint8_t *bytes, const char *elementName,
                      const RtxNamespace *ns) {
  Encoder encoder(ctx);
  if (bytes == nullptr) length = 0;
  if (!encoder.failed())
    encoder.simpleElement(elementName, ns, length == 0, [&] { encoder.hexadecimal(bytes, length); });
  return encoder.finish();
}

int rtXmlEncAny(RuntimeContext *ctx, const RtxXmlString *fragment, const char *elementName, const RtxNamespace *ns) {
  Encoder encoder(ctx);
  if (encoder.failed() || fragment == nullptr || fragment->value == nullptr) return encoder.finish();
  const rt::Text text = rt::textOf(fragment->value);
  encoder.simpleElement(elementName, ns, text.length == 0, [&] { encoder.markup(text); });
  return encoder.finish();
}

int rtXmlEncUTF8Attr2(RuntimeContext *ctx, const char *name, size_t nameLength, const char *value, size_t valueLength) {
  if (value == nullptr) valueLength = 0;
  return rt::encodeAttribute(ctx, {name, nameLength}, {value, valueLength}, rt::Escape::AttributeBytes);
}

int rtXmlEncBoolAttr(RuntimeContext *ctx, bool value, const char *name, size_t nameLength) {
  const rt::Text text = value ? rt::Text{"true", 4} : rt::Text{"false", 5};
  return rt::encodeAttribute(ctx, {name, nameLength}, text, rt::Escape::AttributeBytes);
}

int rtXmlEncUIntAttr(RuntimeContext *ctx, uint32_t value, const char *name, size_t nameLength) {
  return rt::encodeAttribute(ctx, {name, nameLength}, rt::Digits(value).text(), rt::Escape::AttributeBytes);
}

int rtXmlEncDecimalAttr(RuntimeContext *ctx, double value, const char *name, size_t nameLength) {
  char digits[rt::decimalDigits];
  const size_t length = rt::writeDecimal(value, digits);
  if (length == 0) return rt::usable(ctx) ? STATUS_INVALID_UTF8 : STATUS_BAD_CONTEXT;
  return rt::encodeAttribute(ctx, {name, nameLength}, {digits, length}, rt::Escape::AttributeBytes);
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
