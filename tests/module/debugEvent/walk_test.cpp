// What each event of a document leaves behind: the levels of the chain of handlers, the state byte, the result of the
// callback. Where an element is refused or its text is left out, every later event must find the handlers in step.
#include "handlers.h"
#include "walk.h"

#include <algorithm>
using namespace debugInfo;
using support::Context;
using support::contextWithErrorLimit;
using support::errorLimits;
using support::Walk;
using support::withoutResults;

namespace {

template <typename Handler> Walk walk(RuntimeContext *ctx, const Document &document, const std::string &text) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  EXPECT_EQ(rtXmlNSSetURITable(ctx, QxGet_DebugEvent_NSURI(ctx), 1), 0);
  support::HeapBalance balance(ctx);
  Held held(ctx, document);
  held.init();
  Handler handler;
  EXPECT_EQ(initHandler<Handler>(ctx, *document.type, handler, held), 0);
  Walk walk = support::walkThrough(ctx, handler, document.root);
  walk.record = dump(document, held.value);
  walk.errors = brief(ctx);
  return walk;
}

struct Expectation {
  const char *root;
  const char *attributes;
  const char *content;
  const char *log; // with all errors recorded
  const char *value;
  const char *errors;                 // with all recorded
  const char *errorsOfOne;            // with the first recorded
  const char *validatorLog = nullptr; // if it is another
  bool returnsUnrecorded = false;
};

void expectWalk(const Expectation &expected) {
  const Document &of = documentOf(expected.root);
  support::expectWalk(
      {element(expected.root, expected.attributes, expected.content),
       expected.log,
       expected.value,
       {expected.errors, expected.errorsOfOne},
       expected.validatorLog == nullptr ? "" : expected.validatorLog,
       expected.returnsUnrecorded},
      {[&](RuntimeContext *ctx, const std::string &text) { return walk<SaxTypeHandler>(ctx, of, text); },
       [&](RuntimeContext *ctx, const std::string &text) { return walk<VsaxTypeHandler>(ctx, of, text); },
       [&](RuntimeContext *ctx, const std::string &text) { return decode(ctx, of, text); },
       [](std::string errors) { return errors; }});
}

TEST(Walk, UnknownChildOfTheRoot) {
  expectWalk({"start-trigger", "", "<from>a</from><bogus>q<to>x</to></bogus><method>m</method>",
              "<start-trigger> 1 s2\n"
              "<from> 2 s2\n"
              "'a' 2 s4\n"
              "</from> 1 s4\n"
              "<bogus> 1 s2 -> -41\n"
              "<method> 2 s2\n"
              "'m' 2 s4\n"
              "</method> 1 s4\n"
              "</start-trigger> 0 s5\n",
              "from=a method=m", "-41(bogus)", "-41(bogus)"});
}

TEST(Walk, UnknownChildFourDeep) {
  expectWalk(
      {"debuginfo", "version='1' state='full'",
       "<debugconfig aor='a'><session id='s'><start-trigger><bogus><from>x</from></bogus><to>t</to></start-trigger>"
       "<stop-trigger/><control><interface>i</interface></control></session></debugconfig>",
       "<debuginfo> 1 s2\n"
       "<debugconfig> 2>1 s2\n"
       "<session> 3>2>1 s2\n"
       "<start-trigger> 4>3>2>1 s2\n"
       "<bogus> 4>3>2>1 s2 -> -41\n"
       "<to> 5>4>3>2 s2\n"
       "'t' 5>4>3>2 s4\n"
       "</to> 4>3>2>1 s4\n"
       "</start-trigger> 3>2>1 s5\n"
       "<stop-trigger> 4>3>2>1 s2\n"
       "</stop-trigger> 3>2>1 s5\n"
       "<control> 4>3>2>1 s2\n"
       "<interface> 5>4>3>2 s2\n"
       "'i' 5>4>3>2 s4\n"
       "</interface> 4>3>2>1 s4\n"
       "</control> 3>2>1 s5\n"
       "</session> 2>1 s5\n"
       "</debugconfig> 1 s5\n"
       "</debuginfo> 0 s5\n",
       "version=1 state=0 debugconfig{aor=a session{id=s start{to=t} stop{} control{interface=i}}}", "-41(bogus)",
       "-41(bogus)"});
}

TEST(Walk, RecordOutOfOrderWithMatchingChildrenInside) {
  expectWalk({"session", "id='s'",
              "<stop-trigger><time>x</time><control/></stop-trigger><start-trigger><from>f</from></start-trigger>"
              "<start-trigger><from>g</from></start-trigger><stop-trigger/>",
              "<session> 1 s2\n"
              "<stop-trigger> 1 s2 -> -41\n"
              "<start-trigger> 2>1 s2\n"
              "<from> 3>2 s2\n"
              "'f' 3>2 s4\n"
              "</from> 2>1 s4\n"
              "</start-trigger> 1 s5\n"
              "<start-trigger> 1 s2 -> -41\n"
              "<stop-trigger> 2>1 s2\n"
              "</stop-trigger> 1 s5\n"
              "</session> 0 s5\n",
              "id=s start{from=f} stop{} control{interface=-}", "-41(stop-trigger); -41(start-trigger)",
              "-41(stop-trigger)"});
}

TEST(Walk, SimpleChildOutOfOrderWithMatchingChildrenInside) {
  expectWalk({"control", "",
              "<depth>x<interface>q</interface><debug-id>0A</debug-id></depth><interface>i</interface>"
              "<debug-id>0B</debug-id>",
              "<control> 1 s2\n"
              "<depth> 1 s2 -> -41\n"
              "<interface> 2 s2\n"
              "'i' 2 s4\n"
              "</interface> 1 s4\n"
              "<debug-id> 2 s2\n"
              "'0B' 2 s4\n"
              "</debug-id> 1 s4\n"
              "</control> 0 s5\n",
              "interface=i debug-id=0B", "-41(depth)", "-41(depth)"});
}

TEST(Walk, ChildrenBehindTheLast) {
  expectWalk({"start-trigger", "", "<debug-id>0A</debug-id><debug-id>0B</debug-id><from>f</from>",
              "<start-trigger> 1 s2\n"
              "<debug-id> 2 s2\n"
              "'0A' 2 s4\n"
              "</debug-id> 1 s4\n"
              "<debug-id> 1 s2 -> -41\n"
              "<from> 1 s2 -> -41\n"
              "</start-trigger> 0 s5\n",
              "debug-id=0A", "-41(debug-id); -41(from)", "-41(debug-id)"});
}

TEST(Walk, OddDigitsInsideADelegate) {
  expectWalk({"session", "id='s'",
              "<start-trigger><debug-id>43A</debug-id></start-trigger><stop-trigger><time-period>p</time-period>"
              "</stop-trigger>",
              "<session> 1 s2\n"
              "<start-trigger> 2>1 s2\n"
              "<debug-id> 3>2 s2\n"
              "'43A' 3>2 s4\n"
              "</debug-id> 2>1 s4 -> -44\n"
              "</start-trigger> 1 s5\n"
              "<stop-trigger> 2>1 s2\n"
              "<time-period> 3>2 s2\n"
              "'p' 3>2 s4\n"
              "</time-period> 2>1 s4\n"
              "</stop-trigger> 1 s5\n"
              "</session> 0 s5\n",
              "id=s start{} stop{time-period=p} control{interface=-}", "-44(43A,tns__start_trigger,debug-id)",
              "-44(43A,tns__start_trigger,debug-id)"});
}

TEST(Walk, WrongDigitSkipsTheRestButTheEnd) {
  expectWalk({"session", "id='s'",
              "<start-trigger><method>m</method><debug-id>43x5<b>6</b>7</debug-id></start-trigger><stop-trigger>"
              "<time-period>p</time-period></stop-trigger>",
              "<session> 1 s2\n"
              "<start-trigger> 2>1 s2\n"
              "<method> 3>2 s2\n"
              "'m' 3>2 s4\n"
              "</method> 2>1 s4\n"
              "<debug-id> 3>2 s2\n"
              "'43x5' 3>2 s4 -> -101\n"
              "</debug-id> 2>1 s0\n"
              "</start-trigger> 1 s5\n"
              "<stop-trigger> 2>1 s2\n"
              "<time-period> 3>2 s2\n"
              "'p' 3>2 s4\n"
              "</time-period> 2>1 s4\n"
              "</stop-trigger> 1 s5\n"
              "</session> 0 s5\n",
              "id=s start{method=m} stop{time-period=p} control{interface=-}", "-101", "-101", nullptr, true});
}

TEST(Walk, ElementInsideASimpleChild) {
  expectWalk({"control", "", "<interface>1<b>2<c/></b>3</interface><debug-id>0<d>A</d></debug-id>",
              "<control> 1 s2\n"
              "<interface> 2 s2\n"
              "'1' 2 s4\n"
              "<b> 3 s4\n"
              "'2' 3 s4\n"
              "<c> 4 s4\n"
              "</c> 3 s4\n"
              "</b> 2 s4\n"
              "'3' 2 s4\n"
              "</interface> 1 s4\n"
              "<debug-id> 2 s2\n"
              "'0' 2 s4\n"
              "<d> 3 s4\n"
              "'A' 3 s4\n"
              "</d> 2 s4\n"
              "</debug-id> 1 s4\n"
              "</control> 0 s5\n",
              "interface=123 debug-id=0A", "", ""});
}

TEST(Walk, ForeignElementWithNestedContent) {
  expectWalk({"debuginfo", "version='1' state='full' xmlns:x='urn:x'",
              "<x:foo>t<x:bar><debugconfig>5</debugconfig></x:bar>u</x:foo><debugconfig aor='a'/><x:z/>",
              "<debuginfo> 1 s2\n"
              "<x:foo> 2>any s2\n"
              "'t' 2>any s2\n"
              "<x:bar> 3>any s2\n"
              "<debugconfig> 4>any s2\n"
              "'5' 4>any s2\n"
              "</debugconfig> 3>any s2\n"
              "</x:bar> 2>any s2\n"
              "'u' 2>any s2\n"
              "</x:foo> 1 s2\n"
              "<debugconfig> 1 s2 -> -41\n"
              "<x:z> 2>any s2\n"
              "</x:z> 1 s2\n"
              "</debuginfo> 0 s5\n",
              "version=1 state=0 any=<x:foo xmlns:x=\"urn:x\" xmlns=\"urn:ietf:params:xml:ns:debuginfo\">t<x:bar>"
              "<debugconfig>5</debugconfig></x:bar>u</x:foo> any=<x:z xmlns:x=\"urn:x\"/>",
              "-41(debugconfig)", "-41(debugconfig)",
              "<debuginfo> 1 s2\n"
              "<x:foo> 2 s2\n"
              "'t' 2 s4\n"
              "<x:bar> 3 s4\n"
              "<debugconfig> 4 s4\n"
              "'5' 4 s4\n"
              "</debugconfig> 3 s4\n"
              "</x:bar> 2 s4\n"
              "'u' 2 s4\n"
              "</x:foo> 1 s4\n"
              "<debugconfig> 1 s2 -> -41\n"
              "<x:z> 2 s2\n"
              "</x:z> 1 s2\n"
              "</debuginfo> 0 s5\n"});
}

TEST(Walk, RootOfAnotherName) {
  for (uint32_t limit : errorLimits) {
    const Walk walked = walk<SaxTypeHandler>(*contextWithErrorLimit(limit), documentOf("control"),
                                             "<other><interface>i</interface></other>");
    EXPECT_EQ(walked.log, "<other> 1 s2\n"
                          "<interface> 2 s2\n"
                          "'i' 2 s4\n"
                          "</interface> 1 s4\n"
                          "</other> 0 s5\n");
    EXPECT_EQ(walked.record, "interface=i");
    EXPECT_EQ(walked.errors, limit == 0 ? "" : "-3(control,other)");
  }
}

TEST(Walk, DocumentCutOffInsideDelegates) {
  struct Case {
    const char *text;
    const char *log;
    const char *value;
  };
  const Case cases[] = {
      {"<debugconfig aor='a'><session id='s'><start-trigger><from>te",
       "<debuginfo> 1 s2\n<debugconfig> 2>1 s2\n<session> 3>2>1 s2\n<start-trigger> 4>3>2>1 s2\n<from> 5>4>3>2 s2\n"
       "'te' 5>4>3>2 s4\n",
       "version=1 state=0 debugconfig{aor=a session{id=s start{} stop{} control{interface=-}}}"},
      {"<debugconfig xmlns:x='u' aor='a'><session id='s'><start-trigger><debug-id>4",
       "<debuginfo> 1 s2\n<debugconfig> 2>1 s2\n<session> 3>2>1 s2\n<start-trigger> 4>3>2>1 s2\n"
       "<debug-id> 5>4>3>2 s2\n'4' 5>4>3>2 s4\n",
       "version=1 state=0 debugconfig{aor=a session{id=s start{} stop{} control{interface=-}}}"},
      {"<x:f xmlns:x=\"u\"><x:g>te", "<debuginfo> 1 s2\n<x:f> 2>any s2\n<x:g> 3>any s2\n'te' 3>any s2\n",
       "version=1 state=0 any=-"},
  };
  const Document &document = documentOf("debuginfo");
  for (const Case &c : cases) {
    for (uint32_t limit : errorLimits) {
      SCOPED_TRACE(c.text);
      const auto ctx = contextWithErrorLimit(limit);
      const std::string text = "<debuginfo xmlns=\""s + namespaceUri + "\" version='1' state='full'>" + c.text;
      const Walk walked = walk<SaxTypeHandler>(*ctx, document, text);
      EXPECT_EQ(walked.parse, STATUS_PARSE_FAILED);
      EXPECT_EQ(walked.log, c.log);
      EXPECT_EQ(walked.record, c.value);
      EXPECT_EQ(walk<VsaxTypeHandler>(*ctx, document, text).parse, STATUS_PARSE_FAILED);
      EXPECT_EQ(rtXmlNSGetIndex(*ctx, "x"), RTXML_NS_NONE) << "no binding is left";
      EXPECT_EQ(rtXmlNSGetIndex(*ctx, nullptr), RTXML_NS_NONE);

      rtxErrClear(*ctx);
      EXPECT_EQ(decode(*ctx, document, text).record, c.value);
      rtxErrClear(*ctx);
      EXPECT_EQ(decode(*ctx, documentOf("control"), element("control", "<interface>i</interface>")).record,
                "interface=i");
    }
  }
}

TEST(Walk, UsedContext) {
  for (uint32_t limit : {100u, 1u}) {
    const auto ctx = contextWithErrorLimit(limit);
    walk<SaxTypeHandler>(*ctx, documentOf("control"), element("control", "<bogus/>"));
    const Walk second =
        walk<SaxTypeHandler>(*ctx, documentOf("control"), element("control", "<interface>i</interface>"));
    EXPECT_EQ(second.log, "<control> 1 s2\n"
                          "<interface> 2 s2\n"
                          "'i' 2 s4\n"
                          "</interface> 1 s4\n"
                          "</control> 0 s5\n");
    EXPECT_EQ(second.record, "interface=i");
    EXPECT_EQ(rtxErrGetFirstError(*ctx), STATUS_UNEXPECTED_ELEMENT);
  }
}

TEST(Walk, TextThatCannotBeCollected) {
  // The heap takes the beginning of the text at most.
  for (const char *name : {"method", "debug-id"}) {
    const std::string text =
        element("session", "id='s'",
                "<start-trigger><"s + name + ">" + std::string(800000, '4') + "<b>inner</b>tail</" + name +
                    "></start-trigger><stop-trigger><time-period>p</time-period></stop-trigger>");
    for (uint32_t limit : errorLimits) {
      SCOPED_TRACE(name + " "s + std::to_string(limit));
      Context ctx([limit](RuntimeOptions &options) {
        options.errorLimit = limit;
        options.heapLimit = 64 * 1024;
      });
      for (bool validator : {false, true}) {
        rtxErrClear(ctx);
        const Document &document = documentOf("session");
        Walk walked =
            validator ? walk<VsaxTypeHandler>(ctx, document, text) : walk<SaxTypeHandler>(ctx, document, text);
        EXPECT_EQ(walked.parse, 0);
        const size_t from = walked.log.find("'4");
        const size_t to = walked.log.find('\n', from);
        ASSERT_NE(to, std::string::npos) << walked.log.substr(0, 200);
        EXPECT_TRUE(walked.log.substr(0, to).ends_with(" -> -10")) << walked.log.substr(to - 20, 20);
        walked.log.erase(from, to + 1 - from);
        EXPECT_EQ(walked.log, "<session> 1 s2\n"
                              "<start-trigger> 2>1 s2\n<"s +
                                  name + "> 3>2 s2\n</" + name +
                                  "> 2>1 s0\n"
                                  "</start-trigger> 1 s5\n"
                                  "<stop-trigger> 2>1 s2\n"
                                  "<time-period> 3>2 s2\n"
                                  "'p' 3>2 s4\n"
                                  "</time-period> 2>1 s4\n"
                                  "</stop-trigger> 1 s5\n"
                                  "</session> 0 s5\n");
        EXPECT_EQ(walked.errors, limit == 0 ? "" : "-10");
        if (!validator) {
          EXPECT_EQ(walked.record, "id=s start{} stop{time-period=p} control{interface=-}");
        }
      }
    }
  }
}

// A refused child at every place where a record has children: the rest is read as without it.
TEST(Walk, OneRefusedChildAtEveryPlace) {
  const Document &document = documentOf("debuginfo");
  const std::string whole = spelled(completeBody(document), "").insert(10, " xmlns=\""s + namespaceUri + "\"");
  const std::string refused = "<bogus k='1'>q<from>x</from><session><bogus/></session></bogus>";
  const std::vector<std::string> records = {"debuginfo",     "debugconfig",  "session",
                                            "start-trigger", "stop-trigger", "control"};
  const Walk original = walk<SaxTypeHandler>(*contextWithErrorLimit(100), document, whole);
  ASSERT_EQ(original.errors, "");
  ASSERT_EQ(original.record, completeDump(document));
  const Walk originalChecked = walk<VsaxTypeHandler>(*contextWithErrorLimit(100), document, whole);

  size_t places = 0;
  std::vector<std::string> open;
  for (size_t at = whole.find('<'); at != std::string::npos; at = whole.find('<', at + 1)) {
    // The place before this tag belongs to the element that is open there.
    if (!open.empty() && std::find(records.begin(), records.end(), open.back()) != records.end()) {
      ++places;
      const std::string text = std::string(whole).insert(at, refused);
      for (uint32_t limit : errorLimits) {
        SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + text);
        for (bool validator : {false, true}) {
          const auto ctx = contextWithErrorLimit(limit);
          const Walk walked =
              validator ? walk<VsaxTypeHandler>(*ctx, document, text) : walk<SaxTypeHandler>(*ctx, document, text);
          EXPECT_EQ(walked.errors, limit == 0 ? "" : "-41(bogus)");
          if (!validator) {
            EXPECT_EQ(walked.record, original.record);
          }
          // Without its line, which shows levels as they are, the log is that of the original.
          std::string log = walked.log;
          const size_t line = log.find("<bogus>");
          ASSERT_NE(line, std::string::npos);
          log.erase(line, log.find('\n', line) + 1 - line);
          EXPECT_EQ(withoutResults(log), (validator ? originalChecked : original).log);
        }
      }
      if (testing::Test::HasFailure()) return;
    }
    const size_t end = whole.find('>', at);
    const std::string tag = whole.substr(at + 1, end - at - 1);
    if (tag[0] == '/') {
      open.pop_back();
    } else if (tag.back() != '/') {
      open.push_back(tag.substr(0, tag.find(' ')));
    }
  }
  EXPECT_GT(places, 60u);
}

} // namespace
