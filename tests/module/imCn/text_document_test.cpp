// Reading the documents that are a text, by the handler that the runtime has for them, and their validators, which are
// not offered.
#include "body.h"
#include "faults.h"

using namespace body;
using support::Context;

namespace {

class Texts : public testing::TestWithParam<const TextDocument *> {
protected:
  const TextDocument &kind = *GetParam();
  const std::string root = kind.root;

  std::string in(const std::string &content) const { return "<" + root + ">" + content + "</" + root + ">"; }

  void expectText(const std::string &document, const std::string &text, const std::string &errors = "") const {
    SCOPED_TRACE(document);
    Context ctx;
    const Reading reading = decodeText(ctx, kind, document);
    EXPECT_EQ(reading.record, text);
    EXPECT_EQ(reading.errors, errors);
    EXPECT_EQ(reading.status, support::firstStatus(errors));
    EXPECT_EQ(ctx->globalData, nullptr);
  }
};

INSTANTIATE_TEST_SUITE_P(Documents, Texts, testing::Values(&textDocuments[0], &textDocuments[1]),
                         [](const auto &test) { return std::string(test.param->root); });

TEST_P(Texts, AreKeptAsTheyStand) {
  expectText(in("emergency"), "emergency");
  expectText(in(" a\n b\t"), " a\n b\t");
  expectText(in("a<![CDATA[<b>]]>&amp;<!--c-->d&#101;"), "a<b>&de");
  expectText(in("\xC3\xA9\xF0\x9F\x98\x80"), "\xC3\xA9\xF0\x9F\x98\x80");
  expectText(in(""), "");
  expectText("<" + root + "/>", "");
  expectText("<?xml version=\"1.0\"?>\r\n" + in("x") + "\r\n", "x");
  const std::string text(200000, 't');
  expectText(in(text), text);
}

TEST_P(Texts, AreKnownByTheLocalNameOfTheirRoot) {
  support::everySpelling("<q:" + root + ">t</q:" + root + ">", "urn:any",
                         [&](RuntimeContext *ctx, const support::SpelledDocument &) {
                           const Reading reading = decodeTextInput(ctx, kind);
                           EXPECT_EQ(reading.status, 0);
                           EXPECT_EQ(reading.record, "t");
                           EXPECT_EQ(reading.errors, "");
                         });
}

TEST_P(Texts, RootOfAnotherNameIsReportedAndRead) {
  for (const char *other : {"reason", "Type", "typ", "types"})
    expectText("<"s + other + ">t</" + other + ">", "t", "-3(" + root + "," + other + ")@runtime/reader");
  expectText("<p:other xmlns:p='u'>t</p:other>", "t", "-3(" + root + ",other)@runtime/reader");
}

TEST_P(Texts, ElementsInsideAreRefusedWithAllTheyHold) {
  expectText(in("<emergency/>"), "", "-41(emergency)@runtime/reader");
  expectText(in("a<x:b xmlns:x='u'>c<d>e</d></x:b>f<g/>h"), "afh", "-41(x:b)@runtime/reader; -41(g)@runtime/reader");
}

TEST_P(Texts, AttributesAreReportedAndTheTextRead) {
  expectText("<" + root + " k='1' xmlns:p='u' p:l='2' xml:lang='en'>t</" + root + ">", "t",
             "-33(" + root + ",k)@runtime/reader; -33(" + root + ",p:l)@runtime/reader; -33(" + root +
                 ",xml:lang)@runtime/reader");
  expectText("<" + root + " xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t' xmlns='u'>t</" + root +
                 ">",
             "t");
}

TEST_P(Texts, AreUntouchedByWhatIsNotWellFormed) {
  for (const std::string &text : {""s, "x"s, "<" + root, "<" + root + ">", "<" + root + ">t", "<" + root + ">t</x>",
                                  in("&undefined;"), in("\x01"), in("\xFF"), in("t") + "<more/>"}) {
    Context ctx;
    const Reading reading = decodeText(ctx, kind, text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << text;
    EXPECT_EQ(reading.record, "untouched") << text;
    EXPECT_EQ(support::statuses(ctx).back(), STATUS_PARSE_FAILED);
  }
}

TEST_P(Texts, EveryPrefixFailsAndReleasesAll) {
  support::everyPrefix("<?xml version=\"1.0\"?><" + root + " k='1'>a<b>c</b><!--d--><![CDATA[e]]>&#65;</" + root + ">",
                       [&](RuntimeContext *ctx) { return decodeTextInput(ctx, kind).status; });
}

TEST_P(Texts, AreUntouchedWithoutInput) {
  Context ctx;
  const Reading reading = decodeTextInput(ctx, kind);
  EXPECT_EQ(reading.status, STATUS_READER_FAILED);
  EXPECT_EQ(reading.record, "untouched");
  EXPECT_EQ(reading.errors, "-26@Dec");
  RuntimeContext none{};
  RtxXmlString text = {true, "untouched"};
  EXPECT_EQ(kind.decode(&none, &text), STATUS_READER_FAILED);
  EXPECT_STREQ(text.value, "untouched");
}

TEST_P(Texts, EarlierErrorIsReturnedThoughTheTextIsStored) {
  Context ctx;
  EXPECT_EQ(decodeText(ctx, kind, in("<b/>")).status, STATUS_UNEXPECTED_ELEMENT);
  const Reading second = decodeText(ctx, kind, in("t"));
  EXPECT_EQ(second.status, STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(second.record, "t");
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST_P(Texts, NoErrorBeyondTheLimitIsRecorded) {
  const std::vector<int> all = {-3, -33, -41, -41};
  for (uint32_t limit = 0; limit <= all.size(); ++limit) {
    Context ctx;
    rtxSetErrorLimit(ctx, limit);
    const Reading reading = decodeText(ctx, kind, "<other k='1'>a<b/>c<d/>e</other>");
    EXPECT_EQ(support::statuses(ctx), std::vector<int>(all.begin(), all.begin() + limit));
    EXPECT_EQ(reading.record, "ace");
    EXPECT_EQ(reading.status, limit == 0 ? 0 : STATUS_ROOT_MISMATCH);
  }
}

TEST_P(Texts, OneAfterAnotherOnOneContext) {
  Context ctx;
  for (const char *cut : {"<x", "<type xmlns='u'>te", "<type>te<b>"}) {
    EXPECT_EQ(decodeText(ctx, kind, cut).status, STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    EXPECT_EQ(decodeText(ctx, kind, in("t")).record, "t") << "no text is left over";
    EXPECT_EQ(decode(ctx, document("<service-info>i</service-info>")).record, "info=i version=1");
  }
}

TEST_P(Texts, SurviveBeingWrittenAndRead) {
  for (const char *value : {"emergency", "", " a<b&]]>\r\n\t\"' ", "\xC3\xA9"}) {
    for (bool cdata : {false, true}) {
      Context ctx;
      const RtxXmlString text = {cdata, value};
      const std::string written = support::encoded(ctx, [&](RuntimeContext *c) { return kind.encode(c, &text); });
      const Reading reading = decodeText(ctx, kind, written);
      EXPECT_EQ(reading.status, 0);
      EXPECT_EQ(reading.record, value);
    }
  }
}

TEST_P(Texts, FailWithARecordWhenStorageGivesOut) {
  const auto read = [&](const std::string &text) {
    return [this, text](RuntimeContext *ctx) -> support::Outcome {
      const int set = support::setInput(ctx, text);
      if (set != 0) return {set, {}};
      const Reading reading = decodeTextInput(ctx, kind);
      return {reading.status, reading.record};
    };
  };
  EXPECT_GT(support::faults(read(in("emergency"))).failed, 0u);
  EXPECT_GT(support::faults(read(in(std::string(70000, 't')))).failed, 2u);
  EXPECT_GT(support::everyHeapLimit(read(in("emergency<b/>"))).runs, 0u);
}

// ---- Validators -----------------------------------------------------------------------------------------------

TEST_P(Texts, ValidatorIsNotOfferedAndTouchesNothing) {
  for (const std::string &text : {in("emergency"), in("<b/>"), "not XML"s, ""s}) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, text), 0);
    ctx->state = 4;
    const RuntimeContext before = *ctx;
    const uint64_t calls = ctx.allocatorCalls();
    for (int round = 0; round < 3; ++round)
      EXPECT_EQ(kind.validate(ctx), STATUS_NOT_SUPPORTED) << text;
    EXPECT_EQ(rtxErrCount(ctx), 0u) << "not recorded";
    EXPECT_EQ(ctx.allocatorCalls(), calls);
    EXPECT_EQ(ctx->state, before.state);
    EXPECT_EQ(static_cast<void *>(ctx->buffer.data), before.buffer.data);
    EXPECT_EQ(ctx->buffer.byteIndex, before.buffer.byteIndex);
    EXPECT_EQ(ctx->buffer.size, before.buffer.size);
    EXPECT_EQ(ctx->globalData, before.globalData);
  }
  Context withoutInput;
  EXPECT_EQ(kind.validate(withoutInput), STATUS_NOT_SUPPORTED);
  RuntimeContext none{};
  EXPECT_EQ(kind.validate(&none), STATUS_NOT_SUPPORTED);
  EXPECT_EQ(kind.validate(nullptr), STATUS_NOT_SUPPORTED);
}

TEST_P(Texts, ValidatorLeavesEarlierErrorsAndTheInput) {
  Context ctx;
  EXPECT_EQ(decodeText(ctx, kind, in("t<b/>")).status, STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(kind.validate(ctx), STATUS_NOT_SUPPORTED);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
  rtxErrClear(ctx);
  EXPECT_EQ(decodeTextInput(ctx, kind).record, "t");
}

} // namespace
