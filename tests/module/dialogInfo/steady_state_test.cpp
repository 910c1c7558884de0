// Documents after the first ones cost no call of the system's allocator, and leave the heap as they found it.
#include "reading.h"

using namespace reading;
using support::Context;

namespace {

const std::string fullDocument = support::spell(fullBody, namespaceUri, support::Spelling::mixedPrefixes).text;
const std::string badDocument =
    in(info, "<dialog id='d' direction='x'><state code='1'>a<b/>c</state><duration>x</duration><replaces/><route-set/>"
             "<local><bogus/><target><param><b/></param></target></local></dialog><bogus/>")
        .text;

using Round = std::function<void(RuntimeContext *ctx, int number)>;

// Runs round to warm up, then more, and expects no call of the allocator in between. Under a sanitizer the heap keeps
// freed blocks back for a while, so that it takes some rounds until the first are used again.
void expectNoCalls(const char *what, int rounds, const Round &round) {
  SCOPED_TRACE(what);
  Context ctx;
  const size_t blocks = support::heapStats(ctx).blocks;
  int number = 0;
  while (number < 50)
    round(ctx, number++);
  const uint64_t calls = support::heapStats(ctx).systemCalls;
  const uint64_t allocations = ctx.allocatorCalls();
  const size_t reserved = support::heapStats(ctx).reserved;
  EXPECT_GT(calls, 0u) << "the count counts";
  while (number < 50 + rounds) {
    round(ctx, number++);
    EXPECT_EQ(support::heapStats(ctx).blocks, blocks);
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_EQ(support::heapStats(ctx).systemCalls, calls);
  EXPECT_EQ(ctx.allocatorCalls(), allocations);
  EXPECT_EQ(support::heapStats(ctx).reserved, reserved);
}

TEST(SteadyState, Decode) {
  expectNoCalls("released one by one", 200, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(support::setInput(ctx, fullDocument), 0);
    EXPECT_EQ(decodeStatus(ctx, info), 0);
  });
  expectNoCalls("given without a copy", 200, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(support::setInput(ctx, fullDocument, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeStatus(ctx, info), 0);
  });
  expectNoCalls("released by a reset, with what nothing else releases", 200, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(support::setInput(ctx, fullDocument), 0);
    tns__dialog_info record;
    EXPECT_EQ(QxXmlD_tns_dialog_info(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, DecodeWithErrors) {
  expectNoCalls("errors cleared", 200, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(support::setInput(ctx, badDocument), 0);
    EXPECT_EQ(decodeStatus(ctx, info), STATUS_ENUM_NOT_FOUND);
    rtxErrClear(ctx);
  });
  expectNoCalls("cut off", 200, [](RuntimeContext *ctx, int number) {
    const size_t length = fullDocument.size() / 2 + static_cast<size_t>(number % 10) * 50;
    ASSERT_EQ(support::setInput(ctx, fullDocument.substr(0, length)), 0);
    EXPECT_EQ(decodeStatus(ctx, info), STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
  });
}

TEST(SteadyState, Validate) {
  expectNoCalls("in order", 200, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(support::setInput(ctx, fullDocument), 0);
    EXPECT_EQ(info.validate(ctx), 0);
  });
  expectNoCalls("with errors", 200, [](RuntimeContext *ctx, int) {
    ASSERT_EQ(support::setInput(ctx, badDocument), 0);
    EXPECT_EQ(info.validate(ctx), STATUS_ENUM_NOT_FOUND);
    rtxErrClear(ctx);
  });
}

// Names, values and texts that never come again: nothing remembers them.
std::string distinctDocument(int number) {
  const std::string n = std::to_string(10000 + number);
  return in(info, "<dialog id='i" + n + "' call-id='c" + n + "'><state xmlns:p" + n + "='u" + n + "'>s" + n +
                      "</state><replaces call-id='" + n + "' local-tag='l" + n + "' remote-tag='r" + n +
                      "'/><route-set><hop>h" + n + "</hop></route-set><local><target uri='u" + n + "'><param pname='n" +
                      n + "' pval='v" + n + "'/></target><x" + n + ":f" + n + " xmlns:x" + n + "='urn:" + n + "' a" +
                      n + "='1'>t" + n + "</x" + n + ":f" + n + "></local></dialog>")
      .text;
}

TEST(SteadyState, DistinctDocuments) {
  expectNoCalls("decode", 2000, [](RuntimeContext *ctx, int number) {
    ASSERT_EQ(support::setInput(ctx, distinctDocument(number)), 0);
    EXPECT_EQ(decodeStatus(ctx, info), 0);
  });
  expectNoCalls("validate", 2000, [](RuntimeContext *ctx, int number) {
    ASSERT_EQ(support::setInput(ctx, distinctDocument(number)), 0);
    EXPECT_EQ(info.validate(ctx), STATUS_UNKNOWN_ATTRIBUTE);
    rtxErrClear(ctx);
  });
  expectNoCalls("unknown names", 2000, [](RuntimeContext *ctx, int number) {
    const std::string n = std::to_string(10000 + number);
    ASSERT_EQ(support::setInput(ctx, in(info, "<bogus" + n + "/><dialog id='d' k" + n + "=''/>").text), 0);
    EXPECT_EQ(decodeStatus(ctx, info), STATUS_UNEXPECTED_ELEMENT);
    rtxErrClear(ctx);
  });
}

} // namespace
