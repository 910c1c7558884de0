// Diagnostic output: a line each, on stdout or to the sink of the thread.
#include "rtxPrint.h"

#include "context.h"
#include "decimal.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>

using namespace tiny;

namespace {

constinit thread_local RtxPrintSink *printSink = nullptr;

void *takeFromSystem(void *, size_t size) { return malloc(size); }
void giveToSystem(void *, void *block) { free(block); }

// A line on its way: at once to stdout, or kept for the sink until it is whole.
class Line {
public:
  explicit Line(const char *name) { putText(name); }
  ~Line() { kept.destroy(system); }
  Line(const Line &) = delete;
  Line &operator=(const Line &) = delete;

  void put(const char *bytes, size_t length) {
    if (!sink) {
      fwrite(bytes, 1, length, stdout);
    } else if (!kept.append(system, bytes, length)) {
      lost = true;
    }
  }
  void put(const char *text) { put(text, strlen(text)); }
  void put(char byte) { put(&byte, 1); }

  // Control characters as \xNN, so that a text stays on its line. A backslash goes before quotes and itself.
  void putText(const char *text) {
    for (; text && *text; ++text) {
      const unsigned char byte = static_cast<unsigned char>(*text);
      if (byte < 0x20 || byte == 0x7F) {
        put("\\x");
        putHex(byte);
      } else {
        if (byte == '\\' || byte == '"') put('\\');
        put(*text);
      }
    }
  }
  void putQuoted(const char *text) {
    if (!text) return put("<null>");
    put('"');
    putText(text);
    put('"');
  }
  void putHex(uint8_t byte) {
    put("0123456789ABCDEF"[byte >> 4]);
    put("0123456789ABCDEF"[byte & 15]);
  }

  int end() {
    put('\n');
    if (!sink) return ferror(stdout) ? STATUS_WRITE_FAILED : STATUS_OK;
    printSink = nullptr; // what the sink prints is not for itself
    const bool taken = !lost && sink->put && sink->put(sink->user, kept.items, kept.count) == 0;
    printSink = sink;
    if (taken) return STATUS_OK;
    ++sink->refused;
    return STATUS_WRITE_FAILED;
  }

private:
  RtxPrintSink *const sink = printSink;
  System system = {takeFromSystem, giveToSystem, nullptr, 0};
  Array<char> kept = {};
  bool lost = false;
};

} // namespace

RtxPrintSink *rtxSetPrintSink(RtxPrintSink *sink) {
  RtxPrintSink *before = printSink;
  printSink = sink;
  return before;
}

int rtxPrintCharStr(const char *name, const char *text) {
  Line line(name);
  line.put(" = ");
  line.putQuoted(text);
  return line.end();
}

int rtxPrintUnsigned(const char *name, uint32_t value) {
  char digits[16];
  snprintf(digits, sizeof digits, "%lu", static_cast<unsigned long>(value));
  Line line(name);
  line.put(" = ");
  line.put(digits);
  return line.end();
}

int rtxPrintBoolean(const char *name, bool value) {
  Line line(name);
  line.put(value ? " = true" : " = false");
  return line.end();
}

int rtxPrintReal(const char *name, double value) {
  char digits[decimalSize];
  const size_t length = writeDecimal(value, digits);
  Line line(name);
  line.put(" = ");
  line.put(digits, length);
  if (length == 0) line.put(isnan(value) ? "nan" : value < 0 ? "-inf" : "inf");
  return line.end();
}

int rtxPrintHexBinary(const char *name, uint32_t length, const uint8_t *bytes) {
  Line line(name);
  line.put(" = ");
  for (uint32_t i = 0; bytes && i < length; ++i)
    line.putHex(bytes[i]);
  return line.end();
}

int rtxPrintNVP(const char *name, const char *attributeName, const char *attributeValue) {
  Line line(name);
  line.put(" = ");
  line.putText(attributeName);
  line.put('=');
  line.putQuoted(attributeValue);
  return line.end();
}

int rtxPrintNull(const char *name) { return rtxPrintCharStr(name, nullptr); }

int rtXmlPrintNSAttrs(const char *name, const RtxNsDeclList *list) {
  int status = STATUS_OK;
  for (const RtxListNode *node = list ? list->items.head : nullptr; node; node = node->next) {
    const RtxNsDecl &declaration = *static_cast<const RtxNsDecl *>(node->data);
    Line line(name);
    line.put(declaration.prefix ? ".xmlns:" : ".xmlns");
    line.putText(declaration.prefix);
    line.put(" = ");
    line.putQuoted(declaration.uri);
    const int ended = line.end();
    if (ended != STATUS_OK) status = ended;
  }
  return status;
}
