// Initialising, releasing, printing and appending to the records of rule sets.
#include "contextCheck.h"
#include "lists.h"
#include "rules.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <type_traits>

using namespace rules;
using support::Context;
using support::expectEmpty;
using support::FailingCheck;

namespace {

// ---- Init -----------------------------------------------------------------------------------------------------

void expectEmpty(uint32_t m) { EXPECT_EQ(m, 0u); }

template <typename T>
requires isChoice<T>
void expectEmpty(const T &record) {
  EXPECT_EQ(record.t, 0u);
  const auto *bytes = reinterpret_cast<const unsigned char *>(&record.u);
  EXPECT_EQ(std::count(bytes, bytes + sizeof record.u, 0), std::ptrdiff_t{sizeof record.u}) << "the whole union";
}

void expectEmpty(const cp_oneType &r) {
  expectEmpty(r.m);
  expectEmpty(r.cp__any);
  expectEmpty(r.cp_id);
}

void expectEmpty(const cp_exceptType &r) {
  expectEmpty(r.m);
  expectEmpty(r.cp_domain);
  expectEmpty(r.cp_id);
}

void expectEmpty(const cp_manyType &r) {
  expectEmpty(r.m);
  expectEmpty(r.cp__choice);
  expectEmpty(r.cp_domain);
}

void expectEmpty(const cp_identityType &r) { expectEmpty(r.items); }
void expectEmpty(const cp_conditionsType &r) { expectEmpty(r.items); }
void expectEmpty(const cp_extensibleType &r) { expectEmpty(r.items.items); }
void expectEmpty(const cp_sphereType &r) { expectEmpty(r.cp_value); }

void expectEmpty(const cp_validityType &r) {
  expectEmpty(r.cp_from);
  expectEmpty(r.cp_until);
}

void expectEmpty(const cp_ruleType &r) {
  expectEmpty(r.m);
  expectEmpty(r.cp_conditions);
  expectEmpty(r.cp_actions);
  expectEmpty(r.cp_transformations);
  expectEmpty(r.cp_id);
}

void expectEmpty(const cp__ruleset &r) { expectEmpty(r.cp_rule); }

TEST(InitRecord, MakesEverythingEmpty) {
  forEachType([]<typename T>() {
    Context ctx;
    T record = patterned<T>();
    EXPECT_EQ(Functions<T>::init(ctx, &record), 0);
    expectEmpty(record);
    EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
    EXPECT_EQ(support::errors(ctx), "");
  });
}

TEST(InitRecord, RefusesAnUnusableContextAndLeavesTheRecord) {
  Context sound;
  RuntimeContext zeroed{};
  RuntimeContext copied = *sound.operator->();
  forEachType([&]<typename T>() {
    for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &zeroed, &copied}) {
      T record = patterned<T>();
      const std::string before = bytesOf(record);
      EXPECT_EQ(Functions<T>::init(ctx, &record), STATUS_BAD_CONTEXT);
      EXPECT_EQ(bytesOf(record), before);
    }
  });
  EXPECT_EQ(support::errors(sound), "");
}

TEST(InitRecord, RecordsWhereTheCheckOfTheContextFailed) {
  std::vector<int> lines;
  forEachType([&]<typename T>() {
    Context ctx;
    const FailingCheck failing(-777);
    T record = patterned<T>();
    const std::string before = bytesOf(record);
    EXPECT_EQ(Functions<T>::init(ctx, &record), -777);
    EXPECT_EQ(bytesOf(record), before);
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    const RtxError *error = rtxErrAt(ctx, 0);
    EXPECT_EQ(error->status, -777);
    EXPECT_EQ(error->paramCount, 0u);
    ASSERT_EQ(error->siteCount, 1u);
    EXPECT_STREQ(error->sites[0].path, "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSet");
    EXPECT_GT(error->sites[0].line, 0);
    lines.push_back(error->sites[0].line);
  });
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines.size(), 13u);
  EXPECT_EQ(std::adjacent_find(lines.begin(), lines.end()), lines.end()) << "each type has a line of its own";
}

// ---- MemFree --------------------------------------------------------------------------------------------------

template <typename T> void release(RuntimeContext *ctx, Record<T> &record) {
  Functions<T>::memFree(ctx, record);
  record.owned = false;
}

size_t blocks(RuntimeContext *ctx) { return support::heapStats(ctx).blocks; }

// A member, the bit under which it is released (0: always), and the blocks of it that stay all the same.
template <typename T> struct Member {
  const char *name;
  uint32_t bit;
  size_t staying;
  void (*fill)(Builder &build, T &record);
};

// Every member that may hold storage. What stays of complete conditions: the two texts of an except and a sphere's.
constexpr Member<cp_oneType> oneMembers[] = {
    {"cp__any", 1, 0, [](Builder &b, auto &r) { r.cp__any = b.text("<x/>"); }},
    {"cp_id", 0, 0, [](Builder &b, auto &r) { r.cp_id = b.text("a"); }},
};
constexpr Member<cp_manyType> manyMembers[] = {
    {"cp__choice", 0, 2,
     [](Builder &b, auto &r) {
       if (auto *except = b.item(r, cp_manyType_1_except)) b.complete(except->u.cp_except);
       b.foreign(r, "<x/>");
     }},
    {"cp_domain", 1, 0, [](Builder &b, auto &r) { r.cp_domain = b.text("a"); }},
};
constexpr Member<cp_identityType> identityMembers[] = {
    {"items", 0, 2, [](Builder &b, auto &r) { b.complete(r); }},
};
constexpr Member<cp_validityType> validityMembers[] = {
    {"cp_from", 0, 0, [](Builder &b, auto &r) { r.cp_from = b.text("a"); }},
    {"cp_until", 0, 0, [](Builder &b, auto &r) { r.cp_until = b.text("a"); }},
};
constexpr Member<cp_conditionsType> conditionsMembers[] = {
    {"items", 0, 3, [](Builder &b, auto &r) { b.complete(r); }},
};
constexpr Member<cp_extensibleType> extensibleMembers[] = {
    {"items", 0, 0, [](Builder &b, auto &r) { b.complete(r); }},
};
constexpr Member<cp_ruleType> ruleMembers[] = {
    {"cp_conditions", 1, 3, [](Builder &b, auto &r) { b.complete(r.cp_conditions); }},
    {"cp_actions", 2, 0, [](Builder &b, auto &r) { b.complete(r.cp_actions); }},
    {"cp_transformations", 4, 0, [](Builder &b, auto &r) { b.complete(r.cp_transformations); }},
    {"cp_id", 0, 0, [](Builder &b, auto &r) { r.cp_id = b.text("a"); }},
};
constexpr Member<cp__ruleset> rulesetMembers[] = {
    {"cp_rule", 0, 3, [](Builder &b, auto &r) { b.complete(r); }},
};

template <typename T, size_t count> void expectReleased(const Member<T> (&table)[count], uint32_t bits) {
  SCOPED_TRACE(Functions<T>::name);
  for (const Member<T> &member : table) {
    SCOPED_TRACE(member.name);
    struct Case {
      uint32_t m;
      bool released;
    };
    // With its own bit alone, and with all bits but its own.
    for (const Case &c : {Case{member.bit, true}, Case{bits & ~member.bit, member.bit == 0}}) {
      Context ctx;
      Record<T> record(ctx);
      Builder build(ctx);
      member.fill(build, *record);
      const size_t whole = blocks(ctx);
      ASSERT_GT(whole, member.staying);
      setPresence(*record, c.m);
      release(ctx, record);
      EXPECT_EQ(blocks(ctx), c.released ? member.staying : whole) << "with bits " << c.m;
    }
  }
}

TEST(ReleaseRecord, GivesBackEachMemberUnderItsBit) {
  expectReleased(oneMembers, 1);
  expectReleased(manyMembers, 1);
  expectReleased(identityMembers, 0);
  expectReleased(validityMembers, 0);
  expectReleased(conditionsMembers, 0);
  expectReleased(extensibleMembers, 0);
  expectReleased(ruleMembers, 7);
  expectReleased(rulesetMembers, 0);
}

// An alternative of a choice, and the blocks of it that stay.
template <typename T> struct Alternative {
  uint16_t t;
  size_t staying;
  void (*fill)(Builder &build, T &record);
};

constexpr Alternative<cp_manyType_1> manyAlternatives[] = {
    {1, 2, [](Builder &b, auto &r) { b.complete(r.u.cp_except); }},
    {2, 0, [](Builder &b, auto &r) { r.u.cp__any = b.text("<x/>"); }},
};
constexpr Alternative<cp_identityType_1> identityAlternatives[] = {
    {1, 0, [](Builder &b, auto &r) { b.complete(r.u.cp_one); }},
    {2, 2, [](Builder &b, auto &r) { b.complete(r.u.cp_many); }},
    {3, 0, [](Builder &b, auto &r) { r.u.cp__any = b.text("<x/>"); }},
};
constexpr Alternative<cp_conditionsType_1> conditionsAlternatives[] = {
    {1, 2, [](Builder &b, auto &r) { b.complete(r.u.cp_identity); }},
    {2, 1, [](Builder &b, auto &r) { b.complete(r.u.cp_sphere); }},
    {3, 0, [](Builder &b, auto &r) { b.complete(r.u.cp_validity); }},
    {4, 0,
     [](Builder &b, auto &r) {
       for (const char *element : {"<x/>", "<y/>", "<z/>"})
         b.foreign(r.u.cp__any, element);
     }},
};

template <typename T, size_t count> void expectAlternativesReleased(const Alternative<T> (&table)[count]) {
  SCOPED_TRACE(Functions<T>::name);
  for (const Alternative<T> &alternative : table) {
    SCOPED_TRACE(alternative.t);
    Context ctx;
    Record<T> record(ctx);
    Builder build(ctx);
    alternative.fill(build, *record);
    const size_t whole = blocks(ctx);
    const std::string before = bytesOf(record->u);
    ASSERT_GE(whole, std::max(alternative.staying, size_t{1}));
    for (uint16_t none : {uint16_t{0}, uint16_t(count + 1), uint16_t{7}, uint16_t{256}, uint16_t{65535}}) {
      record->t = none;
      Functions<T>::memFree(ctx, record);
      EXPECT_EQ(blocks(ctx), whole) << "no alternative has the selector " << none;
      EXPECT_EQ(bytesOf(record->u), before);
    }
    record->t = alternative.t;
    release(ctx, record);
    EXPECT_EQ(blocks(ctx), alternative.staying);
    EXPECT_EQ(record->t, alternative.t);
  }
}

TEST(ReleaseRecord, GivesBackTheAlternativeThatTheSelectorNames) {
  expectAlternativesReleased(manyAlternatives);
  expectAlternativesReleased(identityAlternatives);
  expectAlternativesReleased(conditionsAlternatives);
}

TEST(ReleaseRecord, TextsOfAnExceptStay) {
  Context ctx;
  Record<cp_manyType> many(ctx);
  Builder build(ctx);
  auto *except = build.item(*many, cp_manyType_1_except);
  ASSERT_NE(except, nullptr);
  build.complete(except->u.cp_except);
  build.foreign(*many, "<x/>");
  const cp_exceptType texts = except->u.cp_except;
  ASSERT_EQ(blocks(ctx), 2u + 3u + 2u) << "two texts, an element's text, two items with their nodes";
  release(ctx, many);
  EXPECT_EQ(blocks(ctx), 2u);
  EXPECT_STREQ(texts.cp_domain.value, "except.example");
  EXPECT_STREQ(texts.cp_id.value, "sip:except");
  rtxMemHeapFreePtr(ctx, texts.cp_domain.value);
  rtxMemHeapFreePtr(ctx, texts.cp_id.value);
  EXPECT_EQ(blocks(ctx), 0u);
}

TEST(ReleaseRecord, TextOfASphereStays) {
  Context ctx;
  Record<cp_conditionsType> conditions(ctx);
  Builder build(ctx);
  build.sphere(*conditions, "home");
  const auto *item = static_cast<cp_conditionsType_1 *>(conditions->items.head->data);
  const RtxXmlString value = item->u.cp_sphere.cp_value;
  release(ctx, conditions);
  EXPECT_EQ(blocks(ctx), 1u);
  EXPECT_STREQ(value.value, "home");
  rtxMemHeapFreePtr(ctx, value.value);
  EXPECT_EQ(blocks(ctx), 0u);
}

extern "C" {
// The library has no such functions.
[[gnu::weak]] int QxMemFree_cp_exceptType(RuntimeContext *ctx, cp_exceptType *record);
[[gnu::weak]] int QxMemFree_cp_sphereType(RuntimeContext *ctx, cp_sphereType *record);
[[gnu::weak]] uint32_t Qxcp_manyType_Append(RuntimeContext *ctx, cp_manyType *record, cp_manyType_1 *item);
}

TEST(ReleaseRecord, ExceptAndSphereHaveNoReleaseFunction) {
  EXPECT_TRUE(QxMemFree_cp_exceptType == nullptr);
  EXPECT_TRUE(QxMemFree_cp_sphereType == nullptr);
}

TEST(ReleaseRecord, RuleWithoutBitsGivesBackItsIdAlone) {
  Context ctx;
  Record<cp_ruleType> rule(ctx);
  Builder build(ctx);
  build.complete(rule->cp_conditions);
  build.complete(rule->cp_actions);
  build.complete(rule->cp_transformations);
  const size_t without = blocks(ctx);
  rule->cp_id = build.text("r");
  release(ctx, rule);
  EXPECT_EQ(blocks(ctx), without);
  EXPECT_EQ(rule->cp_conditions.items.count, 5u);
  EXPECT_EQ(rule->cp_actions.items.items.count, 2u);
}

TEST(ReleaseRecord, LeavesTextsAloneWhoseBitIsClear) {
  Context ctx;
  Record<cp_oneType> one(ctx);
  Record<cp_manyType> many(ctx);
  Builder build(ctx);
  one->cp__any = build.text("<kept/>");
  many->cp_domain = build.text("kept");
  release(ctx, one);
  release(ctx, many);
  EXPECT_STREQ(one->cp__any.value, "<kept/>");
  EXPECT_STREQ(many->cp_domain.value, "kept");
  EXPECT_EQ(blocks(ctx), 2u);
  rtxMemHeapFreePtr(ctx, one->cp__any.value);
  rtxMemHeapFreePtr(ctx, many->cp_domain.value);
}

TEST(ReleaseRecord, ClearsNeitherTextsNorBits) {
  Context ctx;
  const auto unchanged = [](const RtxXmlString &after, const RtxXmlString &before) {
    EXPECT_EQ(reinterpret_cast<uintptr_t>(after.value), reinterpret_cast<uintptr_t>(before.value));
  };
  CompleteRecord<cp_oneType> one(ctx);
  const cp_oneType oneBefore = *one;
  release(ctx, one);
  EXPECT_EQ(one->m, 1u);
  unchanged(one->cp__any, oneBefore.cp__any);
  unchanged(one->cp_id, oneBefore.cp_id);

  CompleteRecord<cp_validityType> validity(ctx);
  const cp_validityType validityBefore = *validity;
  release(ctx, validity);
  unchanged(validity->cp_from, validityBefore.cp_from);
  unchanged(validity->cp_until, validityBefore.cp_until);

  Record<cp_manyType> many(ctx);
  Builder build(ctx);
  build.foreign(*many, "<x/>");
  many->cp_domain = build.text("d");
  many->m = 1;
  const cp_manyType manyBefore = *many;
  release(ctx, many);
  EXPECT_EQ(many->m, 1u);
  unchanged(many->cp_domain, manyBefore.cp_domain);
  expectEmpty(many->cp__choice);

  Record<cp_ruleType> rule(ctx);
  build.complete(rule->cp_actions);
  rule->cp_id = build.text("r");
  rule->m = 7;
  const cp_ruleType ruleBefore = *rule;
  release(ctx, rule);
  EXPECT_EQ(rule->m, 7u);
  unchanged(rule->cp_id, ruleBefore.cp_id);
  expectEmpty(rule->cp_actions);

  CompleteRecord<cp__ruleset> ruleset(ctx);
  release(ctx, ruleset);
  expectEmpty(ruleset->cp_rule);
}

TEST(ReleaseRecord, TakesFreshRecordsAndItemsWithoutContent) {
  Context ctx;
  forEachType([&]<typename T>() {
    Record<T> fresh(ctx);
    if (Functions<T>::memFree != nullptr) release(ctx, fresh);
    EXPECT_EQ(blocks(ctx), 0u);
  });
  Record<cp_ruleType> rule(ctx);
  Builder build(ctx);
  cp_conditionsType &conditions = rule->cp_conditions;
  for (uint16_t t = 0; t <= 5; ++t)
    build.item(conditions, t);
  auto *identity = build.item(conditions, cp_conditionsType_1_identity);
  ASSERT_NE(identity, nullptr);
  for (uint16_t t = 0; t <= 4; ++t)
    build.item(identity->u.cp_identity, t);
  auto *many = build.item(identity->u.cp_identity, cp_identityType_1_many);
  ASSERT_NE(many, nullptr);
  for (uint16_t t = 0; t <= 3; ++t)
    build.item(many->u.cp_many, t);
  rule->m = 7;
  release(ctx, rule);
  EXPECT_EQ(blocks(ctx), 0u);
}

TEST(ReleaseRecord, NeitherChecksTheContextNorRecords) {
  Context ctx;
  CompleteRecord<cp_extensibleType> record(ctx);
  const FailingCheck failing(-777);
  release(ctx, record);
  EXPECT_EQ(blocks(ctx), 0u);
  EXPECT_EQ(support::errors(ctx), "");
}

// ---- Append ---------------------------------------------------------------------------------------------------

template <typename T> void *zeroedItem(RuntimeContext *ctx) {
  void *item = rtxMemHeapAlloc(ctx, sizeof(T));
  if (item != nullptr) std::memset(item, 0, sizeof(T));
  return item;
}

// An append function, the storage of its items and where they go.
template <typename T> struct Append {
  uint32_t (*append)(RuntimeContext *ctx, T *record, void *item);
  void *(*item)(RuntimeContext *ctx);
  const RtxList &(*list)(const T &record);
};

#define APPEND(T, Item, member)                                                                                        \
  Append<T> {                                                                                                          \
    [](RuntimeContext *ctx, T *record, void *item) { return Qx##T##_Append(ctx, record, static_cast<Item *>(item)); }, \
        zeroedItem<Item>, [](const T &record) -> const RtxList & { return record.member; }                             \
  }
constexpr auto appendIdentity = APPEND(cp_identityType, cp_identityType_1, items);
constexpr auto appendCondition = APPEND(cp_conditionsType, cp_conditionsType_1, items);
constexpr auto appendForeign = APPEND(cp_extensibleType, RtxXmlString, items.items);
constexpr auto appendRule = APPEND(cp__ruleset, cp_ruleType, cp_rule);
#undef APPEND

template <typename T> void expectAppends(const Append<T> &functions) {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx;
  Record<T> record(ctx);
  std::vector<void *> appended;
  for (uint32_t count = 1; count <= 4; ++count) {
    appended.push_back(functions.item(ctx));
    EXPECT_EQ(functions.append(ctx, record, appended.back()), count);
  }
  std::vector<void *> held;
  for (const RtxListNode *node = functions.list(*record).head; node != nullptr; node = node->next)
    held.push_back(node->data);
  EXPECT_EQ(held, appended);
  EXPECT_EQ(functions.list(*record).tail->data, appended.back());
}

TEST(AppendItem, ReturnsTheCountAndKeepsTheOrder) {
  expectAppends(appendIdentity);
  expectAppends(appendCondition);
  expectAppends(appendForeign);
  expectAppends(appendRule);
}

template <typename T> void expectCountStays(const Append<T> &functions) {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 1000; });
  Record<T> record(ctx);
  ASSERT_EQ(functions.append(ctx, record, functions.item(ctx)), 1u);
  void *second = functions.item(ctx);
  ASSERT_NE(second, nullptr);
  while (rtxMemHeapAlloc(ctx, 1) != nullptr) {
  }
  EXPECT_EQ(functions.append(ctx, record, second), 1u);
  EXPECT_EQ(functions.list(*record).tail, functions.list(*record).head);
  EXPECT_EQ(support::errors(ctx), "");
}

TEST(AppendItem, WithoutStorageTheCountStays) {
  expectCountStays(appendIdentity);
  expectCountStays(appendCondition);
  expectCountStays(appendForeign);
  expectCountStays(appendRule);
}

TEST(AppendItem, ExceptionsOfManyHaveNoAppendFunction) { EXPECT_TRUE(Qxcp_manyType_Append == nullptr); }

// ---- Print ----------------------------------------------------------------------------------------------------

// The lines of parts under another name; "~" stands for the name.
std::string under(const Parts &parts, const std::string &name, uint32_t m = ~0u) {
  return replaced(present(parts, m), "~", name);
}

// The lines of complete records.
const Parts oneLines = {{1, "~.cp__any = \"<o/>\"\n"}, {0, "~.cp_id = \"sip:one\"\n"}};
const Parts exceptLines = {
    {0, "~ = <null>\n"}, {1, "~.cp_domain = \"except.example\"\n"}, {2, "~.cp_id = \"sip:except\"\n"}};
const Parts many1Lines = {{0, "~.t = 1\n" + under(exceptLines, "~.u.cp_except")}};
const Parts manyLines = {
    {0, under(many1Lines, "~.cp__choice[0]") + "~.cp__choice[1].t = 2\n" + "~.cp__choice[1].u.cp__any = \"<m/>\"\n"},
    {1, "~.cp_domain = \"many.example\"\n"}};
const Parts identity1Lines = {{0, "~.t = 1\n" + under(oneLines, "~.u.cp_one")}};
const Parts identityLines = {{0, under(identity1Lines, "~[0]") + "~[1].t = 2\n" + under(manyLines, "~[1].u.cp_many") +
                                     "~[2].t = 3\n~[2].u.cp__any = \"<i/>\"\n"}};
const Parts sphereLines = {{0, "~ = <null>\n~.cp_value = \"work\"\n"}};
const Parts validityLines = {{0, "~.cp_from = \"2024-01-01T00:00:00Z\"\n~.cp_until = \"2024-12-31T23:59:59Z\"\n"}};
const Parts conditions1Lines = {{0, "~.t = 1\n" + under(identityLines, "~.u.cp_identity")}};
const Parts conditionsLines = {
    {0, under(conditions1Lines, "~[0]") +
            "~[1].t = 4\n~[1].u.cp__any[0] = \"<c/>\"\n~[1].u.cp__any[1] = \"<d>1</d>\"\n" + //
            "~[2].t = 2\n" + under(sphereLines, "~[2].u.cp_sphere") +                        //
            "~[3].t = 3\n" + under(validityLines, "~[3].u.cp_validity") +                    //
            "~[4].t = 4\n~[4].u.cp__any[0] = \"<e/>\"\n"}};
const Parts extensibleLines = {{0, "~[0] = \"<x/>\"\n~[1] = \"<y>2</y>\"\n"}};
const Parts ruleLines = {{1, under(conditionsLines, "~.cp_conditions")},
                         {2, under(extensibleLines, "~.cp_actions")},
                         {4, "~.cp_transformations[0] = \"<t/>\"\n"},
                         {0, "~.cp_id = \"r1\"\n"}};
const Parts rulesetLines = {{0, under(ruleLines, "~.cp_rule[0]") + "~.cp_rule[1].cp_id = \"r2\"\n"}};

// With every combination of presence bits.
template <typename T> void expectPrinted(const Parts &lines) {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx;
  CompleteRecord<T> record(ctx);
  const uint32_t all = allBits(lines);
  for (uint32_t m = 0; m <= all; ++m) {
    setPresence(*record, m);
    ASSERT_EQ(printed<T>("r.x", record), under(lines, "r.x", m)) << "with bits " << m;
  }
  setPresence(*record, ~all);
  EXPECT_EQ(printed<T>("r", record), under(lines, "r", 0)) << "bits without a meaning";
  setPresence(*record, all);
}

TEST(PrintRecord, ShowsEachMemberUnderItsBitInOrder) {
  expectPrinted<cp_oneType>(oneLines);
  expectPrinted<cp_exceptType>(exceptLines);
  expectPrinted<cp_manyType_1>(many1Lines);
  expectPrinted<cp_manyType>(manyLines);
  expectPrinted<cp_identityType_1>(identity1Lines);
  expectPrinted<cp_identityType>(identityLines);
  expectPrinted<cp_sphereType>(sphereLines);
  expectPrinted<cp_validityType>(validityLines);
  expectPrinted<cp_conditionsType_1>(conditions1Lines);
  expectPrinted<cp_conditionsType>(conditionsLines);
  expectPrinted<cp_extensibleType>(extensibleLines);
  expectPrinted<cp_ruleType>(ruleLines);
  expectPrinted<cp__ruleset>(rulesetLines);
}

TEST(PrintRecord, FreshRecordsShowOnlyWhatIsRequired) {
  Context ctx;
  const auto fresh = [&]<typename T>(std::type_identity<T>) {
    Record<T> record(ctx);
    return printed<T>("r", record);
  };
  EXPECT_EQ(fresh(std::type_identity<cp_oneType>()), "r.cp_id = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<cp_exceptType>()), "r = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<cp_manyType_1>()), "r.t = 0\n");
  EXPECT_EQ(fresh(std::type_identity<cp_manyType>()), "");
  EXPECT_EQ(fresh(std::type_identity<cp_identityType_1>()), "r.t = 0\n");
  EXPECT_EQ(fresh(std::type_identity<cp_identityType>()), "");
  EXPECT_EQ(fresh(std::type_identity<cp_sphereType>()), "r = <null>\nr.cp_value = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<cp_validityType>()), "r.cp_from = <null>\nr.cp_until = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<cp_conditionsType_1>()), "r.t = 0\n");
  EXPECT_EQ(fresh(std::type_identity<cp_conditionsType>()), "");
  EXPECT_EQ(fresh(std::type_identity<cp_extensibleType>()), "");
  EXPECT_EQ(fresh(std::type_identity<cp_ruleType>()), "r.cp_id = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<cp__ruleset>()), "");
}

TEST(PrintRecord, ChoicesShowTheSelectedAlternativeAlone) {
  Context ctx;
  Builder build(ctx);
  const auto shown = [&]<typename T>(std::type_identity<T>, uint16_t t) {
    Record<T> record(ctx);
    record->t = t;
    const std::string lines = printed<T>("c", record);
    record->t = 0;
    return lines;
  };
  struct Case {
    uint16_t t;
    const char *many;
    const char *identity;
    const char *conditions;
  };
  const Case cases[] = {
      {0, "", "", ""},
      {1, "c.u.cp_except = <null>\n", "c.u.cp_one.cp_id = <null>\n", ""},
      {2, "c.u.cp__any = <null>\n", "", "c.u.cp_sphere = <null>\nc.u.cp_sphere.cp_value = <null>\n"},
      {3, "", "c.u.cp__any = <null>\n", "c.u.cp_validity.cp_from = <null>\nc.u.cp_validity.cp_until = <null>\n"},
      {4, "", "", ""},
      {5, "", "", ""},
      {257, "", "", ""},
      {32768, "", "", ""},
      {65535, "", "", ""},
  };
  for (const Case &c : cases) {
    const std::string selector = "c.t = " + std::to_string(c.t) + "\n";
    EXPECT_EQ(shown(std::type_identity<cp_manyType_1>(), c.t), selector + c.many);
    EXPECT_EQ(shown(std::type_identity<cp_identityType_1>(), c.t), selector + c.identity);
    EXPECT_EQ(shown(std::type_identity<cp_conditionsType_1>(), c.t), selector + c.conditions);
  }
}

TEST(PrintRecord, SelectorWithoutAnAlternativeHidesTheUnion) {
  Context ctx;
  CompleteRecord<cp_conditionsType_1> record(ctx);
  record->t = 5;
  EXPECT_EQ(printed<cp_conditionsType_1>("c", record), "c.t = 5\n");
  record->t = 1;
}

TEST(PrintRecord, RuleWithoutBitsShowsItsIdAlone) {
  Context ctx;
  CompleteRecord<cp_ruleType> rule(ctx);
  rule->m = 0;
  EXPECT_EQ(printed<cp_ruleType>("rule", rule), "rule.cp_id = \"r1\"\n");
  rule->m = 7;
}

TEST(PrintRecord, CutsTheNamesThatItMakes) {
  Context ctx;
  CompleteRecord<cp__ruleset> record(ctx);
  // A name that is made from the name above it by a part at a time, cut each time. The selector's line is not made
  // of a name but written at once.
  for (size_t length : {400u, 455u, 465u, 470u, 475u, 480u, 485u, 490u, 495u, 500u, 505u, 511u, 512u, 5000u}) {
    const std::string name(length, 'n');
    const auto cut = [](const std::string &whole) { return whole.substr(0, 511); };
    const std::string rule = cut(name + ".cp_rule[0]");
    const std::string conditions = cut(rule + ".cp_conditions");
    std::vector<std::string> items;
    for (int i = 0; i < 5; ++i)
      items.push_back(cut(conditions + "[" + std::to_string(i) + "]"));
    const std::string identity = cut(items[0] + ".u.cp_identity");
    std::vector<std::string> who;
    for (int i = 0; i < 3; ++i)
      who.push_back(cut(identity + "[" + std::to_string(i) + "]"));
    const std::string one = cut(who[0] + ".u.cp_one");
    const std::string many = cut(who[1] + ".u.cp_many");
    const std::string except = cut(many + ".cp__choice[0]");
    const std::string exceptRecord = cut(except + ".u.cp_except");
    const std::string other = cut(many + ".cp__choice[1]");
    const std::string sphere = cut(items[2] + ".u.cp_sphere");
    const std::string validity = cut(items[3] + ".u.cp_validity");
    const std::string run = cut(items[1] + ".u.cp__any");
    const std::string actions = cut(rule + ".cp_actions");
    EXPECT_EQ(printed<cp__ruleset>(name.c_str(), record),
              items[0] + ".t = 1\n" + who[0] + ".t = 1\n" +                            //
                  cut(one + ".cp__any") + " = \"<o/>\"\n" +                            //
                  cut(one + ".cp_id") + " = \"sip:one\"\n" +                           //
                  who[1] + ".t = 2\n" + except + ".t = 1\n" +                          //
                  exceptRecord + " = <null>\n" +                                       //
                  cut(exceptRecord + ".cp_domain") + " = \"except.example\"\n" +       //
                  cut(exceptRecord + ".cp_id") + " = \"sip:except\"\n" +               //
                  other + ".t = 2\n" + cut(other + ".u.cp__any") + " = \"<m/>\"\n" +   //
                  cut(many + ".cp_domain") + " = \"many.example\"\n" +                 //
                  who[2] + ".t = 3\n" + cut(who[2] + ".u.cp__any") + " = \"<i/>\"\n" + //
                  items[1] + ".t = 4\n" + cut(run + "[0]") + " = \"<c/>\"\n" +         //
                  cut(run + "[1]") + " = \"<d>1</d>\"\n" +                             //
                  items[2] + ".t = 2\n" + sphere + " = <null>\n" +                     //
                  cut(sphere + ".cp_value") + " = \"work\"\n" +                        //
                  items[3] + ".t = 3\n" +                                              //
                  cut(validity + ".cp_from") + " = \"2024-01-01T00:00:00Z\"\n" +       //
                  cut(validity + ".cp_until") + " = \"2024-12-31T23:59:59Z\"\n" +      //
                  items[4] + ".t = 4\n" + cut(cut(items[4] + ".u.cp__any") + "[0]") + " = \"<e/>\"\n" +
                  cut(actions + "[0]") + " = \"<x/>\"\n" + cut(actions + "[1]") + " = \"<y>2</y>\"\n" +
                  cut(cut(rule + ".cp_transformations") + "[0]") + " = \"<t/>\"\n" + //
                  cut(rule + ".cp_id") + " = \"r1\"\n" + cut(cut(name + ".cp_rule[1]") + ".cp_id") + " = \"r2\"\n")
        << length;
  }
}

TEST(PrintRecord, NameOfTheRecordItselfIsNotCut) {
  Context ctx;
  const std::string name(600, 'n');
  Record<cp_sphereType> sphere(ctx);
  EXPECT_TRUE(printed<cp_sphereType>(name.c_str(), sphere).starts_with(name + " = <null>\n"));
  Record<cp_manyType_1> choice(ctx);
  EXPECT_EQ(printed<cp_manyType_1>(name.c_str(), choice), name + ".t = 0\n");
}

TEST(PrintRecord, TakesAnyNameAsText) {
  Context ctx;
  Record<cp_ruleType> rule(ctx);
  EXPECT_EQ(printed<cp_ruleType>("%s%n%d", rule), "%s%n%d.cp_id = <null>\n");
  EXPECT_EQ(printed<cp_ruleType>("", rule), ".cp_id = <null>\n");
  Record<cp_identityType_1> choice(ctx);
  EXPECT_EQ(printed<cp_identityType_1>("%s%n%d", choice), "%s%n%d.t = 0\n");
}

TEST(PrintRecord, ManyItemsAreNumberedThrough) {
  Context ctx;
  Record<cp__ruleset> ruleset(ctx);
  Builder build(ctx);
  std::string expected;
  for (int i = 0; i < 120; ++i) {
    build.rule(*ruleset, std::to_string(i));
    expected += "r.cp_rule[" + std::to_string(i) + "].cp_id = \"" + std::to_string(i) + "\"\n";
  }
  EXPECT_EQ(printed<cp__ruleset>("r", ruleset), expected);
}

TEST(PrintRecord, NeitherNeedsAContextNorChangesTheRecord) {
  Context ctx;
  CompleteRecord<cp__ruleset> record(ctx);
  const std::string lines = printed<cp__ruleset>("r", record);
  const FailingCheck failing(-777);
  EXPECT_EQ(printed<cp__ruleset>("r", record), lines);
}

} // namespace
