// Memory buffers and the text buffer.

#include "internals.h"
#include "usable.h"

#include <string.h>

namespace {

constexpr size_t smallestMemBuf = 64;
constexpr size_t smallestOutput = 1024;

// At least double what there is, so that appending byte by byte stays linear. SIZE_MAX if that is no size any more.
size_t grownCapacity(size_t capacity, size_t needed, size_t smallest) {
  const size_t doubled = capacity <= SIZE_MAX / 2 ? 2 * capacity : SIZE_MAX;
  const size_t grown = needed > doubled ? needed : doubled;
  return grown > smallest ? grown : smallest;
}

// The context's own buffer outlives the heap's blocks, though their limit holds for it as well; any other buffer is
// one of them.
bool growMemBuf(RtxMemBuf &buffer, size_t needed) {
  RtxInternals &internals = *buffer.context->internals;
  const bool own = &buffer == &internals.readerInfo.text;
  if (own && needed > internals.heap.available()) return false;
  const size_t capacity = grownCapacity(buffer.capacity, needed, smallestMemBuf);
  void *block = own ? internals.heap.systemAllocate(capacity) : internals.heap.allocate(capacity);
  if (block == nullptr) return false;
  char *data = static_cast<char *>(block);
  const size_t length = buffer.used - buffer.start;
  if (length != 0) memcpy(data, buffer.data + buffer.start, length);
  if (own)
    internals.heap.systemRelease(buffer.data);
  else
    internals.heap.release(buffer.data);
  buffer.data = data;
  buffer.capacity = capacity;
  buffer.start = 0;
  buffer.used = length;
  return true;
}

bool growOutput(RuntimeContext &ctx, size_t needed) {
  RtxInternals &internals = *ctx.internals;
  const size_t capacity = grownCapacity(internals.outputCapacity, needed, smallestOutput);
  auto *data = static_cast<char *>(internals.heap.systemAllocate(capacity));
  if (data == nullptr) return false;
  if (ctx.buffer.byteIndex != 0) memcpy(data, ctx.buffer.data, ctx.buffer.byteIndex);
  internals.heap.systemRelease(internals.output);
  internals.output = data;
  internals.outputCapacity = capacity;
  ctx.buffer.data = data;
  ctx.buffer.size = capacity;
  return true;
}

} // namespace

int rtxMemBufAppend(RtxMemBuf *buffer, const char *bytes, size_t length) {
  if (buffer == nullptr || length == 0) return 0;
  if (length > buffer->capacity - buffer->used) {
    const size_t kept = buffer->used - buffer->start;
    if (length > SIZE_MAX - kept || !rt::usable(buffer->context)) return STATUS_NO_MEMORY;
    if (!growMemBuf(*buffer, kept + length)) return STATUS_NO_MEMORY;
  }
  memcpy(buffer->data + buffer->used, bytes, length);
  buffer->used += length;
  return 0;
}

void rtxMemBufReset(RtxMemBuf *buffer) {
  if (buffer == nullptr) return;
  buffer->start = 0;
  buffer->used = 0;
}

namespace {

[[gnu::cold, gnu::noinline]] int makeRoom(RuntimeContext *ctx, size_t count) {
  const RtxTextBuffer &buffer = ctx->buffer;
  if (!buffer.dynamic) return STATUS_BUFFER_OVERFLOW;
  if (count > SIZE_MAX - buffer.byteIndex) return STATUS_NO_MEMORY;
  return growOutput(*ctx, buffer.byteIndex + count) ? 0 : STATUS_NO_MEMORY;
}

} // namespace

int rtxCheckBuffer(RuntimeContext *ctx, size_t count) {
  if (!rt::usable(ctx) || !ctx->internals->bufferIsOutput) return STATUS_BUFFER_OVERFLOW;
  return count <= ctx->buffer.size - ctx->buffer.byteIndex ? 0 : makeRoom(ctx, count);
}

int rtxInitContextBuffer(RuntimeContext *ctx, const char *bytes, size_t length) {
  if (!rt::usable(ctx)) return 0;
  ctx->buffer.data = const_cast<char *>(bytes);
  ctx->buffer.byteIndex = 0;
  ctx->buffer.size = length;
  ctx->buffer.dynamic = false;
  RtxInternals &internals = *ctx->internals;
  internals.bufferIsOutput = false;
  // A reader puts the input back when it is released; without one the input is gone.
  if (!internals.readerActive) internals.inputTerminated = false;
  return 0;
}
