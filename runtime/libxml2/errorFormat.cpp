// Error records as text for people.

#include "error.h"
#include "printable.h"
#include "status.h"

#include <charconv>
#include <string.h>

namespace rt {

namespace {

// Takes any amount of text, and keeps what fits into a buffer with a NUL behind it.
class BoundedText {
public:
  BoundedText(char *buffer, size_t bufferSize) : bytes(buffer), size(buffer != nullptr ? bufferSize : 0) {
    if (size != 0) *bytes = '\0';
  }

  void put(const char *text, size_t length) {
    const size_t room = size > total + 1 ? size - total - 1 : 0;
    const size_t fitting = length < room ? length : room;
    if (fitting != 0) {
      memcpy(bytes + total, text, fitting);
      bytes[total + fitting] = '\0';
    }
    total += length;
  }
  void put(const char *text) { put(text, strlen(text)); }
  template <class Number> void putNumber(Number value) {
    char digits[24];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
    put(digits, static_cast<size_t>(end.ptr - digits));
  }

  size_t length() const { return total; }

private:
  char *bytes;
  size_t size;
  size_t total = 0;
};

void putParam(BoundedText &out, const RtxErrorParam &param) {
  switch (param.kind) {
  case RTX_PARAM_TEXT: putPrintable(out, param.text, param.length, true); break;
  case RTX_PARAM_INT: out.putNumber(param.intValue); break;
  case RTX_PARAM_UINT: out.putNumber(param.uintValue); break;
  }
}

// Parameters that the wording has no place for.
void putSurplus(BoundedText &out, const RtxError &error, uint32_t from) {
  for (uint32_t i = from; i < error.paramCount; ++i) {
    out.put(i == from ? (from == 0 ? ": " : " (") : ", ");
    putParam(out, error.params[i]);
  }
  if (from != 0 && from < error.paramCount) out.put(")");
}

// As StatusWording describes it. All parameters that it names are there.
void putDetail(BoundedText &out, const char *detail, const RtxErrorParam *params) {
  for (const char *at = detail; *at != '\0'; ++at) {
    switch (*at) {
    case '[': {
      const char *mark = strchr(at, '$');
      const RtxErrorParam &param = params[mark[1] - '1'];
      if (param.kind == RTX_PARAM_TEXT && param.length == 0) at = strchr(at, ']');
      break;
    }
    case ']': break;
    case '$': putParam(out, params[*++at - '1']); break;
    default: out.put(at, 1);
    }
  }
}

void putMessage(BoundedText &out, const RtxError &error) {
  const StatusWording *wording = wordingOf(error.status);
  out.put(wording != nullptr ? wording->text : rtxStatusText(error.status));
  uint32_t told = 0;
  if (wording != nullptr && error.paramCount >= wording->paramCount) {
    putDetail(out, wording->detail, error.params);
    told = wording->paramCount;
  }
  putSurplus(out, error, told);
}

void putLine(BoundedText &out, const RtxError &error) {
  if (error.line != 0) {
    out.putNumber(error.line);
    out.put(":");
    out.putNumber(error.column);
    out.put(error.transcoded ? " in its UTF-8 form: " : ": ");
  }
  out.put("error: ");
  putMessage(out, error);
  out.put(" (status ");
  out.putNumber(error.status);
  out.put(")");
  if (*error.elementPath != '\0') {
    out.put(" at ");
    putPrintable(out, error.elementPath, strlen(error.elementPath), false);
  }
  if (error.siteCount == 0) return;
  const RtxErrorSite &found = error.sites[0];
  if (found.path == nullptr) return;
  const char *slash = strrchr(found.path, '/');
  out.put(" [");
  out.put(slash != nullptr ? slash + 1 : found.path);
  out.put(":");
  out.putNumber(found.line);
  out.put("]");
}

size_t format(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size,
              void (*putError)(BoundedText &, const RtxError &)) {
  BoundedText out(buffer, size);
  const RtxError *error = rtxErrAt(ctx, index);
  if (error != nullptr) putError(out, *error);
  return out.length();
}

} // namespace

} // namespace rt

size_t rtxErrFormat(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size) {
  return rt::format(ctx, index, buffer, size, rt::putLine);
}

size_t rtxErrMessage(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size) {
  return rt::format(ctx, index, buffer, size, rt::putMessage);
}
