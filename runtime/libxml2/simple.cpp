// The handler of a document whose root holds only text.
#include "reader.h"
#include "rtxError.h"
#include "rtxMemory.h"
#include "rtxText.h"
#include "usable.h"

namespace {

bool collects(const RuntimeContext *ctx) { return ctx->state == XMLSTATE_IN_ELEMENT || ctx->state == XMLSTATE_IN_TEXT; }

} // namespace

int SAXSimpleTypeInit(RuntimeContext *ctx, SaxTypeHandler *handler, const char *rootName) {
  if (!rt::usable(ctx) || handler == nullptr) return STATUS_BAD_CONTEXT;
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
  const rt::CallbackTrace trace(handler, "SAXSimpleTypeStartElement", qualifiedName);
  SaxTypeHandler &self = *static_cast<SaxTypeHandler *>(handler);
  RuntimeContext *ctx = self.context;
  ctx->state = XMLSTATE_IN_ELEMENT;
  if (self.level > 0) {
    int status = 0;
    if (rtSaxIncErrors(ctx)) {
      rtxErrAddStrParm(ctx, qualifiedName);
      status = rtxErrSetNewData(ctx, STATUS_UNEXPECTED_ELEMENT, rt::readerPath, rt::lineSimpleElement);
    }
    return rtSaxSetSkipLevelToCurrent(ctx, status);
  }
  if (self.rootName != nullptr && !rtxUTF8StrEqual(self.rootName, localName) && rtSaxIncErrors(ctx)) {
    rtxErrAddStrParm(ctx, self.rootName);
    rtxErrAddStrParm(ctx, localName);
    rtxErrSetNewData(ctx, STATUS_ROOT_MISMATCH, rt::readerPath, rt::lineSimpleRoot);
  }
  rtSaxReportUnexpAttrs(ctx, attributes, localName);
  self.level++;
  return 0;
}

int SAXSimpleTypeCharacters(void *handler, const char *bytes, size_t length) {
  const rt::CallbackTrace trace(handler, "SAXSimpleTypeCharacters", nullptr);
  SaxTypeHandler &self = *static_cast<SaxTypeHandler *>(handler);
  RuntimeContext *ctx = self.context;
  if (self.level != 1 || !collects(ctx)) return 0;
  ctx->state = XMLSTATE_IN_TEXT;
  const int status = rtxMemBufAppend(&ctx->reader->text, bytes, length);
  if (status == 0) return 0;
  if (rtSaxIncErrors(ctx)) rtxErrSetNewData(ctx, status, rt::readerPath, rt::lineSimpleStorage);
  return rtSaxSetSkipLevelToCurrent(ctx, status);
}

int SAXSimpleTypeEndElement(void *handler, const char *, const char *qualifiedName) {
  const rt::CallbackTrace trace(handler, "SAXSimpleTypeEndElement", qualifiedName);
  SaxTypeHandler &self = *static_cast<SaxTypeHandler *>(handler);
  RuntimeContext *ctx = self.context;
  if (--self.level > 0) return 0;
  const RtxMemBuf &text = ctx->reader->text;
  rtxInitContextBuffer(ctx, text.data == nullptr ? nullptr : text.data + text.start, text.used - text.start);
  ctx->state = XMLSTATE_DOC_END;
  return 0;
}
