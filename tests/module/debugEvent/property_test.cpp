// Any record survives being written and read, and is what the vocabulary's schema allows.
#include "capture.h"
#include "debugInfo.h"
#include "randomText.h"
#include "schemaJudge.h"
#include "xmlJudge.h"

using namespace debugInfo;
using support::Context;
using support::Random;

namespace {

// What times and durations look like.
enum class Times {
  anyText, // with the white space at its ends that reading takes away left out
  valid    // as the schema wants them
};

// Fills values with what they may hold.
class Filler {
public:
  Filler(Random &source, RuntimeContext *context, Times kindOfTimes)
      : random(source), builder(context), times(kindOfTimes) {}

  RtxXmlString text() {
    return builder.text(support::randomText(random, random.chance(5) ? 400 : 12), random.chance(30));
  }
  RtxXmlString attribute() { return builder.text(support::randomText(random, 12)); }

  RtxHexBinary bytes() {
    std::string digits;
    for (uint32_t left = random.chance(20) ? 0 : random.below(random.chance(5) ? 2000 : 8); left != 0; --left) {
      digits += "0123456789ABCDEF"[random.below(16)];
      digits += "0123456789ABCDEF"[random.below(16)];
    }
    return builder.bytes(digits);
  }

  RtxXmlString time() {
    if (times == Times::anyText) return builder.text("t " + std::to_string(random.next()), random.chance(30));
    const auto two = [&](uint32_t first, uint32_t bound) {
      const uint32_t number = first + random.below(bound);
      return (number < 10 ? "0" : "") + std::to_string(number);
    };
    constexpr const char *zones[] = {"Z", "", "+05:30", "-11:00"};
    return builder.text(std::to_string(1990 + random.below(60)) + "-" + two(1, 12) + "-" + two(1, 28) + "T" +
                        two(0, 24) + ":" + two(0, 60) + ":" + two(0, 60) + (random.chance(30) ? ".125" : "") +
                        zones[random.below(4)]);
  }

  RtxXmlString period() {
    if (times == Times::anyText) return text();
    constexpr const char *periods[] = {"PT5M", "P1D", "-P1Y2M3DT4H5M6.5S", "PT0S", "P3W4"};
    return builder.text(periods[random.below(4)]);
  }

  void fill(tns__start_trigger &record) {
    record.m = random.below(128);
    if ((record.m & 1) != 0) record.tns_from = text();
    if ((record.m & 2) != 0) record.tns_to = text();
    if ((record.m & 4) != 0) record.tns_icsi = text();
    if ((record.m & 8) != 0) record.tns_iari = text();
    if ((record.m & 16) != 0) record.tns_method = text();
    if ((record.m & 32) != 0) record.tns_time = time();
    if ((record.m & 64) != 0) record.tns_debug_id = bytes();
  }

  void fill(tns__stop_trigger &record) {
    record.m = random.below(8);
    if ((record.m & 1) != 0) record.tns_time = time();
    if ((record.m & 2) != 0) record.tns_time_period = period();
    record.tns_reason = code();
  }

  void fill(tns__control &record) {
    record.m = random.below(4);
    record.tns_interface = text();
    record.tns_depth = code();
    if ((record.m & 2) != 0) record.tns_debug_id = bytes();
  }

  void fill(tns__session &record) {
    fill(record.tns_start_trigger);
    fill(record.tns_stop_trigger);
    fill(record.tns_control);
    record.tns_id = attribute();
  }

  void fill(tns__debugconfig &record) {
    for (uint32_t left = random.below(4); left != 0; --left)
      fill(*builder.session(record));
    record.tns_aor = attribute();
  }

  void fill(tns__debuginfo &record) {
    for (uint32_t left = random.below(4); left != 0; --left)
      fill(*builder.debugconfig(record));
    for (uint32_t left = random.below(4); left != 0; --left)
      builder.foreign(record, support::randomForeignElement(random));
    record.tns_version = random.chance(20) ? UINT32_MAX : random.below(1000);
    record.tns_state = code();
  }

  void fill(const Document &document, Value &value) {
    const std::string_view root = document.root;
    if (document.kind == Kind::bytes) value.bytes = bytes();
    if (document.kind == Kind::code) value.code = code();
    if (document.kind == Kind::text) value.text = root == "time" ? time() : root == "time-period" ? period() : text();
    if (root == "start-trigger") fill(value.start_trigger);
    if (root == "stop-trigger") fill(value.stop_trigger);
    if (root == "control") fill(value.control);
    if (root == "session") fill(value.session);
    if (root == "debugconfig") fill(value.debugconfig);
    if (root == "debuginfo") fill(value.debuginfo);
  }

private:
  uint16_t code() { return static_cast<uint16_t>(random.below(2)); }

  Random &random;
  Builder builder;
  Times times;
};

void fillHeld(Held &held, const Document &document, Filler &filler) {
  if (document.kind == Kind::record) held.init();
  filler.fill(document, held);
  held.owned = true;
}

std::string printed(const Document &document, const Value &value) {
  if (document.kind != Kind::record) return dump(document, value);
  return support::captureStdout([&] { document.type->print("r", value); });
}

void expectSurvival(RuntimeContext *ctx, const Document &document, Random &random, bool print) {
  support::HeapBalance balance(ctx);
  Held original(ctx, document);
  Filler filler(random, ctx, Times::anyText);
  fillHeld(original, document, filler);
  const std::string text = encode(ctx, document, original);
  SCOPED_TRACE(testing::PrintToString(text));
  const auto tree = support::parseNamespacedXml(text);
  ASSERT_TRUE(tree) << "not well-formed for a strict parser";
  EXPECT_EQ(tree->uri, namespaceUri);
  EXPECT_EQ(tree->name, document.root);

  ASSERT_EQ(support::setInput(ctx, text), 0);
  Held again(ctx, document);
  EXPECT_EQ(document.decode(ctx, again), 0) << support::errors(ctx);
  again.owned = true;
  EXPECT_EQ(dump(document, again), dump(document, original));
  if (print) {
    EXPECT_EQ(printed(document, again), printed(document, original));
  }
  if (document.kind == Kind::record) {
    const std::vector<int> statuses = support::statuses(ctx);
    rtxErrClear(ctx);
    const int status = document.validate(ctx);
    // Attributes of foreign elements are the one thing that the validator minds and the decoder does not.
    if (support::errors(ctx).find("-33(,") == std::string::npos) {
      EXPECT_EQ(status, 0) << support::errors(ctx);
    }
    rtxErrClear(ctx);
  }
}

TEST(Property, RecordsSurviveBeingWrittenAndRead) {
  Random random(20240301);
  Context prefixed;
  Context bare;
  bare->flags |= NamespacesPreset;
  ASSERT_EQ(rtXmlNSSetNamespace(bare, nullptr, nullptr, namespaceUri, false), 0);
  for (int round = 0; round < 300; ++round) {
    for (const Document &document : allDocuments()) {
      SCOPED_TRACE(document.root + " in round "s + std::to_string(round));
      expectSurvival(round % 2 == 0 ? prefixed : bare, document, random, round % 10 == 0);
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(Property, RandomBytesNeverGetThroughUnnoticed) {
  Random random(77);
  Context ctx;
  for (int round = 0; round < 6000; ++round) {
    const std::vector<Document> &documents = allDocuments();
    const Document &document = documents[random.chance(50) ? documents.size() - 1 - random.below(3)
                                                           : random.below(static_cast<uint32_t>(documents.size()))];
    const std::string text = support::randomlyDamaged(random, spelled(completeBody(document), ""));
    rtxErrClear(ctx);
    const Reading reading = decode(ctx, document, text);
    EXPECT_EQ(reading.status == 0, rtxErrCount(ctx) == 0) << testing::PrintToString(text) << " " << reading.errors;
    if (!support::parseXml(text)) {
      EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << testing::PrintToString(text);
    }
    if (document.kind == Kind::record) {
      rtxErrClear(ctx);
      const Reading checked = validate(ctx, document, text);
      EXPECT_EQ(checked.status == STATUS_PARSE_FAILED, reading.status == STATUS_PARSE_FAILED)
          << testing::PrintToString(text);
    }
    if (testing::Test::HasFailure()) return;
  }
}

// The published schema wants attributes without a prefix: so a host presets the namespace as its default one.
TEST(Property, WhatIsWrittenIsValidByTheSchema) {
  support::SchemaJudge judge("debuginfo.xsd");
  if (!judge.available()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";

  Random random(4711);
  Context ctx;
  ctx->flags |= NamespacesPreset;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, namespaceUri, false), 0);
  size_t files = 0;
  for (int round = 0; round < 40; ++round) {
    for (const Document &document : allDocuments()) {
      Held held(ctx, document);
      Filler filler(random, ctx, Times::valid);
      fillHeld(held, document, filler);
      const std::string text = support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, held); });
      judge.add(std::to_string(files++), text);
    }
  }
  for (const auto &[name, accepted] : judge.verdicts())
    EXPECT_TRUE(accepted) << name << "\n" << judge.report().substr(0, 3000);
}

} // namespace
