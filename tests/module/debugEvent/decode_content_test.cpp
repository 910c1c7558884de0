// Reading the content of simple children, and what the validators make of the same input.
#include "debugInfo.h"

using namespace debugInfo;
using support::Context;
using support::firstStatus;

namespace {

// ---- Content of simple children ---------------------------------------------------------------------------------

struct TextChild {
  const char *root;
  const char *name;
  const char *before; // what must come before it
  bool collapsed;
};

const TextChild textChildren[] = {
    {"start-trigger", "from", "", false},   {"start-trigger", "to", "", false},
    {"start-trigger", "icsi", "", false},   {"start-trigger", "iari", "", false},
    {"start-trigger", "method", "", false}, {"start-trigger", "time", "", true},
    {"stop-trigger", "time", "", true},     {"stop-trigger", "time-period", "", false},
    {"control", "interface", "", false},
};

TEST(DecodeContent, TextIsKeptButForTheWhiteSpaceOfTimes) {
  struct Case {
    const char *content;
    const char *text;
    const char *collapsed;
  };
  const Case cases[] = {{"", "", ""},
                        {" a ", " a ", "a"},
                        {"\n a\t\n b \n", "\n a\t\n b \n", "a b"},
                        {"  ", "  ", ""},
                        {"a<![CDATA[<b>]]>&amp;<!-- no -->c&#100;<?pi no?>&lt;", "a<b>&cd<", "a<b>&cd<"},
                        {"&#13;\r\n", "\r\n", ""},
                        {"\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"}};
  for (const TextChild &child : textChildren) {
    for (const Case &c : cases) {
      SCOPED_TRACE(child.root + "/"s + child.name + " " + c.content);
      const std::string name = child.name;
      const std::string text = element(child.root, "<" + name + ">" + c.content + "</" + name + ">");
      const Reading reading = decode(child.root, text);
      EXPECT_EQ(reading.status, 0) << reading.errors;
      EXPECT_EQ(reading.record, name + "=" + (child.collapsed ? c.collapsed : c.text));
      EXPECT_EQ(validate(child.root, text).status, 0);
    }
    const Reading empty = decode(child.root, element(child.root, "<"s + child.name + "/>"));
    EXPECT_EQ(empty.record, child.name + "="s) << "an empty text, not an absent one";
  }
}

TEST(DecodeContent, TextIsReadWithoutCdataFlag) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, element("control", "<interface><![CDATA[i]]></interface>")), 0);
  Held held(ctx, documentOf("control"));
  EXPECT_EQ(QxXmlD_tns_control(ctx, &held->control), 0);
  held.owned = true;
  EXPECT_STREQ(held->control.tns_interface.value, "i");
  EXPECT_FALSE(held->control.tns_interface.cdata);
}

TEST(DecodeContent, LongTextArrivesWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "line " + std::to_string(i) + "\n";
  EXPECT_EQ(decode("control", element("control", "<interface>" + text + "</interface><depth>minimum</depth>")).record,
            "interface=" + text + " depth=1");
}

TEST(DecodeContent, ElementsInsideASimpleChildAreNotLookedAt) {
  const Reading reading =
      decode("control",
             element("control", "<interface>a<b k='1'>b<depth>c</depth></b>d</interface><depth>mini<b>m</b>um</depth>"
                                "<debug-id>4<b>3<c/></b>A<d/>A</debug-id>"));
  EXPECT_EQ(reading.errors, "");
  EXPECT_EQ(reading.record, "interface=abcd depth=1 debug-id=43AA");
}

TEST(DecodeContent, CodesConvertOrNot) {
  struct Case {
    const char *root;
    const char *before;
    const char *shownBefore;
    const char *name;
    const char *type;
    const char *texts[2];
  };
  const Case cases[] = {
      {"stop-trigger", "", "", "reason", "tns__stop_trigger", {"dialog_established", "session_end"}},
      {"control", "<interface>i</interface>", "interface=i", "depth", "tns__control", {"maximum", "minimum"}}};
  for (const Case &c : cases) {
    const auto text = [&](const std::string &content) {
      return element(c.root, c.before + "<"s + c.name + ">" + content + "</" + c.name + ">");
    };
    const auto shown = [&](const std::string &code) {
      const std::string before = c.shownBefore;
      return code.empty() ? before : before + (before.empty() ? "" : " ") + c.name + "=" + code;
    };
    for (int code = 0; code < 2; ++code) {
      const Reading reading = decode(c.root, text(c.texts[code]));
      EXPECT_EQ(reading.errors, "");
      EXPECT_EQ(reading.record, shown(std::to_string(code)));
      const std::string pieces = c.texts[code];
      EXPECT_EQ(decode(c.root, text(pieces.substr(0, 3) + "<!-- --><![CDATA[" + pieces.substr(3) + "]]>")).record,
                shown(std::to_string(code)));
    }
    for (const std::string &wrong :
         {""s, " "s, "zzz"s, "session-end"s, "Maximum"s, "0"s, " "s + c.texts[1], c.texts[1] + " "s}) {
      SCOPED_TRACE(text(wrong));
      const std::string errors = "-4(" + wrong + "); -44(" + wrong + "," + c.type + "," + c.name + ")";
      const Reading reading = decode(c.root, text(wrong));
      EXPECT_EQ(reading.status, STATUS_ENUM_NOT_FOUND);
      EXPECT_EQ(reading.record, shown(""));
      EXPECT_EQ(reading.errors, errors);
      EXPECT_EQ(validate(c.root, text(wrong)).errors, errors);
    }
  }
}

TEST(DecodeContent, CodeThatDoesNotConvertKeepsItsValue) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, element("control", "<interface/><depth>deep</depth>")), 0);
  Held held(ctx, documentOf("control"));
  EXPECT_EQ(QxXmlD_tns_control(ctx, &held->control), STATUS_ENUM_NOT_FOUND);
  held.owned = true;
  EXPECT_EQ(held->control.tns_depth, 0xA5A5u);
  EXPECT_EQ(held->control.m, 0u);
}

// ---- Hexadecimal content ------------------------------------------------------------------------------------------

struct HexCase {
  const char *content;
  const char *bytes;  // null: refused
  const char *errors; // of start-trigger
};

const HexCase hexCases[] = {
    {"43aa55", "43AA55", ""},
    {"43AA55", "43AA55", ""},
    {"0123456789abcdefABCDEF", "0123456789ABCDEFABCDEF", ""},
    {"00", "00", ""},
    {"", "", ""},
    {"  ", "", ""},
    {" \n43aa\t ", "43AA", ""},
    {"4<![CDATA[3a]]>&#97;<!-- -->5<?pi?>5", "43AA55", ""},
    {"<![CDATA[]]>43", "43", ""},
    {"43 aa", nullptr, "-101"},
    {"4 3", nullptr, "-101"},
    {"4g", nullptr, "-101"},
    {"xyz", nullptr, "-101"},
    {"0x43", nullptr, "-101"},
    {"43aa5-", nullptr, "-101"},
    {"\xEF\xBC\x94\xEF\xBC\x93", nullptr, "-101"},
    {"4", nullptr, "-44(4,tns__start_trigger,debug-id)"},
    {"43A", nullptr, "-44(43A,tns__start_trigger,debug-id)"},
    {"43AA5", nullptr, "-44(43AA5,tns__start_trigger,debug-id)"},
};

TEST(DecodeHex, ConvertsOrNot) {
  for (const HexCase &c : hexCases) {
    SCOPED_TRACE(c.content);
    const std::string child = "<debug-id>"s + c.content + "</debug-id>";
    const std::string start = element("start-trigger", "<method>m</method>" + child);
    const Reading reading = decode("start-trigger", start);
    EXPECT_EQ(reading.status, firstStatus(c.errors));
    EXPECT_EQ(reading.record, "method=m"s + (c.bytes == nullptr ? "" : " debug-id="s + c.bytes));
    EXPECT_EQ(reading.errors, c.errors);
    EXPECT_EQ(validate("start-trigger", start).errors, c.errors);

    const std::string control = element("control", "<interface>i</interface>" + child);
    std::string errors = c.errors;
    if (const size_t at = errors.find("start_trigger"); at != std::string::npos) errors.replace(at, 13, "control");
    const Reading inControl = decode("control", control);
    EXPECT_EQ(inControl.record, "interface=i"s + (c.bytes == nullptr ? "" : " debug-id="s + c.bytes));
    EXPECT_EQ(inControl.errors, errors);
    EXPECT_EQ(validate("control", control).errors, errors);
  }
}

TEST(DecodeHex, EmptyBytesArePresentWithoutAnAddress) {
  for (const char *child : {"<debug-id/>", "<debug-id></debug-id>"}) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, element("start-trigger", child)), 0);
    Held held(ctx, documentOf("start-trigger"));
    EXPECT_EQ(QxXmlD_tns_start_trigger(ctx, &held->start_trigger), 0);
    held.owned = true;
    EXPECT_EQ(held->start_trigger.m, 64u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.length, 0u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.bytes, nullptr);
  }
}

// A comment cuts the text in two pieces: at every place, and at every two places.
TEST(DecodeHex, IsTheSameForEveryWayOfCutting) {
  const std::pair<std::string, const char *> cases[] = {{" 43aa55 ", "debug-id=43AA55"}, {"43aa5", ""}, {"43x", ""}};
  for (const auto &[digits, value] : cases) {
    Context whole;
    decode(whole, documentOf("start-trigger"), element("start-trigger", "<debug-id>" + digits + "</debug-id>"));
    const std::string errors = brief(whole);
    for (size_t first = 0; first <= digits.size(); ++first) {
      for (size_t second = first; second <= digits.size(); ++second) {
        std::string cut = digits;
        cut.insert(second, "<!---->").insert(first, "<!---->");
        const std::string text = element("start-trigger", "<debug-id>" + cut + "</debug-id>");
        const Reading reading = decode("start-trigger", text);
        EXPECT_EQ(reading.record, value) << text;
        EXPECT_EQ(reading.errors, errors) << text;
        EXPECT_EQ(validate("start-trigger", text).errors, errors) << text;
      }
    }
  }
}

TEST(DecodeHex, LongTextArrivesWhole) {
  std::string digits;
  for (size_t i = 0; i < 100000; ++i)
    digits += "0123456789ABCDEF"[(i * 7 + i / 16) % 16];
  EXPECT_EQ(decode("start-trigger", element("start-trigger", "<debug-id>" + digits + "</debug-id>")).record,
            "debug-id=" + digits);
  EXPECT_EQ(validate("start-trigger", element("start-trigger", "<debug-id>" + digits + "</debug-id>")).status, 0);
}

TEST(DecodeHex, HalfAPairDoesNotReachTheNextElement) {
  const Reading reading = decode(
      "debugconfig",
      element("debugconfig", "aor='a'",
              "<session id='1'><start-trigger><debug-id>0A1</debug-id></start-trigger><stop-trigger/><control>"
              "<interface>i</interface><debug-id>B2</debug-id></control></session>"
              "<session id='2'><start-trigger><debug-id>C3x</debug-id></start-trigger><stop-trigger><time>t</time>"
              "</stop-trigger><control><interface>j</interface><debug-id>D4</debug-id></control></session>"));
  EXPECT_EQ(reading.record, "aor=a session{id=1 start{} stop{} control{interface=i debug-id=B2}} "
                            "session{id=2 start{} stop{time=t} control{interface=j debug-id=D4}}");
  EXPECT_EQ(reading.errors, "-44(0A1,tns__start_trigger,debug-id); -101");
}

TEST(DecodeHex, WhatIsLeftOutHasNoBit) {
  for (const char *content : {"4x", "4"}) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, element("start-trigger", "<debug-id>"s + content + "</debug-id>")), 0);
    Held held(ctx, documentOf("start-trigger"));
    EXPECT_LT(QxXmlD_tns_start_trigger(ctx, &held->start_trigger), 0);
    held.owned = true;
    EXPECT_EQ(held->start_trigger.m, 0u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.length, 0u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.bytes, nullptr);
  }
}

} // namespace
