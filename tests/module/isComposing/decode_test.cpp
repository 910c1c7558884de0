// Reading a composing indication into a record.
#include "composing.h"
#include "xmlJudge.h"

#include <cstring>

using namespace composing;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

constexpr std::string_view fullBody =
    "<q:isComposing>\n  <q:state>active</q:state>\n  <q:lastactive>2024-01-02T03:04:05Z</q:lastactive>\n"
    "  <q:contenttype>text/plain</q:contenttype>\n  <q:refresh>90</q:refresh>\n"
    "  <x:f xmlns:x=\"urn:x\">t<x:g/></x:f>\n</q:isComposing>";
constexpr std::string_view fullRecord =
    "state=active lastactive=2024-01-02T03:04:05Z contenttype=text/plain refresh=90 "
    "any=<x:f xmlns:x=\"urn:x\">t<x:g/></x:f>";

TEST(Decode, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(reading.record, fullRecord);
    EXPECT_EQ(reading.errors, "");
  });
}

TEST(Decode, ErrorsNameTheElementAsItIsSpelled) {
  everySpelling("<q:isComposing><q:state>a</q:state><q:refresh>abc</q:refresh></q:isComposing>", namespaceUri,
                [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_INVALID_CONTENT);
                  EXPECT_EQ(reading.record, "state=a");
                  EXPECT_EQ(reading.errors,
                            "-44(abc,tns__isComposing," + document.qualified("refresh") + ")@QxXmlIsComposingSAX:251");
                });
  everySpelling("<q:isComposing><q:lastactive>x</q:lastactive><q:state>a</q:state></q:isComposing>", namespaceUri,
                [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
                  EXPECT_EQ(reading.record, "state=a");
                  EXPECT_EQ(reading.errors,
                            "-41(" + document.qualified("lastactive") + ")@runtime/reader<QxXmlIsComposingSAX:110");
                });
  everySpelling("<q:isComposing><q:state k=\"1\">a</q:state></q:isComposing>", namespaceUri,
                [](RuntimeContext *ctx, const SpelledDocument &) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE);
                  EXPECT_EQ(reading.record, "state=a") << "the child is read all the same";
                  EXPECT_EQ(reading.errors, "-33(state,k)@runtime/reader<QxXmlIsComposingSAX:133");
                });
  everySpelling("<q:isComposing><q:state>a</q:state><q:bogus>b<q:refresh>5</q:refresh></q:bogus>"
                "<q:refresh>6</q:refresh></q:isComposing>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  if (document.spelling == support::Spelling::noNamespace) {
                    // Nothing tells it from an element of another vocabulary, after which nothing of ours may follow.
                    EXPECT_EQ(reading.errors, "-41(refresh)@runtime/reader<QxXmlIsComposingSAX:110");
                    return;
                  }
                  EXPECT_EQ(reading.record, "state=a refresh=6");
                  EXPECT_EQ(reading.errors,
                            "-41(" + document.qualified("bogus") + ")@runtime/reader<QxXmlIsComposingSAX:110");
                });
}

TEST(Decode, EveryPrefixFailsAndReleasesAll) {
  for (support::Spelling spelling : support::allSpellings)
    support::everyPrefix(support::spell(fullBody, namespaceUri, spelling).text, decodeStatus);
  support::everyPrefix(
      document("<state k='1'>a<!--c--><![CDATA[d]]>&#65;</state><bogus><x/></bogus><refresh>0</refresh>"),
      decodeStatus);
}

// All sequences of up to four children, checked against the rule in words: "state" first and once, the optional
// children in their order, elements of other vocabularies behind the first and nothing of ours behind those.
TEST(Decode, ChildrenComeInTheirOrder) {
  struct Child {
    const char *name;
    const char *xml;
  };
  constexpr Child children[] = {{"state", "<state>s</state>"},
                                {"lastactive", "<lastactive>2024-01-02T03:04:05Z</lastactive>"},
                                {"contenttype", "<contenttype>c</contenttype>"},
                                {"refresh", "<refresh>5</refresh>"},
                                {"x:f", "<x:f xmlns:x=\"u\"/>"}};
  constexpr size_t kinds = std::size(children);
  constexpr size_t foreign = kinds - 1;
  constexpr const char *shown[] = {"", " lastactive=2024-01-02T03:04:05Z", " contenttype=c", " refresh=5",
                                   " any=<x:f xmlns:x=\"u\"/>"};
  Context ctx;
  size_t sequences = 0;
  for (size_t length = 0; length <= 5; ++length) {
    size_t all = 1;
    for (size_t i = 0; i < length; ++i)
      all *= kinds;
    for (size_t number = 0; number < all; ++number) {
      std::string body;
      std::string members;
      std::string refused;
      std::string refusedByValidator;
      size_t next = 0; // the first kind that may still come, "state" excepted
      for (size_t rest = number, i = 0; i < length; ++i, rest /= kinds) {
        const size_t kind = rest % kinds;
        body += children[kind].xml;
        const bool allowed = next == 0 ? kind == 0 : kind >= next;
        if (allowed) {
          members += shown[kind];
          next = kind == foreign ? foreign : kind + 1;
        } else {
          const std::string error = (refused.empty() ? "" : "; ") + "-41("s + children[kind].name + ")@runtime/reader<";
          refused += error + "QxXmlIsComposingSAX:110";
          refusedByValidator += error + "QxXmlIsComposingVldt:109";
        }
      }
      const int status = refused.empty() ? 0 : STATUS_UNEXPECTED_ELEMENT;
      const std::string text = document(body);
      rtxErrClear(ctx);
      const Reading reading = decode(ctx, text);
      EXPECT_EQ(reading.status, status) << text;
      EXPECT_EQ(reading.record, (next == 0 ? "state=-" : "state=s") + members) << text;
      EXPECT_EQ(reading.errors, refused) << text;
      rtxErrClear(ctx);
      const Reading checked = validate(ctx, text);
      EXPECT_EQ(checked.status, status) << text;
      EXPECT_EQ(checked.errors, refusedByValidator) << text;
      ++sequences;
      if (testing::Test::HasFailure()) return;
    }
  }
  EXPECT_EQ(sequences, 1u + 5 + 25 + 125 + 625 + 3125);
}

TEST(Decode, NamespacesDecideWhatIsForeign) {
  struct Case {
    const char *content;
    const char *record;
    const char *errors;
  };
  const Case cases[] = {
      // A name of ours in another namespace is another vocabulary's.
      {"<state>s</state><x:refresh xmlns:x=\"u\">7</x:refresh>", "state=s any=<x:refresh xmlns:x=\"u\">7</x:refresh>",
       ""},
      {"<state>s</state><refresh xmlns=\"u\">7</refresh>", "state=s any=<refresh xmlns=\"u\">7</refresh>", ""},
      // Other namespaces of the library are as foreign as any.
      {"<state>s</state><cp:rule xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"/>",
       "state=s any=<cp:rule xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"/>", ""},
      // Names of ours without a namespace are ours, others are foreign.
      {"<state xmlns=\"\">s</state>", "state=s", ""},
      {"<state>s</state><bogus xmlns=\"\"/>", "state=s any=<bogus xmlns=\"\"/>", ""},
      // Where no foreign element may stand, the name alone is tried.
      {"<x:state xmlns:x=\"u\">s</x:state>", "state=s", ""},
      {"<x:f xmlns:x=\"u\"/><state>s</state>", "state=s", "-41(x:f)@runtime/reader<QxXmlIsComposingSAX:110"},
      // An undeclared prefix is no namespace.
      {"<state>s</state><u:refresh>7</u:refresh>", "state=s refresh=7", ""},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.content);
    const Reading reading = decode(document(c.content));
    EXPECT_EQ(reading.status, *c.errors == '\0' ? 0 : STATUS_UNEXPECTED_ELEMENT);
    EXPECT_EQ(reading.record, c.record);
    EXPECT_EQ(reading.errors, c.errors);
  }
}

TEST(Decode, RefreshConvertsOrNot) {
  const auto number = [](const char *text, uint32_t value) {
    const Reading reading = decode(document("<state>s</state><refresh>"s + text + "</refresh>"));
    EXPECT_EQ(reading.status, 0) << reading.errors;
    EXPECT_EQ(reading.record, "state=s refresh=" + std::to_string(value)) << text;
  };
  number("1", 1);
  number(" 5 ", 5);
  number("\n\t5\n", 5);
  number("0000000000000000000000007", 7);
  number("4294967295", 4294967295u);
  number("<![CDATA[12]]>3", 123);
  number("1<!-- two -->2<?three?>&#51;", 123);

  for (const char *text : {"", "   ", "abc", "5 5", "-1", "1.0", "1e3", "0x10", "4294967296", "99999999999999999999",
                           "5a", "\xD9\xA3", "5\xC2\xA0"}) {
    const Reading reading = decode(document("<state>s</state><refresh>"s + text + "</refresh>"));
    EXPECT_EQ(reading.status, STATUS_INVALID_CONTENT) << text;
    EXPECT_EQ(reading.record, "state=s");
    EXPECT_EQ(reading.errors, "-44("s + text + ",tns__isComposing,refresh)@QxXmlIsComposingSAX:251");
  }
}

TEST(Decode, RefreshThatDoesNotConvertKeepsItsValue) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document("<state>s</state><refresh>abc</refresh>")), 0);
  auto record = Record::uninitialised(ctx);
  record->tns_refresh = 4711;
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, record), STATUS_INVALID_CONTENT);
  record.owned = true;
  EXPECT_EQ(record->tns_refresh, 4711u);
  EXPECT_EQ(record->m, 0u);
}

TEST(Decode, RefreshOfZeroIsStoredButAbsent) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document("<state>s</state><refresh>0</refresh><x:f xmlns:x=\"u\"/>")), 0);
  auto record = Record::uninitialised(ctx);
  record->tns_refresh = 4711;
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, record), STATUS_CONSTRAINT_VIOLATION);
  record.owned = true;
  EXPECT_EQ(support::errors(ctx), "-16(tns__isComposing.tns_refresh,0u)@QxXmlIsComposingSAX:236");
  EXPECT_EQ(record->tns_refresh, 0u);
  EXPECT_EQ(dump(record.get()), "state=s any=<x:f xmlns:x=\"u\"/>");
}

TEST(Decode, TextIsKeptAsItStands) {
  struct Case {
    const char *content;
    const char *text;
  };
  const Case cases[] = {{"", ""},
                        {" active ", " active "},
                        {"typing furiously", "typing furiously"},
                        {"a\n b\t", "a\n b\t"},
                        {"a<![CDATA[<b>]]>&amp;<!-- no -->c&#100;<?pi no?>&lt;", "a<b>&cd<"},
                        {"&#13;\r\n", "\r\n"},
                        {"\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"}};
  for (const Case &c : cases) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, document("<state>"s + c.content + "</state><lastactive>" + c.content +
                                              "</lastactive><contenttype>" + c.content + "</contenttype>")),
              0);
    auto record = Record::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_tns_isComposing(ctx, record), 0) << c.content;
    record.owned = true;
    EXPECT_EQ(record->m, 3u);
    for (const RtxXmlString &text : {record->tns_state, record->tns_lastactive, record->tns_contenttype}) {
      EXPECT_STREQ(text.value, c.text);
      EXPECT_FALSE(text.cdata);
    }
  }
}

TEST(Decode, EmptyElementsInBothForms) {
  for (const char *content :
       {"<state/><lastactive/><contenttype/>", "<state></state><lastactive></lastactive><contenttype></contenttype>"})
    EXPECT_EQ(decode(document(content)).record, "state= lastactive= contenttype=");
  EXPECT_EQ(decode(document("<state>s</state><refresh/>")).errors,
            "-44(,tns__isComposing,refresh)@QxXmlIsComposingSAX:251");
}

TEST(Decode, LongTextArrivesWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "line " + std::to_string(i) + "\n";
  EXPECT_EQ(decode(document("<state>" + text + "</state><refresh>5</refresh>")).record, "state=" + text + " refresh=5");
}

TEST(Decode, TextBetweenChildrenIsNoOnes) {
  EXPECT_EQ(decode(document("one<state>s</state>two &amp; <![CDATA[three]]><refresh>5</refresh>four")).record,
            "state=s refresh=5");
}

TEST(Decode, ElementsInsideASimpleChildAreNotLookedAt) {
  const Reading reading =
      decode(document("<state>a<b>b<refresh>c</refresh></b>d</state><refresh>1<b>2</b>3</refresh>"));
  EXPECT_EQ(reading.status, 0) << reading.errors;
  EXPECT_EQ(reading.record, "state=abcd refresh=123");
}

TEST(Decode, NothingIsRequiredOfAnEmptyDocument) {
  for (const std::string &text : {document(""), document("  \n "), "<isComposing/>"s}) {
    const Reading reading = decode(text);
    EXPECT_EQ(reading.status, 0) << reading.errors;
    EXPECT_EQ(reading.record, "state=-");
  }
}

TEST(Decode, MissingStateShowsAtTheNextChildOnly) {
  const Reading reading = decode(document("<refresh>5</refresh>"));
  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(reading.record, "state=-");
}

TEST(Decode, RootOfAnotherNameIsReportedAndRead) {
  struct Case {
    const char *root;
    const char *found;
  };
  constexpr Case cases[] = {{"composing", "composing"},
                            {"p:composing", "composing"},
                            {"iscomposing", "iscomposing"},
                            {"isComposingX", "isComposingX"},
                            {"isComposin", "isComposin"}};
  for (const Case &c : cases) {
    const std::string text = "<"s + c.root + " xmlns:p=\"" + namespaceUri +
                             "\"><p:state>s</p:state><p:refresh>5</p:refresh></" + c.root + ">";
    const Reading reading = decode(text);
    EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
    EXPECT_EQ(reading.errors, "-3(isComposing,"s + c.found + ")@QxXmlIsComposingSAX:73");
    EXPECT_EQ(reading.record, "state=s refresh=5");
  }
}

TEST(Decode, RootIsKnownByItsLocalNameAlone) {
  const Reading reading =
      decode("<isComposing xmlns=\"urn:other\" xmlns:t=\""s + namespaceUri + "\"><t:state>s</t:state></isComposing>");
  EXPECT_EQ(reading.status, 0) << reading.errors;
  EXPECT_EQ(reading.record, "state=s");
}

TEST(Decode, AttributesOfTheRootAreNotLookedAt) {
  const Reading reading =
      decode("<isComposing xmlns=\""s + namespaceUri +
             "\" k=\"v\" xml:lang=\"en\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
             "xsi:schemaLocation=\"a b\" xsi:nonsense=\"\" xmlnsx=\"y\"><state>s</state></isComposing>");
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
  EXPECT_EQ(reading.record, "state=s");
}

TEST(Decode, AttributesOfChildrenAreReportedOneByOne) {
  const Reading reading =
      decode(document("<state k=\"1\" xmlns:p=\"u\" p:l=\"2\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                      "xsi:type=\"t\">s</state><lastactive m=\"\">l</lastactive>"));
  EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE);
  EXPECT_EQ(reading.errors, "-33(state,k)@runtime/reader; -33(state,p:l)@runtime/reader<QxXmlIsComposingSAX:133; "
                            "-33(lastactive,m)@runtime/reader<QxXmlIsComposingSAX:133");
  EXPECT_EQ(reading.record, "state=s lastactive=l");
}

TEST(Decode, AttributesOfForeignElementsAreKept) {
  const Reading reading = decode(document("<state>s</state><x:f xmlns:x=\"u\" k=\"1\" x:l=\"2\"/>"));
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.record, "state=s any=<x:f xmlns:x=\"u\" k=\"1\" x:l=\"2\"/>");
}

TEST(Decode, ForeignElementsMeanTheSameOnTheirOwn) {
  const std::string text = "<p:isComposing xmlns:p=\""s + namespaceUri +
                           "\" xmlns:x=\"urn:x\" xmlns=\"urn:default\"><p:state>s</p:state>"
                           "<x:f k='\"'>t &amp; <g><!--c--><p:state x:l=\"&#10;\">&lt;</p:state></g></x:f>"
                           "<g/><x:h xmlns:x=\"urn:inner\"><x:i/></x:h></p:isComposing>";
  const auto whole = support::parseNamespacedXml(text);
  ASSERT_TRUE(whole);
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  auto record = Record::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, record), 0) << support::errors(ctx);
  record.owned = true;
  const std::vector<std::string> fragments = foreignTexts(record->anyElems);
  ASSERT_EQ(fragments.size(), 3u);
  for (size_t i = 0; i < fragments.size(); ++i) {
    const auto fragment = support::parseNamespacedXml(fragments[i]);
    ASSERT_TRUE(fragment) << fragments[i];
    EXPECT_EQ(fragment->infoset(), whole->children[i + 1].infoset());
  }

  // Written back, they mean the same still.
  const auto again = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->infoset(), whole->infoset());
}

TEST(Decode, ForeignFragmentsAreWrittenBackUnchanged) {
  const std::string elements = "<x:f xmlns:x=\"u\" k=\"1\">t<x:g>&lt;&amp;</x:g>u</x:f><y xmlns=\"v\"/>";
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document("<state>s</state><refresh>1</refresh>" + elements)), 0);
  auto record = Record::uninitialised(ctx);
  ASSERT_EQ(QxXmlD_tns_isComposing(ctx, record), 0) << support::errors(ctx);
  record.owned = true;
  EXPECT_NE(encodeRecord(ctx, record).find("</tns:refresh>" + elements + "</tns:isComposing>"), std::string::npos);
}

TEST(Decode, ErrorsKnowTheirPlace) {
  const std::string text = "<isComposing xmlns=\""s + namespaceUri +
                           "\">\n <state k='1'>s</state>\n <refresh>abc</refresh>\n" + " <bogus/>\n</isComposing>";
  Context ctx;
  EXPECT_EQ(decode(ctx, text).status, STATUS_UNKNOWN_ATTRIBUTE);
  ASSERT_EQ(support::statuses(ctx), std::vector<int>({-33, -44, -41}));
  const auto place = [&](uint32_t index) { return support::placeText(*rtxErrAt(ctx, index)); };
  const auto at = [&](const char *where, const char *position) {
    return position + "+"s + std::to_string(text.find(where));
  };
  EXPECT_EQ(place(0), at("k='1'", "2:9") + " /isComposing/state");
  EXPECT_EQ(place(1), at("abc", "3:11") + " /isComposing/refresh");
  EXPECT_EQ(place(2), at("<bogus", "4:2") + " /isComposing/bogus");
}

TEST(Decode, WithoutInputTheRecordIsNotTouched) {
  Context ctx;
  tns__isComposing record;
  std::memset(&record, 0xA5, sizeof record);
  const tns__isComposing before = record;
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, &record), STATUS_READER_FAILED);
  EXPECT_EQ(support::errors(ctx), "-26@QxXmlIsComposingDec:62");
  EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);

  rtxErrClear(ctx);
  ASSERT_EQ(support::setInput(ctx, document("")), 0);
  ASSERT_EQ(rtxSetInput(ctx, nullptr, 0), 0) << "takes the input away";
  EXPECT_EQ(QxXmlD_tns_isComposing(ctx, &record), STATUS_READER_FAILED);
  EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
}

TEST(Decode, UnusableContextIsRefusedBeforeTheRecordIsTouched) {
  RuntimeContext none{};
  tns__isComposing record;
  std::memset(&record, 0xA5, sizeof record);
  const tns__isComposing before = record;
  EXPECT_EQ(QxXmlD_tns_isComposing(&none, &record), STATUS_READER_FAILED);
  EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
  EXPECT_EQ(QxXmlV_tns_isComposing(&none), STATUS_READER_FAILED);
}

TEST(Decode, InputThatIsNotWellFormedIsAParseFailure) {
  for (const std::string &text :
       {""s, " "s, "x"s, "<isComposing>"s, "<isComposing></iscomposing>"s, document("<state>s</state>") + "<more/>",
        document("<state>&undefined;</state>"), document("<state k='1' k='2'/>"), document("<state>\x01</state>"),
        document("<state>\xFF</state>")}) {
    const Reading reading = decode(text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << text;
    EXPECT_FALSE(reading.record.empty()) << "the record was initialised";
    EXPECT_NE(reading.errors.find("-104"), std::string::npos) << reading.errors;
    EXPECT_EQ(validate(text).status, STATUS_PARSE_FAILED) << text;
  }
}

TEST(Decode, KeepsWhatWasReadBeforeAFailure) {
  const Reading reading =
      decode("<isComposing xmlns=\""s + namespaceUri + "\"><state>s</state><contenttype>c</contenttype><refresh>7");
  EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
  EXPECT_EQ(reading.record, "state=s contenttype=c");
}

TEST(Decode, StatusOfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  const std::string whole = document("<state>s</state><bogus/>");
  const Reading reading = decode(ctx, whole.substr(0, whole.rfind("</")));
  EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
  EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(rtxErrGetLastError(ctx), STATUS_PARSE_FAILED);
}

TEST(Decode, FirstStatusRecordedIsReturned) {
  Context ctx;
  const Reading reading = decode(ctx, "<composing xmlns=\""s + namespaceUri +
                                          "\"><state k=\"1\">s</state><bogus/><refresh>0</refresh></composing>");
  EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -33, -41, -16}));

  EXPECT_EQ(decode(document("<state>s</state><refresh>abc</refresh><bogus/>")).status, STATUS_INVALID_CONTENT);
  EXPECT_EQ(decode(document("<state>s</state><bogus/><refresh>abc</refresh>")).status, STATUS_UNEXPECTED_ELEMENT);
}

TEST(Decode, EarlierErrorIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, document("<state>a</state><refresh>abc</refresh>")).status, STATUS_INVALID_CONTENT);
  const Reading second = decode(ctx, document("<state>idle</state><refresh>9</refresh>"));
  EXPECT_EQ(second.status, STATUS_INVALID_CONTENT);
  EXPECT_EQ(second.record, "state=idle refresh=9");
  EXPECT_EQ(rtxErrCount(ctx), 1u);
  EXPECT_EQ(validate(ctx, document("<state>idle</state>")).status, STATUS_INVALID_CONTENT);
  rtxErrClear(ctx);
  EXPECT_EQ(decode(ctx, document("<state>idle</state>")).status, 0);
}

TEST(Decode, DocumentCutOffLeavesNothingForTheNext) {
  Context ctx;
  for (const char *cut : {"<state>ab", "<state>a</state><refresh>1", "<state>a</state><x:f xmlns:x=\"u\"><x:g>te",
                          "<state>a</state><x:f xmlns:x=\"u\" xmlns=\"v\">"}) {
    EXPECT_EQ(decode(ctx, "<isComposing xmlns=\"urn:other\" xmlns:p=\"urn:p\">"s + cut).status, STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    // Without a declaration of its own, a binding left over would show.
    const Reading next = decode(ctx, "<isComposing><state>c</state><p:refresh>5</p:refresh></isComposing>");
    EXPECT_EQ(next.status, 0) << next.errors;
    EXPECT_EQ(next.record, "state=c refresh=5");
  }
}

TEST(Decode, SameInputCanBeReadAgain) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document("<state>s</state>")), 0);
  EXPECT_EQ(QxXmlV_tns_isComposing(ctx), 0);
  EXPECT_EQ(decodeInput(ctx).record, "state=s");
  EXPECT_EQ(decodeInput(ctx).record, "state=s");
}

TEST(Decode, NoErrorBeyondTheLimitIsRecorded) {
  const std::string bad = "<composing xmlns=\""s + namespaceUri +
                          "\"><state k=\"1\">s</state><bogus/><refresh>0</refresh><refresh>abc</refresh></composing>";
  for (uint32_t limit = 0; limit <= 5; ++limit) {
    Context ctx;
    rtxSetErrorLimit(ctx, limit);
    const Reading reading = decode(ctx, bad);
    EXPECT_EQ(rtxErrCount(ctx), limit) << reading.errors;
    EXPECT_EQ(reading.status, limit == 0 ? 0 : STATUS_ROOT_MISMATCH) << "limit " << limit;
    EXPECT_EQ(reading.record, "state=s");
  }
}

TEST(Decode, ErrorLimitIsCountedAnewForEachReader) {
  Context ctx([](RuntimeOptions &options) { options.errorLimit = 1; });
  for (uint32_t call = 1; call <= 3; ++call) {
    decode(ctx, document("<bogus/><bogus/>"));
    EXPECT_EQ(rtxErrCount(ctx), call);
  }
}

} // namespace
