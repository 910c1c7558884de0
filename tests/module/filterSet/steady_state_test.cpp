// Messages after the first ones cost no call of the system's allocator.
#include "filters.h"

using namespace filters;
using support::Context;

namespace {

const std::string message = support::spell(fullBody, namespaceUri, support::Spelling::defaultNamespace).text;

// Runs round to warm up, then more, and expects no call of the allocator in between. Under a sanitizer the heap keeps
// freed blocks back for a while, so that it takes some rounds until the first are used again.
void expectNoCalls(const char *what, const std::function<void(RuntimeContext *)> &round) {
  SCOPED_TRACE(what);
  Context ctx;
  for (int i = 0; i < 50; ++i)
    round(ctx);
  const RtxHeapStats before = support::heapStats(ctx);
  const uint64_t allocations = ctx.allocatorCalls();
  EXPECT_GT(before.systemCalls, 0u) << "the count counts";
  for (int i = 0; i < 100; ++i)
    round(ctx);
  const RtxHeapStats after = support::heapStats(ctx);
  EXPECT_EQ(after.systemCalls, before.systemCalls);
  EXPECT_EQ(after.reserved, before.reserved);
  EXPECT_EQ(after.blocks, before.blocks);
  EXPECT_EQ(ctx.allocatorCalls(), allocations);
}

void decodeRound(RuntimeContext *ctx) {
  ASSERT_EQ(support::setInput(ctx, message), 0);
  EXPECT_EQ(decodeInput(ctx).status, 0);
}

void encodeRound(RuntimeContext *ctx) {
  Record<FilterSetType> record(ctx, Start::complete);
  EXPECT_EQ(encodeRecord(ctx, record), message);
}

TEST(SteadyState, Decode) {
  expectNoCalls("released one by one", decodeRound);
  expectNoCalls("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeInput(ctx).status, 0);
  });
  expectNoCalls("released by a reset", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    FilterSetType record;
    EXPECT_EQ(QxXmlD_filter_set(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectNoCalls("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_filter_set(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectNoCalls("growing output", encodeRound);
  expectNoCalls("fixed output", [](RuntimeContext *ctx) {
    char buffer[4000];
    Record<FilterSetType> record(ctx, Start::complete);
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_filter_set(ctx, record), 0);
  });
}

TEST(SteadyState, RoundTrip) {
  expectNoCalls("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
