// Doubly linked lists of heap blocks, and the two kinds of list that hold texts.
#include "context.h"
#include "rtXmlNamespace.h"
#include "rtxText.h"

using namespace tiny;

RtxListNode *rtxDListAppend(RuntimeContext *ctx, RtxList *list, void *data) {
  RtxListNode *node = static_cast<RtxListNode *>(rtxMemHeapAlloc(ctx, sizeof(RtxListNode)));
  if (!node) return nullptr;
  *node = {data, nullptr, list->tail};
  (list->tail ? list->tail->next : list->head) = node;
  list->tail = node;
  ++list->count;
  return node;
}

void rtxDListFreeAll(RuntimeContext *ctx, RtxList *list) {
  for (RtxListNode *node = list->head; node;) {
    RtxListNode *next = node->next;
    rtxMemHeapFreePtr(ctx, node->data);
    rtxMemHeapFreePtr(ctx, node);
    node = next;
  }
  *list = {};
}

void rtXmlNSFreeAttrList(RuntimeContext *ctx, RtxNsDeclList *list) {
  for (RtxListNode *node = list->items.head; node; node = node->next) {
    if (RtxNsDecl *declaration = static_cast<RtxNsDecl *>(node->data)) {
      rtxMemHeapFreePtr(ctx, declaration->prefix);
      rtxMemHeapFreePtr(ctx, declaration->uri);
    }
  }
  rtxDListFreeAll(ctx, &list->items);
}

void rtXmlMemFreeAnyAttrs(RuntimeContext *ctx, RtxAttrList *list) {
  for (RtxListNode *node = list->items.head; node; node = node->next) {
    if (RtxNamePair *pair = static_cast<RtxNamePair *>(node->data)) {
      rtxMemHeapFreePtr(ctx, pair->name);
      rtxMemHeapFreePtr(ctx, pair->value);
    }
  }
  rtxDListFreeAll(ctx, &list->items);
}

namespace tiny {

int addDeclaration(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri) {
  RtxNsDecl *declaration = static_cast<RtxNsDecl *>(rtxMemHeapAlloc(ctx, sizeof(RtxNsDecl)));
  if (!declaration) return STATUS_NO_MEMORY;
  *declaration = {rtxUTF8Strdup(ctx, prefix), rtxUTF8Strdup(ctx, uri)};
  const bool copied = (!prefix || declaration->prefix) && (!uri || declaration->uri);
  if (copied && rtxDListAppend(ctx, &list->items, declaration)) return 0;
  rtxMemHeapFreePtr(ctx, declaration->prefix);
  rtxMemHeapFreePtr(ctx, declaration->uri);
  rtxMemHeapFreePtr(ctx, declaration);
  return STATUS_NO_MEMORY;
}

} // namespace tiny
