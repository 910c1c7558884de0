// The handlers of every type, driven by hand and without a reader, as a host may drive them.
#include "drivenHandler.h"
#include "settings.h"

#include <type_traits>

using namespace settings;
using support::Context;
template <typename T, typename Kind> using Driven = support::DrivenHandler<T, Kind>;
using support::Trace;

namespace {

// Calls test<T, Kind>() for each type with handlers and both kinds of them.
template <typename Test> void forEachHandler(const Test &test) {
  support::forEachHandler<isbSettingType_incoming_session_barring, isbSettingType, amSettingType,
                          ipabSettingType_incoming_personal_alert_barring, ipabSettingType,
                          sssSettingType_simultaneous_sessions_support, sssSettingType, entityType, poc_settingsType>(
      test);
}

template <typename Kind> constexpr bool fills = support::fillsRecord<typename Kind::Handler>;

TEST(Handlers, InitPreparesEverything) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    ASSERT_EQ(rtxMemBufAppend(&ctx->reader->text, "left over", 9), 0);
    Driven<T, Kind> driven(ctx, 3);
    support::expectFresh<typename Kind::Handler>(ctx, driven.handler, {Kind::start, Kind::characters, Kind::end},
                                                 driven.record, 3);
  });
}

TEST(Handlers, OwnElementOfAnyName) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    Driven<T, Kind> driven(ctx);
    const char *const attributes[] = {"active", "true", "id", "a", nullptr, nullptr};
    const bool barring = Functions<T>::shape == Shape::active;
    EXPECT_EQ(driven.start("anything", attributes), 0);
    EXPECT_EQ(driven.handler.level, 1);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
    EXPECT_EQ(driven.text("between"), 0);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT) << "text between children is no one's";
    EXPECT_EQ(driven.end("anything"), 0);
    EXPECT_EQ(driven.handler.level, 0);
    EXPECT_EQ(ctx->state, XMLSTATE_DOC_END);
    EXPECT_EQ(errorsOf(ctx), barring ? "-33("s + Functions<T>::name + ",id)" + (fills<Kind> ? "@SAX" : "@Vldt") : "");
  });
}

TEST(Handlers, RootNameIsComparedIfSet) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    Driven<T, Kind> driven(ctx);
    driven.handler.rootName = "expected";
    const char *const attributes[] = {"active", "true", "id", "a", nullptr, nullptr};
    EXPECT_EQ(driven.start("found", attributes), 0) << "and read on";
    EXPECT_EQ(driven.handler.level, 1);
    ASSERT_GT(rtxErrCount(ctx), 0u);
    EXPECT_EQ(support::errorTexts(ctx)[0].substr(0, 19), "-3(expected,found)@");
    driven.end("found");
  });
}

TEST(Handlers, EmptyAttributeArraysInBothForms) {
  forEachHandler([]<typename T, typename Kind>() {
    const char *const none[] = {nullptr};
    for (const char *const *attributes : {static_cast<const char *const *>(nullptr), none}) {
      Context ctx;
      Driven<T, Kind> driven(ctx);
      EXPECT_EQ(driven.start("n", attributes), 0);
      const Shape shape = Functions<T>::shape;
      const bool requires_ = shape == Shape::active || shape == Shape::entity;
      EXPECT_EQ(support::statuses(ctx), requires_ ? std::vector<int>{STATUS_MISSING_ATTRIBUTE} : std::vector<int>{});
      EXPECT_EQ(driven.end("n"), 0);
    }
  });
}

// ---- Children -------------------------------------------------------------------------------------------------

constexpr int no = -1;

struct Row {
  const char *name;       // "mood" stands for any foreign element
  std::vector<int> after; // content state after this child, by the state before; behind the table nothing is allowed
};

std::vector<Row> rowsOf(Shape shape, const char *value) {
  switch (shape) {
  case Shape::root: return {{"entity", {1, 1, no, no}}, {"mood", {2, 2, 2, no}}};
  case Shape::entity:
    return {{"isb-settings", {1, no, no, no, no, no, no}},
            {"am-settings", {2, 2, no, no, no, no, no}},
            {"ipab-settings", {3, 3, 3, no, no, no, no}},
            {"sss-settings", {4, 4, 4, 4, no, no, no}},
            {"mood", {5, 5, 5, 5, 5, 5, no}}};
  case Shape::setting: return {{value, {1, no, no, no}}, {"mood", {no, 2, 2, no}}};
  case Shape::active: return {{"active", {no}}, {"mood", {no}}};
  }
  return {};
}

template <typename T> constexpr const char *valueElement() {
  if constexpr (std::is_same_v<T, isbSettingType>) return "incoming-session-barring";
  if constexpr (std::is_same_v<T, amSettingType>) return "answer-mode";
  if constexpr (std::is_same_v<T, ipabSettingType>) return "incoming-personal-alert-barring";
  return "simultaneous-sessions-support";
}

TEST(Handlers, EveryChildInEveryContentState) {
  forEachHandler([]<typename T, typename Kind>() {
    const std::vector<Row> rows = rowsOf(Functions<T>::shape, valueElement<T>());
    for (size_t id = 0; id < rows.size(); ++id) {
      const Row &row = rows[id];
      for (size_t before = 0; before < row.after.size(); ++before) {
        SCOPED_TRACE(row.name + " in content state "s + std::to_string(before));
        Context ctx;
        Driven<T, Kind> driven(ctx);
        const char *const attributes[] = {"active", "true", nullptr, nullptr};
        driven.start("n", Functions<T>::shape == Shape::active ? attributes : nullptr);
        rtxErrClear(ctx);
        driven.handler.contentState = static_cast<uint8_t>(before);
        const int after = row.after[before];
        EXPECT_EQ(driven.start(row.name), after == no ? STATUS_UNEXPECTED_ELEMENT : 0);
        EXPECT_EQ(driven.handler.contentState, after == no ? static_cast<int>(before) : after);
        EXPECT_EQ(driven.handler.level, after == no ? 1 : 2);
        if (after == no) {
          EXPECT_EQ(support::statuses(ctx), std::vector<int>{STATUS_UNEXPECTED_ELEMENT});
          EXPECT_EQ(driven.handler.delegate, nullptr);
        } else {
          EXPECT_EQ(driven.handler.elementId, static_cast<int>(id));
          driven.end(row.name);
          EXPECT_EQ(driven.handler.level, 1);
          EXPECT_EQ(driven.handler.delegate, nullptr);
        }
        EXPECT_EQ(driven.end("n"), 0);
      }
    }
  });
}

TEST(Handlers, ChildrenWithAHandlerOfTheirOwnGetIt) {
  forEachHandler([]<typename T, typename Kind>() {
    const Shape shape = Functions<T>::shape;
    if (shape == Shape::active) return;
    for (const Row &row : rowsOf(shape, valueElement<T>())) {
      SCOPED_TRACE(row.name);
      Context ctx;
      Driven<T, Kind> driven(ctx);
      driven.start("n");
      const bool foreign = row.name == "mood"s;
      if (foreign) driven.handler.contentState = 1;
      driven.start(row.name);
      const bool delegated = foreign ? fills<Kind> : row.name != "answer-mode"s;
      EXPECT_EQ(static_cast<void *>(driven.handler.delegate), delegated ? driven.handler.delegateStorage : nullptr);
      const bool required = shape == Shape::setting && !foreign && delegated;
      EXPECT_EQ(driven.handler.seenRequired, required ? 1u : 0u);
      driven.end(row.name);
      EXPECT_EQ(driven.handler.delegate, nullptr);
      driven.end("n");
    }
  });
}

TEST(Handlers, AnswerModeIsCollectedInPieces) {
  const auto check = []<typename Kind>() {
    Context ctx;
    Driven<amSettingType, Kind> driven(ctx);
    driven.start("n");
    driven.start("answer-mode");
    for (const char *piece : {"man", "", "u", "al"})
      EXPECT_EQ(driven.text(piece), 0);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_TEXT);
    EXPECT_EQ(driven.handler.seenRequired, 0u);
    EXPECT_EQ(driven.end("answer-mode"), 0);
    EXPECT_EQ(driven.handler.seenRequired, 1u) << "received";
    EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    EXPECT_EQ(dump(*driven.record), fills<Kind> ? "mode=manual" : "mode=unset");
    driven.end("n");
  };
  check.operator()<Functions<amSettingType>::Filling>();
  check.operator()<Functions<amSettingType>::Checking>();
}

TEST(Handlers, TextIsTakenAndConvertedInTwoStatesOnly) {
  const auto check = []<typename Kind>() {
    for (int state = 0; state <= 5; ++state) {
      SCOPED_TRACE(state);
      const bool taken = state == XMLSTATE_IN_ELEMENT || state == XMLSTATE_IN_TEXT;
      Context ctx;
      Driven<amSettingType, Kind> driven(ctx);
      driven.start("n");
      driven.start("answer-mode");
      ctx->state = static_cast<uint8_t>(state);
      EXPECT_EQ(driven.text("manual"), 0);
      EXPECT_EQ(ctx->reader->text.used - ctx->reader->text.start, taken ? 6u : 0u);
      EXPECT_EQ(ctx->state, taken ? XMLSTATE_IN_TEXT : state);
      EXPECT_EQ(driven.end("answer-mode"), 0);
      EXPECT_EQ(driven.handler.seenRequired, taken ? 1u : 0u);
      EXPECT_EQ(rtxErrCount(ctx), 0u);
      driven.end("n");
    }
  };
  check.operator()<Functions<amSettingType>::Filling>();
  check.operator()<Functions<amSettingType>::Checking>();
}

TEST(Handlers, EntityEntersItsListAtItsStart) {
  Context ctx;
  Driven<poc_settingsType, Functions<poc_settingsType>::Filling> driven(ctx);
  driven.start("n");
  driven.start("entity");
  ASSERT_EQ(driven.record->entity.count, 1u);
  EXPECT_EQ(dump(*driven.record), "[id=-]");
  const char *const attributes[] = {"active", "true", nullptr, nullptr};
  driven.start("sss-settings");
  EXPECT_EQ(dump(*driven.record), "[id=- sss(active=false)]") << "a setting is present from its start";
  driven.start("simultaneous-sessions-support", attributes);
  EXPECT_EQ(driven.handler.level, 4);
  EXPECT_EQ(dump(*driven.record), "[id=- sss(active=true)]");
  for (const char *name : {"simultaneous-sessions-support", "sss-settings", "entity", "n"})
    EXPECT_EQ(driven.end(name), 0);
  EXPECT_EQ(driven.handler.level, 0);
}

TEST(Handlers, DeclarationsOfTheOwnElementAreBoundButNotByTheValidatorOfAnEntity) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    Driven<T, Kind> driven(ctx);
    const char *const attributes[] = {"xmlns:p", "urn:p", "id", "a", "active", "true", nullptr, nullptr};
    EXPECT_EQ(driven.start("n", attributes), 0);
    const bool presenceOnly = Functions<T>::shape == Shape::entity && !fills<Kind>;
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:p"), presenceOnly ? nullptr : "p");
    EXPECT_EQ(driven.end("n"), 0);
    EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:p"), nullptr) << "the binding went with the element";
  });
}

TEST(Handlers, SettingOfTheCallersIsInitialisedAgainAtItsStart) {
  Context ctx;
  Driven<entityType, Functions<entityType>::Filling> driven(ctx);
  const char *const attributes[] = {"id", "a", nullptr, nullptr};
  driven.start("n", attributes);
  std::memset(static_cast<void *>(&driven.record->am_settings), pattern, sizeof(amSettingType));
  driven.start("am-settings");
  EXPECT_EQ(dump(*driven.record), "id=a am(mode=unset)") << "empty lists, and a value that nobody has set";
  driven.end("am-settings");
  driven.end("n");
}

// ---- Without storage ------------------------------------------------------------------------------------------

TEST(HandlersWithoutStorage, RefuseChildrenThatNeedIt) {
  forEachHandler([]<typename T, typename Kind>() {
    const Shape shape = Functions<T>::shape;
    Context ctx([](RuntimeOptions &options) { options.heapLimit = 1; });
    T record;
    EXPECT_EQ(Functions<T>::init(ctx, &record), 0);
    typename Kind::Handler handler;
    EXPECT_EQ(Kind::init(ctx, &handler, &record, 0), STATUS_NO_MEMORY);
    EXPECT_EQ(handler.delegateStorage, nullptr);
    EXPECT_EQ(rtxErrCount(ctx), 0u) << "not recorded";
    // Without a scope for its declarations even the own element may be refused.
    handler.level = 1;
    for (const Row &row : rowsOf(shape, valueElement<T>())) {
      SCOPED_TRACE(row.name);
      rtxErrClear(ctx);
      const bool foreign = row.name == "mood"s;
      handler.contentState = foreign && shape == Shape::setting ? 1 : 0;
      const bool simple = row.name == "answer-mode"s || (foreign && !fills<Kind>);
      const int status = Kind::start(&handler, row.name, row.name, nullptr);
      if (shape == Shape::active) {
        EXPECT_EQ(status, STATUS_UNEXPECTED_ELEMENT);
      } else if (simple) {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(Kind::end(&handler, row.name, row.name), foreign ? 0 : STATUS_INVALID_CONTENT);
      } else {
        EXPECT_EQ(status, STATUS_NO_MEMORY);
        EXPECT_EQ(support::statuses(ctx), std::vector<int>{STATUS_NO_MEMORY});
      }
      EXPECT_EQ(handler.level, 1);
      EXPECT_EQ(handler.delegate, nullptr);
    }
    if constexpr (Functions<T>::shape != Shape::active) {
      Functions<T>::release(ctx, &record);
    }
  });
}

// ---- Trace ----------------------------------------------------------------------------------------------------

TEST(HandlerTrace, EveryCallbackIsEnteredAndLeftUnderItsName) {
  forEachHandler([]<typename T, typename Kind>() {
    Trace trace;
    Context ctx([&](RuntimeOptions &options) { trace.traceOf(options); });
    Driven<T, Kind> driven(ctx);
    driven.start("n");
    driven.text("t");
    driven.end("n");
    std::vector<std::string> expected;
    for (const char *callback : {"startElement", "characters", "endElement"})
      for (const char *sign : {"+", "-"})
        expected.push_back(sign + (fills<Kind> ? "QxSAX_"s : "QxVSAX_"s) + Functions<T>::name + "_" + callback);
    EXPECT_EQ(trace.log, expected);
  });
}

// What a whole chain of handlers does with a document.
template <int (*read)(RuntimeContext *ctx)> std::vector<std::string> traceOf(const std::string &text) {
  Trace trace;
  Context ctx([&](RuntimeOptions &options) { trace.traceOf(options); });
  EXPECT_EQ(support::setInput(ctx, text), 0);
  EXPECT_EQ(read(ctx), 0);
  return trace.log;
}

TEST(HandlerTrace, EventsPassThroughTheChain) {
  const std::string text = "<poc-settings><entity id='a'><am-settings/></entity></poc-settings>";
  for (const auto &[prefix, trace] :
       {std::pair{"QxSAX_"s, traceOf<decodeStatus>(text)}, std::pair{"QxVSAX_"s, traceOf<QxXmlV_poc_settings>(text)}}) {
    std::vector<std::string> expected;
    const std::vector<std::string> chain = {"poc_settingsType", "entityType", "amSettingType"};
    const auto event = [&, &family = prefix](size_t depth, const std::string &callback) {
      for (size_t i = 0; i < depth; ++i)
        expected.push_back("+" + family + chain[i] + callback);
      for (size_t i = depth; i-- > 0;)
        expected.push_back("-" + family + chain[i] + callback);
    };
    for (size_t depth = 1; depth <= 3; ++depth)
      event(depth, "_startElement");
    for (size_t depth = 3; depth >= 1; --depth)
      event(depth, "_endElement");
    EXPECT_EQ(trace, expected);
  }
}

} // namespace
