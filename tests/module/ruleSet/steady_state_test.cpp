// Rule sets after the first ones cost no call of the system's allocator.
#include "reading.h"
#include "steadyState.h"

using namespace reading;

namespace {

const std::string bodies[] = {support::spell(fullBody, namespaceUri, support::Spelling::onePrefix).text,
                              support::spell(realLifeBody(), namespaceUri, support::Spelling::defaultNamespace).text};

void expectSteadyState(const char *what, const std::function<void(RuntimeContext *, const std::string &)> &round) {
  for (const std::string &body : bodies)
    support::expectSteadyState(what + ": "s + body.substr(0, 60), [&](RuntimeContext *ctx) { round(ctx, body); });
}

TEST(SteadyState, Decode) {
  expectSteadyState("released one by one", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    EXPECT_EQ(decodeStatus(ctx), 0);
  });
  expectSteadyState("given without a copy", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeStatus(ctx), 0);
  });
  expectSteadyState("released by a reset", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    cp__ruleset record;
    EXPECT_EQ(QxXmlD_cp_ruleset(ctx, &record), 0);
    rtxContextReset(ctx);
  });
  expectSteadyState("cut off", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body.substr(0, body.size() / 2)), 0);
    EXPECT_EQ(decodeStatus(ctx), STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectSteadyState("validate", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0);
  });
}

TEST(SteadyState, RoundTrip) {
  expectSteadyState("both ways", [](RuntimeContext *ctx, const std::string &body) {
    ASSERT_EQ(support::setInput(ctx, body), 0);
    auto record = Record::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), 0);
    record.owned = true;
    EXPECT_FALSE(encodeRecord(ctx, record).empty());
  });
}

} // namespace
