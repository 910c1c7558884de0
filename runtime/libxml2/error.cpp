#include "error.h"

#include "internals.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

constexpr size_t smallestStore = 256;
constexpr uint32_t firstCapacity = 8;

// Sites and parameters of a kept record lie in one block, in this order, and the texts behind them.
static_assert(sizeof(RtxErrorSite) % alignof(RtxErrorParam) == 0);

char *copyText(char *to, const char *text, size_t length) {
  memcpy(to, text, length);
  to[length] = '\0';
  return to + length + 1;
}

} // namespace

// ---- Storage --------------------------------------------------------------------------------------------------

bool ErrorList::Store::reserve(Heap &heap, size_t size, size_t keep) {
  if (size <= capacity) return true;
  size_t grown = capacity < smallestStore ? smallestStore : 2 * capacity;
  if (grown < size) grown = size;
  auto *larger = static_cast<char *>(heap.systemAllocate(grown));
  if (larger == nullptr) return false;
  if (keep != 0) memcpy(larger, bytes, keep);
  heap.systemRelease(bytes);
  bytes = larger;
  capacity = grown;
  return true;
}

bool ErrorList::growKept(Heap &heap) {
  size_t grown = keptCapacity == 0 ? firstCapacity : size_t{keptCapacity} * 2;
  if (grown > limit) grown = limit;
  if (grown > SIZE_MAX / sizeof(KeptRecord)) return false;
  auto *larger = static_cast<KeptRecord *>(heap.systemAllocate(grown * sizeof(KeptRecord)));
  if (larger == nullptr) return false;
  if (keptCapacity != 0) memcpy(larger, kept, keptCapacity * sizeof(KeptRecord));
  memset(larger + keptCapacity, 0, (grown - keptCapacity) * sizeof(KeptRecord));
  heap.systemRelease(kept);
  kept = larger;
  keptCapacity = static_cast<uint32_t>(grown);
  return true;
}

// ---- Parameters -----------------------------------------------------------------------------------------------

RtxErrorParam *ErrorList::Params::add(RtxErrorParamKind kind) {
  if (count == paramsKept) return nullptr;
  RtxErrorParam *param = &list[count++];
  *param = {};
  param->kind = kind;
  return param;
}

void ErrorList::Params::drop() {
  count = 0;
  textsUsed = 0;
}

void ErrorList::addText(Heap &heap, const char *text, size_t length) {
  Params &to = params[pending];
  RtxErrorParam *param = to.add(RTX_PARAM_TEXT);
  if (param == nullptr) return;
  if (length > longestText) length = longestText;
  if (!to.texts.reserve(heap, to.textsUsed + length + 1, to.textsUsed)) {
    param->text = ""; // the parameters behind it keep their position
    return;
  }
  copyText(to.texts.bytes + to.textsUsed, text, length);
  to.textsUsed += length + 1;
  param->length = length;
}

void ErrorList::addInt(int32_t value) {
  if (RtxErrorParam *param = params[pending].add(RTX_PARAM_INT)) param->intValue = value;
}

void ErrorList::addUInt(uint32_t value) {
  if (RtxErrorParam *param = params[pending].add(RTX_PARAM_UINT)) param->uintValue = value;
}

void ErrorList::dropParams() { params[pending].drop(); }

// ---- Records --------------------------------------------------------------------------------------------------

const RtxError *ErrorList::at(uint32_t index) const {
  if (index < keptCount) return &kept[index].error;
  return index == keptCount && total != 0 ? &newest : nullptr;
}

void ErrorList::start(Heap &heap, int status, const RtxErrorSite &site, const Place &place, const char *elementPath) {
  keepNewest(heap);
  if (total == 0) firstStatus = status;
  lastStatus = status;
  if (total != UINT32_MAX) ++total;

  Params &own = params[pending];
  pending ^= 1;
  params[pending].drop();

  newest = {};
  newest.status = status;
  newest.sites = newestSites;
  addSite(site);
  newest.line = place.line;
  newest.column = place.column;
  newest.offset = place.offset;
  newest.transcoded = place.transcoded;

  newest.elementPath = "";
  const size_t pathLength = strlen(elementPath);
  if (pathLength != 0 && own.texts.reserve(heap, own.textsUsed + pathLength + 1, own.textsUsed)) {
    newest.elementPath = own.texts.bytes + own.textsUsed;
    copyText(own.texts.bytes + own.textsUsed, elementPath, pathLength);
  }

  newest.params = own.list;
  newest.paramCount = own.count;
  const char *text = own.texts.bytes;
  for (uint32_t i = 0; i < own.count; ++i) {
    RtxErrorParam &param = own.list[i];
    if (param.kind != RTX_PARAM_TEXT || param.text != nullptr) continue;
    param.text = text;
    text += param.length + 1;
  }
}

void ErrorList::addSite(const RtxErrorSite &site) {
  if (newest.siteCount < sitesKept) newestSites[newest.siteCount++] = site;
  if (newest.siteTotal != UINT32_MAX) ++newest.siteTotal;
}

// Copies the newest record to the kept ones before another takes its place.
void ErrorList::keepNewest(Heap &heap) {
  if (total == 0 || keptCount == limit) return;
  if (keptCount == keptCapacity && !growKept(heap)) return;
  KeptRecord &record = kept[keptCount];

  const size_t sitesSize = newest.siteCount * sizeof(RtxErrorSite);
  const size_t paramsSize = newest.paramCount * sizeof(RtxErrorParam);
  const size_t pathLength = strlen(newest.elementPath);
  size_t size = sitesSize + paramsSize + pathLength + 1;
  for (uint32_t i = 0; i < newest.paramCount; ++i) {
    if (newest.params[i].kind == RTX_PARAM_TEXT) size += newest.params[i].length + 1;
  }
  if (!record.store.reserve(heap, size, 0)) return;

  record.error = newest;
  char *to = record.store.bytes;
  memcpy(to, newest.sites, sitesSize);
  record.error.sites = reinterpret_cast<RtxErrorSite *>(to);
  to += sitesSize;
  auto *copies = reinterpret_cast<RtxErrorParam *>(to);
  memcpy(to, newest.params, paramsSize);
  record.error.params = copies;
  to += paramsSize;
  for (uint32_t i = 0; i < newest.paramCount; ++i) {
    if (copies[i].kind != RTX_PARAM_TEXT) continue;
    const char *text = copies[i].text;
    copies[i].text = to;
    to = copyText(to, text, copies[i].length);
  }
  record.error.elementPath = to;
  copyText(to, newest.elementPath, pathLength);
  ++keptCount;
}

// ---- Life -----------------------------------------------------------------------------------------------------

void ErrorList::clear() {
  firstStatus = 0;
  lastStatus = 0;
  total = 0;
  keptCount = 0;
  dropParams();
}

void ErrorList::destroy(Heap &heap) {
  clear();
  for (uint32_t i = 0; i < keptCapacity; ++i)
    heap.systemRelease(kept[i].store.bytes);
  heap.systemRelease(kept);
  kept = nullptr;
  keptCapacity = 0;
  for (Params &each : params) {
    heap.systemRelease(each.texts.bytes);
    each.texts = {};
  }
}

namespace {

void startRecord(RtxInternals &internals, const RuntimeContext *ctx, int status, const RtxErrorSite &site) {
  char path[ErrorList::longestPath];
  const Place place = currentPlace(ctx, path, sizeof path);
  internals.errors.start(internals.heap, status, site, place, path);
}

} // namespace

} // namespace rt

// ---- Operations -----------------------------------------------------------------------------------------------

int rtxErrSetNewData(RuntimeContext *ctx, int status, const char *path, int line) {
  if (rt::usable(ctx) && status != 0) rt::startRecord(*ctx->internals, ctx, status, {path, line});
  return status;
}

int rtxErrSetData(RuntimeContext *ctx, int status, const char *path, int line) {
  if (status == 0 || !rt::usable(ctx)) return status;
  RtxInternals &internals = *ctx->internals;
  if (status == internals.errors.last()) {
    internals.errors.addSite({path, line});
  } else {
    internals.errors.dropParams();
    rt::startRecord(internals, ctx, status, {path, line});
  }
  return status;
}

void rtxErrAddStrParm(RuntimeContext *ctx, const char *text) {
  if (!rt::usable(ctx)) return;
  if (text == nullptr) text = "";
  ctx->internals->errors.addText(ctx->internals->heap, text, strnlen(text, rt::ErrorList::longestText));
}

void rtxErrAddIntParm(RuntimeContext *ctx, int32_t value) {
  if (rt::usable(ctx)) ctx->internals->errors.addInt(value);
}

void rtxErrAddUIntParm(RuntimeContext *ctx, uint32_t value) {
  if (rt::usable(ctx)) ctx->internals->errors.addUInt(value);
}

void rtxErrAddCtxtBufParm(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return;
  const bool empty = ctx->buffer.data == nullptr;
  ctx->internals->errors.addText(ctx->internals->heap, empty ? "" : ctx->buffer.data, empty ? 0 : ctx->buffer.size);
}

int rtxErrGetFirstError(RuntimeContext *ctx) { return rt::usable(ctx) ? ctx->internals->errors.first() : 0; }

int rtxErrGetLastError(RuntimeContext *ctx) { return rt::usable(ctx) ? ctx->internals->errors.last() : 0; }

uint32_t rtxErrCount(RuntimeContext *ctx) { return rt::usable(ctx) ? ctx->internals->errors.count() : 0; }

const RtxError *rtxErrAt(RuntimeContext *ctx, uint32_t index) {
  return rt::usable(ctx) ? ctx->internals->errors.at(index) : nullptr;
}

void rtxErrClear(RuntimeContext *ctx) {
  if (rt::usable(ctx)) ctx->internals->errors.clear();
}
