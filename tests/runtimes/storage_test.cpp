// No failed allocation and no heap limit crashes the library on the tiny runtime, or leaves anything behind.
#include "context.h"
#include "drivers.h"
#include "rtx.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unordered_set>
#include <vector>

namespace {

// Refuses one allocation, or all from there on.
struct Allocator {
  size_t calls = 0;
  size_t failAt = 0;
  bool forGood = false;
  size_t refused = 0;
  std::unordered_set<void *> blocks;

  static void *allocate(void *user, size_t size) {
    Allocator &self = *static_cast<Allocator *>(user);
    ++self.calls;
    if (self.failAt != 0 && (self.calls == self.failAt || (self.forGood && self.calls > self.failAt))) {
      ++self.refused;
      return nullptr;
    }
    void *block = std::malloc(size);
    self.blocks.insert(block);
    return block;
  }
  static void release(void *user, void *block) {
    EXPECT_EQ(static_cast<Allocator *>(user)->blocks.erase(block), 1u);
    std::free(block);
  }
  RuntimeContext *context(size_t heapLimit) {
    RuntimeOptions options;
    rtxOptionsInit(&options);
    options.heapLimit = heapLimit;
    options.allocate = allocate;
    options.release = release;
    options.allocatorUser = this;
    return rtxContextCreate(&options);
  }
};

constexpr size_t plenty = size_t{1} << 20;

std::vector<library::Driver> allDrivers() {
  std::vector<library::Driver> all(library::imsDrivers().begin(), library::imsDrivers().end());
  all.insert(all.end(), library::debugDrivers().begin(), library::debugDrivers().end());
  return all;
}

class EveryDocument : public testing::TestWithParam<library::Driver> {
protected:
  library::Driver driver = GetParam();
  library::Outcome whole;

  void SetUp() override {
    support::Context ctx;
    whole = driver.run(ctx);
    ASSERT_EQ(whole.decoded, 0);
    ASSERT_EQ(whole.encoded, 0);
  }
  // What was done before the storage was gone counts; a part never passes for the whole.
  void expectStatusOrWhole(const library::Outcome &outcome) {
    const bool part = outcome.decoded == 0 && outcome.encoded == 0 && outcome.output != whole.output;
    EXPECT_FALSE(part) << outcome.output;
  }
};

INSTANTIATE_TEST_SUITE_P(Of, EveryDocument, testing::ValuesIn(allDrivers()),
                         [](const auto &tested) { return tested.param.name; });

TEST_P(EveryDocument, SurvivesEveryFailedAllocation) {
  size_t failures = 0;
  for (const bool forGood : {false, true}) {
    for (size_t i = 1;; ++i) {
      ASSERT_LT(i, 2000u);
      Allocator allocator;
      allocator.failAt = i;
      allocator.forGood = forGood;
      RuntimeContext *ctx = allocator.context(plenty);
      if (ctx) expectStatusOrWhole(driver.run(ctx));
      const bool refused = allocator.refused > 0;
      if (ctx && refused) {
        allocator.failAt = 0;
        rtxContextReset(ctx);
        EXPECT_EQ(driver.run(ctx), whole) << "after allocation " << i;
      }
      rtxContextFree(ctx);
      EXPECT_EQ(allocator.blocks.size(), 0u) << "allocation " << i;
      if (!refused) break;
      ++failures;
    }
  }
  EXPECT_GT(failures, 4u);
}

TEST_P(EveryDocument, SurvivesEveryHeapLimitAndLeavesNothingOnTheHeap) {
  size_t left = 0; // texts that no release function owns
  {
    support::Context ctx;
    driver.run(ctx);
    left = support::heapStats(ctx).blocks;
  }
  for (size_t limit = 0; limit < 8000; limit += limit < 400 ? 1 : 37) {
    Allocator allocator;
    RuntimeContext *ctx = allocator.context(limit);
    ASSERT_NE(ctx, nullptr);
    expectStatusOrWhole(driver.run(ctx));
    EXPECT_LE(support::heapStats(ctx).blocks, left) << limit;
    rtxContextFree(ctx);
    EXPECT_EQ(allocator.blocks.size(), 0u) << limit;
  }
}

} // namespace
