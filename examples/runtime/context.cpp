// Life of a context: options, input, output.
#include "context.h"

#include <stdlib.h>

using namespace tiny;

namespace {

// A context and all that belongs to it, in one block.
struct Whole {
  RuntimeContext context;
  RtxInternals internals;
  RtxReaderInfo reader;
};

void *takeFromSystem(void *, size_t size) { return malloc(size); }
void giveToSystem(void *, void *block) { free(block); }

bool isBusy(const RuntimeContext *ctx) { return ctx->internals->reader.active; }

// Neither input nor output.
void dropBuffer(RuntimeContext *ctx) {
  ctx->internals->direction = Direction::none;
  ctx->internals->openTag = {};
  ctx->buffer = {};
}

int setInput(RuntimeContext *ctx, const char *bytes, size_t length) {
  ctx->internals->direction = Direction::input;
  ctx->internals->input = {bytes, length};
  return 0;
}

int setOutput(RuntimeContext *ctx, char *buffer, size_t size, bool dynamic) {
  dropBuffer(ctx);
  ctx->internals->direction = Direction::output;
  ctx->buffer = {buffer, 0, buffer ? size : 0, dynamic};
  return 0;
}

// Leaves the context without input; a status if it cannot have this one.
int prepareInput(RuntimeContext *ctx, size_t length) {
  if (!usable(ctx) || isBusy(ctx)) return STATUS_BAD_CONTEXT;
  dropBuffer(ctx);
  const size_t limit = ctx->internals->options.inputLimit;
  if (length <= limit) return 0;
  addText(ctx, "inputLimit");
  rtxErrAddUIntParm(ctx, static_cast<uint32_t>(limit));
  return recordAt(ctx, STATUS_LIMIT_EXCEEDED, lineInput, nowhere);
}

} // namespace

// ---- Life

void rtxOptionsInit(RuntimeOptions *options) {
  if (!options) return;
  *options = {};
  options->heapLimit = size_t{32} << 20;
  options->inputLimit = size_t{16} << 20;
  options->depthLimit = 256;
  options->attributeLimit = 128;
  options->nameLimit = 4096;
  options->tagLimit = size_t{4} << 20;
  options->textLimit = size_t{16} << 20;
  options->errorLimit = 100;
  options->errorsKept = 100;
}

RuntimeContext *rtxContextCreate(const RuntimeOptions *options) {
  RuntimeOptions chosen;
  rtxOptionsInit(&chosen);
  if (options) chosen = *options;
  System system = {chosen.allocate, chosen.release, chosen.allocatorUser, 0};
  if (!system.allocate) system = {takeFromSystem, giveToSystem, nullptr, 0};
  Whole *whole = static_cast<Whole *>(system.take(sizeof(Whole)));
  if (!whole) return nullptr;
  memset(static_cast<void *>(whole), 0, sizeof *whole);
  RuntimeContext *ctx = &whole->context;
  ctx->signature = reinterpret_cast<uintptr_t>(ctx) ^ mark;
  ctx->contract = RTX_CONTRACT_VERSION;
  ctx->traced = chosen.trace;
  ctx->reader = &whole->reader;
  ctx->reader->text.context = ctx;
  ctx->internals = &whole->internals;
  ctx->internals->options = chosen;
  ctx->internals->system = system;
  ctx->internals->heap.limit = chosen.heapLimit;
  if (ctx->internals->errors.prepare(ctx->internals->system)) return ctx;
  rtxContextFree(ctx);
  return nullptr;
}

void rtxContextReset(RuntimeContext *ctx) {
  if (!usable(ctx) || ctx->internals->reader.parsing) return;
  RtxInternals &internals = *ctx->internals;
  dropBuffer(ctx);
  internals.reader.active = false;
  internals.namespaces.reset();
  internals.errors.clear(internals.system);
  internals.heap.releaseAll(internals.system);
  ctx->reader->text = {ctx, 0, 0, 0, nullptr};
  ctx->state = XMLSTATE_INITIAL;
}

void rtxContextFree(RuntimeContext *ctx) {
  if (!usable(ctx)) return;
  const RtxContextRelease release = ctx->globalRelease;
  ctx->globalRelease = nullptr;
  if (release) release(ctx);
  RtxInternals &internals = *ctx->internals;
  System system = internals.system;
  internals.heap.releaseAll(system);
  internals.heap.giveBack(system);
  internals.errors.destroy(system);
  internals.namespaces.destroy(system);
  internals.reader.destroy(system);
  internals.openUri[0].destroy(system);
  internals.openUri[1].destroy(system);
  internals.prefix.destroy(system);
  internals.inputCopy.destroy(system);
  internals.output.destroy(system);
  ctx->signature = 0;
  system.give(ctx);
}

int rtxCheckContext(RuntimeContext *ctx) { return usable(ctx) ? STATUS_OK : STATUS_BAD_CONTEXT; }

void rtxSetErrorLimit(RuntimeContext *ctx, uint32_t limit) {
  if (usable(ctx)) ctx->internals->options.errorLimit = limit;
}

const char *rtxVersion(void) { return "0.1.0"; }

// ---- Input

// The bytes may be those of the copy before, which goes last.
int rtxSetInput(RuntimeContext *ctx, const char *bytes, size_t length) {
  if (const int status = prepareInput(ctx, bytes ? length : 0)) return status;
  if (!bytes) return 0;
  RtxInternals &internals = *ctx->internals;
  Array<char> &copy = internals.inputCopy;
  if (length > copy.capacity) {
    Array<char> larger = {};
    if (!larger.reserve(internals.system, length)) return recordAt(ctx, STATUS_NO_MEMORY, lineInput, nowhere);
    memcpy(larger.items, bytes, length);
    copy.destroy(internals.system);
    copy = larger;
  } else if (length > 0) {
    memmove(copy.items, bytes, length);
  }
  return setInput(ctx, copy.items ? copy.items : "", length);
}

int rtxSetInputZ(RuntimeContext *ctx, const char *text, size_t length) {
  if (const int status = prepareInput(ctx, text ? length : 0)) return status;
  return text ? setInput(ctx, text, length) : 0;
}

// ---- Output

int rtxSetOutput(RuntimeContext *ctx, char *buffer, size_t size) {
  if (!usable(ctx) || isBusy(ctx)) return STATUS_BAD_CONTEXT;
  return setOutput(ctx, buffer, size, false);
}

int rtxSetOutputDynamic(RuntimeContext *ctx) {
  if (!usable(ctx) || isBusy(ctx)) return STATUS_BAD_CONTEXT;
  Array<char> &output = ctx->internals->output;
  dropBuffer(ctx);
  output.count = 0;
  if (!output.reserve(ctx->internals->system, 1)) return STATUS_NO_MEMORY;
  return setOutput(ctx, output.items, output.capacity, true);
}

const char *rtxGetOutput(RuntimeContext *ctx, size_t *length) {
  const bool found = usable(ctx) && ctx->internals->direction == Direction::output;
  if (length) *length = found ? ctx->buffer.byteIndex : 0;
  return found ? ctx->buffer.data : nullptr;
}
