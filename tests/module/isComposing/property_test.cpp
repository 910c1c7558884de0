// Any record survives being written and read.
#include "composing.h"
#include "randomText.h"
#include "xmlJudge.h"

using namespace composing;
using support::Context;
using support::Random;

namespace {

void fill(Random &random, RuntimeContext *ctx, Record &record) {
  const auto text = [&] { return support::randomText(random, random.chance(5) ? 400 : 12); };
  record->tns_state = xmlString(ctx, text().c_str(), random.chance(30));
  if (random.chance(50)) record.lastactive(text().c_str());
  if (random.chance(50)) record.contenttype(text().c_str());
  record->tns_lastactive.cdata = random.chance(30);
  record->tns_contenttype.cdata = random.chance(30);
  if (random.chance(50)) record.refresh(random.chance(20) ? UINT32_MAX : 1 + random.below(1000000));
  for (uint32_t left = random.below(4); left != 0; --left)
    record.foreign(support::randomForeignElement(random).c_str());
}

TEST(Property, RecordsSurviveBeingWrittenAndRead) {
  Random random(20240102);
  Context ctx;
  for (int round = 0; round < 3000; ++round) {
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    Record original(ctx, nullptr);
    fill(random, ctx, original);
    const std::string text = encodeRecord(ctx, original);
    SCOPED_TRACE("round " + std::to_string(round) + ": " + testing::PrintToString(text));

    const auto tree = support::parseNamespacedXml(text);
    ASSERT_TRUE(tree) << "not well-formed for a strict parser";
    EXPECT_EQ(tree->uri, namespaceUri);
    EXPECT_EQ(tree->name, "isComposing");
    ASSERT_FALSE(tree->children.empty());
    EXPECT_EQ(tree->children[0].text, original->tns_state.value);

    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto again = Record::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_tns_isComposing(ctx, again), 0) << support::errors(ctx);
    again.owned = true;
    EXPECT_EQ(again->m, original->m);
    EXPECT_EQ(dump(again.get()), dump(original.get()));

    // How a text was written is no part of what is read.
    again->tns_state.cdata = original->tns_state.cdata;
    again->tns_lastactive.cdata = original->tns_lastactive.cdata;
    again->tns_contenttype.cdata = original->tns_contenttype.cdata;
    EXPECT_EQ(encodeRecord(ctx, again), text);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Property, RandomBytesNeverGetThroughUnnoticed) {
  const std::string original =
      document("<state>active</state><lastactive>2024-01-02T03:04:05Z</lastactive><contenttype>text/plain</contenttype>"
               "<refresh>90</refresh><x:f xmlns:x=\"u\" k=\"1\">t<x:g/>u</x:f>");
  Random random(77);
  Context ctx;
  for (int round = 0; round < 5000; ++round) {
    const std::string text = support::randomlyDamaged(random, original);
    rtxErrClear(ctx);
    const Reading reading = decode(ctx, text);
    EXPECT_EQ(reading.status == 0, rtxErrCount(ctx) == 0) << testing::PrintToString(text) << " " << reading.errors;
    // Names that are none are refused beyond what the grammar of XML itself asks.
    if (!support::parseXml(text)) {
      EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << testing::PrintToString(text);
    }
    rtxErrClear(ctx);
    const Reading checked = validate(ctx, text);
    EXPECT_EQ(checked.status == STATUS_PARSE_FAILED, reading.status == STATUS_PARSE_FAILED)
        << testing::PrintToString(text);
    if (testing::Test::HasFailure()) return;
  }
}

} // namespace
