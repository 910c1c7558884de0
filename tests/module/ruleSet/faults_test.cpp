// Storage that gives out, at every point of reading a rule set and of writing it back.
#include "bodyFaults.h"
#include "reading.h"

using namespace reading;
using support::everyHeapLimit;
using support::faults;
using support::Outcome;

namespace {

const std::string whole = support::spell(fullBody, namespaceUri, support::Spelling::mixedPrefixes).text;
const std::string wrong =
    document("<rulex/><rule k='1'><bogus/><conditions><bogus/><identity><bogus/></identity><identity>"
             "<many l='2' domain='d'><except domain='e' id='f'><f:a/></except></many><one/></identity>"
             "<sphere value='s'><f:b/></sphere><f:c/><validity><until/><from m='3'>x</from></validity></conditions>"
             "<transformations><f:d/></transformations><actions/></rule>");
// Ends deep inside: four handlers, a foreign element, and a rule that is in no list yet.
const std::string cutOff = "<ruleset xmlns='"s + namespaceUri +
                           "' xmlns:f='urn:f'><rule id='1'><conditions><sphere value='s'/><identity><many domain='d'>"
                           "<except domain='e' id='f'/><f:a>text<f:b>";

Outcome decodeBody(RuntimeContext *ctx, const std::string &text) { return support::decodeBody(ctx, text, decodeInput); }

Outcome validateBody(RuntimeContext *ctx, const std::string &text) {
  return support::validateBody(ctx, text, QxXmlV_cp_ruleset);
}

Outcome roundTripBody(RuntimeContext *ctx, const std::string &text) {
  const int set = support::setInput(ctx, text);
  if (set != 0) return {set, {}};
  auto record = Record::uninitialised(ctx);
  const int status = QxXmlD_cp_ruleset(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  if (status != 0) return {status, {}};
  return support::encodeBody(ctx, [&](RuntimeContext *c) { return QxXmlE_cp_ruleset(c, record); });
}

TEST(Faults, Decode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, whole); }).failed, 0u);
}

TEST(Faults, DecodeWithErrors) {
  for (const std::string &text : {wrong, cutOff})
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, text); }).runs, 0u);
}

// Each text too long for a page of the heap, so that each takes an allocation that can fail.
TEST(Faults, DecodeOfLongTexts) {
  const std::string t(40000, 't');
  const std::string text = document(
      "<rule id='1" + t + "'><conditions><identity><one id='2" + t + "'><f:a k='" + t + "'/></one><many domain='3" + t +
      "'><except domain='4" + t + "' id='5" + t + "'/><f:b>" + t + "</f:b></many><f:c>" + t +
      "</f:c></identity><sphere value='6" + t + "'/><validity><from>7" + t + "</from><until>8" + t +
      "</until></validity><f:d>" + t + "</f:d></conditions><actions><f:e>" + t + "</f:e></actions></rule>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, text); }).failed, 10u);
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, text); }).runs, 4u);
}

TEST(Faults, Validate) {
  for (const std::string &text : {whole, wrong, cutOff})
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, text); }).runs, 0u);
}

TEST(Faults, RoundTrip) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return roundTripBody(ctx, whole); }).failed, 0u);
}

TEST(HeapLimit, Decode) {
  EXPECT_GT(everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, whole); }).failed, 50u);
}

TEST(HeapLimit, DecodeWithErrors) {
  for (const std::string &text : {wrong, cutOff})
    EXPECT_GT(everyHeapLimit([&](RuntimeContext *ctx) { return decodeBody(ctx, text); }).runs, 0u);
}

TEST(HeapLimit, Validate) {
  for (const std::string &text : {whole, wrong, cutOff})
    EXPECT_GT(everyHeapLimit([&](RuntimeContext *ctx) { return validateBody(ctx, text); }).runs, 0u);
}

TEST(HeapLimit, RoundTrip) {
  EXPECT_GT(everyHeapLimit([](RuntimeContext *ctx) { return roundTripBody(ctx, whole); }).failed, 50u);
}

// A record that lacks what there was no room for has no bit over a text that was never written.
TEST(HeapLimit, TextsThatDoNotFitAreAbsent) {
  const std::string t(3000, 't');
  const std::string text = document(
      identity("<many domain='" + t + "'><except domain='" + t + "' id='" + t + "'/></many><one id='" + t + "'/>"));
  size_t incomplete = 0;
  for (size_t limit = 1000; limit < 60000; limit += 500) {
    SCOPED_TRACE(limit);
    support::Context ctx([limit](RuntimeOptions &options) { options.heapLimit = limit; });
    if (ctx == nullptr || support::setInput(ctx, text) != 0) continue;
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.record.find("domain=-"), std::string::npos) << reading.record;
    EXPECT_EQ(reading.record.find("id=-"), std::string::npos) << reading.record;
    if (reading.status == 0 || reading.record.empty()) continue;
    ++incomplete;
    EXPECT_EQ(reading.status, STATUS_NO_MEMORY) << reading.errors;
  }
  EXPECT_GT(incomplete, 2u);
}

} // namespace
