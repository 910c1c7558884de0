// Reading a 3GPP IMS body into a record. The validator, which reads the same documents, must agree unless a case says
// otherwise.
#include "PocSettings/QxXmlPocSettings.h"
#include "body.h"
#include "faultPlan.h"
#include "xmlJudge.h"

#include <set>

using namespace body;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

struct Case {
  std::string document;
  std::string record;
  std::string errors; // "": none
};

void expectReading(const Case &c) {
  SCOPED_TRACE(c.document);
  const Reading reading = decode(c.document);
  EXPECT_EQ(reading.record, c.record);
  EXPECT_EQ(reading.errors, c.errors);
  EXPECT_EQ(reading.status, support::firstStatus(c.errors));
  const Reading checked = validate(c.document);
  EXPECT_EQ(checked.errors, support::byValidator(c.errors));
  EXPECT_EQ(checked.status, support::firstStatus(c.errors));
}

// ---- Documents without errors ---------------------------------------------------------------------------------

constexpr const char *anyUri = "urn:any"; // no namespace is this module's
constexpr const char *instance = "http://www.w3.org/2001/XMLSchema-instance";

constexpr std::string_view fullBody =
    "<q:ims-3gpp version=\"1.5\" k=\"1\">\n  <q:alternative-service k=\"2\">\n    <q:type>emergency</q:type>\n"
    "    <q:reason> call &amp; more </q:reason>\n    <x:f xmlns:x=\"urn:x\">1</x:f>\n  </q:alternative-service>\n"
    "  <x:f xmlns:x=\"urn:x\">2</x:f>\n</q:ims-3gpp>";
constexpr std::string_view fullRecord =
    "alternative(type=emergency reason= call & more  <x:f xmlns:x=\"urn:x\">1</x:f> @k=2) version=1.5 "
    "<x:f xmlns:x=\"urn:x\">2</x:f> @k=1";
constexpr std::string_view infoBody = "<q:ims-3gpp version=\"2\"><q:service-info>text</q:service-info></q:ims-3gpp>";

TEST(Decode, NamesAloneMatterWhateverTheirNamespace) {
  everySpelling(fullBody, anyUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(reading.record, fullRecord);
    EXPECT_EQ(reading.errors, "");
  });
  everySpelling(infoBody, anyUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.record, "info=text version=2");
    EXPECT_EQ(reading.errors, "");
  });
}

TEST(Decode, ErrorsNameElementsAsTheyAreSpelled) {
  everySpelling("<q:ims-3gpp version=\"1\"><q:alternative-service><q:reason>r</q:reason><q:type k=\"1\">t</q:type>"
                "</q:alternative-service><q:service-info/></q:ims-3gpp>",
                anyUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
                  EXPECT_EQ(reading.record, "alternative(type=t reason=-) version=1");
                  EXPECT_EQ(reading.errors, "-41(" + document.qualified("reason") +
                                                ")@runtime/reader<SAX; -33(type,k)@runtime/reader<SAX; -41(" +
                                                document.qualified("service-info") + ")@runtime/reader<SAX");
                });
}

TEST(Decode, EveryPrefixFailsAndReleasesAll) {
  for (support::Spelling spelling : {support::Spelling::noNamespace, support::Spelling::ownDeclarations}) {
    support::everyPrefix(support::spell(fullBody, anyUri, spelling).text, decodeStatus);
    support::everyPrefix(support::spell(infoBody, anyUri, spelling).text, decodeStatus);
  }
  support::everyPrefix("<ims-3gpp version='abc' k='1'><bogus/><alternative-service k='1'><reason/><type l='1'>t<e/>"
                       "<!--c--><![CDATA[d]]>&#65;</type><action>x</action></alternative-service></ims-3gpp>",
                       decodeStatus);
}

TEST(Decode, EmptyBodyIsInOrder) {
  expectReading({document(""), "none version=1", ""});
  expectReading({document(" \n text"), "none version=1", ""});
  expectReading({alternative(""), "alternative(type=- reason=-) version=1", ""});
  expectReading({document("<service-info/>"), "info= version=1", ""});
}

// ---- No namespace anywhere ------------------------------------------------------------------------------------

TEST(DecodeWithoutNamespace, TableOfAnEarlierDocumentDoesNotLeakIn) {
  const std::string settings = "urn:oma:params:xml:ns:poc:poc-settings";
  const std::string ours = "<ims-3gpp xmlns=\"" + settings + "\" version=\"1\"><alternative-service><type>t</type>" +
                           "<reason>r</reason><action>a</action></alternative-service><bogus/></ims-3gpp>";
  const auto expectOurs = [&](RuntimeContext *ctx, const char *what) {
    SCOPED_TRACE(what);
    const Reading reading = decode(ctx, ours);
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(reading.record, "alternative(type=t reason=r <action xmlns=\"" + settings +
                                  "\">a</action>) version=1 <bogus xmlns=\"" + settings + "\"/>");
    EXPECT_EQ(validate(ctx, ours).errors, "");
    ASSERT_EQ(rtXmlNSPush(ctx), 0);
    ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "p", settings.c_str(), nullptr, 0), 0);
    EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), RTXML_NS_NONE) << "no table is left either";
    rtXmlNSPop(ctx);
  };
  Context ctx;
  expectOurs(ctx, "first");
  EXPECT_EQ(ctx->globalData, nullptr) << "and no registry was made";

  ASSERT_EQ(support::setInput(ctx, "<poc-settings xmlns=\"" + settings + "\"/>"), 0);
  poc_settingsType record;
  EXPECT_EQ(QxXmlD_poc_settings(ctx, &record), 0);
  expectOurs(ctx, "after a decoder");
  EXPECT_EQ(QxXmlV_poc_settings(ctx), STATUS_ROOT_MISMATCH);
  rtxErrClear(ctx);
  expectOurs(ctx, "after a validator");
  support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_poc_settings(c, &record); });
  expectOurs(ctx, "after an encoder");
}

TEST(DecodeWithoutNamespace, BindingOfAnEarlierDocumentDoesNotLeakIn) {
  Context ctx;
  for (const char *cut : {"<alternative-service><type>ab", "<alternative-service xmlns='v'><type/><reason/><x:f><y>te",
                          "<service-info>ab"}) {
    EXPECT_EQ(decode(ctx, "<ims-3gpp xmlns='urn:other' xmlns:x='urn:x'>"s + cut).status, STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    // A binding left over would be declared on the captured element.
    const Reading next = decode(ctx, document("<service-info>i</service-info><action/>"));
    EXPECT_EQ(next.errors, "");
    EXPECT_EQ(next.record, "info=i version=1 <action/>");
  }
}

TEST(DecodeWithoutNamespace, ForeignElementsMeanTheSameOnTheirOwn) {
  const std::string text = "<ims-3gpp version=\"1\" xmlns:x=\"urn:x\"><service-info/><x:f k='\"'>t &amp; <g><!--c-->"
                           "<type x:l=\"&#10;\">&lt;</type></g></x:f><g/><x:h xmlns:x=\"urn:inner\"><x:i/></x:h>"
                           "<n xmlns=\"urn:n\"><o/></n></ims-3gpp>";
  const auto whole = support::parseNamespacedXml(text);
  ASSERT_TRUE(whole);
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  auto record = Record<tIMS3GPP>::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_ims_3gpp(ctx, record), 0) << support::errors(ctx);
  record.owned = true;
  const std::vector<std::string> fragments = foreignTexts(record->anyElems);
  ASSERT_EQ(fragments.size(), 4u);
  for (size_t i = 0; i < fragments.size(); ++i) {
    const auto fragment = support::parseNamespacedXml(fragments[i]);
    ASSERT_TRUE(fragment) << fragments[i];
    EXPECT_EQ(fragment->infoset(), whole->children[i + 1].infoset());
  }
  EXPECT_EQ(fragments[1], "<g/>") << "nothing to be undeclared where nothing is declared";

  // Written back, they mean the same still.
  const auto again = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->infoset(), whole->infoset());
}

// ---- Order ----------------------------------------------------------------------------------------------------

struct Child {
  const char *xml;
  const char *name;
  const char *shown;
};

// All sequences of up to length of three kinds of children. take says what the record shows of a child, or null if the
// child is refused, and moves the state on; show makes a record of what was taken.
template <typename Take, typename Show>
void everySequence(const Child (&children)[3], size_t length, std::string (*around)(std::string_view), const Take &take,
                   const Show &show) {
  Context ctx;
  for (size_t count = 0; count <= length; ++count) {
    size_t all = 1;
    for (size_t i = 0; i < count; ++i)
      all *= 3;
    for (size_t number = 0; number < all; ++number) {
      std::string content;
      std::string refused;
      std::vector<size_t> taken;
      for (size_t rest = number, i = 0; i < count; ++i, rest /= 3) {
        const size_t kind = rest % 3;
        content += children[kind].xml;
        if (take(taken, kind)) {
          taken.push_back(kind);
        } else {
          refused += (refused.empty() ? "" : "; ") + "-41("s + children[kind].name + ")@runtime/reader<SAX";
        }
      }
      const std::string text = around(content);
      rtxErrClear(ctx);
      const Reading reading = decode(ctx, text);
      EXPECT_EQ(reading.status, support::firstStatus(refused)) << text;
      EXPECT_EQ(reading.record, show(taken)) << text;
      EXPECT_EQ(reading.errors, refused) << text;
      rtxErrClear(ctx);
      const Reading checked = validate(ctx, text);
      EXPECT_EQ(checked.status, reading.status) << text;
      EXPECT_EQ(checked.errors, support::byValidator(refused)) << text;
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(DecodeOrder, OneAlternativeThenForeignElements) {
  constexpr Child children[] = {{"<alternative-service><type>t</type><reason>r</reason></alternative-service>",
                                 "alternative-service", "alternative(type=t reason=r)"},
                                {"<service-info>i</service-info>", "service-info", "info=i"},
                                {"<action/>", "action", " <action/>"}};
  everySequence(
      children, 5, document, [](const std::vector<size_t> &taken, size_t kind) { return taken.empty() == (kind != 2); },
      [&](const std::vector<size_t> &taken) {
        std::string shown = taken.empty() ? "none" : children[taken[0]].shown;
        shown += " version=1";
        for (size_t i = 1; i < taken.size(); ++i)
          shown += children[taken[i]].shown;
        return shown;
      });
}

TEST(DecodeOrder, TypeThenReasonThenForeignElements) {
  constexpr Child children[] = {{"<type>t</type>", "type", "type=t"},
                                {"<reason>r</reason>", "reason", " reason=r"},
                                {"<x:f xmlns:x=\"u\"/>", "x:f", " <x:f xmlns:x=\"u\"/>"}};
  everySequence(
      children, 6, alternative,
      [](const std::vector<size_t> &taken, size_t kind) {
        return kind == 2 ? taken.size() >= 2 : taken.size() == kind;
      },
      [&](const std::vector<size_t> &taken) {
        std::string shown = "alternative(";
        shown += taken.empty() ? "type=-" : "type=t";
        shown += taken.size() < 2 ? " reason=-" : " reason=r";
        for (size_t i = 2; i < taken.size(); ++i)
          shown += children[taken[i]].shown;
        return shown + ") version=1";
      });
}

TEST(DecodeOrder, AnyNameIsForeignWhereForeignElementsMayStandButThoseOfTheTypeItself) {
  expectReading({document("<service-info>i</service-info><type/><reason/><ims-3gpp/><version/>"),
                 "info=i version=1 <type/> <reason/> <ims-3gpp/> <version/>", ""});
  expectReading({alternative("<type/><reason/><alternative-service/><service-info/><x:type xmlns:x='u'/><action/>"),
                 "alternative(type= reason= <alternative-service/> <service-info/> <action/>) version=1",
                 "-41(x:type)@runtime/reader<SAX"});
}

TEST(DecodeOrder, TextBetweenElementsIsNoOnes) {
  expectReading({document("a<alternative-service>b<type>t</type>&amp;<reason>r</reason><![CDATA[c]]>"
                          "</alternative-service>d"),
                 "alternative(type=t reason=r) version=1", ""});
}

// ---- The root and its attributes ------------------------------------------------------------------------------

TEST(DecodeRoot, OfAnotherNameIsReportedAndRead) {
  for (const char *root : {"ims3gpp", "IMS-3GPP", "ims-3gp", "ims-3gppX", "type"})
    expectReading({"<"s + root + " version='1'><service-info>i</service-info></" + root + ">", "info=i version=1",
                   "-3(ims-3gpp,"s + root + ")@SAX"});
  expectReading({"<p:body xmlns:p='u' version='1'/>", "none version=1", "-3(ims-3gpp,body)@SAX"});
}

TEST(DecodeVersion, IsADecimal) {
  struct Version {
    const char *text;
    const char *shown;
  };
  for (const Version &v : {Version{"1", "1"},
                           {"1.0", "1"},
                           {"0", "0"},
                           {" 2.50\n", "2.5"},
                           {"-3", "-3"},
                           {"+1", "1"},
                           {".5", "0.5"},
                           {"7.", "7"},
                           {"0001", "1"},
                           {"123456", "123456"}})
    expectReading({"<ims-3gpp version='"s + v.text + "'/>", "none version="s + v.shown, ""});
}

TEST(DecodeVersion, ThatIsNoNumberIsNoErrorAndStaysAsItWas) {
  for (const char *text : {"abc", "", " ", "1e3", "NaN", "INF", "1,5", "0x1", "1 2", "1.2.3", ".", "-", "\xD9\xA1"})
    expectReading(
        {"<ims-3gpp version='"s + text + "'><service-info>i</service-info></ims-3gpp>", "info=i version=unset", ""});
}

TEST(DecodeVersion, ThatIsMissingIsReported) {
  const std::string missing = "-103(tIMS3GPP,version)@runtime/reader<SAX";
  expectReading({"<ims-3gpp/>", "none version=unset", missing});
  expectReading({"<ims-3gpp><service-info>i</service-info></ims-3gpp>", "info=i version=unset", missing});
  expectReading({"<ims-3gpp Version='1'/>", "none version=unset @Version=1", missing});
  expectReading({"<ims-3gpp xmlns:p='u' p:version='1'/>", "none version=unset @p:version=1", missing});
}

struct Attributes {
  const char *xml;
  const char *kept;
};
constexpr Attributes attributeCases[] = {
    {"k='v'", " @k=v"},
    {"b='1' a='2'", " @b=1 @a=2"},
    {"k=''", " @k="},
    {"k=' a &amp; &quot;b&#10;&lt; '", " @k= a & \"b\n< "},
    {"xml:lang='en'", " @xml:lang=en"},
    {"xmlns:p='u' p:k='v'", " @p:k=v"},
    {"u:k='v'", " @u:k=v"},
    // Declarations, and what belongs to schema instances, are not kept.
    {"xmlns='u' xmlns:p='v'", ""},
    {"xmlnsfoo='1' k='v'", " @k=v"},
    {"xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='a b' xsi:nonsense=''", ""},
    {"xsi:type='undeclared'", ""},
    {"xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:type='t' k='v'", " @k=v"},
    // Names that only look like those.
    {"xsi='1' xs='2' xmln='3' xsitype='4'", " @xsi=1 @xs=2 @xmln=3 @xsitype=4"},
};

TEST(DecodeAttributes, ForeignOnesAreKeptAsTheyStand) {
  for (const Attributes &c : attributeCases) {
    expectReading({"<ims-3gpp version='1' "s + c.xml + "/>", "none version=1"s + c.kept, ""});
    expectReading({"<ims-3gpp "s + c.xml + " version='1'/>", "none version=1"s + c.kept, ""});
    expectReading({document("<alternative-service "s + c.xml + "/>"),
                   "alternative(type=- reason=-"s + c.kept + ") version=1", ""});
  }
  expectReading(
      {document("<alternative-service version='2'/>"), "alternative(type=- reason=- @version=2) version=1", ""});
}

TEST(DecodeAttributes, OfTextsAreReportedAndTheTextRead) {
  expectReading({document("<service-info k='1' xmlns:p='u' p:l='2'>i</service-info>"), "info=i version=1",
                 "-33(service-info,k)@runtime/reader; -33(service-info,p:l)@runtime/reader<SAX"});
  expectReading({alternative("<type k='1'>t</type><reason l='2'>r</reason>"), "alternative(type=t reason=r) version=1",
                 "-33(type,k)@runtime/reader<SAX; -33(reason,l)@runtime/reader<SAX"});
  expectReading(
      {document("<service-info xmlns:xsi='"s + instance + "' xsi:type='t'>i</service-info>"), "info=i version=1", ""});
}

// ---- Texts ----------------------------------------------------------------------------------------------------

TEST(DecodeText, IsKeptAsItStands) {
  struct Text {
    const char *content;
    const char *text;
  };
  for (const Text &t : {Text{"", ""},
                        {" a\n b\t", " a\n b\t"},
                        {"a<![CDATA[<b>]]>&amp;<!-- no -->c&#100;<?pi no?>&lt;", "a<b>&cd<"},
                        {"&#13;\r\n", "\r\n"},
                        {"\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"}}) {
    const std::string content = t.content;
    expectReading({document("<service-info>" + content + "</service-info>"), "info="s + t.text + " version=1", ""});
    expectReading({alternative("<type>" + content + "</type><reason>" + content + "</reason>"),
                   "alternative(type="s + t.text + " reason=" + t.text + ") version=1", ""});
  }
}

TEST(DecodeText, ElementsInsideAreNotLookedAtButTheirTextIs) {
  expectReading({alternative("<type>a<b k='1'>b<type>c</type></b>d</type><reason>e<f/>g</reason>"),
                 "alternative(type=abcd reason=eg) version=1", ""});
}

TEST(DecodeText, LongTextArrivesWhole) {
  const std::string text(200000, 't');
  EXPECT_EQ(decode(document("<service-info>" + text + "</service-info>")).record, "info=" + text + " version=1");
}

// Texts that are collected, but whose copy finds no storage.
TEST(DecodeText, ThatCannotBeStoredIsInvalidContent) {
  struct Text {
    std::string before;
    const char *name;
    const char *type;
    std::string after;
    std::string record;
  };
  const Text texts[] = {
      {"", "service-info", "tIMS3GPP", "", "info=- version=1"},
      {"<alternative-service>", "type", "tAlternativeService", "<reason>r</reason></alternative-service>",
       "alternative(type=- reason=r) version=1"},
      {"<alternative-service><type>t</type>", "reason", "tAlternativeService", "</alternative-service>",
       "alternative(type=t reason=-) version=1"},
  };
  const std::string value(40000, 'v');
  for (const Text &t : texts) {
    SCOPED_TRACE(t.name);
    const std::string text = document(t.before + "<" + t.name + ">" + value + "</" + t.name + ">" + t.after);
    bool seen = false;
    for (uint64_t refused = 1; refused < 20 && !seen; ++refused) {
      Context ctx;
      ASSERT_EQ(support::setInput(ctx, text), 0);
      support::faultPlan().arm(refused, false);
      const Reading reading = decodeInput(ctx);
      support::faultPlan().disarm();
      if (reading.status != STATUS_INVALID_CONTENT) continue;
      seen = true;
      // A parameter is cut at 1024 bytes.
      EXPECT_EQ(reading.errors, "-44(" + value.substr(0, 1024) + "," + t.type + "," + t.name + ")@SAX");
      EXPECT_EQ(reading.record, t.record) << "the selector was set at the start";
    }
    EXPECT_TRUE(seen) << "no allocation is that of the copy";
  }
}

TEST(DecodeText, SelectorIsSetAtTheStart) {
  struct Cut {
    const char *text;
    const char *record;
  };
  for (const Cut &c :
       {Cut{"<ims-3gpp version='1'", ""},
        {"<ims-3gpp version='1'>", "none version=1"},
        {"<ims-3gpp version='1'><service-info>abc", "info=- version=1"},
        {"<ims-3gpp version='1'><alternative-service k='v'>", "alternative(type=- reason=- @k=v) version=1"},
        {"<ims-3gpp version='1'><alternative-service><type>t</type><reason>r",
         "alternative(type=t reason=-) version=1"},
        {"<ims-3gpp version='1'><alternative-service><type>t</type><reason>r</reason><action>a",
         "alternative(type=t reason=r -) version=1"},
        {"<ims-3gpp version='1'><service-info>i</service-info><x><y/>", "info=i version=1 -"}}) {
    const Reading reading = decode(c.text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << c.text;
    EXPECT_EQ(reading.record, *c.record == '\0' ? "none version=unset" : c.record) << c.text;
  }
}

TEST(DecodeText, RecordWithoutTheTextCanBeWrittenAndFreed) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, "<ims-3gpp version='1'><service-info>abc"), 0);
  auto record = Record<tIMS3GPP>::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_ims_3gpp(ctx, record), STATUS_PARSE_FAILED);
  record.owned = true;
  rtxErrClear(ctx);
  EXPECT_EQ(encodeRecord(ctx, record), "<ims-3gpp version=\"1\"><service-info/></ims-3gpp>");
}

// ---- Bodies as call-session control sends them ----------------------------------------------------------------

TEST(RealBodies, EmergencyAsAnElement) {
  expectReading({"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<ims-3gpp version=\"1\"><alternative-service><type><emergency/></type><reason/>"
                 "</alternative-service></ims-3gpp>",
                 "alternative(type= reason=) version=1", ""});
  expectReading({alternative("<type>\n <emergency/>\n</type><reason>Use another way</reason>"),
                 "alternative(type=\n \n reason=Use another way) version=1", ""});
}

TEST(RealBodies, EmergencyAsText) {
  expectReading({alternative("<type>emergency</type><reason>Use another way</reason>"),
                 "alternative(type=emergency reason=Use another way) version=1", ""});
}

TEST(RealBodies, ActionIsKeptBehindTheReason) {
  expectReading({"<ims-3gpp version='1'>\r\n <alternative-service>\r\n  <type>restoration</type>\r\n"
                 "  <reason>Server restarts</reason>\r\n  <action>initial-registration</action>\r\n"
                 " </alternative-service>\r\n</ims-3gpp>\r\n",
                 "alternative(type=restoration reason=Server restarts <action>initial-registration</action>) version=1",
                 ""});
  expectReading({alternative("<type>restoration</type><reason></reason><action>initial-registration</action>"),
                 "alternative(type=restoration reason= <action>initial-registration</action>) version=1", ""});
}

TEST(RealBodies, WithoutAReasonTheActionIsLeftOut) {
  expectReading({alternative("<type>restoration</type><action>initial-registration</action>"),
                 "alternative(type=restoration reason=-) version=1", "-41(action)@runtime/reader<SAX"});
  expectReading({alternative("<type>restoration</type>"), "alternative(type=restoration reason=-) version=1", ""});
}

TEST(RealBodies, WithoutAVersionTheRestIsKept) {
  expectReading({"<ims-3gpp><alternative-service><type>emergency</type><reason>r</reason><action>a</action>"
                 "</alternative-service></ims-3gpp>",
                 "alternative(type=emergency reason=r <action>a</action>) version=unset",
                 "-103(tIMS3GPP,version)@runtime/reader<SAX"});
}

TEST(RealBodies, ServiceProfilePastedIntoServiceInfo) {
  expectReading({document("<service-info><Profile xmlns=\"urn:p\" id=\"1\"><Identity>sip:a@b</Identity>"
                          "<Filter><Priority>0</Priority></Filter></Profile></service-info>"),
                 "info=sip:a@b0 version=1", ""});
  expectReading({document("<service-info><![CDATA[<Profile><Priority>0</Priority></Profile>]]></service-info>"),
                 "info=<Profile><Priority>0</Priority></Profile> version=1", ""});
  expectReading({document("<service-info>&lt;Profile/&gt;</service-info><Profile/>"),
                 "info=<Profile/> version=1 <Profile/>", ""});
}

TEST(RealBodies, DocumentTypeIsRefused) {
  const std::string type = "<!DOCTYPE ims-3gpp [<!ELEMENT ims-3gpp (service-info)>"
                           "<!ATTLIST ims-3gpp version CDATA #REQUIRED><!ELEMENT service-info (#PCDATA)>]>";
  const Reading reading = decode(type + document("<service-info>i</service-info>"));
  EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
  EXPECT_EQ(reading.record, "none version=unset");
}

// ---- Places and statuses --------------------------------------------------------------------------------------

TEST(Decode, ErrorsKnowTheirPlace) {
  const std::string text = "<body>\n <service-info k='1'>i</service-info>\n <service-info/>\n</body>";
  const std::vector<std::string> expected = {
      "-3 1:1+0 /body", "-103 1:1+0 /body", "-33 2:16+" + std::to_string(text.find("k='1'")) + " /body/service-info",
      "-41 3:2+" + std::to_string(text.find("<service-info/>")) + " /body/service-info"};
  for (bool checking : {false, true}) {
    Context ctx;
    if (checking) validate(ctx, text);
    if (!checking) decode(ctx, text);
    std::vector<std::string> places;
    for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
      places.push_back(std::to_string(error->status) + " " + support::placeText(*error));
    EXPECT_EQ(places, expected);
  }
}

TEST(Decode, EachPlaceInTheSourcesIsDistinct) {
  const std::string documents[] = {"<body version='1'/>",   "<ims-3gpp/>",
                                   document("<bogus/>"),    document("<service-info k='1'/>"),
                                   alternative("<bogus/>"), alternative("<type k='1'/>")};
  for (bool checking : {false, true}) {
    std::set<int> lines;
    for (const std::string &text : documents) {
      SCOPED_TRACE(text);
      Context ctx;
      ASSERT_EQ(support::setInput(ctx, text), 0);
      EXPECT_LT(checking ? QxXmlV_ims_3gpp(ctx) : decodeStatus(ctx), 0);
      ASSERT_EQ(rtxErrCount(ctx), 1u);
      const RtxError &error = *rtxErrAt(ctx, 0);
      const RtxErrorSite &site = error.sites[error.siteCount - 1];
      EXPECT_STREQ(site.path,
                   checking ? "xmlAddOns/addons/IMS/ImCn/QxXmlImCnVldt" : "xmlAddOns/addons/IMS/ImCn/QxXmlImCnSAX");
      lines.insert(site.line);
    }
    EXPECT_EQ(lines.size(), std::size(documents));
  }
}

TEST(Decode, WithoutInputTheRecordIsNotTouched) {
  Context ctx;
  auto record = Record<tIMS3GPP>::uninitialised(ctx);
  unsigned char before[sizeof(tIMS3GPP)];
  std::memset(before, pattern, sizeof before);
  EXPECT_EQ(QxXmlD_ims_3gpp(ctx, record), STATUS_READER_FAILED);
  EXPECT_EQ(errorsOf(ctx), "-26@Dec");
  EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "xmlAddOns/addons/IMS/ImCn/QxXmlImCnDec");
  EXPECT_EQ(std::memcmp(&*record, before, sizeof before), 0);

  RuntimeContext none{};
  EXPECT_EQ(QxXmlD_ims_3gpp(&none, record), STATUS_READER_FAILED);
  EXPECT_EQ(std::memcmp(&*record, before, sizeof before), 0);
}

TEST(Decode, InputThatIsNotWellFormedIsAParseFailure) {
  for (const std::string &text : {""s, " "s, "x"s, "<ims-3gpp>"s, document("") + "<more/>", document("&undefined;"),
                                  "<ims-3gpp version='1' version='2'/>"s, document("\x01"), document("\xFF")}) {
    EXPECT_EQ(decode(text).status, STATUS_PARSE_FAILED) << text;
    EXPECT_EQ(validate(text).status, STATUS_PARSE_FAILED) << text;
  }
}

TEST(Decode, StatusOfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  EXPECT_EQ(decode(ctx, "<body version='1'><bogus/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -41, -104}));
}

TEST(Decode, EarlierErrorIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, "<ims-3gpp/>").status, STATUS_MISSING_ATTRIBUTE);
  const Reading second = decode(ctx, document("<service-info>i</service-info>"));
  EXPECT_EQ(second.status, STATUS_MISSING_ATTRIBUTE);
  EXPECT_EQ(second.record, "info=i version=1");
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Decode, NoErrorBeyondTheLimitIsRecorded) {
  const std::string text = "<body><bogus/><alternative-service><action/><type k='1'>t</type><reason>r</reason>"
                           "<type/></alternative-service></body>";
  const std::vector<int> all = {-3, -103, -41, -41, -33, -41};
  for (bool checking : {false, true}) {
    for (uint32_t limit = 0; limit <= all.size(); ++limit) {
      Context ctx;
      rtxSetErrorLimit(ctx, limit);
      const Reading reading = checking ? validate(ctx, text) : decode(ctx, text);
      EXPECT_EQ(support::statuses(ctx), std::vector<int>(all.begin(), all.begin() + limit));
      EXPECT_EQ(reading.status, limit == 0 ? 0 : STATUS_ROOT_MISMATCH);
      if (!checking) {
        EXPECT_EQ(reading.record, "alternative(type=t reason=r) version=unset");
      }
    }
  }
}

} // namespace
