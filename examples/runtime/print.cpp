// Diagnostic output: a line each on stdout.
#include "rtxPrint.h"

#include "context.h"
#include "decimal.h"

#include <math.h>
#include <stdio.h>

namespace {

// Control characters as \xNN, so that a text stays on its line. A backslash goes before quotes and itself.
void putText(const char *text) {
  for (; *text; ++text) {
    const unsigned char byte = static_cast<unsigned char>(*text);
    if (byte < 0x20 || byte == 0x7F) {
      printf("\\x%02X", byte);
    } else {
      if (byte == '\\' || byte == '"') putchar('\\');
      putchar(byte);
    }
  }
}

void putQuoted(const char *text) {
  if (!text) {
    fputs("<null>", stdout);
    return;
  }
  putchar('"');
  putText(text);
  putchar('"');
}

int endLine() {
  putchar('\n');
  return ferror(stdout) ? STATUS_WRITE_FAILED : STATUS_OK;
}

} // namespace

int rtxPrintCharStr(const char *name, const char *text) {
  printf("%s = ", name);
  putQuoted(text);
  return endLine();
}

int rtxPrintUnsigned(const char *name, uint32_t value) {
  printf("%s = %lu", name, static_cast<unsigned long>(value));
  return endLine();
}

int rtxPrintBoolean(const char *name, bool value) {
  printf("%s = %s", name, value ? "true" : "false");
  return endLine();
}

int rtxPrintReal(const char *name, double value) {
  char digits[tiny::decimalSize];
  const size_t length = tiny::writeDecimal(value, digits);
  printf("%s = %.*s", name, static_cast<int>(length), digits);
  if (length == 0) printf("%s", isnan(value) ? "nan" : value < 0 ? "-inf" : "inf");
  return endLine();
}

int rtxPrintHexBinary(const char *name, uint32_t length, const uint8_t *bytes) {
  printf("%s = ", name);
  for (uint32_t i = 0; i < length; ++i)
    printf("%02X", bytes[i]);
  return endLine();
}

int rtxPrintNVP(const char *name, const char *attributeName, const char *attributeValue) {
  printf("%s = ", name);
  putText(attributeName ? attributeName : "");
  putchar('=');
  putQuoted(attributeValue);
  return endLine();
}

int rtxPrintNull(const char *name) { return rtxPrintCharStr(name, nullptr); }

int rtXmlPrintNSAttrs(const char *name, const RtxNsDeclList *list) {
  int status = 0;
  for (const RtxListNode *node = list->items.head; node && status == 0; node = node->next) {
    const RtxNsDecl &declaration = *static_cast<const RtxNsDecl *>(node->data);
    printf("%s.xmlns%s", name, declaration.prefix ? ":" : "");
    putText(declaration.prefix ? declaration.prefix : "");
    fputs(" = ", stdout);
    putQuoted(declaration.uri);
    status = endLine();
  }
  return status;
}
