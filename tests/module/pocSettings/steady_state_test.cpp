// Messages after the first ones cost no call of the system's allocator.
#include "settings.h"

using namespace settings;
using support::Context;

namespace {

const std::string message = document(
    "<entity id='alice' k='1'><isb-settings k='2'><incoming-session-barring active='1'/><x:f xmlns:x='u'>t</x:f>"
    "</isb-settings><am-settings><answer-mode>manual</answer-mode></am-settings><ipab-settings>"
    "<incoming-personal-alert-barring active='0'/></ipab-settings><sss-settings><simultaneous-sessions-support "
    "active='1'/></sss-settings><x:g xmlns:x='u'>t<x:h/>u</x:g></entity><entity id='bob'/><y xmlns='v'/>");

// Runs round to warm up, then more, and expects no call of the allocator in between. Under a sanitizer the heap keeps
// freed blocks back for a while, so that it takes some rounds until the first are used again.
void expectNoCalls(const char *what, const std::function<void(RuntimeContext *)> &round) {
  SCOPED_TRACE(what);
  Context ctx;
  for (int i = 0; i < 50; ++i)
    round(ctx);
  const uint64_t calls = support::heapStats(ctx).systemCalls;
  const uint64_t allocations = ctx.allocatorCalls();
  const RtxHeapStats before = support::heapStats(ctx);
  EXPECT_GT(calls, 0u) << "the count counts";
  for (int i = 0; i < 100; ++i)
    round(ctx);
  EXPECT_EQ(support::heapStats(ctx).systemCalls, calls);
  EXPECT_EQ(ctx.allocatorCalls(), allocations);
  EXPECT_EQ(support::heapStats(ctx).reserved, before.reserved);
  EXPECT_EQ(support::heapStats(ctx).used, before.used) << "the heap is back at its level";
}

void decodeRound(RuntimeContext *ctx) {
  ASSERT_EQ(support::setInput(ctx, message), 0);
  EXPECT_EQ(decodeInput(ctx).status, 0);
}

void encodeRound(RuntimeContext *ctx) {
  Record<poc_settingsType> record(ctx);
  fillCompletely(ctx, *record);
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
    poc_settingsType record;
    EXPECT_EQ(QxXmlD_poc_settings(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectNoCalls("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_poc_settings(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectNoCalls("growing output", encodeRound);
  expectNoCalls("fixed output", [](RuntimeContext *ctx) {
    char buffer[4000];
    Record<poc_settingsType> record(ctx);
    fillCompletely(ctx, *record);
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_poc_settings(ctx, record), 0);
  });
}

TEST(SteadyState, RoundTrip) {
  expectNoCalls("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
