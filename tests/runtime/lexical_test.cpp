// The conversions from text, apart from any context.
#include "lexical.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace {

// A copy of exactly the text's size, so that the sanitizer sees a read behind it.
class Bytes {
public:
  explicit Bytes(const std::string &text) : storage(text.begin(), text.end()) { storage.shrink_to_fit(); }
  const char *data() const { return storage.empty() ? "" : storage.data(); }
  char *data() { return storage.data(); }
  size_t size() const { return storage.size(); }

private:
  std::vector<char> storage;
};

struct UnsignedCase {
  const char *text;
  uint32_t limit;
  bool valid;
  uint32_t value;
};

TEST(Lexical, Unsigned) {
  const UnsignedCase cases[] = {
      {"0", UINT32_MAX, true, 0},
      {"7", UINT32_MAX, true, 7},
      {"3600", UINT32_MAX, true, 3600},
      {"4294967295", UINT32_MAX, true, UINT32_MAX},
      {"4294967296", UINT32_MAX, false, 0},
      {"4294967300", UINT32_MAX, false, 0},
      {"42949672950", UINT32_MAX, false, 0},
      {"99999999999999999999", UINT32_MAX, false, 0},
      {"65535", UINT16_MAX, true, 65535},
      {"65536", UINT16_MAX, false, 0},
      {"65540", UINT16_MAX, false, 0},
      {"0000000000000000000012", UINT32_MAX, true, 12},
      {" \t\r\n 5 \n", UINT32_MAX, true, 5},
      {"+5", UINT32_MAX, true, 5},
      {"-0", UINT32_MAX, true, 0},
      {"-000", UINT32_MAX, true, 0},
      {"-1", UINT32_MAX, false, 0},
      {"", UINT32_MAX, false, 0},
      {"  ", UINT32_MAX, false, 0},
      {"+", UINT32_MAX, false, 0},
      {"-", UINT32_MAX, false, 0},
      {"+-1", UINT32_MAX, false, 0},
      {"1 2", UINT32_MAX, false, 0},
      {"12a", UINT32_MAX, false, 0},
      {"0x10", UINT32_MAX, false, 0},
      {"1.0", UINT32_MAX, false, 0},
      {"1e3", UINT32_MAX, false, 0},
      {"\v1", UINT32_MAX, false, 0},
      {"\xC2\xA0"
       "1",
       UINT32_MAX, false, 0},
      {"\xD9\xA3", UINT32_MAX, false, 0}, // a digit of another script
  };
  for (const UnsignedCase &c : cases) {
    SCOPED_TRACE(c.text);
    const Bytes text(c.text);
    uint32_t value = 4711;
    EXPECT_EQ(c.valid, rt::parseUnsigned(text.data(), text.size(), c.limit, value));
    EXPECT_EQ(c.valid ? c.value : 4711, value);
  }
}

struct BooleanCase {
  const char *text;
  bool valid;
  bool value;
};

TEST(Lexical, Boolean) {
  const BooleanCase cases[] = {
      {"true", true, true},    {"false", true, false}, {"1", true, true},      {"0", true, false},
      {" true\n", true, true}, {"\t0 ", true, false},  {"True", false, false}, {"FALSE", false, false},
      {"", false, false},      {" ", false, false},    {"tru", false, false},  {"truee", false, false},
      {"01", false, false},    {"2", false, false},    {"yes", false, false},  {"t rue", false, false},
  };
  for (const BooleanCase &c : cases) {
    for (const bool before : {false, true}) {
      SCOPED_TRACE(c.text);
      const Bytes text(c.text);
      bool value = before;
      EXPECT_EQ(c.valid, rt::parseBoolean(text.data(), text.size(), value));
      EXPECT_EQ(c.valid ? c.value : before, value);
    }
  }
}

struct DecimalCase {
  std::string text;
  bool valid;
  double value;
};

TEST(Lexical, Decimal) {
  const DecimalCase cases[] = {
      {"0", true, 0.0},
      {"1", true, 1.0},
      {"-1", true, -1.0},
      {"+1", true, 1.0},
      {"1.5", true, 1.5},
      {"1.", true, 1.0},
      {".5", true, 0.5},
      {"-.5", true, -0.5},
      {"+.5", true, 0.5},
      {"000.2500", true, 0.25},
      {" 0.1\n", true, 0.1},
      {"-0", true, 0.0},
      {"-0.000", true, 0.0},
      {"0.3333333333333333333333333333333333", true, 1.0 / 3.0},
      {"9007199254740993", true, 9007199254740992.0},
      {"179769313486231570" + std::string(291, '0'), true, 1.7976931348623157e308},
      {"1" + std::string(400, '0'), false, 0},
      {"-1" + std::string(400, '0') + ".5", false, 0},
      {"0." + std::string(400, '0') + "1", true, 0.0},
      {"-00." + std::string(400, '0') + "1", true, 0.0},
      {"0." + std::string(307, '0') + "1", true, 1e-308},
      {"", false, 0},
      {" ", false, 0},
      {".", false, 0},
      {"+", false, 0},
      {"-.", false, 0},
      {"+-1", false, 0},
      {"-+1", false, 0},
      {"--1", false, 0},
      {"++1", false, 0},
      {"1..2", false, 0},
      {"1.2.3", false, 0},
      {"1,5", false, 0},
      {"1e3", false, 0},
      {"1E3", false, 0},
      {"0x1p3", false, 0},
      {"INF", false, 0},
      {"-inf", false, 0},
      {"NaN", false, 0},
      {"1 2", false, 0},
      {"1-", false, 0},
  };
  for (const DecimalCase &c : cases) {
    SCOPED_TRACE(c.text);
    const Bytes text(c.text);
    double value = 47.11;
    EXPECT_EQ(c.valid, rt::parseDecimal(text.data(), text.size(), value));
    EXPECT_EQ(c.valid ? c.value : 47.11, value);
    EXPECT_FALSE(c.valid && c.value == 0 && std::signbit(value));
  }
}

TEST(Lexical, DecimalDoesNotDependOnTheLocale) {
  const char *before = std::setlocale(LC_ALL, nullptr);
  const std::string kept = before == nullptr ? "C" : before;
  for (const char *locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"}) {
    if (std::setlocale(LC_ALL, locale) == nullptr) continue; // not on this system
    double value = 0;
    EXPECT_TRUE(rt::parseDecimal("1.5", 3, value)) << locale;
    EXPECT_EQ(1.5, value) << locale;
    EXPECT_FALSE(rt::parseDecimal("1,5", 3, value)) << locale;
  }
  std::setlocale(LC_ALL, kept.c_str());
}

struct MomentCase {
  const char *text;
  bool valid;
  RtxDateTime value;
};

void expectEqual(const RtxDateTime &expected, const RtxDateTime &value) {
  EXPECT_EQ(expected.year, value.year);
  EXPECT_EQ(expected.month, value.month);
  EXPECT_EQ(expected.day, value.day);
  EXPECT_EQ(expected.hour, value.hour);
  EXPECT_EQ(expected.minute, value.minute);
  EXPECT_EQ(expected.second, value.second);
  EXPECT_EQ(expected.hasZone, value.hasZone);
  EXPECT_EQ(expected.zoneMinutes, value.zoneMinutes);
  EXPECT_EQ(expected.nanoseconds, value.nanoseconds);
}

const RtxDateTime untouched = {1, 2, 3, 4, 5, 6, true, 7, 8};

TEST(Lexical, DateTime) {
  const MomentCase cases[] = {
      {"2024-02-29T23:59:59Z", true, {2024, 2, 29, 23, 59, 59, true, 0, 0}},
      {"2024-02-29T23:59:59", true, {2024, 2, 29, 23, 59, 59, false, 0, 0}},
      {" \n2001-10-26T21:32:52+02:00\t", true, {2001, 10, 26, 21, 32, 52, true, 120, 0}},
      {"2001-10-26T21:32:52-03:30", true, {2001, 10, 26, 21, 32, 52, true, -210, 0}},
      {"2001-10-26T21:32:52+14:00", true, {2001, 10, 26, 21, 32, 52, true, 840, 0}},
      {"2001-10-26T21:32:52-14:00", true, {2001, 10, 26, 21, 32, 52, true, -840, 0}},
      {"2001-10-26T21:32:52-00:00", true, {2001, 10, 26, 21, 32, 52, true, 0, 0}},
      {"2001-10-26T21:32:52.5Z", true, {2001, 10, 26, 21, 32, 52, true, 0, 500000000}},
      {"2001-10-26T21:32:52.12679", true, {2001, 10, 26, 21, 32, 52, false, 0, 126790000}},
      {"2001-10-26T21:32:52.9999999999999999999", true, {2001, 10, 26, 21, 32, 52, false, 0, 999999999}},
      {"2001-10-26T21:32:52.000000001", true, {2001, 10, 26, 21, 32, 52, false, 0, 1}},
      {"-0044-03-15T00:00:00Z", true, {-44, 3, 15, 0, 0, 0, true, 0, 0}},
      {"-0004-02-29T00:00:00", true, {-4, 2, 29, 0, 0, 0, false, 0, 0}},
      {"12024-01-01T00:00:00", true, {12024, 1, 1, 0, 0, 0, false, 0, 0}},
      {"2147483647-12-31T00:00:00", true, {2147483647, 12, 31, 0, 0, 0, false, 0, 0}},
      {"2000-02-29T00:00:00", true, {2000, 2, 29, 0, 0, 0, false, 0, 0}},
      {"2001-10-26T24:00:00", true, {2001, 10, 26, 24, 0, 0, false, 0, 0}},
      {"2001-10-26T24:00:00.000Z", true, {2001, 10, 26, 24, 0, 0, true, 0, 0}},
      {"0001-01-01T00:00:00", true, {1, 1, 1, 0, 0, 0, false, 0, 0}},

      {"", false, {}},
      {" ", false, {}},
      {"2001-10-26", false, {}},
      {"2001-10-26T", false, {}},
      {"2001-10-26T21:32", false, {}},
      {"2001-10-26T21:32:5", false, {}},
      {"2001-10-26 21:32:52", false, {}},
      {"2001-10-26t21:32:52", false, {}},
      {"2001-10-26T21:32:52z", false, {}},
      {"01-10-26T21:32:52", false, {}},
      {"201-10-26T21:32:52", false, {}},
      {"02001-10-26T21:32:52", false, {}},
      {"0000-01-01T00:00:00", false, {}},
      {"-0000-01-01T00:00:00", false, {}},
      {"+2001-10-26T21:32:52", false, {}},
      {"--2001-10-26T21:32:52", false, {}},
      {"2147483648-01-01T00:00:00", false, {}},
      {"99999999999-01-01T00:00:00", false, {}},
      {"2001-00-26T21:32:52", false, {}},
      {"2001-13-26T21:32:52", false, {}},
      {"2001-1-26T21:32:52", false, {}},
      {"2001-10-00T21:32:52", false, {}},
      {"2001-10-32T21:32:52", false, {}},
      {"2001-04-31T21:32:52", false, {}},
      {"2001-06-31T21:32:52", false, {}},
      {"2001-09-31T21:32:52", false, {}},
      {"2001-11-31T21:32:52", false, {}},
      {"2001-02-29T21:32:52", false, {}},
      {"1900-02-29T00:00:00", false, {}},
      {"2024-02-30T00:00:00", false, {}},
      {"2001-10-26T25:00:00", false, {}},
      {"2001-10-26T24:01:00", false, {}},
      {"2001-10-26T24:00:01", false, {}},
      {"2001-10-26T24:00:00.0000000000001", false, {}},
      {"2001-10-26T21:60:00", false, {}},
      {"2001-10-26T21:32:60", false, {}},
      {"2001-10-26T21:32:52.", false, {}},
      {"2001-10-26T21:32:52.Z", false, {}},
      {"2001-10-26T21:32:52,5", false, {}},
      {"2001-10-26T21:32:52+14:01", false, {}},
      {"2001-10-26T21:32:52-15:00", false, {}},
      {"2001-10-26T21:32:52+02:60", false, {}},
      {"2001-10-26T21:32:52+0200", false, {}},
      {"2001-10-26T21:32:52+02", false, {}},
      {"2001-10-26T21:32:52+2:00", false, {}},
      {"2001-10-26T21:32:52ZZ", false, {}},
      {"2001-10-26T21:32:52 Z", false, {}},
      {"2001-10-26T21:32:52Z+01:00", false, {}},
  };
  for (const MomentCase &c : cases) {
    SCOPED_TRACE(c.text);
    const Bytes text(c.text);
    RtxDateTime value = untouched;
    EXPECT_EQ(c.valid, rt::parseDateTime(text.data(), text.size(), value));
    expectEqual(c.valid ? c.value : untouched, value);
  }
}

TEST(Lexical, Time) {
  const MomentCase cases[] = {
      {"00:00:00", true, {0, 0, 0, 0, 0, 0, false, 0, 0}},
      {" 21:32:52.25+02:00 ", true, {0, 0, 0, 21, 32, 52, true, 120, 250000000}},
      {"24:00:00Z", true, {0, 0, 0, 24, 0, 0, true, 0, 0}},
      {"", false, {}},
      {"21:32", false, {}},
      {"24:00:01", false, {}},
      {"T21:32:52", false, {}},
      {"1:32:52", false, {}},
      {"21:32:52 x", false, {}},
      {"2001-10-26T21:32:52", false, {}},
  };
  for (const MomentCase &c : cases) {
    SCOPED_TRACE(c.text);
    const Bytes text(c.text);
    RtxDateTime value = untouched;
    EXPECT_EQ(c.valid, rt::parseTime(text.data(), text.size(), value));
    expectEqual(c.valid ? c.value : untouched, value);
  }
}

TEST(Lexical, EveryDayOfAGregorianCycleExists) {
  // Counts the days of four centuries: 303 common years and 97 leap years.
  int days = 0;
  for (int year = 2000; year < 2400; year++) {
    for (int month = 1; month <= 12; month++) {
      for (int day = 1; day <= 31; day++) {
        char text[32];
        const int length = std::snprintf(text, sizeof text, "%04d-%02d-%02dT00:00:00", year, month, day);
        RtxDateTime value;
        days += rt::parseDateTime(text, static_cast<size_t>(length), value);
      }
    }
  }
  EXPECT_EQ(400 * 365 + 97, days);
}

struct HexResult {
  bool valid;
  uint8_t pending;
  std::string bytes;

  bool operator==(const HexResult &) const = default;
};

HexResult parsePieces(const std::vector<std::string> &pieces) {
  RtXmlHexState state = {};
  std::string all;
  for (const std::string &piece : pieces) {
    const Bytes text(piece);
    std::vector<uint8_t> bytes(piece.size() / 2 + 1);
    size_t written = 0;
    const bool valid = rt::parseHexPiece(text.data(), text.size(), state, bytes.data(), written);
    all.append(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(written));
    if (!valid) return {false, 0, all};
  }
  return {true, state.pending, all};
}

struct HexCase {
  const char *text;
  bool valid;
  bool odd;
  std::string bytes;
};

TEST(Lexical, HexadecimalTextIsTheSameForEveryCut) {
  const HexCase cases[] = {
      {"", true, false, ""},
      {" \n", true, false, ""},
      {"00", true, false, std::string(1, '\0')},
      {"48656C6c6F", true, false, "Hello"},
      {" \t4869\r\n", true, false, "Hi"},
      {"fF", true, false, "\xFF"},
      {"486", true, true, "H"},
      {" 4 ", true, true, ""},
      {"48 69", false, false, "H"},
      {"4 8", false, false, ""},
      {"48 x", false, false, "H"},
      {"4g", false, false, ""},
      {"0x48", false, false, ""},
      {"48-69", false, false, "H"},
      {"48\xC2\xA0", false, false, "H"},
  };
  for (const HexCase &c : cases) {
    const std::string text = c.text;
    SCOPED_TRACE(text);
    const HexResult whole = parsePieces({text});
    EXPECT_EQ(c.valid, whole.valid);
    EXPECT_EQ(c.odd, whole.pending != 0);
    EXPECT_EQ(c.bytes, whole.bytes);
    for (size_t first = 0; first <= text.size(); first++) {
      for (size_t second = first; second <= text.size(); second++) {
        const HexResult cut =
            parsePieces({text.substr(0, first), text.substr(first, second - first), text.substr(second)});
        EXPECT_EQ(whole, cut) << first << " " << second;
      }
    }
  }
}

TEST(Lexical, CollapseSpace) {
  const struct {
    const char *text;
    const char *collapsed;
  } cases[] = {
      {"", ""},
      {" ", ""},
      {"\t\r\n ", ""},
      {"a", "a"},
      {"a b", "a b"},
      {" a", "a"},
      {"a ", "a"},
      {"a\tb", "a b"},
      {" \n a \r\n\t b  c\n", "a b c"},
      {"a\xC2\xA0 b", "a\xC2\xA0 b"},
      {"a\vb", "a\vb"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    Bytes text(c.text);
    const size_t length = rt::collapseSpace(text.data(), text.size());
    EXPECT_EQ(c.collapsed, std::string(text.data(), length));
    EXPECT_EQ(length, rt::collapseSpace(text.data(), length)) << "it is its own fixed point";
  }
}

} // namespace
