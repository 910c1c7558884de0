// Error records: what is kept, parameters, trails, and the text for people.

#include "contract.h"

#include <cstring>
#include <limits>

namespace contract {
namespace {

TEST(ErrorList, StampsARecordWithItsPlaceInTheSource) {
  Context ctx;
  EXPECT_EQ(rtxErrSetNewData(ctx, STATUS_CONSTRAINT_VIOLATION, "module/source", 42), STATUS_CONSTRAINT_VIOLATION);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  const RtxError *error = rtxErrAt(ctx, 0);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(error->paramCount, 0u);
  ASSERT_EQ(error->siteCount, 1u);
  EXPECT_EQ(error->siteTotal, 1u);
  EXPECT_STREQ(error->sites[0].path, "module/source");
  EXPECT_EQ(error->sites[0].line, 42);
  EXPECT_EQ(error->line, 0u);
  ASSERT_NE(error->elementPath, nullptr);
  EXPECT_STREQ(error->elementPath, "");
  EXPECT_FALSE(error->transcoded);
  EXPECT_EQ(rtxErrAt(ctx, 1), nullptr);
  EXPECT_EQ(rtxErrAt(ctx, std::numeric_limits<uint32_t>::max()), nullptr);
}

TEST(ErrorList, KnowsTheFirstAndTheLastStatus) {
  Context ctx;
  EXPECT_EQ(rtxErrGetFirstError(ctx), 0);
  EXPECT_EQ(rtxErrGetLastError(ctx), 0);
  for (const int status : {-3, -41, -33})
    rtxErrSetNewData(ctx, status, "s", 1);
  EXPECT_EQ(rtxErrGetFirstError(ctx), -3);
  EXPECT_EQ(rtxErrGetLastError(ctx), -33);
  rtxErrClear(ctx);
  EXPECT_EQ(rtxErrGetFirstError(ctx), 0);
  EXPECT_EQ(rtxErrGetLastError(ctx), 0);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  EXPECT_EQ(rtxErrAt(ctx, 0), nullptr);
  rtxErrSetNewData(ctx, -9, "s", 1);
  EXPECT_EQ(rtxErrGetFirstError(ctx), -9);
}

TEST(ErrorList, KeepsTheFirstOnesAndAlwaysTheNewest) {
  for (const uint32_t kept : {0u, 1u, 3u, 100u}) {
    RuntimeOptions options = defaultOptions();
    options.errorsKept = kept;
    Context ctx(options);
    for (uint32_t i = 1; i <= 250; ++i) {
      rtxErrAddUIntParm(ctx, i);
      rtxErrSetNewData(ctx, -16, "s", static_cast<int>(i));
      ASSERT_EQ(rtxErrCount(ctx), i);
      const uint32_t readable = i <= kept ? i : kept + 1;
      for (uint32_t r = 0; r < readable; ++r) {
        const RtxError *error = rtxErrAt(ctx, r);
        ASSERT_NE(error, nullptr) << "kept " << kept << ", record " << r << " of " << i;
        const uint32_t expected = r < kept ? r + 1 : i;
        EXPECT_EQ(error->sites[0].line, static_cast<int>(expected));
        ASSERT_EQ(error->paramCount, 1u);
        EXPECT_EQ(error->params[0].uintValue, expected);
      }
      EXPECT_EQ(rtxErrAt(ctx, readable), nullptr);
    }
  }
}

TEST(ErrorList, RemembersTheFirstStatusThatItDoesNotKeep) {
  RuntimeOptions options = defaultOptions();
  options.errorsKept = 0;
  Context ctx(options);
  rtxErrSetNewData(ctx, -3, "s", 1);
  rtxErrSetNewData(ctx, -41, "s", 2);
  EXPECT_EQ(rtxErrGetFirstError(ctx), -3);
  EXPECT_EQ(rtxErrGetLastError(ctx), -41);
}

TEST(ErrorTrail, KeepsTheFirstSixteenSitesAndCountsTheRest) {
  Context ctx;
  rtxErrSetNewData(ctx, -16, "found", 1);
  for (int line = 2; line <= 40; ++line) {
    EXPECT_EQ(rtxErrSetData(ctx, -16, "passed", line), -16);
    const RtxError *error = rtxErrAt(ctx, 0);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->siteTotal, static_cast<uint32_t>(line));
    EXPECT_EQ(error->siteCount, static_cast<uint32_t>(line < 16 ? line : 16));
  }
  const RtxError *error = rtxErrAt(ctx, 0);
  EXPECT_STREQ(error->sites[0].path, "found");
  for (uint32_t i = 0; i < 16; ++i)
    EXPECT_EQ(error->sites[i].line, static_cast<int>(i + 1));
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(ErrorTrail, GrowsOnTheNewestRecordEvenWhenThatIsNotAmongTheFirst) {
  RuntimeOptions options = defaultOptions();
  options.errorsKept = 2;
  Context ctx(options);
  for (int i = 0; i < 5; ++i)
    rtxErrSetNewData(ctx, -16, "s", i + 1);
  EXPECT_EQ(rtxErrSetData(ctx, -16, "passed", 99), -16);
  EXPECT_EQ(rtxErrCount(ctx), 5u);
  const RtxError *newest = rtxErrAt(ctx, 2);
  ASSERT_NE(newest, nullptr);
  ASSERT_EQ(newest->siteCount, 2u);
  EXPECT_EQ(newest->sites[0].line, 5);
  EXPECT_EQ(newest->sites[1].line, 99);
  EXPECT_EQ(rtxErrAt(ctx, 1)->siteCount, 1u);
}

TEST(ErrorTrail, OfSuccessIsNone) {
  Context ctx;
  EXPECT_EQ(rtxErrSetData(ctx, 0, "s", 1), 0);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  rtxErrSetNewData(ctx, -16, "s", 1);
  EXPECT_EQ(rtxErrSetData(ctx, 0, "s", 2), 0);
  EXPECT_EQ(rtxErrAt(ctx, 0)->siteTotal, 1u);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(ErrorTrail, OfAStatusThatNobodyRecordedStartsARecordWithoutParameters) {
  Context ctx;
  EXPECT_EQ(rtxErrSetData(ctx, -101, "s", 5), -101);
  ASSERT_EQ(statuses(ctx), "-101");
  rtxErrAddStrParm(ctx, "pending");
  EXPECT_EQ(rtxErrSetData(ctx, -10, "s", 6), -10);
  ASSERT_EQ(statuses(ctx), "-101 -10");
  EXPECT_EQ(rtxErrAt(ctx, 1)->paramCount, 0u);
  ASSERT_EQ(rtxErrAt(ctx, 1)->siteCount, 1u);
  EXPECT_EQ(rtxErrAt(ctx, 1)->sites[0].line, 6);
  EXPECT_EQ(rtxErrSetData(ctx, -101, "s", 7), -101);
  EXPECT_EQ(statuses(ctx), "-101 -10 -101");
}

TEST(ErrorParameters, GoWithTheNextRecordInOrder) {
  Context ctx;
  rtxErrAddStrParm(ctx, "name");
  rtxErrAddIntParm(ctx, std::numeric_limits<int32_t>::min());
  rtxErrAddUIntParm(ctx, std::numeric_limits<uint32_t>::max());
  rtxErrAddStrParm(ctx, nullptr);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  rtxErrSetNewData(ctx, -16, "s", 1);
  rtxErrSetNewData(ctx, -9, "s", 2);
  const RtxError *error = rtxErrAt(ctx, 0);
  ASSERT_EQ(error->paramCount, 4u);
  EXPECT_EQ(error->params[0].kind, RTX_PARAM_TEXT);
  EXPECT_STREQ(error->params[0].text, "name");
  EXPECT_EQ(error->params[0].length, 4u);
  EXPECT_EQ(error->params[1].kind, RTX_PARAM_INT);
  EXPECT_EQ(error->params[1].text, nullptr);
  EXPECT_EQ(error->params[1].intValue, std::numeric_limits<int32_t>::min());
  EXPECT_EQ(error->params[2].kind, RTX_PARAM_UINT);
  EXPECT_EQ(error->params[2].text, nullptr);
  EXPECT_EQ(error->params[2].uintValue, std::numeric_limits<uint32_t>::max());
  EXPECT_EQ(error->params[3].kind, RTX_PARAM_TEXT);
  EXPECT_STREQ(error->params[3].text, "");
  EXPECT_EQ(error->params[3].length, 0u);
  EXPECT_EQ(rtxErrAt(ctx, 1)->paramCount, 0u);
}

TEST(ErrorParameters, AreCopied) {
  Context ctx;
  char text[] = "before";
  rtxErrAddStrParm(ctx, text);
  std::memcpy(text, "after!", 6);
  rtxErrSetNewData(ctx, -16, "s", 1);
  EXPECT_EQ(params(ctx, 0), "before");
}

TEST(ErrorParameters, AreCutAtTheirBound) {
  Context ctx;
  for (const size_t size : {1023u, 1024u, 1025u, 100000u}) {
    const std::string text(size, 'x');
    rtxErrAddStrParm(ctx, text.c_str());
    ExactBytes bytes(text);
    setText(ctx, bytes);
    rtxErrAddCtxtBufParm(ctx);
    rtxErrSetNewData(ctx, -16, "s", 1);
    const RtxError *error = rtxErrAt(ctx, rtxErrCount(ctx) - 1);
    ASSERT_EQ(error->paramCount, 2u);
    for (uint32_t i = 0; i < 2; ++i) {
      EXPECT_EQ(error->params[i].length, std::min<size_t>(size, 1024)) << size;
      EXPECT_EQ(std::strlen(error->params[i].text), error->params[i].length) << size;
    }
  }
}

TEST(ErrorParameters, TakeTheWholeTextBufferWhereverItsIndexStands) {
  Context ctx;
  ExactBytes bytes("ab\0cd\nef"sv);
  setText(ctx, bytes);
  ctx->buffer.byteIndex = 5;
  rtxErrAddCtxtBufParm(ctx);
  bytes.data()[0] = 'Z'; // it must be a copy
  rtxErrSetNewData(ctx, -44, "s", 1);
  const RtxError *error = rtxErrAt(ctx, 0);
  ASSERT_EQ(error->paramCount, 1u);
  EXPECT_EQ(error->params[0].kind, RTX_PARAM_TEXT);
  EXPECT_EQ(std::string_view(error->params[0].text, error->params[0].length), "ab\0cd\nef"sv);
  EXPECT_EQ(error->params[0].text[error->params[0].length], '\0');
}

TEST(ErrorParameters, TakeAnEmptyTextBuffer) {
  Context ctx;
  ASSERT_EQ(rtxInitContextBuffer(ctx, nullptr, 0), 0);
  rtxErrAddCtxtBufParm(ctx);
  rtxErrSetNewData(ctx, -44, "s", 1);
  ASSERT_EQ(rtxErrAt(ctx, 0)->paramCount, 1u);
  EXPECT_STREQ(rtxErrAt(ctx, 0)->params[0].text, "");
}

TEST(ErrorParameters, ThatArePendingAreForgottenByClear) {
  Context ctx;
  rtxErrAddStrParm(ctx, "old");
  rtxErrClear(ctx);
  rtxErrAddStrParm(ctx, "new");
  rtxErrSetNewData(ctx, -16, "s", 1);
  EXPECT_EQ(params(ctx, 0), "new");
}

TEST(ErrorParameters, OfOlderRecordsStayWhileNewOnesCome) {
  Context ctx;
  for (int i = 0; i < 90; ++i) {
    rtxErrAddStrParm(ctx, ("text " + std::to_string(i)).c_str());
    rtxErrAddIntParm(ctx, -i);
    rtxErrSetNewData(ctx, -16, "s", i);
  }
  for (int i = 0; i < 90; ++i) {
    EXPECT_EQ(params(ctx, static_cast<uint32_t>(i)), "text " + std::to_string(i) + "|" + std::to_string(-i));
  }
}

TEST(ErrorStorage, ThatFailsNeverLosesTheStatus) {
  size_t needed = 0;
  for (int attempt = 0; attempt < 2; ++attempt) {
    const size_t last = attempt == 0 ? 1 : needed;
    for (size_t i = 1; i <= last; ++i) {
      for (const bool persistent : {false, true}) {
        Context ctx;
        const size_t before = ctx.allocator.calls;
        if (attempt == 1) ctx.allocator.failNext(i, persistent);
        rtxErrAddStrParm(ctx, std::string(1000, 'x').c_str());
        rtxErrAddUIntParm(ctx, 1);
        EXPECT_EQ(rtxErrSetNewData(ctx, -16, "s", 1), -16);
        for (int line = 2; line < 20; ++line)
          EXPECT_EQ(rtxErrSetData(ctx, -16, "s", line), -16);
        EXPECT_EQ(rtxErrGetFirstError(ctx), -16);
        EXPECT_EQ(rtxErrGetLastError(ctx), -16);
        EXPECT_EQ(rtxErrCount(ctx), 1u);
        ASSERT_NE(rtxErrAt(ctx, 0), nullptr);
        EXPECT_EQ(rtxErrAt(ctx, 0)->status, -16);
        needed = ctx.allocator.calls - before;
        ctx.allocator.heal();
        rtxErrAddStrParm(ctx, "after");
        rtxErrSetNewData(ctx, -9, "s", 1);
        EXPECT_EQ(params(ctx, 1), "after");
      }
    }
  }
}

TEST(ErrorStorage, IsNoPartOfTheHeapsLimit) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 8;
  Context ctx(options);
  ASSERT_NE(rtxMemHeapAlloc(ctx, 8), nullptr);
  rtxErrAddStrParm(ctx, "text");
  rtxErrSetNewData(ctx, STATUS_NO_MEMORY, "s", 1);
  EXPECT_EQ(params(ctx, 0), "text");
}

std::string formatted(RuntimeContext *ctx, uint32_t index) {
  char line[8192];
  const size_t length = rtxErrFormat(ctx, index, line, sizeof line);
  EXPECT_LT(length, sizeof line);
  EXPECT_EQ(std::strlen(line), length);
  return line;
}

TEST(ErrorFormat, IsOneLineThatShowsStatusAndParameters) {
  Context ctx;
  rtxErrAddStrParm(ctx, "refresh");
  rtxErrAddUIntParm(ctx, 4711);
  rtxErrAddIntParm(ctx, -12);
  rtxErrSetNewData(ctx, STATUS_CONSTRAINT_VIOLATION, "module/source", 1);
  const std::string line = formatted(ctx, 0);
  for (const char *part : {"refresh", "4711", "-12", "-16"})
    EXPECT_NE(line.find(part), line.npos) << line;
  EXPECT_NE(line.find(rtxStatusText(STATUS_CONSTRAINT_VIOLATION)), line.npos) << line;
  EXPECT_EQ(line.find('\n'), line.npos);
}

TEST(ErrorFormat, ShowsThePlaceInTheInput) {
  Context ctx;
  Recorder recorder;
  EXPECT_NE(read(ctx, "<outer>\n  <inner>\n    <x></y></inner></outer>", recorder), 0);
  const std::string line = formatted(ctx, 0);
  EXPECT_NE(line.find('3'), line.npos) << line;
  EXPECT_NE(line.find("/outer/inner"), line.npos) << line;
}

TEST(ErrorFormat, EscapesEveryControlCharacterOfAParameter) {
  for (int c = 0; c < 256; ++c) {
    Context ctx;
    ExactBytes bytes("a"s + static_cast<char>(c) + "b");
    setText(ctx, bytes);
    rtxErrAddCtxtBufParm(ctx);
    rtxErrSetNewData(ctx, STATUS_INVALID_CONTENT, "s", 1);
    for (const char byte : formatted(ctx, 0)) {
      EXPECT_GE(static_cast<unsigned char>(byte), 0x20) << c;
      EXPECT_NE(static_cast<unsigned char>(byte), 0x7F) << c;
    }
  }
}

TEST(ErrorFormat, CutsAtTheSizeGivenAndReturnsTheWholeLength) {
  Context ctx;
  rtxErrAddStrParm(ctx, "first parameter");
  rtxErrAddStrParm(ctx, "second\nparameter");
  rtxErrSetNewData(ctx, STATUS_INVALID_CONTENT, "module/source", 7);
  const std::string whole = formatted(ctx, 0);
  ASSERT_GT(whole.size(), 20u);
  EXPECT_EQ(rtxErrFormat(ctx, 0, nullptr, 0), whole.size());
  for (size_t size = 0; size <= whole.size() + 3; ++size) {
    ExactBytes buffer(std::string(size, '#'));
    EXPECT_EQ(rtxErrFormat(ctx, 0, buffer.data(), size), whole.size());
    if (size == 0) continue;
    EXPECT_EQ(std::string(buffer.data()), whole.substr(0, size - 1)) << size;
  }
}

TEST(ErrorFormat, OfNoRecordIsNothing) {
  Context ctx;
  char line[8];
  EXPECT_EQ(rtxErrFormat(ctx, 0, line, sizeof line), 0u);
  EXPECT_EQ(rtxErrFormat(ctx, 0, nullptr, 0), 0u);
}

TEST(ErrorFormat, HoldsTheLongestRecord) {
  Context ctx;
  const std::string text(1024, '\x01');
  for (int i = 0; i < 3; ++i)
    rtxErrAddStrParm(ctx, text.c_str());
  rtxErrSetNewData(ctx, STATUS_INVALID_CONTENT, "s", 1);
  const size_t length = rtxErrFormat(ctx, 0, nullptr, 0);
  EXPECT_GE(length, 3072u);
  ExactBytes buffer(std::string(length + 1, '#'));
  EXPECT_EQ(rtxErrFormat(ctx, 0, buffer.data(), buffer.size()), length);
  EXPECT_EQ(std::strlen(buffer.data()), length);
}

TEST(ErrorMessage, IsTheMessageAloneByTheSameRules) {
  Context ctx;
  Recorder recorder;
  EXPECT_NE(read(ctx, "<outer>\n<inner></other></outer>", recorder), 0);
  rtxErrAddStrParm(ctx, "parameter\n");
  rtxErrSetNewData(ctx, STATUS_INVALID_CONTENT, "module/source", 7);
  for (uint32_t index = 0; index < 2; ++index) {
    const size_t length = rtxErrMessage(ctx, index, nullptr, 0);
    ASSERT_GT(length, 0u);
    std::string whole(length, '#');
    for (size_t size = 1; size <= length + 2; ++size) {
      ExactBytes buffer(std::string(size, '#'));
      EXPECT_EQ(rtxErrMessage(ctx, index, buffer.data(), size), length);
      const std::string text = buffer.data();
      EXPECT_EQ(text.size(), std::min(size - 1, length));
      EXPECT_EQ(text.find('\n'), text.npos);
      if (size > length) whole = text;
    }
    EXPECT_NE(formatted(ctx, index).find(whole), std::string::npos) << whole;
    EXPECT_EQ(whole.find("/outer"), whole.npos) << whole;
    EXPECT_EQ(whole.find("module/source"), whole.npos) << whole;
  }
  EXPECT_EQ(rtxErrMessage(ctx, 2, nullptr, 0), 0u);
}

} // namespace
} // namespace contract
