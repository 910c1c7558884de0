// The handlers of every type, driven by hand and without a reader, as a host may drive them.
#include "drivenHandler.h"
#include "filters.h"
#include "handlerChain.h"

#include <algorithm>
#include <set>
#include <type_traits>

using namespace filters;
using support::Context;

namespace {

// One set of callbacks, for filling a record or for checking only.
template <class T> struct Filling : Functions<T>::Filling {
  using Type = T;
  static constexpr bool fills = true;
};

template <class T> struct Checking : Functions<T>::Checking {
  using Type = T;
  static constexpr bool fills = false;
};

// A handler with its record, initialised.
template <class Kind> struct Driven {
  explicit Driven(RuntimeContext *context) : ctx(context), record(context) {
    std::memset(&handler, 0xA5, sizeof handler);
    initStatus = Kind::init(ctx, &handler, record, 0);
  }
  ~Driven() { support::releaseHandlers(ctx, handler); }

  int start(const char *name, std::initializer_list<const char *> attributes = {}) {
    std::vector<const char *> array(attributes);
    array.insert(array.end(), {nullptr, nullptr});
    return Kind::start(&handler, name, name, array.data());
  }
  // The handler's own start tag, with the attributes that it requires.
  int startOwn(const char *name) {
    if constexpr (std::is_same_v<typename Kind::Type, NSBinding>) return start(name, {"prefix", "p", "urn", "u"});
    return start(name, {"id", "a"});
  }
  int text(std::string_view bytes) { return Kind::characters(&handler, bytes.data(), bytes.size()); }
  int end(const char *name) { return Kind::end(&handler, name, name); }

  RuntimeContext *ctx;
  Record<typename Kind::Type> record;
  typename Kind::Handler handler;
  int initStatus;
};

template <class Kind> class EveryHandler : public testing::Test {};
using EveryKind = testing::Types<Filling<NSBinding>, Filling<NSBindings>, Filling<InclType>, Filling<ExclType>,
                                 Filling<WhatType>, Filling<ChangedType>, Filling<TriggerType>, Filling<FilterType>,
                                 Filling<FilterSetType>, Checking<NSBinding>, Checking<NSBindings>, Checking<InclType>,
                                 Checking<ExclType>, Checking<WhatType>, Checking<ChangedType>, Checking<TriggerType>,
                                 Checking<FilterType>, Checking<FilterSetType>>;
TYPED_TEST_SUITE(EveryHandler, EveryKind);

TYPED_TEST(EveryHandler, InitPreparesEverything) {
  Context ctx;
  ASSERT_EQ(rtxMemBufAppend(&ctx->reader->text, "left over", 9), 0);
  Driven<TypeParam> driven(ctx);
  EXPECT_EQ(driven.initStatus, 0);
  support::expectFresh<typename TypeParam::Handler>(ctx, driven.handler,
                                                    {TypeParam::start, TypeParam::characters, TypeParam::end},
                                                    static_cast<typename TypeParam::Type *>(driven.record), 0);
}

TYPED_TEST(EveryHandler, InitTakesTheLevel) {
  Context ctx;
  Driven<TypeParam> driven(ctx);
  typename TypeParam::Handler other;
  ASSERT_EQ(TypeParam::init(ctx, &other, driven.record, 3), 0);
  EXPECT_EQ(other.level, 3);
  EXPECT_EQ(other.startLevel, 3);
  rtxMemHeapFreePtr(ctx, other.delegateStorage);
}

TYPED_TEST(EveryHandler, InitWithoutStorageSaysSoAndRecordsNothing) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 1; });
  Driven<TypeParam> driven(ctx);
  EXPECT_EQ(driven.initStatus, STATUS_NO_MEMORY);
  EXPECT_EQ(driven.handler.delegateStorage, nullptr);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TYPED_TEST(EveryHandler, RootNameIsComparedOnlyIfSet) {
  for (const char *expected : {static_cast<const char *>(nullptr), "expected", "found"}) {
    Context ctx;
    Driven<TypeParam> driven(ctx);
    driven.handler.rootName = expected;
    EXPECT_EQ(driven.startOwn("found"), 0);
    const bool differs = expected != nullptr && expected == "expected"sv;
    EXPECT_EQ(errorList(ctx), !differs ? "" : TypeParam::fills ? "-3(expected,found)@SAX" : "-3(expected,found)@Vldt");
    EXPECT_EQ(driven.handler.level, 1);
    driven.end("found");
    EXPECT_EQ(driven.handler.level, 0);
    EXPECT_EQ(ctx->state, XMLSTATE_DOC_END);
  }
}

TYPED_TEST(EveryHandler, DocumentsMayBeDrivenOverAnotherNamespaceScope) {
  // The element opens a scope of its own and closes it: what the host has bound before is as it was.
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "h", namespaceUri, nullptr, 0), 0);
  Driven<TypeParam> driven(ctx);
  driven.start("e", {"xmlns:h", "urn:other"});
  driven.end("e");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "h"), 3);
  rtXmlNSPop(ctx);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "h"), RTXML_NS_NONE);
}

// ---- State tables --------------------------------------------------------------------------------------------------

struct Row {
  const char *name;       // not a name of the type's: a foreign element
  std::vector<int> after; // content state after this child, by the state before
};

template <class Kind> void expectStates(const std::vector<Row> &rows) {
  constexpr int no = -1;
  for (size_t id = 0; id < rows.size(); ++id) {
    const Row &row = rows[id];
    for (size_t before = 0; before < row.after.size(); ++before) {
      SCOPED_TRACE(std::string(Functions<typename Kind::Type>::name) + ": " + row.name + " in content state " +
                   std::to_string(before));
      Context ctx;
      Driven<Kind> driven(ctx);
      driven.start("e", {"id", "a"});
      driven.handler.contentState = static_cast<uint8_t>(before);
      const int after = row.after[before];
      EXPECT_EQ(driven.start(row.name, {"id", "a"}), after == no ? STATUS_UNEXPECTED_ELEMENT : 0);
      EXPECT_EQ(driven.handler.contentState, after == no ? static_cast<int>(before) : after);
      EXPECT_EQ(driven.handler.level, after == no ? 1 : 2);
      if (after != no) {
        EXPECT_EQ(driven.handler.elementId, static_cast<int>(id));
      }
    }
    for (int beyond : {static_cast<int>(row.after.size()), 0xFE, 0xFF}) {
      SCOPED_TRACE("a state that the table does not have: " + std::to_string(beyond));
      Context ctx;
      Driven<Kind> driven(ctx);
      driven.start("e", {"id", "a"});
      driven.handler.contentState = static_cast<uint8_t>(beyond);
      EXPECT_EQ(driven.start(row.name), STATUS_UNEXPECTED_ELEMENT);
    }
  }
}

template <template <class> class Kind> void expectAllStates() {
  constexpr int no = -1;
  expectStates<Kind<WhatType>>({{"include", {1, 1, no, no}}, {"exclude", {2, 2, 2, no}}, {"mood", {3, 3, 3, 3}}});
  expectStates<Kind<TriggerType>>({{"changed", {1, 1, no, no, no}},
                                   {"added", {2, 2, 2, no, no}},
                                   {"removed", {3, 3, 3, 3, no}},
                                   {"mood", {4, 4, 4, 4, 4}}});
  expectStates<Kind<FilterType>>({{"what", {1, no, no, no}}, {"trigger", {2, 2, 2, no}}, {"mood", {3, 3, 3, 3}}});
  expectStates<Kind<FilterSetType>>({{"ns-bindings", {1, no, no}}, {"filter", {2, 2, 2}}});
}

TEST(FillingHandlers, EveryChildInEveryContentState) { expectAllStates<Filling>(); }
TEST(CheckingHandlers, EveryChildInEveryContentState) { expectAllStates<Checking>(); }

// ---- When items enter their lists ----------------------------------------------------------------------------------

TEST(FillingHandlers, ItemsEnterAtTheirStartTags) {
  Context ctx;
  Driven<Filling<FilterSetType>> set(ctx);
  set.start("filter-set");
  set.start("filter", {"id", "a"});
  EXPECT_EQ(dump(*set.record), "{filter(id=a)}");
  set.start("what");
  EXPECT_EQ(dump(*set.record), "{filter(id=a){what}}") << "the bit is set before the child";
  set.start("include", {"type", "xpath"});
  EXPECT_EQ(dump(*set.record), "{filter(id=a){what{include(type=xpath)[-]}}}");
  set.text("x");
  set.end("include");
  set.start("exclude");
  EXPECT_EQ(dump(*set.record), "{filter(id=a){what{include(type=xpath)[x] exclude[-]}}}");
  set.end("exclude");
  set.start("mood");
  EXPECT_EQ(dump(*set.record), "{filter(id=a){what{include(type=xpath)[x] exclude[] any[-]}}}");
  set.end("mood");
  set.end("what");
  set.start("trigger");
  set.start("changed", {"by", "1"});
  EXPECT_TRUE(dump(*set.record).ends_with(" trigger{changed(by=1)[-]}}}")) << dump(*set.record);
  set.end("changed");
  set.end("trigger");
  set.end("filter");
  set.end("filter-set");
  EXPECT_EQ(rtxErrCount(ctx), 0u) << errorList(ctx);
}

TEST(FillingHandlers, TextsOfATriggerEnterAtTheirEndTags) {
  Context ctx;
  Driven<Filling<TriggerType>> trigger(ctx);
  trigger.start("trigger");
  for (const char *name : {"added", "removed"}) {
    trigger.start(name);
    for (const char *piece : {"/", "", "a", "/b"})
      trigger.text(piece);
    const RtxList &list = name == "added"sv ? trigger.record->added : trigger.record->removed;
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(trigger.end(name), 0);
    EXPECT_EQ(list.count, 1u);
  }
  trigger.end("trigger");
  EXPECT_EQ(dump(*trigger.record), "trigger{added[/a/b] removed[/a/b]}");
}

TEST(FillingHandlers, BindingsEnterAtTheirEndTagsWhateverWasWrong) {
  Context ctx;
  Driven<Filling<NSBindings>> bindings(ctx);
  bindings.start("ns-bindings");
  bindings.start("ns-binding", {"prefix", "p", "k", "v"});
  EXPECT_EQ(dump(*bindings.record), "bindings");
  EXPECT_EQ(bindings.start("x"), STATUS_UNEXPECTED_ELEMENT);
  bindings.end("ns-binding");
  EXPECT_EQ(dump(*bindings.record), "bindings{p=-}");
  EXPECT_EQ(bindings.end("ns-bindings"), 0);
  EXPECT_EQ(errorList(ctx), "-33(NSBinding,k)@SAX; -103(NSBinding,urn)@runtime/reader<SAX; -41(x)@SAX");
}

TEST(FillingHandlers, BindingsWithoutAnItemFailAtTheirEndTag) {
  Context ctx;
  Driven<Filling<NSBindings>> bindings(ctx);
  bindings.start("ns-bindings");
  EXPECT_EQ(bindings.end("ns-bindings"), STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(errorList(ctx), "-16(NSBindings.count,0)@SAX");
  Driven<Checking<NSBindings>> checked(ctx);
  checked.start("ns-bindings");
  EXPECT_EQ(checked.end("ns-bindings"), 0);
}

// ---- Storage that gives out in the middle --------------------------------------------------------------------------

TEST(Handlers, BindingWhoseAttributeCannotBeKeptIsReported) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 4096; });
  const std::string value(8000, 'p');
  Driven<Filling<NSBinding>> binding(ctx);
  EXPECT_EQ(binding.start("ns-binding", {"prefix", value.c_str(), "urn", "u"}), 0);
  EXPECT_EQ(errorList(ctx), "-10@SAX; -45(NSBinding,prefix)@SAX") << "seen, so that it is not missing";
  EXPECT_EQ(binding.record->prefix.value, nullptr);
  EXPECT_STREQ(binding.record->urn.value, "u");
  binding.end("ns-binding");
}

TEST(Handlers, TextOfATriggerThatCannotBeKeptIsReported) {
  // The collection buffer takes the text, a copy of it finds no room.
  std::string text(3000, 'a');
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 6000; });
  Driven<Filling<TriggerType>> trigger(ctx);
  trigger.start("trigger");
  trigger.start("added");
  ASSERT_EQ(trigger.text(text), 0);
  std::vector<void *> ballast;
  while (void *block = rtxMemHeapAlloc(ctx, 64))
    ballast.push_back(block);
  EXPECT_EQ(trigger.end("added"), STATUS_INVALID_CONTENT);
  ASSERT_EQ(support::statuses(ctx), std::vector<int>({STATUS_INVALID_CONTENT}));
  const RtxError &error = *rtxErrAt(ctx, 0);
  ASSERT_EQ(error.paramCount, 3u);
  const std::string shown(error.params[0].text, error.params[0].length);
  EXPECT_TRUE(!shown.empty() && text.starts_with(shown.substr(0, 16))) << shown;
  EXPECT_EQ(std::string(error.params[1].text, error.params[1].length), "TriggerType");
  EXPECT_EQ(std::string(error.params[2].text, error.params[2].length), "added");
  EXPECT_EQ(trigger.record->added.count, 0u);
  for (void *block : ballast)
    rtxMemHeapFreePtr(ctx, block);
  EXPECT_EQ(trigger.start("removed"), 0);
  trigger.text("b");
  EXPECT_EQ(trigger.end("removed"), 0);
  EXPECT_EQ(dump(*trigger.record), "trigger{removed[b]}");
}

TEST(Handlers, WithoutStorageOfTheirOwnTheyRefuseChildrenThatNeedIt) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 6000; });
  std::vector<void *> ballast;
  while (void *block = rtxMemHeapAlloc(ctx, 1))
    ballast.push_back(block);
  Driven<Filling<TriggerType>> trigger(ctx);
  EXPECT_EQ(trigger.initStatus, STATUS_NO_MEMORY);
  for (void *block : ballast)
    rtxMemHeapFreePtr(ctx, block);
  EXPECT_EQ(trigger.start("trigger"), 0);
  for (const char *name : {"changed", "mood"}) {
    trigger.handler.contentState = 0;
    EXPECT_EQ(trigger.start(name), STATUS_NO_MEMORY);
    EXPECT_EQ(trigger.handler.level, 1) << "not counted";
  }
  EXPECT_EQ(errorList(ctx), "-10@SAX; -10@SAX");
  trigger.handler.contentState = 0;
  EXPECT_EQ(trigger.start("added"), 0);
  trigger.text("a");
  EXPECT_EQ(trigger.end("added"), 0);
  trigger.end("trigger");
  EXPECT_EQ(trigger.record->added.count, 1u);
}

// ---- Left open, and traced -----------------------------------------------------------------------------------------

TEST(Handlers, WhatADocumentLeftOpenCanBeReleased) {
  const char *const path[] = {"filter-set", "filter", "trigger", "changed"};
  for (size_t depth = 1; depth <= std::size(path); ++depth) {
    Context ctx;
    support::HeapBalance balance(ctx);
    Driven<Filling<FilterSetType>> set(ctx);
    Driven<Checking<FilterSetType>> checked(ctx);
    for (size_t i = 0; i < depth; ++i)
      EXPECT_EQ(set.start(path[i], {"id", "a"}), 0);
    set.text("te");
    for (size_t i = 0; i < depth; ++i)
      EXPECT_EQ(checked.start(path[i], {"id", "a"}), 0);
    EXPECT_EQ(set.handler.level, static_cast<int32_t>(depth));
    EXPECT_EQ(checked.handler.level, static_cast<int32_t>(depth));
  }
}

TEST(Handlers, CheckingKeepsNothing) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, support::spell(fullBody, namespaceUri, support::Spelling::defaultNamespace).text),
            0);
  support::HeapBalance balance(ctx);
  EXPECT_EQ(QxXmlV_filter_set(ctx), 0);
}

struct Trace {
  std::vector<std::string> log;
  static void note(void *self, bool enter, const char *function, const char *) {
    static_cast<Trace *>(self)->log.push_back((enter ? "+" : "-") + std::string(function));
  }
};

template <class Kind> std::vector<std::string> tracedNames() {
  Trace trace;
  Context ctx([&](RuntimeOptions &options) {
    options.trace = Trace::note;
    options.traceUser = &trace;
  });
  Driven<Kind> driven(ctx);
  driven.startOwn("e");
  driven.text("t");
  driven.end("e");
  return trace.log;
}

TYPED_TEST(EveryHandler, CallbacksAreEnteredAndLeftUnderTheirNames) {
  const std::string prefix = (TypeParam::fills ? "QxSAX_"s : "QxVSAX_"s) + Functions<typename TypeParam::Type>::name;
  std::vector<std::string> expected;
  for (const char *callback : {"_startElement", "_characters", "_endElement"})
    for (const char *sign : {"+", "-"})
      expected.push_back(sign + prefix + callback);
  EXPECT_EQ(tracedNames<TypeParam>(), expected);
}

} // namespace
