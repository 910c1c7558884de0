// Messages after the first ones cost no call of the system's allocator.
#include "composing.h"
#include "steadyState.h"

using namespace composing;
using support::expectSteadyState;

namespace {

const std::string message =
    document("<state>active</state><lastactive>2024-01-02T03:04:05Z</lastactive><contenttype>text/plain</contenttype>"
             "<refresh>90</refresh><x:f xmlns:x=\"u\">t<x:g/>u</x:f>");

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
  expectSteadyState("released one by one", decodeRound);
  expectSteadyState("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeInput(ctx).status, 0);
  });
  expectSteadyState("released by a reset", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    tns__isComposing record;
    EXPECT_EQ(QxXmlD_tns_isComposing(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectSteadyState("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_tns_isComposing(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectSteadyState("growing output", encodeRound);
  expectSteadyState("fixed output", [](RuntimeContext *ctx) {
    char buffer[1000];
    Record record(ctx, "active");
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_tns_isComposing(ctx, record), 0);
  });
  expectSteadyState("released by a reset", [](RuntimeContext *ctx) {
    {
      Record record(ctx, "active");
      encodeRecord(ctx, record);
    }
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, RoundTrip) {
  expectSteadyState("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
