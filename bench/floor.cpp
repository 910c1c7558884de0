// The parser beneath, used as sparingly as it can be: one parser kept, the bytes in place, and callbacks that do
// nothing.
#include "workloads.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

void startElement(void *count, const xmlChar *, const xmlChar **) { ++*static_cast<unsigned *>(count); }
void endElement(void *, const xmlChar *) {}
void characters(void *, const xmlChar *, int) {}

class Floor : public Workload {
public:
  explicit Floor(const Document &measured) : body(measured.body) {
    xmlInitParser();
    parser = xmlNewParserCtxt();
    input = parser ? xmlNewInputStream(parser) : nullptr;
    if (!input) throw std::runtime_error("no parser");
    std::memset(parser->sax, 0, sizeof(*parser->sax));
    parser->sax->initialized = 1;
    parser->sax->startElement = startElement;
    parser->sax->endElement = endElement;
    parser->sax->characters = characters;
    parser->sax->ignorableWhitespace = characters;
    parser->userData = &elements;
    xmlCtxtUseOptions(parser, XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOCDATA);
    run();
    if (elements != measured.elements) throw std::runtime_error("the parser did not see every element");
  }
  ~Floor() override {
    xmlFreeInputStream(input);
    xmlFreeParserCtxt(parser);
  }

  void run() override {
    xmlCtxtReset(parser);
    std::memset(input, 0, sizeof(*input));
    const auto *bytes = reinterpret_cast<const xmlChar *>(body.data());
    input->line = 1;
    input->col = 1;
    input->standalone = -1;
    input->base = bytes;
    input->cur = bytes;
    input->end = bytes + body.size();
    input->length = static_cast<int>(body.size());
    inputPush(parser, input);
    parser->progressive = 1;
    if (xmlParseDocument(parser) != 0) throw std::runtime_error("the parser failed");
    parser->progressive = 0;
    inputPop(parser);
    xmlFree(const_cast<xmlChar *>(input->encoding));
    input->encoding = nullptr;
  }

  size_t bytes() const override { return body.size(); }

private:
  const std::string &body;
  xmlParserCtxtPtr parser = nullptr;
  xmlParserInputPtr input = nullptr;
  unsigned elements = 0;
};

} // namespace

std::unique_ptr<Workload> makeFloor(const Document &document) { return std::make_unique<Floor>(document); }

} // namespace bench
