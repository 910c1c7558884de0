#include "reader.h"

#include "internals.h"
#include "rtxError.h"
#include "rtxMemory.h"
#include "rtxText.h"
#include "usable.h"

#include <libxml/catalog.h>
#include <libxml/parserInternals.h>

#include <limits.h>
#include <new>
#include <string.h>

// The parser takes a document in one piece for a document that arrives in pieces, and then does not ask for more input
// near its end. That is worth a fourth of the time for small documents, but the member is not documented.
#ifndef IMSRUNTIME_PROGRESSIVE
#define IMSRUNTIME_PROGRESSIVE 1
#endif

namespace rt {

namespace {

// The dictionary keeps every name that it has ever seen, and beyond a limit takes no more. It is as quick with
// thousands of names as with one, but not with hundreds of thousands.
constexpr size_t dictionaryBytes = 256 * 1024;
constexpr int dictionaryNames = 1024;

constexpr int parserOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC;

const char *asText(const xmlChar *text) { return reinterpret_cast<const char *>(text); }

const char *position(const RtSaxReader &reader) { return asText(reader.source->cur); }

// ---- Failures

// Nothing is delivered from now on.
void stop(RtSaxReader &reader) { reader.skipped = reader.elements; }
bool stopped(const RtSaxReader &reader) { return reader.skipped == reader.elements; }

// Where the parser is, or the end of the document when it has let go of that.
const char *positionInDocument(const RtSaxReader &reader) {
  const char *at = position(reader);
  const uintptr_t offset = reinterpret_cast<uintptr_t>(at) - reinterpret_cast<uintptr_t>(reader.base);
  return offset <= reader.length ? at : reader.base + reader.length;
}

void record(RtSaxReader &reader, int status, const char *at, ReaderLine line) {
  reader.event = Event::fault;
  reader.faultAt = at;
  reader.status = status;
  stop(reader);
  rtxErrSetNewData(&reader.context, status, readerPath, line);
}

void recordReason(RtSaxReader &reader, const char *reason, const char *at, ReaderLine line) {
  rtxErrAddStrParm(&reader.context, reason);
  record(reader, STATUS_PARSE_FAILED, at, line);
}

void recordLimit(RtSaxReader &reader, const char *limit, size_t value, const char *at) {
  rtxErrAddStrParm(&reader.context, limit);
  rtxErrAddUIntParm(&reader.context, value > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(value));
  record(reader, STATUS_LIMIT_EXCEEDED, at, lineLimit);
}

// Text of one line, cut where it has no more room.
class Reason {
public:
  void add(const char *bytes, size_t count) {
    for (size_t i = 0; i < count && length < sizeof text - 1; i++)
      text[length++] = static_cast<unsigned char>(bytes[i]) < ' ' ? ' ' : bytes[i];
    text[length] = '\0';
  }
  void add(const char *more) { add(more, more == nullptr ? 0 : strlen(more)); }

  char text[256] = "";
  size_t length = 0;
};

// The parser's message. It may quote a part of the document that ends inside a character.
void recordMessage(RtSaxReader &reader, const xmlError &error) {
  Reason reason;
  const char *at = positionInDocument(reader);
  if (error.code == XML_ERR_TAG_NAME_MISMATCH) { // the message itself has a line number that is wrong
    reason.add("Opening and ending tag mismatch: ");
    reason.add(error.str1);
    reason.add(" and ");
    reason.add(error.str2);
    at = startOfTag(reader, at);
  } else if (error.message != nullptr) {
    const char *colon = strncmp(error.message, "xmlParse", 8) == 0 ? strchr(error.message, ':') : nullptr;
    reason.add(colon == nullptr ? error.message : colon + 2);
  }
  if (reason.length == 0) reason.add("not well-formed");
  while (reason.text[reason.length - 1] == ' ')
    reason.text[--reason.length] = '\0';
  if (rtxValidateUTF8(&reader.context, reason.text) != 0) {
    for (char &c : reason.text) {
      if (static_cast<unsigned char>(c) >= 0x80) c = '?';
    }
  }
  recordReason(reader, reason.text, at, lineNotWellFormed);
}

// Takes all that libxml2 has to say, also what it would print otherwise. Where it reports a fatal error it holds
// pointers into the input, so it is only told to wind up; the input stays whole.
void onError(void *user, xmlErrorPtr error) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  const bool noStorage = error->code == XML_ERR_NO_MEMORY;
  if (error->level != XML_ERR_FATAL && !noStorage) return;
  if (reader.status == 0 && reader.parsing) {
    if (noStorage)
      record(reader, STATUS_NO_MEMORY, positionInDocument(reader), lineStorage);
    else
      recordMessage(reader, *error);
  }
  if (reader.parser == nullptr) return;
  reader.parser->disableSAX = 1;
  reader.parser->instate = XML_PARSER_EOF;
}

// ---- Events

// The cold functions are what hardly any element needs.
[[gnu::cold, gnu::noinline]] void skipElement(RtSaxReader &reader) {
  reader.skipAsked = false;
  reader.skipped = reader.current;
  reader.endIsDelivered = reader.event == Event::text;
}

[[gnu::cold, gnu::noinline]] void refuseDepth(RtSaxReader &reader) {
  const uint32_t limit = static_cast<uint32_t>(reader.deepestAllowed - reader.elements);
  recordLimit(reader, "depthLimit", limit, startOfTag(reader, position(reader)));
  xmlStopParser(reader.parser);
}

[[gnu::cold, gnu::noinline]] void refuseText(RtSaxReader &reader) {
  recordLimit(reader, "textLimit", reader.textLimit, startOfText(reader, *reader.current));
  xmlStopParser(reader.parser);
}

[[gnu::cold, gnu::noinline]] void refuseName(RtSaxReader &reader, NameKind kind) {
  recordReason(reader,
               kind == NameKind::malformed ? "misplaced colon in an element's name"
                                           : "an element cannot have the prefix xmlns",
               startOfTag(reader, reader.current->tagEnd), lineNamespaces);
  xmlStopParser(reader.parser);
}

[[gnu::cold, gnu::noinline]] void refuseAttribute(RtSaxReader &reader, const AttributeCheck &check) {
  const char *at = startOfAttribute(reader, check.index);
  if (check.status == STATUS_PARSE_FAILED)
    recordReason(reader, check.reason, at, lineNamespaces);
  else if (check.status == STATUS_LIMIT_EXCEEDED)
    recordLimit(reader, check.reason, check.limit, at);
  else
    record(reader, check.status, at, lineStorage);
  xmlStopParser(reader.parser);
}

[[gnu::noinline]] bool takeAttributes(RtSaxReader &reader, const char *const *attributes) {
  const AttributeCheck check = bindDeclarations(reader.internals.heap, reader.namespaces, reader.names, attributes,
                                                reader.attributeLimit, reader.comparisons);
  if (check.status == 0) return true;
  refuseAttribute(reader, check);
  return false;
}

// Whether no name of a tag's attributes has anything to do with namespaces, and there are not too many of them.
inline bool arePlain(RtSaxReader &reader, const char *const *attributes) {
  const char *const *const surplus = attributes + 2 * size_t{reader.attributeLimit};
  for (; *attributes != nullptr; attributes += 2) {
    if (attributes == surplus || reader.names.partsOf(*attributes).kind != NameKind::plain) return false;
  }
  return true;
}

// Whether the document has no more names than it may have, those apart that the dictionary had before.
[[gnu::noinline]] bool countNames(RtSaxReader &reader, const char *at) {
  const uint32_t limit = reader.internals.options.nameLimit;
  const uint32_t count = static_cast<uint32_t>(xmlDictSize(reader.parser->dict) - reader.namesKept);
  if (count <= limit) {
    const uint32_t left = limit - count;
    const uint32_t misses = reader.names.misses;
    reader.missesUncounted = left < UINT32_MAX - misses ? misses + left : UINT32_MAX;
    return true;
  }
  recordLimit(reader, "nameLimit", limit, startOfTag(reader, at));
  xmlStopParser(reader.parser);
  return false;
}

// False: the parse has ended here.
[[gnu::always_inline]] inline bool openElement(RtSaxReader &reader, const char *name, const char *const *attributes) {
  if (reader.current == reader.deepestAllowed) [[unlikely]] {
    refuseDepth(reader);
    return false;
  }
  const NameParts &parts = reader.names.partsOf(name);
  OpenElement &element = *++reader.current;
  element.name = name;
  element.localName = parts.local;
  element.tagEnd = position(reader);
  element.text = nullptr;
  element.textLength = 0;
  element.outside = reader.namespaces.mark();
  if (parts.kind >= NameKind::prefixDeclaration) [[unlikely]] {
    refuseName(reader, parts.kind);
    return false;
  }
  reader.attributes = attributes;
  if (attributes != nullptr && !arePlain(reader, attributes) && !takeAttributes(reader, attributes)) return false;
  return reader.names.misses <= reader.missesUncounted || countNames(reader, element.tagEnd);
}

[[gnu::cold, gnu::noinline]] void startSkipped(RtSaxReader &reader, const char *name, const char *const *attributes) {
  if (!stopped(reader)) openElement(reader, name, attributes);
}

void onStartElement(void *user, const xmlChar *qualifiedName, const xmlChar **pairs) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  const char *name = asText(qualifiedName);
  const char *const *attributes = reinterpret_cast<const char *const *>(pairs);
  if (reader.skipped != nullptr) [[unlikely]]
    return startSkipped(reader, name, attributes);
  if (!openElement(reader, name, attributes)) return;
  const OpenElement &element = *reader.current;
  reader.event = Event::startTag;
  reader.context.buffer = {}; // what it shows from now on belongs to this tag
  const int result = reader.startElement(reader.handler, element.localName, element.name, reader.attributes);
  if ((result | reader.skipAsked) != 0) [[unlikely]]
    skipElement(reader);
}

void closeElement(RtSaxReader &reader) {
  const OpenElement &element = *reader.current--;
  reader.namespaces.restore(element.outside);
  if (reader.current->text == nullptr) {
    reader.current->text = element.text;
    reader.current->pieceLength = element.pieceLength;
  }
}

void deliverEnd(RtSaxReader &reader) {
  const OpenElement &element = *reader.current;
  reader.event = Event::endTag;
  reader.context.buffer = {};
  reader.endElement(reader.handler, element.localName, element.name);
}

[[gnu::cold, gnu::noinline]] void endSkipped(RtSaxReader &reader) {
  if (stopped(reader)) return;
  if (reader.skipped == reader.current) {
    reader.skipped = nullptr;
    if (reader.endIsDelivered) {
      reader.context.state = XMLSTATE_INITIAL;
      rtxMemBufReset(&reader.internals.readerInfo.text);
      deliverEnd(reader);
    }
  }
  closeElement(reader);
}

void onEndElement(void *user, const xmlChar *) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  if (reader.current == reader.elements) [[unlikely]]
    return;
  if (reader.skipped != nullptr) [[unlikely]]
    return endSkipped(reader);
  deliverEnd(reader);
  closeElement(reader);
}

void onCharacters(void *user, const xmlChar *bytes, int count) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  if (reader.skipped != nullptr || count <= 0) return;
  const char *text = asText(bytes);
  const size_t length = static_cast<size_t>(count);
  OpenElement &element = *reader.current;
  if (element.text == nullptr) {
    const uintptr_t offset = reinterpret_cast<uintptr_t>(text) - reinterpret_cast<uintptr_t>(reader.base);
    const bool inside = offset < reader.length;
    element.text = inside ? text : position(reader);
    element.pieceLength = inside ? 0 : length;
  }
  element.textLength += length;
  if (element.textLength > reader.textLimit) [[unlikely]]
    return refuseText(reader);
  reader.event = Event::text;
  reader.characters(reader.handler, text, length);
  if (reader.skipAsked) [[unlikely]]
    skipElement(reader);
}

// The parser has put names of its own into the dictionary.
void onStartDocument(void *user) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  reader.names.misses = 0;
  reader.namesKept = xmlDictSize(reader.parser->dict);
  reader.missesUncounted = reader.internals.options.nameLimit;
}

// The parser notes the catalogues that a document names, walks the list for each further one, and forgets to free it.
void dropCatalogues([[maybe_unused]] xmlParserCtxt &parser) {
#ifdef LIBXML_CATALOG_ENABLED
  if (parser.catalogs == nullptr) return;
  xmlCatalogFreeLocal(parser.catalogs);
  parser.catalogs = nullptr;
#endif
}

// Its name is in the dictionary now, and must have no colon: the parser has much to say about each that it meets.
void onProcessingInstruction(void *user, const xmlChar *name, const xmlChar *) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  dropCatalogues(*reader.parser);
  if (stopped(reader)) return;
  if (strchr(asText(name), ':') == nullptr) {
    countNames(reader, position(reader));
    return;
  }
  recordReason(reader, "a colon in the name of a processing instruction", startOfTag(reader, position(reader)),
               lineNamespaces);
  xmlStopParser(reader.parser);
}

void onDocumentType(void *user, const xmlChar *, const xmlChar *, const xmlChar *) {
  RtSaxReader &reader = *static_cast<RtSaxReader *>(user);
  if (reader.status == 0)
    recordReason(reader, "document type declarations are not allowed", startOfTag(reader, positionInDocument(reader)),
                 lineNotWellFormed);
  xmlStopParser(reader.parser);
}

// ---- The parser

// While it lives, libxml2 tells this thread's errors to the reader instead of printing them. The parser's own callback
// for errors would not do: some failures to allocate are reported without a parser. What the host has set comes back.
class ErrorsToReader {
public:
  explicit ErrorsToReader(RtSaxReader &reader)
      : function(xmlStructuredError), user(xmlStructuredErrorContext), hostFunction(function), hostUser(user) {
    function = onError;
    user = &reader;
  }
  ~ErrorsToReader() {
    function = hostFunction;
    user = hostUser;
  }
  ErrorsToReader(const ErrorsToReader &) = delete;
  ErrorsToReader &operator=(const ErrorsToReader &) = delete;

private:
  xmlStructuredErrorFunc &function; // libxml2's own, of this thread
  void *&user;
  const xmlStructuredErrorFunc hostFunction;
  void *const hostUser;
};

bool makeParser(RtSaxReader &reader) {
  if (reader.source != nullptr) return true;
  static const bool initialised = [&reader] {
    const ErrorsToReader errors(reader); // inside: no other thread may touch what is only being made ready
    xmlInitParser();
#ifdef LIBXML_CATALOG_ENABLED
    xmlInitializeCatalog(); // or the first document that names a catalogue would, unguarded
#endif
    return true;
  }();
  static_cast<void>(initialised);
  const ErrorsToReader errors(reader);
  if (reader.parser == nullptr) reader.parser = xmlNewParserCtxt();
  if (reader.parser == nullptr) return false;
  xmlParserCtxt &parser = *reader.parser;
  xmlCtxtUseOptions(&parser, parserOptions);
  *parser.sax = {};
  parser.sax->initialized = 1; // not the number that asks for the second generation of callbacks
  parser.sax->startDocument = onStartDocument;
  parser.sax->startElement = onStartElement;
  parser.sax->endElement = onEndElement;
  parser.sax->characters = onCharacters;
  parser.sax->ignorableWhitespace = onCharacters;
  parser.sax->processingInstruction = onProcessingInstruction;
  parser.sax->internalSubset = onDocumentType;
  parser.userData = &reader;
  reader.source = xmlNewInputStream(&parser);
  return reader.source != nullptr;
}

void boundDictionary(RtSaxReader &reader) {
  if (xmlDictGetUsage(reader.parser->dict) <= dictionaryBytes && xmlDictSize(reader.parser->dict) <= dictionaryNames)
    return;
  xmlDictPtr fresh = xmlDictCreate();
  if (fresh == nullptr) return;
  xmlDictSetLimit(fresh, XML_MAX_DICTIONARY_LIMIT);
  xmlDictFree(reader.parser->dict);
  reader.parser->dict = fresh;
  reader.names.forget();
}

// Parses what is behind the first skip bytes; behind the last one there is a NUL.
void runParser(RtSaxReader &reader, size_t skip) {
  const ErrorsToReader errors(reader);
  xmlParserCtxt &parser = *reader.parser;
  xmlParserInput &source = *reader.source;
  dropCatalogues(parser);
  xmlCtxtReset(&parser);
  boundDictionary(reader);
  source.base = reinterpret_cast<const xmlChar *>(reader.base);
  source.cur = source.base + skip;
  source.end = source.base + reader.length;
  source.length = static_cast<int>(reader.length);
  source.line = source.col = 1;
  source.consumed = 0;
  source.standalone = -1;
  if (inputPush(&parser, &source) < 0) {
    if (reader.status == 0) record(reader, STATUS_NO_MEMORY, reader.base, lineStorage);
    return;
  }
  parser.progressive = IMSRUNTIME_PROGRESSIVE;
  const int result = xmlParseDocument(&parser);
  parser.progressive = 0;
  if (reader.status == 0) {
    if (result != 0)
      recordMessage(reader, parser.lastError);
    else if (source.cur != source.end)
      recordReason(reader, "a zero byte in the document", position(reader), lineNotWellFormed);
  }
  inputPop(&parser);
}

// ---- The document

void recordEncoding(RtSaxReader &reader, Text name, const char *fault, const char *at) {
  Reason reason;
  reason.add("the encoding ");
  reason.add(name.bytes, name.length);
  reason.add(fault);
  recordReason(reader, reason.text, at, lineEncoding);
}

// Leaves the document in reader.text.
void transcodeInput(RtSaxReader &reader, const Encoding &encoding) {
  const ErrorsToReader errors(reader);
  const size_t limit = reader.internals.options.inputLimit;
  const Transcoding result =
      transcode(reader.internals.heap, encoding, {reader.base, reader.length}, limit, reader.text);
  if (reader.status != 0) return;
  const char *at = encoding.declared ? encoding.name.bytes : reader.base;
  if (result == Transcoding::unknownEncoding) return recordEncoding(reader, encoding.name, " is not supported", at);
  if (result == Transcoding::noMemory) return record(reader, STATUS_NO_MEMORY, at, lineStorage);
  // The declaration was read as ASCII. In an encoding where it means something else it contradicts itself.
  if (encoding.declared && !Text{reader.text.bytes, reader.text.length}.begins("<?xml"))
    return recordEncoding(reader, encoding.name, " contradicts the declaration that names it", at);
  reader.base = reader.text.bytes;
  reader.length = reader.text.length;
  reader.transcoded = true;
  if (result == Transcoding::malformed)
    recordEncoding(reader, encoding.name, " does not fit the bytes of the document", reader.base + reader.length);
  else if (result == Transcoding::tooLong)
    recordLimit(reader, "inputLimit", limit, reader.base);
}

// The parser reads up to a NUL.
void copyInput(RtSaxReader &reader) {
  reader.text.length = 0;
  if (!reader.text.reserve(reader.internals.heap, reader.length)) {
    record(reader, STATUS_NO_MEMORY, reader.base, lineStorage);
    return;
  }
  memcpy(reader.text.bytes, reader.base, reader.length);
  reader.text.bytes[reader.length] = '\0';
  reader.text.length = reader.length;
  reader.base = reader.text.bytes;
}

void readDocument(RtSaxReader &reader) {
  const size_t limit = reader.internals.options.inputLimit;
  if (reader.length > limit || reader.length > INT_MAX - 1)
    return recordLimit(reader, "inputLimit", limit, reader.base);
  const Encoding encoding = encodingOf({reader.base, reader.length});
  if (!encoding.name.empty())
    transcodeInput(reader, encoding);
  else if (!reader.internals.inputTerminated)
    copyInput(reader);
  if (reader.status != 0) return;
  const Text label = contradictingLabel(encoding, {reader.base, reader.length});
  if (!label.empty()) return recordEncoding(reader, label, " contradicts how the document begins", label.bytes);
  const size_t chosen = reader.internals.options.tagLimit;
  const size_t tagLimit = chosen < leastTagLimit ? leastTagLimit : chosen;
  const LongTag tag = findLongTag({reader.base, reader.length}, reader.attributeLimit, tagLimit);
  if (tag.surplus != nullptr) return recordLimit(reader, "attributeLimit", reader.attributeLimit, tag.surplus);
  if (tag.tooLong != nullptr) return recordLimit(reader, "tagLimit", tagLimit, tag.tooLong);
  runParser(reader, reader.transcoded ? 0 : encoding.skip);
}

} // namespace

RtSaxReader *keptReader(RuntimeContext *ctx) {
  RtxInternals &internals = *ctx->internals;
  if (internals.reader == nullptr) {
    void *storage = internals.heap.systemAllocate(sizeof(RtSaxReader));
    if (storage != nullptr) internals.reader = new (storage) RtSaxReader(ctx);
  }
  return internals.reader;
}

void destroyReader(RtxInternals &internals) {
  RtSaxReader *reader = internals.reader;
  if (reader == nullptr) return;
  if (reader->source != nullptr) xmlFreeInputStream(reader->source);
  if (reader->parser != nullptr) xmlFreeParserCtxt(reader->parser);
  reader->text.destroy(internals.heap);
  reader->fragment.inside.destroy(internals.heap);
  reader->fragment.fromOutside.destroy(internals.heap);
  internals.heap.systemRelease(reader);
  internals.reader = nullptr;
  internals.readerActive = false;
}

} // namespace rt

RtSaxReader::RtSaxReader(RuntimeContext *owner)
    : context(*owner), internals(*owner->internals), namespaces(internals.namespaces) {}

RtSaxReader *rtSaxCCreateXmlReader(RuntimeContext *ctx, void *handler, RtSaxStartElement startElement,
                                   RtSaxEndElement endElement, RtSaxCharacters characters) {
  if (!rt::usable(ctx) || startElement == nullptr || endElement == nullptr || characters == nullptr) return nullptr;
  RtxInternals &internals = *ctx->internals;
  if (internals.readerActive || internals.bufferIsOutput || ctx->buffer.data == nullptr) return nullptr;
  RtSaxReader *reader = rt::keptReader(ctx);
  if (reader == nullptr || !rt::makeParser(*reader)) return nullptr;
  reader->handler = handler;
  reader->startElement = startElement;
  reader->endElement = endElement;
  reader->characters = characters;
  reader->input = ctx->buffer;
  reader->outer = internals.namespaces.hideOuter();
  reader->errorLimit = internals.options.errorLimit;
  reader->errorCount = 0;
  const uint32_t depth = internals.options.depthLimit;
  const uint32_t attributes = internals.options.attributeLimit;
  reader->attributeLimit = attributes < rt::mostAttributes ? attributes : rt::mostAttributes;
  reader->textLimit = internals.options.textLimit;
  reader->deepestAllowed = reader->elements + (depth < rt::deepest ? depth : rt::deepest);
  ctx->state = XMLSTATE_INITIAL;
  rtxMemBufReset(&internals.readerInfo.text);
  internals.readerActive = true;
  return reader;
}

int rtSaxCParse(RtSaxReader *reader) {
  if (reader == nullptr || !reader->internals.readerActive || reader->parsing) return STATUS_BAD_CONTEXT;
  reader->parsing = true;
  reader->transcoded = false;
  reader->skipAsked = false;
  reader->lines = {};
  reader->found = {};
  // The rest is for the fragments themselves. What does not fit is not copied again for each further fragment.
  reader->fragment.borrowable = reader->internals.options.heapLimit / 8;
  reader->status = 0;
  reader->current = reader->elements;
  reader->skipped = nullptr;
  reader->comparisons = rt::comparisonLimit;
  reader->base = reader->input.data;
  reader->length = reader->input.size;
  reader->elements[0] = {};
  rt::readDocument(*reader);
  reader->event = rt::Event::none;
  reader->parsing = false;
  return reader->status;
}

void rtSaxCReleaseReader(RtSaxReader *reader) {
  if (reader == nullptr || !reader->internals.readerActive || reader->parsing) return;
  reader->internals.readerActive = false;
  reader->internals.namespaces.showOuter(reader->outer);
  reader->context.buffer = reader->input;
  reader->internals.bufferIsOutput = false;
  rtxMemBufReset(&reader->internals.readerInfo.text);
}
