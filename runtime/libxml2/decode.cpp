#include "escape.h"
#include "internals.h"
#include "lexical.h"
#include "nsLists.h"
#include "plainCopy.h"
#include "rtxMemory.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

constexpr char schemaInstance[] = "http://www.w3.org/2001/XMLSchema-instance";

// The bytes that a conversion reads; empty where there are none.
struct Input {
  const char *bytes;
  size_t length;
};

Input inputOf(const RuntimeContext *ctx) {
  if (ctx->buffer.data == nullptr) return {"", 0};
  return {ctx->buffer.data, ctx->buffer.size};
}

template <class Value> int convert(RuntimeContext *ctx, bool (*parse)(const char *, size_t, Value &), Value *value) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const Input input = inputOf(ctx);
  return parse(input.bytes, input.length, *value) ? 0 : STATUS_INVALID_LEXICAL_FORM;
}

// The bytes are at fault, or else the heap is.
[[gnu::cold, gnu::noinline]] int refuseText(Input input) {
  if (isXmlText(input.bytes, input.length)) return STATUS_NO_MEMORY;
  return memchr(input.bytes, '\0', input.length) != nullptr ? STATUS_INVALID_LEXICAL_FORM : STATUS_INVALID_UTF8;
}

// Any text. copy: a block of its size, or null.
[[gnu::noinline]] int convertText(RuntimeContext *ctx, RtxXmlString *text, char *copy) {
  const Input input = inputOf(ctx);
  Heap &heap = ctx->internals->heap;
  if (copy == nullptr) copy = static_cast<char *>(heap.allocate(input.length + 1));
  if (copy == nullptr) return refuseText(input);
  if (!copyXmlText(copy, input.bytes, input.length)) {
    heap.release(copy);
    return refuseText(input);
  }
  copy[input.length] = '\0';
  *text = {false, copy};
  return 0;
}

} // namespace

} // namespace rt

int rtXmlDecXmlStr(RuntimeContext *ctx, RtxXmlString *text) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Input input = rt::inputOf(ctx);
  // Most texts are short and ASCII: this needs no frame for them.
  char *copy = static_cast<char *>(ctx->internals->heap.allocateAtOnce(input.length + 1));
  if (copy == nullptr || !rt::copyIf<rt::TextOfXml>(copy, input.bytes, input.length)) [[unlikely]]
    return rt::convertText(ctx, text, copy);
  copy[input.length] = '\0';
  *text = {false, copy};
  return 0;
}

int rtXmlDecUInt(RuntimeContext *ctx, uint32_t *value) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Input input = rt::inputOf(ctx);
  return rt::parseUnsigned(input.bytes, input.length, UINT32_MAX, *value) ? 0 : STATUS_INVALID_LEXICAL_FORM;
}

int rtXmlDecUInt16(RuntimeContext *ctx, uint16_t *value) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Input input = rt::inputOf(ctx);
  uint32_t number;
  if (!rt::parseUnsigned(input.bytes, input.length, UINT16_MAX, number)) return STATUS_INVALID_LEXICAL_FORM;
  *value = static_cast<uint16_t>(number);
  return 0;
}

int rtXmlDecBool(RuntimeContext *ctx, bool *value) { return rt::convert(ctx, rt::parseBoolean, value); }

int rtXmlDecDecimal(RuntimeContext *ctx, double *value) { return rt::convert(ctx, rt::parseDecimal, value); }

int rtXmlDecDateTime(RuntimeContext *ctx, RtxDateTime *value) { return rt::convert(ctx, rt::parseDateTime, value); }

int rtXmlDecTime(RuntimeContext *ctx, RtxDateTime *value) { return rt::convert(ctx, rt::parseTime, value); }

int rtXmlDecHexBinary(RuntimeContext *ctx, const char *digits, size_t length, RtXmlHexState *state, RtxMemBuf *out) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  constexpr size_t step = 256;
  uint8_t bytes[step / 2 + 1];
  while (length != 0) {
    const size_t count = length < step ? length : step;
    size_t written = 0;
    const bool valid = rt::parseHexPiece(digits, count, *state, bytes, written);
    if (const int status = rtxMemBufAppend(out, reinterpret_cast<const char *>(bytes), written); status != 0)
      return status;
    if (!valid) return STATUS_INVALID_LEXICAL_FORM;
    digits += count;
    length -= count;
  }
  return 0;
}

int rtXmlDecDynHexStr(RuntimeContext *ctx, RtxHexBinary *value) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const rt::Input input = rt::inputOf(ctx);
  const rt::Trimmed digits(input.bytes, input.length);
  const size_t length = static_cast<size_t>(digits.end - digits.begin);
  if (length / 2 > UINT32_MAX) return STATUS_NO_MEMORY;
  if (length == 0) {
    *value = {0, nullptr};
    return 0;
  }
  uint8_t *bytes = static_cast<uint8_t *>(rtxMemHeapAlloc(ctx, length / 2 + 1));
  if (bytes == nullptr) return STATUS_NO_MEMORY;
  RtXmlHexState state = {};
  size_t written = 0;
  if (!rt::parseHexPiece(digits.begin, length, state, bytes, written) || state.pending != 0) {
    rtxMemHeapFreePtr(ctx, bytes);
    return STATUS_INVALID_LEXICAL_FORM;
  }
  *value = {static_cast<uint32_t>(written), bytes};
  return 0;
}

int rtXmlTreatWhitespaces(RuntimeContext *ctx, int mode) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  if (mode != RTXML_WS_COLLAPSE) return STATUS_INVALID_LEXICAL_FORM;
  if (ctx->buffer.data != nullptr) ctx->buffer.size = rt::collapseSpace(ctx->buffer.data, ctx->buffer.size);
  return 0;
}

int rtXmlDecQName(RuntimeContext *ctx, const char *qualifiedName, const char **localName, const char **prefix) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  if (qualifiedName == nullptr) return STATUS_INVALID_LEXICAL_FORM;
  RtxInternals &internals = *ctx->internals;
  if (const rt::Binding *binding = internals.namespaces.bindingAskedFor(qualifiedName)) {
    if (prefix != nullptr) *prefix = binding->prefix;
    if (localName != nullptr) *localName = qualifiedName + binding->prefixLength + 1;
    return 0;
  }
  const char *colon = strchr(qualifiedName, ':');
  if (prefix != nullptr) {
    const char *copy = nullptr;
    if (colon != nullptr) {
      copy = internals.namespaces.keepPrefix(internals.heap, qualifiedName, static_cast<size_t>(colon - qualifiedName));
      if (copy == nullptr) return STATUS_NO_MEMORY;
    }
    *prefix = copy;
  }
  if (localName != nullptr) *localName = colon == nullptr ? qualifiedName : colon + 1;
  return 0;
}

int rtXmlDecNSAttr(RuntimeContext *ctx, const char *name, const char *value, RtxNsDeclList *list, void *, int) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  if (name == nullptr || strncmp(name, "xmlns", 5) != 0) return STATUS_INVALID_LEXICAL_FORM;
  const char *prefix = name[5] == ':' ? name + 6 : nullptr;
  const int status = rtXmlNSAddPrefixLink(ctx, prefix, value, nullptr, 0);
  if (status != 0 || list == nullptr) return status;
  return rt::addDeclaration(ctx, list, prefix, value);
}

int rtXmlDecXSIAttr(RuntimeContext *ctx, const char *name, const char *) {
  if (!rt::usable(ctx)) return STATUS_BAD_CONTEXT;
  const char *colon = name == nullptr ? nullptr : strchr(name, ':');
  if (colon == nullptr) return STATUS_UNKNOWN_ATTRIBUTE;
  const size_t prefixLength = static_cast<size_t>(colon - name);
  if (prefixLength == 3 && memcmp(name, "xsi", 3) == 0) return 0;
  const char *uri = ctx->internals->namespaces.uriOf(name, prefixLength);
  return uri != nullptr && strcmp(uri, rt::schemaInstance) == 0 ? 0 : STATUS_UNKNOWN_ATTRIBUTE;
}
