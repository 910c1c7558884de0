// Diagnostic output.

#include "rtxPrint.h"

#include "printable.h"

#include <charconv>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <utility>

namespace {

// Of the thread; null is stdout.
constinit thread_local RtxPrintSink *printSink = nullptr;

// One line. On its way to stdout it goes out in pieces, which nothing of another thread can come between; for a sink it
// is kept until it is whole, on the system's heap once it is long.
class Line {
public:
  explicit Line(const char *name) : sink(printSink) {
    if (sink == nullptr) flockfile(stdout);
    putText(name);
  }
  ~Line() {
    if (sink == nullptr) funlockfile(stdout);
    if (bytes != shortLine) free(bytes);
  }
  Line(const Line &) = delete;
  Line &operator=(const Line &) = delete;

  void put(const char *text, size_t length) {
    if (length > capacity - used) sink != nullptr ? grow(length) : flush();
    if (length > capacity - used) return sink != nullptr ? refuse() : write(text, length);
    memcpy(bytes + used, text, length);
    used += length;
  }
  void put(const char *text) { put(text, strlen(text)); }
  void put(char c) { put(&c, 1); }

  void putText(const char *text) {
    if (text != nullptr) rt::putPrintable(*this, text, strlen(text), false);
  }
  void putQuoted(const char *text) {
    if (text == nullptr) return put("<null>");
    put('"');
    rt::putPrintable(*this, text, strlen(text), true);
    put('"');
  }
  template <class Number> void putNumber(Number value) {
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
    put(digits, static_cast<size_t>(end.ptr - digits));
  }

  int finish() {
    put('\n');
    if (sink == nullptr) {
      flush();
    } else {
      if (!refused) hand();
      if (refused) ++sink->refused;
    }
    return refused ? -1 : 0;
  }

private:
  void refuse() { refused = true; }

  // To stdout.
  void write(const char *text, size_t length) {
    if (fwrite(text, 1, length, stdout) != length) refuse();
  }
  void flush() {
    if (used != 0) write(bytes, used);
    used = 0;
  }

  // Makes room for so many bytes more, if there is storage and the line has not lost a part already.
  void grow(size_t length) {
    if (refused || length > SIZE_MAX / 2 - used) return;
    const size_t grown = (used + length) * 2;
    auto *larger = static_cast<char *>(malloc(grown));
    if (larger == nullptr) return;
    memcpy(larger, bytes, used);
    if (bytes != shortLine) free(bytes);
    bytes = larger;
    capacity = grown;
  }
  void hand() {
    printSink = nullptr;
    if (sink->put == nullptr || sink->put(sink->user, bytes, used) != 0) refuse();
    printSink = sink;
  }

  RtxPrintSink *const sink;
  char shortLine[512];
  char *bytes = shortLine;
  size_t capacity = sizeof shortLine;
  size_t used = 0;
  bool refused = false;
};

} // namespace

RtxPrintSink *rtxSetPrintSink(RtxPrintSink *sink) { return std::exchange(printSink, sink); }

int rtxPrintCharStr(const char *name, const char *text) {
  Line line(name);
  line.put(" = ");
  line.putQuoted(text);
  return line.finish();
}

int rtxPrintUnsigned(const char *name, uint32_t value) {
  Line line(name);
  line.put(" = ");
  line.putNumber(value);
  return line.finish();
}

int rtxPrintBoolean(const char *name, bool value) {
  Line line(name);
  line.put(value ? " = true" : " = false");
  return line.finish();
}

int rtxPrintReal(const char *name, double value) {
  Line line(name);
  line.put(" = ");
  line.putNumber(value);
  return line.finish();
}

int rtxPrintHexBinary(const char *name, uint32_t length, const uint8_t *bytes) {
  Line line(name);
  line.put(" = ");
  if (bytes == nullptr) length = 0;
  for (uint32_t i = 0; i < length; ++i) {
    const char digits[] = "0123456789ABCDEF";
    const char pair[] = {digits[bytes[i] >> 4], digits[bytes[i] & 15]};
    line.put(pair, sizeof pair);
  }
  return line.finish();
}

int rtxPrintNVP(const char *name, const char *attributeName, const char *attributeValue) {
  Line line(name);
  line.put(" = ");
  line.putText(attributeName);
  line.put('=');
  line.putQuoted(attributeValue);
  return line.finish();
}

int rtxPrintNull(const char *name) {
  Line line(name);
  line.put(" = <null>");
  return line.finish();
}

int rtXmlPrintNSAttrs(const char *name, const RtxNsDeclList *list) {
  int result = 0;
  for (const RtxListNode *node = list != nullptr ? list->items.head : nullptr; node != nullptr; node = node->next) {
    const auto *declaration = static_cast<const RtxNsDecl *>(node->data);
    Line line(name);
    line.put(".xmlns");
    if (declaration->prefix != nullptr && *declaration->prefix != '\0') {
      line.put(':');
      line.putText(declaration->prefix);
    }
    line.put(" = ");
    line.putQuoted(declaration->uri);
    if (line.finish() != 0) result = -1;
  }
  return result;
}
