// UTF-8 texts.

#include "contract.h"

#include <cstring>

namespace contract {
namespace {

// A text with its NUL in a block of exactly that size.
class ExactText {
public:
  explicit ExactText(std::string_view text) : bytes(std::string(text) + '\0') {}
  operator const char *() const { return bytes.data(); }

private:
  ExactBytes bytes;
};

TEST(Text, IsEqualByteForByte) {
  EXPECT_NE(rtxUTF8StrEqual(nullptr, nullptr), 0);
  EXPECT_EQ(rtxUTF8StrEqual(nullptr, ""), 0);
  EXPECT_EQ(rtxUTF8StrEqual("", nullptr), 0);
  const char *const texts[] = {"", "a", "A", "ab", "b", "\xC3\xA9", "\xC3\xA8", "e\xCC\x81"};
  for (const char *a : texts) {
    for (const char *b : texts) {
      const bool equal = a == b;
      EXPECT_EQ(rtxUTF8StrEqual(ExactText(a), ExactText(b)) != 0, equal) << a << ' ' << b;
      EXPECT_EQ(rtXmlStrCmpAsc(ExactText(a), ExactText(b)) == 0, equal) << a << ' ' << b;
    }
  }
}

TEST(Text, ComparesInOrder) {
  EXPECT_LT(rtXmlStrCmpAsc("a", "b"), 0);
  EXPECT_GT(rtXmlStrCmpAsc("b", "a"), 0);
  EXPECT_LT(rtXmlStrCmpAsc("a", "ab"), 0);
  EXPECT_GT(rtXmlStrCmpAsc("ab", "a"), 0);
}

TEST(Text, HasItsLengthInBytes) {
  EXPECT_EQ(rtxUTF8LenBytes(nullptr), 0u);
  EXPECT_EQ(rtxUTF8LenBytes(ExactText("")), 0u);
  EXPECT_EQ(rtxUTF8LenBytes(ExactText("abc")), 3u);
  EXPECT_EQ(rtxUTF8LenBytes(ExactText("\xC3\xA9\xE2\x82\xAC")), 5u);
}

TEST(Text, IsDuplicatedOnTheHeap) {
  Context ctx;
  EXPECT_EQ(rtxUTF8Strdup(ctx, nullptr), nullptr);
  EXPECT_EQ(stats(ctx).blocks, 0u);
  for (const std::string &text : {""s, "a"s, "\xC3\xA9"s, std::string(70000, 'x')}) {
    std::string original = text;
    char *copy = rtxUTF8Strdup(ctx, original.c_str());
    ASSERT_NE(copy, nullptr);
    original.assign(text.size(), '#');
    EXPECT_EQ(copy, text);
    EXPECT_EQ(stats(ctx).blocks, 1u);
    rtxMemHeapFreePtr(ctx, copy);
  }
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Text, IsNotDuplicatedWithoutStorage) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 3;
  Context ctx(options);
  EXPECT_EQ(rtxUTF8Strdup(ctx, "abc"), nullptr);
  EXPECT_NE(rtxUTF8Strdup(ctx, "ab"), nullptr);
}

TEST(Utf8, WellFormedTextIsAccepted) {
  Context ctx;
  EXPECT_EQ(rtxValidateUTF8(ctx, nullptr), 0);
  for (const char *text :
       {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBD",
        "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"}) {
    EXPECT_EQ(rtxValidateUTF8(ctx, ExactText(text)), 0) << text;
  }
}

TEST(Utf8, IllFormedTextIsRefusedWherePositioned) {
  Context ctx;
  for (const std::string_view bad : {"\x80"sv,
                                     "\xBF"sv,
                                     "\xC0\x80"sv,
                                     "\xC1\xBF"sv,
                                     "\xC2"sv,
                                     "\xC2\x41"sv,
                                     "\xC2\xC2"sv,
                                     "\xE0\x80\x80"sv,
                                     "\xE0\x9F\xBF"sv,
                                     "\xE1\x80"sv,
                                     "\xE1\x80\x41"sv,
                                     "\xE1"sv,
                                     "\xED\xA0\x80"sv,
                                     "\xED\xBF\xBF"sv,
                                     "\xF0\x80\x80\x80"sv,
                                     "\xF0\x8F\xBF\xBF"sv,
                                     "\xF0\x90\x80"sv,
                                     "\xF0\x90"sv,
                                     "\xF0"sv,
                                     "\xF4\x90\x80\x80"sv,
                                     "\xF5\x80\x80\x80"sv,
                                     "\xF8\x88\x80\x80\x80"sv,
                                     "\xFE"sv,
                                     "\xFF"sv}) {
    for (const char *before : {"", "a", "0123456789abcdef", "\xC3\xA9"}) {
      for (const char *after : {"", "z", "0123456789abcdef"}) {
        const std::string text = before + std::string(bad) + after;
        EXPECT_EQ(rtxValidateUTF8(ctx, ExactText(text)), STATUS_INVALID_UTF8) << testing::PrintToString(text);
      }
    }
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Utf8, EveryCodePointIsJudgedRight) {
  Context ctx;
  for (uint32_t code = 1; code <= 0x110FFF; code += code < 0x900 || (code > 0xD700 && code < 0xE010) ? 1 : 61) {
    std::string text;
    const auto put = [&text](uint32_t byte) { text += static_cast<char>(byte); };
    if (code < 0x80) {
      put(code);
    } else if (code < 0x800) {
      put(0xC0 | code >> 6), put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      put(0xE0 | code >> 12), put(0x80 | (code >> 6 & 0x3F)), put(0x80 | (code & 0x3F));
    } else {
      put(0xF0 | code >> 18), put(0x80 | (code >> 12 & 0x3F)), put(0x80 | (code >> 6 & 0x3F)),
          put(0x80 | (code & 0x3F));
    }
    const bool good = code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    ASSERT_EQ(rtxValidateUTF8(ctx, ExactText(text)), good ? 0 : STATUS_INVALID_UTF8) << std::hex << code;
  }
}

} // namespace
} // namespace contract
