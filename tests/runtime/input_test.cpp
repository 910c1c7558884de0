// What is found out about a document before the parser sees it.
#include "input.h"

#include "names.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

namespace {

rt::Text slice(const std::string &text) { return {text.data(), text.size()}; }

std::string asString(rt::Text text) { return {text.bytes, text.length}; }

constexpr char usual[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char brief[] = "<?xml version=\"1.0\"?>";

} // namespace

TEST(EncodingOf, IsToldByTheFirstBytesOrTheDeclaration) {
  struct Case {
    std::string document;
    const char *name;
    size_t skip;
    bool declared;
  };
  const Case cases[] = {
      {"", "", 0, false},
      {"<", "", 0, false},
      {"<a/>", "", 0, false},
      {usual, "", 0, false},
      {usual + "\n<a/>"s, "", sizeof usual - 1, false},
      {usual + "<a/>"s, "", sizeof usual - 1, false},
      {usual + "<?p?><a/>"s, "", 0, false},
      {usual + "\xEF\xBB\xBF<a/>"s, "", 0, false},
      {usual + "<\0"s, "", 0, false},
      {brief + "\r\n<a/>"s, "", sizeof brief - 1, false},
      {"<?xml version='1.0' encoding='utf-8'?><a/>", "", 0, false},
      {"<?xml version = '1.0'\tencoding\n=\r\"Latin-1\" standalone='yes'?><a/>", "Latin-1", 0, true},
      {"<?xml encoding='Latin-1'?><a/>", "", 0, false},
      {"<?xml version='1.0' encoding='1'?><a/>", "", 0, false},
      {"<?xml version='1.0' encoding='Latin-1", "", 0, false},
      {"\xEF\xBB\xBF<a/>", "", 0, false},
      {"\xFF\xFE<\0"s, "UTF-16LE", 2, false},
      {"\xFE\xFF\0<"s, "UTF-16BE", 2, false},
      {"\xFF\xFE\0\0<\0\0\0"s, "UTF-32LE", 4, false},
      {"<\0?\0x\0"s, "UTF-16LE", 0, false},
      {"\0<\0?\0x"s, "UTF-16BE", 0, false},
      {"\0\0\0<"s, "UTF-32BE", 0, false},
  };
  for (const Case &c : cases) {
    const rt::Encoding encoding = rt::encodingOf(slice(c.document));
    EXPECT_EQ(asString(encoding.name), c.name) << c.document;
    EXPECT_EQ(encoding.skip, c.skip) << c.document;
    EXPECT_EQ(encoding.declared, c.declared) << c.document;
  }
}

TEST(CrowdedTag, IsFoundByItsFirstSurplusAttribute) {
  const std::string pad(3000, ' ');
  struct Case {
    std::string document;
    size_t found; // npos: none
  };
  const Case cases[] = {
      {"", std::string::npos},
      {"<a x='' y='' z=''/>", std::string::npos}, // too short to matter
      {"<a x='' y=''" + pad + "/>" + pad, std::string::npos},
      {"<a x='' y='' z=''" + pad + "/>", 13},
      {"<a x='>' y = \"'\" " + pad + "z\n=\t''/>", 3017},
      {"<b/><a x='' y='' z=''" + pad, 17},
      {"<!-- <a x='' y='' z=''" + pad + "/> -->", std::string::npos},
      {"<![CDATA[<a x='' y='' z=''" + pad + "/>]]>", std::string::npos},
      {"<?p <a x='' y='' z=''" + pad + "/>?>", std::string::npos},
      {"<a>x='' y='' z=''" + pad + "</a>", std::string::npos},
      {"<a x='" + pad, std::string::npos},
      {"<!-- " + pad, std::string::npos},
  };
  for (const Case &c : cases) {
    const char *found = rt::findLongTag(slice(c.document), 2, SIZE_MAX).surplus;
    EXPECT_EQ(found == nullptr ? std::string::npos : static_cast<size_t>(found - c.document.data()), c.found)
        << c.document;
  }
}

TEST(SplitName, TellsPrefixesDeclarationsAndMisplacedColons) {
  struct Case {
    const char *name;
    rt::NameKind kind;
    const char *prefix;
    const char *local;
  };
  const Case cases[] = {
      {"a", rt::NameKind::plain, "", "a"},
      {"xmlnsa", rt::NameKind::plain, "", "xmlnsa"},
      {"xmlns", rt::NameKind::defaultDeclaration, "", "xmlns"},
      {"xmlns:p", rt::NameKind::prefixDeclaration, "xmlns", "p"},
      {"p:a", rt::NameKind::prefixed, "p", "a"},
      {"p:xmlns", rt::NameKind::prefixed, "p", "xmlns"},
      {":a", rt::NameKind::malformed, "", "a"},
      {"a:", rt::NameKind::malformed, "a", ""},
      {":", rt::NameKind::malformed, "", ""},
      {"a:b:c", rt::NameKind::malformed, "a", "b:c"},
      {"a:1", rt::NameKind::malformed, "a", "1"},
      {"xmlns:", rt::NameKind::malformed, "xmlns", ""},
  };
  for (const Case &c : cases) {
    const rt::NameParts parts = rt::splitName(c.name);
    EXPECT_EQ(parts.kind, c.kind) << c.name;
    EXPECT_EQ(asString(parts.prefix()), c.prefix) << c.name;
    EXPECT_EQ(asString(parts.localName()), c.local) << c.name;
  }
}
