// The lookups of handlers: elements by content state, attributes, the count of errors, the trace.
#include "context.h"
#include "rtXmlDecode.h"
#include "rtXmlNamespace.h"

using namespace tiny;

namespace {

struct Lookup {
  uint8_t *state;
  const uint8_t *states;
  uint32_t stateCount;

  // Takes the step that a row allows in this state, if it does.
  uint16_t step(uint32_t row) const {
    if (*state >= stateCount) return RTSAX_NO_ELEMENT;
    const uint8_t next = states[row * stateCount + *state];
    if (next == RTSAX_NOT_ALLOWED) return RTSAX_NO_ELEMENT;
    *state = next;
    return static_cast<uint16_t>(row);
  }
};

bool isWildcard(const RtSaxElementInfo &element) { return *element.name == '\0'; }

bool isNamed(const RtSaxElementInfo &element, const char *localName) {
  return !isWildcard(element) && strcmp(element.name, localName) == 0;
}

// Where the innermost element begins, for errors that are about it and not about what its handler looks at.
size_t elementPlace(const RuntimeContext *ctx) {
  const RtSaxReader &reader = ctx->internals->reader;
  return reader.parsing && reader.open.count > 0 ? reader.open.items[reader.open.count - 1].at : nowhere;
}

} // namespace

// ---- Elements

uint16_t rtSaxGetElemID8(uint8_t *contentState, int16_t, const char *localName, int namespaceIndex,
                         const RtSaxElementInfo *elements, const uint8_t *states, uint32_t elementCount,
                         uint32_t stateCount) {
  const Lookup lookup = {contentState, states, stateCount};
  for (uint32_t row = 0; row < elementCount; ++row) {
    const bool ours = namespaceIndex == elements[row].namespaceIndex || namespaceIndex == RTXML_NS_NONE;
    if (ours && isNamed(elements[row], localName)) return lookup.step(row);
  }
  for (uint32_t row = 0; row < elementCount; ++row) {
    const bool others = namespaceIndex != elements[row].namespaceIndex || namespaceIndex == RTXML_NS_NONE;
    if (others && isWildcard(elements[row])) return lookup.step(row);
  }
  return RTSAX_NO_ELEMENT;
}

uint16_t rtSaxLookupElemID8(RuntimeContext *ctx, uint8_t *contentState, int16_t, const char *localName,
                            const char *qualifiedName, int, const RtSaxElementInfo *elements, const uint8_t *states,
                            uint32_t elementCount, uint32_t stateCount) {
  const Lookup lookup = {contentState, states, stateCount};
  for (uint32_t row = 0; row < elementCount; ++row) {
    if (!isNamed(elements[row], localName)) continue;
    const uint16_t id = lookup.step(row);
    if (id != RTSAX_NO_ELEMENT) return id;
    break;
  }
  if (rtSaxIncErrors(ctx)) {
    addText(ctx, qualifiedName);
    recordAt(ctx, STATUS_UNEXPECTED_ELEMENT, lineElement, elementPlace(ctx));
  }
  rtSaxSetSkipLevelToCurrent(ctx, 0);
  return RTSAX_NO_ELEMENT;
}

// ---- Attributes

int rtSaxGetAttributeID(const char *name, uint32_t count, const char *const *names, uint32_t *seen) {
  for (uint32_t i = 0; i < count; ++i) {
    if (strcmp(name, names[i]) != 0) continue;
    *seen |= uint32_t{1} << i;
    return static_cast<int>(i);
  }
  return -1;
}

int rtSaxTestAttributesPresent(RuntimeContext *ctx, const uint32_t *seen, uint32_t required, const char *const *names,
                               uint32_t count, const char *typeName) {
  int status = 0;
  for (uint32_t i = 0; i < count; ++i) {
    if ((required & ~*seen & uint32_t{1} << i) == 0) continue;
    status = STATUS_MISSING_ATTRIBUTE;
    if (!rtSaxIncErrors(ctx)) continue;
    addText(ctx, typeName);
    addText(ctx, names[i]);
    recordAt(ctx, status, lineMissingAttribute, elementPlace(ctx));
  }
  return status;
}

int rtSaxReportUnexpAttrs(RuntimeContext *ctx, const char *const *attributes, const char *elementName) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  int status = 0;
  for (const char *const *at = attributes; at && at[0]; at += 2) {
    if (isDeclaration(at[0]) || rtXmlDecXSIAttr(ctx, at[0], at[1]) == 0) continue;
    status = STATUS_UNKNOWN_ATTRIBUTE;
    if (!rtSaxIncErrors(ctx)) continue;
    addText(ctx, elementName);
    addText(ctx, at[0]);
    const RtxTextBuffer before = ctx->buffer;
    ctx->buffer = {const_cast<char *>(at[1]), 0, strlen(at[1]), false}; // what the error is about
    rtxErrSetNewData(ctx, status, readerPath, lineUnknownAttribute);
    ctx->buffer = before;
  }
  return status;
}

// ---- Errors

int rtSaxIncErrors(RuntimeContext *ctx) {
  if (!usable(ctx)) return 0;
  RtSaxReader &reader = ctx->internals->reader;
  if (!reader.active) return 1; // each reader has a count of its own
  if (reader.errorCount >= reader.errorLimit) return 0;
  ++reader.errorCount;
  return 1;
}

// ---- Trace

namespace {

void trace(void *handler, bool enter, const char *function, const char *element) {
  RuntimeContext *ctx = nullptr; // of either type of handler, at the same place in both
  memcpy(&ctx, static_cast<const char *>(handler) + offsetof(SaxTypeHandler, context), sizeof ctx);
  if (!usable(ctx) || !ctx->internals->options.trace) return;
  const RuntimeOptions &options = ctx->internals->options;
  options.trace(options.traceUser, enter, function, element ? element : "");
}

} // namespace

void rtSaxDiagStartFunc(void *handler, const char *function, const char *element) {
  trace(handler, true, function, element);
}
void rtSaxDiagEndFunc(void *handler, const char *function, const char *element) {
  trace(handler, false, function, element);
}

namespace tiny {

CallbackTrace::CallbackTrace(void *callee, const char *function, const char *element)
    : handler(callee), functionName(function), elementName(element) {
  rtSaxDiagStartFunc(handler, functionName, elementName);
}
CallbackTrace::~CallbackTrace() { rtSaxDiagEndFunc(handler, functionName, elementName); }

} // namespace tiny
