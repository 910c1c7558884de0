// Bodies made to cost as much as their length allows. Time is not looked at here: what is counted is storage, which is
// exact. How long the same shapes take is measured by bench/hostile.
#include "hostileBodies.h"
#include "storage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace bench {

void PrintTo(const HostileShape &shape, std::ostream *out) { *out << shape.attack; }
void PrintTo(const GreedySpelling &spelling, std::ostream *out) { *out << spelling.element; }

} // namespace bench

namespace {

using bench::HostileShape;
using hostile::Context;
using hostile::storage;

constexpr size_t small = size_t{32} << 10;
constexpr size_t large = 8 * small;

constexpr auto nameOf = [](const auto &parameter) {
  std::string name = parameter.param.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
};

class Hostile : public testing::TestWithParam<HostileShape> {};

INSTANTIATE_TEST_SUITE_P(EveryShape, Hostile, testing::ValuesIn(bench::hostileShapes()), nameOf);

// A shape that is refused for something else than what it is made for would measure nothing.
TEST_P(Hostile, EndsWithTheStatusOfItsAttack) {
  const Context ctx = hostile::makeContext();
  EXPECT_EQ(GetParam().status, hostile::run(ctx, GetParam().make(large), GetParam().document->decode));
  EXPECT_EQ(GetParam().status == 0 ? 0u : 1u, std::min(rtxErrCount(ctx.get()), 1u));
}

struct Calls {
  uint64_t context;
  uint64_t parser;
};

// Of a run on a warm context. It takes two runs to be warm, since the texts of errors have two places in turn.
Calls callsOfWarmRun(const HostileShape &shape, size_t bytes, int (*call)(RuntimeContext *)) {
  const Context ctx = hostile::makeContext();
  const std::string body = shape.make(bytes);
  hostile::run(ctx, body, call);
  hostile::run(ctx, body, call);
  const hostile::Storage before = storage;
  hostile::run(ctx, body, call);
  return {storage.contextCalls - before.contextCalls, storage.parserCalls - before.parserCalls};
}

TEST_P(Hostile, AsksTheSystemForNothingOnAWarmContext) {
  EXPECT_EQ(0u, callsOfWarmRun(GetParam(), large, GetParam().document->decode).context);
  EXPECT_EQ(0u, callsOfWarmRun(GetParam(), large, GetParam().document->validate).context);
}

TEST_P(Hostile, KeepsNothingOfABodyForTheNext) {
  const Context ctx = hostile::makeContext();
  const std::string body = GetParam().make(large);
  hostile::run(ctx, body, GetParam().document->decode);
  hostile::run(ctx, body, GetParam().document->decode);
  const size_t held = storage.held;
  hostile::run(ctx, body, GetParam().document->decode);
  EXPECT_LE(storage.held, held + large / 16); // the parser's dictionary spreads its names by chance
}

// What the parser allocates is the one thing that can be counted of its work. In step would be eight times as much, for
// the square of the length it would be sixty-four times.
TEST_P(Hostile, LetsTheParserAllocateInStepWithItsLength) {
  for (int (*call)(RuntimeContext *) : {GetParam().document->decode, GetParam().document->validate}) {
    const uint64_t few = callsOfWarmRun(GetParam(), small, call).parser;
    const uint64_t many = callsOfWarmRun(GetParam(), large, call).parser;
    constexpr uint64_t ofBuffersThatDouble = 100;
    EXPECT_LE(many, 2 * (large / small) * few + ofBuffersThatDouble);
  }
}

// ---- More records than there is storage for ------------------------------------------------------------------

constexpr size_t heapLimit = size_t{32} << 20; // the default

const RtxError *firstWith(RuntimeContext *ctx, int status) {
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    if (error->status == status) return error;
  }
  return nullptr;
}

class Greedy : public testing::TestWithParam<bench::GreedySpelling> {};

INSTANTIATE_TEST_SUITE_P(EverySpelling, Greedy, testing::ValuesIn(bench::greedySpellings()), nameOf);

TEST_P(Greedy, RunsIntoTheLimitOfTheHeapAndNotIntoTheMachines) {
  const bench::GreedySpelling &spelling = GetParam();
  const std::string body = bench::greedyBody(spelling);
  const size_t heldBefore = storage.held;
  storage.mostHeld = storage.held;
  const Context ctx = hostile::makeContext();
  EXPECT_EQ(spelling.status, hostile::run(ctx, body, spelling.document->decode));

  RtxHeapStats stats;
  rtxHeapStats(ctx.get(), &stats);
  EXPECT_LE(stats.peakUsed, heapLimit);
  EXPECT_GT(stats.peakUsed, heapLimit - (size_t{64} << 10)) << "the heap is not what stopped it";
  // Blocks of the heap and their headers, and a megabyte for all else.
  EXPECT_LE(storage.mostHeld - heldBefore, 2 * heapLimit + (size_t{1} << 20));
}

TEST_P(Greedy, NamesTheElementThatFoundNoStorage) {
  const bench::GreedySpelling &spelling = GetParam();
  const std::string body = bench::greedyBody(spelling);
  const Context ctx = hostile::makeContext();
  hostile::run(ctx, body, spelling.document->decode);

  const RtxError *error = firstWith(ctx.get(), STATUS_NO_MEMORY);
  if (spelling.path == nullptr) {
    EXPECT_EQ(nullptr, error);
    return;
  }
  ASSERT_NE(nullptr, error);
  EXPECT_STREQ(spelling.path, error->elementPath);
  EXPECT_EQ(1u, error->line);
  EXPECT_EQ(error->offset + 1, error->column);
  // As many elements are ahead of it as the heap had room for: neither none nor all.
  EXPECT_GT(error->offset, spelling.opening.size() + 10000 * spelling.element.size());
  EXPECT_EQ(0u, (error->offset - spelling.opening.size()) % spelling.element.size());
  EXPECT_EQ(spelling.element, body.substr(error->offset, spelling.element.size()));
}

TEST_P(Greedy, LeavesTheContextAsItWas) {
  const bench::GreedySpelling &spelling = GetParam();
  const Context ctx = hostile::makeContext();
  hostile::run(ctx, bench::greedyBody(spelling), spelling.document->decode);
  const std::string one = spelling.opening + spelling.ending;
  EXPECT_EQ(0, hostile::run(ctx, one, spelling.document->validate));
  EXPECT_EQ(0u, rtxErrCount(ctx.get()));
}

// ---- Namespace names that each foreign element has to bring along ---------------------------------------------

// What is borrowed has a part of the heap only, or else each further element would be escaped up to the heap's limit.
TEST_P(Hostile, BorrowsAPartOfTheHeapOnly) {
  if (std::string(GetParam().name).rfind("borrowed-", 0) != 0) return;
  const Context ctx = hostile::makeContext();
  hostile::run(ctx, GetParam().make(size_t{1} << 20), GetParam().document->decode);
  RtxHeapStats stats;
  rtxHeapStats(ctx.get(), &stats);
  EXPECT_LE(stats.peakUsed, heapLimit * 7 / 8);
}

// ---- Names that no body before had -----------------------------------------------------------------------------

TEST(FreshNames, TakeNoStorageThatTheBodiesBeforeDidNotTake) {
  constexpr unsigned bodies = 20000, warm = 2000;
  const Context ctx = hostile::makeContext();
  const auto decode = bench::hostileShapes().front().document->decode;
  storage.mostHeld = storage.held;
  size_t mostWhileWarming = 0;
  for (unsigned i = 0; i < bodies; ++i) {
    ASSERT_EQ(0, hostile::run(ctx, bench::bodyWithFreshNames(i), decode)) << i;
    if (i == warm) mostWhileWarming = storage.mostHeld;
  }
  // The parser's dictionary spreads its names by chance. A byte kept of each body would be more than this.
  EXPECT_LE(storage.mostHeld, mostWhileWarming + (bodies - warm) * 9 / 10);
}

} // namespace
