#include "context.h"

#include "faultPlan.h"

#include <gtest/gtest.h>
#include <new>

namespace support {

Context::Context(const Configure &configure) {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.allocate = allocate;
  options.release = release;
  options.allocatorUser = this;
  if (configure) configure(options);
  ctx = rtxContextCreate(&options);
}

Context::~Context() {
  rtxContextFree(ctx);
  EXPECT_EQ(blocks.size(), 0u) << "blocks not given back to the allocator";
  for (void *block : blocks)
    ::operator delete(block);
}

void *Context::allocate(void *self, size_t size) {
  auto &context = *static_cast<Context *>(self);
  ++context.calls;
  if (faultPlan().refuseNext()) return nullptr;
  void *block = ::operator new(size, std::nothrow);
  if (block != nullptr) context.blocks.insert(block);
  return block;
}

void Context::release(void *self, void *block) {
  auto &context = *static_cast<Context *>(self);
  ++context.calls;
  EXPECT_TRUE(block == nullptr || context.blocks.erase(block) == 1) << "a block that is not of this allocator";
  ::operator delete(block);
}

RtxHeapStats heapStats(RuntimeContext *ctx) {
  RtxHeapStats stats{};
  rtxHeapStats(ctx, &stats);
  return stats;
}

HeapBalance::HeapBalance(RuntimeContext *context, std::string subject)
    : ctx(context), what(std::move(subject)), before(heapStats(context).blocks) {}

HeapBalance::~HeapBalance() { EXPECT_EQ(heapStats(ctx).blocks, before) << "heap blocks left behind " << what; }

} // namespace support
