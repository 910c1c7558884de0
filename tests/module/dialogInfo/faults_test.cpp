// Storage that gives out, and documents that end, at every point.
#include "bodyFaults.h"
#include "reading.h"

using namespace reading;
using support::everyHeapLimit;
using support::everyPrefix;
using support::faults;
using support::Outcome;

namespace {

std::string fullDocument(support::Spelling spelling = support::Spelling::ownDeclarations) {
  return support::spell(fullBody, namespaceUri, spelling).text;
}

// Every kind of error, and the reading that goes on behind each.
const std::string badDocument =
    "<dialoginfo version='x' state='all' k='1' xmlns='"s + namespaceUri +
    "'><dialog id='d' direction='x' xmlns:p='u'><state event='bye' code='1000' xmlns:q='u'>a<b/>c</state>"
    "<duration k=''>x</duration><replaces local-tag='' k=''/><referred-by display-name='n' k=''>r<b/></referred-by>"
    "<route-set><hop/><jump><x/></jump></route-set><local><target Uri=''><param k='' pval=''><b/></param></target>"
    "<session-description/><cseq>-1</cseq><identity/><bogus><cseq>1</cseq></bogus><x:f xmlns:x='u' k=''/></local>"
    "<remote><x:f xmlns:x='u'/><target/></remote><duration>5</duration></dialog><bogus/>"
    "<dialog id='e'><state/><route-set/><local><cseq>2</cseq></local></dialog></dialoginfo>";

struct Body {
  const Root *root;
  std::string text;
};

std::vector<Body> allBodies() {
  const std::string full = fullDocument();
  const size_t from = full.find("<dialog ");
  return {
      {&info, full},
      {&info, badDocument},
      {&dialog, full.substr(from, full.find("</dialog>") + 9 - from)},
      {&state, "<p:state event='error' code='500' xmlns:p='"s + namespaceUri + "' xmlns:q='urn:q'>a&amp;b</p:state>"},
      {&state, "<status event='x' code='1' k=''>a<b>c</b>d</status>"}};
}

Outcome decodeBody(RuntimeContext *ctx, const Body &body) {
  return support::decodeBody(ctx, body.text, [&](RuntimeContext *c) { return decodeInput(c, *body.root); });
}

Outcome validateBody(RuntimeContext *ctx, const Body &body) {
  return support::validateBody(ctx, body.text, body.root->validate);
}

TEST(Faults, Decode) {
  for (const Body &body : allBodies()) {
    const auto report = faults([&](RuntimeContext *ctx) { return decodeBody(ctx, body); });
    EXPECT_GT(report.failed, 0u) << body.text;
  }
}

TEST(Faults, DecodeOfDocumentsCutOff) {
  for (const char *last : {"rr\"/>", "sip:p1", "<x:g/>", "v=0", "pval=\"\"/>"}) {
    const std::string full = fullDocument();
    const Body cut = {&info, full.substr(0, full.find(last) + std::string_view(last).size())};
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, cut); }).runs, 0u);
  }
}

// Long enough to make the heap and the collection buffer grow wherever a text can stand.
TEST(Faults, DecodeOfLongTexts) {
  const auto text = [](char c) { return std::string(40000, c); };
  const Body body = {&info, in(info, "<dialog id='" + text('i') + "' call-id='" + text('c') + "'><state xmlns:p='" +
                                         text('p') + "'>" + text('s') + "</state><route-set><hop>" + text('h') +
                                         "</hop></route-set><local>" + "<target uri='" + text('u') +
                                         "'><param pname='" + text('n') + "' pval=''/></target>" + "<x:f xmlns:x='u'>" +
                                         text('f') + "</x:f></local></dialog>")
                                .text};
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, body); }).failed, 8u);
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, body); }).failed, 0u);
}

TEST(Faults, Validate) {
  for (const Body &body : allBodies())
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, body); }).runs, 0u) << body.text;
}

TEST(HeapLimit, Decode) {
  for (const Body &body : allBodies()) {
    const auto report = everyHeapLimit([&](RuntimeContext *ctx) { return decodeBody(ctx, body); });
    EXPECT_GT(report.runs, 0u) << body.text;
    // What fails in any case fails with its own first error.
    if (decode(*body.root, body.text).status == 0) {
      EXPECT_GT(report.failed, report.runs - 10) << body.text;
    }
  }
}

TEST(HeapLimit, Validate) {
  for (const Body &body : allBodies())
    EXPECT_GT(everyHeapLimit([&](RuntimeContext *ctx) { return validateBody(ctx, body); }).runs, 0u) << body.text;
}

TEST(Prefix, OfEverySpellingFailsAndReleasesAll) {
  for (support::Spelling spelling : support::allSpellings)
    everyPrefix(fullDocument(spelling), [](RuntimeContext *ctx) { return decodeStatus(ctx, info); });
}

TEST(Prefix, OfEveryBodyFailsAndReleasesAll) {
  for (const Body &body : allBodies()) {
    everyPrefix(body.text, [&](RuntimeContext *ctx) { return decodeStatus(ctx, *body.root); });
    everyPrefix(body.text, body.root->validate);
  }
}

} // namespace
