// Records that a host builds by hand.

#include "rtxRecord.h"

#include "internals.h"
#include "rtxError.h"
#include "rtxMemory.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

constexpr char recordPath[] = "runtime/record";
enum RecordLine : int {
  lineTextNul = 10,
  lineTextStorage = 20,
  lineItemStorage = 30
};

// Makes text a copy of the bytes, unset for null. On failure, which is recorded, it is unset too.
int copyText(RuntimeContext *ctx, RtxXmlString &text, const char *bytes, size_t length) {
  text = {false, nullptr};
  if (bytes == nullptr) return 0;
  if (memchr(bytes, '\0', length) != nullptr)
    return rtxErrSetNewData(ctx, STATUS_INVALID_UTF8, recordPath, lineTextNul);
  auto *copy = length != SIZE_MAX ? static_cast<char *>(ctx->internals->heap.allocate(length + 1)) : nullptr;
  if (copy == nullptr) return rtxErrSetNewData(ctx, STATUS_NO_MEMORY, recordPath, lineTextStorage);
  memcpy(copy, bytes, length);
  copy[length] = '\0';
  text.value = copy;
  return 0;
}

} // namespace

} // namespace rt

int rtxSetText(RuntimeContext *ctx, RtxXmlString *member, const char *bytes, size_t length) {
  if (!rt::usable(ctx) || member == nullptr) return STATUS_BAD_CONTEXT;
  RtxXmlString text;
  const int status = rt::copyText(ctx, text, bytes, length);
  if (status != 0) return status;
  ctx->internals->heap.release(const_cast<char *>(member->value));
  *member = text;
  return 0;
}

void *rtxAppendItem(RuntimeContext *ctx, RtxList *list, size_t size) {
  if (!rt::usable(ctx) || list == nullptr) return nullptr;
  rt::Heap &heap = ctx->internals->heap;
  void *item = heap.allocate(size);
  if (item != nullptr && rtxDListAppend(ctx, list, item) != nullptr) return memset(item, 0, size);
  heap.release(item);
  rtxErrSetNewData(ctx, STATUS_NO_MEMORY, rt::recordPath, rt::lineItemStorage);
  return nullptr;
}

int rtxAppendText(RuntimeContext *ctx, RtxList *list, const char *bytes, size_t length) {
  if (!rt::usable(ctx) || list == nullptr) return STATUS_BAD_CONTEXT;
  RtxXmlString text;
  const int status = rt::copyText(ctx, text, bytes, length);
  if (status != 0) return status;
  if (void *item = rtxAppendItem(ctx, list, sizeof text)) {
    *static_cast<RtxXmlString *>(item) = text;
    return 0;
  }
  ctx->internals->heap.release(const_cast<char *>(text.value));
  return STATUS_NO_MEMORY;
}
