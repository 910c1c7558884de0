// Messages after the first ones cost no call of the system's allocator.
#include "body.h"

using namespace body;
using support::Context;

namespace {

const std::string message =
    "<ims-3gpp version='1.5' k='1'><alternative-service k='2'><type>emergency</type><reason>call</reason>"
    "<action>a</action></alternative-service><y xmlns='v'>t<z/></y></ims-3gpp>";

// Runs round to warm up, then more, and expects no call of the allocator in between. Under a sanitizer the heap keeps
// freed blocks back for a while, so that it takes some rounds until the first are used again.
void expectNoCalls(const char *what, const std::function<void(RuntimeContext *)> &round) {
  SCOPED_TRACE(what);
  Context ctx;
  for (int i = 0; i < 50; ++i)
    round(ctx);
  const uint64_t allocations = ctx.allocatorCalls();
  const RtxHeapStats before = support::heapStats(ctx);
  EXPECT_GT(before.systemCalls, 0u) << "the count counts";
  for (int i = 0; i < 100; ++i)
    round(ctx);
  EXPECT_EQ(support::heapStats(ctx).systemCalls, before.systemCalls);
  EXPECT_EQ(ctx.allocatorCalls(), allocations);
  EXPECT_EQ(support::heapStats(ctx).reserved, before.reserved);
  EXPECT_EQ(support::heapStats(ctx).used, before.used) << "the heap is back at its level";
}

void decodeRound(RuntimeContext *ctx) {
  ASSERT_EQ(support::setInput(ctx, message), 0);
  EXPECT_EQ(decodeInput(ctx).status, 0);
}

void encodeRound(RuntimeContext *ctx) {
  Record<tIMS3GPP> record(ctx);
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
    tIMS3GPP record;
    EXPECT_EQ(QxXmlD_ims_3gpp(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectNoCalls("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_ims_3gpp(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectNoCalls("growing output", encodeRound);
  expectNoCalls("fixed output", [](RuntimeContext *ctx) {
    char buffer[1000];
    Record<tIMS3GPP> record(ctx);
    fillCompletely(ctx, *record);
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_ims_3gpp(ctx, record), 0);
  });
}

TEST(SteadyState, Texts) {
  for (const TextDocument &document : textDocuments) {
    expectNoCalls(document.root, [&](RuntimeContext *ctx) {
      const RtxXmlString text = {false, "emergency"};
      const std::string written = support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, &text); });
      EXPECT_EQ(decodeText(ctx, document, written).record, "emergency");
    });
  }
}

TEST(SteadyState, RoundTrip) {
  expectNoCalls("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
