// Contexts share nothing: two hundred of them, each on a thread of its own, at work at the same time. The thread
// sanitizer's build makes more of this test.
#include "drivers.h"
#include "rtxContext.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

// How often all documents of a family went through a context of its own as they should.
int goodRounds(std::span<const library::Driver> drivers, size_t start) {
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  if (!ctx) return 0;
  int good = 0;
  for (int round = 0; round < 5; ++round) {
    bool allGood = true;
    for (size_t i = 0; i < drivers.size(); ++i) {
      const library::Outcome outcome = drivers[(start + i) % drivers.size()].run(ctx);
      allGood = allGood && outcome.decoded == 0 && outcome.encoded == 0;
    }
    good += allGood ? 1 : 0;
  }
  rtxContextFree(ctx);
  return good;
}

TEST(Threads, TwoHundredContextsWorkAtTheSameTime) {
  constexpr size_t count = 200;
  std::atomic<bool> go = false;
  std::vector<int> good(count);
  std::vector<std::thread> threads;
  for (size_t i = 0; i < count; ++i)
    threads.emplace_back([&, i] {
      while (!go.load())
        std::this_thread::yield();
      good[i] = goodRounds(i % 2 == 0 ? library::imsDrivers() : library::debugDrivers(), i);
    });
  go = true;
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_EQ(good, std::vector<int>(count, 5));
}

} // namespace
