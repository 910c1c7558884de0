// Every place that an error record of this module can name, reached by making the one step fail that leads there.
#include "../pinnedLines.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "recordingRuntime.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>

using composing::pinnedLines;

namespace {

using recording::characters;
using recording::endTag;
using recording::startTag;
using Steps = std::function<int(RuntimeContext *ctx)>;

RtxXmlString foreignText = {false, "<x/>"};
RtxListNode foreignNode = {&foreignText, nullptr, nullptr};

tns__isComposing wholeRecord() {
  tns__isComposing record{};
  record.m = 7;
  record.tns_state.value = "active";
  record.tns_lastactive.value = "then";
  record.tns_contenttype.value = "text/plain";
  record.tns_refresh = 90;
  record.anyElems.items = {1, &foreignNode, &foreignNode};
  return record;
}

int encodeDocument(RuntimeContext *ctx) {
  const tns__isComposing record = wholeRecord();
  return QxXmlE_tns_isComposing(ctx, &record);
}

int encodeType(RuntimeContext *ctx) {
  const tns__isComposing record = wholeRecord();
  const RtxNamespace ns = {"p", "urn:p"};
  return QxXmlET_tns__isComposing(ctx, &record, "typing", &ns);
}

int encodeWithRefreshOfZero(RuntimeContext *ctx) {
  tns__isComposing record = wholeRecord();
  record.tns_refresh = 0;
  return QxXmlE_tns_isComposing(ctx, &record);
}

int decode(RuntimeContext *ctx) {
  tns__isComposing record{};
  const int status = QxXmlD_tns_isComposing(ctx, &record);
  QxMemFree_tns__isComposing(ctx, &record);
  return status;
}

std::vector<recording::Event> inRoot(std::vector<recording::Event> events, const char *root = "isComposing") {
  events.insert(events.begin(), startTag(root));
  events.push_back(endTag(root));
  return events;
}

const std::vector<recording::Event> wholeDocument =
    inRoot({startTag("state", {{"xmlns", "u"}}), characters("act"), characters("ive"), endTag("state"),
            startTag("lastactive"), characters("then"), endTag("lastactive"), startTag("contenttype"), characters("c"),
            endTag("contenttype"), startTag("refresh"), characters("90"), endTag("refresh"), startTag("x:f"),
            characters("t"), startTag("x:g"), endTag("x:g"), endTag("x:f")});
const std::vector<recording::Event> wrongRoot = inRoot({}, "composing");
const std::vector<recording::Event> unknownChild = inRoot({startTag("bogus"), endTag("bogus")});
const std::vector<recording::Event> attributeOnChild = inRoot({startTag("state", {{"k", "v"}}), endTag("state")});
const std::vector<recording::Event> refreshOfZero =
    inRoot({startTag("state"), endTag("state"), startTag("refresh"), characters("0"), endTag("refresh")});
const std::vector<recording::Event> refreshOfLetters =
    inRoot({startTag("state"), endTag("state"), startTag("refresh"), characters("abc"), endTag("refresh")});

struct Failing {
  const char *function = nullptr;
  unsigned call = 1;
  int status = 0;
};

// A step that fails and the calls that record it: "new" for a record, "set" for a place added to its trail.
struct Case {
  const char *what;
  Steps steps;
  std::vector<Failing> failing;
  std::vector<std::string> calls; // paths without the module's folder
  int status;                     // that the steps return
  std::vector<recording::Event> document = {};
};

constexpr int otherStatus = -777;

std::vector<Case> cases() {
  const auto init = [](RuntimeContext *ctx) {
    tns__isComposing record;
    return QxInit_tns__isComposing(ctx, &record);
  };
  // A step of the document that fails with a status of its own, wrapped on its way out.
  const auto wrapped = [](const char *what, const char *function, unsigned call, int inner, int outer) {
    return Case{what,
                encodeDocument,
                {{function, call, otherStatus}},
                {"set -777@Enc:" + std::to_string(inner), "set -777@Enc:" + std::to_string(outer)},
                otherStatus};
  };
  return {
      {"unusable context", init, {{"rtxCheckContext", 1, otherStatus}}, {"set -777@:34"}, otherStatus},

      {"type, start tag",
       encodeType,
       {{"rtXmlEncStartElement", 1, otherStatus}},
       {"set -777@Enc:62", "set -777@Enc:43"},
       otherStatus},
      {"type, room behind the start tag",
       encodeType,
       {{"rtxCheckBuffer", 1, otherStatus}},
       {"new -1@Enc:64", "set -1@Enc:43"},
       -1},
      {"type, contents",
       encodeType,
       {{"rtxValidateUTF8", 1, otherStatus}},
       {"set -777@Enc:83", "set -777@Enc:46"},
       otherStatus},
      {"type, room behind the contents",
       encodeType,
       {{"rtxCheckBuffer", 2, otherStatus}},
       {"new -1@Enc:128", "set -1@Enc:46"},
       -1},
      {"type, end tag",
       encodeType,
       {{"rtXmlEncEndElement", 1, otherStatus}},
       {"set -777@Enc:140", "set -777@Enc:49"},
       otherStatus},
      {"type, room behind the end tag",
       encodeType,
       {{"rtxCheckBuffer", 3, otherStatus}},
       {"new -1@Enc:142", "set -1@Enc:49"},
       -1},

      {"start of the document",
       encodeDocument,
       {{"rtXmlEncStartDocument", 1, otherStatus}},
       {"set -777@Enc:165"},
       otherStatus},
      wrapped("root, start tag", "rtXmlEncStartElement", 1, 196, 168),
      wrapped("root, declarations", "rtXmlEncNSAttrs", 1, 199, 168),
      {"root, closing the start tag",
       encodeDocument,
       {{"rtXmlEncTermStartElement", 1, otherStatus}},
       {"set -777@Enc:168"},
       otherStatus},
      {"root, room behind the start tag",
       encodeDocument,
       {{"rtxCheckBuffer", 1, otherStatus}},
       {"new -1@Enc:202", "set -1@Enc:168"},
       -1},
      {"root, closing the start tag and room behind it",
       encodeDocument,
       {{"rtXmlEncTermStartElement", 1, otherStatus}, {"rtxCheckBuffer", 1, otherStatus}},
       {"new -1@Enc:202", "set -1@Enc:168"},
       -1},
      wrapped("state, its text", "rtxValidateUTF8", 1, 83, 171),
      wrapped("state", "rtXmlEncString", 1, 86, 171),
      wrapped("lastactive, its text", "rtxValidateUTF8", 2, 91, 171),
      wrapped("lastactive", "rtXmlEncString", 2, 95, 171),
      wrapped("contenttype, its text", "rtxValidateUTF8", 3, 101, 171),
      wrapped("contenttype", "rtXmlEncString", 3, 105, 171),
      {"refresh of zero",
       encodeWithRefreshOfZero,
       {},
       {"new -16(tns__isComposing.tns_refresh,0u)@Enc:113", "set -16@Enc:171"},
       -16},
      wrapped("refresh", "rtXmlEncUInt", 1, 117, 171),
      wrapped("foreign element", "rtXmlEncAny", 1, 123, 171),
      {"room behind the contents",
       encodeDocument,
       {{"rtxCheckBuffer", 2, otherStatus}},
       {"new -1@Enc:128", "set -1@Enc:171"},
       -1},
      {"room behind the contents, second check",
       encodeDocument,
       {{"rtxCheckBuffer", 3, otherStatus}},
       {"new -1@Enc:218", "set -1@Enc:171"},
       -1},
      {"contents and room behind them",
       encodeDocument,
       {{"rtXmlEncUInt", 1, otherStatus}, {"rtxCheckBuffer", 2, otherStatus}},
       {"set -777@Enc:117", "new -1@Enc:218", "set -1@Enc:171"},
       -1},
      wrapped("root, end tag", "rtXmlEncEndElement", 1, 232, 174),
      {"root, room behind the end tag",
       encodeDocument,
       {{"rtxCheckBuffer", 4, otherStatus}},
       {"new -1@Enc:234", "set -1@Enc:174"},
       -1},
      {"end of the document", encodeDocument, {{"rtXmlEncEndDocument", 1, otherStatus}}, {}, otherStatus},

      {"decoder without a reader",
       decode,
       {{"rtSaxCCreateXmlReader", 1, otherStatus}},
       {"new -26@Dec:62"},
       -26,
       wholeDocument},
      {"decoder, root", decode, {}, {"new -3(isComposing,composing)@SAX:73"}, -3, wrongRoot},
      {"decoder, lookup", decode, {}, {"new -41(bogus)@runtime/reader:1", "set -41@SAX:110"}, -41, unknownChild},
      {"decoder, lookup, any status",
       decode,
       {{"rtSaxLookupElemID8", 1, otherStatus}},
       {"new -777(bogus)@runtime/reader:1", "set -777@SAX:110"},
       otherStatus,
       unknownChild},
      {"decoder, attributes",
       decode,
       {},
       {"new -33(state,k)@runtime/reader:2", "set -33@SAX:133"},
       -33,
       attributeOnChild},
      {"decoder, text",
       decode,
       {{"rtxMemBufAppend", 1, otherStatus}},
       {"set -777@SAX:169"},
       otherStatus,
       wholeDocument},
      {"decoder, facet", decode, {}, {"new -16(tns__isComposing.tns_refresh,0u)@SAX:236"}, -16, refreshOfZero},
      {"decoder, conversion", decode, {}, {"new -44(abc,tns__isComposing,refresh)@SAX:251"}, -44, refreshOfLetters},
      {"decoder, text that is not kept",
       decode,
       {{"rtXmlDecXmlStr", 3, otherStatus}},
       {"new -44(c,tns__isComposing,contenttype)@SAX:251"},
       -44,
       wholeDocument},

      {"validator without a reader",
       QxXmlV_tns_isComposing,
       {{"rtSaxCCreateXmlReader", 1, otherStatus}},
       {"new -26@Vldt:295"},
       -26,
       wholeDocument},
      {"validator, root", QxXmlV_tns_isComposing, {}, {"new -3(isComposing,composing)@Vldt:72"}, -3, wrongRoot},
      {"validator, lookup",
       QxXmlV_tns_isComposing,
       {},
       {"new -41(bogus)@runtime/reader:1", "set -41@Vldt:109"},
       -41,
       unknownChild},
      {"validator, attributes",
       QxXmlV_tns_isComposing,
       {},
       {"new -33(state,k)@runtime/reader:2", "set -33@Vldt:123"},
       -33,
       attributeOnChild},
      {"validator, text",
       QxXmlV_tns_isComposing,
       {{"rtxMemBufAppend", 1, otherStatus}},
       {"set -777@Vldt:159"},
       otherStatus,
       wholeDocument},
      {"validator, facet", QxXmlV_tns_isComposing, {}, {"new -16(refresh,0u)@Vldt:218"}, -16, refreshOfZero},
      {"validator, conversion",
       QxXmlV_tns_isComposing,
       {},
       {"new -44(abc,tns__isComposing,refresh)@Vldt:231"},
       -44,
       refreshOfLetters},
      {"validator, date",
       QxXmlV_tns_isComposing,
       {{"rtXmlDecDateTime", 1, otherStatus}},
       {"new -44(then,tns__isComposing,lastactive)@Vldt:231"},
       -44,
       wholeDocument},
  };
}

const std::string folder = "xmlAddOns/addons/IMS/IsComposing/QxXmlIsComposing";

std::string expanded(const std::string &call) {
  const size_t at = call.rfind('@') + 1;
  return call.compare(at, 8, "runtime/") == 0 ? call : call.substr(0, at) + folder + call.substr(at);
}

class Places : public testing::Test {
protected:
  void SetUp() override { recording::reset(); }
};

TEST_F(Places, EachStepThatFailsNamesItsOwn) {
  for (const Case &c : cases()) {
    SCOPED_TRACE(c.what);
    recording::reset();
    RuntimeContext *ctx = recording::newContext();
    if (!c.document.empty()) recording::setDocument(c.document);
    for (const Failing &failing : c.failing)
      recording::fail(failing.function, failing.call, failing.status);
    EXPECT_EQ(c.steps(ctx), c.status);
    std::vector<std::string> expected;
    for (const std::string &call : c.calls)
      expected.push_back(expanded(call));
    EXPECT_EQ(recording::errorCalls(), expected);
    EXPECT_EQ(recording::blocksAlive(), 0u);
    if (ctx->globalRelease != nullptr) ctx->globalRelease(ctx);
  }
}

TEST_F(Places, AllAreReached) {
  std::set<std::string> reached;
  for (const Case &c : cases())
    for (const std::string &call : c.calls)
      reached.insert(expanded(call.substr(call.rfind('@'))).substr(1));
  std::set<std::string> pinned;
  for (const composing::PinnedLine &line : pinnedLines)
    pinned.insert(line.text());
  reached.erase("runtime/reader:1");
  reached.erase("runtime/reader:2");
  EXPECT_EQ(reached, pinned);
  EXPECT_EQ(pinned.size(), 42u);
}

// Runs steps, then again for every call of every function that can fail, with that one failing.
void everyCallFails(const Steps &steps, const std::set<std::string> &notAFailure,
                    const std::function<void(int status, const std::string &failing)> &judge) {
  recording::reset();
  EXPECT_EQ(steps(recording::newContext()), 0);
  const std::map<std::string, unsigned> calls = recording::calls();
  EXPECT_GT(calls.size(), 5u);
  for (const auto &[function, count] : calls) {
    if (notAFailure.contains(function)) continue;
    for (unsigned call = 1; call <= count; ++call) {
      SCOPED_TRACE(function + ", call " + std::to_string(call));
      recording::reset();
      RuntimeContext *ctx = recording::newContext();
      recording::fail(function, call, STATUS_NO_MEMORY);
      judge(steps(ctx), function);
      EXPECT_EQ(recording::blocksAlive(), 0u);
      if (ctx->globalRelease != nullptr) ctx->globalRelease(ctx);
    }
  }
}

TEST_F(Places, NoStepOfEncodingFailsUnnoticed) {
  for (const Steps &steps : {Steps(encodeDocument), Steps(encodeType)}) {
    everyCallFails(
        [&](RuntimeContext *ctx) {
          const int status = steps(ctx);
          if (status == 0 && ctx->globalRelease != nullptr) ctx->globalRelease(ctx);
          return status;
        },
        {},
        [](int status, const std::string &failing) {
          EXPECT_LT(status, 0);
          if (failing == "rtXmlEncEndDocument") {
            EXPECT_TRUE(recording::errorCalls().empty()) << "returned as it is";
          } else {
            EXPECT_FALSE(recording::errorCalls().empty());
          }
        });
  }
}

TEST_F(Places, NoStepOfDecodingFailsUnnoticed) {
  std::string found;
  const Steps steps = [&](RuntimeContext *ctx) {
    recording::setDocument(wholeDocument);
    tns__isComposing record{};
    const int status = QxXmlD_tns_isComposing(ctx, &record);
    found.clear();
    const auto add = [&](const char *text) { found += text == nullptr ? "- " : text + std::string(" "); };
    add(record.tns_state.value);
    add((record.m & 1) != 0 ? record.tns_lastactive.value : nullptr);
    add((record.m & 2) != 0 ? record.tns_contenttype.value : nullptr);
    found += ((record.m & 4) != 0 ? std::to_string(record.tns_refresh) : "-") + " " +
             std::to_string(record.anyElems.items.count);
    QxMemFree_tns__isComposing(ctx, &record);
    return status;
  };
  // The counter refuses, which is no failure; on a context that cannot be used there is no reader.
  everyCallFails(steps, {"rtSaxIncErrors", "rtxCheckContext"}, [&](int status, const std::string &failing) {
    if (status == 0) {
      EXPECT_EQ(found, "active then c 90 1") << "succeeded with something missing: " << failing;
    } else {
      EXPECT_FALSE(recording::errorCalls().empty() && failing != "rtSaxCParse");
    }
  });
}

TEST_F(Places, NoStepOfValidatingFailsUnnoticed) {
  everyCallFails(
      [&](RuntimeContext *ctx) {
        recording::setDocument(wholeDocument);
        return QxXmlV_tns_isComposing(ctx);
      },
      {"rtSaxIncErrors"},
      [&](int status, const std::string &failing) {
        if (status != 0) {
          EXPECT_FALSE(recording::errorCalls().empty() && failing != "rtSaxCParse");
        }
      });
}

TEST_F(Places, StatusOfTheParseComesFirst) {
  RuntimeContext *ctx = recording::newContext();
  recording::setDocument(unknownChild);
  recording::fail("rtSaxCParse", 1, otherStatus);
  EXPECT_EQ(decode(ctx), otherStatus);
  recording::fail("rtSaxCParse", 1, otherStatus);
  EXPECT_EQ(QxXmlV_tns_isComposing(ctx), otherStatus);
}

TEST_F(Places, UnusableContextLeavesTheRecord) {
  recording::fail("rtxCheckContext", 1, otherStatus);
  tns__isComposing record = wholeRecord();
  EXPECT_EQ(QxInit_tns__isComposing(recording::newContext(), &record), otherStatus);
  EXPECT_EQ(record.m, 7u);
  EXPECT_STREQ(record.tns_state.value, "active");
  EXPECT_EQ(record.anyElems.items.count, 1u);
}

TEST_F(Places, PrintingReturnsTheResultOfItsLastLine) {
  recording::newContext();
  tns__isComposing record = wholeRecord();
  EXPECT_EQ(QxPrint_tns__isComposing("r", &record), 0);
  EXPECT_EQ(recording::printed(),
            std::vector<std::string>({"r.tns_state=active", "r.tns_lastactive=then", "r.tns_contenttype=text/plain",
                                      "r.tns_refresh=90", "r[0]=<x/>"}));
  recording::fail("rtxPrintCharStr", 1, -5);
  EXPECT_EQ(QxPrint_tns__isComposing("r", &record), 0) << "an earlier line does not matter";
  recording::fail("rtxPrintCharStr", 4, -5);
  EXPECT_EQ(QxPrint_tns__isComposing("r", &record), -5);
  record.anyElems = {};
  recording::fail("rtxPrintUnsigned", 1, -6);
  EXPECT_EQ(QxPrint_tns__isComposing("r", &record), -6);
}

TEST_F(Places, OrderOfWhatIsWritten) {
  RuntimeContext *ctx = recording::newContext();
  EXPECT_EQ(encodeDocument(ctx), 0);
  EXPECT_EQ(recording::output(), "<?xml?><tns:isComposing xmlns:tns=\"urn:ietf:params:xml:ns:im-iscomposing\">"
                                 "<tns:state>active</tns:state><tns:lastactive>then</tns:lastactive>"
                                 "<tns:contenttype>text/plain</tns:contenttype><tns:refresh>90</tns:refresh><x/>"
                                 "</tns:isComposing>");
  ctx->globalRelease(ctx);
}

} // namespace
