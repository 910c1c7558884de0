// Messages after the first ones cost no call of the system's allocator.
#include "body.h"
#include "steadyState.h"

using namespace body;
using support::expectSteadyState;

namespace {

const std::string message =
    "<ims-3gpp version='1.5' k='1'><alternative-service k='2'><type>emergency</type><reason>call</reason>"
    "<action>a</action></alternative-service><y xmlns='v'>t<z/></y></ims-3gpp>";

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
  expectSteadyState("released one by one", decodeRound);
  expectSteadyState("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeInput(ctx).status, 0);
  });
  expectSteadyState("released by a reset", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    tIMS3GPP record;
    EXPECT_EQ(QxXmlD_ims_3gpp(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectSteadyState("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_ims_3gpp(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectSteadyState("growing output", encodeRound);
  expectSteadyState("fixed output", [](RuntimeContext *ctx) {
    char buffer[1000];
    Record<tIMS3GPP> record(ctx);
    fillCompletely(ctx, *record);
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_ims_3gpp(ctx, record), 0);
  });
}

TEST(SteadyState, Texts) {
  for (const TextDocument &document : textDocuments) {
    expectSteadyState(document.root, [&](RuntimeContext *ctx) {
      const RtxXmlString text = {false, "emergency"};
      const std::string written = support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, &text); });
      EXPECT_EQ(decodeText(ctx, document, written).record, "emergency");
    });
  }
}

TEST(SteadyState, RoundTrip) {
  expectSteadyState("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
