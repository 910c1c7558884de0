// The document decoders and validators: a reader, the root's handler, and what is left of both afterwards.
#include "Contract.h"
#include "Engines.h"
#include "Handler.h"
#include "rtXmlNamespace.h"

namespace ims {

namespace {

int wrap(RuntimeContext *ctx, int status, const DocumentSchema &document, File file, uint8_t step) {
  return rtxErrSetData(ctx, status, document.module->paths[int(file)], siteLine(document, file, step));
}

int recordNoReader(RuntimeContext *ctx, const DocumentSchema &document, File file) {
  return rtxErrSetNewData(ctx, STATUS_READER_FAILED, document.module->paths[int(file)],
                          siteLine(document, file, step::reader));
}

int recordOtherContract(RuntimeContext *ctx, const DocumentSchema &document, File file) {
  return ims::recordOtherContract(ctx, document.module->paths[int(file)],
                                  siteLine(document, file, step::otherContract));
}

// Element tables mean the module's own table of URIs, whatever the context was used for before.
int installTable(RuntimeContext *ctx, const DocumentSchema &document, File file) {
  const NamespaceFamily *namespaces = document.module->namespaces;
  int status =
      namespaces ? rtXmlNSSetURITable(ctx, namespaces->uris, namespaces->count) : rtXmlNSSetURITable(ctx, nullptr, 0);
  return status != 0 ? wrap(ctx, status, document, file, step::installTable) : status;
}

// Reads the document; an error that is on the context makes the call fail even if the document was read to its end.
int parse(RuntimeContext *ctx, RtSaxReader *reader, const DocumentSchema &document, File file) {
  int status = installTable(ctx, document, file);
  if (status == 0) status = rtSaxCParse(reader);
  return status;
}

// Whatever a document cut off has left open goes with the root's handler.
template <class Handler> void endRoot(RuntimeContext *ctx, Handler &handler) {
  releaseDelegates(&handler);
  if (handler.release) handler.release(ctx, &handler);
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
}

int convertSimple(RuntimeContext *ctx, const DocumentSchema &document, void *value) {
  const SimpleType &simple = *document.simple;
  if (simple.collapsed) rtXmlTreatWhitespaces(ctx, RTXML_WS_COLLAPSE);
  int status = STATUS_OK;
  switch (simple.kind) {
  case Kind::hexBinary: status = rtXmlDecDynHexStr(ctx, static_cast<RtxHexBinary *>(value)); break;
  case Kind::enumeration:
    status = enumCode(*simple.enumeration, ctx->buffer.data, ctx->buffer.size, static_cast<uint16_t *>(value));
    if (status == STATUS_ENUM_NOT_FOUND) {
      rtxErrAddCtxtBufParm(ctx);
      return rtxErrSetNewData(ctx, status, document.module->paths[int(File::decoder)],
                              siteLine(document, File::decoder, step::checkText));
    }
    break;
  default: status = rtXmlDecXmlStr(ctx, static_cast<RtxXmlString *>(value)); break;
  }
  return status != 0 ? wrap(ctx, status, document, File::decoder, step::convert) : status;
}

int decodeSimple(RuntimeContext *ctx, const DocumentSchema &document, void *value) {
  SaxTypeHandler handler;
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &handler, SAXSimpleTypeStartElement, SAXSimpleTypeEndElement, SAXSimpleTypeCharacters);
  if (!reader) return recordNoReader(ctx, document, File::decoder);
  int status = SAXSimpleTypeInit(ctx, &handler, document.root);
  if (status == 0) {
    status = parse(ctx, reader, document, File::decoder);
    if (status == 0) convertSimple(ctx, document, value);
    endRoot(ctx, handler);
  } else {
    wrap(ctx, status, document, File::decoder, step::startDocument);
  }
  if (status == 0) status = rtxErrGetFirstError(ctx);
  rtSaxCReleaseReader(reader);
  return status;
}

} // namespace

int decodeDocument(RuntimeContext *ctx, const DocumentSchema &document, void *value) {
  if (!keepsContract(ctx)) return recordOtherContract(ctx, document, File::decoder);
  if (!document.type) return decodeSimple(ctx, document, value);
  const TypeSchema &type = *document.type;
  SaxTypeHandler handler;
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &handler, type.decoding.startElement, type.decoding.endElement,
                                              type.decoding.characters);
  if (!reader) return recordNoReader(ctx, document, File::decoder);
  initRecord(ctx, type, value);
  initHandler(ctx, type, &handler, value, 0);
  handler.rootName = document.root;
  int status = parse(ctx, reader, document, File::decoder);
  if (status == 0) status = rtxErrGetFirstError(ctx);
  endRoot(ctx, handler);
  rtSaxCReleaseReader(reader);
  return status;
}

int validateDocument(RuntimeContext *ctx, const DocumentSchema &document) {
  if (!document.type) return STATUS_NOT_SUPPORTED;
  if (!keepsContract(ctx)) return recordOtherContract(ctx, document, File::validators);
  const TypeSchema &type = *document.type;
  VsaxTypeHandler handler;
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &handler, type.validating.startElement, type.validating.endElement,
                                              type.validating.characters);
  if (!reader) return recordNoReader(ctx, document, File::validators);
  initHandler(ctx, type, &handler, 0);
  handler.rootName = document.root;
  int status = parse(ctx, reader, document, File::validators);
  if (status == 0) status = rtxErrGetFirstError(ctx);
  endRoot(ctx, handler);
  rtSaxCReleaseReader(reader);
  return status;
}

} // namespace ims
