// Initialising, releasing and printing a composing indication.
#include "composing.h"

#include <algorithm>
#include <cstring>

using namespace composing;
using support::Context;
using support::expectEmpty;

namespace {

TEST(InitRecord, MakesEverythingEmptyButTheNumber) {
  Context ctx;
  auto record = support::patterned<tns__isComposing>();
  EXPECT_EQ(QxInit_tns__isComposing(ctx, &record), 0);
  EXPECT_EQ(record.m, 0u);
  for (const RtxXmlString &text : {record.tns_state, record.tns_lastactive, record.tns_contenttype})
    expectEmpty(text);
  EXPECT_EQ(record.tns_refresh, 0xA5A5A5A5u) << "only its presence bit gives it a meaning";
  expectEmpty(record.anyElems.items);
}

TEST(InitRecord, RefusesAnUnusableContextAndLeavesTheRecord) {
  RuntimeContext none{};
  for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &none}) {
    auto record = support::patterned<tns__isComposing>();
    const std::string before = support::bytesOf(record);
    EXPECT_EQ(QxInit_tns__isComposing(ctx, &record), STATUS_BAD_CONTEXT);
    EXPECT_EQ(support::bytesOf(record), before);
  }
}

TEST(ReleaseRecord, GivesBackAllThatTheRecordHolds) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, "active");
  record.lastactive("a").contenttype("b").refresh(1).foreign("<x/>").foreign("<y/>");
  EXPECT_GT(support::heapStats(ctx).blocks, 0u);
}

TEST(ReleaseRecord, LeavesTextsAloneWhoseBitIsClear) {
  Context ctx;
  Record record(ctx, "active");
  record.lastactive("kept").contenttype("kept too");
  record->m = 0;
  QxMemFree_tns__isComposing(ctx, record);
  record.owned = false;
  EXPECT_STREQ(record->tns_lastactive.value, "kept");
  EXPECT_STREQ(record->tns_contenttype.value, "kept too");
  EXPECT_EQ(support::heapStats(ctx).blocks, 2u);
  rtxMemHeapFreePtr(ctx, record->tns_lastactive.value);
  rtxMemHeapFreePtr(ctx, record->tns_contenttype.value);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
}

TEST(ReleaseRecord, EachBitReleasesItsOwnText) {
  for (uint32_t bit : {1u, 2u}) {
    Context ctx;
    Record record(ctx, nullptr);
    record.lastactive("a").contenttype("b");
    record->m = bit;
    QxMemFree_tns__isComposing(ctx, record);
    record.owned = false;
    EXPECT_EQ(support::heapStats(ctx).blocks, 1u);
    EXPECT_STREQ(bit == 1 ? record->tns_contenttype.value : record->tns_lastactive.value, bit == 1 ? "b" : "a");
  }
}

TEST(ReleaseRecord, ClearsNeitherTextsNorBits) {
  Context ctx;
  Record record(ctx, "active");
  record.lastactive("a").contenttype("b").refresh(9).foreign("<x/>");
  const tns__isComposing before = record.get();
  QxMemFree_tns__isComposing(ctx, record);
  record.owned = false;
  EXPECT_EQ(record->m, 7u);
  EXPECT_EQ(record->tns_refresh, 9u);
  const auto address = [](const char *text) { return reinterpret_cast<uintptr_t>(text); };
  EXPECT_EQ(address(record->tns_state.value), address(before.tns_state.value));
  EXPECT_EQ(address(record->tns_lastactive.value), address(before.tns_lastactive.value));
  EXPECT_EQ(address(record->tns_contenttype.value), address(before.tns_contenttype.value));
  EXPECT_EQ(record->anyElems.items.count, 0u) << "a list is left empty";
  EXPECT_EQ(record->anyElems.items.head, nullptr);
}

TEST(ReleaseRecord, TakesAFreshRecord) {
  Context ctx;
  Record record(ctx, nullptr);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
}

TEST(PrintRecord, ShowsEachMemberOnALineOfItsOwn) {
  Context ctx;
  Record record(ctx, "active");
  record.lastactive("2024-01-02T03:04:05Z").contenttype("text/plain").refresh(90).foreign("<x/>").foreign("<y>2</y>");
  EXPECT_EQ(printed<tns__isComposing>("rec", record), "rec.tns_state = \"active\"\n"
                                                      "rec.tns_lastactive = \"2024-01-02T03:04:05Z\"\n"
                                                      "rec.tns_contenttype = \"text/plain\"\n"
                                                      "rec.tns_refresh = 90\n"
                                                      "rec[0] = \"<x/>\"\n"
                                                      "rec[1] = \"<y>2</y>\"\n");
}

TEST(PrintRecord, FreshRecordShowsOnlyItsRequiredMember) {
  Context ctx;
  Record record(ctx, nullptr);
  EXPECT_EQ(printed<tns__isComposing>("rec", record), "rec.tns_state = <null>\n");
}

TEST(PrintRecord, EachBitShowsItsOwnMember) {
  Context ctx;
  Record record(ctx, "s");
  record.lastactive("l").contenttype("c").refresh(5);
  const char *const lines[] = {"r.tns_lastactive = \"l\"\n", "r.tns_contenttype = \"c\"\n", "r.tns_refresh = 5\n"};
  for (uint32_t m = 0; m < 8; ++m) {
    std::string expected = "r.tns_state = \"s\"\n";
    for (uint32_t i = 0; i < 3; ++i)
      if ((m >> i & 1) != 0) expected += lines[i];
    record->m = m;
    EXPECT_EQ(printed<tns__isComposing>("r", record), expected);
  }
  record->m = 7;
}

TEST(PrintRecord, CutsLongNames) {
  Context ctx;
  Record record(ctx, "s");
  record.refresh(1).foreign("<x/>");
  for (size_t length : {500u, 501u, 502u, 511u, 512u, 5000u}) {
    const std::string name(length, 'n');
    const auto cut = [&](const char *suffix) { return (name + suffix).substr(0, 511); };
    EXPECT_EQ(printed<tns__isComposing>(name.c_str(), record),
              cut(".tns_state") + " = \"s\"\n" + cut(".tns_refresh") + " = 1\n" + cut("[0]") + " = \"<x/>\"\n");
  }
}

TEST(PrintRecord, TakesAnyNameAsText) {
  Context ctx;
  Record record(ctx, "s");
  EXPECT_EQ(printed<tns__isComposing>("%s%n%d", record), "%s%n%d.tns_state = \"s\"\n");
  EXPECT_EQ(printed<tns__isComposing>("", record), ".tns_state = \"s\"\n");
}

TEST(PrintRecord, DecodedForeignElementsHaveAnIndexEach) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document("<state>idle</state><x:f xmlns:x='u'/><x:g xmlns:x='u'>t</x:g>")), 0);
  auto record = Record::uninitialised(ctx);
  ASSERT_EQ(QxXmlD_tns_isComposing(ctx, record), 0) << support::errors(ctx);
  record.owned = true;
  const std::string lines = printed<tns__isComposing>("rec", record);
  EXPECT_TRUE(lines.starts_with("rec.tns_state = \"idle\"\nrec[0] = \"<x:f ")) << lines;
  EXPECT_NE(lines.find("\nrec[1] = \"<x:g "), std::string::npos) << lines;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
}

} // namespace
