// The handlers, driven by hand and without a reader, as a host may drive them.
#include "composing.h"
#include "drivenHandler.h"

#include <cstring>
#include <type_traits>

using namespace composing;
using support::Context;

namespace {

// One set of callbacks, for filling a record or for checking only.
using Filling = Functions<tns__isComposing>::Filling;
using Checking = Functions<tns__isComposing>::Checking;

template <typename Kind> class Handlers : public testing::Test {
protected:
  void SetUp() override {
    std::memset(&handler, pattern, sizeof handler);
    ASSERT_EQ(Kind::init(ctx, &handler, record, 0), 0);
  }
  void TearDown() override { rtxMemHeapFreePtr(ctx, handler.delegateStorage); }

  int start(const char *name, const char *const *attributes = nullptr) {
    return Kind::start(&handler, name, name, attributes);
  }
  int text(std::string_view bytes) { return Kind::characters(&handler, bytes.data(), bytes.size()); }
  int end(const char *name) { return Kind::end(&handler, name, name); }

  Context ctx;
  Record record{ctx, nullptr};
  typename Kind::Handler handler;
};

using Kinds = testing::Types<Filling, Checking>;
TYPED_TEST_SUITE(Handlers, Kinds);

TYPED_TEST(Handlers, InitPreparesEverything) {
  support::expectFresh<typename TypeParam::Handler>(
      this->ctx, this->handler, {TypeParam::start, TypeParam::characters, TypeParam::end}, &this->record.get(), 0);
}

TYPED_TEST(Handlers, InitTakesTheLevelAndEmptiesTheCollectionBuffer) {
  RtxMemBuf *buffer = &this->ctx->reader->text;
  ASSERT_EQ(rtxMemBufAppend(buffer, "left over", 9), 0);
  typename TypeParam::Handler other;
  ASSERT_EQ(TypeParam::init(this->ctx, &other, this->record, 3), 0);
  EXPECT_EQ(other.level, 3);
  EXPECT_EQ(other.startLevel, 3);
  EXPECT_EQ(buffer->used, buffer->start);
  rtxMemHeapFreePtr(this->ctx, other.delegateStorage);
}

TYPED_TEST(Handlers, LevelsAndStatesOfADocument) {
  const auto expectAt = [this](int level, int state) {
    EXPECT_EQ(this->handler.level, level);
    EXPECT_EQ(this->ctx->state, state);
  };
  EXPECT_EQ(this->start("isComposing"), 0);
  expectAt(1, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(this->text("between"), 0);
  expectAt(1, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(this->start("state"), 0);
  expectAt(2, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(this->handler.contentState, 1);
  for (const char *piece : {"act", "", "i", "ve"})
    EXPECT_EQ(this->text(piece), 0);
  expectAt(2, XMLSTATE_IN_TEXT);
  EXPECT_EQ(this->handler.seenRequired, 0u);
  EXPECT_EQ(this->end("state"), 0);
  expectAt(1, XMLSTATE_IN_TEXT);
  EXPECT_EQ(this->handler.seenRequired, 1u);
  EXPECT_EQ(this->ctx->reader->text.used, this->ctx->reader->text.start);
  EXPECT_EQ(this->text(" between "), 0);
  EXPECT_EQ(this->start("refresh"), 0);
  EXPECT_EQ(this->handler.elementId, 3);
  EXPECT_EQ(this->handler.contentState, 4);
  EXPECT_EQ(this->text("7"), 0);
  EXPECT_EQ(this->end("refresh"), 0);
  EXPECT_EQ(this->end("isComposing"), 0);
  expectAt(0, XMLSTATE_DOC_END);
  EXPECT_EQ(rtxErrCount(this->ctx), 0u);
  EXPECT_EQ(dump(this->record.get()), (std::is_same_v<TypeParam, Filling>) ? "state=active refresh=7" : "state=-");
}

TYPED_TEST(Handlers, RootNameIsComparedOnlyIfSet) {
  EXPECT_EQ(this->start("anything"), 0);
  EXPECT_EQ(rtxErrCount(this->ctx), 0u);
  EXPECT_EQ(this->end("anything"), 0);
}

TYPED_TEST(Handlers, TextIsTakenInTwoStatesOnly) {
  this->start("isComposing");
  this->start("state");
  for (int state = 0; state <= 5; ++state) {
    const bool taken = state == XMLSTATE_IN_ELEMENT || state == XMLSTATE_IN_TEXT;
    this->ctx->state = static_cast<uint8_t>(state);
    const size_t before = this->ctx->reader->text.used;
    EXPECT_EQ(this->text("x"), 0);
    EXPECT_EQ(this->ctx->reader->text.used, before + (taken ? 1 : 0)) << "state " << state;
    EXPECT_EQ(this->ctx->state, taken ? XMLSTATE_IN_TEXT : state);
  }
  this->ctx->state = XMLSTATE_IN_TEXT;
  this->end("state");
  this->end("isComposing");
}

TYPED_TEST(Handlers, ChildIsConvertedInTwoStatesOnly) {
  for (int state : {0, 1, 3, 5}) {
    this->start("isComposing");
    this->handler.contentState = 1;
    this->start("refresh");
    this->text("abc");
    this->ctx->state = static_cast<uint8_t>(state);
    EXPECT_EQ(this->end("refresh"), 0) << "state " << state;
    EXPECT_EQ(rtxErrCount(this->ctx), 0u);
    this->end("isComposing");
    rtxMemBufReset(&this->ctx->reader->text);
  }
}

TYPED_TEST(Handlers, ResultsOfTheCallbacks) {
  this->start("isComposing");
  EXPECT_EQ(this->start("refresh"), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(this->handler.level, 1) << "not counted";
  EXPECT_EQ(this->handler.contentState, 0);
  this->start("state");
  this->end("state");
  const char *const attributes[] = {"xmlns", namespaceUri, "xmlns:p", "u", "k", "v", nullptr, nullptr};
  EXPECT_EQ(this->start("refresh", attributes), 0) << "reported, and read on";
  EXPECT_EQ(this->handler.level, 2);
  this->text("0");
  EXPECT_EQ(this->end("refresh"), STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(this->handler.level, 1);
  this->handler.contentState = 1;
  this->start("refresh");
  this->text("x");
  EXPECT_EQ(this->end("refresh"), STATUS_INVALID_CONTENT);
  EXPECT_EQ(support::statuses(this->ctx), std::vector<int>({-41, -33, -16, -44}));
  this->end("isComposing");
}

TYPED_TEST(Handlers, EmptyAttributeArraysInBothForms) {
  const char *const none[] = {nullptr};
  EXPECT_EQ(this->start("isComposing", none), 0);
  EXPECT_EQ(this->start("state", none), 0);
  EXPECT_EQ(this->end("state"), 0);
  EXPECT_EQ(this->start("refresh", nullptr), 0);
  this->text("1");
  EXPECT_EQ(this->end("refresh"), 0);
  EXPECT_EQ(this->end("isComposing"), 0);
  EXPECT_EQ(rtxErrCount(this->ctx), 0u);
}

TYPED_TEST(Handlers, EveryChildInEveryContentState) {
  constexpr int no = -1;
  struct Row {
    const char *name;
    int after[6]; // content state after this child, by the state before
  };
  constexpr Row rows[] = {{"state", {1, no, no, no, no, no}},
                          {"lastactive", {no, 2, no, no, no, no}},
                          {"contenttype", {no, 3, 3, no, no, no}},
                          {"refresh", {no, 4, 4, 4, no, no}},
                          {"mood", {no, 5, 5, 5, 5, 5}}};
  this->start("isComposing");
  for (int id = 0; id < 5; ++id) {
    for (int before = 0; before < 6; ++before) {
      const Row &row = rows[id];
      SCOPED_TRACE(row.name + " in content state "s + std::to_string(before));
      this->handler.contentState = static_cast<uint8_t>(before);
      const int after = row.after[before];
      EXPECT_EQ(this->start(row.name), after == no ? STATUS_UNEXPECTED_ELEMENT : 0);
      EXPECT_EQ(this->handler.contentState, after == no ? before : after);
      EXPECT_EQ(this->handler.level, after == no ? 1 : 2);
      if (after == no) continue;
      EXPECT_EQ(this->handler.elementId, id);
      this->ctx->state = XMLSTATE_INITIAL; // nothing is converted, and no text is stored over another
      this->end(row.name);
    }
  }
}

TYPED_TEST(Handlers, DeclarationsOfAChildSayWhatItIs) {
  ASSERT_EQ(rtXmlNSSetURITable(this->ctx, QxGet_IMS_NSURI(this->ctx), 5), 0);
  this->start("isComposing");
  const char *const ours[] = {"xmlns:p", namespaceUri, nullptr, nullptr};
  EXPECT_EQ(TypeParam::start(&this->handler, "state", "p:state", ours), 0);
  EXPECT_EQ(this->handler.elementId, 0);
  TypeParam::end(&this->handler, "state", "p:state");
  const char *const foreign[] = {"xmlns", "urn:other", nullptr, nullptr};
  EXPECT_EQ(this->start("refresh", foreign), 0);
  EXPECT_EQ(this->handler.elementId, 4);
  this->end("refresh");
  const char *const foreignPrefix[] = {"xmlns:p", "urn:other", nullptr, nullptr};
  this->handler.contentState = 1;
  EXPECT_EQ(TypeParam::start(&this->handler, "refresh", "p:refresh", foreignPrefix), 0);
  EXPECT_EQ(this->handler.elementId, 4);
  TypeParam::end(&this->handler, "refresh", "p:refresh");
  // The declaration went with its element.
  EXPECT_EQ(this->start("refresh"), STATUS_UNEXPECTED_ELEMENT);
  this->end("isComposing");
  EXPECT_EQ(rtXmlNSGetIndex(this->ctx, nullptr), RTXML_NS_NONE);
}

TEST(FillingHandler, ForeignElementIsHandedToADelegate) {
  Context ctx;
  Record record(ctx, nullptr);
  SaxTypeHandler handler;
  ASSERT_EQ(QxSAX_tns__isComposing_init(ctx, &handler, record, 0), 0);
  const auto start = [&](const char *name) {
    return QxSAX_tns__isComposing_startElement(&handler, name, name, nullptr);
  };
  const auto end = [&](const char *name) { return QxSAX_tns__isComposing_endElement(&handler, name, name); };
  start("isComposing");
  start("state");
  end("state");
  EXPECT_EQ(start("mood"), 0);
  EXPECT_EQ(static_cast<void *>(handler.delegate), handler.delegateStorage);
  ASSERT_EQ(record->anyElems.items.count, 1u) << "entered at its start";
  EXPECT_EQ(static_cast<RtxXmlString *>(record->anyElems.items.head->data)->value, nullptr);
  EXPECT_EQ(QxSAX_tns__isComposing_characters(&handler, "happy", 5), 0);
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  start("very");
  end("very");
  EXPECT_NE(handler.delegate, nullptr);
  EXPECT_EQ(end("mood"), 0);
  EXPECT_EQ(handler.delegate, nullptr);
  EXPECT_EQ(end("isComposing"), 0);
  EXPECT_EQ(dump(record.get()), "state= any=<mood>happy<very/></mood>");
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
}

TEST(CheckingHandler, ForeignElementHasNoDelegate) {
  Context ctx;
  VsaxTypeHandler handler;
  ASSERT_EQ(QxVSAX_tns__isComposing_init(ctx, &handler, 0), 0);
  const auto start = [&](const char *name) {
    EXPECT_EQ(QxVSAX_tns__isComposing_startElement(&handler, name, name, nullptr), 0);
    EXPECT_EQ(handler.delegate, nullptr);
  };
  const auto end = [&](const char *name) { EXPECT_EQ(QxVSAX_tns__isComposing_endElement(&handler, name, name), 0); };
  start("isComposing");
  start("state");
  end("state");
  start("mood");
  start("refresh");
  EXPECT_EQ(QxVSAX_tns__isComposing_characters(&handler, "x", 1), 0);
  end("refresh");
  end("mood");
  EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start) << "what was collected is dropped";
  end("isComposing");
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
}

TEST(CheckingHandler, HasNoUseForStorage) {
  // The decoder keeps three texts of this document, the validator nothing.
  const std::string text = document("<state>" + std::string(5000, 's') + "</state><contenttype>c</contenttype>");
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  support::HeapBalance balance(ctx);
  EXPECT_EQ(QxXmlV_tns_isComposing(ctx), 0);
}

struct Trace {
  std::vector<std::string> log;
  static void note(void *self, bool enter, const char *function, const char *) {
    static_cast<Trace *>(self)->log.push_back((enter ? "+" : "-") + std::string(function));
  }
};

TEST(HandlerTrace, EveryCallbackIsEnteredAndLeftUnderItsName) {
  const auto traced = [](int (*read)(RuntimeContext *)) {
    Trace trace;
    Context ctx([&](RuntimeOptions &options) {
      options.trace = Trace::note;
      options.traceUser = &trace;
    });
    EXPECT_EQ(support::setInput(ctx, document("<state>s</state><bogus/><refresh>abc</refresh>")), 0);
    read(ctx);
    return trace.log;
  };
  for (const auto &[prefix, read] :
       {std::pair{"QxSAX"s, &decodeStatus}, std::pair{"QxVSAX"s, &QxXmlV_tns_isComposing}}) {
    std::vector<std::string> expected;
    for (const char *callback : {"startElement", "startElement", "characters", "endElement", "startElement",
                                 "startElement", "characters", "endElement", "endElement"}) {
      const std::string name = prefix + "_tns__isComposing_" + callback;
      expected.push_back("+" + name);
      expected.push_back("-" + name);
    }
    EXPECT_EQ(traced(read), expected);
  }
}

// Handlers look at the text that they collect through the context's text buffer. What the host had set before is no
// output any more, rather than an output that writes into that text.
TEST(HandlersWithoutAReader, LeaveTheContextWithoutOutput) {
  Context ctx;
  tns__isComposing record;
  ASSERT_EQ(QxInit_tns__isComposing(ctx, &record), 0);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  SaxTypeHandler handler;
  ASSERT_EQ(QxSAX_tns__isComposing_init(ctx, &handler, &record, 0), 0);
  const std::string text(200, 's');
  QxSAX_tns__isComposing_startElement(&handler, "isComposing", "isComposing", nullptr);
  for (const char *child : {"state", "contenttype"}) {
    QxSAX_tns__isComposing_startElement(&handler, child, child, nullptr);
    QxSAX_tns__isComposing_characters(&handler, text.data(), text.size());
    QxSAX_tns__isComposing_endElement(&handler, child, child);
  }
  QxSAX_tns__isComposing_endElement(&handler, "isComposing", "isComposing");
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  EXPECT_STREQ(record.tns_contenttype.value, text.c_str());

  EXPECT_EQ(QxXmlE_tns_isComposing(ctx, &record), STATUS_WRITE_FAILED);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(QxXmlE_tns_isComposing(ctx, &record), 0);
  QxMemFree_tns__isComposing(ctx, &record);
}

} // namespace
