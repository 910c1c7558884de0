// What each event of a document leaves behind: levels, the state byte, the result of the callback. Where an element is
// refused or its text cannot be kept, every later event must find the handlers in step.
#include "composing.h"
#include "walk.h"
#include "xmlJudge.h"

using namespace composing;
using support::Context;
using support::errorLimits;
using support::Walk;

namespace {

void prepare(RuntimeContext *ctx, const std::string &text) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  EXPECT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
}

Walk walk(RuntimeContext *ctx, const std::string &text) {
  prepare(ctx, text);
  support::HeapBalance balance(ctx);
  Record record(ctx, nullptr);
  SaxTypeHandler handler;
  EXPECT_EQ(QxSAX_tns__isComposing_init(ctx, &handler, record, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "isComposing");
  walk.record = dump(record.get());
  walk.errors = support::errors(ctx);
  return walk;
}

Walk walkValidator(RuntimeContext *ctx, const std::string &text) {
  prepare(ctx, text);
  support::HeapBalance balance(ctx);
  VsaxTypeHandler handler;
  EXPECT_EQ(QxVSAX_tns__isComposing_init(ctx, &handler, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "isComposing");
  walk.errors = support::errors(ctx);
  return walk;
}

struct Expectation {
  const char *content;
  const char *log; // with all errors recorded
  const char *record;
  const char *decoderErrors; // with all errors recorded
  const char *errorsOfOne;   // with the first recorded
  const char *validatorLog;  // null: the same
};

void expectWalk(const Expectation &expected) {
  support::expectWalk(
      {document(expected.content),
       expected.log,
       expected.record,
       {expected.decoderErrors, expected.errorsOfOne},
       expected.validatorLog == nullptr ? "" : expected.validatorLog},
      {walk, walkValidator, static_cast<Reading (*)(RuntimeContext *, const std::string &)>(decode), nullptr});
}

TEST(Walk, UnknownChild) {
  expectWalk({"<state>a</state><bogus>q<state>x</state></bogus><refresh>5</refresh>",
              "<isComposing> 1 s2\n"
              "<state> 2 s2\n"
              "'a' 2 s4\n"
              "</state> 1 s4\n"
              "<bogus> 1 s2 -> -41\n"
              "<refresh> 2 s2\n"
              "'5' 2 s4\n"
              "</refresh> 1 s4\n"
              "</isComposing> 0 s5\n",
              "state=a refresh=5", "-41(bogus)@runtime/reader<QxXmlIsComposingSAX:110",
              "-41(bogus)@runtime/reader<QxXmlIsComposingSAX:110", nullptr});
}

TEST(Walk, ConversionThatFails) {
  expectWalk({"<state>a</state><refresh>abc</refresh><x:f xmlns:x=\"u\"/>",
              "<isComposing> 1 s2\n"
              "<state> 2 s2\n"
              "'a' 2 s4\n"
              "</state> 1 s4\n"
              "<refresh> 2 s2\n"
              "'abc' 2 s4\n"
              "</refresh> 1 s4 -> -44\n"
              "<x:f> 2>any s2\n"
              "</x:f> 1 s2\n"
              "</isComposing> 0 s5\n",
              "state=a any=<x:f xmlns:x=\"u\"/>", "-44(abc,tns__isComposing,refresh)@QxXmlIsComposingSAX:251",
              "-44(abc,tns__isComposing,refresh)@QxXmlIsComposingSAX:251",
              "<isComposing> 1 s2\n"
              "<state> 2 s2\n"
              "'a' 2 s4\n"
              "</state> 1 s4\n"
              "<refresh> 2 s2\n"
              "'abc' 2 s4\n"
              "</refresh> 1 s4 -> -44\n"
              "<x:f> 2 s2\n"
              "</x:f> 1 s2\n"
              "</isComposing> 0 s5\n"});
}

TEST(Walk, ForeignElementWithNestedContent) {
  const std::string text = "<isComposing xmlns=\""s + namespaceUri +
                           "\" xmlns:x=\"urn:x\"><state>a</state>"
                           "<x:foo k=\"1\">t<x:bar><refresh>5</refresh></x:bar>u</x:foo><x:z/></isComposing>";
  for (uint32_t limit : errorLimits) {
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    const Walk walked = walk(ctx, text);
    EXPECT_EQ(walked.log, "<isComposing> 1 s2\n"
                          "<state> 2 s2\n"
                          "'a' 2 s4\n"
                          "</state> 1 s4\n"
                          "<x:foo> 2>any s2\n"
                          "'t' 2>any s2\n"
                          "<x:bar> 3>any s2\n"
                          "<refresh> 4>any s2\n"
                          "'5' 4>any s2\n"
                          "</refresh> 3>any s2\n"
                          "</x:bar> 2>any s2\n"
                          "'u' 2>any s2\n"
                          "</x:foo> 1 s2\n"
                          "<x:z> 2>any s2\n"
                          "</x:z> 1 s2\n"
                          "</isComposing> 0 s5\n");
    EXPECT_EQ(walked.errors, "");
    EXPECT_EQ(ctx->state, XMLSTATE_DOC_END);

    const auto whole = support::parseNamespacedXml(text);
    ASSERT_TRUE(whole);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto record = Record::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_tns_isComposing(ctx, record), 0);
    record.owned = true;
    const std::vector<std::string> fragments = foreignTexts(record->anyElems);
    ASSERT_EQ(fragments.size(), 2u);
    for (size_t i = 0; i < 2; ++i) {
      const auto fragment = support::parseNamespacedXml(fragments[i]);
      ASSERT_TRUE(fragment) << fragments[i];
      EXPECT_EQ(fragment->infoset(), whole->children[i + 1].infoset());
    }
  }
}

TEST(Walk, ValidatorPassesOverAForeignElement) {
  Context ctx;
  const Walk walked = walkValidator(
      ctx, document("<state>a</state><x:foo xmlns:x=\"u\">t<x:bar><refresh>abc</refresh></x:bar>u</x:foo>"));
  EXPECT_EQ(walked.log, "<isComposing> 1 s2\n"
                        "<state> 2 s2\n"
                        "'a' 2 s4\n"
                        "</state> 1 s4\n"
                        "<x:foo> 2 s2\n"
                        "'t' 2 s4\n"
                        "<x:bar> 3 s4\n"
                        "<refresh> 4 s4\n"
                        "'abc' 4 s4\n"
                        "</refresh> 3 s4\n"
                        "</x:bar> 2 s4\n"
                        "'u' 2 s4\n"
                        "</x:foo> 1 s4\n"
                        "</isComposing> 0 s5\n");
  EXPECT_EQ(walked.errors, "");
}

TEST(Walk, ChildOutOfOrderWithMatchingChildrenInside) {
  expectWalk({"<state>a</state><refresh>1</refresh><contenttype>x<state>q</state><refresh>8</refresh></contenttype>"
              "<refresh>9</refresh>",
              "<isComposing> 1 s2\n"
              "<state> 2 s2\n"
              "'a' 2 s4\n"
              "</state> 1 s4\n"
              "<refresh> 2 s2\n"
              "'1' 2 s4\n"
              "</refresh> 1 s4\n"
              "<contenttype> 1 s2 -> -41\n"
              "<refresh> 1 s2 -> -41\n"
              "</isComposing> 0 s5\n",
              "state=a refresh=1",
              "-41(contenttype)@runtime/reader<QxXmlIsComposingSAX:110; "
              "-41(refresh)@runtime/reader<QxXmlIsComposingSAX:110",
              // The second is not recorded, but its status passes through all the same.
              "-41(contenttype)@runtime/reader<QxXmlIsComposingSAX:110<QxXmlIsComposingSAX:110", nullptr});
}

TEST(Walk, ErrorsBeyondTheLimit) {
  expectWalk({"<state>a</state><bogus>b</bogus><refresh>0</refresh><bogus><refresh>2</refresh></bogus>",
              "<isComposing> 1 s2\n"
              "<state> 2 s2\n"
              "'a' 2 s4\n"
              "</state> 1 s4\n"
              "<bogus> 1 s2 -> -41\n"
              "<refresh> 2 s2\n"
              "'0' 2 s4\n"
              "</refresh> 1 s4 -> -16\n"
              "<bogus> 1 s2 -> -41\n"
              "</isComposing> 0 s5\n",
              "state=a",
              "-41(bogus)@runtime/reader<QxXmlIsComposingSAX:110; "
              "-16(tns__isComposing.tns_refresh,0u)@QxXmlIsComposingSAX:236; "
              "-41(bogus)@runtime/reader<QxXmlIsComposingSAX:110",
              "-41(bogus)@runtime/reader<QxXmlIsComposingSAX:110<QxXmlIsComposingSAX:110", nullptr});
}

TEST(Walk, ResultsBeyondTheLimit) {
  Context ctx([](RuntimeOptions &options) { options.errorLimit = 1; });
  const Walk walked = walk(ctx, document("<state>a</state><bogus/><refresh>0</refresh><bogus/>"));
  EXPECT_EQ(walked.log, "<isComposing> 1 s2\n"
                        "<state> 2 s2\n"
                        "'a' 2 s4\n"
                        "</state> 1 s4\n"
                        "<bogus> 1 s2 -> -41\n"
                        "<refresh> 2 s2\n"
                        "'0' 2 s4\n"
                        "</refresh> 1 s4\n"
                        "<bogus> 1 s2 -> -41\n"
                        "</isComposing> 0 s5\n");
}

TEST(Walk, RootOfAnotherName) {
  for (uint32_t limit : errorLimits) {
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    const Walk walked = walk(ctx, "<composing><state>a</state></composing>");
    EXPECT_EQ(walked.log, "<composing> 1 s2\n"
                          "<state> 2 s2\n"
                          "'a' 2 s4\n"
                          "</state> 1 s4\n"
                          "</composing> 0 s5\n");
    EXPECT_EQ(walked.record, "state=a");
    EXPECT_EQ(walked.errors, limit == 0 ? "" : "-3(isComposing,composing)@QxXmlIsComposingSAX:73");
  }
}

TEST(Walk, DocumentCutOffInsideAForeignElement) {
  const std::string text = "<isComposing xmlns=\""s + namespaceUri + "\"><state>a</state><x:f xmlns:x=\"u\"><x:g>te";
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE(limit);
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    const Walk walked = walk(ctx, text);
    EXPECT_EQ(walked.parse, STATUS_PARSE_FAILED);
    EXPECT_EQ(walked.log, "<isComposing> 1 s2\n"
                          "<state> 2 s2\n"
                          "'a' 2 s4\n"
                          "</state> 1 s4\n"
                          "<x:f> 2>any s2\n"
                          "<x:g> 3>any s2\n"
                          "'te' 3>any s2\n");
    EXPECT_EQ(walked.record, "state=a any=-") << "the entry is there, its text is not";
    EXPECT_EQ(rtXmlNSGetIndex(ctx, "x"), RTXML_NS_NONE) << "no binding is left";
    EXPECT_EQ(rtXmlNSGetIndex(ctx, nullptr), RTXML_NS_NONE);

    rtxErrClear(ctx);
    EXPECT_EQ(decode(ctx, text).record, "state=a any=-");
    rtxErrClear(ctx);
    EXPECT_EQ(decode(ctx, document("<state>b</state>")).record, "state=b");
  }
}

TEST(Walk, UsedContext) {
  for (uint32_t limit : {100u, 1u}) {
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    walk(ctx, document("<state>a</state><refresh>abc</refresh>"));
    const Walk second = walk(ctx, document("<state>idle</state>"));
    EXPECT_EQ(second.log, "<isComposing> 1 s2\n"
                          "<state> 2 s2\n"
                          "'idle' 2 s4\n"
                          "</state> 1 s4\n"
                          "</isComposing> 0 s5\n");
    EXPECT_EQ(second.record, "state=idle");
    EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_INVALID_CONTENT);
  }
}

TEST(Walk, ElementInsideASimpleChild) {
  expectWalk({"<state>a</state><refresh>1<b>2</b>3</refresh>",
              "<isComposing> 1 s2\n"
              "<state> 2 s2\n"
              "'a' 2 s4\n"
              "</state> 1 s4\n"
              "<refresh> 2 s2\n"
              "'1' 2 s4\n"
              "<b> 3 s4\n"
              "'2' 3 s4\n"
              "</b> 2 s4\n"
              "'3' 2 s4\n"
              "</refresh> 1 s4\n"
              "</isComposing> 0 s5\n",
              "state=a refresh=123", "", "", nullptr});
}

TEST(Walk, TextThatCannotBeCollected) {
  // The heap takes the beginning of the text at most.
  const std::string text =
      document("<state>" + std::string(400000, 'x') + "<b>inner</b>tail</state><refresh>5</refresh>");
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE(limit);
    Context ctx([limit](RuntimeOptions &options) {
      options.errorLimit = limit;
      options.heapLimit = 64 * 1024;
    });
    for (bool validator : {false, true}) {
      SCOPED_TRACE(validator ? "validator" : "decoder");
      rtxErrClear(ctx);
      Walk walked = validator ? walkValidator(ctx, text) : walk(ctx, text);
      EXPECT_EQ(walked.parse, 0);
      const size_t from = walked.log.find("'x");
      const size_t to = walked.log.find('\n', from);
      ASSERT_NE(to, std::string::npos) << walked.log.substr(0, 200);
      EXPECT_TRUE(walked.log.substr(0, to).ends_with(" -> -10")) << walked.log.substr(to - 20, 20);
      walked.log.erase(from, to + 1 - from);
      EXPECT_EQ(walked.log, "<isComposing> 1 s2\n"
                            "<state> 2 s2\n"
                            "</state> 1 s0\n"
                            "<refresh> 2 s2\n"
                            "'5' 2 s4\n"
                            "</refresh> 1 s4\n"
                            "</isComposing> 0 s5\n");
      if (!validator) {
        EXPECT_EQ(walked.record, "state=- refresh=5");
      }
      if (limit != 0) {
        EXPECT_EQ(walked.errors, validator ? "-10@QxXmlIsComposingVldt:159" : "-10@QxXmlIsComposingSAX:169");
      }
    }
    rtxErrClear(ctx);
    EXPECT_EQ(decode(ctx, document("<state>b</state>")).record, "state=b");
  }
}

} // namespace
