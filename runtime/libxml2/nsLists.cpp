#include "nsLists.h"

#include "rtxMemory.h"
#include "rtxText.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

const char *orEmpty(const char *text) { return text == nullptr ? "" : text; }

void freeDeclaration(RuntimeContext *ctx, RtxNsDecl *declaration) {
  if (declaration == nullptr) return;
  rtxMemHeapFreePtr(ctx, declaration->prefix);
  rtxMemHeapFreePtr(ctx, declaration->uri);
  rtxMemHeapFreePtr(ctx, declaration);
}

} // namespace

int addDeclaration(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri) {
  const char *const wanted = orEmpty(prefix);
  for (const RtxListNode *node = list->items.head; node != nullptr; node = node->next) {
    const RtxNsDecl *present = static_cast<const RtxNsDecl *>(node->data);
    if (present == nullptr) continue;
    const char *const name = orEmpty(present->prefix);
    if (*name == *wanted && strcmp(name, wanted) == 0) return 0; // a tag may have many, and few begin alike
  }
  RtxNsDecl *added = static_cast<RtxNsDecl *>(rtxMemHeapAlloc(ctx, sizeof(RtxNsDecl)));
  if (added == nullptr) return STATUS_NO_MEMORY;
  const bool isDefault = *orEmpty(prefix) == '\0';
  *added = {isDefault ? nullptr : rtxUTF8Strdup(ctx, prefix), rtxUTF8Strdup(ctx, orEmpty(uri))};
  if ((!isDefault && added->prefix == nullptr) || added->uri == nullptr ||
      rtxDListAppend(ctx, &list->items, added) == nullptr) {
    freeDeclaration(ctx, added);
    return STATUS_NO_MEMORY;
  }
  return 0;
}

} // namespace rt

void rtXmlNSFreeAttrList(RuntimeContext *ctx, RtxNsDeclList *list) {
  if (!rt::usable(ctx) || list == nullptr) return;
  for (RtxListNode *node = list->items.head; node != nullptr; node = node->next) {
    rt::freeDeclaration(ctx, static_cast<RtxNsDecl *>(node->data));
    node->data = nullptr;
  }
  rtxDListFreeAll(ctx, &list->items);
}

void rtXmlMemFreeAnyAttrs(RuntimeContext *ctx, RtxAttrList *list) {
  if (!rt::usable(ctx) || list == nullptr) return;
  for (RtxListNode *node = list->items.head; node != nullptr; node = node->next) {
    RtxNamePair *attribute = static_cast<RtxNamePair *>(node->data);
    if (attribute == nullptr) continue;
    rtxMemHeapFreePtr(ctx, attribute->name);
    rtxMemHeapFreePtr(ctx, attribute->value);
    rtxMemHeapFreePtr(ctx, attribute);
    node->data = nullptr;
  }
  rtxDListFreeAll(ctx, &list->items);
}
