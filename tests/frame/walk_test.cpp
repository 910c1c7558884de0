// The levels of every handler of a chain after every event.
#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "conditions.h"
#include "context.h"
#include "handlerProbe.h"
#include "input.h"
#include "records.h"
#include "rtx.h"

#include <gtest/gtest.h>

using namespace ims;
using frame::Record;
using support::Context;

namespace {

// A handler under a probe, set up and taken down as a document decoder does it.
template <class Handler> class Walk {
public:
  Walk(RuntimeContext *context, const DocumentSchema &document, void *record) : ctx(context), probe(context, handler) {
    if constexpr (std::is_same_v<Handler, SaxTypeHandler>) {
      initHandler(ctx, *document.type, &handler, record, 0);
    } else {
      initHandler(ctx, *document.type, &handler, 0);
    }
    handler.rootName = document.root;
    const NamespaceFamily *namespaces = document.module->namespaces;
    rtXmlNSSetURITable(ctx, namespaces ? namespaces->uris : nullptr, namespaces ? namespaces->count : 0);
  }
  ~Walk() {
    releaseDelegates(&handler);
    rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  }
  Walk(const Walk &) = delete;
  Walk &operator=(const Walk &) = delete;

  std::string read(const std::string &text) {
    support::setInput(ctx, text);
    status = probe.read();
    return probe.text();
  }

  int status = 0;

private:
  RuntimeContext *ctx;

public:
  Handler handler;

private:
  support::HandlerProbe<Handler> probe;
};

// The same walk without what the callbacks returned.
std::string withoutResults(std::string log) {
  for (size_t at = log.find(" -> "); at != std::string::npos; at = log.find(" -> ", at))
    log.erase(at, log.find('\n', at) - at);
  return log;
}

struct Case {
  const char *name;
  const DocumentSchema &document;
  std::string text;
  std::string log;    // with errors recorded
  std::string errors; // those recorded
  std::string record; // as printed
};

std::string root(const DocumentSchema &document, const std::string &attributes, const std::string &content) {
  std::string ns = *document.module->uri ? " xmlns=\"" + std::string(document.module->uri) + "\"" : std::string();
  return "<" + std::string(document.root) + ns + attributes + ">" + content + "</" + document.root + ">";
}

std::string dialog(const std::string &content) {
  return root(tns_dialogDocument, " id=\"d\"", "<state>s</state>" + content);
}

std::string ruleset(const std::string &content) { return root(cp_rulesetDocument, "", content); }

const Case cases[] = {
    {"RefusedInsideADelegate", tns_dialogDocument,
     dialog("<local><bogus><identity>i</identity></bogus><cseq>5</cseq></local><remote/>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<local> 2>1 s2\n"
     "<bogus> 2>1 s2 -> -41\n"
     "<cseq> 3>2 s2\n"
     "'5' 3>2 s4\n"
     "</cseq> 2>1 s4\n"
     "</local> 1 s5\n"
     "<remote> 2>1 s2\n"
     "</remote> 1 s5\n"
     "</dialog> 0 s5\n",
     "-41(bogus)",
     "r.tns_state = \"s\"\n"
     "r.tns_local.tns_cseq = 5\n"
     "r.tns_id = \"d\"\n"},
    {"RefusedFourHandlersDeep", tns_dialogDocument,
     dialog("<local><target uri=\"u\"><param pname=\"p\" pval=\"v\"><x><y/></x></param>"
            "<param pname=\"q\" pval=\"w\"/></target><cseq>7</cseq></local>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<local> 2>1 s2\n"
     "<target> 3>2>1 s2\n"
     "<param> 4>3>2>1 s2\n"
     "<x> 4>3>2>1 s2 -> -41\n"
     "</param> 3>2>1 s5\n"
     "<param> 4>3>2>1 s2\n"
     "</param> 3>2>1 s5\n"
     "</target> 2>1 s5\n"
     "<cseq> 3>2 s2\n"
     "'7' 3>2 s4\n"
     "</cseq> 2>1 s4\n"
     "</local> 1 s5\n"
     "</dialog> 0 s5\n",
     "-41(x)",
     "r.tns_state = \"s\"\n"
     "r.tns_local.tns_target.tns_param[0] = <null>\n"
     "r.tns_local.tns_target.tns_param[0].tns_pname = \"p\"\n"
     "r.tns_local.tns_target.tns_param[0].tns_pval = \"v\"\n"
     "r.tns_local.tns_target.tns_param[1] = <null>\n"
     "r.tns_local.tns_target.tns_param[1].tns_pname = \"q\"\n"
     "r.tns_local.tns_target.tns_param[1].tns_pval = \"w\"\n"
     "r.tns_local.tns_target.tns_uri = \"u\"\n"
     "r.tns_local.tns_cseq = 7\n"
     "r.tns_id = \"d\"\n"},
    {"ConversionFailsAtTheEndTag", tns_dialogDocument, dialog("<duration>abc</duration><local><cseq>1</cseq></local>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<duration> 2 s2\n"
     "'abc' 2 s4\n"
     "</duration> 1 s4 -> -44\n"
     "<local> 2>1 s2\n"
     "<cseq> 3>2 s2\n"
     "'1' 3>2 s4\n"
     "</cseq> 2>1 s4\n"
     "</local> 1 s5\n"
     "</dialog> 0 s5\n",
     "-44(abc|tns__dialog|duration)",
     "r.tns_state = \"s\"\n"
     "r.tns_local.tns_cseq = 1\n"
     "r.tns_id = \"d\"\n"},
    {"ForeignElementsInside", tns_dialogDocument,
     dialog("<local><x:foo xmlns:x=\"urn:x\" k=\"1\">t<x:bar><cseq>5</cseq></x:bar>u</x:foo><x:z "
            "xmlns:x=\"urn:x\"/></local>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<local> 2>1 s2\n"
     "<x:foo> 3>2>any s2\n"
     "'t' 3>2>any s2\n"
     "<x:bar> 4>3>any s2\n"
     "<cseq> 5>4>any s2\n"
     "'5' 5>4>any s2\n"
     "</cseq> 4>3>any s2\n"
     "</x:bar> 3>2>any s2\n"
     "'u' 3>2>any s2\n"
     "</x:foo> 2>1 s2\n"
     "<x:z> 3>2>any s2\n"
     "</x:z> 2>1 s2\n"
     "</local> 1 s5\n"
     "</dialog> 0 s5\n",
     "",
     "r.tns_state = \"s\"\n"
     "r.tns_local[0] = \"<x:foo xmlns=\\\"urn:ietf:params:xml:ns:dialog-info\\\" xmlns:x=\\\"urn:x\\\" "
     "k=\\\"1\\\">t<x:bar><cseq>5</cseq></x:bar>u</x:foo>\"\n"
     "r.tns_local[1] = \"<x:z xmlns:x=\\\"urn:x\\\"/>\"\n"
     "r.tns_id = \"d\"\n"},
    {"MisplacedChildWithKnownNamesInside", tns_dialogDocument,
     dialog("<local><cseq>1</cseq><identity>x<cseq>9</cseq></identity><cseq>2</cseq></local>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<local> 2>1 s2\n"
     "<cseq> 3>2 s2\n"
     "'1' 3>2 s4\n"
     "</cseq> 2>1 s4\n"
     "<identity> 2>1 s2 -> -41\n"
     "<cseq> 2>1 s2 -> -41\n"
     "</local> 1 s5\n"
     "</dialog> 0 s5\n",
     "-41(identity) -41(cseq)",
     "r.tns_state = \"s\"\n"
     "r.tns_local.tns_cseq = 1\n"
     "r.tns_id = \"d\"\n"},
    {"TextAroundARefusedChildIsJoined", tns_dialogDocument,
     root(tns_dialogDocument, " id=\"d\"", "<state>conf<b>zz</b>irmed</state>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'conf' 2>1 s4\n"
     "<b> 2>1 s2 -> -41\n"
     "'irmed' 2>1 s4\n"
     "</state> 1 s5\n"
     "</dialog> 0 s5\n",
     "-41(b)",
     "r.tns_state = \"confirmed\"\n"
     "r.tns_id = \"d\"\n"},
    {"ElementInsideASimpleChild", tns_dialogDocument, dialog("<duration>1<b>2</b>3</duration>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<duration> 2 s2\n"
     "'1' 2 s4\n"
     "<b> 3 s4\n"
     "'2' 3 s4\n"
     "</b> 2 s4\n"
     "'3' 2 s4\n"
     "</duration> 1 s4\n"
     "</dialog> 0 s5\n",
     "",
     "r.tns_state = \"s\"\n"
     "r.tns_duration = 123\n"
     "r.tns_id = \"d\"\n"},
    {"EmptyRouteSet", tns_dialogDocument, dialog("<route-set/><local/>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<route-set> 2>1 s2\n"
     "</route-set> 1 s5 -> -16\n"
     "<local> 2>1 s2\n"
     "</local> 1 s5\n"
     "</dialog> 0 s5\n",
     "-16(tns__dialog_route_set.count|int 0)",
     "r.tns_state = \"s\"\n"
     "r.tns_id = \"d\"\n"},
    {"RouteSetWithAnotherName", tns_dialogDocument,
     dialog("<route-set><hop>a</hop><leap>b<hop>c</hop></leap><hop>d</hop></route-set>"),
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<route-set> 2>1 s2\n"
     "<hop> 3>2 s2\n"
     "'a' 3>2 s4\n"
     "</hop> 2>1 s4\n"
     "<leap> 2>1 s2 -> -3\n"
     "<hop> 3>2 s2\n"
     "'d' 3>2 s4\n"
     "</hop> 2>1 s4\n"
     "</route-set> 1 s5\n"
     "</dialog> 0 s5\n",
     "-3(tns_hop|leap)",
     "r.tns_state = \"s\"\n"
     "r.tns_route_set.tns_hop[0] = \"a\"\n"
     "r.tns_route_set.tns_hop[1] = \"d\"\n"
     "r.tns_id = \"d\"\n"},
    {"RulesWithEverything", cp_rulesetDocument,
     ruleset(
         "<rule id=\"1\"><conditions><identity><one id=\"o\"/></identity><f:a xmlns:f=\"urn:f\"/><f:b "
         "xmlns:f=\"urn:f\"/>"
         "<sphere value=\"v\"/><f:c xmlns:f=\"urn:f\"/><bogus><x/></bogus></conditions></rule><rulex><rule/></rulex>"
         "<rule id=\"2\"/>"),
     "<ruleset> 1 s2\n"
     "<rule> 2>1 s2\n"
     "<conditions> 3>2>1 s2\n"
     "<identity> 4>3>2>1 s2\n"
     "<one> 5>4>3>2>1 s2\n"
     "</one> 4>3>2>1 s5\n"
     "</identity> 3>2>1 s5\n"
     "<f:a> 4>3>2>any s2\n"
     "</f:a> 3>2>1 s2\n"
     "<f:b> 4>3>2>any s2\n"
     "</f:b> 3>2>1 s2\n"
     "<sphere> 4>3>2>1 s2\n"
     "</sphere> 3>2>1 s5\n"
     "<f:c> 4>3>2>any s2\n"
     "</f:c> 3>2>1 s2\n"
     "<bogus> 3>2>1 s2 -> -41\n"
     "</conditions> 2>1 s5\n"
     "</rule> 1 s5\n"
     "<rulex> 1 s2 -> -3\n"
     "<rule> 2>1 s2\n"
     "</rule> 1 s5\n"
     "</ruleset> 0 s5\n",
     "-41(bogus) -3(cp_rule|rulex)",
     "r.cp_rule[0].cp_conditions[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_one.cp_id = \"o\"\n"
     "r.cp_rule[0].cp_conditions[1].t = 4\n"
     "r.cp_rule[0].cp_conditions[1].u.cp__any[0] = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_conditions[1].u.cp__any[1] = \"<f:b xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_conditions[2].t = 2\n"
     "r.cp_rule[0].cp_conditions[2].u.cp_sphere = <null>\n"
     "r.cp_rule[0].cp_conditions[2].u.cp_sphere.cp_value = \"v\"\n"
     "r.cp_rule[0].cp_conditions[3].t = 4\n"
     "r.cp_rule[0].cp_conditions[3].u.cp__any[0] = \"<f:c xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_id = \"1\"\n"
     "r.cp_rule[1].cp_id = \"2\"\n"},
    {"EmptyIdentity", cp_rulesetDocument,
     ruleset(
         "<rule id=\"1\"><conditions><identity/></conditions><actions><f:a xmlns:f=\"urn:f\">t</f:a></actions></rule>"),
     "<ruleset> 1 s2\n"
     "<rule> 2>1 s2\n"
     "<conditions> 3>2>1 s2\n"
     "<identity> 4>3>2>1 s2\n"
     "</identity> 3>2>1 s5 -> -16\n"
     "</conditions> 2>1 s5\n"
     "<actions> 3>2>1 s2\n"
     "<f:a> 4>3>2>any s2\n"
     "'t' 4>3>2>any s2\n"
     "</f:a> 3>2>1 s2\n"
     "</actions> 2>1 s5\n"
     "</rule> 1 s5\n"
     "</ruleset> 0 s5\n",
     "-16(.count|int 0)",
     "r.cp_rule[0].cp_conditions[0].t = 1\n"
     "r.cp_rule[0].cp_actions[0] = \"<f:a xmlns:f=\\\"urn:f\\\">t</f:a>\"\n"
     "r.cp_rule[0].cp_id = \"1\"\n"},
    {"ClosedContent", cp_rulesetDocument, ruleset("<rule id=\"1\"><transformations/><actions><x/></actions></rule>"),
     "<ruleset> 1 s2\n"
     "<rule> 2>1 s2\n"
     "<transformations> 3>2>1 s2\n"
     "</transformations> 2>1 s5\n"
     "<actions> 2>1 s2 -> -41\n"
     "</rule> 1 s5\n"
     "</ruleset> 0 s5\n",
     "-41(actions)", "r.cp_rule[0].cp_id = \"1\"\n"},
    {"CutOffInsideAForeignElement", tns_dialogDocument,
     "<dialog xmlns=\"urn:ietf:params:xml:ns:dialog-info\" id=\"d\"><state>s</state><local><x:f xmlns:x=\"urn:x\">te",
     "<dialog> 1 s2\n"
     "<state> 2>1 s2\n"
     "'s' 2>1 s4\n"
     "</state> 1 s5\n"
     "<local> 2>1 s2\n"
     "<x:f> 3>2>any s2\n"
     "'te' 3>2>any s2\n",
     "-104",
     "r.tns_state = \"s\"\n"
     "r.tns_local[0] = <null>\n"
     "r.tns_id = \"d\"\n"},
};

class Walks : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Frame, Walks, testing::ValuesIn(cases),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST_P(Walks, LevelsAreThoseOfTheOpenElements) {
  const Case &expected = GetParam();
  Context ctx;
  Record record(ctx, *expected.document.type);
  Walk<SaxTypeHandler> walk(ctx, expected.document, record.data());
  EXPECT_EQ(walk.read(expected.text), expected.log);
  EXPECT_EQ(frame::briefErrors(ctx), expected.errors);
  EXPECT_EQ(frame::printed(*expected.document.type, record.data()), expected.record);
}

TEST_P(Walks, LevelsDoNotDependOnWhetherErrorsAreRecorded) {
  const Case &expected = GetParam();
  for (uint32_t limit : {1u, 0u}) {
    SCOPED_TRACE("at most " + std::to_string(limit) + " errors");
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    Record record(ctx, *expected.document.type);
    Walk<SaxTypeHandler> walk(ctx, expected.document, record.data());
    EXPECT_EQ(withoutResults(walk.read(expected.text)), withoutResults(expected.log));
    EXPECT_EQ(frame::printed(*expected.document.type, record.data()), expected.record);
  }
}

TEST_P(Walks, EndAtZeroWithoutDelegates) {
  const Case &expected = GetParam();
  Context ctx;
  Record record(ctx, *expected.document.type);
  {
    Walk<SaxTypeHandler> walk(ctx, expected.document, record.data());
    walk.read(expected.text);
    if (walk.status == 0) {
      EXPECT_EQ(walk.handler.level, 0);
      EXPECT_EQ(walk.handler.delegate, nullptr);
    }
    EXPECT_EQ(walk.handler.startLevel, 0);
  }
  Walk<VsaxTypeHandler> checking(ctx, expected.document, nullptr);
  checking.read(expected.text);
  if (checking.status == 0) {
    EXPECT_EQ(checking.handler.level, 0);
    EXPECT_EQ(checking.handler.delegate, nullptr);
  }
}

} // namespace
