// What each event of a document leaves behind: the levels of the chain of handlers, the state byte, the result of the
// callback. Where an element is refused or its text cannot be kept, every later event must find the handlers in step.
#include "cases.h"
#include "filters.h"
#include "walk.h"

using namespace filters;
using support::changedLines;
using support::Context;
using support::contextWithErrorLimit;
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
  Record<FilterSetType> record(ctx);
  SaxTypeHandler handler;
  EXPECT_EQ(QxSAX_FilterSetType_init(ctx, &handler, record, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "filter-set");
  walk.record = dump(*record);
  walk.errors = errorList(ctx);
  return walk;
}

Walk walkValidator(RuntimeContext *ctx, const std::string &text) {
  prepare(ctx, text);
  support::HeapBalance balance(ctx);
  VsaxTypeHandler handler;
  EXPECT_EQ(QxVSAX_FilterSetType_init(ctx, &handler, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "filter-set");
  walk.errors = errorList(ctx);
  return walk;
}

struct Expectation {
  std::string document;
  std::string log; // with all errors recorded
  std::string record;
  std::string errors = {};       // of the decoder, with all recorded
  std::string errorsOfOne = {};  // with the first recorded
  std::string validatorLog = {}; // empty: the same
};

void expectWalk(const Expectation &expected) {
  support::expectWalk(
      {expected.document,
       expected.log,
       expected.record,
       {expected.errors, expected.errorsOfOne},
       expected.validatorLog},
      {walk, walkValidator, static_cast<Reading (*)(RuntimeContext *, const std::string &)>(decode), nullptr});
}

TEST(Walk, UnknownChildOfTheSet) {
  const std::string error = "-41(bogus)@runtime/reader<SAX";
  expectWalk({document("<bogus>q<filter id='x'/></bogus><filter id='f'/>"),
              "<filter-set> 1 s2\n"
              "<bogus> 1 s2 -> -41\n"
              "<filter> 2>1 s2\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              "{filter(id=f)}", error, error});
}

TEST(Walk, UnknownChildTwoHandlersDeep) {
  const std::string error = "-41(bogus)@runtime/reader<SAX";
  expectWalk({inFilter("<what><bogus><include>i</include></bogus><include>a</include></what><trigger/>"),
              "<filter-set> 1 s2\n"
              "<filter> 2>1 s2\n"
              "<what> 3>2>1 s2\n"
              "<bogus> 3>2>1 s2 -> -41\n"
              "<include> 4>3>2>1 s2\n"
              "'a' 4>3>2>1 s4\n"
              "</include> 3>2>1 s5\n"
              "</what> 2>1 s5\n"
              "<trigger> 3>2>1 s2\n"
              "</trigger> 2>1 s5\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              filterOf("what{include[a]} trigger"), error, error});
}

TEST(Walk, ChildOfAnEmptyTypeThreeHandlersDeep) {
  const std::string error = "-41(x)@SAX";
  expectWalk({document("<ns-bindings><ns-binding prefix='p' urn='u'><x><y/></x></ns-binding><ns-binding prefix='q' "
                       "urn='v'/></ns-bindings><filter id='f'/>"),
              "<filter-set> 1 s2\n"
              "<ns-bindings> 2>1 s2\n"
              "<ns-binding> 3>2>1 s2\n"
              "<x> 3>2>1 s2 -> -41\n"
              "</ns-binding> 2>1 s5\n"
              "<ns-binding> 3>2>1 s2\n"
              "</ns-binding> 2>1 s5\n"
              "</ns-bindings> 1 s5\n"
              "<filter> 2>1 s2\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              "{bindings{p=u q=v} filter(id=f)}", error, error});
}

TEST(Walk, BindingsWithOtherChildren) {
  const std::string error = "-3(ns_binding,x)@SAX";
  expectWalk({document("<ns-bindings><x><ns-binding prefix='n' urn='o'/></x><ns-binding prefix='p' urn='u'/><x/>"
                       "</ns-bindings>"),
              "<filter-set> 1 s2\n"
              "<ns-bindings> 2>1 s2\n"
              "<x> 2>1 s2 -> -3\n"
              "<ns-binding> 3>2>1 s2\n"
              "</ns-binding> 2>1 s5\n"
              "<x> 2>1 s2 -> -3\n"
              "</ns-bindings> 1 s5\n"
              "</filter-set> 0 s5\n",
              "{bindings{p=u}}", error + "; " + error, error});
}

TEST(Walk, FailureAtTheOwnEndTagEndsTheDelegateAllTheSame) {
  const std::string error = "-16(NSBindings.count,0)@SAX";
  const std::string before = "<filter-set> 1 s2\n"
                             "<ns-bindings> 2>1 s2\n";
  const std::string behind = "<filter> 2>1 s2\n"
                             "</filter> 1 s5\n"
                             "</filter-set> 0 s5\n";
  expectWalk({document("<ns-bindings/><filter id='f'/>"), before + "</ns-bindings> 1 s5 -> -16\n" + behind,
              "{bindings filter(id=f)}", error, error, before + "</ns-bindings> 1 s5\n" + behind});
}

TEST(Walk, TextAroundARefusedChildIsJoined) {
  const std::string error = "-41(b)@SAX";
  expectWalk({inWhat("<include>conf<b>zz</b>irmed</include><exclude>x</exclude>"),
              "<filter-set> 1 s2\n"
              "<filter> 2>1 s2\n"
              "<what> 3>2>1 s2\n"
              "<include> 4>3>2>1 s2\n"
              "'conf' 4>3>2>1 s4\n"
              "<b> 4>3>2>1 s2 -> -41\n"
              "'irmed' 4>3>2>1 s4\n"
              "</include> 3>2>1 s5\n"
              "<exclude> 4>3>2>1 s2\n"
              "'x' 4>3>2>1 s4\n"
              "</exclude> 3>2>1 s5\n"
              "</what> 2>1 s5\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              whatOf("include[confirmed] exclude[x]"), error, error});
}

TEST(Walk, ElementInsideASimpleChild) {
  expectWalk({inTrigger("<added>1<b>2<c/></b>3</added><removed>r</removed>"),
              "<filter-set> 1 s2\n"
              "<filter> 2>1 s2\n"
              "<trigger> 3>2>1 s2\n"
              "<added> 4>3>2 s2\n"
              "'1' 4>3>2 s4\n"
              "<b> 5>4>3 s4\n"
              "'2' 5>4>3 s4\n"
              "<c> 6>5>4 s4\n"
              "</c> 5>4>3 s4\n"
              "</b> 4>3>2 s4\n"
              "'3' 4>3>2 s4\n"
              "</added> 3>2>1 s4\n"
              "<removed> 4>3>2 s2\n"
              "'r' 4>3>2 s4\n"
              "</removed> 3>2>1 s4\n"
              "</trigger> 2>1 s5\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              triggerOf("added[123] removed[r]")});
}

TEST(Walk, ForeignElementWithNestedContent) {
  expectWalk({inWhat("<x:f xmlns:x=\"u\">t<x:g><include xmlns=\"v\">5</include></x:g>u</x:f><x:z xmlns:x=\"u\"/>"),
              "<filter-set> 1 s2\n"
              "<filter> 2>1 s2\n"
              "<what> 3>2>1 s2\n"
              "<x:f> 4>3>2>any s2\n"
              "'t' 4>3>2>any s2\n"
              "<x:g> 5>4>3>any s2\n"
              "<include> 6>5>4>any s2\n"
              "'5' 6>5>4>any s2\n"
              "</include> 5>4>3>any s2\n"
              "</x:g> 4>3>2>any s2\n"
              "'u' 4>3>2>any s2\n"
              "</x:f> 3>2>1 s2\n"
              "<x:z> 4>3>2>any s2\n"
              "</x:z> 3>2>1 s2\n"
              "</what> 2>1 s5\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              whatOf("any[<x:f xmlns:x=\"u\">t<x:g><include xmlns=\"v\">5</include></x:g>u</x:f>] "
                     "any[<x:z xmlns:x=\"u\"/>]"),
              "", "",
              "<filter-set> 1 s2\n"
              "<filter> 2>1 s2\n"
              "<what> 3>2>1 s2\n"
              "<x:f> 4>3>2 s2\n"
              "'t' 4>3>2 s4\n"
              "<x:g> 5>4>3 s4\n"
              "<include> 6>5>4 s4\n"
              "'5' 6>5>4 s4\n"
              "</include> 5>4>3 s4\n"
              "</x:g> 4>3>2 s4\n"
              "'u' 4>3>2 s4\n"
              "</x:f> 3>2>1 s4\n"
              "<x:z> 4>3>2 s2\n"
              "</x:z> 3>2>1 s2\n"
              "</what> 2>1 s5\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n"});
}

TEST(Walk, ChildOutOfOrderWithMatchingChildrenInside) {
  const std::string first = "-41(include)@runtime/reader<SAX";
  expectWalk({inWhat("<exclude>a</exclude><include>b<exclude>c</exclude></include><exclude>d</exclude><include/>"),
              "<filter-set> 1 s2\n"
              "<filter> 2>1 s2\n"
              "<what> 3>2>1 s2\n"
              "<exclude> 4>3>2>1 s2\n"
              "'a' 4>3>2>1 s4\n"
              "</exclude> 3>2>1 s5\n"
              "<include> 3>2>1 s2 -> -41\n"
              "<exclude> 4>3>2>1 s2\n"
              "'d' 4>3>2>1 s4\n"
              "</exclude> 3>2>1 s5\n"
              "<include> 3>2>1 s2 -> -41\n"
              "</what> 2>1 s5\n"
              "</filter> 1 s5\n"
              "</filter-set> 0 s5\n",
              whatOf("exclude[a] exclude[d]"), first + "; " + first, first + "<SAX"});
}

TEST(Walk, DocumentCutOffInsideAForeignElement) {
  const std::string text =
      "<filter-set xmlns=\""s + namespaceUri + "\"><filter id='f'><what><include>i</include><x:f xmlns:x='u'><x:g>te";
  for (uint32_t limit : errorLimits) {
    const auto ctx = contextWithErrorLimit(limit);
    const Walk walked = walk(*ctx, text);
    EXPECT_EQ(walked.parse, STATUS_PARSE_FAILED);
    EXPECT_TRUE(walked.log.ends_with("<x:f> 4>3>2>any s2\n"
                                     "<x:g> 5>4>3>any s2\n"
                                     "'te' 5>4>3>any s2\n"))
        << walked.log;
    EXPECT_EQ(walked.record, whatOf("include[i] any[-]")) << "the entry is there, its text is not";
    EXPECT_EQ(rtXmlNSGetIndex(*ctx, "x"), RTXML_NS_NONE) << "no binding is left";
    EXPECT_EQ(rtXmlNSGetIndex(*ctx, nullptr), RTXML_NS_NONE);
    rtxErrClear(*ctx);
    EXPECT_EQ(decode(*ctx, document("<filter id='g'/>")).record, "{filter(id=g)}");
  }
}

// ---- A refused child anywhere --------------------------------------------------------------------------------------

// A document of all that the grammar has. Wherever a child may begin stands a mark: "|" where the tables or the type
// refuse an unknown one as unexpected, "!" where it has the wrong name.
constexpr std::string_view marked =
    "|<ns-bindings>!<ns-binding prefix='p' urn='u'>|</ns-binding>!<ns-binding prefix='q' urn='v'>|</ns-binding>!"
    "</ns-bindings>|<filter id='a' k='v'>|<what>|<include type='namespace'>|x|</include>|<include>|</include>|"
    "<exclude>|y|</exclude>|<x:f xmlns:x='u'><x:g/></x:f>|<x:f xmlns:x='u'/>|</what>|<trigger>|"
    "<changed by='2'>|z|</changed>|<added>s</added>|<added/>|<removed>t</removed>|<x:f xmlns:x='u'>u</x:f>|</trigger>|"
    "<trigger>|</trigger>|<x:f xmlns:x='u'/>|</filter>|<filter id='b'>|</filter>|";

std::string withBogusAt(size_t position) {
  std::string content;
  size_t mark = 0;
  for (char c : marked) {
    if (c != '|' && c != '!') {
      content += c;
    } else if (mark++ == position) {
      content += "<bogus k='v'>text<filter id='x'><what/></filter><include/></bogus>";
    }
  }
  return document(content);
}

TEST(Walk, RefusedChildChangesNothingElseWhereverItStands) {
  const std::string_view marks = "|!";
  std::vector<bool> byName; // for each mark
  for (char c : marked)
    if (marks.find(c) != std::string_view::npos) byName.push_back(c == '!');
  const std::string plain = withBogusAt(byName.size());
  for (uint32_t limit : errorLimits) {
    const Walk expected = walk(*contextWithErrorLimit(limit), plain);
    const Walk expectedCheck = walkValidator(*contextWithErrorLimit(limit), plain);
    ASSERT_EQ(expected.errors, "");
    ASSERT_EQ(expected.parse, 0);
    for (size_t position = 0; position < byName.size(); ++position) {
      const std::string text = withBogusAt(position);
      SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + text);
      // Where a text follows, the refused start tag is behind or before all of it: the state byte is the same again.
      const auto rest = [](const std::string &log) {
        return changedLines(log,
                            [](const std::string &line) { return line.starts_with("<bogus> ") ? "" : line + "\n"; });
      };
      const std::string result = limit == 0 ? "\n" : byName[position] ? " -> -3\n" : " -> -41\n";
      const auto refusal = [](const std::string &log) {
        return changedLines(log,
                            [](const std::string &line) { return line.starts_with("<bogus> ") ? line + "\n" : ""s; });
      };
      const Walk walked = walk(*contextWithErrorLimit(limit), text);
      EXPECT_EQ(rest(walked.log), expected.log);
      EXPECT_TRUE(refusal(walked.log).ends_with(" s2" + result)) << refusal(walked.log);
      EXPECT_EQ(walked.record, expected.record);
      EXPECT_EQ(walked.errors.substr(0, walked.errors.find(')')), limit == 0         ? ""
                                                                  : byName[position] ? "-3(ns_binding,bogus"
                                                                                     : "-41(bogus");
      const Walk checked = walkValidator(*contextWithErrorLimit(limit), text);
      EXPECT_EQ(rest(checked.log), expectedCheck.log);
      EXPECT_TRUE(refusal(checked.log).ends_with(" s2" + result)) << refusal(checked.log);
      EXPECT_EQ(checked.errors, support::byValidator(walked.errors));
      if (testing::Test::HasFailure()) return;
    }
  }
}

// ---- Storage that gives out in a text ------------------------------------------------------------------------------

TEST(Walk, TextThatCannotBeCollected) {
  // The heap takes the beginning of the text at most.
  const std::string text =
      inTrigger("<added>" + std::string(400000, 'x') + "<b>inner</b>tail</added><removed>r</removed>");
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE(limit);
    Context ctx([limit](RuntimeOptions &options) {
      options.errorLimit = limit;
      options.heapLimit = 64 * 1024;
    });
    for (bool validator : {false, true}) {
      rtxErrClear(ctx);
      Walk walked = validator ? walkValidator(ctx, text) : walk(ctx, text);
      EXPECT_EQ(walked.parse, 0);
      const size_t from = walked.log.find("'x");
      const size_t to = walked.log.find('\n', from);
      ASSERT_NE(to, std::string::npos);
      EXPECT_TRUE(walked.log.substr(0, to).ends_with(" 4>3>2 s4 -> -10")) << walked.log.substr(to - 20, 20);
      walked.log.erase(from, to + 1 - from);
      EXPECT_EQ(walked.log, "<filter-set> 1 s2\n"
                            "<filter> 2>1 s2\n"
                            "<trigger> 3>2>1 s2\n"
                            "<added> 4>3>2 s2\n"
                            "</added> 3>2>1 s0\n"
                            "<removed> 4>3>2 s2\n"
                            "'r' 4>3>2 s4\n"
                            "</removed> 3>2>1 s4\n"
                            "</trigger> 2>1 s5\n"
                            "</filter> 1 s5\n"
                            "</filter-set> 0 s5\n");
      if (!validator) {
        EXPECT_EQ(walked.record, triggerOf("removed[r]"));
      }
      if (limit != 0) {
        EXPECT_EQ(walked.errors, validator ? "-10@Vldt" : "-10@SAX");
      }
    }
  }
}

} // namespace
