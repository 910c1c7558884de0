// Any record survives being written and read.
#include "body.h"
#include "randomText.h"
#include "xmlJudge.h"

using namespace body;
using support::Context;
using support::Random;

namespace {

void fillExtras(Random &random, RuntimeContext *ctx, RtxAnyList &elements, RtxAttrList &attributes) {
  for (uint32_t left = random.below(3); left != 0; --left)
    addForeign(ctx, elements, random.chance(30) ? "<action>a</action>" : support::randomForeignElement(random).c_str());
  uint32_t number = 0;
  for (uint32_t left = random.below(3); left != 0; --left)
    addAttribute(ctx, attributes, ("k" + std::to_string(number++)).c_str(), support::randomText(random, 8).c_str());
}

double randomVersion(Random &random) {
  double version = static_cast<double>(random.below(1000000));
  for (uint32_t left = random.below(8); left != 0; --left)
    version /= 10;
  return random.chance(20) ? -version : version;
}

void fill(Random &random, RuntimeContext *ctx, tIMS3GPP &record) {
  const auto text = [&] { return support::randomText(random, random.chance(5) ? 400 : 12); };
  if (random.chance(70)) {
    tAlternativeService &service = chooseAlternative(ctx, record._choice1, text().c_str(), text().c_str());
    service.type.cdata = random.chance(30);
    service.reason.cdata = random.chance(30);
    fillExtras(random, ctx, service.anyElems, service._anyAttr);
  } else {
    chooseInfo(ctx, record._choice1, text().c_str());
    record._choice1.u.service_info.cdata = random.chance(30);
  }
  record.version = randomVersion(random);
  fillExtras(random, ctx, record.anyElems, record._anyAttr);
}

TEST(Property, RecordsSurviveBeingWrittenAndRead) {
  Random random(20240815);
  Context ctx;
  for (int round = 0; round < 800; ++round) {
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    Record<tIMS3GPP> original(ctx);
    fill(random, ctx, *original);
    const std::string text = encodeRecord(ctx, original);
    SCOPED_TRACE("round " + std::to_string(round) + ": " + testing::PrintToString(text));

    const auto tree = support::parseNamespacedXml(text);
    ASSERT_TRUE(tree) << "not well-formed for a strict parser";
    EXPECT_EQ(tree->uri, "");
    EXPECT_EQ(tree->children.size(), 1 + original->anyElems.items.count);

    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto again = Record<tIMS3GPP>::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_ims_3gpp(ctx, again), 0) << support::errors(ctx);
    again.owned = true;
    EXPECT_EQ(support::printed("r", *again), support::printed("r", *original));
    EXPECT_EQ(again->version, original->version) << "to the last bit";
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Property, RandomBytesNeverGetThroughUnnoticed) {
  const std::string original =
      "<ims-3gpp version='1.5' k='1'><alternative-service k='2'><type>emergency</type><reason>call</reason>"
      "<action>a</action><x:f xmlns:x='u'>t<x:h>&lt;</x:h>u</x:f></alternative-service><y xmlns='v'/></ims-3gpp>";
  Random random(79);
  Context ctx;
  for (int round = 0; round < 4000; ++round) {
    const std::string text = support::randomlyDamaged(random, original);
    rtxErrClear(ctx);
    const Reading reading = decode(ctx, text);
    EXPECT_EQ(reading.status == 0, rtxErrCount(ctx) == 0) << testing::PrintToString(text) << " " << reading.errors;
    if (!support::parseXml(text)) {
      EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << testing::PrintToString(text);
    }
    rtxErrClear(ctx);
    const Reading checked = validate(ctx, text);
    EXPECT_EQ(checked.status == STATUS_PARSE_FAILED, reading.status == STATUS_PARSE_FAILED)
        << testing::PrintToString(text);
    rtxErrClear(ctx);
    const Reading asText = decodeText(ctx, textDocuments[0], text);
    EXPECT_EQ(asText.status == STATUS_PARSE_FAILED, reading.status == STATUS_PARSE_FAILED)
        << testing::PrintToString(text);
    if (testing::Test::HasFailure()) return;
  }
}

} // namespace
