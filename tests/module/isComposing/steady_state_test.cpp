// Messages after the first ones cost no call of the system's allocator.
#include "composing.h"

using namespace composing;
using support::Context;

namespace {

const std::string message =
    document("<state>active</state><lastactive>2024-01-02T03:04:05Z</lastactive><contenttype>text/plain</contenttype>"
             "<refresh>90</refresh><x:f xmlns:x=\"u\">t<x:g/>u</x:f>");

// Runs round to warm up, then more, and expects no call of the allocator in between. Under a sanitizer the heap keeps
// freed blocks back for a while, so that it takes some rounds until the first are used again.
void expectNoCalls(const char *what, const std::function<void(RuntimeContext *)> &round) {
  SCOPED_TRACE(what);
  Context ctx;
  for (int i = 0; i < 50; ++i)
    round(ctx);
  const uint64_t calls = support::heapStats(ctx).systemCalls;
  const uint64_t allocations = ctx.allocatorCalls();
  const size_t reserved = support::heapStats(ctx).reserved;
  EXPECT_GT(calls, 0u) << "the count counts";
  for (int i = 0; i < 100; ++i)
    round(ctx);
  EXPECT_EQ(support::heapStats(ctx).systemCalls, calls);
  EXPECT_EQ(ctx.allocatorCalls(), allocations);
  EXPECT_EQ(support::heapStats(ctx).reserved, reserved);
}

void decodeRound(RuntimeContext *ctx) {
  ASSERT_EQ(support::setInput(ctx, message), 0);
  EXPECT_EQ(decodeInput(ctx).status, 0);
}

void encodeRound(RuntimeContext *ctx) {
  Record record(ctx, "active");
  record.lastactive("2024-01-02T03:04:05Z").contenttype("text/plain").refresh(90).foreign("<x/>");
  EXPECT_FALSE(encodeRecord(ctx, record).empty());
}

TEST(SteadyState, Decode) {
  expectNoCalls("released one by one", decodeRound);
  expectNoCalls("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeInput(ctx).status, 0);
  });
  expectNoCalls("released by a reset", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    tns__isComposing record;
    EXPECT_EQ(QxXmlD_tns_isComposing(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectNoCalls("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_tns_isComposing(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectNoCalls("growing output", encodeRound);
  expectNoCalls("fixed output", [](RuntimeContext *ctx) {
    char buffer[1000];
    Record record(ctx, "active");
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_tns_isComposing(ctx, record), 0);
  });
  expectNoCalls("released by a reset", [](RuntimeContext *ctx) {
    {
      Record record(ctx, "active");
      encodeRecord(ctx, record);
    }
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, RoundTrip) {
  expectNoCalls("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
