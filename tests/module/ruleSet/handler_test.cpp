// The handlers of every type, driven by hand, as a host may drive them.
#include "drivenHandler.h"
#include "reading.h"

#include <array>
#include <cstring>
#include <initializer_list>
#include <type_traits>

using namespace reading;
using support::Context;
using support::Functions;

namespace {

// ---- The handlers of the module -------------------------------------------------------------------------------

// Those of a type behind untyped pointers.
template <typename Handler> struct Callbacks {
  const char *type;
  int (*initRecord)(RuntimeContext *ctx, void *record);
  int (*init)(RuntimeContext *ctx, Handler *handler, void *record, int32_t level);
  RtSaxStartElement start;
  RtSaxCharacters characters;
  RtSaxEndElement end;
  bool delegates; // has children with handlers of their own
};

template <typename T, typename Kind> constexpr Callbacks<typename Kind::Handler> callbacksOf(bool delegates) {
  return {
      .type = Functions<T>::name,
      .initRecord = [](RuntimeContext *ctx, void *record) { return Functions<T>::init(ctx, static_cast<T *>(record)); },
      .init = [](RuntimeContext *ctx, typename Kind::Handler *handler, void *record,
                 int32_t level) { return Kind::init(ctx, handler, static_cast<T *>(record), level); },
      .start = Kind::start,
      .characters = Kind::characters,
      .end = Kind::end,
      .delegates = delegates};
}

template <typename T> constexpr auto fillingOf(bool delegates) {
  return callbacksOf<T, typename Functions<T>::Filling>(delegates);
}
template <typename T> constexpr auto checkingOf(bool delegates) {
  return callbacksOf<T, typename Functions<T>::Checking>(delegates);
}

constexpr Callbacks<SaxTypeHandler> filling[] = {fillingOf<cp_oneType>(true),        fillingOf<cp_exceptType>(false),
                                                 fillingOf<cp_manyType>(true),       fillingOf<cp_identityType>(true),
                                                 fillingOf<cp_sphereType>(false),    fillingOf<cp_validityType>(false),
                                                 fillingOf<cp_conditionsType>(true), fillingOf<cp_extensibleType>(true),
                                                 fillingOf<cp_ruleType>(true),       fillingOf<cp__ruleset>(true)};

constexpr Callbacks<VsaxTypeHandler> checking[] = {
    checkingOf<cp_oneType>(false),       checkingOf<cp_exceptType>(false),     checkingOf<cp_manyType>(true),
    checkingOf<cp_identityType>(true),   checkingOf<cp_sphereType>(false),     checkingOf<cp_validityType>(false),
    checkingOf<cp_conditionsType>(true), checkingOf<cp_extensibleType>(false), checkingOf<cp_ruleType>(true),
    checkingOf<cp__ruleset>(true)};

template <typename Handler> const auto &allFunctions() {
  if constexpr (std::is_same_v<Handler, SaxTypeHandler>) {
    return filling;
  } else {
    return checking;
  }
}

template <typename Handler> const Callbacks<Handler> &functionsOf(std::string_view type) {
  for (const Callbacks<Handler> &functions : allFunctions<Handler>())
    if (functions.type == type) return functions;
  ADD_FAILURE() << "there is no type " << type;
  return allFunctions<Handler>()[0];
}

// Attributes as a reader hands them out: copies that may be written to.
class Attributes {
public:
  Attributes(std::initializer_list<std::string> namesAndValues) : texts(namesAndValues) {
    for (const std::string &text : texts)
      pointers.push_back(text.c_str());
    pointers.insert(pointers.end(), 2, nullptr);
  }
  operator const char * const *() const { return pointers.data(); }
  const std::string &text(size_t index) const { return texts[index]; }

private:
  std::vector<std::string> texts;
  std::vector<const char *> pointers;
};

// A handler of one type and the record that it fills, which goes with the context's heap.
template <typename Handler> class Driven {
public:
  Driven(RuntimeContext *context, std::string_view type, int32_t level = 0)
      : functions(functionsOf<Handler>(type)), ctx(context) {
    std::memset(&handler, 0xA5, sizeof handler);
    storage.fill(0xA5);
    EXPECT_EQ(functions.initRecord(ctx, storage.data()), 0);
    initStatus = functions.init(ctx, &handler, storage.data(), level);
  }
  ~Driven() { rtxMemHeapFreePtr(ctx, handler.delegateStorage); }

  int start(const char *name, const char *const *attributes = nullptr) {
    const char *colon = std::strchr(name, ':');
    return functions.start(&handler, colon == nullptr ? name : colon + 1, name, attributes);
  }
  int text(std::string_view bytes) { return functions.characters(&handler, bytes.data(), bytes.size()); }
  int end(const char *name) {
    const char *colon = std::strchr(name, ':');
    return functions.end(&handler, colon == nullptr ? name : colon + 1, name);
  }
  template <typename Record> Record &record() { return *reinterpret_cast<Record *>(storage.data()); }

  const Callbacks<Handler> &functions;
  Handler handler;
  alignas(std::max_align_t) std::array<unsigned char, 256> storage;
  int initStatus = 0;

private:
  RuntimeContext *ctx;
};

template <typename Kind> class Handlers : public testing::Test {
protected:
  static constexpr bool fills = std::is_same_v<Kind, SaxTypeHandler>;
  void SetUp() override {
    // What the context keeps for good is taken before anything is measured.
    ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  }
  Context ctx;
};

struct KindNames {
  template <typename Kind> static std::string GetName(int) {
    return std::is_same_v<Kind, SaxTypeHandler> ? "Filling" : "Checking";
  }
};
using Kinds = testing::Types<SaxTypeHandler, VsaxTypeHandler>;
TYPED_TEST_SUITE(Handlers, Kinds, KindNames);

// ---- All types ------------------------------------------------------------------------------------------------

TYPED_TEST(Handlers, InitPreparesEverything) {
  for (const auto &functions : allFunctions<TypeParam>()) {
    SCOPED_TRACE(functions.type);
    ASSERT_EQ(rtxMemBufAppend(&this->ctx->reader->text, "left over", 9), 0);
    Driven<TypeParam> driven(this->ctx, functions.type, 3);
    EXPECT_EQ(driven.initStatus, 0);
    support::expectFresh<TypeParam>(this->ctx, driven.handler, {functions.start, functions.characters, functions.end},
                                    driven.storage.data(), 3);
  }
}

TYPED_TEST(Handlers, LevelsAndStatesOfAnElement) {
  for (const auto &functions : allFunctions<TypeParam>()) {
    SCOPED_TRACE(functions.type);
    Driven<TypeParam> driven(this->ctx, functions.type);
    const Attributes attributes{"id", "i", "domain", "d", "value", "v"};
    driven.start("anything", attributes);
    EXPECT_EQ(driven.handler.level, 1);
    EXPECT_EQ(this->ctx->state, XMLSTATE_IN_ELEMENT);
    EXPECT_EQ(driven.text("between"), 0);
    EXPECT_EQ(this->ctx->state, XMLSTATE_IN_ELEMENT);
    EXPECT_EQ(this->ctx->reader->text.used, this->ctx->reader->text.start);
    driven.end("anything");
    EXPECT_EQ(driven.handler.level, 0);
    EXPECT_EQ(this->ctx->state, XMLSTATE_DOC_END);
  }
}

TYPED_TEST(Handlers, NameIsComparedOnlyIfOneIsExpected) {
  for (const auto &functions : allFunctions<TypeParam>()) {
    SCOPED_TRACE(functions.type);
    rtxErrClear(this->ctx);
    for (const char *expected : {"anything", "something"}) {
      Driven<TypeParam> driven(this->ctx, functions.type);
      driven.handler.rootName = expected;
      const Attributes attributes{"id", "i"};
      driven.start("x:anything", attributes);
      EXPECT_EQ(driven.handler.level, 1);
    }
    const std::string list = errorList(this->ctx);
    EXPECT_EQ(list.find("anything,anything"), std::string::npos) << list;
    EXPECT_NE(list.find(this->fills ? "-3(something,anything)@SAX" : "-3(something,anything)@Vldt"), std::string::npos)
        << list;
  }
}

// Children that need a handler of their own are left out when there is no storage for one; the level stays.
TYPED_TEST(Handlers, WithoutStorageForDelegatesTheyRefuse) {
  const struct {
    const char *type;
    const char *child;
  } cases[] = {{"cp_oneType", "f:x"},           {"cp_manyType", "except"},         {"cp_manyType", "f:x"},
               {"cp_identityType", "one"},      {"cp_identityType", "many"},       {"cp_conditionsType", "identity"},
               {"cp_conditionsType", "sphere"}, {"cp_conditionsType", "validity"}, {"cp_extensibleType", "f:x"},
               {"cp_ruleType", "conditions"},   {"cp_ruleType", "actions"},        {"cp__ruleset", "rule"}};
  for (const auto &c : cases) {
    const bool foreign = c.child[1] == ':';
    if (!this->fills && foreign) continue; // needs no handler
    SCOPED_TRACE(c.type + " "s + c.child);
    Driven<TypeParam> driven(this->ctx, c.type);
    const Attributes id{"id", "i"};
    driven.start("own", id);
    rtxErrClear(this->ctx);
    rtxMemHeapFreePtr(this->ctx, driven.handler.delegateStorage);
    driven.handler.delegateStorage = nullptr;
    const Attributes foreignName{"xmlns:f", "urn:f"};
    EXPECT_EQ(driven.start(c.child, foreign ? foreignName : id), STATUS_NO_MEMORY);
    EXPECT_EQ(errorList(this->ctx), this->fills ? "-10@SAX" : "-10@Vldt");
    EXPECT_EQ(driven.handler.level, 1);
    EXPECT_EQ(driven.handler.delegate, nullptr);
    driven.end("own");
    EXPECT_EQ(driven.handler.level, 0);
  }
}

TYPED_TEST(Handlers, InitWithoutStorageSaysSo) {
  for (const auto &functions : allFunctions<TypeParam>()) {
    SCOPED_TRACE(functions.type);
    Context scarce([](RuntimeOptions &options) { options.heapLimit = 1; });
    ASSERT_NE(static_cast<RuntimeContext *>(scarce), nullptr);
    Driven<TypeParam> driven(scarce, functions.type);
    EXPECT_EQ(driven.initStatus, STATUS_NO_MEMORY);
    EXPECT_EQ(driven.handler.delegateStorage, nullptr);
    EXPECT_EQ(driven.handler.startElement, functions.start) << "it can be driven all the same";
    const Attributes attributes{"id", "", "value", ""};
    driven.start("own", attributes);
    EXPECT_EQ(driven.handler.level, 1);
    driven.end("own");
    EXPECT_EQ(driven.handler.level, 0);
  }
}

TYPED_TEST(Handlers, EmptyAttributeArraysInBothForms) {
  const char *const none[] = {nullptr};
  for (const char *const *attributes : {static_cast<const char *const *>(nullptr), +none}) {
    for (const char *type : {"cp_conditionsType", "cp_manyType", "cp_exceptType", "cp__ruleset"}) {
      Driven<TypeParam> driven(this->ctx, type);
      EXPECT_EQ(driven.start("own", attributes), 0);
      EXPECT_EQ(driven.end("own"), 0);
    }
    Driven<TypeParam> validity(this->ctx, "cp_validityType");
    validity.start("validity", attributes);
    EXPECT_EQ(validity.start("from", attributes), 0);
    EXPECT_EQ(validity.text("2024-01-02T03:04:05Z"), 0);
    EXPECT_EQ(validity.end("from"), 0);
    validity.end("validity");
  }
  EXPECT_EQ(rtxErrCount(this->ctx), 0u) << errorList(this->ctx);
}

// ---- Content states -------------------------------------------------------------------------------------------

// Every child in every value that a content state can have: behind the table nothing is allowed, and nothing is read.
TYPED_TEST(Handlers, EveryChildInEveryContentState) {
  constexpr int no = 0xFF;
  constexpr int fin = 0xFE;
  struct Row {
    const char *type;
    const char *child;
    int id;
    std::vector<int> after; // content state after this child, by the state before
  };
  const Row rows[] = {{"cp_oneType", "f:x", 0, {fin}},
                      {"cp_manyType", "except", 0, {1, 1}},
                      {"cp_manyType", "f:x", 1, {1, 1}},
                      {"cp_identityType", "one", 0, {1, 1}},
                      {"cp_identityType", "many", 1, {1, 1}},
                      {"cp_identityType", "f:x", 2, {1, 1}},
                      {"cp_validityType", "from", 0, {1, no}},
                      {"cp_validityType", "until", 1, {no, fin}},
                      {"cp_conditionsType", "identity", 0, {1, 1}},
                      {"cp_conditionsType", "sphere", 1, {1, 1}},
                      {"cp_conditionsType", "validity", 2, {1, 1}},
                      {"cp_conditionsType", "f:x", 3, {1, 1}},
                      {"cp_ruleType", "conditions", 0, {1, no, no}},
                      {"cp_ruleType", "actions", 1, {2, 2, no}},
                      {"cp_ruleType", "transformations", 2, {fin, fin, fin}}};
  const Attributes foreignName{"xmlns:f", "urn:f"};
  const Attributes ownName{"xmlns", namespaceUri};
  for (const Row &row : rows) {
    for (int before = 0; before <= 255; ++before) {
      SCOPED_TRACE(row.type + " "s + row.child + " in content state " + std::to_string(before));
      const int after = static_cast<size_t>(before) < row.after.size() ? row.after[static_cast<size_t>(before)] : no;
      Driven<TypeParam> driven(this->ctx, row.type);
      driven.start("own");
      rtxErrClear(this->ctx);
      driven.handler.contentState = static_cast<uint8_t>(before);
      const int status = driven.start(row.child, row.child[1] == ':' ? foreignName : ownName);
      EXPECT_EQ(status, after == no ? STATUS_UNEXPECTED_ELEMENT : 0);
      EXPECT_EQ(driven.handler.contentState, after == no ? before : after);
      EXPECT_EQ(driven.handler.level, after == no ? 1 : 2);
      if (after != no) {
        EXPECT_EQ(driven.handler.elementId, row.id);
        driven.end(row.child);
      } else {
        EXPECT_EQ(support::statuses(this->ctx), std::vector<int>({STATUS_UNEXPECTED_ELEMENT}));
      }
      driven.end("own");
      if (testing::Test::HasFailure()) return;
    }
  }
}

TYPED_TEST(Handlers, DeclarationsOfAChildSayWhatItIs) {
  const Attributes ours{"xmlns:p", namespaceUri, "value", "v"};
  const Attributes foreign{"xmlns:p", "urn:p"};
  const Attributes foreignDefault{"xmlns", "urn:p"};
  Driven<TypeParam> driven(this->ctx, "cp_conditionsType");
  driven.start("conditions");
  EXPECT_EQ(driven.start("p:sphere", ours), 0);
  EXPECT_EQ(driven.handler.elementId, 1);
  driven.end("p:sphere");
  EXPECT_EQ(driven.start("p:sphere", foreign), 0);
  EXPECT_EQ(driven.handler.elementId, 3);
  driven.end("p:sphere");
  EXPECT_EQ(driven.start("sphere", foreignDefault), 0);
  EXPECT_EQ(driven.handler.elementId, 3);
  driven.end("sphere");
  EXPECT_EQ(driven.start("p:bogus", ours), STATUS_UNEXPECTED_ELEMENT);
  driven.end("conditions");
  EXPECT_EQ(rtXmlNSGetIndex(this->ctx, "p"), RTXML_NS_NONE) << "each declaration went with its element";
  EXPECT_EQ(rtXmlNSGetIndex(this->ctx, nullptr), RTXML_NS_NONE);
}

// ---- Text -----------------------------------------------------------------------------------------------------

TYPED_TEST(Handlers, DatesArriveInPieces) {
  Driven<TypeParam> driven(this->ctx, "cp_validityType");
  driven.start("validity");
  EXPECT_EQ(driven.text("not this"), 0);
  EXPECT_EQ(driven.handler.seenRequired, 0u);
  for (const char *name : {"from", "until"}) {
    EXPECT_EQ(driven.start(name), 0);
    for (const char *piece : {"2024-", "", "01-02T", "03:04:05", "Z"})
      EXPECT_EQ(driven.text(piece), 0);
    EXPECT_EQ(this->ctx->state, XMLSTATE_IN_TEXT);
    EXPECT_EQ(driven.end(name), 0);
    EXPECT_EQ(driven.text("nor this"), 0);
    EXPECT_EQ(driven.handler.seenRequired, name[0] == 'f' ? 1u : 3u) << "noted as seen";
  }
  EXPECT_EQ(driven.end("validity"), 0);
  EXPECT_EQ(rtxErrCount(this->ctx), 0u) << errorList(this->ctx);
  if (this->fills) {
    EXPECT_EQ(dump(driven.template record<cp_validityType>()), "validity(2024-01-02T03:04:05Z,2024-01-02T03:04:05Z)");
  }
}

TYPED_TEST(Handlers, DatesAreCollectedInTwoStatesOnly) {
  Driven<TypeParam> driven(this->ctx, "cp_validityType");
  driven.start("validity");
  driven.start("from");
  for (int state = 0; state <= 5; ++state) {
    const bool taken = state == XMLSTATE_IN_ELEMENT || state == XMLSTATE_IN_TEXT;
    this->ctx->state = static_cast<uint8_t>(state);
    const size_t before = this->ctx->reader->text.used;
    EXPECT_EQ(driven.text("x"), 0);
    EXPECT_EQ(this->ctx->reader->text.used, before + (taken ? 1 : 0)) << "state " << state;
    EXPECT_EQ(this->ctx->state, taken ? XMLSTATE_IN_TEXT : state);
  }
  // Nor is anything converted in another state.
  this->ctx->state = XMLSTATE_INITIAL;
  EXPECT_EQ(driven.end("from"), 0);
  EXPECT_EQ(driven.handler.seenRequired, 0u);
  driven.end("validity");
  EXPECT_EQ(rtxErrCount(this->ctx), 0u) << errorList(this->ctx);
}

TYPED_TEST(Handlers, TextThatDoesNotConvert) {
  // A reader delivers nothing that is not UTF-8.
  const std::string bad = "2024\xFF";
  Driven<TypeParam> driven(this->ctx, "cp_validityType");
  driven.start("validity");
  driven.start("p:from");
  driven.text(bad);
  EXPECT_EQ(driven.end("p:from"), STATUS_INVALID_CONTENT);
  EXPECT_EQ(driven.handler.level, 1);
  EXPECT_EQ(driven.handler.seenRequired, 0u);
  EXPECT_EQ(errorList(this->ctx),
            "-44(" + bad + (this->fills ? ",cp_validityType,p:from)@SAX" : ",cp_validityType,p:from)@Vldt"));
  EXPECT_EQ(driven.start("until"), 0);
  EXPECT_EQ(driven.text("2024-01-02T03:04:05Z"), 0);
  EXPECT_EQ(driven.end("until"), 0);
  driven.end("validity");
  if (this->fills) {
    EXPECT_EQ(dump(driven.template record<cp_validityType>()), "validity(-,2024-01-02T03:04:05Z)");
  }
}

// ---- Attributes -----------------------------------------------------------------------------------------------

TYPED_TEST(Handlers, AttributesThatDoNotConvert) {
  const struct {
    const char *type;
    const char *attribute;
    std::string record; // what is left of it
  } cases[] = {{"cp_oneType", "id", "one(-)"},          {"cp_exceptType", "domain", "except()"},
               {"cp_exceptType", "id", "except()"},     {"cp_manyType", "domain", "many()"},
               {"cp_sphereType", "value", "sphere(-)"}, {"cp_ruleType", "id", "rule(-)"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.type + " "s + c.attribute);
    rtxErrClear(this->ctx);
    Driven<TypeParam> driven(this->ctx, c.type);
    const Attributes attributes{c.attribute, "\xFF"};
    EXPECT_EQ(driven.start("own", attributes), 0) << "the element is read on";
    EXPECT_EQ(driven.handler.level, 1);
    if (!this->fills) {
      EXPECT_EQ(errorList(this->ctx), "") << "identified, but not converted";
      continue;
    }
    // One record for what happened, one for where; the attribute was seen, so that none is missing.
    EXPECT_EQ(errorList(this->ctx), "-102@SAX; -45("s + c.type + "," + c.attribute + ")@SAX");
    const std::string_view type = c.type;
    std::string left;
    if (type == "cp_oneType") left = dump(driven.template record<cp_oneType>());
    if (type == "cp_exceptType") left = dump(driven.template record<cp_exceptType>());
    if (type == "cp_manyType") left = dump(driven.template record<cp_manyType>());
    if (type == "cp_sphereType") left = dump(driven.template record<cp_sphereType>());
    if (type == "cp_ruleType") left = dump(driven.template record<cp_ruleType>());
    EXPECT_EQ(left, c.record);
  }
}

TYPED_TEST(Handlers, AttributesOfEveryType) {
  for (const auto &functions : allFunctions<TypeParam>()) {
    rtxErrClear(this->ctx);
    Driven<TypeParam> driven(this->ctx, functions.type);
    const Attributes attributes{"domain", " d ",     "id",    " i  j ", "value", " v ",      "other",
                                "o",      "xmlns:p", "urn:p", "xmlns",  "urn:q", "xsi:type", "t"};
    EXPECT_EQ(driven.start("own", attributes), 0);
    const std::string type = functions.type;
    const auto unknown = [&](const char *name) {
      return "-33(" + type + "," + name + ")@" + (this->fills ? "SAX" : "Vldt");
    };
    std::string expected;
    if (type == "cp_oneType" || type == "cp_ruleType")
      expected = unknown("domain") + "; " + unknown("value") + "; " + unknown("other");
    if (type == "cp_exceptType") expected = unknown("value") + "; " + unknown("other");
    if (type == "cp_manyType") expected = unknown("id") + "; " + unknown("value") + "; " + unknown("other");
    if (type == "cp_sphereType") expected = unknown("domain") + "; " + unknown("id") + "; " + unknown("other");
    EXPECT_EQ(errorList(this->ctx), expected) << type;
    driven.end("own");
    if constexpr (std::is_same_v<TypeParam, SaxTypeHandler>) {
      if (type == "cp_exceptType") {
        EXPECT_EQ(dump(driven.template record<cp_exceptType>()), "except(domain= d  id=i j)");
      }
      if (type == "cp_sphereType") {
        EXPECT_EQ(dump(driven.template record<cp_sphereType>()), "sphere( v )");
      }
    }
  }
}

TEST(CheckingHandlers, ValuesOfAttributesAreNotTouched) {
  Context ctx;
  for (const char *type : {"cp_oneType", "cp_exceptType", "cp_manyType", "cp_sphereType", "cp_ruleType"}) {
    Driven<VsaxTypeHandler> driven(ctx, type);
    const Attributes attributes{"domain", " d  e ", "id", " i  j ", "value", " v  w "};
    driven.start("own", attributes);
    EXPECT_EQ(attributes.text(1), " d  e ") << type;
    EXPECT_EQ(attributes.text(3), " i  j ") << type;
    EXPECT_EQ(attributes.text(5), " v  w ") << type;
  }
}

// ---- Items ----------------------------------------------------------------------------------------------------

TEST(FillingHandlers, ChoicesEnterTheirListAtTheirStart) {
  Context ctx;
  const Attributes foreignName{"xmlns:f", "urn:f"};
  const Attributes none{};
  struct Child {
    const char *type;
    const char *name;
    int selector;
  };
  constexpr Child children[] = {
      {"cp_conditionsType", "identity", 1}, {"cp_conditionsType", "sphere", 2}, {"cp_conditionsType", "validity", 3},
      {"cp_conditionsType", "f:x", 4},      {"cp_identityType", "one", 1},      {"cp_identityType", "many", 2},
      {"cp_identityType", "f:x", 3},        {"cp_manyType", "except", 1},       {"cp_manyType", "f:x", 2}};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  for (const Child &child : children) {
    SCOPED_TRACE(child.type + " "s + child.name);
    Driven<SaxTypeHandler> driven(ctx, child.type);
    const RtxList &list = "cp_conditionsType"sv == child.type ? driven.record<cp_conditionsType>().items
                          : "cp_identityType"sv == child.type ? driven.record<cp_identityType>().items
                                                              : driven.record<cp_manyType>().cp__choice;
    driven.start("own");
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(driven.start(child.name, child.name[1] == ':' ? foreignName : none), 0);
    ASSERT_EQ(list.count, 1u);
    EXPECT_EQ(*static_cast<const uint16_t *>(list.head->data), child.selector);
    EXPECT_EQ(static_cast<void *>(driven.handler.delegate), driven.handler.delegateStorage);
    if ("f:x"sv == child.name) {
      EXPECT_EQ(driven.text("text"), 0);
      EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
      if ("cp_conditionsType"sv == child.type) {
        EXPECT_EQ(dump(driven.record<cp_conditionsType>()), "conditions[any[-]]") << "the text comes with the end";
      }
    }
    driven.end(child.name);
    EXPECT_EQ(list.count, 1u);
    EXPECT_EQ(driven.handler.delegate, nullptr);
    driven.end("own");
  }
}

TEST(FillingHandlers, RulesAndTheirElementsEnterTheirListAtTheirEnd) {
  Context ctx;
  Driven<SaxTypeHandler> rules(ctx, "cp__ruleset");
  const RtxList &list = rules.record<cp__ruleset>().cp_rule;
  rules.start("ruleset");
  void *block = nullptr;
  for (uint32_t i = 0; i < 3; ++i) {
    const Attributes id{"id", std::to_string(i)};
    EXPECT_EQ(rules.start("rule", id), 0);
    EXPECT_EQ(list.count, i);
    if (i == 0) block = rules.handler.delegate;
    EXPECT_EQ(static_cast<void *>(rules.handler.delegate), block) << "one handler for all rules";
    const auto *rule = reinterpret_cast<const SaxTypeHandler *>(rules.handler.delegate);
    EXPECT_EQ(rule->contentState, 0);
    EXPECT_EQ(rule->level, 1);
    EXPECT_EQ(rules.start("transformations"), 0);
    EXPECT_EQ(rule->contentState, 0xFE);
    rules.end("transformations");
    EXPECT_EQ(list.count, i);
    EXPECT_EQ(rules.end("rule"), 0);
    EXPECT_EQ(list.count, i + 1);
    EXPECT_EQ(rules.handler.delegate, nullptr);
  }
  rules.end("ruleset");
  EXPECT_EQ(dump(rules.record<cp__ruleset>()),
            "rule(0 transformations[]) rule(1 transformations[]) rule(2 transformations[])");

  Driven<SaxTypeHandler> actions(ctx, "cp_extensibleType");
  const RtxList &elements = actions.record<cp_extensibleType>().items.items;
  actions.start("actions");
  for (uint32_t i = 0; i < 3; ++i) {
    EXPECT_EQ(actions.start("x"), 0);
    EXPECT_EQ(actions.start("y"), 0);
    EXPECT_EQ(elements.count, i);
    actions.end("y");
    EXPECT_EQ(elements.count, i);
    EXPECT_EQ(actions.end("x"), 0);
    EXPECT_EQ(elements.count, i + 1);
  }
  actions.end("actions");
  EXPECT_EQ(dump(actions.record<cp_extensibleType>()), "[<x><y/></x> <x><y/></x> <x><y/></x>]");
}

// The handler of the rules goes at the root's end tag, and its pointer with it, so that the owner may free it again.
TYPED_TEST(Handlers, RulesetGivesTheHandlerOfItsRulesBackAtItsEnd) {
  const size_t before = support::heapStats(this->ctx).blocks;
  Driven<TypeParam> driven(this->ctx, "cp__ruleset");
  const Attributes id{"id", "r"};
  driven.start("ruleset");
  driven.start("rule", id);
  driven.end("rule");
  driven.end("ruleset");
  EXPECT_EQ(driven.handler.delegateStorage, nullptr);
  if (this->fills) QxMemFree_cp__ruleset(this->ctx, &driven.template record<cp__ruleset>());
  EXPECT_EQ(support::heapStats(this->ctx).blocks, before);
}

TEST(FillingHandlers, RunOfForeignConditionsEndsWithTheItem) {
  Context ctx;
  Driven<SaxTypeHandler> driven(ctx, "cp_conditionsType");
  const Attributes foreignName{"xmlns", "urn:f"};
  const Attributes value{"value", "v"};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  driven.start("conditions");
  for (const char *name : {"a", "b", "sphere", "c", "d"}) {
    const bool sphere = "sphere"sv == name;
    EXPECT_EQ(driven.start(name, sphere ? value : foreignName), 0);
    driven.end(name);
  }
  driven.end("conditions");
  EXPECT_EQ(dump(driven.record<cp_conditionsType>()),
            "conditions[any[<a xmlns=\"urn:f\"/> <b xmlns=\"urn:f\"/>] sphere(v) any[<c xmlns=\"urn:f\"/> <d "
            "xmlns=\"urn:f\"/>]]");
}

// The end of a delegate that has something to say is its end all the same.
TEST(FillingHandlers, DelegateThatFailsAtItsEndIsReleased) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  Driven<SaxTypeHandler> driven(ctx, "cp_conditionsType");
  driven.start("conditions");
  const size_t before = support::heapStats(ctx).blocks;
  driven.start("identity");
  EXPECT_EQ(driven.end("identity"), STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(errorList(ctx), "-16(.count,0)@SAX");
  EXPECT_EQ(driven.handler.delegate, nullptr);
  EXPECT_EQ(driven.handler.level, 1);
  EXPECT_EQ(support::heapStats(ctx).blocks, before + 2) << "the item and its place in the list";
  const Attributes value{"value", "v"};
  EXPECT_EQ(driven.start("sphere", value), 0);
  EXPECT_EQ(driven.end("sphere"), 0);
  driven.end("conditions");
  EXPECT_EQ(dump(driven.record<cp_conditionsType>()), "conditions[identity[] sphere(v)]");
}

TEST(FillingHandlers, EmptyIdentityBeyondTheErrorLimit) {
  Context ctx;
  Driven<SaxTypeHandler> driven(ctx, "cp_identityType");
  rtxSetErrorLimit(ctx, 0);
  ASSERT_EQ(support::setInput(ctx, "<x/>"), 0);
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &driven.handler, driven.functions.start, driven.functions.end,
                                              driven.functions.characters);
  driven.start("identity");
  EXPECT_EQ(driven.end("identity"), 0);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  rtSaxCReleaseReader(reader);
}

TEST(CheckingHandlers, ForeignElementsHaveNoHandler) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  const Attributes foreignName{"xmlns:f", "urn:f"};
  for (const char *type : {"cp_oneType", "cp_manyType", "cp_identityType", "cp_conditionsType", "cp_extensibleType"}) {
    SCOPED_TRACE(type);
    Driven<VsaxTypeHandler> driven(ctx, type);
    const Attributes id{"id", "i"};
    driven.start("own", "cp_oneType"sv == type ? id : foreignName);
    const size_t blocks = support::heapStats(ctx).blocks;
    EXPECT_EQ(driven.start("f:x", foreignName), 0);
    EXPECT_EQ(driven.handler.delegate, nullptr);
    EXPECT_EQ(driven.start("rule"), 0);
    EXPECT_EQ(driven.text("text"), 0);
    EXPECT_EQ(driven.end("rule"), 0);
    EXPECT_EQ(driven.end("f:x"), 0);
    EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start) << "what was collected is dropped";
    EXPECT_EQ(driven.end("own"), 0);
    EXPECT_LE(support::heapStats(ctx).blocks, blocks + 1) << "but for the collection buffer";
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u) << errorList(ctx);
}

// ---- Trace ----------------------------------------------------------------------------------------------------

struct Trace {
  std::vector<std::string> log;
  static void note(void *self, bool enter, const char *function, const char *) {
    const std::string name = function;
    if (name.starts_with("Qx")) static_cast<Trace *>(self)->log.push_back((enter ? "+" : "-") + name);
  }
};

TYPED_TEST(Handlers, EveryCallbackIsTracedUnderItsName) {
  for (const auto &functions : allFunctions<TypeParam>()) {
    Trace trace;
    Context traced([&](RuntimeOptions &options) {
      options.trace = Trace::note;
      options.traceUser = &trace;
    });
    Driven<TypeParam> driven(traced, functions.type);
    driven.start("own");
    driven.text("text");
    driven.end("own");
    std::vector<std::string> expected;
    for (const char *callback : {"startElement", "characters", "endElement"}) {
      const std::string name = (this->fills ? "QxSAX_" : "QxVSAX_") + std::string(functions.type) + "_" + callback;
      expected.push_back("+" + name);
      expected.push_back("-" + name);
    }
    EXPECT_EQ(trace.log, expected);
  }
}

// An event goes through the callbacks of all handlers from the root to the one that it is for.
TEST(HandlerTrace, EventsPassThroughTheCallbacksOfTheirParents) {
  for (const bool decoding : {true, false}) {
    Trace trace;
    Context ctx([&](RuntimeOptions &options) {
      options.trace = Trace::note;
      options.traceUser = &trace;
    });
    const std::string text = document("<rule id='r'><conditions/></rule>");
    EXPECT_EQ(decoding ? decode(ctx, text).status : validate(ctx, text).status, 0);
    std::vector<std::string> expected;
    const auto event = [&](std::initializer_list<const char *> types, const char *callback) {
      std::vector<std::string> names;
      for (const char *type : types)
        names.push_back((decoding ? "QxSAX_" : "QxVSAX_") + std::string(type) + "_" + callback);
      for (auto name = names.begin(); name != names.end(); ++name)
        expected.push_back("+" + *name);
      for (auto name = names.rbegin(); name != names.rend(); ++name)
        expected.push_back("-" + *name);
    };
    event({"cp__ruleset"}, "startElement");
    event({"cp__ruleset", "cp_ruleType"}, "startElement");
    event({"cp__ruleset", "cp_ruleType", "cp_conditionsType"}, "startElement");
    event({"cp__ruleset", "cp_ruleType", "cp_conditionsType"}, "endElement");
    event({"cp__ruleset", "cp_ruleType"}, "endElement");
    event({"cp__ruleset"}, "endElement");
    EXPECT_EQ(trace.log, expected);
  }
}

} // namespace
