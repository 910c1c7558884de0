// The document encoders: the frame that every root element shares.
#include "Contract.h"
#include "Engines.h"
#include "Member.h"
#include "Output.h"
#include "rtXmlEncode.h"
#include "rtXmlNamespace.h"
#include "rtxError.h"
#include "rtxText.h"

namespace ims {

namespace {

const char *pathOf(const DocumentSchema &document) { return document.module->paths[int(File::encoder)]; }

int wrap(RuntimeContext *ctx, int status, const DocumentSchema &document, uint8_t step) {
  if (status == 0) return status;
  return rtxErrSetData(ctx, status, pathOf(document), siteLine(document, File::encoder, step));
}

int terminate(RuntimeContext *ctx, const DocumentSchema &document, uint8_t step) {
  if (terminated(ctx)) return STATUS_OK;
  return rtxErrSetNewData(ctx, STATUS_BUFFER_OVERFLOW, pathOf(document), siteLine(document, File::encoder, step));
}

// The namespace of the root, under the prefix that is bound to it.
RtxNamespace rootNamespace(RuntimeContext *ctx, const DocumentSchema &document) {
  const char *uri = document.module->uri;
  return {rtXmlNSGetPrefix(ctx, uri), uri};
}

// The list that a root's declaration goes into; null is the context's own. Adding one's own namespace to a
// record's list is the one case in which encoding changes a record.
RtxNsDeclList *declarationList(const DocumentSchema &document, const void *value) {
  if (document.declaration != Declaration::prefixInRecord) return nullptr;
  return &memberAt<RtxNsDeclList>(const_cast<void *>(value), document.type->fields[document.type->namespaceList]);
}

int declareNamespace(RuntimeContext *ctx, const DocumentSchema &document, RtxNsDeclList *list) {
  const char *uri = document.module->uri;
  int status = STATUS_OK;
  switch (document.declaration) {
  case Declaration::none: break;
  case Declaration::prefix:
  case Declaration::prefixInRecord:
    if ((ctx->flags & NamespacesPreset) == 0) status = rtXmlNSSetNamespace(ctx, list, document.prefix, uri, false);
    break;
  case Declaration::defaultAlways: status = rtXmlNSSetNamespace(ctx, nullptr, nullptr, uri, true); break;
  }
  return wrap(ctx, status, document, step::declareNamespace);
}

int installTable(RuntimeContext *ctx, const DocumentSchema &document) {
  const NamespaceFamily *namespaces = document.module->namespaces;
  if (!namespaces) return STATUS_OK;
  return wrap(ctx, rtXmlNSSetURITable(ctx, namespaces->registry(ctx), namespaces->count), document, step::installTable);
}

int encodeSimple(RuntimeContext *ctx, const DocumentSchema &document, const void *value) {
  const SimpleType &simple = *document.simple;
  if (simple.kind == Kind::enumeration)
    return encodeEnumContents(ctx, *simple.enumeration, *static_cast<const uint16_t *>(value));
  if (simple.kind == Kind::hexBinary) {
    const auto *bytes = static_cast<const RtxHexBinary *>(value);
    return wrap(ctx, rtXmlEncHexBinary(ctx, bytes->length, bytes->bytes, nullptr, nullptr), document, step::convert);
  }
  const auto *text = static_cast<const RtxXmlString *>(value);
  int status = rtxValidateUTF8(ctx, text->value);
  if (status != 0) return wrap(ctx, status, document, step::checkText);
  return wrap(ctx, rtXmlEncString(ctx, text, nullptr, nullptr), document, step::convert);
}

} // namespace

int encodeDocumentStart(RuntimeContext *ctx, const DocumentSchema &document, const void *value) {
  RtxNsDeclList *list = declarationList(document, value);
  int status = declareNamespace(ctx, document, list);
  if (status != 0) return status;
  RtxNamespace ns = rootNamespace(ctx, document);
  status = rtXmlEncStartElement(ctx, document.root, &ns, nullptr, false);
  if (status != 0) return wrap(ctx, status, document, step::rootStart);
  status = rtXmlEncNSAttrs(ctx, list);
  if (status != 0) return wrap(ctx, status, document, step::rootDeclarations);
  if (document.type && has(*document.type, hasAttributes)) {
    status = encodeTypeAttributes(ctx, *document.type, value, &ns);
    // A value that cannot be written costs a root its attributes, not the document. A lack of room ends it.
    if (status == STATUS_BUFFER_OVERFLOW || status == STATUS_NO_MEMORY) return status;
  }
  status = rtXmlEncTermStartElement(ctx);
  int room = terminate(ctx, document, step::rootStartRoom);
  return room != 0 ? room : status;
}

int encodeDocumentContents(RuntimeContext *ctx, const DocumentSchema &document, const void *value) {
  int status = document.type ? encodeTypeContents(ctx, *document.type, value) : encodeSimple(ctx, document, value);
  int room = terminate(ctx, document, step::rootContentsRoom);
  return room != 0 ? room : status;
}

int encodeDocumentEnd(RuntimeContext *ctx, const DocumentSchema &document) {
  RtxNamespace ns = rootNamespace(ctx, document);
  int status = rtXmlEncEndElement(ctx, document.root, &ns);
  if (status != 0) return wrap(ctx, status, document, step::rootEnd);
  return terminate(ctx, document, step::rootEndRoom);
}

int encodeDocument(RuntimeContext *ctx, const DocumentSchema &document, const void *value) {
  if (!keepsContract(ctx))
    return recordOtherContract(ctx, pathOf(document), siteLine(document, File::encoder, step::otherContract));
  int status = installTable(ctx, document);
  if (status != 0) return status;
  status = rtXmlEncStartDocument(ctx);
  if (status != 0) return wrap(ctx, status, document, step::startDocument);
  status = encodeDocumentStart(ctx, document, value);
  if (status != 0) return wrap(ctx, status, document, step::wrapRootStart);
  status = encodeDocumentContents(ctx, document, value);
  if (status != 0) return wrap(ctx, status, document, step::wrapRootContents);
  status = encodeDocumentEnd(ctx, document);
  if (status != 0) return wrap(ctx, status, document, step::wrapRootEnd);
  return rtXmlEncEndDocument(ctx);
}

} // namespace ims
