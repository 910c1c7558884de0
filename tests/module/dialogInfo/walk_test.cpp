// What each event of a document leaves behind in the chain of handlers: levels, the state byte, the result of the
// callback. Wherever an element is refused, every later event must find all handlers in step.
#include "reading.h"
#include "walk.h"

#include <memory>
#include <sstream>

using namespace reading;
using support::Context;
using support::contextWithErrorLimit;
using support::errorLimits;

namespace {

// ---- Walking ------------------------------------------------------------------------------------------------------

struct Walk {
  int parse;
  std::vector<std::string> log; // as HandlerProbe writes it
  std::string record;
  std::string errors;
};

template <class Handler> int readThrough(RuntimeContext *ctx, Handler &handler, const Root &root, Walk &walk) {
  const support::Walk through = support::walkThrough(ctx, handler, root.element);
  walk.parse = through.parse;
  walk.log = support::linesOf(through.log);
  walk.errors = recorded(ctx);
  return walk.parse;
}

void prepare(RuntimeContext *ctx, const std::string &text) {
  ASSERT_EQ(support::setInput(ctx, text), 0);
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
}

Walk walkDecoder(RuntimeContext *ctx, const Root &root, const std::string &text) {
  prepare(ctx, text);
  support::HeapBalance balance(ctx, "by " + text);
  Walk walk;
  Record record(ctx, *root.type);
  record.init();
  SaxTypeHandler handler;
  EXPECT_EQ(root.type->initFilling(ctx, &handler, record.data(), 0), 0);
  readThrough(ctx, handler, root, walk);
  walk.record = record.text();
  return walk;
}

Walk walkValidator(RuntimeContext *ctx, const Root &root, const std::string &text) {
  prepare(ctx, text);
  support::HeapBalance balance(ctx, "by " + text);
  Walk walk;
  VsaxTypeHandler handler;
  EXPECT_EQ(root.type->initChecking(ctx, &handler, 0), 0);
  readThrough(ctx, handler, root, walk);
  return walk;
}

// ---- Expectations -------------------------------------------------------------------------------------------------

using Log = std::vector<std::string>;

// As it is when no error may be recorded: a refusal shows in the levels only.
Log withoutResults(Log log) {
  for (std::string &line : log)
    line.erase(std::min(line.find(" -> "), line.size()));
  return log;
}

struct Expectation {
  Marked document;
  Log log; // with all errors recorded
  std::string record;
  std::string errors; // one
  bool validatorAccepts = false;
};

void expectWalk(const Expectation &expected) {
  const Root &root = *expected.document.root;
  const std::string &text = expected.document.text;
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + text);
    const Log log = limit == 0 ? withoutResults(expected.log) : expected.log;
    const std::string errors = limit == 0 ? "" : expected.errors;
    const Walk walked = walkDecoder(*contextWithErrorLimit(limit), root, text);
    EXPECT_EQ(walked.parse, 0);
    EXPECT_EQ(walked.log, log);
    EXPECT_EQ(walked.record, expected.record);
    EXPECT_EQ(walked.errors, errors);
    const Walk checked = walkValidator(*contextWithErrorLimit(limit), root, text);
    EXPECT_EQ(checked.parse, 0);
    EXPECT_EQ(checked.log, expected.validatorAccepts ? withoutResults(log) : log);
    EXPECT_EQ(checked.errors, expected.validatorAccepts ? "" : errors);

    // The same in one call.
    const auto ctx = contextWithErrorLimit(limit);
    const Reading reading = decode(*ctx, root, text);
    EXPECT_EQ(reading.record, expected.record);
    EXPECT_EQ(reading.errors, errors);
    EXPECT_EQ(reading.status, rtxErrGetFirstError(*ctx));
  }
}

// ---- Walks --------------------------------------------------------------------------------------------------------

// An element that a handler two delegates deep refuses sends no end tag to anyone: were it counted above, the next
// participant would be fed to the handler of this one.
TEST(Walk, UnknownChildTwoDelegatesDeep) {
  expectWalk(
      {in(info, "<dialog id='d'><state>s</state><local><bogus><identity>i</identity></bogus><cseq>5</cseq></local>"
                "<remote><cseq>6</cseq></remote></dialog>"),
       {"<dialog-info> 1 s2", "<dialog> 2>1 s2", "<state> 3>2>1 s2", "'s' 3>2>1 s4", "</state> 2>1 s5",
        "<local> 3>2>1 s2", "<bogus> 3>2>1 s2 -> -41", "<cseq> 4>3>2 s2", "'5' 4>3>2 s4", "</cseq> 3>2>1 s4",
        "</local> 2>1 s5", "<remote> 3>2>1 s2", "<cseq> 4>3>2 s2", "'6' 4>3>2 s4", "</cseq> 3>2>1 s4",
        "</remote> 2>1 s5", "</dialog> 1 s5", "</dialog-info> 0 s5"},
       "dialog[0].state='s' dialog[0].local.cseq=5 dialog[0].remote.cseq=6 dialog[0].id='d' "s + infoEnd,
       "-41(bogus)"});
}

// The same four delegates deep, in a type that takes no children, where with all errors refused the result of the
// callback is 0 and only the levels tell: the second parameter must not be fed to the handler of the first.
TEST(Walk, ChildOfAnEmptyTypeFourDelegatesDeep) {
  expectWalk({in(info, "<dialog id='d'><state/><local><target uri='u'><param pname='p' pval='v'><x><y/></x></param>"
                       "<param pname='q' pval='w'/></target><cseq>7</cseq></local></dialog>"),
              {"<dialog-info> 1 s2", "<dialog> 2>1 s2", "<state> 3>2>1 s2", "</state> 2>1 s5", "<local> 3>2>1 s2",
               "<target> 4>3>2>1 s2", "<param> 5>4>3>2>1 s2", "<x> 5>4>3>2>1 s2 -> -41", "</param> 4>3>2>1 s5",
               "<param> 5>4>3>2>1 s2", "</param> 4>3>2>1 s5", "</target> 3>2>1 s5", "<cseq> 4>3>2 s2", "'7' 4>3>2 s4",
               "</cseq> 3>2>1 s4", "</local> 2>1 s5", "</dialog> 1 s5", "</dialog-info> 0 s5"},
              "dialog[0].state='' dialog[0].local.target.param[0]=null dialog[0].local.target.param[0].pname='p' "
              "dialog[0].local.target.param[0].pval='v' dialog[0].local.target.param[1]=null "
              "dialog[0].local.target.param[1].pname='q' dialog[0].local.target.param[1].pval='w' "
              "dialog[0].local.target.uri='u' dialog[0].local.cseq=7 dialog[0].id='d' "s +
                  infoEnd,
              "-41(x)"});
}

// The text before a refused child stays collected, and the text behind it goes on.
TEST(Walk, TextAroundARefusedChild) {
  expectWalk({in(dialog, "<state>conf<b>zz</b>irmed</state><duration>5</duration>"),
              {"<dialog> 1 s2", "<state> 2>1 s2", "'conf' 2>1 s4", "<b> 2>1 s2 -> -41", "'irmed' 2>1 s4",
               "</state> 1 s5", "<duration> 2 s2", "'5' 2 s4", "</duration> 1 s4", "</dialog> 0 s5"},
              "state='confirmed' duration=5 id='d'",
              "-41(b)"});
  expectWalk({whole(state, "<state>conf<b>zz</b>irmed</state>"),
              {"<state> 1 s2", "'conf' 1 s4", "<b> 1 s2 -> -41", "'irmed' 1 s4", "</state> 0 s5"},
              "value='confirmed'",
              "-41(b)"});
}

// A delegate that fails at its own end tag is gone all the same: otherwise the next child would be its child.
TEST(Walk, DelegateThatFailsAtItsOwnEnd) {
  expectWalk({in(info, "<dialog id='d'><state/><route-set>t</route-set><local><cseq>1</cseq></local></dialog>"),
              {"<dialog-info> 1 s2", "<dialog> 2>1 s2", "<state> 3>2>1 s2", "</state> 2>1 s5", "<route-set> 3>2>1 s2",
               "'t' 3>2>1 s2", "</route-set> 2>1 s5 -> -16", "<local> 3>2>1 s2", "<cseq> 4>3>2 s2", "'1' 4>3>2 s4",
               "</cseq> 3>2>1 s4", "</local> 2>1 s5", "</dialog> 1 s5", "</dialog-info> 0 s5"},
              "dialog[0].state='' dialog[0].local.cseq=1 dialog[0].id='d' "s + infoEnd,
              "-16(tns__dialog_route_set.count,0)",
              true});
}

// The end of a simple child has nothing left to skip.
TEST(Walk, ConversionThatFails) {
  expectWalk(
      {in(dialog, "<state/><duration>abc</duration><local><cseq>1</cseq></local>"),
       {"<dialog> 1 s2", "<state> 2>1 s2", "</state> 1 s5", "<duration> 2 s2", "'abc' 2 s4", "</duration> 1 s4 -> -44",
        "<local> 2>1 s2", "<cseq> 3>2 s2", "'1' 3>2 s4", "</cseq> 2>1 s4", "</local> 1 s5", "</dialog> 0 s5"},
       "state='' local.cseq=1 id='d'",
       "-44(abc,tns__dialog,duration)"});
}

TEST(Walk, ChildOfARouteSetThatIsNoHop) {
  expectWalk({in(dialog, "<state/><route-set><hop>a</hop><jump><hop>b</hop></jump><hop>c</hop></route-set><remote/>"),
              {"<dialog> 1 s2", "<state> 2>1 s2", "</state> 1 s5", "<route-set> 2>1 s2", "<hop> 3>2 s2", "'a' 3>2 s4",
               "</hop> 2>1 s4", "<jump> 2>1 s2 -> -3", "<hop> 3>2 s2", "'c' 3>2 s4", "</hop> 2>1 s4",
               "</route-set> 1 s5", "<remote> 2>1 s2", "</remote> 1 s5", "</dialog> 0 s5"},
              "state='' route_set.hop[0]='a' route_set.hop[1]='c' id='d'",
              "-3(tns_hop,jump)"});
}

TEST(Walk, ErrorsBeyondTheLimitKeepHandlersInStep) {
  const std::string text =
      in(dialog, "<state>a<b/></state><route-set/><local><bogus/><target uri='u'><param pname='' pval=''><x/></param>"
                 "</target></local><duration>5</duration><remote><bogus/><cseq>x</cseq></remote>")
          .text;
  const Log log = {"<dialog> 1 s2",
                   "<state> 2>1 s2",
                   "'a' 2>1 s4",
                   "<b> 2>1 s2 -> -41",
                   "</state> 1 s5",
                   "<route-set> 2>1 s2",
                   "</route-set> 1 s5 -> -16",
                   "<local> 2>1 s2",
                   "<bogus> 2>1 s2 -> -41",
                   "<target> 3>2>1 s2",
                   "<param> 4>3>2>1 s2",
                   "<x> 4>3>2>1 s2 -> -41",
                   "</param> 3>2>1 s5",
                   "</target> 2>1 s5",
                   "</local> 1 s5",
                   "<duration> 1 s2 -> -41",
                   "<remote> 2>1 s2",
                   "<bogus> 2>1 s2 -> -41",
                   "<cseq> 3>2 s2",
                   "'x' 3>2 s4",
                   "</cseq> 2>1 s4 -> -44",
                   "</remote> 1 s5",
                   "</dialog> 0 s5"};
  for (uint32_t limit : errorLimits) {
    const Walk walked = walkDecoder(*contextWithErrorLimit(limit), dialog, text);
    EXPECT_EQ(limit == 100 ? walked.log : withoutResults(walked.log), limit == 100 ? log : withoutResults(log));
    EXPECT_EQ(walked.record, "state='a' local.target.param[0]=null local.target.param[0].pname='' "
                             "local.target.param[0].pval='' local.target.uri='u' id='d'");
    EXPECT_EQ(walked.errors.find(';') != walked.errors.npos, limit == 100);
    EXPECT_EQ(walked.errors.empty(), limit == 0);
  }
}

// Cut off with every handler of the chain open, that of the runtime included.
TEST(Walk, DocumentCutOffFiveDelegatesDeep) {
  struct Row {
    const char *cut;
    const char *lastEvent;
    const char *record;
  };
  const Row rows[] = {
      {"<local><x:f xmlns:x=\"u\"><x:g>te", "'te' 5>4>3>any s2", "dialog[0].state='' dialog[0].local[0]=null "},
      {"<local><target uri='u'><param pname='p' pval='v'>te", "'te' 5>4>3>2>1 s2",
       "dialog[0].state='' dialog[0].local.target.param[0]=null dialog[0].local.target.param[0].pname='p' "
       "dialog[0].local.target.param[0].pval='v' dialog[0].local.target.uri='u' "},
      {"<route-set><hop>a</hop><hop>te", "'te' 4>3>2 s4", "dialog[0].state='' dialog[0].route_set.hop[0]='a' "},
      {"<remote><identity>te", "'te' 4>3>2>1 s4", "dialog[0].state='' dialog[0].remote.identity=null "},
  };
  for (const Row &row : rows) {
    for (uint32_t limit : errorLimits) {
      SCOPED_TRACE(row.cut);
      const std::string around = in(info, "<dialog id='d'><state/>"s + row.cut + "|").text;
      const std::string text = around.substr(0, around.find('|'));
      const auto ctx = contextWithErrorLimit(limit);
      const Walk walked = walkDecoder(*ctx, info, text);
      EXPECT_EQ(walked.parse, STATUS_PARSE_FAILED);
      ASSERT_FALSE(walked.log.empty());
      EXPECT_EQ(walked.log.back(), row.lastEvent);
      EXPECT_EQ(walked.record, row.record + "dialog[0].id='d' "s + infoEnd);
      EXPECT_EQ(rtXmlNSGetIndex(*ctx, "x"), RTXML_NS_NONE) << "no binding is left";
      EXPECT_EQ(rtXmlNSGetIndex(*ctx, nullptr), RTXML_NS_NONE);
      EXPECT_EQ(walkValidator(*ctx, info, text).parse, STATUS_PARSE_FAILED);

      rtxErrClear(*ctx);
      EXPECT_EQ(decode(*ctx, info, text).record, walked.record);
      rtxErrClear(*ctx);
      EXPECT_EQ(decode(*ctx, dialog, "<dialog id='e'><state>b</state><local/></dialog>").record, "state='b' id='e'");
    }
  }
}

// ---- Every position -----------------------------------------------------------------------------------------------

// The levels of a chain, outermost first; a handler of the runtime has none.
std::vector<int> levelsOf(const std::string &line) {
  std::istringstream words(line);
  std::string event, chain, level;
  words >> event >> chain;
  std::vector<int> levels;
  for (std::istringstream parts(chain); std::getline(parts, level, '>');)
    if (level != "any") levels.push_back(std::stoi(level));
  return levels;
}

// Each handler counts the elements open from its own on, so that one delegate is one level below the other; refused
// start tags are not counted. Returns how many were refused.
int expectInStep(const Log &log) {
  int open = 0;
  int refused = 0;
  for (const std::string &line : log) {
    const std::vector<int> levels = levelsOf(line);
    const bool isStart = line[0] == '<' && line[1] != '/';
    const bool isEnd = line[0] == '<' && line[1] == '/';
    const bool counted = levels[0] == open + 1;
    if (isStart && !counted) ++refused;
    EXPECT_EQ(levels[0], isEnd ? open - 1 : isStart && counted ? open + 1 : open) << line;
    for (size_t i = 1; i < levels.size(); ++i)
      EXPECT_EQ(levels[i], levels[i - 1] - 1) << line;
    EXPECT_TRUE(levels.size() == 1 || levels.back() > 0) << "a handler that has ended is still there: " << line;
    open = levels[0];
  }
  EXPECT_EQ(open, 0);
  return refused;
}

// Documents with a "|" wherever a child has no place, save in simple children, where none is looked at, and in foreign
// ones.
constexpr const char *participantParts[] = {
    "<identity display-name='n'>|i|j|</identity>|", "<target uri='u'>|<param pname='p' pval='v'>|</param>|</target>|",
    "<session-description type='t'>|v|</session-description>|", "<cseq>7</cseq>|", "<x:f xmlns:x='u'>t<y/></x:f>|"};

std::string participant(const std::string &name, uint32_t parts) {
  std::string text = "<" + name + ">|";
  for (uint32_t i = 0; i < std::size(participantParts); ++i)
    if ((parts >> i & 1) != 0) text += participantParts[i];
  return text + "</" + name + ">|";
}

std::string dialogOf(uint32_t parts, uint32_t localParts, uint32_t remoteParts) {
  const std::string children[] = {"<duration>5</duration>|",
                                  "<replaces call-id='c' local-tag='l' remote-tag='r'>|</replaces>|",
                                  "<referred-by>|b|</referred-by>|",
                                  "<route-set>|<hop>h</hop>|<hop>i</hop>|</route-set>|",
                                  participant("local", localParts),
                                  participant("remote", remoteParts),
                                  "<x:f xmlns:x='u'>t<y/></x:f>|<x:g xmlns:x='u'/>|"};
  std::string text = "<dialog id='d' call-id='c'>|<state code='200'>|s|t|</state>|";
  for (uint32_t i = 0; i < std::size(children); ++i)
    if ((parts >> i & 1) != 0) text += children[i];
  return text + "</dialog>|";
}

std::vector<std::string> allDocuments() {
  std::vector<std::string> all = {"|", "|<x:f xmlns:x='u'/>|", "|" + dialogOf(0, 0, 0) + dialogOf(127, 31, 31),
                                  "|" + dialogOf(16, 2, 0) + dialogOf(8, 0, 0) + "<x:f xmlns:x='u'/>|"};
  for (uint32_t parts = 0; parts < 128; ++parts)
    all.push_back("|" + dialogOf(parts, 8, 2));
  for (uint32_t parts = 0; parts < 32; ++parts)
    all.push_back("|" + dialogOf(32, 0, parts));
  return all;
}

std::string without(std::string text, char mark) {
  std::erase(text, mark);
  return text;
}

TEST(WalkEverywhere, ARefusedChildIsAsIfItWereNotThere) {
  const std::string child = "<bogus k='1'>z<state>q</state><cseq>x</cseq><hop/><dialog/>w</bogus>";
  size_t positions = 0;
  for (const std::string &marked : allDocuments()) {
    const std::string plain = in(info, without(marked, '|')).text;
    const Walk expected = walkDecoder(*contextWithErrorLimit(100), info, plain);
    ASSERT_EQ(expected.errors, "") << plain;
    EXPECT_EQ(expectInStep(expected.log), 0);
    for (size_t at = marked.find('|'); at != marked.npos; at = marked.find('|', at + 1)) {
      const std::string before = marked.substr(0, at);
      const std::string text = in(info, without(before, '|') + child + without(marked.substr(at), '|')).text;
      const auto count = [&before](const char *tag) {
        size_t found = 0;
        for (size_t i = 0; (i = before.find(tag, i)) != before.npos; ++i)
          ++found;
        return found;
      };
      const bool amongHops = count("<route-set>") > count("</route-set>");
      const char *const error = amongHops ? "-3(tns_hop,bogus)" : "-41(bogus)";
      for (uint32_t limit : errorLimits) {
        SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + text);
        const Walk walked = walkDecoder(*contextWithErrorLimit(limit), info, text);
        EXPECT_EQ(walked.parse, 0);
        EXPECT_EQ(walked.record, expected.record);
        EXPECT_EQ(walked.errors, limit == 0 ? "" : error);
        EXPECT_EQ(expectInStep(walked.log), 1);
        const Walk checked = walkValidator(*contextWithErrorLimit(limit), info, text);
        EXPECT_EQ(checked.parse, 0);
        EXPECT_EQ(checked.errors, limit == 0 ? "" : error);
        EXPECT_EQ(expectInStep(checked.log), 1);
        if (testing::Test::HasFailure()) return;
      }
      ++positions;
    }
  }
  EXPECT_GT(positions, 2000u);
}

// Storage gives out while an identity's text is collected, or when it is to be kept. What comes behind it is read,
// above all the number that follows at once, whose text must not go to the handler of the identity.
TEST(WalkEverywhere, TextThatCannotBeKept) {
  int whileCollected = 0;
  int whenKept = 0;
  for (const char *tail : {"", "<b/>j"}) {
    // The state leaves room in the collection buffer for the identity's text, and none for its copy.
    const std::string text = in(info, "<dialog id='d'><state>" + std::string(60000, 's') + "</state><local><identity>" +
                                          std::string(50000, 'i') + tail +
                                          "</identity><cseq>5</cseq></local><remote><cseq>6</cseq></remote></dialog>")
                                 .text;
    for (size_t heapLimit = 40 * 1024; heapLimit <= 160 * 1024; heapLimit += 4 * 1024) {
      for (uint32_t limit : errorLimits) {
        SCOPED_TRACE("heap of " + std::to_string(heapLimit) + ", error limit " + std::to_string(limit));
        Context ctx([=](RuntimeOptions &options) {
          options.errorLimit = limit;
          options.heapLimit = heapLimit;
        });
        const Walk walked = walkDecoder(ctx, info, text);
        EXPECT_EQ(walked.parse, 0);
        expectInStep(walked.log);
        for (const std::string &line : walked.log) {
          if (!line.ends_with(" -> -10")) continue;
          whileCollected += line[0] == '\'';
          whenKept += line.starts_with("</identity>");
        }
        if (walked.record.find("identity='iii") == walked.record.npos) {
          EXPECT_TRUE(walked.record.ends_with(" dialog[0].local.identity=null dialog[0].local.cseq=5 "
                                              "dialog[0].remote.cseq=6 dialog[0].id='d' "s +
                                              infoEnd))
              << walked.record;
          EXPECT_EQ(walked.errors.empty(), limit == 0);
          EXPECT_TRUE(limit != 100 || walked.errors.find("-10") != walked.errors.npos) << walked.errors;
        }
        if (testing::Test::HasFailure()) return;
      }
    }
  }
  EXPECT_GT(whileCollected, 0);
  EXPECT_GT(whenKept, 0);
}

} // namespace
