// Every allocation of whole scenarios refused, once and for good.

#include "wildcard.h"

namespace contract {
namespace {

// What a scenario came to: a status, and a text that is only right if nothing is missing.
struct Result {
  int status;
  std::string text;
};

struct Scenario {
  const char *what;
  std::function<Result(RuntimeContext *)> run;
};

void PrintTo(const Scenario &scenario, std::ostream *out) { *out << scenario.what; }

Result readWithWildcard(RuntimeContext *ctx) {
  WildcardHost host(ctx);
  const std::string document = "<r xmlns='urn:d' xmlns:x='urn:x'><x:a k='1'>" + std::string(2000, 't') +
                               "<b><x:c/></b></x:a><x:e y='&lt;'/></r>";
  int status = read(ctx, document, host);
  if (status == 0) status = host.initStatus != 0 ? host.initStatus : host.callbackStatus;
  if (status == 0) status = rtxErrGetFirstError(ctx);
  return {status, host.captured()};
}

Result readCollectingText(RuntimeContext *ctx) {
  Recorder recorder;
  std::string texts;
  int failure = 0;
  recorder.onText = [&](const char *bytes, size_t length) {
    const int status = rtxMemBufAppend(&ctx->reader->text, bytes, length);
    if (status != 0 && failure == 0) failure = status;
    return status != 0 ? rtSaxSetSkipLevelToCurrent(ctx, status) : 0;
  };
  recorder.onEnd = [&](const char *, const char *) {
    RtxMemBuf &text = ctx->reader->text;
    rtxInitContextBuffer(ctx, text.data + text.start, text.used - text.start);
    rtxMemBufReset(&text);
    RtxXmlString value = {false, nullptr};
    const int status = rtXmlDecXmlStr(ctx, &value);
    if (status != 0 && failure == 0) failure = status;
    if (status == 0) texts += value.value + "|"s;
    return 0;
  };
  const std::string document = "<?xml version='1.0' encoding='ISO-8859-1'?><r xmlns:p='urn:p'><a>" +
                               std::string(3000, '\xE9') + "</a><p:b>2</p:b></r>";
  int status = read(ctx, document, recorder);
  if (status == 0) status = failure;
  return {status, texts};
}

Result writeDocument(RuntimeContext *ctx) {
  RtxNsDeclList list{};
  std::string text;
  int status = rtxSetOutputDynamic(ctx);
  if (status == 0) status = rtXmlEncStartDocument(ctx);
  if (status == 0) status = rtXmlNSSetNamespace(ctx, nullptr, "tns", ("urn:" + std::string(500, 'u')).c_str(), false);
  if (status == 0) status = rtXmlNSSetNamespace(ctx, &list, nullptr, "urn:default", false);
  const RtxNamespace ns = {"tns", rtXmlNSGetPrefix(ctx, "urn:default") == nullptr ? "" : "urn:tns"};
  if (status == 0) status = rtXmlEncStartElement(ctx, "root", &ns, &list, false);
  if (status == 0) status = rtXmlEncNSAttrs(ctx, nullptr);
  for (int i = 0; i < 50 && status == 0; ++i) {
    status = rtXmlEncUTF8Str(ctx, std::string(100, '<').c_str(), "child", &ns);
  }
  if (status == 0) status = rtXmlEncEndElement(ctx, "root", &ns);
  if (status == 0) status = rtXmlEncEndDocument(ctx);
  if (status == 0) text = output(ctx);
  rtXmlNSFreeAttrList(ctx, &list);
  return {status, text};
}

Result keepNamespaces(RuntimeContext *ctx) {
  const char *const table[] = {"urn:0", "urn:1", "urn:2"};
  int status = rtXmlNSSetURITable(ctx, table, 3);
  std::string text;
  RtxNsDeclList list{};
  for (int i = 0; i < 60 && status == 0; ++i) {
    const std::string uri = "urn:" + std::to_string(i);
    const std::string name = "xmlns:p" + std::to_string(i);
    status = rtXmlNSPush(ctx);
    if (status == 0) status = rtXmlDecNSAttr(ctx, name.c_str(), uri.c_str(), &list, nullptr, 0);
    if (status == 0)
      text += std::to_string(rtXmlNSGetIndex(ctx, name.c_str() + 6)) + rtXmlNSGetPrefix(ctx, uri.c_str()) + " ";
  }
  for (int i = 0; i < 60; ++i)
    rtXmlNSPop(ctx);
  rtXmlNSFreeAttrList(ctx, &list);
  return {status, text};
}

Result keepRecords(RuntimeContext *ctx) {
  RtxList list{};
  std::string text;
  int status = 0;
  for (int i = 0; i < 200 && status == 0; ++i) {
    char *item = rtxUTF8Strdup(ctx, std::string(static_cast<size_t>(i * 3), 'x').c_str());
    if (item == nullptr) status = STATUS_NO_MEMORY;
    if (status == 0 && rtxDListAppend(ctx, &list, item) == nullptr) {
      status = STATUS_NO_MEMORY;
      rtxMemHeapFreePtr(ctx, item);
    }
  }
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next) {
    text += std::to_string(rtxUTF8LenBytes(static_cast<const char *>(node->data))) + " ";
  }
  rtxDListFreeAll(ctx, &list);
  const char *prefix = nullptr;
  if (status == 0) status = rtXmlDecQName(ctx, (std::string(3000, 'p') + ":n").c_str(), nullptr, &prefix);
  if (status == 0) text += prefix;
  return {status, text};
}

Result recordErrors(RuntimeContext *ctx) {
  for (int i = 0; i < 30; ++i) {
    rtxErrAddStrParm(ctx, std::string(900, 'x').c_str());
    rtxErrAddIntParm(ctx, i);
    rtxErrSetNewData(ctx, -16, "s", i);
    for (int j = 0; j < 20; ++j)
      rtxErrSetData(ctx, -16, "t", j);
  }
  EXPECT_EQ(rtxErrCount(ctx), 30u);
  EXPECT_EQ(rtxErrGetFirstError(ctx), -16);
  for (uint32_t i = 0; i < 31; ++i)
    rtxErrFormat(ctx, i, nullptr, 0);
  return {rtxErrGetLastError(ctx), ""};
}

Result breakDocument(RuntimeContext *ctx) {
  Recorder recorder;
  const int status = read(ctx, "<r>\n<a k='1'><b></a></r>", recorder);
  EXPECT_NE(status, 0);
  if (status != STATUS_READER_FAILED) {
    EXPECT_EQ(rtxErrGetLastError(ctx), status) << "a document failed without a record";
  }
  return {status, ""};
}

const Scenario scenarios[] = {
    {"ReadingWithAWildcard", readWithWildcard},
    {"ReadingTexts", readCollectingText},
    {"Writing", writeDocument},
    {"Namespaces", keepNamespaces},
    {"Records", keepRecords},
    {"Errors", recordErrors},
    {"ABrokenDocument", breakDocument},
};

class EveryAllocationFails : public testing::TestWithParam<std::tuple<Scenario, bool>> {};
INSTANTIATE_TEST_SUITE_P(In, EveryAllocationFails, testing::Combine(testing::ValuesIn(scenarios), testing::Bool()),
                         [](const auto &row) {
                           return std::string(std::get<0>(row.param).what) +
                                  (std::get<1>(row.param) ? "ForGood" : "Once");
                         });

TEST_P(EveryAllocationFails, WithoutCrashLeakOrAMissingPart) {
  const auto &[scenario, persistent] = GetParam();
  Result expected;
  {
    Context ctx;
    expected = scenario.run(ctx);
  }
  size_t failures = 0;
  for (size_t i = 1;; ++i) {
    ASSERT_LT(i, 5000u) << "allocations without end";
    Context ctx;
    ctx.allocator.failNext(i, persistent);
    const Result result = scenario.run(ctx);
    ctx.allocator.heal();
    if (ctx.allocator.refused == 0) break;
    ++failures;
    if (result.status == expected.status) {
      EXPECT_EQ(result.text, expected.text) << "allocation " << i;
    } else {
      EXPECT_TRUE(result.status == STATUS_NO_MEMORY || result.status == STATUS_READER_FAILED)
          << "allocation " << i << ": " << result.status;
    }
    rtxContextReset(ctx);
    const Result again = scenario.run(ctx);
    EXPECT_EQ(again.status, expected.status) << "after the failure of allocation " << i;
    EXPECT_EQ(again.text, expected.text) << "after the failure of allocation " << i;
  }
  if (std::string_view(scenario.what) != "ABrokenDocument" && std::string_view(scenario.what) != "Errors") {
    EXPECT_GT(failures, 0u) << "the scenario never asked the host's allocator";
  }
}

class EveryHeapLimit : public testing::TestWithParam<Scenario> {};
INSTANTIATE_TEST_SUITE_P(In, EveryHeapLimit, testing::ValuesIn(scenarios),
                         [](const auto &row) { return row.param.what; });

TEST_P(EveryHeapLimit, GivesAStatusOrTheWholeResult) {
  const Scenario &scenario = GetParam();
  Result expected;
  {
    Context ctx;
    expected = scenario.run(ctx);
  }
  for (size_t limit = 0; limit < 200000; limit += limit < 256 ? 8 : limit < 4096 ? 61 : limit / 7) {
    RuntimeOptions options = defaultOptions();
    options.heapLimit = limit;
    Context ctx(options);
    const Result result = scenario.run(ctx);
    EXPECT_LE(stats(ctx).used, limit);
    EXPECT_LE(stats(ctx).peakUsed, limit);
    if (result.status == expected.status) {
      EXPECT_EQ(result.text, expected.text) << limit;
    } else {
      EXPECT_EQ(result.status, STATUS_NO_MEMORY) << limit;
    }
  }
}

TEST(AfterEveryFailure, TheSameContextGoesOn) {
  Context ctx;
  for (size_t i = 1; i < 40; ++i) {
    for (const Scenario &scenario : scenarios) {
      ctx.allocator.failNext(i, i % 2 == 0);
      scenario.run(ctx);
      ctx.allocator.heal();
      rtxErrClear(ctx);
    }
  }
  rtxContextReset(ctx);
  for (const Scenario &scenario : scenarios) {
    Context fresh;
    const Result expected = scenario.run(fresh);
    const Result result = scenario.run(ctx);
    EXPECT_EQ(result.status, expected.status) << scenario.what;
    EXPECT_EQ(result.text, expected.text) << scenario.what;
    rtxErrClear(ctx);
  }
}

} // namespace
} // namespace contract
