// Conversions from text.

#include "contract.h"

#include <clocale>
#include <cmath>
#include <cstring>
#include <optional>

namespace contract {
namespace {

// Converts a text given in exactly its bytes. On failure the result has to keep what it held.
template <typename T>
int convert(int (*function)(RuntimeContext *, T *), RuntimeContext *ctx, std::string_view text, T &value) {
  alignas(T) unsigned char result[sizeof(T)];
  unsigned char marks[sizeof(T)];
  std::memset(result, 0x5A, sizeof result);
  std::memcpy(marks, result, sizeof result);
  ExactBytes bytes(text);
  setText(ctx, bytes);
  ctx->buffer.byteIndex = text.size() / 2; // must not matter
  const int status = function(ctx, reinterpret_cast<T *>(result));
  if (status == 0) {
    std::memcpy(static_cast<void *>(&value), result, sizeof result);
  } else {
    EXPECT_EQ(std::memcmp(result, marks, sizeof result), 0)
        << "touched by the failure on " << testing::PrintToString(text);
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u) << "a conversion recorded an error";
  return status;
}

template <typename T> struct Accepted {
  std::string_view text;
  T value;
};

template <typename T>
void check(int (*function)(RuntimeContext *, T *), const std::vector<Accepted<T>> &accepted,
           const std::vector<std::string_view> &refused) {
  Context ctx;
  T value{};
  constexpr std::string_view space = " \t\r\n";
  for (const auto &row : accepted) {
    for (const std::string &text :
         {std::string(row.text), std::string(space) + std::string(row.text) + std::string(space)}) {
      EXPECT_EQ(convert(function, ctx, text, value), 0) << testing::PrintToString(text);
      EXPECT_EQ(value, row.value) << testing::PrintToString(text);
    }
  }
  for (const std::string_view text : refused) {
    EXPECT_EQ(convert(function, ctx, text, value), STATUS_INVALID_LEXICAL_FORM) << testing::PrintToString(text);
  }
  EXPECT_EQ(rtxInitContextBuffer(ctx, nullptr, 0), 0);
  EXPECT_EQ(function(ctx, &value), STATUS_INVALID_LEXICAL_FORM) << "no text at all";
}

TEST(Convert, UnsignedNumbers) {
  check<uint32_t>(rtXmlDecUInt,
                  {{"0", 0},
                   {"00", 0},
                   {"7", 7},
                   {"007", 7},
                   {"90", 90},
                   {"2147483648", 2147483648u},
                   {"4294967295", 4294967295u},
                   {"0000000000000000004294967295", 4294967295u}},
                  {"",
                   " ",
                   "4294967296",
                   "4294967300",
                   "42949672950",
                   "99999999999999999999999999",
                   "18446744073709551617",
                   "-1",
                   "-",
                   "+",
                   "++1",
                   "1 2",
                   "1.0",
                   "1.",
                   ".1",
                   "0x10",
                   "1e3",
                   "a",
                   "1a",
                   "a1",
                   "5\0"sv,
                   "\0"sv,
                   "\xD9\xA1"sv,
                   "5\v"sv,
                   "\xC2\xA0"
                   "5"sv,
                   "1,000",
                   "1_0",
                   "--1",
                   "\xFF"sv});
}

TEST(Convert, ShortUnsignedNumbers) {
  check<uint16_t>(
      rtXmlDecUInt16, {{"0", 0}, {"65535", 65535}, {"00065535", 65535}, {"100", 100}},
      {"", "65536", "65540", "70000", "655350", "4294967296", "4295032831", "-1", "1.0", "x", "1 2", "5\0"sv});
}

TEST(Convert, Booleans) {
  check<bool>(rtXmlDecBool, {{"true", true}, {"false", false}, {"1", true}, {"0", false}},
              {"",   " ", "TRUE", "True", "tru", "truee", "t",          "f",        "fals", "falsee", "yes",
               "no", "2", "01",   "00",   "10",  "-1",    "true false", "true\0"sv, "\0"sv, "t rue"});
}

TEST(Convert, Decimals) {
  check<double>(rtXmlDecDecimal,
                {{"0", 0.0},
                 {"1", 1.0},
                 {"1.0", 1.0},
                 {"+1.5", 1.5},
                 {"-1.5", -1.5},
                 {".5", 0.5},
                 {"-.5", -0.5},
                 {"5.", 5.0},
                 {"007.50", 7.5},
                 {"0.1", 0.1},
                 {"0.30000000000000004", 0.30000000000000004},
                 {"-0", 0.0},
                 {"123456789012345678901234567890", 123456789012345678901234567890.0},
                 {"0.000000000000000000000000000001", 1e-30},
                 {"3.14159265358979323846264338327950288419716939937510", 3.141592653589793}},
                {"",
                 " ",
                 ".",
                 "+",
                 "-",
                 "+.",
                 "1e5",
                 "1E5",
                 "INF",
                 "-INF",
                 "inf",
                 "NaN",
                 "nan",
                 "infinity",
                 "1,5",
                 "1.2.3",
                 "--1",
                 "+-1",
                 "-+1",
                 "0x1",
                 "0x1p3",
                 "1 5",
                 "1.5 x",
                 "1.5\0"sv,
                 "1..5",
                 "\xC2\xA0"
                 "1"sv,
                 "1f",
                 "1.5\v"sv});
}

TEST(Convert, DecimalsInAnyLocale) {
  const char *chosen = nullptr;
  for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE", "fr_FR", "nl_NL.UTF-8"}) {
    chosen = std::setlocale(LC_ALL, name);
    if (chosen != nullptr) break;
  }
  if (chosen == nullptr) GTEST_SKIP() << "no locale with a decimal comma on this machine";
  Context ctx;
  double value = 0;
  EXPECT_EQ(convert(rtXmlDecDecimal, ctx, "1.5", value), 0);
  EXPECT_EQ(value, 1.5);
  EXPECT_EQ(convert(rtXmlDecDecimal, ctx, "1,5", value), STATUS_INVALID_LEXICAL_FORM);
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  EXPECT_EQ(rtXmlEncDecimalAttr(ctx, 1.5, "k", 1), 0);
  EXPECT_EQ(output(ctx), "<e k=\"1.5\"");
  std::setlocale(LC_ALL, "C");
}

// ---- Date and time -------------------------------------------------------------------------------------------------

std::string show(const RtxDateTime &when) {
  char text[96];
  std::snprintf(text, sizeof text, "%d-%u-%u %u:%u:%u.%09u %s%d", when.year, when.month, when.day, when.hour,
                when.minute, when.second, when.nanoseconds, when.hasZone ? "zone " : "none ",
                when.hasZone ? when.zoneMinutes : 0);
  return text;
}

TEST(Convert, DateTimes) {
  const struct {
    std::string_view text;
    const char *expected;
  } accepted[] = {
      {"2024-02-29T12:34:56Z", "2024-2-29 12:34:56.000000000 zone 0"},
      {"2024-02-29T12:34:56", "2024-2-29 12:34:56.000000000 none 0"},
      {"2000-02-29T00:00:00Z", "2000-2-29 0:0:0.000000000 zone 0"},
      {"1999-12-31T23:59:59.5+05:30", "1999-12-31 23:59:59.500000000 zone 330"},
      {"1999-12-31T23:59:59.000000001-00:30", "1999-12-31 23:59:59.000000001 zone -30"},
      {"1999-12-31T23:59:59.123456789987-14:00", "1999-12-31 23:59:59.123456789 zone -840"},
      {"1999-12-31T23:59:59.10+14:00", "1999-12-31 23:59:59.100000000 zone 840"},
      {"0001-01-01T00:00:00+00:00", "1-1-1 0:0:0.000000000 zone 0"},
      {"-0044-03-15T00:00:00Z", "-44-3-15 0:0:0.000000000 zone 0"},
      {"12024-06-30T01:02:03Z", "12024-6-30 1:2:3.000000000 zone 0"},
      {"  2024-04-30T01:02:03Z\n", "2024-4-30 1:2:3.000000000 zone 0"},
  };
  Context ctx;
  RtxDateTime value{};
  for (const auto &row : accepted) {
    EXPECT_EQ(convert(rtXmlDecDateTime, ctx, row.text, value), 0) << row.text;
    EXPECT_EQ(show(value), row.expected) << row.text;
  }
  for (const std::string_view text : {""sv,
                                      " "sv,
                                      "2024-02-29"sv,
                                      "12:34:56"sv,
                                      "2023-02-29T00:00:00Z"sv,
                                      "1900-02-29T00:00:00Z"sv,
                                      "2024-02-30T00:00:00Z"sv,
                                      "2024-04-31T00:00:00Z"sv,
                                      "2024-13-01T00:00:00Z"sv,
                                      "2024-00-01T00:00:00Z"sv,
                                      "2024-01-00T00:00:00Z"sv,
                                      "2024-01-32T00:00:00Z"sv,
                                      "2024-1-01T00:00:00Z"sv,
                                      "2024-01-1T00:00:00Z"sv,
                                      "24-01-01T00:00:00Z"sv,
                                      "02024-01-01T00:00:00Z"sv,
                                      "+2024-01-01T00:00:00Z"sv,
                                      "2024-01-01T25:00:00Z"sv,
                                      "2024-01-01T24:00:01Z"sv,
                                      "2024-01-01T24:01:00Z"sv,
                                      "2024-01-01T24:00:00.1Z"sv,
                                      "2024-01-01T00:60:00Z"sv,
                                      "2024-01-01T00:00:60Z"sv,
                                      "2024-01-01T00:00:61Z"sv,
                                      "2024-01-01T0:00:00Z"sv,
                                      "2024-01-01T00:00Z"sv,
                                      "2024-01-01T00:00:00."sv,
                                      "2024-01-01T00:00:00.Z"sv,
                                      "2024-01-01T00:00:00,5Z"sv,
                                      "2024-01-01t00:00:00Z"sv,
                                      "2024-01-01T00:00:00z"sv,
                                      "2024-01-01 00:00:00Z"sv,
                                      "2024-01-01T00:00:00+14:01"sv,
                                      "2024-01-01T00:00:00+15:00"sv,
                                      "2024-01-01T00:00:00-14:30"sv,
                                      "2024-01-01T00:00:00+05:60"sv,
                                      "2024-01-01T00:00:00+5:30"sv,
                                      "2024-01-01T00:00:00+0530"sv,
                                      "2024-01-01T00:00:00+05"sv,
                                      "2024-01-01T00:00:00Z+01:00"sv,
                                      "2024-01-01T00:00:00ZZ"sv,
                                      "2024-01-01T00:00:00Z x"sv,
                                      "2024-01-01T00:00:00Z\0"sv,
                                      "2024-01-01T00: 00:00Z"sv,
                                      "2024/01/01T00:00:00Z"sv,
                                      "20240101T000000Z"sv,
                                      "99999999999-01-01T00:00:00Z"sv,
                                      "-99999999999-01-01T00:00:00Z"sv,
                                      "--01-01T00:00:00Z"sv,
                                      "2024-01-01T00:00:00.5.5Z"sv,
                                      "2024-01-01T-1:00:00Z"sv,
                                      "2024-01-01T00:00:-1Z"sv}) {
    EXPECT_EQ(convert(rtXmlDecDateTime, ctx, text, value), STATUS_INVALID_LEXICAL_FORM) << text;
  }
}

TEST(Convert, DateTimeAtTheEndOfADay) {
  Context ctx;
  RtxDateTime value{};
  ASSERT_EQ(convert(rtXmlDecDateTime, ctx, "2023-12-31T24:00:00Z", value), 0);
  const std::string seen = show(value);
  EXPECT_TRUE(seen == "2023-12-31 24:0:0.000000000 zone 0" || seen == "2024-1-1 0:0:0.000000000 zone 0") << seen;
}

TEST(Convert, EveryPrefixOfADateTimeThatIsNoneIsRefused) {
  Context ctx;
  RtxDateTime value{};
  constexpr std::string_view whole = "2024-02-29T12:34:56.75+05:30";
  for (size_t length = 0; length <= whole.size(); ++length) {
    const bool good = length == 19 || length == 21 || length == 22 || length == 28;
    EXPECT_EQ(convert(rtXmlDecDateTime, ctx, whole.substr(0, length), value), good ? 0 : STATUS_INVALID_LEXICAL_FORM)
        << length;
  }
}

TEST(Convert, Times) {
  const struct {
    std::string_view text;
    const char *expected;
  } accepted[] = {
      {"12:34:56", "0-0-0 12:34:56.000000000 none 0"},
      {"00:00:00Z", "0-0-0 0:0:0.000000000 zone 0"},
      {"23:59:59.25-08:00", "0-0-0 23:59:59.250000000 zone -480"},
      {"\t12:34:56Z ", "0-0-0 12:34:56.000000000 zone 0"},
  };
  Context ctx;
  RtxDateTime value{};
  for (const auto &row : accepted) {
    EXPECT_EQ(convert(rtXmlDecTime, ctx, row.text, value), 0) << row.text;
    EXPECT_EQ(show(value), row.expected) << row.text;
  }
  EXPECT_EQ(convert(rtXmlDecTime, ctx, "24:00:00", value), 0);
  for (const std::string_view text :
       {""sv, "12:34"sv, "1:02:03"sv, "12:60:00"sv, "12:00:60"sv, "24:00:01"sv, "25:00:00"sv, "12:34:56."sv,
        "12:34:56+15:00"sv, "2024-01-01T12:34:56Z"sv, "T12:34:56"sv, "12:34:56 Z"sv, "12:34:56z"sv, "12-34-56"sv,
        "-12:34:56"sv, "12:34:56\0"sv}) {
    EXPECT_EQ(convert(rtXmlDecTime, ctx, text, value), STATUS_INVALID_LEXICAL_FORM) << text;
  }
}

// ---- Text ----------------------------------------------------------------------------------------------------------

TEST(Convert, TextIsCopiedAsItStands) {
  Context ctx;
  for (const std::string &text : {""s, " "s, "  a  b\t\n"s, "\xC3\xA9\xF0\x9F\x98\x80"s, std::string(70000, 'x')}) {
    ExactBytes bytes(text);
    setText(ctx, bytes);
    ctx->buffer.byteIndex = text.size();
    RtxXmlString value = {true, nullptr};
    const size_t before = stats(ctx).blocks;
    ASSERT_EQ(rtXmlDecXmlStr(ctx, &value), 0);
    if (!text.empty()) bytes.data()[0] = '#';
    ASSERT_NE(value.value, nullptr);
    EXPECT_EQ(value.value, text);
    EXPECT_FALSE(value.cdata);
    EXPECT_EQ(stats(ctx).blocks, before + 1);
    rtxMemHeapFreePtr(ctx, value.value);
    EXPECT_EQ(stats(ctx).blocks, before);
  }
  EXPECT_EQ(rtxInitContextBuffer(ctx, nullptr, 0), 0);
  RtxXmlString value = {true, nullptr};
  EXPECT_EQ(rtXmlDecXmlStr(ctx, &value), 0);
  EXPECT_STREQ(value.value, "");
}

TEST(Convert, TextDoesNotFreeTheTextBefore) {
  Context ctx;
  RtxXmlString value = {false, rtxUTF8Strdup(ctx, "before")};
  const char *before = value.value;
  ExactBytes bytes("after");
  setText(ctx, bytes);
  ASSERT_EQ(rtXmlDecXmlStr(ctx, &value), 0);
  EXPECT_STREQ(value.value, "after");
  EXPECT_STREQ(before, "before");
  EXPECT_EQ(stats(ctx).blocks, 2u);
}

TEST(Convert, TextThatIsNotUtf8IsRefused) {
  Context ctx;
  RtxXmlString value{};
  for (const std::string_view text :
       {"\x80"sv, "a\xC3"sv, "\xE2\x82"sv, "\xED\xA0\x80"sv, "\xC0\x80"sv, "\xF5\x80\x80\x80"sv}) {
    EXPECT_EQ(convert(rtXmlDecXmlStr, ctx, text, value), STATUS_INVALID_UTF8) << testing::PrintToString(text);
  }
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Convert, TextWithoutStorageIsRefused) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 100;
  Context ctx(options);
  RtxXmlString value{};
  EXPECT_EQ(convert(rtXmlDecXmlStr, ctx, std::string(100, 'x'), value), STATUS_NO_MEMORY);
  EXPECT_EQ(convert(rtXmlDecXmlStr, ctx, std::string(99, 'x'), value), 0);
}

TEST(WhiteSpace, IsCollapsedInPlace) {
  const struct {
    std::string_view before;
    std::string_view after;
  } rows[] = {
      {"", ""},
      {" ", ""},
      {"\t\r\n  ", ""},
      {"a", "a"},
      {" a", "a"},
      {"a ", "a"},
      {"a b", "a b"},
      {"  a  b ", "a b"},
      {"a\tb\nc\rd", "a b c d"},
      {"a \t\n b", "a b"},
      {"\xC2\xA0 x", "\xC2\xA0 x"},
      {"a\vb", "a\vb"},
      {"a\0 b"sv, "a\0 b"sv},
  };
  Context ctx;
  for (const auto &row : rows) {
    ExactBytes bytes(row.before);
    setText(ctx, bytes);
    EXPECT_EQ(rtXmlTreatWhitespaces(ctx, RTXML_WS_COLLAPSE), 0);
    EXPECT_EQ(std::string_view(ctx->buffer.data, ctx->buffer.size), row.after) << testing::PrintToString(row.before);
  }
  EXPECT_EQ(rtxInitContextBuffer(ctx, nullptr, 0), 0);
  EXPECT_EQ(rtXmlTreatWhitespaces(ctx, RTXML_WS_COLLAPSE), 0);
  EXPECT_EQ(ctx->buffer.size, 0u);
}

// ---- Hexadecimal

struct HexOutcome {
  int status;
  bool pending;
  std::string bytes;
  bool operator==(const HexOutcome &) const = default;
};

// Converts a text that arrives in pieces, cut at the given places.
HexOutcome hexInPieces(std::string_view text, std::vector<size_t> cuts) {
  Context ctx;
  RtxMemBuf out{};
  out.context = ctx;
  RtXmlHexState state{};
  int status = 0;
  cuts.push_back(text.size());
  size_t at = 0;
  for (const size_t cut : cuts) {
    ExactBytes piece(text.substr(at, cut - at));
    status = rtXmlDecHexBinary(ctx, piece.data(), piece.size(), &state, &out);
    if (status != 0) break;
    at = cut;
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  return {status, state.pending != 0, std::string(out.used == 0 ? "" : out.data + out.start, out.used - out.start)};
}

TEST(Hexadecimal, IsTheSameForEveryWayOfCuttingTheText) {
  const struct {
    std::string_view text;
    int status;
    bool pending;
    std::string_view bytes;
  } rows[] = {
      {"", 0, false, ""},
      {"  \t\n", 0, false, ""},
      {"00", 0, false, "\0"sv},
      {"0aAfF9", 0, false, "\x0A\xAF\xF9"sv},
      {"0", 0, true, ""},
      {"abc", 0, true, "\xAB"sv},
      {" 0a0B ", 0, false, "\x0A\x0B"sv},
      {"\r\n0a0B\t ", 0, false, "\x0A\x0B"sv},
      {"0a 0b", STATUS_INVALID_LEXICAL_FORM, false, "\x0A"sv},
      {"0 a", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {"0a0g", STATUS_INVALID_LEXICAL_FORM, false, "\x0A"sv},
      {"x", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {"0x00", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {"0a\0"sv, STATUS_INVALID_LEXICAL_FORM, false, "\x0A"sv},
      {"0a\xC2\xA0", STATUS_INVALID_LEXICAL_FORM, false, "\x0A"sv},
      {"@0", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {"G0", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {"`0", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {"/0", STATUS_INVALID_LEXICAL_FORM, false, ""},
      {":0", STATUS_INVALID_LEXICAL_FORM, false, ""},
  };
  for (const auto &row : rows) {
    const auto verify = [&row](const HexOutcome &seen) {
      EXPECT_EQ(seen.status, row.status) << testing::PrintToString(row.text);
      EXPECT_EQ(seen.bytes, row.bytes) << testing::PrintToString(row.text);
      if (row.status == 0) {
        EXPECT_EQ(seen.pending, row.pending) << testing::PrintToString(row.text);
      }
    };
    verify(hexInPieces(row.text, {}));
    for (size_t a = 0; a <= row.text.size(); ++a) {
      verify(hexInPieces(row.text, {a}));
      for (size_t b = a; b <= row.text.size(); ++b)
        verify(hexInPieces(row.text, {a, b}));
    }
  }
}

TEST(Hexadecimal, WithoutStorageIsRefused) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 1000;
  Context ctx(options);
  RtxMemBuf out{};
  out.context = ctx;
  RtXmlHexState state{};
  const std::string digits(4000, 'a');
  EXPECT_EQ(rtXmlDecHexBinary(ctx, digits.data(), digits.size(), &state, &out), STATUS_NO_MEMORY);
  RtxHexBinary value = {7, nullptr};
  ExactBytes bytes(digits);
  setText(ctx, bytes);
  EXPECT_EQ(rtXmlDecDynHexStr(ctx, &value), STATUS_NO_MEMORY);
  EXPECT_EQ(value.length, 7u);
}

TEST(Hexadecimal, WholeTextGivesBytesOnTheHeap) {
  Context ctx;
  RtxHexBinary value{};
  ASSERT_EQ(convert(rtXmlDecDynHexStr, ctx, " 00aFFF12\n", value), 0);
  ASSERT_EQ(value.length, 4u);
  EXPECT_EQ(std::string_view(reinterpret_cast<const char *>(value.bytes), 4), "\x00\xAF\xFF\x12"sv);
  EXPECT_EQ(stats(ctx).blocks, 1u);
  rtxMemHeapFreePtr(ctx, value.bytes);
  for (const std::string_view text : {""sv, "  "sv}) {
    ASSERT_EQ(convert(rtXmlDecDynHexStr, ctx, text, value), 0);
    EXPECT_EQ(value.length, 0u);
    EXPECT_EQ(value.bytes, nullptr);
  }
  for (const std::string_view text : {"0"sv, "abc"sv, "0g"sv, "00 00"sv, "0 0"sv, "0x00"sv, "zz"sv, "00\0"sv, "-1"sv}) {
    EXPECT_EQ(convert(rtXmlDecDynHexStr, ctx, text, value), STATUS_INVALID_LEXICAL_FORM)
        << testing::PrintToString(text);
  }
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

// ---- Names

TEST(QualifiedName, IsSplitAtItsColon) {
  Context ctx;
  const char *local = nullptr;
  const char *prefix = "before";
  const char *plain = "name";
  ASSERT_EQ(rtXmlDecQName(ctx, plain, &local, &prefix), 0);
  EXPECT_EQ(local, plain);
  EXPECT_EQ(prefix, nullptr);
  const char *prefixed = "pre:name";
  ASSERT_EQ(rtXmlDecQName(ctx, prefixed, &local, &prefix), 0);
  EXPECT_EQ(local, prefixed + 4);
  EXPECT_STREQ(prefix, "pre");
  prefix = nullptr;
  ASSERT_EQ(rtXmlDecQName(ctx, "a:b", nullptr, &prefix), 0);
  EXPECT_STREQ(prefix, "a");
  ASSERT_EQ(rtXmlDecQName(ctx, prefixed, &local, nullptr), 0);
  EXPECT_STREQ(local, "name");
  ASSERT_EQ(rtXmlDecQName(ctx, prefixed, nullptr, nullptr), 0);
}

TEST(QualifiedName, WithAColonInTheWrongPlaceIsRefusedOrSplitWithoutLoss) {
  Context ctx;
  for (const std::string name : {":a", "a:", ":", "a:b:c", "::", ""}) {
    ExactBytes text(name + '\0');
    const char *local = nullptr;
    const char *prefix = nullptr;
    const int status = rtXmlDecQName(ctx, text.data(), &local, &prefix);
    if (status != 0) {
      EXPECT_EQ(status, STATUS_INVALID_LEXICAL_FORM) << name;
      EXPECT_EQ(local, nullptr) << name;
    } else {
      ASSERT_NE(local, nullptr) << name;
      EXPECT_EQ(prefix == nullptr ? std::string(local) : prefix + ":"s + local, name);
    }
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(QualifiedName, MayHaveAPrefixOfAnyLength) {
  Context ctx;
  size_t blocks = 0;
  for (int round = 0; round < 3; ++round) {
    for (size_t length = 1; length < 5000; length = length * 2 + 1) {
      const std::string name = std::string(length, 'p') + ":n";
      const char *local = nullptr;
      const char *prefix = nullptr;
      ASSERT_EQ(rtXmlDecQName(ctx, name.c_str(), &local, &prefix), 0);
      EXPECT_EQ(prefix, std::string(length, 'p'));
      EXPECT_STREQ(local, "n");
    }
    if (round == 0) blocks = stats(ctx).blocks;
  }
  EXPECT_EQ(stats(ctx).blocks, blocks);
}

TEST(DeclarationAttribute, IsBoundAndKept) {
  Context ctx;
  RtxNsDeclList list{};
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  EXPECT_EQ(rtXmlDecNSAttr(ctx, "xmlns", "urn:d", &list, nullptr, 0), 0);
  std::string value = "urn:p";
  EXPECT_EQ(rtXmlDecNSAttr(ctx, "xmlns:p", value.c_str(), &list, nullptr, 0), 0);
  value.assign(5, '#');
  EXPECT_EQ(rtXmlDecNSAttr(ctx, "xmlns:q", "urn:q", nullptr, nullptr, 0), 0);
  ASSERT_EQ(list.items.count, 2u);
  const auto *first = static_cast<const RtxNsDecl *>(list.items.head->data);
  const auto *second = static_cast<const RtxNsDecl *>(list.items.tail->data);
  EXPECT_EQ(first->prefix, nullptr);
  EXPECT_STREQ(first->uri, "urn:d");
  EXPECT_STREQ(second->prefix, "p");
  EXPECT_STREQ(second->uri, "urn:p");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:d"), "");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:p"), "p");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:q"), "q");
  EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:p"), nullptr);
  EXPECT_EQ(list.items.count, 2u);
}

TEST(DeclarationAttribute, WithoutStorageFailsWithAWholeList) {
  for (size_t limit = 0; limit < 400; limit += 8) {
    RuntimeOptions options = defaultOptions();
    options.heapLimit = limit;
    Context ctx(options);
    RtxNsDeclList list{};
    const size_t before = stats(ctx).used;
    const int status = rtXmlDecNSAttr(ctx, "xmlns:prefix", "urn:some:uri", &list, nullptr, 0);
    if (status == 0) {
      ASSERT_EQ(list.items.count, 1u);
      rtXmlNSFreeAttrList(ctx, &list);
    } else {
      EXPECT_EQ(status, STATUS_NO_MEMORY);
      EXPECT_EQ(list.items.count, 0u);
      EXPECT_EQ(list.items.head, nullptr);
      EXPECT_EQ(stats(ctx).used, before) << limit;
    }
  }
}

TEST(InstanceAttribute, IsTakenByPrefixOrBinding) {
  Context ctx;
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "i", "http://www.w3.org/2001/XMLSchema-instance", nullptr, 0), 0);
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "o", "urn:other", nullptr, 0), 0);
  for (const char *name : {"xsi:type", "xsi:nil", "xsi:schemaLocation", "i:type"}) {
    EXPECT_EQ(rtXmlDecXSIAttr(ctx, name, "v"), 0) << name;
  }
  for (const char *name : {"type", "xsi", "xsitype", "o:type", "unbound:type", "xsix:type", "", "xmlns:xsi"}) {
    EXPECT_NE(rtXmlDecXSIAttr(ctx, name, "v"), 0) << name;
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

} // namespace
} // namespace contract
