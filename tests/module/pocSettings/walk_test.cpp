// What each event of a document leaves behind: levels, the state byte, the result of the callback. Where an element is
// refused or its text cannot be kept, every later event must find the handlers in step.
#include "settings.h"
#include "walk.h"

using namespace settings;
using support::Context;
using support::contextWithErrorLimit;
using support::errorLimits;
using support::Walk;

namespace {

template <typename Kind> Walk walk(RuntimeContext *ctx, const std::string &text) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  EXPECT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  support::HeapBalance balance(ctx);
  Record<poc_settingsType> record(ctx);
  typename Kind::Handler handler;
  EXPECT_EQ(Kind::init(ctx, &handler, record, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "poc-settings");
  walk.record = dump(*record);
  walk.errors = errorsOf(ctx);
  return walk;
}

using Filling = Functions<poc_settingsType>::Filling;
using Checking = Functions<poc_settingsType>::Checking;

struct Expectation {
  std::string content;
  std::string log; // with all errors recorded
  std::string record;
  std::string errors;      // with all recorded
  std::string errorsOfOne; // with the first recorded that the limit counts
  std::string errorsOfNone = "";
};

void expectWalk(const Expectation &expected) {
  support::expectWalk({document(expected.content),
                       expected.log,
                       expected.record,
                       {expected.errors, expected.errorsOfOne, expected.errorsOfNone}},
                      {walk<Filling>, walk<Checking>,
                       static_cast<Reading (*)(RuntimeContext *, const std::string &)>(decode), support::byValidator});
}

TEST(Walk, UnknownChildOfTheRoot) {
  const std::string error = "-41(bogus)@runtime/reader<SAX";
  expectWalk({"<entity id='a'/><bogus>q<entity id='x'/></bogus><entity id='b'/>",
              "<poc-settings> 1 s2\n"
              "<entity> 2>1 s2\n"
              "</entity> 1 s5\n"
              "<bogus> 1 s2 -> -41\n"
              "<entity> 2>1 s2\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a] [id=b]", error, error});
}

TEST(Walk, UnknownChildTwoDeep) {
  const std::string error = "-41(bogus)@runtime/reader<SAX";
  expectWalk({"<entity id='a'><am-settings><bogus><answer-mode>manual</answer-mode></bogus>"
              "<answer-mode>manual</answer-mode></am-settings><sss-settings/></entity>",
              "<poc-settings> 1 s2\n"
              "<entity> 2>1 s2\n"
              "<am-settings> 3>2>1 s2\n"
              "<bogus> 3>2>1 s2 -> -41\n"
              "<answer-mode> 4>3>2 s2\n"
              "'manual' 4>3>2 s4\n"
              "</answer-mode> 3>2>1 s4\n"
              "</am-settings> 2>1 s5\n"
              "<sss-settings> 3>2>1 s2\n"
              "</sss-settings> 2>1 s5\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a am(mode=manual) sss(active=false)]", error, error});
}

TEST(Walk, ChildOfAnEmptyElementFourDeep) {
  expectWalk({"<entity id='a'><isb-settings><incoming-session-barring active='1'>t<x><y/></x>u<z/>"
              "</incoming-session-barring></isb-settings><am-settings><answer-mode>manual</answer-mode></am-settings>"
              "</entity>",
              "<poc-settings> 1 s2\n"
              "<entity> 2>1 s2\n"
              "<isb-settings> 3>2>1 s2\n"
              "<incoming-session-barring> 4>3>2>1 s2\n"
              "'t' 4>3>2>1 s2\n"
              "<x> 4>3>2>1 s2 -> -41\n"
              "'u' 4>3>2>1 s2\n"
              "<z> 4>3>2>1 s2 -> -41\n"
              "</incoming-session-barring> 3>2>1 s5\n"
              "</isb-settings> 2>1 s5\n"
              "<am-settings> 3>2>1 s2\n"
              "<answer-mode> 4>3>2 s2\n"
              "'manual' 4>3>2 s4\n"
              "</answer-mode> 3>2>1 s4\n"
              "</am-settings> 2>1 s5\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a isb(active=true) am(mode=manual)]", "-41(x)@SAX; -41(z)@SAX", "-41(x)@SAX"});
}

TEST(Walk, ConversionThatFails) {
  expectWalk({"<entity id='a'><am-settings><answer-mode>auto</answer-mode></am-settings><sss-settings>"
              "<simultaneous-sessions-support active='1'/></sss-settings></entity>",
              "<poc-settings> 1 s2\n"
              "<entity> 2>1 s2\n"
              "<am-settings> 3>2>1 s2\n"
              "<answer-mode> 4>3>2 s2\n"
              "'auto' 4>3>2 s4\n"
              "</answer-mode> 3>2>1 s4 -> -44\n"
              "</am-settings> 2>1 s5\n"
              "<sss-settings> 3>2>1 s2\n"
              "<simultaneous-sessions-support> 4>3>2>1 s2\n"
              "</simultaneous-sessions-support> 3>2>1 s5\n"
              "</sss-settings> 2>1 s5\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a am(mode=automatic) sss(active=true)]", "-4(auto)@SAX; -44(auto,amSettingType,answer-mode)@SAX",
              "-4(auto)@SAX; -44(auto,amSettingType,answer-mode)@SAX", "-4(auto)@SAX"});
}

TEST(Walk, AttributesThatAreRefusedSkipNothing) {
  expectWalk(
      {"<entity><isb-settings><incoming-session-barring k='1' active='x'/></isb-settings><sss-settings/></entity>",
       "<poc-settings> 1 s2\n"
       "<entity> 2>1 s2\n"
       "<isb-settings> 3>2>1 s2\n"
       "<incoming-session-barring> 4>3>2>1 s2\n"
       "</incoming-session-barring> 3>2>1 s5\n"
       "</isb-settings> 2>1 s5\n"
       "<sss-settings> 3>2>1 s2\n"
       "</sss-settings> 2>1 s5\n"
       "</entity> 1 s5\n"
       "</poc-settings> 0 s5\n",
       "[id=- isb(active=false) sss(active=false)]",
       "-103(entityType,id)@runtime/reader<SAX; -33(isbSettingType_incoming_session_barring,k)@SAX; -101@SAX; "
       "-45(isbSettingType_incoming_session_barring,active)@SAX",
       "-103(entityType,id)@runtime/reader<SAX; -101@SAX", "-101@SAX"});
}

TEST(Walk, ChildOutOfOrderWithMatchingChildrenInside) {
  const std::string error = "-41(isb-settings)@runtime/reader<SAX";
  expectWalk({"<entity id='a'><am-settings><answer-mode>manual</answer-mode></am-settings><isb-settings>"
              "<incoming-session-barring active='1'/><sss-settings/></isb-settings><sss-settings/></entity>",
              "<poc-settings> 1 s2\n"
              "<entity> 2>1 s2\n"
              "<am-settings> 3>2>1 s2\n"
              "<answer-mode> 4>3>2 s2\n"
              "'manual' 4>3>2 s4\n"
              "</answer-mode> 3>2>1 s4\n"
              "</am-settings> 2>1 s5\n"
              "<isb-settings> 2>1 s2 -> -41\n"
              "<sss-settings> 3>2>1 s2\n"
              "</sss-settings> 2>1 s5\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a am(mode=manual) sss(active=false)]", error, error});
}

TEST(Walk, ErrorsBeyondTheLimit) {
  // The lookup that is not recorded passes its status through the trail of the record before it.
  expectWalk({"<bogus/><entity id='a'><bogus/><sss-settings/></entity>",
              "<poc-settings> 1 s2\n"
              "<bogus> 1 s2 -> -41\n"
              "<entity> 2>1 s2\n"
              "<bogus> 2>1 s2 -> -41\n"
              "<sss-settings> 3>2>1 s2\n"
              "</sss-settings> 2>1 s5\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a sss(active=false)]", "-41(bogus)@runtime/reader<SAX; -41(bogus)@runtime/reader<SAX",
              "-41(bogus)@runtime/reader<SAX<SAX"});
}

TEST(Walk, ElementInsideASimpleChild) {
  expectWalk({"<entity id='a'><am-settings><answer-mode>man<b><c/>u</b>al</answer-mode></am-settings></entity>",
              "<poc-settings> 1 s2\n"
              "<entity> 2>1 s2\n"
              "<am-settings> 3>2>1 s2\n"
              "<answer-mode> 4>3>2 s2\n"
              "'man' 4>3>2 s4\n"
              "<b> 5>4>3 s4\n"
              "<c> 6>5>4 s4\n"
              "</c> 5>4>3 s4\n"
              "'u' 5>4>3 s4\n"
              "</b> 4>3>2 s4\n"
              "'al' 4>3>2 s4\n"
              "</answer-mode> 3>2>1 s4\n"
              "</am-settings> 2>1 s5\n"
              "</entity> 1 s5\n"
              "</poc-settings> 0 s5\n",
              "[id=a am(mode=manual)]", "", ""});
}

TEST(Walk, ForeignElementWithNestedContent) {
  const std::string text =
      entityDocument("<isb-settings><incoming-session-barring active='1'/>"
                     "<x:f xmlns:x=\"u\">t<entity>5</entity>u</x:f></isb-settings><sss-settings/>");
  for (uint32_t limit : errorLimits) {
    const Walk walked = walk<Filling>(*contextWithErrorLimit(limit), text);
    EXPECT_EQ(walked.log, "<poc-settings> 1 s2\n"
                          "<entity> 2>1 s2\n"
                          "<isb-settings> 3>2>1 s2\n"
                          "<incoming-session-barring> 4>3>2>1 s2\n"
                          "</incoming-session-barring> 3>2>1 s5\n"
                          "<x:f> 4>3>2>any s2\n"
                          "'t' 4>3>2>any s2\n"
                          "<entity> 5>4>3>any s2\n"
                          "'5' 5>4>3>any s2\n"
                          "</entity> 4>3>2>any s2\n"
                          "'u' 4>3>2>any s2\n"
                          "</x:f> 3>2>1 s2\n"
                          "</isb-settings> 2>1 s5\n"
                          "<sss-settings> 3>2>1 s2\n"
                          "</sss-settings> 2>1 s5\n"
                          "</entity> 1 s5\n"
                          "</poc-settings> 0 s5\n");
    EXPECT_EQ(walked.errors, "");

    const Walk checked = walk<Checking>(*contextWithErrorLimit(limit), text);
    EXPECT_EQ(checked.log, "<poc-settings> 1 s2\n"
                           "<entity> 2>1 s2\n"
                           "<isb-settings> 3>2>1 s2\n"
                           "<incoming-session-barring> 4>3>2>1 s2\n"
                           "</incoming-session-barring> 3>2>1 s5\n"
                           "<x:f> 4>3>2 s2\n"
                           "'t' 4>3>2 s4\n"
                           "<entity> 5>4>3 s4\n"
                           "'5' 5>4>3 s4\n"
                           "</entity> 4>3>2 s4\n"
                           "'u' 4>3>2 s4\n"
                           "</x:f> 3>2>1 s4\n"
                           "</isb-settings> 2>1 s5\n"
                           "<sss-settings> 3>2>1 s2\n"
                           "</sss-settings> 2>1 s5\n"
                           "</entity> 1 s5\n"
                           "</poc-settings> 0 s5\n");
    EXPECT_EQ(checked.errors, "");
  }
}

// One child too many, at every place between the elements of a document: it is left out and all else is as without it.
TEST(Walk, RefusedChildAnywhereChangesNothingElse) {
  const std::vector<std::string> pieces = {"<entity id='a'>",
                                           "<isb-settings>",
                                           "<incoming-session-barring active='1'>",
                                           "</incoming-session-barring>",
                                           "</isb-settings>",
                                           "<am-settings>",
                                           "<answer-mode>manual</answer-mode>",
                                           "</am-settings>",
                                           "<ipab-settings>",
                                           "<incoming-personal-alert-barring active='1'/>",
                                           "</ipab-settings>",
                                           "<sss-settings>",
                                           "<simultaneous-sessions-support active='1'>",
                                           "</simultaneous-sessions-support>",
                                           "</sss-settings>",
                                           "</entity>",
                                           "<entity id='b'/>"};
  const auto joined = [&](size_t at, const std::string &what) {
    std::string all;
    for (size_t i = 0; i <= pieces.size(); ++i)
      all += (i == at ? what : "") + (i == pieces.size() ? "" : pieces[i]);
    return document(all);
  };
  const Walk filling = walk<Filling>(*contextWithErrorLimit(100), joined(0, ""));
  const Walk checking = walk<Checking>(*contextWithErrorLimit(100), joined(0, ""));
  EXPECT_EQ(filling.errors, "");
  EXPECT_EQ(filling.log, checking.log);
  // Without the refused child's own event the log must be that of the document without it.
  const auto withoutBogus = [](std::string log) {
    const size_t at = log.find("<bogus>");
    EXPECT_NE(at, std::string::npos);
    log.erase(at, log.find('\n', at) + 1 - at);
    return log;
  };
  for (size_t at = 0; at <= pieces.size(); ++at) {
    for (uint32_t limit : errorLimits) {
      SCOPED_TRACE("limit " + std::to_string(limit) + ", before piece " + std::to_string(at));
      const std::string text = joined(at, "<bogus k='1'>t<entity id='x'><am-settings/></entity></bogus>");
      const Walk walked = walk<Filling>(*contextWithErrorLimit(limit), text);
      EXPECT_EQ(withoutBogus(walked.log), filling.log);
      EXPECT_EQ(walked.record, filling.record);
      EXPECT_EQ(walked.errors.empty(), limit == 0) << walked.errors;
      const Walk checked = walk<Checking>(*contextWithErrorLimit(limit), text);
      EXPECT_EQ(withoutBogus(checked.log), checking.log);
      EXPECT_EQ(checked.errors.empty(), limit == 0) << checked.errors;
    }
  }
}

TEST(Walk, RootOfAnotherName) {
  for (uint32_t limit : errorLimits) {
    const Walk walked = walk<Filling>(*contextWithErrorLimit(limit), "<settings><entity id='a'/></settings>");
    EXPECT_EQ(walked.log, "<settings> 1 s2\n"
                          "<entity> 2>1 s2\n"
                          "</entity> 1 s5\n"
                          "</settings> 0 s5\n");
    EXPECT_EQ(walked.record, "[id=a]");
    EXPECT_EQ(walked.errors, limit == 0 ? "" : "-3(poc-settings,settings)@SAX");
  }
}

TEST(Walk, DocumentCutOffInsideAForeignElementFourDeep) {
  const std::string text = "<poc-settings xmlns=\""s + namespaceUri +
                           "\"><entity id='a'><am-settings><answer-mode>manual</answer-mode><x:f xmlns:x=\"u\"><x:g>te";
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE(limit);
    const auto ctx = contextWithErrorLimit(limit);
    const Walk walked = walk<Filling>(*ctx, text);
    EXPECT_EQ(walked.parse, STATUS_PARSE_FAILED);
    EXPECT_EQ(walked.log, "<poc-settings> 1 s2\n"
                          "<entity> 2>1 s2\n"
                          "<am-settings> 3>2>1 s2\n"
                          "<answer-mode> 4>3>2 s2\n"
                          "'manual' 4>3>2 s4\n"
                          "</answer-mode> 3>2>1 s4\n"
                          "<x:f> 4>3>2>any s2\n"
                          "<x:g> 5>4>3>any s2\n"
                          "'te' 5>4>3>any s2\n");
    EXPECT_EQ(walked.record, "[id=a am(mode=manual -)]") << "the entry is there, its text is not";
    EXPECT_EQ(rtXmlNSGetIndex(*ctx, "x"), RTXML_NS_NONE) << "no binding is left";
    EXPECT_EQ(rtXmlNSGetIndex(*ctx, nullptr), RTXML_NS_NONE);

    rtxErrClear(*ctx);
    EXPECT_EQ(decode(*ctx, text).record, "[id=a am(mode=manual -)]");
    rtxErrClear(*ctx);
    EXPECT_EQ(decode(*ctx, document("<entity id='b'/>")).record, "[id=b]");
  }
}

TEST(Walk, UsedContext) {
  const std::string bad = entityDocument("<am-settings><answer-mode>auto</answer-mode></am-settings>");
  const std::string good = entityDocument("<am-settings><answer-mode>manual</answer-mode></am-settings>");
  for (uint32_t limit : errorLimits) {
    const auto ctx = contextWithErrorLimit(limit);
    walk<Filling>(*ctx, bad);
    const uint32_t records = rtxErrCount(*ctx);
    const Walk second = walk<Filling>(*ctx, good);
    EXPECT_EQ(second.log, walk<Filling>(*contextWithErrorLimit(limit), good).log);
    EXPECT_EQ(second.record, "[id=e am(mode=manual)]");
    EXPECT_EQ(rtxErrGetFirstError(*ctx), STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(rtxErrCount(*ctx), records);
  }
}

TEST(Walk, TextThatCannotBeCollected) {
  // The heap takes the beginning of the text at most.
  const std::string text = entityDocument("<am-settings><answer-mode>manual" + std::string(400000, 'x') +
                                          "<b>inner</b>tail</answer-mode><x:f xmlns:x=\"u\"/></am-settings>"
                                          "<sss-settings><simultaneous-sessions-support active='1'/></sss-settings>");
  for (uint32_t limit : errorLimits) {
    for (bool checking : {false, true}) {
      SCOPED_TRACE("limit " + std::to_string(limit) + (checking ? ", validator" : ", decoder"));
      Context ctx([limit](RuntimeOptions &options) {
        options.errorLimit = limit;
        options.heapLimit = 64 * 1024;
      });
      Walk walked = checking ? walk<Checking>(ctx, text) : walk<Filling>(ctx, text);
      EXPECT_EQ(walked.parse, 0);
      const size_t from = walked.log.find("'manualx");
      const size_t to = walked.log.find('\n', from);
      ASSERT_NE(to, std::string::npos) << walked.log.substr(0, 300);
      EXPECT_TRUE(walked.log.substr(0, to).ends_with(" 4>3>2 s4 -> -10")) << walked.log.substr(to - 20, 20);
      walked.log.erase(from, to + 1 - from);
      const std::string foreign = checking ? "<x:f> 4>3>2 s2\n" : "<x:f> 4>3>2>any s2\n";
      EXPECT_EQ(walked.log, "<poc-settings> 1 s2\n"
                            "<entity> 2>1 s2\n"
                            "<am-settings> 3>2>1 s2\n"
                            "<answer-mode> 4>3>2 s2\n"
                            "</answer-mode> 3>2>1 s0\n" +
                                foreign +
                                "</x:f> 3>2>1 s2\n"
                                "</am-settings> 2>1 s5\n"
                                "<sss-settings> 3>2>1 s2\n"
                                "<simultaneous-sessions-support> 4>3>2>1 s2\n"
                                "</simultaneous-sessions-support> 3>2>1 s5\n"
                                "</sss-settings> 2>1 s5\n"
                                "</entity> 1 s5\n"
                                "</poc-settings> 0 s5\n");
      if (!checking) {
        EXPECT_EQ(walked.record, "[id=e am(mode=automatic <x:f xmlns:x=\"u\"/>) sss(active=true)]");
      }
      EXPECT_EQ(walked.errors, limit == 0 ? "" : checking ? "-10@Vldt" : "-10@SAX");
    }
  }
}

} // namespace
