// The heap from the inside.

#include "heap.h"
#include "systemStorage.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace runtimeTest {
namespace {

constexpr size_t unlimited = SIZE_MAX;
constexpr size_t slack = 128 * 1024; // what a heap may reserve beside twice its limit

class HeapTest : public testing::Test {
protected:
  explicit HeapTest(size_t limit = unlimited) : heap(rt::SystemAllocator(system.options()), limit) {}
  ~HeapTest() override { heap.destroy(); }

  unsigned char *allocate(size_t size) { return static_cast<unsigned char *>(heap.allocate(size)); }

  SystemStorage system;
  rt::Heap heap;
};

class LimitedHeapTest : public HeapTest {
protected:
  static constexpr size_t limit = 100000;
  LimitedHeapTest() : HeapTest(limit) {}
};

// Sizes around every change of how a block is stored.
const size_t edgeSizes[] = {0,    1,    3,    4,    5,    8,     12,    13,    500,    507,
                            508,  509,  512,  571,  572,  573,   1020,  1021,  2043,   2044,
                            2045, 2048, 4096, 8192, 9000, 65535, 65536, 65537, 100000, (1u << 20) + 1};

TEST_F(HeapTest, BlocksOfEverySizeAreAlignedAndApart) {
  struct Block {
    unsigned char *bytes;
    size_t size;
  };
  std::vector<Block> alive;
  const auto add = [&](size_t size) {
    unsigned char *bytes = allocate(size);
    ASSERT_NE(bytes, nullptr) << size;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes) % 8, 0u) << size;
    std::memset(bytes, static_cast<int>(alive.size() & 0xFF), size);
    alive.push_back({bytes, size});
  };
  for (size_t size = 0; size < 2500; ++size)
    add(size);
  for (const size_t size : edgeSizes)
    add(size);
  for (size_t i = 0; i < alive.size(); ++i) {
    for (size_t at = 0; at < alive[i].size; ++at)
      ASSERT_EQ(alive[i].bytes[at], i & 0xFF) << alive[i].size;
  }
}

TEST_F(HeapTest, AFreedBlockIsUsedAgainForItsSize) {
  for (const size_t size : edgeSizes) {
    unsigned char *stays = allocate(size); // the heap is never empty in between
    size_t reserved = 0;
    for (int i = 0; i < 1000; ++i) {
      unsigned char *block = allocate(size);
      ASSERT_NE(block, nullptr);
      heap.release(block);
      if (i == 100) reserved = heap.stats().reserved;
    }
    EXPECT_EQ(heap.stats().reserved, reserved) << size;
    heap.release(stays);
  }
}

TEST_F(HeapTest, PagesServeOtherSizesOnceNothingIsAlive) {
  size_t reserved = 0;
  for (const size_t size : {24u, 40u, 300u, 800u, 1500u, 24u}) {
    std::vector<unsigned char *> blocks;
    for (size_t bytes = 0; bytes < 200000; bytes += size)
      blocks.push_back(allocate(size));
    for (unsigned char *block : blocks)
      heap.release(block);
    if (reserved == 0) reserved = heap.stats().reserved;
  }
  EXPECT_LE(heap.stats().reserved, reserved * 3 / 2);
}

TEST_F(HeapTest, StartsSmallAndGrowsByLargerPages) {
  EXPECT_EQ(system.asked, 0u);
  ASSERT_NE(allocate(16), nullptr);
  EXPECT_LE(heap.stats().reserved, 4096u);
  for (size_t bytes = 0; bytes < size_t{1} << 20; bytes += 100) {
    ASSERT_NE(allocate(100), nullptr);
    ASSERT_LE(heap.stats().reserved, 3 * heap.stats().used + 8192);
  }
  EXPECT_LE(system.asked, 25u);
}

TEST_F(HeapTest, TakesLittleMoreThanItsBlocksNeed) {
  for (int i = 0; i < 20000; ++i) {
    ASSERT_NE(allocate(static_cast<size_t>(40 + i % 160)), nullptr);
  }
  const RtxHeapStats stats = heap.stats();
  EXPECT_LE(stats.reserved, stats.used + stats.used * 15 / 100);
}

TEST_F(HeapTest, CountsBlocksAndBytesExactly) {
  std::vector<unsigned char *> blocks;
  size_t used = 0;
  for (const size_t size : edgeSizes) {
    blocks.push_back(allocate(size));
    used += size;
    EXPECT_EQ(heap.stats().used, used);
    EXPECT_EQ(heap.stats().blocks, blocks.size());
  }
  const size_t peak = used;
  for (size_t i = 0; i < blocks.size(); ++i) {
    heap.release(blocks[i]);
    used -= edgeSizes[i];
    EXPECT_EQ(heap.stats().used, used);
    EXPECT_EQ(heap.stats().peakUsed, peak);
    EXPECT_EQ(heap.stats().blocks, blocks.size() - i - 1);
  }
  heap.reset();
  EXPECT_EQ(heap.stats().peakUsed, 0u);
  EXPECT_EQ(heap.stats().systemCalls, system.calls);
  EXPECT_EQ(heap.stats().reserved, system.bytes);
}

TEST_F(HeapTest, StorageThatIsNoBlockIsCountedAsCallsOnly) {
  void *kept = heap.systemAllocate(1000);
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(heap.stats().systemCalls, 1u);
  EXPECT_EQ(heap.stats().used, 0u);
  heap.reset();
  std::memset(kept, 1, 1000);
  heap.systemRelease(kept);
  heap.systemRelease(nullptr);
  EXPECT_EQ(heap.stats().systemCalls, 2u);
  EXPECT_EQ(system.calls, 2u);
}

// Takes and frees blocks of many sizes in a fixed order that leaves some to the reset.
bool runMessage(rt::Heap &heap) {
  std::vector<void *> blocks;
  bool complete = true;
  for (size_t i = 0; i < 3000; ++i) {
    const size_t size = i % 97 == 0 ? edgeSizes[i / 97 % std::size(edgeSizes)] : i * 31 % 400;
    void *block = heap.allocate(size);
    if (block == nullptr) {
      complete = false;
      continue;
    }
    std::memset(block, 0x5A, size);
    blocks.push_back(block);
    if (i % 3 == 0) {
      heap.release(blocks[blocks.size() / 2]);
      blocks[blocks.size() / 2] = blocks.back();
      blocks.pop_back();
    }
  }
  for (size_t i = 0; i < blocks.size(); i += 2)
    heap.release(blocks[i]);
  return complete;
}

TEST_F(HeapTest, AsksTheSystemForNothingOnceItIsWarm) {
  ASSERT_TRUE(runMessage(heap));
  heap.reset();
  const size_t warm = system.calls;
  for (int i = 0; i < 20; ++i) {
    ASSERT_TRUE(runMessage(heap));
    heap.reset();
  }
  EXPECT_EQ(system.calls, warm);
}

TEST_F(HeapTest, SurvivesEveryRefusalOfTheSystem) {
  for (size_t i = 1;; ++i) {
    ASSERT_LT(i, 10000u);
    bool refused = false;
    for (const bool allAfter : {false, true}) {
      SystemStorage failing;
      rt::Heap other(rt::SystemAllocator(failing.options()), unlimited);
      failing.failFrom(i, allAfter);
      const bool complete = runMessage(other);
      EXPECT_EQ(complete, failing.refused == 0) << i;
      refused = refused || failing.refused != 0;
      failing.heal();
      other.reset();
      EXPECT_EQ(other.stats().used, 0u);
      EXPECT_TRUE(runMessage(other)) << i;
      other.destroy();
      EXPECT_EQ(other.stats().reserved, 0u);
    }
    if (!refused) break;
  }
}

TEST_F(HeapTest, ARefusedBlockLeavesTheStatisticsAlone) {
  ASSERT_NE(allocate(10), nullptr);
  const RtxHeapStats before = heap.stats();
  system.failFrom(1, true);
  EXPECT_EQ(allocate(100000), nullptr);
  EXPECT_EQ(allocate(5000), nullptr);
  const RtxHeapStats after = heap.stats();
  EXPECT_EQ(after.used, before.used);
  EXPECT_EQ(after.blocks, before.blocks);
  EXPECT_EQ(after.peakUsed, before.peakUsed);
  EXPECT_EQ(after.reserved, before.reserved);
  system.heal();
}

TEST_F(HeapTest, SizesThatNoMachineHasAreRefusedBeforeTheSystemIsAsked) {
  for (size_t less = 0; less < 64; ++less)
    EXPECT_EQ(allocate(SIZE_MAX - less), nullptr);
  EXPECT_EQ(allocate(SIZE_MAX / 2), nullptr);
  EXPECT_EQ(system.asked, 0u);
  EXPECT_EQ(heap.stats().used, 0u);
}

TEST_F(HeapTest, KeepsFreedLargeBlocksButNotHugeOnes) {
  unsigned char *large = allocate(1u << 20);
  unsigned char *huge = allocate(80u << 20);
  ASSERT_NE(large, nullptr);
  ASSERT_NE(huge, nullptr);
  heap.release(huge);
  heap.release(large);
  EXPECT_GE(heap.stats().reserved, 1u << 20);
  EXPECT_LT(heap.stats().reserved, 2u << 20);
  const size_t calls = system.calls;
  EXPECT_NE(allocate(1u << 20), nullptr);
  EXPECT_EQ(system.calls, calls);
}

TEST_F(HeapTest, IsUsableAgainAfterItsStorageIsGone) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(runMessage(heap));
    heap.destroy();
    EXPECT_EQ(system.bytes, 0u);
    EXPECT_EQ(heap.stats().reserved, 0u);
  }
}

TEST_F(LimitedHeapTest, GivesWhatTheLimitAllowsToTheByte) {
  EXPECT_EQ(allocate(limit + 1), nullptr);
  unsigned char *whole = allocate(limit);
  ASSERT_NE(whole, nullptr);
  EXPECT_EQ(heap.available(), 0u);
  EXPECT_EQ(allocate(1), nullptr);
  EXPECT_NE(allocate(0), nullptr);
  heap.release(whole);
  for (size_t i = 0; i < limit / 100; ++i)
    ASSERT_NE(allocate(100), nullptr) << i;
  EXPECT_EQ(allocate(1), nullptr);
  EXPECT_EQ(heap.stats().used, limit);
}

TEST_F(LimitedHeapTest, TheLimitHoldsForBlocksWithoutBytesToo) {
  size_t count = 0;
  while (allocate(0) != nullptr && count < limit)
    ++count;
  EXPECT_LT(count, limit);
  EXPECT_LE(heap.stats().reserved, 2 * limit + slack);
}

TEST_F(LimitedHeapTest, FreeListsDoNotHoardStorage) {
  ASSERT_NE(allocate(1), nullptr); // something is always alive
  for (size_t size = 16; size < limit; size += size / 8 + 1) {
    std::vector<unsigned char *> blocks;
    while (unsigned char *block = allocate(size))
      blocks.push_back(block);
    for (unsigned char *block : blocks)
      heap.release(block);
    ASSERT_LE(heap.stats().reserved, 2 * limit + slack) << size;
    ASSERT_EQ(heap.stats().reserved, system.bytes) << size;
  }
  heap.reset();
  EXPECT_NE(allocate(limit), nullptr);
}

#if RT_ADDRESS_SANITIZER
using HeapDeathTest = HeapTest;

TEST_F(HeapDeathTest, BytesOutsideLiveBlocksArePoisoned) {
  for (const size_t size : edgeSizes) {
    unsigned char *first = allocate(size);
    unsigned char *second = allocate(size);
    for (size_t i = 0; i < size; ++i)
      ASSERT_FALSE(__asan_address_is_poisoned(first + i)) << size;
    EXPECT_TRUE(__asan_address_is_poisoned(first + size)) << size;
    EXPECT_TRUE(__asan_address_is_poisoned(second - 1)) << size;
    heap.release(first);
    if (size != 0) {
      EXPECT_TRUE(__asan_address_is_poisoned(first)) << size;
      EXPECT_TRUE(__asan_address_is_poisoned(first + size - 1)) << size;
    }
    if (size < 2000) {
      EXPECT_NE(allocate(size), first) << "the block comes back at once";
    }
  }
}

TEST_F(HeapDeathTest, UseAfterFreeIsSeen) {
  unsigned char *block = allocate(24);
  ASSERT_NE(allocate(24), nullptr);
  heap.release(block);
  EXPECT_DEATH(*const_cast<volatile unsigned char *>(block) = 1, "AddressSanitizer");
}

TEST_F(HeapDeathTest, UseAfterResetIsSeen) {
  unsigned char *block = allocate(24);
  heap.reset();
  EXPECT_DEATH(*const_cast<volatile unsigned char *>(block) = 1, "AddressSanitizer");
}
#endif

} // namespace
} // namespace runtimeTest
