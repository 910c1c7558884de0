// Documents after the first ones cost no call of the system's allocator, and leave the heap as they found it.
#include "reading.h"
#include "steadyState.h"

using namespace reading;
using support::expectSteadyState;

namespace {

const std::string fullDocument = support::spell(fullBody, namespaceUri, support::Spelling::mixedPrefixes).text;
const std::string badDocument =
    in(info, "<dialog id='d' direction='x'><state code='1'>a<b/>c</state><duration>x</duration><replaces/><route-set/>"
             "<local><bogus/><target><param><b/></param></target></local></dialog><bogus/>")
        .text;

TEST(SteadyState, Decode) {
  expectSteadyState("released one by one", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, fullDocument), 0);
    EXPECT_EQ(decodeStatus(ctx, info), 0);
  });
  expectSteadyState("given without a copy", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, fullDocument, support::InputForm::terminated), 0);
    EXPECT_EQ(decodeStatus(ctx, info), 0);
  });
  expectSteadyState("released by a reset, with what nothing else releases", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, fullDocument), 0);
    tns__dialog_info record;
    EXPECT_EQ(QxXmlD_tns_dialog_info(ctx, &record), 0);
    rtxContextReset(ctx);
  });
}

TEST(SteadyState, DecodeWithErrors) {
  expectSteadyState("errors cleared", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, badDocument), 0);
    EXPECT_EQ(decodeStatus(ctx, info), STATUS_ENUM_NOT_FOUND);
    rtxErrClear(ctx);
  });
  expectSteadyState(
      "cut off",
      [](RuntimeContext *ctx, int number) {
        const size_t length = fullDocument.size() / 2 + static_cast<size_t>(number % 10) * 50;
        ASSERT_EQ(support::setInput(ctx, fullDocument.substr(0, length)), 0);
        EXPECT_EQ(decodeStatus(ctx, info), STATUS_PARSE_FAILED);
        rtxErrClear(ctx);
      },
      200);
}

TEST(SteadyState, Validate) {
  expectSteadyState("in order", [](RuntimeContext *ctx) {
    ASSERT_EQ(support::setInput(ctx, fullDocument), 0);
    EXPECT_EQ(info.validate(ctx), 0);
  });
  expectSteadyState("with errors", [](RuntimeContext *ctx) {
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
  expectSteadyState(
      "decode",
      [](RuntimeContext *ctx, int number) {
        ASSERT_EQ(support::setInput(ctx, distinctDocument(number)), 0);
        EXPECT_EQ(decodeStatus(ctx, info), 0);
      },
      2000);
  expectSteadyState(
      "validate",
      [](RuntimeContext *ctx, int number) {
        ASSERT_EQ(support::setInput(ctx, distinctDocument(number)), 0);
        EXPECT_EQ(info.validate(ctx), STATUS_UNKNOWN_ATTRIBUTE);
        rtxErrClear(ctx);
      },
      2000);
  expectSteadyState(
      "unknown names",
      [](RuntimeContext *ctx, int number) {
        const std::string n = std::to_string(10000 + number);
        ASSERT_EQ(support::setInput(ctx, in(info, "<bogus" + n + "/><dialog id='d' k" + n + "=''/>").text), 0);
        EXPECT_EQ(decodeStatus(ctx, info), STATUS_UNEXPECTED_ELEMENT);
        rtxErrClear(ctx);
      },
      2000);
}

} // namespace
