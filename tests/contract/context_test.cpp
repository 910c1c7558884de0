// Life of a context: options, input, output, reset, release, and contexts that are none.

#include "contract.h"

#include <cctype>
#include <cstring>
#include <limits>
#include <set>
#include <thread>

namespace contract {
namespace {

TEST(Options, AreFilledWithTheDefaults) {
  const RuntimeOptions options = defaultOptions();
  EXPECT_EQ(options.allocate, nullptr);
  EXPECT_EQ(options.release, nullptr);
  EXPECT_EQ(options.heapLimit, size_t{32} << 20);
  EXPECT_EQ(options.inputLimit, size_t{16} << 20);
  EXPECT_EQ(options.depthLimit, 256u);
  EXPECT_EQ(options.errorLimit, 100u);
  EXPECT_EQ(options.errorsKept, 100u);
  EXPECT_EQ(options.trace, nullptr);
  rtxOptionsInit(nullptr);
}

TEST(ContextLife, StartsEmpty) {
  Context ctx;
  EXPECT_EQ(rtxCheckContext(ctx), 0);
  EXPECT_NE(ctx->signature, 0u);
  EXPECT_EQ(ctx->flags, 0u);
  EXPECT_EQ(ctx->state, XMLSTATE_INITIAL);
  EXPECT_EQ(ctx->buffer.data, nullptr);
  ASSERT_NE(ctx->reader, nullptr);
  EXPECT_EQ(ctx->reader->text.start, 0u);
  EXPECT_EQ(ctx->reader->text.used, 0u);
  EXPECT_EQ(ctx->globalData, nullptr);
  EXPECT_EQ(ctx->globalRelease, nullptr);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  EXPECT_EQ(rtxErrGetFirstError(ctx), 0);
  EXPECT_EQ(rtxErrGetLastError(ctx), 0);
  EXPECT_EQ(rtxGetOutput(ctx, nullptr), nullptr);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(ContextLife, WorksWithoutOptions) {
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  ASSERT_NE(ctx, nullptr);
  EXPECT_EQ(rtxCheckContext(ctx), 0);
  Recorder recorder;
  EXPECT_EQ(read(ctx, "<a>b</a>", recorder), 0);
  EXPECT_EQ(recorder.log, "<a>b</a>");
  rtxContextFree(ctx);
}

TEST(ContextLife, CopiesItsOptions) {
  RuntimeOptions options = defaultOptions();
  options.inputLimit = 4;
  Context ctx(options);
  options.inputLimit = 1000;
  EXPECT_EQ(rtxSetInput(ctx, "<abc/>", 6), STATUS_LIMIT_EXCEEDED);
}

TEST(ContextLife, IsNotMadeWithoutStorage) {
  size_t needed = 0;
  {
    Context ctx;
    needed = ctx.allocator.calls;
  }
  ASSERT_GT(needed, 0u);
  for (size_t i = 1; i <= needed; ++i) {
    for (const bool persistent : {false, true}) {
      Allocator allocator;
      RuntimeOptions options = defaultOptions();
      allocator.install(options);
      allocator.failNext(i, persistent);
      RuntimeContext *ctx = rtxContextCreate(&options);
      EXPECT_EQ(ctx, nullptr) << "allocation " << i;
      rtxContextFree(ctx);
      EXPECT_EQ(allocator.live(), 0u) << "allocation " << i;
    }
  }
}

TEST(ContextLife, FreeAndResetOfNullDoNothing) {
  rtxContextFree(nullptr);
  rtxContextReset(nullptr);
}

struct ReleaseLog {
  int calls = 0;
  RuntimeContext *with = nullptr;
  int contextStatus = -1;
};

TEST(ContextLife, CallsTheReleaseCallbackOnceWithAUsableContext) {
  ReleaseLog log;
  {
    Context ctx;
    ctx->globalData = &log;
    ctx->globalRelease = [](RuntimeContext *freed) {
      auto *found = static_cast<ReleaseLog *>(freed->globalData);
      ++found->calls;
      found->with = freed;
      found->contextStatus = rtxCheckContext(freed);
      // A callback may take its data again in order to free it; that must not bring it back.
      EXPECT_NE(rtxMemHeapAlloc(freed, 16), nullptr);
      EXPECT_EQ(rtxErrSetNewData(freed, -1, "host", 1), -1);
    };
    log.with = nullptr;
  }
  EXPECT_EQ(log.calls, 1);
  EXPECT_NE(log.with, nullptr);
  EXPECT_EQ(log.contextStatus, 0);
}

TEST(ContextLife, ResetKeepsTheGlobalDataAndDoesNotReleaseIt) {
  ReleaseLog log;
  {
    Context ctx;
    ctx->globalData = &log;
    ctx->globalRelease = [](RuntimeContext *freed) { ++static_cast<ReleaseLog *>(freed->globalData)->calls; };
    rtxContextReset(ctx);
    EXPECT_EQ(log.calls, 0);
    EXPECT_EQ(ctx->globalData, &log);
    EXPECT_NE(ctx->globalRelease, nullptr);
  }
  EXPECT_EQ(log.calls, 1);
}

TEST(ContextLife, ResetDropsInputOutputErrorsAndRecordsAndKeepsTheRest) {
  RuntimeOptions options = defaultOptions();
  options.inputLimit = 10;
  Context ctx(options);
  ctx->flags = NamespacesPreset;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:host", false), 0);
  ASSERT_NE(rtxMemHeapAlloc(ctx, 5000), nullptr);
  const size_t reserved = stats(ctx).reserved;
  rtxErrSetNewData(ctx, -16, "host", 1);
  rtxErrAddStrParm(ctx, "pending");
  ASSERT_EQ(rtxSetInput(ctx, "<a/>", 4), 0);

  rtxContextReset(ctx);

  EXPECT_EQ(rtxCheckContext(ctx), 0);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  EXPECT_EQ(rtxErrGetFirstError(ctx), 0);
  EXPECT_EQ(rtxErrGetLastError(ctx), 0);
  EXPECT_EQ(stats(ctx).blocks, 0u);
  EXPECT_EQ(stats(ctx).used, 0u);
  EXPECT_EQ(stats(ctx).peakUsed, 0u);
  EXPECT_EQ(stats(ctx).reserved, reserved);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), STATUS_READER_FAILED);
  EXPECT_EQ(rtxGetOutput(ctx, nullptr), nullptr);
  rtxErrSetNewData(ctx, -1, "host", 1);
  EXPECT_EQ(params(ctx, 0), "");

  EXPECT_EQ(ctx->flags, uint32_t{NamespacesPreset});
  EXPECT_EQ(rtxSetInput(ctx, "<abcdefgh/>", 11), STATUS_LIMIT_EXCEEDED);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  const RtxNamespace host = {"h", "urn:host"};
  EXPECT_EQ(rtXmlEncStartElement(ctx, "a", &host, nullptr, false), 0);
  EXPECT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  EXPECT_EQ(rtXmlEncEndElement(ctx, "a", &host), 0);
  EXPECT_EQ(infoset(output(ctx)), "{urn:host}a[]()");
}

TEST(ContextLife, ResetDropsTheOutput) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  rtxContextReset(ctx);
  EXPECT_EQ(rtxGetOutput(ctx, nullptr), nullptr);
  EXPECT_NE(rtXmlEncStartDocument(ctx), 0);
}

TEST(ContextLife, ManyResetsTakeNoMoreStorage) {
  Context ctx;
  size_t reserved = 0;
  size_t live = 0;
  for (int i = 0; i < 200; ++i) {
    for (int j = 0; j < 50; ++j)
      ASSERT_NE(rtxMemHeapAlloc(ctx, 300), nullptr);
    Recorder recorder;
    ASSERT_EQ(read(ctx, "<a b='c'><d>e</d></a>", recorder), 0);
    rtxErrSetNewData(ctx, -1, "host", 1);
    rtxContextReset(ctx);
    if (i == 1) {
      reserved = stats(ctx).reserved;
      live = ctx.allocator.live();
    }
  }
  EXPECT_EQ(stats(ctx).reserved, reserved);
  EXPECT_EQ(ctx.allocator.live(), live);
}

TEST(ContextLife, ContextsOnSeveralThreadsDoNotDisturbEachOther) {
  constexpr int threads = 4;
  int good[threads] = {};
  std::vector<std::thread> pool;
  for (int t = 0; t < threads; ++t) {
    pool.emplace_back([t, &good] {
      const std::string document = "<a x=\"" + std::to_string(t) + "\">text</a>";
      for (int i = 0; i < 100; ++i) {
        Context ctx;
        Recorder recorder;
        if (read(ctx, document, recorder) == 0 && recorder.log == document && rtxErrCount(ctx) == 0) ++good[t];
      }
    });
  }
  for (std::thread &thread : pool)
    thread.join();
  for (const int count : good)
    EXPECT_EQ(count, 100);
}

// ---- Contexts that are none ----------------------------------------------------------------------------------

class UnusableContext : public testing::TestWithParam<bool> {
protected:
  RuntimeContext storage{};
  RuntimeContext *ctx = nullptr;

  void SetUp() override {
    if (!GetParam()) return;
    storage.signature = 12345; // looks used, but is no context
    ctx = &storage;
  }
};

INSTANTIATE_TEST_SUITE_P(Every, UnusableContext, testing::Bool(),
                         [](const auto &kind) { return kind.param ? "Foreign" : "Null"; });

TEST_P(UnusableContext, IsRefusedByTheContextCalls) {
  char buffer[16];
  EXPECT_EQ(rtxCheckContext(ctx), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetInput(ctx, "<a/>", 4), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetInputZ(ctx, "<a/>", 4), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), STATUS_BAD_CONTEXT);
  size_t length = 7;
  EXPECT_EQ(rtxGetOutput(ctx, &length), nullptr);
  rtxSetErrorLimit(ctx, 1);
  rtxContextReset(ctx);
  EXPECT_EQ(storage.internals, nullptr);
  EXPECT_EQ(storage.buffer.data, nullptr);
}

TEST_P(UnusableContext, RecordsNothingAndReturnsTheStatusGiven) {
  EXPECT_EQ(rtxErrSetNewData(ctx, -16, "host", 1), -16);
  EXPECT_EQ(rtxErrSetData(ctx, -16, "host", 1), -16);
  EXPECT_EQ(rtxErrSetData(ctx, 0, "host", 1), 0);
  rtxErrAddStrParm(ctx, "text");
  rtxErrAddStrParm(ctx, nullptr);
  rtxErrAddIntParm(ctx, -1);
  rtxErrAddUIntParm(ctx, 1);
  rtxErrAddCtxtBufParm(ctx);
  rtxErrClear(ctx);
  EXPECT_EQ(rtxErrGetFirstError(ctx), 0);
  EXPECT_EQ(rtxErrGetLastError(ctx), 0);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  EXPECT_EQ(rtxErrAt(ctx, 0), nullptr);
  char line[8] = "before";
  EXPECT_EQ(rtxErrFormat(ctx, 0, line, sizeof line), 0u);
}

TEST_P(UnusableContext, HasNoStorage) {
  EXPECT_EQ(rtxMemHeapAlloc(ctx, 8), nullptr);
  rtxMemHeapFreePtr(ctx, nullptr);
  EXPECT_EQ(rtxUTF8Strdup(ctx, "text"), nullptr);
  RtxHeapStats seen;
  std::memset(&seen, 1, sizeof seen);
  rtxHeapStats(ctx, &seen);
  EXPECT_EQ(seen.blocks + seen.used + seen.peakUsed + seen.reserved + seen.systemCalls, 0u);
  RtxList list{};
  int item = 0;
  EXPECT_EQ(rtxDListAppend(ctx, &list, &item), nullptr);
  EXPECT_EQ(list.count, 0u);
  rtxDListFreeAll(ctx, &list);
  RtxMemBuf buffer{};
  buffer.context = ctx;
  EXPECT_NE(rtxMemBufAppend(&buffer, "a", 1), 0);
  EXPECT_EQ(buffer.used, 0u);
  rtxMemBufReset(&buffer);
  EXPECT_NE(rtxCheckBuffer(ctx, 1), 0);
  EXPECT_EQ(rtxInitContextBuffer(ctx, "text", 4), 0);
  EXPECT_EQ(rtxValidateUTF8(ctx, "text"), 0);
}

TEST_P(UnusableContext, HasNoNamespaces) {
  const char *const table[] = {"urn:a"};
  EXPECT_NE(rtXmlNSPush(ctx), 0);
  rtXmlNSPop(ctx);
  EXPECT_NE(rtXmlNSAddPrefixLink(ctx, "p", "urn:a", nullptr, 0), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), RTXML_NS_NONE);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:a"), nullptr);
  EXPECT_NE(rtXmlNSSetURITable(ctx, table, 1), 0);
  EXPECT_NE(rtXmlNSSetNamespace(ctx, nullptr, "p", "urn:a", false), 0);
  RtxNsDeclList declarations{};
  EXPECT_NE(rtXmlNSSetNamespace(ctx, &declarations, "p", "urn:a", false), 0);
  EXPECT_EQ(declarations.items.count, 0u);
  char name[16] = "";
  const RtxNamespace ns = {"p", "urn:a"};
  rtXmlNSGetAttrQName(ctx, name, sizeof name, &ns, "id", 2);
  EXPECT_NE(rtXmlDecNSAttr(ctx, "xmlns:p", "urn:a", &declarations, nullptr, 0), 0);
  RtxAttrList attributes{};
  rtXmlNSFreeAttrList(ctx, &declarations);
  rtXmlMemFreeAnyAttrs(ctx, &attributes);
}

TEST_P(UnusableContext, EncodesNothing) {
  const RtxXmlString text = {false, "text"};
  const uint8_t bytes[] = {1};
  RtxNamePair pair = {"k", "v"};
  RtxListNode node = {&pair, nullptr, nullptr};
  const RtxAttrList attributes = {{1, &node, &node}};
  EXPECT_NE(rtXmlEncStartDocument(ctx), 0);
  EXPECT_NE(rtXmlEncStartElement(ctx, "a", nullptr, nullptr, false), 0);
  EXPECT_NE(rtXmlEncTermStartElement(ctx), 0);
  EXPECT_NE(rtXmlEncEndElement(ctx, "a", nullptr), 0);
  EXPECT_NE(rtXmlEncString(ctx, &text, "a", nullptr), 0);
  EXPECT_NE(rtXmlEncUTF8Str(ctx, "text", "a", nullptr), 0);
  EXPECT_NE(rtXmlEncUInt(ctx, 1, "a", nullptr), 0);
  EXPECT_NE(rtXmlEncHexBinary(ctx, 1, bytes, "a", nullptr), 0);
  EXPECT_NE(rtXmlEncAny(ctx, &text, nullptr, nullptr), 0);
  EXPECT_NE(rtXmlEncUTF8Attr2(ctx, "k", 1, "v", 1), 0);
  EXPECT_NE(rtXmlEncBoolAttr(ctx, true, "k", 1), 0);
  EXPECT_NE(rtXmlEncUIntAttr(ctx, 1, "k", 1), 0);
  EXPECT_NE(rtXmlEncDecimalAttr(ctx, 1, "k", 1), 0);
  EXPECT_NE(rtXmlEncAnyAttr(ctx, &attributes), 0);
  EXPECT_NE(rtXmlEncNSAttrs(ctx, nullptr), 0);
  EXPECT_NE(rtXmlEncEndDocument(ctx), 0);
}

TEST_P(UnusableContext, ConvertsNothing) {
  RtxXmlString text = {true, nullptr};
  uint32_t u32 = 7;
  uint16_t u16 = 7;
  bool flag = true;
  double real = 7;
  RtxDateTime when{};
  RtxHexBinary hex = {7, nullptr};
  EXPECT_NE(rtXmlDecXmlStr(ctx, &text), 0);
  EXPECT_NE(rtXmlDecUInt(ctx, &u32), 0);
  EXPECT_NE(rtXmlDecUInt16(ctx, &u16), 0);
  EXPECT_NE(rtXmlDecBool(ctx, &flag), 0);
  EXPECT_NE(rtXmlDecDecimal(ctx, &real), 0);
  EXPECT_NE(rtXmlDecDateTime(ctx, &when), 0);
  EXPECT_NE(rtXmlDecTime(ctx, &when), 0);
  EXPECT_NE(rtXmlDecDynHexStr(ctx, &hex), 0);
  rtXmlTreatWhitespaces(ctx, RTXML_WS_COLLAPSE);
  const char *local = nullptr;
  const char *prefix = nullptr;
  rtXmlDecQName(ctx, "p:a", &local, &prefix);
  EXPECT_NE(rtXmlDecXSIAttr(ctx, "other", "v"), 0);
  EXPECT_EQ(text.value, nullptr);
  EXPECT_EQ(u32, 7u);
  EXPECT_EQ(u16, 7u);
  EXPECT_EQ(hex.length, 7u);
}

TEST_P(UnusableContext, HasNoReaderAndItsHelpersStayHarmless) {
  Recorder recorder;
  EXPECT_EQ(rtSaxCCreateXmlReader(ctx, &recorder.handler, recorder.handler.startElement, recorder.handler.endElement,
                                  recorder.handler.characters),
            nullptr);
  const RtSaxElementInfo elements[] = {{"a", -1, 0, 1}};
  const uint8_t states[] = {RTSAX_NOT_ALLOWED, RTSAX_NOT_ALLOWED};
  uint8_t state = 0;
  EXPECT_EQ(rtSaxLookupElemID8(ctx, &state, 0, "b", "b", -1, elements, states, 1, 2), RTSAX_NO_ELEMENT);
  const char *const names[] = {"id"};
  const uint32_t seen = 0;
  EXPECT_NE(rtSaxTestAttributesPresent(ctx, &seen, 1, names, 1, "T"), 0);
  const char *const attributes[] = {"k", "v", nullptr};
  EXPECT_NE(rtSaxReportUnexpAttrs(ctx, attributes, "a"), 0);
  rtSaxIncErrors(ctx);
  EXPECT_EQ(rtSaxSetSkipLevelToCurrent(ctx, -16), -16);
  SaxTypeHandler handler{};
  handler.context = ctx;
  rtSaxDiagStartFunc(&handler, "function", "element");
  rtSaxDiagEndFunc(&handler, "function", "element");
  RtxXmlString entry{};
  alignas(8) char block[RTSAX_DELEGATE_SIZE];
  EXPECT_NE(SAXAnyInit(ctx, block, &entry, 0), 0);
  SAXSimpleTypeInit(ctx, &handler, "a");
}

// ---- Input ---------------------------------------------------------------------------------------------------

TEST(Input, IsCopied) {
  Context ctx;
  char text[] = "<a>one</a>";
  ASSERT_EQ(rtxSetInput(ctx, text, strlen(text)), 0);
  std::memset(text, 'x', sizeof text);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
  EXPECT_EQ(recorder.log, "<a>one</a>");
}

TEST(Input, InPlaceIsReadFromTheCallersBytes) {
  Context ctx;
  char text[] = "<a>one</a>";
  ASSERT_EQ(rtxSetInputZ(ctx, text, strlen(text)), 0);
  text[3] = 'X';
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
  EXPECT_EQ(recorder.log, "<a>Xne</a>");
  EXPECT_STREQ(text, "<a>Xne</a>");
}

TEST(Input, InPlaceEndsAtItsLength) {
  Context ctx;
  const std::string text = "<a/>\0<b/>"s;
  ASSERT_EQ(rtxSetInputZ(ctx, text.data(), 4), 0);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
  EXPECT_EQ(recorder.log, "<a></a>");
}

TEST(Input, CanBeReadMoreThanOnce) {
  Context ctx;
  ASSERT_EQ(rtxSetInput(ctx, "<a>one</a>", 10), 0);
  for (int i = 0; i < 3; ++i) {
    Recorder recorder;
    EXPECT_EQ(readInput(ctx, recorder), 0);
    EXPECT_EQ(recorder.log, "<a>one</a>");
  }
}

TEST(Input, ReplacesTheInputBefore) {
  Context ctx;
  for (const char *text : {"<a>a long one that comes first</a>", "<b/>", "<c>another long one</c>"}) {
    ASSERT_EQ(rtxSetInput(ctx, text, strlen(text)), 0);
  }
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
  EXPECT_EQ(recorder.log, "<c>another long one</c>");
}

TEST(Input, NullLeavesNone) {
  Context ctx;
  for (const auto set : {rtxSetInput, rtxSetInputZ}) {
    ASSERT_EQ(rtxSetInput(ctx, "<a/>", 4), 0);
    EXPECT_EQ(set(ctx, nullptr, 0), 0);
    Recorder recorder;
    EXPECT_EQ(readInput(ctx, recorder), STATUS_READER_FAILED);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

TEST(Input, WithoutBytesIsReadAndIsNotWellFormed) {
  Context ctx;
  for (const auto set : {rtxSetInput, rtxSetInputZ}) {
    ASSERT_EQ(set(ctx, "", 0), 0);
    Recorder recorder;
    EXPECT_EQ(readInput(ctx, recorder), STATUS_PARSE_FAILED);
  }
}

TEST(Input, MayFillItsLimitAndNotPassIt) {
  RuntimeOptions options = defaultOptions();
  options.inputLimit = 100;
  const std::string exact = "<a>" + std::string(93, 'x') + "</a>";
  ASSERT_EQ(exact.size(), 100u);
  const std::string more = exact + " ";
  for (const auto set : {rtxSetInput, rtxSetInputZ}) {
    Context ctx(options);
    EXPECT_EQ(set(ctx, exact.c_str(), exact.size()), 0);
    Recorder recorder;
    EXPECT_EQ(readInput(ctx, recorder), 0);
    EXPECT_EQ(rtxErrCount(ctx), 0u);

    EXPECT_EQ(set(ctx, more.c_str(), more.size()), STATUS_LIMIT_EXCEEDED);
    ASSERT_EQ(statuses(ctx), "-107");
    ASSERT_EQ(rtxErrAt(ctx, 0)->paramCount, 2u);
    EXPECT_EQ(params(ctx, 0).substr(params(ctx, 0).find('|')), "|100");
    EXPECT_EQ(rtxErrAt(ctx, 0)->line, 0u);
    Recorder none;
    EXPECT_EQ(readInput(ctx, none), STATUS_READER_FAILED);
  }
}

TEST(Input, WithoutStorageIsRecordedAndLeavesNone) {
  Context ctx;
  ASSERT_EQ(rtxSetInput(ctx, "<a/>", 4), 0);
  const std::string large = "<a>" + std::string(100000, 'x') + "</a>";
  ctx.allocator.failNext(1, true);
  EXPECT_EQ(rtxSetInput(ctx, large.data(), large.size()), STATUS_NO_MEMORY);
  ctx.allocator.heal();
  EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_NO_MEMORY);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
  Recorder none;
  EXPECT_EQ(readInput(ctx, none), STATUS_READER_FAILED);
  Recorder recorder;
  EXPECT_EQ(read(ctx, large, recorder), 0);
  EXPECT_EQ(recorder.log, large);
}

// ---- Output --------------------------------------------------------------------------------------------------

TEST(Output, InACallersBufferIsReadBack) {
  Context ctx;
  char buffer[64];
  ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
  EXPECT_FALSE(ctx->buffer.dynamic);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "text", "a", nullptr), 0);
  size_t length = 0;
  EXPECT_EQ(rtxGetOutput(ctx, &length), buffer);
  EXPECT_EQ(std::string_view(buffer, length), "<a>text</a>");
  EXPECT_EQ(rtxGetOutput(ctx, nullptr), buffer);
}

TEST(Output, WithoutRoomTakesNothing) {
  Context ctx;
  char byte = 'c';
  for (char *buffer : {static_cast<char *>(nullptr), &byte}) {
    ASSERT_EQ(rtxSetOutput(ctx, buffer, 0), 0);
    EXPECT_EQ(rtXmlEncStartDocument(ctx), STATUS_BUFFER_OVERFLOW);
    EXPECT_EQ(rtxCheckBuffer(ctx, 1), STATUS_BUFFER_OVERFLOW);
  }
  ASSERT_EQ(rtxSetOutput(ctx, nullptr, 100), 0);
  EXPECT_EQ(rtXmlEncStartDocument(ctx), STATUS_BUFFER_OVERFLOW);
  EXPECT_EQ(byte, 'c');
}

TEST(Output, GrowsOutsideTheHeapAndIsUsedAgain) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 1000;
  Context ctx(options);
  const std::string text(5000, 'x');
  size_t allocations = 0;
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_TRUE(ctx->buffer.dynamic);
    ASSERT_EQ(rtXmlEncUTF8Str(ctx, text.c_str(), "a", nullptr), 0);
    EXPECT_EQ(output(ctx), "<a>" + text + "</a>");
    EXPECT_EQ(stats(ctx).used, 0u);
    if (i == 0) allocations = ctx.allocator.calls;
  }
  EXPECT_EQ(ctx.allocator.calls, allocations);
}

TEST(Output, StartsEmptyEachTimeItIsSet) {
  Context ctx;
  char buffer[64];
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
    size_t length = 9;
    EXPECT_NE(rtxGetOutput(ctx, &length), nullptr);
    EXPECT_EQ(length, 0u);
    ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "a", nullptr), 0);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    length = 9;
    EXPECT_NE(rtxGetOutput(ctx, &length), nullptr);
    EXPECT_EQ(length, 0u);
    ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "a", nullptr), 0);
  }
}

TEST(Output, WithoutStorageSaysSo) {
  Context ctx;
  ctx.allocator.failNext(1, true);
  const int status = rtxSetOutputDynamic(ctx);
  const int written = status != 0 ? status : rtXmlEncUTF8Str(ctx, std::string(100000, 'x').c_str(), "a", nullptr);
  EXPECT_EQ(written, STATUS_NO_MEMORY);
  ctx.allocator.heal();
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(rtXmlEncUTF8Str(ctx, "t", "a", nullptr), 0);
  EXPECT_EQ(output(ctx), "<a>t</a>");
}

TEST(Output, OfALaterInputIsNone) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "a", nullptr), 0);
  ASSERT_EQ(rtxSetInput(ctx, "<b/>", 4), 0);
  EXPECT_EQ(rtXmlEncUTF8Str(ctx, "t", "a", nullptr), STATUS_WRITE_FAILED);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
  EXPECT_EQ(recorder.log, "<b></b>");
}

TEST(Output, IsNoInput) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "a", nullptr), 0);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), STATUS_READER_FAILED);
}

// ---- Texts ---------------------------------------------------------------------------------------------------

TEST(Version, HasThreeNumbers) {
  std::string shape;
  for (const char c : std::string(rtxVersion())) {
    if (std::isdigit(static_cast<unsigned char>(c)) == 0) {
      shape += c;
    } else if (shape.empty() || shape.back() != '9') {
      shape += '9';
    }
  }
  EXPECT_EQ(shape, "9.9.9");
}

TEST(StatusText, IsThereForEveryStatusAndDistinct) {
  std::set<std::string> texts;
  size_t count = 0;
  for (const int status :
       {0, -1, -3, -4, -9, -10, -16, -26, -33, -41, -44, -45, -60, -101, -102, -103, -104, -105, -106, -107}) {
    const char *text = rtxStatusText(status);
    ASSERT_NE(text, nullptr);
    EXPECT_STRNE(text, "unknown status") << status;
    texts.insert(text);
    ++count;
  }
  EXPECT_EQ(texts.size(), count);
}

TEST(StatusText, OfNoStatusIsUnknown) {
  for (const int status : {1, -2, -11, -100, -108, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_STREQ(rtxStatusText(status), "unknown status") << status;
  }
}

// ---- While a reader is at work ----------------------------------------------------------------------------------

TEST(BusyContext, KeepsItsInputUntilTheReaderIsReleased) {
  Context ctx;
  char buffer[8] = "";
  ASSERT_EQ(rtxSetInput(ctx, "<a>b</a>", 8), 0);
  Recorder recorder(ctx);
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &recorder.handler, recorder.handler.startElement,
                                              recorder.handler.endElement, recorder.handler.characters);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(rtxSetInput(ctx, "<longer/>", 9), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetInputZ(ctx, "<c/>", 4), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtSaxCParse(reader), 0);
  EXPECT_EQ(recorder.log, "<a>b</a>");
  rtSaxCReleaseReader(reader);
  EXPECT_EQ(rtxSetOutput(ctx, buffer, sizeof buffer), 0);
}

TEST(BusyContext, IsNotResetByACallback) {
  struct Resetting {
    RuntimeContext *ctx = nullptr;
    static void trace(void *user, bool, const char *, const char *) {
      rtxContextReset(static_cast<Resetting *>(user)->ctx);
    }
  } resetting;
  RuntimeOptions options = defaultOptions();
  options.trace = Resetting::trace;
  options.traceUser = &resetting;
  Context ctx(options);
  resetting.ctx = ctx;
  SaxTypeHandler handler;
  ASSERT_EQ(rtxSetInput(ctx, "<a>text</a>", 11), 0);
  RtSaxReader *reader =
      rtSaxCCreateXmlReader(ctx, &handler, SAXSimpleTypeStartElement, SAXSimpleTypeEndElement, SAXSimpleTypeCharacters);
  ASSERT_NE(reader, nullptr);
  ASSERT_EQ(SAXSimpleTypeInit(ctx, &handler, "a"), 0);
  EXPECT_EQ(rtSaxCParse(reader), 0);
  EXPECT_EQ(std::string(ctx->buffer.data, ctx->buffer.size), "text");
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  rtSaxCReleaseReader(reader);
}

} // namespace
} // namespace contract
