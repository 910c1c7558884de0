// Initialising, releasing, appending to and printing the records of notification filters; the words for expressions.
#include "filters.h"

#include <map>

using namespace filters;
using support::Context;
using support::expectEmpty;

namespace {

size_t blocks(RuntimeContext *ctx) { return support::heapStats(ctx).blocks; }

// ---- Initialising --------------------------------------------------------------------------------------------------

void expectFresh(const NSBindings &record) { expectEmpty(record.ns_binding); }

void expectFresh(const WhatType &record) {
  expectEmpty(record.include);
  expectEmpty(record.exclude);
  expectEmpty(record._any.items);
}

template <class T> void expectFreshExpression(const T &record) {
  EXPECT_EQ(record.m, 0u);
  expectEmpty(record.value);
  EXPECT_EQ(record.type, TypeType_xpath) << "set, though its bit is clear";
  expectEmpty(record._anyAttr.items);
  expectEmpty(record.nsDecls.items);
}

TEST(InitRecord, NSBinding) {
  Context ctx;
  Record<NSBinding> record(ctx);
  expectEmpty(record->prefix);
  expectEmpty(record->urn);
}

TEST(InitRecord, Lists) {
  Context ctx;
  expectFresh(*Record<NSBindings>(ctx));
  expectFresh(*Record<WhatType>(ctx));
  Record<TriggerType> trigger(ctx);
  for (const RtxList *list : {&trigger->changed, &trigger->added, &trigger->removed, &trigger->_any.items})
    expectEmpty(*list);
}

TEST(InitRecord, ExpressionsHaveATypeThoughItIsAbsent) {
  Context ctx;
  expectFreshExpression(*Record<InclType>(ctx));
  expectFreshExpression(*Record<ExclType>(ctx));
}

TEST(InitRecord, AmountOfAChangeStaysAsItWas) {
  Context ctx;
  Record<ChangedType> record(ctx);
  EXPECT_EQ(record->m, 0u);
  for (const RtxXmlString *text : {&record->value, &record->from, &record->to})
    expectEmpty(*text);
  EXPECT_EQ(support::bytesOf(record->by), std::string(sizeof record->by, static_cast<char>(pattern)));
  expectEmpty(record->_anyAttr.items);
  expectEmpty(record->nsDecls.items);
}

TEST(InitRecord, FiltersAreEnabledAndNotRemovedThoughNeitherIsPresent) {
  Context ctx;
  Record<FilterType> record(ctx);
  EXPECT_EQ(record->m, 0u);
  expectFresh(record->what);
  expectEmpty(record->trigger);
  expectEmpty(record->_any.items);
  for (const RtxXmlString *text : {&record->id, &record->uri, &record->domain})
    expectEmpty(*text);
  EXPECT_FALSE(record->remove_);
  EXPECT_TRUE(record->enabled);
  expectEmpty(record->_anyAttr.items);
}

TEST(InitRecord, FilterSet) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  EXPECT_EQ(record->m, 0u);
  expectFresh(record->ns_bindings);
  expectEmpty(record->filter);
  expectEmpty(record->package_);
  expectEmpty(record->_anyAttr.items);
}

template <class T> class EveryRecord : public testing::Test {};
TYPED_TEST_SUITE(EveryRecord, AllTypes);

TYPED_TEST(EveryRecord, InitRefusesAnUnusableContextAndLeavesTheRecord) {
  RuntimeContext none{};
  for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &none}) {
    alignas(TypeParam) unsigned char storage[sizeof(TypeParam)];
    unsigned char before[sizeof storage];
    std::memset(storage, 0xA5, sizeof storage);
    std::memcpy(before, storage, sizeof storage);
    EXPECT_EQ(Functions<TypeParam>::init(ctx, reinterpret_cast<TypeParam *>(storage)), STATUS_BAD_CONTEXT);
    EXPECT_EQ(std::memcmp(storage, before, sizeof storage), 0);
  }
}

TYPED_TEST(EveryRecord, InitTakesNothingFromTheHeapAndRecordsNothing) {
  Context ctx;
  Record<TypeParam> record(ctx);
  EXPECT_EQ(blocks(ctx), 0u);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

// ---- Releasing -----------------------------------------------------------------------------------------------------

// The blocks that a filled record holds.
template <class T> size_t blocksOfFilled(RuntimeContext *ctx) {
  const size_t before = blocks(ctx);
  CompleteRecord<T> record(ctx);
  return blocks(ctx) - before;
}

TYPED_TEST(EveryRecord, ReleaseGivesBackAllThatAFunctionOwns) {
  Context ctx;
  support::HeapBalance balance(ctx);
  EXPECT_GT(blocksOfFilled<TypeParam>(ctx), 0u);
}

TYPED_TEST(EveryRecord, ReleaseTakesAFreshRecord) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record<TypeParam> record(ctx);
}

TEST(ReleaseRecord, TextsOfBindingsStay) {
  Context ctx;
  CompleteRecord<NSBindings> record(ctx);
  const auto *first = static_cast<NSBinding *>(record->ns_binding.head->data);
  const auto *second = static_cast<NSBinding *>(record->ns_binding.tail->data);
  const char *const texts[] = {first->prefix.value, first->urn.value, second->prefix.value, second->urn.value};
  QxMemFree_NSBindings(ctx, record);
  EXPECT_EQ(blocks(ctx), 4u);
  expectFresh(*record);
  EXPECT_STREQ(texts[0], "p");
  EXPECT_STREQ(texts[1], "urn:p");
  EXPECT_STREQ(texts[2], "q");
  EXPECT_STREQ(texts[3], "urn:q");
  for (const char *text : texts)
    rtxMemHeapFreePtr(ctx, text);
  EXPECT_EQ(blocks(ctx), 0u);
}

TEST(ReleaseRecord, SetReleasesItsBindingsButNotTheirTexts) {
  Context ctx;
  CompleteRecord<FilterSetType> record(ctx);
  QxMemFree_FilterSetType(ctx, record);
  record.owned = false;
  EXPECT_EQ(blocks(ctx), 4u);
}

TEST(ReleaseRecord, ChangeReleasesTextsByTheirBits) {
  for (uint32_t m = 0; m < 8; ++m) {
    Context ctx;
    CompleteRecord<ChangedType> record(ctx);
    record->m = m;
    QxMemFree_ChangedType(ctx, record);
    record.owned = false;
    EXPECT_EQ(blocks(ctx), (m & 1 ? 0u : 1u) + (m & 2 ? 0u : 1u));
    if ((m & 1) == 0) {
      EXPECT_STREQ(record->from.value, "CLOSED");
    }
    if ((m & 2) == 0) {
      EXPECT_STREQ(record->to.value, "OPEN");
    }
    EXPECT_EQ(record->m, m);
  }
}

TEST(ReleaseRecord, FilterReleasesMembersByTheirBits) {
  for (uint32_t m = 0; m < 32; ++m) {
    Context ctx;
    const size_t ofWhat = blocksOfFilled<WhatType>(ctx);
    CompleteRecord<FilterType> record(ctx);
    record->m = m;
    QxMemFree_FilterType(ctx, record);
    record.owned = false;
    EXPECT_EQ(blocks(ctx), (m & 1 ? 0 : ofWhat) + (m & 2 ? 0u : 1u) + (m & 4 ? 0u : 1u)) << m;
    if ((m & 1) == 0) {
      EXPECT_EQ(record->what.include.count, 2u);
    }
    EXPECT_EQ(record->m, m);
  }
}

TEST(ReleaseRecord, SetReleasesMembersByTheirBits) {
  for (uint32_t m = 0; m < 4; ++m) {
    Context ctx;
    const size_t ofBindings = blocksOfFilled<NSBindings>(ctx);
    CompleteRecord<FilterSetType> record(ctx);
    record->m = m;
    QxMemFree_FilterSetType(ctx, record);
    record.owned = false;
    EXPECT_EQ(blocks(ctx), (m & 1 ? 4 : ofBindings) + (m & 2 ? 0u : 1u)) << m;
    EXPECT_EQ(record->m, m);
  }
}

template <class T> void expectExpressionReleased() {
  for (uint32_t m : {0u, 1u}) {
    Context ctx;
    CompleteRecord<T> record(ctx);
    const void *const value = record->value.value;
    record->m = m;
    Functions<T>::release(ctx, record);
    record.owned = false;
    EXPECT_EQ(blocks(ctx), 0u) << "the bit is that of the type, which owns nothing";
    EXPECT_EQ(record->m, m);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(record->value.value), reinterpret_cast<uintptr_t>(value)) << "not cleared";
    expectEmpty(record->_anyAttr.items);
    expectEmpty(record->nsDecls.items);
  }
}

TEST(ReleaseRecord, ExpressionsReleaseAllWhateverTheBit) {
  expectExpressionReleased<InclType>();
  expectExpressionReleased<ExclType>();
}

TEST(ReleaseRecord, ClearsNoTextAndNoScalar) {
  Context ctx;
  CompleteRecord<FilterType> record(ctx);
  const auto address = [](const RtxXmlString &text) { return reinterpret_cast<uintptr_t>(text.value); };
  const uintptr_t before[] = {address(record->id), address(record->uri), address(record->domain)};
  QxMemFree_FilterType(ctx, record);
  record.owned = false;
  EXPECT_EQ(address(record->id), before[0]);
  EXPECT_EQ(address(record->uri), before[1]);
  EXPECT_EQ(address(record->domain), before[2]);
  EXPECT_TRUE(record->remove_);
  EXPECT_FALSE(record->enabled);
}

// ---- Appending -----------------------------------------------------------------------------------------------------

TEST(AppendBinding, ReturnsTheNumberOfBindings) {
  Context ctx;
  Record<NSBindings> record(ctx);
  for (uint32_t count = 1; count <= 3; ++count) {
    auto *binding = newBlock<NSBinding>(ctx);
    QxInit_NSBinding(ctx, binding);
    binding->prefix = xmlString(ctx, std::to_string(count).c_str());
    EXPECT_EQ(QxNSBindings_Append(ctx, record, binding), count);
    EXPECT_EQ(record->ns_binding.tail->data, binding);
  }
  EXPECT_EQ(dump(*record), "bindings{1=- 2=- 3=-}");
}

TEST(AppendBinding, WithoutStorageTheNumberStaysTheSame) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 1; });
  NSBindings record;
  NSBinding binding;
  ASSERT_EQ(QxInit_NSBindings(ctx, &record), 0);
  ASSERT_EQ(QxInit_NSBinding(ctx, &binding), 0);
  EXPECT_EQ(QxNSBindings_Append(ctx, &record, &binding), 0u);
  expectFresh(record);
  EXPECT_EQ(rtxErrCount(ctx), 0u) << "nothing is recorded";
}

// ---- The words for expressions -------------------------------------------------------------------------------------

TEST(TypeWords, OfEveryCode) {
  EXPECT_STREQ(QxTypeType_ToString(TypeType_xpath), "xpath");
  EXPECT_STREQ(QxTypeType_ToString(TypeType_namespace), "namespace");
  for (uint32_t code = 2; code <= 65535; ++code)
    EXPECT_STREQ(QxTypeType_ToString(code), "_UNKNOWN_") << code;
}

TEST(TypeWords, OnlyTheLowSixteenBitsOfACodeCount) {
  EXPECT_STREQ(QxTypeType_ToString(65536), "xpath");
  EXPECT_STREQ(QxTypeType_ToString(65537), "namespace");
  EXPECT_STREQ(QxTypeType_ToString(UINT32_MAX), "_UNKNOWN_");
}

TEST(TypeWords, AreFoundByTheirExactBytes) {
  struct Case {
    const char *text;
    size_t length;
    int status;
    uint16_t code;
  };
  constexpr uint16_t untouched = 4711;
  constexpr Case cases[] = {
      {"xpath", 5, 0, 0},
      {"namespace", 9, 0, 1},
      {"xpath/a", 5, 0, 0}, // no NUL is looked for
      {"xpath", 4, STATUS_ENUM_NOT_FOUND, untouched},
      {"xpath", 6, STATUS_ENUM_NOT_FOUND, untouched},
      {"namespaces", 10, STATUS_ENUM_NOT_FOUND, untouched},
      {"XPATH", 5, STATUS_ENUM_NOT_FOUND, untouched},
      {"Namespace", 9, STATUS_ENUM_NOT_FOUND, untouched},
      {" xpath", 6, STATUS_ENUM_NOT_FOUND, untouched},
      {"regex", 5, STATUS_ENUM_NOT_FOUND, untouched},
      {"_UNKNOWN_", 9, STATUS_ENUM_NOT_FOUND, untouched},
      {"", 0, STATUS_ENUM_NOT_FOUND, untouched},
      {nullptr, 0, STATUS_ENUM_NOT_FOUND, untouched},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.text) + " of " + std::to_string(c.length));
    uint16_t code = untouched;
    EXPECT_EQ(QxTypeType_ToEnum(c.text, c.length, &code), c.status);
    EXPECT_EQ(code, c.code);
    EXPECT_EQ(QxTypeType_ToEnum(c.text, c.length, nullptr), c.status) << "without a place for the code";
  }
}

// ---- Printing ------------------------------------------------------------------------------------------------------

const std::map<std::string, std::string> linesOfFilled = {
    {"NSBinding", "r = <null>\n"
                  "r.prefix = \"p\"\n"
                  "r.urn = \"urn:p\"\n"},
    {"NSBindings", "r.ns_binding[0] = <null>\n"
                   "r.ns_binding[0].prefix = \"p\"\n"
                   "r.ns_binding[0].urn = \"urn:p\"\n"
                   "r.ns_binding[1] = <null>\n"
                   "r.ns_binding[1].prefix = \"q\"\n"
                   "r.ns_binding[1].urn = \"urn:q\"\n"},
    {"InclType", "r = \"urn:p\"\n"
                 "r.xmlns:v = \"urn:v\"\n"
                 "r.type = \"namespace\"\n"
                 "r._anyAttr[0] = v:k=\"1\"\n"
                 "r._anyAttr[1] = l=\"2\"\n"},
    {"ExclType", "r = \"/p:a/p:b\"\n"
                 "r.xmlns:v = \"urn:v\"\n"
                 "r.type = \"xpath\"\n"
                 "r._anyAttr[0] = v:k=\"1\"\n"
                 "r._anyAttr[1] = l=\"2\"\n"},
    {"WhatType", "r.include[0] = \"urn:p\"\n"
                 "r.include[0].xmlns:v = \"urn:v\"\n"
                 "r.include[0].type = \"namespace\"\n"
                 "r.include[0]._anyAttr[0] = v:k=\"1\"\n"
                 "r.include[0]._anyAttr[1] = l=\"2\"\n"
                 "r.include[1] = \"/p:a\"\n"
                 "r.include[1].type = \"xpath\"\n"
                 "r.exclude[0] = \"/p:a/p:b\"\n"
                 "r.exclude[0].xmlns:v = \"urn:v\"\n"
                 "r.exclude[0].type = \"xpath\"\n"
                 "r.exclude[0]._anyAttr[0] = v:k=\"1\"\n"
                 "r.exclude[0]._anyAttr[1] = l=\"2\"\n"
                 "r[0] = \"<x:f xmlns:x=\\\"urn:x\\\"/>\"\n"},
    {"ChangedType", "r = \"/p:a/p:c\"\n"
                    "r.xmlns:v = \"urn:v\"\n"
                    "r.from = \"CLOSED\"\n"
                    "r.to = \"OPEN\"\n"
                    "r.by = 2.5\n"
                    "r._anyAttr[0] = v:k=\"1\"\n"
                    "r._anyAttr[1] = l=\"2\"\n"},
    {"TriggerType", "r.changed[0] = \"/p:a/p:c\"\n"
                    "r.changed[0].xmlns:v = \"urn:v\"\n"
                    "r.changed[0].from = \"CLOSED\"\n"
                    "r.changed[0].to = \"OPEN\"\n"
                    "r.changed[0].by = 2.5\n"
                    "r.changed[0]._anyAttr[0] = v:k=\"1\"\n"
                    "r.changed[0]._anyAttr[1] = l=\"2\"\n"
                    "r.added[0] = \"/p:d\"\n"
                    "r.added[1] = \"/p:e\"\n"
                    "r.removed[0] = \"/p:f\"\n"
                    "r[0] = \"<x:g xmlns:x=\\\"urn:x\\\">t</x:g>\"\n"},
};

// The lines of a type under another name than "r".
std::string linesUnder(const std::string &name, const std::string &type) {
  std::string all;
  std::string rest = linesOfFilled.at(type);
  for (size_t end = 0; (end = rest.find('\n')) != std::string::npos; rest.erase(0, end + 1))
    all += name + rest.substr(1, end);
  return all;
}

std::string linesOf(const std::string &type) {
  if (type == "FilterType")
    return linesUnder("r.what", "WhatType") + linesUnder("r.trigger[0]", "TriggerType") +
           "r[0] = \"<x:h xmlns:x=\\\"urn:x\\\"/>\"\n"
           "r.id = \"a\"\n"
           "r.uri = \"sip:a@example.com\"\n"
           "r.domain = \"example.com\"\n"
           "r.remove_ = true\n"
           "r.enabled = false\n"
           "r._anyAttr[0] = k=\"v\"\n";
  if (type == "FilterSetType")
    return linesUnder("r.ns_bindings", "NSBindings") + linesUnder("r.filter[0].what", "WhatType") +
           linesUnder("r.filter[0].trigger[0]", "TriggerType") +
           "r.filter[0][0] = \"<x:h xmlns:x=\\\"urn:x\\\"/>\"\n"
           "r.filter[0].id = \"a\"\n"
           "r.filter[0].uri = \"sip:a@example.com\"\n"
           "r.filter[0].domain = \"example.com\"\n"
           "r.filter[0].remove_ = true\n"
           "r.filter[0].enabled = false\n"
           "r.filter[0]._anyAttr[0] = k=\"v\"\n"
           "r.filter[1].id = \"b\"\n"
           "r.filter[1].remove_ = false\n"
           "r.filter[1].enabled = true\n"
           "r.package_ = \"presence\"\n"
           "r._anyAttr[0] = k=\"v\"\n";
  return linesOfFilled.at(type);
}

TYPED_TEST(EveryRecord, PrintsEachMemberOnALineInOrder) {
  Context ctx;
  CompleteRecord<TypeParam> record(ctx);
  EXPECT_EQ(printed<TypeParam>("r", record), linesOf(Functions<TypeParam>::name));
}

TYPED_TEST(EveryRecord, PrintsOnlyWhatAFreshRecordAlwaysHas) {
  const std::map<std::string, std::string> lines = {
      {"NSBinding", "r = <null>\nr.prefix = <null>\nr.urn = <null>\n"},
      {"NSBindings", ""},
      {"InclType", "r = <null>\nr.type = \"xpath\"\n"},
      {"ExclType", "r = <null>\nr.type = \"xpath\"\n"},
      {"WhatType", ""},
      {"ChangedType", "r = <null>\n"},
      {"TriggerType", ""},
      {"FilterType", "r.id = <null>\nr.remove_ = false\nr.enabled = true\n"},
      {"FilterSetType", ""},
  };
  Context ctx;
  Record<TypeParam> record(ctx);
  EXPECT_EQ(printed<TypeParam>("r", record), lines.at(Functions<TypeParam>::name));
}

TYPED_TEST(EveryRecord, CutsLongNames) {
  constexpr size_t longest = 511;
  Context ctx;
  CompleteRecord<TypeParam> record(ctx);
  for (size_t length : {480u, 500u, 511u, 512u, 5000u}) {
    const std::string name(length, 'n');
    std::string expected;
    std::string rest = linesOf(Functions<TypeParam>::name);
    for (size_t end = 0; (end = rest.find('\n')) != std::string::npos; rest.erase(0, end + 1)) {
      const std::string line = rest.substr(0, end);
      // Declarations are named by the runtime, behind the name that it is given; the name of the record itself is
      // whole.
      const size_t nameEnd = std::min(line.find(".xmlns"), line.find(" = "));
      std::string lineName = name + line.substr(1, nameEnd - 1);
      if (nameEnd > 1) lineName = lineName.substr(0, longest);
      expected += lineName + line.substr(nameEnd) + "\n";
    }
    EXPECT_EQ(printed<TypeParam>(name.c_str(), record), expected);
  }
}

TYPED_TEST(EveryRecord, PrintTakesAnyNameAsText) {
  Context ctx;
  CompleteRecord<TypeParam> record(ctx);
  const std::string lines = printed<TypeParam>("%s%n%d", record);
  EXPECT_TRUE(lines.starts_with("%s%n%d")) << lines;
}

TEST(PrintRecord, TypeOfAnExpressionShowsWithoutItsBit) {
  Context ctx;
  Record<InclType> include(ctx);
  include->type = TypeType_namespace;
  EXPECT_EQ(printed<InclType>("r", include), "r = <null>\nr.type = \"namespace\"\n");
  Record<ExclType> exclude(ctx);
  exclude->type = 2;
  EXPECT_EQ(printed<ExclType>("r", exclude), "r = <null>\nr.type = \"_UNKNOWN_\"\n");
}

TEST(PrintRecord, ChangeShowsMembersByTheirBits) {
  Context ctx;
  Record<ChangedType> record(ctx);
  record->from = xmlString(ctx, "f");
  record->to = xmlString(ctx, "t");
  record->by = -3;
  const char *const lines[] = {"r.from = \"f\"\n", "r.to = \"t\"\n", "r.by = -3\n"};
  for (uint32_t m = 0; m < 8; ++m) {
    std::string expected = "r = <null>\n";
    for (uint32_t i = 0; i < 3; ++i)
      if ((m >> i & 1) != 0) expected += lines[i];
    record->m = m;
    EXPECT_EQ(printed<ChangedType>("r", record), expected);
  }
  record->m = 7;
}

TEST(PrintRecord, FilterShowsMembersByTheirBitsButTheTwoSwitchesAlways) {
  Context ctx;
  Record<FilterType> record(ctx);
  append<InclType>(ctx, record->what.include);
  record->uri = xmlString(ctx, "u");
  record->domain = xmlString(ctx, "d");
  record->remove_ = true;
  record->enabled = false;
  for (uint32_t m = 0; m < 32; ++m) {
    record->m = m;
    std::string expected = m & 1 ? "r.what.include[0] = <null>\nr.what.include[0].type = \"xpath\"\n" : "";
    expected += "r.id = <null>\n";
    if ((m & 2) != 0) expected += "r.uri = \"u\"\n";
    if ((m & 4) != 0) expected += "r.domain = \"d\"\n";
    EXPECT_EQ(printed<FilterType>("r", record), expected + "r.remove_ = true\nr.enabled = false\n");
  }
  record->m = 31;
}

TEST(PrintRecord, SetShowsMembersByTheirBits) {
  Context ctx;
  Record<FilterSetType> record(ctx);
  append<NSBinding>(ctx, record->ns_bindings.ns_binding);
  record->package_ = xmlString(ctx, "p");
  const std::string bindings = "r.ns_bindings.ns_binding[0] = <null>\nr.ns_bindings.ns_binding[0].prefix = <null>\n"
                               "r.ns_bindings.ns_binding[0].urn = <null>\n";
  for (uint32_t m = 0; m < 4; ++m) {
    record->m = m;
    EXPECT_EQ(printed<FilterSetType>("r", record), (m & 1 ? bindings : "") + (m & 2 ? "r.package_ = \"p\"\n" : ""));
  }
  record->m = 3;
}

TEST(PrintRecord, DefaultDeclarationHasNoPrefix) {
  Context ctx;
  Record<ChangedType> record(ctx);
  declare(ctx, record->nsDecls, nullptr, "urn:d");
  EXPECT_EQ(printed<ChangedType>("r", record), "r = <null>\nr.xmlns = \"urn:d\"\n");
}

TEST(PrintRecord, CodeIsPrintedAsItsWord) {
  const auto word = [](uint32_t code) {
    return support::captureStdout([&] { EXPECT_EQ(QxPrint_TypeType("r.t", code), 0); });
  };
  EXPECT_EQ(word(0), "r.t = \"xpath\"\n");
  EXPECT_EQ(word(1), "r.t = \"namespace\"\n");
  EXPECT_EQ(word(2), "r.t = \"_UNKNOWN_\"\n");
  EXPECT_EQ(word(65537), "r.t = \"namespace\"\n");
}

} // namespace
