#include "contract.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <unistd.h>

namespace contract {

void Allocator::install(RuntimeOptions &options) {
  options.allocatorUser = this;
  options.allocate = [](void *user, size_t size) -> void * {
    auto &self = *static_cast<Allocator *>(user);
    ++self.calls;
    if (size > (size_t{1} << 30)) return nullptr; // as a small machine would
    if (self.failAt != 0 && (self.calls == self.failAt || (self.persistent && self.calls > self.failAt))) {
      ++self.refused;
      return nullptr;
    }
    void *block = std::malloc(size == 0 ? 1 : size);
    self.blocks.insert(block);
    return block;
  };
  options.release = [](void *user, void *block) {
    if (block == nullptr) return;
    auto &self = *static_cast<Allocator *>(user);
    if (self.blocks.erase(block) == 0) {
      ADD_FAILURE() << "a block was released that is not alive";
      return;
    }
    std::free(block);
  };
}

RuntimeOptions defaultOptions() {
  RuntimeOptions options;
  std::memset(&options, 0xA5, sizeof options);
  rtxOptionsInit(&options);
  return options;
}

Context::Context(const RuntimeOptions &options) : ctx(nullptr) {
  RuntimeOptions own = options;
  allocator.install(own);
  ctx = rtxContextCreate(&own);
  EXPECT_NE(ctx, nullptr);
}

Context::~Context() {
  rtxContextFree(ctx);
  EXPECT_EQ(allocator.live(), 0u) << "blocks left behind by the context";
}

ExactBytes::ExactBytes(std::string_view bytes) : length(bytes.size()), block(new char[bytes.size()]) {
  std::copy(bytes.begin(), bytes.end(), block.get());
}

Recorder::Recorder(RuntimeContext *context) : ctx(context) {
  handler.startElement = start;
  handler.endElement = end;
  handler.characters = text;
}

int Recorder::start(void *self, const char *local, const char *qualified, const char *const *attributes) {
  auto &recorder = *static_cast<Recorder *>(self);
  ++recorder.events;
  ++recorder.open;
  recorder.log.append("<").append(qualified);
  const char *colon = std::strrchr(qualified, ':');
  if (std::strcmp(colon == nullptr ? qualified : colon + 1, local) != 0)
    recorder.log.append(" LOCAL NAME ").append(local);
  for (const char *const *pair = attributes; pair != nullptr && *pair != nullptr; pair += 2) {
    recorder.log.append(" ").append(pair[0]).append("=\"").append(pair[1]).append("\"");
  }
  recorder.log.append(">");
  return recorder.onStart ? recorder.onStart(local, qualified, attributes) : 0;
}

int Recorder::end(void *self, const char *local, const char *qualified) {
  auto &recorder = *static_cast<Recorder *>(self);
  ++recorder.events;
  --recorder.open;
  recorder.log.append("</").append(qualified);
  const char *colon = std::strrchr(qualified, ':');
  if (std::strcmp(colon == nullptr ? qualified : colon + 1, local) != 0)
    recorder.log.append(" LOCAL NAME ").append(local);
  recorder.log.append(">");
  return recorder.onEnd ? recorder.onEnd(local, qualified) : 0;
}

int Recorder::text(void *self, const char *bytes, size_t length) {
  auto &recorder = *static_cast<Recorder *>(self);
  ++recorder.events;
  recorder.log.append(bytes, length);
  return recorder.onText ? recorder.onText(bytes, length) : 0;
}

int readInput(RuntimeContext *ctx, Recorder &recorder) {
  recorder.ctx = ctx;
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &recorder.handler, recorder.handler.startElement,
                                              recorder.handler.endElement, recorder.handler.characters);
  if (reader == nullptr) return STATUS_READER_FAILED;
  const int status = rtSaxCParse(reader);
  rtSaxCReleaseReader(reader);
  return status;
}

int read(RuntimeContext *ctx, std::string_view document, Recorder &recorder) {
  {
    ExactBytes bytes(document);
    if (const int status = rtxSetInput(ctx, bytes.data(), bytes.size())) return status;
  }
  return readInput(ctx, recorder);
}

int insideElement(RuntimeContext *ctx, std::string_view document, std::string_view name,
                  const std::function<int(const char *const *attributes)> &action) {
  Recorder recorder;
  bool done = false;
  recorder.onStart = [&](const char *local, const char *, const char *const *attributes) {
    if (done || name != local) return 0;
    done = true;
    return action(attributes);
  };
  const int status = read(ctx, document, recorder);
  EXPECT_TRUE(done) << name << " was not delivered";
  return status;
}

void setText(RuntimeContext *ctx, ExactBytes &bytes) {
  EXPECT_EQ(rtxInitContextBuffer(ctx, bytes.data(), bytes.size()), 0);
}

Capture::Capture(FILE *captured) : stream(captured), file(std::tmpfile()), saved(-1) {
  std::fflush(stream);
  saved = dup(fileno(stream));
  if (file == nullptr || saved < 0 || dup2(fileno(file), fileno(stream)) < 0) std::abort();
}

Capture::~Capture() {
  if (saved >= 0) finish();
  std::fclose(file);
}

std::string Capture::finish() {
  std::fflush(stream);
  dup2(saved, fileno(stream));
  close(saved);
  saved = -1;
  std::string text;
  char buffer[4096];
  std::rewind(file);
  for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
    text.append(buffer, n);
  return text;
}

std::string statuses(RuntimeContext *ctx) {
  std::string text;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    if (i > 0) text += ' ';
    text += std::to_string(error->status);
  }
  return text;
}

std::string params(RuntimeContext *ctx, uint32_t index) {
  const RtxError *error = rtxErrAt(ctx, index);
  if (error == nullptr) return "no record";
  std::string text;
  for (uint32_t i = 0; i < error->paramCount; ++i) {
    if (i > 0) text += '|';
    const RtxErrorParam &param = error->params[i];
    switch (param.kind) {
    case RTX_PARAM_TEXT: text.append(param.text, param.length); break;
    case RTX_PARAM_INT: text += std::to_string(param.intValue); break;
    case RTX_PARAM_UINT: text += std::to_string(param.uintValue); break;
    }
  }
  return text;
}

RtxHeapStats stats(RuntimeContext *ctx) {
  RtxHeapStats result{};
  rtxHeapStats(ctx, &result);
  return result;
}

namespace {

const char *text(const xmlChar *chars) { return chars == nullptr ? "" : reinterpret_cast<const char *>(chars); }

std::string expandedName(const xmlNs *ns, const xmlChar *name) {
  return ns == nullptr ? text(name) : "{"s + text(ns->href) + "}" + text(name);
}

void describe(const xmlNode *node, std::string &out) {
  for (; node != nullptr; node = node->next) {
    if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) out += text(node->content);
    if (node->type != XML_ELEMENT_NODE) continue;
    out += expandedName(node->ns, node->name);
    std::vector<std::string> attributes;
    for (const xmlAttr *attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
      std::string value;
      describe(attribute->children, value);
      attributes.push_back(expandedName(attribute->ns, attribute->name) + "=\"" + value + "\"");
    }
    std::sort(attributes.begin(), attributes.end());
    out += '[';
    for (const std::string &attribute : attributes)
      out += attribute + " ";
    out += "](";
    describe(node->children, out);
    out += ')';
  }
}

} // namespace

std::string infoset(std::string_view document) {
  xmlParserCtxtPtr parser = xmlNewParserCtxt();
  xmlDocPtr tree = xmlCtxtReadMemory(parser, document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                                     XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  std::string result;
  if (tree == nullptr || parser->wellFormed == 0 || parser->nsWellFormed == 0) {
    result = notWellFormed;
  } else {
    describe(xmlDocGetRootElement(tree), result);
  }
  xmlFreeDoc(tree);
  xmlFreeParserCtxt(parser);
  return result;
}

std::string output(RuntimeContext *ctx) {
  size_t length = 0;
  const char *bytes = rtxGetOutput(ctx, &length);
  return bytes == nullptr ? "no output"s : std::string(bytes, length);
}

std::string utf16(std::string_view ascii, bool bigEndian, bool mark) {
  std::string text = !mark ? "" : bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char c : ascii) {
    if (bigEndian) text += '\0';
    text += c;
    if (!bigEndian) text += '\0';
  }
  return text;
}

} // namespace contract
