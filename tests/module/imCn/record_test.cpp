// Initialising, releasing and printing a 3GPP IMS body.
#include "body.h"
#include "contextCheck.h"
#include "lists.h"

#include <algorithm>

using namespace body;
using support::Context;
using support::expectEmpty;
using support::FailingCheck;
using support::printed;
using support::untouched;

namespace {

void expectFresh(const tAlternativeService &record) {
  expectEmpty(record.type);
  expectEmpty(record.reason);
  expectEmpty(record.anyElems.items);
  expectEmpty(record._anyAttr.items);
}

void expectFresh(const tIMS3GPP_1 &record) {
  EXPECT_EQ(record.t, 0);
  const auto *bytes = reinterpret_cast<const unsigned char *>(&record.u);
  EXPECT_EQ(std::count(bytes, bytes + sizeof record.u, 0), static_cast<ptrdiff_t>(sizeof record.u))
      << "all of the union is zero";
}

void expectFresh(const tIMS3GPP &record) {
  expectFresh(record._choice1);
  expectEmpty(record.anyElems.items);
  EXPECT_TRUE(isUnset(record.version)) << "has no default";
  expectEmpty(record._anyAttr.items);
}

// ---- Initialising ---------------------------------------------------------------------------------------------

TEST(InitRecord, MakesEverythingEmptyButTheVersion) {
  forEachType([]<typename T>() {
    Context ctx;
    Record<T> record(ctx);
    expectFresh(*record);
  });
}

TEST(InitRecord, RefusesAnUnusableContextAndLeavesTheRecord) {
  forEachType([]<typename T>() {
    RuntimeContext none{};
    for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &none}) {
      auto record = support::patterned<T>();
      EXPECT_EQ(Functions<T>::init(ctx, &record), STATUS_BAD_CONTEXT);
      EXPECT_TRUE(untouched(record));
    }
  });
}

template <typename T> std::string placeOfFailingInit() {
  Context ctx;
  auto record = support::patterned<T>();
  {
    FailingCheck failing(-777);
    EXPECT_EQ(Functions<T>::init(ctx, &record), -777);
  }
  EXPECT_TRUE(untouched(record));
  if (rtxErrCount(ctx) != 1) return "not recorded once";
  const RtxError &error = *rtxErrAt(ctx, 0);
  EXPECT_EQ(error.status, -777);
  EXPECT_EQ(error.siteCount, 1u);
  return error.sites[0].path + ":"s + std::to_string(error.sites[0].line);
}

TEST(InitRecord, FailureIsRecordedAtAKnownPlace) {
  const std::string file = "xmlAddOns/addons/IMS/ImCn/QxXmlImCn:";
  EXPECT_EQ(placeOfFailingInit<tAlternativeService>(), file + "33");
  EXPECT_EQ(placeOfFailingInit<tIMS3GPP_1>(), file + "62");
  EXPECT_EQ(placeOfFailingInit<tIMS3GPP>(), file + "86");
}

// ---- Releasing ------------------------------------------------------------------------------------------------

TEST(ReleaseRecord, GivesBackAllThatTheRecordHolds) {
  Context ctx;
  support::HeapBalance balance(ctx);
  {
    Record<tIMS3GPP> record(ctx);
    fillCompletely(ctx, *record);
    EXPECT_GT(support::heapStats(ctx).blocks, 20u);
  }
  Record<tIMS3GPP> record(ctx);
  chooseInfo(ctx, record->_choice1, "info");
  EXPECT_EQ(support::heapStats(ctx).blocks, 1u);
}

TEST(ReleaseRecord, TakesAFreshRecord) {
  forEachType([]<typename T>() {
    Context ctx;
    Record<T> record(ctx);
    EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
  });
}

TEST(ReleaseRecord, EntriesWithoutATextAreFreedToo) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record<tAlternativeService> record(ctx);
  addForeign(ctx, record->anyElems, nullptr);
  addAttribute(ctx, record->_anyAttr, nullptr, nullptr);
}

TEST(ReleaseRecord, SelectorSaysWhatIsFreedOfAChoice) {
  // An alternative service whose texts are freed only if the selector names it.
  for (uint16_t selector : {uint16_t{0}, uint16_t{1}, uint16_t{3}, uint16_t{5}, uint16_t{65535}}) {
    SCOPED_TRACE(selector);
    Context ctx;
    Record<tIMS3GPP_1> record(ctx);
    chooseAlternative(ctx, *record, "t", "r");
    record->t = selector;
    record.owned = false;
    QxMemFree_tIMS3GPP_1(ctx, record);
    EXPECT_EQ(support::heapStats(ctx).blocks, selector == 1 ? 0u : 2u);
    EXPECT_EQ(record->t, selector);
    EXPECT_EQ(rtxErrCount(ctx), 0u) << "nothing is reported";
  }
  // Both alternatives begin with a text: of the other selector only that one text goes.
  Context ctx;
  Record<tIMS3GPP_1> record(ctx);
  chooseAlternative(ctx, *record, "t", "r");
  record->t = 2;
  record.owned = false;
  QxMemFree_tIMS3GPP_1(ctx, record);
  EXPECT_EQ(support::heapStats(ctx).blocks, 1u);
}

TEST(ReleaseRecord, ClearsNoText) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  const auto address = [](const char *text) { return reinterpret_cast<uintptr_t>(text); };
  const tAlternativeService &service = record->_choice1.u.alternative_service;
  const uintptr_t type = address(service.type.value);
  const uintptr_t reason = address(service.reason.value);
  record.owned = false;
  QxMemFree_tIMS3GPP(ctx, record);
  EXPECT_EQ(record->_choice1.t, 1);
  EXPECT_EQ(address(service.type.value), type);
  EXPECT_EQ(address(service.reason.value), reason);
  EXPECT_EQ(record->version, 1.5);
  expectEmpty(service.anyElems.items);
  expectEmpty(service._anyAttr.items);
  expectEmpty(record->anyElems.items);
  expectEmpty(record->_anyAttr.items);
}

// ---- Printing -------------------------------------------------------------------------------------------------

TEST(PrintRecord, AllMembersInOrder) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  fillCompletely(ctx, *record);
  EXPECT_EQ(printed("r", *record), "r._choice1.t = 1\n"
                                   "r._choice1.u.alternative_service.type = \"emergency\"\n"
                                   "r._choice1.u.alternative_service.reason = \"a<b\"\n"
                                   "r._choice1.u.alternative_service[0] = \"<action>emergency-registration</action>\"\n"
                                   "r._choice1.u.alternative_service[1] = \"<x:f xmlns:x=\\\"u\\\">1 &lt; 2</x:f>\"\n"
                                   "r._choice1.u.alternative_service._anyAttr[0] = k=\"1\"\n"
                                   "r._choice1.u.alternative_service._anyAttr[1] = l=\"2\"\n"
                                   "r[0] = \"<y/>\"\n"
                                   "r[1] = \"<z/>\"\n"
                                   "r.version = 1.5\n"
                                   "r._anyAttr[0] = k=\"3\"\n"
                                   "r._anyAttr[1] = l=\"4\"\n");
}

TEST(PrintRecord, ServiceInfo) {
  Context ctx;
  Record<tIMS3GPP> record(ctx);
  chooseInfo(ctx, record->_choice1, "info");
  record->version = 1;
  EXPECT_EQ(printed("r", *record), "r._choice1.t = 2\nr._choice1.u.service_info = \"info\"\nr.version = 1\n");
}

TEST(PrintRecord, SelectorThatNamesNothingIsALineAlone) {
  Context ctx;
  for (uint16_t selector : {uint16_t{0}, uint16_t{3}, uint16_t{65535}}) {
    Record<tIMS3GPP> record(ctx);
    record->_choice1.t = selector;
    record->version = 2.25;
    EXPECT_EQ(printed("r", *record), "r._choice1.t = " + std::to_string(selector) + "\nr.version = 2.25\n");
    EXPECT_EQ(printed("c", record->_choice1), "c.t = " + std::to_string(selector) + "\n");
  }
}

TEST(PrintRecord, AbsentTextsAreShownAsNull) {
  Context ctx;
  Record<tAlternativeService> record(ctx);
  EXPECT_EQ(printed("a", *record), "a.type = <null>\na.reason = <null>\n");
  addForeign(ctx, record->anyElems, nullptr);
  EXPECT_EQ(printed("a", *record), "a.type = <null>\na.reason = <null>\na[0] = <null>\n");
  Record<tIMS3GPP_1> choice(ctx);
  choice->t = tIMS3GPP_1_service_info;
  EXPECT_EQ(printed("c", *choice), "c.t = 2\nc.u.service_info = <null>\n");
}

TEST(PrintRecord, CutsLongNames) {
  Context ctx;
  Record<tAlternativeService> record(ctx);
  record->type = xmlString(ctx, "t");
  addForeign(ctx, record->anyElems, "<x/>");
  addAttribute(ctx, record->_anyAttr, "k", "v");
  Record<tIMS3GPP> root(ctx);
  root->version = 1;
  chooseInfo(ctx, root->_choice1, "i");
  for (size_t length = 480; length <= 520; ++length) {
    const std::string name(length, 'n');
    const auto cut = [&](const char *suffix) { return (name + suffix).substr(0, 511); };
    EXPECT_EQ(printed(name.c_str(), *record), cut(".type") + " = \"t\"\n" + cut(".reason") + " = <null>\n" +
                                                  cut("[0]") + " = \"<x/>\"\n" + cut("._anyAttr[0]") + " = k=\"v\"\n");
    EXPECT_EQ(printed(name.c_str(), *root), cut("._choice1") + ".t = 2\n" + cut("._choice1.u.service_info") +
                                                " = \"i\"\n" + cut(".version") + " = 1\n");
  }
}

TEST(PrintRecord, TakesAnyNameAsText) {
  Context ctx;
  Record<tIMS3GPP_1> record(ctx);
  EXPECT_EQ(printed("%s%n%d", *record), "%s%n%d.t = 0\n");
}

} // namespace
