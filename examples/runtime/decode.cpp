// Conversions from the text buffer.
#include "rtXmlDecode.h"

#include "context.h"
#include "decimal.h"
#include "rtXmlNamespace.h"
#include "rtxText.h"

using namespace tiny;

namespace {

bool readUnsigned(std::string_view text, uint32_t limit, uint32_t &value) {
  text = trimmed(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  uint64_t number = 0;
  for (const char c : text) {
    if (!isDigit(c)) return false;
    number = 10 * number + static_cast<uint64_t>(c - '0');
    if (number > limit) return false;
  }
  if (text.empty() || (negative && number != 0)) return false;
  value = static_cast<uint32_t>(number);
  return true;
}

int lexical(bool valid) { return valid ? STATUS_OK : STATUS_INVALID_LEXICAL_FORM; }

} // namespace

int rtXmlDecXmlStr(RuntimeContext *ctx, RtxXmlString *text) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const std::string_view bytes = bufferText(ctx);
  if (!isUtf8(bytes)) return STATUS_INVALID_UTF8;
  char *copy = static_cast<char *>(rtxMemHeapAlloc(ctx, bytes.size() + 1));
  if (!copy) return STATUS_NO_MEMORY;
  memcpy(copy, bytes.data(), bytes.size());
  copy[bytes.size()] = '\0';
  *text = {false, copy};
  return 0;
}

int rtXmlDecUInt(RuntimeContext *ctx, uint32_t *value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  return lexical(readUnsigned(bufferText(ctx), UINT32_MAX, *value));
}

int rtXmlDecUInt16(RuntimeContext *ctx, uint16_t *value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  uint32_t wide = 0;
  if (!readUnsigned(bufferText(ctx), UINT16_MAX, wide)) return STATUS_INVALID_LEXICAL_FORM;
  *value = static_cast<uint16_t>(wide);
  return 0;
}

int rtXmlDecBool(RuntimeContext *ctx, bool *value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const std::string_view word = trimmed(bufferText(ctx));
  const bool isTrue = word == "true" || word == "1";
  if (!isTrue && word != "false" && word != "0") return STATUS_INVALID_LEXICAL_FORM;
  *value = isTrue;
  return 0;
}

int rtXmlDecDecimal(RuntimeContext *ctx, double *value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  return readDecimal(ctx, bufferText(ctx), *value);
}

// ---- Hexadecimal

int rtXmlDecHexBinary(RuntimeContext *ctx, const char *digits, size_t length, RtXmlHexState *state, RtxMemBuf *out) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  enum Phase {
    before,
    inside,
    behind
  };
  for (size_t i = 0; i < length; ++i) {
    const int digit = hexDigit(digits[i]);
    if (digit < 0 && isSpace(digits[i])) {
      if (state->phase == inside) state->phase = behind;
      continue;
    }
    if (digit < 0 || state->phase == behind) return STATUS_INVALID_LEXICAL_FORM;
    state->phase = inside;
    if (state->pending == 0) {
      state->pending = static_cast<uint8_t>(16 + digit);
      continue;
    }
    const char byte = static_cast<char>((state->pending - 16) << 4 | digit);
    state->pending = 0;
    if (const int status = rtxMemBufAppend(out, &byte, 1)) return status;
  }
  return 0;
}

int rtXmlDecDynHexStr(RuntimeContext *ctx, RtxHexBinary *value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const std::string_view digits = trimmed(bufferText(ctx));
  for (const char c : digits) {
    if (hexDigit(c) < 0) return STATUS_INVALID_LEXICAL_FORM;
  }
  const size_t length = digits.size() / 2;
  if (digits.size() % 2 != 0 || length > UINT32_MAX) return STATUS_INVALID_LEXICAL_FORM;
  uint8_t *bytes = length == 0 ? nullptr : static_cast<uint8_t *>(rtxMemHeapAlloc(ctx, length));
  if (length > 0 && !bytes) return STATUS_NO_MEMORY;
  for (size_t i = 0; i < length; ++i)
    bytes[i] = static_cast<uint8_t>(hexDigit(digits[2 * i]) << 4 | hexDigit(digits[2 * i + 1]));
  *value = {static_cast<uint32_t>(length), bytes};
  return 0;
}

// ---- White space

int rtXmlTreatWhitespaces(RuntimeContext *ctx, int) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  char *text = ctx->buffer.data;
  const size_t length = bufferText(ctx).size();
  size_t used = 0;
  bool blank = false; // one is to be written before the next character
  const auto put = [&](char c) {
    if (text[used] != c) text[used] = c; // a text that stays as it is need not be writable
    ++used;
  };
  for (size_t i = 0; i < length; ++i) {
    const char c = text[i];
    if (!isSpace(c)) {
      if (blank) put(' ');
      put(c);
    }
    blank = used > 0 && isSpace(c);
  }
  ctx->buffer.size = used;
  return 0;
}

// ---- Names

int rtXmlDecQName(RuntimeContext *ctx, const char *qualifiedName, const char **localName, const char **prefix) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const char *colon = strchr(qualifiedName, ':');
  if (colon && prefix) {
    Array<char> &copy = ctx->internals->prefix;
    copy.count = 0;
    const size_t length = static_cast<size_t>(colon - qualifiedName);
    if (!copy.append(ctx->internals->system, qualifiedName, length) || !copy.add(ctx->internals->system, '\0'))
      return STATUS_NO_MEMORY;
  }
  if (localName) *localName = colon ? colon + 1 : qualifiedName;
  if (prefix) *prefix = colon ? ctx->internals->prefix.items : nullptr;
  return 0;
}

int rtXmlDecNSAttr(RuntimeContext *ctx, const char *name, const char *value, RtxNsDeclList *list, void *, int) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const char *prefix = name[5] == ':' ? name + 6 : nullptr;
  if (const int status = rtXmlNSAddPrefixLink(ctx, prefix, value, nullptr, 0)) return status;
  return list ? addDeclaration(ctx, list, prefix, value) : 0;
}

int rtXmlDecXSIAttr(RuntimeContext *ctx, const char *name, const char *) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const std::string_view prefix = prefixOf(name);
  if (prefix.empty() || isDeclaration(name)) return STATUS_UNKNOWN_ATTRIBUTE;
  const Binding *binding = ctx->internals->namespaces.find(prefix);
  const bool instance = binding && strcmp(binding->uri, "http://www.w3.org/2001/XMLSchema-instance") == 0;
  return prefix == "xsi" || instance ? STATUS_OK : STATUS_UNKNOWN_ATTRIBUTE;
}
