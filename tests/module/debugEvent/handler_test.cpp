// The handlers, driven by hand and without a reader, as a host may drive them.
#include "drivenHandler.h"
#include "handlers.h"
#include "input.h"

#include <algorithm>
#include <iterator>

using namespace debugInfo;
using support::Context;

namespace {

template <typename Handler> class Handlers : public testing::Test {};
using Kinds = testing::Types<SaxTypeHandler, VsaxTypeHandler>;
TYPED_TEST_SUITE(Handlers, Kinds);

TYPED_TEST(Handlers, InitPreparesEverything) {
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    Context ctx;
    support::HeapBalance balance(ctx);
    Told<TypeParam> told(ctx, *document);
    EXPECT_EQ(told.initialised, 0);
    support::expectFresh(ctx, told.handler,
                         {told.callbacks.startElement, told.callbacks.characters, told.callbacks.endElement},
                         static_cast<void *>(&told.value.value), 0);
  }
}

TYPED_TEST(Handlers, InitTakesTheLevelAndEmptiesTheCollectionBuffer) {
  for (const Document *document : recordDocuments()) {
    Context ctx;
    RtxMemBuf *buffer = &ctx->reader->text;
    ASSERT_EQ(rtxMemBufAppend(buffer, "left over", 9), 0);
    Value value;
    fillWithPattern(value);
    TypeParam handler;
    ASSERT_EQ(initHandler<TypeParam>(ctx, *document->type, handler, value, 3), 0);
    EXPECT_EQ(handler.level, 3);
    EXPECT_EQ(handler.startLevel, 3);
    EXPECT_EQ(buffer->used, buffer->start);
    support::releaseHandlers(ctx, handler);
  }
}

TYPED_TEST(Handlers, LevelsAndStatesOfADocument) {
  Context ctx;
  Told<TypeParam> told(ctx, documentOf("session"));
  const auto expectAt = [&](int level, int state) {
    EXPECT_EQ(told.handler.level, level);
    EXPECT_EQ(ctx->state, state);
  };
  const char *const attributes[] = {"id", "s", nullptr, nullptr};
  EXPECT_EQ(told.start("session", attributes), 0);
  expectAt(1, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(told.text("between"), 0);
  expectAt(1, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(told.start("start-trigger"), 0);
  expectAt(2, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(told.handler.contentState, 1);
  EXPECT_EQ(told.handler.elementId, 0);
  EXPECT_EQ(static_cast<void *>(told.handler.delegate), told.handler.delegateStorage);
  EXPECT_EQ(told.start("method"), 0);
  expectAt(3, XMLSTATE_IN_ELEMENT);
  for (const char *piece : {"INV", "", "IT", "E"})
    EXPECT_EQ(told.text(piece), 0);
  expectAt(3, XMLSTATE_IN_TEXT);
  EXPECT_EQ(told.end("method"), 0);
  expectAt(2, XMLSTATE_IN_TEXT);
  EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start);
  EXPECT_EQ(told.end("start-trigger"), 0);
  expectAt(1, XMLSTATE_DOC_END);
  EXPECT_EQ(told.handler.delegate, nullptr);
  EXPECT_EQ(told.text("between"), 0);
  expectAt(1, XMLSTATE_DOC_END);
  EXPECT_EQ(told.start("stop-trigger"), 0);
  EXPECT_EQ(told.handler.contentState, 2);
  EXPECT_EQ(told.end("stop-trigger"), 0);
  EXPECT_EQ(told.start("control"), 0);
  EXPECT_EQ(told.handler.elementId, 2);
  told.child("interface", "i");
  EXPECT_EQ(told.end("control"), 0);
  EXPECT_EQ(told.end("session"), 0);
  expectAt(0, XMLSTATE_DOC_END);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  EXPECT_EQ(dump(told.value->session), fills<TypeParam> ? "id=s start{method=INVITE} stop{} control{interface=i}"
                                                        : "id=- start{} stop{} control{interface=-}");
}

TYPED_TEST(Handlers, RequiredChildrenAreNoted) {
  Context ctx;
  Told<TypeParam> control(ctx, documentOf("control"));
  control.start("control");
  EXPECT_EQ(control.handler.seenRequired, 0u);
  control.child("interface", "i");
  EXPECT_EQ(control.handler.seenRequired, 1u);
  control.child("depth", "minimum");
  EXPECT_EQ(control.handler.seenRequired, 1u);
}

TYPED_TEST(Handlers, RootNameIsComparedOnlyIfSet) {
  for (const Document *document : recordDocuments()) {
    if (document->type->attributes != nullptr) continue;
    Context ctx;
    Told<TypeParam> told(ctx, *document);
    EXPECT_EQ(told.start("anything"), 0);
    EXPECT_EQ(told.end("anything"), 0);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

TYPED_TEST(Handlers, EmptyAttributeArraysInBothForms) {
  const char *const none[] = {nullptr};
  for (const char *const *attributes : {static_cast<const char *const *>(nullptr), none}) {
    Context ctx;
    Told<TypeParam> told(ctx, documentOf("debugconfig"));
    EXPECT_EQ(told.start("debugconfig", attributes), 0);
    EXPECT_EQ(told.start("session", attributes), 0);
    EXPECT_EQ(told.start("start-trigger", attributes), 0);
    EXPECT_EQ(told.start("to", attributes), 0);
    EXPECT_EQ(told.end("to"), 0);
    EXPECT_EQ(told.end("start-trigger"), 0);
    EXPECT_EQ(told.end("session"), 0);
    EXPECT_EQ(told.end("debugconfig"), 0);
    EXPECT_EQ(brief(ctx), "-103(tns__debugconfig,aor); -103(tns__session,id)");
  }
}

TYPED_TEST(Handlers, ResultsOfTheCallbacks) {
  Context ctx;
  Told<TypeParam> told(ctx, documentOf("control"));
  told.start("control");
  EXPECT_EQ(told.start("depth"), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(told.handler.level, 1) << "not counted";
  EXPECT_EQ(told.handler.contentState, 0);
  const char *const attributes[] = {"xmlns", namespaceUri, "xmlns:p", "u", "k", "v", nullptr, nullptr};
  EXPECT_EQ(told.start("interface", attributes), 0) << "reported, and read on";
  EXPECT_EQ(told.handler.level, 2);
  EXPECT_EQ(told.end("interface"), 0);
  told.start("depth");
  told.text("deep");
  EXPECT_EQ(told.end("depth"), STATUS_INVALID_CONTENT);
  EXPECT_EQ(told.handler.level, 1);
  told.start("debug-id");
  EXPECT_EQ(told.text("4x"), STATUS_INVALID_LEXICAL_FORM);
  ctx->state = XMLSTATE_INITIAL; // as a reader leaves it
  EXPECT_EQ(told.end("debug-id"), 0);
  EXPECT_EQ(told.end("control"), 0);
  EXPECT_EQ(brief(ctx), "-41(depth); -33(interface,k); -4(deep); -44(deep,tns__control,depth); -101");
}

TYPED_TEST(Handlers, ParentsPassOnWhatTheirDelegateReturns) {
  Context ctx;
  Told<TypeParam> told(ctx, documentOf("session"));
  told.start("session");
  told.start("start-trigger");
  EXPECT_EQ(told.start("bogus"), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(told.handler.level, 2) << "not counted";
  told.start("debug-id");
  told.text("4");
  EXPECT_EQ(told.end("debug-id"), STATUS_INVALID_CONTENT);
  EXPECT_EQ(told.handler.level, 2);
  told.end("start-trigger");
  EXPECT_EQ(told.handler.level, 1);
  told.end("session");
  EXPECT_EQ(told.handler.level, 0);
}

// ---- Content states ---------------------------------------------------------------------------------------------

constexpr int no = 0xFF;
constexpr int fin = 0xFE;

struct Row {
  const char *name;
  std::vector<int> after; // content state after this child, by the state before
};

struct StateTable {
  const char *root;
  std::vector<Row> rows;
};

const StateTable stateTables[] = {
    {"start-trigger",
     {{"from", {1, no, no, no, no, no, no}},
      {"to", {2, 2, no, no, no, no, no}},
      {"icsi", {3, 3, 3, no, no, no, no}},
      {"iari", {4, 4, 4, 4, no, no, no}},
      {"method", {5, 5, 5, 5, 5, no, no}},
      {"time", {6, 6, 6, 6, 6, 6, no}},
      {"debug-id", {fin, fin, fin, fin, fin, fin, fin}}}},
    {"stop-trigger", {{"time", {1, no, no}}, {"time-period", {2, 2, no}}, {"reason", {fin, fin, fin}}}},
    {"control", {{"interface", {1, no, no}}, {"depth", {no, 2, no}}, {"debug-id", {no, fin, fin}}}},
    {"session", {{"start-trigger", {1, no, no}}, {"stop-trigger", {no, 2, no}}, {"control", {no, no, fin}}}},
    {"debugconfig", {{"session", {1, 1}}}},
    {"debuginfo", {{"debugconfig", {1, 1, no}}, {"foreign", {2, 2, 2}}}},
};

TYPED_TEST(Handlers, EveryChildInEveryContentState) {
  for (const StateTable &table : stateTables) {
    Context ctx;
    Told<TypeParam> told(ctx, documentOf(table.root));
    told.start(table.root);
    for (size_t id = 0; id < table.rows.size(); ++id) {
      const Row &row = table.rows[id];
      std::vector<int> after = row.after;
      // A state that no column has is that of a content that is complete.
      after.resize(256, no);
      for (size_t before = 0; before < after.size(); ++before) {
        SCOPED_TRACE(table.root + "/"s + row.name + " in content state " + std::to_string(before));
        told.handler.contentState = static_cast<uint8_t>(before);
        const bool allowed = after[before] != no;
        EXPECT_EQ(told.start(row.name), allowed ? 0 : STATUS_UNEXPECTED_ELEMENT);
        EXPECT_EQ(told.handler.contentState, allowed ? after[before] : static_cast<int>(before));
        EXPECT_EQ(told.handler.level, allowed ? 2 : 1);
        if (!allowed) continue;
        EXPECT_EQ(told.handler.elementId, static_cast<int>(id));
        ctx->state = XMLSTATE_INITIAL; // nothing is converted, and no text is stored over another
        told.end(row.name);
      }
    }
  }
}

TYPED_TEST(Handlers, NothingFollowsTheLastChild) {
  Context ctx;
  Told<TypeParam> told(ctx, documentOf("start-trigger"));
  told.start("start-trigger");
  told.child("debug-id", "0A");
  EXPECT_EQ(told.handler.contentState, fin);
  for (const Row &row : stateTables[0].rows)
    EXPECT_EQ(told.start(row.name), STATUS_UNEXPECTED_ELEMENT) << row.name;
  EXPECT_EQ(told.end("start-trigger"), 0);
  EXPECT_EQ(dump(told.value->start_trigger), fills<TypeParam> ? "debug-id=0A" : "");
}

TYPED_TEST(Handlers, DeclarationsOfAChildSayWhatItIs) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_DebugEvent_NSURI(ctx), 1), 0);
  Told<TypeParam> told(ctx, documentOf("debuginfo"));
  told.start("debuginfo");
  const char *const ours[] = {"xmlns:p", namespaceUri, nullptr, nullptr};
  EXPECT_EQ(told.start("p:debugconfig", ours), 0);
  EXPECT_EQ(told.handler.elementId, 0);
  told.end("p:debugconfig");
  const char *const foreign[] = {"xmlns", "urn:other", nullptr, nullptr};
  EXPECT_EQ(told.start("debugconfig", foreign), 0);
  EXPECT_EQ(told.handler.elementId, 1);
  told.end("debugconfig");
  const char *const foreignPrefix[] = {"xmlns:p", "urn:other", nullptr, nullptr};
  told.handler.contentState = 0;
  EXPECT_EQ(told.start("p:debugconfig", foreignPrefix), 0);
  EXPECT_EQ(told.handler.elementId, 1);
  told.end("p:debugconfig");
  // The declaration went with its element.
  EXPECT_EQ(told.start("debugconfig"), STATUS_UNEXPECTED_ELEMENT);
  told.end("debuginfo");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, nullptr), RTXML_NS_NONE);
}

TYPED_TEST(Handlers, QualifiedAttributesNeedTheirDeclaration) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, QxGet_DebugEvent_NSURI(ctx), 1), 0);
  const char *const attributes[] = {"p:id", "s", nullptr, nullptr};
  {
    Told<TypeParam> told(ctx, documentOf("session"));
    told.start("session", attributes);
    told.end("session");
    EXPECT_EQ(brief(ctx), "-33(tns__session,p:id); -103(tns__session,id)");
  }
  rtxErrClear(ctx);
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "p", namespaceUri, nullptr, 0), 0);
  Told<TypeParam> told(ctx, documentOf("session"));
  told.start("session", attributes);
  told.end("session");
  EXPECT_EQ(brief(ctx), "");
  EXPECT_EQ(dump(told.value->session),
            "id="s + (fills<TypeParam> ? "s" : "-") + " start{} stop{} control{interface=-}");
}

// ---- Text ---------------------------------------------------------------------------------------------------------

TYPED_TEST(Handlers, TextIsTakenInTwoStatesOnly) {
  Context ctx;
  Told<TypeParam> told(ctx, documentOf("control"));
  told.start("control");
  told.start("interface");
  for (int state = 0; state <= 5; ++state) {
    const bool taken = state == XMLSTATE_IN_ELEMENT || state == XMLSTATE_IN_TEXT;
    ctx->state = static_cast<uint8_t>(state);
    const size_t before = ctx->reader->text.used;
    EXPECT_EQ(told.text("x"), 0);
    EXPECT_EQ(ctx->reader->text.used, before + (taken ? 1 : 0)) << "state " << state;
    EXPECT_EQ(ctx->state, taken ? XMLSTATE_IN_TEXT : state);
  }
  ctx->state = XMLSTATE_IN_TEXT;
  told.end("interface");
  told.end("control");
}

TYPED_TEST(Handlers, ChildIsConvertedInTwoStatesOnly) {
  for (int state : {0, 1, 3, 5}) {
    for (const char *name : {"depth", "debug-id"}) {
      Context ctx;
      Told<TypeParam> told(ctx, documentOf("control"));
      told.start("control");
      told.handler.contentState = 1;
      told.start(name);
      told.text("4");
      ctx->state = static_cast<uint8_t>(state);
      EXPECT_EQ(told.end(name), 0) << name << " in state " << state;
      EXPECT_EQ(rtxErrCount(ctx), 0u);
      EXPECT_EQ(told.value->control.m, 0u);
    }
  }
}

// Cuts digits at every set of places.
TYPED_TEST(Handlers, BytesAreTheSameForEveryWayOfCutting) {
  struct Case {
    std::string digits;
    const char *bytes;
    const char *errors;
  };
  const Case cases[] = {{"43aA55", "debug-id=43AA55", ""},
                        {" 0aB1\n", "debug-id=0AB1", ""},
                        {"43A", "", "-44(43A,tns__start_trigger,debug-id)"},
                        {"4 3A", "", "-101"},
                        {"43x5", "", "-101"}};
  for (const Case &c : cases) {
    for (uint32_t cuts = 0; cuts < 1u << (c.digits.size() - 1); ++cuts) {
      SCOPED_TRACE(c.digits + " cut by " + std::to_string(cuts));
      Context ctx;
      support::HeapBalance balance(ctx);
      Told<TypeParam> told(ctx, documentOf("start-trigger"));
      told.start("start-trigger");
      told.start("debug-id");
      int status = 0;
      for (size_t from = 0, to = 1; to <= c.digits.size() && status == 0; ++to) {
        if (to < c.digits.size() && (cuts >> (to - 1) & 1) == 0) continue;
        // In a block of its own, so that a byte read too far is seen.
        const support::ExactBytes piece(std::string_view(c.digits).substr(from, to - from));
        status = told.text({piece.data(), piece.size()});
        from = to;
      }
      if (status != 0) ctx->state = XMLSTATE_INITIAL; // as a reader leaves it
      told.end("debug-id");
      told.end("start-trigger");
      EXPECT_EQ(brief(ctx), c.errors);
      EXPECT_EQ(dump(told.value->start_trigger), fills<TypeParam> ? c.bytes : "");
    }
  }
}

TYPED_TEST(Handlers, HalfAPairDoesNotReachTheNextElement) {
  Context ctx;
  Told<TypeParam> told(ctx, documentOf("start-trigger"));
  told.start("start-trigger");
  told.start("debug-id");
  told.text("4");
  ctx->state = XMLSTATE_INITIAL; // cut short, as by a reader that skips
  rtxMemBufReset(&ctx->reader->text);
  told.end("debug-id");
  told.handler.contentState = 0;
  told.child("debug-id", "0A");
  told.end("start-trigger");
  EXPECT_EQ(brief(ctx), "");
  EXPECT_EQ(dump(told.value->start_trigger), fills<TypeParam> ? "debug-id=0A" : "");
}

// ---- Delegates ------------------------------------------------------------------------------------------------------

TEST(FillingHandler, ListItemsEnterTheirListAtTheirStart) {
  Context ctx;
  Told<SaxTypeHandler> told(ctx, documentOf("debuginfo"));
  const char *const info[] = {"version", "1", "state", "full", nullptr, nullptr};
  told.start("debuginfo", info);
  told.start("debugconfig");
  ASSERT_EQ(told.value->debuginfo.tns_debugconfig.count, 1u);
  const auto &config = *itemsOf<tns__debugconfig>(told.value->debuginfo.tns_debugconfig)[0];
  EXPECT_EQ(dump(config), "aor=-");
  told.start("session");
  ASSERT_EQ(config.tns_session.count, 1u);
  EXPECT_EQ(itemsOf<tns__session>(config.tns_session)[0]->tns_control.tns_depth, 0u)
      << "cleared before it is initialised";
  told.end("session");
  told.end("debugconfig");
  EXPECT_EQ(told.start("mood"), 0);
  ASSERT_EQ(told.value->debuginfo.anyElems.items.count, 1u);
  EXPECT_EQ(itemsOf<RtxXmlString>(told.value->debuginfo.anyElems.items)[0]->value, nullptr);
  EXPECT_EQ(told.text("happy"), 0);
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  told.start("very");
  told.end("very");
  EXPECT_NE(told.handler.delegate, nullptr);
  told.end("mood");
  EXPECT_EQ(told.handler.delegate, nullptr);
  told.end("debuginfo");
  EXPECT_EQ(dump(told.value->debuginfo), "version=1 state=0 debugconfig{aor=- session{id=- start{} stop{} "
                                         "control{interface=-}}} any=<mood>happy<very/></mood>");
}

TEST(CheckingHandler, ForeignElementHasNoDelegate) {
  Context ctx;
  Told<VsaxTypeHandler> told(ctx, documentOf("debuginfo"));
  const char *const info[] = {"version", "1", "state", "full", nullptr, nullptr};
  told.start("debuginfo", info);
  for (const char *name : {"mood", "debugconfig", "session"}) {
    EXPECT_EQ(told.start(name), 0);
    EXPECT_EQ(told.handler.delegate, nullptr);
  }
  EXPECT_EQ(told.text("x"), 0);
  for (const char *name : {"session", "debugconfig", "mood"})
    EXPECT_EQ(told.end(name), 0);
  EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start) << "what was collected is dropped";
  told.end("debuginfo");
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TYPED_TEST(Handlers, AfterACutOffDocumentTheOwnerReleasesAll) {
  // Every number of elements left open.
  const char *const names[] = {"debuginfo", "debugconfig", "session", "start-trigger", "from"};
  for (size_t open = 0; open <= std::size(names); ++open) {
    Context ctx;
    support::HeapBalance balance(ctx);
    Told<TypeParam> told(ctx, documentOf("debuginfo"));
    for (size_t i = 0; i < open; ++i)
      EXPECT_EQ(told.start(names[i]), 0);
    told.text("te");
    // At the end of this scope the owner releases what is open, then the record.
    size_t delegates = 0;
    for (const TypeParam *handler = &told.handler; handler->delegate != nullptr;
         handler = reinterpret_cast<const TypeParam *>(handler->delegate))
      ++delegates;
    EXPECT_EQ(delegates, open <= 1 ? 0 : std::min<size_t>(open - 1, 3));
    rtxMemBufReset(&ctx->reader->text);
  }
}

// ---- Without storage --------------------------------------------------------------------------------------------

// Takes all that a heap of this limit gives.
class ExhaustedHeap {
public:
  explicit ExhaustedHeap(RuntimeContext *context) : ctx(context) {
    for (size_t size = 4096; size != 0; size /= 2)
      while (void *block = rtxMemHeapAlloc(ctx, size))
        blocks.push_back(block);
  }
  ~ExhaustedHeap() { giveBack(); }
  ExhaustedHeap(const ExhaustedHeap &) = delete;
  ExhaustedHeap &operator=(const ExhaustedHeap &) = delete;

  void giveBack() {
    for (void *block : blocks)
      rtxMemHeapFreePtr(ctx, block);
    blocks.clear();
  }

private:
  RuntimeContext *ctx;
  std::vector<void *> blocks;
};

TYPED_TEST(Handlers, InitSaysThatThereIsNoStorage) {
  for (const Document *document : recordDocuments()) {
    Context ctx([](RuntimeOptions &options) { options.heapLimit = 20000; });
    ExhaustedHeap exhausted(ctx);
    Told<TypeParam> told(ctx, *document);
    EXPECT_EQ(told.initialised, STATUS_NO_MEMORY) << document->root;
    EXPECT_EQ(told.handler.delegateStorage, nullptr);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

TYPED_TEST(Handlers, WithoutStorageComplexChildrenAreRefused) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 20000; });
  ExhaustedHeap exhausted(ctx);
  Told<TypeParam> session(ctx, documentOf("session"));
  Told<TypeParam> control(ctx, documentOf("control"));
  exhausted.giveBack();
  const char *const attributes[] = {"id", "s", nullptr, nullptr};
  session.start("session", attributes);
  EXPECT_EQ(session.start("start-trigger"), STATUS_NO_MEMORY);
  EXPECT_EQ(session.handler.level, 1) << "not counted";
  EXPECT_EQ(session.handler.delegate, nullptr);
  session.end("session");
  EXPECT_EQ(brief(ctx), "-10");
  rtxErrClear(ctx);

  // Simple children need none.
  control.start("control");
  control.child("interface", "i");
  control.child("depth", "minimum");
  control.end("control");
  EXPECT_EQ(brief(ctx), "");
  EXPECT_EQ(dump(control.value->control), fills<TypeParam> ? "interface=i depth=1" : "interface=-");
}

// ---- Trace --------------------------------------------------------------------------------------------------------

struct Trace {
  std::vector<std::string> log;
  static void note(void *self, bool enter, const char *function, const char *) {
    static_cast<Trace *>(self)->log.push_back((enter ? "+" : "-") + std::string(function));
  }
};

std::vector<std::string> traced(const Document &document, const std::string &text, bool validator) {
  Trace trace;
  Context ctx([&](RuntimeOptions &options) {
    options.trace = Trace::note;
    options.traceUser = &trace;
  });
  validator ? validate(ctx, document, text) : decode(ctx, document, text);
  return trace.log;
}

TEST(HandlerTrace, EveryCallbackIsEnteredAndLeftUnderItsName) {
  const std::pair<const char *, const char *> cases[] = {
      {"start-trigger", "<to>t</to>"}, {"stop-trigger", "<time>t</time>"}, {"control", "<interface>i</interface>"}};
  for (const auto &[root, content] : cases) {
    for (bool validator : {false, true}) {
      const Document &document = documentOf(root);
      std::vector<std::string> expected;
      for (const char *callback : {"startElement", "startElement", "characters", "endElement", "endElement"}) {
        const std::string name = (validator ? "QxVSAX_"s : "QxSAX_"s) + document.type->name + "_" + callback;
        expected.push_back("+" + name);
        expected.push_back("-" + name);
      }
      EXPECT_EQ(traced(document, element(root, content), validator), expected);
    }
  }
}

TEST(HandlerTrace, EventsInsideAChildAreTracedForTheRootAndForTheChildsOwnHandler) {
  for (bool validator : {false, true}) {
    const std::vector<std::string> log = traced(
        documentOf("session"), element("session", "id='s'", "<start-trigger><to>t</to></start-trigger>"), validator);
    const std::string prefix = validator ? "QxVSAX_tns__" : "QxSAX_tns__";
    std::vector<std::string> expected;
    const auto both = [&](const std::string &callback) {
      expected.push_back("+" + prefix + "session_" + callback);
      expected.push_back("+" + prefix + "start_trigger_" + callback);
      expected.push_back("-" + prefix + "start_trigger_" + callback);
      expected.push_back("-" + prefix + "session_" + callback);
    };
    expected = {"+" + prefix + "session_startElement", "-" + prefix + "session_startElement"};
    both("startElement");
    both("startElement");
    both("characters");
    both("endElement");
    both("endElement");
    expected.push_back("+" + prefix + "session_endElement");
    expected.push_back("-" + prefix + "session_endElement");
    EXPECT_EQ(log, expected);
  }
}

} // namespace
