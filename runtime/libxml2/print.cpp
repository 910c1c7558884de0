// Diagnostic output.

#include "rtxPrint.h"

#include "printable.h"

#include <charconv>
#include <stdio.h>
#include <string.h>

namespace {

// One line on stdout, which nothing of another thread can come between.
class Line {
public:
  explicit Line(const char *name) {
    flockfile(stdout);
    putText(name);
  }
  ~Line() { funlockfile(stdout); }
  Line(const Line &) = delete;
  Line &operator=(const Line &) = delete;

  void put(const char *text, size_t length) {
    if (length > sizeof bytes - used) flush();
    if (length > sizeof bytes) return write(text, length);
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
    flush();
    return refused ? -1 : 0;
  }

private:
  void write(const char *text, size_t length) {
    if (fwrite(text, 1, length, stdout) != length) refused = true;
  }
  void flush() {
    if (used != 0) write(bytes, used);
    used = 0;
  }

  char bytes[512];
  size_t used = 0;
  bool refused = false;
};

} // namespace

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
