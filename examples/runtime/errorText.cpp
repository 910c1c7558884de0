// Error records and status numbers as text for people.
#include "context.h"

#include <stdio.h>

namespace {

// Takes any amount of text and keeps what fits.
struct Line {
  char *buffer;
  size_t size;
  size_t length = 0;

  void put(char c) {
    if (length + 1 < size) {
      buffer[length] = c;
      buffer[length + 1] = '\0';
    }
    ++length;
  }
  void put(const char *text) {
    for (; *text; ++text)
      put(*text);
  }
  void putNumber(long long value) {
    char digits[24];
    snprintf(digits, sizeof digits, "%lld", value);
    put(digits);
  }
  void putPrintable(const char *text, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      const unsigned char byte = static_cast<unsigned char>(text[i]);
      char escape[8];
      snprintf(escape, sizeof escape, "\\x%02X", byte);
      if (byte < 0x20 || byte == 0x7F) {
        put(escape);
      } else {
        put(text[i]);
      }
    }
  }
};

void putParameter(Line &line, const RtxErrorParam &param) {
  switch (param.kind) {
  case RTX_PARAM_TEXT: return line.putPrintable(param.text, param.length);
  case RTX_PARAM_INT: return line.putNumber(param.intValue);
  case RTX_PARAM_UINT: return line.putNumber(param.uintValue);
  }
}

void putMessage(Line &line, const RtxError &error) {
  line.put(rtxStatusText(error.status));
  for (uint32_t i = 0; i < error.paramCount; ++i) {
    line.put(i == 0 ? ": " : ", ");
    putParameter(line, error.params[i]);
  }
}

void putWhole(Line &line, const RtxError &error) {
  if (error.line > 0) {
    line.putNumber(error.line);
    line.put(':');
    line.putNumber(error.column);
    line.put(": ");
  }
  putMessage(line, error);
  line.put(" (");
  line.putNumber(error.status);
  line.put(')');
  if (*error.elementPath) line.put(" at ");
  line.putPrintable(error.elementPath, strlen(error.elementPath));
}

size_t format(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size, void (*put)(Line &, const RtxError &)) {
  const RtxError *error = rtxErrAt(ctx, index);
  Line line = {buffer, size};
  if (size > 0) buffer[0] = '\0';
  if (error) put(line, *error);
  return line.length;
}

} // namespace

size_t rtxErrFormat(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size) {
  return format(ctx, index, buffer, size, putWhole);
}

size_t rtxErrMessage(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size) {
  return format(ctx, index, buffer, size, putMessage);
}

const char *rtxStatusText(int status) {
  switch (status) {
  case STATUS_OK: return "no error";
  case STATUS_BUFFER_OVERFLOW: return "no room in the output";
  case STATUS_ROOT_MISMATCH: return "element of another name";
  case STATUS_ENUM_NOT_FOUND: return "text outside of the enumeration";
  case STATUS_INVALID_CHOICE: return "selector without an alternative";
  case STATUS_NO_MEMORY: return "no storage";
  case STATUS_CONSTRAINT_VIOLATION: return "value out of range";
  case STATUS_READER_FAILED: return "nothing to read";
  case STATUS_UNKNOWN_ATTRIBUTE: return "unknown attribute";
  case STATUS_UNEXPECTED_ELEMENT: return "unexpected element";
  case STATUS_INVALID_CONTENT: return "invalid content";
  case STATUS_INVALID_ATTRIBUTE: return "invalid attribute";
  case STATUS_NOT_SUPPORTED: return "not supported";
  case STATUS_INVALID_LEXICAL_FORM: return "text of another form";
  case STATUS_INVALID_UTF8: return "text that XML cannot carry";
  case STATUS_MISSING_ATTRIBUTE: return "missing attribute";
  case STATUS_PARSE_FAILED: return "not well-formed";
  case STATUS_BAD_CONTEXT: return "no context";
  case STATUS_WRITE_FAILED: return "nothing can be written here";
  case STATUS_LIMIT_EXCEEDED: return "more than the limit";
  default: return "unknown status";
  }
}
