// Memory buffers and the text buffer.

#include "contract.h"

#include <cstdint>
#include <cstring>

namespace contract {
namespace {

std::string_view content(const RtxMemBuf &buffer) {
  return buffer.data == nullptr ? std::string_view()
                                : std::string_view(buffer.data + buffer.start, buffer.used - buffer.start);
}

RtxMemBuf emptyBuffer(RuntimeContext *ctx) {
  RtxMemBuf buffer{};
  buffer.context = ctx;
  return buffer;
}

TEST(MemoryBuffer, CollectsWhatIsAppended) {
  Context ctx;
  RtxMemBuf buffer = emptyBuffer(ctx);
  EXPECT_EQ(rtxMemBufAppend(&buffer, "", 0), 0);
  EXPECT_EQ(rtxMemBufAppend(&buffer, "ab", 2), 0);
  EXPECT_EQ(rtxMemBufAppend(&buffer, nullptr, 0), 0);
  EXPECT_EQ(rtxMemBufAppend(&buffer, "c\0d", 3), 0);
  EXPECT_EQ(content(buffer), "abc\0d"sv);
}

TEST(MemoryBuffer, GrowsByPiecesOfAnySize) {
  Context ctx;
  RtxMemBuf buffer = emptyBuffer(ctx);
  std::string expected;
  for (size_t size = 0; size < 3000; size += 7) {
    ExactBytes piece(std::string(size, static_cast<char>('a' + size % 26)));
    ASSERT_EQ(rtxMemBufAppend(&buffer, piece.data(), piece.size()), 0);
    expected.append(piece.data(), piece.size());
  }
  EXPECT_EQ(content(buffer), expected);
}

TEST(MemoryBuffer, StaysReadableAfterItsResetUntilTheNextAppend) {
  Context ctx;
  RtxMemBuf buffer = emptyBuffer(ctx);
  ASSERT_EQ(rtxMemBufAppend(&buffer, "abc", 3), 0);
  const char *bytes = buffer.data + buffer.start;
  rtxMemBufReset(&buffer);
  EXPECT_EQ(buffer.start, 0u);
  EXPECT_EQ(buffer.used, 0u);
  EXPECT_EQ(std::string_view(bytes, 3), "abc");
  ASSERT_EQ(rtxMemBufAppend(&buffer, "z", 1), 0);
  EXPECT_EQ(content(buffer), "z");
}

TEST(MemoryBuffer, ThatIsEmptyCanBeReset) {
  Context ctx;
  RtxMemBuf buffer = emptyBuffer(ctx);
  rtxMemBufReset(&buffer);
  EXPECT_EQ(content(buffer), "");
  rtxMemBufReset(nullptr);
}

TEST(MemoryBuffer, ThatIsNullTakesNothingAndSucceeds) { EXPECT_EQ(rtxMemBufAppend(nullptr, "abc", 3), 0); }

TEST(MemoryBuffer, WithoutContextTakesNothing) {
  RtxMemBuf buffer{};
  EXPECT_NE(rtxMemBufAppend(&buffer, "abc", 3), 0);
  EXPECT_EQ(buffer.used, 0u);
}

TEST(MemoryBuffer, IsUnchangedWhenItCannotGrow) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 100000;
  Context ctx(options);
  RtxMemBuf buffer = emptyBuffer(ctx);
  ASSERT_EQ(rtxMemBufAppend(&buffer, "abc", 3), 0);
  const std::string large(100001, 'x');
  EXPECT_EQ(rtxMemBufAppend(&buffer, large.data(), large.size()), STATUS_NO_MEMORY);
  EXPECT_EQ(content(buffer), "abc");
  EXPECT_EQ(rtxMemBufAppend(&buffer, large.data(), SIZE_MAX), STATUS_NO_MEMORY);
  EXPECT_EQ(rtxMemBufAppend(&buffer, large.data(), SIZE_MAX - 2), STATUS_NO_MEMORY);
  EXPECT_EQ(content(buffer), "abc");

  ctx.allocator.failNext(1, true);
  int status = 0;
  size_t appended = 3;
  while (status == 0) {
    status = rtxMemBufAppend(&buffer, "0123456789", 10);
    if (status == 0) appended += 10;
  }
  EXPECT_EQ(status, STATUS_NO_MEMORY);
  EXPECT_EQ(content(buffer).size(), appended);
  EXPECT_EQ(content(buffer).substr(0, 3), "abc");
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(MemoryBuffer, OfTheContextWorksWithoutAReader) {
  Context ctx;
  ASSERT_EQ(rtxMemBufAppend(&ctx->reader->text, "abc", 3), 0);
  EXPECT_EQ(content(ctx->reader->text), "abc");
  EXPECT_EQ(ctx->reader->text.context, static_cast<RuntimeContext *>(ctx));
  rtxMemBufReset(&ctx->reader->text);
  EXPECT_EQ(content(ctx->reader->text), "");
}

TEST(MemoryBuffer, OfTheContextWorksAgainAfterAReset) {
  Context ctx;
  const std::string large(3000, 'x');
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(content(ctx->reader->text), "");
    ASSERT_EQ(rtxMemBufAppend(&ctx->reader->text, large.data(), large.size()), 0);
    EXPECT_EQ(content(ctx->reader->text), large);
    rtxContextReset(ctx);
  }
}

TEST(TextBuffer, OfFixedSizeHasRoomToItsLastByte) {
  Context ctx;
  char bytes[10];
  ASSERT_EQ(rtxSetOutput(ctx, bytes, sizeof bytes), 0);
  for (size_t index = 0; index <= 10; ++index) {
    ctx->buffer.byteIndex = index;
    for (size_t count = 0; count <= 12; ++count) {
      EXPECT_EQ(rtxCheckBuffer(ctx, count), index + count <= 10 ? 0 : STATUS_BUFFER_OVERFLOW) << index << ' ' << count;
    }
    EXPECT_EQ(rtxCheckBuffer(ctx, SIZE_MAX), STATUS_BUFFER_OVERFLOW);
    EXPECT_EQ(rtxCheckBuffer(ctx, SIZE_MAX - index), STATUS_BUFFER_OVERFLOW);
  }
  EXPECT_EQ(ctx->buffer.data, bytes);
}

TEST(TextBuffer, ThatGrowsKeepsWhatItHolds) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  std::string expected;
  for (size_t i = 0; i < 20000; ++i) {
    ASSERT_EQ(rtxCheckBuffer(ctx, 1), 0);
    const auto c = static_cast<char>('a' + i % 26);
    ctx->buffer.data[ctx->buffer.byteIndex++] = c;
    expected += c;
  }
  EXPECT_EQ(output(ctx), expected);
  ASSERT_EQ(rtxCheckBuffer(ctx, 1 << 20), 0);
  ctx->buffer.data[ctx->buffer.byteIndex + (1 << 20) - 1] = 'z';
  EXPECT_EQ(output(ctx), expected);
}

TEST(TextBuffer, ThatCannotGrowKeepsWhatItHolds) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "text", "a", nullptr), 0);
  EXPECT_EQ(rtxCheckBuffer(ctx, SIZE_MAX), STATUS_NO_MEMORY);
  EXPECT_EQ(rtxCheckBuffer(ctx, SIZE_MAX - 5), STATUS_NO_MEMORY);
  ctx.allocator.failNext(1, true);
  EXPECT_EQ(rtxCheckBuffer(ctx, 1 << 20), STATUS_NO_MEMORY);
  ctx.allocator.heal();
  EXPECT_EQ(output(ctx), "<a>text</a>");
  EXPECT_EQ(rtXmlEncUTF8Str(ctx, "more", "b", nullptr), 0);
  EXPECT_EQ(output(ctx), "<a>text</a><b>more</b>");
}

TEST(TextBuffer, WithoutOutputHasNoRoom) {
  Context ctx;
  EXPECT_NE(rtxCheckBuffer(ctx, 1), 0);
}

TEST(TextBuffer, IsPointedAtBytes) {
  Context ctx;
  ExactBytes bytes("abc");
  EXPECT_EQ(rtxInitContextBuffer(ctx, bytes.data(), bytes.size()), 0);
  EXPECT_EQ(ctx->buffer.data, bytes.data());
  EXPECT_EQ(ctx->buffer.size, 3u);
  EXPECT_EQ(ctx->buffer.byteIndex, 0u);
  EXPECT_FALSE(ctx->buffer.dynamic);
  EXPECT_EQ(rtxInitContextBuffer(ctx, nullptr, 0), 0);
  EXPECT_EQ(ctx->buffer.size, 0u);
}

TEST(TextBuffer, ThatGrewIsNotLostWhenThePointerMoves) {
  Context ctx; // its allocator sees a block that leaks, or one that is freed twice
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, std::string(5000, 'x').c_str(), "a", nullptr), 0);
  const size_t calls = ctx.allocator.calls;
  EXPECT_EQ(rtxInitContextBuffer(ctx, "text", 4), 0);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, std::string(5000, 'x').c_str(), "a", nullptr), 0);
  EXPECT_EQ(ctx.allocator.calls, calls);
}

} // namespace
} // namespace contract
