#include "Engines.h"
#include "Member.h"
#include "rtXmlNamespace.h"
#include "rtxMemory.h"

namespace ims {

namespace {

// Everything: also what exported release functions leave alone, for records that no caller will see.
enum class Extent : bool {
  owned,
  everything
};

void release(RuntimeContext *ctx, const TypeSchema &type, void *record, Extent extent);

void releaseTexts(RuntimeContext *ctx, RtxList &list) {
  for (RtxListNode *node = list.head; node; node = node->next)
    rtxMemHeapFreePtr(ctx, static_cast<RtxXmlString *>(node->data)->value);
  rtxDListFreeAll(ctx, &list);
}

void releaseField(RuntimeContext *ctx, const Field &field, void *record, Extent extent) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: rtxMemHeapFreePtr(ctx, memberAt<RtxXmlString>(record, field).value); break;
  case Kind::hexBinary: rtxMemHeapFreePtr(ctx, memberAt<RtxHexBinary>(record, field).bytes); break;
  case Kind::record:
  case Kind::choice: release(ctx, *field.type, static_cast<char *>(record) + field.offset, extent); break;
  case Kind::recordList:
  case Kind::choiceList: {
    RtxList &list = listAt(record, field);
    for (RtxListNode *node = list.head; node; node = node->next)
      release(ctx, *field.type, node->data, extent);
    rtxDListFreeAll(ctx, &list);
    break;
  }
  case Kind::textList:
  case Kind::foreignList: releaseTexts(ctx, listAt(record, field)); break;
  case Kind::attributeList: rtXmlMemFreeAnyAttrs(ctx, &memberAt<RtxAttrList>(record, field)); break;
  case Kind::namespaceList: rtXmlNSFreeAttrList(ctx, &memberAt<RtxNsDeclList>(record, field)); break;
  case Kind::uint32:
  case Kind::uint16:
  case Kind::boolean:
  case Kind::decimal:
  case Kind::enumeration: break;
  }
}

void release(RuntimeContext *ctx, const TypeSchema &type, void *record, Extent extent) {
  // Records of attributes alone have no release function: their texts stay until the heap goes.
  if (has(type, attributesOnly) && extent == Extent::owned) return;
  if (type.content == Content::choice) {
    if (const Field *alternative = alternativeOf(type, record)) releaseField(ctx, *alternative, record, extent);
    return;
  }
  for (const Field &field : fieldsOf(type)) {
    if (!isPresent(field, record)) continue;
    if (field.kind == Kind::text) { // the most common kind by far
      rtxMemHeapFreePtr(ctx, memberAt<RtxXmlString>(record, field).value);
    } else {
      releaseField(ctx, field, record, extent);
    }
  }
}

} // namespace

int freeRecord(RuntimeContext *ctx, const TypeSchema &type, void *record) {
  release(ctx, type, record, Extent::owned);
  return STATUS_OK;
}

void discardRecord(RuntimeContext *ctx, const TypeSchema &type, void *record) {
  release(ctx, type, record, Extent::everything);
}

uint32_t appendItem(RuntimeContext *ctx, RtxList *list, void *item) {
  rtxDListAppend(ctx, list, item);
  return list->count;
}

} // namespace ims
