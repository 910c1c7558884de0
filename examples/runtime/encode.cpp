// The encoder primitives.
#include "rtXmlEncode.h"

#include "context.h"
#include "decimal.h"
#include "escape.h"

#include <stdio.h>

using namespace tiny;

namespace {

std::string_view viewOf(const char *text) { return text ? std::string_view(text) : std::string_view(""); }

// One primitive at work. After a failure it writes nothing more, so that callers need not ask after each step, and
// finish() leaves the output and the open tag as they were.
class Writer {
public:
  explicit Writer(RuntimeContext *context) : ctx(context) {
    if (!usable(ctx)) {
      status = STATUS_BAD_CONTEXT;
      return;
    }
    start = ctx->buffer.byteIndex;
    before = tag = ctx->internals->openTag;
    if (ctx->internals->direction != Direction::output) status = STATUS_WRITE_FAILED;
  }

  int finish() {
    if (status == STATUS_BAD_CONTEXT) return status;
    ctx->internals->openTag = status == 0 ? tag : before;
    if (status != 0) ctx->buffer.byteIndex = start;
    return status;
  }

  bool failed() const { return status != 0; }
  void fail(int why) {
    if (!failed()) status = why;
  }

  // ---- Text

  void put(std::string_view text) {
    if (failed()) return;
    status = rtxCheckBuffer(ctx, text.size());
    if (failed() || text.empty()) return;
    memcpy(ctx->buffer.data + ctx->buffer.byteIndex, text.data(), text.size());
    ctx->buffer.byteIndex += text.size();
  }

  // unchecked: only control characters are looked for.
  void putEscaped(std::string_view text, bool inAttribute, bool unchecked = false) {
    while (!text.empty() && !failed()) {
      const size_t taken = characterOf(text, unchecked);
      const char *reference = referenceFor(text.front(), inAttribute);
      put(reference ? std::string_view(reference) : std::string_view(text.data(), taken));
      text.remove_prefix(taken);
    }
  }

  // A section holds neither "]]>" nor a carriage return: it ends before, and another one begins behind.
  void putSection(std::string_view text) {
    put("<![CDATA[");
    for (size_t brackets = 0; !text.empty() && !failed();) {
      const size_t taken = characterOf(text, false);
      if (text.front() == '>' && brackets >= 2) put("]]><![CDATA[");
      brackets = text.front() == ']' ? brackets + 1 : 0;
      put(text.front() == '\r' ? std::string_view("]]>&#13;<![CDATA[") : std::string_view(text.data(), taken));
      text.remove_prefix(taken);
    }
    put("]]>");
  }

  void putText(std::string_view text, bool section) {
    if (section && !inAttributes()) {
      putSection(text);
    } else {
      putEscaped(text, inAttributes());
    }
  }

  void putNumber(uint32_t value) {
    char digits[16];
    snprintf(digits, sizeof digits, "%lu", static_cast<unsigned long>(value));
    put(digits);
  }

  void putHexadecimal(const uint8_t *bytes, size_t length) {
    constexpr char digits[] = "0123456789ABCDEF";
    for (size_t i = 0; i < length && !failed(); ++i) {
      const char pair[] = {digits[bytes[i] >> 4], digits[bytes[i] & 15]};
      put({pair, 2});
    }
  }

  void putMarkup(std::string_view text) {
    if (inAttributes()) fail(STATUS_WRITE_FAILED);
    put(text);
  }

  // ---- Elements

  void startElement(const char *localName, const RtxNamespace *ns, const RtxNsDeclList *declarations, bool terminate) {
    closeTag();
    if (failed()) return;
    put("<");
    tag = {true, false, tag.rootToCome, false, ns && ns->uri, !before.uriSlot, ctx->buffer.byteIndex, 0, 0};
    putName(localName, ns);
    tag.nameEnd = ctx->buffer.byteIndex;
    tag.prefixLength = prefixFor(ns).size();
    keepUri(ns);
    if (declarations) declare(*declarations);
    if (terminate) closeTag();
  }

  void endElement(const char *localName, const RtxNamespace *ns) {
    if (!refusesMarkup() && tag.open) {
      declareRoot();
      put("/>");
      tag.open = false;
      return;
    }
    put("</");
    putName(localName, ns);
    put(">");
  }

  // Ends the open start tag, if there is one.
  void closeTag() {
    if (refusesMarkup() || !tag.open) return;
    declareRoot();
    put(">");
    tag.open = false;
  }

  // An element with content, or the content alone if it has no name.
  template <class Content> void element(const char *name, const RtxNamespace *ns, bool empty, Content content) {
    if (name) {
      startElement(name, ns, nullptr, !empty);
    } else if (!empty && !inAttributes()) {
      closeTag();
    }
    if (!empty) content();
    if (name) endElement(name, ns);
  }

  // ---- Attributes

  bool mayWriteAttribute() {
    if (!failed() && !tag.open) fail(STATUS_WRITE_FAILED);
    return !failed();
  }

  void attribute(std::string_view name, std::string_view value, bool unchecked) {
    if (!mayWriteAttribute()) return;
    if (hasAttribute("", name)) return fail(STATUS_WRITE_FAILED);
    writeAttribute("", name, value, unchecked);
  }

  void foreignAttribute(std::string_view name, std::string_view value) {
    if (!isQualifiedName(name)) return fail(STATUS_INVALID_UTF8);
    if (name == "xmlns") return declare(std::string_view(""), value);
    if (prefixOf(name) != "xmlns") return attribute(name, value, false);
    name.remove_prefix(6);
    declareOfRecord(name, value);
  }

  // ---- Declarations

  void declare(const RtxNsDeclList &list) {
    for (const RtxListNode *node = list.items.head; node && !failed(); node = node->next) {
      if (const RtxNsDecl *declaration = static_cast<const RtxNsDecl *>(node->data))
        declareOfRecord(viewOf(declaration->prefix), viewOf(declaration->uri));
    }
  }

  void declareContext() {
    size_t at = 0;
    while (const Binding *binding = ctx->internals->namespaces.nextDeclared(at))
      declare(std::string_view(binding->prefix), binding->uri);
  }

private:
  bool inAttributes() const { return !failed() && ctx->state == XMLSTATE_IN_ATTRIBUTES; }

  // An element neither begins nor ends inside an attribute's value.
  bool refusesMarkup() {
    if (tag.open && inAttributes()) fail(STATUS_WRITE_FAILED);
    return failed();
  }

  // Bytes of the first character of a text that is not empty. Fails if XML cannot carry it.
  size_t characterOf(std::string_view text, bool unchecked) {
    uint32_t code = 0;
    size_t taken = readCharacter(text, code);
    const bool single = unchecked && (text.front() & 0x80) != 0; // a byte as it is
    if (single) return 1;
    if (taken == 0 || !isXmlCharacter(code)) fail(STATUS_INVALID_UTF8);
    return taken == 0 ? 1 : taken;
  }

  std::string_view prefixFor(const RtxNamespace *ns) {
    if (!ns) return "";
    if (ns->prefix) return ns->prefix;
    const Binding *binding = ns->uri ? ctx->internals->namespaces.findUri(ns->uri, false) : nullptr;
    return binding ? binding->prefix : "";
  }

  void putName(const char *localName, const RtxNamespace *ns) {
    if (failed()) return;
    const std::string_view prefix = prefixFor(ns);
    put(prefix);
    if (!prefix.empty()) put(":");
    put(viewOf(localName));
  }

  // The caller's text need not outlive the call, the open tag does. That of the tag before stays, in case of a failure.
  void keepUri(const RtxNamespace *ns) {
    if (failed() || !tag.hasUri) return;
    Array<char> &kept = ctx->internals->openUri[tag.uriSlot];
    const size_t length = strlen(ns->uri);
    if (length > kept.capacity && !kept.reserve(ctx->internals->system, length - kept.count))
      return fail(STATUS_NO_MEMORY);
    kept.count = length;
    if (length > 0) memcpy(kept.items, ns->uri, length);
  }

  std::string_view output(size_t from, size_t to) const { return {ctx->buffer.data + from, to - from}; }
  std::string_view tagPrefix() const { return output(tag.nameAt, tag.nameAt + tag.prefixLength); }
  std::string_view tagUri() const {
    const Array<char> &kept = ctx->internals->openUri[tag.uriSlot];
    return {kept.items, kept.count};
  }

  // What a document's root is named by must be declared in it.
  void declareRoot() {
    if (failed() || !tag.isRoot || tag.declaresItself) return;
    const Binding *binding = ctx->internals->namespaces.find(tagPrefix());
    if (!binding || !*binding->uri || (!tag.hasUri && tag.prefixLength == 0)) return;
    declare(std::string_view(binding->prefix), binding->uri);
  }

  // Names in records are what somebody has sent; those of the codec and the host are not.
  void declareOfRecord(std::string_view prefix, std::string_view uri) {
    constexpr std::string_view xmlUri = "http://www.w3.org/XML/1998/namespace";
    const bool reserved = prefix == "xmlns" || uri == "http://www.w3.org/2000/xmlns/" ||
                          (prefix == "xml") != (uri == xmlUri) || (!prefix.empty() && uri.empty());
    if (reserved || (!prefix.empty() && !isNcName(prefix))) return fail(STATUS_INVALID_UTF8);
    declare(prefix, uri);
  }

  // A prefix is declared once, and not so that the tag's own name would move to another namespace.
  void declare(std::string_view prefix, std::string_view uri) {
    if (failed()) return;
    const bool ofTag = prefix == tagPrefix();
    if (ofTag && tag.hasUri && uri != tagUri()) return;
    const std::string_view stem = prefix.empty() ? "xmlns" : "xmlns:";
    if (hasAttribute(stem, prefix)) return;
    tag.declaresItself |= ofTag;
    writeAttribute(stem, prefix, uri, false);
  }

  void writeAttribute(std::string_view stem, std::string_view rest, std::string_view value, bool unchecked) {
    put(" ");
    put(stem);
    put(rest);
    put("=\"");
    putEscaped(value, true, unchecked);
    put("\"");
  }

  // Reads the tag again: all that writes into it, the codec included, writes blank, name, "=" and quoted value.
  bool hasAttribute(std::string_view stem, std::string_view rest) const {
    std::string_view text = output(tag.nameEnd, ctx->buffer.byteIndex);
    while (text.size() > 1) {
      text.remove_prefix(1);
      const size_t length = text.find('=');
      if (length == text.npos) return false;
      const std::string_view name(text.data(), length);
      if (name.size() == stem.size() + rest.size() && name.starts_with(stem) && name.ends_with(rest)) return true;
      for (int quotes = 0; quotes < 2; ++quotes) {
        const size_t quote = text.find('"');
        if (quote == text.npos) return false;
        text.remove_prefix(quote + 1);
      }
    }
    return false;
  }

  RuntimeContext *ctx;
  OpenTag tag = {};
  OpenTag before = {};
  size_t start = 0;
  int status = 0;
};

int writeText(RuntimeContext *ctx, std::string_view text, bool section, const char *name, const RtxNamespace *ns) {
  Writer writer(ctx);
  writer.element(name, ns, text.empty(), [&] { writer.putText(text, section); });
  return writer.finish();
}

int writeAttribute(RuntimeContext *ctx, std::string_view name, std::string_view value) {
  Writer writer(ctx);
  writer.attribute(name, value, true);
  return writer.finish();
}

} // namespace

// ---- Documents

int rtXmlEncStartDocument(RuntimeContext *ctx) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  ctx->state = XMLSTATE_INITIAL;
  ctx->internals->openTag = {};
  ctx->internals->namespaces.beginDocument();
  Writer writer(ctx);
  writer.put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  const int status = writer.finish();
  ctx->internals->openTag.rootToCome = status == 0;
  return status;
}

int rtXmlEncEndDocument(RuntimeContext *ctx) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const bool finished = ctx->internals->direction == Direction::output && !ctx->internals->openTag.open;
  ctx->internals->openTag = {};
  ctx->internals->namespaces.endDocument();
  return finished ? STATUS_OK : STATUS_WRITE_FAILED;
}

// ---- Elements

int rtXmlEncStartElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns,
                         const RtxNsDeclList *declarations, bool terminate) {
  Writer writer(ctx);
  writer.startElement(localName, ns, declarations, terminate);
  return writer.finish();
}

int rtXmlEncTermStartElement(RuntimeContext *ctx) {
  Writer writer(ctx);
  if (writer.mayWriteAttribute()) writer.closeTag();
  return writer.finish();
}

int rtXmlEncEndElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns) {
  Writer writer(ctx);
  writer.endElement(localName, ns);
  return writer.finish();
}

int rtXmlEncString(RuntimeContext *ctx, const RtxXmlString *text, const char *elementName, const RtxNamespace *ns) {
  return writeText(ctx, viewOf(text->value), text->cdata, elementName, ns);
}

int rtXmlEncUTF8Str(RuntimeContext *ctx, const char *text, const char *elementName, const RtxNamespace *ns) {
  return writeText(ctx, viewOf(text), false, elementName, ns);
}

int rtXmlEncUInt(RuntimeContext *ctx, uint32_t value, const char *elementName, const RtxNamespace *ns) {
  Writer writer(ctx);
  writer.element(elementName, ns, false, [&] { writer.putNumber(value); });
  return writer.finish();
}

int rtXmlEncHexBinary(RuntimeContext *ctx, uint32_t length, const uint8_t *bytes, const char *elementName,
                      const RtxNamespace *ns) {
  Writer writer(ctx);
  writer.element(elementName, ns, length == 0, [&] { writer.putHexadecimal(bytes, length); });
  return writer.finish();
}

int rtXmlEncAny(RuntimeContext *ctx, const RtxXmlString *fragment, const char *elementName, const RtxNamespace *ns) {
  Writer writer(ctx);
  if (!fragment->value) return usable(ctx) ? STATUS_OK : STATUS_BAD_CONTEXT;
  writer.element(elementName, ns, *fragment->value == '\0', [&] { writer.putMarkup(fragment->value); });
  return writer.finish();
}

// ---- Attributes

int rtXmlEncNSAttrs(RuntimeContext *ctx, const RtxNsDeclList *declarations) {
  Writer writer(ctx);
  if (!writer.mayWriteAttribute()) return writer.finish();
  if (declarations) {
    writer.declare(*declarations);
  } else {
    writer.declareContext();
  }
  return writer.finish();
}

int rtXmlEncUTF8Attr2(RuntimeContext *ctx, const char *name, size_t nameLength, const char *value, size_t valueLength) {
  return writeAttribute(ctx, {name, nameLength}, {value ? value : "", value ? valueLength : 0});
}

int rtXmlEncBoolAttr(RuntimeContext *ctx, bool value, const char *name, size_t nameLength) {
  return writeAttribute(ctx, {name, nameLength}, value ? "true" : "false");
}

int rtXmlEncUIntAttr(RuntimeContext *ctx, uint32_t value, const char *name, size_t nameLength) {
  char digits[16];
  snprintf(digits, sizeof digits, "%lu", static_cast<unsigned long>(value));
  return writeAttribute(ctx, {name, nameLength}, digits);
}

int rtXmlEncDecimalAttr(RuntimeContext *ctx, double value, const char *name, size_t nameLength) {
  char digits[decimalSize];
  const size_t length = writeDecimal(value, digits);
  if (length == 0) return usable(ctx) ? STATUS_INVALID_UTF8 : STATUS_BAD_CONTEXT;
  return writeAttribute(ctx, {name, nameLength}, {digits, length});
}

int rtXmlEncAnyAttr(RuntimeContext *ctx, const RtxAttrList *attributes) {
  Writer writer(ctx);
  if (!writer.mayWriteAttribute()) return writer.finish();
  for (const RtxListNode *node = attributes->items.head; node && !writer.failed(); node = node->next) {
    if (const RtxNamePair *pair = static_cast<const RtxNamePair *>(node->data))
      writer.foreignAttribute(viewOf(pair->name), viewOf(pair->value));
  }
  return writer.finish();
}
