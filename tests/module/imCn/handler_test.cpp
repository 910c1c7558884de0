// The handlers of both types, driven by hand and without a reader, as a host may drive them.
#include "body.h"
#include "drivenHandler.h"

#include <type_traits>

using namespace body;
using support::Context;
template <typename T, typename Kind> using Driven = support::DrivenHandler<T, Kind>;
using support::Trace;

namespace {

// Calls test<T, Kind>() for each type with handlers and both kinds of them.
template <typename Test> void forEachHandler(const Test &test) {
  support::forEachHandler<tAlternativeService, tIMS3GPP>(test);
}

template <typename Kind> constexpr bool fills = support::fillsRecord<typename Kind::Handler>;

constexpr const char *const versionOne[] = {"version", "1", nullptr, nullptr};

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
    EXPECT_EQ(driven.start("anything", versionOne), 0);
    EXPECT_EQ(driven.handler.level, 1);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
    EXPECT_EQ(driven.text("between"), 0);
    EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT) << "text between children is no one's";
    EXPECT_EQ(driven.end("anything"), 0);
    EXPECT_EQ(driven.handler.level, 0);
    EXPECT_EQ(ctx->state, XMLSTATE_DOC_END);
    EXPECT_EQ(errorsOf(ctx), "");
  });
}

TEST(Handlers, RootNameIsComparedIfSet) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    Driven<T, Kind> driven(ctx);
    driven.handler.rootName = "expected";
    EXPECT_EQ(driven.start("found", versionOne), 0) << "and read on";
    EXPECT_EQ(driven.handler.level, 1);
    EXPECT_EQ(errorsOf(ctx), fills<Kind> ? "-3(expected,found)@SAX" : "-3(expected,found)@Vldt");
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
      EXPECT_EQ(support::statuses(ctx),
                (std::is_same_v<T, tIMS3GPP> ? std::vector<int>{STATUS_MISSING_ATTRIBUTE} : std::vector<int>{}));
      EXPECT_EQ(driven.end("n"), 0);
    }
  });
}

// ---- Children -------------------------------------------------------------------------------------------------

constexpr int no = -1;

struct Row {
  const char *name;       // "action" stands for any foreign element
  std::vector<int> after; // content state after this child, by the state before; behind the table nothing is allowed
};

template <typename T> std::vector<Row> rowsOf() {
  if constexpr (std::is_same_v<T, tIMS3GPP>)
    return {{"alternative-service", {1, no, no, no}}, {"service-info", {1, no, no, no}}, {"action", {no, 2, 2, no}}};
  return {{"type", {1, no, no, no, no}}, {"reason", {no, 2, no, no, no}}, {"action", {no, no, 3, 3, no}}};
}

TEST(Handlers, EveryChildInEveryContentState) {
  forEachHandler([]<typename T, typename Kind>() {
    const std::vector<Row> rows = rowsOf<T>();
    for (size_t id = 0; id < rows.size(); ++id) {
      const Row &row = rows[id];
      for (size_t before = 0; before < row.after.size(); ++before) {
        SCOPED_TRACE(row.name + " in content state "s + std::to_string(before));
        Context ctx;
        Driven<T, Kind> driven(ctx);
        driven.start("n", versionOne);
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
          const bool delegated = row.name == "alternative-service"s || (row.name == "action"s && fills<Kind>);
          EXPECT_EQ(static_cast<void *>(driven.handler.delegate), delegated ? driven.handler.delegateStorage : nullptr);
          EXPECT_EQ(driven.end(row.name), 0);
          EXPECT_EQ(driven.handler.level, 1);
          EXPECT_EQ(driven.handler.delegate, nullptr);
        }
        EXPECT_EQ(driven.end("n"), 0);
      }
    }
  });
}

TEST(Handlers, NamespaceOfAChildDoesNotMatter) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    Driven<T, Kind> driven(ctx);
    driven.start("n", versionOne);
    const char *const declared[] = {"xmlns:p", "urn:p", "xmlns", "urn:q", nullptr, nullptr};
    const Row row = rowsOf<T>()[0];
    const std::string qualified = "p:"s + row.name;
    EXPECT_EQ(Kind::start(&driven.handler, row.name, qualified.c_str(), declared), 0);
    EXPECT_EQ(driven.handler.elementId, 0);
    EXPECT_EQ(Kind::end(&driven.handler, row.name, qualified.c_str()), 0);
    EXPECT_EQ(errorsOf(ctx), "");
    driven.end("n");
  });
}

// Not even a table of another module's makes a namespace matter.
TEST(Handlers, AnyNamespaceIsForeignWhereForeignElementsMayStand) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx;
    ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_IMS_NSURI(ctx), QX_URI_SLOTS), 0);
    for (uint32_t index = 0; index < QX_URI_SLOTS; ++index) {
      Driven<T, Kind> driven(ctx);
      driven.start("n", versionOne);
      driven.handler.contentState = 2;
      const char *const declared[] = {"xmlns", QxGet_IMS_NSURI(ctx)[index], nullptr, nullptr};
      EXPECT_EQ(driven.start("action", declared), 0);
      EXPECT_EQ(driven.handler.elementId, 2);
      EXPECT_EQ(driven.end("action"), 0);
      driven.handler.contentState = 0;
      const char *const first = rowsOf<T>()[0].name;
      EXPECT_EQ(driven.start(first, declared), 0);
      EXPECT_EQ(driven.handler.elementId, 0);
      EXPECT_EQ(driven.end(first), 0);
      EXPECT_EQ(driven.end("n"), 0);
    }
    EXPECT_EQ(errorsOf(ctx), "");
  });
}

TEST(Handlers, TextsAreCollectedInPiecesAndNotedAsSeen) {
  const auto check = []<typename Kind>() {
    Context ctx;
    Driven<tAlternativeService, Kind> driven(ctx);
    driven.start("n");
    uint32_t seen = 0;
    for (const char *name : {"type", "reason"}) {
      driven.start(name);
      for (const char *piece : {"a", "", "b", "c"})
        EXPECT_EQ(driven.text(piece), 0);
      EXPECT_EQ(ctx->state, XMLSTATE_IN_TEXT);
      EXPECT_EQ(driven.handler.seenRequired, seen);
      EXPECT_EQ(driven.end(name), 0);
      seen = 2 * seen + 1;
      EXPECT_EQ(driven.handler.seenRequired, seen) << "a bit for each";
      EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start);
    }
    EXPECT_EQ(dump(*driven.record), fills<Kind> ? "type=abc reason=abc" : "type=- reason=-");
    driven.end("n");
  };
  check.operator()<Functions<tAlternativeService>::Filling>();
  check.operator()<Functions<tAlternativeService>::Checking>();
}

TEST(Handlers, TextIsTakenAndConvertedInTwoStatesOnly) {
  for (int state = 0; state <= 5; ++state) {
    SCOPED_TRACE(state);
    const bool taken = state == XMLSTATE_IN_ELEMENT || state == XMLSTATE_IN_TEXT;
    Context ctx;
    Driven<tIMS3GPP, Functions<tIMS3GPP>::Filling> driven(ctx);
    driven.start("n", versionOne);
    driven.start("service-info");
    EXPECT_EQ(driven.record->_choice1.t, 2) << "set at the start";
    ctx->state = static_cast<uint8_t>(state);
    EXPECT_EQ(driven.text("abc"), 0);
    EXPECT_EQ(ctx->reader->text.used - ctx->reader->text.start, taken ? 3u : 0u);
    EXPECT_EQ(ctx->state, taken ? XMLSTATE_IN_TEXT : state);
    EXPECT_EQ(driven.end("service-info"), 0);
    EXPECT_EQ(dump(driven.record->_choice1), taken ? "info=abc" : "info=-");
    driven.end("n");
  }
}

TEST(Handlers, AlternativeServiceIsInitialisedWhateverTheSelectorWas) {
  for (uint16_t selector : {uint16_t{0}, uint16_t{1}}) {
    Context ctx;
    Driven<tIMS3GPP, Functions<tIMS3GPP>::Filling> driven(ctx);
    driven.start("n", versionOne);
    std::memset(static_cast<void *>(&driven.record->_choice1.u), pattern, sizeof driven.record->_choice1.u);
    driven.record->_choice1.t = selector;
    driven.start("alternative-service");
    EXPECT_EQ(dump(driven.record->_choice1), "alternative(type=- reason=-)");
    driven.end("alternative-service");
    driven.end("n");
  }
}

// ---- Without storage ------------------------------------------------------------------------------------------

TEST(HandlersWithoutStorage, RefuseChildrenThatNeedIt) {
  forEachHandler([]<typename T, typename Kind>() {
    Context ctx([](RuntimeOptions &options) { options.heapLimit = 1; });
    Record<T> record(ctx);
    typename Kind::Handler handler;
    EXPECT_EQ(Kind::init(ctx, &handler, record, 0), STATUS_NO_MEMORY);
    EXPECT_EQ(handler.delegateStorage, nullptr);
    EXPECT_EQ(rtxErrCount(ctx), 0u) << "not recorded";
    // Without a scope for its declarations even the own element may be refused.
    handler.level = 1;
    std::vector<Row> rows = rowsOf<T>();
    for (const Row &row : rows) {
      SCOPED_TRACE(row.name);
      rtxErrClear(ctx);
      size_t state = 0;
      while (row.after[state] == no)
        ++state;
      handler.contentState = static_cast<uint8_t>(state);
      const bool delegated = row.name == "alternative-service"s || (row.name == "action"s && fills<Kind>);
      const int status = Kind::start(&handler, row.name, row.name, nullptr);
      EXPECT_EQ(status, delegated ? STATUS_NO_MEMORY : 0);
      if (delegated) {
        EXPECT_EQ(support::statuses(ctx), std::vector<int>{STATUS_NO_MEMORY});
      } else {
        Kind::end(&handler, row.name, row.name);
      }
      EXPECT_EQ(handler.level, 1);
      EXPECT_EQ(handler.delegate, nullptr);
    }
  });
}

// ---- Trace ----------------------------------------------------------------------------------------------------

TEST(HandlerTrace, EveryCallbackIsEnteredAndLeftUnderItsName) {
  forEachHandler([]<typename T, typename Kind>() {
    Trace trace;
    Context ctx([&](RuntimeOptions &options) { trace.traceOf(options); });
    Driven<T, Kind> driven(ctx);
    driven.start("n", versionOne);
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
  const std::string text = alternative("<type>t</type>");
  for (const auto &[prefix, trace] :
       {std::pair{"QxSAX_"s, traceOf<decodeStatus>(text)}, std::pair{"QxVSAX_"s, traceOf<QxXmlV_ims_3gpp>(text)}}) {
    std::vector<std::string> expected;
    const auto event = [&, &family = prefix](bool forwarded, const std::string &callback) {
      expected.push_back("+" + family + "tIMS3GPP_" + callback);
      if (forwarded) {
        expected.push_back("+" + family + "tAlternativeService_" + callback);
        expected.push_back("-" + family + "tAlternativeService_" + callback);
      }
      expected.push_back("-" + family + "tIMS3GPP_" + callback);
    };
    event(false, "startElement"); // of the root
    event(true, "startElement");  // of the alternative service
    event(true, "startElement");  // of its type
    event(true, "characters");
    event(true, "endElement");
    event(true, "endElement");
    event(false, "endElement");
    EXPECT_EQ(trace, expected);
  }
}

} // namespace
