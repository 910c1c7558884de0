// Any record survives being written and read.
#include "randomText.h"
#include "settings.h"
#include "xmlJudge.h"

using namespace settings;
using support::Context;
using support::Random;

namespace {

void fillExtras(Random &random, RuntimeContext *ctx, RtxAnyList &elements, RtxAttrList &attributes) {
  for (uint32_t left = random.below(3); left != 0; --left)
    addForeign(ctx, elements, support::randomForeignElement(random).c_str());
  uint32_t number = 0;
  for (uint32_t left = random.below(3); left != 0; --left)
    addAttribute(ctx, attributes, ("k" + std::to_string(number++)).c_str(), support::randomText(random, 8).c_str());
}

void fill(Random &random, RuntimeContext *ctx, poc_settingsType &record) {
  for (uint32_t left = random.below(4); left != 0; --left) {
    entityType &entity = *addEntity(ctx, record, support::randomText(random, random.chance(5) ? 400 : 12).c_str());
    entity.m = random.below(16);
    forEachSetting(entity, [&](auto &setting) { valueOf(setting) = random.chance(50); });
    if ((entity.m & 1) != 0) fillExtras(random, ctx, entity.isb_settings.anyElems, entity.isb_settings._anyAttr);
    if ((entity.m & 2) != 0) fillExtras(random, ctx, entity.am_settings.anyElems, entity.am_settings._anyAttr);
    if ((entity.m & 4) != 0) fillExtras(random, ctx, entity.ipab_settings.anyElems, entity.ipab_settings._anyAttr);
    if ((entity.m & 8) != 0) fillExtras(random, ctx, entity.sss_settings.anyElems, entity.sss_settings._anyAttr);
    fillExtras(random, ctx, entity.anyElems, entity._anyAttr);
  }
  fillExtras(random, ctx, record.anyElems, record._anyAttr);
}

TEST(Property, RecordsSurviveBeingWrittenAndRead) {
  Random random(20240607);
  Context ctx;
  for (int round = 0; round < 500; ++round) {
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    Record<poc_settingsType> original(ctx);
    fill(random, ctx, *original);
    const std::string text = encodeRecord(ctx, original);
    SCOPED_TRACE("round " + std::to_string(round) + ": " + testing::PrintToString(text));

    const auto tree = support::parseNamespacedXml(text);
    ASSERT_TRUE(tree) << "not well-formed for a strict parser";
    EXPECT_EQ(tree->uri, namespaceUri);
    EXPECT_EQ(tree->children.size(), original->entity.count + original->anyElems.items.count);

    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto again = Record<poc_settingsType>::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_poc_settings(ctx, again), 0) << support::errors(ctx);
    again.owned = true;
    EXPECT_EQ(support::printed("r", *again), support::printed("r", *original));
    EXPECT_EQ(encodeRecord(ctx, again), text);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Property, RandomBytesNeverGetThroughUnnoticed) {
  const std::string original = document(
      "<entity id='alice' k='1'><isb-settings><incoming-session-barring active='1'/><x:f xmlns:x='u'>t</x:f>"
      "</isb-settings><am-settings k='3'><answer-mode>manual</answer-mode></am-settings></entity><y xmlns='v'/>");
  Random random(78);
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
    if (testing::Test::HasFailure()) return;
  }
}

} // namespace
