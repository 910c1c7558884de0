// Messages after the first ones cost no call of the system's allocator.
#include "settings.h"
#include "steadyState.h"

using namespace settings;
using support::expectSteadyState;

namespace {

const std::string message = document(
    "<entity id='alice' k='1'><isb-settings k='2'><incoming-session-barring active='1'/><x:f xmlns:x='u'>t</x:f>"
    "</isb-settings><am-settings><answer-mode>manual</answer-mode></am-settings><ipab-settings>"
    "<incoming-personal-alert-barring active='0'/></ipab-settings><sss-settings><simultaneous-sessions-support "
    "active='1'/></sss-settings><x:g xmlns:x='u'>t<x:h/>u</x:g></entity><entity id='bob'/><y xmlns='v'/>");

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
  expectSteadyState("released one by one", decodeRound);
  expectSteadyState("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeInput(ctx).status, 0);
  });
  expectSteadyState("released by a reset", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    poc_settingsType record;
    EXPECT_EQ(QxXmlD_poc_settings(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectSteadyState("validate", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, message), 0);
    EXPECT_EQ(QxXmlV_poc_settings(ctx), 0);
  });
}

TEST(SteadyState, Encode) {
  expectSteadyState("growing output", encodeRound);
  expectSteadyState("fixed output", [](RuntimeContext *ctx) {
    char buffer[4000];
    Record<poc_settingsType> record(ctx);
    fillCompletely(ctx, *record);
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    EXPECT_EQ(QxXmlE_poc_settings(ctx, record), 0);
  });
}

TEST(SteadyState, RoundTrip) {
  expectSteadyState("both ways", [](RuntimeContext *ctx) {
    decodeRound(ctx);
    encodeRound(ctx);
  });
}

} // namespace
