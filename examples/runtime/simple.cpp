// The handler of a document whose root holds only text.
#include "context.h"
#include "rtxText.h"

using namespace tiny;

namespace {

int rootMismatch(RuntimeContext *ctx, const char *expected, const char *found) {
  if (!rtSaxIncErrors(ctx)) return 0;
  addText(ctx, expected);
  addText(ctx, found);
  return rtxErrSetNewData(ctx, STATUS_ROOT_MISMATCH, readerPath, lineSimpleRoot);
}

int unexpectedChild(RuntimeContext *ctx, const char *qualifiedName) {
  if (rtSaxIncErrors(ctx)) {
    addText(ctx, qualifiedName);
    rtxErrSetNewData(ctx, STATUS_UNEXPECTED_ELEMENT, readerPath, lineSimpleElement);
  }
  return rtSaxSetSkipLevelToCurrent(ctx, STATUS_UNEXPECTED_ELEMENT);
}

} // namespace

int SAXSimpleTypeInit(RuntimeContext *ctx, SaxTypeHandler *handler, const char *rootName) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  *handler = {};
  handler->startElement = SAXSimpleTypeStartElement;
  handler->endElement = SAXSimpleTypeEndElement;
  handler->characters = SAXSimpleTypeCharacters;
  handler->context = ctx;
  handler->rootName = rootName;
  rtxMemBufReset(&ctx->reader->text);
  return 0;
}

int SAXSimpleTypeStartElement(void *handler, const char *localName, const char *qualifiedName,
                              const char *const *attributes) {
  const CallbackTrace traced(handler, __func__, qualifiedName);
  SaxTypeHandler &self = *static_cast<SaxTypeHandler *>(handler);
  self.context->state = XMLSTATE_IN_ELEMENT;
  if (self.level > 0) return unexpectedChild(self.context, qualifiedName);
  ++self.level;
  if (self.rootName && !rtxUTF8StrEqual(self.rootName, localName)) rootMismatch(self.context, self.rootName, localName);
  rtSaxReportUnexpAttrs(self.context, attributes, localName);
  return 0;
}

int SAXSimpleTypeCharacters(void *handler, const char *bytes, size_t length) {
  const CallbackTrace traced(handler, __func__, nullptr);
  RuntimeContext *ctx = static_cast<SaxTypeHandler *>(handler)->context;
  ctx->state = XMLSTATE_IN_TEXT;
  const int status = rtxMemBufAppend(&ctx->reader->text, bytes, length);
  if (status == 0) return 0;
  if (rtSaxIncErrors(ctx)) rtxErrSetNewData(ctx, status, readerPath, lineSimpleStorage);
  return rtSaxSetSkipLevelToCurrent(ctx, status);
}

int SAXSimpleTypeEndElement(void *handler, const char *, const char *qualifiedName) {
  const CallbackTrace traced(handler, __func__, qualifiedName);
  SaxTypeHandler &self = *static_cast<SaxTypeHandler *>(handler);
  const RtxMemBuf &text = self.context->reader->text;
  --self.level;
  self.context->state = XMLSTATE_DOC_END;
  return rtxInitContextBuffer(self.context, text.data ? text.data + text.start : nullptr, text.used - text.start);
}
