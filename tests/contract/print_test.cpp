// Diagnostic output on stdout.

#include "contract.h"

#include <cctype>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace contract {
namespace {

template <typename Print> std::string printed(Print print) {
  Capture out(stdout);
  const int status = print();
  std::string text = out.finish();
  EXPECT_EQ(status, 0);
  return text;
}

void expectOneLine(const std::string &text) {
  ASSERT_FALSE(text.empty());
  EXPECT_EQ(text.find('\n'), text.size() - 1) << text;
  for (const char c : text.substr(0, text.size() - 1)) {
    EXPECT_GE(static_cast<unsigned char>(c), 0x20) << testing::PrintToString(text);
    EXPECT_NE(c, 0x7F) << testing::PrintToString(text);
  }
}

TEST(Print, TextsAreQuotedAndAbsentOnesShown) {
  EXPECT_EQ(printed([] { return rtxPrintCharStr("rec.name", "some text"); }), "rec.name = \"some text\"\n");
  EXPECT_EQ(printed([] { return rtxPrintCharStr("rec.name", ""); }), "rec.name = \"\"\n");
  EXPECT_EQ(printed([] { return rtxPrintCharStr("rec.name", nullptr); }), "rec.name = <null>\n");
  EXPECT_EQ(printed([] { return rtxPrintCharStr("n", "\xC3\xA9"); }), "n = \"\xC3\xA9\"\n");
}

TEST(Print, NumbersAndBooleans) {
  EXPECT_EQ(printed([] { return rtxPrintUnsigned("n", 0); }), "n = 0\n");
  EXPECT_EQ(printed([] { return rtxPrintUnsigned("n", std::numeric_limits<uint32_t>::max()); }), "n = 4294967295\n");
  EXPECT_EQ(printed([] { return rtxPrintBoolean("n", true); }), "n = true\n");
  EXPECT_EQ(printed([] { return rtxPrintBoolean("n", false); }), "n = false\n");
  EXPECT_EQ(printed([] { return rtxPrintReal("n", 0.5); }), "n = 0.5\n");
  for (const double value : {0.1, -123.456, 1e21, 1.0 / 3}) {
    const std::string line = printed([value] { return rtxPrintReal("n", value); });
    expectOneLine(line);
    double back = 0;
    std::from_chars(line.data() + 4, line.data() + line.size(), back);
    EXPECT_EQ(back, value) << line;
  }
  for (const double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::max(), -std::numeric_limits<double>::denorm_min()}) {
    expectOneLine(printed([value] { return rtxPrintReal("n", value); }));
  }
}

TEST(Print, BytesAreShownInHexadecimal) {
  ExactBytes bytes("\x00\x0A\xFF"sv);
  const std::string line =
      printed([&] { return rtxPrintHexBinary("n", 3, reinterpret_cast<const uint8_t *>(bytes.data())); });
  expectOneLine(line);
  ASSERT_EQ(line.substr(0, 4), "n = ");
  std::string digits;
  for (const char c : line.substr(4)) {
    if (std::isxdigit(static_cast<unsigned char>(c)) != 0) digits += static_cast<char>(std::tolower(c));
  }
  EXPECT_EQ(digits, "000aff") << line;
  const std::string none = printed([] { return rtxPrintHexBinary("n", 0, nullptr); });
  expectOneLine(none);
  EXPECT_EQ(none.substr(0, 3), "n =");
}

TEST(Print, NullIsALineOfItsOwn) {
  EXPECT_EQ(printed([] { return rtxPrintNull("rec"); }), "rec = <null>\n");
}

TEST(Print, ForeignAttributeShowsItsThreeTexts) {
  const std::string line = printed([] { return rtxPrintNVP("rec[0]", "x:attr", "its value"); });
  expectOneLine(line);
  EXPECT_EQ(line.find("rec[0]"), 0u);
  EXPECT_LT(line.find("x:attr"), line.find("its value"));
  EXPECT_NE(line.find(" = "), line.npos);
  EXPECT_NE(line.find("its value"), line.npos);
  expectOneLine(printed([] { return rtxPrintNVP("rec[0]", "x:attr", nullptr); }));
}

TEST(Print, DeclarationsHaveALineEach) {
  RtxNsDecl decls[] = {{nullptr, "urn:d"}, {"p", "urn:p"}};
  RtxListNode nodes[] = {{&decls[0], &nodes[1], nullptr}, {&decls[1], nullptr, &nodes[0]}};
  const RtxNsDeclList list = {{2, &nodes[0], &nodes[1]}};
  EXPECT_EQ(printed([&] { return rtXmlPrintNSAttrs("rec", &list); }),
            "rec.xmlns = \"urn:d\"\nrec.xmlns:p = \"urn:p\"\n");
  const RtxNsDeclList none{};
  EXPECT_EQ(printed([&] { return rtXmlPrintNSAttrs("rec", &none); }), "");
}

TEST(Print, ControlCharactersNeverReachTheStream) {
  for (int c = 1; c < 0x20; ++c) {
    const std::string text = "a"s + static_cast<char>(c) + "b";
    RtxNsDecl decl = {"p", text.c_str()};
    RtxListNode node = {&decl, nullptr, nullptr};
    const RtxNsDeclList list = {{1, &node, &node}};
    expectOneLine(printed([&] { return rtxPrintCharStr("n", text.c_str()); }));
    expectOneLine(printed([&] { return rtxPrintNVP("n", text.c_str(), text.c_str()); }));
    expectOneLine(printed([&] { return rtXmlPrintNSAttrs("n", &list); }));
  }
  expectOneLine(printed([] {
    return rtxPrintCharStr("n", "a\x7F"
                                "b");
  }));
}

TEST(Print, DifferentTextsGiveDifferentLines) {
  const auto line = [](const char *text) { return printed([text] { return rtxPrintCharStr("n", text); }); };
  EXPECT_NE(line("a\nb"), line("a\\nb"));
  EXPECT_NE(line("a\x01"), line("a\x02"));
  EXPECT_NE(line("<null>"), line(nullptr));
}

TEST(Print, LongTextsAreWhole) {
  const std::string text(100000, 'x');
  EXPECT_EQ(printed([&] { return rtxPrintCharStr("n", text.c_str()); }), "n = \"" + text + "\"\n");
}

TEST(Print, KeepsItsPlaceAmongTheLinesOfTheHost) {
  Capture out(stdout);
  std::printf("one\n");
  EXPECT_EQ(rtxPrintUnsigned("two", 2), 0);
  std::printf("three\n");
  EXPECT_EQ(rtxPrintNull("four"), 0);
  std::printf("five\n");
  EXPECT_EQ(out.finish(), "one\ntwo = 2\nthree\nfour = <null>\nfive\n");
}

TEST(Print, SaysSoWhenTheStreamRefuses) {
  const int full = open("/dev/full", O_WRONLY);
  if (full < 0) GTEST_SKIP() << "no device that is always full";
  const std::string text(1 << 20, 'x'); // more than any stream keeps back
  int status = 0;
  {
    Capture out(stdout);
    std::fflush(stdout);
    dup2(full, STDOUT_FILENO);
    status = rtxPrintCharStr("n", text.c_str());
    out.finish();
  }
  std::clearerr(stdout);
  close(full);
  EXPECT_LT(status, 0);
}

} // namespace
} // namespace contract
