// The two kinds of buffer: one that collects text on the heap, and the one that encoders write to and converters read
// from.
#include "context.h"

using namespace tiny;

// ---- Collecting

int rtxMemBufAppend(RtxMemBuf *buffer, const char *bytes, size_t length) {
  if (!buffer || length == 0) return 0;
  if (!usable(buffer->context)) return STATUS_BAD_CONTEXT;
  if (length > buffer->capacity - buffer->used) {
    if (length > SIZE_MAX / 4 - buffer->used) return STATUS_NO_MEMORY;
    const size_t needed = buffer->used + length;
    const size_t wanted = needed > 2 * buffer->capacity ? needed + 64 : 2 * buffer->capacity;
    char *larger = static_cast<char *>(rtxMemHeapAlloc(buffer->context, wanted));
    if (!larger) return STATUS_NO_MEMORY;
    if (buffer->used > 0) memcpy(larger, buffer->data, buffer->used);
    rtxMemHeapFreePtr(buffer->context, buffer->data);
    buffer->data = larger;
    buffer->capacity = wanted;
  }
  memcpy(buffer->data + buffer->used, bytes, length);
  buffer->used += length;
  return 0;
}

void rtxMemBufReset(RtxMemBuf *buffer) {
  if (buffer) buffer->start = buffer->used = 0;
}

// ---- Writing and reading

int rtxCheckBuffer(RuntimeContext *ctx, size_t count) {
  if (!usable(ctx)) return STATUS_BAD_CONTEXT;
  RtxInternals &internals = *ctx->internals;
  RtxTextBuffer &buffer = ctx->buffer;
  if (internals.direction != Direction::output) return STATUS_BUFFER_OVERFLOW;
  if (count <= buffer.size - buffer.byteIndex) return 0;
  if (!buffer.dynamic) return STATUS_BUFFER_OVERFLOW;
  internals.output.count = buffer.byteIndex;
  if (!internals.output.reserve(internals.system, count)) return STATUS_NO_MEMORY;
  buffer.data = internals.output.items;
  buffer.size = internals.output.capacity;
  return 0;
}

int rtxInitContextBuffer(RuntimeContext *ctx, const char *bytes, size_t length) {
  if (!usable(ctx)) return 0;
  if (ctx->internals->direction == Direction::output) ctx->internals->direction = Direction::none;
  ctx->buffer = {const_cast<char *>(bytes), 0, bytes ? length : 0, false};
  return 0;
}
