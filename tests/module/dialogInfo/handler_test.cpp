// The handlers of all types, driven by hand and without a reader, as a host may drive them.
#include "drivenHandler.h"
#include "handlerChain.h"
#include "reading.h"

#include <cstring>

using namespace reading;
using support::Context;

namespace {

// One set of callbacks, for filling a record or for checking only.
struct Filling {
  using Handler = SaxTypeHandler;
  static constexpr bool fills = true;
  static int init(const Type &type, RuntimeContext *ctx, Handler *handler, void *record, int32_t level) {
    return type.initFilling(ctx, handler, record, level);
  }
  static const Type::Callbacks &callbacks(const Type &type) { return type.filling; }
};

struct Checking {
  using Handler = VsaxTypeHandler;
  static constexpr bool fills = false;
  static int init(const Type &type, RuntimeContext *ctx, Handler *handler, void *, int32_t level) {
    return type.initChecking(ctx, handler, level);
  }
  static const Type::Callbacks &callbacks(const Type &type) { return type.checking; }
};

using AttributeList = std::vector<const char *>; // names and values

// A handler of a type with its record, on a context of its own.
template <class Kind> class Driver {
public:
  explicit Driver(const Type &of, const support::Configure &configure = {})
      : ctx(configure), balance(ctx), type(of), callbacks(Kind::callbacks(of)), record(ctx, of) {
    std::memset(static_cast<void *>(&handler), 0xA5, sizeof handler);
    record.init();
    initStatus = Kind::init(type, ctx, &handler, record.data(), 0);
  }
  ~Driver() { support::releaseHandlers(ctx, handler); }

  int start(const char *name, AttributeList attributes = {}) {
    attributes.push_back(nullptr);
    return callbacks.start(&handler, name, name, attributes.data());
  }
  int startWithoutArray(const char *name) { return callbacks.start(&handler, name, name, nullptr); }
  int text(std::string_view bytes) { return callbacks.characters(&handler, bytes.data(), bytes.size()); }
  int end(const char *name) { return callbacks.end(&handler, name, name); }
  void empty(const char *name, const AttributeList &attributes = {}) {
    EXPECT_EQ(start(name, attributes), 0) << name;
    EXPECT_EQ(end(name), 0) << name;
  }
  void simple(const char *name, std::string_view bytes, const AttributeList &attributes = {}) {
    EXPECT_EQ(start(name, attributes), 0) << name;
    EXPECT_EQ(text(bytes), 0);
    EXPECT_EQ(end(name), 0) << name;
  }

  void expectAt(int level, int state) {
    EXPECT_EQ(handler.level, level);
    EXPECT_EQ(ctx->state, state);
  }
  size_t collected() { return ctx->reader->text.used - ctx->reader->text.start; }

  Context ctx;
  support::HeapBalance balance;
  const Type &type;
  const Type::Callbacks &callbacks;
  Record record;
  typename Kind::Handler handler;
  int initStatus;
};

template <class Kind> class Handlers : public testing::Test {};
using Kinds = testing::Types<Filling, Checking>;
TYPED_TEST_SUITE(Handlers, Kinds);

// ---- Init ---------------------------------------------------------------------------------------------------------

TYPED_TEST(Handlers, InitPreparesEverything) {
  for (const Type *type : allTypes) {
    SCOPED_TRACE(type->name);
    Driver<TypeParam> driver(*type);
    EXPECT_EQ(driver.initStatus, 0);
    support::expectFresh<typename TypeParam::Handler>(
        driver.ctx, driver.handler, {driver.callbacks.start, driver.callbacks.characters, driver.callbacks.end},
        driver.record.data(), 0);
  }
}

TYPED_TEST(Handlers, InitTakesTheLevelAndEmptiesTheCollectionBuffer) {
  for (const Type *type : allTypes) {
    Driver<TypeParam> driver(*type);
    ASSERT_EQ(rtxMemBufAppend(&driver.ctx->reader->text, "left over", 9), 0);
    typename TypeParam::Handler other;
    ASSERT_EQ(TypeParam::init(*type, driver.ctx, &other, driver.record.data(), 3), 0);
    EXPECT_EQ(other.level, 3);
    EXPECT_EQ(other.startLevel, 3);
    EXPECT_EQ(driver.collected(), 0u);
    rtxMemHeapFreePtr(driver.ctx, other.delegateStorage);
  }
}

// The own storage is for delegates alone: without it children that need one are refused, and nothing else.
TYPED_TEST(Handlers, InitWithoutStorage) {
  const auto noHeap = [](RuntimeOptions &options) { options.heapLimit = 1; };
  for (const Type *type : allTypes) {
    SCOPED_TRACE(type->name);
    Driver<TypeParam> driver(*type, noHeap);
    EXPECT_EQ(driver.initStatus, STATUS_NO_MEMORY);
    EXPECT_EQ(rtxErrCount(driver.ctx), 0u) << "not recorded";
    EXPECT_EQ(driver.handler.delegateStorage, nullptr);
    EXPECT_EQ(driver.startWithoutArray("any-name"), 0);
    EXPECT_EQ(driver.handler.level, 1);
    driver.end("any-name");
    EXPECT_EQ(driver.handler.level, 0);
  }
  struct Row {
    const Type &type;
    const char *child;
    bool needsDelegate;
  };
  const Row rows[] = {{types::info, "dialog", true},        {types::dialog, "state", true},
                      {types::participant, "target", true}, {types::participant, "identity", true},
                      {types::participant, "cseq", false},  {types::target, "param", true}};
  for (const Row &row : rows) {
    SCOPED_TRACE(row.child);
    Driver<TypeParam> driver(row.type, noHeap);
    driver.start("own");
    rtxErrClear(driver.ctx); // of attributes that are missing
    EXPECT_EQ(driver.start(row.child), row.needsDelegate ? STATUS_NO_MEMORY : 0);
    EXPECT_EQ(driver.handler.level, row.needsDelegate ? 1 : 2);
    EXPECT_EQ(driver.handler.delegate, nullptr);
    EXPECT_EQ(recorded(driver.ctx), row.needsDelegate ? "-10" : "");
    if (!row.needsDelegate) driver.end(row.child);
    driver.end("own");
    driver.expectAt(0, XMLSTATE_DOC_END);
  }
}

// ---- Documents by hand --------------------------------------------------------------------------------------------

template <class Kind> void expectRecord(Driver<Kind> &driver, const std::string &text) {
  EXPECT_EQ(recorded(driver.ctx), "");
  EXPECT_EQ(driver.handler.level, 0);
  EXPECT_EQ(driver.handler.delegate, nullptr);
  EXPECT_EQ(driver.ctx->state, XMLSTATE_DOC_END);
  if (Kind::fills) {
    EXPECT_EQ(driver.record.text(), text);
  }
}

TYPED_TEST(Handlers, OfTexts) {
  struct Row {
    const Type &type;
    AttributeList attributes;
    const char *record;
  };
  const Row rows[] = {{types::state, {"event", "error", "code", "500"}, "value='ab c' event='error' code=500"},
                      {types::nameaddr, {"display-name", "n"}, "value='ab c' display_name='n'"},
                      {types::sessd, {"type", "t"}, "value='ab c' type='t'"}};
  for (const Row &row : rows) {
    SCOPED_TRACE(row.type.name);
    Driver<TypeParam> driver(row.type);
    EXPECT_EQ(driver.start("own", row.attributes), 0);
    driver.expectAt(1, XMLSTATE_IN_ELEMENT);
    for (const char *piece : {"a", "b", "", " c"})
      EXPECT_EQ(driver.text(piece), 0);
    driver.expectAt(1, XMLSTATE_IN_TEXT);
    EXPECT_EQ(driver.collected(), 4u);
    EXPECT_EQ(driver.end("own"), 0);
    EXPECT_EQ(driver.collected(), 0u);
    expectRecord(driver, row.record);
  }
}

TYPED_TEST(Handlers, OfAttributesAlone) {
  Driver<TypeParam> replaces(types::replaces);
  replaces.start("own", {"call-id", "c", "local-tag", "l", "remote-tag", "r"});
  EXPECT_EQ(replaces.text("ignored"), 0);
  replaces.expectAt(1, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(replaces.collected(), 0u);
  EXPECT_EQ(replaces.end("own"), 0);
  expectRecord(replaces, "value=null call_id='c' local_tag='l' remote_tag='r'");

  Driver<TypeParam> param(types::param);
  param.start("own", {"pname", "n", "pval", "v"});
  EXPECT_EQ(param.end("own"), 0);
  expectRecord(param, "value=null pname='n' pval='v'");
}

TYPED_TEST(Handlers, OfRouteSets) {
  Driver<TypeParam> driver(types::routeSet);
  driver.start("own");
  driver.simple("hop", "a");
  driver.empty("hop");
  EXPECT_EQ(driver.text("between"), 0);
  EXPECT_EQ(driver.start("jump"), STATUS_ROOT_MISMATCH);
  EXPECT_EQ(driver.handler.level, 1) << "not counted";
  EXPECT_EQ(recorded(driver.ctx), "-3(tns_hop,jump)");
  rtxErrClear(driver.ctx);
  EXPECT_EQ(driver.end("own"), 0);
  expectRecord(driver, "hop[0]='a' hop[1]=''");

  Driver<TypeParam> empty(types::routeSet);
  empty.start("own");
  EXPECT_EQ(empty.end("own"), TypeParam::fills ? STATUS_CONSTRAINT_VIOLATION : 0);
  EXPECT_EQ(recorded(empty.ctx), TypeParam::fills ? "-16(tns__dialog_route_set.count,0)" : "");
  empty.expectAt(0, XMLSTATE_DOC_END);
}

TYPED_TEST(Handlers, OfTargetsAndParticipants) {
  Driver<TypeParam> target(types::target);
  target.start("own", {"uri", "u"});
  target.empty("param", {"pname", "a", "pval", "b"});
  target.empty("param", {"pname", "c", "pval", "d"});
  EXPECT_EQ(target.end("own"), 0);
  expectRecord(target, "param[0]=null param[0].pname='a' param[0].pval='b' param[1]=null param[1].pname='c' "
                       "param[1].pval='d' uri='u'");

  Driver<TypeParam> participant(types::participant);
  participant.start("own");
  participant.simple("identity", "i", {"display-name", "n"});
  participant.start("target", {"uri", "u"});
  participant.empty("param", {"pname", "a", "pval", "b"});
  participant.end("target");
  participant.simple("session-description", "v", {"type", "t"});
  participant.simple("cseq", "7");
  EXPECT_EQ(participant.end("own"), 0);
  expectRecord(participant,
               "identity='i' identity.display_name='n' target.param[0]=null target.param[0].pname='a' "
               "target.param[0].pval='b' target.uri='u' session_description='v' session_description.type='t' cseq=7");
}

TYPED_TEST(Handlers, OfDialogsAndTheirList) {
  Driver<TypeParam> driver(types::info);
  driver.start("own", {"version", "1", "state", "full", "entity", "e"});
  driver.start("dialog", {"id", "d", "direction", "initiator"});
  EXPECT_EQ(driver.handler.level, 2);
  ASSERT_NE(driver.handler.delegate, nullptr);
  EXPECT_EQ(static_cast<void *>(driver.handler.delegate), driver.handler.delegateStorage);
  const auto &dialogHandler = *reinterpret_cast<const typename TypeParam::Handler *>(driver.handler.delegate);
  EXPECT_EQ(dialogHandler.startElement, TypeParam::callbacks(types::dialog).start) << "a handler like any other";
  EXPECT_EQ(dialogHandler.level, 1);
  driver.simple("state", "s");
  driver.simple("duration", "5");
  driver.simple("referred-by", "b");
  driver.start("route-set");
  driver.simple("hop", "h");
  driver.end("route-set");
  driver.start("local");
  driver.simple("cseq", "1");
  driver.end("local");
  EXPECT_EQ(driver.end("dialog"), 0);
  EXPECT_EQ(driver.handler.delegate, nullptr);
  driver.empty("dialog", {"id", "e"});
  EXPECT_EQ(driver.end("own"), 0);
  expectRecord(driver,
               "dialog[0].state='s' dialog[0].duration=5 dialog[0].referred_by='b' dialog[0].route_set.hop[0]='h' "
               "dialog[0].local.cseq=1 dialog[0].id='d' dialog[0].direction='initiator' dialog[1].state=null "
               "dialog[1].id='e' "s +
                   infoEnd);
}

TYPED_TEST(Handlers, NoteTheRequiredChildOfADialog) {
  Driver<TypeParam> driver(types::dialog);
  driver.start("own", {"id", "d"});
  EXPECT_EQ(driver.handler.seenRequired, 0u);
  driver.simple("state", "s");
  EXPECT_EQ(driver.handler.seenRequired, 1u);
  driver.simple("duration", "5");
  driver.empty("local");
  EXPECT_EQ(driver.handler.seenRequired, 1u);
  EXPECT_EQ(driver.end("own"), 0);
  if constexpr (TypeParam::fills) {
    EXPECT_EQ(driver.record.template as<tns__dialog>().m, 17u) << "no bit for the state";
  }
}

TYPED_TEST(Handlers, EmptyAttributeArraysInBothForms) {
  Driver<TypeParam> driver(types::dialog);
  for (const char *name : {"own", "state"})
    EXPECT_EQ(driver.startWithoutArray(name), 0);
  EXPECT_EQ(driver.end("state"), 0);
  for (const char *name : {"local", "cseq"})
    EXPECT_EQ(driver.startWithoutArray(name), 0);
  EXPECT_EQ(driver.text("1"), 0);
  EXPECT_EQ(driver.end("cseq"), 0);
  EXPECT_EQ(driver.end("local"), 0);
  EXPECT_EQ(driver.start("remote"), 0);
  EXPECT_EQ(driver.end("remote"), 0);
  EXPECT_EQ(driver.end("own"), 0);
  EXPECT_EQ(recorded(driver.ctx), "-103(tns__dialog,id)");
  for (const Type *type : allTypes) {
    SCOPED_TRACE(type->name);
    std::string errors[2];
    for (bool array : {false, true}) {
      Driver<TypeParam> other(*type);
      EXPECT_EQ(array ? other.start("own") : other.startWithoutArray("own"), 0);
      errors[array] = recorded(other.ctx);
      other.end("own");
    }
    EXPECT_EQ(errors[0], errors[1]);
  }
}

TYPED_TEST(Handlers, RootNameIsComparedOnlyIfSet) {
  for (const Type *type : allTypes) {
    Driver<TypeParam> driver(*type);
    driver.start("anything");
    EXPECT_EQ(recorded(driver.ctx).find("-3"), std::string::npos);
    driver.end("anything");
    Driver<TypeParam> named(*type);
    named.handler.rootName = "something";
    named.start("anything");
    EXPECT_TRUE(recorded(named.ctx).starts_with("-3(something,anything)")) << type->name;
    EXPECT_EQ(named.handler.level, 1) << "and read on";
    named.end("anything");
  }
}

TYPED_TEST(Handlers, TextIsTakenInTwoStatesOnly) {
  Driver<TypeParam> driver(types::nameaddr);
  driver.start("own");
  for (int state = 0; state <= 5; ++state) {
    const bool taken = state == XMLSTATE_IN_ELEMENT || state == XMLSTATE_IN_TEXT;
    driver.ctx->state = static_cast<uint8_t>(state);
    const size_t before = driver.collected();
    EXPECT_EQ(driver.text("x"), 0);
    EXPECT_EQ(driver.collected(), before + (taken ? 1 : 0)) << "state " << state;
    EXPECT_EQ(driver.ctx->state, taken ? XMLSTATE_IN_TEXT : state);
  }
  // Nor is it converted in others.
  driver.ctx->state = XMLSTATE_INITIAL;
  EXPECT_EQ(driver.end("own"), 0);
  expectRecord(driver, "value=null");
}

TYPED_TEST(Handlers, ResultsOfTheCallbacks) {
  Driver<TypeParam> driver(types::dialog);
  driver.start("own", {"id", "d"});
  EXPECT_EQ(driver.start("duration"), STATUS_UNEXPECTED_ELEMENT);
  driver.expectAt(1, XMLSTATE_IN_ELEMENT);
  EXPECT_EQ(driver.handler.contentState, 0);
  EXPECT_EQ(driver.start("state"), 0);
  EXPECT_EQ(driver.start("b"), STATUS_UNEXPECTED_ELEMENT) << "of the delegate";
  EXPECT_EQ(driver.handler.level, 2) << "not counted";
  EXPECT_EQ(driver.end("state"), 0);
  EXPECT_EQ(driver.start("duration", {"xmlns", namespaceUri, "xmlns:p", "u", "k", "v"}), 0) << "reported, and read on";
  EXPECT_EQ(driver.handler.level, 2);
  driver.text("x");
  EXPECT_EQ(driver.end("duration"), STATUS_INVALID_CONTENT);
  EXPECT_EQ(driver.handler.level, 1);
  EXPECT_EQ(driver.start("route-set"), 0);
  EXPECT_EQ(driver.end("route-set"), TypeParam::fills ? STATUS_CONSTRAINT_VIOLATION : 0);
  EXPECT_EQ(driver.handler.delegate, nullptr) << "gone though it failed";
  EXPECT_EQ(driver.end("own"), 0);
  EXPECT_EQ(support::statuses(driver.ctx),
            TypeParam::fills ? std::vector<int>({-41, -41, -33, -44, -16}) : std::vector<int>({-41, -41, -33, -44}));
}

// ---- Content states -----------------------------------------------------------------------------------------------

constexpr int no = -1;

struct ChildRow {
  const char *name;
  std::vector<int> after; // content state after this child, by the state before
};

TYPED_TEST(Handlers, EveryChildInEveryContentState) {
  const std::pair<const Type *, std::vector<ChildRow>> tables[] = {
      {&types::info, {{"dialog", {1, 1, no}}, {"mood", {2, 2, 2}}}},
      {&types::dialog,
       {{"state", {1, no, no, no, no, no, no, no, no}},
        {"duration", {no, 2, no, no, no, no, no, no, no}},
        {"replaces", {no, 3, 3, no, no, no, no, no, no}},
        {"referred-by", {no, 4, 4, 4, no, no, no, no, no}},
        {"route-set", {no, 5, 5, 5, 5, no, no, no, no}},
        {"local", {no, 6, 6, 6, 6, 6, no, no, no}},
        {"remote", {no, 7, 7, 7, 7, 7, 7, no, no}},
        {"mood", {no, 8, 8, 8, 8, 8, 8, 8, 8}}}},
      {&types::participant,
       {{"identity", {1, no, no, no, no, no}},
        {"target", {2, 2, no, no, no, no}},
        {"session-description", {3, 3, 3, no, no, no}},
        {"cseq", {4, 4, 4, 4, no, no}},
        {"mood", {5, 5, 5, 5, 5, 5}}}},
      {&types::target, {{"param", {1, 1}}}},
  };
  for (const auto &[type, rows] : tables) {
    for (size_t id = 0; id < rows.size(); ++id) {
      const ChildRow &row = rows[id];
      for (size_t before = 0; before < row.after.size(); ++before) {
        SCOPED_TRACE(type->name + " "s + row.name + " in content state " + std::to_string(before));
        Driver<TypeParam> driver(*type);
        driver.start("own");
        driver.handler.contentState = static_cast<uint8_t>(before);
        const int after = row.after[before];
        EXPECT_EQ(driver.start(row.name), after == no ? STATUS_UNEXPECTED_ELEMENT : 0);
        EXPECT_EQ(driver.handler.contentState, after == no ? static_cast<int>(before) : after);
        EXPECT_EQ(driver.handler.level, after == no ? 1 : 2);
        if (after != no) {
          EXPECT_EQ(driver.handler.elementId, static_cast<int>(id));
          driver.end(row.name);
        }
        driver.end("own");
        driver.expectAt(0, XMLSTATE_DOC_END);
      }
    }
  }
}

TYPED_TEST(Handlers, DeclarationsOfAChildSayWhatItIs) {
  Driver<TypeParam> driver(types::participant);
  ASSERT_EQ(rtXmlNSSetURITable(driver.ctx, QxGet_IMS_NSURI(driver.ctx), 5), 0);
  driver.start("own");
  const char *const ours[] = {"xmlns:p", namespaceUri, nullptr, nullptr};
  EXPECT_EQ(driver.callbacks.start(&driver.handler, "identity", "p:identity", ours), 0);
  EXPECT_EQ(driver.handler.elementId, 0);
  EXPECT_EQ(driver.callbacks.end(&driver.handler, "identity", "p:identity"), 0);
  const char *const foreign[] = {"xmlns:p", "urn:other", nullptr, nullptr};
  EXPECT_EQ(driver.callbacks.start(&driver.handler, "cseq", "p:cseq", foreign), 0);
  EXPECT_EQ(driver.handler.elementId, 4);
  EXPECT_EQ(driver.callbacks.end(&driver.handler, "cseq", "p:cseq"), 0);
  // The declaration went with its element.
  EXPECT_EQ(driver.start("cseq"), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(rtXmlNSGetIndex(driver.ctx, "p"), RTXML_NS_NONE);
  driver.end("own");
}

// ---- Documents that end early -------------------------------------------------------------------------------------

// Whoever drives the handlers releases what is open, see Driver.
TYPED_TEST(Handlers, LeaveNothingBehindWhenTheDocumentEndsEarly) {
  const std::vector<const char *> opened[] = {
      {},
      {"dialog"},
      {"dialog", "state"},
      {"dialog", "state", "/", "duration"},
      {"dialog", "state", "/", "replaces"},
      {"dialog", "state", "/", "route-set", "hop"},
      {"dialog", "state", "/", "local", "identity"},
      {"dialog", "state", "/", "local", "target", "param"},
      {"dialog", "state", "/", "local", "target", "param", "/", "param"},
      {"dialog", "state", "/", "local", "mood", "inner"},
      {"dialog", "state", "/", "mood"},
      {"mood", "inner", "inner"},
  };
  for (const auto &events : opened) {
    Driver<TypeParam> driver(types::info);
    driver.start("own");
    std::vector<const char *> open;
    for (const char *event : events) {
      if (*event == '/') {
        EXPECT_EQ(driver.end(open.back()), 0);
        open.pop_back();
      } else {
        EXPECT_EQ(driver.start(event), 0) << event;
        open.push_back(event);
      }
    }
    EXPECT_EQ(driver.text("cut"), 0);
    EXPECT_EQ(driver.handler.level, static_cast<int>(open.size()) + 1);
  }
}

// What the chain releases is what it took: with the record gone too the heap is as before.
TEST(FillingHandler, ChainCutOffGivesBackAllItTook) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, types::dialog);
  record.init();
  SaxTypeHandler handler;
  ASSERT_EQ(QxSAX_tns__dialog_init(ctx, &handler, &record.as<tns__dialog>(), 0), 0);
  const auto start = [&](const char *name) {
    EXPECT_EQ(QxSAX_tns__dialog_startElement(&handler, name, name, nullptr), 0);
  };
  start("dialog");
  start("state");
  QxSAX_tns__dialog_endElement(&handler, "state", "state");
  start("local");
  start("mood");
  EXPECT_EQ(QxSAX_tns__dialog_characters(&handler, "happy", 5), 0);

  auto *participant = reinterpret_cast<SaxTypeHandler *>(handler.delegate);
  ASSERT_NE(participant, nullptr);
  EXPECT_EQ(participant->startElement, QxSAX_tns_participant_startElement);
  RtSaxHandler *foreign = participant->delegate;
  ASSERT_NE(foreign, nullptr);
  if (foreign->release != nullptr) foreign->release(ctx, foreign);
  rtxMemHeapFreePtr(ctx, foreign->delegateStorage);
  EXPECT_EQ(participant->release, nullptr);
  rtxMemHeapFreePtr(ctx, participant->delegateStorage);
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  EXPECT_EQ(record.text(), "state='' local[0]=null id=null") << "the entry is there, its text is not";
}

TEST(FillingHandler, ForeignElementIsHandedToADelegate) {
  Driver<Filling> driver(types::participant);
  driver.start("own");
  EXPECT_EQ(driver.start("mood"), 0);
  EXPECT_EQ(static_cast<void *>(driver.handler.delegate), driver.handler.delegateStorage);
  const RtxList &list = driver.record.as<tns_participant>().anyElems.items;
  ASSERT_EQ(list.count, 1u) << "entered at its start";
  EXPECT_EQ(static_cast<RtxXmlString *>(list.head->data)->value, nullptr);
  EXPECT_EQ(driver.text("happy"), 0);
  EXPECT_EQ(driver.ctx->state, XMLSTATE_IN_ELEMENT);
  driver.empty("cseq");
  EXPECT_NE(driver.handler.delegate, nullptr);
  EXPECT_EQ(driver.end("mood"), 0);
  EXPECT_EQ(driver.handler.delegate, nullptr);
  EXPECT_EQ(driver.end("own"), 0);
  expectRecord(driver, "[0]='<mood>happy<cseq/></mood>'");
}

TEST(CheckingHandler, ForeignElementHasNoDelegate) {
  Driver<Checking> driver(types::participant);
  driver.start("own");
  for (const char *name : {"mood", "cseq"}) {
    EXPECT_EQ(driver.start(name), 0);
    EXPECT_EQ(driver.handler.delegate, nullptr);
  }
  EXPECT_EQ(driver.text("x"), 0);
  EXPECT_EQ(driver.end("cseq"), 0);
  EXPECT_EQ(driver.end("mood"), 0);
  EXPECT_EQ(driver.collected(), 0u) << "what was collected is dropped";
  EXPECT_EQ(driver.end("own"), 0);
  expectRecord(driver, "");
}

// The entry of a list is there before the child is read, with all of it initialised.
TEST(FillingHandler, ItemsEnterTheirListAtTheirStart) {
  Driver<Filling> driver(types::info);
  driver.start("own", {"version", "1", "state", "full", "entity", "e"});
  driver.start("dialog");
  EXPECT_EQ(driver.record.text(), "dialog[0].state=null dialog[0].id=null "s + infoEnd);
  driver.start("state");
  driver.end("state");
  driver.start("local");
  driver.start("target", {"uri", "u"});
  driver.start("param");
  EXPECT_EQ(driver.record.text(),
            "dialog[0].state='' dialog[0].local.target.param[0]=null dialog[0].local.target.param[0].pname=null "
            "dialog[0].local.target.param[0].pval=null dialog[0].local.target.uri='u' dialog[0].id=null "s +
                infoEnd);
  for (const char *name : {"param", "target", "local", "dialog", "own"})
    EXPECT_EQ(driver.end(name), 0);
}

// ---- Trace --------------------------------------------------------------------------------------------------------

struct Trace {
  std::vector<std::string> log;
  static void note(void *self, bool enter, const char *function, const char *) {
    static_cast<Trace *>(self)->log.push_back((enter ? "+" : "-") + std::string(function));
  }
};

// The callbacks of a delegate are entered and left within those of its owner.
TYPED_TEST(Handlers, TraceNamesEveryCallbackOfTheChain) {
  Trace trace;
  Driver<TypeParam> driver(types::dialog, [&](RuntimeOptions &options) {
    options.trace = Trace::note;
    options.traceUser = &trace;
  });
  const std::string prefix = TypeParam::fills ? "QxSAX_" : "QxVSAX_";
  const auto nested = [&](const char *callback, std::initializer_list<const char *> chain) {
    std::vector<std::string> names;
    for (const char *type : chain)
      names.push_back("+" + prefix + type + "_" + callback);
    for (size_t i = names.size(); i-- > 0;)
      names.push_back("-" + names[i].substr(1));
    EXPECT_EQ(trace.log, names);
    trace.log.clear();
  };
  driver.start("own", {"id", "d"});
  nested("startElement", {"tns__dialog"});
  driver.start("state");
  nested("startElement", {"tns__dialog", "tns__state"});
  driver.text("s");
  nested("characters", {"tns__dialog", "tns__state"});
  driver.end("state");
  nested("endElement", {"tns__dialog", "tns__state"});
  driver.start("duration");
  nested("startElement", {"tns__dialog"});
  driver.text("5");
  nested("characters", {"tns__dialog"});
  driver.end("duration");
  nested("endElement", {"tns__dialog"});
  driver.start("local");
  driver.start("target", {"uri", "u"});
  trace.log.clear();
  driver.start("param", {"pname", "n", "pval", "v"});
  nested("startElement", {"tns__dialog", "tns_participant", "tns_participant_target", "tns_participant_target_param"});
  driver.end("param");
  nested("endElement", {"tns__dialog", "tns_participant", "tns_participant_target", "tns_participant_target_param"});
  driver.end("target");
  driver.end("local");
  trace.log.clear();
  driver.end("own");
  nested("endElement", {"tns__dialog"});
}

} // namespace
