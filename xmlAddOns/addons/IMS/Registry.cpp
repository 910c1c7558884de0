#include "Namespaces.h"

#include <stdlib.h>
#include <string.h>

namespace ims {

namespace {

constexpr const char *imsUris[QX_URI_SLOTS] = {
    "urn:ietf:params:xml:ns:common-policy", "urn:oma:params:xml:ns:poc:poc-settings",
    "urn:ietf:params:xml:ns:im-iscomposing", "urn:ietf:params:xml:ns:simple-filter",
    "urn:ietf:params:xml:ns:dialog-info"};

// The table of this family is as long as the other's: a context may have been claimed by either, and encoders
// index the table that is there.
constexpr const char *debugUris[QX_URI_SLOTS] = {"urn:ietf:params:xml:ns:debuginfo"};

QxRegistry *getBlock(RuntimeContext *ctx, RtxContextRelease release) {
  if (ctx->globalData) return static_cast<QxRegistry *>(ctx->globalData);
  auto *block = static_cast<QxRegistry *>(malloc(sizeof(QxRegistry)));
  if (!block) return nullptr;
  block->uriTable = nullptr;
  ctx->globalData = block;
  ctx->globalRelease = release;
  return block;
}

void freeBlock(RuntimeContext *ctx, QxRegistry *block) {
  if (!block) return;
  free(block->uriTable);
  free(block);
  ctx->globalData = nullptr;
}

const char *const *getTable(QxRegistry *block, const char *const (&uris)[QX_URI_SLOTS]) {
  if (!block) return nullptr;
  if (!block->uriTable) {
    auto *table = static_cast<const char **>(malloc(sizeof(uris)));
    if (!table) return nullptr;
    memcpy(table, uris, sizeof(uris));
    block->uriTable = table;
  }
  return block->uriTable;
}

} // namespace

constinit const NamespaceFamily imsNamespaces = {imsUris, imsNamespaceCount, QxGet_IMS_NSURI};
constinit const NamespaceFamily debugNamespaces = {debugUris, debugNamespaceCount, QxGet_DebugEvent_NSURI};

} // namespace ims

using namespace ims;

QxRegistry *QxGet_IMS_Global(RuntimeContext *ctx) { return getBlock(ctx, QxFree_IMS_Global); }
void QxFree_IMS_Global(RuntimeContext *ctx) { freeBlock(ctx, QxGet_IMS_Global(ctx)); }
const char *const *QxGet_IMS_NSURI(RuntimeContext *ctx) { return getTable(QxGet_IMS_Global(ctx), imsUris); }
int QxInit_IMS_Global(RuntimeContext *ctx) {
  return QxGet_IMS_Global(ctx) && QxGet_IMS_NSURI(ctx) ? STATUS_OK : STATUS_NO_MEMORY;
}

QxRegistry *QxGet_DebugEvent_Global(RuntimeContext *ctx) { return getBlock(ctx, QxFree_DebugEvent_Global); }
void QxFree_DebugEvent_Global(RuntimeContext *ctx) { freeBlock(ctx, QxGet_DebugEvent_Global(ctx)); }
const char *const *QxGet_DebugEvent_NSURI(RuntimeContext *ctx) {
  return getTable(QxGet_DebugEvent_Global(ctx), debugUris);
}
int QxInit_DebugEvent_Global(RuntimeContext *ctx) {
  return QxGet_DebugEvent_Global(ctx) && QxGet_DebugEvent_NSURI(ctx) ? STATUS_OK : STATUS_NO_MEMORY;
}
