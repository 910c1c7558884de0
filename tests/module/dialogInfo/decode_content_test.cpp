// Reading children: the values of simple ones, and their order. Every case is validated as well, see expectCase.
#include "reading.h"

#include <cstring>
#include <optional>

using namespace reading;
using support::Context;

namespace {

// ---- Simple children ----------------------------------------------------------------------------------------------

TEST(DecodeContent, DurationAndCseqConvertOrNot) {
  const std::pair<const char *, const char *> good[] = {{"0", "0"},
                                                        {"145", "145"},
                                                        {" \n 5\t", "5"},
                                                        {"0007", "7"},
                                                        {"4294967295", "4294967295"},
                                                        {"<![CDATA[1]]>2<!-- c -->&#51;<?p?>", "123"},
                                                        {"1<b>2</b>3", "123"}};
  for (const auto &[text, value] : good)
    expectCases({
        {inDialog("<duration>"s + text + "</duration>"), dialogWith("duration="s + value), ""},
        {inLocal("<cseq>"s + text + "</cseq>"), dialogWith("local.cseq="s + value), ""},
    });
  for (const char *text : {"abc", "-1", "1.5", "4294967296", "5 5", "5s", " ", "PT5S"})
    expectCases({
        {inDialog("<duration>^"s + text + "</duration><local><cseq>1</cseq></local>"), dialogWith("local.cseq=1"),
         "-44("s + text + ",tns__dialog,duration)"},
        {inLocal("<cseq>^"s + text + "</cseq><x:f xmlns:x='u'/>"), dialogWith("local[0]='<x:f xmlns:x=\"u\"/>'"),
         "-44("s + text + ",tns_participant,cseq)"},
    });
  // An empty one is at fault where its start tag is.
  expectCases({
      {inDialog("^<duration/>"), dialogWith(""), "-44(,tns__dialog,duration)"},
      {inLocal("^<cseq></cseq>"), dialogWith(""), "-44(,tns_participant,cseq)"},
      {inDialog("<p:duration xmlns:p='"s + namespaceUri + "'>^x</p:duration>"), dialogWith(""),
       "-44(x,tns__dialog,p:duration)"},
  });
}

TEST(DecodeContent, NumberThatDoesNotConvertKeepsItsValue) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, inDialog("<duration>x</duration><local><cseq>y</cseq></local>").unmarked()), 0);
  Record record(ctx, types::dialog);
  record.as<tns__dialog>().tns_duration = 4711;
  EXPECT_EQ(record.decode(dialog), STATUS_INVALID_CONTENT);
  EXPECT_EQ(record.as<tns__dialog>().tns_duration, 4711u);
  EXPECT_EQ(record.as<tns__dialog>().m, 16u);
}

TEST(DecodeContent, RouteSetsHaveHopsAlone) {
  expectCases({
      {inDialog("<route-set><hop>sip:a</hop> <hop/><hop> b </hop></route-set>"),
       dialogWith("route_set.hop[0]='sip:a' route_set.hop[1]='' route_set.hop[2]=' b '"), ""},
      // Only the local name is compared.
      {inDialog("<route-set><x:hop xmlns:x='u'>h</x:hop><hop xmlns=''>i</hop></route-set>"),
       dialogWith("route_set.hop[0]='h' route_set.hop[1]='i'"), ""},
      // Another name is refused with all that it holds.
      {inDialog(
           "<route-set><hop>a</hop>^<Hop>b<hop>c</hop></Hop>^<hops/>^<ho/>^<x:f xmlns:x='u'/><hop>d</hop></route-set>"
           "<local/>"),
       dialogWith("route_set.hop[0]='a' route_set.hop[1]='d'"),
       "-3(tns_hop,Hop); -3(tns_hop,hops); -3(tns_hop,ho); -3(tns_hop,x:f)"},
      // What is inside a hop is part of its text.
      {inDialog("<route-set><hop>a<b>c<hop>d</hop></b>e</hop></route-set>"), dialogWith("route_set.hop[0]='acde'"), ""},
      {inDialog("<route-set>text<hop>a</hop>text</route-set>"), dialogWith("route_set.hop[0]='a'"), ""},
  });
}

TEST(DecodeContent, RouteSetWithoutAHopIsReportedAndKept) {
  expectCases({
      {inDialog("^<route-set/><local><cseq>1</cseq></local>"), dialogWith("local.cseq=1"),
       "-16(tns__dialog_route_set.count,0)"},
      {inDialog("\n  ^<route-set>\n text </route-set>"), dialogWith(""), "-16(tns__dialog_route_set.count,0)"},
      {inDialog("^<route-set>\n^<route>a</route></route-set>"), dialogWith(""),
       "-3(tns_hop,route); -16(tns__dialog_route_set.count,0)"},
  });
}

// Every element with text takes all of it, around a child that is refused with all that it holds.
TEST(DecodeContent, TextsAroundARefusedChildAreJoined) {
  struct Row {
    const char *content; // with marks
    const char *text;
    const char *errors;
  };
  constexpr Row rows[] = {
      {"", "", ""},
      {" a b ", " a b ", ""},
      {"&lt;a&#98;<![CDATA[<c>]]>&amp;<!-- d --><?e?>", "<ab<c>&", ""},
      {"conf^<b/>irmed", "confirmed", "-41(b)"},
      {"conf^<b>zz</b>irmed", "confirmed", "-41(b)"},
      {"^<b>zz</b>a", "a", "-41(b)"},
      {"a^<b>zz</b>", "a", "-41(b)"},
      {"^<b/>", "", "-41(b)"},
      {"a^<x:b xmlns:x='u'>z<c>y</c>w</x:b>b^<state>q</state>c", "abc", "-41(x:b); -41(state)"},
  };
  struct Place {
    const char *before, *behind;
    const char *type; // attributes
    const char *member, *rest;
  };
  constexpr Place places[] = {
      {"", "", "", "state", ""},
      {"<state>s</state><referred-by>", "</referred-by>", "", "state='s' referred_by", ""},
      {"<state>s</state><local><identity>", "</identity></local>", "", "state='s' local.identity", ""},
      {"<state>s</state><remote><session-description type='t'>", "</session-description></remote>", "",
       "state='s' remote.session_description", " remote.session_description.type='t'"},
  };
  for (const Row &row : rows) {
    expectCase({whole(state, "<state>"s + row.content + "</state>"), "value='"s + row.text + "'", row.errors});
    for (const Place &place : places) {
      const bool own = *place.before == '\0';
      const std::string content = own ? "<state>"s + row.content + "</state><duration>5</duration>"
                                      : place.before + std::string(row.content) + place.behind;
      expectCase({in(dialog, content),
                  place.member + "='"s + row.text + "'" + place.rest + (own ? " duration=5" : "") + " id='d'",
                  row.errors});
    }
  }
}

TEST(DecodeContent, LongTextsArriveWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "a=line " + std::to_string(i) + ";";
  expectCase({inLocal("<session-description type='t'>" + text + "</session-description><cseq>1</cseq>"),
              dialogWith("local.session_description='" + text + "' local.session_description.type='t' local.cseq=1"),
              ""});
}

TEST(DecodeContent, TextBetweenChildrenIsNoOnes) {
  expectCases({
      {in(info, "one<dialog id='d'>two<state>s</state>three &amp; <duration>5</duration><![CDATA[four]]><local>five"
                "<target uri='u'>six<param pname='n' pval='v'>seven</param>eight</target>nine<cseq>6</cseq>ten</local>"
                "eleven</dialog>twelve"),
       "dialog[0].state='s' dialog[0].duration=5 dialog[0].local.target.param[0]=null "
       "dialog[0].local.target.param[0].pname='n' dialog[0].local.target.param[0].pval='v' "
       "dialog[0].local.target.uri='u' dialog[0].local.cseq=6 dialog[0].id='d' "s +
           infoEnd,
       ""},
  });
}

// Types with neither children nor text.
TEST(DecodeContent, EmptyTypesTakeNoChildrenAndIgnoreText) {
  expectCases({
      {inDialog("<replaces call-id='c' local-tag='l' remote-tag='r'>text^<state>z</state>^<x:f xmlns:x='u'><g/></x:f>"
                "</replaces><local><cseq>5</cseq></local>"),
       dialogWith("replaces=null replaces.call_id='c' replaces.local_tag='l' replaces.remote_tag='r' local.cseq=5"),
       "-41(state); -41(x:f)"},
      {inTarget("<param pname='a' pval='b'>text^<x><y/></x></param><param pname='c' pval='d'/>"),
       dialogWith("local.target.param[0]=null local.target.param[0].pname='a' local.target.param[0].pval='b' "
                  "local.target.param[1]=null local.target.param[1].pname='c' local.target.param[1].pval='d' "
                  "local.target.uri='u'"),
       "-41(x)"},
  });
}

// ---- Order of children --------------------------------------------------------------------------------------------

struct Child {
  const char *name;
  const char *xml;
  const char *shown; // in the record, with "#" for its index
  bool repeats = false;
};

// What a type may hold, in its order.
struct Content {
  std::vector<Child> children;
  bool firstLeads; // nothing may come before the first child
  size_t longest;  // sequence to try
};

// All sequences of children, checked against the rule in words: none comes before one that the list has earlier, and
// only some come twice.
void expectEverySequence(const Content &content,
                         const std::function<Case(const std::string &children, const std::string &record,
                                                  const std::string &errors)> &around) {
  const size_t kinds = content.children.size();
  std::vector<size_t> sequence;
  size_t sequences = 0;
  while (sequence.size() <= content.longest && !testing::Test::HasFailure()) {
    std::string children, record, errors;
    std::vector<size_t> count(kinds);
    std::optional<size_t> last;
    for (size_t kind : sequence) {
      const Child &child = content.children[kind];
      const bool allowed = last ? kind > *last || (kind == *last && child.repeats) : !content.firstLeads || kind == 0;
      children += (allowed ? "" : "^") + std::string(child.xml);
      if (!allowed) {
        errors += (errors.empty() ? "-41(" : "; -41(") + std::string(child.name) + ")";
        continue;
      }
      std::string shown = child.shown;
      for (size_t at; (at = shown.find('#')) != shown.npos;)
        shown.replace(at, 1, std::to_string(count[kind]));
      record += (record.empty() ? "" : " ") + shown;
      ++count[kind];
      last = kind;
    }
    expectCase(around(children, record, errors));
    ++sequences;
    size_t place = 0;
    while (place < sequence.size() && ++sequence[place] == kinds)
      sequence[place++] = 0;
    if (place == sequence.size()) sequence.push_back(0);
  }
  size_t expected = 0;
  for (size_t length = 0, all = 1; length <= content.longest; ++length, all *= kinds)
    expected += all;
  EXPECT_EQ(sequences, expected);
}

TEST(DecodeOrder, OfDialogInfo) {
  const Content content = {
      {{"dialog", "<dialog id='d'><state>s</state></dialog>", "dialog[#].state='s' dialog[#].id='d'", true},
       {"x:f", "<x:f xmlns:x=\"u\"/>", "[#]='<x:f xmlns:x=\"u\"/>'", true}},
      false,
      6};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{in(info, children), record + (record.empty() ? "" : " ") + infoEnd, errors};
  });
}

TEST(DecodeOrder, OfADialog) {
  const Content content = {{{"state", "<state>s</state>", "state='s'"},
                            {"duration", "<duration>5</duration>", "duration=5"},
                            {"replaces", "<replaces call-id='c' local-tag='l' remote-tag='r'/>",
                             "replaces=null replaces.call_id='c' replaces.local_tag='l' replaces.remote_tag='r'"},
                            {"referred-by", "<referred-by>b</referred-by>", "referred_by='b'"},
                            {"route-set", "<route-set><hop>h</hop></route-set>", "route_set.hop[0]='h'"},
                            {"local", "<local><cseq>1</cseq></local>", "local.cseq=1"},
                            {"remote", "<remote><cseq>2</cseq></remote>", "remote.cseq=2"},
                            {"x:f", "<x:f xmlns:x=\"u\" xmlns=\"u\"><state>q</state></x:f>",
                             "[#]='<x:f xmlns:x=\"u\" xmlns=\"u\"><state>q</state></x:f>'", true}},
                           true,
                           4};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{in(dialog, children), (record.empty() ? "state=null" : record) + " id='d'", errors};
  });
}

TEST(DecodeOrder, OfAParticipant) {
  const Content content = {{{"identity", "<identity>i</identity>", "local.identity='i'"},
                            {"target", "<target uri='u'/>", "local.target.uri='u'"},
                            {"session-description", "<session-description type='t'>v</session-description>",
                             "local.session_description='v' local.session_description.type='t'"},
                            {"cseq", "<cseq>1</cseq>", "local.cseq=1"},
                            {"x:f", "<x:f xmlns:x=\"u\"/>", "local[#]='<x:f xmlns:x=\"u\"/>'", true}},
                           false,
                           4};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{inLocal(children), dialogWith(record), errors};
  });
}

TEST(DecodeOrder, OfATarget) {
  const Content content = {
      {{"param", "<param pname='n' pval='v'/>",
        "local.target.param[#]=null local.target.param[#].pname='n' local.target.param[#].pval='v'", true}},
      false,
      5};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{inTarget(children), dialogWith(record + (record.empty() ? "" : " ") + "local.target.uri='u'"), errors};
  });
  // Nothing else has a place there.
  expectCases({
      {inTarget("^<x:f xmlns:x='u'/>^<bogus/><param pname='n' pval='v'/>^<params/>"),
       dialogWith("local.target.param[0]=null local.target.param[0].pname='n' local.target.param[0].pval='v' "
                  "local.target.uri='u'"),
       "-41(x:f); -41(bogus); -41(params)"},
  });
}

TEST(DecodeOrder, MissingStateShowsAtTheNextChildOnly) {
  expectCases({
      {in(dialog, ""), "state=null id='d'", ""},
      {in(dialog, "  \n"), "state=null id='d'", ""},
      {in(info, "<dialog id='a'/>"), "dialog[0].state=null dialog[0].id='a' "s + infoEnd, ""},
      {in(dialog, "^<duration>5</duration><state>s</state>"), "state='s' id='d'", "-41(duration)"},
      {in(dialog, "^<x:f xmlns:x='u'/><state>s</state>"), "state='s' id='d'", "-41(x:f)"},
  });
}

TEST(DecodeOrder, ReadingGoesOnBehindWhatIsRefused) {
  expectCases({
      {in(info,
          "<dialog id='a'><state/></dialog><x:f xmlns:x='u'/>^<dialog id='b'><state/><local><cseq>x</cseq></local>"
          "</dialog><y:f xmlns:y='u'/>"),
       "dialog[0].state='' dialog[0].id='a' [0]='<x:f xmlns:x=\"u\"/>' [1]='<y:f xmlns:y=\"u\"/>' "s + infoEnd,
       "-41(dialog)"},
      {inLocal("<target uri='u'/>^<identity>i</identity><cseq>1</cseq>"),
       dialogWith("local.target.uri='u' local.cseq=1"), "-41(identity)"},
      {inLocal("<x:f xmlns:x='u'/><x:g xmlns:x='u'/>"),
       dialogWith("local[0]='<x:f xmlns:x=\"u\"/>' local[1]='<x:g xmlns:x=\"u\"/>'"), ""},
      {inDialog("^<bogus><local><cseq>1</cseq></local></bogus><local>^<bogus/></local>^<bogus/>"), dialogWith(""),
       "-41(bogus); -41(bogus); -41(bogus)"},
      {in(info, "^<bogus/>^<state>s</state><dialog id='a'/>"), "dialog[0].state=null dialog[0].id='a' "s + infoEnd,
       "-41(bogus); -41(state)"},
  });
}

} // namespace
