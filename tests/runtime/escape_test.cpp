// Escaping and the checks of what XML can carry, apart from any context.
#include "escape.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using rt::Escape;

constexpr Escape all[] = {Escape::Text, Escape::Attribute, Escape::AttributeBytes};

// A whole text escaped with the two steps that an encoder takes in turn; nothing if it is refused. Works on copies of
// exactly the text's size.
std::optional<std::string> escape(const std::string &text, Escape how) {
  const std::vector<char> exact(text.begin(), text.end());
  const char *from = exact.data();
  size_t length = exact.size();
  std::string out;
  while (length != 0) {
    std::vector<char> to(length);
    const size_t plain = rt::copyPlain(to.data(), from, length, how);
    EXPECT_LE(plain, length);
    EXPECT_EQ(std::string(from, plain), std::string(to.data(), plain));
    out.append(to.data(), plain);
    from += plain;
    length -= plain;
    if (length == 0) break;
    const rt::Escaped first = rt::escapeFirst(from, length, how);
    if (first.taken == 0) return std::nullopt;
    EXPECT_LE(first.taken, length);
    EXPECT_GE(first.length, first.taken) << "callers reserve a byte for each byte";
    out.append(first.bytes, first.length);
    from += first.taken;
    length -= first.taken;
  }
  return out;
}

struct EscapeCase {
  std::string text;
  std::optional<std::string> inText;
  std::optional<std::string> inAttribute;
  std::optional<std::string> inAttributeBytes;
};

constexpr std::nullopt_t refused = std::nullopt;

const EscapeCase escapeCases[] = {
    {"", "", "", ""},
    {"idle", "idle", "idle", "idle"},
    {"a&b", "a&amp;b", "a&amp;b", "a&amp;b"},
    {"<a>", "&lt;a&gt;", "&lt;a&gt;", "&lt;a&gt;"},
    {"\"'", "\"'", "&quot;'", "&quot;'"},
    {"]]>", "]]&gt;", "]]&gt;", "]]&gt;"},
    {"\t\n", "\t\n", "&#9;&#10;", "&#9;&#10;"},
    {"a\rb", "a&#13;b", "a&#13;b", "a&#13;b"},
    {"\x7F", "\x7F", "\x7F", "\x7F"},
    {std::string(1, '\0'), refused, refused, refused},
    {"\x01", refused, refused, refused},
    {"\x08", refused, refused, refused},
    {"\x0B", refused, refused, refused},
    {"\x1F", refused, refused, refused},
    {"\xC3\xA9", "\xC3\xA9", "\xC3\xA9", "\xC3\xA9"},
    {"\xE2\x82\xAC", "\xE2\x82\xAC", "\xE2\x82\xAC", "\xE2\x82\xAC"},
    {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
    {"\xEF\xBF\xBD", "\xEF\xBF\xBD", "\xEF\xBF\xBD", "\xEF\xBF\xBD"},
    {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
    {"\x80", refused, refused, "\x80"},
    {"\xC3", refused, refused, "\xC3"},
    {"a\xC3", refused, refused, "a\xC3"},
    {"\xC3<", refused, refused, "\xC3&lt;"},
    {"\xC0\x80", refused, refused, "\xC0\x80"},
    {"\xC1\xBF", refused, refused, "\xC1\xBF"},
    {"\xE0\x9F\xBF", refused, refused, "\xE0\x9F\xBF"},
    {"\xE2\x82", refused, refused, "\xE2\x82"},
    {"\xED\xA0\x80", refused, refused, "\xED\xA0\x80"},
    {"\xEF\xBF\xBE", refused, refused, "\xEF\xBF\xBE"},
    {"\xEF\xBF\xBF", refused, refused, "\xEF\xBF\xBF"},
    {"\xF0\x8F\xBF\xBF", refused, refused, "\xF0\x8F\xBF\xBF"},
    {"\xF4\x90\x80\x80", refused, refused, "\xF4\x90\x80\x80"},
    {"\xF5\x80\x80\x80", refused, refused, "\xF5\x80\x80\x80"},
    {"\xF0\x9F\x98", refused, refused, "\xF0\x9F\x98"},
    {"\xFF", refused, refused, "\xFF"},
};

const std::optional<std::string> &expected(const EscapeCase &c, Escape how) {
  if (how == Escape::Text) return c.inText;
  return how == Escape::Attribute ? c.inAttribute : c.inAttributeBytes;
}

// Machine words are compared as a whole, so every text is tried at every distance from the ends of one.
TEST(Escaping, IsTheSameAtEveryPosition) {
  for (const EscapeCase &c : escapeCases) {
    for (const Escape how : all) {
      for (size_t before = 0; before < 20; before++) {
        for (size_t after = 0; after < 20; after++) {
          std::optional<std::string> want = expected(c, how);
          if (want) want = std::string(before, 'x') + *want + std::string(after, '~');
          const std::string text = std::string(before, 'x') + c.text + std::string(after, '~');
          ASSERT_EQ(want, escape(text, how)) << testing::PrintToString(text) << " as " << static_cast<int>(how);
        }
      }
    }
  }
}

// What the table above says of single bytes holds for each of them beside each other.
TEST(Escaping, PairsOfBytes) {
  for (const Escape how : all) {
    for (int first = 0; first < 128; first++) {
      for (int second = 0; second < 128; second++) {
        const char a = static_cast<char>(first);
        const char b = static_cast<char>(second);
        const std::optional<std::string> one = escape({a}, how);
        const std::optional<std::string> other = escape({b}, how);
        std::optional<std::string> want;
        if (one && other) want = "....." + *one + *other + "......";
        std::string text = ".....";
        text += a;
        text += b;
        text += "......";
        ASSERT_EQ(want, escape(text, how)) << first << " " << second;
      }
    }
  }
}

TEST(Escaping, ARefusedTextIsNoXmlText) {
  for (const EscapeCase &c : escapeCases) {
    for (size_t before = 0; before < 12; before++) {
      const std::string text = std::string(before, 'x') + c.text;
      const std::vector<char> exact(text.begin(), text.end());
      EXPECT_EQ(c.inText.has_value(), rt::isXmlText(exact.data(), exact.size())) << testing::PrintToString(text);
    }
  }
}

// Against a definition of UTF-8 by code points: every character is taken whole, and every prefix of it refused.
TEST(Escaping, EveryCharacter) {
  for (uint32_t c = 0x80; c <= 0x110FFF; c++) {
    std::string text;
    if (c < 0x800) {
      text = {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
    } else if (c < 0x10000) {
      text = {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
              static_cast<char>(0x80 | (c & 0x3F))};
    } else {
      text = {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 0x3F)),
              static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
    }
    const bool carried = c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
    ASSERT_EQ(carried ? text.size() : 0, rt::multiByteCharacter(text.data(), text.size())) << c;
    for (size_t length = 1; length < text.size(); length++)
      ASSERT_EQ(0u, rt::multiByteCharacter(text.data(), length)) << c;
  }
}

std::string decimal(double value) {
  char digits[rt::decimalDigits];
  return {digits, rt::writeDecimal(value, digits)};
}

TEST(Decimals, AreWrittenWithoutExponent) {
  const struct {
    double value;
    std::string text;
  } cases[] = {
      {0.0, "0"},
      {-0.0, "0"},
      {1.0, "1"},
      {-1.0, "-1"},
      {10.0, "10"},
      {123456.0, "123456"},
      {0.5, "0.5"},
      {-0.25, "-0.25"},
      {0.1, "0.1"},
      {1.0 / 3.0, "0.3333333333333333"},
      {12.75, "12.75"},
      {0.001, "0.001"},
      {1e21, "1" + std::string(21, '0')},
      {1e23, "1" + std::string(23, '0')},
      {-1.5e10, "-15000000000"},
      {1e-7, "0.0000001"},
      {1.25e-9, "0.00000000125"},
      {9007199254740993.0, "9007199254740992"},
      {std::numeric_limits<double>::max(), "17976931348623157" + std::string(292, '0')},
      {std::numeric_limits<double>::denorm_min(), "0." + std::string(323, '0') + "5"},
      {std::numeric_limits<double>::infinity(), ""},
      {-std::numeric_limits<double>::infinity(), ""},
      {std::numeric_limits<double>::quiet_NaN(), ""},
  };
  for (const auto &c : cases)
    EXPECT_EQ(c.text, decimal(c.value));
}

TEST(Decimals, ReadBackAsTheSameNumber) {
  std::mt19937_64 random(20240229);
  for (int i = 0; i < 20000; i++) {
    const uint64_t bits = random();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    const std::string text = decimal(value);
    ASSERT_EQ(std::string::npos, text.find_first_not_of("-.0123456789")) << text;
    double back = 0;
    const std::from_chars_result result =
        std::from_chars(text.data(), text.data() + text.size(), back, std::chars_format::fixed);
    ASSERT_EQ(std::errc(), result.ec) << text;
    ASSERT_EQ(value, back) << text;
  }
}

} // namespace
