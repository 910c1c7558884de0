// Doubly linked lists.

#include "internals.h"
#include "usable.h"

RtxListNode *rtxDListAppend(RuntimeContext *ctx, RtxList *list, void *data) {
  if (!rt::usable(ctx) || list == nullptr) return nullptr;
  auto *node = static_cast<RtxListNode *>(ctx->internals->heap.allocate(sizeof(RtxListNode)));
  if (node == nullptr) return nullptr;
  node->data = data;
  node->next = nullptr;
  node->prev = list->tail;
  if (list->tail != nullptr)
    list->tail->next = node;
  else
    list->head = node;
  list->tail = node;
  ++list->count;
  return node;
}

void rtxDListFreeAll(RuntimeContext *ctx, RtxList *list) {
  if (!rt::usable(ctx) || list == nullptr) return;
  rt::Heap &heap = ctx->internals->heap;
  RtxListNode *node = list->head;
  while (node != nullptr) {
    RtxListNode *next = node->next;
    heap.release(node->data);
    heap.release(node);
    node = next;
  }
  *list = {};
}
