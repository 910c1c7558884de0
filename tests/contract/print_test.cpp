// Diagnostic output on stdout and to sinks.

#include "contract.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <latch>
#include <limits>
#include <thread>
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

// ---- Sinks

// Takes the thread's lines as long as it lives.
class Sink {
public:
  Sink() : earlier(rtxSetPrintSink(&sink)) {}
  ~Sink() { EXPECT_EQ(rtxSetPrintSink(earlier), &sink); }
  Sink(const Sink &) = delete;
  Sink &operator=(const Sink &) = delete;

  std::vector<std::string> lines; // one for each call
  std::function<int(std::string_view line)> onLine;
  size_t refused() const { return sink.refused; }
  std::string text() const {
    std::string all;
    for (const std::string &line : lines)
      all += line;
    return all;
  }

private:
  static int put(void *self, const char *line, size_t length) {
    auto &taken = *static_cast<Sink *>(self);
    taken.lines.emplace_back(line, length);
    return taken.onLine ? taken.onLine(taken.lines.back()) : 0;
  }

  RtxPrintSink sink{put, this, 0};
  RtxPrintSink *earlier;
};

// A line of every print function.
int printAll(const char *text) {
  const uint8_t bytes[] = {0, 0xAB};
  RtxNsDecl decls[] = {{nullptr, text}, {"p", text}};
  RtxListNode nodes[] = {{&decls[0], &nodes[1], nullptr}, {&decls[1], nullptr, &nodes[0]}};
  const RtxNsDeclList list = {{2, &nodes[0], &nodes[1]}};
  int worst = 0;
  for (const int status : {rtxPrintCharStr("text", text), rtxPrintUnsigned(text, 7), rtxPrintBoolean("boolean", true),
                           rtxPrintReal("real", 0.25), rtxPrintHexBinary("bytes", 2, bytes),
                           rtxPrintNVP("pair", "x:a", text), rtxPrintNull("null"), rtXmlPrintNSAttrs("list", &list)}) {
    worst = std::min(worst, status);
  }
  return worst;
}

TEST(PrintSink, TakesTheLinesThatWouldGoToStdout) {
  for (const std::string &text : {"v"s, "a\nb\\\"\xC3\xA9\xFF"s, std::string(511, 'x'), std::string(100000, '\t')}) {
    SCOPED_TRACE(text.size());
    const std::string expected = printed([&] { return printAll(text.c_str()); });
    Capture out(stdout);
    Sink sink;
    EXPECT_EQ(printAll(text.c_str()), 0);
    EXPECT_EQ(sink.text(), expected);
    EXPECT_EQ(sink.refused(), 0u);
    EXPECT_EQ(sink.lines.size(), 9u);
    for (const std::string &line : sink.lines)
      expectOneLine(line);
    EXPECT_EQ(out.finish(), "");
  }
}

TEST(PrintSink, GetsEveryLineInOneCall) {
  for (size_t length = 0; length < 1200; ++length) {
    const std::string text(length, 'x');
    Sink sink;
    EXPECT_EQ(rtxPrintCharStr("n", text.c_str()), 0);
    ASSERT_EQ(sink.lines.size(), 1u);
    ASSERT_EQ(sink.lines[0], "n = \"" + text + "\"\n");
  }
}

TEST(PrintSink, GetsLinesWithoutTextsThatAreNull) {
  Sink sink;
  EXPECT_EQ(rtxPrintCharStr(nullptr, nullptr), 0);
  EXPECT_EQ(rtxPrintHexBinary("n", 3, nullptr), 0);
  EXPECT_EQ(rtXmlPrintNSAttrs("n", nullptr), 0);
  EXPECT_EQ(sink.text(), " = <null>\nn = \n");
}

TEST(PrintSink, RefusesALineAndNoOther) {
  Sink sink;
  for (const int answer : {1, -1, 7}) {
    sink.lines.clear();
    sink.onLine = [answer](std::string_view line) { return line.starts_with("bad") ? answer : 0; };
    EXPECT_EQ(rtxPrintNull("good"), 0);
    EXPECT_LT(rtxPrintNull("bad"), 0);
    EXPECT_EQ(rtxPrintUnsigned("good", 1), 0);
    EXPECT_EQ(sink.text(), "good = <null>\nbad = <null>\ngood = 1\n");
  }
  EXPECT_EQ(sink.refused(), 3u);

  RtxNsDecl decls[] = {{"bad", "urn:d"}, {"p", "urn:p"}};
  RtxListNode nodes[] = {{&decls[0], &nodes[1], nullptr}, {&decls[1], nullptr, &nodes[0]}};
  const RtxNsDeclList list = {{2, &nodes[0], &nodes[1]}};
  sink.lines.clear();
  sink.onLine = [](std::string_view line) { return line.find("bad") != line.npos ? 1 : 0; };
  EXPECT_LT(rtXmlPrintNSAttrs("rec", &list), 0);
  EXPECT_EQ(sink.lines.size(), 2u);
  EXPECT_EQ(sink.refused(), 4u);
}

TEST(PrintSink, WithoutAFunctionRefuses) {
  Capture out(stdout);
  RtxPrintSink none{};
  EXPECT_EQ(rtxSetPrintSink(&none), nullptr);
  EXPECT_LT(rtxPrintNull("n"), 0);
  EXPECT_EQ(rtxSetPrintSink(nullptr), &none);
  EXPECT_EQ(none.refused, 1u);
  EXPECT_EQ(out.finish(), "");
}

TEST(PrintSink, IsSetOverAnotherAndTakenOff) {
  Capture out(stdout);
  rtxPrintNull("a");
  {
    Sink outer;
    rtxPrintNull("b");
    {
      Sink inner;
      rtxPrintNull("c");
      EXPECT_EQ(inner.text(), "c = <null>\n");
    }
    rtxPrintNull("d");
    EXPECT_EQ(outer.text(), "b = <null>\nd = <null>\n");
  }
  rtxPrintNull("e");
  EXPECT_EQ(out.finish(), "a = <null>\ne = <null>\n");
}

TEST(PrintSink, MayPrintByItself) {
  Capture out(stdout);
  {
    Sink sink;
    RtxPrintSink left{};
    sink.onLine = [&left](std::string_view line) {
      EXPECT_EQ(rtxPrintNull("aside"), 0);
      {
        Sink inner;
        EXPECT_EQ(rtxPrintNull("inside"), 0);
        EXPECT_EQ(inner.text(), "inside = <null>\n");
      }
      EXPECT_EQ(rtxSetPrintSink(&left), nullptr);
      return line.starts_with("b") ? 1 : 0;
    };
    EXPECT_EQ(rtxPrintNull("a"), 0);
    EXPECT_LT(rtxPrintNull("b"), 0);
    EXPECT_EQ(rtxPrintNull("c"), 0);
    EXPECT_EQ(sink.text(), "a = <null>\nb = <null>\nc = <null>\n");
    EXPECT_EQ(left.refused, 0u);
  }
  EXPECT_EQ(out.finish(), "aside = <null>\naside = <null>\naside = <null>\n");
}

TEST(PrintSink, IsOfItsThreadAlone) {
  constexpr int rounds = 2000;
  Capture out(stdout);
  std::latch both(2);
  const auto print = [&both](const std::string &name, std::string &result, size_t &calls) {
    Sink sink;
    both.arrive_and_wait();
    for (int i = 0; i < rounds; ++i)
      rtxPrintCharStr(name.c_str(), std::string(static_cast<size_t>(i), 'x').c_str());
    result = sink.text();
    calls = sink.lines.size();
  };
  std::string results[2];
  size_t calls[2] = {};
  std::thread first(print, "first", std::ref(results[0]), std::ref(calls[0]));
  std::thread second(print, "second", std::ref(results[1]), std::ref(calls[1]));
  first.join();
  second.join();
  std::string expected[2];
  for (int i = 0; i < rounds; ++i) {
    const std::string rest = " = \"" + std::string(static_cast<size_t>(i), 'x') + "\"\n";
    expected[0] += "first" + rest;
    expected[1] += "second" + rest;
  }
  for (const int i : {0, 1}) {
    EXPECT_TRUE(results[i] == expected[i]) << "thread " << i;
    EXPECT_EQ(calls[i], size_t{rounds});
  }
  EXPECT_EQ(out.finish(), "");

  // A sink of this thread is none of another's.
  Capture other(stdout);
  Sink sink;
  std::thread([] { rtxPrintNull("n"); }).join();
  EXPECT_EQ(other.finish(), "n = <null>\n");
  EXPECT_TRUE(sink.lines.empty());
}

} // namespace
} // namespace contract
