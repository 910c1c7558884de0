// Reading push-to-talk settings into a record. The validator, which reads the same documents, must agree unless a case
// says otherwise.
#include "settings.h"
#include "xmlJudge.h"

#include <set>

using namespace settings;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

struct Case {
  const char *content;
  const char *record;
  const char *errors;                    // "": none
  const char *validatorErrors = nullptr; // null: the same in its own places
};

void expectReading(const std::string &text, const Case &c) {
  SCOPED_TRACE(text);
  const Reading reading = decode(text);
  EXPECT_EQ(reading.record, c.record);
  EXPECT_EQ(reading.errors, c.errors);
  EXPECT_EQ(reading.status, support::firstStatus(c.errors));
  const std::string validatorErrors = c.validatorErrors == nullptr ? support::byValidator(c.errors) : c.validatorErrors;
  const Reading checked = validate(text);
  EXPECT_EQ(checked.errors, validatorErrors);
  EXPECT_EQ(checked.status, support::firstStatus(validatorErrors));
}

// Cases whose content stands in the root, or in an entity "e".
void expectInRoot(std::initializer_list<Case> cases) {
  for (const Case &c : cases)
    expectReading(document(c.content), c);
}
void expectInEntity(std::initializer_list<Case> cases) {
  for (const Case &c : cases)
    expectReading(entityDocument(c.content), c);
}

// ---- Documents without errors ---------------------------------------------------------------------------------

constexpr std::string_view fullBody =
    "<q:poc-settings r=\"1\">\n"
    "  <q:entity id=\"alice\" k=\"2\">\n"
    "    <q:isb-settings k=\"3\">\n      <q:incoming-session-barring active=\"true\"/>\n"
    "      <x:f xmlns:x=\"urn:x\">1</x:f>\n    </q:isb-settings>\n"
    "    <q:am-settings k=\"4\">\n      <q:answer-mode>manual</q:answer-mode>\n"
    "      <x:f xmlns:x=\"urn:x\">2</x:f>\n    </q:am-settings>\n"
    "    <q:ipab-settings k=\"5\">\n      <q:incoming-personal-alert-barring active=\"0\"> "
    "</q:incoming-personal-alert-barring>\n"
    "      <x:f xmlns:x=\"urn:x\">3</x:f>\n    </q:ipab-settings>\n"
    "    <q:sss-settings k=\"6\">\n      <q:simultaneous-sessions-support active=\" 1 \"/>\n"
    "      <x:f xmlns:x=\"urn:x\">4</x:f>\n    </q:sss-settings>\n"
    "    <x:f xmlns:x=\"urn:x\">5</x:f>\n  </q:entity>\n"
    "  <q:entity id=\"bob\"/>\n"
    "  <x:f xmlns:x=\"urn:x\">6</x:f>\n"
    "</q:poc-settings>";
constexpr std::string_view fullRecord =
    "[id=alice isb(active=true <x:f xmlns:x=\"urn:x\">1</x:f> @k=3) am(mode=manual <x:f xmlns:x=\"urn:x\">2</x:f> "
    "@k=4) "
    "ipab(active=false <x:f xmlns:x=\"urn:x\">3</x:f> @k=5) sss(active=true <x:f xmlns:x=\"urn:x\">4</x:f> @k=6) "
    "<x:f xmlns:x=\"urn:x\">5</x:f> @k=2] [id=bob] <x:f xmlns:x=\"urn:x\">6</x:f> @r=1";

TEST(Decode, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(reading.record, fullRecord);
    EXPECT_EQ(reading.errors, "");
  });
}

TEST(Decode, ErrorsNameElementsAsTheyAreSpelled) {
  everySpelling("<q:poc-settings><q:entity id=\"e\"><q:am-settings><q:answer-mode>auto</q:answer-mode></q:am-settings>"
                "<q:isb-settings/></q:entity></q:poc-settings>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_ENUM_NOT_FOUND);
                  EXPECT_EQ(reading.record, "[id=e am(mode=automatic)]");
                  EXPECT_EQ(reading.errors, "-4(auto)@SAX; -44(auto,amSettingType," +
                                                document.qualified("answer-mode") + ")@SAX; -41(" +
                                                document.qualified("isb-settings") + ")@runtime/reader<SAX");
                });
  everySpelling("<q:poc-settings><q:entity id=\"e\"><q:sss-settings>"
                "<q:simultaneous-sessions-support active=\"true\"><q:bogus/></q:simultaneous-sessions-support>"
                "</q:sss-settings></q:entity></q:poc-settings>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
                  EXPECT_EQ(reading.record, "[id=e sss(active=true)]");
                  EXPECT_EQ(reading.errors, "-41(" + document.qualified("bogus") + ")@SAX");
                });
}

TEST(Decode, EveryPrefixFailsAndReleasesAll) {
  for (support::Spelling spelling : support::allSpellings)
    support::everyPrefix(support::spell(fullBody, namespaceUri, spelling).text, decodeStatus);
  support::everyPrefix(entityDocument("<isb-settings><incoming-session-barring k='1' active='x'><b/>t"
                                      "</incoming-session-barring></isb-settings><bogus><x/></bogus><am-settings>"
                                      "<answer-mode k='1'>a<!--c--><![CDATA[d]]>&#65;</answer-mode></am-settings>"),
                       decodeStatus);
}

TEST(Decode, EmptyDocumentIsInOrder) {
  expectInRoot({{"", "", ""}, {"  \n text <!--c-->", "", ""}});
  expectReading("<poc-settings/>", {"", "", ""});
}

TEST(Decode, TextBetweenElementsIsNoOnes) {
  expectInEntity({{"one<isb-settings>two<incoming-session-barring active='1'>three</incoming-session-barring>"
                   "&amp;</isb-settings>four<am-settings>five<answer-mode>manual</answer-mode><![CDATA[six]]>"
                   "</am-settings>seven",
                   "[id=e isb(active=true) am(mode=manual)]", ""}});
}

// ---- Order ----------------------------------------------------------------------------------------------------

struct Child {
  const char *xml;
  const char *name;
  const char *shown;
};

// All sequences of up to length of children, the last of which is foreign. next says where a grammar is after a child
// of a kind, from where it is before; -1: the child is refused.
template <typename Next>
void everySequence(const std::vector<Child> &children, size_t length, const std::string &before,
                   const std::string &after, const std::string &recordBefore, const std::string &recordAfter,
                   const Next &next) {
  Context ctx;
  for (size_t count = 0; count <= length; ++count) {
    size_t all = 1;
    for (size_t i = 0; i < count; ++i)
      all *= children.size();
    for (size_t number = 0; number < all; ++number) {
      std::string body;
      std::string members;
      std::string refused;
      int state = 0;
      for (size_t rest = number, i = 0; i < count; ++i, rest /= children.size()) {
        const size_t kind = rest % children.size();
        body += children[kind].xml;
        const int following = next(kind, state);
        if (following >= 0) {
          members += children[kind].shown;
          state = following;
        } else {
          refused += (refused.empty() ? "" : "; ") + "-41("s + children[kind].name + ")@runtime/reader<SAX";
        }
      }
      const std::string text = document(before + body + after);
      rtxErrClear(ctx);
      const Reading reading = decode(ctx, text);
      EXPECT_EQ(reading.status, support::firstStatus(refused)) << text;
      EXPECT_EQ(reading.record, recordBefore + members + recordAfter) << text;
      EXPECT_EQ(reading.errors, refused) << text;
      rtxErrClear(ctx);
      const Reading checked = validate(ctx, text);
      EXPECT_EQ(checked.status, reading.status) << text;
      EXPECT_EQ(checked.errors, support::byValidator(refused)) << text;
      if (testing::Test::HasFailure()) return;
    }
  }
}

const Child foreignChild = {"<x:f xmlns:x=\"u\"/>", "x:f", " <x:f xmlns:x=\"u\"/>"};

TEST(DecodeOrder, SettingsOfAnEntityOnceEachInTheirOrderThenForeignElements) {
  everySequence(
      {{"<isb-settings><incoming-session-barring active='1'/></isb-settings>", "isb-settings", " isb(active=true)"},
       {"<am-settings><answer-mode>manual</answer-mode></am-settings>", "am-settings", " am(mode=manual)"},
       {"<ipab-settings><incoming-personal-alert-barring active='1'/></ipab-settings>", "ipab-settings",
        " ipab(active=true)"},
       {"<sss-settings><simultaneous-sessions-support active='1'/></sss-settings>", "sss-settings",
        " sss(active=true)"},
       foreignChild},
      5, "<entity id=\"e\">", "</entity>", "[id=e", "]", [](size_t kind, int state) {
        if (kind == 4) return 5;
        return static_cast<int>(kind) >= state ? static_cast<int>(kind) + 1 : -1;
      });
}

TEST(DecodeOrder, ValueOfASettingFirstAndOnceThenForeignElements) {
  struct Setting {
    const char *element;
    const char *shown;
    const char *value;
    const char *name;
    const char *set;
    const char *missing;
  };
  for (const Setting &s :
       {Setting{"isb-settings", "isb", "<incoming-session-barring active='1'/>", "incoming-session-barring",
                "active=true", "active=false"},
        {"am-settings", "am", "<answer-mode>manual</answer-mode>", "answer-mode", "mode=manual", "mode=automatic"},
        {"ipab-settings", "ipab", "<incoming-personal-alert-barring active='1'/>", "incoming-personal-alert-barring",
         "active=true", "active=false"},
        {"sss-settings", "sss", "<simultaneous-sessions-support active='1'/>", "simultaneous-sessions-support",
         "active=true", "active=false"}}) {
    SCOPED_TRACE(s.element);
    const std::string start = "<"s + s.element + ">";
    const std::string end = "</"s + s.element + ">";
    const std::string shownMissing = "[id=e "s + s.shown + "(" + s.missing + ")]";
    const std::string value = s.value;
    const std::string foreign = foreignChild.xml;
    const std::string refusedForeign = "-41(x:f)@runtime/reader<SAX";
    const std::string refusedValue = "-41("s + s.name + ")@runtime/reader<SAX";
    // A setting whose value is missing shows what zeroed storage holds; of a value that comes twice the first counts.
    const auto expect = [&](const std::string &content, const std::string &record, const std::string &errors) {
      expectReading(entityDocument(start + content + end), {"", record.c_str(), errors.c_str()});
    };
    const auto shown = [&](const std::string &extra) { return "[id=e "s + s.shown + "(" + s.set + extra + ")]"; };
    expect("", shownMissing, "");
    expect(foreign, shownMissing, refusedForeign);
    expect(foreign + foreign, shownMissing, refusedForeign + "; " + refusedForeign);
    expect(value, shown(""), "");
    expect(foreign + value + foreign, shown(foreignChild.shown), refusedForeign);
    expect(value + foreign + foreign, shown(foreignChild.shown + ""s + foreignChild.shown), "");
    expect(value + value, shown(""), refusedValue);
    expect(value + foreign + value + foreign, shown(foreignChild.shown + ""s + foreignChild.shown), refusedValue);
  }
}

TEST(DecodeOrder, EntitiesThenForeignElementsInTheRoot) {
  const char *const entity = "<entity id='e'/>";
  const std::string foreign = foreignChild.xml;
  const std::string shown = foreignChild.shown;
  for (uint32_t number = 0; number < 128; ++number) {
    std::string body;
    std::string entities;
    std::string others;
    std::string refused;
    for (uint32_t rest = number + 1; rest > 1; rest /= 2) {
      if (rest % 2 == 0) {
        body += foreign;
        others += shown;
      } else if (others.empty()) {
        body += entity;
        entities += entities.empty() ? "[id=e]" : " [id=e]";
      } else {
        body += entity;
        refused += (refused.empty() ? "" : "; ") + "-41(entity)@runtime/reader<SAX"s;
      }
    }
    expectReading(document(body), {"", (entities + others).c_str(), refused.c_str()});
  }
}

TEST(DecodeOrder, NamespacesDecideWhatIsForeign) {
  expectInRoot({
      // A name of ours in another namespace is another vocabulary's, where such may stand.
      {"<x:entity xmlns:x=\"u\"/>", " <x:entity xmlns:x=\"u\"/>", ""},
      {"<entity xmlns=\"u\"/>", " <entity xmlns=\"u\"/>", ""},
      {"<entity id='e'><isb-settings xmlns=\"urn:ietf:params:xml:ns:common-policy\"/></entity>",
       "[id=e <isb-settings xmlns=\"urn:ietf:params:xml:ns:common-policy\"/>]", ""},
      // Names of ours without a namespace are ours, others are foreign.
      {"<entity xmlns=\"\" id='e'/>", "[id=e]", ""},
      {"<bogus xmlns=\"\"/>", " <bogus xmlns=\"\"/>", ""},
      // A name in our namespace that is none of ours is refused.
      {"<bogus/><entity id='e'/>", "[id=e]", "-41(bogus)@runtime/reader<SAX"},
      {"<entity id='e'><bogus><am-settings/></bogus><sss-settings/></entity>", "[id=e sss(active=false)]",
       "-41(bogus)@runtime/reader<SAX"},
      // Where no foreign element may stand, the name alone is tried.
      {"<entity id='e'><isb-settings><x:incoming-session-barring xmlns:x='u' active='1'/></isb-settings></entity>",
       "[id=e isb(active=true)]", ""},
      // An undeclared prefix is no namespace.
      {"<u:entity id='e'/>", "[id=e]", ""},
  });
}

TEST(DecodeOrder, RequiredValuesAreNotMissedAtTheEnd) {
  expectInEntity({{"<isb-settings/><am-settings/><ipab-settings/><sss-settings/>",
                   "[id=e isb(active=false) am(mode=automatic) ipab(active=false) sss(active=false)]", ""}});
}

// ---- The root -------------------------------------------------------------------------------------------------

TEST(DecodeRoot, OfAnotherNameIsReportedAndRead) {
  struct Root {
    const char *root;
    const char *found;
  };
  for (const Root &r : {Root{"settings", "settings"},
                        {"p:settings", "settings"},
                        {"Poc-Settings", "Poc-Settings"},
                        {"poc-setting", "poc-setting"},
                        {"poc-settingsX", "poc-settingsX"}}) {
    const std::string text =
        "<"s + r.root + " xmlns:p=\"" + namespaceUri + "\" k='v'><p:entity id='e'/></" + r.root + ">";
    expectReading(text, {"", "[id=e] @k=v", ("-3(poc-settings,"s + r.found + ")@SAX").c_str()});
  }
}

TEST(DecodeRoot, IsKnownByItsLocalNameAlone) {
  expectReading("<poc-settings xmlns='urn:other' xmlns:t='"s + namespaceUri + "'><t:entity id='e'/></poc-settings>",
                {"", "[id=e]", ""});
}

// ---- Attributes that are kept ---------------------------------------------------------------------------------

constexpr const char *instance = "http://www.w3.org/2001/XMLSchema-instance";

// The six kinds of elements with foreign attributes: what comes before and behind such attributes, and how the record
// shows around them.
struct Carrier {
  const char *before;
  const char *after;
  const char *recordBefore;
  const char *recordAfter;
};
constexpr Carrier carriers[] = {
    {"<poc-settings ", "/>", "", ""},
    {"<poc-settings><entity id='e' ", "/></poc-settings>", "[id=e", "]"},
    {"<poc-settings><entity id='e'><isb-settings ", "/></entity></poc-settings>", "[id=e isb(active=false", ")]"},
    {"<poc-settings><entity id='e'><am-settings ", "/></entity></poc-settings>", "[id=e am(mode=automatic", ")]"},
    {"<poc-settings><entity id='e'><ipab-settings ", "/></entity></poc-settings>", "[id=e ipab(active=false", ")]"},
    {"<poc-settings><entity id='e'><sss-settings ", "/></entity></poc-settings>", "[id=e sss(active=false", ")]"},
};

TEST(DecodeAttributes, ForeignOnesAreKeptAsTheyStand) {
  struct Attributes {
    const char *xml;
    const char *kept;
  };
  const Attributes cases[] = {
      {"k='v'", " @k=v"},
      {"b='1' a='2'", " @b=1 @a=2"},
      {"k=''", " @k="},
      {"k=' a &amp; &quot;b&#10;&lt; '", " @k= a & \"b\n< "},
      {"xml:lang='en'", " @xml:lang=en"},
      {"xmlns:p='u' p:k='v'", " @p:k=v"},
      {"u:k='v'", " @u:k=v"},
      // Declarations, and what belongs to schema instances, are not kept.
      {"xmlns:p='u' xmlns:q='v'", ""},
      {"xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='a b' xsi:nonsense=''", ""},
      {"xsi:type='undeclared'", ""},
      {"xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:type='t' k='v'", " @k=v"},
      // Names that only look like those.
      {"xsi='1' xs='2' xmln='3' xsitype='4'", " @xsi=1 @xs=2 @xmln=3 @xsitype=4"},
      {"ID='1' active='2'", " @ID=1 @active=2"},
  };
  for (const Carrier &carrier : carriers) {
    for (const Attributes &c : cases) {
      const std::string record = carrier.recordBefore + ""s + c.kept + carrier.recordAfter;
      expectReading(carrier.before + ""s + c.xml + carrier.after, {"", record.c_str(), ""});
    }
  }
}

TEST(DecodeAttributes, WhatBeginsAsADeclarationDoesIsTakenForOne) {
  expectReading("<poc-settings xmlns='urn:other' xmlnsfoo='1' k='v'/>", {"", " @k=v", ""});
  expectReading("<poc-settings><entity xmlnsfoo='"s + namespaceUri + "' id='e' k='v'/></poc-settings>",
                {"", "[id=e @k=v]", ""});
}

TEST(DecodeAttributes, IdIsTextWhereverItStands) {
  struct Id {
    const char *attributes;
    const char *shown;
  };
  for (const Id &c : {Id{"id='alice@example.org'", "id=alice@example.org"},
                      {"id=''", "id="},
                      {"id=' a  b '", "id= a  b "},
                      {"id='a&amp;b&#x41;&lt;'", "id=a&bA<"},
                      {"id='\xC3\xA9\xF0\x9F\x98\x80'", "id=\xC3\xA9\xF0\x9F\x98\x80"},
                      {"k='1' id='e' l='2'", "id=e @k=1 @l=2"},
                      {"xmlns:p='u' p:id='f' id='e'", "id=e @p:id=f"}})
    expectReading(document("<entity "s + c.attributes + "/>"), {"", ("["s + c.shown + "]").c_str(), ""});
}

TEST(DecodeAttributes, MissingIdIsReportedAndTheEntityRead) {
  expectInRoot({
      {"<entity/><entity id='b'/>", "[id=-] [id=b]", "-103(entityType,id)@runtime/reader<SAX"},
      {"<entity k='v' ID='x'><am-settings><answer-mode>manual</answer-mode></am-settings></entity>",
       "[id=- am(mode=manual) @k=v @ID=x]", "-103(entityType,id)@runtime/reader<SAX"},
      {"<entity xmlns:p='u' p:id='x'/>", "[id=- @p:id=x]", "-103(entityType,id)@runtime/reader<SAX"},
  });
}

TEST(DecodeAttributes, LongValuesArriveWhole) {
  const std::string value(70000, 'v');
  EXPECT_EQ(decode(document("<entity id='" + value + "' k='" + value + "'/>")).record,
            "[id=" + value + " @k=" + value + "]");
}

// ---- The three elements that must be empty --------------------------------------------------------------------

struct Barring {
  std::string setting; // element
  std::string shown;
  std::string element;
  std::string type;
};
const Barring barrings[] = {
    {"isb-settings", "isb", "incoming-session-barring", "isbSettingType_incoming_session_barring"},
    {"ipab-settings", "ipab", "incoming-personal-alert-barring", "ipabSettingType_incoming_personal_alert_barring"},
    {"sss-settings", "sss", "simultaneous-sessions-support", "sssSettingType_simultaneous_sessions_support"},
};

// Reads <element attributes>content</element>, and behind it a foreign element, which must be reached.
void expectBarring(const Barring &barring, const std::string &attributes, const std::string &content,
                   const std::string &value, const std::string &errors) {
  const std::string text =
      entityDocument("<" + barring.setting + "><" + barring.element + " " + attributes + ">" + content + "</" +
                     barring.element + ">" + foreignChild.xml + "</" + barring.setting + "><x:g xmlns:x=\"u\"/>");
  const std::string record =
      "[id=e " + barring.shown + "(active=" + value + foreignChild.shown + ") <x:g xmlns:x=\"u\"/>]";
  expectReading(text, {"", record.c_str(), errors.c_str()});
}

TEST(DecodeBarring, ActiveIsABoolean) {
  for (const Barring &b : barrings) {
    for (const char *text : {"true", "1", " true ", "\n1\t"})
      expectBarring(b, "active='"s + text + "'", "", "true", "");
    for (const char *text : {"false", "0", " false", "0 "})
      expectBarring(b, "active='"s + text + "'", "", "false", "");
  }
}

TEST(DecodeBarring, ActiveThatIsNoBooleanIsRecordedTwice) {
  for (const Barring &b : barrings) {
    const std::string errors = "-101@SAX; -45(" + b.type + ",active)@SAX";
    for (const char *text : {"", " ", "TRUE", "True", "yes", "on", "2", "-1", "01", "tru", "truee", "t rue", "1 0"})
      expectBarring(b, "active='"s + text + "'", "", "false", errors);
  }
}

TEST(DecodeBarring, ActiveThatIsMissingIsReported) {
  for (const Barring &b : barrings) {
    expectBarring(b, "", "", "false", "-103(" + b.type + ",active)@runtime/reader<SAX");
    expectBarring(b, "xmlns:p='u' p:active='true'", "", "false",
                  "-33(" + b.type + ",p:active)@SAX; -103(" + b.type + ",active)@runtime/reader<SAX");
    expectBarring(b, "Active='true'", "", "false",
                  "-33(" + b.type + ",Active)@SAX; -103(" + b.type + ",active)@runtime/reader<SAX");
  }
}

TEST(DecodeBarring, OtherAttributesAreRefusedOneByOne) {
  for (const Barring &b : barrings) {
    expectBarring(b, "k='1' active='true' xml:lang='en' xmlns:p='u' p:k='2'", "", "true",
                  "-33(" + b.type + ",k)@SAX; -33(" + b.type + ",xml:lang)@SAX; -33(" + b.type + ",p:k)@SAX");
    // Declarations and what belongs to schema instances are none.
    expectBarring(b,
                  "xmlns:q='u' xmlns:xsi='"s + instance + "' xsi:type='t' active='true' xsi:nil='false' xmlnsfoo='1'",
                  "", "true", "");
    expectBarring(b, "xmlns:i='"s + instance + "' i:type='t' active='true'", "", "true",
                  "-33(" + b.type + ",i:type)@SAX");
  }
}

TEST(DecodeBarring, TextInsideIsIgnored) {
  for (const Barring &b : barrings)
    for (const char *content : {" ", "text", "<![CDATA[t]]>&amp;", "<!--c--><?p i?>"})
      expectBarring(b, "active='1'", content, "true", "");
}

TEST(DecodeBarring, ElementsInsideAreRefusedWithAllTheyHold) {
  for (const Barring &b : barrings) {
    expectBarring(b, "active='1'", "a<b>c<d k='v'><" + b.element + " active='no'/></d></b>e", "true", "-41(b)@SAX");
    expectBarring(b, "active='1'", "<x:b xmlns:x='u'/><" + b.element + " active='0'/>", "true",
                  "-41(x:b)@SAX; -41(" + b.element + ")@SAX");
    expectBarring(b, "", "<b/>", "false", "-103(" + b.type + ",active)@runtime/reader<SAX; -41(b)@SAX");
  }
}

// ---- The answer mode ------------------------------------------------------------------------------------------

TEST(DecodeAnswerMode, IsComparedExactly) {
  const auto setting = [](const std::string &text) {
    return entityDocument("<am-settings><answer-mode>" + text + "</answer-mode>" + foreignChild.xml +
                          "</am-settings><sss-settings/>");
  };
  const auto record = [](const std::string &mode) {
    return "[id=e am(mode=" + mode + foreignChild.shown + ") sss(active=false)]";
  };
  for (const char *text : {"manual", "man<!--c-->ual", "<![CDATA[manual]]>", "m<![CDATA[anua]]>&#108;",
                           "man<b k='1'>u</b>al", "manual<b/>"})
    expectReading(setting(text), {"", record("manual").c_str(), ""});
  expectReading(setting("automatic"), {"", record("automatic").c_str(), ""});

  for (const char *text : {"", " ", "auto", "Manual", "AUTOMATIC", " manual", "manual ", "\nmanual\n", "manualx",
                           "manua", "automatic manual", "1", "_UNKNOWN_", "\xC3\xA9"}) {
    const std::string errors = "-4("s + text + ")@SAX; -44(" + text + ",amSettingType,answer-mode)@SAX";
    expectReading(setting(text), {"", record("automatic").c_str(), errors.c_str()});
  }
}

TEST(DecodeAnswerMode, EmptyElementIsNoValueInEitherForm) {
  for (const char *content : {"<answer-mode/>", "<answer-mode></answer-mode>"})
    expectReading(entityDocument("<am-settings>"s + content + "</am-settings>"),
                  {"", "[id=e am(mode=automatic)]", "-4()@SAX; -44(,amSettingType,answer-mode)@SAX"});
}

TEST(DecodeAnswerMode, AttributesAreReportedAndTheTextRead) {
  expectInEntity({
      {"<am-settings><answer-mode k='1' xmlns:p='u' p:l='2'>manual</answer-mode></am-settings>",
       "[id=e am(mode=manual)]", "-33(answer-mode,k)@runtime/reader; -33(answer-mode,p:l)@runtime/reader<SAX"},
      {"<am-settings><answer-mode xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
       "xsi:type='t'>manual</answer-mode></am-settings>",
       "[id=e am(mode=manual)]", ""},
  });
}

// Storage of the caller's own shows that a value is not written unless it converts.
TEST(DecodeAnswerMode, ThatDoesNotConvertKeepsItsValue) {
  const std::string text = "<am-settings><answer-mode>auto</answer-mode></am-settings>";
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  Record<amSettingType> record(ctx);
  record->answer_mode = 4711;
  SaxTypeHandler handler;
  ASSERT_EQ(QxSAX_amSettingType_init(ctx, &handler, record, 0), 0);
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &handler, QxSAX_amSettingType_startElement,
                                              QxSAX_amSettingType_endElement, QxSAX_amSettingType_characters);
  EXPECT_EQ(rtSaxCParse(reader), 0);
  rtSaxCReleaseReader(reader);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-4, -44}));
  EXPECT_EQ(record->answer_mode, 4711);
  EXPECT_EQ(handler.seenRequired, 0u);
  rtxMemHeapFreePtr(ctx, handler.delegateStorage);
}

// ---- What stays of a document with errors ---------------------------------------------------------------------

TEST(Decode, PartlyReadEntityStaysInItsList) {
  expectInRoot({{"<entity id='a'><bogus/></entity><entity><am-settings><answer-mode>x</answer-mode></am-settings>"
                 "</entity><entity id='c'/>",
                 "[id=a] [id=- am(mode=automatic)] [id=c]",
                 "-41(bogus)@runtime/reader<SAX; -103(entityType,id)@runtime/reader<SAX; -4(x)@SAX; "
                 "-44(x,amSettingType,answer-mode)@SAX"}});
  struct Cut {
    const char *text;
    const char *record;
  };
  for (const Cut &c :
       {Cut{"<entity id='a'/><entity id='b'", "[id=a]"},
        {"<entity id='a'><isb-settings k='v'>", "[id=a isb(active=false @k=v)]"},
        {"<entity id='a'><isb-settings><incoming-session-barring active='1'>", "[id=a isb(active=true)]"},
        {"<entity id='a'><am-settings><answer-mode>manual", "[id=a am(mode=automatic)]"},
        {"<entity id='a'><x:f xmlns:x='u'>t", "[id=a -]"},
        {"<entity id='a'><am-settings><answer-mode>manual</answer-mode><x:f xmlns:x='u'>t", "[id=a am(mode=manual -)]"},
        {"<entity id='a'/><x:f xmlns:x='u'><y/>", "[id=a] -"}}) {
    const Reading reading = decode("<poc-settings>"s + c.text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << c.text;
    EXPECT_EQ(reading.record, c.record);
  }
}

TEST(Decode, ForeignElementsMeanTheSameOnTheirOwn) {
  const std::string text = "<p:poc-settings xmlns:p=\""s + namespaceUri +
                           "\" xmlns:x=\"urn:x\" xmlns=\"urn:default\">"
                           "<x:f k='\"'>t &amp; <g><!--c--><p:entity x:l=\"&#10;\">&lt;</p:entity></g></x:f>"
                           "<g/><x:h xmlns:x=\"urn:inner\"><x:i/></x:h><n xmlns=\"\"/></p:poc-settings>";
  const auto whole = support::parseNamespacedXml(text);
  ASSERT_TRUE(whole);
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  auto record = Record<poc_settingsType>::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_poc_settings(ctx, record), 0) << support::errors(ctx);
  record.owned = true;
  const std::vector<std::string> fragments = foreignTexts(record->anyElems);
  ASSERT_EQ(fragments.size(), 4u);
  for (size_t i = 0; i < fragments.size(); ++i) {
    const auto fragment = support::parseNamespacedXml(fragments[i]);
    ASSERT_TRUE(fragment) << fragments[i];
    EXPECT_EQ(fragment->infoset(), whole->children[i].infoset());
  }

  // Written back under a default declaration, they mean the same still.
  const auto again = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->infoset(), whole->infoset());
}

TEST(Decode, WhatIsReadIsWrittenBack) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, completeDocument), 0);
  auto record = Record<poc_settingsType>::uninitialised(ctx);
  EXPECT_LT(QxXmlD_poc_settings(ctx, record), 0) << "its foreign elements are in the module's own namespace";
  record.owned = true;
  rtxErrClear(ctx);
  const Reading again = decode(ctx, encodeRecord(ctx, record));
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.record, dump(*record));
}

// ---- Places and statuses --------------------------------------------------------------------------------------

TEST(Decode, ErrorsKnowTheirPlace) {
  const std::string text = "<poc-settings>\n <entity>\n  <isb-settings>\n   <incoming-session-barring k='1' active='x'>"
                           "<b/>\n   </incoming-session-barring>\n  </isb-settings>\n  <am-settings>\n"
                           "   <answer-mode l='1'>auto</answer-mode>\n  </am-settings>\n  <isb-settings/>\n"
                           " </entity>\n</poc-settings>\n";
  const auto places = [](RuntimeContext *ctx) {
    std::vector<std::string> all;
    for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
      all.push_back(std::to_string(error->status) + " " + support::placeText(*error));
    return all;
  };
  const auto at = [&](int status, const char *what, const char *position, const char *path) {
    return std::to_string(status) + " " + position + "+" + std::to_string(text.find(what)) + " /poc-settings/entity" +
           path;
  };
  const std::vector<std::string> expected = {
      at(-103, "<entity", "2:2", ""),
      at(-33, "k='1'", "4:30", "/isb-settings/incoming-session-barring"),
      at(-101, "active=", "4:36", "/isb-settings/incoming-session-barring"),
      at(-45, "active=", "4:36", "/isb-settings/incoming-session-barring"),
      at(-41, "<b/>", "4:47", "/isb-settings/incoming-session-barring/b"),
      at(-33, "l='1'", "8:17", "/am-settings/answer-mode"),
      at(-4, "auto", "8:23", "/am-settings/answer-mode"),
      at(-44, "auto", "8:23", "/am-settings/answer-mode"),
      at(-41, "<isb-settings/>", "10:3", "/isb-settings"),
  };
  Context ctx;
  decode(ctx, text);
  EXPECT_EQ(places(ctx), expected);
  rtxErrClear(ctx);
  validate(ctx, text);
  EXPECT_EQ(places(ctx), expected);
}

// One document for each place in the sources that an error names. No two may agree.
TEST(Decode, EachPlaceInTheSourcesIsDistinct) {
  std::vector<std::string> documents = {"<settings/>", document("<bogus/>"), document("<entity/>"),
                                        entityDocument("<bogus/>")};
  for (const Barring &b : barrings) {
    const auto nested = [&](const std::string &attributes, const std::string &content) {
      documents.push_back(entityDocument("<" + b.setting + "><" + b.element + " " + attributes + ">" + content + "</" +
                                         b.element + "></" + b.setting + ">"));
    };
    documents.push_back(entityDocument("<" + b.setting + "><bogus/></" + b.setting + ">"));
    nested("active='1' k='2'", "");
    nested("active='x'", "");
    nested("", "");
    nested("active='1'", "<b/>");
  }
  documents.push_back(entityDocument("<am-settings><bogus/></am-settings>"));
  documents.push_back(entityDocument("<am-settings><answer-mode>x</answer-mode></am-settings>"));
  documents.push_back(entityDocument("<am-settings><answer-mode k='1'>manual</answer-mode></am-settings>"));
  for (bool checking : {false, true}) {
    std::set<std::string> places;
    size_t records = 0;
    for (const std::string &text : documents) {
      SCOPED_TRACE(text);
      Context ctx;
      ASSERT_EQ(support::setInput(ctx, text), 0);
      EXPECT_LT(checking ? QxXmlV_poc_settings(ctx) : decodeStatus(ctx), 0);
      for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
        const RtxErrorSite &site = error->sites[error->siteCount - 1];
        EXPECT_STREQ(site.path, checking ? "xmlAddOns/addons/IMS/PocSettings/QxXmlPocSettingsVldt"
                                         : "xmlAddOns/addons/IMS/PocSettings/QxXmlPocSettingsSAX");
        places.insert(std::to_string(site.line));
        ++records;
      }
    }
    EXPECT_EQ(places.size(), records);
    EXPECT_EQ(records, documents.size() + 4u) << "-45 comes with the conversion's status, -44 with -4";
  }
}

TEST(Decode, WithoutInputTheRecordIsNotTouched) {
  Context ctx;
  auto record = Record<poc_settingsType>::uninitialised(ctx);
  const poc_settingsType before = *record;
  EXPECT_EQ(QxXmlD_poc_settings(ctx, record), STATUS_READER_FAILED);
  EXPECT_EQ(errorsOf(ctx), "-26@Dec");
  EXPECT_EQ(std::memcmp(&*record, &before, sizeof before), 0);
}

TEST(Decode, UnusableContextIsRefusedBeforeTheRecordIsTouched) {
  RuntimeContext none{};
  auto record = Record<poc_settingsType>::uninitialised(&none);
  const poc_settingsType before = *record;
  EXPECT_EQ(QxXmlD_poc_settings(&none, record), STATUS_READER_FAILED);
  EXPECT_EQ(std::memcmp(&*record, &before, sizeof before), 0);
}

TEST(Decode, InputThatIsNotWellFormedIsAParseFailure) {
  for (const std::string &text :
       {""s, " "s, "x"s, "<poc-settings>"s, document("") + "<more/>", entityDocument("&undefined;"),
        document("<entity id='1' id='2'/>"), entityDocument("\x01"), entityDocument("\xFF")}) {
    EXPECT_EQ(decode(text).status, STATUS_PARSE_FAILED) << text;
    EXPECT_EQ(validate(text).status, STATUS_PARSE_FAILED) << text;
  }
}

TEST(Decode, StatusOfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  EXPECT_EQ(decode(ctx, "<settings><bogus/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -104})) << "bogus is foreign without a namespace";
}

TEST(Decode, EarlierErrorIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, document("<entity/>")).status, STATUS_MISSING_ATTRIBUTE);
  const Reading second = decode(ctx, document("<entity id='b'/>"));
  EXPECT_EQ(second.status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(second.record, "[id=b]");
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Decode, DocumentCutOffLeavesNothingForTheNext) {
  Context ctx;
  for (const char *cut : {"<entity id='a'><am-settings><answer-mode>au", "<entity id='a'><x:f xmlns:x='u'><y>te",
                          "<entity id='a'><sss-settings xmlns='v'>"}) {
    EXPECT_EQ(decode(ctx, "<poc-settings xmlns='urn:other' xmlns:p='urn:p'>"s + cut).status, STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    // Without a declaration of its own, a binding left over would show.
    const Reading next = decode(ctx, "<poc-settings><p:entity id='b'><am-settings><answer-mode>manual</answer-mode>"
                                     "</am-settings></p:entity></poc-settings>");
    EXPECT_EQ(next.errors, "");
    EXPECT_EQ(next.record, "[id=b am(mode=manual)]");
  }
}

// What is recorded outside the count of errors is there at any limit.
TEST(Decode, LimitOfErrorsKeepsOutAllButTheStatusOfAConversion) {
  const std::string text = document("<entity><isb-settings><incoming-session-barring active='x' k='1'><b/>"
                                    "</incoming-session-barring></isb-settings><am-settings><answer-mode l='1'>auto"
                                    "</answer-mode></am-settings><isb-settings/></entity><entity id='f'><sss-settings>"
                                    "<simultaneous-sessions-support active='y'/></sss-settings></entity>");
  const std::vector<int> all = {-103, -101, -45, -33, -41, -33, -4, -44, -41, -101, -45};
  const auto counted = [](int status) { return status != -101 && status != -4; };
  for (bool checking : {false, true}) {
    for (uint32_t limit = 0; limit <= 10; ++limit) {
      SCOPED_TRACE("limit " + std::to_string(limit) + (checking ? ", validator" : ""));
      std::vector<int> expected;
      uint32_t left = limit;
      for (int status : all) {
        if (counted(status) && left == 0) continue;
        if (counted(status)) --left;
        // The same status that nobody records goes into the trail of the record before it, if it stands last there.
        if (status == -101 && !expected.empty() && expected.back() == status) continue;
        expected.push_back(status);
      }
      Context ctx;
      rtxSetErrorLimit(ctx, limit);
      const Reading reading = checking ? validate(ctx, text) : decode(ctx, text);
      EXPECT_EQ(support::statuses(ctx), expected);
      EXPECT_EQ(reading.status, expected.front());
      if (!checking) {
        EXPECT_EQ(reading.record, "[id=- isb(active=false) am(mode=automatic)] [id=f sss(active=false)]");
      }
    }
  }
}

// ---- Bodies as phones and servers send them -------------------------------------------------------------------

TEST(Decode, BodyFromAPhone) {
  expectReading("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<poc-settings xmlns=\""s + namespaceUri +
                    "\"\r\n  xmlns:xsi=\"" + instance + "\"\r\n  xsi:schemaLocation=\"" + namespaceUri +
                    " poc.xsd\">\r\n  <entity id=\"phone-7\">\r\n    <isb-settings>\r\n"
                    "      <incoming-session-barring active=\"1\" />\r\n    </isb-settings>\r\n    <am-settings>\r\n"
                    "      <answer-mode>manual</answer-mode>\r\n    </am-settings>\r\n  </entity>\r\n"
                    "</poc-settings>\r\n",
                {"", "[id=phone-7 isb(active=true) am(mode=manual)]", ""});
}

TEST(Decode, ElementOfALaterVersionIsLeftOutAndTheRestKept) {
  expectInEntity({{"<isb-settings><incoming-session-barring active='false'/></isb-settings>"
                   "<adhoc><limit value='5'/></adhoc><am-settings><answer-mode>manual</answer-mode></am-settings>",
                   "[id=e isb(active=false) am(mode=manual)]", "-41(adhoc)@runtime/reader<SAX"}});
}

} // namespace
