#include "world.h"

#include "Catalogue.h"
#include "Engines.h"
#include "check.h"
#include "rtSax.h"
#include "rtXmlNamespace.h"

#include <cinttypes>
#include <cstring>
#include <libxml/parser.h>

namespace fuzz {

using ims::DocumentSchema;
using ims::TypeSchema;

// ---- Contexts -------------------------------------------------------------------------------------------------

void *World::allocate(void *self, size_t size) {
  auto &world = *static_cast<World *>(self);
  if (world.failing != 0) {
    ++world.allocations;
    if (world.onwards ? world.allocations >= world.failing : world.allocations == world.failing) return nullptr;
  }
  return std::malloc(size);
}

World::World() : ctx(rtxContextCreate(nullptr)) {}

World::World(const Input &input) {
  static RuntimeContext *const plain = rtxContextCreate(nullptr);
  if (input.isPlain()) {
    ctx = plain;
    kept = true;
    rtxContextReset(ctx);
    return;
  }
  failing = input.failingAllocation;
  onwards = input.failingOnwards;
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.allocate = allocate;
  options.release = [](void *, void *block) { std::free(block); };
  options.allocatorUser = this;
  small = input.heapLimit != 0;
  if (small) options.heapLimit = input.heapLimit;
  if (input.depthLimit != 0) options.depthLimit = input.depthLimit;
  options.errorLimit = input.errorLimit;
  ctx = rtxContextCreate(&options);
  require(ctx != nullptr || failing != 0, "a context is refused only for lack of storage");
}

World::~World() {
  if (!kept) rtxContextFree(ctx);
}

void World::requireUsable() {
  heal();
  rtxErrClear(ctx);
  Input good(reinterpret_cast<const uint8_t *>("<action>a</action>"), 18);
  Value value(ctx, *good.document);
  const int status = decode(ctx, good, value);
  require(status == 0 || small, "a context is usable after any failure", errors(ctx));
}

// ---- Values ---------------------------------------------------------------------------------------------------

namespace {

size_t sizeOf(const DocumentSchema &document) {
  return document.type ? document.type->size : sizeof(RtxHexBinary) + sizeof(RtxXmlString);
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

Value::Value(RuntimeContext *context, const DocumentSchema &schema)
    : ctx(context), document(schema),
      storage(std::make_unique<std::max_align_t[]>(sizeOf(schema) / sizeof(std::max_align_t) + 1)) {}

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
      const size_t now = count < pieces.length ? count : pieces.length;
      status = pieces.handler.characters(&pieces.handler, bytes, now);
      bytes += now;
      count -= now;
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

int setInput(RuntimeContext *ctx, const Input &input, std::string &terminated) {
  if (!input.inPlace) return rtxSetInput(ctx, input.body.data(), input.body.size());
  terminated = input.body;
  return rtxSetInputZ(ctx, terminated.c_str(), terminated.size());
}

} // namespace

int decode(RuntimeContext *ctx, const Input &input, Value &value) {
  std::string terminated;
  if (int status = setInput(ctx, input, terminated)) return status;
  const DocumentSchema &document = *input.document;
  int status;
  if (input.pieceLength == 0 || !document.type) {
    status = ims::decodeDocument(ctx, document, value.data());
  } else {
    ims::initRecord(ctx, *document.type, value.data());
    status = readInPieces<SaxTypeHandler>(ctx, document, input.pieceLength, [&](SaxTypeHandler &handler) {
      ims::initHandler(ctx, *document.type, &handler, value.data(), 0);
    });
  }
  rtxSetInput(ctx, nullptr, 0);
  return status;
}

int validate(RuntimeContext *ctx, const Input &input) {
  std::string terminated;
  if (int status = setInput(ctx, input, terminated)) return status;
  const DocumentSchema &document = *input.document;
  const int status =
      input.pieceLength == 0 || !document.type
          ? ims::validateDocument(ctx, document)
          : readInPieces<VsaxTypeHandler>(ctx, document, input.pieceLength, [&](VsaxTypeHandler &handler) {
              ims::initHandler(ctx, *document.type, &handler, 0);
            });
  rtxSetInput(ctx, nullptr, 0);
  return status;
}

// ---- Judging --------------------------------------------------------------------------------------------------

void requireRecord(RuntimeContext *ctx, const Input &input, int status) {
  if (status == 0 || status == STATUS_NOT_SUPPORTED) return;
  require(rtxErrCount(ctx) > 0 || input.errorLimit < 100, "a failure is recorded");
  const RtxError *error = rtxErrAt(ctx, 0);
  if (!error) return;
  require(error->offset <= input.body.size() * 4, "a place is in the document", errors(ctx));
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

} // namespace

Xml judge(std::string_view text) {
  static xmlParserCtxtPtr const parser = xmlNewParserCtxt();
  bool broken = false;
  xmlSetStructuredErrorFunc(&broken, takeNamespaceError);
  xmlDocPtr document =
      xmlCtxtReadMemory(parser, text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NONET);
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  const bool wellFormed = document && parser->wellFormed;
  xmlFreeDoc(document);
  return !wellFormed ? Xml::broken : broken ? Xml::wellFormed : Xml::namespaced;
}

} // namespace fuzz
