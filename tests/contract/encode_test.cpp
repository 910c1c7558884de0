// Encoder primitives. What the contract leaves open in spelling is judged by a parser.

#include "contract.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace contract {
namespace {

// Declarations for a test, owned by it.
class Declarations {
public:
  Declarations(std::initializer_list<RtxNsDecl> entries) : decls(entries), nodes(decls.size()) {
    for (size_t i = 0; i < nodes.size(); ++i) {
      nodes[i] = {&decls[i], i + 1 < nodes.size() ? &nodes[i + 1] : nullptr, i > 0 ? &nodes[i - 1] : nullptr};
    }
    if (!nodes.empty()) list.items = {static_cast<uint32_t>(nodes.size()), &nodes.front(), &nodes.back()};
  }
  const RtxNsDeclList *operator&() const { return &list; }

private:
  std::vector<RtxNsDecl> decls;
  std::vector<RtxListNode> nodes;
  RtxNsDeclList list{};
};

class Encode : public testing::Test {
protected:
  Context ctx;

  void SetUp() override { ASSERT_EQ(rtxSetOutputDynamic(ctx), 0); }

  std::string take() {
    EXPECT_EQ(rtxErrCount(ctx), 0u) << "an encoder primitive recorded an error";
    std::string text = output(ctx);
    EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
    return text;
  }

  // Writes one element that may hold anything, and hands back its text.
  template <typename Body> std::string element(Body body) {
    EXPECT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
    body();
    EXPECT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
    return take();
  }
};

TEST_F(Encode, DocumentBeginsWithItsDeclaration) {
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  EXPECT_EQ(output(ctx), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "e", nullptr), 0);
  ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
  EXPECT_EQ(infoset(take()), "e[](t)");
}

TEST_F(Encode, ElementThatIsStillOpenBecomesEmpty) {
  ASSERT_EQ(rtXmlEncStartElement(ctx, "x", nullptr, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "x", nullptr), 0);
  EXPECT_EQ(take(), "<x/>");
}

TEST_F(Encode, ElementWhoseTagWasClosedGetsAnEndTag) {
  ASSERT_EQ(rtXmlEncStartElement(ctx, "x", nullptr, nullptr, true), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "x", nullptr), 0);
  EXPECT_EQ(take(), "<x></x>");
  ASSERT_EQ(rtXmlEncStartElement(ctx, "x", nullptr, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncTermStartElement(ctx), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "x", nullptr), 0);
  EXPECT_EQ(take(), "<x></x>");
}

TEST_F(Encode, NamesCarryTheirPrefix) {
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "bound", "urn:a", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:d", false), 0);
  const struct {
    RtxNamespace ns;
    const char *expected;
  } rows[] = {
      {{"p", "urn:a"}, "<p:x><p:y>1</p:y></p:x>"}, {{"p", nullptr}, "<p:x><p:y>1</p:y></p:x>"},
      {{"", "urn:a"}, "<x><y>1</y></x>"},          {{nullptr, "urn:a"}, "<bound:x><bound:y>1</bound:y></bound:x>"},
      {{nullptr, "urn:d"}, "<x><y>1</y></x>"},     {{nullptr, "urn:unbound"}, "<x><y>1</y></x>"},
      {{nullptr, nullptr}, "<x><y>1</y></x>"},
  };
  for (const auto &row : rows) {
    ASSERT_EQ(rtXmlEncStartElement(ctx, "x", &row.ns, nullptr, true), 0);
    ASSERT_EQ(rtXmlEncUInt(ctx, 1, "y", &row.ns), 0);
    ASSERT_EQ(rtXmlEncEndElement(ctx, "x", &row.ns), 0);
    EXPECT_EQ(take(), row.expected);
  }
  ASSERT_EQ(rtXmlEncUInt(ctx, 1, "x", nullptr), 0);
  EXPECT_EQ(take(), "<x>1</x>");
}

TEST_F(Encode, OpenTagIsClosedByWhateverIsWrittenIntoTheElement) {
  const RtxXmlString text = {false, "t"};
  const RtxXmlString fragment = {false, "<f/>"};
  const uint8_t byte = 0xAB;
  const struct {
    const char *expected;
    std::function<int()> write;
  } rows[] = {
      {"<e>t</e>", [&] { return rtXmlEncString(ctx, &text, nullptr, nullptr); }},
      {"<e><c>t</c></e>", [&] { return rtXmlEncString(ctx, &text, "c", nullptr); }},
      {"<e>t</e>", [&] { return rtXmlEncUTF8Str(ctx, "t", nullptr, nullptr); }},
      {"<e><c>t</c></e>", [&] { return rtXmlEncUTF8Str(ctx, "t", "c", nullptr); }},
      {"<e>7</e>", [&] { return rtXmlEncUInt(ctx, 7, nullptr, nullptr); }},
      {"<e><c>7</c></e>", [&] { return rtXmlEncUInt(ctx, 7, "c", nullptr); }},
      {"<e>AB</e>", [&] { return rtXmlEncHexBinary(ctx, 1, &byte, nullptr, nullptr); }},
      {"<e><c>AB</c></e>", [&] { return rtXmlEncHexBinary(ctx, 1, &byte, "c", nullptr); }},
      {"<e><f/></e>", [&] { return rtXmlEncAny(ctx, &fragment, nullptr, nullptr); }},
      {"<e><c/></e>",
       [&] {
         const int status = rtXmlEncStartElement(ctx, "c", nullptr, nullptr, false);
         return status != 0 ? status : rtXmlEncEndElement(ctx, "c", nullptr);
       }},
  };
  for (const auto &row : rows)
    EXPECT_EQ(element([&] { EXPECT_EQ(row.write(), 0); }), row.expected);
}

TEST_F(Encode, NullTextsWriteEmptyElements) {
  const RtxXmlString none = {false, nullptr};
  const RtxXmlString noneAsCdata = {true, nullptr};
  const RtxXmlString empty = {false, ""};
  const RtxXmlString emptyCdata = {true, ""};
  const std::function<int()> writes[] = {
      [&] { return rtXmlEncString(ctx, &none, "c", nullptr); },
      [&] { return rtXmlEncString(ctx, &noneAsCdata, "c", nullptr); },
      [&] { return rtXmlEncString(ctx, &empty, "c", nullptr); },
      [&] { return rtXmlEncString(ctx, &emptyCdata, "c", nullptr); },
      [&] { return rtXmlEncUTF8Str(ctx, nullptr, "c", nullptr); },
      [&] { return rtXmlEncHexBinary(ctx, 0, nullptr, "c", nullptr); },
  };
  for (const auto &write : writes) {
    EXPECT_EQ(infoset(element([&] { EXPECT_EQ(write(), 0); })), "e[](c[]())");
  }
}

TEST_F(Encode, NullFragmentWritesNothing) {
  const RtxXmlString none = {false, nullptr};
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "e", nullptr), 0);
  EXPECT_EQ(rtXmlEncAny(ctx, &none, nullptr, nullptr), 0);
  EXPECT_EQ(take(), "<e>t</e>");
}

TEST_F(Encode, FragmentIsCopiedAsItStands) {
  const char *text = "<f:a xmlns:f='u'  k=\"&lt;\">&#65;<![CDATA[<]]></f:a >";
  const RtxXmlString fragment = {false, text};
  EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncAny(ctx, &fragment, nullptr, nullptr), 0); }), "<e>"s + text + "</e>");
}

TEST_F(Encode, NumbersAreWrittenInDecimal) {
  for (const uint32_t value : {0u, 1u, 9u, 10u, 99u, 100u, 65535u, 999999999u, 1000000000u, 4294967295u}) {
    EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncUInt(ctx, value, nullptr, nullptr), 0); }),
              "<e>" + std::to_string(value) + "</e>");
    EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncUIntAttr(ctx, value, "kk", 1), 0); }),
              "<e k=\"" + std::to_string(value) + "\"/>");
  }
}

TEST_F(Encode, BytesAreWrittenAsUpperCaseHexadecimal) {
  ExactBytes bytes("\x00\x01\x7F\x80\xAB\xFF"sv);
  EXPECT_EQ(element([&] {
              EXPECT_EQ(rtXmlEncHexBinary(ctx, 6, reinterpret_cast<const uint8_t *>(bytes.data()), nullptr, nullptr),
                        0);
            }),
            "<e>00017F80ABFF</e>");
}

TEST_F(Encode, BooleansAreWrittenAsWords) {
  EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncBoolAttr(ctx, true, "kk", 1), 0); }), "<e k=\"true\"/>");
  EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncBoolAttr(ctx, false, "kk", 1), 0); }), "<e k=\"false\"/>");
}

TEST_F(Encode, DecimalsAreShortestAndWithoutExponent) {
  const struct {
    double value;
    const char *expected;
  } rows[] = {
      {0.0, "0"},
      {1.0, "1"},
      {-1.0, "-1"},
      {0.1, "0.1"},
      {0.5, "0.5"},
      {-0.25, "-0.25"},
      {100.0, "100"},
      {1.0 / 3, "0.3333333333333333"},
      {123456.789, "123456.789"},
      {1e15, "1000000000000000"},
      {1e21, "1000000000000000000000"},
      {1e-7, "0.0000001"},
      {9007199254740993.0, "9007199254740992"},
      {1.7976931348623157, "1.7976931348623157"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncDecimalAttr(ctx, row.value, "kk", 1), 0); }),
              "<e k=\""s + row.expected + "\"/>");
  }
}

TEST_F(Encode, DecimalsOfEverySizeKeepTheirValue) {
  for (const double value : {DBL_MAX, -DBL_MAX, DBL_MIN, std::numeric_limits<double>::denorm_min(), DBL_EPSILON, 1e22,
                             1e23, 5e-5, 123456789012345680.0, -0.0}) {
    const std::string text = element([&] { EXPECT_EQ(rtXmlEncDecimalAttr(ctx, value, "k", 1), 0); });
    ASSERT_GT(text.size(), 8u);
    const std::string digits = text.substr(6, text.size() - 9);
    EXPECT_EQ(digits.find_first_not_of("-0123456789."), digits.npos) << digits;
    double back = 1;
    std::from_chars(digits.data(), digits.data() + digits.size(), back, std::chars_format::fixed);
    EXPECT_EQ(back, value) << digits;
  }
}

TEST_F(Encode, DecimalsThatAreNoNumbersAreRefused) {
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  for (const double value :
       {std::nan(""), std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(rtXmlEncDecimalAttr(ctx, value, "k", 1), STATUS_INVALID_UTF8);
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

// ---- Escaping --------------------------------------------------------------------------------------------------

std::vector<std::string> awkwardTexts() {
  std::vector<std::string> texts = {"]]>",
                                    "]]>]]>",
                                    "]]",
                                    "]",
                                    "a]]>b",
                                    "&amp;",
                                    "<a/>",
                                    "a < b && c > d",
                                    "\"'\"'",
                                    "  edges  ",
                                    "\t\n\r",
                                    "a\rb",
                                    "a\r\nb",
                                    "\r",
                                    "\n",
                                    "<![CDATA[x]]>",
                                    "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
                                    "\xEF\xBF\xBD",
                                    "\x7F",
                                    "\xC2\x80",
                                    "\xC2\x85",
                                    "\xE2\x80\xA8"};
  for (char c = 0x20; c < 0x7F; ++c)
    texts.push_back("x"s + c + "y");
  texts.push_back(std::string(10000, '&'));
  texts.push_back(std::string(10000, 'x') + "<");
  return texts;
}

TEST_F(Encode, TextSurvivesAsContentAndAsCdataAndAsAttribute) {
  for (const std::string &text : awkwardTexts()) {
    const RtxXmlString plain = {false, text.c_str()};
    const RtxXmlString cdata = {true, text.c_str()};
    const std::string expected = "e[](" + text + ")";
    EXPECT_EQ(infoset(element([&] { EXPECT_EQ(rtXmlEncString(ctx, &plain, nullptr, nullptr), 0); })), expected);
    EXPECT_EQ(infoset(element([&] { EXPECT_EQ(rtXmlEncUTF8Str(ctx, text.c_str(), nullptr, nullptr), 0); })), expected);
    EXPECT_EQ(infoset(element([&] { EXPECT_EQ(rtXmlEncString(ctx, &cdata, nullptr, nullptr), 0); })), expected);
    ExactBytes value(text);
    EXPECT_EQ(infoset(element([&] { EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "kk", 1, value.data(), value.size()), 0); })),
              "e[k=\"" + text + "\" ]()");
  }
}

TEST_F(Encode, EveryByteIsSeenAtEveryPlaceOfAText) {
  for (const std::string_view filler : {"abcdefghijklmnopqrstuvwxyz"sv, "?=;%#!'(~ ?=;%#!'(~ ?=;%#"sv,
                                        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"
                                        "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"sv}) {
    for (size_t length = 0; length <= 24; length += 2) {
      for (size_t at = 0; at <= length; at += 2) {
        for (int byte = 1; byte < 0x80; ++byte) {
          if (length > 4 && byte > 0x40 && byte < 0x7F) continue;
          const auto c = static_cast<char>(byte);
          const std::string text = std::string(filler.substr(0, at)) + c + std::string(filler.substr(at, length - at));
          const bool carried = byte >= 0x20 || c == '\t' || c == '\n' || c == '\r';
          const RtxXmlString cdata = {true, text.c_str()};
          ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
          ASSERT_EQ(rtXmlEncUTF8Attr2(ctx, "k", 1, text.data(), text.size()), carried ? 0 : STATUS_INVALID_UTF8)
              << byte;
          ASSERT_EQ(rtXmlEncUTF8Str(ctx, text.c_str(), nullptr, nullptr), carried ? 0 : STATUS_INVALID_UTF8) << byte;
          ASSERT_EQ(rtXmlEncString(ctx, &cdata, nullptr, nullptr), carried ? 0 : STATUS_INVALID_UTF8) << byte;
          ASSERT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
          const std::string written = take();
          if (carried) {
            ASSERT_EQ(infoset(written), "e[k=\"" + text + "\" ](" + text + text + ")") << written;
          }
        }
      }
    }
  }
}

TEST_F(Encode, CdataIsWrittenAsSuchAndSplitWhereItMust) {
  const RtxXmlString plain = {true, "a<b"};
  EXPECT_EQ(element([&] { EXPECT_EQ(rtXmlEncString(ctx, &plain, nullptr, nullptr), 0); }), "<e><![CDATA[a<b]]></e>");
  const RtxXmlString split = {true, "a]]>b"};
  const std::string text = element([&] { EXPECT_EQ(rtXmlEncString(ctx, &split, nullptr, nullptr), 0); });
  EXPECT_NE(text.find("<![CDATA["), text.npos);
  EXPECT_NE(text.find("<![CDATA["), text.rfind("<![CDATA[")) << text;
  EXPECT_EQ(infoset(text), "e[](a]]>b)");
}

TEST_F(Encode, LineEndsAreWrittenAsReferencesWhereAParserWouldChangeThem) {
  const std::string text = element([&] { EXPECT_EQ(rtXmlEncUTF8Str(ctx, "a\rb", nullptr, nullptr), 0); });
  EXPECT_EQ(text, "<e>a&#13;b</e>");
  const std::string attribute = element([&] { EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "k", 1, "\t\n\r", 3), 0); });
  EXPECT_EQ(attribute.find_first_of("\t\n\r"), attribute.npos) << attribute;
}

TEST_F(Encode, CharactersThatXmlCannotCarryAreRefused) {
  std::vector<std::string> bad = {"\xEF\xBF\xBE",     "\xEF\xBF\xBF", "\xED\xA0\x80", "\xC0\x80",
                                  "\xF4\x90\x80\x80", "\x80",         "\xC3",         "\xE2\x82"};
  for (char c = 1; c < 0x20; ++c) {
    if (c != '\t' && c != '\n' && c != '\r') bad.push_back(std::string(1, c));
  }
  for (const std::string &character : bad) {
    for (const std::string &text : {character, "abc" + character, character + "abc"}) {
      const RtxXmlString plain = {false, text.c_str()};
      const RtxXmlString cdata = {true, text.c_str()};
      EXPECT_EQ(rtXmlEncString(ctx, &plain, "e", nullptr), STATUS_INVALID_UTF8) << testing::PrintToString(text);
      EXPECT_EQ(rtXmlEncString(ctx, &cdata, "e", nullptr), STATUS_INVALID_UTF8) << testing::PrintToString(text);
      EXPECT_EQ(rtXmlEncUTF8Str(ctx, text.c_str(), "e", nullptr), STATUS_INVALID_UTF8) << testing::PrintToString(text);
      take();
    }
  }
}

TEST_F(Encode, ControlCharactersInAttributesAreRefused) {
  for (char c = 0; c < 0x20; ++c) {
    if (c == '\t' || c == '\n' || c == '\r') continue;
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
    EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "k", 1, &c, 1), STATUS_INVALID_UTF8) << int{c};
    take();
  }
}

TEST_F(Encode, AttributeIsReadToItsLengthAndNoFurther) {
  for (const std::string_view text : {"\xC3"sv, "a\xE2\x82"sv, "\xF0\x9F\x98"sv, "a\xF0"sv, "ab"sv, ""sv}) {
    ExactBytes value(text);
    ExactBytes name("name");
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
    const int status = rtXmlEncUTF8Attr2(ctx, name.data(), name.size(), value.data(), value.size());
    EXPECT_TRUE(status == 0 || status == STATUS_INVALID_UTF8) << status;
    if (static_cast<unsigned char>(text.empty() ? 'a' : text.back()) < 0x80) {
      EXPECT_EQ(status, 0);
    }
    take();
  }
}

// ---- Attributes --------------------------------------------------------------------------------------------------

TEST_F(Encode, AttributesFollowEachOtherInTheOpenTag) {
  RtxNamePair pairs[] = {{"x:a", "1"}, {"b", nullptr}, {"c", "<\""}};
  RtxListNode nodes[] = {
      {&pairs[0], &nodes[1], nullptr}, {&pairs[1], &nodes[2], &nodes[0]}, {&pairs[2], nullptr, &nodes[1]}};
  const RtxAttrList foreign = {{3, &nodes[0], &nodes[2]}};
  const RtxAttrList none = {};
  const Declarations declarations = {{"x", "urn:x"}};
  const std::string text = element([&] {
    EXPECT_EQ(rtXmlEncNSAttrs(ctx, &declarations), 0);
    EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "first", 5, "v", 1), 0);
    EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "null", 4, nullptr, 0), 0);
    EXPECT_EQ(rtXmlEncAnyAttr(ctx, &foreign), 0);
    EXPECT_EQ(rtXmlEncAnyAttr(ctx, &none), 0);
    EXPECT_EQ(rtXmlEncBoolAttr(ctx, true, "flag", 4), 0);
  });
  EXPECT_EQ(infoset(text), "e[b=\"\" c=\"<\"\" first=\"v\" flag=\"true\" null=\"\" {urn:x}a=\"1\" ]()");
  EXPECT_LT(text.find("first"), text.find("null"));
  EXPECT_LT(text.find("null"), text.find("x:a="));
  EXPECT_LT(text.find("x:a="), text.find("flag"));
}

TEST_F(Encode, AttributeOutsideAnOpenTagIsRefused) {
  RtxNamePair pair = {"k", "v"};
  RtxListNode node = {&pair, nullptr, nullptr};
  const RtxAttrList foreign = {{1, &node, &node}};
  const Declarations declarations = {{"x", "urn:x"}};
  const std::function<void()> situations[] = {
      [&] { rtXmlEncStartDocument(ctx); },
      [&] { rtXmlEncStartElement(ctx, "e", nullptr, nullptr, true); },
      [&] { rtXmlEncUTF8Str(ctx, "t", "e", nullptr); },
      [&] {
        rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false);
        rtXmlEncUTF8Str(ctx, "t", nullptr, nullptr);
      },
      [&] {
        rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false);
        rtXmlEncEndElement(ctx, "e", nullptr);
      },
  };
  for (const auto &situation : situations) {
    situation();
    const std::string before = output(ctx);
    EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "k", 1, "v", 1), STATUS_WRITE_FAILED) << before;
    EXPECT_EQ(rtXmlEncBoolAttr(ctx, true, "k", 1), STATUS_WRITE_FAILED) << before;
    EXPECT_EQ(rtXmlEncUIntAttr(ctx, 1, "k", 1), STATUS_WRITE_FAILED) << before;
    EXPECT_EQ(rtXmlEncDecimalAttr(ctx, 1, "k", 1), STATUS_WRITE_FAILED) << before;
    EXPECT_EQ(rtXmlEncAnyAttr(ctx, &foreign), STATUS_WRITE_FAILED) << before;
    EXPECT_EQ(rtXmlEncNSAttrs(ctx, &declarations), STATUS_WRITE_FAILED) << before;
    EXPECT_EQ(output(ctx), before);
    take();
  }
}

TEST_F(Encode, InTheAttributeStateTextGoesIntoTheOpenTag) {
  const auto raw = [this](std::string_view bytes) {
    ASSERT_EQ(rtxCheckBuffer(ctx, bytes.size()), 0);
    std::memcpy(ctx->buffer.data + ctx->buffer.byteIndex, bytes.data(), bytes.size());
    ctx->buffer.byteIndex += bytes.size();
  };
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  ctx->state = XMLSTATE_IN_ATTRIBUTES;
  raw(" code=\"");
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "a\"<&\n", nullptr, nullptr), 0);
  ASSERT_EQ(rtXmlEncUInt(ctx, 12, nullptr, nullptr), 0);
  raw("\"");
  EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "k", 1, "v", 1), 0);
  ctx->state = XMLSTATE_IN_ELEMENT;
  EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "l", 1, "w", 1), 0);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "text", nullptr, nullptr), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
  EXPECT_EQ(infoset(take()), "e[code=\"a\"<&\n12\" k=\"v\" l=\"w\" ](text)");
}

TEST_F(Encode, ANewDocumentLeavesTheAttributeState) {
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  ctx->state = XMLSTATE_IN_ATTRIBUTES;
  take();
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES);
  ASSERT_EQ(rtXmlEncUTF8Str(ctx, "a\"", "e", nullptr), 0);
  ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
  EXPECT_EQ(infoset(take()), "e[](a\")");
}

// ---- Declarations ------------------------------------------------------------------------------------------------

TEST_F(Encode, DeclarationsGoIntoTheStartTagOnce) {
  const Declarations first = {{"a", "urn:a"}, {nullptr, "urn:d"}};
  const Declarations second = {{"b", "urn:b"}, {"a", "urn:a"}, {nullptr, "urn:d"}};
  const RtxNamespace ns = {nullptr, "urn:d"};
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "a", "urn:a", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "c", "urn:c", false), 0);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &ns, &first, false), 0);
  EXPECT_EQ(output(ctx), "<e xmlns:a=\"urn:a\" xmlns=\"urn:d\"");
  EXPECT_EQ(rtXmlEncNSAttrs(ctx, &second), 0);
  EXPECT_EQ(rtXmlEncNSAttrs(ctx, &second), 0);
  EXPECT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  EXPECT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  ASSERT_EQ(rtXmlEncTermStartElement(ctx), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &ns), 0);
  EXPECT_EQ(take(), "<e xmlns:a=\"urn:a\" xmlns=\"urn:d\" xmlns:b=\"urn:b\" xmlns:c=\"urn:c\"></e>");
}

TEST_F(Encode, DeclarationsMayBeMadeAgainInAnotherTag) {
  const Declarations list = {{"a", "urn:a"}};
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, &list, true), 0);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "f", nullptr, &list, false), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "f", nullptr), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
  EXPECT_EQ(take(), "<e xmlns:a=\"urn:a\"><f xmlns:a=\"urn:a\"/></e>");
}

TEST_F(Encode, DeclarationThatWouldMoveTheTagItselfIsLeftOut) {
  const Declarations list = {{"p", "urn:other"}, {"q", "urn:q"}, {nullptr, "urn:default"}};
  const RtxNamespace prefixed = {"p", "urn:a"};
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "p", "urn:a", false), 0);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &prefixed, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "f", &prefixed, &list, false), 0);
  ASSERT_EQ(rtXmlEncNSAttrs(ctx, &list), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "f", &prefixed), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &prefixed), 0);
  const std::string text = take();
  EXPECT_EQ(infoset(text), "{urn:a}e[]({urn:a}f[]())") << text;
  EXPECT_EQ(text.find("urn:other"), text.npos);
  EXPECT_NE(text.find("xmlns:q=\"urn:q\""), text.npos);
  EXPECT_NE(text.find("xmlns=\"urn:default\""), text.npos);
}

TEST_F(Encode, DefaultDeclarationThatWouldMoveAnUnprefixedTagIsLeftOut) {
  const Declarations list = {{nullptr, "urn:other"}};
  const RtxNamespace unprefixed = {"", "urn:a"};
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:a", false), 0);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &unprefixed, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncNSAttrs(ctx, &list), 0);
  ASSERT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &unprefixed), 0);
  EXPECT_EQ(infoset(take()), "{urn:a}e[]()");
}

TEST_F(Encode, ReservedAndImpossibleNamesOfRecordsAreRefused) {
  const struct {
    const char *prefix;
    const char *uri;
    int status;
  } declarations[] = {{"xml", "http://www.w3.org/XML/1998/namespace", 0},
                      {"xml", "urn:x", STATUS_INVALID_UTF8},
                      {"xmlns", "urn:x", STATUS_INVALID_UTF8},
                      {"p", "http://www.w3.org/XML/1998/namespace", STATUS_INVALID_UTF8},
                      {"p", "http://www.w3.org/2000/xmlns/", STATUS_INVALID_UTF8},
                      {"", "http://www.w3.org/XML/1998/namespace", STATUS_INVALID_UTF8},
                      {"\xC3\xA9", "urn:x", 0},
                      {"\x8F", "urn:x", STATUS_INVALID_UTF8},
                      {"a\xC3\x97", "urn:x", STATUS_INVALID_UTF8}}; // a multiplication sign
  for (const auto &row : declarations) {
    SCOPED_TRACE(testing::Message() << row.prefix << "=" << row.uri);
    const Declarations list = {{row.prefix, row.uri}};
    EXPECT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, &list, true), row.status);
    if (row.status == 0) {
      EXPECT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
    }
    rtxErrClear(ctx);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  }
  const struct {
    const char *name;
    const char *value;
    int status;
  } attributes[] = {{"p:\xC3\xA9", "v", 0},
                    {"\x8F", "v", STATUS_INVALID_UTF8},
                    {"p:\x8F\x9A", "v", STATUS_INVALID_UTF8},
                    {"\xC3\xA9:\xC3\x97", "v", STATUS_INVALID_UTF8},
                    {"xmlns:xml", "urn:x", STATUS_INVALID_UTF8},
                    {"xmlns:xmlns", "urn:x", STATUS_INVALID_UTF8}};
  for (const auto &row : attributes) {
    SCOPED_TRACE(row.name);
    RtxNamePair pair = {row.name, row.value};
    RtxListNode node = {&pair, nullptr, nullptr};
    const RtxAttrList list = {{1, &node, &node}};
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
    EXPECT_EQ(rtXmlEncAnyAttr(ctx, &list), row.status);
    rtxErrClear(ctx);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  }
}

TEST_F(Encode, DeclarationTextsAreEscaped) {
  const Declarations list = {{"p", "urn:a?b&c"}};
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, &list, false), 0);
  RtxNamePair pair = {"p:k", "v"};
  RtxListNode node = {&pair, nullptr, nullptr};
  const RtxAttrList attributes = {{1, &node, &node}};
  ASSERT_EQ(rtXmlEncAnyAttr(ctx, &attributes), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
  EXPECT_EQ(infoset(take()), "e[{urn:a?b&c}k=\"v\" ]()");
}

TEST_F(Encode, RootWhosePrefixOnlyTheContextDeclaresGetsThatDeclaration) {
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "p", "urn:a", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "unused", "urn:unused", false), 0);
  const RtxNamespace ns = {"p", "urn:a"};
  for (const bool explicitTerm : {true, false}) {
    ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &ns, nullptr, !explicitTerm), 0);
    if (explicitTerm) {
      ASSERT_EQ(rtXmlEncTermStartElement(ctx), 0);
    }
    ASSERT_EQ(rtXmlEncStartElement(ctx, "f", &ns, nullptr, false), 0);
    ASSERT_EQ(rtXmlEncTermStartElement(ctx), 0);
    ASSERT_EQ(rtXmlEncEndElement(ctx, "f", &ns), 0);
    ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &ns), 0);
    ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
    const std::string text = take();
    EXPECT_EQ(infoset(text), "{urn:a}e[]({urn:a}f[]())") << text;
    EXPECT_EQ(text.find("xmlns"), text.rfind("xmlns")) << text;
  }
}

TEST_F(Encode, PresetDeclarationsOfTheHostAreWrittenByTheRoot) {
  ctx->flags |= NamespacesPreset;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "mine", "urn:a", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:d", false), 0);
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
    const RtxNamespace ns = {rtXmlNSGetPrefix(ctx, "urn:a"), "urn:a"};
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &ns, nullptr, false), 0);
    ASSERT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
    ASSERT_EQ(rtXmlEncTermStartElement(ctx), 0);
    ASSERT_EQ(rtXmlEncUTF8Str(ctx, "t", "f", nullptr), 0);
    ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &ns), 0);
    ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
    EXPECT_EQ(infoset(take()), "{urn:a}e[]({urn:d}f[](t))");
  }
}

// ---- Room --------------------------------------------------------------------------------------------------------

// A document that uses every primitive, and the NUL behind it.
int writeDocument(RuntimeContext *ctx) {
  const Declarations list = {{"q", "urn:q"}, {"p", "urn:other"}};
  const RtxNamespace ns = {"p", "urn:a"};
  const RtxXmlString text = {false, "a<b&c\r"};
  const RtxXmlString cdata = {true, "x]]>y"};
  const RtxXmlString fragment = {false, "<q:any>t</q:any>"};
  const uint8_t bytes[] = {0, 0xAF, 0x12};
  RtxNamePair pair = {"q:k", "\"v\"\n"};
  RtxListNode node = {&pair, nullptr, nullptr};
  const RtxAttrList foreign = {{1, &node, &node}};
  const std::function<int()> steps[] = {
      [&] { return rtXmlEncStartDocument(ctx); },
      [&] { return rtXmlNSSetNamespace(ctx, nullptr, "p", "urn:a", false); },
      [&] { return rtXmlEncStartElement(ctx, "root", &ns, nullptr, false); },
      [&] { return rtXmlEncNSAttrs(ctx, nullptr); },
      [&] { return rtXmlEncNSAttrs(ctx, &list); },
      [&] { return rtXmlEncUTF8Attr2(ctx, "text", 4, "<v>", 3); },
      [&] { return rtXmlEncBoolAttr(ctx, true, "flag", 4); },
      [&] { return rtXmlEncUIntAttr(ctx, 4294967295u, "number", 6); },
      [&] { return rtXmlEncDecimalAttr(ctx, -0.125, "real", 4); },
      [&] { return rtXmlEncAnyAttr(ctx, &foreign); },
      [&] { return rtXmlEncTermStartElement(ctx); },
      [&] { return rtXmlEncString(ctx, &text, "string", &ns); },
      [&] { return rtXmlEncString(ctx, &cdata, "cdata", &ns); },
      [&] { return rtXmlEncUTF8Str(ctx, "\xC3\xA9", "utf8", nullptr); },
      [&] { return rtXmlEncUInt(ctx, 17, "uint", &ns); },
      [&] { return rtXmlEncHexBinary(ctx, 3, bytes, "hex", &ns); },
      [&] { return rtXmlEncAny(ctx, &fragment, nullptr, nullptr); },
      [&] { return rtXmlEncStartElement(ctx, "empty", &ns, &list, false); },
      [&] { return rtXmlEncEndElement(ctx, "empty", &ns); },
      [&] { return rtXmlEncEndElement(ctx, "root", &ns); },
      [&] { return rtXmlEncEndDocument(ctx); },
      [&] { return rtxCheckBuffer(ctx, 1); },
  };
  for (const auto &step : steps) {
    if (const int status = step()) return status;
  }
  ctx->buffer.data[ctx->buffer.byteIndex] = '\0';
  return 0;
}

constexpr const char *documentInfoset =
    "{urn:a}root[flag=\"true\" number=\"4294967295\" real=\"-0.125\" text=\"<v>\" {urn:q}k=\"\"v\"\n\" ]"
    "({urn:a}string[](a<b&c\r){urn:a}cdata[](x]]>y)utf8[](\xC3\xA9){urn:a}uint[](17){urn:a}hex[](00AF12)"
    "{urn:q}any[](t){urn:a}empty[]())";

TEST_F(Encode, EveryPrimitiveInOneDocument) {
  ASSERT_EQ(writeDocument(ctx), 0);
  EXPECT_EQ(infoset(output(ctx)), documentInfoset) << output(ctx);
  EXPECT_EQ(rtxGetOutput(ctx, nullptr)[output(ctx).size()], '\0');
}

TEST_F(Encode, SucceedsExactlyWhenTheDocumentAndItsNulFit) {
  ASSERT_EQ(writeDocument(ctx), 0);
  const std::string whole = take();
  for (size_t size = 0; size <= whole.size() + 2; ++size) {
    std::string buffer(size + 8, '#');
    ASSERT_EQ(rtxSetOutput(ctx, buffer.data(), size), 0);
    const int status = writeDocument(ctx);
    EXPECT_EQ(status, size > whole.size() ? 0 : STATUS_BUFFER_OVERFLOW) << size;
    EXPECT_EQ(buffer.substr(size), "########") << size;
    size_t length = 0;
    if (rtxGetOutput(ctx, &length) != nullptr) {
      EXPECT_LE(length, size);
    }
    if (status == 0) {
      EXPECT_EQ(output(ctx), whole);
    }
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST_F(Encode, GoesOnWorkingAfterARefusedDocument) {
  ASSERT_EQ(writeDocument(ctx), 0);
  const std::string whole = take();
  for (size_t size = 0; size < whole.size(); size += 5) {
    std::string buffer(size, '#');
    ASSERT_EQ(rtxSetOutput(ctx, buffer.data(), size), 0);
    ASSERT_NE(writeDocument(ctx), 0);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    ASSERT_EQ(writeDocument(ctx), 0);
    ASSERT_EQ(take(), whole) << size;
  }
}

TEST_F(Encode, WithoutStorageForAGrowingBufferSaysSo) {
  ASSERT_EQ(writeDocument(ctx), 0);
  const std::string whole = take();
  for (size_t i = 1; i < 100; ++i) {
    for (const bool persistent : {false, true}) {
      Context faulty;
      faulty.allocator.failNext(i, persistent);
      int status = rtxSetOutputDynamic(faulty);
      if (status == 0) status = writeDocument(faulty);
      faulty.allocator.heal();
      if (faulty.allocator.refused == 0) {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(output(faulty), whole);
        EXPECT_GT(i, 1u);
        return;
      }
      if (status == 0) { // a smaller block did
        EXPECT_EQ(output(faulty), whole) << i;
      } else {
        EXPECT_EQ(status, STATUS_NO_MEMORY) << i;
      }
      ASSERT_EQ(rtxSetOutputDynamic(faulty), 0);
      EXPECT_EQ(writeDocument(faulty), 0) << i;
      EXPECT_EQ(output(faulty), whole) << i;
    }
  }
  ADD_FAILURE() << "more allocations than any document needs";
}

TEST_F(Encode, ReusesItsBufferWithoutTheSystem) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(writeDocument(ctx), 0);
    take();
  }
  const size_t calls = ctx.allocator.calls;
  const uint64_t system = stats(ctx).systemCalls;
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(writeDocument(ctx), 0);
    take();
  }
  EXPECT_EQ(ctx.allocator.calls, calls);
  EXPECT_EQ(stats(ctx).systemCalls, system);
}

TEST(EncodeWithoutOutput, IsRefusedByEveryPrimitive) {
  const RtxXmlString text = {false, "text"};
  const uint8_t byte = 1;
  RtxNamePair pair = {"k", "v"};
  RtxListNode node = {&pair, nullptr, nullptr};
  const RtxAttrList foreign = {{1, &node, &node}};
  const Declarations list = {{"p", "urn:a"}};
  for (const bool withInput : {false, true}) {
    Context ctx;
    const std::string input = "<a>" + std::string(500, 'x') + "</a>";
    if (withInput) {
      ASSERT_EQ(rtxSetInput(ctx, input.data(), input.size()), 0);
    }
    EXPECT_EQ(rtXmlEncStartDocument(ctx), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncStartElement(ctx, "a", nullptr, nullptr, false), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncNSAttrs(ctx, &list), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncTermStartElement(ctx), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncEndElement(ctx, "a", nullptr), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncString(ctx, &text, "a", nullptr), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncUTF8Str(ctx, "text", "a", nullptr), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncUInt(ctx, 1, "a", nullptr), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncHexBinary(ctx, 1, &byte, "a", nullptr), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncAny(ctx, &text, nullptr, nullptr), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncUTF8Attr2(ctx, "k", 1, "v", 1), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncBoolAttr(ctx, true, "k", 1), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncUIntAttr(ctx, 1, "k", 1), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncDecimalAttr(ctx, 1, "k", 1), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtXmlEncAnyAttr(ctx, &foreign), STATUS_WRITE_FAILED);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    if (withInput) {
      Recorder recorder;
      EXPECT_EQ(readInput(ctx, recorder), 0);
      EXPECT_EQ(recorder.log, input);
    }
  }
}

} // namespace
} // namespace contract
