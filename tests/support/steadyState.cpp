#include "steadyState.h"

#include "context.h"

#include <gtest/gtest.h>

namespace support {

// Under a sanitizer the heap keeps freed blocks back for a while, so that it takes some rounds until the first are
// used again.
static constexpr int warmUp = 50;

void expectSteadyState(const std::string &what, const std::function<void(RuntimeContext *ctx, int number)> &round,
                       int rounds) {
  SCOPED_TRACE(what);
  Context ctx;
  const size_t blocks = heapStats(ctx).blocks;
  int number = 0;
  while (number < warmUp)
    round(ctx, number++);
  const uint64_t allocations = ctx.allocatorCalls();
  const RtxHeapStats before = heapStats(ctx);
  EXPECT_GT(before.systemCalls, 0u) << "the count counts";
  while (number < warmUp + rounds) {
    round(ctx, number++);
    EXPECT_EQ(heapStats(ctx).blocks, blocks);
    if (testing::Test::HasFailure()) return;
  }
  const RtxHeapStats after = heapStats(ctx);
  EXPECT_EQ(after.systemCalls, before.systemCalls);
  EXPECT_EQ(ctx.allocatorCalls(), allocations);
  EXPECT_EQ(after.reserved, before.reserved);
  EXPECT_EQ(after.used, before.used) << "the heap is back at its level";
}

void expectSteadyState(const std::string &what, const std::function<void(RuntimeContext *ctx)> &round) {
  expectSteadyState(what, [&](RuntimeContext *ctx, int) { round(ctx); });
}

} // namespace support
