// Names against the parser's own judgement of them.
#include "xmlName.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

std::string utf8(uint32_t character) {
  unsigned char bytes[8] = {};
  const int length = xmlCopyCharMultiByte(bytes, static_cast<int>(character));
  return std::string(reinterpret_cast<const char *>(bytes), static_cast<size_t>(length));
}

bool parses(const std::string &name) {
  const std::string document = "<" + name + "/>";
  xmlDocPtr parsed = xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, "UTF-8",
                                   XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  xmlFreeDoc(parsed);
  return parsed != nullptr;
}

TEST(QualifiedNames, HaveNamesOnBothSidesOfAColon) {
  const struct {
    const char *name;
    bool valid;
  } cases[] = {
      {"a", true},          {"_", true},   {"a:b", true},  {"call-id", true}, {"a.b-c_9", true}, {"\xC3\xA9t", true},
      {"x:\xC3\xA9", true}, {"", false},   {":", false},   {":a", false},     {"a:", false},     {"a:b:c", false},
      {"1a", false},        {"-a", false}, {"a:1", false}, {"a b", false},    {"a=b", false},    {"a\"", false},
      {"a>", false},        {"a/", false}, {"a\n", false}, {"a&b", false},    {"a<b", false},    {"\x01", false},
  };
  for (const auto &c : cases)
    EXPECT_EQ(c.valid, rt::isQualifiedName(c.name, std::strlen(c.name))) << c.name;
}

TEST(Names, AreWhatTheParserTakesForNames) {
  int starts = 0;
  for (uint32_t character = 0x21; character < 0x110000; character += character < 0x10100 ? 1 : 0x101) {
    if ((character >= 0xD800 && character < 0xE000) || character == ':') continue;
    const std::string alone = utf8(character);
    const std::string behind = "a" + alone;
    const bool start = parses(alone);
    ASSERT_EQ(rt::isNcName(alone.data(), alone.size()), start) << character;
    const bool markup = character == '/' || character == '>';
    ASSERT_EQ(rt::isNcName(behind.data(), behind.size()), !markup && parses(behind)) << character;
    starts += start ? 1 : 0;
  }
  EXPECT_GT(starts, 50000);
}

TEST(Names, AreNoNamesIfTheyAreNotUtf8) {
  for (const std::string name :
       {"\x8F", "a\x9A", "\xC3", "a\xE2\x82", "\xED\xA0\x80", "a\xF4\x90\x80\x80", "\xC1\xA1"}) {
    EXPECT_FALSE(rt::isNcName(name.data(), name.size()));
    EXPECT_FALSE(rt::isQualifiedName(("p:" + name).data(), name.size() + 2));
  }
}

} // namespace
