// Messages after the first ones cost no call of the system's allocator.
#include "filters.h"
#include "steadyState.h"

using namespace filters;
using support::expectSteadyState;

namespace {

const std::string message = support::spell(fullBody, namespaceUri, support::Spelling::defaultNamespace).text;

void decodeRound(RuntimeContext *ctx) {
  ASSERT_EQ(support::setInput(ctx, message), 0);
  EXPECT_EQ(decodeInput(ctx).status, 0);
}

void encodeRound(RuntimeContext *ctx) {
  CompleteRecord<FilterSetType> record(ctx);
  EXPECT_EQ(encodeRecord(ctx, record), message);
}

TEST(SteadyState, Decode) {
  expectSteadyState("released one by one", decodeRound);
  expectSteadyState("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeInput(ctx).status, 0);
  });
  expectSteadyState("released by a reset", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    FilterSetType record;
    EXPECT_EQ(QxXmlD_filter_set(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectSteadyState("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_filter_set(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectSteadyState("growing output", encodeRound);
  expectSteadyState("fixed output", [](RuntimeContext *ctx) {
    char buffer[4000];
    CompleteRecord<FilterSetType> record(ctx);
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_filter_set(ctx, record), 0);
  });
}

TEST(SteadyState, RoundTrip) {
  expectSteadyState("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
