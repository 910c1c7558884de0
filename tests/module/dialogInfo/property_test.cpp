// Any record survives being written and read, and what is written is what the schema of the format allows.
#include "dialogs.h"
#include "documents.h"
#include "randomText.h"
#include "schemaJudge.h"
#include "xmlJudge.h"

#include <array>

using namespace dialogs;
using support::Context;
using support::Random;

namespace {

// ---- Random records -------------------------------------------------------------------------------------------

enum class Kind {
  any,  // whatever XML can carry
  valid // what the schema asks for besides: URIs where it says so, and no display name
};

class Generator {
public:
  Generator(Random &source, RuntimeContext *context, Kind which) : random(source), build(context), kind(which) {}

  void fill(tns__state &r) {
    r.value = text();
    if (optional(r, tns__state_has_event)) r.tns_event = static_cast<uint16_t>(random.below(7));
    if (optional(r, tns__state_has_code)) r.tns_code = code();
    declarations(r.nsDecls);
  }

  void fill(tns__dialog_replaces &r) { r = {text(), text(), text()}; }

  void fill(tns_nameaddr &r) {
    r.value = uri();
    if (kind == Kind::any && optional(r, tns_nameaddr_has_display_name)) r.tns_display_name = text();
    declarations(r.nsDecls);
  }

  void fill(tns__dialog_route_set &r) {
    for (uint32_t left = 1 + random.below(4); left != 0; --left)
      build.hop(r, randomText(), random.chance(30));
  }

  void fill(tns_participant_target &r) {
    for (uint32_t left = random.below(4); left != 0; --left)
      build.param(r, randomText(), randomText());
    r.tns_uri = text();
  }

  void fill(tns_sessd &r) {
    r.value = text();
    r.tns_type = text();
    declarations(r.nsDecls);
  }

  void fill(tns_participant &r) {
    if (optional(r, tns_participant_has_identity)) fill(r.tns_identity);
    if (optional(r, tns_participant_has_target)) fill(r.tns_target);
    if (optional(r, tns_participant_has_session_description)) fill(r.tns_session_description);
    if (optional(r, tns_participant_has_cseq)) r.tns_cseq = number();
    foreign(r.anyElems);
  }

  void fill(tns__dialog &r) {
    fill(r.tns_state);
    if (optional(r, tns__dialog_has_duration)) r.tns_duration = number();
    if (optional(r, tns__dialog_has_replaces)) fill(r.tns_replaces);
    if (optional(r, tns__dialog_has_referred_by)) fill(r.tns_referred_by);
    if (optional(r, tns__dialog_has_route_set)) fill(r.tns_route_set);
    if (optional(r, tns__dialog_has_local)) fill(r.tns_local);
    if (optional(r, tns__dialog_has_remote)) fill(r.tns_remote);
    foreign(r.anyElems);
    r.tns_id = text();
    if (optional(r, tns__dialog_has_call_id)) r.tns_call_id = text();
    if (optional(r, tns__dialog_has_local_tag)) r.tns_local_tag = text();
    if (optional(r, tns__dialog_has_remote_tag)) r.tns_remote_tag = text();
    if (optional(r, tns__dialog_has_direction)) r.tns_direction = static_cast<uint16_t>(random.below(2));
  }

  void fill(tns__dialog_info &r) {
    for (uint32_t left = random.below(4); left != 0; --left) {
      tns__dialog *dialog = build.dialog(r);
      ASSERT_NE(dialog, nullptr);
      fill(*dialog);
    }
    foreign(r.anyElems);
    r.tns_version = number();
    r.tns_state = static_cast<uint16_t>(random.below(2));
    r.tns_entity = uri();
  }

private:
  template <typename T> bool optional(T &record, uint32_t bit) {
    if (!random.chance(50)) return false;
    record.m |= bit;
    return true;
  }

  std::string randomText() { return support::randomText(random, random.chance(3) ? 300 : 10); }
  RtxXmlString text() { return build.text(randomText(), random.chance(30)); }

  RtxXmlString uri() {
    if (kind == Kind::any) return text();
    constexpr std::array pieces = {"a", "7", "-", "%20", "@", ";", "=", "&", "?", "\xC3\xA9", "\xE2\x82\xAC", "<", "'"};
    std::string uri = "sip:";
    for (uint32_t left = random.below(12); left != 0; --left)
      uri += pieces[random.below(pieces.size())];
    return build.text(uri, random.chance(30));
  }

  uint32_t number() {
    constexpr std::array some = {0u, 1u, 4294967295u};
    return random.chance(20) ? some[random.below(some.size())] : static_cast<uint32_t>(random.next());
  }
  uint16_t code() {
    constexpr std::array<uint16_t, 2> ends = {100, 699};
    return random.chance(20) ? ends[random.below(2)] : static_cast<uint16_t>(100 + random.below(600));
  }

  void foreign(RtxAnyList &list) {
    for (uint32_t left = random.below(3); left != 0; --left)
      build.foreign(list, support::randomForeignElement(random));
  }

  // Each prefix once at most: a tag cannot have more.
  void declarations(RtxNsDeclList &list) {
    for (const char *prefix : {"v", "w", static_cast<const char *>(nullptr)})
      if (random.chance(15)) build.declare(list, prefix, ("urn:" + std::to_string(random.below(100))).c_str());
  }

  Random &random;
  Builder build;
  Kind kind;
};

// ---- Written and read -----------------------------------------------------------------------------------------

template <typename T> void expectRoundTrips(uint64_t seed, int rounds) {
  SCOPED_TRACE(Document<T>::root);
  Random random(seed);
  Context ctx;
  for (int round = 0; round < rounds; ++round) {
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    Record<T> original(ctx);
    Generator(random, ctx, Kind::any).fill(*original);
    const std::string text = encodedDocument<T>(ctx, original);
    SCOPED_TRACE("round " + std::to_string(round) + ": " + testing::PrintToString(text));

    const auto tree = support::parseNamespacedXml(text);
    ASSERT_TRUE(tree) << "not well-formed for a strict parser";
    EXPECT_EQ(tree->uri, namespaceUri);
    EXPECT_EQ(tree->name, Document<T>::root);

    ASSERT_EQ(support::setInput(ctx, text), 0);
    Record<T> again(ctx);
    ASSERT_EQ(Document<T>::decode(ctx, again), 0) << support::errors(ctx);
    EXPECT_EQ(printed<T>("r", again), printed<T>("r", original));

    // Which texts were sections is no part of what is read.
    const auto treeAgain = support::parseNamespacedXml(encodedDocument<T>(ctx, again));
    ASSERT_TRUE(treeAgain);
    EXPECT_EQ(treeAgain->infoset(), tree->infoset());
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Property, RecordsSurviveBeingWrittenAndRead) {
  expectRoundTrips<tns__dialog_info>(20240103, 400);
  expectRoundTrips<tns__dialog>(20240104, 400);
  expectRoundTrips<tns__state>(20240105, 400);
}

// ---- Judged by the schema -------------------------------------------------------------------------------------

class Schema : public testing::Test {
protected:
  void SetUp() override {
    if (!judge.available()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
  }

  template <typename T> void write(RuntimeContext *ctx, T *record) {
    judge.add(std::to_string(count++),
              support::encoded(ctx, [=](RuntimeContext *c) { return Document<T>::encode(c, record); }));
  }

  // One verdict for each document, all of them like this.
  void expectAll(bool accepted) {
    for (const auto &[name, verdict] : judge.verdicts())
      EXPECT_EQ(verdict, accepted) << name << "\n" << judge.report();
  }

  support::SchemaJudge judge{"dialog-info.xsd"};
  int count = 0;
};

TEST_F(Schema, AcceptsWhatIsWritten) {
  Random random(4235);
  Context ctx;
  for (int round = 0; round < 300; ++round) {
    forEachDocument([&]<typename T>() {
      Record<T> record(ctx);
      Generator(random, ctx, Kind::valid).fill(*record);
      write<T>(ctx, record);
    });
  }
  expectAll(true);
}

// The schema spells the attribute of a display name otherwise, so that this also shows that it is asked at all.
TEST_F(Schema, RefusesDisplayNames) {
  Context ctx;
  Builder build(ctx);
  Record<tns__dialog> record(ctx);
  record->m = tns__dialog_has_referred_by;
  build.complete(record->tns_referred_by);
  write<tns__dialog>(ctx, record);
  expectAll(false);
}

} // namespace
