// Records that a host builds by hand: by what the other functions of a runtime offer, so that any runtime can have it.
#include "rtxRecord.h"

#include "errors.h"
#include "rtxMemory.h"

#include <string.h>

namespace {

constexpr const char *recordPath = "runtime/record";
enum RecordLine {
  lineNul = 1,
  lineText,
  lineItem
};

int copyText(RuntimeContext *ctx, RtxXmlString &text, const char *bytes, size_t length) {
  text = {};
  if (!bytes) return STATUS_OK;
  if (memchr(bytes, 0, length)) return rtxErrSetNewData(ctx, STATUS_INVALID_UTF8, recordPath, lineNul);
  char *copy = length < SIZE_MAX ? static_cast<char *>(rtxMemHeapAlloc(ctx, length + 1)) : nullptr;
  if (!copy) return rtxErrSetNewData(ctx, STATUS_NO_MEMORY, recordPath, lineText);
  memcpy(copy, bytes, length);
  copy[length] = 0;
  text.value = copy;
  return STATUS_OK;
}

} // namespace

int rtxSetText(RuntimeContext *ctx, RtxXmlString *member, const char *bytes, size_t length) {
  if (rtxCheckContext(ctx) != STATUS_OK || !member) return STATUS_BAD_CONTEXT;
  RtxXmlString text;
  const int status = copyText(ctx, text, bytes, length);
  if (status != STATUS_OK) return status;
  rtxMemHeapFreePtr(ctx, member->value); // only now: the bytes may be of it
  *member = text;
  return STATUS_OK;
}

void *rtxAppendItem(RuntimeContext *ctx, RtxList *list, size_t size) {
  if (rtxCheckContext(ctx) != STATUS_OK || !list) return nullptr;
  void *item = rtxMemHeapAlloc(ctx, size);
  if (item && rtxDListAppend(ctx, list, item)) return memset(item, 0, size);
  rtxMemHeapFreePtr(ctx, item);
  rtxErrSetNewData(ctx, STATUS_NO_MEMORY, recordPath, lineItem);
  return nullptr;
}

int rtxAppendText(RuntimeContext *ctx, RtxList *list, const char *bytes, size_t length) {
  if (rtxCheckContext(ctx) != STATUS_OK || !list) return STATUS_BAD_CONTEXT;
  RtxXmlString text;
  const int status = copyText(ctx, text, bytes, length);
  if (status != STATUS_OK) return status;
  if (void *item = rtxAppendItem(ctx, list, sizeof text)) {
    memcpy(item, &text, sizeof text);
    return STATUS_OK;
  }
  rtxMemHeapFreePtr(ctx, text.value);
  return STATUS_NO_MEMORY;
}
