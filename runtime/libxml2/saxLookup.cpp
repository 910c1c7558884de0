// What handlers ask while the reader calls them: names in tables, the count of errors, skipping.
#include "internals.h"
#include "reader.h"
#include "rtXmlDecode.h"
#include "rtxError.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

constexpr int anyNamespace = -1; // of a child: in none, or not to be compared

// Most names differ at once.
inline bool sameName(const char *a, const char *b) { return *a == *b && strcmp(a, b) == 0; }

struct Children {
  const RtSaxElementInfo *elements;
  const uint8_t *states;
  uint32_t elementCount;
  uint32_t stateCount;

  bool usable() const { return elements != nullptr && states != nullptr; }

  uint16_t named(const char *localName, int namespaceIndex) const {
    for (uint32_t row = 0; row < elementCount; row++) {
      const RtSaxElementInfo &element = elements[row];
      if (!sameName(element.name, localName) || element.name[0] == '\0') continue;
      if (namespaceIndex == anyNamespace || element.namespaceIndex == namespaceIndex) return static_cast<uint16_t>(row);
    }
    return RTSAX_NO_ELEMENT;
  }

  // An element of the wildcard's own namespace would have to be named.
  uint16_t wildcard(int namespaceIndex) const {
    for (uint32_t row = 0; row < elementCount; row++) {
      const RtSaxElementInfo &element = elements[row];
      if (element.name[0] == '\0' && (element.namespaceIndex < 0 || element.namespaceIndex != namespaceIndex))
        return static_cast<uint16_t>(row);
    }
    return RTSAX_NO_ELEMENT;
  }

  // A state beyond the table is a final one.
  uint16_t step(uint16_t row, uint8_t &state) const {
    if (row == RTSAX_NO_ELEMENT || state >= stateCount) return RTSAX_NO_ELEMENT;
    const uint8_t next = states[row * stateCount + state];
    if (next == RTSAX_NOT_ALLOWED) return RTSAX_NO_ELEMENT;
    state = next;
    return row;
  }
};

bool begins(const char *text, const char *prefix) {
  while (*prefix != '\0') {
    if (*text++ != *prefix++) return false;
  }
  return true;
}

// An error recorded while it lives is placed at the attribute with this value; null: at the element.
class ErrorAtAttribute {
public:
  ErrorAtAttribute(RuntimeContext *ctx, const char *value) : buffer(ctx->buffer), before(ctx->buffer.data) {
    buffer.data = const_cast<char *>(value);
  }
  ~ErrorAtAttribute() { buffer.data = before; }
  ErrorAtAttribute(const ErrorAtAttribute &) = delete;
  ErrorAtAttribute &operator=(const ErrorAtAttribute &) = delete;

private:
  RtxTextBuffer &buffer;
  char *const before;
};

// 0 if nobody reads the trace; else the handler's context.
RuntimeContext *tracedContext(void *handler) {
  static_assert(offsetof(SaxTypeHandler, context) == offsetof(VsaxTypeHandler, context));
  if (handler == nullptr) return nullptr;
  const char *member = static_cast<const char *>(handler) + offsetof(SaxTypeHandler, context);
  RuntimeContext *ctx = *reinterpret_cast<RuntimeContext *const *>(member);
  return usable(ctx) && ctx->internals->options.trace != nullptr ? ctx : nullptr;
}

} // namespace

} // namespace rt

using rt::usable;

uint16_t rtSaxGetElemID8(uint8_t *contentState, int16_t, const char *localName, int namespaceIndex,
                         const RtSaxElementInfo *elements, const uint8_t *states, uint32_t elementCount,
                         uint32_t stateCount) {
  const rt::Children children = {elements, states, elementCount, stateCount};
  if (contentState == nullptr || localName == nullptr || !children.usable()) return RTSAX_NO_ELEMENT;
  uint16_t row = children.named(localName, namespaceIndex);
  if (row == RTSAX_NO_ELEMENT) row = children.wildcard(namespaceIndex);
  return children.step(row, *contentState);
}

uint16_t rtSaxLookupElemID8(RuntimeContext *ctx, uint8_t *contentState, int16_t, const char *localName,
                            const char *qualifiedName, int, const RtSaxElementInfo *elements, const uint8_t *states,
                            uint32_t elementCount, uint32_t stateCount) {
  const rt::Children children = {elements, states, elementCount, stateCount};
  if (contentState != nullptr && localName != nullptr && children.usable()) {
    const uint16_t row = children.step(children.named(localName, rt::anyNamespace), *contentState);
    if (row != RTSAX_NO_ELEMENT) return row;
  }
  if (rtSaxIncErrors(ctx)) {
    rtxErrAddStrParm(ctx, qualifiedName);
    rtxErrSetNewData(ctx, STATUS_UNEXPECTED_ELEMENT, rt::readerPath, rt::lineUnexpectedElement);
  }
  rtSaxSetSkipLevelToCurrent(ctx, STATUS_UNEXPECTED_ELEMENT);
  return RTSAX_NO_ELEMENT;
}

int rtSaxGetAttributeID(const char *name, uint32_t count, const char *const *names, uint32_t *seen) {
  if (name == nullptr || names == nullptr) return -1;
  for (uint32_t i = 0; i < count; i++) {
    if (!rt::sameName(names[i], name)) continue;
    if (seen != nullptr && i < 32) *seen |= uint32_t{1} << i;
    return static_cast<int>(i);
  }
  return -1;
}

int rtSaxTestAttributesPresent(RuntimeContext *ctx, const uint32_t *seen, uint32_t required, const char *const *names,
                               uint32_t count, const char *typeName) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  const uint32_t missing = required & ~(seen == nullptr ? 0 : *seen);
  int status = 0;
  const rt::ErrorAtAttribute atElement(ctx, nullptr);
  for (uint32_t i = 0; i < count && i < 32 && names != nullptr; i++) {
    if ((missing >> i & 1) == 0) continue;
    status = STATUS_MISSING_ATTRIBUTE;
    if (!rtSaxIncErrors(ctx)) continue;
    rtxErrAddStrParm(ctx, typeName);
    rtxErrAddStrParm(ctx, names[i]);
    rtxErrSetNewData(ctx, status, rt::readerPath, rt::lineMissingAttribute);
  }
  return status;
}

int rtSaxReportUnexpAttrs(RuntimeContext *ctx, const char *const *attributes, const char *elementName) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  if (attributes == nullptr) return 0;
  int status = 0;
  for (; attributes[0] != nullptr; attributes += 2) {
    if (rt::begins(attributes[0], "xmlns") || rtXmlDecXSIAttr(ctx, attributes[0], attributes[1]) == 0) continue;
    status = STATUS_UNKNOWN_ATTRIBUTE;
    if (!rtSaxIncErrors(ctx)) continue;
    const rt::ErrorAtAttribute atAttribute(ctx, attributes[1]);
    rtxErrAddStrParm(ctx, elementName);
    rtxErrAddStrParm(ctx, attributes[0]);
    rtxErrSetNewData(ctx, status, rt::readerPath, rt::lineUnknownAttribute);
  }
  return status;
}

int rtSaxIncErrors(RuntimeContext *ctx) {
  if (!usable(ctx)) return 0;
  const RtxInternals &internals = *ctx->internals;
  if (!internals.readerActive) return internals.options.errorLimit != 0;
  if (internals.reader->errorCount >= internals.reader->errorLimit) return 0;
  internals.reader->errorCount++;
  return 1;
}

int rtSaxSetSkipLevelToCurrent(RuntimeContext *ctx, int status) {
  if (!usable(ctx) || !ctx->internals->readerActive) return status;
  RtSaxReader &reader = *ctx->internals->reader;
  if (reader.event == rt::Event::startTag || reader.event == rt::Event::text) reader.skipAsked = true;
  return status;
}

void rtSaxDiagStartFunc(void *handler, const char *function, const char *element) {
  if (const RuntimeContext *ctx = rt::tracedContext(handler))
    ctx->internals->options.trace(ctx->internals->options.traceUser, true, function, element);
}

void rtSaxDiagEndFunc(void *handler, const char *function, const char *element) {
  if (const RuntimeContext *ctx = rt::tracedContext(handler))
    ctx->internals->options.trace(ctx->internals->options.traceUser, false, function, element);
}
