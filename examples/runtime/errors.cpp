#include "context.h"

namespace tiny {

namespace {
constexpr size_t mostBytes = 1024; // of a text
} // namespace

void Record::addSite(const char *path, int line) {
  ++error.siteTotal;
  if (error.siteCount == mostSites) return;
  sites[error.siteCount++] = {path, line};
}

void Record::destroy(System &system) {
  for (uint32_t i = 0; i < error.paramCount; ++i) {
    if (params[i].length > 0) system.give(const_cast<char *>(params[i].text));
  }
  if (error.elementPath && *error.elementPath) system.give(const_cast<char *>(error.elementPath));
  *this = {};
}

bool Errors::prepare(System &system) {
  if (!spare) spare = static_cast<Record *>(system.take(sizeof(Record)));
  if (spare) *spare = {};
  return spare;
}

// A text that there is no storage for becomes an empty one: the status counts more.
void Errors::addParameter(System &system, RtxErrorParam parameter, size_t length) {
  if (pendingCount == Record::mostParams) return;
  if (parameter.kind == RTX_PARAM_TEXT) {
    length = length > mostBytes ? mostBytes : length;
    char *copy = length == 0 ? nullptr : static_cast<char *>(system.take(length + 1));
    if (copy) {
      memcpy(copy, parameter.text, length);
      copy[length] = '\0';
    }
    parameter.text = copy ? copy : "";
    parameter.length = copy ? length : 0;
  }
  pending[pendingCount++] = parameter;
}

void Errors::dropParameters(System &system) {
  for (uint32_t i = 0; i < pendingCount; ++i) {
    if (pending[i].length > 0) system.give(const_cast<char *>(pending[i].text));
  }
  pendingCount = 0;
}

Record *Errors::nextSlot(System &system, uint32_t kept) {
  last.destroy(system);
  if (keptCount == count && keptCount < kept && prepare(system)) {
    Record *slot = spare;
    spare = nullptr;
    prepare(system);
    (tail ? tail->next : head) = slot;
    tail = slot;
    ++keptCount;
    return slot;
  }
  return &last;
}

void Errors::start(System &system, uint32_t kept, int status, const char *path, int line, const Place &place) {
  Record *record = nextSlot(system, kept);
  memcpy(record->params, pending, sizeof pending);
  record->error = {};
  record->error.status = status;
  record->error.paramCount = pendingCount;
  record->error.params = record->params;
  record->error.sites = record->sites;
  record->error.line = place.line;
  record->error.column = place.column;
  record->error.offset = place.offset;
  record->error.elementPath = place.elementPath ? place.elementPath : "";
  record->addSite(path, line);
  pendingCount = 0;
  newest = record;
  if (count == 0) first = status;
  if (count < UINT32_MAX) ++count;
}

const Record *Errors::at(uint32_t index) const {
  if (index == keptCount) return newest == &last ? newest : nullptr;
  if (index > keptCount) return nullptr;
  const Record *record = head;
  while (index-- > 0)
    record = record->next;
  return record;
}

void Errors::clear(System &system) {
  dropParameters(system);
  while (Record *record = head) {
    head = record->next;
    record->destroy(system);
    system.give(record);
  }
  last.destroy(system);
  tail = newest = nullptr;
  keptCount = count = 0;
  first = 0;
}

void Errors::destroy(System &system) {
  clear(system);
  system.give(spare);
}

int recordAt(RuntimeContext *ctx, int status, int line, size_t offset) {
  RtxInternals &internals = *ctx->internals;
  internals.errors.start(internals.system, internals.options.errorsKept, status, readerPath, line,
                         placeAt(ctx, offset));
  return status;
}

void addText(RuntimeContext *ctx, std::string_view text) {
  if (!usable(ctx)) return;
  ctx->internals->errors.addParameter(ctx->internals->system, {RTX_PARAM_TEXT, text.data(), 0, 0, 0}, text.size());
}

} // namespace tiny

using namespace tiny;

int rtxErrSetNewData(RuntimeContext *ctx, int status, const char *path, int line) {
  if (!usable(ctx)) return status;
  RtxInternals &internals = *ctx->internals;
  internals.errors.start(internals.system, internals.options.errorsKept, status, path, line, currentPlace(ctx));
  return status;
}

int rtxErrSetData(RuntimeContext *ctx, int status, const char *path, int line) {
  if (status == 0 || !usable(ctx)) return status;
  Errors &errors = ctx->internals->errors;
  if (errors.newest && errors.newest->error.status == status) {
    errors.newest->addSite(path, line);
    return status;
  }
  errors.dropParameters(ctx->internals->system);
  return rtxErrSetNewData(ctx, status, path, line);
}

void rtxErrAddStrParm(RuntimeContext *ctx, const char *text) { addText(ctx, text ? text : ""); }

void rtxErrAddIntParm(RuntimeContext *ctx, int32_t value) {
  if (usable(ctx))
    ctx->internals->errors.addParameter(ctx->internals->system, {RTX_PARAM_INT, nullptr, 0, value, 0}, 0);
}

void rtxErrAddUIntParm(RuntimeContext *ctx, uint32_t value) {
  if (usable(ctx))
    ctx->internals->errors.addParameter(ctx->internals->system, {RTX_PARAM_UINT, nullptr, 0, 0, value}, 0);
}

void rtxErrAddCtxtBufParm(RuntimeContext *ctx) {
  if (usable(ctx)) addText(ctx, bufferText(ctx));
}

int rtxErrGetFirstError(RuntimeContext *ctx) { return usable(ctx) ? ctx->internals->errors.first : 0; }

int rtxErrGetLastError(RuntimeContext *ctx) {
  return usable(ctx) && ctx->internals->errors.newest ? ctx->internals->errors.newest->error.status : 0;
}

uint32_t rtxErrCount(RuntimeContext *ctx) { return usable(ctx) ? ctx->internals->errors.count : 0; }

const RtxError *rtxErrAt(RuntimeContext *ctx, uint32_t index) {
  const Record *record = usable(ctx) ? ctx->internals->errors.at(index) : nullptr;
  return record ? &record->error : nullptr;
}

void rtxErrClear(RuntimeContext *ctx) {
  if (usable(ctx)) ctx->internals->errors.clear(ctx->internals->system);
}
