// The heap of a context: blocks, limits, statistics.

#include "contract.h"

#include <cstdint>
#include <cstring>

namespace contract {
namespace {

TEST(Heap, BlocksOfEverySizeAreAlignedWritableAndApart) {
  Context ctx;
  std::vector<unsigned char *> blocks;
  for (size_t size = 0; size <= 600; ++size) {
    auto *block = static_cast<unsigned char *>(rtxMemHeapAlloc(ctx, size));
    ASSERT_NE(block, nullptr) << size;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 8, 0u) << size;
    std::memset(block, static_cast<int>(size & 0xFF), size);
    blocks.push_back(block);
  }
  for (size_t size = 0; size <= 600; ++size) {
    for (size_t i = 0; i < size; ++i)
      ASSERT_EQ(blocks[size][i], size & 0xFF) << size;
  }
  EXPECT_EQ(stats(ctx).blocks, 601u);
  for (const unsigned char *block : blocks)
    rtxMemHeapFreePtr(ctx, block);
  EXPECT_EQ(stats(ctx).blocks, 0u);
  EXPECT_EQ(stats(ctx).used, 0u);
}

TEST(Heap, LargeBlocksAreTakenAndGivenBack) {
  Context ctx;
  for (const size_t size :
       {size_t{4095}, size_t{4096}, size_t{4097}, size_t{65536}, size_t{1} << 20, size_t{5} << 20}) {
    auto *block = static_cast<char *>(rtxMemHeapAlloc(ctx, size));
    ASSERT_NE(block, nullptr) << size;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 8, 0u) << size;
    block[0] = 'a';
    block[size - 1] = 'z';
    rtxMemHeapFreePtr(ctx, block);
  }
  EXPECT_EQ(stats(ctx).used, 0u);
}

TEST(Heap, NullIsFreedWithoutEffect) {
  Context ctx;
  ASSERT_NE(rtxMemHeapAlloc(ctx, 10), nullptr);
  rtxMemHeapFreePtr(ctx, nullptr);
  EXPECT_EQ(stats(ctx).blocks, 1u);
}

TEST(Heap, SizeZeroGivesABlockOfItsOwn) {
  Context ctx;
  void *a = rtxMemHeapAlloc(ctx, 0);
  void *b = rtxMemHeapAlloc(ctx, 0);
  EXPECT_NE(a, nullptr);
  EXPECT_NE(b, nullptr);
  EXPECT_NE(a, b);
  rtxMemHeapFreePtr(ctx, a);
  rtxMemHeapFreePtr(ctx, b);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Heap, CountsWhatIsAskedFor) {
  Context ctx;
  void *a = rtxMemHeapAlloc(ctx, 100);
  void *b = rtxMemHeapAlloc(ctx, 33);
  EXPECT_EQ(stats(ctx).blocks, 2u);
  EXPECT_EQ(stats(ctx).used, 133u);
  EXPECT_EQ(stats(ctx).peakUsed, 133u);
  EXPECT_GE(stats(ctx).reserved, 133u);
  EXPECT_GT(stats(ctx).systemCalls, 0u);
  rtxMemHeapFreePtr(ctx, a);
  EXPECT_EQ(stats(ctx).blocks, 1u);
  EXPECT_EQ(stats(ctx).used, 33u);
  EXPECT_EQ(stats(ctx).peakUsed, 133u);
  rtxMemHeapFreePtr(ctx, b);
  EXPECT_EQ(stats(ctx).used, 0u);
  rtxContextReset(ctx);
  EXPECT_EQ(stats(ctx).peakUsed, 0u);
}

TEST(Heap, GivesNothingBeyondItsLimit) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 10000;
  Context ctx(options);
  EXPECT_EQ(rtxMemHeapAlloc(ctx, 10001), nullptr);
  EXPECT_EQ(stats(ctx).used, 0u);
  std::vector<void *> blocks;
  while (void *block = rtxMemHeapAlloc(ctx, 100))
    blocks.push_back(block);
  EXPECT_EQ(blocks.size(), 100u);
  EXPECT_EQ(stats(ctx).used, 10000u);
  rtxMemHeapFreePtr(ctx, blocks.back());
  EXPECT_EQ(rtxMemHeapAlloc(ctx, 101), nullptr);
  EXPECT_NE(rtxMemHeapAlloc(ctx, 100), nullptr);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Heap, RefusesSizesThatNoMachineHas) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = SIZE_MAX;
  Context ctx(options);
  ASSERT_NE(rtxMemHeapAlloc(ctx, 1), nullptr);
  for (const size_t size : {SIZE_MAX, SIZE_MAX - 1, SIZE_MAX - 7, SIZE_MAX - 8, SIZE_MAX - 15, SIZE_MAX - 16,
                            SIZE_MAX - 64, SIZE_MAX - 4096}) {
    EXPECT_EQ(rtxMemHeapAlloc(ctx, size), nullptr) << size;
  }
  EXPECT_EQ(stats(ctx).used, 1u);
  EXPECT_NE(rtxMemHeapAlloc(ctx, 1), nullptr);
}

TEST(Heap, SurvivesARefusalOfTheSystem) {
  Context ctx;
  auto *kept = static_cast<char *>(rtxMemHeapAlloc(ctx, 4));
  ASSERT_NE(kept, nullptr);
  std::memcpy(kept, "kept", 4);
  ctx.allocator.failNext(1, true);
  EXPECT_EQ(rtxMemHeapAlloc(ctx, 1 << 20), nullptr);
  ctx.allocator.heal();
  EXPECT_EQ(stats(ctx).used, 4u);
  EXPECT_NE(rtxMemHeapAlloc(ctx, 1 << 20), nullptr);
  EXPECT_EQ(std::string_view(kept, 4), "kept");
}

TEST(Heap, KeepsEveryBlockIntactInAnyOrderOfUse) {
  Context ctx;
  struct Block {
    unsigned char *bytes;
    size_t size;
    unsigned char mark;
  };
  std::vector<Block> alive;
  uint32_t random = 12345;
  const auto next = [&random](uint32_t below) {
    random = random * 1664525u + 1013904223u;
    return (random >> 8) % below;
  };
  size_t used = 0;
  for (int step = 0; step < 20000; ++step) {
    if (alive.empty() || next(100) < 52) {
      const size_t size = next(20) == 0 ? next(20000) : next(200);
      auto *bytes = static_cast<unsigned char *>(rtxMemHeapAlloc(ctx, size));
      ASSERT_NE(bytes, nullptr);
      const auto mark = static_cast<unsigned char>(step);
      std::memset(bytes, mark, size);
      alive.push_back({bytes, size, mark});
      used += size;
    } else {
      const size_t index = next(static_cast<uint32_t>(alive.size()));
      const Block block = alive[index];
      for (size_t i = 0; i < block.size; ++i)
        ASSERT_EQ(block.bytes[i], block.mark) << "step " << step;
      rtxMemHeapFreePtr(ctx, block.bytes);
      used -= block.size;
      alive[index] = alive.back();
      alive.pop_back();
    }
    ASSERT_EQ(stats(ctx).blocks, alive.size());
    ASSERT_EQ(stats(ctx).used, used);
  }
}

TEST(Heap, AsksTheSystemNoMoreOnceItIsWarm) {
  Context ctx;
  const auto message = [&ctx] {
    std::vector<void *> blocks;
    for (size_t i = 0; i < 300; ++i)
      blocks.push_back(rtxMemHeapAlloc(ctx, 1 + i * 7 % 250));
    for (size_t i = 0; i < blocks.size(); i += 2)
      rtxMemHeapFreePtr(ctx, blocks[i]);
    for (size_t i = 1; i < blocks.size(); i += 2)
      rtxMemHeapFreePtr(ctx, blocks[i]);
  };
  message();
  message();
  const uint64_t warm = stats(ctx).systemCalls;
  const size_t asked = ctx.allocator.calls;
  for (int i = 0; i < 50; ++i)
    message();
  EXPECT_EQ(stats(ctx).systemCalls, warm);
  EXPECT_EQ(ctx.allocator.calls, asked);
}

TEST(Heap, ResetTakesEveryBlockAtOnce) {
  Context ctx;
  for (size_t i = 0; i < 500; ++i)
    ASSERT_NE(rtxMemHeapAlloc(ctx, i), nullptr);
  ASSERT_NE(rtxMemHeapAlloc(ctx, 1 << 20), nullptr);
  rtxContextReset(ctx);
  EXPECT_EQ(stats(ctx).blocks, 0u);
  EXPECT_EQ(stats(ctx).used, 0u);
  EXPECT_NE(rtxMemHeapAlloc(ctx, 100), nullptr);
}

TEST(Heap, ResetMakesTheWholeLimitAvailableAgain) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 5000;
  Context ctx(options);
  for (int i = 0; i < 5; ++i) {
    EXPECT_NE(rtxMemHeapAlloc(ctx, 5000), nullptr);
    EXPECT_EQ(rtxMemHeapAlloc(ctx, 1), nullptr);
    rtxContextReset(ctx);
  }
}

} // namespace
} // namespace contract
