// What each event of a document leaves behind: levels, the state byte, the result of the callback. Where an element is
// refused or its text cannot be kept, every later event must find the handlers in step.
#include "body.h"
#include "walk.h"

using namespace body;
using support::Context;
using support::contextWithErrorLimit;
using support::errorLimits;
using support::Walk;

namespace {

template <typename Kind> Walk walk(RuntimeContext *ctx, const std::string &text) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  support::HeapBalance balance(ctx);
  Record<tIMS3GPP> record(ctx);
  typename Kind::Handler handler;
  EXPECT_EQ(Kind::init(ctx, &handler, record, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "ims-3gpp");
  walk.record = dump(*record);
  walk.errors = errorsOf(ctx);
  return walk;
}

using Filling = Functions<tIMS3GPP>::Filling;
using Checking = Functions<tIMS3GPP>::Checking;

struct Expectation {
  std::string content;
  std::string log; // with all errors recorded
  std::string record;
  std::string errors;      // with all recorded
  std::string errorsOfOne; // with the first recorded
};

void expectWalk(const Expectation &expected) {
  support::expectWalk(
      {document(expected.content), expected.log, expected.record, {expected.errors, expected.errorsOfOne, ""}},
      {walk<Filling>, walk<Checking>, static_cast<Reading (*)(RuntimeContext *, const std::string &)>(decode),
       support::byValidator});
}

TEST(Walk, UnknownChildOfTheRoot) {
  const std::string error = "-41(bogus)@runtime/reader<SAX";
  expectWalk({"<bogus>q<service-info>x</service-info></bogus><service-info>i</service-info>",
              "<ims-3gpp> 1 s2\n"
              "<bogus> 1 s2 -> -41\n"
              "<service-info> 2 s2\n"
              "'i' 2 s4\n"
              "</service-info> 1 s4\n"
              "</ims-3gpp> 0 s5\n",
              "info=i version=1", error, error});
}

TEST(Walk, UnknownChildOneDeep) {
  const std::string error = "-41(action)@runtime/reader<SAX";
  expectWalk({"<alternative-service><type>t</type><action>a<reason>x</reason></action><reason>r</reason>"
              "</alternative-service>",
              "<ims-3gpp> 1 s2\n"
              "<alternative-service> 2>1 s2\n"
              "<type> 3>2 s2\n"
              "'t' 3>2 s4\n"
              "</type> 2>1 s4\n"
              "<action> 2>1 s2 -> -41\n"
              "<reason> 3>2 s2\n"
              "'r' 3>2 s4\n"
              "</reason> 2>1 s4\n"
              "</alternative-service> 1 s5\n"
              "</ims-3gpp> 0 s5\n",
              "alternative(type=t reason=r) version=1", error, error});
}

TEST(Walk, SecondAlternativeWithMatchingChildrenInside) {
  expectWalk({"<service-info>i</service-info><alternative-service><type>t</type><reason>r</reason>"
              "</alternative-service><service-info>j<service-info/></service-info>",
              "<ims-3gpp> 1 s2\n"
              "<service-info> 2 s2\n"
              "'i' 2 s4\n"
              "</service-info> 1 s4\n"
              "<alternative-service> 1 s2 -> -41\n"
              "<service-info> 1 s2 -> -41\n"
              "</ims-3gpp> 0 s5\n",
              "info=i version=1", "-41(alternative-service)@runtime/reader<SAX; -41(service-info)@runtime/reader<SAX",
              // The second is not recorded, but its status passes through all the same.
              "-41(alternative-service)@runtime/reader<SAX<SAX"});
}

TEST(Walk, AttributesOfATextSkipNothing) {
  expectWalk({"<alternative-service><type k='1'>t</type><reason l='2'>r</reason></alternative-service>",
              "<ims-3gpp> 1 s2\n"
              "<alternative-service> 2>1 s2\n"
              "<type> 3>2 s2\n"
              "'t' 3>2 s4\n"
              "</type> 2>1 s4\n"
              "<reason> 3>2 s2\n"
              "'r' 3>2 s4\n"
              "</reason> 2>1 s4\n"
              "</alternative-service> 1 s5\n"
              "</ims-3gpp> 0 s5\n",
              "alternative(type=t reason=r) version=1",
              "-33(type,k)@runtime/reader<SAX; -33(reason,l)@runtime/reader<SAX",
              "-33(type,k)@runtime/reader<SAX<SAX"});
}

TEST(Walk, ElementsInsideATextAreCountedAlong) {
  expectWalk({"<alternative-service><type>a<emergency>b<c/></emergency>d</type><reason/></alternative-service>",
              "<ims-3gpp> 1 s2\n"
              "<alternative-service> 2>1 s2\n"
              "<type> 3>2 s2\n"
              "'a' 3>2 s4\n"
              "<emergency> 4>3 s4\n"
              "'b' 4>3 s4\n"
              "<c> 5>4 s4\n"
              "</c> 4>3 s4\n"
              "</emergency> 3>2 s4\n"
              "'d' 3>2 s4\n"
              "</type> 2>1 s4\n"
              "<reason> 3>2 s2\n"
              "</reason> 2>1 s2\n"
              "</alternative-service> 1 s5\n"
              "</ims-3gpp> 0 s5\n",
              "alternative(type=abd reason=) version=1", "", ""});
}

TEST(Walk, ForeignElementWithNestedContent) {
  const std::string text =
      alternative("<type/><reason/><action k=\"1\">t<reason>5</reason>u</action><x:z xmlns:x=\"u\"/>");
  for (uint32_t limit : errorLimits) {
    const Walk walked = walk<Filling>(*contextWithErrorLimit(limit), text);
    EXPECT_EQ(walked.log, "<ims-3gpp> 1 s2\n"
                          "<alternative-service> 2>1 s2\n"
                          "<type> 3>2 s2\n"
                          "</type> 2>1 s2\n"
                          "<reason> 3>2 s2\n"
                          "</reason> 2>1 s2\n"
                          "<action> 3>2>any s2\n"
                          "'t' 3>2>any s2\n"
                          "<reason> 4>3>any s2\n"
                          "'5' 4>3>any s2\n"
                          "</reason> 3>2>any s2\n"
                          "'u' 3>2>any s2\n"
                          "</action> 2>1 s2\n"
                          "<x:z> 3>2>any s2\n"
                          "</x:z> 2>1 s2\n"
                          "</alternative-service> 1 s5\n"
                          "</ims-3gpp> 0 s5\n");
    EXPECT_EQ(walked.errors, "");
    EXPECT_EQ(walked.record, "alternative(type= reason= <action k=\"1\">t<reason>5</reason>u</action> "
                             "<x:z xmlns:x=\"u\"/>) version=1");

    const Walk checked = walk<Checking>(*contextWithErrorLimit(limit), text);
    EXPECT_EQ(checked.log, "<ims-3gpp> 1 s2\n"
                           "<alternative-service> 2>1 s2\n"
                           "<type> 3>2 s2\n"
                           "</type> 2>1 s2\n"
                           "<reason> 3>2 s2\n"
                           "</reason> 2>1 s2\n"
                           "<action> 3>2 s2\n"
                           "'t' 3>2 s4\n"
                           "<reason> 4>3 s4\n"
                           "'5' 4>3 s4\n"
                           "</reason> 3>2 s4\n"
                           "'u' 3>2 s4\n"
                           "</action> 2>1 s4\n"
                           "<x:z> 3>2 s2\n"
                           "</x:z> 2>1 s2\n"
                           "</alternative-service> 1 s5\n"
                           "</ims-3gpp> 0 s5\n");
    EXPECT_EQ(checked.errors, limit == 0 ? "" : "-33(,k)@runtime/reader<Vldt");
  }
}

TEST(Walk, ErrorsBeyondTheLimit) {
  expectWalk({"<bogus/><alternative-service><bogus><type/></bogus><type>t</type></alternative-service>",
              "<ims-3gpp> 1 s2\n"
              "<bogus> 1 s2 -> -41\n"
              "<alternative-service> 2>1 s2\n"
              "<bogus> 2>1 s2 -> -41\n"
              "<type> 3>2 s2\n"
              "'t' 3>2 s4\n"
              "</type> 2>1 s4\n"
              "</alternative-service> 1 s5\n"
              "</ims-3gpp> 0 s5\n",
              "alternative(type=t reason=-) version=1", "-41(bogus)@runtime/reader<SAX; -41(bogus)@runtime/reader<SAX",
              "-41(bogus)@runtime/reader<SAX<SAX"});
}

// One child too many, at every place where it is refused: it is left out and all else is as without it.
TEST(Walk, RefusedChildAnywhereChangesNothingElse) {
  const std::vector<std::string> pieces = {"<alternative-service>", "<type>t</type>",         "<reason>r</reason>",
                                           "<action>a</action>",    "</alternative-service>", "<x/>"};
  const auto joined = [&](size_t at, const std::string &what) {
    std::string all;
    for (size_t i = 0; i <= pieces.size(); ++i)
      all += (i == at ? what : "") + (i == pieces.size() ? "" : pieces[i]);
    return document(all);
  };
  const Walk filling = walk<Filling>(*contextWithErrorLimit(100), joined(0, ""));
  const Walk checking = walk<Checking>(*contextWithErrorLimit(100), joined(0, ""));
  EXPECT_EQ(filling.errors, "");
  struct Refused {
    size_t at;
    std::string name;
  };
  for (const Refused &refused : {Refused{0, "bogus"},
                                 {1, "bogus"},
                                 {1, "reason"},
                                 {2, "bogus"},
                                 {2, "type"},
                                 {3, "type"},
                                 {3, "reason"},
                                 {4, "type"},
                                 {4, "reason"},
                                 {5, "service-info"},
                                 {5, "alternative-service"},
                                 {6, "service-info"},
                                 {6, "alternative-service"}}) {
    for (uint32_t limit : errorLimits) {
      SCOPED_TRACE("limit " + std::to_string(limit) + ", " + refused.name + " before piece " +
                   std::to_string(refused.at));
      const std::string text = joined(
          refused.at, "<" + refused.name + " k='1'>t<type>x</type><alternative-service/></" + refused.name + ">");
      // Without the one event at which levels do not rise the log must be that of the document without the child.
      const auto expectSame = [&](std::string log, const std::string &plain) {
        size_t at = 0;
        while (at < plain.size() && log[at] == plain[at])
          ++at;
        at = log.rfind('\n', at) + 1; // the first line that differs; npos + 1 is 0
        EXPECT_TRUE(log.substr(at).starts_with("<" + refused.name + "> "));
        log.erase(at, log.find('\n', at) + 1 - at);
        EXPECT_EQ(log, plain);
      };
      const Walk walked = walk<Filling>(*contextWithErrorLimit(limit), text);
      expectSame(walked.log, filling.log);
      EXPECT_EQ(walked.record, filling.record);
      EXPECT_EQ(walked.errors, limit == 0 ? "" : "-41(" + refused.name + ")@runtime/reader<SAX");
      const Walk checked = walk<Checking>(*contextWithErrorLimit(limit), text);
      expectSame(checked.log, checking.log);
      EXPECT_EQ(checked.errors, limit == 0 ? "" : "-41(" + refused.name + ")@runtime/reader<Vldt");
    }
  }
}

TEST(Walk, RootOfAnotherName) {
  for (uint32_t limit : errorLimits) {
    const Walk walked =
        walk<Filling>(*contextWithErrorLimit(limit), "<body version='1'><service-info>i</service-info></body>");
    EXPECT_EQ(walked.log, "<body> 1 s2\n"
                          "<service-info> 2 s2\n"
                          "'i' 2 s4\n"
                          "</service-info> 1 s4\n"
                          "</body> 0 s5\n");
    EXPECT_EQ(walked.record, "info=i version=1");
    EXPECT_EQ(walked.errors, limit == 0 ? "" : "-3(ims-3gpp,body)@SAX");
  }
}

TEST(Walk, DocumentCutOffInsideAForeignElementThreeDeep) {
  const std::string text = "<ims-3gpp version=\"1\" xmlns:y=\"urn:y\"><alternative-service><type>t</type><reason>r"
                           "</reason><x:f xmlns:x=\"u\" xmlns=\"v\"><x:g>te";
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE(limit);
    const auto ctx = contextWithErrorLimit(limit);
    const Walk walked = walk<Filling>(*ctx, text);
    EXPECT_EQ(walked.parse, STATUS_PARSE_FAILED);
    EXPECT_EQ(walked.log, "<ims-3gpp> 1 s2\n"
                          "<alternative-service> 2>1 s2\n"
                          "<type> 3>2 s2\n"
                          "'t' 3>2 s4\n"
                          "</type> 2>1 s4\n"
                          "<reason> 3>2 s2\n"
                          "'r' 3>2 s4\n"
                          "</reason> 2>1 s4\n"
                          "<x:f> 3>2>any s2\n"
                          "<x:g> 4>3>any s2\n"
                          "'te' 4>3>any s2\n");
    EXPECT_EQ(walked.record, "alternative(type=t reason=r -) version=1") << "the entry is there, its text is not";
    rtxErrClear(*ctx);
    EXPECT_EQ(decode(*ctx, text).record, "alternative(type=t reason=r -) version=1");
    rtxErrClear(*ctx);
    EXPECT_EQ(decode(*ctx, document("<service-info>i</service-info><y:z/>")).record, "info=i version=1 <y:z/>");
  }
}

TEST(Walk, UsedContext) {
  const std::string good = document("<service-info>i</service-info>");
  for (uint32_t limit : {100u, 1u}) {
    const auto ctx = contextWithErrorLimit(limit);
    walk<Filling>(*ctx, document("<bogus/>"));
    const Walk second = walk<Filling>(*ctx, good);
    EXPECT_EQ(second.log, walk<Filling>(*contextWithErrorLimit(limit), good).log);
    EXPECT_EQ(second.record, "info=i version=1");
    EXPECT_EQ(rtxErrGetFirstError(*ctx), STATUS_UNEXPECTED_ELEMENT);
    EXPECT_EQ(rtxErrCount(*ctx), 1u);
  }
}

TEST(Walk, TextThatCannotBeCollected) {
  // The heap takes the beginning of the text at most.
  const std::string text =
      alternative("<type>long" + std::string(400000, 'x') + "<b>inner</b>tail</type><reason>r</reason><action/>");
  for (uint32_t limit : errorLimits) {
    for (bool checking : {false, true}) {
      SCOPED_TRACE("limit " + std::to_string(limit) + (checking ? ", validator" : ", decoder"));
      Context ctx([limit](RuntimeOptions &options) {
        options.errorLimit = limit;
        options.heapLimit = 64 * 1024;
      });
      Walk walked = checking ? walk<Checking>(ctx, text) : walk<Filling>(ctx, text);
      EXPECT_EQ(walked.parse, 0);
      const size_t from = walked.log.find("'longx");
      const size_t to = walked.log.find('\n', from);
      ASSERT_NE(to, std::string::npos) << walked.log.substr(0, 300);
      EXPECT_TRUE(walked.log.substr(0, to).ends_with(" 3>2 s4 -> -10")) << walked.log.substr(to - 20, 20);
      walked.log.erase(from, to + 1 - from);
      const std::string foreign = checking ? "<action> 3>2 s2\n" : "<action> 3>2>any s2\n";
      EXPECT_EQ(walked.log, "<ims-3gpp> 1 s2\n"
                            "<alternative-service> 2>1 s2\n"
                            "<type> 3>2 s2\n"
                            "</type> 2>1 s0\n"
                            "<reason> 3>2 s2\n"
                            "'r' 3>2 s4\n"
                            "</reason> 2>1 s4\n" +
                                foreign +
                                "</action> 2>1 s2\n"
                                "</alternative-service> 1 s5\n"
                                "</ims-3gpp> 0 s5\n");
      if (!checking) {
        EXPECT_EQ(walked.record, "alternative(type=- reason=r <action/>) version=1");
      }
      EXPECT_EQ(walked.errors, limit == 0 ? "" : checking ? "-10@Vldt" : "-10@SAX");
    }
  }
}

} // namespace
