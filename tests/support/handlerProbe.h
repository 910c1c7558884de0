// Watches a handler while a reader drives it.
#pragma once

#include "rtSax.h"

#include <string>
#include <vector>

namespace support {

// Stands between a reader and a handler of the codec (SaxTypeHandler or VsaxTypeHandler), passes every event on, and
// writes down for each what it left behind: "<state> 2 s2" is the start tag of state, after which the handler's level
// was 2 and the context's state byte 2; "... -> -41" if the callback returned that. Levels of a chain of handlers stand
// outermost first, "3>2>1", a handler of the runtime as "any". Neighbouring pieces of text run together.
template <typename Handler> class HandlerProbe {
public:
  HandlerProbe(RuntimeContext *context, Handler &watched) : ctx(context), handler(watched) {}

  // Reads the context's input: the status of the parse, or STATUS_READER_FAILED.
  int read() {
    RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, this, start, end, characters);
    if (reader == nullptr) return STATUS_READER_FAILED;
    const int status = rtSaxCParse(reader);
    rtSaxCReleaseReader(reader);
    return status;
  }

  std::vector<std::string> log;

  // The log in one string, a line an event.
  std::string text() const {
    std::string all;
    for (const std::string &line : log)
      all += line + "\n";
    return all;
  }

private:
  static int start(void *self, const char *localName, const char *qualifiedName, const char *const *attributes) {
    auto &probe = *static_cast<HandlerProbe *>(self);
    const int result = probe.handler.startElement(&probe.handler, localName, qualifiedName, attributes);
    probe.collected.clear();
    probe.add("<" + std::string(qualifiedName) + ">", result);
    return result;
  }

  static int end(void *self, const char *localName, const char *qualifiedName) {
    auto &probe = *static_cast<HandlerProbe *>(self);
    const int result = probe.handler.endElement(&probe.handler, localName, qualifiedName);
    probe.collected.clear();
    probe.add("</" + std::string(qualifiedName) + ">", result);
    return result;
  }

  static int characters(void *self, const char *bytes, size_t length) {
    auto &probe = *static_cast<HandlerProbe *>(self);
    const int result = probe.handler.characters(&probe.handler, bytes, length);
    if (!probe.collected.empty()) probe.log.pop_back();
    probe.collected.append(bytes, length);
    probe.add("'" + probe.collected + "'", result);
    return result;
  }

  void add(std::string line, int result) {
    line += " " + std::to_string(handler.level);
    const Handler *next = &handler;
    while (next->delegate != nullptr) {
      if (next->foreignDelegate) {
        line += ">any";
        break;
      }
      next = reinterpret_cast<const Handler *>(next->delegate);
      line += ">" + std::to_string(next->level);
    }
    line += " s" + std::to_string(ctx->state);
    if (result != 0) line += " -> " + std::to_string(result);
    log.push_back(line);
  }

  RuntimeContext *ctx;
  Handler &handler;
  std::string collected;
};

} // namespace support
