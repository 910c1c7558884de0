// Messages after the first ones cost no call of the system's allocator.
#include "debugInfo.h"
#include "steadyState.h"

using namespace debugInfo;

namespace {

void expectSteadyState(const Document &document, const char *what, const std::function<void(RuntimeContext *)> &round) {
  support::expectSteadyState(document.root + " "s + what, round);
}

void decodeRound(RuntimeContext *ctx, const Document &document, const std::string &text) {
  ASSERT_EQ(support::setInput(ctx, text), 0);
  EXPECT_EQ(decodeInput(ctx, document).status, 0);
}

void encodeRound(RuntimeContext *ctx, const Document &document) {
  Held held(ctx, document);
  held.complete();
  EXPECT_FALSE(encode(ctx, document, held).empty());
}

TEST(SteadyState, Decode) {
  for (const Document &document : allDocuments()) {
    const std::string text = spelled(completeBody(document), "");
    expectSteadyState(document, "released one by one", [&](RuntimeContext *ctx) { decodeRound(ctx, document, text); });
    expectSteadyState(document, "given without a copy", [&](RuntimeContext *ctx) {
      ASSERT_EQ(support::setInput(ctx, text, support::InputForm::terminated), 0);
      EXPECT_EQ(decodeInput(ctx, document).status, 0);
    });
    expectSteadyState(document, "released by a reset", [&](RuntimeContext *ctx) {
      ASSERT_EQ(support::setInput(ctx, text), 0);
      Value value;
      EXPECT_EQ(document.decode(ctx, value), 0);
      rtxContextReset(ctx);
    });
  }
}

TEST(SteadyState, Validate) {
  for (const Document *document : recordDocuments()) {
    const std::string text = spelled(completeBody(*document), "");
    expectSteadyState(*document, "validated", [&](RuntimeContext *ctx) {
      ASSERT_EQ(support::setInput(ctx, text), 0);
      EXPECT_EQ(document->validate(ctx), 0);
    });
  }
}

TEST(SteadyState, Encode) {
  for (const Document &document : allDocuments()) {
    expectSteadyState(document, "growing output", [&](RuntimeContext *ctx) { encodeRound(ctx, document); });
    expectSteadyState(document, "fixed output", [&](RuntimeContext *ctx) {
      char buffer[8000];
      Held held(ctx, document);
      held.complete();
      ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
      EXPECT_EQ(document.encode(ctx, held), 0);
    });
  }
}

TEST(SteadyState, RoundTrip) {
  for (const Document &document : allDocuments()) {
    const std::string text = spelled(completeBody(document), "");
    expectSteadyState(document, "both ways", [&](RuntimeContext *ctx) {
      decodeRound(ctx, document, text);
      encodeRound(ctx, document);
    });
  }
}

TEST(SteadyState, DocumentsWithErrors) {
  const std::string text = element("debuginfo", "version='x' k='1'",
                                   "<bogus/><debugconfig><session id='s'><start-trigger><debug-id>4x</debug-id>"
                                   "</start-trigger></session></debugconfig><x:f xmlns:x='u'/>");
  const Document &document = documentOf("debuginfo");
  expectSteadyState(document, "with errors", [&](RuntimeContext *ctx) {
    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    EXPECT_EQ(decodeInput(ctx, document).status, STATUS_INVALID_LEXICAL_FORM);
  });
}

} // namespace
