// Reading a rule set into a record.
#include "reading.h"

#include <algorithm>
#include <cstring>
#include <set>

using namespace reading;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

// A foreign element without content, as it is kept.
std::string f(const char *name) { return "<f:"s + name + " xmlns:f=\"urn:f\"/>"; }

TEST(Decode, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx);
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(reading.record, fullRecord);
    EXPECT_EQ(reading.errors, "");
  });
}

TEST(Decode, ErrorsNameTheElementAsItIsSpelled) {
  everySpelling("<q:ruleset><q:rulex><q:rule id='no'/></q:rulex><q:rule id='r'><q:bogus1>t</q:bogus1><q:conditions>"
                "<q:identity><q:many><q:except><q:bogus2/></q:except></q:many></q:identity>"
                "<q:sphere value='s'><q:bogus3/></q:sphere>"
                "<q:validity><q:until>u</q:until></q:validity></q:conditions></q:rule></q:ruleset>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  EXPECT_EQ(reading.record, "rule(r conditions[identity[many(except())] sphere(s) validity(-,-)])");
                  EXPECT_EQ(reading.errors, "-3(cp_rule," + document.qualified("rulex") + ")@SAX; -41(" +
                                                document.qualified("bogus1") + ")@runtime/reader<SAX; -41(" +
                                                document.qualified("bogus2") + ")@SAX; -41(" +
                                                document.qualified("bogus3") + ")@SAX; -41(" +
                                                document.qualified("until") + ")@runtime/reader<SAX");
                });
  // Beside a wildcard an unknown name without a namespace is foreign.
  everySpelling("<q:ruleset><q:rule id='r'><q:conditions><q:identity><q:one id='o'><q:bogus1/></q:one>"
                "<q:many><q:bogus2/></q:many><q:bogus3/></q:identity><q:bogus4/></q:conditions></q:rule></q:ruleset>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const Reading reading = decodeInput(ctx);
                  if (document.spelling == support::Spelling::noNamespace) {
                    EXPECT_EQ(reading.errors, "");
                    EXPECT_EQ(reading.record,
                              "rule(r conditions[identity[one(o any=<bogus1 xmlns=\"\"/>) many(any=<bogus2 "
                              "xmlns=\"\"/>) any=<bogus3 xmlns=\"\"/>] any[<bogus4 xmlns=\"\"/>]])");
                    return;
                  }
                  EXPECT_EQ(reading.record, "rule(r conditions[identity[one(o) many()]])");
                  EXPECT_EQ(reading.errors, "-41(" + document.qualified("bogus1") + ")@runtime/reader<SAX; -41(" +
                                                document.qualified("bogus2") + ")@runtime/reader<SAX; -41(" +
                                                document.qualified("bogus3") + ")@SAX; -41(" +
                                                document.qualified("bogus4") + ")@SAX");
                });
}

TEST(Decode, EveryPrefixFailsAndReleasesAll) {
  for (support::Spelling spelling : support::allSpellings)
    support::everyPrefix(support::spell(fullBody, namespaceUri, spelling).text, decodeStatus);
  support::everyPrefix(document("<rulex k='v'/>" + rule("<bogus/><transformations/>") +
                                conditions("<identity/><sphere/><validity><until/></validity><bogus><f:x/></bogus>")),
                       decodeStatus);
}

TEST(Decode, EmptyRuleSet) {
  expectReading({"", "", ""});
  expectReading({"\n <!-- nothing --> \n", "", ""});
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, "<ruleset/>"), 0);
  auto record = Record::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), 0) << errorList(ctx);
  record.owned = true;
  EXPECT_EQ(record->cp_rule.count, 0u);
  EXPECT_EQ(record->cp_rule.head, nullptr);
  const std::string written = encodeRecord(ctx, record);
  EXPECT_NE(written.find("<cp:ruleset xmlns:cp=\""s + namespaceUri + "\""), std::string::npos) << written;
  const auto tree = support::parseNamespacedXml(written);
  ASSERT_TRUE(tree);
  EXPECT_EQ(tree->infoset(), "{"s + namespaceUri + "}ruleset[]()");
}

// ---- Which children, and in which order -----------------------------------------------------------------------

// All sequences of up to five children of a rule, checked against the rule in words: each at most once, in this order,
// and nothing foreign.
TEST(Decode, ChildrenOfARuleComeInTheirOrder) {
  const char *const names[] = {"conditions", "actions", "transformations", "f:x"};
  constexpr size_t foreign = 3;
  Context ctx;
  size_t sequences = 0;
  for (size_t length = 0; length <= 5; ++length) {
    for (size_t number = 0; number < size_t{1} << (2 * length); ++number) {
      std::string body;
      std::string record = "rule(r";
      std::string refused;
      size_t next = 0; // the first kind that may still come
      for (size_t rest = number, i = 0; i < length; ++i, rest /= 4) {
        const size_t kind = rest % 4;
        const std::string mark = std::to_string(i);
        const std::string inside =
            kind == 0 ? "<sphere value=\"" + mark + "\"/>" : "<n" + mark + " xmlns=\"u\"><conditions/></n" + mark + ">";
        body += "<"s + names[kind] + ">" + inside + "</" + names[kind] + ">";
        if (kind != foreign && kind >= next) {
          record += " "s + names[kind] + "[" + (kind == 0 ? "sphere(" + mark + ")" : "");
          if (kind != 0) record += "<n" + mark + " xmlns=\"u\"><conditions/></n" + mark + ">";
          record += "]";
          next = kind + 1;
        } else {
          refused += (refused.empty() ? "" : "; ") + "-41("s + names[kind] + ")@runtime/reader<SAX";
        }
      }
      expectReading({rule(body), record + ")", refused});
      ++sequences;
      if (testing::Test::HasFailure()) return;
    }
  }
  EXPECT_EQ(sequences, 1u + 4 + 16 + 64 + 256 + 1024);
}

// The same for a validity: "from" once, then "until" once.
TEST(Decode, ChildrenOfAValidityComeInTheirOrder) {
  const char *const names[] = {"from", "until", "f:from2"};
  for (size_t length = 0; length <= 4; ++length) {
    size_t all = 1;
    for (size_t i = 0; i < length; ++i)
      all *= std::size(names);
    for (size_t number = 0; number < all; ++number) {
      std::string body;
      std::string texts[2] = {"-", "-"};
      std::string refused;
      size_t next = 0;
      for (size_t rest = number, i = 0; i < length; ++i, rest /= std::size(names)) {
        const size_t kind = rest % std::size(names);
        const std::string text = "2024-01-02T03:04:0" + std::to_string(i) + "Z";
        body += "<"s + names[kind] + ">" + text + "</" + names[kind] + ">";
        if (kind == next && kind < std::size(texts)) {
          texts[kind] = text;
          ++next;
        } else {
          refused += (refused.empty() ? "" : "; ") + "-41("s + names[kind] + ")@runtime/reader<SAX";
        }
      }
      expectReading({conditions("<validity>" + body + "</validity>"),
                     "rule(r conditions[validity(" + texts[0] + "," + texts[1] + ")])", refused});
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(Decode, NothingIsReadBehindTheLastChild) {
  const Case cases[] = {
      {rule("<transformations/><actions/>"), "rule(r transformations[])", "-41(actions)@runtime/reader<SAX"},
      {rule("<transformations/><conditions/><actions/><transformations/>"), "rule(r transformations[])",
       "-41(conditions)@runtime/reader<SAX; -41(actions)@runtime/reader<SAX; "
       "-41(transformations)@runtime/reader<SAX"},
      {rule("<actions/><conditions/>"), "rule(r actions[])", "-41(conditions)@runtime/reader<SAX"},
      {rule("<actions/><conditions/><transformations/>"), "rule(r actions[] transformations[])",
       "-41(conditions)@runtime/reader<SAX"},
      {identity("<one id='o'><f:a/><f:b/></one>"), "rule(r conditions[identity[one(o any=" + f("a") + ")]])",
       "-41(f:b)@runtime/reader<SAX"},
      {identity("<one id='o'><f:a/><one id='p'/></one>"), "rule(r conditions[identity[one(o any=" + f("a") + ")]])",
       "-41(one)@runtime/reader<SAX"},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, ConditionsIdentitiesAndManyAreInAnyOrder) {
  const char *const date = "2024-01-02T03:04:05Z";
  const std::string validity = "<validity><from>"s + date + "</from><until>" + date + "</until></validity>";
  const std::string kept = "validity("s + date + "," + date + ")";
  const Case cases[] = {
      {conditions("<sphere value='1'/>" + validity + "<f:a/><identity><many/></identity><sphere value='2'/>" +
                  validity + "<identity><one id='o'/></identity><f:b/><f:c/>"),
       "rule(r conditions[sphere(1) " + kept + " any[" + f("a") + "] identity[many()] sphere(2) " + kept +
           " identity[one(o)] any[" + f("b") + " " + f("c") + "]])",
       ""},
      {identity("<f:a/><many/><one id='1'/><one id='2'/><f:b/><many domain='d'/>"),
       "rule(r conditions[identity[any=" + f("a") + " many() one(1) one(2) any=" + f("b") + " many(domain=d)]])", ""},
      {identity("<many><f:a/><except id='1'/><except domain='d'/><f:b/><except/></many>"),
       "rule(r conditions[identity[many(any=" + f("a") + " except(id=1) except(domain=d) any=" + f("b") +
           " except())]])",
       ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, WhatHasNoPlaceIsLeftOut) {
  const Case cases[] = {
      // By name, in any namespace.
      {"<rulex id='a'><conditions/></rulex><f:y/>" + rule(""), "rule(r)", "-3(cp_rule,rulex)@SAX; -3(cp_rule,f:y)@SAX"},
      {"<x:rule xmlns:x=\"u\" id=\"r\"/>", "rule(r)", ""},
      // Refused at once: the name alone is not tried.
      {conditions("<f:a/><bogus><sphere value='no'/></bogus><sphere value='s'/><rule id='no'/>"),
       "rule(r conditions[any[" + f("a") + "] sphere(s)])", "-41(bogus)@SAX; -41(rule)@SAX"},
      {identity("<bogus><one id='no'/></bogus><identity/><one id='o'/>"), "rule(r conditions[identity[one(o)]])",
       "-41(bogus)@SAX; -41(identity)@SAX"},
      // Tried again by name, and refused then.
      {rule("<bogus><conditions/></bogus><conditions/>"), "rule(r conditions[])", "-41(bogus)@runtime/reader<SAX"},
      {identity("<many><bogus/><except/><many/></many>"), "rule(r conditions[identity[many(except())]])",
       "-41(bogus)@runtime/reader<SAX; -41(many)@runtime/reader<SAX"},
      {identity("<one id='o'><bogus/><f:a/></one>"), "rule(r conditions[identity[one(o any=" + f("a") + ")]])",
       "-41(bogus)@runtime/reader<SAX"},
      {conditions("<validity><bogus/></validity>"), "rule(r conditions[validity(-,-)])",
       "-41(bogus)@runtime/reader<SAX"},
      // Of attributes only, foreign ones included.
      {identity("<many><except id='e'>t<f:a><f:b/></f:a>u<except/></except><except/></many>"),
       "rule(r conditions[identity[many(except(id=e) except())]])", "-41(f:a)@SAX; -41(except)@SAX"},
      {conditions("<sphere value='s'><f:a/><sphere value='t'/></sphere><f:b/>"),
       "rule(r conditions[sphere(s) any[" + f("b") + "]])", "-41(f:a)@SAX; -41(sphere)@SAX"},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, NamespacesDecideWhatIsForeign) {
  const Case cases[] = {
      // A name of ours in another namespace is another vocabulary's, where those may stand.
      {conditions("<x:sphere xmlns:x=\"u\"/><identity xmlns=\"u\"/>"),
       "rule(r conditions[any[<x:sphere xmlns:x=\"u\"/> <identity xmlns=\"u\"/>]])", ""},
      {identity("<x:one xmlns:x=\"u\"/>"), "rule(r conditions[identity[any=<x:one xmlns:x=\"u\"/>]])", ""},
      {identity("<many><x:except xmlns:x=\"u\"/></many>"),
       "rule(r conditions[identity[many(any=<x:except xmlns:x=\"u\"/>)]])", ""},
      // Other namespaces of the library are as foreign as any.
      {conditions("<d:dialog-info xmlns:d=\"urn:ietf:params:xml:ns:dialog-info\"/>"),
       "rule(r conditions[any[<d:dialog-info xmlns:d=\"urn:ietf:params:xml:ns:dialog-info\"/>]])", ""},
      // Names of ours without a namespace are ours, others are foreign.
      {conditions("<sphere xmlns=\"\" value=\"s\"/><bogus xmlns=\"\"/>"),
       "rule(r conditions[sphere(s) any[<bogus xmlns=\"\"/>]])", ""},
      {conditions("<u:sphere value=\"s\"/>"), "rule(r conditions[sphere(s)])", ""}, // an undeclared prefix is none
      // Where nothing foreign may stand, the name alone is tried.
      {rule("<x:conditions xmlns:x=\"u\"/><x:actions xmlns:x=\"u\"/><transformations xmlns=\"u\"/>"),
       "rule(r conditions[] actions[] transformations[])", ""},
      {conditions("<validity><x:from xmlns:x=\"u\">2024-01-02T03:04:05Z</x:from></validity>"),
       "rule(r conditions[validity(2024-01-02T03:04:05Z,-)])", ""},
      // Actions and transformations keep whatever they hold.
      {rule("<actions><rule/><f:a/><bogus xmlns=\"\"/></actions><transformations><actions/></transformations>"),
       "rule(r actions[<rule xmlns=\""s + namespaceUri + "\"/> " + f("a") + " <bogus xmlns=\"\"/>] " +
           "transformations[<actions xmlns=\"" + namespaceUri + "\"/>])",
       ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, RootOfAnotherNameIsReadAllTheSame) {
  for (const char *name : {"rules", "Ruleset", "f:rules"}) {
    const std::string text =
        "<"s + name + " xmlns='" + namespaceUri + "' xmlns:f='urn:f'><rule id='r'/></" + name + ">";
    const char *const local = name[1] == ':' ? name + 2 : name;
    const Reading reading = decode(text);
    EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
    EXPECT_EQ(reading.errors, "-3(ruleset,"s + local + ")@SAX");
    EXPECT_EQ(reading.record, "rule(r)");
    EXPECT_EQ(validate(text).errors, "-3(ruleset,"s + local + ")@Vldt");
  }
  for (const char *root : {"<x:ruleset xmlns:x=\"urn:other\"/>", "<x:ruleset/>", "<ruleset/>"}) {
    EXPECT_EQ(decode(root).errors, "") << root;
    EXPECT_EQ(validate(root).errors, "") << root;
  }
}

// ---- Foreign elements, kept in three ways ---------------------------------------------------------------------

TEST(Decode, ForeignConditionsThatStandSideBySideShareAnItem) {
  const std::string ab = "any[" + f("a") + " " + f("b") + "]";
  const Case cases[] = {
      {conditions("<identity><one id='o'/></identity><f:a/><f:b/><sphere value='s'/><f:c/>"),
       "rule(r conditions[identity[one(o)] " + ab + " sphere(s) any[" + f("c") + "]])", ""},
      {conditions("<f:a/> text <!-- and --><?this?> <f:b/>"), "rule(r conditions[" + ab + "])", ""},
      // What is refused starts no item.
      {conditions("<f:a/><bogus/><f:b/>"), "rule(r conditions[" + ab + "])", "-41(bogus)@SAX"},
      {conditions("<f:a/><validity/><f:b/>"),
       "rule(r conditions[any[" + f("a") + "] validity(-,-) any[" + f("b") + "]])", ""},
      {conditions("<f:a/><identity><f:x/></identity><f:b/>"),
       "rule(r conditions[any[" + f("a") + "] identity[any=" + f("x") + "] any[" + f("b") + "]])", ""},
      // Another rule's conditions are others.
      {conditions("<f:a/>") + conditions("<f:b/>"),
       "rule(r conditions[any[" + f("a") + "]]) rule(r conditions[any[" + f("b") + "]])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);

  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document(cases[0].content)), 0);
  auto record = Record::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), 0) << errorList(ctx);
  record.owned = true;
  std::vector<int> selectors;
  const auto *first = static_cast<const cp_ruleType *>(record->cp_rule.head->data);
  for (const RtxListNode *node = first->cp_conditions.items.head; node != nullptr; node = node->next)
    selectors.push_back(static_cast<const cp_conditionsType_1 *>(node->data)->t);
  EXPECT_EQ(selectors, std::vector<int>({1, 4, 2, 4}));
}

TEST(Decode, ForeignElementsElsewhereHaveAnItemEach) {
  const Case cases[] = {
      {identity("<f:a/><f:b/>"), "rule(r conditions[identity[any=" + f("a") + " any=" + f("b") + "]])", ""},
      {identity("<many><f:a/><f:b/></many>"),
       "rule(r conditions[identity[many(any=" + f("a") + " any=" + f("b") + ")]])", ""},
      {rule("<actions><f:a/><f:b/></actions><transformations><f:b/><f:a/></transformations>"),
       "rule(r actions[" + f("a") + " " + f("b") + "] transformations[" + f("b") + " " + f("a") + "])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, AttributesOfForeignElementsAreKept) {
  const std::string element = "<x:a xmlns:x=\"u\" id=\"1\" x:l=\"&lt;\" value=\" \"/>";
  // The validator, which has no handler for the element, sees attributes that it does not know, but not where all
  // children are foreign.
  const char *const reported = "-33(,id)@runtime/reader; -33(,x:l)@runtime/reader; -33(,value)@runtime/reader<Vldt";
  const Case cases[] = {
      {conditions(element), "rule(r conditions[any[" + element + "]])", "", reported},
      {identity(element), "rule(r conditions[identity[any=" + element + "]])", "", reported},
      {identity("<many>" + element + "</many>"), "rule(r conditions[identity[many(any=" + element + ")]])", "",
       reported},
      {identity("<one id='o'>" + element + "</one>"), "rule(r conditions[identity[one(o any=" + element + ")]])", "",
       reported},
      {rule("<actions>" + element + "</actions><transformations>" + element + "</transformations>"),
       "rule(r actions[" + element + "] transformations[" + element + "])", "", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, ContentOfForeignElementsDoesNotMatter) {
  const std::string inside = "text<rule k=\"v\"><bogus/></rule><validity><until>x</until></validity><identity/>&lt;";
  const auto wrapped = [&](const char *name) {
    return "<x:"s + name + " xmlns:x=\"u\" xmlns=\"v\">" + inside + "</x:" + name + ">";
  };
  const Case cases[] = {
      {conditions(wrapped("a") + wrapped("b")), "rule(r conditions[any[" + wrapped("a") + " " + wrapped("b") + "]])",
       ""},
      {identity("<one id='o'>" + wrapped("a") + "</one><many>" + wrapped("b") + "</many>" + wrapped("c")),
       "rule(r conditions[identity[one(o any=" + wrapped("a") + ") many(any=" + wrapped("b") + ") any=" + wrapped("c") +
           "]])",
       ""},
      {rule("<actions>" + wrapped("a") + "</actions>"), "rule(r actions[" + wrapped("a") + "])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, ForeignElementsMeanTheSameOnTheirOwn) {
  const std::string text =
      "<p:ruleset xmlns:p=\""s + namespaceUri +
      "\" xmlns:x=\"urn:x\" xmlns=\"urn:default\"><p:rule id='r'><p:conditions>"
      "<p:identity><p:one id='o'><x:a k='\"'>t &amp; <g><!--c--><p:sphere x:l=\"&#10;\"/></g></x:a>"
      "</p:one><p:many><g x:k=''/></p:many><x:h xmlns:x=\"urn:inner\"><x:i/></x:h></p:identity>"
      "<x:b xmlns:p='urn:other'><p:c/></x:b><none xmlns=''><x:d/></none></p:conditions>"
      "<p:actions><g/><p:rule><x:e/></p:rule></p:actions><p:transformations><x:l><![CDATA[<&]]>"
      "</x:l></p:transformations></p:rule></p:ruleset>";
  const auto whole = support::parseNamespacedXml(text);
  ASSERT_TRUE(whole);
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  auto record = Record::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), 0) << errorList(ctx);
  record.owned = true;
  const std::vector<std::string> kept = fragments(record.get());
  const std::vector<support::XmlElement> written = foreignElements(*whole);
  ASSERT_EQ(kept.size(), written.size());
  ASSERT_EQ(kept.size(), 8u);
  for (size_t i = 0; i < kept.size(); ++i) {
    const auto fragment = support::parseNamespacedXml(kept[i]);
    ASSERT_TRUE(fragment) << kept[i];
    EXPECT_EQ(fragment->infoset(), written[i].infoset());
  }
  // Written back, they mean the same still.
  const auto again = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(again);
  EXPECT_EQ(meaning(*again), meaning(*whole));
}

// ---- Attributes -----------------------------------------------------------------------------------------------

TEST(Decode, WhiteSpaceIsCollapsedInIdentifiersOnly) {
  const std::string spaced = "\" \t a\n  b&#9;&#10;c&#13; \"";
  const std::string collapsed = "a b c";
  const std::string asItStands = "   a   b\t\nc\r ";
  const Case cases[] = {
      {"<rule id=" + spaced + "/>", "rule(" + collapsed + ")", ""},
      {identity("<one id=" + spaced + "/>"), "rule(r conditions[identity[one(" + collapsed + ")]])", ""},
      {identity("<many domain=" + spaced + "><except domain=" + spaced + " id=" + spaced + "/></many>"),
       "rule(r conditions[identity[many(domain=" + asItStands + " except(domain=" + asItStands + " id=" + collapsed +
           "))]])",
       ""},
      {conditions("<sphere value=" + spaced + "/>"), "rule(r conditions[sphere(" + asItStands + ")])", ""},
      {"<rule id='  '/>", "rule()", ""},
      {conditions("<sphere value=''/>"), "rule(r conditions[sphere()])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, OptionalAttributesHaveTheirBits) {
  const Case cases[] = {
      {identity("<many domain='d'/><many domain=''/><many/>"),
       "rule(r conditions[identity[many(domain=d) many(domain=) many()]])", ""},
      {identity("<many><except/><except id='i'/><except domain='d'/><except id='' domain=''/></many>"),
       "rule(r conditions[identity[many(except() except(id=i) except(domain=d) except(domain= id=))]])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, MissingAttributesAreReported) {
  const Case cases[] = {
      {"<rule><conditions/></rule>", "rule(- conditions[])", "-103(cp_ruleType,id)@runtime/reader<SAX"},
      {identity("<one><f:a/></one>"), "rule(r conditions[identity[one(- any=" + f("a") + ")]])",
       "-103(cp_oneType,id)@runtime/reader<SAX"},
      {conditions("<sphere/><f:a/>"), "rule(r conditions[sphere(-) any[" + f("a") + "]])",
       "-103(cp_sphereType,value)@runtime/reader<SAX"},
      // An attribute of that name in a namespace is another one.
      {"<rule f:id='r'/>", "rule(-)", "-33(cp_ruleType,f:id)@SAX; -103(cp_ruleType,id)@runtime/reader<SAX"},
      // Nothing is required of these.
      {identity("<many><except/></many>"), "rule(r conditions[identity[many(except())]])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, UnknownAttributesAreReportedAndTheOthersRead) {
  const Case cases[] = {
      {"<rule foo='1' id='r' bar='2'/>", "rule(r)", "-33(cp_ruleType,foo)@SAX; -33(cp_ruleType,bar)@SAX"},
      {identity("<one value='1' id='o'/>"), "rule(r conditions[identity[one(o)]])", "-33(cp_oneType,value)@SAX"},
      {identity("<many id='1' domain='d'/>"), "rule(r conditions[identity[many(domain=d)]])",
       "-33(cp_manyType,id)@SAX"},
      {identity("<many><except foo='1' id='i' domain='d'/></many>"),
       "rule(r conditions[identity[many(except(domain=d id=i))]])", "-33(cp_exceptType,foo)@SAX"},
      {conditions("<sphere id='1' f:value='2' value='s'/>"), "rule(r conditions[sphere(s)])",
       "-33(cp_sphereType,id)@SAX; -33(cp_sphereType,f:value)@SAX"},
      {"<rule id='r' xml:lang='en' ID='x'/>", "rule(r)", "-33(cp_ruleType,xml:lang)@SAX; -33(cp_ruleType,ID)@SAX"},
      {conditions("<validity><from k='1' f:l='2'>2024-01-02T03:04:05Z</from></validity>"),
       "rule(r conditions[validity(2024-01-02T03:04:05Z,-)])",
       "-33(from,k)@runtime/reader; -33(from,f:l)@runtime/reader<SAX"},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, DeclarationsAndSchemaInstanceAttributesAreNoOnes) {
  const std::string more = " xmlns:p='urn:p' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                           "xsi:type='t' xsi:schemaLocation='a b' ";
  const Case cases[] = {
      {"<rule" + more + "id='r'/>", "rule(r)", ""},
      {identity("<one" + more + "id='o'/><many" + more + "><except" + more + "/></many>"),
       "rule(r conditions[identity[one(o) many(except())]])", ""},
      {conditions("<sphere" + more + "value='s'/><validity><from" + more + ">2024-01-02T03:04:05Z</from></validity>"),
       "rule(r conditions[sphere(s) validity(2024-01-02T03:04:05Z,-)])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, AttributesOfTypesWithoutAnyAreNotLookedAt) {
  const std::string more = " id='1' foo='2' f:bar='3' xml:lang='en'";
  const std::string date = "<from>2024-01-02T03:04:05Z</from>";
  expectReading({"<rule id='r'><conditions" + more + "><identity" + more + "><many/></identity><validity" + more + ">" +
                     date + "</validity></conditions><actions" + more + "><f:a/></actions><transformations" + more +
                     "/></rule>",
                 "rule(r conditions[identity[many()] validity(2024-01-02T03:04:05Z,-)] actions[" + f("a") +
                     "] transformations[])",
                 ""});
  const std::string root =
      "<ruleset xmlns='"s + namespaceUri + "' xmlns:f='urn:f'" + more + "><rule id='r'/></ruleset>";
  EXPECT_EQ(decode(root).errors, "");
  EXPECT_EQ(decode(root).record, "rule(r)");
  EXPECT_EQ(validate(root).errors, "");
}

TEST(Decode, ReferencesInAttributesAreResolved) {
  expectReading({"<rule id='a&amp;b&#x20AC;&lt;'/>", "rule(a&b\xE2\x82\xAC<)", ""});
}

// ---- Text -----------------------------------------------------------------------------------------------------

TEST(Decode, DatesAreKeptAsTheyStand) {
  struct Text {
    const char *content;
    const char *text;
  };
  constexpr Text texts[] = {{"2024-01-02T03:04:05Z", "2024-01-02T03:04:05Z"},
                            {"yesterday", "yesterday"},
                            {"", ""},
                            {" \n 2024 \t", " \n 2024 \t"},
                            {"20<!--c-->24<![CDATA[-<]]>&amp;&#x31;<?pi?>2", "2024-<&12"},
                            {"\r\nx\r", "\nx\n"},
                            {"1<f:b>2</f:b>3", "123"}};
  for (const Text &t : texts) {
    SCOPED_TRACE(t.content);
    Context ctx;
    const std::string text =
        document(conditions("<validity><from>"s + t.content + "</from><until>" + t.content + "</until></validity>"));
    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto record = Record::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), 0) << errorList(ctx);
    record.owned = true;
    EXPECT_EQ(dump(record.get()), "rule(r conditions[validity("s + t.text + "," + t.text + ")])");
  }
}

TEST(Decode, ElementWithoutContentIsAnEmptyText) {
  EXPECT_EQ(decode(document(conditions("<validity><from/><until/></validity>"))).record,
            "rule(r conditions[validity(,)])");
  EXPECT_EQ(
      decode(document(conditions("<validity><from>a</from><until/></validity><validity><from/></validity>"))).record,
      "rule(r conditions[validity(a,) validity(,-)])");
}

TEST(Decode, ValidityWithItsBeginningOnly) {
  expectReading({conditions("<validity><from>2024-01-02T03:04:05Z</from></validity><sphere value='s'/>"),
                 "rule(r conditions[validity(2024-01-02T03:04:05Z,-) sphere(s)])", ""});
}

TEST(Decode, LongTextArrivesWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "line " + std::to_string(i) + "\n";
  EXPECT_EQ(decode(document(conditions("<validity><from>" + text + "</from></validity>"))).record,
            "rule(r conditions[validity(" + text + ",-)])");
}

TEST(Decode, TextBetweenElementsIsNoOnes) {
  const auto between = [](const std::string &tags) {
    std::string all;
    for (char c : tags)
      all += c == '^' ? "text &amp; <![CDATA[more]]>" : std::string(1, c);
    return all;
  };
  expectReading(
      {between("^<rule id='r'>^<conditions>^<identity>^<one id='o'>^<f:a/>^</one>^<many>^<except>^</except>^"
               "</many>^</identity>^<sphere value='s'>^</sphere>^<validity>^<from>2024-01-02T03:04:05Z</from>^"
               "<until>2025-01-02T03:04:05Z</until>^</validity>^</conditions>^<actions>^<f:a/>^</actions>^"
               "</rule>^"),
       "rule(r conditions[identity[one(o any=" + f("a") +
           ") many(except())] sphere(s) validity(2024-01-02T03:04:05Z,2025-01-02T03:04:05Z)] actions[" + f("a") + "])",
       ""});
}

// ---- Identities must name somebody ----------------------------------------------------------------------------

TEST(Decode, IdentityWithoutAnItem) {
  const Case cases[] = {
      {conditions("<identity/>"), "rule(r conditions[identity[]])", "-16(.count,0)@SAX", ""},
      {conditions("<identity> <!-- nobody --> text</identity><sphere value='s'/>"),
       "rule(r conditions[identity[] sphere(s)])", "-16(.count,0)@SAX", ""},
      {identity("<bogus/>"), "rule(r conditions[identity[]])", "-41(bogus)@SAX; -16(.count,0)@SAX", "-41(bogus)@Vldt"},
      {conditions("<identity/><identity/>") + rule("<actions><f:a/></actions>"),
       "rule(r conditions[identity[] identity[]]) rule(r actions[" + f("a") + "])",
       "-16(.count,0)@SAX; -16(.count,0)@SAX", ""},
      // An item that is not in order is an item.
      {identity("<one/>"), "rule(r conditions[identity[one(-)]])", "-103(cp_oneType,id)@runtime/reader<SAX"},
      // Nothing else has to hold anything.
      {rule("<conditions/><actions/><transformations/>"), "rule(r conditions[] actions[] transformations[])", ""},
  };
  for (const Case &c : cases)
    expectReading(c);
}

TEST(Decode, CountOfAnIdentityHasTwoSpellings) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document(conditions("<identity/>"))), 0);
  auto record = Record::uninitialised(ctx);
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, record), STATUS_CONSTRAINT_VIOLATION);
  record.owned = true;
  EXPECT_EQ(errorList(ctx), "-16(.count,0)@SAX");
  rtxErrClear(ctx);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(QxXmlE_cp_ruleset(ctx, record), STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(errorList(ctx).substr(0, 34), "-16(cp_identityType.count,0)@Enc<E"s);
}

// ---- Rules enter their list when they have ended --------------------------------------------------------------

TEST(Decode, RuleThatHasNotEndedIsNotInTheList) {
  const std::string text = document("<rule id='1'/><rule id='2'><conditions><identity><many domain='d'>"
                                    "<except domain='e' id='f'/></many></identity><sphere value='s'/><f:a/>"
                                    "</conditions><actions><f:b/><f:c>t</f:c></actions></rule><rule id='3'/>");
  const size_t second = text.find("<rule id='2'>");
  const size_t secondEnd = text.find("</rule>");
  for (size_t length = second; length < secondEnd + 7; ++length)
    EXPECT_EQ(decode(text.substr(0, length)).record, "rule(1)") << text.substr(0, length);
  EXPECT_EQ(decode(text.substr(0, secondEnd + 7)).record,
            "rule(1) rule(2 conditions[identity[many(domain=d except(domain=e id=f))] sphere(s) any[" + f("a") +
                "]] actions[" + f("b") + " <f:c xmlns:f=\"urn:f\">t</f:c>])");
}

TEST(Decode, RuleWithErrorsEntersAllTheSame) {
  expectReading({"<rule k='1'><bogus/><conditions><identity/></conditions></rule><rule id='2'/>",
                 "rule(- conditions[identity[]]) rule(2)",
                 "-33(cp_ruleType,k)@SAX; -103(cp_ruleType,id)@runtime/reader<SAX; -41(bogus)@runtime/reader<SAX; "
                 "-16(.count,0)@SAX",
                 "-33(cp_ruleType,k)@Vldt; -103(cp_ruleType,id)@runtime/reader<Vldt; -41(bogus)@runtime/reader<Vldt"});
}

TEST(Decode, EachRuleStartsAnew) {
  // Content state, attributes seen and what was collected belong to one rule.
  expectReading({"<rule id='1'><transformations/></rule><rule><conditions><validity><from>2024-01-02T03:04:05Z</from>"
                 "</validity></conditions><actions/></rule><rule id='3'><conditions><validity/></conditions></rule>",
                 "rule(1 transformations[]) rule(- conditions[validity(2024-01-02T03:04:05Z,-)] actions[]) "
                 "rule(3 conditions[validity(-,-)])",
                 "-103(cp_ruleType,id)@runtime/reader<SAX"});
  std::string body;
  std::string record;
  for (int i = 0; i < 500; ++i) {
    body += "<rule id='" + std::to_string(i) + "'><actions/></rule>";
    record += (i == 0 ? "rule(" : " rule(") + std::to_string(i) + " actions[])";
  }
  expectReading({body, record, ""});
}

// ---- What no release function touches -------------------------------------------------------------------------

TEST(Decode, TextsOfExceptionsAndSpheresOutliveTheRecord) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, document(conditions("<identity><many domain='d'><f:a/><except domain='e1' id='e2'/>"
                                                       "<except id='e3'/></many></identity><sphere value='s'/>"
                                                       "<validity><from>x</from></validity><f:b/>"))),
            0);
  const size_t before = support::heapStats(ctx).blocks;
  cp__ruleset record;
  ASSERT_EQ(QxXmlD_cp_ruleset(ctx, &record), 0) << errorList(ctx);
  const auto *rules = static_cast<const cp_ruleType *>(record.cp_rule.head->data);
  const RtxListNode *condition = rules->cp_conditions.items.head;
  const auto *identity = static_cast<const cp_conditionsType_1 *>(condition->data);
  const auto *many = static_cast<const cp_identityType_1 *>(identity->u.cp_identity.items.head->data);
  const RtxListNode *exception = many->u.cp_many.cp__choice.head->next;
  const auto *first = static_cast<const cp_manyType_1 *>(exception->data);
  const auto *second = static_cast<const cp_manyType_1 *>(exception->next->data);
  const auto *sphere = static_cast<const cp_conditionsType_1 *>(condition->next->data);
  const char *const texts[] = {first->u.cp_except.cp_domain.value, first->u.cp_except.cp_id.value,
                               second->u.cp_except.cp_id.value, sphere->u.cp_sphere.cp_value.value};
  QxMemFree_cp__ruleset(ctx, &record);
  EXPECT_EQ(support::heapStats(ctx).blocks, before + std::size(texts));
  EXPECT_STREQ(texts[0], "e1");
  EXPECT_STREQ(texts[1], "e2");
  EXPECT_STREQ(texts[2], "e3");
  EXPECT_STREQ(texts[3], "s");
}

// ---- Errors ---------------------------------------------------------------------------------------------------

TEST(Decode, ErrorsKnowTheirPlace) {
  const std::string text = "<ruleset xmlns='"s + namespaceUri +
                           "'>\n <rulex/>\n <rule k='1'>\n  <bogus/>\n  <conditions>\n   <odd/>\n"
                           "   <identity></identity>\n   <sphere value='s'>\n    <inner/></sphere>\n"
                           "   <validity><from l='2'/><from/></validity>\n  </conditions>\n </rule>\n</ruleset>";
  Context ctx;
  decode(ctx, text);
  ASSERT_EQ(support::statuses(ctx), std::vector<int>({-3, -33, -103, -41, -41, -16, -41, -33, -41})) << errorList(ctx);
  struct Place {
    const char *at;
    const char *position;
    const char *path;
  };
  const Place places[] = {
      {"<rulex", "2:2", "/ruleset/rulex"},
      {"k='1'", "3:8", "/ruleset/rule"},
      {"<rule k", "3:2", "/ruleset/rule"},
      {"<bogus", "4:3", "/ruleset/rule/bogus"},
      {"<odd", "6:4", "/ruleset/rule/conditions/odd"},
      {"<identity", "7:4", "/ruleset/rule/conditions/identity"},
      {"<inner", "9:5", "/ruleset/rule/conditions/sphere/inner"},
      {"l='2'", "10:20", "/ruleset/rule/conditions/validity/from"},
      {"<from/>", "10:27", "/ruleset/rule/conditions/validity/from"},
  };
  for (uint32_t i = 0; i < std::size(places); ++i)
    EXPECT_EQ(support::placeText(*rtxErrAt(ctx, i)),
              places[i].position + "+"s + std::to_string(text.find(places[i].at)) + " " + places[i].path)
        << support::errorText(*rtxErrAt(ctx, i));
}

// Each kind of error of each type, for the decoder and for the validator.
TEST(Decode, EachErrorHasItsOwnLine) {
  const std::string documents[] = {
      "<rules/>",
      document("<rulex/>"),
      document(rule("<bogus/>")),
      document(conditions("<bogus/>")),
      document(identity("<one id='o'/><bogus/>")),
      document(identity("<many><bogus/></many>")),
      document(identity("<one id='o'><bogus/></one>")),
      document(conditions("<validity><bogus/></validity>")),
      document(identity("<many><except><bogus/></except></many>")),
      document(conditions("<sphere value='s'><bogus/></sphere>")),
      document("<rule id='r' k=''/>"),
      document(identity("<one id='o' k=''/>")),
      document(identity("<many k=''/>")),
      document(identity("<many><except k=''/></many>")),
      document(conditions("<sphere value='s' k=''/>")),
      document(conditions("<validity><from k=''>2024-01-02T03:04:05Z</from></validity>")),
      document("<rule/>"),
      document(identity("<one/>")),
      document(conditions("<sphere/>")),
  };
  for (const bool decoding : {true, false}) {
    std::set<int> lines;
    for (const std::string &text : documents) {
      SCOPED_TRACE(text);
      Context ctx;
      if (decoding) {
        decode(ctx, text);
      } else {
        validate(ctx, text);
      }
      ASSERT_EQ(rtxErrCount(ctx), 1u) << errorList(ctx);
      const RtxError &error = *rtxErrAt(ctx, 0);
      const RtxErrorSite &site = error.sites[error.siteCount - 1];
      EXPECT_STREQ(site.path, decoding ? "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSetSAX"
                                       : "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSetVldt");
      EXPECT_TRUE(lines.insert(site.line).second) << "line " << site.line << " is another error's";
    }
    const std::string text =
        document(conditions(decoding ? "<identity/>" : "<validity><from>yesterday</from></validity>"));
    Context ctx;
    EXPECT_LT(decoding ? decode(ctx, text).status : validate(ctx, text).status, 0);
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    EXPECT_TRUE(lines.insert(rtxErrAt(ctx, 0)->sites[0].line).second);
  }
}

const std::string manyErrors =
    "<rules xmlns='"s + namespaceUri +
    "' xmlns:f='urn:f'><rulex/><rule k='1'><bogus1/><conditions><bogus2/><identity><bogus3/></identity><identity>"
    "<many l='2'><except><f:a/></except><bogus4/></many><one><bogus5/></one></identity><sphere><f:b/></sphere>"
    "<validity><until/><from m='3'>2024-01-02T03:04:05Z</from><from/></validity></conditions></rule>"
    "<rule id='2'><transformations/><actions/></rule></rules>";
const std::vector<int> manyStatuses = {-3,  -3,   -33, -103, -41, -41, -41, -16, -33, -41,
                                       -41, -103, -41, -103, -41, -41, -33, -41, -41};
constexpr const char *manyRecord =
    "rule(- conditions[identity[] identity[many(except()) one(-)] sphere(-) validity(2024-01-02T03:04:05Z,-)]) "
    "rule(2 transformations[])";

TEST(Decode, FirstOfManyErrorsIsReturned) {
  Context ctx;
  const Reading reading = decode(ctx, manyErrors);
  EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
  EXPECT_EQ(support::statuses(ctx), manyStatuses) << reading.errors;
  EXPECT_EQ(reading.record, manyRecord);
}

TEST(Decode, NoErrorBeyondTheLimitIsRecorded) {
  for (uint32_t limit = 0; limit <= manyStatuses.size() + 1; ++limit) {
    SCOPED_TRACE("error limit " + std::to_string(limit));
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    const Reading reading = decode(ctx, manyErrors);
    const size_t recorded = std::min<size_t>(limit, manyStatuses.size());
    EXPECT_EQ(support::statuses(ctx),
              std::vector<int>(manyStatuses.begin(), manyStatuses.begin() + static_cast<std::ptrdiff_t>(recorded)))
        << reading.errors;
    EXPECT_EQ(reading.status, limit == 0 ? 0 : STATUS_ROOT_MISMATCH);
    EXPECT_EQ(reading.record, manyRecord);

    Context checking([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    std::vector<int> expected = manyStatuses;
    expected.erase(std::find(expected.begin(), expected.end(), STATUS_CONSTRAINT_VIOLATION));
    expected.resize(std::min<size_t>(limit, expected.size()));
    validate(checking, manyErrors);
    EXPECT_EQ(support::statuses(checking), expected) << errorList(checking);
  }
}

TEST(Decode, WithoutInputTheRecordIsNotTouched) {
  Context ctx;
  cp__ruleset record;
  std::memset(&record, 0xA5, sizeof record);
  const cp__ruleset before = record;
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, &record), STATUS_READER_FAILED);
  EXPECT_EQ(errorList(ctx), "-26@Dec");
  EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
  rtxErrClear(ctx);
  EXPECT_EQ(QxXmlV_cp_ruleset(ctx), STATUS_READER_FAILED);
  EXPECT_EQ(errorList(ctx), "-26@Vldt");
}

TEST(Decode, InputThatIsNotWellFormedIsAParseFailure) {
  for (const std::string &text :
       {""s, "x"s, "<ruleset>"s, "<ruleset></rule>"s, document("<rule id='1' id='2'/>"), document(rule("")) + "<more/>",
        document("<rule id='a<b'/>"), document("<rule id='&undefined;'/>"), document("<rule id='\xFF'/>"),
        document(conditions("<validity><from>\x01</from></validity>"))}) {
    Context ctx;
    EXPECT_EQ(decode(ctx, text).status, STATUS_PARSE_FAILED) << text;
    EXPECT_EQ(support::statuses(ctx).back(), STATUS_PARSE_FAILED);
    EXPECT_EQ(validate(text).status, STATUS_PARSE_FAILED) << text;
  }
}

TEST(Decode, StatusOfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  const Reading reading = decode(ctx, "<rules><rulex/><rule id='r'/>");
  EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
  EXPECT_EQ(support::statuses(ctx), std::vector<int>({-3, -3, -104}));
  EXPECT_EQ(reading.record, "rule(r)");
}

// ---- One context after another document -----------------------------------------------------------------------

TEST(Decode, EarlierErrorIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, document(conditions("<identity/>"))).status, STATUS_CONSTRAINT_VIOLATION);
  const Reading second = decode(ctx, document(rule("")));
  EXPECT_EQ(second.status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(second.record, "rule(r)");
  EXPECT_EQ(validate(ctx, document(rule(""))).status, STATUS_CONSTRAINT_VIOLATION);
  rtxErrClear(ctx);
  EXPECT_EQ(decode(ctx, document(rule(""))).status, 0);
}

TEST(Decode, DocumentCutOffLeavesNothingForTheNext) {
  Context ctx;
  for (const std::string cut :
       {"<rule id='1'><conditions><validity><from>ab",
        "<rule id='1'><conditions><identity><one id='o'><x:f xmlns:x='u'>t",
        "<rule id='1'><conditions><sphere value='s' xmlns='v'>", "<rule id='1'><actions><x:f xmlns:x='u' xmlns='v'>",
        "<rule id='1'><conditions><identity><many domain='d'><except domain='d'>"}) {
    SCOPED_TRACE(cut);
    EXPECT_EQ(decode(ctx, "<ruleset xmlns='urn:other' xmlns:p='urn:p'>" + cut).status, STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    // Without a declaration of its own, a binding left over would show.
    const Reading next = decode(ctx, "<ruleset><rule id='2'><conditions><p:sphere value='s'/><validity><from>c</from>"
                                     "</validity></conditions></rule></ruleset>");
    EXPECT_EQ(next.status, 0) << next.errors;
    EXPECT_EQ(next.record, "rule(2 conditions[sphere(s) validity(c,-)])");
  }
}

TEST(Decode, NamespacesOfAnotherModuleDoNotMatter) {
  Context ctx;
  const char *const others[] = {"urn:x", namespaceUri};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, others, 2), 0);
  const std::string text = document(conditions("<sphere value='s'/><bogus/><f:a/>"));
  const Reading reading = decode(ctx, text);
  EXPECT_EQ(reading.errors, "-41(bogus)@SAX");
  EXPECT_EQ(reading.record, "rule(r conditions[sphere(s) any[" + f("a") + "]])");
  rtxErrClear(ctx);
  ASSERT_EQ(rtXmlNSSetURITable(ctx, nullptr, 0), 0);
  EXPECT_EQ(validate(ctx, text).errors, "-41(bogus)@Vldt");
  EXPECT_EQ(ctx->globalData, nullptr) << "reading takes no registry";
}

// ---- As people write them -------------------------------------------------------------------------------------

TEST(Decode, PresenceAuthorisationSurvivesUnchangedInMeaning) {
  everySpelling(
      realLifeBody(), namespaceUri,
      [](RuntimeContext *ctx, const SpelledDocument &document) {
        const auto whole = support::parseNamespacedXml(document.text);
        ASSERT_TRUE(whole);
        auto record = Record::uninitialised(ctx);
        ASSERT_EQ(QxXmlD_cp_ruleset(ctx, record), 0) << errorList(ctx);
        record.owned = true;
        EXPECT_EQ(record->cp_rule.count, 20u);

        const std::vector<std::string> kept = fragments(record.get());
        const std::vector<support::XmlElement> written = foreignElements(*whole);
        ASSERT_EQ(kept.size(), written.size());
        EXPECT_GT(kept.size(), 60u);
        for (size_t i = 0; i < kept.size(); ++i) {
          const auto fragment = support::parseNamespacedXml(kept[i]);
          ASSERT_TRUE(fragment) << kept[i];
          EXPECT_EQ(fragment->infoset(), written[i].infoset());
        }

        const std::string text = encodeRecord(ctx, record);
        const auto again = support::parseNamespacedXml(text);
        ASSERT_TRUE(again) << text;
        EXPECT_EQ(meaning(*again), meaning(*whole));
        ASSERT_EQ(support::setInput(ctx, text), 0);
        const Reading second = decodeInput(ctx);
        EXPECT_EQ(second.status, 0) << second.errors;
        EXPECT_EQ(second.record, dump(record.get()));
      },
      false);
}

} // namespace
