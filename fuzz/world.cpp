#include "world.h"

#include "Catalogue.h"
#include "Engines.h"
#include "check.h"
#include "rtSax.h"
#include "rtXmlNamespace.h"

#include <algorithm>
#include <cstring>
#include <libxml/parser.h>

namespace fuzz {

using ims::DocumentSchema;
using ims::TypeSchema;

// ---- Contexts -------------------------------------------------------------------------------------------------

void *Storage::allocate(void *self, size_t size) {
  auto &storage = *static_cast<Storage *>(self);
  ++storage.asked;
  const bool fails = storage.onwards ? storage.asked >= storage.failing : storage.asked == storage.failing;
  if (storage.failing != 0 && fails) return nullptr;
  void *block = std::malloc(size);
  if (block) ++storage.alive;
  return block;
}

void Storage::release(void *self, void *block) {
  --static_cast<Storage *>(self)->alive;
  std::free(block);
}

namespace {

constexpr std::string_view goodBody = "<action>a</action>";

} // namespace

World::World() {
  static RuntimeContext *const other = rtxContextCreate(nullptr);
  ctx = other;
  rtxContextReset(ctx);
}

World::World(const Input &input) {
  static RuntimeContext *const plain = rtxContextCreate(nullptr);
  if (input.isPlain() && !input.freshContext) {
    ctx = plain;
    rtxContextReset(ctx);
    return;
  }
  kept = false;
  storage.failing = input.failingAllocation;
  storage.onwards = input.failingOnwards;
  RuntimeOptions options = input.options;
  options.allocate = Storage::allocate;
  options.release = Storage::release;
  options.allocatorUser = &storage;
  heapLimit = options.heapLimit;
  ctx = rtxContextCreate(&options);
  require(ctx != nullptr || storage.failing != 0, "a context is refused only for lack of storage");
}

World::~World() {
  if (kept) return;
  rtxContextFree(ctx);
  require(storage.alive == 0, "a context that is freed gives back all that it took");
}

void World::requireNothingLeft() {
  RtxHeapStats stats;
  rtxHeapStats(ctx, &stats);
  require(stats.blocks == 0 && stats.used == 0, "nothing stays behind on the heap");
  require(kept || stats.peakUsed <= heapLimit, "the heap keeps to its limit");
}

void World::requireUsable() {
  heal();
  rtxErrClear(ctx);
  const Input good(goodBody);
  Value value(ctx, *good.document);
  const int status = decode(ctx, good, value);
  const char *text = static_cast<const RtxXmlString *>(value.data())->value;
  require(status == 0 && text != nullptr && std::string_view(text) == "a", "a context is usable after any failure",
          [&] { return errors(ctx); });
}

// ---- Values ---------------------------------------------------------------------------------------------------

namespace {

size_t sizeOf(const DocumentSchema &document) {
  if (document.type) return document.type->size;
  switch (document.simple->kind) {
  case ims::Kind::text: return sizeof(RtxXmlString);
  case ims::Kind::hexBinary: return sizeof(RtxHexBinary);
  default: return sizeof(uint16_t);
  }
}

// Everything that print writes to stdout.
template <class Print> std::string captured(Print print) {
  static char *text = nullptr;
  static size_t length = 0;
  static FILE *const stream = open_memstream(&text, &length);
  FILE *const real = stdout;
  std::rewind(stream);
  stdout = stream;
  print();
  stdout = real;
  std::fflush(stream);
  return {text, length};
}

void replaceAll(std::string &text, std::string_view what, std::string_view with) {
  for (size_t at = text.find(what); at != text.npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
}

} // namespace

// Not a word more than the value, so that a write behind it is seen.
Value::Value(RuntimeContext *context, const DocumentSchema &schema)
    : ctx(context), document(schema), storage((sizeOf(schema) + sizeof(uint64_t) - 1) / sizeof(uint64_t)) {}

Value::~Value() {
  if (document.type) {
    ims::discardRecord(ctx, *document.type, data());
    return;
  }
  switch (document.simple->kind) {
  case ims::Kind::text: rtxMemHeapFreePtr(ctx, static_cast<RtxXmlString *>(data())->value); break;
  case ims::Kind::hexBinary: rtxMemHeapFreePtr(ctx, static_cast<RtxHexBinary *>(data())->bytes); break;
  default: break;
  }
}

std::string Value::printed() const {
  std::string text = captured([&] {
    if (document.type) {
      ims::printRecord("r", *document.type, data());
    } else if (document.simple->kind == ims::Kind::text) {
      rtxPrintCharStr("r", static_cast<const RtxXmlString *>(data())->value);
    } else if (document.simple->kind == ims::Kind::hexBinary) {
      const auto &bytes = *static_cast<const RtxHexBinary *>(data());
      rtxPrintHexBinary("r", bytes.length, bytes.bytes);
    } else {
      ims::printEnum("r", *document.simple->enumeration, *static_cast<const uint16_t *>(data()));
    }
  });
  replaceAll(text, "= <null>\n", "= \"\"\n");
  return text;
}

// ---- Reading --------------------------------------------------------------------------------------------------

namespace {

// Stands between the reader and a root's handler and cuts texts into pieces.
template <class Handler> struct Pieces {
  Handler handler;
  size_t length;

  static int start(void *self, const char *localName, const char *qualifiedName, const char *const *attributes) {
    auto &own = static_cast<Pieces *>(self)->handler;
    return own.startElement(&own, localName, qualifiedName, attributes);
  }
  static int end(void *self, const char *localName, const char *qualifiedName) {
    auto &own = static_cast<Pieces *>(self)->handler;
    return own.endElement(&own, localName, qualifiedName);
  }
  static int characters(void *self, const char *bytes, size_t count) {
    auto &pieces = *static_cast<Pieces *>(self);
    int status = 0;
    while (count != 0 && status == 0) {
      const std::vector<char> piece(bytes, bytes + (count < pieces.length ? count : pieces.length));
      status = pieces.handler.characters(&pieces.handler, piece.data(), piece.size());
      bytes += piece.size();
      count -= piece.size();
    }
    return status;
  }
};

template <class Handler, class Init>
int readInPieces(RuntimeContext *ctx, const DocumentSchema &document, size_t length, Init init) {
  Pieces<Handler> pieces;
  pieces.length = length;
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &pieces, Pieces<Handler>::start, Pieces<Handler>::end, Pieces<Handler>::characters);
  if (!reader) return rtxErrSetNewData(ctx, STATUS_READER_FAILED, "fuzz/world", 1);
  init(pieces.handler);
  pieces.handler.rootName = document.root;
  const ims::NamespaceFamily *namespaces = document.module->namespaces;
  int status =
      namespaces ? rtXmlNSSetURITable(ctx, namespaces->uris, namespaces->count) : rtXmlNSSetURITable(ctx, nullptr, 0);
  if (status != 0) rtxErrSetData(ctx, status, "fuzz/world", 2);
  if (status == 0) status = rtSaxCParse(reader);
  if (status == 0) status = rtxErrGetFirstError(ctx);
  ims::releaseDelegates(&pieces.handler);
  rtxMemHeapFreePtr(ctx, pieces.handler.delegateStorage);
  rtSaxCReleaseReader(reader);
  return status;
}

// The body as a context's input, as long as this lives.
class InputOf {
public:
  InputOf(RuntimeContext *context, const Input &input) : ctx(context) {
    if (!input.inPlace) {
      status = rtxSetInput(ctx, input.body.data(), input.body.size());
      return;
    }
    // Not a byte more than the document, so that a read behind it is seen.
    terminated.reserve(input.body.size() + 1);
    terminated.assign(input.body.begin(), input.body.end());
    terminated.push_back('\0');
    status = rtxSetInputZ(ctx, terminated.data(), input.body.size());
  }
  ~InputOf() { rtxSetInput(ctx, nullptr, 0); }
  InputOf(const InputOf &) = delete;
  InputOf &operator=(const InputOf &) = delete;

  int status;

private:
  RuntimeContext *ctx;
  std::vector<char> terminated;
};

} // namespace

int decode(RuntimeContext *ctx, const Input &input, Value &value) {
  const InputOf set(ctx, input);
  if (set.status != 0) return set.status;
  const DocumentSchema &document = *input.document;
  if (input.pieceLength == 0 || !document.type) return ims::decodeDocument(ctx, document, value.data());
  ims::initRecord(ctx, *document.type, value.data());
  return readInPieces<SaxTypeHandler>(ctx, document, input.pieceLength, [&](SaxTypeHandler &handler) {
    ims::initHandler(ctx, *document.type, &handler, value.data(), 0);
  });
}

int validate(RuntimeContext *ctx, const Input &input) {
  const InputOf set(ctx, input);
  if (set.status != 0) return set.status;
  const DocumentSchema &document = *input.document;
  if (input.pieceLength == 0 || !document.type) return ims::validateDocument(ctx, document);
  return readInPieces<VsaxTypeHandler>(ctx, document, input.pieceLength, [&](VsaxTypeHandler &handler) {
    ims::initHandler(ctx, *document.type, &handler, 0);
  });
}

// ---- Judging --------------------------------------------------------------------------------------------------

namespace {

// Follows the places of records through a body; they rarely go back.
class Places {
public:
  explicit Places(std::string_view text) : body(text) {}

  bool has(const RtxError &error) {
    if (error.line == 0) return error.column == 0 && error.offset == 0 && *error.elementPath == '\0';
    if (*error.elementPath != '\0' && *error.elementPath != '/') return false;
    if (error.transcoded) return error.offset <= 2 * body.size(); // a byte becomes two at most
    if (error.offset > body.size()) return false;
    if (error.offset < lineStart) {
      lineStart = 0;
      line = 1;
    }
    for (size_t end; (end = body.find('\n', lineStart)) < error.offset; ++line)
      lineStart = end + 1;
    return error.line == line && error.column == error.offset - lineStart + 1;
  }

private:
  std::string_view body;
  size_t lineStart = 0;
  uint32_t line = 1;
};

// Whether the limit on errors holds for it. It does not for the reasons that precede some of them, nor for the
// parser's.
bool isCounted(int status) {
  switch (status) {
  case STATUS_ROOT_MISMATCH:
  case STATUS_UNKNOWN_ATTRIBUTE:
  case STATUS_UNEXPECTED_ELEMENT:
  case STATUS_INVALID_CONTENT:
  case STATUS_INVALID_ATTRIBUTE:
  case STATUS_MISSING_ATTRIBUTE: return true;
  default: return false;
  }
}

} // namespace

void requireRecords(RuntimeContext *ctx, const Input &input, int status) {
  const auto all = [&] { return errors(ctx); };
  const uint32_t count = rtxErrCount(ctx);
  if (status != 0 && status != STATUS_NOT_SUPPORTED)
    require(count != 0 || input.options.errorLimit == 0, "a failure is recorded");
  if (status == 0) require(count == 0, "a success has no records", all);
  Places places(input.body);
  uint32_t kept = 0;
  uint32_t counted = 0;
  bool told = count == 0;
  for (; const RtxError *error = rtxErrAt(ctx, kept); ++kept) {
    require(places.has(*error), "an error has its place in the body", all);
    told = told || error->status == status;
    counted += isCounted(error->status);
  }
  require(counted <= input.options.errorLimit, "no more errors are recorded than the limit lets", all);
  // It is that of the first or of the last one; the first may not be kept.
  const bool firstKept = count == 1 || (input.options.errorsKept != 0 && input.failingAllocation == 0);
  require(told || !firstKept, "the status is that of an error", all);
  const uint64_t wanted = uint64_t{input.options.errorsKept} + 1;
  require(kept <= wanted, "no more errors are kept than the option wants", all);
  require(kept == (count < wanted ? count : wanted) || input.failingAllocation != 0,
          "as many errors are kept as the option wants", all);
}

std::string errors(RuntimeContext *ctx) {
  std::string all;
  for (uint32_t i = 0; rtxErrAt(ctx, i) != nullptr; ++i) {
    char line[512];
    rtxErrFormat(ctx, i, line, sizeof line);
    all += line;
    all += '\n';
  }
  return all;
}

namespace {

// That a name of a namespace is no URI does not make a document ill-formed.
void takeNamespaceError(void *broken, xmlErrorPtr error) {
  if (error->domain == XML_FROM_NAMESPACE && error->code != XML_WAR_NS_URI && error->code != XML_WAR_NS_URI_RELATIVE)
    *static_cast<bool *>(broken) = true;
}

class Document {
public:
  explicit Document(std::string_view text) {
    static xmlParserCtxtPtr const parser = xmlNewParserCtxt();
    xmlSetStructuredErrorFunc(&namespaceBroken, takeNamespaceError);
    document = xmlCtxtReadMemory(parser, text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NONET);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    wellFormed = document && parser->wellFormed;
  }
  ~Document() { xmlFreeDoc(document); }
  Document(const Document &) = delete;
  Document &operator=(const Document &) = delete;

  xmlDocPtr document;
  bool wellFormed;
  bool namespaceBroken = false;
};

} // namespace

Xml judge(std::string_view text) {
  const Document document(text);
  return !document.wellFormed ? Xml::broken : document.namespaceBroken ? Xml::wellFormed : Xml::namespaced;
}

bool hasRootOf(const DocumentSchema &schema, std::string_view text) {
  const Document document(text);
  if (!document.wellFormed) return false;
  const xmlNode &root = *xmlDocGetRootElement(document.document);
  const std::string_view uri = root.ns ? reinterpret_cast<const char *>(root.ns->href) : "";
  const std::string_view wanted = schema.declaration == ims::Declaration::none ? "" : schema.module->uri;
  return uri == wanted && std::string_view(reinterpret_cast<const char *>(root.name)) == schema.root;
}

// ---- Limits ---------------------------------------------------------------------------------------------------

namespace {

// The greatest of each kind in a body, told by a parser that is not ours. Exact only if the body is well-formed.
struct Extent {
  size_t depth = 0;
  size_t attributes = 0; // of a start tag, declarations included
  size_t textLength = 0; // directly inside an element
  bool wellFormed = false;
};

struct Measure {
  Extent extent;
  std::vector<size_t> texts;
};

void measureStart(void *self, const xmlChar *, const xmlChar *, const xmlChar *, int declarations, const xmlChar **,
                  int attributes, int, const xmlChar **) {
  auto &measure = *static_cast<Measure *>(self);
  measure.texts.push_back(0);
  measure.extent.depth = std::max(measure.extent.depth, measure.texts.size());
  measure.extent.attributes = std::max(measure.extent.attributes, static_cast<size_t>(declarations + attributes));
}

void measureEnd(void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
  static_cast<Measure *>(self)->texts.pop_back();
}

void measureText(void *self, const xmlChar *, int length) {
  auto &measure = *static_cast<Measure *>(self);
  if (measure.texts.empty()) return;
  measure.texts.back() += static_cast<size_t>(length);
  measure.extent.textLength = std::max(measure.extent.textLength, measure.texts.back());
}

Extent extentOf(std::string_view text) {
  Measure measure;
  xmlSAXHandler events = {};
  events.initialized = XML_SAX2_MAGIC;
  events.startElementNs = measureStart;
  events.endElementNs = measureEnd;
  events.characters = events.ignorableWhitespace = events.cdataBlock = measureText;
  bool broken = false;
  xmlSetStructuredErrorFunc(&broken, takeNamespaceError);
  measure.extent.wellFormed = xmlSAXUserParseMemory(&events, &measure, text.data(), static_cast<int>(text.size())) == 0;
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  return measure.extent;
}

} // namespace

void requireLimits(RuntimeContext *ctx, const Input &input, int status) {
  if (status != STATUS_LIMIT_EXCEEDED && (status != 0 || !input.limited)) return;
  const RuntimeOptions &options = input.options;
  const bool tooLong = input.body.size() > options.inputLimit;
  const Extent extent = extentOf(input.body);
  const bool tooDeep = extent.depth > options.depthLimit;
  const bool tooManyAttributes = extent.attributes > options.attributeLimit;
  const bool tooMuchText = extent.textLength > options.textLimit;
  const auto all = [&] { return errors(ctx); };
  if (status == 0) {
    require(!tooLong && !tooDeep && !tooManyAttributes && !tooMuchText, "what passes a limit is refused", all);
    return;
  }
  const RtxError *error = nullptr; // the newest
  for (uint32_t i = 0; const RtxError *next = rtxErrAt(ctx, i); ++i)
    error = next;
  require(error && error->status == status && error->paramCount == 2, "a limit is named", all);
  const std::string_view limit(error->params[0].text, error->params[0].length);
  const std::pair<std::string_view, bool> passed[] = {
      {"inputLimit", tooLong || error->transcoded},
      {"depthLimit", tooDeep || !extent.wellFormed},
      {"attributeLimit", tooManyAttributes || !extent.wellFormed},
      {"textLimit", tooMuchText || !extent.wellFormed},
      {"tagLimit", input.body.size() > std::max(options.tagLimit, size_t{2048}) || error->transcoded},
      {"nameLimit", input.body.size() > options.nameLimit}, // a name has a byte at least
      {"", input.failingAllocation != 0},
  };
  const bool holds = std::find(std::begin(passed), std::end(passed), std::pair(limit, true)) != std::end(passed);
  require(holds, "nothing is refused for a limit that it does not pass", all);
}

} // namespace fuzz
