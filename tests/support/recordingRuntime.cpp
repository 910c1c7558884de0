#include "recordingRuntime.h"

#include "rtSax.h"
#include "rtXmlDecode.h"
#include "rtXmlEncode.h"
#include "rtXmlNamespace.h"
#include "rtxError.h"
#include "rtxMemory.h"
#include "rtxPrint.h"
#include "rtxText.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <unordered_set>

namespace {

struct Failure {
  std::string function;
  unsigned call;
  int status;
};

struct State {
  RuntimeContext context{};
  RtxReaderInfo reader{};
  std::vector<char> room;
  std::string collected; // the bytes behind reader.text
  std::vector<recording::Event> document;
  bool hasDocument = false;

  std::map<std::string, unsigned> calls;
  std::vector<Failure> failures;
  std::vector<std::string> errorCalls;
  std::vector<int> statuses;
  std::string params;
  std::vector<std::string> printed;

  std::unordered_set<void *> blocks;
  std::deque<std::string> names; // texts handed out that have to stay
  std::string boundUri;          // of prefix "tns", bound while encoding
  bool tagIsOpen = false;
  bool skip = false; // armed in the callback that runs

  ~State() {
    for (void *block : blocks)
      std::free(block);
  }
};

std::unique_ptr<State> current = std::make_unique<State>();

// Counts a call; the status that it is to fail with, or 0.
int gate(const char *function) {
  const unsigned call = ++current->calls[function];
  for (const Failure &failure : current->failures)
    if (failure.function == function && failure.call == call) return failure.status;
  return 0;
}

void param(const std::string &text) { current->params += (current->params.empty() ? "" : ",") + text; }

int note(const char *kind, int status, const char *path, int line, bool fresh) {
  std::string call = std::string(kind) + " " + std::to_string(status);
  if (fresh && !current->params.empty()) call += "(" + current->params + ")";
  current->errorCalls.push_back(call + "@" + path + ":" + std::to_string(line));
  if (fresh) current->params.clear();
  current->statuses.push_back(status);
  return status;
}

int write(const char *function, const std::string &text) {
  if (const int status = gate(function)) return status;
  RtxTextBuffer &buffer = current->context.buffer;
  if (buffer.size - buffer.byteIndex < text.size()) return STATUS_BUFFER_OVERFLOW;
  std::memcpy(buffer.data + buffer.byteIndex, text.data(), text.size());
  buffer.byteIndex += text.size();
  return 0;
}

std::string qualified(const char *name, const RtxNamespace *ns) {
  const char *prefix = ns == nullptr ? nullptr : ns->prefix;
  if (prefix == nullptr && ns != nullptr && ns->uri != nullptr && current->boundUri == ns->uri) prefix = "tns";
  return prefix == nullptr || *prefix == '\0' ? name : std::string(prefix) + ":" + name;
}

std::string closing() {
  const bool open = current->tagIsOpen;
  current->tagIsOpen = false;
  return open ? ">" : "";
}

int element(const char *function, const std::string &content, const char *name, const RtxNamespace *ns) {
  const std::string tag = name == nullptr ? "" : qualified(name, ns);
  return write(function, closing() + (tag.empty() ? content : "<" + tag + ">" + content + "</" + tag + ">"));
}

std::string bufferText() { return std::string(current->context.buffer.data, current->context.buffer.size); }

bool isDigits(const std::string &text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

void *allocate(size_t size) {
  void *block = std::malloc(size == 0 ? 1 : size);
  current->blocks.insert(block);
  return block;
}

// The codec came to a function that the documents of these tests have no use for.
[[noreturn]] void notForTheseTests(const char *function) {
  std::fprintf(stderr, "%s is not offered by the recording runtime\n", function);
  std::abort();
}

uint16_t lookUp(uint8_t *contentState, const char *name, int namespaceIndex, const RtSaxElementInfo *elements,
                const uint8_t *states, uint32_t elementCount, uint32_t stateCount, bool wildcard) {
  if (*contentState >= stateCount) return RTSAX_NO_ELEMENT;
  for (bool named : {true, false}) {
    for (uint32_t i = 0; i < elementCount; ++i) {
      const RtSaxElementInfo &row = elements[i];
      const bool rowIsNamed = *row.name != '\0';
      const bool matches = rowIsNamed ? std::strcmp(row.name, name) == 0 &&
                                            (namespaceIndex == RTXML_NS_NONE || namespaceIndex == row.namespaceIndex)
                                      : wildcard && namespaceIndex != row.namespaceIndex;
      if (rowIsNamed != named || !matches) continue;
      const uint8_t cell = states[i * stateCount + *contentState];
      if (cell == RTSAX_NOT_ALLOWED) return RTSAX_NO_ELEMENT;
      *contentState = cell;
      return static_cast<uint16_t>(i);
    }
  }
  return RTSAX_NO_ELEMENT;
}

} // namespace

namespace recording {

Event startTag(std::string name, std::vector<std::pair<std::string, std::string>> attributes) {
  return {Event::start, std::move(name), std::move(attributes)};
}
Event characters(std::string text) { return {Event::text, std::move(text), {}}; }
Event endTag(std::string name) { return {Event::end, std::move(name), {}}; }

void reset() { current = std::make_unique<State>(); }

RuntimeContext *newContext(size_t room) {
  RuntimeContext &ctx = current->context;
  current->room.assign(room + 1, '\0');
  ctx.signature = 1;
  ctx.contract = RTX_CONTRACT_VERSION;
  ctx.buffer = {current->room.data(), 0, room, false};
  ctx.reader = &current->reader;
  current->reader.text.context = &ctx;
  return &ctx;
}

void setDocument(std::vector<Event> events) {
  current->document = std::move(events);
  current->hasDocument = true;
}

void fail(const std::string &function, unsigned nth, int status) {
  current->failures.push_back({function, current->calls[function] + nth, status});
}

const std::map<std::string, unsigned> &calls() { return current->calls; }
const std::vector<std::string> &errorCalls() { return current->errorCalls; }
const std::vector<std::string> &printed() { return current->printed; }
std::string output() { return std::string(current->room.data(), current->context.buffer.byteIndex); }
size_t blocksAlive() { return current->blocks.size(); }

} // namespace recording

// ---- Context and errors ----

int rtxCheckContext(RuntimeContext *) { return gate("rtxCheckContext"); }

int rtxErrSetNewData(RuntimeContext *, int status, const char *path, int line) {
  return note("new", status, path, line, true);
}
int rtxErrSetData(RuntimeContext *, int status, const char *path, int line) {
  if (status == 0) return 0;
  return note("set", status, path, line, current->statuses.empty());
}
void rtxErrAddStrParm(RuntimeContext *, const char *text) { param(text == nullptr ? "" : text); }
void rtxErrAddIntParm(RuntimeContext *, int32_t value) { param(std::to_string(value)); }
void rtxErrAddUIntParm(RuntimeContext *, uint32_t value) { param(std::to_string(value) + "u"); }
void rtxErrAddCtxtBufParm(RuntimeContext *) { param(bufferText()); }
int rtxErrGetFirstError(RuntimeContext *) { return current->statuses.empty() ? 0 : current->statuses.front(); }
int rtxErrGetLastError(RuntimeContext *) { return current->statuses.empty() ? 0 : current->statuses.back(); }

// ---- Storage ----

void *rtxMemHeapAlloc(RuntimeContext *, size_t size) { return gate("rtxMemHeapAlloc") != 0 ? nullptr : allocate(size); }
void rtxMemHeapFreePtr(RuntimeContext *, const void *block) {
  if (block == nullptr) return;
  if (current->blocks.erase(const_cast<void *>(block)) == 0) notForTheseTests("releasing a block twice");
  std::free(const_cast<void *>(block));
}

int rtxMemBufAppend(RtxMemBuf *buffer, const char *bytes, size_t length) {
  if (const int status = gate("rtxMemBufAppend")) return status;
  if (buffer->used == 0) current->collected.clear();
  current->collected.append(bytes, length);
  buffer->data = current->collected.data();
  buffer->used = current->collected.size();
  return 0;
}
void rtxMemBufReset(RtxMemBuf *buffer) { buffer->start = buffer->used = 0; }

int rtxCheckBuffer(RuntimeContext *ctx, size_t count) {
  if (const int status = gate("rtxCheckBuffer")) return status;
  return ctx->buffer.size - ctx->buffer.byteIndex < count ? STATUS_BUFFER_OVERFLOW : 0;
}
int rtxInitContextBuffer(RuntimeContext *ctx, const char *bytes, size_t length) {
  ctx->buffer = {const_cast<char *>(bytes), 0, length, false};
  return 0;
}

RtxListNode *rtxDListAppend(RuntimeContext *, RtxList *list, void *data) {
  if (gate("rtxDListAppend") != 0) return nullptr;
  auto *node = static_cast<RtxListNode *>(allocate(sizeof(RtxListNode)));
  *node = {data, nullptr, list->tail};
  (list->tail == nullptr ? list->head : list->tail->next) = node;
  list->tail = node;
  ++list->count;
  return node;
}
void rtxDListFreeAll(RuntimeContext *ctx, RtxList *list) {
  for (RtxListNode *node = list->head; node != nullptr;) {
    RtxListNode *next = node->next;
    rtxMemHeapFreePtr(ctx, node->data);
    rtxMemHeapFreePtr(ctx, node);
    node = next;
  }
  *list = {};
}

// ---- Text ----

int rtxUTF8StrEqual(const char *a, const char *b) {
  return a == nullptr || b == nullptr ? a == b : std::strcmp(a, b) == 0;
}
char *rtxUTF8Strdup(RuntimeContext *, const char *text) {
  if (text == nullptr || gate("rtxUTF8Strdup") != 0) return nullptr;
  auto *copy = static_cast<char *>(allocate(std::strlen(text) + 1));
  return std::strcpy(copy, text);
}
size_t rtxUTF8LenBytes(const char *text) { return text == nullptr ? 0 : std::strlen(text); }
int rtxValidateUTF8(RuntimeContext *, const char *) { return gate("rtxValidateUTF8"); }
int rtXmlStrCmpAsc(const char *text, const char *literal) { return std::strcmp(text, literal); }

// ---- Encoding ----

int rtXmlEncStartDocument(RuntimeContext *) { return write("rtXmlEncStartDocument", "<?xml?>"); }
int rtXmlEncEndDocument(RuntimeContext *) { return gate("rtXmlEncEndDocument"); }
int rtXmlEncStartElement(RuntimeContext *, const char *localName, const RtxNamespace *ns, const RtxNsDeclList *,
                         bool terminate) {
  const std::string start = closing() + "<" + qualified(localName, ns) + (terminate ? ">" : "");
  current->tagIsOpen = !terminate;
  return write("rtXmlEncStartElement", start);
}
int rtXmlEncNSAttrs(RuntimeContext *, const RtxNsDeclList *) {
  return write("rtXmlEncNSAttrs", current->boundUri.empty() ? "" : " xmlns:tns=\"" + current->boundUri + "\"");
}
int rtXmlEncTermStartElement(RuntimeContext *) { return write("rtXmlEncTermStartElement", closing()); }
int rtXmlEncEndElement(RuntimeContext *, const char *localName, const RtxNamespace *ns) {
  return write("rtXmlEncEndElement", closing() + "</" + qualified(localName, ns) + ">");
}
int rtXmlEncString(RuntimeContext *, const RtxXmlString *text, const char *elementName, const RtxNamespace *ns) {
  return element("rtXmlEncString", text->value == nullptr ? "" : text->value, elementName, ns);
}
int rtXmlEncUInt(RuntimeContext *, uint32_t value, const char *elementName, const RtxNamespace *ns) {
  return element("rtXmlEncUInt", std::to_string(value), elementName, ns);
}
int rtXmlEncAny(RuntimeContext *, const RtxXmlString *fragment, const char *elementName, const RtxNamespace *ns) {
  return element("rtXmlEncAny", fragment->value == nullptr ? "" : fragment->value, elementName, ns);
}

// ---- Conversions ----

int rtXmlDecXmlStr(RuntimeContext *, RtxXmlString *text) {
  if (const int status = gate("rtXmlDecXmlStr")) return status;
  const std::string value = bufferText();
  auto *copy = static_cast<char *>(allocate(value.size() + 1));
  *text = {false, std::strcpy(copy, value.c_str())};
  return 0;
}
int rtXmlDecUInt(RuntimeContext *, uint32_t *value) {
  if (const int status = gate("rtXmlDecUInt")) return status;
  const std::string text = bufferText();
  if (!isDigits(text)) return STATUS_INVALID_LEXICAL_FORM;
  *value = static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, 10));
  return 0;
}
int rtXmlDecDateTime(RuntimeContext *, RtxDateTime *) { return gate("rtXmlDecDateTime"); }
int rtXmlDecQName(RuntimeContext *, const char *qualifiedName, const char **localName, const char **prefix) {
  if (const int status = gate("rtXmlDecQName")) return status;
  const char *colon = std::strchr(qualifiedName, ':');
  if (localName != nullptr) *localName = colon == nullptr ? qualifiedName : colon + 1;
  if (prefix != nullptr) {
    current->names.emplace_back(qualifiedName, colon == nullptr ? qualifiedName : colon);
    *prefix = colon == nullptr ? nullptr : current->names.back().c_str();
  }
  return 0;
}

// ---- Namespaces: no prefix is the module's namespace, any other another one's ----

int rtXmlNSPush(RuntimeContext *) { return gate("rtXmlNSPush"); }
int rtXmlNSPop(RuntimeContext *) { return 0; }
int rtXmlNSAddPrefixLink(RuntimeContext *, const char *, const char *, void *, int) {
  return gate("rtXmlNSAddPrefixLink");
}
int rtXmlNSGetIndex(RuntimeContext *, const char *prefix) {
  return prefix == nullptr ? RTXML_NS_NONE : RTXML_NS_FOREIGN;
}
const char *rtXmlNSGetPrefix(RuntimeContext *, const char *uri) {
  return uri != nullptr && current->boundUri == uri ? "tns" : nullptr;
}
int rtXmlNSSetURITable(RuntimeContext *, const char *const *, uint32_t) { return gate("rtXmlNSSetURITable"); }
int rtXmlNSSetNamespace(RuntimeContext *, RtxNsDeclList *, const char *, const char *uri, bool) {
  if (const int status = gate("rtXmlNSSetNamespace")) return status;
  current->boundUri = uri;
  return 0;
}

// ---- Reader ----

struct RtSaxReader {
  void *handler;
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
};

RtSaxReader *rtSaxCCreateXmlReader(RuntimeContext *, void *handler, RtSaxStartElement startElement,
                                   RtSaxEndElement endElement, RtSaxCharacters characters) {
  if (gate("rtSaxCCreateXmlReader") != 0 || !current->hasDocument) return nullptr;
  return new RtSaxReader{handler, startElement, endElement, characters};
}

namespace {

int deliverStart(RtSaxReader *reader, const recording::Event &event) {
  std::vector<const char *> attributes;
  for (const auto &[name, value] : event.attributes) {
    attributes.push_back(name.c_str());
    attributes.push_back(value.c_str());
  }
  attributes.insert(attributes.end(), {nullptr, nullptr});
  const char *const name = event.name.c_str();
  const char *const colon = std::strchr(name, ':');
  return reader->startElement(reader->handler, colon == nullptr ? name : colon + 1, name, attributes.data());
}

} // namespace

int rtSaxCParse(RtSaxReader *reader) {
  const RtxTextBuffer output = current->context.buffer;
  int skipping = 0; // open elements of what is skipped
  bool endIsDue = false;
  for (const recording::Event &event : current->document) {
    current->skip = false;
    if (skipping > 0) {
      if (event.kind == recording::Event::start) ++skipping;
      if (event.kind != recording::Event::end || --skipping != 0) continue;
      if (!endIsDue) continue;
      current->context.state = XMLSTATE_INITIAL;
      rtxMemBufReset(&current->reader.text);
    }
    switch (event.kind) {
    case recording::Event::start:
      if (deliverStart(reader, event) != 0 || current->skip) {
        skipping = 1;
        endIsDue = false;
      }
      break;
    case recording::Event::text:
      reader->characters(reader->handler, event.name.data(), event.name.size());
      if (current->skip) {
        skipping = 1;
        endIsDue = true;
      }
      break;
    case recording::Event::end:
      reader->endElement(reader->handler, event.name.substr(event.name.find(':') + 1).c_str(), event.name.c_str());
      break;
    }
  }
  current->context.buffer = output;
  return gate("rtSaxCParse");
}

void rtSaxCReleaseReader(RtSaxReader *reader) { delete reader; }

uint16_t rtSaxGetElemID8(uint8_t *contentState, int16_t, const char *localName, int namespaceIndex,
                         const RtSaxElementInfo *elements, const uint8_t *states, uint32_t elementCount,
                         uint32_t stateCount) {
  if (gate("rtSaxGetElemID8") != 0) return RTSAX_NO_ELEMENT;
  return lookUp(contentState, localName, namespaceIndex, elements, states, elementCount, stateCount, true);
}
uint16_t rtSaxLookupElemID8(RuntimeContext *ctx, uint8_t *contentState, int16_t, const char *localName,
                            const char *qualifiedName, int, const RtSaxElementInfo *elements, const uint8_t *states,
                            uint32_t elementCount, uint32_t stateCount) {
  int status = gate("rtSaxLookupElemID8");
  if (status == 0) {
    const uint16_t id =
        lookUp(contentState, localName, RTXML_NS_NONE, elements, states, elementCount, stateCount, false);
    if (id != RTSAX_NO_ELEMENT) return id;
    status = STATUS_UNEXPECTED_ELEMENT;
  }
  current->skip = true;
  rtxErrAddStrParm(ctx, qualifiedName);
  rtxErrSetNewData(ctx, status, "runtime/reader", 1);
  return RTSAX_NO_ELEMENT;
}
int rtSaxReportUnexpAttrs(RuntimeContext *ctx, const char *const *attributes, const char *elementName) {
  if (const int status = gate("rtSaxReportUnexpAttrs")) return status;
  int status = 0;
  for (; attributes != nullptr && *attributes != nullptr; attributes += 2) {
    if (std::strncmp(*attributes, "xmlns", 5) == 0) continue;
    rtxErrAddStrParm(ctx, elementName);
    rtxErrAddStrParm(ctx, *attributes);
    status = rtxErrSetNewData(ctx, STATUS_UNKNOWN_ATTRIBUTE, "runtime/reader", 2);
  }
  return status;
}
int rtSaxIncErrors(RuntimeContext *) { return gate("rtSaxIncErrors") == 0 ? 1 : 0; }
int rtSaxSetSkipLevelToCurrent(RuntimeContext *, int status) {
  current->skip = true;
  return status;
}
void rtSaxDiagStartFunc(void *, const char *, const char *) {}
void rtSaxDiagEndFunc(void *, const char *, const char *) {}

namespace {

// The handler of a foreign element: keeps its text only.
struct AnyHandler {
  RtSaxHandler head;
  RtxXmlString *entry;
  int level;
};
static_assert(sizeof(AnyHandler) <= RTSAX_DELEGATE_SIZE);

int anyCharacters(void *handler, const char *bytes, size_t length) {
  auto &any = *static_cast<AnyHandler *>(handler);
  static_cast<char *>(any.head.delegateStorage)[0] = length == 0 ? '\0' : *bytes;
  return 0;
}

int anyEnd(void *handler, const char *, const char *) {
  auto &any = *static_cast<AnyHandler *>(handler);
  if (--any.level != 0) return 0;
  if (const int status = gate("SAXAnyEndElement")) return status;
  auto *text = static_cast<char *>(allocate(8));
  std::snprintf(text, 8, "<any%c>", *static_cast<char *>(any.head.delegateStorage));
  any.entry->value = text;
  return 0;
}

} // namespace

int SAXAnyInit(RuntimeContext *, void *block, RtxXmlString *entry, int32_t level) {
  if (const int status = gate("SAXAnyInit")) return status;
  auto *storage = static_cast<char *>(allocate(1));
  *storage = '-';
  *static_cast<AnyHandler *>(block) = {{SAXAnyStartElement, anyEnd, anyCharacters, nullptr, storage}, entry, level};
  return 0;
}
int SAXAnyStartElement(void *handler, const char *, const char *, const char *const *) {
  if (const int status = gate("SAXAnyStartElement")) return status;
  ++static_cast<AnyHandler *>(handler)->level;
  return 0;
}

// ---- Printing ----

int rtxPrintCharStr(const char *name, const char *text) {
  current->printed.push_back(std::string(name) + "=" + (text == nullptr ? "null" : text));
  return gate("rtxPrintCharStr");
}
int rtxPrintUnsigned(const char *name, uint32_t value) {
  current->printed.push_back(std::string(name) + "=" + std::to_string(value));
  return gate("rtxPrintUnsigned");
}

// ---- What the codec imports for its other modules ----

int rtxLookupEnum(const char *, size_t, const RtxEnumRow *, uint32_t) { notForTheseTests(__func__); }
int rtXmlEncUTF8Str(RuntimeContext *, const char *, const char *, const RtxNamespace *) { notForTheseTests(__func__); }
int rtXmlEncHexBinary(RuntimeContext *, uint32_t, const uint8_t *, const char *, const RtxNamespace *) {
  notForTheseTests(__func__);
}
int rtXmlEncUTF8Attr2(RuntimeContext *, const char *, size_t, const char *, size_t) { notForTheseTests(__func__); }
int rtXmlEncBoolAttr(RuntimeContext *, bool, const char *, size_t) { notForTheseTests(__func__); }
int rtXmlEncUIntAttr(RuntimeContext *, uint32_t, const char *, size_t) { notForTheseTests(__func__); }
int rtXmlEncDecimalAttr(RuntimeContext *, double, const char *, size_t) { notForTheseTests(__func__); }
int rtXmlEncAnyAttr(RuntimeContext *, const RtxAttrList *) { notForTheseTests(__func__); }
int rtXmlDecUInt16(RuntimeContext *, uint16_t *) { notForTheseTests(__func__); }
int rtXmlDecBool(RuntimeContext *, bool *) { notForTheseTests(__func__); }
int rtXmlDecDecimal(RuntimeContext *, double *) { notForTheseTests(__func__); }
int rtXmlDecTime(RuntimeContext *, RtxDateTime *) { notForTheseTests(__func__); }
int rtXmlDecHexBinary(RuntimeContext *, const char *, size_t, RtXmlHexState *, RtxMemBuf *) {
  notForTheseTests(__func__);
}
int rtXmlDecDynHexStr(RuntimeContext *, RtxHexBinary *) { notForTheseTests(__func__); }
int rtXmlTreatWhitespaces(RuntimeContext *, int) { notForTheseTests(__func__); }
int rtXmlDecNSAttr(RuntimeContext *, const char *, const char *, RtxNsDeclList *, void *, int) {
  notForTheseTests(__func__);
}
int rtXmlDecXSIAttr(RuntimeContext *, const char *, const char *) { notForTheseTests(__func__); }
int rtXmlNSGetAttrQName(RuntimeContext *, char *, size_t, const RtxNamespace *, const char *, size_t) {
  notForTheseTests(__func__);
}
void rtXmlNSFreeAttrList(RuntimeContext *, RtxNsDeclList *) { notForTheseTests(__func__); }
void rtXmlMemFreeAnyAttrs(RuntimeContext *, RtxAttrList *) { notForTheseTests(__func__); }
int rtSaxGetAttributeID(const char *, uint32_t, const char *const *, uint32_t *) { notForTheseTests(__func__); }
int rtSaxTestAttributesPresent(RuntimeContext *, const uint32_t *, uint32_t, const char *const *, uint32_t,
                               const char *) {
  notForTheseTests(__func__);
}
int SAXSimpleTypeInit(RuntimeContext *, SaxTypeHandler *, const char *) { notForTheseTests(__func__); }
int SAXSimpleTypeStartElement(void *, const char *, const char *, const char *const *) { notForTheseTests(__func__); }
int SAXSimpleTypeCharacters(void *, const char *, size_t) { notForTheseTests(__func__); }
int SAXSimpleTypeEndElement(void *, const char *, const char *) { notForTheseTests(__func__); }
int rtxPrintBoolean(const char *, bool) { notForTheseTests(__func__); }
int rtxPrintReal(const char *, double) { notForTheseTests(__func__); }
int rtxPrintHexBinary(const char *, uint32_t, const uint8_t *) { notForTheseTests(__func__); }
int rtxPrintNVP(const char *, const char *, const char *) { notForTheseTests(__func__); }
int rtxPrintNull(const char *) { notForTheseTests(__func__); }
int rtXmlPrintNSAttrs(const char *, const RtxNsDeclList *) { notForTheseTests(__func__); }
