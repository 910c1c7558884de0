#include "context.h"

namespace tiny {

namespace {

size_t kindOf(size_t size) {
  size_t kind = 4;
  while (size > size_t{1} << kind)
    ++kind;
  return kind;
}

size_t bytesOf(size_t kind) { return sizeof(Block) + (size_t{1} << kind); }

} // namespace

void *Heap::allocate(System &system, size_t size) {
  if (size > limit - used || size > SIZE_MAX / 8) return nullptr;
  const size_t kind = kindOf(size);
  Block *block = free[kind];
  if (block) {
    free[kind] = block->next;
    idle -= bytesOf(kind);
  } else {
    block = static_cast<Block *>(system.take(bytesOf(kind)));
    if (!block) return nullptr;
    reserved += bytesOf(kind);
  }
  *block = {alive, nullptr, size, kind};
  if (alive) alive->previous = block;
  alive = block;
  ++blocks;
  used += size;
  if (used > peak) peak = used;
  return block + 1;
}

void Heap::unlink(Block *block) {
  (block->previous ? block->previous->next : alive) = block->next;
  if (block->next) block->next->previous = block->previous;
  --blocks;
  used -= block->size;
}

void Heap::release(System &system, const void *bytes) {
  if (!bytes) return;
  Block *block = static_cast<Block *>(const_cast<void *>(bytes)) - 1;
  unlink(block);
  block->next = free[block->kind];
  free[block->kind] = block;
  idle += bytesOf(block->kind);
  if (idle > limit) giveBack(system); // sizes that one document wanted are not those of the next
}

void Heap::releaseAll(System &system) {
  while (alive)
    release(system, alive + 1);
  peak = 0;
}

void Heap::giveBack(System &system) {
  for (Block *&list : free) {
    while (Block *block = list) {
      list = block->next;
      reserved -= bytesOf(block->kind);
      system.give(block);
    }
  }
  idle = 0;
}

} // namespace tiny

using namespace tiny;

void *rtxMemHeapAlloc(RuntimeContext *ctx, size_t size) {
  return usable(ctx) ? ctx->internals->heap.allocate(ctx->internals->system, size) : nullptr;
}

void rtxMemHeapFreePtr(RuntimeContext *ctx, const void *block) {
  if (usable(ctx)) ctx->internals->heap.release(ctx->internals->system, block);
}

void rtxHeapStats(RuntimeContext *ctx, RtxHeapStats *stats) {
  if (!stats) return;
  *stats = {};
  if (!usable(ctx)) return;
  *stats = ctx->internals->heap.stats();
  stats->systemCalls = ctx->internals->system.calls;
}
