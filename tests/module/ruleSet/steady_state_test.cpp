// Rule sets after the first ones cost no call of the system's allocator.
#include "reading.h"

using namespace reading;
using support::Context;

namespace {

const std::string bodies[] = {support::spell(fullBody, namespaceUri, support::Spelling::onePrefix).text,
                              support::spell(realLifeBody(), namespaceUri, support::Spelling::defaultNamespace).text};

// Runs round to warm up, then more, and expects no call of the allocator in between. Under a sanitizer the heap keeps
// freed blocks back for a while, so that it takes some rounds until the first are used again.
void expectNoCalls(const char *what, const std::function<void(RuntimeContext *, const std::string &)> &round) {
  for (const std::string &body : bodies) {
    SCOPED_TRACE(what + ": "s + body.substr(0, 60));
    Context ctx;
    for (int i = 0; i < 50; ++i)
      round(ctx, body);
    const uint64_t calls = support::heapStats(ctx).systemCalls;
    const uint64_t allocations = ctx.allocatorCalls();
    const size_t reserved = support::heapStats(ctx).reserved;
    const size_t blocks = support::heapStats(ctx).blocks;
    EXPECT_GT(calls, 0u) << "the count counts";
    for (int i = 0; i < 50; ++i)
      round(ctx, body);
    EXPECT_EQ(support::heapStats(ctx).systemCalls, calls);
    EXPECT_EQ(ctx.allocatorCalls(), allocations);
    EXPECT_EQ(support::heapStats(ctx).reserved, reserved);
    EXPECT_EQ(support::heapStats(ctx).blocks, blocks) << "back to its level";
  }
}

TEST(SteadyState, Decode) {
  expectNoCalls("released one by one", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    EXPECT_EQ(decodeStatus(ctx), 0);
  });
  expectNoCalls("given without a copy", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeStatus(ctx), 0);
  });
  expectNoCalls("released by a reset", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    cp__ruleset record;
    EXPECT_EQ(QxXmlD_cp_ruleset(ctx, &record), 0);
    rtxContextReset(ctx);
  });
  expectNoCalls("cut off", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body.substr(0, body.size() / 2)), 0);
    EXPECT_EQ(decodeStatus(ctx), STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectNoCalls("validate", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0);
  });
}

TEST(SteadyState, RoundTrip) {
  expectNoCalls("both ways", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    Record record(ctx);
    EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), 0);
    record.initialised = true;
    EXPECT_FALSE(encodeRecord(ctx, record).empty());
  });
}

} // namespace
