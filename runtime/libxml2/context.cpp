// Life of a context, its input and its output.

#include "internals.h"
#include "reader.h"
#include "rtxError.h"
#include "usable.h"

#include <new>
#include <string.h>

namespace rt {

namespace {

constexpr char contextPath[] = "runtime/context";
enum ContextLine : int {
  lineInputLimit = 10,
  lineInputStorage = 20
};

constexpr size_t defaultHeapLimit = size_t{32} << 20;
constexpr size_t defaultInputLimit = size_t{16} << 20;
constexpr uint32_t defaultNames = 4096;
constexpr size_t defaultTagLimit = size_t{4} << 20;
constexpr size_t defaultTextLimit = size_t{16} << 20;
constexpr uint32_t defaultErrors = 100;
constexpr size_t firstOutputSize = 1024;
constexpr size_t inputStep = 1024;

// A context and what is behind it, in one block.
struct WholeContext {
  WholeContext(const RuntimeOptions &options, const SystemAllocator &allocator)
      : context(), internals(&context, options, allocator) {}

  RuntimeContext context;
  RtxInternals internals;
};

// Whether the text buffer is the host's to set: a reader keeps it from its creation to its release.
bool isFree(const RuntimeContext *ctx) { return usable(ctx) && !ctx->internals->readerActive; }

// What was written to the buffer before is finished or given up.
void setBuffer(RuntimeContext &ctx, char *data, size_t size) {
  ctx.buffer = {data, 0, size, false};
  RtxInternals &internals = *ctx.internals;
  internals.bufferIsOutput = false;
  internals.inputTerminated = false;
  internals.encode.reset();
  internals.namespaces.endDocument();
}

// Neither input nor output.
void dropBuffer(RuntimeContext &ctx) { setBuffer(ctx, nullptr, 0); }

// Bytes with a NUL behind them become the input.
void setInput(RuntimeContext &ctx, const char *bytes, size_t length) {
  setBuffer(ctx, const_cast<char *>(bytes), length);
  ctx.internals->inputTerminated = true;
}

void setOutput(RuntimeContext &ctx, char *data, size_t size, bool dynamic) {
  setBuffer(ctx, data, size);
  ctx.buffer.dynamic = dynamic;
  ctx.internals->bufferIsOutput = true;
}

int checkInputLength(RuntimeContext *ctx, size_t length) {
  const size_t limit = ctx->internals->options.inputLimit;
  if (length <= limit) return 0;
  rtxErrAddStrParm(ctx, "inputLimit");
  rtxErrAddUIntParm(ctx, limit <= UINT32_MAX ? static_cast<uint32_t>(limit) : UINT32_MAX);
  return rtxErrSetNewData(ctx, STATUS_LIMIT_EXCEEDED, contextPath, lineInputLimit);
}

// Makes the kept copy hold size bytes. What it held may be gone.
bool reserveInputCopy(RtxInternals &internals, size_t size) {
  if (size <= internals.inputCapacity) return true;
  internals.heap.systemRelease(internals.inputCopy);
  const size_t capacity = size <= SIZE_MAX - inputStep ? (size + inputStep - 1) / inputStep * inputStep : size;
  internals.inputCopy = static_cast<char *>(internals.heap.systemAllocate(capacity));
  internals.inputCapacity = internals.inputCopy != nullptr ? capacity : 0;
  return internals.inputCopy != nullptr;
}

} // namespace

} // namespace rt

RtxInternals::RtxInternals(RuntimeContext *owner, const RuntimeOptions &chosen, const rt::SystemAllocator &allocator)
    : options(chosen), heap(allocator, chosen.heapLimit), errors(chosen.errorsKept), readerInfo{} {
  readerInfo.text.context = owner;
  owner->reader = &readerInfo;
  owner->internals = this;
  owner->signature = rt::signatureOf(owner);
  owner->contract = RTX_CONTRACT_VERSION;
  owner->traced = chosen.trace != nullptr;
}

// ---- Life -----------------------------------------------------------------------------------------------------

void rtxOptionsInit(RuntimeOptions *options) {
  if (options == nullptr) return;
  *options = {};
  options->heapLimit = rt::defaultHeapLimit;
  options->inputLimit = rt::defaultInputLimit;
  options->depthLimit = rt::deepest;
  options->attributeLimit = rt::mostAttributes;
  options->nameLimit = rt::defaultNames;
  options->tagLimit = rt::defaultTagLimit;
  options->textLimit = rt::defaultTextLimit;
  options->errorLimit = rt::defaultErrors;
  options->errorsKept = rt::defaultErrors;
}

RuntimeContext *rtxContextCreate(const RuntimeOptions *options) {
  RuntimeOptions chosen;
  rtxOptionsInit(&chosen);
  if (options != nullptr) chosen = *options;
  if ((chosen.allocate == nullptr) != (chosen.release == nullptr)) return nullptr; // half an allocator
  rt::SystemAllocator allocator(chosen);
  void *storage = allocator.allocate(sizeof(rt::WholeContext));
  if (storage == nullptr) return nullptr;
  return &(new (storage) rt::WholeContext(chosen, allocator))->context;
}

void rtxContextReset(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return;
  RtxInternals &internals = *ctx->internals;
  if (internals.reader != nullptr && internals.reader->parsing) return;
  rt::dropBuffer(*ctx);
  ctx->state = XMLSTATE_INITIAL;
  internals.readerActive = false;
  rtxMemBufReset(&internals.readerInfo.text);
  internals.namespaces.resetToHost();
  internals.errors.clear();
  internals.heap.reset();
}

void rtxContextFree(RuntimeContext *ctx) {
  if (!rt::usable(ctx)) return;
  const RtxContextRelease release = ctx->globalRelease;
  ctx->globalRelease = nullptr;
  if (release != nullptr) release(ctx);

  RtxInternals &internals = *ctx->internals;
  rt::destroyReader(internals);
  internals.namespaces.destroy(internals.heap);
  internals.encode.destroy(internals.heap);
  internals.errors.destroy(internals.heap);
  internals.heap.systemRelease(internals.readerInfo.text.data);
  internals.heap.systemRelease(internals.inputCopy);
  internals.heap.systemRelease(internals.output);
  internals.heap.destroy();

  rt::SystemAllocator allocator = internals.heap.systemAllocator();
  ctx->signature = 0;
  ctx->internals = nullptr;
  allocator.release(ctx);
}

int rtxCheckContext(RuntimeContext *ctx) { return rt::usable(ctx) ? 0 : STATUS_BAD_CONTEXT; }

void rtxSetErrorLimit(RuntimeContext *ctx, uint32_t limit) {
  if (rt::usable(ctx)) ctx->internals->options.errorLimit = limit;
}

const char *rtxVersion(void) { return "1.0.0"; }

// ---- Input ----------------------------------------------------------------------------------------------------

int rtxSetInput(RuntimeContext *ctx, const char *bytes, size_t length) {
  if (!rt::isFree(ctx)) return STATUS_BAD_CONTEXT;
  rt::dropBuffer(*ctx);
  if (bytes == nullptr) return 0;
  const int status = rt::checkInputLength(ctx, length);
  if (status != 0) return status;
  RtxInternals &internals = *ctx->internals;
  if (length == SIZE_MAX || !rt::reserveInputCopy(internals, length + 1))
    return rtxErrSetNewData(ctx, STATUS_NO_MEMORY, rt::contextPath, rt::lineInputStorage);
  memmove(internals.inputCopy, bytes, length); // the bytes may be a part of the copy before
  internals.inputCopy[length] = '\0';
  rt::setInput(*ctx, internals.inputCopy, length);
  return 0;
}

int rtxSetInputZ(RuntimeContext *ctx, const char *text, size_t length) {
  if (!rt::isFree(ctx)) return STATUS_BAD_CONTEXT;
  rt::dropBuffer(*ctx);
  if (text == nullptr) return 0;
  const int status = rt::checkInputLength(ctx, length);
  if (status != 0) return status;
  rt::setInput(*ctx, text, length);
  return 0;
}

// ---- Output ---------------------------------------------------------------------------------------------------

int rtxSetOutput(RuntimeContext *ctx, char *buffer, size_t size) {
  if (!rt::isFree(ctx)) return STATUS_BAD_CONTEXT;
  rt::setOutput(*ctx, buffer, buffer != nullptr ? size : 0, false);
  return 0;
}

int rtxSetOutputDynamic(RuntimeContext *ctx) {
  if (!rt::isFree(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  if (internals.output == nullptr) {
    internals.output = static_cast<char *>(internals.heap.systemAllocate(rt::firstOutputSize));
    if (internals.output == nullptr) {
      rt::dropBuffer(*ctx);
      return STATUS_NO_MEMORY;
    }
    internals.outputCapacity = rt::firstOutputSize;
  }
  rt::setOutput(*ctx, internals.output, internals.outputCapacity, true);
  return 0;
}

const char *rtxGetOutput(RuntimeContext *ctx, size_t *length) {
  const bool found = rt::usable(ctx) && ctx->internals->bufferIsOutput;
  if (length != nullptr) *length = found ? ctx->buffer.byteIndex : 0;
  return found ? ctx->buffer.data : nullptr;
}
