// Writing rule sets.
#include "faults.h"
#include "rules.h"
#include "xmlJudge.h"

#include <algorithm>
#include <set>

using namespace rules;
using support::Context;

namespace {

int encodeDocument(RuntimeContext *ctx, const cp__ruleset *record) { return QxXmlE_cp_ruleset(ctx, record); }

const std::string open = "<cp:ruleset xmlns:cp=\""s + namespaceUri + "\">";
const std::string close = "</cp:ruleset>";

// ---- What complete records are written as ---------------------------------------------------------------------

// "~" stands for the prefix of the module's elements. A type with attributes leaves its start tag open.
struct Written {
  bool hasAttributes;
  Parts attributes;
  Parts contents;
};

std::string element(const std::string &name, const Written &written, uint32_t m = ~0u) {
  const std::string contents = present(written.contents, m);
  const std::string start = "<" + name + present(written.attributes, m);
  if (written.hasAttributes && contents.empty()) return start + "/>";
  return start + ">" + contents + "</" + name + ">";
}

const Written oneWritten = {true, {{0, " id=\"sip:one\""}}, {{1, "<o/>"}}};
const Written exceptWritten = {true, {{1, " domain=\"except.example\""}, {2, " id=\"sip:except\""}}, {}};
const Written many1Written = {false, {}, {{0, element("~except", exceptWritten)}}};
const Written manyWritten = {
    true, {{1, " domain=\"many.example\""}}, {{0, element("~except", exceptWritten) + "<m/>"}}};
const Written identity1Written = {false, {}, {{0, element("~one", oneWritten)}}};
const Written identityWritten = {
    false, {}, {{0, element("~one", oneWritten) + element("~many", manyWritten) + "<i/>"}}};
const Written sphereWritten = {true, {{0, " value=\"work\""}}, {}};
const Written validityWritten = {
    false, {}, {{0, "<~from>2024-01-01T00:00:00Z</~from><~until>2024-12-31T23:59:59Z</~until>"}}};
const Written conditions1Written = {false, {}, {{0, element("~identity", identityWritten)}}};
const Written conditionsWritten = {
    false,
    {},
    {{0, element("~identity", identityWritten) + "<c/><d>1</d>" + element("~sphere", sphereWritten) +
             element("~validity", validityWritten) + "<e/>"}}};
const Written extensibleWritten = {false, {}, {{0, "<x/><y>2</y>"}}};
const Written ruleWritten = {true,
                             {{0, " id=\"r1\""}},
                             {{1, element("~conditions", conditionsWritten)},
                              {2, element("~actions", extensibleWritten)},
                              {4, "<~transformations><t/></~transformations>"}}};
const Written rulesetWritten = {false, {}, {{0, element("~rule", ruleWritten) + "<~rule id=\"r2\"/>"}}};

template <typename T> const Written &writtenAs();
template <> const Written &writtenAs<cp_oneType>() { return oneWritten; }
template <> const Written &writtenAs<cp_exceptType>() { return exceptWritten; }
template <> const Written &writtenAs<cp_manyType_1>() { return many1Written; }
template <> const Written &writtenAs<cp_manyType>() { return manyWritten; }
template <> const Written &writtenAs<cp_identityType_1>() { return identity1Written; }
template <> const Written &writtenAs<cp_identityType>() { return identityWritten; }
template <> const Written &writtenAs<cp_sphereType>() { return sphereWritten; }
template <> const Written &writtenAs<cp_validityType>() { return validityWritten; }
template <> const Written &writtenAs<cp_conditionsType_1>() { return conditions1Written; }
template <> const Written &writtenAs<cp_conditionsType>() { return conditionsWritten; }
template <> const Written &writtenAs<cp_extensibleType>() { return extensibleWritten; }
template <> const Written &writtenAs<cp_ruleType>() { return ruleWritten; }
template <> const Written &writtenAs<cp__ruleset>() { return rulesetWritten; }

std::string prefixed(const std::string &text, const std::string &prefix) { return replaced(text, "~", prefix); }

void bindPrefix(RuntimeContext *ctx, const char *prefix) {
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, prefix, namespaceUri, false), 0);
}

// What encode adds to a start tag that the caller has opened.
std::string insideOpenTag(RuntimeContext *ctx, const support::Encode &encode) {
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(rtXmlEncStartElement(ctx, "open", nullptr, nullptr, false), 0);
  EXPECT_EQ(encode(ctx), 0) << support::errors(ctx);
  EXPECT_EQ(rtXmlEncEndElement(ctx, "open", nullptr), 0);
  return support::outputText(ctx);
}

// ---- Types ----------------------------------------------------------------------------------------------------

TEST(EncodeType, WritesEachMemberUnderItsBitInOrder) {
  forEachType([]<typename T>() {
    Context ctx;
    bindPrefix(ctx, "c");
    const RtxNamespace callers = {"p", "urn:p"};
    // A choice is written as what its selector names, without a wrapper.
    const char *name = isChoice<T> ? nullptr : "name";
    const RtxNamespace *ns = isChoice<T> ? nullptr : &callers;
    const Written &written = writtenAs<T>();
    CompleteRecord<T> record(ctx);
    const uint32_t all = allBits(written.attributes) | allBits(written.contents);
    std::vector<uint32_t> masks = {~all}; // bits without a meaning
    for (uint32_t m = 0; m <= all; ++m)
      masks.push_back(m);
    for (uint32_t m : masks) {
      setPresence(*record, m);
      const std::string expected =
          prefixed(isChoice<T> ? present(written.contents, m) : element("p:name", written, m), "c:");
      EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return Functions<T>::encode(c, record, name, ns); }),
                expected)
          << "with bits " << m;
      EXPECT_EQ(support::encoded(ctx,
                                 [&](RuntimeContext *c) {
                                   EXPECT_EQ(Functions<T>::startElement(c, record, name, ns), 0);
                                   EXPECT_EQ(Functions<T>::contents(c, record, ns), 0);
                                   return Functions<T>::endElement(c, name, ns);
                                 }),
                expected)
          << "in steps, with bits " << m;
      EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES);
    }
    setPresence(*record, all);
  });
}

TEST(EncodeType, TakesTheCallersNameAndNamespaceForItsOwnTagsAlone) {
  const RtxNamespace callers = {"p", "urn:p"};
  const RtxNamespace noPrefix = {"", "urn:p"};
  struct Case {
    const RtxNamespace *ns;
    const char *childPrefix; // bound by the host to this module's namespace; null: not bound
    const char *tag;
    const char *prefix;
  };
  const Case cases[] = {{&callers, "c", "p:name", "c:"},
                        {&callers, nullptr, "p:name", ""},
                        {&noPrefix, "c", "name", "c:"},
                        {nullptr, nullptr, "name", ""}};
  forEachType([&]<typename T>() {
    if constexpr (!isChoice<T>) {
      for (const Case &c : cases) {
        Context ctx;
        if (c.childPrefix != nullptr) bindPrefix(ctx, c.childPrefix);
        CompleteRecord<T> record(ctx);
        EXPECT_EQ(
            support::encoded(ctx, [&](RuntimeContext *x) { return Functions<T>::encode(x, record, "name", c.ns); }),
            prefixed(element(c.tag, writtenAs<T>()), c.prefix));
      }
    }
  });
}

TEST(EncodeType, WithoutANameItWritesIntoTheElementThatIsOpen) {
  forEachType([]<typename T>() {
    Context ctx;
    bindPrefix(ctx, "c");
    CompleteRecord<T> record(ctx);
    const Written &written = writtenAs<T>();
    EXPECT_EQ(insideOpenTag(ctx, [&](RuntimeContext *c) { return Functions<T>::encode(c, record, nullptr, nullptr); }),
              prefixed(element("open", {true, written.attributes, written.contents}), "c:"));
  });
}

TEST(EncodeType, ContentsUseTheModulesPrefixWhateverTheCallerPasses) {
  const RtxNamespace callers = {"p", "urn:p"};
  forEachType([&]<typename T>() {
    Context ctx;
    bindPrefix(ctx, "c");
    CompleteRecord<T> record(ctx);
    EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return Functions<T>::contents(c, record, &callers); }),
              prefixed(present(writtenAs<T>().contents, ~0u), "c:"));
  });
}

// ---- Attributes -----------------------------------------------------------------------------------------------

template <typename T> using AttributeWriter = int (*)(RuntimeContext *, const T *, const RtxNamespace *);

// What the function that writes attributes alone adds to an open start tag.
template <typename T> void expectAttributes(AttributeWriter<T> attributes) {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx;
  CompleteRecord<T> record(ctx);
  const Written &written = writtenAs<T>();
  const uint32_t all = allBits(written.attributes);
  for (uint32_t m : {0u, 1u, 2u, 3u, ~all}) {
    setPresence(*record, m);
    EXPECT_EQ(insideOpenTag(ctx,
                            [&](RuntimeContext *c) {
                              const int status = attributes(c, record, nullptr);
                              EXPECT_EQ(c->state, XMLSTATE_IN_ELEMENT);
                              return status;
                            }),
              "<open" + present(written.attributes, m) + "/>");
  }
  setPresence(*record, 3);
}

TEST(EncodeAttributes, AreWrittenAloneInOrderUnderTheirBits) {
  expectAttributes<cp_oneType>(QxXmlET_cp_oneType_Attrs);
  expectAttributes<cp_exceptType>(QxXmlET_cp_exceptType_Attrs);
  expectAttributes<cp_manyType>(QxXmlET_cp_manyType_Attrs);
  expectAttributes<cp_sphereType>(QxXmlET_cp_sphereType_Attrs);
  expectAttributes<cp_ruleType>(QxXmlET_cp_ruleType_Attrs);
}

TEST(EncodeAttributes, AreEmptyForAbsentTexts) {
  Context ctx;
  const auto written = [&]<typename T>(Record<T> &record) {
    return support::encoded(ctx, [&](RuntimeContext *c) { return Functions<T>::encode(c, record, "n", nullptr); });
  };
  Record<cp_oneType> one(ctx);
  EXPECT_EQ(written(one), "<n id=\"\"/>");
  Record<cp_sphereType> sphere(ctx);
  EXPECT_EQ(written(sphere), "<n value=\"\"/>");
  Record<cp_ruleType> rule(ctx);
  EXPECT_EQ(written(rule), "<n id=\"\"/>");
  Record<cp_exceptType> except(ctx);
  EXPECT_EQ(written(except), "<n/>");
  except->m = 3;
  EXPECT_EQ(written(except), "<n domain=\"\" id=\"\"/>");
  Record<cp_manyType> many(ctx);
  EXPECT_EQ(written(many), "<n/>");
  many->m = 1;
  EXPECT_EQ(written(many), "<n domain=\"\"/>");
}

TEST(EncodeAttributes, AreEscapedAndReadBackAsTheyWere) {
  Context ctx;
  Builder build(ctx);
  const std::string text = "a<b>&\"c'\td\ne\rf  \xC3\xA9\xF0\x9F\x98\x80]]>";
  Record<cp_exceptType> record(ctx);
  // How a text of an element would be written means nothing for an attribute.
  *record = {3, build.text(text, true), build.text(text)};
  const std::string written =
      support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_exceptType(c, record, "n", nullptr); });
  const auto root = support::parseNamespacedXml(written);
  ASSERT_TRUE(root) << written;
  const std::vector<std::pair<std::string, std::string>> expected = {{"domain", text}, {"id", text}};
  EXPECT_EQ(root->attributes, expected);
}

template <typename T> using Attribute = RtxXmlString T::*;

// A character that XML cannot carry: the failure has its place in the start tag, and the context writes on.
template <typename T> void expectRefused(Attribute<T> attribute, AttributeWriter<T> attributes) {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx;
  CompleteRecord<T> record(ctx);
  rtxMemHeapFreePtr(ctx, ((*record).*attribute).value);
  (*record).*attribute = Builder(ctx).text("a\x01");
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(Functions<T>::startElement(ctx, record, "n", nullptr), STATUS_INVALID_UTF8);
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  EXPECT_EQ(rtxErrAt(ctx, 0)->siteTotal, 1u);

  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  rtxErrClear(ctx);
  EXPECT_EQ(rtXmlEncStartElement(ctx, "n", nullptr, nullptr, false), 0);
  EXPECT_EQ(attributes(ctx, record, nullptr), STATUS_INVALID_UTF8);
  EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSetEnc");

  CompleteRecord<cp_sphereType> good(ctx);
  EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_sphereType(c, good, "n", nullptr); }),
            "<n value=\"work\"/>");
}

TEST(EncodeAttributes, WithCharactersThatXmlCannotCarryAreRefused) {
  expectRefused(&cp_oneType::cp_id, QxXmlET_cp_oneType_Attrs);
  expectRefused(&cp_exceptType::cp_domain, QxXmlET_cp_exceptType_Attrs);
  expectRefused(&cp_exceptType::cp_id, QxXmlET_cp_exceptType_Attrs);
  expectRefused(&cp_manyType::cp_domain, QxXmlET_cp_manyType_Attrs);
  expectRefused(&cp_sphereType::cp_value, QxXmlET_cp_sphereType_Attrs);
  expectRefused(&cp_ruleType::cp_id, QxXmlET_cp_ruleType_Attrs);
}

// ---- Choices --------------------------------------------------------------------------------------------------

// An alternative of a choice and what it is written as.
template <typename T> struct Alternative {
  void (*fill)(Builder &build, T &record);
  std::string written;
};

template <typename T> void expectAlternatives(const std::vector<Alternative<T>> &alternatives) {
  SCOPED_TRACE(Functions<T>::name);
  for (size_t i = 0; i < alternatives.size(); ++i) {
    Context ctx;
    bindPrefix(ctx, "c");
    Builder build(ctx);
    Record<T> record(ctx);
    const uint16_t t = static_cast<uint16_t>(i + 1);
    record->t = t;
    alternatives[i].fill(build, *record);
    EXPECT_EQ(
        support::encoded(ctx, [&](RuntimeContext *c) { return Functions<T>::encode(c, record, nullptr, nullptr); }),
        alternatives[i].written);

    for (size_t other : {size_t{0}, alternatives.size() + 1, size_t{7}, size_t{256} + t, size_t{65535}}) {
      SCOPED_TRACE(other);
      rtxErrClear(ctx);
      record->t = static_cast<uint16_t>(other);
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(Functions<T>::encode(ctx, record, nullptr, nullptr), STATUS_INVALID_CHOICE);
      EXPECT_EQ(support::outputText(ctx), "") << "nothing of it is written";
      ASSERT_EQ(rtxErrCount(ctx), 1u);
      const RtxError *error = rtxErrAt(ctx, 0);
      ASSERT_EQ(error->paramCount, 1u);
      EXPECT_EQ(error->params[0].kind, RTX_PARAM_TEXT);
      EXPECT_EQ(error->params[0].text, std::to_string(other));
      EXPECT_EQ(error->siteTotal, 2u) << "of the contents, and of the choice";
    }
    record->t = t;
  }
}

TEST(EncodeChoice, WritesWhatTheSelectorNamesAndRefusesOthers) {
  expectAlternatives<cp_manyType_1>({
      {[](Builder &b, auto &r) { b.complete(r.u.cp_except); }, prefixed(element("~except", exceptWritten), "c:")},
      {[](Builder &b, auto &r) { r.u.cp__any = b.text("<x/>"); }, "<x/>"},
  });
  expectAlternatives<cp_identityType_1>({
      {[](Builder &b, auto &r) { b.complete(r.u.cp_one); }, prefixed(element("~one", oneWritten), "c:")},
      {[](Builder &b, auto &r) { b.complete(r.u.cp_many); }, prefixed(element("~many", manyWritten), "c:")},
      {[](Builder &b, auto &r) { r.u.cp__any = b.text("<x/>"); }, "<x/>"},
  });
  expectAlternatives<cp_conditionsType_1>({
      {[](Builder &b, auto &r) { b.complete(r.u.cp_identity); }, prefixed(element("~identity", identityWritten), "c:")},
      {[](Builder &b, auto &r) { b.complete(r.u.cp_sphere); }, prefixed(element("~sphere", sphereWritten), "c:")},
      {[](Builder &b, auto &r) { b.complete(r.u.cp_validity); }, prefixed(element("~validity", validityWritten), "c:")},
      {[](Builder &b, auto &r) {
         for (const char *element : {"<x/>", "<y>1</y>", "<z/>"})
           b.foreign(r.u.cp__any, element);
       },
       "<x/><y>1</y><z/>"},
  });
}

TEST(EncodeChoice, EmptyRunOfForeignElementsIsNothing) {
  Context ctx;
  Record<cp_conditionsType_1> run(ctx);
  run->t = cp_conditionsType_1_any;
  EXPECT_EQ(
      support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_conditionsType_1(c, run, nullptr, nullptr); }),
      "");
}

TEST(EncodeChoice, ItemsKeepTheirOrder) {
  Context ctx;
  bindPrefix(ctx, "c");
  Builder build(ctx);
  Record<cp_conditionsType> record(ctx);
  build.foreign(*record, {"<a/>", "<b/>"});
  build.foreign(*record, {});
  build.foreign(*record, {"<d/>"});
  build.sphere(*record, "1");
  if (auto *item = build.item(*record, cp_conditionsType_1_identity)) {
    cp_identityType &identity = item->u.cp_identity;
    build.foreign(identity, "<e/>");
    build.one(identity, "2");
    build.foreign(identity, "<f/>");
    build.foreign(identity, "<g/>");
    if (auto *many = build.item(identity, cp_identityType_1_many)) {
      build.foreign(many->u.cp_many, "<h/>");
      build.item(many->u.cp_many, cp_manyType_1_except);
      build.foreign(many->u.cp_many, "<i/>");
      build.foreign(many->u.cp_many, "<j/>");
      build.item(many->u.cp_many, cp_manyType_1_except);
    }
    build.one(identity, "3");
  }
  build.validity(*record, "4", "5");
  build.sphere(*record, "6");
  build.validity(*record, "7", "8");
  EXPECT_EQ(
      support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_conditionsType(c, record, "n", nullptr); }),
      "<n><a/><b/><d/><c:sphere value=\"1\"/>"
      "<c:identity><e/><c:one id=\"2\"/><f/><g/>"
      "<c:many><h/><c:except/><i/><j/><c:except/></c:many><c:one id=\"3\"/></c:identity>"
      "<c:validity><c:from>4</c:from><c:until>5</c:until></c:validity><c:sphere value=\"6\"/>"
      "<c:validity><c:from>7</c:from><c:until>8</c:until></c:validity></n>");
}

// ---- Texts ----------------------------------------------------------------------------------------------------

std::string writtenValidity(RuntimeContext *ctx, const cp_validityType *record) {
  return support::encoded(ctx, [=](RuntimeContext *c) { return QxXmlET_cp_validityType(c, record, "n", nullptr); });
}

TEST(EncodeText, AbsentOnesBecomeEmptyElements) {
  Context ctx;
  Record<cp_validityType> record(ctx);
  const auto root = support::parseNamespacedXml(writtenValidity(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), "{}n[]({}from[](){}until[]())");
}

TEST(EncodeText, IsEscapedOrPutIntoCdataAndNotInterpreted) {
  Context ctx;
  Builder build(ctx);
  Record<cp_validityType> record(ctx);
  *record = {build.text("yesterday <&> ]]>"), build.text("a<b&c", true)};
  const std::string written = writtenValidity(ctx, record);
  EXPECT_NE(written.find("<until><![CDATA[a<b&c]]></until>"), std::string::npos) << written;
  const auto root = support::parseNamespacedXml(written);
  ASSERT_TRUE(root) << written;
  EXPECT_EQ(root->infoset(), "{}n[]({}from[](yesterday <&> ]]>){}until[](a<b&c))");
}

TEST(EncodeText, ThatXmlCannotCarryIsRefused) {
  struct Case {
    const char *text;
    bool utf8; // what is not UTF-8 is found before the tag is written, a forbidden character by whoever writes it
  };
  constexpr Case cases[] = {{"bad\xFF", false},          {"\xC3", false}, {"\xED\xA0\x80", false},
                            {"\xF4\x90\x80\x80", false}, {"\x01", true},  {"\xEF\xBF\xBE", true}};
  std::set<int> lines;
  for (const Case &c : cases) {
    for (bool first : {true, false}) {
      SCOPED_TRACE((first ? "from " : "until ") + testing::PrintToString(c.text));
      Context ctx;
      Builder build(ctx);
      Record<cp_validityType> record(ctx);
      *record = {build.text(first ? c.text : "good"), build.text(c.text)};
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(QxXmlET_cp_validityType(ctx, record, "n", nullptr), STATUS_INVALID_UTF8);
      ASSERT_EQ(rtxErrCount(ctx), 1u);
      const RtxError *error = rtxErrAt(ctx, 0);
      EXPECT_EQ(error->paramCount, 0u);
      EXPECT_EQ(error->siteTotal, 2u) << "of the contents, and of the element";
      lines.insert(error->sites[0].line);
      const std::string written = support::outputText(ctx);
      if (!c.utf8) {
        EXPECT_EQ(written, first ? "<n>" : "<n><from>good</from>");
      } else {
        EXPECT_TRUE(written.starts_with(first ? "<n>" : "<n><from>good</from>")) << written;
        EXPECT_EQ(written.find("</" + (first ? "from"s : "until"s)), std::string::npos) << written;
      }
    }
  }
  EXPECT_EQ(lines.size(), 4u) << "checking and writing each text are places of their own";
}

TEST(EncodeForeign, IsCopiedAsItStands) {
  Context ctx;
  bindPrefix(ctx, "c");
  Builder build(ctx);
  const std::string element = "<!--as it stands--><x:f xmlns:x='u' k=\"1\">1 &lt; 2<![CDATA[<]]><?p i?></x:f>";
  Record<cp_extensibleType> actions(ctx);
  for (bool cdata : {false, true}) {
    build.foreign(actions->items, element);
    static_cast<RtxXmlString *>(actions->items.items.tail->data)->cdata = cdata;
  }
  EXPECT_EQ(
      support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_extensibleType(c, actions, "n", nullptr); }),
      "<n>" + element + element + "</n>");

  Record<cp_oneType> one(ctx);
  *one = {1, build.text(element), build.text("i")};
  EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_oneType(c, one, "n", nullptr); }),
            "<n id=\"i\">" + element + "</n>");
}

TEST(EncodeForeign, WithoutTextIsNothing) {
  Context ctx;
  Builder build(ctx);
  Record<cp_extensibleType> actions(ctx);
  for (int i = 0; i < 2; ++i) {
    auto *entry = static_cast<RtxXmlString *>(rtxMemHeapAlloc(ctx, sizeof(RtxXmlString)));
    ASSERT_NE(entry, nullptr);
    *entry = {false, i == 0 ? nullptr : build.text("<x/>").value};
    Qxcp_extensibleType_Append(ctx, actions, entry);
  }
  EXPECT_EQ(
      support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_extensibleType(c, actions, "n", nullptr); }),
      "<n><x/></n>");
  Record<cp_oneType> one(ctx);
  one->m = 1;
  EXPECT_EQ(support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlET_cp_oneType(c, one, "n", nullptr); }),
            "<n id=\"\"/>");
}

// ---- Documents ------------------------------------------------------------------------------------------------

TEST(Encode, RulesetWithoutRulesDeclaresItsNamespace) {
  Context ctx;
  Record<cp__ruleset> record(ctx);
  EXPECT_EQ(encodedDocument(ctx, record), open + close);
}

TEST(Encode, AllMembersInOrder) {
  Context ctx;
  CompleteRecord<cp__ruleset> record(ctx);
  const std::string written = encodedDocument(ctx, record);
  EXPECT_EQ(written, open + prefixed(present(rulesetWritten.contents, 0), "cp:") + close);
  EXPECT_TRUE(support::parseNamespacedXml(written));
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  Context ctx;
  Record<cp__ruleset> record(ctx);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  EXPECT_TRUE(whole.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << whole;
}

TEST(Encode, MembersUnderAClearBitAreNotLookedAt) {
  Context ctx;
  Builder build(ctx);
  Record<cp__ruleset> record(ctx);
  auto *rule = build.rule(*record, "r");
  ASSERT_NE(rule, nullptr);
  build.item(rule->cp_conditions, 7);
  auto *item = build.item(rule->cp_conditions, cp_conditionsType_1_identity);
  ASSERT_NE(item, nullptr);
  rule->m = ~uint32_t{cp_ruleType_has_conditions};
  EXPECT_EQ(encodedDocument(ctx, record),
            open + "<cp:rule id=\"r\"><cp:actions></cp:actions><cp:transformations></cp:transformations></cp:rule>" +
                close);
  rule->m = cp_ruleType_has_conditions;
}

TEST(Encode, ConditionsMayBeEmptyAndIdentitiesNot) {
  Context ctx;
  Builder build(ctx);
  Record<cp__ruleset> record(ctx);
  auto *rule = build.rule(*record, "r");
  ASSERT_NE(rule, nullptr);
  rule->m = cp_ruleType_has_conditions;
  EXPECT_EQ(encodedDocument(ctx, record), open + "<cp:rule id=\"r\"><cp:conditions></cp:conditions></cp:rule>" + close);

  build.item(rule->cp_conditions, cp_conditionsType_1_identity);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_CONSTRAINT_VIOLATION);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  const RtxError *error = rtxErrAt(ctx, 0);
  ASSERT_EQ(error->paramCount, 2u);
  EXPECT_STREQ(error->params[0].text, "cp_identityType.count");
  EXPECT_EQ(error->params[1].kind, RTX_PARAM_INT);
  EXPECT_EQ(error->params[1].intValue, 0);
  const std::string written = support::outputText(ctx);
  EXPECT_NE(written.find("<cp:conditions><cp:identity"), std::string::npos) << written;
  EXPECT_EQ(written.find("</cp:identity"), std::string::npos) << written;
}

// What fails deep inside, and what stays written.
struct Failure {
  const char *what;
  void (*spoil)(Builder &build, cp_ruleType &rule); // of a rule that has conditions
  const char *error;
  uint32_t functions; // that the error passes on its way out
  const char *writtenBefore;
};

cp_identityType *identityIn(Builder &build, cp_ruleType &rule) {
  auto *item = build.item(rule.cp_conditions, cp_conditionsType_1_identity);
  return item != nullptr ? &item->u.cp_identity : nullptr;
}

cp_manyType *manyIn(Builder &build, cp_ruleType &rule) {
  cp_identityType *identity = identityIn(build, rule);
  if (identity == nullptr) return nullptr;
  auto *item = build.item(*identity, cp_identityType_1_many);
  return item != nullptr ? &item->u.cp_many : nullptr;
}

cp_exceptType *exceptIn(Builder &build, cp_ruleType &rule) {
  cp_manyType *many = manyIn(build, rule);
  if (many == nullptr) return nullptr;
  auto *item = build.item(*many, cp_manyType_1_except);
  return item != nullptr ? &item->u.cp_except : nullptr;
}

// Of an element: the step that fails and the element itself; of a choice and of each element around it the same.
const Failure failures[] = {
    {"id of a rule", [](Builder &b, auto &r) { r.cp_id = b.text("\x01"); }, "-102", 4, "<cp:rule"},
    {"selector of a condition", [](Builder &b, auto &r) { b.item(r.cp_conditions, 7); }, "-9(7)", 8, "<cp:conditions"},
    {"value of a sphere", [](Builder &b, auto &r) { b.sphere(r.cp_conditions, "\x01"); }, "-102", 10, "<cp:sphere"},
    {"check of a from", [](Builder &b, auto &r) { b.validity(r.cp_conditions, "\xFF", "x"); }, "-102", 10,
     "<cp:validity"},
    {"text of a from", [](Builder &b, auto &r) { b.validity(r.cp_conditions, "\x01", "x"); }, "-102", 10,
     "<cp:validity"},
    {"check of an until", [](Builder &b, auto &r) { b.validity(r.cp_conditions, "x", "\xFF"); }, "-102", 10,
     "</cp:from"},
    {"text of an until", [](Builder &b, auto &r) { b.validity(r.cp_conditions, "x", "\x01"); }, "-102", 10,
     "</cp:from"},
    {"count of an identity", [](Builder &b, auto &r) { identityIn(b, r); }, "-16(cp_identityType.count,0)", 10,
     "<cp:identity"},
    {"selector in an identity", [](Builder &b, auto &r) { b.item(*identityIn(b, r), 4); }, "-9(4)", 12, "<cp:identity"},
    {"id of a one", [](Builder &b, auto &r) { b.one(*identityIn(b, r), "\x01"); }, "-102", 14, "<cp:one"},
    {"domain of a many",
     [](Builder &b, auto &r) {
       cp_manyType *many = manyIn(b, r);
       many->m = 1;
       many->cp_domain = b.text("\x01");
     },
     "-102", 14, "<cp:many"},
    {"selector in a many", [](Builder &b, auto &r) { b.item(*manyIn(b, r), 0); }, "-9(0)", 16, "<cp:many"},
    {"domain of an except",
     [](Builder &b, auto &r) {
       *exceptIn(b, r) = {1, b.text("\x01"), {}};
     },
     "-102", 18, "<cp:except"},
    {"id of an except",
     [](Builder &b, auto &r) {
       *exceptIn(b, r) = {2, {}, b.text("\x01")};
     },
     "-102", 18, "<cp:except"},
};

TEST(Encode, FailuresLeaveTheirTrailThroughEveryFunction) {
  constexpr uint32_t kept = 16;
  std::set<int> places;
  for (const Failure &failure : failures) {
    SCOPED_TRACE(failure.what);
    int line = 0;
    for (int round = 1; round <= 2; ++round) {
      Context ctx;
      Builder build(ctx);
      Record<cp__ruleset> record(ctx);
      auto *before = build.rule(*record, "before");
      auto *rule = build.rule(*record, "r");
      auto *behind = build.rule(*record, "behind");
      ASSERT_TRUE(before != nullptr && rule != nullptr && behind != nullptr);
      rule->m = cp_ruleType_has_conditions;
      failure.spoil(build, *rule);
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      const int status = encodeDocument(ctx, record);
      ASSERT_EQ(rtxErrCount(ctx), 1u);
      const RtxError *error = rtxErrAt(ctx, 0);
      EXPECT_EQ(status, error->status);
      EXPECT_TRUE(support::errors(ctx).starts_with(failure.error + "@"s)) << support::errors(ctx);
      EXPECT_EQ(error->siteTotal, failure.functions);
      EXPECT_EQ(error->siteCount, std::min(failure.functions, kept));
      std::set<int> lines;
      for (uint32_t i = 0; i < error->siteCount; ++i) {
        EXPECT_STREQ(error->sites[i].path, "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSetEnc");
        lines.insert(error->sites[i].line);
      }
      EXPECT_EQ(lines.size(), error->siteCount) << "each place has a line of its own";
      if (round == 2) {
        EXPECT_EQ(error->sites[0].line, line) << "the same each time";
      }
      line = error->sites[0].line;

      const std::string written = support::outputText(ctx);
      EXPECT_NE(written.find("<cp:rule id=\"before\"/>"), std::string::npos) << written;
      EXPECT_EQ(written.find("behind"), std::string::npos) << written;
      EXPECT_NE(written.find(failure.writtenBefore, written.find("\"before\"")), std::string::npos) << written;
    }
    places.insert(line);
  }
  EXPECT_EQ(places.size(), std::size(failures)) << "each failure has a line of its own";
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Builder build(ctx);
  Record<cp__ruleset> good(ctx);
  build.rule(*good, "good");
  for (const Failure &failure : failures) {
    SCOPED_TRACE(failure.what);
    Record<cp__ruleset> bad(ctx);
    auto *rule = build.rule(*bad, "bad");
    ASSERT_NE(rule, nullptr);
    rtxMemHeapFreePtr(ctx, rule->cp_id.value);
    rule->cp_id.value = nullptr;
    rule->m = cp_ruleType_has_conditions;
    failure.spoil(build, *rule);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_NE(encodeDocument(ctx, bad), 0);
    rtxErrClear(ctx);
    EXPECT_EQ(encodedDocument(ctx, good), open + "<cp:rule id=\"good\"/>" + close);
  }
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  Context ctx;
  Record<cp__ruleset> record(ctx);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_WRITE_FAILED);
  ASSERT_EQ(rtxErrCount(ctx), 1u);
  EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "xmlAddOns/addons/IMS/RuleSet/QxXmlRuleSetEnc");
}

TEST(Encode, EveryOutputSize) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    CompleteRecord<cp__ruleset> record(ctx);
    return encodeDocument(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<cp__ruleset> record(ctx);
    return encodeDocument(ctx, record);
  });
}

TEST(EncodeType, EveryOutputSize) {
  const RtxNamespace ns = {"p", "urn:p"};
  forEachType([&]<typename T>() {
    support::everyOutputSize([&](RuntimeContext *ctx) {
      CompleteRecord<T> record(ctx);
      return Functions<T>::encode(ctx, record, isChoice<T> ? nullptr : "name", isChoice<T> ? nullptr : &ns);
    });
  });
}

support::Outcome encodeComplete(RuntimeContext *ctx) {
  cp__ruleset record;
  if (QxInit_cp__ruleset(ctx, &record) != 0) return {STATUS_NO_MEMORY, "", false};
  Builder build(ctx);
  build.complete(record);
  support::Outcome outcome{STATUS_NO_MEMORY, "", false};
  if (!build.failed()) {
    outcome = {rtxSetOutputDynamic(ctx), "", false};
    if (outcome.status == 0) {
      outcome.status = encodeDocument(ctx, &record);
      outcome.recorded = true;
      outcome.result = outcome.status == 0 ? support::outputText(ctx) : "";
    }
  }
  Functions<cp__ruleset>::release(ctx, &record);
  return outcome;
}

TEST(Encode, EveryAllocationThatFails) {
  const support::FaultReport report = support::faults(encodeComplete);
  EXPECT_GT(report.failed, 0u);
  support::everyHeapLimit(encodeComplete);
}

TEST(Encode, PresetNamespacesAreTheHosts) {
  struct Case {
    const char *what;
    const char *prefix; // declared by the host for uri; null is the default namespace
    const char *uri;
    bool preset;
    std::string declaration;
    std::string elementPrefix;
  };
  const std::string ours = namespaceUri;
  const Case cases[] = {
      {"preset without a declaration", "", nullptr, true, "", ""},
      {"preset prefix", "h", namespaceUri, true, " xmlns:h=\"" + ours + "\"", "h:"},
      {"preset default namespace", nullptr, namespaceUri, true, " xmlns=\"" + ours + "\"", ""},
      {"cp is the host's, for another namespace", "cp", "urn:other", false, " xmlns:cp=\"urn:other\"", ""},
      {"cp is the host's, for this namespace", "cp", namespaceUri, false, " xmlns:cp=\"" + ours + "\"", "cp:"},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.what);
    Context ctx;
    if (c.preset) ctx->flags |= NamespacesPreset;
    if (c.uri != nullptr) {
      ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.prefix, c.uri, false), 0);
    }
    CompleteRecord<cp__ruleset> record(ctx);
    for (int round = 1; round <= 3; ++round) {
      const std::string text = encodedDocument(ctx, record);
      EXPECT_EQ(text, "<" + c.elementPrefix + "ruleset" + c.declaration + ">" +
                          prefixed(present(rulesetWritten.contents, 0), c.elementPrefix) + "</" + c.elementPrefix +
                          "ruleset>")
          << "round " << round;
      EXPECT_TRUE(support::parseNamespacedXml(text));
    }
    EXPECT_EQ((ctx->flags & NamespacesPreset) != 0, c.preset);
  }
}

TEST(Encode, HostDeclarationsBesideOursAreWritten) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "x", "urn:vendor", false), 0);
  Builder build(ctx);
  Record<cp__ruleset> record(ctx);
  auto *rule = build.rule(*record, "r");
  ASSERT_NE(rule, nullptr);
  rule->m = cp_ruleType_has_actions;
  build.foreign(rule->cp_actions.items, "<x:f/>");
  const auto root = support::parseNamespacedXml(encodedDocument(ctx, record));
  ASSERT_TRUE(root);
  ASSERT_EQ(root->children.size(), 1u);
  ASSERT_EQ(root->children[0].children.size(), 1u);
  EXPECT_EQ(root->children[0].children[0].infoset(), "{"s + namespaceUri + "}actions[]({urn:vendor}f[]())");
}

TEST(Encode, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  Builder build(ctx);
  const std::string between = "<ruleset xmlns=\""s + namespaceUri + "\"><rule id=\"x\"/></ruleset>";
  for (int round = 0; round < 4; ++round) {
    const std::string id = "r" + std::to_string(round);
    Record<cp__ruleset> record(ctx);
    for (int i = 0; i <= round; ++i)
      build.rule(*record, id);
    std::string expected = open;
    for (int i = 0; i <= round; ++i)
      expected += "<cp:rule id=\"" + id + "\"/>";
    EXPECT_EQ(encodedDocument(ctx, record), expected + close);

    ASSERT_EQ(rtxSetInput(ctx, between.data(), between.size()), 0);
    Record<cp__ruleset> read(ctx);
    EXPECT_EQ(QxXmlD_cp_ruleset(ctx, read), 0) << support::errors(ctx);
    EXPECT_EQ(printed<cp__ruleset>("", read), ".cp_rule[0].cp_id = \"x\"\n");
    EXPECT_EQ(QxXmlV_cp_ruleset(ctx), 0) << support::errors(ctx);
  }
}

TEST(Encode, StepsOfTheDocumentGiveTheDocument) {
  Context ctx;
  CompleteRecord<cp__ruleset> record(ctx);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  std::vector<std::string> parts;
  const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlNSSetURITable(c, QxGet_IMS_NSURI(c), 5), 0);
    EXPECT_EQ(rtXmlEncStartDocument(c), 0);
    const auto step = [&](int (*function)(RuntimeContext *, const cp__ruleset *)) {
      EXPECT_EQ(function(c, record), 0);
      size_t length = 0;
      const char *text = rtxGetOutput(c, &length);
      EXPECT_EQ(text[length], '\0') << "always a terminated text";
      parts.push_back(text);
    };
    step(QxXmlE_cp_ruleset_StartElement);
    step(QxXmlE_cp_ruleset_Contents);
    step(QxXmlE_cp_ruleset_EndElement);
    return rtXmlEncEndDocument(c);
  });
  EXPECT_EQ(stepwise, whole);
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(support::withoutDeclaration(parts[0]), open);
  EXPECT_EQ(support::withoutDeclaration(parts[1]), open + prefixed(present(rulesetWritten.contents, 0), "cp:"));
  EXPECT_EQ(support::withoutDeclaration(parts[2]), support::withoutDeclaration(whole));
}

TEST(Encode, LeavesTheRecordAndTheHeapAsTheyWere) {
  Context ctx;
  CompleteRecord<cp__ruleset> record(ctx);
  encodedDocument(ctx, record);
  const std::string before = printed<cp__ruleset>("r", record);
  support::HeapBalance balance(ctx);
  const size_t used = support::heapStats(ctx).used;
  encodedDocument(ctx, record);
  EXPECT_EQ(support::heapStats(ctx).used, used);
  EXPECT_EQ(printed<cp__ruleset>("r", record), before);
}

} // namespace
